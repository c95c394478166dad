// The pure pieces of the serial line. Expected values are worked out by hand.

#include "platform/posix/serial_line.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

using namespace platform;

std::string Decoded(std::string_view driver, std::size_t& errors) {
  MarkDecoder decoder;
  std::string line;
  for (char c : driver) {
    unsigned char out = 0;
    if (DecodeMark(decoder, static_cast<unsigned char>(c), out))
      line.push_back(static_cast<char>(out));
  }
  errors = decoder.errors;
  return line;
}

TEST(MarkDecoder, PassesGoodBytesAndUndoublesFf) {
  std::size_t errors = 0;
  EXPECT_EQ(Decoded("G0 X1\r\n", errors), "G0 X1\r\n");
  EXPECT_EQ(Decoded("a\xFF\xFF"
                    "b",
                    errors),
            "a\xFF"
            "b");
  EXPECT_EQ(Decoded(std::string_view("\0\0", 2), errors), std::string("\0\0", 2));
  EXPECT_EQ(errors, 0u);
}

TEST(MarkDecoder, KeepsADamagedByteAsItCameAndCountsIt) {
  std::size_t errors = 0;
  EXPECT_EQ(Decoded(std::string_view("a\xFF\0X"
                                     "b",
                                     5),
                    errors),
            "aXb");
  EXPECT_EQ(errors, 1u);
  // A break is a damaged zero; a damaged FF is not doubled behind its mark.
  EXPECT_EQ(Decoded(std::string_view("\xFF\0\0\xFF\0\xFF"
                                     "c",
                                     7),
                    errors),
            std::string("\0\xFF"
                        "c",
                        3));
  EXPECT_EQ(errors, 2u);
}

TEST(MarkDecoder, WaitsForTheRestOfAMark) {
  std::size_t errors = 0;
  EXPECT_EQ(Decoded("a\xFF", errors), "a");
  EXPECT_EQ(Decoded(std::string_view("a\xFF\0", 3), errors), "a");
  EXPECT_EQ(errors, 0u);
}

TEST(BackChannel, ObeysXonAndXoffWithOrWithoutTheEighthBit) {
  BackChannel back;
  constexpr unsigned char kStops[] = {0x13, 0x93};
  constexpr unsigned char kStarts[] = {0x11, 0x91};
  for (unsigned char xoff : kStops) {
    for (unsigned char xon : kStarts) {
      ObeyBackChannel(back, xoff, false);
      EXPECT_TRUE(back.stopped);
      ObeyBackChannel(back, xon, false);
      EXPECT_FALSE(back.stopped);
    }
  }
  EXPECT_EQ(back.ordinary, 0u);
}

TEST(BackChannel, IsReleasedByNothingButXon) {
  BackChannel back;
  ObeyBackChannel(back, 0x13, false);
  for (int byte = 0; byte < 256; ++byte) {
    if ((byte & 0x7F) == 0x11) continue;
    ObeyBackChannel(back, static_cast<unsigned char>(byte), false);
    EXPECT_TRUE(back.stopped) << byte;
  }
  EXPECT_EQ(back.ordinary, 252u);  // 256 without two XON and two XOFF
}

TEST(BackChannel, StopsAtADamagedXoffAndIsNotReleasedByADamagedXon) {
  BackChannel back;
  ObeyBackChannel(back, 0x13, true);
  EXPECT_TRUE(back.stopped);
  ObeyBackChannel(back, 0x11, true);
  ObeyBackChannel(back, 0x91, true);
  EXPECT_TRUE(back.stopped);
  EXPECT_EQ(back.ordinary, 2u);
  ObeyBackChannel(back, 0x11, false);
  EXPECT_FALSE(back.stopped);
}

