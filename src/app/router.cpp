#include "app/router.h"

#include "app/join_table.h"
#include "app/limits.h"
#include "app/stop.h"
#include "platform/events.h"
#include "text/codetext.h"

namespace morva {

namespace {

struct Row {
  RouterStage stage;
  int firstId;
  int lastId;
  int notification;
  CommandHandler handler;
};

Row rows[kMaxCommandHandlers];
JoinTable rowFill{u"command handlers", kMaxCommandHandlers};

struct TimerRow {
  int timer;
  void (*handler)();
};
TimerRow timerRows[kMaxTimerHandlers];
JoinTable timerFill{u"timer handlers", kMaxTimerHandlers};

struct MessageRow {
  unsigned message;
  void (*handler)(unsigned long long, unsigned long long);
};
MessageRow messageRows[kMaxMessageHandlers];
JoinTable messageFill{u"message handlers", kMaxMessageHandlers};

[[noreturn]] void StopAt(std::u16string_view what, int number, std::u16string_view why) {
  StopProgram(u"MORVA cannot start. The " + std::u16string(what) + u" " + IntegerText(number) +
              u" " + std::u16string(why) + u".");
}

bool Fits(const Row& row, int id, int notification) {
  if (id < row.firstId || id > row.lastId) return false;
  if (row.notification == kNotifyBelowThree) return notification > 0 && notification < 3;
  return row.notification == notification;
}

const Row* FindRow(int id, int notification) {
  for (int stage = 0; stage < kRouterStages; ++stage) {
    for (int i = 0; i < rowFill.count; ++i) {
      if (static_cast<int>(rows[i].stage) == stage && Fits(rows[i], id, notification)) {
        return &rows[i];
      }
    }
  }
  return nullptr;
}

}  // namespace

void RegisterCommand(RouterStage stage, int firstId, int lastId, int notification,
                     CommandHandler handler) {
  if (!handler || lastId < firstId) StopAt(u"command", firstId, u"has no handler or no id");
  for (int i = 0; i < rowFill.count; ++i) {
    const Row& row = rows[i];
    if (row.stage == stage && row.notification == notification && row.firstId <= lastId &&
        firstId <= row.lastId) {
      StopAt(u"command", firstId, u"has a handler in this stage already");
    }
  }
  rows[NextRow(rowFill)] = Row{stage, firstId, lastId, notification, handler};
}

void ClearCommands() {
  rowFill.count = 0;
  timerFill.count = 0;
  messageFill.count = 0;
}

bool RouteCommand(int id, int notification) {
  const Row* row = FindRow(id, notification);
  if (!row) return false;
  row->handler(id, notification);
  return true;
}

int StageOf(int id, int notification) {
  const Row* row = FindRow(id, notification);
  return row ? static_cast<int>(row->stage) : -1;
}

void RegisterTimer(int timer, void (*handler)()) {
  if (!handler) StopAt(u"timer", timer, u"has no handler");
  for (int i = 0; i < timerFill.count; ++i) {
    const bool same = timerRows[i].timer == timer && timerRows[i].handler == handler;
    if (same) StopAt(u"timer", timer, u"has this handler already");
  }
  timerRows[NextRow(timerFill)] = TimerRow{timer, handler};
}

void RegisterMessage(unsigned message,
                     void (*handler)(unsigned long long first, unsigned long long second)) {
  const int number = static_cast<int>(message);
  if (!handler) StopAt(u"message", number, u"has no handler");
  for (int i = 0; i < messageFill.count; ++i) {
    if (messageRows[i].message == message) StopAt(u"message", number, u"has a handler already");
  }
  messageRows[NextRow(messageFill)] = MessageRow{message, handler};
}

void RouteTimer(int timer) {
  for (int i = 0; i < timerFill.count; ++i) {
    if (timerRows[i].timer == timer) timerRows[i].handler();
  }
}

void RouteMessage(unsigned message, unsigned long long first, unsigned long long second) {
  for (int i = 0; i < messageFill.count; ++i) {
    if (messageRows[i].message == message) {
      messageRows[i].handler(first, second);
      return;
    }
  }
}

}  // namespace morva
