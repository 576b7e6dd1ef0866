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
#include "desktop/widgets/voices.h"

namespace kestrum {
namespace {

const QString kNight = QStringLiteral("night");
const QString kSound = QStringLiteral("sound");

}  // namespace

Windows::Windows(Forms& forms, Binder& binder, const QString& memory, Speaker* speaker)
    : binder_(binder), memory_(memory) {
  GiveVoices();
  // One style everywhere, whose colours are the program's own.
  if (qobject_cast<CockpitStyle*>(QApplication::style()) == nullptr) QApplication::setStyle(new CockpitStyle);
  forms.night = memory_.Flag(kNight, forms.night);
  binder.Follow<bool>(forms.night, [this](const bool& night) { FollowNight(night); });
  FollowSound(forms.sound, speaker);
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

void Windows::FollowSound(Sounder& sound, Speaker* speaker) {
  const int kept = memory_.Number(kSound, static_cast<int>(sound.mode));
  if (kept >= static_cast<int>(SoundMode::kOff) && kept <= static_cast<int>(SoundMode::kSignal)) {
    sound.mode = static_cast<SoundMode>(kept);
  }
  binder_.FollowFrom<SoundMode>(sound.mode, sound.mode, [this](const SoundMode& mode) {
    memory_.KeepNumber(kSound, static_cast<int>(mode));
  });
  if (speaker == nullptr) return;
  binder_.FollowFrom<unsigned>(sound.plays, sound.plays,
                               [&sound, speaker](const unsigned&) { speaker->Play(sound.tones); });
}

}  // namespace kestrum
