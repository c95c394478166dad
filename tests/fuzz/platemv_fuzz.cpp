// Any bytes are read as plates, in the file's form and in the older one, without harm; what is
// refused leaves the record as it was, and what is accepted reads the same once written.
#include <memory>
#include <string>

#include "documents/companions.h"
#include "fuzz/fuzz.h"

namespace {

using namespace morva;
using fuzz::Check;

void CheckPlate(const FeatureSettings& plate) {
  Check(plate.kind == kKindPlate, "a plate is a plate");
  Check(ValidateSettings(plate, static_cast<std::size_t>(SettingsLength(plate))), "and valid");
}

void CheckFile(const std::string& bytes) {
  static const auto store = std::make_unique<PlateStore>();
  static const auto again = std::make_unique<PlateStore>();
  *store = PlateStore();
  store->active = 77;
  if (!ReadPlateFile(bytes, *store)) {
    Check(store->active == 77 && store->plates[0].version == 0, "refused is untouched");
    return;
  }
  Check(bytes.size() == kPlateFileBytes && store->active < store->count, "the head holds");
  Check(store->count <= kMaxPlates, "the count is one of ours");
  for (std::uint32_t i = 0; i < store->count; ++i) CheckPlate(store->plates[i]);
  std::string written;
  std::string twice;
  WritePlateFile(*store, written);
  Check(ReadPlateFile(written, *again), "what was written is read");
  WritePlateFile(*again, twice);
  Check(written == twice, "and goes out the same");
}

void CheckOldFile(const std::string& bytes) {
  static const auto plate = std::make_unique<FeatureSettings>();
  static const auto again = std::make_unique<FeatureSettings>();
  *plate = FeatureSettings();
  plate->version = 77;
  if (!ReadOldPlateFile(bytes, *plate)) {
    Check(plate->version == 77 && plate->kind == 0, "refused is untouched");
    return;
  }
  Check(bytes.size() == kOldPlateFileBytes, "the older form has its size");
  CheckPlate(*plate);
  std::string written;
  std::string twice;
  WriteOldPlateFile(*plate, written);
  Check(ReadOldPlateFile(written, *again), "what was written is read");
  WriteOldPlateFile(*again, twice);
  Check(written == twice, "and goes out the same");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string bytes(reinterpret_cast<const char*>(data), size);
  CheckFile(bytes);
  CheckOldFile(bytes);
  // Most inputs have neither size: tried with each of the two.
  bytes.resize(kPlateFileBytes, '\0');
  CheckFile(bytes);
  bytes.resize(kOldPlateFileBytes);
  CheckOldFile(bytes);
  return 0;
}
