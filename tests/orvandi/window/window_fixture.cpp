#include "window/window_fixture.h"

#include <QAction>
#include <QLabel>
#include <QSettings>

#include "support_process/qt_waits.h"
#include "window/elided_label.h"
#include "window/notice_bar.h"

namespace orvandi::test {
namespace {

constexpr std::chrono::seconds kLongPatience{30};

}  // namespace

WindowTest::WindowTest() {
  QSettings settings(QStringLiteral("Kestrum"), QStringLiteral("Orvandi"));
  settings.clear();
}

WindowTest::~WindowTest() = default;

OrvandiWindow& WindowTest::Open(const StartOptions& options) {
  window_ = std::make_unique<OrvandiWindow>(options);
  window_->setWindowState(Qt::WindowNoState);
  window_->resize(1300, 800);
  window_->show();
  return *window_;
}

OrvandiWindow& WindowTest::OpenLogs(const QStringList& paths) {
  Open(StartOptions{paths, false, QString::fromStdString(folder_.Path("")), false});
  EXPECT_TRUE(WaitIdle());
  QCoreApplication::processEvents();  // the plots come to their places when there is something to show
  return *window_;
}

QString WindowTest::Write(const std::string& name, const std::string& bytes) {
  return QString::fromStdString(folder_.Write(name, bytes));
}

void WindowTest::Trigger(const char* action) const {
  Find<QAction>(action)->trigger();
}

QString WindowTest::Notice() const {
  return Find<NoticeBar>("notice")->Text();
}

QString WindowTest::Told() const {
  return Find<ElidedLabel>("told")->FullText();
}

bool WindowTest::Wait(const std::function<bool()>& until) {
  return kestrum::process::WaitFor(until, kLongPatience);
}

bool WindowTest::WaitIdle() const {
  return Wait([this] { return !window_->Jobs().Busy(); });
}

}  // namespace orvandi::test
