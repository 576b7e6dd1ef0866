#pragma once

#include <array>
#include <string>
#include <vector>

#include "forms/control.h"
#include "forms/indicators.h"
#include "text/text.h"

namespace kestrum {

// The main window.
struct Form1 : Form {
  Timer tmrMain;
  Timer tmrAverageRSSI{300};
  Timer tmrLamps{1000};
  std::array<StatusPanel, 3> StatusBar1;

  // What a driver must know
  Lamp lmpLog;
  Lamp lmpGps;
  Lamp lmpRig;

  // Rig panel
  Frame frmCatControl{"CatControl"};
  CheckBox chkLock{"Lock"};
  CheckBox chkBeep{"Beep"};
  Slider sldSquelch{0, 255};
  Label lblSquelch{"Sql"};
  Slider sldkHzSteps{1, 100};
  ProgressBar ProgressBar1;
  StripChart chtSignal;
  Button cmdFT817OnOff{"&Off"};
  Button cmdLoggin{"Start&Log(F3)"};
  OptionButton optUsb{"Usb"};
  OptionButton optLsb{"Lsb"};
  OptionButton OptCwWide{"Cw"};
  OptionButton optCwNar{"CwN"};
  OptionButton OptAmWide{"Am"};
  OptionButton OptAmNar{"AmN"};
  OptionButton OptFm{"Fm"};
  Button cmdUp{">"};
  Button cmdDown{"<"};
  TextBox txtFrequency;
  Button cmdSetFreq{"&SetFrequency"};
  Label lblCatCount{"0"};
  Label lblCatComment{"Comment"};
  Label lblCatCmd{"Cmd="};
  Label lblFreq{"xxxxx.xx kHz"};
  Label lblRSSI;
  Label lblFieldStrenght;
  Label lblPrompt;
  Label lblIntervalHeading{"Interval in mSec"};
  Label lblInterval;
  Label lblStatusCaption;  // rig and port, calibration in use
  Label lblHint;           // why nothing is measured, or what start-up found

  // Receive site
  Frame frmRxSite{"RxSite"};
  CompassRose Picture1;
  Label lblOpticalDistance;
  Label lblPelorus;
  Label lblTextBearing;
  Label lblRxVal;
  Label lblRxBearing;
  Label lblRxHeight;
  Label lblRxDist;
  Label lblRxLong;
  Label lblRxLat;

  // Transmitter site
  Frame frmTxSite{"TxSite"};
  ComboBox cmbTxAntenna;
  Button cmdGetTxFix{"&GetTxLatLongNow"};
  Label lblTxHeight;
  Label lblTxLong;
  Label lblTxLat;

  // Raw fields of the GPS reader; a label that has received nothing shows its own name
  Frame frmDDE{"DDE"};
  LinkLabel lblDDELat{"lblDDELat"};
  LinkLabel lblDDELong{"lblDDELong"};
  LinkLabel lblDDEVal{"lblDDEVal"};
  LinkLabel lblDDECompas{"lblDDECompas"};
  LinkLabel lblDDEHeight{"lblDDEHeight"};
  LinkLabel lblDDESpeed{"lblDDESpeed"};

  // Logging
  TextBox lblLoggingInto;  // read only, a box so that its text can be selected and copied
  Label lblLog;

  // Menus
  MenuItem mnuFiles{"&Files"};
  MenuItem mnuSavecfg{"&SaveConfig"};
  MenuItem mnuDefaultCfg{"D&efaultConfig"};
  MenuItem mnuDeleteLogKML{"&Delete log and kml files "};
  MenuItem mnuStripe00{"-"};
  MenuItem mnuSaveLogfile{"S&aveLogfile..."};
  MenuItem mnuSHowDDE{"S&howDDE"};
  MenuItem mnuStripe0{"-"};
  MenuItem mnuDefaultCalibration{"&Default Calibration"};
  MenuItem mnuLoadConfig1{"&Load Calibration1"};
  MenuItem mnuLoadConfig2{"L&oad Calibration2"};
  MenuItem mnuLoad{"Lo&ad Calibration..."};
  MenuItem mnuStripe1{"-"};
  MenuItem mnuOrvandi{"Show &Orvandi"};
  MenuItem mnuExit{"&Exit    Alt F4"};
  MenuItem mnuEdit{"&Edit"};
  MenuItem mnuTiming{"&Timing..."};
  MenuItem mnuAverageRSSI{"AverageRSSI"};
  MenuItem mnuStrip2{"-"};
  MenuItem mnuTxLatLong{"TxLatLong..."};
  MenuItem mnuTxLatLongGps{"Tx&LatLong from GPS"};
  MenuItem mnuSets{"&Rig + Comport"};
  MenuItem mnuFT817{"&FT817"};
  MenuItem mnuFT840{"FT8&40"};
  MenuItem mnuFT847{"FT84&7"};
  MenuItem mnuFT857{"F&T857"};
  MenuItem mnuFT897{"FT8&97"};
  MenuItem mnustripe2{"-"};
  MenuItem mnuCom1{"&Com1"};
  MenuItem mnuCom2{"C&om2"};
  MenuItem mnuCom3{"Co&m3"};
  MenuItem mnuCom4{"Com&4"};
  MenuItem mnuCom5{"Com&5"};
  MenuItem mnuCom6{"Com&6"};
  MenuItem mnuBaud{"&Baud"};
  MenuItem mnuCalibration{"&Calibration..."};
  MenuItem mnuMinimized{"&Miniimal"};
  MenuItem mnuMinimalDisplay{"&Minimal Display (F5)"};
  MenuItem mnuInfos{"&Info"};
  MenuItem mnuInfo{"I&nfo"};
  MenuItem mnuShortCuts{"&ShortCuts"};
  MenuItem mnuPower{"&Power"};
  MenuItem mnuAbout{"&About"};
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

// One entry of a menu; a rule where the caption is "-".
struct MenuLine {
  std::string name;
  MenuItem* item = nullptr;
};

// A menu of the bar; without lines it is itself the item that is clicked.
struct MenuBranch {
  MenuLine head;
  std::vector<MenuLine> lines;
};

// The menu bar in its order.
std::vector<MenuBranch> MenuBar(Form1& form);

}  // namespace kestrum
