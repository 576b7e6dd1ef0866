#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <csignal>
#include <map>
#include <memory>
#include <thread>

#include "desktop/fake_reader.h"
#include "desktop/platform_factory.h"
#include "support_process/silent_bus.h"

namespace kestrum::test {
namespace {

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
    const QString socket = dir_.filePath(QStringLiteral("bus"));
    QFile::remove(socket);
    address_ = QStringLiteral("unix:path=") + socket;
    bus_.setStandardErrorFile(QProcess::nullDevice());
    bus_.start(QStringLiteral("dbus-daemon"),
               {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address"),
                QStringLiteral("--address=") + address_});
    // It prints the address once it listens.
    ASSERT_TRUE(bus_.waitForReadyRead(5000));
    qputenv("DBUS_SESSION_BUS_ADDRESS", address_.toLocal8Bit());
  }
  void StopBus() {
    if (bus_.state() == QProcess::NotRunning) return;
    ::kill(static_cast<pid_t>(bus_.processId()), SIGCONT);
    bus_.kill();
    bus_.waitForFinished();
  }
  void StartReader() {
    reader_ = std::make_unique<FakeReader>(address_, QStringLiteral("reader%1").arg(++readers_));
  }
  std::unique_ptr<LinksAndWindows> MakeBoundLinks() {
    auto links = MakeLinks();
    links->enter = [](const std::function<void()>& arrived) { arrived(); };
    return links;
  }
  void Link(LinksAndWindows& links, const std::string& item) {
    links.LinkAutomatic(kTopic, item, [this, item](const std::string& text) { texts_[item] = text; });
  }

  QTemporaryDir dir_;
  QString address_;
  QProcess bus_;
  std::unique_ptr<FakeReader> reader_;
  int readers_ = 0;
  std::map<std::string, std::string> texts_;
};

TEST_F(LinksTest, DeliverThePresentTextAndEveryChangeAsEvents) {
  StartReader();
  const auto links = MakeBoundLinks();
  Link(*links, "lblLat1");
  EXPECT_TRUE(texts_.empty()) << "nothing arrives from inside the call";
  ASSERT_TRUE(QTest::qWaitFor([&] { return texts_["lblLat1"] == "5157.0000N"; }, 5000));
  reader_->Change(QStringLiteral("lblLat1"), QStringLiteral("5158.0000N"));
  ASSERT_TRUE(QTest::qWaitFor([&] { return texts_["lblLat1"] == "5158.0000N"; }, 5000));
  EXPECT_EQ(texts_.size(), 1U) << "only linked items";
  links->Unlink(kTopic, "lblLat1");
  Link(*links, "lblVal1");
  reader_->Change(QStringLiteral("lblLat1"), QStringLiteral("5159.0000N"));
  reader_->Change(QStringLiteral("lblVal1"), QStringLiteral("V"));
  ASSERT_TRUE(QTest::qWaitFor([&] { return texts_["lblVal1"] == "V"; }, 5000));
  EXPECT_EQ(texts_["lblLat1"], "5158.0000N");
}

TEST_F(LinksTest, AReaderThatDiesAndComesBackIsPickedUpAgain) {
  StartReader();
  const auto links = MakeBoundLinks();
  Link(*links, "lblVal1");
  ASSERT_TRUE(QTest::qWaitFor([&] { return texts_["lblVal1"] == "A"; }, 5000));
  reader_.reset();
  QTest::qWait(100);
  EXPECT_EQ(texts_["lblVal1"], "A") << "the last text stands";
  EXPECT_FALSE(links->Exists(kTitle));
  StartReader();
  reader_->Change(QStringLiteral("lblVal1"), QStringLiteral("V"));
  ASSERT_TRUE(QTest::qWaitFor([&] { return texts_["lblVal1"] == "V"; }, 5000));
  ASSERT_TRUE(QTest::qWaitFor([&] { return links->Exists(kTitle); }, 5000));
}

