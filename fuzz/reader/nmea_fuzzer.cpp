#include <algorithm>

#include "fix_tracker.h"
#include "line_splitter.h"
#include "nmea_decoder.h"
#include "support/receiver.h"

// The input is what a receiver sends. A line that ends in "*??" gets its right checksum first, so that the
// inside of sentences is reached; each "~" in the stream lets 700 ms pass.
namespace kestrum::posdex {
namespace {

using fuzz::Require;

constexpr qsizetype kLongestLine = 400;

char Checksum(QByteArrayView body) {
  char sum = 0;
  for (const char byte : body) sum = static_cast<char>(sum ^ byte);
  return sum;
}

QByteArray WithChecksum(const QByteArray& line) {
  const qsizetype start = line.lastIndexOf('$');
  if (start < 0 || !line.endsWith("*??")) return line;
  const QByteArray body = line.sliced(start + 1, line.size() - start - 4);
  const char sum = Checksum(body);
  return line.chopped(2) + QByteArray(&sum, 1).toHex().toUpper();
}

// `bare_counts`: no sentence with a checksum has come before.
void CheckAccepted(const QByteArray& line, bool& bare_counts) {
  const QByteArray sentence = line.sliced(line.lastIndexOf('$') + 1);
  const qsizetype star = sentence.indexOf('*');
  if (star < 0) {
    Require(bare_counts, "this receiver sends checksums", sentence.toStdString());
    return;
  }
  bare_counts = false;
  bool is_hex = false;
  const uint told = sentence.sliced(star + 1, 2).toUInt(&is_hex, 16);
  const auto right = static_cast<unsigned char>(Checksum(QByteArrayView(sentence).first(star)));
  Require(is_hex && told == right, "an accepted sentence has the right checksum", sentence.toStdString());
}

// The stream in pieces of odd sizes gives the lines that it gives at once.
QList<QByteArray> Lines(const QByteArray& stream) {
  LineSplitter at_once(kLongestLine);
  QList<QByteArray> lines = at_once.Feed(stream);
  LineSplitter in_pieces(kLongestLine);
  QList<QByteArray> pieced;
  for (qsizetype at = 0, length = 1; at < stream.size(); at += length, length = length % 7 + 1)
    pieced += in_pieces.Feed(QByteArrayView(stream).sliced(at, std::min(length, stream.size() - at)));
  Require(pieced == lines, "lines do not depend on how they arrive");
  for (const QByteArray& line : lines) {
    Require(!line.isEmpty() && line.size() <= kLongestLine, "a line is neither empty nor endless");
    Require(!line.contains('\r') && !line.contains('\n'), "a line holds no line end");
  }
  return lines;
}

}  // namespace
}  // namespace kestrum::posdex

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kestrum::posdex;
  const QByteArray stream(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  NmeaDecoder decoder;
  FixTracker tracker;
  qint64 now_ms = 0;
  bool bare_counts = true;
  for (const QByteArray& line : Lines(stream)) {
    now_ms += 700 * line.count('~');
    tracker.Expire(now_ms);
    CheckTexts(TextsOf(tracker.Current()));
    const QByteArray sent = WithChecksum(line);
    const auto sentence = decoder.Decode(sent);
    if (!sentence) continue;
    CheckAccepted(sent, bare_counts);
    tracker.Begins(*sentence);
    tracker.Take(*sentence, now_ms);
    const GpsTexts texts = TextsOf(tracker.Current());
    CheckTexts(texts);
    const bool told = texts.validity == QLatin1String("A");
    kestrum::fuzz::Require(told == tracker.Current().valid, "the validity is that of the fix");
  }
  tracker.Expire(now_ms + FixTracker::kLostAfterMs);
  kestrum::fuzz::Require(!tracker.Current().valid, "a silent receiver has no fix");
  return 0;
}
