#include <QApplication>

#include "start_options.h"
#include "window/orvandi_window.h"
#include "window/theme.h"

namespace orvandi {

int RunMainWindow(const StartOptions& options) {
  ApplyTheme(Theme::kDesktop);
  OrvandiWindow window(options);
  if (options.minimised) {
    window.ShowMinimisedWithFocus();
  } else {
    window.show();
  }
  return QApplication::exec();
}

}  // namespace orvandi
