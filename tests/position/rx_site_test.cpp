#include "position/rx_site.h"

#include <gtest/gtest.h>

#include <string>

#include "support/scripted_ports.h"

namespace kestrum::test {
namespace {

struct Car : ::testing::Test {
  State state;
  Form1 form;
  ScriptedPorts outside;
  GpsLinks gps{form, outside.ports()};
  GreatCircle circle;
  RxSite site{state, form, gps, circle};

  void SetUp() override {
    state.settings.TxLat = "5159.00N";
    state.settings.TxLong = "00532.40E";
    form.lblTxHeight.caption = "10 m";
    gps.site.height = "?? m";
  }
  void StandAt(const std::string& latitude, const std::string& longitude) {
    form.lblDDELat.caption = latitude;
    form.lblDDELong.caption = longitude;
    form.lblDDEVal.caption = "A";
    form.lblDDEHeight.caption = "33";
    form.lblDDESpeed.caption = "10";
    form.lblDDECompas.caption = "350";
    gps.GetAllDDE();
  }
  void Show() { site.SetGPSdata(); }
};

TEST_F(Car, TransmitterPositionComesFromTheSettings) {
  state.settings.TxLat = "5157.00S";
  state.settings.TxLong = "00532.00W";
  site.CalcTxPos();
  EXPECT_DOUBLE_EQ(circle.tx.latitude_deg, -51.95);
  EXPECT_DOUBLE_EQ(circle.tx.longitude_deg, -5.533333);
}

TEST_F(Car, ReceiverPositionComesFromTheLabelsNotTheRecord) {
  StandAt("5157.00N", "00532.00E");
  form.lblDDELat.caption = "5158.5678N";
  form.lblDDELong.caption = "00533.0000E";
  site.CalcRxPos();
  EXPECT_DOUBLE_EQ(circle.rx.latitude_deg, 51.976);  // 51 + 58/60 + 56/6000
  EXPECT_DOUBLE_EQ(circle.rx.longitude_deg, 5.55);
}

TEST_F(Car, ReferenceComesFromTheRecordNotTheLabels) {
  StandAt("5157.00N", "00532.00E");
  form.lblDDELat.caption = "5158.00N";
  site.CalcPosABStart();
  EXPECT_DOUBLE_EQ(circle.reference.latitude_deg, 51.95);
  EXPECT_DOUBLE_EQ(circle.reference.longitude_deg, 5.533333);
}

TEST_F(Car, ValidFixShowsTheWayToTheTransmitter) {
  StandAt("5157.00N", "00532.00E");
  Show();
  EXPECT_EQ(form.lblRxVal.caption, "GPS Ok");
  EXPECT_EQ(form.lblRxLat.caption, "5157.00N");
  EXPECT_EQ(form.lblRxLong.caption, "00532.00E");
  EXPECT_EQ(form.lblRxHeight.caption, "3 m");
  EXPECT_EQ(form.lblRxDist.caption, "3.74 km");
  EXPECT_EQ(form.lblRxBearing.caption, "007\xB0");
  EXPECT_EQ(form.lblTextBearing.caption, "N");
  EXPECT_EQ(form.lblOpticalDistance.caption, "17.5 km");  // 3.568 x (sqrt 10 + sqrt 3)
  EXPECT_EQ(form.lblPelorus.caption, "357\xB0");          // 350 + 7
  EXPECT_EQ(form.Picture1.needle, 357);
}

TEST_F(Car, SmallAIsAValidFix) {
  StandAt("5157.00N", "00532.00E");
  form.lblDDEVal.caption = "a";
  Show();
  EXPECT_EQ(form.lblRxDist.caption, "3.74 km");
}

TEST_F(Car, NoFixShowsNothing) {
  StandAt("5157.00N", "00532.00E");
  form.lblDDEVal.caption = "V";
  Show();
  EXPECT_EQ(form.lblRxVal.caption, "");
  EXPECT_EQ(form.lblRxLat.caption, "");
  EXPECT_EQ(form.lblRxDist.caption, "");
  EXPECT_EQ(form.lblRxBearing.caption, "");
  EXPECT_EQ(form.lblTextBearing.caption, "");
  EXPECT_EQ(form.lblOpticalDistance.caption, "");
  EXPECT_EQ(form.lblPelorus.caption, "");
  EXPECT_EQ(form.Picture1.needle, std::nullopt);
  EXPECT_EQ(circle.bearing_deg, -1);
}

TEST_F(Car, BelowAKilometreThereIsNoZeroBeforeThePoint) {
  state.settings.TxLat = "5157.30N";
  state.settings.TxLong = "00532.00E";
  StandAt("5157.00N", "00532.00E");
  Show();
  EXPECT_EQ(form.lblRxDist.caption, ".56 km");
  EXPECT_EQ(form.lblRxBearing.caption, "000\xB0");
}

TEST_F(Car, OneMinuteToTheNorth) {
  state.settings.TxLat = "5158.00N";
  state.settings.TxLong = "00532.00E";
  StandAt("5157.00N", "00532.00E");
  Show();
  EXPECT_EQ(form.lblRxDist.caption, "1.86 km");
  EXPECT_EQ(form.lblRxBearing.caption, "000\xB0");
}

TEST_F(Car, DueSouthIs180) {
  state.settings.TxLat = "5156.00N";
  state.settings.TxLong = "00532.00E";
  StandAt("5157.00N", "00532.00E");
  Show();
  EXPECT_EQ(form.lblRxBearing.caption, "180\xB0");
  EXPECT_EQ(form.lblTextBearing.caption, "S");
  EXPECT_EQ(form.lblPelorus.caption, "170\xB0");  // 350 + 180 = 530
}

TEST_F(Car, AtTheTransmitterFromTheStartThereIsNoBearing) {
  StandAt("5159.00N", "00532.40E");
  Show();
  EXPECT_EQ(form.lblRxDist.caption, "0 km");
  EXPECT_EQ(form.lblRxBearing.caption, "???\xB0");
  EXPECT_EQ(form.lblTextBearing.caption, "?");
}

TEST_F(Car, ArrivedAtTheTransmitterTheLastWayStands) {
  StandAt("5157.00N", "00532.00E");
  Show();
  StandAt("5159.00N", "00532.40E");
  Show();
  EXPECT_EQ(form.lblRxLat.caption, "5159.00N");
  EXPECT_EQ(form.lblRxDist.caption, "3.74 km");
  EXPECT_EQ(form.lblRxBearing.caption, "007\xB0");
}

TEST_F(Car, OnTheEquatorTheDistanceFollowsAndTheBearingStands) {
  StandAt("5157.00N", "00532.00E");
  Show();
  state.settings.TxLat = "0000.00N";
  state.settings.TxLong = "00500.00E";
  StandAt("0000.00N", "00501.00E");
  Show();
  EXPECT_EQ(form.lblRxDist.caption, "1.85 km");  // 6367 km x 1/60 degree
  EXPECT_EQ(form.lblRxBearing.caption, "007\xB0");
}

TEST_F(Car, WithoutACompassThereIsNoPelorus) {
  StandAt("5157.00N", "00532.00E");
  Show();
  form.lblDDECompas.caption = "32768";
  gps.GetAllDDE();
  Show();
  EXPECT_EQ(form.lblPelorus.caption, "???\xB0");
  EXPECT_EQ(form.Picture1.needle, std::nullopt);
}

TEST_F(Car, PelorusIsTheSumOfCompassAndWholeBearing) {
  StandAt("5157.00N", "00532.00E");
  form.lblDDECompas.caption = "353";
  gps.GetAllDDE();
  Show();
  EXPECT_EQ(form.lblPelorus.caption, "000\xB0");  // 353 + 7, a difference would be 014 or 346
}

TEST_F(Car, UnknownTransmitterHeightLeavesTheOpticalDistanceOpen) {
  form.lblTxHeight.caption = "? m";
  StandAt("5157.00N", "00532.00E");
  Show();
  EXPECT_EQ(form.lblOpticalDistance.caption, "??.? km");
}

TEST_F(Car, HeightLabelWithoutAValueKeepsThePlaceholderAndTheOpticalDistanceOpen) {
  StandAt("5157.00N", "00532.00E");
  form.lblDDESpeed.caption = "lblHeight1";
  gps.GetAllDDE();
  Show();
  EXPECT_EQ(form.lblRxVal.caption, "No GPS");
  EXPECT_EQ(form.lblRxHeight.caption, "?? m");
  EXPECT_EQ(form.lblOpticalDistance.caption, "??.? km");
  EXPECT_EQ(form.lblRxDist.caption, "3.74 km");
}

TEST_F(Car, DistanceIsMeasuredFromTheReference) {
  StandAt("5157.00N", "00532.00E");
  site.CalcPosABStart();
  form.lblDDELat.caption = "5158.00N";
  EXPECT_NEAR(site.DistanceFromReference(), 1.8555, 0.001);
  EXPECT_EQ(form.lblRxDist.caption, "");  // nothing is shown
}

TEST_F(Car, AtTheReferenceTheLastDistanceStands) {
  StandAt("5157.00N", "00532.00E");
  site.CalcPosABStart();
  Show();
  EXPECT_NEAR(site.DistanceFromReference(), 3.738, 0.001);
}

TEST_F(Car, AfterARecordTheReferenceIsTheTransmitter) {
  StandAt("5157.00N", "00532.00E");
  site.CalcPosABStart();
  form.lblDDELat.caption = "5158.00N";
  site.DistanceFromReference();
  Show();
  site.MoveReference();
  EXPECT_DOUBLE_EQ(circle.reference.latitude_deg, 51.98333);
  EXPECT_DOUBLE_EQ(circle.reference.longitude_deg, 5.54);
  StandAt("5157.00N", "00532.00E");
  EXPECT_NEAR(site.DistanceFromReference(), 3.738, 0.001);
}

TEST_F(Car, PelorusUsesTheCompassOfTheRecordNotTheLabel) {
  StandAt("5157.00N", "00532.00E");
  form.lblDDECompas.caption = "90";
  Show();
  EXPECT_EQ(form.lblPelorus.caption, "357\xB0");  // 350 + 7
}

}  // namespace
}  // namespace kestrum::test
