#include "desktop/sound/speaker.h"

namespace kestrum {
namespace {

class SilentSpeaker : public Speaker {
 public:
  void Play(const std::vector<Tone>& /*tones*/) override {}
};

}  // namespace

std::unique_ptr<Speaker> MakeSpeaker() {
  return std::make_unique<SilentSpeaker>();
}

}  // namespace kestrum
