#pragma once

#include <array>
#include <vector>

#include "forms/control.h"
#include "forms/indicators.h"
#include "text/text.h"

namespace kestrum {

// The main window.
struct Form1 : Form {
  Form1() : Form("Form1") {}

  Timer tmrMain;
  Timer tmrAverageRSSI{300};
  Timer tmrLamps{1000};
  std::array<StatusPanel, 3> StatusBar1{StatusPanel{"StatusBar1_0"}, StatusPanel{"StatusBar1_1"},
                                        StatusPanel{"StatusBar1_2"}};

  // What a driver must know
  Lamp lmpLog{"lmpLog"};
  Lamp lmpGps{"lmpGps"};
  Lamp lmpRig{"lmpRig"};

  // Rig panel
  Frame frmCatControl{"frmCatControl", "CatControl"};
  CheckBox chkLock{"chkLock", "Lock"};
  CheckBox chkBeep{"chkBeep", "Beep"};
  Slider sldSquelch{"sldSquelch", 0, 255};
  Label lblSquelch{"lblSquelch", "Sql"};
  Slider sldkHzSteps{"sldkHzSteps", 1, 100};
  ProgressBar ProgressBar1{"ProgressBar1"};
  StripChart chtSignal{"chtSignal"};
  Button cmdFT817OnOff{"cmdFT817OnOff", "&Off"};
  Button cmdLoggin{"cmdLoggin", "Start&Log(F3)"};
  OptionButton optUsb{"optUsb", "Usb"};
  OptionButton optLsb{"optLsb", "Lsb"};
  OptionButton OptCwWide{"OptCwWide", "Cw"};
  OptionButton optCwNar{"optCwNar", "CwN"};
  OptionButton OptAmWide{"OptAmWide", "Am"};
  OptionButton OptAmNar{"OptAmNar", "AmN"};
  OptionButton OptFm{"OptFm", "Fm"};
  Button cmdUp{"cmdUp", ">"};
  Button cmdDown{"cmdDown", "<"};
  TextBox txtFrequency{"txtFrequency"};
  Button cmdSetFreq{"cmdSetFreq", "&SetFrequency"};
  Label lblCatCount{"lblCatCount", "0"};
  Label lblCatComment{"lblCatComment", "Comment"};
  Label lblCatCmd{"lblCatCmd", "Cmd="};
  Label lblFreq{"lblFreq", "xxxxx.xx kHz"};
  Label lblRSSI{"lblRSSI"};
  Label lblFieldStrenght{"lblFieldStrenght"};
  Label lblPrompt{"lblPrompt"};
  Label lblIntervalHeading{"lblIntervalHeading", "Interval in mSec"};
  Label lblInterval{"lblInterval"};
  Label lblStatusCaption{"lblStatusCaption"};  // rig and port, calibration in use
  Label lblHint{"lblHint"};                    // why nothing is measured, or what start-up found
  Label lblSound{"lblSound"};                  // what is heard; a press takes the next

  // Receive site
  Frame frmRxSite{"frmRxSite", "RxSite"};
  CompassRose Picture1{"Picture1"};
  Label lblOpticalDistance{"lblOpticalDistance"};
  Label lblPelorus{"lblPelorus"};
  Label lblTextBearing{"lblTextBearing"};
  Label lblRxVal{"lblRxVal"};
  Label lblRxBearing{"lblRxBearing"};
  Label lblRxHeight{"lblRxHeight"};
  Label lblRxDist{"lblRxDist"};
  Label lblRxLong{"lblRxLong"};
  Label lblRxLat{"lblRxLat"};

  // Transmitter site
  Frame frmTxSite{"frmTxSite", "TxSite"};
  ComboBox cmbTxAntenna{"cmbTxAntenna"};
  Button cmdGetTxFix{"cmdGetTxFix", "&GetTxLatLongNow"};
  Label lblTxHeight{"lblTxHeight"};
  Label lblTxLong{"lblTxLong"};
  Label lblTxLat{"lblTxLat"};

  // Raw fields of the GPS reader; a label that has received nothing shows its own name
  Frame frmDDE{"frmDDE", "DDE"};
  LinkLabel lblDDELat{"lblDDELat", "lblDDELat"};
  LinkLabel lblDDELong{"lblDDELong", "lblDDELong"};
  LinkLabel lblDDEVal{"lblDDEVal", "lblDDEVal"};
  LinkLabel lblDDECompas{"lblDDECompas", "lblDDECompas"};
  LinkLabel lblDDEHeight{"lblDDEHeight", "lblDDEHeight"};
  LinkLabel lblDDESpeed{"lblDDESpeed", "lblDDESpeed"};

  // Logging
  TextBox lblLoggingInto{"lblLoggingInto"};  // read only, a box so that its text can be selected and copied
  Label lblLog{"lblLog"};

