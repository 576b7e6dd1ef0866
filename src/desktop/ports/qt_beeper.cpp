#include "desktop/ports/qt_beeper.h"

#include <QApplication>

namespace kestrum {

void QtBeeper::Beep() {
  QApplication::beep();
}

}  // namespace kestrum
