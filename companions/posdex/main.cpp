#include <QApplication>
#include <QDir>
#include <QTimer>
#include <cstdio>
#include <optional>

#include "common/descriptor_guard.h"
#include "common/end_signals.h"
#include "common/fault_text.h"
#include "common/reader_contract.h"
#include "common/toolkit_start.h"
#include "platform.h"
#include "reader.h"
#include "reader_settings.h"
#include "reader_window.h"

namespace {

using namespace kestrum::posdex;

// The window waits this long for the links, so that a second reader does not flash up before it ends.
constexpr int kShowAtLatestMs = 500;

void Print(FILE* stream, const QString& text) {
  std::fputs(text.toLocal8Bit().constData(), stream);
}

QString Shown(const kestrum::Fault& fault) {
  return QString::fromStdString(TextOf(fault));
}

void ShowOnce(ReaderWindow& window, bool minimised) {
  if (window.isVisible()) return;
  if (minimised) {
    window.showMinimized();
  } else {
    window.show();
  }
}

int Run(const QApplication& app, const CommandLine& options) {
  const ReaderSettings conf =
      LoadConf(QDir(app.applicationDirPath()).filePath(QStringLiteral("posdex.conf")));
  const QString folder = options.source ? QDir::currentPath() : app.applicationDirPath();
  Reader reader(MakeSource(options.source.value_or(conf.source), folder));
  ReaderWindow window(reader.Description());
  const std::unique_ptr<TextService> service = MakeTextService();
  TextService& links = *service;
  const kestrum::EndSignals end_signals;
  if (!options.source && conf.complaint) window.SetComplaint(Shown(*conf.complaint));

  QObject::connect(&reader, &Reader::TextsChanged, &window, &ReaderWindow::SetTexts);
  QObject::connect(&reader, &Reader::TextsChanged, &links, &TextService::SetTexts);
  QObject::connect(&reader, &Reader::StateChanged, &window, &ReaderWindow::SetState);
  QObject::connect(&reader, &Reader::FixChanged, &window, &ReaderWindow::SetFix);
  QObject::connect(&reader, &Reader::DescriptionChanged, &window, &ReaderWindow::SetSource);
  QObject::connect(&links, &TextService::StateChanged, &window, &ReaderWindow::SetBusState);
  QObject::connect(&links, &TextService::StateChanged, &window, [&] { ShowOnce(window, options.minimised); });
  QObject::connect(&links, &TextService::QuitRequested, &window, &QWidget::close, Qt::QueuedConnection);
  QObject::connect(&links, &TextService::QuitRequested, &app, &QCoreApplication::quit, Qt::QueuedConnection);
  QObject::connect(&end_signals, &kestrum::EndSignals::Received, &app, &QCoreApplication::quit);
  QObject::connect(&links, &TextService::NameTaken, &window, [] {
    Print(stderr, QStringLiteral("Posdex: another GPS reader is already running on %1.\n").arg(LinkScope()));
    QCoreApplication::exit(1);
  });
  QTimer::singleShot(kShowAtLatestMs, &window, [&] { ShowOnce(window, options.minimised); });

  links.Start();
  reader.Start();
  return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
  kestrum::OpenStandardDescriptors();
  QStringList arguments;
  for (int i = 1; i < argc; ++i) arguments << QString::fromLocal8Bit(argv[i]);
  CommandLine options = ParseCommandLine(arguments);
  if (options.help) {
    Print(stdout, HelpText());
    return 0;
  }
  if (options.version) {
    Print(stdout, QString::fromLatin1(kestrum::reader::kTitle) + QLatin1Char('\n'));
    return 0;
  }
  if (!HasDisplay()) qputenv("QT_QPA_PLATFORM", "offscreen");
  std::optional<kestrum::ToolkitStart> starting("Posdex");
  const QApplication app(argc, argv);
  starting.reset();
  options = ParseCommandLine(app.arguments().mid(1));  // without those that Qt has taken
  if (options.complaint) {
    Print(stderr, QStringLiteral("Posdex: %1\n\n").arg(Shown(*options.complaint)) + HelpText());
    return 2;
  }
  return Run(app, options);
}
