#include <gtest/gtest.h>

#include <QtEndian>
#include <cmath>
#include <functional>

#include "program.h"

namespace kestrum::posdex {
namespace {

class ProgramGpsdTest : public testing::Test {
 protected:
  std::vector<std::string> Arguments() const {
    return {"--source", "gpsd:localhost:" + std::to_string(port_)};
  }

  quint16 port_ = FreePort();
  PrivateBus bus_;
  Pty pty_;
  Receiver receiver_{pty_};
  Program program_{bus_.address()};
  LinkClient client_{bus_.address()};
};

TEST_F(ProgramGpsdTest, ReadsThroughARealDaemon) {
  const process::Gpsd gpsd(port_, pty_.device());
  program_.Start(Arguments());
  ASSERT_TRUE(client_.WaitForValue("lblVal1", Q("A"), 20000));
  ASSERT_TRUE(client_.WaitForValue("lblHeight1", Q("328.1"), 5000));
  EXPECT_EQ(client_.Get("lblLat1"), Q("5157.0000N"));
  EXPECT_EQ(client_.Get("lblLong1"), Q("00532.0000E"));
  EXPECT_EQ(client_.Get("lblSpeed1"), Q("10"));
  EXPECT_EQ(client_.Get("lblCompas1"), Q("45"));
}

TEST_F(ProgramGpsdTest, ALostFixIsToldAtOnce) {
  const process::Gpsd gpsd(port_, pty_.device());
  program_.Start(Arguments());
  ASSERT_TRUE(client_.WaitForValue("lblVal1", Q("A"), 20000));
  receiver_.SetFix(false);
  EXPECT_TRUE(client_.WaitForValue("lblVal1", Q("V"), 5000));
  receiver_.SetFix(true);
  EXPECT_TRUE(client_.WaitForValue("lblVal1", Q("A"), 10000));
}

TEST_F(ProgramGpsdTest, AKilledDaemonIsInvalidAtOnceAndFoundAgain) {
  {
    process::Gpsd gpsd(port_, pty_.device());
    program_.Start(Arguments());
    ASSERT_TRUE(client_.WaitForValue("lblVal1", Q("A"), 20000));
    gpsd.Kill();
    // Sooner than silence alone would end the fix, 2.5 s after the report before.
    EXPECT_TRUE(client_.WaitForValue("lblVal1", Q("V"), 2000));
  }
  const process::Gpsd gpsd(port_, pty_.device());
  EXPECT_TRUE(client_.WaitForValue("lblVal1", Q("A"), 20000));
}

TEST_F(ProgramGpsdTest, ADaemonThatStartsLaterIsFound) {
  program_.Start(Arguments());
  ASSERT_TRUE(client_.WaitForValue("lblVal1", Q("V"), 5000));
  const process::Gpsd gpsd(port_, pty_.device());
  EXPECT_TRUE(client_.WaitForValue("lblVal1", Q("A"), 20000));
}

TEST_F(ProgramGpsdTest, AReceiverUnpluggedFromTheDaemonIsInvalidWithinFiveSeconds) {
  const process::Gpsd gpsd(port_, pty_.device());
  program_.Start(Arguments());
  ASSERT_TRUE(client_.WaitForValue("lblVal1", Q("A"), 20000));
  pty_.Unplug();
  EXPECT_TRUE(client_.WaitForValue("lblVal1", Q("V"), 5000));
}

// A big-endian number of any width.
template <class Number>
QByteArray BigEndian(Number number) {
  QByteArray bytes(sizeof(Number), '\0');
  qToBigEndian(number, bytes.data());
  return bytes;
}

// What a SkyTraq receiver sends in its own tongue, for which gpsd makes no sentences: its state of navigation
// (message DF) at a northern latitude on the meridian of Greenwich.
QByteArray SkyTraq(double latitude_deg, double second) {
  constexpr double kDegree = 3.14159265358979323846 / 180.0;
  constexpr double kAxis = 6378137.0;
  constexpr double kEccentricity = 6.69437999014e-3;  // squared; of the ellipsoid of 1984
  const double sine = std::sin(latitude_deg * kDegree);
  const double radius = kAxis / std::sqrt(1 - kEccentricity * sine * sine);
  QByteArray payload("\xDF\x01\x03", 3);  // message, issue of data, 3D
  payload += BigEndian(quint16{2300}) + BigEndian(100000.0 + second);
  payload += BigEndian(radius * std::cos(latitude_deg * kDegree)) + BigEndian(0.0);
  payload += BigEndian(radius * (1 - kEccentricity) * sine);
  for (int i = 0; i < 3; ++i) payload += BigEndian(0.0F);  // velocity
  payload += BigEndian(0.0) + BigEndian(0.0F);             // clock
  for (int i = 0; i < 5; ++i) payload += BigEndian(1.0F);  // dilutions
  char sum = 0;
  for (const char byte : payload) sum = static_cast<char>(sum ^ byte);
  return QByteArray("\xA0\xA1", 2) + BigEndian(static_cast<quint16>(payload.size())) + payload + sum + "\r\n";
}

// A drive to the north, a hundredth of a minute with each position.
class Drive : public QObject {
 public:
  Drive(const Pty& pty, int every_ms, std::function<QByteArray(int)> sentences)
      : pty_(pty), sentences_(std::move(sentences)) {
    connect(&timer_, &QTimer::timeout, this, [this] { Send(pty_, sentences_(sent_++)); });
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.start(every_ms);
  }
  int Sent() const { return sent_; }
  void Stop() { timer_.stop(); }

