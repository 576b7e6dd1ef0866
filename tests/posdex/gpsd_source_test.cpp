#include "gpsd_source.h"

#include <gtest/gtest.h>

#include <QTcpServer>

#include "harness.h"

namespace kestrum::posdex {
namespace {

// A fix of a receiver, at a latitude.
QByteArray Tpv(double latitude, const char* device = "/dev/ttyUSB0") {
  return QStringLiteral(R"({"class":"TPV","device":"%1","mode":3,"lat":%2,"lon":5.5,"altMSL":100})")
             .arg(Q(device))
             .arg(latitude)
             .toLatin1() +
         "\r\n";
}
QByteArray NoFix(const char* device) {
  return QByteArray(R"({"class":"TPV","mode":1,"device":")") + device + "\"}\r\n";
}

// A daemon that says what the test wants, for the moments that a real one cannot be brought into.
class GpsdSourceTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(server_.listen(QHostAddress::LocalHost)); }
  void Start() {
    SourceChoice choice;
    choice.host = Q("127.0.0.1");
    choice.port = server_.serverPort();
    source_ = MakeSource(choice, {});
    QObject::connect(source_.get(), &Source::PositionReported, [this](const Fix& fix) {
      if (fix.valid) latitudes_.append(*fix.latitude_deg);
    });
    QObject::connect(source_.get(), &Source::LineReceived,
                     [](const QByteArray& line) { ADD_FAILURE() << line.toStdString(); });
    QObject::connect(source_.get(), &Source::SatellitesReported, [this](int count) { satellites_ = count; });
    QObject::connect(source_.get(), &Source::StateChanged,
                     [this](const SourceState& state) { states_.append(state); });
    source_->Start();
  }
  QTcpSocket* Accept(int limit_ms = 5000) {
    if (!WaitFor([this] { return server_.hasPendingConnections(); }, milliseconds(limit_ms))) return nullptr;
    return server_.nextPendingConnection();
  }
  bool WaitForState(SourceState::Link link, const char* detail, int limit_ms) const {
    return WaitFor(
        [&] {
          return !states_.isEmpty() && states_.last() == SourceState{link, Q(detail)};
        },
        milliseconds(limit_ms));
  }

  QTcpServer server_;
  QList<double> latitudes_;
  int satellites_ = -1;
  QList<SourceState> states_;
  std::unique_ptr<Source> source_;
};

TEST_F(GpsdSourceTest, AsksForTheReportsAndHandsOutTheirPositions) {
  Start();
  QTcpSocket* client = Accept();
  ASSERT_NE(client, nullptr);
  ASSERT_TRUE(WaitFor([&] { return client->canReadLine(); }, milliseconds(2000)));
  EXPECT_TRUE(client->readLine().startsWith("?WATCH={\"enable\":true,\"json\":true};"));
  client->write("{\"class\":\"VERSION\",\"release\":\"3.22\"}\r\n");
  client->write(Tpv(51.95).left(10));
  client->flush();
  // Half a report is none.
  EXPECT_TRUE(StaysTrueWhileEventsRun(milliseconds(50), [this] { return latitudes_.isEmpty(); }));
  client->write(Tpv(51.95).mid(10));
  client->write("{\"class\":\"SKY\",\"device\":\"/dev/ttyUSB0\",\"uSat\":7}\r\n");
  ASSERT_TRUE(WaitFor([this] { return satellites_ == 7; }, milliseconds(2000)));
  EXPECT_EQ(latitudes_, QList<double>{51.95});
  EXPECT_EQ(states_, QList<SourceState>{(SourceState{SourceState::Link::kConnected, {}})});
}

TEST_F(GpsdSourceTest, SentencesAreNoBusinessOfIts) {
  Start();
  QTcpSocket* client = Accept();
  ASSERT_NE(client, nullptr);
  client->write(Nmea("GPRMC,120000.00,A,5157.00000,N,00532.00000,E,10.0,45.0,010125,,,A") + Tpv(52));
  ASSERT_TRUE(WaitFor([this] { return !latitudes_.isEmpty(); }, milliseconds(2000)));
  EXPECT_EQ(latitudes_, QList<double>{52});
}

TEST_F(GpsdSourceTest, FollowsOneReceiverAsLongAsItHasAFix) {
  Start();
  QTcpSocket* client = Accept();
  ASSERT_NE(client, nullptr);
  for (const QByteArray& report : {NoFix("/dev/a"), NoFix("/dev/b"), Tpv(1, "/dev/b"), Tpv(2, "/dev/a"),
                                   NoFix("/dev/a"), Tpv(3, "/dev/b"), NoFix("/dev/b"), Tpv(4, "/dev/a")})
    client->write(report);
  ASSERT_TRUE(WaitFor([this] { return latitudes_.size() == 3; }, milliseconds(2000)));
  EXPECT_EQ(latitudes_, (QList<double>{1, 3, 4}));
  client->write("{\"class\":\"DEVICE\",\"path\":\"/dev/b\",\"activated\":0}\r\n");
  client->write(Tpv(5, "/dev/a"));
  ASSERT_TRUE(WaitFor([this] { return latitudes_.size() == 4; }, milliseconds(2000)));
  EXPECT_EQ(states_.size(), 1) << "only the other receiver has gone";
}

