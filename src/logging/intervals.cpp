#include "logging/intervals.h"

#include <algorithm>

#include "config/app_title.h"
#include "text/number_text.h"
#include "text/text.h"

namespace kestrum {
namespace {

std::string EveryText(int interval_ms) {
  return "Get RSSI every " + ShortNumber(interval_ms) + " mSec";
}

}  // namespace

std::string KmText(float km) {
  return WithLeadingZero(Replace(ShortNumberSingle(km), ',', '.'));
}

Intervals::Intervals(State& state, Form1& form, const PortSet<Dialogs>& ports, SMeter& s_meter)
    : state_(state), form_(form), ports_(ports), s_meter_(s_meter) {}

void Intervals::ApplyInterval() {
  Timer& timer = form_.tmrMain;
  // A file edited by hand may name less than the window takes; the timer must not spin.
  const int time_ms = std::max<int>(state_.settings.TimeIntervalMs, kLowestIntervalMs);
  timer.interval_ms = state_.settings.LogByDistance ? kDistanceTickMs : time_ms;
  if (timer.enabled) timer.Start();
}

void Intervals::ApplyAveraging() {
  const bool ended = EndAveragingThatIsTooFast();
  s_meter_.RunAveraging();
  s_meter_.ShowAveraging();
  ShowLabels();
  // Last, so that the labels behind the box already tell the truth. It may come from inside a cycle, which
  // must not wait for an answer.
  if (!ended) return;
  ports_.dialogs.Notify(AppTitle,
                        "Timer must be >=" + ShortNumber(kLowestAverageMs) + " mSec to average RSSI",
                        Icon::kExclamation);
}

bool Intervals::EndAveragingThatIsTooFast() {
  Settings& settings = state_.settings;
  if (!settings.AverageRSSI || form_.tmrMain.interval_ms >= kLowestAverageMs) return false;
  settings.AverageRSSI = false;
  form_.mnuAverageRSSI.checked = false;
  return true;
}

void Intervals::ShowLabels() {
  const Settings& settings = state_.settings;
  form_.StatusBar1[0].text = EveryText(form_.tmrMain.interval_ms);
  form_.StatusBar1[1].text = settings.AverageRSSI ? "Averaged" : "Not Averaged";
  form_.StatusBar1[1].tool_tip = settings.AverageRSSI ? EveryText(form_.tmrAverageRSSI.interval_ms) : "";
  if (settings.LogByDistance) {
    form_.lblIntervalHeading.caption = "Interval in km";
    form_.lblInterval.caption = KmText(settings.DistanceIntervalKm) + " km";
    const double rounded_km = RoundHalfEven(settings.DistanceIntervalKm, 2);
    form_.lblPrompt.tool_tip = "It Logges at " + WithLeadingZero(Replace(ShortNumber(rounded_km), ',', '.')) +
                               " km intervals and " + ShortNumber(kDistanceTickMs) + " mSec";
  } else {
    const std::string time_text = ShortNumber(settings.TimeIntervalMs) + " mSec";
    form_.lblIntervalHeading.caption = "Interval in mSec";
    form_.lblInterval.caption = time_text;
    form_.lblPrompt.tool_tip = "Gives indication of data fetch speed Menu > Timing (" + time_text + ")";
  }
}

}  // namespace kestrum
