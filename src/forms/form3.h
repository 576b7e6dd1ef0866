#pragma once

#include "forms/control.h"

namespace kestrum {

// The calibration editor.
struct Form3 : Form {
  Form3() : Form("Form3") {}

  Handler load;  // builds the window's content; the window may stay hidden

  Frame frmCalibration{"frmCalibration", "Calibration RSSI-value."};
  Frame frmHelp{"frmHelp", "Calibration values in memory now."};
  TextBox txtEdit{"txtEdit", "60"};
  Label lbluV{"lbluV", " uV"};
  Label lblSraw1{"lblSraw1", "Digital S"};
  Label lblSraw{"lblSraw"};
  Label lblRecNbr{"lblRecNbr"};
  Label lblCalFrequency{"lblCalFrequency"};
  Label lblSSelect{"lblSSelect"};
  Label lblAllS2F{"lblAllS2F"};
  Label Label1{"Label1"};  // the three lists hold CR LF between their rows
  Label Label2{"Label2"};
  Label Label3{"Label3"};
  Label lblNote{"lblNote"};  // what became of the last press of a store button, in one line
  int stored_line = -1;      // line of the table list that was stored last, to be marked; -1 for none
  int selected_point = 0;    // 0 to 15: the row of the default list that the desktop marks
  Slider sldIndex{"sldIndex", 0, 255};
  Button cmdSup{"cmdSup", "S &Up"};
  Button cmdSdown{"cmdSdown", "S &Down"};
  Button cmdSstore{"cmdSstore", "S-uV S&tore"};
  Button cmduVStore{"cmduVStore", "&uV-Store"};
  Button cmdStop{"cmdStop", "Get &RSSI"};
  Button cmdSave{"cmdSave", "Sa&ve..."};

  MenuItem mnuClearCalibration{"mnuClearCalibration", "&Clear Calibration"};
  MenuItem mnuDefaultCalibration{"mnuDefaultCalibration", "&Default Calibration"};
  MenuItem mnuLoadConf1{"mnuLoadConf1", "&Load Calibration1"};
  MenuItem mnuLoadConf2{"mnuLoadConf2", "L&oad Calibration2"};
  MenuItem mnuLoad{"mnuLoad", "Lo&ad Calibration..."};
  MenuItem mnuSave1{"mnuSave1", "S&ave Calibration1"};
  MenuItem mnuSave2{"mnuSave2", "&Save Calibration2"};
  MenuItem mnuSaveAs{"mnuSaveAs", "Save as Calibration ..."};
  MenuItem mnuAbout{"mnuAbout", "A&bout"};
};

}  // namespace kestrum
