#include <QAccessible>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QSlider>
#include <QTextBlock>

#include "desktop/desktop_fixture.h"
#include "desktop/widgets/list_box.h"
#include "desktop/widgets/meter_bar.h"
#include "desktop/widgets/pelorus_widget.h"
#include "desktop/widgets/picture_widget.h"
#include "desktop/widgets/readout.h"
#include "support_process/qt_waits.h"

namespace kestrum::test {
namespace {

// What a screen reader is told beside the name.
QString Described(QWidget* widget) {
  return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Description);
}

class BinderTest : public BoundForms {
 protected:
  template <class T>
  T* On1(const char* name) {
    return Find<T>(QStringLiteral("Form1"), QLatin1String(name));
  }
};

TEST_F(BinderTest, ALabelFollowsItsCaptionToolTipAndStates) {
  auto* label = On1<TextLine>("lblRxVal");
  forms.form1.lblRxVal.caption = "<b>GPS</b> & Ok\xB0";
  forms.form1.lblRxVal.tool_tip = "GPS RX Ok.";
  forms.form1.lblRxVal.enabled = false;
  forms.form1.lblRxVal.visible = false;
  binder.Sync();
  EXPECT_EQ(label->text(), QStringLiteral(u"<b>GPS</b> & Ok\u00B0"));
  EXPECT_EQ(label->toolTip(), QStringLiteral("GPS RX Ok."));
  EXPECT_EQ(Described(label), QStringLiteral("GPS RX Ok."));
  EXPECT_FALSE(label->isEnabled());
  EXPECT_TRUE(label->isHidden());
}

TEST_F(BinderTest, AToolTipThatLooksLikeMarkUpStaysPlain) {
  forms.form3.cmduVStore.tool_tip = "<b>Store";
  binder.Sync();
  auto* button = Find<QPushButton>(QStringLiteral("Form3"), QStringLiteral("cmduVStore"));
  EXPECT_TRUE(button->toolTip().contains(QStringLiteral("&lt;b&gt;Store")));
  EXPECT_EQ(Described(button), QStringLiteral("<b>Store"));
  forms.form3.cmduVStore.tool_tip = "Store";
  binder.Sync();
  EXPECT_EQ(button->toolTip(), QStringLiteral("Store"));
  EXPECT_EQ(Described(button), QStringLiteral("Store"));
}

TEST_F(BinderTest, AClickOnALabelReachesItsHandlerAndIsPainted) {
  ShowForm1();
  Form1& form = forms.form1;
  form.lblFieldStrenght.click = [&form] { form.lblFieldStrenght.caption = "026.7 uV"; };
  auto* label = On1<TextLine>("lblFieldStrenght");
  QTest::mouseClick(label, Qt::LeftButton);
  EXPECT_EQ(label->text(), QStringLiteral("026.7 uV"));
}

TEST_F(BinderTest, ColoursBecomeAReadableBackgroundAndGoAgain) {
  auto* label = On1<TextLine>("lblRxVal");
  const auto contrast = [label] {
    const auto light = [](const QColor& color) {
      const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
      };
      return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
    };
    const double text = light(label->palette().color(QPalette::WindowText));
    const double ground = light(label->palette().color(QPalette::Window));
    return (std::max(text, ground) + 0.05) / (std::min(text, ground) + 0.05);
  };
  for (const Color color : {Color::kRed, Color::kGreen, Color::kBlue, Color::kWarning}) {
    forms.form1.lblRxVal.back_color = color;
    binder.Sync();
    EXPECT_TRUE(label->autoFillBackground());
    EXPECT_GE(contrast(), 4.5) << static_cast<int>(color);
  }
  forms.form1.lblRxVal.back_color = Color::kRed;
  binder.Sync();
  const QColor red = label->palette().color(QPalette::Window);
  EXPECT_GT(red.red(), 2 * red.green());
  forms.form1.lblRxVal.back_color = Color::kSystem;
  binder.Sync();
  EXPECT_FALSE(label->autoFillBackground());
}