  // Menus
  MenuItem mnuFiles{"mnuFiles", "&Files"};
  MenuItem mnuSavecfg{"mnuSavecfg", "&SaveConfig"};
  MenuItem mnuDefaultCfg{"mnuDefaultCfg", "D&efaultConfig"};
  MenuItem mnuDeleteLogKML{"mnuDeleteLogKML", "&Delete log and kml files "};
  MenuRule mnuStripe00{"mnuStripe00"};
  MenuItem mnuSaveLogfile{"mnuSaveLogfile", "S&aveLogfile..."};
  MenuItem mnuSHowDDE{"mnuSHowDDE", "S&howDDE"};
  MenuRule mnuStripe0{"mnuStripe0"};
  MenuItem mnuDefaultCalibration{"mnuDefaultCalibration", "&Default Calibration"};
  MenuItem mnuLoadConfig1{"mnuLoadConfig1", "&Load Calibration1"};
  MenuItem mnuLoadConfig2{"mnuLoadConfig2", "L&oad Calibration2"};
  MenuItem mnuLoad{"mnuLoad", "Lo&ad Calibration..."};
  MenuRule mnuStripe1{"mnuStripe1"};
  MenuItem mnuOrvandi{"mnuOrvandi", "Show &Orvandi"};
  MenuItem mnuExit{"mnuExit", "&Exit    Alt F4"};
  MenuItem mnuEdit{"mnuEdit", "&Edit"};
  MenuItem mnuTiming{"mnuTiming", "&Timing..."};
  MenuItem mnuAverageRSSI{"mnuAverageRSSI", "AverageRSSI", Mark::kCheck};
  MenuRule mnuStrip2{"mnuStrip2"};
  MenuItem mnuTxLatLong{"mnuTxLatLong", "TxLatLong..."};
  MenuItem mnuTxLatLongGps{"mnuTxLatLongGps", "Tx&LatLong from GPS"};
  MenuItem mnuSets{"mnuSets", "&Rig + Comport"};
  MenuItem mnuFT817{"mnuFT817", "&FT817", Mark::kChoice};
  MenuItem mnuFT840{"mnuFT840", "FT8&40", Mark::kChoice};
  MenuItem mnuFT847{"mnuFT847", "FT84&7", Mark::kChoice};
  MenuItem mnuFT857{"mnuFT857", "F&T857", Mark::kChoice};
  MenuItem mnuFT897{"mnuFT897", "FT8&97", Mark::kChoice};
  MenuRule mnustripe2{"mnustripe2"};
  MenuItem mnuCom1{"mnuCom1", "&Com1", Mark::kChoice};
  MenuItem mnuCom2{"mnuCom2", "C&om2", Mark::kChoice};
  MenuItem mnuCom3{"mnuCom3", "Co&m3", Mark::kChoice};
  MenuItem mnuCom4{"mnuCom4", "Com&4", Mark::kChoice};
  MenuItem mnuCom5{"mnuCom5", "Com&5", Mark::kChoice};
  MenuItem mnuCom6{"mnuCom6", "Com&6", Mark::kChoice};
  MenuItem mnuBaud{"mnuBaud", "&Baud"};
  MenuItem mnuCalibration{"mnuCalibration", "&Calibration..."};
  MenuItem mnuMinimized{"mnuMinimized", "&Miniimal"};
  MenuItem mnuMinimalDisplay{"mnuMinimalDisplay", "&Minimal Display (F5)", Mark::kCheck};
  MenuItem mnuInfos{"mnuInfos", "&Info"};
  MenuItem mnuInfo{"mnuInfo", "I&nfo"};
  MenuItem mnuShortCuts{"mnuShortCuts", "&ShortCuts"};
  MenuItem mnuPower{"mnuPower", "&Power"};
  MenuItem mnuAbout{"mnuAbout", "&About"};
};

// Caption of cmdLoggin while logging is off and on: the state that its handler reads back.
inline constexpr const char* kLoggingOffCaption = "Start&Log(F3)";
inline constexpr const char* kLoggingOnCaption = "&Logging(F3)";

// Caption of cmdFT817OnOff: the power state of the set, read back without regard to letter case.
inline constexpr const char* kPowerOnCaption = "&On";
inline constexpr const char* kPowerOffCaption = "&Off";
inline bool PowerIsOff(const Form1& form) {
  return SameText(form.cmdFT817OnOff.caption, kPowerOffCaption);
}
inline bool PowerIsOn(const Form1& form) {
  return SameText(form.cmdFT817OnOff.caption, kPowerOnCaption);
}

// The option button of a receive mode 1 to 7 (USB, LSB, CW, CWN, AM, AMN, FM).
inline std::array<OptionButton*, 7> ModeButtons(Form1& form) {
  return {&form.optUsb,    &form.optLsb,   &form.OptCwWide, &form.optCwNar,
          &form.OptAmWide, &form.OptAmNar, &form.OptFm};
}
// The menu items of the rig models 1 to 5.
inline std::array<MenuItem*, 5> RigItems(Form1& form) {
  return {&form.mnuFT817, &form.mnuFT840, &form.mnuFT847, &form.mnuFT857, &form.mnuFT897};
}
// The menu items of the ports 1 to 6.
inline std::array<MenuItem*, 6> PortItems(Form1& form) {
  return {&form.mnuCom1, &form.mnuCom2, &form.mnuCom3, &form.mnuCom4, &form.mnuCom5, &form.mnuCom6};
}
// The labels of the GPS reader in the order in which they are linked.
inline std::array<LinkLabel*, 6> GpsLabels(Form1& form) {
  return {&form.lblDDELat,    &form.lblDDELong,   &form.lblDDEVal,
          &form.lblDDECompas, &form.lblDDEHeight, &form.lblDDESpeed};
}

// One line of a menu: an item, or a rule.
struct MenuLine {
  MenuLine(MenuItem& entry) : item(&entry) {}
  MenuLine(const MenuRule& line) : rule(&line) {}

  MenuItem* item = nullptr;
  const MenuRule* rule = nullptr;
};

// A menu of the bar; without lines it is itself the item that is clicked.
struct MenuBranch {
  MenuItem& head;
  std::vector<MenuLine> lines;
};

// The menu bar in its order.
std::vector<MenuBranch> MenuBar(Form1& form);

}  // namespace kestrum
