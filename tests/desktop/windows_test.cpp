#include <QAccessible>
#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>

#include "desktop/desktop_fixture.h"
#include "desktop/widgets/readout.h"

namespace kestrum::test {
namespace {

class WindowsTest : public BoundForms {};

TEST_F(WindowsTest, EveryControlOfTheMainWindowIsThereByName) {
  const char* const names[] = {"StatusBar1",
                               "frmCatControl",
                               "chkLock",
                               "chkBeep",
                               "sldSquelch",
                               "lblSquelch",
                               "sldkHzSteps",
                               "ProgressBar1",
                               "cmdFT817OnOff",
                               "cmdLoggin",
                               "optUsb",
                               "optLsb",
                               "optCwNar",
                               "OptCwWide",
                               "OptAmNar",
                               "OptAmWide",
                               "OptFm",
                               "cmdUp",
                               "cmdDown",
                               "txtFrequency",
                               "cmdSetFreq",
                               "lblCatCount",
                               "lblCatComment",
                               "lblCatCmd",
                               "lblFreq",
                               "lblRSSI",
                               "lblFieldStrenght",
                               "lblPrompt",
                               "frmRxSite",
                               "Picture1",
                               "lblOpticalDistance",
                               "lblPelorus",
                               "lblTextBearing",
                               "lblRxVal",
                               "lblRxBearing",
                               "lblRxHeight",
                               "lblRxDist",
                               "lblRxLong",
                               "lblRxLat",
                               "frmTxSite",
                               "cmbTxAntenna",
                               "cmdGetTxFix",
                               "lblTxHeight",
                               "lblTxLong",
                               "lblTxLat",
                               "lblDDELat",
                               "lblDDELong",
                               "lblDDEVal",
                               "lblDDECompas",
                               "lblDDEHeight",
                               "lblDDESpeed",
                               "lblLoggingInto",
                               "lblLog",
                               "lblIntervalHeading",
                               "lblInterval",
                               "lblStatusCaption",
                               "frmDDE"};
  for (const char* name : names) {
    EXPECT_NE(Find<QWidget>(QStringLiteral("Form1"), QLatin1String(name)), nullptr) << name;
  }
}

TEST_F(WindowsTest, TheMenuTreeStandsInItsOrder) {
  struct Branch {
    const char* caption;
    std::vector<const char*> lines;
  };
  const Branch expected[] = {
      {"&Files",
       {"&SaveConfig", "D&efaultConfig", "&Delete log and kml files ", "", "S&aveLogfile...", "S&howDDE", "",
        "&Default Calibration", "&Load Calibration1", "L&oad Calibration2", "Lo&ad Calibration...", "",
        "Show &Orvandi", "&Exit    Alt F4"}},
      {"&Edit", {"&Timing...", "AverageRSSI", "", "TxLatLong...", "Tx&LatLong from GPS"}},
      {"&Rig + Comport",
       {"&FT817", "FT8&40", "FT84&7", "F&T857", "FT8&97", "", "&Com1", "C&om2", "Co&m3", "Com&4", "Com&5",
        "Com&6", "&Baud"}},
      {"&Calibration...", {}},
      {"&Miniimal", {"&Minimal Display (F5)"}},
      {"&Info", {"I&nfo", "&ShortCuts", "&Power", "&About"}}};
  auto* window = qobject_cast<QMainWindow*>(Window(QStringLiteral("Form1")));
  const QList<QAction*> bar = window->menuBar()->actions();
  ASSERT_EQ(bar.size(), std::ssize(expected));
  for (int i = 0; i < bar.size(); ++i) {
    EXPECT_EQ(bar[i]->text().toStdString(), expected[i].caption);
    std::vector<std::string> lines;
    if (bar[i]->menu() != nullptr) {
      for (const QAction* line : bar[i]->menu()->actions()) {
        EXPECT_FALSE(line->objectName().isEmpty());
        EXPECT_TRUE(line->shortcut().isEmpty()) << "keys come from the form alone";
        lines.push_back(line->isSeparator() ? "" : line->text().toStdString());
      }
    }
    EXPECT_EQ(lines, std::vector<std::string>(expected[i].lines.begin(), expected[i].lines.end()));
  }
}

TEST_F(WindowsTest, TheControlsOfTheOtherWindowsAreThereByName) {
  const std::pair<const char*, std::vector<const char*>> expected[] = {
      {"Form2", {"Text1"}},
      {"Form3",
       {"frmCalibration",  "frmHelp",    "txtEdit",   "lbluV",      "lblSraw1", "lblSraw", "lblRecNbr",
        "lblCalFrequency", "lblSSelect", "lblAllS2F", "Label1",     "Label2",   "Label3",  "sldIndex",
        "cmdSup",          "cmdSdown",   "cmdSstore", "cmduVStore", "cmdStop",  "cmdSave"}},
      {"Form4",
       {"Frame1", "Text1", "Label1", "Frame2", "Text2", "Label2", "Frame3", "Option1", "Option2", "cmdOk"}},
      {"Form5",
       {"Frame1", "Command1", "ProgressBar1", "Label1_0", "Label1_1", "Label1_2", "Label1_3", "Label1_4",
        "Picture1"}}};
  for (const auto& [window, names] : expected) {
    for (const char* name : names) {
      EXPECT_NE(Find<QWidget>(QLatin1String(window), QLatin1String(name)), nullptr) << window << " " << name;
    }
  }
  for (const char* name : {"mnuClearCalibration", "mnuDefaultCalibration", "mnuLoadConf1", "mnuLoadConf2",
                           "mnuLoad", "mnuSave1", "mnuSave2", "mnuSaveAs", "mnuAbout"}) {
    EXPECT_NE(Find<QAction>(QStringLiteral("Form3"), QLatin1String(name)), nullptr) << name;
  }
}

TEST_F(WindowsTest, EveryInputHasAnAccessibleName) {
  for (const char* window : {"Form1", "Form3", "Form4", "Form5"}) {
    for (auto* widget : Window(QLatin1String(window))->findChildren<QWidget*>()) {
      const bool is_control = !widget->objectName().isEmpty() && !widget->objectName().startsWith("qt_") &&
                              widget->focusPolicy() != Qt::NoFocus;
      const QAccessibleInterface* const spoken = QAccessible::queryAccessibleInterface(widget);
      EXPECT_FALSE(is_control && spoken->text(QAccessible::Name).isEmpty())
          << qPrintable(widget->objectName());
    }
  }
}

TEST_F(WindowsTest, TheMainWindowFitsASmallScreenWithItsLongestTexts) {
  Form1& form = forms.form1;
  form.lblFieldStrenght.caption = "49999.99 mV/m";
  form.lblFreq.caption = "430000.25 kHz";
  form.lblRxDist.caption = "20003.9 km";
  form.lblRxLat.caption = "5157.123456N";
  form.lblRxLong.caption = "00532.123456E";
  form.lblRxHeight.caption = "12345.6 m";
  form.lblTxLat.caption = "5157.123456N";
  form.lblTxLong.caption = "00532.123456E";
  form.frmTxSite.caption = "No TxSite GPS rxed.";
  form.lblLog.caption = std::string(400, 'x');
  form.lblLoggingInto.text = "Data to /" + std::string(400, 'x');
  form.lblCatCmd.caption = "RX Cmd=  250, 250, 250, 250, [250]";
  form.StatusBar1[0].text = "Get RSSI every 9999 mSec";
  ShowForm1();
  const QSize least = Window(QStringLiteral("Form1"))->minimumSizeHint();
  EXPECT_LE(least.width(), 1024);
  EXPECT_LE(least.height(), 560) << "the title bar and a panel of the desktop take their share of 600";
}

// What files, readers and users can put into the windows, without end.
class EndlessTexts : public WindowsTest {
 protected:
  static std::string Endless() { return std::string(100000, 'W'); }