TEST_F(BinderTest, AButtonShowsItsMnemonicAndClicks) {
  ShowForm1();
  int clicks = 0;
  forms.form1.cmdSetFreq.click = [&clicks] { ++clicks; };
  auto* button = On1<QPushButton>("cmdSetFreq");
  EXPECT_EQ(button->text(), QStringLiteral("&SetFrequency"));
  EXPECT_EQ(button->accessibleName(), QStringLiteral("SetFrequency"));
  QTest::mouseClick(button, Qt::LeftButton);
  EXPECT_EQ(clicks, 1);
  forms.form1.cmdSetFreq.enabled = false;
  binder.Sync();
  QTest::mouseClick(button, Qt::LeftButton);
  EXPECT_EQ(clicks, 1);
}

TEST_F(BinderTest, SettingAMemberCallsNoHandler) {
  int calls = 0;
  const Handler count = [&calls] { ++calls; };
  Form1& form = forms.form1;
  form.chkLock.click = form.optUsb.click = form.sldSquelch.change = form.txtFrequency.click = count;
  form.cmbTxAntenna.enter_pressed = form.mnuFT817.click = form.cmdLoggin.click = count;
  form.chkLock.checked = true;
  form.optUsb.checked = true;
  form.sldSquelch.value = 77;
  form.txtFrequency.text = "7050 kHz";
  form.cmbTxAntenna.items = {"a", "b"};
  form.cmbTxAntenna.text = "b";
  form.mnuFT817.checked = true;
  form.cmdLoggin.caption = "&Logging(F3)";
  binder.Sync();
  EXPECT_EQ(calls, 0);
  EXPECT_TRUE(On1<QCheckBox>("chkLock")->isChecked());
  EXPECT_TRUE(On1<QRadioButton>("optUsb")->isChecked());
  EXPECT_EQ(On1<QSlider>("sldSquelch")->value(), 77);
  EXPECT_EQ(On1<QLineEdit>("txtFrequency")->text(), QStringLiteral("7050 kHz"));
  EXPECT_EQ(On1<QComboBox>("cmbTxAntenna")->currentText(), QStringLiteral("b"));
  EXPECT_EQ(On1<QComboBox>("cmbTxAntenna")->count(), 2);
  EXPECT_TRUE(On1<QAction>("mnuFT817")->isChecked());
}

TEST_F(BinderTest, ACheckBoxWritesItsMemberBeforeTheHandlerRuns) {
  ShowForm1();
  bool seen = false;
  forms.form1.chkBeep.click = [&] { seen = forms.form1.chkBeep.checked; };
  On1<QCheckBox>("chkBeep")->click();
  EXPECT_TRUE(seen);
}

TEST_F(BinderTest, AHandlerThatPutsTheOldValueBackIsPainted) {
  ShowForm1();
  forms.form1.chkLock.click = [this] { forms.form1.chkLock.checked = false; };
  auto* box = On1<QCheckBox>("chkLock");
  box->click();
  EXPECT_FALSE(box->isChecked());
}

TEST_F(BinderTest, OfTheModesOnlyTheChosenOneIsSet) {
  ShowForm1();
  int clicks = 0;
  forms.form1.optLsb.click = [&clicks] { ++clicks; };
  On1<QRadioButton>("OptFm")->click();
  On1<QRadioButton>("optLsb")->click();
  EXPECT_EQ(clicks, 1);
  EXPECT_TRUE(forms.form1.optLsb.checked);
  EXPECT_FALSE(forms.form1.OptFm.checked);
  EXPECT_FALSE(On1<QRadioButton>("OptFm")->isChecked());
  forms.form1.optLsb.checked = false;
  binder.Sync();
  EXPECT_FALSE(On1<QRadioButton>("optLsb")->isChecked()) << "a group without a choice is possible";
}

TEST_F(BinderTest, ASliderTellsTheUsersMoves) {
  ShowForm1();
  int seen = -1;
  forms.form1.sldkHzSteps.change = [&] { seen = forms.form1.sldkHzSteps.value; };
  auto* slider = On1<QSlider>("sldkHzSteps");
  EXPECT_EQ(slider->minimum(), 1);
  EXPECT_EQ(slider->maximum(), 100);
  QTest::keyClick(slider, Qt::Key_Right);
  EXPECT_EQ(seen, 2);
}

