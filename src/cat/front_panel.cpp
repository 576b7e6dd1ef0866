#include "cat/front_panel.h"

#include <algorithm>
#include <array>

#include "cat/frequency_digits.h"
#include "cat/rig_text.h"
#include "cat/rigs.h"
#include "config/app_title.h"
#include "config/hint_line.h"
#include "text/number_text.h"

namespace kestrum {
namespace {

constexpr std::array kSpeeds{1200, 4800, 9600, 19200, 38400, 57600};

}  // namespace

FrontPanel::FrontPanel(State& state, Form1& form, const PortSet<SerialPort, Dialogs, Program>& ports,
                       CatLink& link, RigCommands& rig)
    : state_(state), form_(form), ports_(ports), link_(link), rig_(rig) {}

void FrontPanel::Wire() {
  int rig_model = 0;
  for (auto* item : RigItems(form_)) {
    ++rig_model;
    item->click = [this, rig_model] {
      if (RigOf(rig_model)->in_menu) {
        ChooseRig(rig_model);
      } else {
        NotYetImplemented();
      }
    };
  }
  int number = 0;
  for (auto* item : PortItems(form_)) {
    ++number;
    item->click = [this, number] { ChoosePort(number); };
  }
  form_.mnuBaud.click = [this] { mnuBaud_Click(); };
  for (auto* button : ModeButtons(form_)) button->click = [this] { rig_.SetMode(0); };

  form_.cmdSetFreq.click = [this] { cmdSetFreq_Click(); };
  form_.cmdUp.click = [this] { cmdUp_Click(); };
  form_.cmdDown.click = [this] { cmdDown_Click(); };
  form_.sldkHzSteps.change = [this] { sldkHzSteps_Scroll(); };
  form_.txtFrequency.focus = [this] { form_.txtFrequency.SelectAll(); };
  form_.txtFrequency.enter_released = [this] { cmdSetFreq_Click(); };
  form_.txtFrequency.click = [this] { cmdSetFreq_Click(); };
  form_.chkLock.click = [this] { chkLock_Click(); };
  form_.cmdFT817OnOff.click = [this] { cmdFT817OnOff_Click(); };
}

void FrontPanel::ApplySelection() {
  ShowBaud();
  link_.OpenCatPort();
  ShowRig();
  ShowPort();
  rig_.SetMode(state_.settings.RigMode);
  ShowRigText();
}

void FrontPanel::ApplyFrequency(const std::string& text) {
  if (text.empty()) return;
  form_.tmrMain.Stop();
  form_.cmdSetFreq.enabled = false;
  if (HasPowerCommand() && PowerIsOff(form_)) {
    rig_.CatPowerOnOff(true);
    form_.tmrMain.Stop();  // the power command has started it again
  }
  const double khz = TypedKhz(text);
  if (Accepts(khz)) {
    if (khz != TypedKhz(form_.lblFreq.caption)) Run(rig_.block_ends);
    CrossBand(khz);
    if (ports_.program.Ended()) return;
  }
  rig_.SetFrequency(text);
  form_.ProgressBar1.value = 0;
  form_.cmdSetFreq.enabled = true;
  StartMeasuring(state_, form_);
  Run(frequency_applied);
}

bool FrontPanel::Accepts(double khz) const {
  return InFreqRange(state_.settings.RigModel, khz) && !(HasPowerCommand() && PowerIsOff(form_));
}

void FrontPanel::CrossBand(double khz) {
  const bool above = khz > kHfLimitKhz;
  if (above == state_.AboveHF) return;
  state_.AboveHF = above;
  Run(band_crossed);
}

bool FrontPanel::HasPowerCommand() const {
  const RigRow* rig = RigOf(state_.settings.RigModel);
  return rig != nullptr && rig->has_power_command;
}

void FrontPanel::ShowRig() {
  int number = 0;
  for (auto* item : RigItems(form_)) {
    ++number;
    item->checked = number == state_.settings.RigModel;
  }
  form_.cmdFT817OnOff.enabled = HasPowerCommand();
}

void FrontPanel::ShowPort() {
  int number = 0;
  for (auto* item : PortItems(form_)) {
    ++number;
    item->checked = number == state_.settings.ComPort;
    item->tool_tip = ports_.serial.DeviceName(number);
  }
  link_.ShowPortPanel();
}

void FrontPanel::ShowBaud() {
  form_.mnuBaud.caption = "Baud(" + ShortNumber(state_.settings.BaudRate) + ")";
}

void FrontPanel::ShowRigText() {
  if (!show_rig_text) return;
  const int port = state_.settings.ComPort;
  show_rig_text("Cat " + RigName(state_.settings.RigModel) + " " +
                (IsPort(port) ? "Com" + ShortNumber(port) : "No Comport"));
}

void FrontPanel::OptModeEnable(bool enabled) {
  for (auto* button : ModeButtons(form_)) button->enabled = enabled;
}

void FrontPanel::ShowStepAtStart() {
  Slider& slider = form_.sldkHzSteps;
  slider.value = std::clamp(RoundToInt(state_.settings.KHzStep), slider.minimum, slider.maximum);
  ShowStep("Frequency down");
}

void FrontPanel::ShowStep(const std::string& down) {
  const std::string step = NumberTextSingle(state_.settings.KHzStep);
  form_.cmdUp.tool_tip = "Frequency up" + step + " kHz";
  form_.cmdDown.tool_tip = down + step + " kHz";
  form_.cmdUp.caption = ">" + step;
  form_.cmdDown.caption = step + " <";
}

void FrontPanel::ChooseRig(int rig_model) {
  if (rig_model != state_.settings.RigModel) Run(rig_.block_ends);
  state_.settings.RigModel = rig_model;
  if (HasPowerCommand()) form_.cmdFT817OnOff.caption = kPowerOffCaption;  // the set is taken as off
  ShowRig();
  link_.OpenCatPort();
  rig_.SetMode(0);
  rig_.CatLock(state_.settings.DialLock);
  ShowRigText();
  ShowHint(state_, form_);
}

void FrontPanel::NotYetImplemented() {
  ports_.dialogs.Show(AppTitle, "Not yet implemented !", Icon::kInformation);
  if (ports_.program.Ended()) return;
  ShowRig();  // the click may have checked the item
}

void FrontPanel::ChoosePort(int number) {
  state_.settings.ComPort = number;
  ShowPort();
  link_.OpenCatPort();
  rig_.SetMode(0);
  ShowRigText();
}

void FrontPanel::mnuBaud_Click() {
  auto& speed = state_.settings.BaudRate;
  const auto* present = std::find(kSpeeds.begin(), kSpeeds.end(), speed);
  if (present != kSpeeds.end()) {
    const auto* next = present + 1;
    speed = next == kSpeeds.end() ? kSpeeds.front() : *next;
  }
  ShowBaud();
  link_.OpenCatPort();
  rig_.SetMode(0);
}

void FrontPanel::cmdSetFreq_Click() {
  ApplyFrequency(form_.txtFrequency.text);
}

void FrontPanel::cmdUp_Click() {
  Step(+1);
}

void FrontPanel::cmdDown_Click() {
  Step(-1);
}

void FrontPanel::Step(int direction) {
  // The step as its decimal text says: a tenth of a kHz in single precision is not quite a tenth.
  const double step_khz = Val(ShortNumberSingle(state_.settings.KHzStep));
  form_.txtFrequency.text = NumberText(TypedKhz(form_.txtFrequency.text) + direction * step_khz) + " kHz";
  cmdSetFreq_Click();
}

void FrontPanel::sldkHzSteps_Scroll() {
  state_.settings.KHzStep = static_cast<float>(form_.sldkHzSteps.value);
  ShowStep("Freqency down");  // kept on purpose: the spelling of the tool tip after a scroll
}

void FrontPanel::chkLock_Click() {
  state_.settings.DialLock = form_.chkLock.checked;
  rig_.CatLock(state_.settings.DialLock);
}

void FrontPanel::cmdFT817OnOff_Click() {
  rig_.CatPowerOnOff(!PowerIsOn(form_));
}

}  // namespace kestrum
