#include "dnc/transfer_worker.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <new>

#include "app/app_state.h"
#include "app/limits.h"
#include "dnc/line_advice.h"
#include "dnc/line_text.h"
#include "platform/clock.h"
#include "platform/post.h"

namespace morva {

TransferJob transfer;
WorkerRecord worker;

namespace {

constexpr std::int32_t kByXonXoff = 1;  // SerialSettings::flow

bool AbortWanted() { return transfer.abortRequested.load() != 0; }

// `left`: the bytes of a send that left the port.
void Fail(TransferFailure reason, std::size_t left) {
  platform::CloseSerial();
  platform::PostToMain(kMessageTransferFailed, reason, left);
}

void FailSend(TransferStop stop, std::size_t left) {
  worker.stop = stop;
  Fail(kFailedWrite, left);
}

std::size_t LeftOf(std::size_t sent) { return sent - std::min(sent, platform::SerialUnsent()); }

void RunSend() {
  const std::size_t total = transfer.sendBuffer.size();
  const char* bytes = transfer.sendBuffer.data();
  std::size_t sent = 0;
  while (sent < total && !AbortWanted()) {
    const std::size_t chunk = std::min<std::size_t>(total - sent, kSendChunk);
    std::size_t written = 0;
    const bool there = platform::WriteSerial(bytes + sent, chunk, written);
    // A write that the abort woke with nothing taken is no stall of the far end.
    if (there && written == 0 && AbortWanted()) break;
    if (!there || written == 0) {
      const TransferStop stalled =
          platform::SerialHeld() ? TransferStop::Held : TransferStop::NotTaken;
      FailSend(there ? stalled : TransferStop::Gone, LeftOf(sent + written));
      return;
    }
    sent += written;
    platform::PostToMain(kMessageSendProgress, sent, total);
  }
  // What the port has taken has not left yet. Only the control can tell what arrived.
  const bool drained = platform::DrainSerial();
  const std::size_t left = drained ? sent : LeftOf(sent);
  if (!drained && !AbortWanted()) {
    FailSend(TransferStop::NotLeft, left);
    return;
  }
  platform::CloseSerial();
  platform::PostToMain(kMessageSendDone, left, total);
}

// The control opens and holds the line with them, they are no data. How many bytes are left.
std::size_t DropFlowBytes(char* bytes, std::size_t count) {
  char* const end = std::remove_if(bytes, bytes + count, [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte == platform::kXon || byte == platform::kXoff;
  });
  return static_cast<std::size_t>(end - bytes);
}

// Reads until the line goes quiet. False: the port failed.
bool Capture(char* buffer, std::size_t& used) {
  const std::uint64_t start = platform::TickMilliseconds();
  std::uint64_t lastData = start;
  bool gotData = false;
  used = 0;
  while (!AbortWanted()) {
    char bytes[kReceiveRead];
    std::size_t got = 0;
    if (!platform::ReadSerial(bytes, sizeof(bytes), got)) return false;
    if (worker.settings.flow == kByXonXoff) got = DropFlowBytes(bytes, got);
    if (got > 0) {
      lastData = platform::TickMilliseconds();
      gotData = true;
      const std::size_t kept = std::min<std::size_t>(got, kMaxReceivedBytes - used);
      std::copy_n(bytes, kept, buffer + used);
      used += kept;
      platform::PostToMain(kMessageReceiveProgress, used, 0);
    }
    const std::uint64_t now = platform::TickMilliseconds();
    if (gotData && now - lastData > kIdleEndMs) break;
    if (!gotData && now - start > kFirstDataWaitMs) break;
    if (used == kMaxReceivedBytes) break;
    platform::SleepMilliseconds(kReceivePauseMs);
  }
  return true;
}

void RunReceive() {
  const std::unique_ptr<char[]> buffer(new (std::nothrow) char[kMaxReceivedBytes]);
  if (!buffer) {
    worker.stop = TransferStop::NoMemory;
    Fail(kFailedMemory, 0);
    return;
  }
  std::size_t used = 0;
  const bool there = Capture(buffer.get(), used);
  worker.lineErrors = platform::SerialLineErrors();
  worker.advice = LineAdvice(worker.settings, {buffer.get(), used}, worker.lineErrors);
  // The largest program is one byte below the limit; partial data is never kept. A program that
  // had come whole when the port went is no partial one.
  const bool aborted = AbortWanted();
  const bool whole = IsWholeProgram({buffer.get(), used});
  if ((!there && !whole) || used == kMaxReceivedBytes || aborted) {
    worker.stop = aborted  ? TransferStop::Aborted
                  : !there ? TransferStop::Gone
                           : TransferStop::TooLong;
    Fail(kFailedReceive, 0);
    return;
  }
  if (!there) worker.stop = TransferStop::Gone;
  platform::CloseSerial();
  transfer.receivedData.assign(buffer.get(), used);
  platform::PostToMain(kMessageReceiveDone, used, 0);
}

}  // namespace

void RunTransfer() {
  if (!platform::OpenSerial(worker.settings, worker.problem)) {
    platform::PostToMain(kMessageTransferFailed, kFailedOpen, 0);
    return;
  }
  if (transfer.isReceive) {
    RunReceive();
  } else {
    RunSend();
  }
}

}  // namespace morva
