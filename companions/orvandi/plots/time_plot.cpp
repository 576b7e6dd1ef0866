#include "plots/time_plot.h"

#include <QDateTime>
#include <cmath>

namespace orvandi {
namespace {

constexpr double kDay = 86400;
constexpr double kMinute = 60;

// Times of day; dates where the range spans days.
class ClockTicker final : public QCPAxisTickerDateTime {
 public:
  ClockTicker() {
    setDateTimeSpec(Qt::UTC);
    setTickCount(5);
  }

 protected:
  QString getTickLabel(double tick, const QLocale& /*locale*/, QChar /*format*/, int /*precision*/) override {
    const QDateTime time = QDateTime::fromSecsSinceEpoch(std::llround(tick), Qt::UTC);
    const QString pattern = size_ > 2 * kDay      ? QStringLiteral("yyyy-MM-dd")
                            : size_ > kDay        ? QStringLiteral("MM-dd HH:mm")
                            : size_ > 5 * kMinute ? QStringLiteral("HH:mm")
                                                  : QStringLiteral("HH:mm:ss");
    return time.toString(pattern);
  }
  double getTickStep(const QCPRange& range) override {
    size_ = range.size();
    return QCPAxisTickerDateTime::getTickStep(range);
  }

 private:
  double size_ = 0;
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
