#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <fstream>

#include "drive_process.h"

namespace kestrum::drivesim {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::StartsWith;

const std::string kProgram = DRIVESIM_PROGRAM;

TEST(DrivesimLifetime, TellsItsLinksOnOneLine) {
  DriveProcess drive({});
  const std::string com = fs::read_symlink(drive.File("com1"));
  const std::string gps = fs::read_symlink(drive.File("gps"));
  EXPECT_EQ(drive.ReadyLine(), "drivesim 1.02 ready: " + drive.File("com1").string() + " -> " + com + ", " +
                                   drive.File("gps").string() + " -> " + gps);
  EXPECT_THAT(com, StartsWith("/dev/pts/"));
}

TEST(DrivesimLifetime, SignalsEndItCleanly) {
  for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
    DriveProcess drive({"--control", "pipe"});
    ASSERT_TRUE(fs::is_symlink(drive.File("com1")));
    ASSERT_TRUE(fs::is_fifo(drive.File("pipe")));
    drive.Signal(number);
    EXPECT_EQ(drive.Wait(), 0);
    EXPECT_FALSE(fs::is_symlink(drive.File("com1")));
    EXPECT_FALSE(fs::is_symlink(drive.File("gps")));
    EXPECT_FALSE(fs::exists(drive.File("pipe")));
  }
}

TEST(DrivesimLifetime, QuitAndTheTimeLimitEndIt) {
  DriveProcess told({});
  told.Tell("quit");
  EXPECT_EQ(told.Wait(), 0);
  EXPECT_FALSE(fs::is_symlink(told.File("com1")));
  DriveProcess timed({"--seconds", "0.2"});
  EXPECT_EQ(timed.Wait(), 0);
}

TEST(DrivesimLifetime, EndOfItsInputIsNoReasonToEndOrToSpin) {
  DriveProcess drive({});
  drive.CloseInput();
  {
    const Client client(drive.File("com1"));
    EXPECT_EQ(client.Ask({0, 0, 0, 0, 0xF7}, 1), Bytes{0xFF});
  }
  // The client is gone and the input is at its end: both would wake a careless loop for ever.
  const double before = drive.CpuS();
  ::sleep(1);
  EXPECT_LT(drive.CpuS() - before, 0.3);
}

TEST(DrivesimLifetime, WithoutGps) {
  DriveProcess drive({"--no-gps"});
  EXPECT_TRUE(fs::is_symlink(drive.File("com1")));
  EXPECT_FALSE(fs::is_symlink(drive.File("gps")));
}

TEST(DrivesimLifetime, TakesOverTheLinksOfOneThatWasKilled) {
  const Scratch folder;
  fs::create_symlink("/dev/pts/99999", folder.Path() / "com1");
  fs::create_symlink("/dev/pts/99998", folder.Path() / "gps");
  const Outcome outcome = RunShell(kProgram + " --seconds 0.1 --dir " + folder.Path().string());
  EXPECT_EQ(outcome.exit_code, 0);
  EXPECT_TRUE(fs::is_empty(folder.Path()));
}

TEST(DrivesimLifetime, MakesTheFolder) {
  const Scratch folder;
  const fs::path below = folder.Path() / "a" / "b";
  EXPECT_EQ(RunShell(kProgram + " --seconds 0 --dir " + below.string()).exit_code, 0);
  EXPECT_TRUE(fs::is_directory(below));
}

TEST(DrivesimLifetime, RefusesWhatIsInTheWay) {
  const Scratch folder;
  const std::string path = folder.Path().string();
  std::ofstream(folder.Path() / "gps") << "mine";
  const Outcome file = RunShell(kProgram + " --seconds 0 --dir " + path);
  EXPECT_EQ(file.exit_code, 1);
  EXPECT_EQ(file.output, "drivesim: " + path + "/gps: there is a file of that name that is no link\n");
  EXPECT_FALSE(fs::is_symlink(folder.Path() / "com1"));  // nothing half-done stays
  const Outcome pipe =
      RunShell(kProgram + " --no-gps --seconds 0 --dir " + path + " --control " + path + "/gps");
  EXPECT_EQ(pipe.exit_code, 1);
  EXPECT_EQ(pipe.output, "drivesim: " + path + "/gps: there is a file of that name that is no pipe\n");
  const Outcome log = RunShell(kProgram + " --no-gps --seconds 0 --dir " + path + " --log /no/such/log");
  EXPECT_EQ(log.exit_code, 1);
  EXPECT_EQ(log.output, "drivesim: /no/such/log: cannot be written\n");
  EXPECT_EQ(ReadFile(folder.Path() / "gps"), "mine");
}

TEST(DrivesimLifetime, HelpVersionAndWrongUse) {
  const Outcome help = RunShell(kProgram + " --help");
  EXPECT_EQ(help.exit_code, 0);
  EXPECT_THAT(help.output, StartsWith("Usage: drivesim --dir DIR [options]\n"));
  const Outcome version = RunShell(kProgram + " --version");
  EXPECT_EQ(version.exit_code, 0);
  EXPECT_EQ(version.output, "drivesim 1.02\n");
  const Outcome wrong = RunShell(kProgram + " --dir x --rig FT1");
  EXPECT_EQ(wrong.exit_code, 2);
  EXPECT_THAT(wrong.output, HasSubstr("--rig wants FT817, FT840, FT847, FT857 or FT897, not \"FT1\""));
  EXPECT_EQ(RunShell(kProgram + " --dir x --faults 1:noise:2").exit_code, 2);
  EXPECT_EQ(RunShell(kProgram).exit_code, 2);
}

}  // namespace
}  // namespace kestrum::drivesim