TEST(LineRate, CountsBytesThatCannotHaveLeft) {
  LineRate rate;
  rate.byteNs = 1145833;  // 11 bits at 9600
  EXPECT_EQ(Backlog(rate, 1000), 0);
  AddToLine(rate, 1000, 64);
  EXPECT_EQ(Backlog(rate, 1000), 64);
  EXPECT_EQ(Backlog(rate, 1000 + 1145833), 63);
  EXPECT_EQ(Backlog(rate, 1000 + 1145834), 63);  // a byte that has begun is still there
  EXPECT_EQ(Backlog(rate, 1000 + 63 * 1145833), 1);
  EXPECT_EQ(Backlog(rate, 1000 + 64 * 1145833LL), 0);
  // More bytes queue behind the others; an idle line saves nothing up.
  AddToLine(rate, 1000, 10);
  EXPECT_EQ(Backlog(rate, 1000), 74);
  AddToLine(rate, 10000000000, 5);
  EXPECT_EQ(Backlog(rate, 10000000000), 5);
}

TEST(LineRate, DoesNotExistOnAPseudoTerminal) {
  LineRate rate;
  AddToLine(rate, 1000, 1000000);
  EXPECT_EQ(Backlog(rate, 1000), 0);
}

TEST(LineRate, NeverLetsMoreThan64BytesWaitBelow) {
  // A sender at the line's rate for a minute, woken when the wanted piece is free.
  LineRate rate;
  rate.byteNs = 95486;  // 11 bits at 115,200
  std::int64_t now = 0;
  std::int64_t sent = 0;
  std::int64_t most = 0;
  while (now < 60000000000) {
    const std::int64_t room = kDriverBytes - Backlog(rate, now);
    const int wanted = PieceWanted(rate, 1000000);
    if (room >= wanted) {
      AddToLine(rate, now, room);
      sent += room;
      most = std::max(most, Backlog(rate, now));
    }
    now += (wanted > room ? wanted - room : 1) * rate.byteNs;
  }
  EXPECT_EQ(most, 64);
  // The line never ran dry: 60 s make 628,364 bytes.
  EXPECT_GE(sent, 60000000000 / 95486);
  EXPECT_LE(sent, 60000000000 / 95486 + 64);
}

TEST(LineRate, WantsAPieceThatASlowLineCanSendInASecond) {
  LineRate rate;
  EXPECT_EQ(PieceWanted(rate, 128), 32);
  EXPECT_EQ(PieceWanted(rate, 5), 5);
  rate.byteNs = 220000000;  // 11 bits at 50
  EXPECT_EQ(PieceWanted(rate, 128), 4);
  rate.byteNs = 2000000000;
  EXPECT_EQ(PieceWanted(rate, 128), 1);
}

TEST(ReceiveBuffer, GivesBytesInTheirOrderAroundItsEnd) {
  ReceiveBuffer buffer = {};
  unsigned char next = 0;
  unsigned char expected = 0;
  for (int turn = 0; turn < 10; ++turn) {
    for (int i = 0; i < 3000; ++i) PutReceived(buffer, next++);
    EXPECT_EQ(buffer.count, 3000u);
    unsigned char bytes[3000];
    EXPECT_EQ(TakeReceived(buffer, bytes, sizeof(bytes)), 3000u);
    for (unsigned char byte : bytes) ASSERT_EQ(byte, expected++);
  }
  EXPECT_EQ(ReceiveRoom(buffer), 8192u);
}

TEST(ReceiveBuffer, DropsNothingThatItHolds) {
  ReceiveBuffer buffer = {};
  for (int i = 0; i < 8192; ++i) PutReceived(buffer, 'a');
  EXPECT_EQ(ReceiveRoom(buffer), 0u);
  PutReceived(buffer, 'b');
  unsigned char byte = 0;
  for (int i = 0; i < 8192; ++i) {
    ASSERT_EQ(TakeReceived(buffer, &byte, 1), 1u);
    ASSERT_EQ(byte, 'a');
  }
  EXPECT_EQ(TakeReceived(buffer, &byte, 1), 0u);
}

}  // namespace
