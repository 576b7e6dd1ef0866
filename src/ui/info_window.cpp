#include "ui/info_window.h"

#include "config/app_title.h"
#include "signal/table_hints.h"
#include "text/number_text.h"
#include "text/text_file.h"

namespace kestrum {
namespace {

constexpr int kInfoText = 1;
constexpr int kTableHints = 2;
constexpr const char* kIndent = "     ";

}  // namespace

InfoWindow::InfoWindow(State& state, Forms& forms, const PortSet<Program, FileStore>& ports)
    : state_(state), forms_(forms), ports_(ports) {}

void InfoWindow::Wire() {
  forms_.form2.caption = AppTitle;
  forms_.form2.close = [this] {
    state_.InfoRequest = 0;
    forms_.form2.visible = false;
    forms_.form2.loaded = false;
  };
}

void InfoWindow::Open() {
  Form2& form = forms_.form2;
  form.caption = AppTitle;
  form.Text1.text.clear();
  if (state_.InfoRequest == kInfoText) LoadInfo("Kestrum.txt");
  if (state_.InfoRequest == kTableHints) form.Text1.text = TableHints();
  form.loaded = true;
  form.Show();
}

void InfoWindow::LoadInfo(const std::string& file_name) {
  Form2& form = forms_.form2;
  form.caption = file_name;
  form.Text1.text.clear();
  const Result<std::string> bytes = ports_.files.Read(ports_.program.PathOf("\\" + file_name));
  if (!bytes) return;
  const double kilobytes = static_cast<double>(bytes.value().size()) / 1024;
  form.caption += " (" + NumberText(RoundHalfEven(kilobytes, 3)) + " kb).";
  auto lines = SplitLines(bytes.value());
  for (auto& line : lines) line.insert(0, kIndent);
  form.Text1.text = JoinLines(lines);
}

}  // namespace kestrum
