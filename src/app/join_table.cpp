#include "app/join_table.h"

#include <string>

#include "app/stop.h"
#include "text/codetext.h"

namespace morva {

namespace {

JoinTable* firstTable = nullptr;

}  // namespace

int NextRow(JoinTable& table) {
  if (table.count >= table.most) {
    StopProgram(u"MORVA cannot start. Its table of " + std::u16string(table.what) +
                u" is full: it holds " + IntegerText(table.most) + u".");
  }
  if (!table.listed) {
    table.listed = true;
    table.next = firstTable;
    firstTable = &table;
  }
  return table.count++;
}

const JoinTable* FirstJoinTable() { return firstTable; }

}  // namespace morva
