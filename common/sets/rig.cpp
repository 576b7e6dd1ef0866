#include "sets/rig.h"

#include <array>
#include <cstdio>

#include "sets/rig_ft817.h"
#include "sets/rig_ft840.h"
#include "sets/rig_ft847.h"

namespace kestrum::sets {
namespace {

struct Named {
  std::string_view name;
  Model model;
};
constexpr std::array<Named, 5> kModels = {{{"FT817", Model::FT817},
                                           {"FT840", Model::FT840},
                                           {"FT847", Model::FT847},
                                           {"FT857", Model::FT857},
                                           {"FT897", Model::FT897}}};

}  // namespace

std::optional<Model> ModelOf(std::string_view name) {
  for (const Named& row : kModels) {
    if (row.name == name) return row.model;
  }
  return std::nullopt;
}

std::string_view ModelName(Model model) {
  for (const Named& row : kModels) {
    if (row.model == model) return row.name;
  }
  return {};
}

std::string_view ModeName(Mode mode) {
  switch (mode) {
    case Mode::LSB:
      return "LSB";
    case Mode::USB:
      return "USB";
    case Mode::CW:
      return "CW";
    case Mode::CWN:
      return "CWN";
    case Mode::CWR:
      return "CWR";
    case Mode::CWNR:
      return "CWNR";
    case Mode::AM:
      return "AM";
    case Mode::AMN:
      return "AMN";
    case Mode::FM:
      return "FM";
    case Mode::FMN:
      return "FMN";
    case Mode::WFM:
      return "WFM";
    case Mode::DIG:
      return "DIG";
    case Mode::PKT:
      return "PKT";
  }
  return {};
}

std::unique_ptr<Rig> MakeRig(Model model, const RigSetup& setup) {
  switch (model) {
    case Model::FT840:
      return std::make_unique<RigFt840>(setup);
    case Model::FT847:
      return std::make_unique<RigFt847>(setup);
    case Model::FT817:
    case Model::FT857:
    case Model::FT897:
      break;
  }
  return std::make_unique<RigFt817>(model, setup);
}

std::string FrequencyText(std::uint32_t frequency_10hz) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%u.%02u kHz", frequency_10hz / 100, frequency_10hz % 100);
  return text.data();
}

}  // namespace kestrum::sets
