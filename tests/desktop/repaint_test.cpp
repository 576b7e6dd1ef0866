#include <QBackingStore>
#include <QImage>
#include <QPaintEvent>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <random>

#include "desktop/desktop_fixture.h"
#include "desktop/widgets/lamp_widget.h"
#include "desktop/widgets/readout.h"

// Only what has changed is painted. What then stands on the screen must be what a window painted as a whole
// shows.
namespace kestrum::test {
namespace {

// What the window has handed to the screen.
QImage OnScreen(const QWidget& window) {
  const QPaintDevice* pixels = window.backingStore()->paintDevice();
  return static_cast<const QImage*>(pixels)->convertToFormat(QImage::Format_RGB32);
}

// The largest difference of a colour between both, from 0 to 255; -1 when their sizes differ.
int Difference(const QImage& one, const QImage& other) {
  if (one.size() != other.size()) return -1;
  if (one == other) return 0;
  int most = 0;
  for (int y = 0; y < one.height(); ++y) {
    for (int x = 0; x < one.width(); ++x) {
      const QRgb a = one.pixel(x, y);
      const QRgb b = other.pixel(x, y);
      most = std::max({most, std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                       std::abs(qBlue(a) - qBlue(b))});
    }
  }
  return most;
}

class RepaintTest : public BoundForms {
 protected:
  RepaintTest() { QApplication::setCursorFlashTime(0); }

  void Paint() {
    binder.Sync();
    QApplication::processEvents();
  }
  int DifferenceOnScreen(QWidget* window) {
    return Difference(OnScreen(*window), window->grab().toImage().convertToFormat(QImage::Format_RGB32));
  }

  template <class T, std::size_t n>
  const T& One(const std::array<T, n>& choices) {
    return choices.at(Up(n - 1));
  }
  // 0 to `most`.
  std::size_t Up(std::size_t most) { return std::uniform_int_distribution<std::size_t>(0, most)(random_); }
  std::string Number() { return std::to_string(Up(Up(1) == 0 ? 99 : 20000)) + "." + std::to_string(Up(99)); }

  void ChangeForm1() {
    Form1& form = forms.form1;
    static const std::array<std::string, 6> s_texts = {"S9", "S8+", "S1", "S9 + 60dB", "S9 + 5dB", ""};
    static const std::array<std::string, 5> prompts = {" /", " -", " \\", "", " \xB5\xB0"};
    switch (Up(11)) {
      case 0:
        form.lblRSSI.caption = One(s_texts);
        break;
      case 1:
        form.lblFieldStrenght.caption = Number() + (Up(1) == 0 ? " uV" : " mV/m");
        break;
      case 2:
        form.lblLog.caption = "13:04:" + std::to_string(Up(59)) + ", GPS Ok, " + Number() + "N, " + Number() +
                              "\xB0, " + One(s_texts);
        break;
      case 3:
        form.lblPrompt.caption = One(prompts);
        break;
      case 4:
        form.lblCatCmd.caption = "RX Cmd= " + Number() + ", [247]" + std::string(Up(2) * 40, 'x');
        break;
      case 5:
        form.ProgressBar1.value = static_cast<int>(Up(255));
        break;
      case 6:
        form.ProgressBar1.peak = static_cast<int>(Up(256)) - 1;
        break;
      case 7:
        form.lmpLog.says.fill = static_cast<double>(Up(100)) / 100;
        form.lmpLog.says.detail = std::to_string(Up(99)) +
                                  " of 100, last written 13:04:" + std::to_string(Up(59)) +
                                  std::string(Up(1) * 20, '.');
        break;
      case 8:
        form.lmpGps.says.detail = std::to_string(Up(119)) + " s old";
        break;
      case 9:
        AddColumn(form.chtSignal);
        break;
      case 10:
        form.lblRxDist.caption = Number() + " km";
        break;
      default:
        form.lblRSSI.stale = form.ProgressBar1.stale = Up(3) == 0;
    }
  }
  // The last one grows, or a second has passed.
  void AddColumn(StripChart& chart) {
    if (chart.columns.empty()) chart.columns.assign(300, 30);
    if (Up(3) == 0) {
      chart.columns.erase(chart.columns.begin());
      chart.columns.push_back(static_cast<std::int16_t>(static_cast<int>(Up(120)) - 1));
    } else {
      chart.columns.back() = static_cast<std::int16_t>(Up(255));
    }
    ++chart.revision;
  }

