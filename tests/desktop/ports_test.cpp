#include <QDir>
#include <QElapsedTimer>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "desktop/desktop.h"
#include "desktop/desktop_fixture.h"
#include "desktop/user_input.h"
#include "support_process/qt_waits.h"

namespace kestrum::test {
namespace {

// Runs `script` on the box that opens next.
template <class Box>
void OnNextBox(std::function<void(Box&)> script) {
  auto* poll = new QTimer(qApp);
  QObject::connect(poll, &QTimer::timeout, poll, [poll, script = std::move(script)] {
    auto* box = qobject_cast<Box*>(QApplication::activeModalWidget());
    if (box == nullptr) return;
    poll->deleteLater();
    poll->stop();
    script(*box);
  });
  poll->start(5);
}

class DialogsTest : public ::testing::Test {
 protected:
  ScriptedProgram program;
  int syncs = 0;
  QtDialogs dialogs{program, [this] { ++syncs; }};
};

TEST_F(DialogsTest, AMessageShowsTitleTextAndIconAsPlainText) {
  QString title;
  QString text;
  QMessageBox::Icon icon = QMessageBox::NoIcon;
  Qt::TextFormat format = Qt::RichText;
  OnNextBox<QMessageBox>([&](QMessageBox& box) {
    title = box.windowTitle();
    text = box.text();
    icon = box.icon();
    format = box.textFormat();
    box.accept();
  });
  dialogs.Show("Kestrum Auto field strenght logger V1.02", "Error saving data \r\n<b>32\xB0</b>",
               Icon::kCritical);
  EXPECT_EQ(title, QStringLiteral("Kestrum Auto field strenght logger V1.02"));
  EXPECT_EQ(text, QStringLiteral(u"Error saving data \n<b>32\u00B0</b>"));
  EXPECT_EQ(icon, QMessageBox::Critical);
  EXPECT_EQ(format, Qt::PlainText);
  EXPECT_EQ(syncs, 1) << "the windows behind the box are up to date";
}

TEST_F(DialogsTest, NoIsTheDefaultOfAQuestionAndTheAnswerOfAClosedBox) {
  bool no_is_default = false;
  OnNextBox<QMessageBox>([&](QMessageBox& box) {
    no_is_default = box.defaultButton() == box.button(QMessageBox::No);
    QTest::keyClick(&box, Qt::Key_Escape);
  });
  EXPECT_FALSE(dialogs.AskYesNo("t", "Switch FT817 Off (Y/N) ", Icon::kQuestion));
  EXPECT_TRUE(no_is_default);
  OnNextBox<QMessageBox>([](QMessageBox& box) { box.button(QMessageBox::Yes)->click(); });
  EXPECT_TRUE(dialogs.AskYesNo("t", "q", Icon::kQuestion));
  OnNextBox<QMessageBox>([](QMessageBox& box) { box.button(QMessageBox::No)->click(); });
  EXPECT_FALSE(dialogs.AskYesNo("t", "q", Icon::kQuestion));
}

TEST_F(DialogsTest, AnInputProposesSelectedTextAndGivesWhatIsTyped) {
  QString selected;
  OnNextBox<QInputDialog>([&](QInputDialog& box) {
    auto* edit = box.findChild<QLineEdit*>();
    selected = edit->selectedText();
    QTest::keyClicks(edit, QStringLiteral("5158.00N"));
    box.accept();
  });
  EXPECT_EQ(dialogs.AskText("t", "TX Latitude Format must be like 0000.00N", "5157.00N"), "5158.00N");
  EXPECT_EQ(selected, QStringLiteral("5157.00N"));
  OnNextBox<QInputDialog>([](QInputDialog& box) { box.reject(); });
  EXPECT_EQ(dialogs.AskText("t", "p", "5157.00N"), "");
}

TEST_F(DialogsTest, DismissCancelsTheOpenBoxAndAllLaterOnes) {
  OnNextBox<QInputDialog>([this](QInputDialog& /*box*/) { dialogs.Dismiss(); });
  EXPECT_EQ(dialogs.AskText("t", "p", "proposal"), "");
  EXPECT_FALSE(dialogs.AskYesNo("t", "q", Icon::kQuestion));
  dialogs.Show("t", "m", Icon::kInformation);
}

TEST_F(DialogsTest, AfterTheEndEveryCallReturnsAtOnce) {
  program.End();
  dialogs.Show("t", "m", Icon::kInformation);
  EXPECT_FALSE(dialogs.AskYesNo("t", "q", Icon::kQuestion));
  EXPECT_EQ(dialogs.AskText("t", "p", "proposal"), "");
}

TEST(ProgramTest, TheEndClosesAnOpenBoxAsCancelled) {
  QtProgram program;
  QtDialogs dialogs(program, [] {});
  bool answer = true;
  // Inside a running loop, as in the real program.
  QTimer::singleShot(0, qApp, [&] {
    OnNextBox<QMessageBox>([&program](QMessageBox& /*box*/) { program.End(); });
    answer = dialogs.AskYesNo("t", "q", Icon::kQuestion);
  });
  QApplication::exec();
  EXPECT_FALSE(answer);
  EXPECT_TRUE(program.Ended());
}

TEST(ProgramTest, NamesLieInTheFolderOfTheExecutable) {
  QtProgram program;
  EXPECT_EQ(program.Folder(), QCoreApplication::applicationDirPath().toStdString());
  EXPECT_EQ(program.ExeName(), "desktop_tests");
  EXPECT_EQ(program.PathOf("\\Kestrum.cfg"), program.Folder() + "/Kestrum.cfg");
  EXPECT_EQ(program.CompanionPath("\\Posdex.exe"), program.Folder() + "/Posdex");
  EXPECT_FALSE(program.StartCompanion("\\NoSuchProgram.exe", ShowStyle::kNormalWithoutFocus));
}

TEST(ProgramTest, AFileNameThatIsNoWholePathLiesInTheApplicationFolder) {
  QtProgram program;
  const std::string folder = program.Folder();
  const QString elsewhere = QDir::currentPath();
  ASSERT_TRUE(QDir::setCurrent(QStringLiteral("/")));
  EXPECT_EQ(program.PathOf("drive.log"), folder + "/drive.log");
  EXPECT_EQ(program.PathOf("logs/drive.log"), folder + "/logs/drive.log");
  EXPECT_EQ(program.PathOf("./drive.log"), folder + "/./drive.log");
  EXPECT_EQ(program.PathOf("\\drive.log"), folder + "/drive.log");
  EXPECT_EQ(program.PathOf("a\\b.log"), folder + "/a\\b.log") << "elsewhere it is a letter like any other";
  EXPECT_EQ(program.PathOf("/var/log/drive.log"), "/var/log/drive.log");
  EXPECT_EQ(program.PathOf(":/drive.log"), folder + "/:/drive.log");
  EXPECT_EQ(program.PathOf(" drive.log "), folder + "/ drive.log ");
  EXPECT_EQ(program.PathOf(""), "");
  QDir::setCurrent(elsewhere);
}

TEST(ProgramTest, ALossIsToldOnStandardErrorAndByTheExitCode) {
  QtProgram program;
  EXPECT_EQ(program.ExitCode(), 0);
  testing::internal::CaptureStderr();
  program.ReportLoss("99 records are lost: \r\n/log\xB0");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "Kestrum: 99 records are lost: \n/log\u00B0\n");
  EXPECT_EQ(program.ExitCode(), 3);
}

// What the toolkit has received from the user and not handed out yet.
class InputDuringPump : public ::testing::Test {
 protected:
  void SetUp() override {
    button_.resize(100, 40);
    button_.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&button_));
    QObject::connect(&button_, &QPushButton::clicked, &button_, [this] { ++clicks_; });
  }
  ScriptedProgram program_;
  QtEventPump pump_{program_, [] {}, [] {}};
  QPushButton button_{QStringLiteral("press")};
  int clicks_ = 0;
};

