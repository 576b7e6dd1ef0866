#include "common/toolkit_start.h"

#include <QMessageLogContext>
#include <QStringList>
#include <cstdio>
#include <cstdlib>

namespace kestrum {
namespace {

// The toolkit's message handler is a plain function.
const char* g_program = nullptr;
QStringList* g_kept = nullptr;

void Keep(QtMsgType type, const QMessageLogContext& context, const QString& text) {
  if (type != QtFatalMsg) {
    g_kept->append(qFormatLogMessage(type, context, text));
    return;
  }
  // The first complaint names the cause; the last one is a page about plugins.
  const QString cause = (g_kept->isEmpty() ? text : g_kept->first()).section(QLatin1Char('\n'), 0, 0);
  std::fprintf(stderr,
               "%s: no window can be shown (%s). Start it from a desktop session, or with "
               "QT_QPA_PLATFORM=offscreen to run it without windows.\n",
               g_program, cause.toLocal8Bit().constData());
  std::_Exit(EXIT_FAILURE);
}

}  // namespace

ToolkitStart::ToolkitStart(const char* program) {
  static QStringList kept;
  kept.clear();
  g_program = program;
  g_kept = &kept;
  qInstallMessageHandler(Keep);
}

ToolkitStart::~ToolkitStart() {
  qInstallMessageHandler(nullptr);
  for (const QString& text : *g_kept) std::fprintf(stderr, "%s\n", text.toLocal8Bit().constData());
}

}  // namespace kestrum
