#include "position/gps_links.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

#include "support/scripted_ports.h"

namespace kestrum::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using namespace std::chrono_literals;

struct Reader : ::testing::Test {
  Form1 form;
  ScriptedPorts outside;
  GpsLinks gps{form, outside.ports()};

  void SetUp() override {
    gps.PrepareLabels();
    outside.windows.titles.insert("Posdex Version 1.19");
  }
  void SendFix(const std::string& validity = "A") {
    form.lblDDELat.caption = "5157.1234N";
    form.lblDDELong.caption = "00532.5678E";
    form.lblDDEVal.caption = validity;
    form.lblDDEHeight.caption = "33";
    form.lblDDESpeed.caption = "10";
    form.lblDDECompas.caption = "187";
  }
};

TEST_F(Reader, LabelsKnowTopicItemAndToolTip) {
  for (const LinkLabel* label : GpsLabels(form)) EXPECT_EQ(label->link_topic, "Posdex|form1");
  EXPECT_EQ(form.lblDDELat.link_item, "lblLat1");
  EXPECT_EQ(form.lblDDELong.link_item, "lblLong1");
  EXPECT_EQ(form.lblDDEVal.link_item, "lblVal1");
  EXPECT_EQ(form.lblDDECompas.link_item, "lblCompas1");
  EXPECT_EQ(form.lblDDEHeight.link_item, "lblHeight1");
  EXPECT_EQ(form.lblDDESpeed.link_item, "lblSpeed1");
  EXPECT_EQ(form.lblDDELat.tool_tip, "GPSLatitude.");
  EXPECT_EQ(form.lblDDELong.tool_tip, "GPSLongitude.");
  EXPECT_EQ(form.lblDDEVal.tool_tip, "GPSValide.");
  EXPECT_EQ(form.lblDDEHeight.tool_tip, "GPSHeight.");
  EXPECT_EQ(form.lblDDESpeed.tool_tip, "GPSSpeed.");
  EXPECT_EQ(form.lblDDECompas.tool_tip, "GPSCompass.");
}

TEST_F(Reader, SpeedIsToldInFourUnitsOnAClick) {
  form.lblDDESpeed.caption = "10";
  EXPECT_EQ(form.lblDDESpeed.tool_tip, "GPSSpeed.");
  form.lblDDESpeed.click();
  EXPECT_EQ(form.lblDDESpeed.tool_tip, " 10 knots, 18.5 km, 5.1 m/s, and  11.5 mph ");
}

TEST_F(Reader, ThatRunsIsNotStartedAgain) {
  for (const char* title : {"Posdex Version 1.18", "Posdex Version 1.19"}) {
    outside.windows.titles = {title};
    gps.LoadGps(true);
  }
  EXPECT_THAT(outside.program.started, IsEmpty());
  EXPECT_THAT(outside.dialogs.messages, IsEmpty());
}

TEST_F(Reader, IsLookedForByBothTitlesThenStarted) {
  outside.windows.titles.clear();
  outside.program.companions.insert("\\Posdex.exe");
  gps.LoadGps(true);
  EXPECT_THAT(outside.windows.looked_up, ElementsAre("Posdex Version 1.18", "Posdex Version 1.19"));
  ASSERT_EQ(outside.program.started.size(), 1U);
  EXPECT_EQ(outside.program.started[0].first, "\\Posdex.exe");
  EXPECT_EQ(outside.program.started[0].second, ShowStyle::kNormalWithoutFocus);
  EXPECT_THAT(outside.dialogs.messages, IsEmpty());
}

TEST_F(Reader, ThatCannotBeStartedIsToldAndStillAwaited) {
  outside.windows.titles.clear();
  gps.LoadGps(true);
  ASSERT_EQ(outside.dialogs.messages.size(), 1U);
  EXPECT_EQ(outside.dialogs.messages[0].title, "Kestrum Auto field strenght logger V1.02");
  EXPECT_EQ(outside.dialogs.messages[0].text, "Posdex.exe Not found");
  EXPECT_EQ(outside.dialogs.messages[0].icon, Icon::kCritical);
  EXPECT_EQ(outside.links.events.size(), 6U);
  EXPECT_EQ(form.lblDDEVal.caption, "lblDDEVal");
}

TEST_F(Reader, IsNotLinkedAnyMoreWhenTheProgramEndsUnderTheBox) {
  outside.windows.titles.clear();
  outside.dialogs.while_open = [this] { outside.program.End(); };
  gps.LoadGps(true);
  EXPECT_THAT(outside.links.events, IsEmpty());
}

