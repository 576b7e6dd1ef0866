#include "app/start_up.h"

#include "config/app_title.h"

namespace kestrum {
namespace {

void InitApp(Parts& parts, MainWindow& main_window, Life& life) {
  Form1& form = parts.forms.form1;
  parts.state.settings.CalibrationFiles[0] = parts.ports.program.PathOf("\\Calibration1.cfg");
  parts.state.settings.CalibrationFiles[1] = parts.ports.program.PathOf("\\Calibration2.cfg");
  // The end may come while one of the two steps that can show a box has it open; rig and reader then stay
  // untouched.
  parts.config.LoadCfg();
  if (parts.ports.program.Ended()) return;
  parts.gps.PrepareLabels();
  form.ProgressBar1.maximum = kTopOfMeter;
  life.reader_loaded = true;
  parts.gps.LoadGps(true);
  if (parts.ports.program.Ended()) return;
  parts.table.DefaultCalibration(false);
  main_window.ShowDDEPanel();
  parts.panel.ApplySelection();
  if (form.mnuFT817.checked && PowerIsOn(form)) parts.rig.CatPowerOnOff(true);
  form.chkLock.checked = parts.state.settings.DialLock;
  parts.rig.CatLock(parts.state.settings.DialLock);
  const std::string& frequency = parts.state.settings.FrequencyText;
  const bool has_unit = frequency.find(" kHz") != std::string::npos;
  form.txtFrequency.text = has_unit ? frequency : frequency + " kHz";
  form.lblFreq.caption = frequency;
  if (parts.state.settings.RigModel != kFT817 || PowerIsOn(form)) parts.panel.ApplyFrequency(frequency);
  parts.tx_site.FillAntennas();
}

void ShowInitialTexts(Parts& parts, MainWindow& main_window) {
  parts.forms.form1.caption = VersionedTitle;
  parts.rx_site.ShowPlaceholders();
  main_window.ShowToolTips();
  parts.s_meter.ShowRSSIStype();
  main_window.ShowDDEPanel();
  parts.panel.ShowStepAtStart();
  parts.tx_site.ShowSite();
}

}  // namespace

void StartUp(Parts& parts, MainWindow& main_window, Life& life, const StartOptions& options) {
  Form1& form = parts.forms.form1;
  const Settings& settings = parts.state.settings;
  if (parts.ports.program.AnotherInstanceRuns()) {
    parts.ports.dialogs.Show(VersionedTitle, "I am already running", Icon::kInformation);
    parts.ports.program.End();
    return;
  }
  if (options.night) parts.forms.night = true;
  form.cmdFT817OnOff.caption = kPowerOffCaption;
  InitApp(parts, main_window, life);
  if (parts.ports.program.Ended()) return;
  form.left = settings.MainLeft;
  form.top = settings.MainTop;
  parts.s_meter.ShowAtStart();
  ShowInitialTexts(parts, main_window);
  parts.log.StampStart();
  parts.log.AntennaTaken();
  parts.log.RecoverLastDrive();
  parts.log.ShowLoggingState(true);
  form.cmdLoggin.caption = kLoggingOffCaption;
  form.lblLoggingInto.tool_tip = "Program puts the logged data here ! .";
  form.lblLog.tool_tip = "The data for the logfile.";
  parts.intervals.ApplyInterval();
  form.mnuAverageRSSI.checked = settings.AverageRSSI;
  form.visible = true;
  parts.intervals.ApplyAveraging();
  if (parts.ports.program.Ended()) return;
  life.started = true;
  form.tmrMain.Start();
  form.tmrLamps.Start();
}

void ApplyOptions(Form1& form, const StartOptions& options) {
  if (options.start_logging) Run(form.cmdLoggin.click);
  if (options.minimal) Run(form.mnuMinimalDisplay.click);
}

}  // namespace kestrum
