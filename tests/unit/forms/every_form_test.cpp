// What holds for every form of the program, on the whole application.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "forms/form.h"
#include "forms/form_table.h"
#include "forms/sheet.h"
#include "platform/control.h"
#include "platform/window.h"
#include "support/workbench.h"
#include "text/codetext.h"
#include "text/strict_number.h"

namespace morva {
namespace {

using platform::Rect;

struct EveryForm : support::Workbench {
  // Every page of every form, placed as high and as narrow as a side panel is.
  template <typename Look>
  void OnEveryPage(Look look) {
    for (int n = 0; const Form* form = FormAt(n); ++n) {
      if (form->parent == kViewDestination) continue;  // stands only while its dialog does
      if (form->sheet) headless::Click(kIdSurfaceCad);
      for (int page = 0; page < 12; ++page) {
        bool used = false;
        for (const FormRow& row : form->rows) used = used || (row.pages & PageBit(page)) != 0;
        if (!used) continue;
        SCOPED_TRACE(testing::Message() << "form " << n << " page " << page);
        look(*form, page);
      }
    }
  }
  static std::vector<int> ShownControls(const Form& form) {
    int ids[kMaxTabStops];
    std::vector<int> shown;
    const int count = FormOrder(form, ids, kMaxTabStops);
    for (int i = 0; i < count; ++i) {
      const int row = RowOfControl(form, ids[i]);
      if (row >= 0 && IsRowShown(form, row)) shown.push_back(ids[i]);
    }
    return shown;
  }
};

bool Overlap(const Rect& a, const Rect& b) {
  return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

TEST_F(EveryForm, PlacesItsRowsWithoutOverlapAndInsideTheWidth) {
  for (const Rect area : {Rect{0, 0, 296, 700}, Rect{0, 0, 326, 840}, Rect{0, 0, 460, 980}}) {
    OnEveryPage([&](const Form& form, int page) {
      PlaceForm(form, area, page);
      const std::vector<int> ids = ShownControls(form);
      for (std::size_t i = 0; i < ids.size(); ++i) {
        const Rect place = platform::PlaceOf(ids[i]);
        EXPECT_LT(place.left, place.right) << ids[i];
        EXPECT_LT(place.top, place.bottom) << ids[i];
        EXPECT_GE(place.left, area.left) << ids[i];
        EXPECT_LE(place.right, area.right) << ids[i];
        for (std::size_t k = i + 1; k < ids.size(); ++k) {
          EXPECT_FALSE(Overlap(place, platform::PlaceOf(ids[k]))) << ids[i] << " " << ids[k];
        }
      }
    });
  }
}

TEST_F(EveryForm, HasItsTabOrderInTheOrderOfTheScreen) {
  OnEveryPage([&](const Form& form, int page) {
    PlaceForm(form, Rect{0, 0, 326, 840}, page);
    const std::vector<int> ids = ShownControls(form);
    for (std::size_t i = 1; i < ids.size(); ++i) {
      const Rect before = platform::PlaceOf(ids[i - 1]);
      const Rect place = platform::PlaceOf(ids[i]);
      const bool below = place.top >= before.bottom;
      const bool beside = place.top == before.top && place.left >= before.right;
      EXPECT_TRUE(below || beside) << ids[i - 1] << " " << ids[i];
    }
  });
}

TEST_F(EveryForm, NamesEachControlAndNoTwoAlike) {
  OnEveryPage([&](const Form& form, int page) {
    PlaceForm(form, Rect{0, 0, 326, 840}, page);
    std::map<std::u16string, int> names;
    for (const int id : ShownControls(form)) {
      std::u16string name = platform::AccessibleName(id);
      if (name.empty()) name = platform::TextOf(id);
      EXPECT_FALSE(name.empty()) << id;
      EXPECT_EQ(names.count(name), 0u) << id << " and " << names[name];
      names[name] = id;
    }
  });
}

TEST_F(EveryForm, StartsEachNumberWithANumber) {
  for (int n = 0; const Form* form = FormAt(n); ++n) {
    for (const FormRow& row : form->rows) {
      if (row.kind != RowKind::Number && row.kind != RowKind::Count) continue;
      if (!row.start[0]) continue;
      double value = 0;
      EXPECT_TRUE(ReadStrictNumber(row.start, value)) << n << " " << row.id;
    }
  }
}

TEST_F(EveryForm, GivesBackItsTextsAfterASwitchToMillimetresAndBack) {
  OnEveryPage([&](const Form& form, int page) {
    if (!form.metric) return;
    PlaceForm(form, Rect{0, 0, 326, 840}, page);
    ConvertForms(form.metric, 25.4);
    ConvertForms(form.metric, 1 / 25.4);
    for (std::size_t i = 0; i < form.rows.size(); ++i) {
      const FormRow& row = form.rows[i];
      if (!OnPage(row, page) || row.follows == Follows::Nothing || !row.start[0]) continue;
      EXPECT_EQ(platform::TextOf(row.id), FixedText(ParseDecimal(row.start, 0), row.decimals))
          << row.id;
    }
  });
}

}  // namespace
}  // namespace morva
