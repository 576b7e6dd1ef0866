#include "line_splitter.h"

namespace kestrum::posdex {

QList<QByteArray> LineSplitter::Feed(QByteArrayView bytes) {
  QList<QByteArray> lines;
  for (const char byte : bytes) {
    if (byte == '\n' || byte == '\r') {
      if (!too_long_ && !pending_.isEmpty()) lines.append(pending_);
      Clear();
    } else if (!too_long_) {
      too_long_ = pending_.size() >= longest_line_;
      if (too_long_) {
        pending_.clear();
      } else {
        pending_.append(byte);
      }
    }
  }
  return lines;
}

void LineSplitter::Clear() {
  pending_.clear();
  too_long_ = false;
}

}  // namespace kestrum::posdex
