#include "documents/feature_settings.h"

#include <cmath>
#include <iterator>
#include <limits>

#include "documents/little_endian.h"

namespace morva {

namespace {

constexpr std::int32_t kTagVersion = 3;       // the first with tags in its items
constexpr double kValueBound = 1000000000.0;  // exclusive, for every stored number

// A record may end anywhere, even inside a field; what is missing is zero.
struct ByteReader {
  const unsigned char* bytes;
  std::size_t left;
  std::uint32_t Unsigned() {
    unsigned char field[4] = {};
    return LoadUnsigned(Take(field, 4));
  }
  std::int32_t Signed() { return static_cast<std::int32_t>(Unsigned()); }
  double Double() {
    unsigned char field[8] = {};
    return LoadReal(Take(field, 8));
  }
  const unsigned char* Take(unsigned char* field, std::size_t size) {
    const std::size_t count = left < size ? left : size;
    for (std::size_t i = 0; i < count; ++i) field[i] = bytes[i];
    bytes += count;
    left -= count;
    return field;
  }
};

// NaN fails both.
bool InRange(double value) { return std::fabs(value) < kValueBound; }
bool InRangeNotNegative(double value) { return value >= 0.0 && value < kValueBound; }

// What a kind is called in the feature list, and which rows of lists its records may hold.
struct Rows {
  std::int32_t least = std::numeric_limits<std::int32_t>::min();
  std::int32_t most = std::numeric_limits<std::int32_t>::max();
};
struct KindRow {
  const char16_t* words = u"Unknown";
  Rows a = {};
  Rows b = {};
  Rows c = {};
};
constexpr std::int32_t kOwnObjects = -1;  // row a of a saved shape, which the items hold
constexpr KindRow kKinds[] = {{},
                              {u"Shape", {kOwnObjects, 6}},
                              {u"Circular pattern", {kOwnObjects, 5}, {0, 2}},
                              {u"Rectangular pattern", {kOwnObjects, 5}},
                              {u"CAD sketch"},
                              {u"Plate", {0, 3}, {0, 3}, {0, 2}},
                              {u"Guided skim"},
                              {u"User code"}};
static_assert(std::size(kKinds) == kFeatureKinds);

bool Holds(const Rows& rows, std::int32_t row) { return row >= rows.least && row <= rows.most; }

bool ValidOutline(const FeatureSettings& s) {
  const double outline = s.values[kPlateOutlineItems];
  if (!(outline >= 0.0 && outline <= s.itemCount && outline == std::floor(outline))) return false;
  return s.a != 3 || (s.itemCount > 0 && outline <= kMaxShapeObjects);
}

bool ValidKind(const FeatureSettings& s) {
  const KindRow& kind = kKinds[s.kind];
  if (!Holds(kind.a, s.a) || !Holds(kind.b, s.b) || !Holds(kind.c, s.c)) return false;
  if (kind.a.least == kOwnObjects && s.a == kOwnObjects && s.itemCount == 0) return false;
  return s.kind != kKindPlate || ValidOutline(s);
}

bool ValidItem(const FeatureItem& item, std::int32_t version) {
  if (item.type < 0 || item.type > 3 + (version & 2)) return false;
  return InRange(item.p0) && InRange(item.p1) && InRangeNotNegative(item.p2) &&
         InRangeNotNegative(item.p3) && InRange(item.p4);
}

}  // namespace

bool ValidateSettings(const FeatureSettings& record, std::size_t length) {
  if (record.version < 1 || record.version > kSettingsVersion) return false;
  if (record.kind < kKindShape || record.kind >= kFeatureKinds) return false;
  if (record.metric != 0 && record.metric != 1) return false;
  if (static_cast<std::uint32_t>(record.itemCount) > static_cast<std::uint32_t>(kMaxItems))
    return false;
  if (length != static_cast<std::size_t>(SettingsLength(record))) return false;
  if (!ValidKind(record)) return false;
  for (const double value : record.values) {
    if (!InRange(value)) return false;
  }
  for (int i = 0; i < record.itemCount; ++i) {
    if (!ValidItem(record.items[i], record.version)) return false;
  }
  return true;
}

void WriteSettings(const FeatureSettings& record, unsigned char* bytes) {
  const std::int32_t head[] = {record.version, record.kind, record.metric,   record.a,
                               record.b,       record.c,    record.itemCount};
  for (int i = 0; i < 7; ++i) StoreInteger(bytes + 4 * i, head[i]);
  StoreUnsigned(bytes + 28, record.codeHash);
  for (int i = 0; i < kSettingsValues; ++i) StoreReal(bytes + 32 + 8 * i, record.values[i]);
  for (int i = 0; i < kMaxItems; ++i) {
    unsigned char* at = bytes + kSettingsHeadBytes + kItemBytes * i;
    const FeatureItem item = i < record.itemCount ? record.items[i] : FeatureItem();
    StoreInteger(at, item.type);
    StoreInteger(at + 4, item.tag);
    StoreReal(at + 8, item.p0);
    StoreReal(at + 16, item.p1);
    StoreReal(at + 24, item.p2);
    StoreReal(at + 32, item.p3);
    StoreReal(at + 40, item.p4);
  }
}

void ReadSettings(const unsigned char* bytes, std::size_t length, FeatureSettings& record) {
  ByteReader in{bytes, length};
  record.version = in.Signed();
  record.kind = in.Signed();
  record.metric = in.Signed();
  record.a = in.Signed();
  record.b = in.Signed();
  record.c = in.Signed();
  record.itemCount = in.Signed();
  record.codeHash = in.Unsigned();
  for (double& value : record.values) value = in.Double();
  for (FeatureItem& item : record.items) {
    if (in.left == 0) {
      item = FeatureItem();
      continue;
    }
    item.type = in.Signed();
    item.tag = in.Signed();
    item.p0 = in.Double();
    item.p1 = in.Double();
    item.p2 = in.Double();
    item.p3 = in.Double();
    item.p4 = in.Double();
  }
}

void DropOldTags(FeatureSettings& record) {
  if (record.version >= kTagVersion) return;
  for (FeatureItem& item : record.items) item.tag = 0;
}

const char16_t* KindWords(std::int32_t kind) {
  return kKinds[kind > 0 && kind < kFeatureKinds ? kind : 0].words;
}

}  // namespace morva
