#include "logging/log_record.h"

#include <array>

#include "text/number_text.h"
#include "text/text.h"
#include "text/text_file.h"

namespace kestrum {
namespace {

std::string FourDigits(int number) {
  return TwoDigits(number / 100) + TwoDigits(number);
}

std::string OneField(const std::string& text) {
  return Replace(Replace(Replace(text, ',', ' '), '\r', ' '), '\n', ' ');
}

}  // namespace

std::string TimeText(const DateTime& now) {
  return TwoDigits(now.hour) + ":" + TwoDigits(now.minute) + ":" + TwoDigits(now.second);
}

std::string BlockStampText(const DateTime& now) {
  return TwoDigits(now.day) + "-" + TwoDigits(now.month) + "-" + FourDigits(now.year) + " " + TimeText(now);
}

std::string StartStampText(const DateTime& now) {
  return TwoDigits(now.month) + "-" + TwoDigits(now.day) + "-" + TwoDigits(now.year) + " " + TimeText(now);
}

std::string LogRecord(const DateTime& now, const Site& site, const Reading& reading) {
  const TableRow& converted = reading.converted;
  const std::array<std::string, 11> fields = {
      TimeText(now),
      site.validity,
      site.latitude,
      site.longitude,
      site.distance,
      site.height,
      site.bearing,
      ShortNumber(reading.raw),
      converted.s,
      TrimLeft(converted.microvolt) + " uV",
      TrimLeft(converted.millivolt_per_metre) + " mV/m",
  };
  std::string record = OneField(fields.front());
  for (std::size_t field = 1; field < fields.size(); ++field) record += ", " + OneField(fields[field]);
  return record;
}

std::string SignalText(const TableRow& converted) {
  return converted.s + ", " + converted.microvolt + " uV, " + converted.millivolt_per_metre + " mV/m";
}

std::string BlockHeader(const DateTime& now, const BlockHeading& heading) {
  return BlockStampText(now) + ", " + heading.tx_latitude + ", " + heading.tx_longitude + ", " +
         heading.tx_height + ", " + heading.rig_text + ", " + TrimLeft(heading.antenna);
}

std::string BlockHead(const std::string& header) {
  const std::string dashes(header.size(), '-');
  return JoinLines({dashes, header, dashes});
}

}  // namespace kestrum
