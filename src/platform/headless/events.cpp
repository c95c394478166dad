// The one record of the listening application.

#include "platform/events.h"

#include "platform/headless/headless_internal.h"

namespace platform {
namespace {

const Events kNobody;
const Events* listener = &kNobody;

void ForgetListener() { listener = &kNobody; }
headless::ResetHook hook(1, ForgetListener);

}  // namespace

void ListenTo(const Events* events) { listener = events ? events : &kNobody; }

const Events& Listener() { return *listener; }

}  // namespace platform

namespace headless {

void SendCommand(int id, int notification) {
  if (TellDialog(id, notification)) return;
  const platform::Events& events = platform::Listener();
  if (events.command) events.command(id, notification);
}

}  // namespace headless
