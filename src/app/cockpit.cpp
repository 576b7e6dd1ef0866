#include "app/cockpit.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>

#include "cat/rig_text.h"
#include "cat/rigs.h"
#include "position/needle.h"
#include "signal/meter_scale.h"

namespace kestrum {
namespace {

constexpr int kMissedFixes = 2;             // one missed look happens
constexpr int kCheckEveryS = 60;            // the log folder, while all is well
constexpr int kCheckFaultEveryS = 5;        // and while it is not
constexpr Milliseconds kShortestGap{3000};  // readings further apart are parted in the chart

// Readings that come at the main interval belong together, whatever it is.
Milliseconds LongestGap(const Timer& timer) {
  return std::max(kShortestGap, Milliseconds(timer.interval_ms * 5 / 2));
}

}  // namespace

Cockpit::Cockpit(const State& state, Forms& forms, const OwnPorts& ports, const Floors& floors)
    : state_(state), forms_(forms), ports_(ports), floors_(floors), sounds_(forms.sound) {}

void Cockpit::Wire() {
  forms_.form1.tmrLamps.tick = [this] { EverySecond(); };
  floors_.s_meter.reading_taken = [this](const Reading& reading) { ReadingTaken(reading); };
  floors_.log.health_changed = [this] {
    ShowLogLamp();
    HearLamps();
  };
  forms_.form1.lblSound.click = [this] { NextSound(); };
  ShowSound();
  const auto open_port = [this] {
    floors_.link.OpenCatPort();
    ShowLamps();
  };
  const auto start_reader = [this] { StartReaderAgain(); };
  const auto check_log = [this] { CheckLogFolder(); };
  forms_.form1.lmpRig.click = forms_.form5.lmpRig.click = open_port;
  forms_.form1.lmpGps.click = forms_.form5.lmpGps.click = start_reader;
  forms_.form1.lmpLog.click = forms_.form5.lmpLog.click = check_log;
}

void Cockpit::EverySecond() {
  if (ports_.program.Ended()) return;
  ReopenReturnedPort();
  const LogFacts log = floors_.log.Facts();
  const std::string path = floors_.log.Path();
  if (log.logging && (--seconds_to_check_ <= 0 || path != checked_path_)) CheckLogFolder();
  if (!log.logging) seconds_to_check_ = 0;
  floors_.gps.NoteFix();
  missed_fixes_ = PositionIsTrue(Gps()) ? 0 : missed_fixes_ + 1;
  Look();
}

void Cockpit::Look() {
  ShowLamps();
  ShowPosition();
  ShowSignal();
  ShowScale();
  ShowSound();
}

void Cockpit::NextSound() {
  sounds_.NextMode();
  ShowSound();
}

void Cockpit::ShowSound() {
  Label& label = forms_.form1.lblSound;
  switch (forms_.sound.mode) {
    case SoundMode::kOff:
      label.caption = "Sound off (F4)";
      break;
    case SoundMode::kTrouble:
      label.caption = "Sound: trouble";
      break;
    case SoundMode::kSignal:
      label.caption = "Sound: signal";
      break;
  }
}

void Cockpit::CheckLogFolder() {
  checked_path_ = floors_.log.Path();
  seconds_to_check_ = floors_.log.Facts().folder_fault ? kCheckFaultEveryS : kCheckEveryS;
  floors_.log.CheckFolder();
}

// Opening sends nothing: the rig hears of it with the next cycle.
void Cockpit::ReopenReturnedPort() {
  if (floors_.link.IsOpen() || !ports_.serial.DeviceIsBack()) return;
  floors_.link.OpenCatPort();
}

void Cockpit::StartReaderAgain() {
  const GpsFacts gps = Gps();
  if (gps.reader_present && !ReaderIsFrozen(gps)) return;
  floors_.gps.StartReaderAgain();
  Look();
}

void Cockpit::ReadingTaken(const Reading& reading) {
  const Milliseconds now = ports_.clock.Elapsed();
  const bool good = reading.answered && SameText(forms_.form1.lblCatComment.caption, "Done");
  const std::optional<int> raw = good ? std::optional(reading.raw) : std::nullopt;
  missed_readings_ = good ? 0 : missed_readings_ + 1;
  if (reading.answered || !heard_) heard_ = now;
  history_.Add(now, raw, LongestGap(forms_.form1.tmrMain));
  ShowRigLamp();
  HearLamps();
  ShowSignal();
  sounds_.ReadingTaken(now, raw);
}

GpsFacts Cockpit::Gps() const {
  const GpsLinks& gps = floors_.gps;
  GpsFacts facts{gps.ReaderPresent(), gps.ReaderSilentFor(), gps.SaysValid(), gps.FixAge()};
  // Texts of a reader that is not heard stand still: their fix is at least as old as its silence.
  if (facts.fix_age && facts.silent_for) facts.fix_age = std::max(*facts.fix_age, *facts.silent_for);
  return facts;
}

RigFacts Cockpit::Rig() const {
  const Form1& form = forms_.form1;
  const Settings& settings = state_.settings;
  RigFacts rig;
  rig.port_chosen = IsPort(settings.ComPort);
  rig.port_is_open = floors_.link.IsOpen();
  rig.device_is_gone = ports_.serial.WaitsForDevice();
  rig.trouble = ports_.serial.Trouble();
  rig.switched_off = state_.measuring_stopped || floors_.rig.IsNotRead();
  rig.missed_readings = missed_readings_;
  if (heard_) rig.silent_for = ports_.clock.Elapsed() - *heard_;
  rig.outcome = form.lblCatComment.caption;
  rig.rig = RigName(settings.RigModel);
  rig.port = form.StatusBar1[2].text.substr(0, form.StatusBar1[2].text.find(' '));
  return rig;
}

void Cockpit::ShowLamps() {
  ShowLogLamp();
  ShowGpsLamp();
  ShowRigLamp();
  HearLamps();
}

void Cockpit::ShowLogLamp() {
  forms_.form1.lmpLog.says = forms_.form5.lmpLog.says = LogLamp(floors_.log.Facts());
}

void Cockpit::ShowGpsLamp() {
  forms_.form1.lmpGps.says = forms_.form5.lmpGps.says = GpsLamp(Gps());
}

void Cockpit::ShowRigLamp() {
  forms_.form1.lmpRig.says = forms_.form5.lmpRig.says = RigLamp(Rig());
}

void Cockpit::HearLamps() {
  const Form1& form = forms_.form1;
  sounds_.LampsShow(ports_.clock.Elapsed(),
                    {form.lmpLog.says.state, form.lmpGps.says.state, form.lmpRig.says.state});
}

void Cockpit::ShowPosition() {
  Form1& form = forms_.form1;
  Form5& minimal = forms_.form5;
  const GpsFacts gps = Gps();
  const bool is_true = PositionIsTrue(gps);
  const bool stale = !is_true && missed_fixes_ >= kMissedFixes;
  for (Label* label : {&form.lblRxDist, &form.lblRxBearing, &form.lblTextBearing, &form.lblPelorus,
                       &form.lblRxLat, &form.lblRxLong, &form.lblRxHeight, &form.lblOpticalDistance,
                       &minimal.Label1[0], &minimal.Label1[1], &minimal.Label1[2]}) {
    label->stale = stale;
  }
  form.Picture1.stale = minimal.Picture1.stale = stale;
  form.Picture1.badge = minimal.Picture1.badge = stale ? AgeBadge(gps) : std::string();
  const std::string course = Trim(form.lblDDECompas.caption);
  const bool has_course =
      is_true && !course.empty() && course.find_first_not_of("0123456789.") == std::string::npos;
  form.Picture1.course = has_course ? NeedleOf(course) : std::nullopt;
}

void Cockpit::ShowSignal() {
  Form1& form = forms_.form1;
  Form5& minimal = forms_.form5;
  const bool stale = !SignalIsTrue(Rig());
  form.lblRSSI.stale = form.lblFieldStrenght.stale = form.ProgressBar1.stale = stale;
  minimal.Label1[4].stale = minimal.ProgressBar1.stale = stale;
  const Milliseconds now = ports_.clock.Elapsed();
  form.ProgressBar1.peak = minimal.ProgressBar1.peak = history_.Peak(now);
  ShowChart(now);
}

void Cockpit::ShowChart(Milliseconds now) {
  const std::int64_t second = now.count() / 1000;
  if (second == chart_second_ && history_.changes() == chart_changes_) return;
  chart_second_ = second;
  chart_changes_ = history_.changes();
  StripChart& chart = forms_.form1.chtSignal;
  auto columns = history_.Columns(now);
  if (columns == chart.columns) return;
  chart.columns = std::move(columns);
  ++chart.revision;
}

void Cockpit::ShowScale() {
  const CalibrationTable& table = floors_.table;
  if (shown_revision_ == table.revision()) return;
  shown_revision_ = table.revision();
  Form1& form = forms_.form1;
  form.ProgressBar1.marks = forms_.form5.ProgressBar1.marks = MeterScale(table.S2Ftable);
  form.chtSignal.line = S9Row(table.S2Ftable);
  ++form.chtSignal.revision;
}

}  // namespace kestrum
