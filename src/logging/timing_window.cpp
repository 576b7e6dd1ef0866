#include "logging/timing_window.h"

#include <algorithm>
#include <cmath>

#include "config/app_title.h"
#include "text/number_text.h"
#include "text/text.h"

namespace kestrum {
namespace {

constexpr int kLowestIntervalMs = 10;
constexpr int kRefusedIntervalMs = 10000;
constexpr double kLowestDistanceKm = 0.1;
constexpr double kHighestDistanceKm = 5;

std::string KmText(double km) {
  return WithLeadingZero(Replace(ShortNumber(km), ',', '.'));
}

std::string KmTextSingle(float km) {
  return WithLeadingZero(Replace(ShortNumberSingle(km), ',', '.'));
}

double Entry(const TextBox& box) {
  return Val(Replace(Trim(box.text), ',', '.'));
}

// Selected, so that typing replaces it.
void ShowError(TextBox& box) {
  box.text = "Error";
  box.SelectAll();
}

std::string EveryText(int interval_ms) {
  return "Get RSSI every " + ShortNumber(interval_ms) + " mSec";
}

}  // namespace

TimingWindow::TimingWindow(State& state, Forms& forms, const Ports& ports, SMeter& s_meter)
    : state_(state), forms_(forms), ports_(ports), s_meter_(s_meter) {}

void TimingWindow::Wire() {
  Form4& form = forms_.form4;
  form.caption = AppTitle;
  form.Frame1.tool_tip = "Adjust saving data at time intervals";
  form.Frame2.tool_tip = "Adjust saving data at distance intervals ";
  form.Frame3.tool_tip = "Select saving data at time or distance intervals";
  // Kept on purpose: "butten" here and "button" below, as the window has always shown them.
  form.Option1.tool_tip = "Always press Ok butten to apply";
  form.Option2.tool_tip = "Always press Ok button to apply";
  form.Text1.tool_tip = "Range 10 to 10000 mSec Average RSSI only possible if Timing > then " +
                        ShortNumber(kLowestAverageMs) + " mSec";
  form.Text2.tool_tip = "Range 0.1 to 5 km";
  form.cmdOk.tool_tip = "Press me to apply new values";
  form.Option1.click = [this] { ChooseType(false); };
  form.Option2.click = [this] { ChooseType(true); };
  form.cmdOk.click = [this] { cmdOk_Click(); };
  form.close = [this] { forms_.form4.visible = false; };
}

void TimingWindow::Open() {
  const Settings& settings = state_.settings;
  Form4& form = forms_.form4;
  form.Option1.checked = !settings.LogByDistance;
  form.Option2.checked = settings.LogByDistance;
  form.Text1.text = ShortNumber(settings.TimeIntervalMs);
  form.Text2.text = KmTextSingle(settings.DistanceIntervalKm);
  form.Label1.caption = " mSec";
  form.Label2.caption = " km";
  form.loaded = true;
  form.Show();
}

void TimingWindow::ChooseType(bool by_distance) {
  const bool newly_by_distance = by_distance && !state_.settings.LogByDistance;
  state_.settings.LogByDistance = by_distance;
  forms_.form4.Option1.checked = !by_distance;
  forms_.form4.Option2.checked = by_distance;
  if (newly_by_distance) Run(distance_mode_chosen);
}

void TimingWindow::ApplyInterval() {
  Timer& timer = forms_.form1.tmrMain;
  // A file edited by hand may name less than the window takes; the timer must not spin.
  const int time_ms = std::max<int>(state_.settings.TimeIntervalMs, kLowestIntervalMs);
  timer.interval_ms = state_.settings.LogByDistance ? kDistanceTickMs : time_ms;
  if (timer.enabled) timer.Start();
}

void TimingWindow::ShowTimingLabels() {
  Settings& settings = state_.settings;
  Form1& form = forms_.form1;
  const bool too_fast = settings.AverageRSSI && form.tmrMain.interval_ms < kLowestAverageMs;
  if (too_fast) {
    settings.AverageRSSI = false;
    form.tmrAverageRSSI.Stop();
    form.mnuAverageRSSI.checked = false;
  }
  s_meter_.ShowAveraging();
  form.StatusBar1[0].text = EveryText(form.tmrMain.interval_ms);
  form.StatusBar1[1].text = settings.AverageRSSI ? "Averaged" : "Not Averaged";
  form.StatusBar1[1].tool_tip = settings.AverageRSSI ? EveryText(form.tmrAverageRSSI.interval_ms) : "";
  if (settings.LogByDistance) {
    form.lblIntervalHeading.caption = "Interval in km";
    form.lblInterval.caption = KmTextSingle(settings.DistanceIntervalKm) + " km";
    form.lblPrompt.tool_tip = "It Logges at " + KmText(RoundHalfEven(settings.DistanceIntervalKm, 2)) +
                              " km intervals and " + ShortNumber(kDistanceTickMs) + " mSec";
  } else {
    const std::string time_text = ShortNumber(settings.TimeIntervalMs) + " mSec";
    form.lblIntervalHeading.caption = "Interval in mSec";
    form.lblInterval.caption = time_text;
    form.lblPrompt.tool_tip = "Gives indication of data fetch speed Menu > Timing (" + time_text + ")";
  }
  // Last, so that the labels behind the box already tell the truth.
  if (too_fast) {
    // It may come from inside a cycle, which must not wait for an answer.
    ports_.dialogs.Notify(AppTitle,
                          "Timer must be >=" + ShortNumber(kLowestAverageMs) + " mSec to average RSSI",
                          Icon::kExclamation);
  }
}

void TimingWindow::cmdOk_Click() {
  Settings& settings = state_.settings;
  Form4& form = forms_.form4;
  const double time_ms = Entry(form.Text1);
  // Kept on purpose: 10000 itself is refused although the tool tip names it.
  if (time_ms >= kLowestIntervalMs && time_ms < kRefusedIntervalMs) {
    settings.TimeIntervalMs = static_cast<std::int16_t>(std::floor(time_ms));
  } else {
    ShowError(form.Text1);
  }
  form.Label1.caption = ShortNumber(settings.TimeIntervalMs) + " mSec";

  const double distance_km = Entry(form.Text2);
  if (distance_km >= kLowestDistanceKm && distance_km <= kHighestDistanceKm) {
    settings.DistanceIntervalKm = static_cast<float>(RoundHalfEven(distance_km, 2));
  } else {
    ShowError(form.Text2);
  }
  form.Label2.caption = KmTextSingle(settings.DistanceIntervalKm) + " km";

  ApplyInterval();
  ShowTimingLabels();
}

}  // namespace kestrum
