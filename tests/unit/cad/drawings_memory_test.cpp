// Memory that runs out while a program's drawings are made: nothing changes, nothing is told.

#include <gtest/gtest.h>

#include <cstddef>
#include <new>
#include <string>

#include "cad/model/drawings.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "documents/companions.h"
#include "documents/saving.h"
#include "unit/cad/cad_stage.h"

namespace {
int allocationsUntilFailure = 0;  // 1: the next one
int allocationsSeen = 0;
}  // namespace

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  ++allocationsSeen;
  if (allocationsUntilFailure > 0 && --allocationsUntilFailure == 0) return nullptr;
  return ::operator new(size);
}

namespace morva {
namespace {

struct DrawingsMemory : cad_test::DrawingsStage {
  void SetUp() override {
    DrawingsStage::SetUp();
    Add(kTypeCircle, 1, 2, 3);
    SetSketchStatus(u"before");
    allocationsSeen = 0;
  }
  void TearDown() override {
    allocationsUntilFailure = 0;
    CadStage::TearDown();
  }
  // A set that is there must be one that the companion file gives back.
  static bool Readable(const ProgramTab& tab) {
    if (!tab.cadStore) return true;
    std::string bytes;
    WriteCadFile(*tab.cadStore, bytes);
    CadStore again;
    return ReadCadFile(bytes, again);
  }
};

TEST_F(DrawingsMemory, ACommandThatGetsNoneEndsWithoutAChangeOrAMessage) {
  for (const int key : {kIdDrawingFirst, kIdDrawingAdd, kIdDrawingRename}) {
    for (int nth = 1; nth <= 2; ++nth) {
      allocationsUntilFailure = nth;
      headless::Click(key);
      EXPECT_EQ(allocationsUntilFailure, 0) << key << " asked for no memory";
      EXPECT_EQ(tabs[0].cadStore, nullptr) << key;
      EXPECT_EQ(tabs[0].cadSettings, nullptr) << key;
      EXPECT_EQ(sketch.objectCount, 1) << key;
      EXPECT_EQ(SketchStatus(), u"before") << key;
      EXPECT_FALSE(app.editorDirty) << key;
      EXPECT_FALSE(platform::IsVisible(kIdCadDrawingName)) << key;
      EXPECT_TRUE(headless::TakeBoxes().empty()) << key;
    }
  }
  headless::Click(kIdDrawingAdd);
  ASSERT_NE(tabs[0].cadStore, nullptr);
  EXPECT_EQ(tabs[0].cadStore->count, 2u);
  EXPECT_EQ(tabs[0].cadStore->drawings[0].settings.itemCount, 1);
}

TEST_F(DrawingsMemory, WithTheSetMadeNoCommandAsksForAny) {
  headless::Click(kIdDrawingAdd);
  EXPECT_GT(allocationsSeen, 0);
  allocationsSeen = 0;
  Add(kTypeLine, 0, 0, 1);
  PushSketchUndo();
  headless::Click(kIdDrawingAdd);
  headless::Click(kIdDrawingFirst + 1);
  headless::Click(kIdDrawingRename);
  headless::Click(kIdDrawingRename);
  SaveLiveDrawing();
  LoadSketchForProgram();
  SketchUndo();
  EXPECT_EQ(allocationsSeen, 0);
  EXPECT_EQ(sketch.objects[0].type, kTypeLine);
}

TEST_F(DrawingsMemory, WhatASaveCouldNotMakeIsNotWrittenAndTheNextSaveMakesIt) {
  for (int nth = 1; nth <= 2; ++nth) {
    const std::string name = "Job" + std::to_string(nth) + ".NC";
    OpenTab(u"", u"G1 X1\r\n", support::Wide(name));
    SwitchTab(nth);
    Add(kTypeSlot, 1, 2, 3, 1);
    allocationsUntilFailure = nth;
    ASSERT_TRUE(SaveProgram(PathOf(name)));
    EXPECT_EQ(allocationsUntilFailure, 0);
    EXPECT_FALSE(support::fs::exists(folder / (name + ".cadmv")));
    EXPECT_TRUE(Readable(tabs[nth]));
    EXPECT_EQ(sketch.objectCount, 1);
    ASSERT_TRUE(SaveProgram(PathOf(name)));
    CadStore saved;
    ASSERT_TRUE(ReadCadFile(Raw(name + ".cadmv"), saved)) << nth;
    EXPECT_EQ(saved.drawings[0].settings.itemCount, 1);
    EXPECT_EQ(saved.drawings[0].settings.items[0].p2, 3);
  }
}

TEST_F(DrawingsMemory, ACompanionThatFindsNoneOpensAsNone) {
  ASSERT_TRUE(SaveProgram(PathOf("Job.NC")));
  const std::string before = Raw("Job.NC.cadmv");
  ASSERT_EQ(before.size(), 40712u);
  for (int nth = 1; nth <= 2; ++nth) {
    allocationsUntilFailure = nth;
    const int index = OpenTab(PathOf("Job.NC"), u"G1\r\n", u"");
    EXPECT_EQ(allocationsUntilFailure, 0);
    ASSERT_GE(index, 0);
    EXPECT_EQ(tabs[index].cadStore, nullptr) << nth;
    EXPECT_EQ(Raw("Job.NC.cadmv"), before);
  }
}

}  // namespace
}  // namespace morva
