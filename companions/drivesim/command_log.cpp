#include "command_log.h"

#include "sets/bytes.h"

namespace kestrum::drivesim {
namespace {

std::string WithMeaning(std::span<const std::uint8_t> bytes, std::string_view meaning) {
  std::string text = sets::HexText(bytes);
  if (!meaning.empty()) text += "  " + std::string(meaning);
  return text;
}

}  // namespace

bool CommandLog::Open(const std::string& path) {
  file_.reset(std::fopen(path.c_str(), "we"));
  return file_ != nullptr;
}

void CommandLog::Received(double sim_s, std::span<const std::uint8_t> bytes, std::string_view meaning) {
  Line(sim_s, "rx", WithMeaning(bytes, meaning));
}

void CommandLog::Sent(double sim_s, std::span<const std::uint8_t> bytes, std::string_view meaning) {
  Line(sim_s, "tx", WithMeaning(bytes, meaning));
}

void CommandLog::Note(double sim_s, std::string_view text) {
  Line(sim_s, "--", std::string(text));
}

void CommandLog::Line(double sim_s, const char* direction, const std::string& text) {
  if (!file_) return;
  std::fprintf(file_.get(), "%.3f %s %s\n", sim_s, direction, text.c_str());
  std::fflush(file_.get());
}

}  // namespace kestrum::drivesim
