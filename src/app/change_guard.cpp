#include "app/change_guard.h"

#include "app/app_state.h"

namespace morva {

SuppressChanges::SuppressChanges() : before_(app.suppressChange) { app.suppressChange = true; }
SuppressChanges::~SuppressChanges() { app.suppressChange = before_; }

InsertingText::InsertingText() : before_(app.insertingText) { app.insertingText = true; }
InsertingText::~InsertingText() { app.insertingText = before_; }

}  // namespace morva
