#include "documents/builder_table.h"

#include "app/commands.h"
#include "app/hooks.h"
#include "app/join_table.h"
#include "app/limits.h"

namespace morva {

namespace {

const Builder* builders[kMaxBuilders];
JoinTable builderFill{u"builders", kMaxBuilders};

}  // namespace

void AddBuilder(const Builder& builder) { builders[NextRow(builderFill)] = &builder; }

const Builder* BuilderAt(int index) {
  return index < builderFill.count ? builders[index] : nullptr;
}

void ResetBuilders() { builderFill.count = 0; }

void ShowBuilderKeys(int kind) {
  for (int i = 0; const Builder* builder = BuilderAt(i); ++i) {
    ShowWords(builder->insertKey, kind != 0 && builder->kind == kind);
    Call(builder->linked);
  }
}

}  // namespace morva