  void FillForm1() {
    Form1& form = forms.form1;
    for (Label* label : {&form.lblSquelch,    &form.lblCatCount,
                         &form.lblCatComment, &form.lblCatCmd,
                         &form.lblFreq,       &form.lblRSSI,
                         &form.lblPrompt,     &form.lblIntervalHeading,
                         &form.lblInterval,   &form.lblFieldStrenght,
                         &form.lblPelorus,    &form.lblStatusCaption,
                         &form.lblRxVal,      &form.lblOpticalDistance,
                         &form.lblRxHeight,   &form.lblTextBearing,
                         &form.lblRxDist,     &form.lblRxBearing,
                         &form.lblRxLat,      &form.lblRxLong,
                         &form.lblTxLong,     &form.lblTxHeight,
                         &form.lblLog,        &form.lblTxLat}) {
      label->caption = label->tool_tip = Endless();
    }
    for (LinkLabel* label : {&form.lblDDELat, &form.lblDDELong, &form.lblDDEVal, &form.lblDDECompas,
                             &form.lblDDEHeight, &form.lblDDESpeed}) {
      label->caption = Endless();
    }
    for (StatusPanel& panel : form.StatusBar1) panel.text = panel.tool_tip = Endless();
    form.cmdFT817OnOff.caption = Endless();
    form.frmTxSite.caption = Endless();
    form.mnuBaud.caption = Endless();
    form.caption = Endless();
    form.cmbTxAntenna.items = {Endless()};
    form.cmbTxAntenna.text = form.txtFrequency.text = form.lblLoggingInto.text = Endless();
  }
  void FillTheOthers() {
    Form3& editor = forms.form3;
    for (Label* label :
         {&editor.lbluV, &editor.lblSraw1, &editor.lblSraw, &editor.lblRecNbr, &editor.lblCalFrequency,
          &editor.lblSSelect, &editor.lblAllS2F, &editor.Label1, &editor.Label2, &editor.Label3}) {
      label->caption = Endless();
    }
    editor.txtEdit.text = editor.frmHelp.caption = editor.frmCalibration.caption = Endless();
    Form4& timing = forms.form4;
    timing.Label1.caption = timing.Label2.caption = timing.Text1.text = timing.Text2.text = Endless();
    for (Label& label : forms.form5.Label1) label.caption = Endless();
    forms.form5.Frame1.caption = Endless();
  }
};

TEST_F(EndlessTexts, NeverMakeAWindowLargerThanTheScreen) {
  FillForm1();
  FillTheOthers();
  for (Form* form : {static_cast<Form*>(&forms.form1), static_cast<Form*>(&forms.form3),
                     static_cast<Form*>(&forms.form4), static_cast<Form*>(&forms.form5)}) {
    form->visible = true;
  }
  binder.Sync();
  QApplication::processEvents();
  constexpr QSize kScreen(1920, 1080);
  for (const char* name : {"Form1", "Form3", "Form4", "Form5"}) {
    const QWidget* window = Window(QLatin1String(name));
    EXPECT_LE(window->minimumSizeHint().width(), kScreen.width()) << name;
    EXPECT_LE(window->minimumSizeHint().height(), kScreen.height() * 9 / 10) << name;
    EXPECT_FALSE(const_cast<QWidget*>(window)->grab().isNull()) << name;
  }
  const QWidget* label = Find<TextLine>(QStringLiteral("Form1"), QStringLiteral("lblRxVal"));
  EXPECT_LT(label->toolTip().size(), 4000);
}

TEST_F(EndlessTexts, ALongToolTipIsBrokenIntoLines) {
  forms.form1.lblLog.tool_tip = "FT840 3630 kHz, " + std::string(300, 'a') + " <b>";
  binder.Sync();
  const QString tip = Find<TextLine>(QStringLiteral("Form1"), QStringLiteral("lblLog"))->toolTip();
  EXPECT_TRUE(tip.startsWith(QStringLiteral("<p style='white-space:pre-wrap'>FT840 3630 kHz, aaa")));
  EXPECT_TRUE(tip.endsWith(QStringLiteral(" &lt;b&gt;</p>")));
}

TEST_F(EndlessTexts, AnOrdinaryValueIsNotShortened) {
  Form1& form = forms.form1;
  form.lblRxLat.caption = "5157.123456N";
  form.lblRxHeight.caption = "12345.6 m";
  form.StatusBar1[0].text = "Get RSSI every 9999 mSec";
  ShowForm1();
  Window(QStringLiteral("Form1"))->resize(1024, 600);
  QApplication::processEvents();
  constexpr double kSmallest = 0.75;  // of its font, before a text is shortened
  for (const char* name : {"lblRxLat", "lblRxHeight", "lblTxLat", "lblInterval", "StatusBar1_0"}) {
    const auto* label = Find<TextLine>(QStringLiteral("Form1"), QLatin1String(name));
    EXPECT_LE(label->fontMetrics().horizontalAdvance(label->text()) * kSmallest,
              label->contentsRect().width())
        << name;
  }
}

TEST_F(EndlessTexts, WhatIsTypedHasAnEnd) {
  ShowForm1();
  forms.form4.visible = forms.form3.visible = true;
  binder.Sync();
  struct Row {
    const char* window;
    const char* box;
    int most;
  };
  for (const Row& row : {Row{"Form1", "txtFrequency", 72}, Row{"Form3", "txtEdit", 72},
                         Row{"Form4", "Text1", 72}, Row{"Form4", "Text2", 72}}) {
    auto* edit = Find<QLineEdit>(QLatin1String(row.window), QLatin1String(row.box));
    edit->selectAll();
    QTest::keyClicks(edit, QString(100, QLatin1Char('1')));
    EXPECT_EQ(edit->text().size(), row.most) << row.box;
  }
  EXPECT_EQ(forms.form1.txtFrequency.text.size(), 72U);
  auto* antenna = Find<QComboBox>(QStringLiteral("Form1"), QStringLiteral("cmbTxAntenna"));
  EXPECT_EQ(antenna->lineEdit()->maxLength(), 4096);
}

TEST_F(WindowsTest, AReadoutKeepsItsSizeWhateverTheSignal) {
  ShowForm1();
  struct Row {
    const char* name;
    Label& label;
    std::vector<const char*> texts;
  };
  Form1& form = forms.form1;
  const Row rows[] = {
      {"lblRSSI", form.lblRSSI, {"S0", "S8+", "S9", "S9 + 10dB", "S9 + 60dB"}},
      {"lblFieldStrenght", form.lblFieldStrenght, {"000.0 uV", "158.1 uV", "50000.0 uV", "20750.0 mV/m"}},
      {"lblRxDist", form.lblRxDist, {".5 km", "4.47 km", "20003.99 km"}},
      {"lblFreq", form.lblFreq, {" 3630 kHz", " 430000.25 kHz"}},
  };
  for (const QSize& size : {QSize(800, 480), QSize(1024, 560), QSize(1920, 1040)}) {
    Window(QStringLiteral("Form1"))->resize(size);
    QApplication::processEvents();
    for (const Row& row : rows) {
      auto* readout = Find<Readout>(QStringLiteral("Form1"), QLatin1String(row.name));
      const double pixels = readout->FontPixels();
      EXPECT_GE(pixels, 14) << row.name;
      for (const char* text : row.texts) {
        row.label.caption = text;
        binder.Sync();
        EXPECT_DOUBLE_EQ(readout->FontPixels(), pixels) << row.name << " " << text;
        EXPECT_LE(readout->TextWidth(readout->text()), readout->width()) << row.name << " " << text;
      }
    }
  }
}

TEST_F(WindowsTest, TheMainWindowFits800x480WithAnElevenPointFont) {
  QFont eleven = QApplication::font();
  const QFont usual = eleven;
  eleven.setPointSizeF(11);
  QApplication::setFont(eleven);
  {
    test::ScriptedProgram small_program;
    Binder small_binder(small_program);
    Forms small_forms;
    const Windows windows(small_forms, small_binder);
    small_forms.form1.sldSquelch.visible = true;
    small_binder.Sync();
    for (QWidget* top : QApplication::topLevelWidgets()) {
      if (top->objectName() != QStringLiteral("Form1") || top == Window(QStringLiteral("Form1"))) continue;
      EXPECT_LE(top->minimumSizeHint().width(), 800);
      EXPECT_LE(top->minimumSizeHint().height(), 480);
    }
  }
  QApplication::setFont(usual);
}

TEST_F(WindowsTest, TheMinimalDisplayGrowsWithItsWindow) {
  forms.form5.visible = true;
  const char* const texts[] = {"20003.99 km", "294\xB0NW", "12345.6 m", "430000.25 kHz",
                               "S9 + 10dB, 158.1 uV, 0.123 mV/m"};
  for (std::size_t i = 0; i < 5; ++i) forms.form5.Label1.at(i).caption = texts[i];
  forms.form5.Label1[0].caption = "012.3 km";
  binder.Sync();
  QWidget* window = Window(QStringLiteral("Form5"));
  const auto text_height = [&](const QSize& size) {
    window->resize(size);
    QApplication::processEvents();
    return Find<Readout>(QStringLiteral("Form5"), QStringLiteral("Label1_0"))->FontPixels();
  };
  const double small = text_height({480, 320});
  EXPECT_EQ(window->size(), QSize(480, 320)) << "it can be made that small";
  EXPECT_GE(small, 480.0 / 16);
  EXPECT_GT(text_height({960, 640}), small * 1.6);
  for (int i = 0; i < 4; ++i) {
    auto* readout = Find<Readout>(QStringLiteral("Form5"), QStringLiteral("Label1_%1").arg(i));
    EXPECT_LE(readout->TextWidth(readout->text()), readout->width()) << i;
  }
  EXPECT_EQ(Find<QWidget>(QStringLiteral("Form5"), QStringLiteral("Picture1"))->width(),
            Find<QWidget>(QStringLiteral("Form5"), QStringLiteral("Picture1"))->height());
}

}  // namespace
}  // namespace kestrum::test
