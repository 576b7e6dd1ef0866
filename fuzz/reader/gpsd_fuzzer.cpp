#include <QCoreApplication>

#include "fix_tracker.h"
#include "gpsd_source.h"
#include "support/receiver.h"

// The input is what a gpsd sends, in one piece or cut in the middle.
namespace kestrum::posdex {
namespace {

using fuzz::Require;

// A source that is fed by hand and never connects.
class FedSource : public GpsdSource {
 public:
  FedSource() : GpsdSource(SourceChoice{}) {}
  using GpsdSource::Feed;
};

void CheckState(const SourceState& state) {
  using Link = SourceState::Link;
  const bool connected = state.link == Link::kConnected && state.detail.isEmpty();
  const bool without_receiver =
      state.link == Link::kFailed && (state.detail == QLatin1String("gpsd has no receiver") ||
                                      state.detail == QLatin1String("gpsd has lost its receiver"));
  Require(connected || without_receiver, "a state that the user knows", state.detail.toStdString());
}

}  // namespace
}  // namespace kestrum::posdex

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kestrum::posdex;
  static int argument_count = 1;
  static char name[] = "gpsd_fuzzer";
  static char* arguments[] = {name, nullptr};
  static QCoreApplication application(argument_count, arguments);

  const QByteArray stream(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  FedSource source;
  FixTracker tracker;
  QObject::connect(&source, &Source::StateChanged, [&tracker](const SourceState& state) {
    CheckState(state);
    if (state.link == SourceState::Link::kFailed) tracker.Lose();
  });
  QObject::connect(&source, &Source::LineReceived,
                   [](const QByteArray& line) { Require(false, "no sentences", line.toStdString()); });
  QObject::connect(&source, &Source::SatellitesReported, [&tracker](int count) {
    Require(count >= 0 && count <= 20000, "a count of satellites");
    tracker.TakeSatellites(count, 0);
  });
  QObject::connect(&source, &Source::PositionReported, [&tracker](const Fix& fix) {
    Require(!fix.valid || (fix.latitude_deg && fix.longitude_deg), "a fix has a position");
    tracker.Take(fix, 0);
    CheckTexts(TextsOf(tracker.Current()));
  });
  const qsizetype middle = stream.size() / 2;
  source.Feed(stream.first(middle));
  source.Feed(stream.sliced(middle));
  source.Feed("\n");
  return 0;
}
