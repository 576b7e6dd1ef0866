#include <alsa/asoundlib.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

#include "desktop/sound/speaker.h"
#include "desktop/sound/tone_samples.h"

// Through ALSA, which the sound servers of a desktop serve too. All of it runs on a thread of its own:
// opening and writing may wait for a server as long as they like.
namespace kestrum {
namespace {

using SteadyClock = std::chrono::steady_clock;

constexpr unsigned kRateHz = 48000;
constexpr unsigned kLatencyUs = 60000;
constexpr std::size_t kChunk = kRateHz / 100;       // newer tones wait for no more than this
constexpr std::chrono::seconds kKeepOpen{3};        // after the last tone
constexpr std::chrono::seconds kTryAgainAfter{15};  // when there was no sound card
constexpr std::chrono::milliseconds kEndPatience{300};

// What is wrong with the sound is no news to a driver.
void TellNobody(const char* /*file*/, int /*line*/, const char* /*function*/, int /*error*/,
                const char* /*format*/, ...) {}

// What both threads know.
struct Desk {
  std::mutex mutex;
  std::condition_variable news;
  std::optional<std::vector<Tone>> wanted;
  bool end = false;
  bool ended = false;
};

class Player {
 public:
  explicit Player(std::shared_ptr<Desk> desk) : desk_(std::move(desk)) {}
  ~Player() { Close(); }
  Player(const Player&) = delete;
  Player& operator=(const Player&) = delete;

  void Run() {
    while (const auto tones = Next()) {
      if (tones->empty()) {
        Drop();
      } else if (Opened()) {
        Drop();
        Write(ToneSamples(*tones, kRateHz));
      }
    }
  }

 private:
  // The next tones; nothing at the end. The device is given back when none come for a while.
  std::optional<std::vector<Tone>> Next() {
    std::unique_lock lock(desk_->mutex);
    const auto has_news = [this] { return desk_->end || desk_->wanted; };
    if (device_ != nullptr && !desk_->news.wait_for(lock, kKeepOpen, has_news)) {
      lock.unlock();
      Close();
      lock.lock();
    }
    desk_->news.wait(lock, has_news);
    if (desk_->end) return std::nullopt;
    return std::exchange(desk_->wanted, std::nullopt);
  }

  bool Interrupted() const {
    const std::scoped_lock lock(desk_->mutex);
    return desk_->end || desk_->wanted;
  }

  bool Opened() {
    if (device_ != nullptr) return true;
    if (failed_ && SteadyClock::now() - *failed_ < kTryAgainAfter) return false;
    failed_.reset();
    if (snd_pcm_open(&device_, "default", SND_PCM_STREAM_PLAYBACK, 0) < 0) device_ = nullptr;
    if (device_ != nullptr && snd_pcm_set_params(device_, SND_PCM_FORMAT_S16, SND_PCM_ACCESS_RW_INTERLEAVED,
                                                 1, kRateHz, 1, kLatencyUs) < 0) {
      Close();
    }
    if (device_ == nullptr) failed_ = SteadyClock::now();
    return device_ != nullptr;
  }

  void Drop() {
    if (device_ == nullptr) return;
    snd_pcm_drop(device_);
    snd_pcm_prepare(device_);
  }

  void Write(const std::vector<std::int16_t>& samples) {
    for (std::size_t at = 0; at < samples.size() && !Interrupted();) {
      const std::size_t count = std::min(kChunk, samples.size() - at);
      snd_pcm_sframes_t written = snd_pcm_writei(device_, samples.data() + at, count);
      if (written < 0) written = snd_pcm_recover(device_, static_cast<int>(written), 1);
      if (written < 0) {
        Close();
        failed_ = SteadyClock::now();
        return;
      }
      at += static_cast<std::size_t>(written);
    }
    // A device starts by itself only with a full buffer.
    if (snd_pcm_state(device_) == SND_PCM_STATE_PREPARED) snd_pcm_start(device_);
  }

  void Close() {
    if (device_ != nullptr) snd_pcm_close(std::exchange(device_, nullptr));
  }

  std::shared_ptr<Desk> desk_;
  snd_pcm_t* device_ = nullptr;
  std::optional<SteadyClock::time_point> failed_;
};

class AlsaSpeaker : public Speaker {
 public:
  ~AlsaSpeaker() override {
    std::unique_lock lock(desk_->mutex);
    desk_->end = true;
    desk_->news.notify_all();
    // A thread that hangs in a sound server is left behind.
    if (started_) desk_->news.wait_for(lock, kEndPatience, [this] { return desk_->ended; });
  }

  void Play(const std::vector<Tone>& tones) override {
    const std::scoped_lock lock(desk_->mutex);
    if (!started_ && tones.empty()) return;
    if (!started_ && !Start()) return;
    desk_->wanted = tones;
    desk_->news.notify_all();
  }

 private:
  // Nothing of the sound is touched before the first tone.
  bool Start() {
    try {
      std::thread([desk = desk_] {
        snd_lib_error_set_handler(TellNobody);
        { Player(desk).Run(); }
        const std::scoped_lock lock(desk->mutex);
        desk->ended = true;
        desk->news.notify_all();
      }).detach();
      started_ = true;
    } catch (const std::system_error&) {
      return false;
    }
    return started_;
  }

  std::shared_ptr<Desk> desk_ = std::make_shared<Desk>();
  bool started_ = false;
};

}  // namespace

std::unique_ptr<Speaker> MakeSpeaker() {
  return std::make_unique<AlsaSpeaker>();
}

}  // namespace kestrum
