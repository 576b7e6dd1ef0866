#include "reader_window.h"

#include <gtest/gtest.h>

#include <QLabel>

#include "harness.h"

namespace kestrum::posdex {
namespace {

QLabel* Find(const ReaderWindow& window, const char* name) {
  return window.findChild<QLabel*>(Q(name));
}

TEST(ReaderWindow, ShowsTheSixValuesUnderTheirNames) {
  ReaderWindow window(Q("gpsd on localhost:2947"));
  window.SetTexts({Q("5157.0000N"), Q("00532.0000E"), Q("A"), Q("45"), Q("328.1"), Q("10")});
  EXPECT_EQ(window.windowTitle(), Q("Posdex Version 1.19"));
  EXPECT_EQ(Find(window, "lblLat1")->text(), Q("5157.0000N"));
  EXPECT_EQ(Find(window, "lblLong1")->text(), Q("00532.0000E"));
  EXPECT_EQ(Find(window, "lblVal1")->text(), Q("A"));
  EXPECT_EQ(Find(window, "lblCompas1")->text(), Q("45"));
  EXPECT_EQ(Find(window, "lblHeight1")->text(), Q("328.1"));
  EXPECT_EQ(Find(window, "lblSpeed1")->text(), Q("10"));
}

TEST(ReaderWindow, AScreenReaderHearsTheValues) {
  ReaderWindow window(Q("gpsd on localhost:2947"));
  EXPECT_EQ(Find(window, "lblSource")->accessibleName(), Q("Source: gpsd on localhost:2947"));
  EXPECT_EQ(Find(window, "lblVal1")->accessibleName(), Q("Validity: V"));
  window.SetTexts({Q("5157.0000N"), Q("00532.0000E"), Q("A"), Q("45"), Q("328.1"), Q("10")});
  EXPECT_EQ(Find(window, "lblLat1")->accessibleName(), Q("Latitude: 5157.0000N"));
  EXPECT_EQ(Find(window, "lblVal1")->accessibleName(), Q("Validity: A"));
  EXPECT_EQ(Find(window, "lblSpeed1")->accessibleName(), Q("Speed (knots): 10"));
}

TEST(ReaderWindow, ShowsSourceStateAndLink) {
  ReaderWindow window(Q("gpsd on localhost:2947"));
  window.SetState(Q("connected, fix"));
  window.SetBusState(Q("on the session bus"));
  EXPECT_EQ(Find(window, "lblSource")->text(), Q("gpsd on localhost:2947"));
  EXPECT_EQ(Find(window, "lblState")->text(), Q("connected, fix"));
  EXPECT_EQ(Find(window, "lblBus")->text(), Q("on the session bus"));
}

TEST(ReaderWindow, ShowsWhatTheReceiverSaysAndWhichOneItIs) {
  ReaderWindow window(Q("automatic: gpsd or a serial port"));
  EXPECT_EQ(Find(window, "lblFix")->text(), Q("no fix"));
  EXPECT_EQ(Find(window, "lblAge")->text(), Q("no position yet"));
  window.SetFix(Q("3D fix, 8 satellites"), Q("under 1 s"));
  window.SetSource(Q("found: serial port gps at 38400 baud"));
  EXPECT_EQ(Find(window, "lblFix")->text(), Q("3D fix, 8 satellites"));
  EXPECT_EQ(Find(window, "lblAge")->text(), Q("under 1 s"));
  EXPECT_EQ(Find(window, "lblSource")->text(), Q("found: serial port gps at 38400 baud"));
}

TEST(ReaderWindow, ShowsAComplaintOnlyWhenThereIsOne) {
  ReaderWindow window(Q("x"));
  window.show();
  EXPECT_FALSE(Find(window, "lblComplaint")->isVisible());
  window.SetComplaint(Q("posdex.conf line 1: not a setting: \"x\""));
  EXPECT_TRUE(Find(window, "lblComplaint")->isVisible());
  window.SetComplaint({});
  EXPECT_FALSE(Find(window, "lblComplaint")->isVisible());
}

TEST(ReaderWindow, GrowsWithAStateThatWraps) {
  ReaderWindow window(Q("x"));
  window.show();
  window.SetComplaint(Q("posdex.conf line 1: bad characters in \"something that is very long indeed\""));
  window.SetState(
      Q("no receiver: a reason that takes far more room than one line of the window has to offer"));
  const QLabel* state = Find(window, "lblState");
  EXPECT_TRUE(WaitFor([&] { return state->height() >= state->heightForWidth(state->width()); }));
  EXPECT_GT(state->height(), 2 * state->fontMetrics().height() - 1);
}

TEST(ReaderWindow, DoesNotTakeTheFocusAndShowsPlainText) {
  ReaderWindow window(Q("recording <b>a</b>"));
  EXPECT_TRUE(window.testAttribute(Qt::WA_ShowWithoutActivating));
  for (const QLabel* label : window.findChildren<QLabel*>()) {
    if (!label->objectName().startsWith(Q("lbl"))) continue;
    EXPECT_EQ(label->textFormat(), Qt::PlainText) << label->objectName().toStdString();
  }
}

}  // namespace
}  // namespace kestrum::posdex
