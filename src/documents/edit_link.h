// The link to the block that a builder has open.
#pragma once

#include <cstdint>
#include <string>

namespace morva {

// The link to a block under edit; one for the application.
struct EditLink {
  std::int32_t kind = 0;  // 0: no link
  std::int32_t id = 0;
  std::int32_t tab = -1;
  std::u16string original;  // the block's text when it was opened for edit
};
extern EditLink editLink;
// Another link, told to nobody.
void SetEditLink(EditLink link);
// Forgets the link and tells the builders.
void DropEditLink();

}  // namespace morva
