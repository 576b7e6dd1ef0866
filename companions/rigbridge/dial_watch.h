#pragma once

#include <optional>

namespace kestrum::rigbridge {

// Notices when somebody turns the rig's own dial after Kestrum has set a frequency.
class DialWatch {
 public:
  // Differences up to this are steps of the synthesizer.
  static constexpr double kToleranceHz = 10;
  // A rig may round what it is told (to a channel); farther off it did not follow.
  static constexpr double kRoundingHz = 15000;

  // Whether the rig has taken the frequency. One that has not is expected to be there all the same.
  enum class Taken { kYes, kNo };

  // Kestrum has sent a frequency.
  void Sent(double hz, Taken taken);
  // The rig says where it is. The first after it has taken one is where it went, rounded.
  void Read(double hz);

  // The rig has changed its mode, and some shift their frequency by a tone with it.
  void ModeChanged();

  std::optional<double> SentHz() const { return sent_hz_; }
  std::optional<double> RigHz() const { return rig_hz_; }
  // The rig is elsewhere than Kestrum thinks.
  bool Elsewhere() const;

 private:
  std::optional<double> sent_hz_;
  std::optional<double> settled_hz_;
  std::optional<double> rig_hz_;
};

}  // namespace kestrum::rigbridge
