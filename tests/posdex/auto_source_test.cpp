#include "auto_source.h"

#include <gtest/gtest.h>
#include <termios.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTcpServer>
#include <QTcpSocket>
#include <map>

#include "harness.h"
#include "reader.h"

namespace kestrum::posdex {
namespace {

// A receiver on a port that only understands who listens at its speed.
class ReceiverAtSpeed : public QObject {
 public:
  ReceiverAtSpeed(const Pty& pty, speed_t speed) : pty_(pty), speed_(speed) {
    connect(&timer_, &QTimer::timeout, this, &ReceiverAtSpeed::Send);
    timer_.start(200);
  }

 private:
  void Send() {
    termios mode{};
    const QByteArray sentence = Nmea("GPRMC,120000.00,A,5157.00000,N,00532.00000,E,10.0,45.0,010125,,,A");
    const bool heard = tcgetattr(pty_.line(), &mode) == 0 && cfgetispeed(&mode) == speed_;
    posdex::Send(pty_, heard ? sentence : QByteArray("\xF8\x1E\x80\xFC\x06\xE6\x9E\x18\x98"));
  }

  const Pty& pty_;
  speed_t speed_;
  QTimer timer_;
};

class AutoSourceTest : public testing::Test {
 protected:
  AutoSourceTest() {
    QDir(folder_.path()).mkdir(Q("by-id"));
    gpsd_.host = Q("127.0.0.1");
    gpsd_.port = FreePort();
  }
  void PlugIn(const Pty& pty, const char* name) const {
    ASSERT_TRUE(QFile::link(DeviceOf(pty), folder_.filePath(Q("by-id/") + Q(name))));
  }
  void Start() {
    reader_ = std::make_unique<Reader>(
        std::make_unique<AutoSource>(folder_.path(), folder_.filePath(Q("by-id")), gpsd_));
    QObject::connect(reader_.get(), &Reader::StateChanged,
                     [this](const QString& state) { states_.append(state); });
    reader_->Start();
  }
  bool WaitForFix(int limit_ms) const {
    return WaitFor([this] { return reader_->Texts().validity == Q("A"); }, milliseconds(limit_ms));
  }

  QTemporaryDir folder_;
  SourceChoice gpsd_;
  QStringList states_;
  std::unique_ptr<Reader> reader_;
};

TEST_F(AutoSourceTest, FindsASerialReceiverAndItsSpeed) {
  const Pty silent;
  const Pty pty;
  PlugIn(pty, "usb-receiver");
  const ReceiverAtSpeed receiver(pty, B38400);
  Start();
  EXPECT_EQ(reader_->Description(), Q("automatic: gpsd or a serial port"));
  ASSERT_TRUE(WaitForFix(20000));
  EXPECT_EQ(reader_->Description(),
            QStringLiteral("found: serial port %1/by-id/usb-receiver at 38400 baud").arg(folder_.path()));
  EXPECT_TRUE(states_.contains(
      QStringLiteral("looking for a receiver: serial port %1/by-id/usb-receiver at 9600 baud")
          .arg(folder_.path())));
}

TEST_F(AutoSourceTest, LeavesTheSetsPortAlone) {
  const Pty set;
  const Pty pty;
  PlugIn(set, "a-set");
  PlugIn(pty, "b-receiver");
  ASSERT_TRUE(QFile::link(DeviceOf(set), folder_.filePath(Q("com1"))));
  const ReceiverAtSpeed receiver(pty, B4800);
  Start();
  ASSERT_TRUE(WaitForFix(10000));
  for (const QString& state : states_) EXPECT_FALSE(state.contains(Q("a-set"))) << state.toStdString();
}

TEST_F(AutoSourceTest, PrefersAGpsdThatHasAReceiver) {
  const Pty pty;
  PlugIn(pty, "usb-receiver");
  const ReceiverAtSpeed receiver(pty, B4800);
  QTcpServer server;
  ASSERT_TRUE(server.listen(QHostAddress::LocalHost, gpsd_.port));
  Start();
  ASSERT_TRUE(WaitFor([&] { return server.hasPendingConnections(); }, milliseconds(5000)));
  server.nextPendingConnection()->write(R"({"class":"TPV","mode":3,"lat":52,"lon":5.5})"
                                        "\r\n");
  ASSERT_TRUE(WaitForFix(5000));
  EXPECT_EQ(reader_->Texts().latitude, Q("5200.0000N"));
  EXPECT_EQ(reader_->Description(), QStringLiteral("found: gpsd on 127.0.0.1:%1").arg(gpsd_.port));
}

TEST_F(AutoSourceTest, AGpsdWithoutAReceiverIsPassedBy) {
  const Pty pty;
  PlugIn(pty, "usb-receiver");
  const ReceiverAtSpeed receiver(pty, B4800);
  QTcpServer server;
  ASSERT_TRUE(server.listen(QHostAddress::LocalHost, gpsd_.port));
  Start();
  ASSERT_TRUE(WaitFor([&] { return server.hasPendingConnections(); }, milliseconds(5000)));
  server.nextPendingConnection()->write("{\"class\":\"DEVICES\",\"devices\":[]}\r\n");
  EXPECT_TRUE(WaitForFix(10000));
}

TEST_F(AutoSourceTest, SearchesAgainWhenTheReceiverIsLost) {
  {
    const Pty pty;
    PlugIn(pty, "first");
    const ReceiverAtSpeed receiver(pty, B4800);
    Start();
    ASSERT_TRUE(WaitForFix(10000));
  }
  ASSERT_TRUE(WaitFor([this] { return reader_->Texts().validity == Q("V"); }, milliseconds(6000)));
  QFile::remove(folder_.filePath(Q("by-id/first")));
  ASSERT_TRUE(WaitFor(
      [this] {
        return reader_->State() == Q("no receiver: neither gpsd nor a serial port has one, retrying");
      },
      milliseconds(20000)));
  const Pty pty;
  PlugIn(pty, "second");
  const ReceiverAtSpeed receiver(pty, B9600);
  EXPECT_TRUE(WaitForFix(20000)) << states_.join(QLatin1Char('\n')).toStdString();
}

}  // namespace
}  // namespace kestrum::posdex