TEST_F(GpsdSourceTest, TellsThatGpsdHasNoReceiverUntilThereIsOne) {
  Start();
  QTcpSocket* client = Accept();
  ASSERT_NE(client, nullptr);
  client->write("{\"class\":\"DEVICES\",\"devices\":[]}\r\n");
  EXPECT_TRUE(WaitForState(SourceState::Link::kFailed, "gpsd has no receiver", 2000));
  client->write(Tpv(52));
  EXPECT_TRUE(WaitForState(SourceState::Link::kConnected, "", 2000));
  client->write("{\"class\":\"DEVICE\",\"path\":\"/dev/ttyUSB0\",\"activated\":0}\r\n");
  EXPECT_TRUE(WaitForState(SourceState::Link::kFailed, "gpsd has lost its receiver", 2000));
}

TEST_F(GpsdSourceTest, ComesBackAfterEachLoss) {
  Start();
  for (int round = 0; round < 3; ++round) {
    QTcpSocket* client = Accept();
    ASSERT_NE(client, nullptr) << round;
    client->write(Tpv(52 + round));
    ASSERT_TRUE(WaitFor([&] { return latitudes_.size() == round + 1; }, milliseconds(2000)));
    delete client;
    ASSERT_TRUE(WaitForState(SourceState::Link::kFailed, "gpsd has stopped", 2000));
  }
}

TEST_F(GpsdSourceTest, HalfALineOfALostConnectionIsForgotten) {
  Start();
  QTcpSocket* client = Accept();
  ASSERT_NE(client, nullptr);
  client->write("{\"class\":\"TPV\",");
  client->flush();
  EXPECT_TRUE(StaysTrueWhileEventsRun(milliseconds(50), [this] { return latitudes_.isEmpty(); }));
  delete client;
  client = Accept();
  ASSERT_NE(client, nullptr);
  client->write(Tpv(52));
  ASSERT_TRUE(WaitFor([this] { return !latitudes_.isEmpty(); }, milliseconds(2000)));
  EXPECT_EQ(latitudes_, QList<double>{52});
}

TEST_F(GpsdSourceTest, SurvivesGarbage) {
  Start();
  QTcpSocket* client = Accept();
  ASSERT_NE(client, nullptr);
  client->write(
      "{\n{]\n{\"class\":7}\n{\"class\":\"DEVICES\"\n\n[]\n{\"class\":\"DEVICE\",\"activated\":\"x\"}\n");
  for (int i = 0; i < 20; ++i) client->write(QByteArray(100000, static_cast<char>('{' + i)));
  client->write("\n" + Tpv(52));
  ASSERT_TRUE(WaitFor([this] { return latitudes_ == QList<double>{52}; }, milliseconds(5000)));
}

TEST_F(GpsdSourceTest, AskingTwiceInVainEndsADeadConnection) {
  Start();
  QTcpSocket* dead = Accept();
  ASSERT_NE(dead, nullptr);
  EXPECT_NE(Accept(14000), nullptr);
  EXPECT_EQ(states_.size(), 3);
  EXPECT_EQ(states_[1], (SourceState{SourceState::Link::kFailed, Q("gpsd does not answer")}));
  EXPECT_EQ(dead->readAll().count("?WATCH"), 2);
}

TEST_F(GpsdSourceTest, KeepsTryingWhenNobodyListens) {
  const quint16 port = server_.serverPort();
  server_.close();
  SourceChoice choice;
  choice.host = Q("127.0.0.1");
  choice.port = port;
  source_ = MakeSource(choice, {});
  QObject::connect(source_.get(), &Source::StateChanged,
                   [this](const SourceState& state) { states_.append(state); });
  source_->Start();
  ASSERT_TRUE(WaitForState(SourceState::Link::kFailed, "Connection refused", 3000));
  ASSERT_TRUE(server_.listen(QHostAddress::LocalHost, port));
  EXPECT_NE(Accept(), nullptr);
}

TEST(GpsdSource, TellsItsName) {
  SourceChoice choice;
  EXPECT_EQ(GpsdSource(choice).Description(), Q("gpsd on localhost:2947"));
  choice.host = Q("::1");
  EXPECT_EQ(GpsdSource(choice).Description(), Q("gpsd on [::1]:2947"));
}

TEST(Backoff, GrowsToTwoSeconds) {
  Backoff backoff;
  QList<int> waits;
  for (int i = 0; i < 5; ++i) waits.append(backoff.NextMs());
  EXPECT_EQ(waits, (QList<int>{250, 500, 1000, 2000, 2000}));
  backoff.Reset();
  EXPECT_EQ(backoff.NextMs(), 250);
}

}  // namespace
}  // namespace kestrum::posdex
