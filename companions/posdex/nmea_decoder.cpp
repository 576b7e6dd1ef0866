#include "nmea_decoder.h"

#include <QList>
#include <array>

namespace kestrum::posdex {
namespace {

using Kind = Sentence::Kind;

constexpr qsizetype kLongestSentence = 255;
constexpr qsizetype kAddressLength = 5;  // talker and name, as "GPRMC"

struct Plan {
  const char* name;
  Kind kind;
  qsizetype least_fields;  // that the values end before, the address counted; for one without checksum
  qsizetype time_field;    // 0 for none
};
constexpr std::array<Plan, 6> kPlans{{{"RMC", Kind::kRmc, 10, 1},
                                      {"GGA", Kind::kGga, 11, 1},
                                      {"GNS", Kind::kGns, 11, 1},
                                      {"GLL", Kind::kGll, 7, 5},
                                      {"VTG", Kind::kVtg, 9, 0},
                                      {"GSA", Kind::kGsa, 18, 0}}};

QByteArray Checksum(QByteArrayView body) {
  char sum = 0;
  for (const char byte : body) sum = static_cast<char>(sum ^ byte);
  return QByteArray(1, sum).toHex().toUpper();
}

const Plan* PlanOf(QByteArrayView address) {
  if (address.size() != kAddressLength || address.front() == 'P') return nullptr;
  for (const Plan& plan : kPlans) {
    if (address.last(3) == QByteArrayView(plan.name)) return &plan;
  }
  return nullptr;
}

// A whole number of exactly these digits.
std::optional<int> Digits(QByteArrayView text) {
  int value = 0;
  for (const char digit : text) {
    if (digit < '0' || digit > '9') return std::nullopt;
    value = value * 10 + (digit - '0');
  }
  return value;
}

// "hhmmss" with or without a fraction.
std::optional<int> TimeOf(QByteArrayView text) {
  if (text.size() < 6 || (text.size() > 6 && text[6] != '.')) return std::nullopt;
  const std::optional<int> hours = Digits(text.first(2));
  const std::optional<int> minutes = Digits(text.sliced(2, 2));
  const std::optional<int> seconds = Digits(text.sliced(4, 2));
  const QByteArray fraction =
      (text.size() > 7 ? text.sliced(7).toByteArray() : QByteArray()).leftJustified(3, '0');
  const std::optional<int> milliseconds = Digits(QByteArrayView(fraction).first(3));
  if (!hours || !minutes || !seconds || !milliseconds || *hours > 23 || *minutes > 59 || *seconds > 60) {
    return std::nullopt;
  }
  return ((*hours * 60 + *minutes) * 60 + *seconds) * 1000 + *milliseconds;
}

std::optional<int> CountOf(QByteArrayView text) {
  return text.isEmpty() || text.size() > 3 ? std::nullopt : Digits(text);
}

FixType TypeOf(QByteArrayView text) {
  if (text == QByteArrayView("1")) return FixType::kNone;
  if (text == QByteArrayView("2")) return FixType::k2D;
  return text == QByteArrayView("3") ? FixType::k3D : FixType::kUnknown;
}

// Qt knows no GNS. The same values in the order of a GGA; its modes, a letter for each system of satellites,
// say "N" where there is no fix.
QByteArray AsGga(const QList<QByteArray>& fields) {
  QList<QByteArray> gga = fields.first(6);
  gga[0] = "GNGGA";
  const QByteArray& modes = fields[6];
  const bool has_fix = modes.count('N') < modes.size();
  gga += {has_fix ? "1" : "0", fields[7], fields[8], fields[9], "M", fields[10], "M", "", ""};
  return gga.join(',');
}

}  // namespace

std::optional<Sentence> NmeaDecoder::Decode(QByteArrayView line) {
  const qsizetype start = line.lastIndexOf('$');
  if (start < 0) return std::nullopt;
  const QByteArrayView text = line.sliced(start + 1).trimmed();
  if (text.size() > kLongestSentence) return std::nullopt;
  const qsizetype star = text.indexOf('*');
  QByteArray body = (star < 0 ? text : text.first(star)).toByteArray();
  if (body.size() < kAddressLength) return std::nullopt;
  const bool has_checksum =
      star >= 0 &&
      text.sliced(star + 1).first(std::min<qsizetype>(2, text.size() - star - 1)).toByteArray().toUpper() ==
          Checksum(body);
  if (star >= 0 && !has_checksum) return std::nullopt;

  QList<QByteArray> fields = body.split(',');
  const Plan* const plan = PlanOf(fields.first());
  if (has_checksum) {
    sends_checksums_ = true;
  } else if (sends_checksums_ || plan == nullptr || fields.size() < plan->least_fields) {
    return std::nullopt;
  }
  Sentence sentence;
  if (plan == nullptr) return sentence;
  sentence.kind = plan->kind;
  fields.resize(std::max(fields.size(), plan->least_fields));
  if (plan->time_field > 0) sentence.time_ms = TimeOf(fields[plan->time_field]);
  if (plan->kind == Kind::kGga || plan->kind == Kind::kGns) sentence.satellites = CountOf(fields[7]);
  if (plan->kind == Kind::kGsa) sentence.type = TypeOf(fields[2]);
  if (plan->kind == Kind::kGns) body = AsGga(fields);
  const QByteArray whole = "$" + body + "*" + Checksum(body);
  if (!parsePosInfoFromNmeaData(whole.constData(), static_cast<int>(whole.size()), &sentence.info,
                                &sentence.has_fix)) {
    sentence.kind = Kind::kOther;
  }
  // Qt says something of a GSA too.
  if (plan->time_field == 0) sentence.has_fix = false;
  return sentence;
}

}  // namespace kestrum::posdex
