#include "nmea_decoder.h"

namespace kestrum::posdex {
namespace {

constexpr qsizetype kShortestSentence = 10;  // "$GPRMC,*hh"
constexpr qsizetype kLongestSentence = 255;

Sentence::Kind KindOf(QByteArrayView sentence) {
  const QByteArrayView name = sentence.sliced(3, 3);
  if (name == QByteArrayView("RMC")) return Sentence::Kind::kRmc;
  if (name == QByteArrayView("GGA")) return Sentence::Kind::kGga;
  if (name == QByteArrayView("GLL")) return Sentence::Kind::kGll;
  if (name == QByteArrayView("VTG")) return Sentence::Kind::kVtg;
  return Sentence::Kind::kOther;
}

}  // namespace

std::optional<Sentence> NmeaDecoder::Decode(QByteArrayView line) {
  const qsizetype start = line.lastIndexOf('$');
  if (start < 0) return std::nullopt;
  const QByteArrayView sentence = line.sliced(start);
  if (sentence.size() < kShortestSentence || sentence.size() > kLongestSentence) return std::nullopt;
  Sentence result;
  if (!parsePosInfoFromNmeaData(sentence.data(), static_cast<int>(sentence.size()), &result.info,
                                &result.has_fix)) {
    return std::nullopt;
  }
  result.kind = KindOf(sentence);
  return result;
}

}  // namespace kestrum::posdex
