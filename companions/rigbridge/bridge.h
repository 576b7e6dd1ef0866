#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "cat_port.h"
#include "rig_list.h"
#include "rig_reader.h"
#include "sets/unique_fd.h"

namespace kestrum::rigbridge {

// What is to be seen of the bridge at a moment.
struct BridgeView {
  std::string state;
  std::string reading;
  std::string frequency;
  std::string link;
  std::vector<std::string> notes;
};

// Rig on one side, Kestrum's port on the other, with the settings in rigbridge.conf.
class Bridge {
 public:
  // `link_folder`: where Kestrum is; `conf`: path of rigbridge.conf.
  Bridge(RigReader::MakeDriver make_driver, std::filesystem::path link_folder, std::filesystem::path conf);

  // Reads rigbridge.conf and applies `fields` over it. What is wrong with the file, when something is.
  std::optional<Fault> Load(const std::vector<std::pair<std::string, std::string>>& fields);
  // Serves as the settings say.
  Outcome Start();
  // Other settings from now on, kept in rigbridge.conf. A fault when the link or the file cannot be made.
  Outcome Change(const BridgeSettings& settings);
  const BridgeSettings& Settings() const { return settings_; }

  // "/opt/kestrum/com1"
  std::filesystem::path Link() const { return link_folder_ / settings_.link; }
  RigState State() const { return reader_.State(); }
  BridgeView View() const;
  // Takes the link away and asks the reader to end; false when it still waits for the rig.
  bool Stop(double patience_s);

 private:
  Outcome Save() const;

  std::filesystem::path link_folder_;
  std::filesystem::path conf_;
  BridgeSettings settings_;
  RigReader reader_;
  CatPort port_;
  sets::UniqueFd folder_lock_;
};

}  // namespace kestrum::rigbridge
