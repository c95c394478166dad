// The byte images of a program's drawings and plates.

#include "documents/companions.h"

#include <algorithm>
#include <memory>
#include <new>

#include "app/limits.h"
#include "documents/little_endian.h"
#include "platform/file.h"

namespace morva {
namespace {

constexpr std::size_t kHeadBytes = 8;
constexpr std::size_t kCodeHashAt = 28;  // in a settings record
constexpr std::size_t kHiddenAt = kSettingsBytes;
constexpr std::size_t kLockedAt = kHiddenAt + kMaxItems;
constexpr std::size_t kNameAt = kLockedAt + kMaxItems;

const unsigned char* BytesAt(std::string_view bytes, std::size_t at) {
  return reinterpret_cast<const unsigned char*>(bytes.data()) + at;
}

unsigned char* BytesAt(std::string& bytes, std::size_t at) {
  return reinterpret_cast<unsigned char*>(bytes.data()) + at;
}

// Both files begin with how many slots are in use and which one is active.
bool ReadHead(std::string_view bytes, std::uint32_t most, std::uint32_t& count,
              std::uint32_t& active) {
  count = LoadUnsigned(BytesAt(bytes, 0));
  active = LoadUnsigned(BytesAt(bytes, 4));
  return count >= 1 && count <= most && active < count;
}

bool UsableRecord(const FeatureSettings& record, std::int32_t kind) {
  // The count is tested first: a length made from a wild one could overflow.
  if (record.kind != kind || record.itemCount < 0 || record.itemCount > kMaxItems) return false;
  return ValidateSettings(record, static_cast<std::size_t>(SettingsLength(record)));
}

void ReadDrawing(const unsigned char* slot, Drawing& drawing) {
  ReadSettings(slot, kSettingsBytes, drawing.settings);
  for (int i = 0; i < kMaxItems; ++i) {
    drawing.hidden[i] = slot[kHiddenAt + static_cast<std::size_t>(i)];
    drawing.locked[i] = slot[kLockedAt + static_cast<std::size_t>(i)];
  }
  for (int i = 0; i < kDrawingNameUnits; ++i) {
    const unsigned char* unit = slot + kNameAt + 2 * static_cast<std::size_t>(i);
    drawing.name[i] = static_cast<char16_t>(unit[0] | unit[1] << 8);
  }
  drawing.name[kDrawingNameUnits - 1] = 0;
  drawing.block.codeHash = drawing.settings.codeHash;
  drawing.settings.codeHash = 0;
}

void WriteDrawing(const Drawing& drawing, unsigned char* slot) {
  WriteSettings(drawing.settings, slot);
  StoreUnsigned(slot + kCodeHashAt, drawing.block.codeHash);
  for (int i = 0; i < kMaxItems; ++i) {
    slot[kHiddenAt + static_cast<std::size_t>(i)] = drawing.hidden[i];
    slot[kLockedAt + static_cast<std::size_t>(i)] = drawing.locked[i];
  }
  for (int i = 0; i < kDrawingNameUnits; ++i) {
    unsigned char* unit = slot + kNameAt + 2 * static_cast<std::size_t>(i);
    unit[0] = static_cast<unsigned char>(drawing.name[i] & 0xFF);
    unit[1] = static_cast<unsigned char>(drawing.name[i] >> 8);
  }
}

std::uint32_t HashOf(std::string_view bytes) {
  std::uint32_t hash = 0x811C9DC5u;  // FNV-1a, 32 bits
  for (const char byte : bytes) hash = (hash ^ static_cast<unsigned char>(byte)) * 0x01000193u;
  return hash;
}

std::u16string HashOfName(std::string_view name) {
  const std::uint32_t hash = HashOf(name);
  std::u16string digits;
  for (int shift = 28; shift >= 0; shift -= 4) digits += u"0123456789abcdef"[hash >> shift & 15];
  return digits;
}

}  // namespace

std::u16string CompanionPath(std::u16string_view program, std::u16string_view suffix) {
  const std::size_t separator = program.rfind(platform::PathSeparator());
  const std::size_t nameAt = separator == program.npos ? 0 : separator + 1;
  std::u16string name(program.substr(nameAt));
  const std::string whole = platform::ToUtf8(name);
  if (whole.size() + suffix.size() > kMaxNameBytes) {
    const std::u16string end = u"~" + HashOfName(whole) + std::u16string(suffix);
    while (platform::ToUtf8(name).size() + end.size() > kMaxNameBytes) {
      const bool pair = name.size() > 1 && name.back() >= 0xDC00 && name.back() <= 0xDFFF;
      name.resize(name.size() - (pair ? 2 : 1));
    }
    name += end;
  } else {
    name += suffix;
  }
  return std::u16string(program.substr(0, nameAt)) + name;
}

std::uint32_t GeometryHash(const FeatureSettings& drawing) {
  FeatureSettings plain;
  plain.metric = drawing.metric;
  plain.itemCount = drawing.itemCount;
  std::copy_n(drawing.items, kMaxItems, plain.items);
  unsigned char bytes[kSettingsBytes];
  WriteSettings(plain, bytes);
  const auto length = static_cast<std::size_t>(SettingsLength(plain));
  return std::max(HashOf({reinterpret_cast<const char*>(bytes), length}), 1u);
}

bool ReadCadFile(std::string_view bytes, CadStore& store) {
  if (bytes.size() != kCadFileBytes) return false;
  const std::unique_ptr<CadStore> read(new (std::nothrow) CadStore());
  if (!read) return false;
  if (!ReadHead(bytes, kMaxDrawings, read->count, read->active)) return false;
  for (std::size_t i = 0; i < kMaxDrawings; ++i) {
    Drawing& drawing = read->drawings[i];
    ReadDrawing(BytesAt(bytes, kHeadBytes + i * kDrawingSlotBytes), drawing);
    if (i >= read->count) continue;
    if (!UsableRecord(drawing.settings, kKindSketch)) return false;
    DropOldTags(drawing.settings);
    drawing.readGeometry = GeometryHash(drawing.settings);
  }
  store = *read;
  return true;
}

void WriteCadFile(const CadStore& store, std::string& bytes) {
  bytes.assign(kCadFileBytes, '\0');
  StoreUnsigned(BytesAt(bytes, 0), store.count);
  StoreUnsigned(BytesAt(bytes, 4), store.active);
  for (std::size_t i = 0; i < kMaxDrawings; ++i) {
    WriteDrawing(store.drawings[i], BytesAt(bytes, kHeadBytes + i * kDrawingSlotBytes));
  }
}

bool ReadPlateFile(std::string_view bytes, PlateStore& store) {
  if (bytes.size() != kPlateFileBytes) return false;
  const std::unique_ptr<PlateStore> read(new (std::nothrow) PlateStore());
  if (!read) return false;
  if (!ReadHead(bytes, kMaxPlates, read->count, read->active)) return false;
  for (std::size_t i = 0; i < kMaxPlates; ++i) {
    FeatureSettings& plate = read->plates[i];
    ReadSettings(BytesAt(bytes, kHeadBytes + i * kSettingsBytes), kSettingsBytes, plate);
    if (i >= read->count) continue;
    if (!UsableRecord(plate, kKindPlate)) return false;
    DropOldTags(plate);
  }
  store = *read;
  return true;
}

void WritePlateFile(const PlateStore& store, std::string& bytes) {
  bytes.assign(kPlateFileBytes, '\0');
  StoreUnsigned(BytesAt(bytes, 0), store.count);
  StoreUnsigned(BytesAt(bytes, 4), store.active);
  for (std::size_t i = 0; i < kMaxPlates; ++i) {
    WriteSettings(store.plates[i], BytesAt(bytes, kHeadBytes + i * kSettingsBytes));
  }
}

bool ReadOldPlateFile(std::string_view bytes, FeatureSettings& plate) {
  if (bytes.size() != kOldPlateFileBytes) return false;
  const std::unique_ptr<FeatureSettings> read(new (std::nothrow) FeatureSettings());
  if (!read) return false;
  ReadSettings(BytesAt(bytes, 0), kSettingsBytes, *read);
  if (!UsableRecord(*read, kKindPlate)) return false;
  DropOldTags(*read);
  plate = *read;
  return true;
}

void WriteOldPlateFile(const FeatureSettings& plate, std::string& bytes) {
  bytes.assign(kOldPlateFileBytes, '\0');
  WriteSettings(plate, BytesAt(bytes, 0));
}

}  // namespace morva
