#include "plots/level_axis.h"

#include <gtest/gtest.h>

namespace orvandi {
namespace {

TEST(LevelAxis, NumbersAsUsersThink) {
  struct Row {
    double level_db;
    Unit unit;
    const char* number;
    const char* text;
  };
  for (const Row& row :
       {Row{54.24, Unit::kDbMicrovoltPerM, "54.2", "54.2 dBµV/m"},
        Row{60, Unit::kMillivoltPerM, "1", "1 mV/m"}, Row{54, Unit::kMillivoltPerM, "0.501", "0.501 mV/m"},
        Row{126, Unit::kMillivoltPerM, "1995", "1995 mV/m"}, Row{-73.01, Unit::kMicrovolt, "50", "50 µV"},
        Row{-73, Unit::kDbm, "-73.0", "-73.0 dBm"}, Row{42, Unit::kSPoint, "S7", "S7"},
        Row{74, Unit::kSPoint, "S9+20", "S9+20"}}) {
    EXPECT_EQ(LevelNumber(row.level_db, row.unit), QString::fromUtf8(row.number));
    EXPECT_EQ(LevelText(row.level_db, row.unit), QString::fromUtf8(row.text));
  }
  EXPECT_EQ(LevelNumber(std::nan(""), Unit::kDbm), QStringLiteral("?"));
}

QStringList Labels(QCPAxisTicker& ticker, double lower, double upper) {
  QVector<double> ticks;
  QVector<QString> labels;
  ticker.generate(QCPRange(lower, upper), QLocale::c(), QLatin1Char('g'), 6, ticks, nullptr, &labels);
  return {labels.begin(), labels.end()};
}

TEST(LevelAxis, TicksStandAtRoundValuesOfTheUnit) {
  LevelTicker millivolt(Unit::kMillivoltPerM);
  const QStringList labels = Labels(millivolt, 40, 80);  // 0.1 to 10 mV/m
  for (const char* label : {"0.1", "0.2", "0.5", "1", "2", "5", "10"}) {
    EXPECT_TRUE(labels.contains(QString::fromLatin1(label))) << label;
  }
  LevelTicker s_points(Unit::kSPoint);
  EXPECT_TRUE(Labels(s_points, 20, 70).contains(QStringLiteral("S9")));
  EXPECT_TRUE(Labels(s_points, 20, 70).contains(QStringLiteral("S9+10")));
  LevelTicker db(Unit::kDbMicrovoltPerM);
  EXPECT_TRUE(Labels(db, 30, 70).contains(QStringLiteral("50")));
  DistanceTicker distance;
  const QStringList far = Labels(distance, -0.7, 1.3);
  EXPECT_TRUE(far.contains(QStringLiteral("500 m")));
  EXPECT_TRUE(far.contains(QStringLiteral("1 km")));
  EXPECT_TRUE(far.contains(QStringLiteral("10 km")));
}

TEST(LevelAxis, AxesTellTheirUnit) {
  EXPECT_EQ(AxisLabel(Unit::kMillivoltPerM), QStringLiteral("Field strength (mV/m)"));
  EXPECT_EQ(AxisLabel(Unit::kSPoint), QStringLiteral("S-meter"));
}

}  // namespace
}  // namespace orvandi
