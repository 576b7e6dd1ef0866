#include "rig_list.h"

#include <hamlib/rig.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>

namespace kestrum::rigbridge {
namespace {

PortKind KindOf(rig_port_t port) {
  switch (port) {
    case RIG_PORT_SERIAL:
      return PortKind::kSerial;
    case RIG_PORT_NETWORK:
    case RIG_PORT_UDP_NETWORK:
      return PortKind::kNetwork;
    case RIG_PORT_NONE:
      return PortKind::kNone;
    default:
      return PortKind::kOther;
  }
}

int Collect(const rig_caps* caps, rig_ptr_t data) {
  RigModel rig;
  rig.number = static_cast<int>(caps->rig_model);
  rig.maker = caps->mfg_name;
  rig.name = caps->model_name;
  rig.status = rig_strstatus(caps->status);
  rig.port = KindOf(caps->port_type);
  // What a rig on the network can do is known when it has been asked.
  rig.has_meter =
      rig.port == PortKind::kNetwork || (caps->has_get_level & (RIG_LEVEL_STRENGTH | RIG_LEVEL_RAWSTR)) != 0;
  static_cast<std::vector<RigModel>*>(data)->push_back(rig);
  return 1;  // go on
}

std::string Lower(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return lower;
}

}  // namespace

std::vector<RigModel> ListRigs() {
  rig_set_debug(RIG_DEBUG_NONE);
  rig_load_all_backends();
  std::vector<RigModel> rigs;
  rig_list_foreach(Collect, &rigs);
  std::sort(rigs.begin(), rigs.end(), [](const RigModel& a, const RigModel& b) {
    const std::string name_of_a = Lower(a.FullName());
    const std::string name_of_b = Lower(b.FullName());
    return name_of_a != name_of_b ? name_of_a < name_of_b : a.number < b.number;
  });
  return rigs;
}

const RigModel* RigOf(const std::vector<RigModel>& rigs, int number) {
  const auto rig =
      std::find_if(rigs.begin(), rigs.end(), [number](const RigModel& row) { return row.number == number; });
  return rig == rigs.end() ? nullptr : &*rig;
}

bool Matches(const RigModel& rig, std::string_view search) {
  const std::string text = Lower(std::to_string(rig.number) + " " + rig.FullName());
  const std::string wanted = Lower(search);
  std::size_t from = 0;
  while (from < wanted.size()) {
    const std::size_t end = std::min(wanted.find(' ', from), wanted.size());
    if (text.find(wanted.substr(from, end - from)) == std::string::npos) return false;
    from = end + 1;
  }
  return true;
}

std::string ListText(const std::vector<RigModel>& rigs) {
  std::string text = " Number  Rig                                       Driver\n";
  for (const RigModel& rig : rigs) {
    std::array<char, 128> line{};
    std::snprintf(line.data(), line.size(), "%7d  %-40.40s  %s%s\n", rig.number, rig.FullName().c_str(),
                  rig.status.c_str(), rig.has_meter ? "" : ", reads no S-meter");
    text += line.data();
  }
  return text;
}

}  // namespace kestrum::rigbridge
