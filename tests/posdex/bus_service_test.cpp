#include "bus_service.h"

#include <gtest/gtest.h>

#include <QFile>

#include "harness.h"
#include "support_process/silent_bus.h"

namespace kestrum::posdex {
namespace {

// Points this process to a session bus, and away from the user's own.
class BusServiceTest : public testing::Test {
 protected:
  BusServiceTest() {
    qputenv("XDG_RUNTIME_DIR", folder_.path().toLocal8Bit());
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    QObject::connect(&service_, &BusService::StateChanged, [this](const QString& state) { state_ = state; });
    QObject::connect(&service_, &BusService::NameTaken, [this] { ++name_taken_; });
    QObject::connect(&service_, &BusService::QuitRequested, [this] { ++quits_; });
  }
  std::string Folder() const { return folder_.path().toStdString(); }
  bool WaitForState(const char* state, int limit_ms = 5000) const {
    return WaitFor([&] { return state_ == Q(state); }, milliseconds(limit_ms));
  }

  QTemporaryDir folder_;
  QString state_;
  int name_taken_ = 0;
  int quits_ = 0;
  BusService service_;
};

TEST_F(BusServiceTest, OffersTheItemsAndTheTitle) {
  const PrivateBus bus(Folder());
  service_.SetTexts({Q("5157.0000N"), Q("00532.0000E"), Q("A"), Q("45"), Q("328.1"), Q("10")});
  service_.Start();
  ASSERT_TRUE(WaitForState("on the session bus"));
  const LinkClient client(bus.address());
  EXPECT_EQ(client.Get("Title"), Q("Posdex Version 1.19"));
  EXPECT_EQ(client.Get("lblLat1"), Q("5157.0000N"));
  EXPECT_EQ(client.Get("lblLong1"), Q("00532.0000E"));
  EXPECT_EQ(client.Get("lblVal1"), Q("A"));
  EXPECT_EQ(client.Get("lblCompas1"), Q("45"));
  EXPECT_EQ(client.Get("lblHeight1"), Q("328.1"));
  EXPECT_EQ(client.Get("lblSpeed1"), Q("10"));
}

TEST_F(BusServiceTest, AnnouncesOnlyWhatHasChanged) {
  const PrivateBus bus(Folder());
  service_.Start();
  ASSERT_TRUE(WaitForState("on the session bus"));
  const LinkClient client(bus.address());
  GpsTexts texts;
  texts.validity = Q("A");
  texts.speed = Q("10");
  service_.SetTexts(texts);
  service_.SetTexts(texts);
  texts.speed = Q("11");
  service_.SetTexts(texts);
  ASSERT_TRUE(WaitFor([&] { return client.changes.size() == 2; }, milliseconds(3000)));
  EXPECT_TRUE(StaysTrueWhileEventsRun(milliseconds(100), [&] { return client.changes.size() == 2; }));
  EXPECT_EQ(client.changes[0], (QVariantMap{{Q("lblVal1"), Q("A")}, {Q("lblSpeed1"), Q("10")}}));
  EXPECT_EQ(client.changes[1], (QVariantMap{{Q("lblSpeed1"), Q("11")}}));
  EXPECT_EQ(client.interface_of_last_change, Q("org.kestrum.Posdex"));
  EXPECT_TRUE(client.invalidated_of_last_change.isEmpty());
}

TEST_F(BusServiceTest, GivesASignOfLifeEveryTwoSeconds) {
  const PrivateBus bus(Folder());
  service_.Start();
  ASSERT_TRUE(WaitForState("on the session bus"));
  const LinkClient client(bus.address());
  ASSERT_TRUE(WaitFor([&] { return client.heartbeats == 2; }, milliseconds(8000)));
  EXPECT_TRUE(client.changes.isEmpty());
}

TEST_F(BusServiceTest, TextsAreASignOfLifeThemselves) {
  const PrivateBus bus(Folder());
  service_.Start();
  ASSERT_TRUE(WaitForState("on the session bus"));
  const LinkClient client(bus.address());
  GpsTexts texts;
  for (int second = 0; second < 5; ++second) {
    texts.speed = QString::number(second);
    service_.SetTexts(texts);
    EXPECT_TRUE(StaysTrueWhileEventsRun(milliseconds(700), [&] { return client.heartbeats == 0; }));
  }
  EXPECT_EQ(client.changes.size(), 5);
}

TEST_F(BusServiceTest, ABusThatLetsInAndThenIsSilentHoldsNothingUp) {
  {
    const process::SilentBus silent(folder_.filePath(Q("bus")).toStdString());
    service_.Start();
    ASSERT_TRUE(WaitFor([&] { return silent.let_in() == 1; }, milliseconds(5000)));
    EXPECT_TRUE(
        StaysTrueWhileEventsRun(milliseconds(100), [this] { return state_ != Q("on the session bus"); }));
  }
  QFile::remove(folder_.filePath(Q("bus")));
  const PrivateBus bus(Folder());
  EXPECT_TRUE(WaitForState("on the session bus", 8000));
}

TEST_F(BusServiceTest, PassesTheCloseMessageOn) {
  const PrivateBus bus(Folder());
  service_.Start();
  ASSERT_TRUE(WaitForState("on the session bus"));
  const LinkClient client(bus.address());
  client.Quit();
  EXPECT_TRUE(WaitFor([this] { return quits_ == 1; }, milliseconds(2000)));
}

TEST_F(BusServiceTest, ASecondReaderLearnsThatItIsOne) {
  const PrivateBus bus(Folder());
  service_.Start();
  ASSERT_TRUE(WaitForState("on the session bus"));
  BusService second;
  int second_taken = 0;
  QObject::connect(&second, &BusService::NameTaken, [&] { ++second_taken; });
  second.Start();
  EXPECT_TRUE(WaitFor([&] { return second_taken == 1; }, milliseconds(3000)));
  EXPECT_EQ(name_taken_, 0);
}

TEST_F(BusServiceTest, WaitsForABusThatIsMissing) {
  service_.Start();
  ASSERT_TRUE(WaitForState("no session bus, retrying"));
  const PrivateBus bus(Folder());
  ASSERT_TRUE(WaitForState("on the session bus"));
  EXPECT_EQ(LinkClient(bus.address()).Get("lblVal1"), Q("V"));
}

TEST_F(BusServiceTest, OutlivesItsBus) {
  {
    const PrivateBus bus(Folder());
    service_.Start();
    ASSERT_TRUE(WaitForState("on the session bus"));
  }
  ASSERT_TRUE(WaitFor([this] { return state_ != Q("on the session bus"); }, milliseconds(5000)));
  GpsTexts texts;
  texts.validity = Q("A");
  service_.SetTexts(texts);
  QFile::remove(folder_.filePath(Q("bus")));
  const PrivateBus bus(Folder());
  ASSERT_TRUE(WaitForState("on the session bus", 8000));
  EXPECT_EQ(LinkClient(bus.address()).Get("lblVal1"), Q("A"));
}

TEST_F(BusServiceTest, AnAddressThatLeadsNowhereIsNoBus) {
  qputenv("DBUS_SESSION_BUS_ADDRESS", "nonsense");
  service_.Start();
  EXPECT_TRUE(WaitForState("no session bus, retrying"));
  qunsetenv("DBUS_SESSION_BUS_ADDRESS");
}

}  // namespace
}  // namespace kestrum::posdex
