#include "app/join_table.h"

#include <string>

#include "app/stop.h"
#include "text/codetext.h"

namespace morva {

namespace {

JoinTable* firstTable = nullptr;

}  // namespace

void StopFull(std::u16string_view what, int most) {
  StopProgram(u"MORVA cannot start. Its table of " + std::u16string(what) + u" is full: it holds " +
              IntegerText(most) + u".");
}

int NextRow(JoinTable& table) {
  if (table.count >= table.most) StopFull(table.what, table.most);
  if (!table.listed) {
    table.listed = true;
    table.next = firstTable;
    firstTable = &table;
  }
  return table.count++;
}

const JoinTable* FirstJoinTable() { return firstTable; }

}  // namespace morva
