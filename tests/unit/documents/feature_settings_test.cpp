// Byte images here are worked out by hand from the IEEE and little-endian forms.
#include "documents/feature_settings.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <functional>
#include <limits>
#include <string>

namespace morva {
namespace {

FeatureSettings Valid(std::int32_t kind, int items) {
  FeatureSettings s;
  s.version = 3;
  s.kind = kind;
  s.itemCount = items;
  return s;
}

bool Accepts(const FeatureSettings& s) {
  return ValidateSettings(s, static_cast<std::size_t>(160 + 48 * s.itemCount));
}

bool AcceptsWith(std::int32_t kind, int items,
                 const std::function<void(FeatureSettings&)>& change) {
  FeatureSettings s = Valid(kind, items);
  change(s);
  return Accepts(s);
}

std::string Hex(const unsigned char* bytes, int count) {
  static const char kDigits[] = "0123456789ABCDEF";
  std::string text;
  for (int i = 0; i < count; ++i) {
    text += kDigits[bytes[i] / 16];
    text += kDigits[bytes[i] % 16];
  }
  return text;
}

TEST(FeatureSettings, WritesEachFieldLittleEndianAtItsPlace) {
  FeatureSettings s = Valid(kKindSketch, 1);
  s.metric = 1;
  s.a = -1;
  s.b = 0x01020304;
  s.c = 7;
  s.codeHash = 0xE40C292C;
  s.values[0] = 1.0;
  s.values[15] = -2.5;
  s.items[0].type = 5;
  s.items[0].tag = 258;
  s.items[0].p0 = 1.0;
  s.items[0].p1 = -2.5;
  s.items[0].p2 = 2.0;
  s.items[0].p3 = 0.5;
  s.items[0].p4 = 0.1;
  unsigned char bytes[kSettingsBytes];
  std::memset(bytes, 0xAA, sizeof bytes);
  WriteSettings(s, bytes);
  EXPECT_EQ(Hex(bytes, 32),
            "03000000"
            "04000000"
            "01000000"
            "FFFFFFFF"
            "04030201"
            "07000000"
            "01000000"
            "2C290CE4");
  EXPECT_EQ(Hex(bytes + 32, 8), "000000000000F03F");
  EXPECT_EQ(Hex(bytes + 40, 8), "0000000000000000");
  EXPECT_EQ(Hex(bytes + 152, 8), "00000000000004C0");
  EXPECT_EQ(Hex(bytes + 160, 48),
            "05000000"
            "02010000"
            "000000000000F03F"
            "00000000000004C0"
            "0000000000000040"
            "000000000000E03F"
            "9A9999999999B93F");
  EXPECT_EQ(Hex(bytes + 208, 48), std::string(96, '0'));
  EXPECT_EQ(Hex(bytes + kSettingsBytes - 48, 48), std::string(96, '0'));
}

TEST(FeatureSettings, LeavesStaleItemsOutOfTheImage) {
  FeatureSettings s = Valid(kKindSketch, 1);
  s.items[1].p0 = 9.0;
  unsigned char bytes[kSettingsBytes];
  WriteSettings(s, bytes);
  EXPECT_EQ(Hex(bytes + 208, 48), std::string(96, '0'));
}

TEST(FeatureSettings, ReadsBackEveryFieldOfAFullRecord) {
  FeatureSettings s = Valid(kKindSketch, kMaxItems);
  s.metric = 1;
  s.a = -5;
  s.b = 6;
  s.c = -7;
  s.codeHash = 0xFFFFFFFF;
  for (int i = 0; i < 16; ++i) s.values[i] = i * -1.25;
  for (int i = 0; i < kMaxItems; ++i) {
    s.items[i] = {i % 6, i + 100, i + 0.5, -i - 0.5, i * 2.0, i * 3.0, -i * 4.0};
  }
  unsigned char bytes[kSettingsBytes];
  WriteSettings(s, bytes);
  FeatureSettings back;
  ReadSettings(bytes, sizeof bytes, back);
  EXPECT_EQ(back.version, 3);
  EXPECT_EQ(back.kind, kKindSketch);
  EXPECT_EQ(back.metric, 1);
  EXPECT_EQ(back.a, -5);
  EXPECT_EQ(back.b, 6);
  EXPECT_EQ(back.c, -7);
  EXPECT_EQ(back.itemCount, kMaxItems);
  EXPECT_EQ(back.codeHash, 0xFFFFFFFFu);
  for (int i = 0; i < 16; ++i) EXPECT_EQ(back.values[i], i * -1.25);
  for (int i = 0; i < kMaxItems; ++i) {
    EXPECT_EQ(back.items[i].type, i % 6);
    EXPECT_EQ(back.items[i].tag, i + 100);
    EXPECT_EQ(back.items[i].p0, i + 0.5);
    EXPECT_EQ(back.items[i].p1, -i - 0.5);
    EXPECT_EQ(back.items[i].p2, i * 2.0);
    EXPECT_EQ(back.items[i].p3, i * 3.0);
    EXPECT_EQ(back.items[i].p4, -i * 4.0);
  }
}

TEST(FeatureSettings, ReadsMissingBytesAsZeroEvenInsideAField) {
  const unsigned char bytes[] = {3, 0, 0, 0, 4, 1};
  FeatureSettings s;
  s.metric = 9;
  s.values[15] = 9.0;
  s.items[95].p4 = 9.0;
  ReadSettings(bytes, sizeof bytes, s);
  EXPECT_EQ(s.version, 3);
  EXPECT_EQ(s.kind, 260);
  EXPECT_EQ(s.metric, 0);
  EXPECT_EQ(s.values[15], 0.0);
  EXPECT_EQ(s.items[95].p4, 0.0);
}

TEST(FeatureSettings, KeepsAnItemCountBeyondTheTableForTheCheckToRefuse) {
  unsigned char bytes[kSettingsBytes];
  WriteSettings(Valid(kKindSketch, 96), bytes);
  bytes[24] = 97;
  FeatureSettings s;
  ReadSettings(bytes, sizeof bytes, s);
  EXPECT_EQ(s.itemCount, 97);
  EXPECT_FALSE(ValidateSettings(s, 160 + 48 * 97));
  bytes[27] = 0xFF;  // negative as a signed number
  ReadSettings(bytes, sizeof bytes, s);
  EXPECT_LT(s.itemCount, 0);
  EXPECT_FALSE(ValidateSettings(s, sizeof bytes));
}

TEST(ValidateSettings, TakesVersionsOneToThreeKindsOneToSevenAndBothUnits) {
  for (int kind = 1; kind <= 7; ++kind) EXPECT_TRUE(Accepts(Valid(kind, 1))) << kind;
  EXPECT_FALSE(Accepts(Valid(0, 1)));
  EXPECT_FALSE(Accepts(Valid(8, 1)));
  EXPECT_FALSE(Accepts(Valid(-1, 1)));
  for (int version = -1; version <= 5; ++version) {
    EXPECT_EQ(AcceptsWith(4, 1, [&](FeatureSettings& s) { s.version = version; }),
              version >= 1 && version <= 3)
        << version;
  }
  for (int metric = -1; metric <= 2; ++metric) {
    EXPECT_EQ(AcceptsWith(4, 1, [&](FeatureSettings& s) { s.metric = metric; }),
              metric == 0 || metric == 1)
        << metric;
  }
}

TEST(ValidateSettings, WantsExactlyTheBytesOfItsItems) {
  const FeatureSettings s = Valid(kKindSketch, 2);
  EXPECT_TRUE(ValidateSettings(s, 256));
  EXPECT_FALSE(ValidateSettings(s, 255));
  EXPECT_FALSE(ValidateSettings(s, 257));
  EXPECT_FALSE(ValidateSettings(s, 304));
  EXPECT_TRUE(ValidateSettings(Valid(kKindSketch, 0), 160));
  EXPECT_FALSE(ValidateSettings(Valid(kKindSketch, 0), 0));
  EXPECT_TRUE(ValidateSettings(Valid(kKindSketch, 96), 4768));
}

TEST(ValidateSettings, BoundsTheShapeRowByKind) {
  for (int a = -3; a <= 8; ++a) {
    const auto setA = [&](FeatureSettings& s) { s.a = a; };
    EXPECT_EQ(AcceptsWith(kKindShape, 1, setA), a >= -1 && a <= 6) << a;
    EXPECT_EQ(AcceptsWith(kKindCircular, 1, setA), a >= -1 && a <= 5) << a;
    EXPECT_EQ(AcceptsWith(kKindRectangular, 1, setA), a >= -1 && a <= 5) << a;
    EXPECT_TRUE(AcceptsWith(kKindSketch, 1, setA)) << a;
    EXPECT_TRUE(AcceptsWith(kKindSkim, 1, setA)) << a;
  }
}

TEST(ValidateSettings, WantsItemsForAShapeOfTheProjectsOwn) {
  for (const int kind : {kKindShape, kKindCircular, kKindRectangular}) {
    EXPECT_FALSE(AcceptsWith(kind, 0, [](FeatureSettings& s) { s.a = -1; }));
    EXPECT_TRUE(AcceptsWith(kind, 1, [](FeatureSettings& s) { s.a = -1; }));
    EXPECT_TRUE(AcceptsWith(kind, 0, [](FeatureSettings& s) { s.a = 0; }));
  }
}

TEST(ValidateSettings, TakesOrientationsUpToTwoInACircularPatternOnly) {
  for (int b = -1; b <= 4; ++b) {
    const auto setB = [&](FeatureSettings& s) { s.b = b; };
    EXPECT_EQ(AcceptsWith(kKindCircular, 0, setB), b >= 0 && b <= 2) << b;
    EXPECT_TRUE(AcceptsWith(kKindRectangular, 0, setB));
    EXPECT_TRUE(AcceptsWith(kKindShape, 0, setB));
  }
}

TEST(ValidateSettings, BoundsTheThreeChoicesOfAPlate) {
  for (int n = -1; n <= 5; ++n) {
    EXPECT_EQ(AcceptsWith(kKindPlate, 1, [&](FeatureSettings& s) { s.a = n; }), n >= 0 && n <= 3);
    EXPECT_EQ(AcceptsWith(kKindPlate, 1, [&](FeatureSettings& s) { s.b = n; }), n >= 0 && n <= 3);
    EXPECT_EQ(AcceptsWith(kKindPlate, 1, [&](FeatureSettings& s) { s.c = n; }), n >= 0 && n <= 2);
  }
  EXPECT_FALSE(AcceptsWith(kKindPlate, 0, [](FeatureSettings& s) { s.a = 3; }));
  EXPECT_TRUE(AcceptsWith(kKindPlate, 0, [](FeatureSettings& s) { s.a = 2; }));
}

TEST(ValidateSettings, WantsAWholeCountOfPlacedItemsInAPlate) {
  const auto placed = [](int a, int items, double count) {
    return AcceptsWith(kKindPlate, items, [&](FeatureSettings& s) {
      s.a = a;
      s.values[14] = count;
    });
  };
  EXPECT_TRUE(placed(0, 4, 0.0));
  EXPECT_TRUE(placed(0, 4, 4.0));
  EXPECT_FALSE(placed(0, 4, 5.0));
  EXPECT_FALSE(placed(0, 4, 2.5));
  EXPECT_FALSE(placed(0, 4, -1.0));
  EXPECT_FALSE(placed(0, 4, std::nan("")));
  EXPECT_TRUE(placed(3, 65, 64.0));
  EXPECT_FALSE(placed(3, 65, 65.0));
  EXPECT_TRUE(placed(2, 65, 65.0));
}

TEST(ValidateSettings, KeepsEveryValueBelowAThousandMillion) {
  const double below = std::nextafter(1e9, 0.0);
  const double bad[] = {1e9, -1e9, std::nan(""), std::numeric_limits<double>::infinity(),
                        -std::numeric_limits<double>::infinity()};
  for (int i = 0; i < 16; ++i) {
    EXPECT_TRUE(AcceptsWith(4, 0, [&](FeatureSettings& s) { s.values[i] = below; }));
    EXPECT_TRUE(AcceptsWith(4, 0, [&](FeatureSettings& s) { s.values[i] = -below; }));
    for (const double value : bad) {
      EXPECT_FALSE(AcceptsWith(4, 0, [&](FeatureSettings& s) { s.values[i] = value; })) << i;
    }
  }
}

TEST(ValidateSettings, BoundsEachNumberOfEveryItem) {
  double FeatureItem::*const signedFields[] = {&FeatureItem::p0, &FeatureItem::p1,
                                               &FeatureItem::p4};
  double FeatureItem::*const sizeFields[] = {&FeatureItem::p2, &FeatureItem::p3};
  const auto with = [](double FeatureItem::*field, double value) {
    return AcceptsWith(4, 3, [&](FeatureSettings& s) { s.items[2].*field = value; });
  };
  for (const auto field : signedFields) {
    EXPECT_TRUE(with(field, -999999999.5));
    EXPECT_TRUE(with(field, 999999999.5));
    EXPECT_FALSE(with(field, 1e9));
    EXPECT_FALSE(with(field, -1e9));
    EXPECT_FALSE(with(field, std::nan("")));
  }
  for (const auto field : sizeFields) {
    EXPECT_TRUE(with(field, 0.0));
    EXPECT_TRUE(with(field, 999999999.5));
    EXPECT_FALSE(with(field, 1e9));
    EXPECT_FALSE(with(field, -0.001));
    EXPECT_FALSE(with(field, std::nan("")));
  }
}

TEST(ValidateSettings, LooksAtNoItemBehindTheCount) {
  EXPECT_TRUE(AcceptsWith(4, 2, [](FeatureSettings& s) { s.items[2].type = -1; }));
}

TEST(ValidateSettings, TakesItemTypesToThreeInVersionOneAndToFiveInTwoAndThree) {
  for (int version = 1; version <= 3; ++version) {
    for (int type = -1; type <= 7; ++type) {
      EXPECT_EQ(AcceptsWith(4, 1,
                            [&](FeatureSettings& s) {
                              s.version = version;
                              s.items[0].type = type;
                            }),
                type >= 0 && type <= (version == 1 ? 3 : 5))
          << version << " " << type;
    }
  }
}

TEST(FeatureSettings, DropsTheTagsOfVersionsBelowThree) {
  for (int version = 1; version <= 3; ++version) {
    FeatureSettings s = Valid(kKindSketch, 2);
    s.version = version;
    s.items[0].tag = 11;
    s.items[1].tag = 12;
    DropOldTags(s);
    EXPECT_EQ(s.items[0].tag, version == 3 ? 11 : 0);
    EXPECT_EQ(s.items[1].tag, version == 3 ? 12 : 0);
  }
}

TEST(FeatureSettings, NamesTheKindsForTheList) {
  EXPECT_EQ(KindWords(1), std::u16string(u"Shape"));
  EXPECT_EQ(KindWords(2), std::u16string(u"Circular pattern"));
  EXPECT_EQ(KindWords(3), std::u16string(u"Rectangular pattern"));
  EXPECT_EQ(KindWords(4), std::u16string(u"CAD sketch"));
  EXPECT_EQ(KindWords(5), std::u16string(u"Plate"));
  EXPECT_EQ(KindWords(6), std::u16string(u"Guided skim"));
  EXPECT_EQ(KindWords(7), std::u16string(u"User code"));
  EXPECT_EQ(KindWords(0), std::u16string(u"Unknown"));
  EXPECT_EQ(KindWords(8), std::u16string(u"Unknown"));
  EXPECT_EQ(KindWords(-1), std::u16string(u"Unknown"));
}

}  // namespace
}  // namespace morva
