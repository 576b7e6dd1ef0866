#include <QApplication>
#include <cstdio>
#include <functional>

#include "desktop/forms/windows.h"
#include "position/needle.h"
#include "support/scripted_ports.h"

// Paints the windows with typical and with the longest texts into PNG files, without a display:
//   window_pictures FOLDER [--night] [--longest]
// QT_SCALE_FACTOR chooses the scale.
namespace {

using kestrum::Color;
using kestrum::Forms;

void FillForm1(Forms& forms, bool longest) {
  auto& form = forms.form1;
  form.caption = "Kestrum Auto field strenght logger V1.02";
  form.lblRSSI.caption = longest ? "S9+60dB" : "S9+10";
  form.lblFieldStrenght.caption = longest ? "49999.99 mV/m" : "158.1 uV";
  form.ProgressBar1.value = longest ? 255 : 148;
  form.lblFreq.caption = longest ? "430000.25 kHz" : " 3630 kHz";
  form.txtFrequency.text = longest ? "430000.25 kHz" : "3630 kHz";
  form.cmdUp.caption = longest ? "> 100" : "> 5";
  form.cmdDown.caption = longest ? " 100 <" : " 5 <";
  form.sldkHzSteps.value = 5;
  form.optLsb.checked = true;
  form.lblCatCount.caption = longest ? "100" : "42";
  form.lblCatCmd.caption = "RX Cmd=  250, 250, 250, 250, [250]";
  form.lblCatComment.caption = "Wrong CatCmd rx-ed!";
  form.lblPrompt.caption = " /";
  form.lblInterval.caption = longest ? "9999 mSec" : "1000 mSec";
  form.lblStatusCaption.caption = "Com1=9k6 FT840  Calibration: FT840, LSB, 3630 kHz";
  form.lblSquelch.back_color = longest ? Color::kGreen : Color::kRed;
  form.sldSquelch.visible = longest;
  form.ProgressBar1.height = longest ? 255 : 456;
  form.lblRxDist.caption = longest ? "20003.9 km" : "012.3 km";
  form.lblRxBearing.caption = "032\xB0";
  form.lblTextBearing.caption = "NW ";
  form.lblPelorus.caption = "045\xB0";
  form.Picture1.needle = 45;
  form.lblRxLat.caption = longest ? "5157.123456N" : "5157.00N";
  form.lblRxLong.caption = longest ? "00532.123456E" : "00532.00E";
  form.lblRxHeight.caption = longest ? "12345.6 m" : "12.4 m";
  form.lblRxVal.caption = longest ? "No GPS" : "GPS Ok";
  form.lblRxVal.back_color = longest ? Color::kWarning : Color::kSystem;
  form.lblOpticalDistance.caption = "016.3 km";
  form.lblTxLat.caption = longest ? "5157.123456N" : "5157.00N";
  form.lblTxLong.caption = longest ? "00532.123456E" : "00532.00E";
  form.lblTxHeight.caption = "20 m";
  form.frmTxSite.back_color = longest ? Color::kRed : Color::kSystem;
  form.frmTxSite.caption = longest ? "No TxSite GPS rxed." : "TxSite";
  form.cmdGetTxFix.enabled = longest;
  form.cmbTxAntenna.text = "Antenna1, PWR 10W";
  form.lblDDELat.caption = "5157.0000N";
  form.lblDDELong.caption = "00532.0000E";
  form.lblDDEVal.caption = "A";
  form.lblLoggingInto.text = "Data to /home/driver/Field strength logs/2026/kestrum/RSSI-GPS.log";
  form.lblLog.caption =
      "14:03:09, GPS Ok, 5157.1234N, 00532.1234E, 012.3 km, 12345.6 m, 032\xB0, 148, S9+10, 158.1 uV, "
      "0.123 mV/m";
  form.StatusBar1[0].text = "Get RSSI every 1000 mSec";
  form.StatusBar1[1].text = "Not Averaged";
  form.StatusBar1[2].text = "Com1=9k6 FT840 ";
  form.mnuFT840.checked = form.mnuCom1.checked = true;
  form.visible = true;
}

void FillOthers(Forms& forms) {
  forms.form2.caption = "Kestrum.txt ( 9.216 kb).";
  for (int i = 0; i < 40; ++i)
    forms.form2.Text1.text += "     A line of the information text, number " + std::to_string(i) + "\r\n";
  auto& editor = forms.form3;
  editor.caption = "Kestrum Auto field strenght logger ";
  editor.lblSraw.caption = "148";
  editor.lblSraw.back_color = Color::kBlue;
  editor.lblRecNbr.caption = "148";
  editor.lblCalFrequency.caption = "3630 kHz";
  editor.lblSSelect.caption = "S4";
  editor.lblAllS2F.caption = "148>>   S9+10, 158.1 uV, 0.123 mV/m";
  editor.sldIndex.value = 148;
  editor.Label1.caption = "Default values\r\n-----------------------";
  editor.Label2.caption = "Table values\r\n-----------------------";
  for (int i = 0; i < 16; ++i) {
    editor.Label1.caption += "\r\n" + std::to_string(i * 16) + "   S" + std::to_string(i) + "  15800.5 uV";
    editor.Label2.caption += "\r\n" + std::to_string(i * 16) + "   S" + std::to_string(i) + "  15800.5 uV";
  }
  editor.Label3.caption = "Other values\r\n--------------------";
  editor.selected_point = 4;
  forms.form4.caption = "Kestrum Auto field strenght logger ";
  forms.form4.Text1.text = "1000";
  forms.form4.Text2.text = "Error";
  forms.form4.Label1.caption = "1000 mSec";
  forms.form4.Option1.checked = true;
  auto& minimal = forms.form5;
  minimal.caption = "Kestrum Auto field strenght logger ";
  minimal.Label1[0].caption = "012.3 km";
  minimal.Label1[1].caption = "032\xB0NE ";
  minimal.Label1[2].caption = "12.4 m";
  minimal.Label1[3].caption = "3630 kHz";
  minimal.Label1[4].caption = "S9+10, 158.1 uV, 0.123 mV/m";
  minimal.ProgressBar1.value = 148;
  minimal.Picture1.resized = [&minimal] {
    minimal.Picture1.shapes = kestrum::NeedleShapes(45, minimal.Picture1.width, minimal.Picture1.height);
  };
  forms.form2.visible = forms.form3.visible = forms.form4.visible = forms.form5.visible = true;
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication toolkit(argc, argv);
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() < 2) {
    std::fputs("Usage: window_pictures FOLDER [--night] [--longest]\n", stderr);
    return 2;
  }
  kestrum::test::ScriptedProgram program;
  kestrum::Binder binder(program);
  Forms forms;
  forms.night = arguments.contains(QStringLiteral("--night"));
  const kestrum::Windows windows(forms, binder);
  FillForm1(forms, arguments.contains(QStringLiteral("--longest")));
  FillOthers(forms);
  binder.Sync();
  QApplication::processEvents();
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (!window->objectName().startsWith(QStringLiteral("Form"))) continue;
    const QSize least = window->minimumSizeHint();
    std::printf("%s: %d x %d, at least %d x %d\n", qPrintable(window->objectName()), window->width(),
                window->height(), least.width(), least.height());
    if (window->objectName() == QStringLiteral("Form1")) window->resize(1024, 560);
    if (window->objectName() == QStringLiteral("Form5")) window->resize(480, 320);
    QApplication::processEvents();
    if (!window->grab().save(arguments.at(1) + QLatin1Char('/') + window->objectName() +
                             QStringLiteral(".png"))) {
      return 1;
    }
  }
  return 0;
}
