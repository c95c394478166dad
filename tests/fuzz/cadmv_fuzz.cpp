// Any bytes are read as drawings without harm; what is refused leaves the store as it was, and
// what is accepted goes out in a form that reads as the same.
#include <memory>
#include <string>

#include "documents/companions.h"
#include "fuzz/fuzz.h"

namespace {

using namespace morva;
using fuzz::Check;

void CheckFile(const std::string& bytes) {
  static const auto store = std::make_unique<CadStore>();
  static const auto again = std::make_unique<CadStore>();
  *store = CadStore();
  store->count = 77;
  if (!ReadCadFile(bytes, *store)) {
    Check(store->count == 77 && store->drawings[0].settings.version == 0, "refused is untouched");
    return;
  }
  Check(bytes.size() == kCadFileBytes, "an accepted file has its size");
  Check(store->count >= 1 && store->count <= kMaxDrawings, "the count is one of ours");
  Check(store->active < store->count, "the active drawing is in use");
  for (std::uint32_t i = 0; i < store->count; ++i) {
    const FeatureSettings& settings = store->drawings[i].settings;
    const auto length = static_cast<std::size_t>(SettingsLength(settings));
    Check(settings.kind == kKindSketch && ValidateSettings(settings, length), "slots in use hold");
    Check(store->drawings[i].name[kDrawingNameUnits - 1] == 0, "a name ends");
  }
  std::string written;
  std::string twice;
  WriteCadFile(*store, written);
  Check(written.size() == kCadFileBytes, "the file written has its size");
  Check(ReadCadFile(written, *again), "what was written is read");
  WriteCadFile(*again, twice);
  Check(written == twice, "and goes out the same");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string bytes(reinterpret_cast<const char*>(data), size);
  CheckFile(bytes);
  // Most inputs have the wrong size: tried with the right one too.
  bytes.resize(kCadFileBytes, '\0');
  CheckFile(bytes);
  return 0;
}