TEST_F(LinksTest, AReaderThatStartsLaterIsFound) {
  const auto links = MakeBoundLinks();
  EXPECT_FALSE(links->Exists(kTitle));
  Link(*links, "lblVal1");
  StartReader();
  ASSERT_TRUE(QTest::qWaitFor([&] { return texts_["lblVal1"] == "A"; }, 5000));
}

TEST_F(LinksTest, TheReaderIsRecognisedByItsExactTitle) {
  StartReader();
  const auto links = MakeBoundLinks();
  Link(*links, "lblVal1");
  ASSERT_TRUE(QTest::qWaitFor([&] { return texts_["lblVal1"] == "A"; }, 5000));
  EXPECT_FALSE(links->Exists("Posdex Version 1.18"));
  EXPECT_TRUE(links->Exists(kTitle));
}

TEST_F(LinksTest, CloseSendsQuitWithoutWaiting) {
  StartReader();
  auto links = MakeBoundLinks();
  Link(*links, "lblVal1");
  ASSERT_TRUE(QTest::qWaitFor([&] { return texts_["lblVal1"] == "A"; }, 5000));
  links->Close("Posdex Version 1.18");
  links->Close(kTitle);
  links.reset();
  ASSERT_TRUE(QTest::qWaitFor([&] { return reader_->quits == 1; }, 5000));
}

TEST_F(LinksTest, WithoutABusNothingHappensUntilThereIsOne) {
  StopBus();
  const auto links = MakeBoundLinks();
  QElapsedTimer wall;
  wall.start();
  EXPECT_FALSE(links->Exists(kTitle));
  Link(*links, "lblVal1");
  links->Close(kTitle);
  EXPECT_LT(wall.elapsed(), 200);
  StartBus();
  StartReader();
  ASSERT_TRUE(QTest::qWaitFor([&] { return texts_["lblVal1"] == "A"; }, 8000));
}

TEST_F(LinksTest, ABusThatGoesAwayAndReturnsIsConnectedAgain) {
  StartReader();
  const auto links = MakeBoundLinks();
  Link(*links, "lblVal1");
  ASSERT_TRUE(QTest::qWaitFor([&] { return texts_["lblVal1"] == "A"; }, 5000));
  StopBus();
  reader_.reset();
  QTest::qWait(50);
  StartBus();
  StartReader();
  reader_->validity = QStringLiteral("V");
  ASSERT_TRUE(QTest::qWaitFor([&] { return texts_["lblVal1"] == "V"; }, 8000));
}

TEST_F(LinksTest, ABusThatHangsDoesNotHoldTheWindow) {
  ::kill(static_cast<pid_t>(bus_.processId()), SIGSTOP);
  const auto links = MakeBoundLinks();
  QElapsedTimer wall;
  wall.start();
  EXPECT_FALSE(links->Exists("Posdex Version 1.18"));
  EXPECT_FALSE(links->Exists(kTitle));
  Link(*links, "lblVal1");
  EXPECT_LT(wall.elapsed(), 400);
  qint64 longest = 0;
  for (int i = 0; i < 20; ++i) {
    wall.restart();
    QTest::qWait(10);
    longest = std::max(longest, wall.elapsed());
  }
  EXPECT_LT(longest, 500);
  ::kill(static_cast<pid_t>(bus_.processId()), SIGCONT);
  StartReader();
  ASSERT_TRUE(QTest::qWaitFor([&] { return texts_["lblVal1"] == "A"; }, 8000));
}

