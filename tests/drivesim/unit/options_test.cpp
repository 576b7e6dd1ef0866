#include "options.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "support/reason_of.h"

namespace kestrum::drivesim {
namespace {

TEST(Options, Defaults) {
  const Result<Options> parsed = ParseOptions({"--dir", "there"});
  ASSERT_TRUE(parsed);
  const Options& options = parsed.value();
  EXPECT_EQ(options.directory, "there");
  EXPECT_EQ(options.model, sets::Model::kFT817);
  EXPECT_EQ(options.rig.frequency_hz, 3630000U);
  EXPECT_TRUE(options.rig.acknowledges);
  EXPECT_TRUE(options.rig.powered);
  EXPECT_DOUBLE_EQ(options.speedup, 1);
  EXPECT_TRUE(options.gps);
  EXPECT_FALSE(options.gsa);
  EXPECT_TRUE(options.faults.empty());
  EXPECT_EQ(options.antenna, Antenna::kBeam);
  EXPECT_FALSE(options.laps.has_value());
}

TEST(Options, EverythingInBothForms) {
  const Result<Options> parsed = ParseOptions({"--dir=d",     "--rig=FT840",
                                               "--frequency", "7050.5",
                                               "--log",       "l",
                                               "--control",   "c",
                                               "--speedup",   "2.5",
                                               "--seconds",   "30",
                                               "--start-utc", "2024-05-01T12:00:00Z",
                                               "--acks",      "off",
                                               "--power",     "off",
                                               "--faults",    "1:silence:2",
                                               "--antenna",   "vertical",
                                               "--laps",      "1.5",
                                               "--no-gps",    "--gsa"});
  ASSERT_TRUE(parsed);
  const Options& options = parsed.value();
  EXPECT_EQ(options.model, sets::Model::kFT840);
  EXPECT_EQ(options.rig.frequency_hz, 7050500U);
  EXPECT_EQ(options.log_path, "l");
  EXPECT_EQ(options.control_path, "c");
  EXPECT_DOUBLE_EQ(options.speedup, 2.5);
  EXPECT_EQ(options.wall_limit_s, 30.0);
  EXPECT_EQ(options.start_utc_s, 1714564800);
  EXPECT_FALSE(options.rig.acknowledges);
  EXPECT_FALSE(options.rig.powered);
  EXPECT_EQ(options.faults.size(), 1U);
  EXPECT_EQ(options.antenna, Antenna::kVertical);
  EXPECT_EQ(options.laps, 1.5);
  EXPECT_FALSE(options.gps);
  EXPECT_TRUE(options.gsa);
}

TEST(Options, FaultsFromAFile) {
  const auto path = std::filesystem::path(testing::TempDir()) / "drivesim_options_faults";
  std::ofstream(path) << "# script\n1:late:2\n3:nofix\n";
  const Result<Options> parsed = ParseOptions({"--dir", "d", "--faults", path.string()});
  std::filesystem::remove(path);
  ASSERT_TRUE(parsed);
  EXPECT_EQ(parsed.value().faults.size(), 2U);
}

TEST(Options, WrongValuesAreNamed) {
  const std::vector<std::vector<std::string>> bad = {
      {"--rig", "FT1000"}, {"--rig", "ft817"},    {"--frequency", "x"},     {"--frequency", "99"},
      {"--speedup", "0"},  {"--speedup", "1001"}, {"--seconds", "-1"},      {"--start-utc", "today"},
      {"--acks", "yes"},   {"--power", "1"},      {"--faults", "nonsense"}, {"--dir", ""},
      {"--log", ""},       {"--whatever", "x"},   {"--tx", "51,5"},         {"stray"},
      {"--rig"},           {"--no-gps=1"},        {"--antenna", "dish"},    {"--laps", "0"},
      {"--laps", "-1"},    {"--laps", "1001"},    {"--laps", "x"}};
  for (const auto& row : bad) {
    std::vector<std::string> arguments = {"--dir", "d"};
    arguments.insert(arguments.end(), row.begin(), row.end());
    EXPECT_FALSE(ParseOptions(arguments)) << row[0] << " " << row.back();
  }
  EXPECT_EQ(test::TextOfFault(ParseOptions({"--rig", "FT1000", "--dir", "d"})),
            "--rig wants FT817, FT840, FT847, FT857 or FT897, not \"FT1000\"");
  EXPECT_EQ(test::TextOfFault(ParseOptions({"--rig"})), "--rig wants a value");
}

TEST(Options, FolderIsNeededExceptForHelpAndVersion) {
  EXPECT_EQ(test::TextOfFault(ParseOptions({})), "--dir is missing");
  EXPECT_TRUE(ParseOptions({"--help"}));
  EXPECT_TRUE(ParseOptions({"--version"}));
}

TEST(Options, TextsOfHelpAndVersion) {
  EXPECT_EQ(VersionText(), "drivesim 1.02");
  for (const char* name : {"--dir", "--rig", "--frequency", "--start-utc", "--speedup", "--seconds",
                           "--no-gps", "--gsa", "--acks", "--power", "--antenna", "--laps", "--log",
                           "--faults", "--control", "--help", "--version"}) {
    EXPECT_NE(HelpText().find(name), std::string::npos) << name;
  }
}

}  // namespace
}  // namespace kestrum::drivesim
