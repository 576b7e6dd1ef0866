#pragma once

#include "forms/control.h"

namespace kestrum {

// The calibration editor.
struct Form3 : Form {
  Handler load;  // builds the window's content; the window may stay hidden

  Frame frmCalibration{"Calibration RSSI-value."};
  Frame frmHelp{"Calibration values in memory now."};
  TextBox txtEdit{"60"};
  Label lbluV{" uV"};
  Label lblSraw1{"Digital S"};
  Label lblSraw;
  Label lblRecNbr;
  Label lblCalFrequency;
  Label lblSSelect;
  Label lblAllS2F;
  Label Label1;  // the three lists hold CR LF between their rows
  Label Label2;
  Label Label3;
  int selected_point = 0;  // 0 to 15: the row of the default list that the desktop marks
  Slider sldIndex{0, 255};
  Button cmdSup{"S &Up"};
  Button cmdSdown{"S &Down"};
  Button cmdSstore{"S-uV S&tore"};
  Button cmduVStore{"&uV-Store"};
  Button cmdStop{"Get &RSSI"};
  Button cmdSave{"Sa&ve..."};

  MenuItem mnuClearCalibration{"&Clear Calibration"};
  MenuItem mnuDefaultCalibration{"&Default Calibration"};
  MenuItem mnuLoadConf1{"&Load Calibration1"};
  MenuItem mnuLoadConf2{"L&oad Calibration2"};
  MenuItem mnuLoad{"Lo&ad Calibration..."};
  MenuItem mnuSave1{"S&ave Calibration1"};
  MenuItem mnuSave2{"&Save Calibration2"};
  MenuItem mnuSaveAs{"Save as Calibration ..."};
  MenuItem mnuAbout{"A&bout"};
};

}  // namespace kestrum
