#include "logging/log_record.h"

#include <array>

#include "text/number_text.h"
#include "text/text.h"

namespace kestrum {
namespace {

std::string TwoDigits(int number) {
  const int last_two = number % 100;
  return (last_two < 10 ? "0" : "") + ShortNumber(last_two);
}

std::string FourDigits(int number) {
  return TwoDigits(number / 100) + TwoDigits(number);
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

std::string LogRecord(const DateTime& now, const Form1& form, std::int16_t rssi_raw,
                      const TableRow& current) {
  const std::array<std::string, 11> fields = {
      TimeText(now),
      form.lblRxVal.caption,
      form.lblRxLat.caption,
      form.lblRxLong.caption,
      form.lblRxDist.caption,
      form.lblRxHeight.caption,
      form.lblRxBearing.caption,
      ShortNumber(rssi_raw),
      current[0],
      TrimLeft(current[1]) + " uV",
      TrimLeft(current[2]) + " mV/m",
  };
  std::string record = fields.front();
  for (std::size_t field = 1; field < fields.size(); ++field) record += ", " + fields[field];
  return record;
}

}  // namespace kestrum
