#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "drive_process.h"

namespace kestrum::drivesim {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::StartsWith;

bool ChecksumIsRight(const std::string& sentence) {
  if (sentence.size() < 4 || sentence[0] != '$' || sentence[sentence.size() - 3] != '*') return false;
  unsigned sum = 0;
  for (const char c : sentence.substr(1, sentence.size() - 4)) sum ^= static_cast<unsigned char>(c);
  return std::stoul(sentence.substr(sentence.size() - 2), nullptr, 16) == sum;
}

std::vector<std::string> Fields(const std::string& sentence) {
  std::vector<std::string> fields(1);
  for (const char c : sentence) {
    if (c == ',' || c == '*') {
      fields.emplace_back();
    } else {
      fields.back() += c;
    }
  }
  return fields;
}

TEST(DrivesimGpsPort, SendsRmcAndGgaEachSecond) {
  DriveProcess drive({"--start-utc", "2024-05-01T23:59:50Z", "--speedup", "20"});
  Client client(drive.File("gps"));
  std::string last_time;
  for (int i = 0; i < 20; ++i) {
    const std::string rmc = client.Line();
    const std::string gga = client.Line();
    ASSERT_TRUE(ChecksumIsRight(rmc)) << rmc;
    ASSERT_TRUE(ChecksumIsRight(gga)) << gga;
    const auto rmc_fields = Fields(rmc);
    const auto gga_fields = Fields(gga);
    ASSERT_EQ(rmc_fields.size(), 14U) << rmc;
    ASSERT_EQ(gga_fields.size(), 16U) << gga;
    EXPECT_EQ(rmc_fields[0], "$GPRMC");
    EXPECT_EQ(gga_fields[0], "$GPGGA");
    EXPECT_EQ(rmc_fields[1], gga_fields[1]);
    EXPECT_EQ(rmc_fields[2], "A");
    EXPECT_EQ(gga_fields[6], "1");
    EXPECT_THAT(rmc_fields[3], testing::AnyOf(StartsWith("515"), StartsWith("520")));
    EXPECT_EQ(rmc_fields[4], "N");
    EXPECT_THAT(rmc_fields[5], StartsWith("005"));
    EXPECT_EQ(rmc_fields[6], "E");
    EXPECT_EQ(rmc_fields[9], rmc_fields[1].substr(0, 2) == "23" ? "010524" : "020524");
    EXPECT_NE(rmc_fields[1], last_time);
    last_time = rmc_fields[1];
  }
}

// Of a new drive: the first 60 sentences by their kind and time.
std::map<std::string, std::string> FirstSentences() {
  DriveProcess drive({"--start-utc", "2024-05-01T12:00:00Z", "--speedup", "50", "--gsa"});
  Client client(drive.File("gps"));
  std::map<std::string, std::string> sentences;
  for (int i = 0; i < 60; ++i) {
    const std::string line = client.Line();
    EXPECT_TRUE(ChecksumIsRight(line)) << line;
    sentences[line.substr(0, 13)] = line;
  }
  return sentences;
}

TEST(DrivesimGpsPort, SameStartSameSentences) {
  const auto first = FirstSentences();
  const auto second = FirstSentences();
  int common = 0;
  for (const auto& [key, line] : first) {
    const auto other = second.find(key);
    if (other == second.end()) continue;  // a busy machine skips a second now and then
    EXPECT_EQ(line, other->second);
    ++common;
  }
  EXPECT_GT(common, 20);
  EXPECT_EQ(first.count("$GPGSA,A,3,02"), 1U);
}

TEST(DrivesimGpsPort, LostFixAndItsReturn) {
  DriveProcess drive({"--speedup", "20"});
  Client client(drive.File("gps"));
  EXPECT_THAT(client.Line(), HasSubstr(",A,"));
  drive.Tell("nofix");
  EXPECT_TRUE(Eventually([&] { return client.Line().find(",V,,,,,,,") != std::string::npos; }));
  const std::string gga = client.Line();
  EXPECT_THAT(gga, HasSubstr(",,,,,0,00,99.9,"));
  EXPECT_TRUE(ChecksumIsRight(gga));
  drive.Tell("clear");
  EXPECT_TRUE(Eventually([&] { return client.Line().find(",A,") != std::string::npos; }));
}

TEST(DrivesimGpsPort, TheTunnelHasNoFix) {
  DriveProcess drive({"--speedup", "200"});
  Client client(drive.File("gps"));
  EXPECT_THAT(client.Line(), HasSubstr(",A,"));
  EXPECT_TRUE(Eventually([&] { return client.Line().find(",V,,,,,,,") != std::string::npos; }));
  EXPECT_TRUE(Eventually([&] { return client.Line().find(",A,") != std::string::npos; }));
}

TEST(DrivesimGpsPort, AfterItsLapsTheCarStands) {
  DriveProcess drive({"--speedup", "200", "--laps", "0.02", "--log", "log"});
  ASSERT_TRUE(
      Eventually([&] { return ReadFile(drive.File("log")).find("-- arrived\n") != std::string::npos; }));
  Client client(drive.File("gps"));
  const auto place = [&client] {
    std::string line = client.Line();
    while (!line.empty() && !line.starts_with("$GPRMC")) line = client.Line();
    const auto fields = Fields(line);
    return fields.size() > 6 ? fields[3] + fields[5] : std::string();
  };
  const std::string first = place();
  EXPECT_NE(first, "");
  for (int i = 0; i < 5; ++i) EXPECT_EQ(place(), first);
}

TEST(DrivesimGpsPort, SilentReceiver) {
  DriveProcess drive({"--speedup", "50", "--faults", "0:gps-silence"});
  const Client client(drive.File("gps"));
  EXPECT_TRUE(client.ReceiveFor(std::chrono::milliseconds(300)).empty());
  drive.Tell("clear");
  EXPECT_FALSE(client.Receive(10).empty());
}

TEST(DrivesimGpsPort, VanishesWithoutTheRig) {
  DriveProcess drive({"--speedup", "20"});
  const Client client(drive.File("gps"));
  EXPECT_FALSE(client.Receive(1).empty());
  drive.Tell("gps-vanish 20");
  EXPECT_TRUE(client.HungUp());
  EXPECT_TRUE(fs::exists(drive.File("com1")));
  EXPECT_TRUE(Eventually([&] { return fs::exists(drive.File("gps")); }));
  const Client again(drive.File("gps"));
  EXPECT_FALSE(again.Receive(1).empty());
}

TEST(DrivesimGpsPort, AClientThatComesLaterHearsNoOldSentences) {
  DriveProcess drive({"--start-utc", "2024-05-01T12:00:00Z", "--speedup", "100"});
  process::LetRunFor(std::chrono::milliseconds(300));  // half a minute of drive that nobody listens to
  Client client(drive.File("gps"));
  const auto fields = Fields(client.Line());
  ASSERT_GT(fields.size(), 1U);
  EXPECT_GT(fields[1], "120020.00");
}

}  // namespace
}  // namespace kestrum::drivesim
