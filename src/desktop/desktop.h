#pragma once

#include <memory>

#include "desktop/binding/binder.h"
#include "desktop/platform_factory.h"
#include "desktop/ports/qt_beeper.h"
#include "desktop/ports/qt_dialogs.h"
#include "desktop/ports/qt_event_pump.h"
#include "desktop/ports/qt_program.h"
#include "desktop/ports/qt_worker.h"
#include "desktop/ports/system_clock.h"
#include "platform/ports.h"

namespace kestrum {

// The real outside world. Needs a QApplication; lives longer than the program that uses it.
class Desktop {
 public:
  Desktop();

  Ports ports() {
    return {*serial_, *links_, dialogs_, clock_, pump_, beeper_, program_, *links_, *files_, worker_};
  }
  Binder& binder() { return binder_; }
  const QtProgram& program() const { return program_; }
  // Whether the end leaves something behind that a disk has not taken.
  bool StillWriting() const { return worker_.Busy(); }
  // Calls `end` when the system or the desktop session asks the program to end.
  void OnEndRequest(std::function<void()> end);

 private:
  QtProgram program_;
  Binder binder_{program_};
  std::unique_ptr<SerialPort> serial_;
  QtDialogs dialogs_;
  SystemClock clock_;
  QtEventPump pump_;
  QtBeeper beeper_;
  std::unique_ptr<LinksAndWindows> links_;
  std::shared_ptr<FileStore> files_;
  QtWorker worker_;
};

}  // namespace kestrum
