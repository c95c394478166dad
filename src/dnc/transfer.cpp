#include "dnc/transfer.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/outlets.h"
#include "app/router.h"
#include "dnc/dnc_commands.h"
#include "dnc/line_text.h"
#include "dnc/serial_profile.h"
#include "dnc/transfer_show.h"
#include "documents/autosave.h"
#include "documents/block_text.h"
#include "documents/disk_watch.h"
#include "documents/edit_link.h"
#include "documents/feature_blocks.h"
#include "documents/file_text.h"
#include "documents/program_changed.h"
#include "documents/program_places.h"
#include "documents/program_tabs.h"
#include "documents/recovery.h"
#include "documents/save_state.h"
#include "documents/save_words.h"
#include "documents/saver.h"
#include "documents/tab_table.h"
#include "platform/clock.h"
#include "platform/editor.h"
#include "platform/serial.h"
#include "platform/thread.h"
#include "platform/timer.h"
#include "platform/window.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr const char16_t* kReceivedTitle = u"RECEIVED_RS232.NC";
constexpr const char16_t* kNotStarted = u"DNC transfer error — the transfer could not be started.";
constexpr const char16_t* kOpenedWords = u"Received RS-232 program opened in a new tab.";
constexpr const char16_t* kCutOffWords =
    u"WARNING: No closing % came, and the line was quiet for 2 seconds: the program may be cut "
    u"off. Compare its end with the one at the control before you run it.";
// Who pressed a key or a button so short a time ago is still typing or pointing.
constexpr std::uint64_t kAtWorkMs = 5000;

// From one look to the next whether the control holds a send.
constexpr int kHeldLookMs = 250;

bool heldBefore = false;    // at the last look, and nothing has gone since
std::u16string state;       // as the status line tells it while a transfer runs
std::uint64_t armedAt = 0;  // the tick at which RECEIVE was pressed last

std::u16string Number(unsigned long long value) {
  return IntegerText(static_cast<std::int64_t>(value));
}

std::u16string CountOf(std::size_t count, std::u16string_view one, std::u16string_view several) {
  std::u16string words = Number(count);
  words += u' ';
  return words.append(count == 1 ? one : several);
}

// What a question about sending has to say of settings that are not the saved ones.
std::u16string UnsavedWords() {
  std::u16string words;
  for (const std::u16string& sentence : UnsavedSentences(u"It goes to")) {
    words += sentence + u"\n\n";
  }
  return words;
}

// What a question about sending this file has to say where a tab shows it otherwise than it stands
// on disk; empty: nothing.
std::u16string DifferenceWords(std::u16string_view path) {
  const int index = TabOfFile(path);
  if (index < 0) return {};
  if (!IsTouched(tabs[index]) && DiskHoldsStill(tabs[index])) return {};
  return u"This file is open, and its tab differs from what stands on disk. What stands on disk is "
         u"sent.\n\n";
}

// What the status line says until the transfer ends or gets on.
void TellState(std::u16string_view words) {
  state = words;
  ShowStatus(words);
}

// True: the user was told that the line is in use.
bool RefusedAsActive() {
  if (!transfer.active) return false;
  LogOutput(kAlreadyActive);
  ShowStatus(kAlreadyActive);
  return true;
}

// What is being saved and what is sent are the same program: first the one, then the other.
bool SavesAreDone() {
  if (WaitForSaves()) return true;
  const char16_t* words = u"Not sent: the disk does not answer, and a save is still under way.";
  LogOutput(words);
  ShowStatus(words);
  return false;
}

// What a question about sending this text has to say about its characters; empty: nothing.
std::u16string LossWords(std::u16string_view text) {
  const OutputFigures figures = MeasureOutput(text);
  if (figures.lost == 0) return {};
  std::u16string words = IntegerText(figures.lost);
  words += figures.lost == 1 ? u" character" : u" characters, the first";
  words += u" in line " + IntegerText(figures.firstLostLine);
  words += figures.lost == 1 ? u", cannot go over the line and is sent as \"?\".\n\n"
                             : u", cannot go over the line. Each is sent as \"?\".\n\n";
  return words;
}

// What a question about sending this text has to say about control codes in it; empty: nothing.
std::u16string CodeWords(std::size_t count) {
  if (count == 0) return {};
  return CountOf(count, u"control code", u"control codes") +
         u" (punch on and off, hold, rubout) in the text: not sent, the control would take "
         u"them for its own.\n\n";
}

