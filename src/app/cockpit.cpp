#include "app/cockpit.h"

#include <algorithm>
#include <array>

#include "app/application.h"
#include "cat/rig_text.h"
#include "signal/meter_scale.h"

namespace kestrum {
namespace {

constexpr int kMissedFixes = 2;             // one missed look happens
constexpr int kCheckEvery_s = 60;           // the log folder, while all is well
constexpr int kCheckFaultEvery_s = 5;       // and while it is not
constexpr Milliseconds kShortestGap{3000};  // readings further apart are parted in the chart
constexpr const char* kNoCourse = "32768";

// Readings that come at the main interval belong together, whatever it is.
Milliseconds LongestGap(const Timer& timer) {
  return std::max(kShortestGap, Milliseconds(timer.interval_ms * 5 / 2));
}

}  // namespace

Cockpit::Cockpit(Application& application) : application_(application), sounds_(application.forms.sound) {}

void Cockpit::Wire() {
  Application& app = application_;
  app.forms.form1.tmrLamps.tick = [this] { EverySecond(); };
  app.s_meter.reading_taken = [this](const Reading& reading) { ReadingTaken(reading); };
  app.log.health_changed = [this] { ShowLamps(); };
  app.forms.form1.lblSound.click = [this] { NextSound(); };
  ShowSound();
  const auto open_port = [this] {
    application_.link.OpenCatPort();
    ShowLamps();
  };
  const auto start_reader = [this] { StartReaderAgain(); };
  const auto check_log = [this] { CheckLogFolder(); };
  app.forms.form1.lmpRig.click = app.forms.form5.lmpRig.click = open_port;
  app.forms.form1.lmpGps.click = app.forms.form5.lmpGps.click = start_reader;
  app.forms.form1.lmpLog.click = app.forms.form5.lmpLog.click = check_log;
}

void Cockpit::EverySecond() {
  if (application_.ports().program.Ended()) return;
  ReopenReturnedPort();
  const LogFacts log = application_.log.Facts();
  const std::string path = application_.log.Path();
  if (log.logging && (--seconds_to_check_ <= 0 || path != checked_path_)) CheckLogFolder();
  if (!log.logging) seconds_to_check_ = 0;
  application_.gps.NoteFix();
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
  Label& label = application_.forms.form1.lblSound;
  switch (application_.forms.sound.mode) {
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
  checked_path_ = application_.log.Path();
  seconds_to_check_ = application_.log.Facts().folder_fault ? kCheckFaultEvery_s : kCheckEvery_s;
  application_.log.CheckFolder();
}

// Opening sends nothing: the rig hears of it with the next cycle.
void Cockpit::ReopenReturnedPort() {
  if (application_.link.IsOpen() || !application_.ports().serial.DeviceIsBack()) return;
  application_.link.OpenCatPort();
}

void Cockpit::StartReaderAgain() {
  const GpsFacts gps = Gps();
  if (gps.reader_present && !ReaderIsFrozen(gps)) return;
  application_.gps.StartReaderAgain();
  Look();
}

void Cockpit::ReadingTaken(const Reading& reading) {
  const Milliseconds now = application_.ports().clock.Elapsed();
  const bool good = reading.answered && SameText(application_.forms.form1.lblCatComment.caption, "Done");
  missed_readings_ = good ? 0 : missed_readings_ + 1;
  if (reading.answered || !heard_) heard_ = now;
  history_.Add(now, good ? std::optional<int>(reading.raw) : std::nullopt,
               LongestGap(application_.forms.form1.tmrMain));
  ShowLamps();
  ShowSignal();
  sounds_.ReadingTaken(now, good ? std::optional<int>(reading.raw) : std::nullopt);
}

GpsFacts Cockpit::Gps() const {
  const GpsLinks& gps = application_.gps;
  GpsFacts facts{gps.ReaderPresent(), gps.ReaderSilentFor(), gps.SaysValid(), gps.FixAge()};
  // Texts of a reader that is not heard stand still: their fix is at least as old as its silence.
  if (facts.fix_age && facts.silent_for) facts.fix_age = std::max(*facts.fix_age, *facts.silent_for);
  return facts;
}

RigFacts Cockpit::Rig() const {
  const Form1& form = application_.forms.form1;
  const Settings& settings = application_.state.settings;
  const Ports& ports = application_.ports();
  RigFacts rig;
  rig.port_chosen = settings.ComPort >= 1 && settings.ComPort <= 6;
  rig.port_is_open = application_.link.IsOpen();
  rig.device_is_gone = ports.serial.WaitsForDevice();
  rig.trouble = ports.serial.Trouble();
  rig.switched_off = application_.state.measuring_stopped || application_.rig.IsNotRead();
  rig.missed_readings = missed_readings_;
  if (heard_) rig.silent_for = ports.clock.Elapsed() - *heard_;
  rig.outcome = form.lblCatComment.caption;
  rig.rig = RigName(settings.RigModel);
  rig.port = form.StatusBar1[2].text.substr(0, form.StatusBar1[2].text.find(' '));
  return rig;
}

void Cockpit::ShowLamps() {
  Forms& forms = application_.forms;
  forms.form1.lmpLog.says = forms.form5.lmpLog.says = LogLamp(application_.log.Facts());
  forms.form1.lmpGps.says = forms.form5.lmpGps.says = GpsLamp(Gps());
  forms.form1.lmpRig.says = forms.form5.lmpRig.says = RigLamp(Rig());
  sounds_.LampsShow(
      application_.ports().clock.Elapsed(),
      {forms.form1.lmpLog.says.state, forms.form1.lmpGps.says.state, forms.form1.lmpRig.says.state});
}

void Cockpit::ShowPosition() {
  Form1& form = application_.forms.form1;
  Form5& minimal = application_.forms.form5;
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
  const bool has_course = is_true && course != kNoCourse && !course.empty() &&
                          course.find_first_not_of("0123456789.") == std::string::npos;
  form.Picture1.course = has_course ? course : std::string();
}

void Cockpit::ShowSignal() {
  Form1& form = application_.forms.form1;
  Form5& minimal = application_.forms.form5;
  const bool stale = !SignalIsTrue(Rig());
  form.lblRSSI.stale = form.lblFieldStrenght.stale = form.ProgressBar1.stale = stale;
  minimal.Label1[4].stale = minimal.ProgressBar1.stale = stale;
  const Milliseconds now = application_.ports().clock.Elapsed();
  form.ProgressBar1.peak = minimal.ProgressBar1.peak = history_.Peak(now);
  auto columns = history_.Columns(now);
  if (columns == form.chtSignal.columns) return;
  form.chtSignal.columns = std::move(columns);
  ++form.chtSignal.revision;
}

void Cockpit::ShowScale() {
  const CalibrationTable& table = application_.table;
  if (shown_revision_ == table.revision()) return;
  shown_revision_ = table.revision();
  Form1& form = application_.forms.form1;
  form.ProgressBar1.marks = application_.forms.form5.ProgressBar1.marks = MeterScale(table.S2Ftable);
  form.chtSignal.line = S9Row(table.S2Ftable);
  ++form.chtSignal.revision;
}

}  // namespace kestrum