 private:
  const Pty& pty_;
  std::function<QByteArray(int)> sentences_;
  QTimer timer_;
  int sent_ = 0;
};

class ManyReceiversTest : public testing::Test {
 protected:
  // Positions as numbers of the drive, in hundredths of a minute above 51 degrees, each as it has come.
  QList<int> Seen() const {
    QList<int> seen;
    for (const QVariantMap& change : client_.changes) {
      if (!change.contains(Q("lblLat1"))) continue;
      const QString text = change[Q("lblLat1")].toString();
      seen.append(qRound((text.mid(2, 7).toDouble()) * 100));
    }
    return seen;
  }
  // Every position from the first that gpsd has understood to the last comes once and in order.
  void ExpectAll(int every_ms, const std::function<QByteArray(int)>& sentences, int wanted) {
    const process::Gpsd gpsd(port_, pty_.device());
    program_.Start({"--source", "gpsd:localhost:" + std::to_string(port_)});
    ASSERT_TRUE(client_.WaitForValue("Title", Q("Posdex Version 1.19"), 10000));
    Drive drive(pty_, every_ms, sentences);
    ASSERT_TRUE(WaitFor([&] { return !Seen().isEmpty(); }, milliseconds(20000)));
    const int first = Seen().first();
    ASSERT_TRUE(WaitFor([&] { return drive.Sent() > first + wanted; }, milliseconds(60000)));
    drive.Stop();
    // gpsd finishes a moment when it hears of the next one.
    ASSERT_TRUE(WaitFor([&] { return Seen().last() >= drive.Sent() - 2; }, milliseconds(5000)))
        << Seen().last();
    QList<int> expected;
    for (int i = first; i <= Seen().last(); ++i) expected.append(i);
    EXPECT_EQ(Seen(), expected);
    std::printf("through gpsd: expected %d, seen %d positions\n", static_cast<int>(expected.size()),
                static_cast<int>(Seen().size()));
  }

  quint16 port_ = FreePort();
  PrivateBus bus_;
  Pty pty_;
  Program program_{bus_.address()};
  LinkClient client_{bus_.address()};
};

TEST_F(ManyReceiversTest, TenPositionsASecondAllArrive) {
  const auto sentences = [](int i) {
    const QByteArray place = "51" + QByteArray::number(i / 100).rightJustified(2, '0') + "." +
                             QByteArray::number(i % 100).rightJustified(2, '0') + "000,N,00532.00000,E";
    const QByteArray time =
        QByteArray::number(120000 + i / 600 * 100 + i / 10 % 60) + "." + QByteArray::number(i % 10) + "0";
    return Nmea("GPRMC," + time + ",A," + place + ",10.0,45.0,010125,,,A") +
           Nmea("GPGGA," + time + "," + place + ",1,08,1.0,100.0,M,46.0,M,,");
  };
  ExpectAll(100, sentences, 50);
}

TEST_F(ManyReceiversTest, AReceiverThatSpeaksNoNmeaIsRead) {
  ExpectAll(
      200, [](int i) { return SkyTraq(51 + i / 6000.0, i / 5.0); }, 20);
}

}  // namespace
}  // namespace kestrum::posdex