 private:
  std::mt19937 random_{20261122};
};

TEST_F(RepaintTest, TheMainWindowShowsWhatAFreshOneWould) {
  constexpr int kSteps = 400;
  forms.form1.lmpLog.says = {LampState::kGood, "Logging", "38 of 100", 0.38, ""};
  forms.form1.lmpGps.says = {LampState::kGood, "GPS fix", "1 s old", 0, ""};
  forms.form1.ProgressBar1.marks = {{0, "0"}, {60, "5"}, {120, "9"}, {240, "+60"}};
  forms.form1.chtSignal.line = 120;
  ShowForm1();
  for (int step = 0; step < kSteps; ++step) {
    ChangeForm1();
    if (Up(2) == 0) ChangeForm1();
    Paint();
    ASSERT_EQ(DifferenceOnScreen(Window(QStringLiteral("Form1"))), 0) << "step " << step;
  }
}

TEST_F(RepaintTest, TheMinimalDisplayShowsWhatAFreshOneWould) {
  constexpr int kSteps = 100;
  Form5& form = forms.form5;
  form.visible = true;
  Paint();
  for (int step = 0; step < kSteps; ++step) {
    form.Label1[4].caption = "S" + std::to_string(Up(9)) + ", " + Number() + " uV, " + Number() + " mV/m";
    form.Label1[0].caption = Number() + " km";
    form.ProgressBar1.value = static_cast<int>(Up(255));
    form.lmpLog.says.detail = std::to_string(Up(99)) + " of 100";
    Paint();
    ASSERT_EQ(DifferenceOnScreen(Window(QStringLiteral("Form5"))), 0) << "step " << step;
  }
}

// How much of a widget is painted for a change, in pixels of its own.
class PaintedPart : public QObject {
 public:
  explicit PaintedPart(QWidget* widget) : QObject(widget) { widget->installEventFilter(this); }
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() == QEvent::Paint) part |= static_cast<QPaintEvent*>(event)->rect();
    return false;
  }
  QRect part;
};

TEST_F(RepaintTest, OnlyTheChangedDigitOfAReadoutIsPainted) {
  forms.form1.lblFieldStrenght.caption = "16.58 mV/m";
  ShowForm1();
  auto* readout = Find<Readout>(QStringLiteral("Form1"), QStringLiteral("lblFieldStrenght"));
  auto* painted = new PaintedPart(readout);
  forms.form1.lblFieldStrenght.caption = "16.59 mV/m";
  Paint();
  EXPECT_FALSE(painted->part.isEmpty());
  EXPECT_LT(painted->part.width(), readout->TextWidth(QStringLiteral("000")));
}

TEST_F(RepaintTest, ALampPaintsNothingBelowIt) {
  forms.form1.lmpLog.says = {LampState::kGood, "Logging", "38 of 100", 0.38, ""};
  ShowForm1();
  auto* window = new PaintedPart(Window(QStringLiteral("Form1")));
  auto* lamp = Find<LampWidget>(QStringLiteral("Form1"), QStringLiteral("lmpLog"));
  auto* painted = new PaintedPart(lamp);
  forms.form1.lmpLog.says.detail = "39 of 100";
  Paint();
  EXPECT_FALSE(painted->part.isEmpty());
  EXPECT_LT(painted->part.width(), lamp->width() / 4);
  EXPECT_TRUE(window->part.isEmpty());
}

}  // namespace
}  // namespace kestrum::test
