#include "dnc/transfer.h"

#include <utility>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/outlets.h"
#include "app/router.h"
#include "dnc/dnc_commands.h"
#include "dnc/serial_profile.h"
#include "documents/file_text.h"
#include "documents/program_changed.h"
#include "documents/program_tabs.h"
#include "platform/editor.h"
#include "platform/serial.h"
#include "platform/thread.h"
#include "platform/window.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr const char16_t* kAlreadyActive = u"A transfer is already active.";

// The worker reads its job from here on; nothing in it changes until its last message.
bool StartJob() {
  worker = WorkerRecord{};
  worker.settings = SettingsOf(serialProfile);
  transfer.active = platform::StartWorker(platform::Worker::Transfer, RunTransfer);
  return transfer.active;
}

void EndJob() {
  transfer.active = false;
  std::string().swap(transfer.sendBuffer);
}

// At the end of a receive: a damaged byte stays in the data, so the user must know.
void LogLineErrors() {
  if (!transfer.isReceive || worker.lineErrors == 0) return;
  std::u16string line = IntegerText(static_cast<std::int64_t>(worker.lineErrors));
  line += worker.lineErrors == 1 ? u" byte" : u" bytes";
  line += u" had line errors. Check baud rate, data bits, parity and stop bits at both ends.";
  LogOutput(line);
}

void OnTransferFailed(unsigned long long, unsigned long long) {
  EndJob();
  LogOutput(
      u"TRANSFER ERROR: serial port failed, receive was aborted, or the 2 MB receive limit was "
      u"reached. Incomplete data was not opened.");
  LogOpenProblem(worker.settings, worker.problem);
  LogLineErrors();
  SetDncState(kDncError);
  ShowStatus(u"DNC transfer error — check COM port, cable, and matching settings.");
}

void OnReceiveDone(unsigned long long count, unsigned long long) {
  EndJob();
  if (count == 0) {
    LogOutput(u"Receive ended with no data.");
    SetDncState(kDncError);
    ShowStatus(u"DNC receive error / timeout — no program data received.");
    return;
  }
  OpenReceivedProgram();
  LogLineErrors();
  SetDncState(kDncConnected);
  ShowStatus(u"DNC receive complete — program opened in a new tab.");
}

void OnSendProgress(unsigned long long sent, unsigned long long total) {
  std::u16string text = u"DNC transferring: ";
  text += IntegerText(static_cast<std::int64_t>(sent));
  text += u" / ";
  text += IntegerText(static_cast<std::int64_t>(total));
  text += u" bytes";
  ShowStatus(text);
}

void OnSendDone(unsigned long long, unsigned long long) {
  EndJob();
  if (transfer.abortRequested.load() != 0) {
    LogOutput(u"Transfer aborted by operator.");
    SetDncState(kDncOffline);
    ShowStatus(u"DNC transfer aborted.");
    return;
  }
  LogOutput(
      u"Send complete. Confirm the Haas reports a successful receive before using the program.");
  SetDncState(kDncConnected);
  ShowStatus(u"DNC send complete — confirm receive on Haas control.");
}

}  // namespace

void SendEditorProgram() {
  if (!AutoConnect() || !platform::Exists(kIdEditor)) return;
  // Taken before the question, so that the program which is confirmed is the one that goes
  // out, whatever comes up in the editor while the box stands.
  std::string bytes = NormaliseOutputText(platform::EditorText(kIdEditor), true);
  if (!Confirmed(u"Confirm RS-232 Transmission",
                 u"Before transmitting:\n\n"
                 u"• Match the Haas RS-232 settings to this wizard.\n"
                 u"• Put the control in the intended RECV RS-232 or DNC state.\n"
                 u"• Verify the correct program and work area.\n\n"
                 u"The editor will wrap the program with % lines if needed.\n\n"
                 u"Send now?")) {
    return;
  }
  StartSend(std::move(bytes), u"Sending current editor program...");
}

void SendFileFromDisk() {
  if (!ChooseSerialProfile()) return;
  std::u16string path;
  if (!PickProgramToOpen(u"Select Program to Send", path)) return;
  std::string file;
  if (!ReadWholeFile(path, file)) {
    LogOutput(u"Could not read selected file.");
    return;
  }
  std::string bytes = NormaliseOutputText(DecodeCodePage(file), true);
  if (!Confirmed(u"Confirm File Transfer",
                 u"Verify the Haas control is ready to receive and all serial settings match.\n\n"
                 u"Send the selected file?")) {
    return;
  }
  StartSend(std::move(bytes), u"Sending selected file...");
}

void StartSend(std::string bytes, std::u16string_view message) {
  if (transfer.active) {
    LogOutput(kAlreadyActive);
    return;
  }
  transfer.sendBuffer = std::move(bytes);
  transfer.isReceive = false;
  transfer.abortRequested = 0;
  LogOutput(message);
  SetDncState(kDncTransferring);
  if (StartJob()) return;
  LogOutput(u"Could not start transfer thread.");
  EndJob();
  SetDncState(kDncError);
}

void ReceiveProgram() {
  if (!AutoConnect()) {
    SetDncState(kDncConnectionFailed);
    return;
  }
  if (transfer.active) {
    LogOutput(kAlreadyActive);
    return;
  }
  transfer.isReceive = true;
  transfer.abortRequested = 0;
  transfer.receivedData.clear();
  LogOutput(
      u"Receive armed. Send the program from the Haas now. Waiting up to 60 seconds for first "
      u"data; capture ends after ~2 seconds idle.");
  SetDncState(kDncTransferring);
  if (!StartJob()) SetDncState(kDncError);
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

void OpenReceivedProgram() {
  if (transfer.receivedData.empty()) return;
  const std::u16string text = DecodeCodePage(transfer.receivedData);
  std::string().swap(transfer.receivedData);
  const int tab = OpenTab(u"", text, u"RECEIVED_RS232.NC");
  if (tab < 0) return;
  SwitchTab(tab);
  ProgramChanged({.refreshMs = 80, .logged = u"Received RS-232 program opened in a new tab."});
}

void RegisterTransferCommands() {
  AddCommands(DncCommands());
  RegisterCommand(RouterStage::Click, kIdSend, 0, [](int, int) { SendEditorProgram(); });
  RegisterCommand(RouterStage::Click, kIdReceive, 0, [](int, int) { ReceiveProgram(); });
  RegisterMessage(kMessageTransferFailed, OnTransferFailed);
  RegisterMessage(kMessageReceiveDone, OnReceiveDone);
  RegisterMessage(kMessageSendProgress, OnSendProgress);
  RegisterMessage(kMessageSendDone, OnSendDone);
}

void ResetTransfer() {
  if (platform::WorkerRuns(platform::Worker::Transfer)) {
    RequestAbort();
    platform::EndWorkers();
  }
  transfer.active = false;
  transfer.isReceive = false;
  transfer.abortRequested = 0;
  std::string().swap(transfer.sendBuffer);
  std::string().swap(transfer.receivedData);
  worker = WorkerRecord{};
}

}  // namespace morva
