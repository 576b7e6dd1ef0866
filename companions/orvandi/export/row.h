#pragma once

#include <QByteArray>
#include <QString>
#include <cstdint>
#include <string_view>

#include "analysis/layers.h"
#include "analysis/recalibration.h"

namespace orvandi {

// A record as every export tells it. Numbers that are not known are not-a-number.
struct Row {
  const NamedLog* named = nullptr;
  const Block* block = nullptr;
  const Record* record = nullptr;
  std::size_t block_number = 0;  // in its log, from 1
  float microvolt = kUnknown;
  float millivolt_per_m = kUnknown;
  std::string_view s_text;  // UTF-8

  double DbMicrovoltPerM() const;
  double Dbm() const;
};
Row RowOf(const NamedLog& named, const Record& record, const Recalibration* recalibration);

// Numbers as files hold them, whatever the locale: a point, no grouping, "" when not known.
QByteArray FixedNumber(double value, int decimals);
// As few digits as tell the value: "30.8".
QByteArray ShortNumber(float value);

// The number to so many decimals, for writers that take a number.
double Rounded(double value, int decimals);

// Times of a log carry no zone; they are taken as local time of this computer. Remembers the offset of the
// last quarter of an hour, since asking for it a million times takes seconds.
class LocalTimes {
 public:
  QByteArray WithOffset(std::int64_t time_s);  // "2026-11-21T01:55:34+01:00"
  QByteArray Utc(std::int64_t time_s);         // "2026-11-21T00:55:34Z"

 private:
  int OffsetOf(std::int64_t time_s);

  std::int64_t quarter_ = INT64_MIN;
  int offset_s_ = 0;
};

// The marks of a record, "no fix; position stands still", e.g.
QByteArray MarksText(std::uint8_t marks);

QString ToQt(std::string_view utf8);
// Without the two characters that XML cannot hold and a log may.
QString XmlText(std::string_view utf8);

}  // namespace orvandi