TEST_F(Reader, IsLinkedInOrder) {
  gps.LoadGps(true);
  EXPECT_THAT(outside.links.events,
              ElementsAre("link Posdex|form1 lblLat1", "link Posdex|form1 lblLong1",
                          "link Posdex|form1 lblVal1", "link Posdex|form1 lblCompas1",
                          "link Posdex|form1 lblHeight1", "link Posdex|form1 lblSpeed1"));
}

TEST_F(Reader, TextsArriveInTheCaptionsAndNowhereElse) {
  gps.LoadGps(true);
  EXPECT_TRUE(outside.links.Send("lblLat1", "5157.1234N"));
  EXPECT_TRUE(outside.links.Send("lblLong1", "00532.5678E"));
  EXPECT_TRUE(outside.links.Send("lblVal1", "A"));
  EXPECT_TRUE(outside.links.Send("lblCompas1", "187"));
  EXPECT_TRUE(outside.links.Send("lblHeight1", "33"));
  EXPECT_TRUE(outside.links.Send("lblSpeed1", "10"));
  EXPECT_EQ(form.lblDDELat.caption, "5157.1234N");
  EXPECT_EQ(form.lblDDELong.caption, "00532.5678E");
  EXPECT_EQ(form.lblDDEVal.caption, "A");
  EXPECT_EQ(form.lblDDECompas.caption, "187");
  EXPECT_EQ(form.lblDDEHeight.caption, "33");
  EXPECT_EQ(form.lblDDESpeed.caption, "10");
  EXPECT_EQ(gps.record.latitude, "");  // the record waits for the tick
  EXPECT_EQ(form.lblRxLat.caption, "");
}

TEST_F(Reader, IsClosedAndUnlinkedAtShutdown) {
  for (const char* title : {"Posdex Version 1.18", "Posdex Version 1.19"}) {
    outside.windows.titles = {title};
    outside.windows.closed.clear();
    gps.LoadGps(true);
    outside.links.events.clear();
    gps.LoadGps(false);
    EXPECT_THAT(outside.windows.closed, ElementsAre(title));
    EXPECT_THAT(outside.links.events,
                ElementsAre("unlink Posdex|form1 lblLat1", "unlink Posdex|form1 lblLong1",
                            "unlink Posdex|form1 lblVal1", "unlink Posdex|form1 lblCompas1",
                            "unlink Posdex|form1 lblHeight1", "unlink Posdex|form1 lblSpeed1"));
    EXPECT_FALSE(outside.links.Send("lblVal1", "A"));
  }
}

TEST_F(Reader, ThatDoesNotRunIsSentNothingAtShutdown) {
  outside.windows.titles.clear();
  gps.LoadGps(false);
  EXPECT_THAT(outside.windows.closed, IsEmpty());
  EXPECT_THAT(outside.program.started, IsEmpty());
  EXPECT_THAT(outside.dialogs.messages, IsEmpty());
  EXPECT_EQ(outside.links.events.size(), 6U);
}

TEST_F(Reader, RecordHoldsTheSixCaptions) {
  SendFix("V");
  gps.GetAllDDE();
  EXPECT_EQ(gps.record.latitude, "5157.1234N");
  EXPECT_EQ(gps.record.longitude, "00532.5678E");
  EXPECT_EQ(gps.record.validity, "V");
  EXPECT_EQ(gps.record.height, "33");
  EXPECT_EQ(gps.record.speed, "10");
  EXPECT_EQ(gps.record.compass, "187");
}

TEST_F(Reader, ValidFixIsShown) {
  SendFix();
  EXPECT_TRUE(gps.GetGPSdataStartLast());
  EXPECT_EQ(form.lblRxVal.caption, "GPS Ok");
  EXPECT_EQ(form.lblRxLat.caption, "5157.1234N");
  EXPECT_EQ(form.lblRxLong.caption, "00532.5678E");
}

TEST_F(Reader, HeightIsTakenFromTheSpeedFieldAsFeet) {
  SendFix();
  gps.GetGPSdataStartLast();
  EXPECT_EQ(form.lblRxHeight.caption, "3 m");  // 10 feet; the height field's 33 feet would be 10.1 m
}

