#include "logging/timing_window.h"

#include <cmath>
#include <utility>

#include "config/app_title.h"
#include "text/number_text.h"
#include "text/text.h"

namespace kestrum {
namespace {

constexpr int kRefusedIntervalMs = 10000;
constexpr double kLowestDistanceKm = 0.1;
constexpr double kHighestDistanceKm = 5;

double Entry(const TextBox& box) {
  return Val(Replace(Trim(box.text), ',', '.'));
}

// Selected, so that typing replaces it.
void ShowError(TextBox& box) {
  box.text = "Error";
  box.SelectAll();
}

}  // namespace

TimingWindow::TimingWindow(State& state, Form4& form, Intervals& intervals)
    : state_(state), form_(form), intervals_(intervals) {}

void TimingWindow::Wire() {
  form_.caption = AppTitle;
  form_.Frame1.tool_tip = "Adjust saving data at time intervals";
  form_.Frame2.tool_tip = "Adjust saving data at distance intervals ";
  form_.Frame3.tool_tip = "Select saving data at time or distance intervals";
  // Kept on purpose: "butten" here and "button" below, as the window has always shown them.
  form_.Option1.tool_tip = "Always press Ok butten to apply";
  form_.Option2.tool_tip = "Always press Ok button to apply";
  form_.Text1.tool_tip = "Range 10 to 10000 mSec Average RSSI only possible if Timing > then " +
                         ShortNumber(kLowestAverageMs) + " mSec";
  form_.Text2.tool_tip = "Range 0.1 to 5 km";
  form_.cmdOk.tool_tip = "Press me to apply new values";
  form_.Option1.click = [this] { ChooseTime(); };
  form_.Option2.click = [this] { ChooseDistance(); };
  form_.cmdOk.click = [this] { cmdOk_Click(); };
  form_.close = [this] { form_.visible = false; };
}

void TimingWindow::Open() {
  const Settings& settings = state_.settings;
  ShowType();
  form_.Text1.text = ShortNumber(settings.TimeIntervalMs);
  form_.Text2.text = KmText(settings.DistanceIntervalKm);
  form_.Label1.caption = " mSec";
  form_.Label2.caption = " km";
  form_.loaded = true;
  form_.Show();
}

void TimingWindow::ChooseTime() {
  state_.settings.LogByDistance = false;
  ShowType();
}

void TimingWindow::ChooseDistance() {
  const bool newly = !std::exchange(state_.settings.LogByDistance, true);
  ShowType();
  if (newly) Run(distance_mode_chosen);
}

void TimingWindow::ShowType() {
  form_.Option1.checked = !state_.settings.LogByDistance;
  form_.Option2.checked = state_.settings.LogByDistance;
}

void TimingWindow::cmdOk_Click() {
  Settings& settings = state_.settings;
  const double time_ms = Entry(form_.Text1);
  // Kept on purpose: 10000 itself is refused although the tool tip names it.
  if (time_ms >= kLowestIntervalMs && time_ms < kRefusedIntervalMs) {
    settings.TimeIntervalMs = static_cast<std::int16_t>(std::floor(time_ms));
  } else {
    ShowError(form_.Text1);
  }
  form_.Label1.caption = ShortNumber(settings.TimeIntervalMs) + " mSec";

  const double distance_km = Entry(form_.Text2);
  if (distance_km >= kLowestDistanceKm && distance_km <= kHighestDistanceKm) {
    settings.DistanceIntervalKm = static_cast<float>(RoundHalfEven(distance_km, 2));
  } else {
    ShowError(form_.Text2);
  }
  form_.Label2.caption = KmText(settings.DistanceIntervalKm) + " km";

  intervals_.ApplyInterval();
  intervals_.ApplyAveraging();
}

}  // namespace kestrum
