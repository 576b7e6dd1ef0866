#include "forms/form1.h"

namespace kestrum {

std::vector<MenuBranch> MenuBar(Form1& form) {
  return {
      {{"mnuFiles", &form.mnuFiles},
       {{"mnuSavecfg", &form.mnuSavecfg},
        {"mnuDefaultCfg", &form.mnuDefaultCfg},
        {"mnuDeleteLogKML", &form.mnuDeleteLogKML},
        {"mnuStripe00", &form.mnuStripe00},
        {"mnuSaveLogfile", &form.mnuSaveLogfile},
        {"mnuSHowDDE", &form.mnuSHowDDE},
        {"mnuStripe0", &form.mnuStripe0},
        {"mnuDefaultCalibration", &form.mnuDefaultCalibration},
        {"mnuLoadConfig1", &form.mnuLoadConfig1},
        {"mnuLoadConfig2", &form.mnuLoadConfig2},
        {"mnuLoad", &form.mnuLoad},
        {"mnuStripe1", &form.mnuStripe1},
        {"mnuOrvandi", &form.mnuOrvandi},
        {"mnuExit", &form.mnuExit}}},
      {{"mnuEdit", &form.mnuEdit},
       {{"mnuTiming", &form.mnuTiming},
        {"mnuAverageRSSI", &form.mnuAverageRSSI},
        {"mnuStrip2", &form.mnuStrip2},
        {"mnuTxLatLong", &form.mnuTxLatLong},
        {"mnuTxLatLongGps", &form.mnuTxLatLongGps}}},
      {{"mnuSets", &form.mnuSets},
       {{"mnuFT817", &form.mnuFT817},
        {"mnuFT840", &form.mnuFT840},
        {"mnuFT847", &form.mnuFT847},
        {"mnuFT857", &form.mnuFT857},
        {"mnuFT897", &form.mnuFT897},
        {"mnustripe2", &form.mnustripe2},
        {"mnuCom1", &form.mnuCom1},
        {"mnuCom2", &form.mnuCom2},
        {"mnuCom3", &form.mnuCom3},
        {"mnuCom4", &form.mnuCom4},
        {"mnuCom5", &form.mnuCom5},
        {"mnuCom6", &form.mnuCom6},
        {"mnuBaud", &form.mnuBaud}}},
      {{"mnuCalibration", &form.mnuCalibration}, {}},
      {{"mnuMinimized", &form.mnuMinimized}, {{"mnuMinimalDisplay", &form.mnuMinimalDisplay}}},
      {{"mnuInfos", &form.mnuInfos},
       {{"mnuInfo", &form.mnuInfo},
        {"mnuShortCuts", &form.mnuShortCuts},
        {"mnuPower", &form.mnuPower},
        {"mnuAbout", &form.mnuAbout}}},
  };
}

}  // namespace kestrum