void LogNotSent(std::size_t count) {
  if (count == 0) return;
  LogOutput(CountOf(count, u"control code (DC1 to DC4, rubout) was left out of what is sent.",
                    u"control codes (DC1 to DC4, rubout) were left out of what is sent."));
}

// What a question about sending this program has to say about blocks that are taken out of it and
// have code of their own all the same; empty: nothing.
std::u16string LiveCodeWords(std::u16string_view text) {
  ScanProgramText(text);
  int count = 0;
  int first = 0;
  for (int i = 0; i < features.count; ++i) {
    if (InclusionOf(text, features.rows[i]) != Inclusion::OffHasCode) continue;
    if (count++ == 0) first = i + 1;
  }
  if (count == 0) return {};
  std::u16string words = count == 1 ? u"Feature #" : IntegerText(count) + u" features, the first #";
  words += IntegerText(first);
  words += count == 1 ? u" is excluded but has code of its own."
                      : u", are excluded but have code of their own.";
  return words + u" That code is sent.\n\n";
}

// What a question about sending this text has to say about code behind its closing "%"; empty:
// nothing.
std::u16string UnreadWords(std::u16string_view text) {
  const UnreadLines unread = LinesNeverRead(text);
  if (unread.count == 0) return {};
  return IntegerText(unread.count) +
         (unread.count == 1 ? u" line of code stands" : u" lines of code stand") +
         u" behind the closing %, the first in line " + IntegerText(unread.first) +
         u". No control reads what is behind it.\n\n";
}

// The worker reads its job from here on; nothing in it changes until its last message.
bool StartJob() {
  worker = WorkerRecord{};
  worker.settings = SettingsOf(serialProfile);
  transfer.active = platform::StartWorker(platform::Worker::Transfer, RunTransfer);
  if (!transfer.active) return false;
  ShowTransferBegun();
  heldBefore = false;
  if (!transfer.isReceive) platform::StartTimer(platform::kMainWindow, kTimerHeld, kHeldLookMs);
  return true;
}

void EndJob() {
  transfer.active = false;
  std::string().swap(transfer.sendBuffer);
  platform::StopTimer(platform::kMainWindow, kTimerHeld);
  ShowTransferEnded();
}

// A received program on its way into a file of "Recovery".
struct Keeping {
  bool underWay = false;
  std::u16string words;  // for the status line
};
Keeping keeping;

// The log and the status line say first whether this is why.
bool TabsAreFull() { return app.tabCount >= kMaxTabs; }

void TellNotKept() {
  LogOutput(
      u"The received program could not be kept in a file. Close a program, then press "
      u"RECEIVE: it opens what was received.");
  keeping.words = u"DNC receive complete — close a program, then press RECEIVE to open it.";
}

void TellKept(const std::u16string& path) {
  LogOutput((TabsAreFull() ? u"Eight programs are open. The received program was kept in "
                           : u"The received program was kept in ") +
            path);
  keeping.words = (TabsAreFull() ? u"DNC receive complete — eight programs are open; kept in "
                                 : u"DNC receive complete — kept in ") +
                  path;
}

void OnKept(const SaveResult& result) {
  keeping.underWay = false;
  if (result.answer == SaveAnswer::Saved) {
    std::string().swap(transfer.receivedData);
    TellKept(result.program);
  } else {
    TellNotKept();
  }
  ShowStatus(keeping.words);
}

// A received program that no tab can take. The words for the status line.
std::u16string KeepReceived() {
  if (keeping.underWay) return keeping.words;
  std::u16string text = DecodeCodePage(transfer.receivedData);
  std::erase(text, u'\0');
  keeping.underWay = true;
  keeping.words = u"DNC receive complete — the program is being kept in a file.";
  if (!KeepInRecovery(kReceivedTitle, text, OnKept)) {
    keeping.underWay = false;
    TellNotKept();
  }
  return keeping.words;
}

bool IsRecent(std::uint64_t tick) {
  return tick > armedAt && platform::TickMilliseconds() - tick < kAtWorkMs;
}

// What is being pressed, and the form of a block under edit, are meant for the program that is
// shown. So is another surface than the code's, which would cover the new text. What was pressed
// before RECEIVE says nothing.
bool UserIsAtWork() {
  return editLink.kind != 0 || app.surface != kSurfaceCode || IsRecent(app.lastKeyAt) ||
         IsRecent(app.lastPressAt);
}

