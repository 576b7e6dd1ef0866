#include "serial_source.h"

#include <gtest/gtest.h>

#include <QFile>

#include "harness.h"
#include "reader.h"

namespace kestrum::posdex {
namespace {

constexpr const char* kRmc = "GPRMC,120000.00,A,5157.00000,N,00532.00000,E,10.0,45.0,010125,,,A";

class SerialSourceTest : public testing::Test {
 protected:
  // The device is a link in a folder, as udev and the simulated drive make it.
  void PlugIn(const Pty& pty) {
    QFile::remove(link_);
    ASSERT_TRUE(QFile::link(DeviceOf(pty), link_));
  }
  void Start() {
    SourceChoice choice;
    choice.kind = SourceChoice::Kind::kSerial;
    choice.path = Q("gps");
    reader_ = std::make_unique<Reader>(MakeSource(choice, folder_.path()));
    reader_->Start();
  }
  bool WaitForValidity(const char* validity, int limit_ms) const {
    return WaitFor([&] { return reader_->Texts().validity == Q(validity); }, milliseconds(limit_ms));
  }
  bool WaitForState(const char* state, int limit_ms) const {
    return WaitFor([&] { return reader_->State() == Q(state); }, milliseconds(limit_ms));
  }

  QTemporaryDir folder_;
  QString link_ = folder_.filePath(Q("gps"));
  std::unique_ptr<Reader> reader_;
};

TEST_F(SerialSourceTest, ReadsAReceiver) {
  const Pty pty;
  PlugIn(pty);
  Start();
  const Receiver receiver(pty);
  ASSERT_TRUE(WaitForValidity("A", 5000));
  EXPECT_EQ(reader_->Description(), Q("serial port gps at 4800 baud"));
  EXPECT_EQ(reader_->State(), Q("connected, fix"));
  ASSERT_TRUE(WaitFor([&] { return reader_->Texts().height == Q("328.1"); }, milliseconds(2000)));
  EXPECT_EQ(reader_->Texts(),
            (GpsTexts{Q("5157.0000N"), Q("00532.0000E"), Q("A"), Q("45"), Q("328.1"), Q("10")}));
}

TEST_F(SerialSourceTest, AFixIsShownSoonAfterItsSentence) {
  const Pty pty;
  PlugIn(pty);
  Start();
  ASSERT_TRUE(WaitForState("waiting for a fix", 2000));
  Send(pty, Nmea(kRmc));
  EXPECT_TRUE(WaitForValidity("A", 1500));
}

TEST_F(SerialSourceTest, TellsALostFixAndFindsTheNextOne) {
  const Pty pty;
  PlugIn(pty);
  Start();
  Receiver receiver(pty);
  ASSERT_TRUE(WaitForValidity("A", 5000));
  receiver.SetFix(false);
  ASSERT_TRUE(WaitForValidity("V", 2000));
  ASSERT_TRUE(WaitForState("waiting for a fix", 2000));
  EXPECT_EQ(reader_->Texts().latitude, Q("5157.0000N"));
  EXPECT_EQ(reader_->Texts().speed, Q("10"));
  receiver.SetFix(true);
  EXPECT_TRUE(WaitForValidity("A", 5000));
}

TEST_F(SerialSourceTest, SilenceEndsTheFixWithinFiveSeconds) {
  const Pty pty;
  PlugIn(pty);
  Start();
  Send(pty, Nmea(kRmc));
  ASSERT_TRUE(WaitForValidity("A", 5000));
  EXPECT_TRUE(WaitForValidity("V", 5000));
  EXPECT_TRUE(WaitForState("connected, no data", 5000));
}

TEST_F(SerialSourceTest, AnUnpluggedReceiverReturns) {
  Pty first;
  PlugIn(first);
  Start();
  {
    const Receiver receiver(first);
    ASSERT_TRUE(WaitForValidity("A", 5000));
  }
  first.Unplug();
  ASSERT_TRUE(QFile::remove(link_));
  ASSERT_TRUE(WaitForValidity("V", 5000));
  ASSERT_TRUE(WaitForState("no receiver: not plugged in, retrying", 5000));
  const Pty second;
  PlugIn(second);
  const Receiver receiver(second);
  EXPECT_TRUE(WaitForValidity("A", 8000));
}

TEST_F(SerialSourceTest, FollowsADeviceThatWasReplacedWithoutAHangUp) {
  const Pty first;
  PlugIn(first);
  Start();
  Send(first, Nmea(kRmc));
  ASSERT_TRUE(WaitForValidity("A", 5000));
  const Pty second;
  PlugIn(second);
  const Receiver receiver(second);
  EXPECT_TRUE(WaitFor([&] { return reader_->State() != Q("connected, fix"); }, milliseconds(8000)));
  EXPECT_TRUE(WaitForValidity("A", 8000));
}

TEST_F(SerialSourceTest, GarbageIsNamedAndOutlived) {
  const Pty pty;
  PlugIn(pty);
  Start();
  for (int i = 0; i < 60; ++i) {
    QByteArray garbage(500, '\0');
    for (qsizetype k = 0; k < garbage.size(); ++k) garbage[k] = static_cast<char>(k * 31 + qsizetype{17} * i);
    Send(pty, garbage + "\n");
    EXPECT_TRUE(
        StaysTrueWhileEventsRun(milliseconds(100), [this] { return reader_->Texts() == GpsTexts{}; }));
  }
  EXPECT_EQ(reader_->State(), Q("connected, but no NMEA sentences (is the baud rate right?)"));
  EXPECT_EQ(reader_->Texts(), GpsTexts{});
  Send(pty, "\r\n" + Nmea(kRmc));
  EXPECT_TRUE(WaitForValidity("A", 2000));
}

TEST_F(SerialSourceTest, AMissingDeviceIsNamed) {
  Start();
  ASSERT_TRUE(WaitForState("no receiver: not plugged in, retrying", 2000));
  EXPECT_TRUE(StaysTrueWhileEventsRun(
      milliseconds(500), [this] { return reader_->State() == Q("no receiver: not plugged in, retrying"); }));
}

TEST_F(SerialSourceTest, AFileIsNoReceiver) {
  QFile file(link_);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.close();
  Start();
  ASSERT_TRUE(WaitFor([&] { return reader_->State().startsWith(Q("no receiver: ")); }, milliseconds(2000)));
  EXPECT_EQ(reader_->Texts().validity, Q("V"));
}

}  // namespace
}  // namespace kestrum::posdex