TEST_F(LinksTest, ABusThatHangsLaterDoesNotHoldTheWindow) {
  StartReader();
  auto links = MakeBoundLinks();
  Link(*links, "lblVal1");
  ASSERT_TRUE(QTest::qWaitFor([&] { return texts_["lblVal1"] == "A"; }, 5000));
  ::kill(static_cast<pid_t>(bus_.processId()), SIGSTOP);
  QElapsedTimer wall;
  wall.start();
  EXPECT_TRUE(links->Exists(kTitle));
  links->Close(kTitle);
  Link(*links, "lblLat1");
  links.reset();
  EXPECT_LT(wall.elapsed(), 500);
  ::kill(static_cast<pid_t>(bus_.processId()), SIGCONT);
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
  ASSERT_TRUE(QTest::qWaitFor([&] { return texts_["lblLat1"] == "5157.0000N"; }, 5000));
  int ticks = 0;
  QTimer measuring;
  QObject::connect(&measuring, &QTimer::timeout, [&] { ++ticks; });
  measuring.start(10);
  std::thread flood([this] {
    for (int i = 1; i <= kSignals; ++i) reader_->Announce(QStringLiteral("lblLat1"), QString::number(i));
  });
  EXPECT_TRUE(QTest::qWaitFor([&] { return texts_["lblLat1"] == std::to_string(kSignals); }, 60000));
  flood.join();
  EXPECT_LT(handed_over, kSignals / 10);
  EXPECT_GT(ticks, 10);
}

TEST_F(LinksTest, TheReaderIsSilentSinceItsLastTextOrSignOfLife) {
  using std::chrono::milliseconds;
  const auto links = MakeBoundLinks();
  Link(*links, "lblVal1");
  EXPECT_FALSE(links->SilentFor(kTopic));
  StartReader();
  ASSERT_TRUE(QTest::qWaitFor([&] { return texts_["lblVal1"] == "A"; }, 5000));
  EXPECT_FALSE(links->SilentFor("other|topic"));
  ASSERT_TRUE(QTest::qWaitFor([&] { return links->SilentFor(kTopic) > milliseconds(300); }, 5000));
  reader_->Beat();
  ASSERT_TRUE(QTest::qWaitFor([&] { return links->SilentFor(kTopic) < milliseconds(300); }, 5000));
  ASSERT_TRUE(QTest::qWaitFor([&] { return links->SilentFor(kTopic) > milliseconds(300); }, 5000));
  reader_->Change(QStringLiteral("lblVal1"), QStringLiteral("V"));
  ASSERT_TRUE(QTest::qWaitFor([&] { return links->SilentFor(kTopic) < milliseconds(300); }, 5000));
  reader_.reset();
  EXPECT_TRUE(QTest::qWaitFor([&] { return !links->SilentFor(kTopic); }, 5000));
}

TEST_F(LinksTest, AStartedReaderThatHasNoNameYetCanBeClosed) {
  QProcess reader;
  reader.start(QStringLiteral("sleep"), {QStringLiteral("1000")});
  ASSERT_TRUE(reader.waitForStarted());
  const auto links = MakeBoundLinks();
  EXPECT_FALSE(links->Exists(kTitle));
  links->Started("Orvandi.exe", reader.processId());
  EXPECT_FALSE(links->Exists(kTitle)) << "that is no reader";
  links->Started("\\Posdex.exe", reader.processId());
  EXPECT_FALSE(links->Exists("Posdex Version 1.18"));
  EXPECT_TRUE(links->Exists(kTitle));
  links->Close(kTitle);
  ASSERT_TRUE(reader.waitForFinished(5000));
  EXPECT_FALSE(links->Exists(kTitle));
}

TEST_F(LinksTest, ABusThatLetsInAndThenIsSilentDoesNotHoldTheWindow) {
  StopBus();
  auto silent = std::make_unique<process::SilentBus>(dir_.filePath(QStringLiteral("bus")).toStdString());
  const auto links = MakeBoundLinks();
  EXPECT_FALSE(links->Exists(kTitle));
  Link(*links, "lblVal1");
  int ticks = 0;
  QTimer measuring;
  QObject::connect(&measuring, &QTimer::timeout, [&] { ++ticks; });
  measuring.start(10);
  EXPECT_TRUE(QTest::qWaitFor([&] { return ticks > 20; }, 5000));
  silent.reset();
  StartBus();
  StartReader();
  EXPECT_TRUE(QTest::qWaitFor([&] { return texts_["lblVal1"] == "A"; }, 8000));
}
}  // namespace
}  // namespace kestrum::test
