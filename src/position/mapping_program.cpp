#include "position/mapping_program.h"

#include "config/app_title.h"

namespace kestrum {

void ShowOrvandi(Form1& form, const PortSet<Dialogs, Program, FileStore>& ports) {
  const std::string name = "\\Orvandi.exe";
  const std::string path = ports.program.CompanionPath(name);
  form.mnuOrvandi.checked =
      ports.files.Exists(path) && ports.program.StartCompanion(name, ShowStyle::kMinimisedWithFocus);
  if (!form.mnuOrvandi.checked) {
    ports.dialogs.Show(AppTitle, path + "\r\nNot found", Icon::kExclamation);
  }
}

}  // namespace kestrum
