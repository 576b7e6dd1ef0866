#include "common/linux/session_bus.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <QCoreApplication>
#include <memory>
#include <vector>

#include "support_process/daemons.h"
#include "support_process/files.h"
#include "support_process/qt_waits.h"
#include "support_process/silent_bus.h"

namespace kestrum {
namespace {

using process::PrivateBus;
using process::Scratch;

TEST(SessionBusAddress, IsFoundTheSameWayByAll) {
  const Scratch folder;
  process::WriteFile(folder.path() / "bus", "");
  const std::string here = folder.path().string();
  struct Row {
    const char* address;
    std::string runtime;
    std::string expected;
  };
  const std::vector<Row> rows{
      {"unix:path=/a/bus", here, "unix:path=/a/bus"},
      {"unix:path=/a/bus,guid=0123", here, "unix:path=/a/bus"},
      {"unix:guid=0123,path=/a/bus", "", "unix:path=/a/bus"},
      {"unix:abstract=/tmp/dbus-x,guid=0123", "", "unix:abstract=/tmp/dbus-x"},
      {"tcp:host=a,port=1;unix:path=/b", "", "unix:path=/b"},
      {"unix:path=/a;unix:path=/b", "", "unix:path=/a;unix:path=/b"},
      {"tcp:host=a,port=1", here, ""},
      {"autolaunch:", here, ""},
      {"unixexec:path=/bin/false", here, ""},
      {"nonsense", here, ""},
      {"", here, "unix:path=" + here + "/bus"},
      {"", here + "/nowhere", ""},
  };
  for (const Row& row : rows) {
    qputenv("DBUS_SESSION_BUS_ADDRESS", row.address);
    qputenv("XDG_RUNTIME_DIR", row.runtime.c_str());
    EXPECT_EQ(SessionBus::Address().toStdString(), row.expected) << row.address << " " << row.runtime;
  }
  qunsetenv("DBUS_SESSION_BUS_ADDRESS");
  qunsetenv("XDG_RUNTIME_DIR");
  const std::string usual = "/run/user/" + std::to_string(::getuid()) + "/bus";
  EXPECT_EQ(SessionBus::Address().toStdString(),
            std::filesystem::exists(usual) ? "unix:path=" + usual : std::string());
}

class SessionBusTest : public testing::Test {
 protected:
  SessionBusTest() {
    qputenv("DBUS_SESSION_BUS_ADDRESS", ("unix:path=" + Socket()).c_str());
    QObject::connect(&bus_, &SessionBus::StateChanged,
                     [this](SessionBus::State state) { states_.push_back(state); });
  }
  std::string Socket() const { return folder_.File("bus"); }
  // Its address as it prints it, with its identity.
  std::string StartDaemon() {
    daemon_ = std::make_unique<PrivateBus>(folder_.path().string());
    return daemon_->address();
  }
  bool WaitForState(SessionBus::State state) {
    return process::WaitFor([&] { return bus_.state() == state; });
  }

  Scratch folder_;
  std::unique_ptr<PrivateBus> daemon_;
  std::vector<SessionBus::State> states_;
  SessionBus bus_;
};

using State = SessionBus::State;

TEST_F(SessionBusTest, GoesFromNoneToReadyAndBack) {
  bus_.Start();
  EXPECT_EQ(states_, std::vector<State>{State::kNoBus});
  EXPECT_EQ(bus_.line(), nullptr);
  StartDaemon();
  ASSERT_TRUE(WaitForState(State::kReady));
  EXPECT_NE(bus_.line(), nullptr);
  daemon_.reset();
  ASSERT_TRUE(WaitForState(State::kNoBus));
  EXPECT_EQ(bus_.line(), nullptr);
  EXPECT_EQ(states_, (std::vector<State>{State::kNoBus, State::kConnecting, State::kReady, State::kNoBus}));
}

TEST_F(SessionBusTest, ABusThatReturnsWithAnotherIdentityIsFound) {
  const std::string first = StartDaemon();
  qputenv("DBUS_SESSION_BUS_ADDRESS", first.c_str());
  bus_.Start();
  ASSERT_TRUE(WaitForState(State::kReady));
  const std::string second = StartDaemon();
  ASSERT_NE(first, second);
  ASSERT_TRUE(WaitForState(State::kNoBus));
  EXPECT_TRUE(WaitForState(State::kReady));
}

TEST_F(SessionBusTest, ABusThatLetsInAndThenIsSilentHoldsNothingUp) {
  auto silent = std::make_unique<process::SilentBus>(Socket());
  bus_.Start();
  int ticks = 0;
  QTimer ticking;
  QObject::connect(&ticking, &QTimer::timeout, [&] { ++ticks; });
  ticking.start(10);
  ASSERT_TRUE(process::WaitFor([&] { return silent->let_in() == 1 && ticks > 20; }));
  EXPECT_FALSE(bus_.WaitFor([] { return false; }, std::chrono::milliseconds(20)));
  EXPECT_EQ(bus_.state(), State::kConnecting);
  silent.reset();
  StartDaemon();
  EXPECT_TRUE(WaitForState(State::kReady));
}

TEST_F(SessionBusTest, ABusThatHangsIsCalledOnce) {
  StartDaemon();
  daemon_->StandStill();
  bus_.Start();
  EXPECT_FALSE(bus_.WaitFor([this] { return bus_.state() == State::kReady; }, std::chrono::milliseconds(50)));
  EXPECT_EQ(states_, std::vector<State>{State::kConnecting});
  daemon_->GoOn();
  EXPECT_TRUE(bus_.WaitFor([this] { return bus_.state() == State::kReady; }, std::chrono::seconds(10)));
}

TEST_F(SessionBusTest, HangingUpIsFollowedByANewCall) {
  StartDaemon();
  bus_.Start();
  ASSERT_TRUE(WaitForState(State::kReady));
  bus_.HangUp();
  EXPECT_EQ(bus_.state(), State::kNoBus);
  EXPECT_TRUE(WaitForState(State::kReady));
}

}  // namespace
}  // namespace kestrum

int main(int argc, char** argv) {
  const QCoreApplication app(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
