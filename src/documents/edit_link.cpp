#include "documents/edit_link.h"

#include <utility>

#include "app/hooks.h"

namespace morva {

EditLink editLink;

void SetEditLink(EditLink link) { editLink = std::move(link); }

void DropEditLink() {
  editLink = EditLink();
  Call(hooks.refreshBuilderKeys);
}

}  // namespace morva
