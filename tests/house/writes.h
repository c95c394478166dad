// Finds in the code of a file where a global table is written: by assignment, by ++ and --, by a
// member function that changes it, through a reference, an address or a parameter that is not
// const.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

namespace house {

struct Write {
  std::string field;  // the first member behind the name, empty for the whole table
  int line = 0;       // from 1
};

// For the name of a function the places of those parameters that it may change.
using ChangingParameters = std::map<std::string, std::set<int>>;

// Those of the standard library.
ChangingParameters StandardParameters();

// Adds the functions that this code declares or defines. `handles` are types whose references and
// pointers are followed into the function itself, so that handing one over is no write.
void LearnParameters(const std::string& code, const std::set<std::string>& handles,
                     ChangingParameters& known);

// Writes to `name`, which may be a global or a variable that stands for a row of it. `code` is
// without comments and literals.
std::vector<Write> WritesTo(const std::string& name, const std::string& code,
                            const ChangingParameters& known);

// Variables and parameters of the code that refer to a `type`: those that may change it, or also
// those that are const, whose members may be references to something that is not.
std::set<std::string> HandlesOf(const std::string& type, const std::string& code,
                                bool alsoConst = false);

}  // namespace house
