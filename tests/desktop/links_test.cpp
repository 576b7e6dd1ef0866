#include <gtest/gtest.h>

#include <QDeadlineTimer>
#include <QTimer>
#include <map>
#include <memory>
#include <thread>

#include "desktop/fake_reader.h"
#include "desktop/platform_factory.h"
#include "support_process/child.h"
#include "support_process/daemons.h"
#include "support_process/files.h"
#include "support_process/qt_waits.h"
#include "support_process/silent_bus.h"

namespace kestrum::test {
namespace {

using std::chrono::milliseconds;

// Whoever waits for the answer of a bus that stands still waits longer.
constexpr std::chrono::seconds kACallWaits{15};
constexpr const char* kTopic = "Posdex|form1";
constexpr const char* kTitle = "Posdex Version 1.19";

class LinksTest : public ::testing::Test {
 protected:
  void SetUp() override { StartBus(); }
  void TearDown() override {
    reader_.reset();
    StopBus();
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
  }
  void StartBus() {
    bus_ = std::make_unique<process::PrivateBus>(folder_.path().string());
    qputenv("DBUS_SESSION_BUS_ADDRESS", ("unix:path=" + folder_.File("bus")).c_str());
  }
  void StopBus() { bus_.reset(); }
  void StartReader() {
    reader_ = std::make_unique<FakeReader>(QString::fromStdString(bus_->address()),
                                           QStringLiteral("reader%1").arg(++readers_));
  }
  std::unique_ptr<LinksAndWindows> MakeBoundLinks() {
    auto links = MakeLinks();
    links->enter = [](const std::function<void()>& arrived) { arrived(); };
    return links;
  }
  void Link(LinksAndWindows& links, const std::string& item) {
    links.LinkAutomatic(kTopic, item, [this, item](const std::string& text) { texts_[item] = text; });
  }