// A received program that comes up behind the one that is shown. The words for the status line.
std::u16string OpenBehind(ProgramTab& tab) {
  MarkModified(tab);
  ScheduleAutosave();
  AppendOutput(u"Received RS-232 program opened in a tab behind this one.");
  return u"DNC receive complete — program opened in a tab behind this one.";
}

bool HoldsProgram() { return !IsFillingOnly(transfer.receivedData); }

// At the end of a receive: a damaged byte stays in the data, so the user must know.
void LogLineErrors() {
  if (!transfer.isReceive || worker.lineErrors == 0) return;
  std::u16string line = IntegerText(static_cast<std::int64_t>(worker.lineErrors));
  line += worker.lineErrors == 1 ? u" byte" : u" bytes";
  line += u" had line errors. Check baud rate, data bits, parity and stop bits at both ends.";
  LogOutput(line);
}

void LogLeftOut(std::size_t count) {
  if (count == 0) return;
  LogOutput(CountOf(count, u"control code was left out of the received program.",
                    u"control codes (punch on and off, rubouts) were left out of the received "
                    u"program."));
}

// What follows speaks of the settings. Who sees a new tab takes what is in it for the program.
void LogDoubt() {
  if (worker.lineErrors == 0 && worker.advice.empty()) return;
  LogOutput(
      u"WARNING: The received program may be damaged. Do not run it: mend the line, then receive "
      u"it again.");
}

// What the bytes tell about the line, also those of a receive that was aborted or failed.
void LogAdvice() {
  if (transfer.isReceive && !worker.advice.empty()) LogOutput(worker.advice);
}

void LogLeft(unsigned long long left, unsigned long long total) {
  LogOutput(Number(left) + u" of " + Number(total) + u" bytes had left the port.");
}

// The told words name every cause of either direction; this line names the one of this transfer.
void LogStop(TransferStop stop) {
  switch (stop) {
    case TransferStop::None:
      return;
    case TransferStop::Aborted:
      LogOutput(u"You ended the RECEIVE. What had come by then is not kept.");
      return;
    case TransferStop::TooLong:
      LogOutput(u"The control sent " + Number(kMaxReceivedBytes) +
                u" bytes, and a program may have one less. Split it at the control.");
      return;
    case TransferStop::NoMemory:
      LogOutput(u"The memory does not suffice to receive: close other programs.");
      return;
    case TransferStop::Gone:
      LogOutput(u"The port reported an error or is gone: look at the adapter and the cable.");
      return;
    case TransferStop::Held:
      LogOutput(u"The control held the line (XOFF) for 5 seconds.");
      return;
    case TransferStop::NotTaken:
      LogOutput(worker.settings.flow == 2
                    ? u"The port took nothing for 5 seconds: the ready wire (CTS) stayed down, or "
                      u"the adapter does not answer."
                    : u"The port took nothing for 5 seconds, though no XOFF of the control stood.");
      return;
    case TransferStop::NotLeft:
      LogOutput(u"The last bytes stayed behind: the port is gone, or none left it for 5 seconds.");
      return;
  }
}

void OnTransferFailed(unsigned long long reason, unsigned long long left) {
  const std::size_t total = transfer.sendBuffer.size();
  EndJob();
  LogOutput(
      u"TRANSFER ERROR: serial port failed, receive was aborted, or the 2 MB receive limit was "
      u"reached. Incomplete data was not opened.");
  LogOpenProblem(worker.settings, worker.problem);
  LogLineErrors();
  LogStop(worker.stop);
  LogAdvice();
  if (reason == kFailedWrite && total > 0) LogLeft(left, total);
  SetDncState(kDncError);
  TellResult(u"DNC transfer error — check COM port, cable, and matching settings.");
}

void OnReceiveDone(unsigned long long count, unsigned long long) {
  EndJob();
  const std::size_t leftOut = DropTapeCodes(transfer.receivedData);
  if (count == 0 || IsFillingOnly(transfer.receivedData)) {
    std::string().swap(transfer.receivedData);
    LogOutput(u"Receive ended with no data.");
    LogAdvice();
    SetDncState(kDncError);
    TellResult(u"DNC receive error / timeout — no program data received.");
    return;
  }
  const bool cut = LacksClosingPercent(transfer.receivedData);
  std::u16string words = OpenReceivedProgram();
  LogLeftOut(leftOut);
  LogDoubt();
  LogLineErrors();
  LogAdvice();
  if (cut) {
    LogOutput(kCutOffWords);
    words += u" No closing % came.";
  }
  LogStop(worker.stop);
  SetDncState(worker.stop == TransferStop::None ? kDncConnected : kDncError);
  TellResult(words);
}

