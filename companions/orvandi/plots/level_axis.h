#pragma once

#include <QSharedPointer>
#include <QString>

#include "analysis/units.h"
#include "plots/qcustomplot_qt.h"

namespace orvandi {

// Levels are decibels in every view, so that a dB is the same height everywhere; what the user reads is the
// unit.

// "54.2", "0.51", "S9+20": without the unit.
QString LevelNumber(double level_db, Unit unit);
// "54.2 dBµV/m", "0.51 mV/m", "S9+20".
QString LevelText(double level_db, Unit unit);
QString UnitName(Unit unit);
// "Field strength (mV/m)", "Input voltage (µV)": the label of an axis.
QString AxisLabel(Unit unit);

// Ticks of an axis of levels at round values of the unit.
class LevelTicker final : public QCPAxisTicker {
 public:
  explicit LevelTicker(Unit unit) : unit_(unit) {}

 protected:
  double getTickStep(const QCPRange& range) override;
  QVector<double> createTickVector(double step, const QCPRange& range) override;
  int getSubTickCount(double step) override;
  QString getTickLabel(double tick, const QLocale& locale, QChar format, int precision) override;

 private:
  Unit unit_;
};

// Distances on an axis of log10(km): 100 m, 200 m, 500 m, 1 km, ...
class DistanceTicker final : public QCPAxisTicker {
 protected:
  double getTickStep(const QCPRange& range) override;
  QVector<double> createTickVector(double step, const QCPRange& range) override;
  int getSubTickCount(double step) override;
  QString getTickLabel(double tick, const QLocale& locale, QChar format, int precision) override;
};

}  // namespace orvandi