TEST_F(InputDuringPump, WaitsForTheEndOfThePresentHandler) {
  bool tick = false;
  QTimer::singleShot(0, qApp, [&tick] { tick = true; });
  UserClicks(button_, QPoint(20, 20));
  pump_.Pump();
  pump_.Pump();
  EXPECT_TRUE(tick);
  EXPECT_EQ(clicks_, 0);
  // Then it comes, without any other event to wake the loop.
  ASSERT_TRUE(process::WaitFor([this] { return clicks_ == 1; }));
}

TEST_F(InputDuringPump, IsServedDuringAWait) {
  UserClicks(button_, QPoint(20, 20));
  pump_.PumpFor(std::chrono::milliseconds(100));
  EXPECT_EQ(clicks_, 1);
}

TEST(EventPumpTest, PumpRunsWhatIsWaiting) {
  ScriptedProgram program;
  int timer_looks = 0;
  QtEventPump pump(
      program, [&timer_looks] { ++timer_looks; }, [] { FAIL() << "painting waits"; });
  bool ran = false;
  QTimer::singleShot(0, qApp, [&ran] { ran = true; });
  pump.Pump();
  EXPECT_TRUE(ran);
  EXPECT_EQ(timer_looks, 1);
}

TEST(EventPumpTest, PumpForWaitsAndRunsEvents) {
  ScriptedProgram program;
  int paintings = 0;
  QtEventPump pump(
      program, [] {}, [&paintings] { ++paintings; });
  int ticks = 0;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, qApp, [&ticks] { ++ticks; });
  timer.start(20);
  QElapsedTimer wall;
  wall.start();
  pump.PumpFor(std::chrono::milliseconds(200));
  EXPECT_GE(wall.elapsed(), 180);
  EXPECT_GE(ticks, 3);
  EXPECT_EQ(paintings, 1);
}

