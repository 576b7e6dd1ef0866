#include "signal/s_meter.h"

#include "text/number_text.h"

namespace kestrum {
namespace {

constexpr int kAverageIntervalMs = 300;

std::string BarToolTip(const std::string& reading, const ProgressBar& bar) {
  return "RSSI = " + reading + ">" + NumberText(bar.maximum) + " Click me to change!";
}

}  // namespace

SMeter::SMeter(State& state, Forms& forms, RigCommands& rig, CalibrationTable& table)
    : state_(state), forms_(forms), rig_(rig), table_(table) {}

void SMeter::Wire() {
  Form1& form = forms_.form1;
  form.lblFieldStrenght.click = [this] { lblFieldStrenght_Click(); };
  form.mnuAverageRSSI.click = [this] { state_.AverageRequest = true; };
  form.sldSquelch.change = [this] {
    state_.settings.SquelchLevel = static_cast<std::int16_t>(forms_.form1.sldSquelch.value);
  };
  form.tmrAverageRSSI.tick = [this] { tmrAverageRSSI_Timer(); };
  for (ProgressBar* bar : {&form.ProgressBar1, &forms_.form5.ProgressBar1}) {
    bar->click = [this, bar] {
      bool& segments = state_.settings.ProgressBarMode;
      segments = !segments;
      bar->segments = segments;
    };
  }
}

void SMeter::ShowReading() {
  Form1& form = forms_.form1;
  form.ProgressBar1.tool_tip = BarToolTip(NumberText(state_.RssiRaw), form.ProgressBar1);
  if (form.mnuMinimalDisplay.checked) forms_.form5.ProgressBar1.tool_tip = form.ProgressBar1.tool_tip;
  ShowRSSIStype();
}

void SMeter::ShowRSSIStype() {
  Form1& form = forms_.form1;
  table_.ConvertRSSI(state_.RssiRaw);
  form.ProgressBar1.value = state_.RssiRaw;
  if (form.mnuMinimalDisplay.checked) forms_.form5.ProgressBar1.value = state_.RssiRaw;
  form.lblRSSI.caption = table_.Current().s;
  ShowFieldStrength();
  if (forms_.form3.loaded) Run(follow_reading);
}

void SMeter::ShowFieldStrength() {
  std::string& caption = forms_.form1.lblFieldStrenght.caption;
  const TableRow& current = table_.Current();
  switch (state_.settings.FieldStrengthUnit) {
    case kMicrovolt:
      caption = FixedPattern(Val(current.microvolt), 3, 1) + " uV";
      break;
    case kMillivoltPerMetre:
      caption = FixedPattern(Val(current.millivolt_per_metre), 3, 1) + " mV/m";
      break;
    case kDbm:
      // Kept on purpose: the figure is made from the mV/m column, as in all earlier logs.
      caption = RSSItoDBm(current.millivolt_per_metre) + " dBm";
      break;
    default:
      break;
  }
}

Reading SMeter::ReadNow() {
  Reading reading;
  reading.answered = rig_.ReadRssi();
  reading.raw = state_.RssiRaw;
  reading.converted = table_.Current();
  reading.on = On();
  if (reading_taken) reading_taken(reading);
  return reading;
}

Reading SMeter::TakeAverage() {
  if (collected_on_ != On()) StartAverage();
  state_.RssiRaw = averaged_;
  StartAverage();
  // So that raw value and converted value of the record belong together.
  ShowRSSIStype();
  return {state_.RssiRaw, table_.Current(), On(), true};
}

MeasuredOn SMeter::On() const {
  const Settings& settings = state_.settings;
  return {settings.RigModel, settings.RigMode, forms_.form1.lblFreq.caption, table_.revision()};
}

void SMeter::StartAverage() {
  count_ = 0;
  sum_ = 0;
  averaged_ = 0;
  forms_.form1.lblSquelch.back_color = Color::kRed;
}

void SMeter::AverageRSSIValue(int raw, bool reset) {
  if (reset) {
    StartAverage();
  } else {
    AddSample(raw);
  }
}

void SMeter::AddSample(int raw) {
  if (const MeasuredOn now = On(); now != collected_on_) {
    StartAverage();
    collected_on_ = now;
  }
  if (raw < state_.settings.SquelchLevel) return;
  forms_.form1.lblSquelch.back_color = Color::kGreen;
  if (count_ < 2) {
    // Kept on purpose: the second sample replaces the first, which may still come from before the reset.
    sum_ = static_cast<float>(raw);
    averaged_ = static_cast<std::int16_t>(raw);
  } else {
    sum_ += static_cast<float>(raw);
    averaged_ = static_cast<std::int16_t>(RoundToInt(sum_ / static_cast<float>(count_)));
  }
  ++count_;
}

void SMeter::ShowAtStart() {
  Form1& form = forms_.form1;
  form.sldSquelch.tool_tip = "Squelch adjust only if averaged";
  form.sldSquelch.minimum = 0;
  form.sldSquelch.maximum = kTopOfMeter;
  const int level = state_.settings.SquelchLevel;
  if (level >= 0 && level <= kTopOfMeter) form.sldSquelch.value = level;

  form.lblSquelch.tool_tip = "Red = No or reset average RSSI values, Green = collecting average RSSI";
  form.lblSquelch.back_color = Color::kRed;
  form.lblFieldStrenght.tool_tip = "Recalc RSSI-value to mV/m or uV, dBm across 50 Ohm Click me to change.";
  form.lblRSSI.tool_tip = "Latest RSSI-value reading from set.";

  for (ProgressBar* bar : {&form.ProgressBar1, &forms_.form5.ProgressBar1}) {
    bar->maximum = kTopOfMeter;
    bar->segments = state_.settings.ProgressBarMode;
  }
  form.ProgressBar1.tool_tip = BarToolTip("0", form.ProgressBar1);
}

void SMeter::RunAveraging() {
  Timer& timer = forms_.form1.tmrAverageRSSI;
  if (!state_.settings.AverageRSSI) {
    timer.Stop();
    return;
  }
  timer.interval_ms = kAverageIntervalMs;
  timer.Start();
}

void SMeter::ShowAveraging() {
  Form1& form = forms_.form1;
  const bool averaging = state_.settings.AverageRSSI;
  form.sldSquelch.visible = averaging;
  form.lblSquelch.visible = averaging;
  form.ProgressBar1.top = averaging ? 2040 : 2140;
  form.ProgressBar1.height = averaging ? 255 : 456;
}

void SMeter::lblFieldStrenght_Click() {
  // Kept on purpose: the cycle starts anew in every run, so the first click gives uV whatever was shown.
  state_.settings.FieldStrengthUnit = static_cast<std::int16_t>(kMicrovolt + unit_clicks_);
  unit_clicks_ = (unit_clicks_ + 1) % 3;
  ShowRSSIStype();
}

void SMeter::tmrAverageRSSI_Timer() {
  if (!state_.settings.AverageRSSI) return;
  Timer& timer = forms_.form1.tmrAverageRSSI;
  timer.Stop();
  AddSample(ReadNow().raw);
  timer.Start();
}

}  // namespace kestrum
