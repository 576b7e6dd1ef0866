#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <csignal>

#include "desktop/platform_factory.h"
#include "desktop/ports/qt_dialogs.h"
#include "desktop/ports/qt_event_pump.h"
#include "support/scripted_ports.h"
#include "support_process/qt_waits.h"

namespace kestrum::test {
namespace {

class EndRequestsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    OnEndRequests(&context_, [this] {
      ++requests_;
      if (on_request_) on_request_();
    });
  }
  void TearDown() override {
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) std::signal(number, SIG_DFL);
  }
  QObject context_;
  int requests_ = 0;
  std::function<void()> on_request_;
  ScriptedProgram program_;
};

TEST_F(EndRequestsTest, EachSignalArrivesAsAnEvent) {
  for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
    requests_ = 0;
    ::raise(number);
    EXPECT_EQ(requests_, 0) << "not from inside the signal";
    EXPECT_TRUE(process::WaitFor([this] { return requests_ > 0; }));
  }
}

TEST_F(EndRequestsTest, ASignalIsHeardDuringAPump) {
  QtEventPump pump(
      program_, [] {}, [] {});
  QTimer::singleShot(20, qApp, [] { ::raise(SIGTERM); });
  pump.PumpFor(std::chrono::milliseconds(200));
  EXPECT_EQ(requests_, 1);
}

TEST_F(EndRequestsTest, ASignalUnderAnOpenBoxClosesIt) {
  QtDialogs dialogs(program_, [] {});
  on_request_ = [&dialogs] { dialogs.Dismiss(); };
  QTimer::singleShot(50, qApp, [] { ::raise(SIGTERM); });
  dialogs.Show("t", "m", Icon::kInformation);
  EXPECT_EQ(requests_, 1);
}

}  // namespace
}  // namespace kestrum::test
