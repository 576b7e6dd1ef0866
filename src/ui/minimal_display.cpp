#include "ui/minimal_display.h"

#include <algorithm>

#include "config/app_title.h"
#include "position/great_circle.h"
#include "position/needle.h"
#include "signal/conversion.h"
#include "text/number_text.h"
#include "text/text.h"

namespace kestrum {
namespace {

// Kept on purpose: the value as the reader's label shows it until the first record brings metres.
std::string HeightAtLoad(const std::string& caption) {
  return ContainsText(caption, "eight") ? "?? m" : caption;
}

std::string FrequencyAtLoad(const std::string& caption) {
  const std::string frequency = Trim(caption);
  return ContainsText(frequency, " kHz") ? frequency : frequency + " kHz";
}

}  // namespace

MinimalDisplay::MinimalDisplay(State& state, Forms& forms, const PortSet<Dialogs, Program>& ports)
    : state_(state), forms_(forms), ports_(ports) {}

void MinimalDisplay::Wire() {
  Form5& form = forms_.form5;
  forms_.form1.mnuMinimalDisplay.click = [this] { Toggle(); };
  form.Command1.click = [this] { Toggle(); };
  form.close = [this] { Toggle(); };  // the way back, since closing would leave no window at all
  form.key_down = [this](Key key) {
    switch (key) {
      case Key::kF2:
        forms_.night = !forms_.night;
        return true;
      case Key::kF3:
        Run(forms_.form1.cmdLoggin.click);
        return true;
      case Key::kF4:
        Run(forms_.form1.lblSound.click);
        return true;
      case Key::kF5:
        Toggle();
        return true;
      default:
        return false;
    }
  };
  form.activate = [this] { ShowPelorusMinimized(forms_.form1.lblRxBearing.caption); };
  form.Picture1.resized = [this] { PaintNeedle(); };
}

void MinimalDisplay::Toggle() {
  Form1& form1 = forms_.form1;
  form1.mnuMinimalDisplay.checked = !form1.mnuMinimalDisplay.checked;
  if (!form1.mnuMinimalDisplay.checked) {
    Unload();
    return;
  }
  if (state_.settings.RigModel == kFT817 && PowerIsOff(form1)) {
    form1.mnuMinimalDisplay.checked = false;
    ports_.dialogs.Show(AppTitle, "Switch FT817 first on", Icon::kInformation);
    return;
  }
  if (!SameText(form1.cmdLoggin.caption, kLoggingOnCaption)) Run(form1.cmdLoggin.click);
  if (ports_.program.Ended()) return;
  Load();
}

void MinimalDisplay::Load() {
  Form1& form1 = forms_.form1;
  Form5& form5 = forms_.form5;
  form5.left = state_.settings.MinimalLeft;
  form5.top = state_.settings.MinimalTop;
  form5.caption = AppTitle;
  form5.Frame1.caption = "Kestrum";
  form5.Command1.caption = "&Main(F5) ";
  form5.ProgressBar1.maximum = kTopOfMeter;
  form5.ProgressBar1.value = 0;
  form5.ProgressBar1.segments = state_.settings.ProgressBarMode;
  auto& labels = form5.Label1;
  labels[0].tool_tip = "Distance to TX";
  labels[0].caption = "Dist";
  labels[1].tool_tip = "Angle to TX";
  labels[1].caption = "Angle";
  labels[2].tool_tip = "Altitude in metres";
  labels[2].caption = HeightAtLoad(form1.lblDDEHeight.caption);
  labels[3].caption = FrequencyAtLoad(form1.lblFreq.caption);
  labels[4].caption = "RSSI";
  ShowPelorusMinimized(form1.lblRxBearing.caption);

  form1.visible = false;
  forms_.form2.visible = false;
  forms_.form3.visible = false;
  forms_.form4.visible = false;
  form5.loaded = true;
  form5.visible = true;
}

void MinimalDisplay::Unload() {
  Form1& form1 = forms_.form1;
  Form5& form5 = forms_.form5;
  state_.settings.MinimalLeft = form5.left;
  state_.settings.MinimalTop = form5.top;
  form5.visible = false;
  form5.loaded = false;
  form1.visible = true;
  // The large dial shows no needle for an unknown heading, as SetGPSdata draws it.
  const std::string& heading = form1.lblPelorus.caption;
  const bool known = heading.find_first_of("0123456789") != std::string::npos;
  form1.Picture1.needle = known ? NeedleOf(heading) : std::nullopt;
  form1.ProgressBar1.segments = state_.settings.ProgressBarMode;
}

void MinimalDisplay::ShowRecord(const Site& site, int raw, const std::string& signal) {
  const Form1& form1 = forms_.form1;
  auto& labels = forms_.form5.Label1;
  labels[0].caption = site.distance;
  labels[1].caption = site.bearing + CompassText(site.bearing);
  labels[2].caption = site.height;
  labels[3].caption = TrimLeft(form1.lblFreq.caption);
  labels[4].caption = signal;
  forms_.form5.ProgressBar1.value = std::clamp(raw, 0, kTopOfMeter);
  ShowPelorusMinimized(form1.lblPelorus.caption);
}

void MinimalDisplay::ShowPelorusMinimized(const std::string& text) {
  forms_.form5.Picture1.needle = NeedleOf(text);
  PaintNeedle();
}

void MinimalDisplay::PaintNeedle() {
  Picture& picture = forms_.form5.Picture1;
  picture.shapes = NeedleShapes(picture.needle, picture.width, picture.height);
}

}  // namespace kestrum
