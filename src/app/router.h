// The command router: which room answers an id, and in which order rooms are asked.
//
// It owns no logic. Rooms register handlers at start-up; the router tries the stages in the
// order of the enumeration, and the first handler of a stage that fits ends the search. An id
// whose operation does not exist yet answers nothing; its row in app/commands.h says what comes.
#pragma once

namespace morva {

enum class RouterStage {
  HomeToolCombo,  // 2930 with a combo selection
  Builder,        // notification 0: rules, wizard cards, shape keys, plate and CAD commands
  Surface,        // notification 0: 1200 to 1202, 1210, 1211, 1216
  FeatureSelect,  // 1212 with a list selection
  FeatureEdit,    // 1213 clicked, 1212 double-clicked
  FeatureSwitch,  // 2991, 2992, 2990
  FeatureKeys,    // 1276, 1275, 1214
  Notified,       // all other ids with a notification other than 0
  Simulator,      // notification 0: playback, view, units
  Click,          // notification 0: the remaining ids
};
inline constexpr int kRouterStages = 10;

// Any notification of a list below 3, as the tool list asks.
inline constexpr int kNotifyBelowThree = -2;

using CommandHandler = void (*)(int id, int notification);

// `notification` is one code or kNotifyBelowThree. A full table, a null handler, a range that is
// upside down and ids that the same stage has taken already stop the program with words.
void RegisterCommand(RouterStage stage, int firstId, int lastId, int notification,
                     CommandHandler handler);
inline void RegisterCommand(RouterStage stage, int id, int notification, CommandHandler handler) {
  RegisterCommand(stage, id, id, notification, handler);
}
void ClearCommands();

// Offers the command. False: nobody took it.
bool RouteCommand(int id, int notification);
// The stage that would take it, or -1; runs nothing.
int StageOf(int id, int notification);

// What fires on the main window's timers and posted messages, besides commands. Several rooms may
// listen to a timer, in the order of their registration; a message has one handler. The same
// handler twice, a null handler and a full table stop the program with words.
void RegisterTimer(int timer, void (*handler)());
void RegisterMessage(unsigned message,
                     void (*handler)(unsigned long long first, unsigned long long second));
void RouteTimer(int timer);
void RouteMessage(unsigned message, unsigned long long first, unsigned long long second);

}  // namespace morva
