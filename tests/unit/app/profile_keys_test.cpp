// Values of the settings file as the rooms read and write them.
#include "app/profile_keys.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/profile.h"
#include "support/stage.h"

namespace morva {
namespace {

struct ProfileKeys : support::Stage {
  void PutIni(std::string_view bytes) const { Put("bin/MORVA.ini", bytes); }
  std::string Ini() const { return Raw("bin/MORVA.ini"); }
};

TEST_F(ProfileKeys, GiveTheDefaultWhereTheKeyIsMissing) {
  EXPECT_EQ(ProfileReadInteger(u"Tool0", u"Number", -7), -7);
  EXPECT_EQ(ProfileReadDecimal(u"Tool0", u"Diameter", 0.5), 0.5);
}

TEST_F(ProfileKeys, RoundADefaultToFourDecimals) {
  // 0.00004 prints as "0.0000" and 1.23456 as "1.2346".
  EXPECT_EQ(ProfileReadDecimal(u"Tool0", u"Diameter", 0.00004), 0.0);
  EXPECT_DOUBLE_EQ(ProfileReadDecimal(u"Tool0", u"Diameter", 1.23456), 1.2346);
}

TEST_F(ProfileKeys, ReadWhatTheFileHoldsByTheRulesOfFields) {
  PutIni("[Tool0]\r\nA= 12.7\r\nB=+5\r\nC=x\r\nD=-3\r\n");
  EXPECT_EQ(ProfileReadInteger(u"Tool0", u"A", 9), 12);
  EXPECT_EQ(ProfileReadInteger(u"Tool0", u"B", 9), 9);
  EXPECT_EQ(ProfileReadInteger(u"Tool0", u"C", 9), 9);
  EXPECT_EQ(ProfileReadInteger(u"Tool0", u"D", 9), -3);
  EXPECT_DOUBLE_EQ(ProfileReadDecimal(u"Tool0", u"A", 9), 12.7);
  EXPECT_EQ(ProfileReadDecimal(u"Tool0", u"B", 9), 5.0);
  EXPECT_EQ(ProfileReadDecimal(u"Tool0", u"C", 9), 9.0);
}

TEST_F(ProfileKeys, ReadNoMoreThanSixtyThreeUnitsOfAValue) {
  // 62 zeros, then digits: the 63rd unit is the last that counts.
  PutIni("[Tool0]\r\nA=" + std::string(62, '0') + "12\r\n");
  EXPECT_EQ(ProfileReadInteger(u"Tool0", u"A", 9), 1);
  EXPECT_EQ(ProfileReadDecimal(u"Tool0", u"A", 9), 1.0);
}

TEST_F(ProfileKeys, WriteFourDecimals) {
  ProfileWriteDecimal(u"Tool0", u"Diameter", 0.5);
  ProfileWriteDecimal(u"Tool0", u"Gauge", -0.00004);
  EXPECT_EQ(Ini(), "[Tool0]\r\nDiameter=0.5000\r\nGauge=-0.0000\r\n");
}

}  // namespace
}  // namespace morva
