#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "config/main_config.h"
#include "support/scripted_ports.h"
#include "text/text_file.h"

namespace kestrum {

inline constexpr const char* kCfgPath = "/car/Kestrum.cfg";

inline std::vector<std::string> GoodLines() {
  return {"Kestrum Auto field strenght logger V1.02",
          " 2  3  9600 ",
          " 250 ",
          " 5 ",
          " 3 ",
          " 40 ",
          " 1500  750.5 ",
          "-300  60 ",
          " 2.5 ",
          " .5 ",
          "#FALSE#",
          "#TRUE#",
          "#TRUE#",
          "#FALSE#",
          "#TRUE#",
          "5201.50N",
          "00415.25W",
          "12.5 m",
          " 7050.5 kHz",
          "/cal/own.cfg",
          "/logs/drive.log",
          "&On",
          "Loop, 5 W",
          "  Dipole  ",
          "Vertical\xB0"};
}

class MainConfigTest : public testing::Test {
 protected:
  MainConfigTest() {
    // What the desk looked like before the load.
    state.settings.MainLeft = 11;
    state.settings.MainTop = 12;
    state.settings.MinimalLeft = 13;
    state.settings.MinimalTop = 14;
    state.settings.OnOffCaption = "before";
    state.settings.CalibrationFiles = {"/car/Calibration1.cfg", "/car/Calibration2.cfg", "third"};
    for (std::size_t i = 0; i < state.settings.TxAntennas.size(); ++i) {
      state.settings.TxAntennas[i] = "old " + std::to_string(i);
    }
    form.cmdFT817OnOff.caption = "&Off";
    form.lblFreq.caption = "3630";
  }

  void Put(const std::vector<std::string>& lines) { ports.files.files[kCfgPath] = JoinLines(lines); }

  void ExpectGoodValues() {
    const Settings& s = state.settings;
    EXPECT_EQ(s.RigModel, 2);
    EXPECT_EQ(s.ComPort, 3);
    EXPECT_EQ(s.BaudRate, 9600);
    EXPECT_EQ(s.TimeIntervalMs, 250);
    EXPECT_EQ(s.RigMode, 5);
    EXPECT_EQ(s.FieldStrengthUnit, 3);
    EXPECT_EQ(s.SquelchLevel, 40);
    EXPECT_EQ(s.MainLeft, 1500.0F);
    EXPECT_EQ(s.MainTop, 750.5F);
    EXPECT_EQ(s.MinimalLeft, -300.0F);
    EXPECT_EQ(s.MinimalTop, 60.0F);
    EXPECT_EQ(s.KHzStep, 2.5F);
    EXPECT_EQ(s.DistanceIntervalKm, 0.5F);
    EXPECT_FALSE(s.ProgressBarMode);
    EXPECT_TRUE(s.ShowDDE);
    EXPECT_TRUE(s.LogByDistance);
    EXPECT_FALSE(s.AverageRSSI);
    EXPECT_TRUE(s.DialLock);
    EXPECT_EQ(s.TxLat, "5201.50N");
    EXPECT_EQ(s.TxLong, "00415.25W");
    EXPECT_EQ(s.TxHeight, "12.5 m");
    EXPECT_EQ(s.FrequencyText, " 7050.5 kHz");
    EXPECT_EQ(s.CalibrationFiles[2], "/cal/own.cfg");
    EXPECT_EQ(s.LogFileName, "/logs/drive.log");
    EXPECT_EQ(s.OnOffCaption, "&On");
    EXPECT_EQ(form.cmdFT817OnOff.caption, "&On");
    EXPECT_TRUE(ports.dialogs.messages.empty());
  }

  void ExpectDefaults() {
    const Settings& s = state.settings;
    EXPECT_EQ(s.RigModel, 1);
    EXPECT_EQ(s.ComPort, 1);
    EXPECT_EQ(s.BaudRate, 4800);
    EXPECT_EQ(s.TimeIntervalMs, 5000);
    EXPECT_EQ(s.RigMode, 2);
    EXPECT_EQ(s.FieldStrengthUnit, 1);
    EXPECT_EQ(s.SquelchLevel, 0);
    EXPECT_EQ(s.KHzStep, 9.0F);
    EXPECT_EQ(s.DistanceIntervalKm, 1.0F);
    EXPECT_TRUE(s.ProgressBarMode);
    EXPECT_TRUE(s.ShowDDE);
    EXPECT_FALSE(s.LogByDistance);
    EXPECT_FALSE(s.AverageRSSI);
    EXPECT_FALSE(s.DialLock);
    EXPECT_EQ(s.TxLat, "5157.00N");
    EXPECT_EQ(s.TxLong, "00532.00E");
    EXPECT_EQ(s.TxHeight, "? m");
    EXPECT_EQ(s.FrequencyText, "3630");
    EXPECT_THAT(s.CalibrationFiles, testing::ElementsAre("/car/Calibration1.cfg", "/car/Calibration2.cfg",
                                                         "/car/Calibration3.cfg"));
    EXPECT_EQ(s.LogFileName, "/car/RSSI-GPS.log");
    EXPECT_EQ(s.TxAntennas[0], "Antenna1, PWR 10W");
    // The desk stays.
    EXPECT_EQ(s.MainLeft, 11.0F);
    EXPECT_EQ(s.MainTop, 12.0F);
    EXPECT_EQ(s.MinimalLeft, 13.0F);
    EXPECT_EQ(s.MinimalTop, 14.0F);
    EXPECT_EQ(s.OnOffCaption, "before");
    for (std::size_t i = 1; i <= 20; ++i) EXPECT_EQ(s.TxAntennas[i], "old " + std::to_string(i));
  }

  void ExpectRejected() {
    ASSERT_EQ(ports.dialogs.messages.size(), 1U);
    EXPECT_EQ(ports.dialogs.messages[0].title, "Kestrum Auto field strenght logger ");
    EXPECT_EQ(ports.dialogs.messages[0].text,
              "LoadCfg\r\nInvalide version of /car/Kestrum.cfg\r\n\r\nI load default values now!");
    EXPECT_EQ(ports.dialogs.messages[0].icon, Icon::kExclamation);
    ExpectDefaults();
    EXPECT_EQ(form.cmdFT817OnOff.caption, "&Off");
    EXPECT_EQ(state.InfoRequest, 0);
  }

  test::ScriptedPorts ports;
  State state;
  Form1 form;
  MainConfig config{state, form, ports.ports()};
};

}  // namespace kestrum