void OnReceiveProgress(unsigned long long count, unsigned long long) {
  ShowTransferred(count);
  TellState(u"DNC receiving: " + Number(count) + u" bytes");
}

std::u16string SendWords(unsigned long long sent, unsigned long long total) {
  return u"DNC transferring: " + Number(sent) + u" / " + Number(total) + u" bytes";
}

void OnSendProgress(unsigned long long sent, unsigned long long total) {
  heldBefore = false;
  ShowTransferred(sent);
  TellState(SendWords(sent, total));
}

// The worker waits for the line meanwhile. A hold between two looks is one of many in a usual
// transfer and nothing to tell; one that stands at two looks without a byte between them is.
void LookForHold() {
  const TransferShown& shown = ShownTransfer();
  if (!transfer.active || shown.receive) return;
  const bool holds = platform::SerialHeld();
  const bool told = holds && heldBefore;
  heldBefore = holds;
  if (told == shown.held) return;
  ShowHeld(told);
  TellState(SendWords(shown.count, shown.total) +
            (told ? u" — the control holds the line (XOFF)" : u""));
}

void OnSendDone(unsigned long long left, unsigned long long total) {
  EndJob();
  if (transfer.abortRequested.load() != 0 && left < total) {
    LogOutput(u"Transfer aborted by operator.");
    LogLeft(left, total);
    SetDncState(kDncOffline);
    TellResult(u"DNC transfer aborted.");
    return;
  }
  if (transfer.abortRequested.load() != 0) {
    LogOutput(u"The abort came too late: all bytes had left the port.");
  }
  LogOutput(
      u"Send complete. Confirm the Haas reports a successful receive before using the program.");
  SetDncState(kDncConnected);
  TellResult(u"DNC send complete — confirm receive on Haas control.");
}

}  // namespace

bool TransferRuns() { return transfer.active; }

bool TellTransfer() {
  if (!transfer.active || state.empty()) return false;
  ShowStatus(state);
  return true;
}

void SendEditorProgram() {
  if (RefusedAsActive()) return;
  NoteKeyboardOfPress();
  if (!SavesAreDone()) return;
  if (!AutoConnect() || !platform::Exists(kIdEditor)) return;
  // Taken before the question, so that the program which is confirmed is the one that goes
  // out, whatever comes up in the editor while the box stands.
  const std::u16string shown(platform::EditorText(kIdEditor));
  std::u16string text = shown;
  const std::size_t codes = DropTapeCodes(text);
  std::string bytes = NormaliseOutputText(text, true);
  std::u16string question =
      u"Before transmitting:\n\n"
      u"• Match the Haas RS-232 settings to this wizard.\n"
      u"• Put the control in the intended RECV RS-232 or DNC state.\n"
      u"• Verify the correct program and work area.\n\n"
      u"The editor will wrap the program with % lines if needed.\n\n";
  question += UnsavedWords() + LiveCodeWords(shown) + UnreadWords(text) + CodeWords(codes) +
              LossWords(text) + u"Send now?";
  if (!Confirmed(u"Confirm RS-232 Transmission", question)) return;
  StartSend(std::move(bytes), u"Sending current editor program...");
  LogNotSent(codes);
}

void SendFileFromDisk() {
  if (RefusedAsActive()) return;
  NoteKeyboardOfPress();
  if (!ChooseSerialProfile()) return;
  std::u16string path;
  if (!PickProgramToOpen(u"Select Program to Send", path)) return;
  if (!SavesAreDone()) return;
  std::string file;
  if (!ReadWholeFile(path, file)) {
    LogOutput(u"Could not read selected file.");
    LogOutput(u"Not sent: " + UnreadFileWords(path));
    return;
  }
  if (file.starts_with(kByteOrderMark)) file.erase(0, kByteOrderMark.size());
  std::u16string text = DecodeCodePage(file);
  const std::size_t codes = DropTapeCodes(text);
  std::string bytes = NormaliseOutputText(text, true);
  std::u16string question =
      u"Verify the Haas control is ready to receive and all serial settings match.\n\n";
  question += UnsavedWords() + DifferenceWords(path) + UnreadWords(text) + CodeWords(codes) +
              LossWords(text) + u"Send the selected file?";
  if (!Confirmed(u"Confirm File Transfer", question)) return;
  StartSend(std::move(bytes), u"Sending selected file...");
  LogNotSent(codes);
}

