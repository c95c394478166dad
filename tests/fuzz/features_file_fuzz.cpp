// Any bytes either leave the list as it was or give entries that can be written and read again.
#include <string_view>

#include "documents/disabled_code.h"
#include "fuzz/fuzz.h"

namespace {

using namespace morva;
using fuzz::Check;

int Count(const DisabledCodeEntry* list) {
  int count = 0;
  for (; list; list = list->next) ++count;
  return count;
}

void CheckEntries(const DisabledCodeEntry* list) {
  for (const DisabledCodeEntry* e = list; e; e = e->next) {
    Check(e->id >= 1, "ids are at least 1");
    Check(FindDisabledCode(list, e->id) == e, "ids are unique");
  }
}

// Two saves and loads bring back the order, and so the bytes.
void CheckRoundTrip(const DisabledCodeEntry* list) {
  std::string first;
  Check(WriteDisabledCode(list, first), "what was read can be written");
  DisabledCodeEntry* flipped = nullptr;
  Check(ReadDisabledCode(first, flipped), "and read again");
  Check(Count(flipped) == Count(list), "with as many entries");
  for (const DisabledCodeEntry* e = list; e; e = e->next) {
    const DisabledCodeEntry* same = FindDisabledCode(flipped, e->id);
    Check(same && same->text == e->text, "and the same texts");
  }
  std::string second;
  Check(WriteDisabledCode(flipped, second), "the flipped list can be written");
  DisabledCodeEntry* back = nullptr;
  Check(ReadDisabledCode(second, back), "and read");
  std::string third;
  Check(WriteDisabledCode(back, third) && third == first, "in the first order again");
  FreeDisabledCode(flipped);
  FreeDisabledCode(back);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  DisabledCodeEntry* list = nullptr;
  AddDisabledCode(list, u"G0");
  const DisabledCodeEntry* own = list;
  const bool beside = ReadDisabledCode(bytes, list);
  Check(beside || (list == own && !own->next), "a refused file leaves the list as it was");
  Check(FindDisabledCode(list, 1)->text == u"G0", "the tab's own entry stays");
  CheckEntries(list);
  if (beside) CheckRoundTrip(list);
  FreeDisabledCode(list);
  if (ReadDisabledCode(bytes, list)) {
    CheckEntries(list);
    CheckRoundTrip(list);
  } else {
    Check(list == nullptr, "a refused file leaves no entries");
  }
  FreeDisabledCode(list);
  return 0;
}
