#include "forms/form1.h"

namespace kestrum {

std::vector<MenuBranch> MenuBar(Form1& form) {
  return {
      {form.mnuFiles,
       {form.mnuSavecfg, form.mnuDefaultCfg, form.mnuDeleteLogKML, form.mnuStripe00, form.mnuSaveLogfile,
        form.mnuSHowDDE, form.mnuStripe0, form.mnuDefaultCalibration, form.mnuLoadConfig1,
        form.mnuLoadConfig2, form.mnuLoad, form.mnuStripe1, form.mnuOrvandi, form.mnuExit}},
      {form.mnuEdit,
       {form.mnuTiming, form.mnuAverageRSSI, form.mnuStrip2, form.mnuTxLatLong, form.mnuTxLatLongGps}},
      {form.mnuSets,
       {form.mnuFT817, form.mnuFT840, form.mnuFT847, form.mnuFT857, form.mnuFT897, form.mnustripe2,
        form.mnuCom1, form.mnuCom2, form.mnuCom3, form.mnuCom4, form.mnuCom5, form.mnuCom6, form.mnuBaud}},
      {form.mnuCalibration, {}},
      {form.mnuMinimized, {form.mnuMinimalDisplay}},
      {form.mnuInfos, {form.mnuInfo, form.mnuShortCuts, form.mnuPower, form.mnuAbout}},
  };
}

}  // namespace kestrum
