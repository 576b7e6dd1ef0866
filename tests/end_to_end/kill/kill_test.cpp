// The program is killed while it writes its files.
#include <gtest/gtest.h>

#include <csignal>
#include <random>

#include "log_blocks.h"
#include "support_process/child.h"
#include "support_process/files.h"

namespace kestrum::end_to_end {
namespace {

using std::chrono::microseconds;

constexpr int kKills = 200;

void ExpectAWholeConfiguration(const std::string& bytes) {
  ASSERT_TRUE(bytes.ends_with("\r\n"));
  const auto lines = process::Split(bytes, "\r\n");
  ASSERT_GE(lines.size(), 23U);
  EXPECT_EQ(lines[0], "Kestrum Auto field strenght logger V1.02");
  const bool is_long = lines[17] == "long";
  ASSERT_EQ(lines.size(), is_long ? 43U : 23U);
  for (std::size_t i = 22; i < lines.size(); ++i) EXPECT_EQ(lines[i], is_long ? std::string(500, 'L') : "S");
}

TEST(Kill, AtAnyMomentLeavesWholeFiles) {
  const process::Scratch scratch;
  std::mt19937 random(20240501);
  std::size_t blocks_so_far = 0;
  std::string log;
  for (int kill = 0; kill < kKills; ++kill) {
    process::Child writer({{KESTRUM_WRITER, scratch.path().string()}, {}, {}});
    ASSERT_EQ(writer.ReadLine(), "round");
    std::this_thread::sleep_for(microseconds(random() % 20000));
    writer.Kill();
    ASSERT_EQ(writer.Wait(), -SIGKILL);
    // A block on its way is finished by a process of its own.
    ASSERT_TRUE(process::Eventually([] { return process::ProcessesOf(KESTRUM_WRITER).empty(); }));
    ExpectAWholeConfiguration(process::ReadFile(scratch.File("Kestrum.cfg")));
    const std::string now = process::ReadFile(scratch.File("RSSI-GPS.log"));
    ASSERT_TRUE(now.starts_with(log)) << "what was written has changed";
    const auto added = ParseLog(now.substr(log.size()));
    for (const Block& block : added) ASSERT_EQ(block.records.size(), 100U) << "after kill " << kill;
    blocks_so_far += added.size();
    log = now;
    if (HasFailure()) return;
  }
  EXPECT_GE(blocks_so_far, static_cast<std::size_t>(kKills));
}

}  // namespace
}  // namespace kestrum::end_to_end
