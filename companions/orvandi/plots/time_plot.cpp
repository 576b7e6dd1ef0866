#include "plots/time_plot.h"

#include <QDateTime>
#include <algorithm>
#include <array>
#include <cmath>

namespace orvandi {
namespace {

constexpr double kMinute = 60;
constexpr double kHour = 3600;
constexpr double kDay = 86400;
constexpr double kTicks = 6;  // at most, as many as have room for a date each
// Distances between ticks that a clock face or a calendar has.
constexpr std::array kSteps = {1.0,      2.0,         5.0,         10.0,      15.0,         30.0,
                               kMinute,  2 * kMinute, 5 * kMinute, 600.0,     15 * kMinute, 30 * kMinute,
                               kHour,    2 * kHour,   3 * kHour,   6 * kHour, 12 * kHour,   kDay,
                               2 * kDay, 7 * kDay,    14 * kDay};

// Times of day; dates where the range spans days.
class ClockTicker final : public QCPAxisTicker {
 protected:
  QString getTickLabel(double tick, const QLocale& /*locale*/, QChar /*format*/, int /*precision*/) override {
    const QDateTime time = QDateTime::fromSecsSinceEpoch(std::llround(tick), Qt::UTC);
    const QString pattern = size_ > 2 * kDay   ? QStringLiteral("yyyy-MM-dd")
                            : size_ > kDay     ? QStringLiteral("MM-dd HH:mm")
                            : step_ >= kMinute ? QStringLiteral("HH:mm")
                                               : QStringLiteral("HH:mm:ss");
    return time.toString(pattern);
  }
  double getTickStep(const QCPRange& range) override {
    size_ = range.size();
    const double wanted = size_ / kTicks;
    const auto* const step =
        std::find_if(kSteps.begin(), kSteps.end(), [wanted](double s) { return s >= wanted; });
    step_ = step != kSteps.end() ? *step : std::ceil(wanted / (28 * kDay)) * 28 * kDay;
    return step_;
  }

 private:
  double size_ = 0;
  double step_ = 1;
};

}  // namespace

TimePlot::TimePlot(QWidget* parent) : RecordPlot(parent) {
  setObjectName(QStringLiteral("timePlot"));
  setAccessibleName(QStringLiteral("Signal over time"));
  xAxis->setTicker(QSharedPointer<QCPAxisTicker>(new ClockTicker));
  Restyle(PlotInkOf(palette()));
}

std::vector<double> TimePlot::Keys(const ViewData& view) const {
  return view.time_s;
}

}  // namespace orvandi
