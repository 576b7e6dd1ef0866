#include "desktop/forms/windows.h"

#include <QApplication>
#include <QStyle>
#include <QToolTip>
#include <utility>

#include "desktop/forms/form1_window.h"
#include "desktop/forms/form2_window.h"
#include "desktop/forms/form3_window.h"
#include "desktop/forms/form4_window.h"
#include "desktop/forms/form5_window.h"
#include "desktop/widgets/cockpit_style.h"
#include "desktop/widgets/scheme.h"

namespace kestrum {
namespace {

const QString kNight = QStringLiteral("night");

}  // namespace

Windows::Windows(Forms& forms, Binder& binder, const QString& memory) : binder_(binder), memory_(memory) {
  // One style everywhere, whose colours are the program's own.
  if (qobject_cast<CockpitStyle*>(QApplication::style()) == nullptr) QApplication::setStyle(new CockpitStyle);
  forms.night = memory_.Flag(kNight, forms.night);
  binder.Follow<bool>(forms.night, [this](const bool& night) { FollowNight(night); });
  auto main = std::make_unique<Form1Window>(forms.form1, binder);
  windows_.push_back(std::make_unique<Form2Window>(forms.form2, binder, main.get()));
  windows_.push_back(std::make_unique<Form3Window>(forms.form3, binder, main.get()));
  windows_.push_back(std::make_unique<Form4Window>(forms.form4, binder, main.get()));
  windows_.push_back(std::make_unique<Form5Window>(forms.form5, binder));
  windows_.push_back(std::move(main));
  for (const auto& window : windows_) memory_.Restore(*window);
}

Windows::~Windows() {
  binder_.Clear();
  for (const auto& window : windows_) memory_.Keep(*window);
}

void Windows::FollowNight(const bool& night) {
  const QPalette palette = PaletteOf(night ? NightScheme() : DayScheme());
  QApplication::setPalette(palette);
  QToolTip::setPalette(palette);
  memory_.KeepFlag(kNight, night);
}

}  // namespace kestrum