TEST(EventPumpTest, AfterTheEndNothingIsPumped) {
  ScriptedProgram program;
  program.End();
  const auto never = [] { FAIL() << "nothing may be painted"; };
  QtEventPump pump(program, never, never);
  pump.Pump();
  pump.PumpFor(std::chrono::seconds(5));
}

TEST(SystemClockTest, SleepBlocksAndElapsedNeverJumps) {
  SystemClock clock;
  const auto before = clock.Elapsed();
  clock.Sleep(std::chrono::milliseconds(30));
  EXPECT_GE(clock.Elapsed() - before, std::chrono::milliseconds(29));
  const DateTime now = clock.Now();
  const QDateTime same(QDate(now.year, now.month, now.day), QTime(now.hour, now.minute, now.second));
  EXPECT_LE(qAbs(same.secsTo(QDateTime::currentDateTime())), 2);
}

TEST(WhyNoDisplay, IsToldOnlyWithoutAnyDisplay) {
  const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
  const QByteArray display = qgetenv("DISPLAY");
  const QByteArray wayland = qgetenv("WAYLAND_DISPLAY");
  for (const char* name : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"}) qunsetenv(name);
  char program[] = "Kestrum";
  char option[] = "-platform";
  char* const arguments[] = {program, option};
  char* bare[] = {arguments[0]};
  char* chosen[] = {arguments[0], arguments[1]};
  const auto fault = WhyNoDisplay(bare);
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->reason.find("there is no display"), 0U) << fault->reason;
  EXPECT_FALSE(WhyNoDisplay(chosen));
  for (const char* name : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"}) {
    qputenv(name, "something");
    EXPECT_FALSE(WhyNoDisplay(bare)) << name;
    qunsetenv(name);
  }
  qputenv("QT_QPA_PLATFORM", platform);
  if (!display.isNull()) qputenv("DISPLAY", display);
  if (!wayland.isNull()) qputenv("WAYLAND_DISPLAY", wayland);
}

}  // namespace
}  // namespace kestrum::test
