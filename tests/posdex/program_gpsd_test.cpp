#include <gtest/gtest.h>

#include "program.h"

namespace kestrum::posdex {
namespace {

// The real daemon on a receiver that is a pseudo-terminal.
class Gpsd {
 public:
  Gpsd(quint16 port, const QString& device) {
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process_.start(Q("gpsd"), {Q("-N"), Q("-n"), Q("-S"), QString::number(port), device});
    if (!process_.waitForStarted()) {
      process_.start(Q("/usr/sbin/gpsd"), {Q("-N"), Q("-n"), Q("-S"), QString::number(port), device});
      if (!process_.waitForStarted()) ADD_FAILURE() << "gpsd is not installed";
    }
  }
  ~Gpsd() { Kill(); }
  Gpsd(const Gpsd&) = delete;
  Gpsd& operator=(const Gpsd&) = delete;

  void Kill() {
    process_.kill();
    process_.waitForFinished();
  }

 private:
  QProcess process_;
};

class ProgramGpsdTest : public testing::Test {
 protected:
  QStringList Arguments() const { return {Q("--source"), QStringLiteral("gpsd:localhost:%1").arg(port_)}; }

  quint16 port_ = FreePort();
  PrivateBus bus_;
  Pty pty_;
  Receiver receiver_{pty_};
  Program program_{bus_.Address()};
  LinkClient client_{bus_.Address()};
};

TEST_F(ProgramGpsdTest, ReadsThroughARealDaemon) {
  const Gpsd gpsd(port_, pty_.Device());
  program_.Start(Arguments());
  ASSERT_TRUE(client_.WaitForValue("lblVal1", Q("A"), 20000));
  ASSERT_TRUE(client_.WaitForValue("lblHeight1", Q("328.1"), 5000));
  EXPECT_EQ(client_.Get("lblLat1"), Q("5157.0000N"));
  EXPECT_EQ(client_.Get("lblLong1"), Q("00532.0000E"));
  EXPECT_EQ(client_.Get("lblSpeed1"), Q("10"));
  EXPECT_EQ(client_.Get("lblCompas1"), Q("45"));
}

TEST_F(ProgramGpsdTest, ALostFixIsToldAtOnce) {
  const Gpsd gpsd(port_, pty_.Device());
  program_.Start(Arguments());
  ASSERT_TRUE(client_.WaitForValue("lblVal1", Q("A"), 20000));
  receiver_.SetFix(false);
  EXPECT_TRUE(client_.WaitForValue("lblVal1", Q("V"), 5000));
  receiver_.SetFix(true);
  EXPECT_TRUE(client_.WaitForValue("lblVal1", Q("A"), 10000));
}

TEST_F(ProgramGpsdTest, AKilledDaemonIsInvalidWithinFiveSecondsAndFoundAgain) {
  {
    Gpsd gpsd(port_, pty_.Device());
    program_.Start(Arguments());
    ASSERT_TRUE(client_.WaitForValue("lblVal1", Q("A"), 20000));
    gpsd.Kill();
    EXPECT_TRUE(client_.WaitForValue("lblVal1", Q("V"), 5000));
  }
  const Gpsd gpsd(port_, pty_.Device());
  EXPECT_TRUE(client_.WaitForValue("lblVal1", Q("A"), 20000));
}

TEST_F(ProgramGpsdTest, ADaemonThatStartsLaterIsFound) {
  program_.Start(Arguments());
  ASSERT_TRUE(client_.WaitForValue("lblVal1", Q("V"), 5000));
  const Gpsd gpsd(port_, pty_.Device());
  EXPECT_TRUE(client_.WaitForValue("lblVal1", Q("A"), 20000));
}

TEST_F(ProgramGpsdTest, AReceiverUnpluggedFromTheDaemonIsInvalidWithinFiveSeconds) {
  const Gpsd gpsd(port_, pty_.Device());
  program_.Start(Arguments());
  ASSERT_TRUE(client_.WaitForValue("lblVal1", Q("A"), 20000));
  pty_.Unplug();
  EXPECT_TRUE(client_.WaitForValue("lblVal1", Q("V"), 5000));
}

}  // namespace
}  // namespace kestrum::posdex