  process::Scratch folder_;
  std::unique_ptr<process::PrivateBus> bus_;
  std::unique_ptr<FakeReader> reader_;
  int readers_ = 0;
  std::map<std::string, std::string> texts_;
};

TEST_F(LinksTest, DeliverThePresentTextAndEveryChangeAsEvents) {
  StartReader();
  const auto links = MakeBoundLinks();
  Link(*links, "lblLat1");
  EXPECT_TRUE(texts_.empty()) << "nothing arrives from inside the call";
  ASSERT_TRUE(process::WaitFor([&] { return texts_["lblLat1"] == "5157.0000N"; }));
  reader_->Change(QStringLiteral("lblLat1"), QStringLiteral("5158.0000N"));
  ASSERT_TRUE(process::WaitFor([&] { return texts_["lblLat1"] == "5158.0000N"; }));
  EXPECT_EQ(texts_.size(), 1U) << "only linked items";
  links->Unlink(kTopic, "lblLat1");
  Link(*links, "lblVal1");
  reader_->Change(QStringLiteral("lblLat1"), QStringLiteral("5159.0000N"));
  reader_->Change(QStringLiteral("lblVal1"), QStringLiteral("V"));
  ASSERT_TRUE(process::WaitFor([&] { return texts_["lblVal1"] == "V"; }));
  EXPECT_EQ(texts_["lblLat1"], "5158.0000N");
}

TEST_F(LinksTest, AReaderThatDiesAndComesBackIsPickedUpAgain) {
  StartReader();
  const auto links = MakeBoundLinks();
  Link(*links, "lblVal1");
  ASSERT_TRUE(process::WaitFor([&] { return texts_["lblVal1"] == "A"; }));
  reader_.reset();
  EXPECT_TRUE(process::StaysTrueWhileEventsRun(milliseconds(100), [&] { return texts_["lblVal1"] == "A"; }))
      << "the last text stands";
  EXPECT_FALSE(links->Exists(kTitle));
  StartReader();
  reader_->Change(QStringLiteral("lblVal1"), QStringLiteral("V"));
  ASSERT_TRUE(process::WaitFor([&] { return texts_["lblVal1"] == "V"; }));
  ASSERT_TRUE(process::WaitFor([&] { return links->Exists(kTitle); }));
}

TEST_F(LinksTest, AReaderThatStartsLaterIsFound) {
  const auto links = MakeBoundLinks();
  EXPECT_FALSE(links->Exists(kTitle));
  Link(*links, "lblVal1");
  StartReader();
  ASSERT_TRUE(process::WaitFor([&] { return texts_["lblVal1"] == "A"; }));
}

TEST_F(LinksTest, TheReaderIsRecognisedByItsExactTitle) {
  StartReader();
  const auto links = MakeBoundLinks();
  Link(*links, "lblVal1");
  ASSERT_TRUE(process::WaitFor([&] { return texts_["lblVal1"] == "A"; }));
  EXPECT_FALSE(links->Exists("Posdex Version 1.18"));
  EXPECT_TRUE(links->Exists(kTitle));
}

TEST_F(LinksTest, CloseSendsQuitWithoutWaiting) {
  StartReader();
  auto links = MakeBoundLinks();
  Link(*links, "lblVal1");
  ASSERT_TRUE(process::WaitFor([&] { return texts_["lblVal1"] == "A"; }));
  links->Close("Posdex Version 1.18");
  links->Close(kTitle);
  links.reset();
  ASSERT_TRUE(process::WaitFor([&] { return reader_->quits == 1; }));
}

TEST_F(LinksTest, WithoutABusNothingHappensUntilThereIsOne) {
  StopBus();
  const auto links = MakeBoundLinks();
  EXPECT_FALSE(links->Exists(kTitle));
  Link(*links, "lblVal1");
  links->Close(kTitle);
  StartBus();
  StartReader();
  ASSERT_TRUE(process::WaitFor([&] { return texts_["lblVal1"] == "A"; }));
}

TEST_F(LinksTest, ABusThatGoesAwayAndReturnsIsConnectedAgain) {
  StartReader();
  const auto links = MakeBoundLinks();
  Link(*links, "lblVal1");
  ASSERT_TRUE(process::WaitFor([&] { return texts_["lblVal1"] == "A"; }));
  StopBus();
  reader_.reset();
  EXPECT_TRUE(process::StaysTrueWhileEventsRun(milliseconds(50), [&] { return texts_["lblVal1"] == "A"; }));
  StartBus();
  StartReader();
  reader_->validity = QStringLiteral("V");
  ASSERT_TRUE(process::WaitFor([&] { return texts_["lblVal1"] == "V"; }));
}

TEST_F(LinksTest, ABusThatHangsDoesNotHoldTheWindow) {
  bus_->StandStill();
  const auto links = MakeBoundLinks();
  const QDeadlineTimer waited(kACallWaits);
  EXPECT_FALSE(links->Exists("Posdex Version 1.18"));
  EXPECT_FALSE(links->Exists(kTitle));
  Link(*links, "lblVal1");
  int ticks = 0;
  QTimer measuring;
  QObject::connect(&measuring, &QTimer::timeout, [&] { ++ticks; });
  measuring.start(10);
  EXPECT_TRUE(process::WaitFor([&] { return ticks > 20; }));
  EXPECT_FALSE(waited.hasExpired());
  bus_->GoOn();
  StartReader();
  ASSERT_TRUE(process::WaitFor([&] { return texts_["lblVal1"] == "A"; }));
}

TEST_F(LinksTest, ABusThatHangsLaterDoesNotHoldTheWindow) {
  StartReader();
  auto links = MakeBoundLinks();
  Link(*links, "lblVal1");
  ASSERT_TRUE(process::WaitFor([&] { return texts_["lblVal1"] == "A"; }));
  bus_->StandStill();
  const QDeadlineTimer waited(kACallWaits);
  EXPECT_TRUE(links->Exists(kTitle));
  links->Close(kTitle);
  Link(*links, "lblLat1");
  links.reset();
  EXPECT_FALSE(waited.hasExpired());
  bus_->GoOn();
}

TEST_F(LinksTest, AFloodOfTextsIsHandedOverAsTheNewestOnes) {
  constexpr int kSignals = 20000;
  StartReader();
  const auto links = MakeBoundLinks();
  int handed_over = 0;
  links->LinkAutomatic(kTopic, "lblLat1", [&](const std::string& text) {
    ++handed_over;
    texts_["lblLat1"] = text;
  });
  ASSERT_TRUE(process::WaitFor([&] { return texts_["lblLat1"] == "5157.0000N"; }));
  int ticks = 0;
  QTimer measuring;
  // A window that has something else to do meanwhile.
  QObject::connect(&measuring, &QTimer::timeout, [&] {
    ++ticks;
    process::LetRunFor(milliseconds(10));
  });
  measuring.start(10);
  std::thread flood([this] {
    for (int i = 1; i <= kSignals; ++i) reader_->Announce(QStringLiteral("lblLat1"), QString::number(i));
  });
  EXPECT_TRUE(process::WaitFor([&] { return texts_["lblLat1"] == std::to_string(kSignals); },
                               std::chrono::milliseconds(60000)));
  flood.join();
  EXPECT_LT(handed_over, kSignals / 10);
  EXPECT_GT(ticks, 10);
}

TEST_F(LinksTest, TheReaderIsSilentSinceItsLastTextOrSignOfLife) {
  const auto links = MakeBoundLinks();
  Link(*links, "lblVal1");
  EXPECT_FALSE(links->SilentFor(kTopic));
  StartReader();
  ASSERT_TRUE(process::WaitFor([&] { return texts_["lblVal1"] == "A"; }));
  EXPECT_FALSE(links->SilentFor("other|topic"));
  ASSERT_TRUE(process::WaitFor([&] { return links->SilentFor(kTopic) > milliseconds(300); }));
  reader_->Beat();
  ASSERT_TRUE(process::WaitFor([&] { return links->SilentFor(kTopic) < milliseconds(300); }));
  ASSERT_TRUE(process::WaitFor([&] { return links->SilentFor(kTopic) > milliseconds(300); }));
  reader_->Change(QStringLiteral("lblVal1"), QStringLiteral("V"));
  ASSERT_TRUE(process::WaitFor([&] { return links->SilentFor(kTopic) < milliseconds(300); }));
  reader_.reset();
  EXPECT_TRUE(process::WaitFor([&] { return !links->SilentFor(kTopic); }));
}

TEST_F(LinksTest, AStartedReaderThatHasNoNameYetCanBeClosed) {
  process::Child reader({{"sleep", "1000"}, {}, {}});
  const auto links = MakeBoundLinks();
  EXPECT_FALSE(links->Exists(kTitle));
  links->Started("Orvandi.exe", reader.pid());
  EXPECT_FALSE(links->Exists(kTitle)) << "that is no reader";
  links->Started("\\Posdex.exe", reader.pid());
  EXPECT_FALSE(links->Exists("Posdex Version 1.18"));
  EXPECT_TRUE(links->Exists(kTitle));
  links->Close(kTitle);
  ASSERT_TRUE(process::WaitFor([&] { return !reader.Running(); }));
  EXPECT_FALSE(links->Exists(kTitle));
}

TEST_F(LinksTest, ABusThatLetsInAndThenIsSilentDoesNotHoldTheWindow) {
  StopBus();
  auto silent = std::make_unique<process::SilentBus>(folder_.File("bus"));
  const auto links = MakeBoundLinks();
  EXPECT_FALSE(links->Exists(kTitle));
  Link(*links, "lblVal1");
  int ticks = 0;
  QTimer measuring;
  QObject::connect(&measuring, &QTimer::timeout, [&] { ++ticks; });
  measuring.start(10);
  EXPECT_TRUE(process::WaitFor([&] { return ticks > 20; }));
  silent.reset();
  StartBus();
  StartReader();
  EXPECT_TRUE(process::WaitFor([&] { return texts_["lblVal1"] == "A"; }));
}
}  // namespace
}  // namespace kestrum::test