TEST_F(BinderTest, ATextBoxTellsWhatIsTypedAndItsEnterKey) {
  ShowForm1();
  auto* edit = On1<QLineEdit>("txtFrequency");
  std::string at_enter;
  int releases = 0;
  forms.form1.txtFrequency.enter_released = [&] {
    at_enter = forms.form1.txtFrequency.text;
    ++releases;
  };
  edit->setFocus();
  QTest::keyClicks(edit, QStringLiteral("7050"));
  QTest::keyClick(edit, Qt::Key_Return);
  EXPECT_EQ(at_enter, "7050");
  QTest::keyRelease(edit, Qt::Key_Return);
  EXPECT_EQ(releases, 1) << "a release without its press belongs to a box that was closed by it";
}

TEST_F(BinderTest, ATextBoxSelectsWhatTheProgramAsksFor) {
  ShowForm1();
  auto* edit = On1<QLineEdit>("txtFrequency");
  forms.form1.txtFrequency.text = "3630 kHz";
  forms.form1.txtFrequency.focus = [this] { forms.form1.txtFrequency.SelectAll(); };
  binder.Sync();
  edit->setFocus();
  EXPECT_EQ(edit->selectedText(), QStringLiteral("3630 kHz"));
  edit->deselect();
  forms.form1.txtFrequency.Select(0, 4);
  binder.Sync();
  EXPECT_EQ(edit->selectedText(), QStringLiteral("3630"));
}

TEST_F(BinderTest, AClickIntoATextBoxReachesItsHandler) {
  ShowForm1();
  int clicks = 0;
  forms.form1.txtFrequency.click = [&clicks] { ++clicks; };
  QTest::mouseClick(On1<QLineEdit>("txtFrequency"), Qt::LeftButton);
  EXPECT_EQ(clicks, 1);
}

TEST_F(BinderTest, TheAntennaBoxConsumesEnterAndKeepsWhatIsTyped) {
  ShowForm1();
  auto* combo = On1<QComboBox>("cmbTxAntenna");
  forms.form1.cmbTxAntenna.items = {"Antenna1, PWR 10W"};
  forms.form1.cmbTxAntenna.text = "";
  binder.Sync();
  std::string at_enter;
  forms.form1.cmbTxAntenna.enter_pressed = [&] {
    at_enter = forms.form1.cmbTxAntenna.text;
    forms.form1.cmbTxAntenna.items.push_back(at_enter);
  };
  combo->setFocus();
  QTest::keyClicks(combo, QStringLiteral("Antenna1"));
  QTest::keyClick(combo, Qt::Key_Return);
  EXPECT_EQ(at_enter, "Antenna1");
  EXPECT_EQ(combo->count(), 2);
  EXPECT_EQ(combo->currentText(), QStringLiteral("Antenna1"));
  combo->setCurrentIndex(0);
  EXPECT_EQ(forms.form1.cmbTxAntenna.text, "Antenna1, PWR 10W");
}

TEST_F(BinderTest, AClickThatBringsTheFocusSelectsAndASecondOneSetsTheCursor) {
  ShowForm1();
  auto* edit = On1<QLineEdit>("txtFrequency");
  forms.form1.txtFrequency.text = "3630 kHz";
  forms.form1.txtFrequency.focus = [this] { forms.form1.txtFrequency.SelectAll(); };
  binder.Sync();
  On1<QPushButton>("cmdUp")->setFocus();
  const QPoint place(edit->width() - 5, edit->height() / 2);
  QTest::mousePress(edit, Qt::LeftButton, {}, place);
  QApplication::processEvents();
  EXPECT_EQ(edit->selectedText(), QStringLiteral("3630 kHz"));
  QTest::mouseRelease(edit, Qt::LeftButton, {}, place);
  QApplication::processEvents();
  EXPECT_EQ(edit->selectedText(), QStringLiteral("3630 kHz"));
  // A second click right away would be a double one.
  EXPECT_TRUE(process::StaysTrueWhileEventsRun(
      std::chrono::milliseconds(QApplication::doubleClickInterval() + 10),
      [edit] { return edit->selectedText() == QStringLiteral("3630 kHz"); }));
  QTest::mouseClick(edit, Qt::LeftButton, {}, place);
  QApplication::processEvents();
  EXPECT_EQ(edit->selectedText(), QString());
  EXPECT_EQ(edit->cursorPosition(), 8);
}

