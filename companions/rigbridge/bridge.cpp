#include "bridge.h"

#include <fcntl.h>
#include <sys/file.h>

#include <fstream>
#include <sstream>
#include <system_error>
#include <tuple>
#include <utility>

#include "bridge_settings.h"
#include "common/fault_text.h"
#include "state_texts.h"

namespace kestrum::rigbridge {

Bridge::Bridge(RigReader::MakeDriver make_driver, std::filesystem::path link_folder,
               std::filesystem::path conf)
    : link_folder_(std::move(link_folder)),
      conf_(std::move(conf)),
      reader_(std::move(make_driver)),
      port_(reader_) {}

std::optional<Fault> Bridge::Load(const std::vector<std::pair<std::string, std::string>>& fields) {
  std::ostringstream text;
  if (std::ifstream file(conf_, std::ios::binary); file) text << file.rdbuf();
  ParsedConf parsed = ParseConf(text.str());
  settings_ = parsed.settings;
  // They have been understood before.
  for (const auto& [name, value] : fields) std::ignore = Set(settings_, name, value);
  return parsed.complaint;
}

Outcome Bridge::Start() {
  if (!folder_lock_) {
    folder_lock_ = sets::UniqueFd(::open(link_folder_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder_lock_) {
      return Fault{"", TextOf(SystemFault(link_folder_.string())) + "."};
    }
  }
  if (::flock(folder_lock_.Get(), LOCK_EX | LOCK_NB) != 0) {
    folder_lock_.Reset();
    return Fault{"", "Another rigbridge serves " + link_folder_.string() + " already."};
  }
  reader_.Use(settings_);
  return port_.Open(Link(), settings_);
}

Outcome Bridge::Change(const BridgeSettings& settings) {
  settings_ = settings;
  if (const Outcome started = Start(); !started) return started.fault();
  return Save();
}

// Written beside it and renamed over it, so that a full disk leaves the old one.
Outcome Bridge::Save() const {
  std::filesystem::path fresh = conf_;
  fresh += ".new";
  std::ofstream file(fresh, std::ios::binary | std::ios::trunc);
  file << ConfText(settings_);
  file.close();
  std::error_code error;
  if (file) std::filesystem::rename(fresh, conf_, error);
  if (file && !error) return Done{};
  std::error_code left;
  std::filesystem::remove(fresh, left);
  return Fault{"", conf_.string() + " cannot be written: the settings hold until the end only."};
}

BridgeView Bridge::View() const {
  const RigState state = reader_.State();
  const double now_s = NowS();
  return {StateText(state, now_s), ReadingText(state, settings_, now_s), FrequencyText(state.dial),
          LinkText(settings_, port_.LastCommandS(), now_s), state.notes};
}

bool Bridge::Stop(double patience_s) {
  port_.Close();
  return reader_.Stop(patience_s);
}

}  // namespace kestrum::rigbridge
