#include "source.h"

#include <algorithm>

#include "auto_source.h"
#include "file_source.h"
#include "gpsd_source.h"
#include "serial_source.h"

namespace kestrum::posdex {

void Source::Feed(QByteArrayView bytes) {
  for (const QByteArray& line : splitter_.Feed(bytes)) TakeLine(line);
}

void Source::SetState(SourceState::Link link, const QString& detail) {
  const SourceState state{link, detail};
  if (state == state_) return;
  state_ = state;
  Q_EMIT StateChanged(state_);
}

int Backoff::NextMs() {
  const int wait_ms = next_ms_;
  next_ms_ = std::min(next_ms_ * 2, kLongestMs);
  return wait_ms;
}

std::unique_ptr<Source> MakeSource(const SourceChoice& choice, const QString& folder) {
  switch (choice.kind) {
    case SourceChoice::Kind::kSerial:
      return std::make_unique<SerialSource>(choice, folder);
    case SourceChoice::Kind::kFile:
      return std::make_unique<FileSource>(choice, folder);
    case SourceChoice::Kind::kAuto:
      return std::make_unique<AutoSource>(folder);
    case SourceChoice::Kind::kGpsd:
      break;
  }
  return std::make_unique<GpsdSource>(choice);
}

}  // namespace kestrum::posdex
