#include "analysis/layers.h"

#include <algorithm>

#include "analysis/summary.h"
#include "text/number_text.h"

namespace orvandi {
namespace {

constexpr const char* kNotTold = "not told";

std::string NameOf(const NamedLog& named, const Block& block, GroupBy by) {
  switch (by) {
    case GroupBy::kFile:
      return named.name;
    case GroupBy::kAntenna:
      return block.antenna.empty() ? kNotTold : block.antenna;
    case GroupBy::kRig:
      if (block.rig.empty()) return kNotTold;
      return block.mode.empty() ? block.rig : block.rig + " " + block.mode;
    case GroupBy::kFrequency:
      if (block.frequency_khz <= 0) return kNotTold;
      return kestrum::WithLeadingZero(kestrum::ShortNumber(block.frequency_khz)) + " kHz";
    case GroupBy::kDate:
      return block.has_header ? DateText(block.time_s) : kNotTold;
  }
  return {};
}

}  // namespace

Layers MakeLayers(std::span<const NamedLog> logs, GroupBy by) {
  Layers result;
  for (const NamedLog& named : logs) {
    // Two files of one name in two folders are two layers.
    const std::size_t first = by == GroupBy::kFile ? result.layers.size() : 0;
    std::vector<std::uint32_t>& of_block = result.of_block.emplace_back();
    of_block.reserve(named.log->blocks.size());
    for (const Block& block : named.log->blocks) {
      const std::string name = NameOf(named, block, by);
      auto layer = std::find_if(result.layers.begin() + static_cast<std::ptrdiff_t>(first),
                                result.layers.end(), [&](const Layer& known) { return known.name == name; });
      if (layer == result.layers.end()) layer = result.layers.insert(layer, {name, 0});
      layer->record_count += block.record_count;
      of_block.push_back(static_cast<std::uint32_t>(layer - result.layers.begin()));
    }
  }
  return result;
}

}  // namespace orvandi
