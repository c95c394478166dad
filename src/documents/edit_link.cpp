#include "documents/edit_link.h"

#include <utility>

#include "documents/builder_table.h"

namespace morva {

EditLink editLink;

void SetEditLink(EditLink link) { editLink = std::move(link); }

void DropEditLink() {
  editLink = EditLink();
  ShowBuilderKeys(0);
}

}  // namespace morva
