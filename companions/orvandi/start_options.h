#pragma once

#include <QString>
#include <QStringList>

namespace orvandi {

// What the command line and the environment ask of the window.
struct StartOptions {
  QStringList files;        // logs to open, absolute; the logger's own log when none was named
  bool logger_log = false;  // `files` holds the logger's log, which need not be there yet
  QString folder;           // of the program: Kestrum.cfg, calibration files and the demo's log lie there
  bool minimised = false;   // comes up minimised with the focus, as the logger's menu asks
};

// Shows the main window and runs until it is closed; the exit code. Needs a QApplication.
int RunMainWindow(const StartOptions& options);

}  // namespace orvandi