TEST_F(Reader, SmallAIsValidToo) {
  SendFix("a");
  EXPECT_TRUE(gps.GetGPSdataStartLast());
  EXPECT_EQ(form.lblRxVal.caption, "GPS Ok");
}

TEST_F(Reader, InvalidFixChangesNoDisplay) {
  for (const char* validity : {"V", "", "AA", " A", "lblDDEVal"}) {
    SendFix(validity);
    form.lblRxVal.caption = "GPS Ok";
    form.lblRxLat.caption = "before";
    EXPECT_FALSE(gps.GetGPSdataStartLast()) << validity;
    EXPECT_EQ(gps.record.latitude, "5157.1234N");
    EXPECT_EQ(form.lblRxVal.caption, "GPS Ok");
    EXPECT_EQ(form.lblRxLat.caption, "before");
    EXPECT_EQ(form.lblRxHeight.caption, "");
  }
}

TEST_F(Reader, FieldsOfAnInvalidRecordAreShownAsNoGps) {
  SendFix("V");
  gps.GetAllDDE();
  gps.ShowGpsFields();
  EXPECT_EQ(form.lblRxVal.caption, "No GPS");
  EXPECT_EQ(form.lblRxLat.caption, "5157.1234N");
  EXPECT_EQ(form.lblRxLong.caption, "00532.5678E");
  EXPECT_EQ(form.lblRxHeight.caption, "3 m");
}

TEST_F(Reader, FifthFieldWithoutAValueReadsNoGpsEvenWithAFix) {
  for (const char* name : {"lblHeight1", "lblDDEHeight", "LBLHEIGHT1"}) {
    SendFix();
    form.lblDDESpeed.caption = name;
    gps.site.height = "?? m";
    EXPECT_TRUE(gps.GetGPSdataStartLast());
    EXPECT_EQ(form.lblRxVal.caption, "No GPS") << name;
    EXPECT_EQ(form.lblRxHeight.caption, "?? m") << name;
  }
}

TEST_F(Reader, MissingFixIsWarnedOfBeforeTheFirstOne) {
  gps.GetAllDDE();
  form.lblRxVal.caption = "No GPS";
  gps.ShowFixAge();
  EXPECT_EQ(form.lblRxVal.back_color, Color::kWarning);
  EXPECT_EQ(form.lblRxVal.tool_tip, "No GPS fix yet. Is the reader running and the sky in view?");
  EXPECT_EQ(form.lblRxVal.caption, "No GPS");
}

TEST_F(Reader, LostFixIsToldWithItsAgeWhileTheCaptionStands) {
  SendFix();
  gps.GetGPSdataStartLast();
  gps.ShowFixAge();
  EXPECT_EQ(form.lblRxVal.back_color, Color::kSystem);
  EXPECT_EQ(form.lblRxVal.tool_tip, "GPS RX Ok.");

  form.lblDDEVal.caption = "V";
  outside.clock.Advance(12900ms);
  gps.GetAllDDE();
  gps.ShowFixAge();
  EXPECT_EQ(form.lblRxVal.back_color, Color::kWarning);
  EXPECT_EQ(form.lblRxVal.tool_tip, "No valid fix for 12 s. The position shown is the last one received.");
  EXPECT_EQ(form.lblRxVal.caption, "GPS Ok");

  form.lblDDEVal.caption = "A";
  gps.GetAllDDE();
  gps.ShowFixAge();
  EXPECT_EQ(form.lblRxVal.back_color, Color::kSystem);
  EXPECT_EQ(form.lblRxVal.tool_tip, "GPS RX Ok.");
}

TEST_F(Reader, AReaderThatHasGoneIsWarnedOfThoughItsLastTextsStandStill) {
  SendFix();
  gps.GetAllDDE();
  outside.links.server_present = false;
  outside.clock.Advance(7000ms);
  EXPECT_TRUE(gps.GetGPSdataStartLast());
  gps.ShowFixAge();
  EXPECT_EQ(form.lblRxVal.caption, "GPS Ok");
  EXPECT_EQ(form.lblRxVal.back_color, Color::kWarning);
  EXPECT_EQ(form.lblRxVal.tool_tip,
            "The GPS reader has been gone for 7 s. The position shown is the last one received.");
  outside.links.server_present = true;
  gps.GetAllDDE();
  gps.ShowFixAge();
  EXPECT_EQ(form.lblRxVal.back_color, Color::kSystem);
}

}  // namespace
}  // namespace kestrum::test
