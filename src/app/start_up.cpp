#include "app/application.h"
#include "config/app_title.h"

namespace kestrum {

void Application::Start(const StartOptions& options) {
  Form1& form = forms.form1;
  if (ports_.program.AnotherInstanceRuns()) {
    ports_.dialogs.Show(VersionedTitle, "I am already running", Icon::kInformation);
    ports_.program.End();
    return;
  }
  if (options.night) forms.night = true;
  form.cmdFT817OnOff.caption = kPowerOffCaption;
  InitApp();
  if (ports_.program.Ended()) return;
  form.left = state.settings.MainLeft;
  form.top = state.settings.MainTop;
  s_meter.ShowAtStart();
  ShowInitialTexts();
  log.StampStart();
  log.AntennaTaken();
  log.RecoverLastDrive();
  log.ShowLoggingState(true);
  form.cmdLoggin.caption = kLoggingOffCaption;
  form.lblLoggingInto.tool_tip = "Program puts the logged data here ! .";
  form.lblLog.tool_tip = "The data for the logfile.";
  timing.ApplyInterval();
  form.mnuAverageRSSI.checked = state.settings.AverageRSSI;
  form.visible = true;
  timing.ShowTimingLabels();
  if (ports_.program.Ended()) return;
  started_ = true;
  form.tmrMain.Start();
  form.tmrLamps.Start();
  cockpit.Look();
  if (options.start_logging) Run(form.cmdLoggin.click);
  if (options.minimal) Run(form.mnuMinimalDisplay.click);
}

void Application::InitApp() {
  Form1& form = forms.form1;
  state.settings.CalibrationFiles[0] = ports_.program.PathOf("\\Calibration1.cfg");
  state.settings.CalibrationFiles[1] = ports_.program.PathOf("\\Calibration2.cfg");
  // The end may come while one of the two steps that can show a box has it open; rig and reader then stay
  // untouched.
  config.LoadCfg();
  if (ports_.program.Ended()) return;
  gps.PrepareLabels();
  form.ProgressBar1.maximum = 255;
  reader_loaded_ = true;
  gps.LoadGps(true);
  if (ports_.program.Ended()) return;
  table.DefaultCalibration(false);
  main_window.ShowDDEPanel();
  panel.ApplySelection();
  if (form.mnuFT817.checked && PowerIsOn(form)) rig.CatPowerOnOff(true);
  form.chkLock.checked = state.settings.DialLock;
  rig.CatLock(state.settings.DialLock);
  const std::string& frequency = state.settings.FrequencyText;
  const bool has_unit = frequency.find(" kHz") != std::string::npos;
  form.txtFrequency.text = has_unit ? frequency : frequency + " kHz";
  form.lblFreq.caption = frequency;
  if (state.settings.RigModel != kFT817 || PowerIsOn(form)) panel.ApplyFrequency(frequency);
  tx_site.FillAntennas();
}

void Application::ShowInitialTexts() {
  forms.form1.caption = VersionedTitle;
  rx_site.ShowPlaceholders();
  main_window.ShowToolTips();
  s_meter.ShowRSSIStype();
  main_window.ShowDDEPanel();
  panel.ShowStepAtStart();
  tx_site.ShowSite();
}

}  // namespace kestrum
