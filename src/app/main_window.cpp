#include "app/main_window.h"

#include <utility>

#include "position/mapping_program.h"
#include "ui/about.h"

namespace kestrum {

MainWindow::MainWindow(State& state, Forms& forms, const OwnPorts& ports, const Floors& floors, Handler exit)
    : state_(state), forms_(forms), ports_(ports), floors_(floors), exit_(std::move(exit)) {}

void MainWindow::Wire() {
  Form1& form = forms_.form1;
  form.activate = [this] { Activate(); };
  form.close = [this] { exit_(); };
  form.key_down = [this](Key key) { return KeyDown(key); };
  WireFileMenu();
  form.mnuTiming.click = [this] { floors_.timing.Open(); };
  form.mnuCalibration.click = [this] { floors_.editor.Open(); };
  form.mnuInfo.click = [this] { OpenInfo(1); };
  form.mnuPower.click = [this] { OpenInfo(2); };
  form.mnuShortCuts.click = [this] { ShowShortCuts(ports_); };
  form.mnuAbout.click = [this] { ShowAbout(ports_); };
}

void MainWindow::WireFileMenu() {
  Form1& form = forms_.form1;
  form.mnuSavecfg.click = [this] { floors_.config.mnuSavecfg_Click(); };
  form.mnuDefaultCfg.click = [this] { floors_.config.mnuDefaultCfg_Click(); };
  form.mnuDeleteLogKML.status_tip = "Has no function: delete log files yourself in the program's folder.";
  form.mnuSaveLogfile.click = [this] { floors_.log.mnuSaveLogfile_Click(); };
  form.mnuSHowDDE.click = [this] { mnuSHowDDE_Click(); };
  form.mnuOrvandi.click = [this] { ShowOrvandi(forms_.form1, ports_); };
  form.mnuExit.click = [this] { exit_(); };
}

void MainWindow::OpenInfo(int request) {
  state_.InfoRequest = request;
  floors_.info.Open();
}

bool MainWindow::KeyDown(Key key) {
  Form1& form = forms_.form1;
  switch (key) {
    case Key::kF1:
      Run(form.mnuInfo.click);
      return true;
    case Key::kF2:
      forms_.night = !forms_.night;
      return true;
    case Key::kF3:
      Run(form.cmdLoggin.click);
      return true;
    case Key::kF4:
      Run(form.lblSound.click);
      return true;
    case Key::kF5:
      Run(form.mnuMinimalDisplay.click);
      return true;
    case Key::kAltF4:
      exit_();
      return true;
    default:
      return false;
  }
}

void MainWindow::Activate() {
  if (state_.InfoRequest == 1 && !forms_.form2.visible) floors_.info.Open();
}

void MainWindow::mnuSHowDDE_Click() {
  bool& show = state_.settings.ShowDDE;
  show = !show;
  ShowDDEPanel();
}

void MainWindow::ShowDDEPanel() {
  Form1& form = forms_.form1;
  const bool show = state_.settings.ShowDDE;
  form.mnuSHowDDE.checked = show;
  form.frmDDE.visible = show;
}

void MainWindow::ShowMenuToolTips() {
  Form1& form = forms_.form1;
  form.mnuSavecfg.tool_tip = "Saves the settings now; the end of the program does so too.";
  form.mnuDefaultCfg.tool_tip = "Puts the factory settings in place and ends the program.";
  form.mnuSaveLogfile.tool_tip = "Names the log file and writes what is in the buffer into it.";
  form.mnuSHowDDE.tool_tip = "The raw fields of the GPS reader: shown or hidden.";
  form.mnuDefaultCalibration.tool_tip = "The built-in table: S9 is 50 uV, above 30 MHz 5 uV.";
  form.mnuLoadConfig1.tool_tip = "Takes the table from Calibration1.cfg.";
  form.mnuLoadConfig2.tool_tip = "Takes the table from Calibration2.cfg.";
  form.mnuLoad.tool_tip = "Takes the table from a file that you name.";
  form.mnuOrvandi.tool_tip = "Starts the mapping program, which shows logs.";
  form.mnuTiming.tool_tip = "How often, or after what distance, a record is made.";
  form.mnuAverageRSSI.tool_tip = "A record takes the mean of fast readings instead of a single one.";
  form.mnuTxLatLong.tool_tip = "Where the transmitter stands: typed.";
  form.mnuTxLatLongGps.tool_tip = "Where the transmitter stands: where the car is now.";
  form.mnuBaud.tool_tip = "Speed of the port: each press takes the next one. Choose the same in the set.";
  form.mnuMinimalDisplay.tool_tip = "Large figures for driving; starts logging.";
  form.mnuPower.tool_tip = "dBm and watts, and what receivers can hear.";
}

void MainWindow::ShowToolTips() {
  ShowMenuToolTips();
  Form1& form = forms_.form1;
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
  form.lblSound.tool_tip =
      "What is heard: nothing, trouble once, or a tone that follows the signal too. Press or F4 for the "
      "next.";
  form.cmdFT817OnOff.tool_tip = "Switch FT817 On/Off.";
  form.txtFrequency.tool_tip = "Type the frequency you want to set the tranceiver on. ";
}

}  // namespace kestrum
