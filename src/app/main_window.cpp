#include "app/main_window.h"

#include "app/application.h"
#include "position/mapping_program.h"
#include "ui/about.h"

namespace kestrum {

MainWindow::MainWindow(Application& application) : application_(application) {}

void MainWindow::Wire() {
  Application& app = application_;
  Form1& form = app.forms.form1;
  form.activate = [this] { Activate(); };
  form.close = [&app] { app.ExitApp(); };
  form.key_down = [this](Key key) { return KeyDown(key); };

  form.mnuSavecfg.click = [&app] { app.config.mnuSavecfg_Click(); };
  form.mnuDefaultCfg.click = [&app] { app.config.mnuDefaultCfg_Click(); };
  form.mnuDeleteLogKML.status_tip = "Has no function: delete log files yourself in the program's folder.";
  form.mnuSaveLogfile.click = [&app] { app.log.mnuSaveLogfile_Click(); };
  form.mnuSHowDDE.click = [this] { mnuSHowDDE_Click(); };
  form.mnuOrvandi.click = [&app] { ShowOrvandi(app.forms.form1, app.ports()); };
  form.mnuExit.click = [&app] { app.ExitApp(); };
  form.mnuTiming.click = [&app] { app.timing.Open(); };
  form.mnuCalibration.click = [&app] { app.editor.Open(); };
  const auto show_info = [&app](int request) {
    app.state.InfoRequest = request;
    app.info.Open();
  };
  form.mnuInfo.click = [show_info] { show_info(1); };
  form.mnuPower.click = [show_info] { show_info(2); };
  form.mnuShortCuts.click = [&app] { ShowShortCuts(app.ports()); };
  form.mnuAbout.click = [&app] { ShowAbout(app.ports()); };
}

bool MainWindow::KeyDown(Key key) {
  Form1& form = application_.forms.form1;
  switch (key) {
    case Key::kF1:
      Run(form.mnuInfo.click);
      return true;
    case Key::kF2:
      application_.forms.night = !application_.forms.night;
      return true;
    case Key::kF3:
      Run(form.cmdLoggin.click);
      return true;
    case Key::kF5:
      Run(form.mnuMinimalDisplay.click);
      return true;
    case Key::kAltF4:
      application_.ExitApp();
      return true;
    default:
      return false;
  }
}

void MainWindow::Activate() {
  if (application_.state.InfoRequest == 1 && !application_.forms.form2.visible) application_.info.Open();
}

void MainWindow::mnuSHowDDE_Click() {
  bool& show = application_.state.settings.ShowDDE;
  show = !show;
  ShowDDEPanel();
}

void MainWindow::ShowDDEPanel() {
  Form1& form = application_.forms.form1;
  const bool show = application_.state.settings.ShowDDE;
  form.mnuSHowDDE.checked = show;
  form.frmDDE.visible = show;
}

void MainWindow::ShowToolTips() {
  Form1& form = application_.forms.form1;
  const std::string degree(kDegree);
  form.lblTxLat.tool_tip = "Latitude from TX";
  form.lblTxLong.tool_tip = "Longitude from TX";
  form.lblTxHeight.tool_tip = "TX height in metres.";
  form.cmbTxAntenna.tool_tip = "Tx antenna description and RF power.";
  form.cmdGetTxFix.tool_tip = "Push me to set the TX site Latitude and longitude from GPS.";
  form.lblRxLat.tool_tip = "Latitude from RX.";
  form.lblRxLong.tool_tip = "Longitude from RX.";
  form.lblRxDist.tool_tip = "Distance to TX site in km.";
  form.lblRxBearing.tool_tip = "Bearing in " + degree + " to TX site from RX site relative to North.";
  form.lblRxHeight.tool_tip = "RX altitude in metres.";
  form.lblRxVal.tool_tip = "GPS RX Ok.";
  form.lblPelorus.tool_tip = "Relative heading to TX site. Front of the car is 0" + degree;
  form.lblOpticalDistance.tool_tip = "Maximal Optical distance.";
  form.lblFreq.tool_tip = "Frequency where the set is recieving.";
  form.lblCatCmd.tool_tip = "Cmd's  send or recieved to the tranceiver";
  form.lblCatCount.tool_tip = "Measurements in buffer now.";
  form.chkBeep.tool_tip = "If checked then I beep every Timer fetch.";
  form.chkLock.tool_tip = "Lock dial knob of Cat controlled rig.";
  form.cmdFT817OnOff.tool_tip = "Switch FT817 On/Off.";
  form.txtFrequency.tool_tip = "Type the frequency you want to set the tranceiver on. ";
}

}  // namespace kestrum