class AntennaBox : public BinderTest {
 protected:
  void SetUp() override {
    ShowForm1();
    box_.items = {"Antenna1, PWR 10W", "Yagi"};
    box_.text = "Antenna1, PWR 10W";
    box_.taken = [this] { taken_.push_back(box_.text); };
    binder.Sync();
    combo_ = On1<QComboBox>("cmbTxAntenna");
    combo_->setFocus();
  }
  void Type(const char* text) {
    combo_->lineEdit()->selectAll();
    QTest::keyClicks(combo_->lineEdit(), QLatin1String(text));
  }
  void Leave() { On1<QPushButton>("cmdUp")->setFocus(); }

  ComboBox& box_ = forms.form1.cmbTxAntenna;
  QComboBox* combo_ = nullptr;
  std::vector<std::string> taken_;
};

TEST_F(AntennaBox, EnterTakesTheTextOverOnce) {
  std::string at_enter;
  box_.enter_pressed = [&] { at_enter = box_.text; };
  Type("Whip");
  EXPECT_TRUE(taken_.empty());
  QTest::keyClick(combo_->lineEdit(), Qt::Key_Return);
  EXPECT_EQ(at_enter, "Whip");
  EXPECT_EQ(taken_, (std::vector<std::string>{"Whip"}));
  Leave();
  EXPECT_EQ(taken_.size(), 1U);
}

TEST_F(AntennaBox, LeavingItAfterTypingTakesTheTextOver) {
  Type("Whip");
  Leave();
  EXPECT_EQ(taken_, (std::vector<std::string>{"Whip"}));
  combo_->setFocus();
  Leave();
  EXPECT_EQ(taken_.size(), 1U) << "nothing was typed this time";
}

TEST_F(AntennaBox, AChoiceFromTheListTakesItsTextOver) {
  QTest::keyClick(combo_, Qt::Key_Down);
  EXPECT_EQ(taken_, (std::vector<std::string>{"Yagi"}));
  Leave();
  EXPECT_EQ(taken_.size(), 1U);
}

TEST_F(AntennaBox, WhatTheProgramWritesIsNotTaken) {
  box_.text = "Whip";
  binder.Sync();
  Leave();
  EXPECT_TRUE(taken_.empty());
}

TEST_F(BinderTest, ACheckMarkIsTheProgramsToTurn) {
  auto* action = On1<QAction>("mnuAverageRSSI");
  int clicks = 0;
  forms.form1.mnuAverageRSSI.click = [&clicks] { ++clicks; };
  action->trigger();
  EXPECT_EQ(clicks, 1);
  EXPECT_FALSE(action->isChecked());
  forms.form1.mnuAverageRSSI.checked = true;
  binder.Sync();
  EXPECT_TRUE(action->isChecked());
  action->trigger();
  EXPECT_TRUE(action->isChecked());
}

TEST_F(BinderTest, TheBarShowsValueStyleAndIsClicked) {
  ShowForm1();
  auto* bar = On1<MeterBar>("ProgressBar1");
  forms.form1.ProgressBar1.value = 128;
  binder.Sync();
  EXPECT_EQ(bar->value(), 128);
  const QImage segments = bar->grab().toImage();
  forms.form1.ProgressBar1.click = [this] { forms.form1.ProgressBar1.segments = false; };
  QTest::mouseClick(bar, Qt::LeftButton);
  EXPECT_FALSE(bar->Segments());
  EXPECT_NE(bar->grab().toImage(), segments) << "the two styles differ visibly";
}

TEST_F(BinderTest, TheBarIsLowerWhileAveraging) {
  auto* bar = On1<MeterBar>("ProgressBar1");
  forms.form1.ProgressBar1.height = 456;
  binder.Sync();
  const int full = bar->sizeHint().height();
  forms.form1.ProgressBar1.height = 255;
  binder.Sync();
  EXPECT_LT(bar->sizeHint().height(), full);
}

