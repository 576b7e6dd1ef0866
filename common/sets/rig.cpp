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
constexpr std::array<Named, 5> kModels = {{{"FT817", Model::kFT817},
                                           {"FT840", Model::kFT840},
                                           {"FT847", Model::kFT847},
                                           {"FT857", Model::kFT857},
                                           {"FT897", Model::kFT897}}};

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
    case Mode::kLsb:
      return "LSB";
    case Mode::kUsb:
      return "USB";
    case Mode::kCw:
      return "CW";
    case Mode::kCwn:
      return "CWN";
    case Mode::kCwr:
      return "CWR";
    case Mode::kCwnr:
      return "CWNR";
    case Mode::kAm:
      return "AM";
    case Mode::kAmn:
      return "AMN";
    case Mode::kFm:
      return "FM";
    case Mode::kFmn:
      return "FMN";
    case Mode::kWfm:
      return "WFM";
    case Mode::kDig:
      return "DIG";
    case Mode::kPkt:
      return "PKT";
  }
  return {};
}

std::unique_ptr<Rig> MakeRig(Model model, const RigSetup& setup) {
  switch (model) {
    case Model::kFT840:
      return std::make_unique<RigFt840>(setup);
    case Model::kFT847:
      return std::make_unique<RigFt847>(setup);
    case Model::kFT817:
    case Model::kFT857:
    case Model::kFT897:
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