void StartSend(std::string bytes, std::u16string_view message) {
  if (RefusedAsActive()) return;
  transfer.sendBuffer = std::move(bytes);
  transfer.isReceive = false;
  transfer.abortRequested = 0;
  LogOutput(message);
  SetDncState(kDncTransferring);
  TellState(SendWords(0, transfer.sendBuffer.size()));
  if (StartJob()) return;
  LogOutput(u"Could not start transfer thread.");
  EndJob();
  SetDncState(kDncError);
  ShowStatus(kNotStarted);
}

void ReceiveProgram() {
  if (RefusedAsActive()) return;
  NoteKeyboardOfPress();
  armedAt = platform::TickMilliseconds();
  if (!RoomForTab()) return;
  // What is being kept is opened once more only where it could not be kept.
  if (keeping.underWay && !WaitForSaves()) return;
  if (!transfer.receivedData.empty()) {
    ShowStatus(OpenReceivedProgram());
    return;
  }
  if (!AutoConnect()) {
    SetDncState(kDncConnectionFailed);
    return;
  }
  transfer.isReceive = true;
  transfer.abortRequested = 0;
  transfer.receivedData.clear();
  for (const std::u16string& sentence : UnsavedSentences(u"It comes over")) LogOutput(sentence);
  LogOutput(
      u"Receive armed. Send the program from the Haas now. Waiting up to 60 seconds for first "
      u"data; capture ends after ~2 seconds idle.");
  SetDncState(kDncTransferring);
  TellState(u"DNC receive armed — send the program from the control within 60 seconds.");
  if (StartJob()) return;
  SetDncState(kDncError);
  ShowStatus(kNotStarted);
}

void RequestAbort() {
  // The flag stands before the line wakes: whoever wakes finds it.
  transfer.abortRequested = 1;
  platform::WakeSerial();
}

void AbortTransfer() {
  LogOutput(u"Abort requested...");
  RequestAbort();
}

std::u16string OpenReceivedProgram() {
  const bool shown = !UserIsAtWork();
  if (transfer.receivedData.empty()) return {};
  if (TabsAreFull()) return KeepReceived();
  const int tab = OpenTab(u"", DecodeCodePage(transfer.receivedData), kReceivedTitle);
  if (tab < 0) return KeepReceived();
  std::string().swap(transfer.receivedData);
  if (!shown) return OpenBehind(tabs[tab]);
  SwitchTab(tab);
  platform::SetFocusTo(ShownEditor());
  ProgramChanged({.autosave = true, .refreshMs = 80, .logged = kOpenedWords});
  return u"DNC receive complete — program opened in a new tab.";
}

bool KeepHeldProgram() {
  if (!HoldsProgram()) return true;
  KeepReceived();
  WaitForSaves();
  return !HoldsProgram();
}

void EndTransferForGood() {
  if (transfer.active) {
    RequestAbort();
    platform::EndWorker(platform::Worker::Transfer);
    transfer.active = false;
  }
  if (HoldsProgram()) KeepReceived();
}

void RegisterTransferCommands() {
  AddCommands(DncCommands());
  RegisterCommand(RouterStage::Click, kIdSend, 0, [](int, int) { SendEditorProgram(); });
  RegisterCommand(RouterStage::Click, kIdReceive, 0, [](int, int) { ReceiveProgram(); });
  RegisterMessage(kMessageTransferFailed, OnTransferFailed);
  RegisterMessage(kMessageReceiveDone, OnReceiveDone);
  RegisterCommand(RouterStage::Click, kIdAbortTransfer, 0, [](int, int) { AbortTransfer(); });
  RegisterTransferBar();
  RegisterMessage(kMessageReceiveProgress, OnReceiveProgress);
  RegisterMessage(kMessageSendProgress, OnSendProgress);
  RegisterMessage(kMessageSendDone, OnSendDone);
  RegisterTimer(kTimerHeld, LookForHold);
}

void ResetTransfer() {
  if (platform::WorkerRuns(platform::Worker::Transfer)) {
    RequestAbort();
    platform::EndWorker(platform::Worker::Transfer);
  }
  transfer.active = false;
  transfer.isReceive = false;
  transfer.abortRequested = 0;
  std::string().swap(transfer.sendBuffer);
  std::string().swap(transfer.receivedData);
  worker = WorkerRecord{};
  keeping = Keeping();
  armedAt = 0;
  ResetTransferBar();
}

}  // namespace morva