TEST_F(BinderTest, TheRoseShowsItsNeedle) {
  auto* rose = On1<PelorusWidget>("Picture1");
  EXPECT_EQ(rose->ShownNeedle(), std::nullopt);
  EXPECT_EQ(rose->accessibleName(), QStringLiteral("Needle, no direction"));
  for (const double angle : {45.0, 360.0, 0.0}) {
    forms.form1.Picture1.needle = angle;
    binder.Sync();
    EXPECT_EQ(rose->ShownNeedle(), angle);
  }
  EXPECT_EQ(rose->accessibleName(), QStringLiteral("Needle 0 degrees"));
  forms.form1.Picture1.needle.reset();
  binder.Sync();
  EXPECT_EQ(rose->ShownNeedle(), std::nullopt);
}

TEST_F(BinderTest, StatusPanelsShowTextAndToolTip) {
  forms.form1.StatusBar1[2].text = "Com1=9k6 FT840 ";
  forms.form1.StatusBar1[2].tool_tip = "/dev/ttyUSB0 is not there.";
  binder.Sync();
  EXPECT_EQ(On1<TextLine>("StatusBar1_2")->text(), QStringLiteral("Com1=9k6 FT840 "));
  EXPECT_EQ(On1<TextLine>("StatusBar1_2")->toolTip(), QStringLiteral("/dev/ttyUSB0 is not there."));
}

TEST_F(BinderTest, NothingReachesAProgramThatHasEnded) {
  ShowForm1();
  int calls = 0;
  forms.form1.cmdSetFreq.click = [&calls] { ++calls; };
  forms.form1.tmrMain.tick = [&calls] { ++calls; };
  forms.form1.tmrMain.interval_ms = 1;
  forms.form1.tmrMain.Start();
  binder.Sync();
  program.End();
  QTest::mouseClick(On1<QPushButton>("cmdSetFreq"), Qt::LeftButton);
  EXPECT_TRUE(
      process::StaysTrueWhileEventsRun(std::chrono::milliseconds(20), [&calls] { return calls == 0; }));
  forms.form1.lblLog.caption = "late";
  binder.Sync();
  EXPECT_NE(On1<TextLine>("lblLog")->text(), QStringLiteral("late"));
}

TEST_F(BinderTest, TheListMarksTheSelectedPoint) {
  forms.form3.Label1.caption =
      "Default values\r\n-----------------------\r\n0   S0  0 uV\r\n162   S9 + 10dB  158 uV\r\n200     60 uV";
  forms.form3.selected_point = 1;
  binder.Sync();
  auto* list = Find<ListBox>(QStringLiteral("Form3"), QStringLiteral("Label1"));
  EXPECT_EQ(list->toPlainText(),
            QStringLiteral(
                "Default values\n-----------------------\n0\tS0\t0 uV\n162\tS9 + 10dB\t158 uV\n200\t\t60 uV"))
      << "in columns";
  ASSERT_EQ(list->extraSelections().size(), 1);
  EXPECT_EQ(list->extraSelections().at(0).cursor.block().text(), QStringLiteral("162\tS9 + 10dB\t158 uV"));
}

TEST_F(BinderTest, ThePictureKeepsItsSizeInTwipsAndPaintsItsShapes) {
  forms.form5.visible = true;
  int resizes = 0;
  forms.form5.Picture1.resized = [&resizes] { ++resizes; };
  binder.Sync();
  QApplication::processEvents();
  auto* picture = Find<PictureWidget>(QStringLiteral("Form5"), QStringLiteral("Picture1"));
  EXPECT_GT(resizes, 0);
  EXPECT_EQ(forms.form5.Picture1.width, picture->width() * 15.0);
  EXPECT_EQ(forms.form5.Picture1.height, picture->height() * 15.0);
  Shape line;
  line.kind = Shape::Kind::kLine;
  line.y1 = line.y2 = forms.form5.Picture1.height / 2;
  line.x2 = forms.form5.Picture1.width;
  line.color = Color::kRed;
  forms.form5.Picture1.shapes = {line};
  binder.Sync();
  const QImage image = picture->grab().toImage();
  EXPECT_EQ(image.pixelColor(image.width() / 2, image.height() / 2), QColor(255, 0, 0));
}

}  // namespace
}  // namespace kestrum::test
