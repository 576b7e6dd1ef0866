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

TEST(DrivesimLifetime, EndOfItsInputIsNoReasonToEnd) {
  DriveProcess drive({});
  drive.CloseInput();
  {
    const Client client(drive.File("com1"));
    EXPECT_EQ(client.Ask({0, 0, 0, 0, 0xF7}, 1), Bytes{0xFF});
  }
  // The client is gone too. That none of this wakes the program for ever is measured by bench/run.
  EXPECT_TRUE(process::StaysTrueFor(std::chrono::milliseconds(500), [&] { return drive.Running(); }));
  const Client next(drive.File("com1"));
  EXPECT_EQ(next.Ask({0, 0, 0, 0, 0xF7}, 1), Bytes{0xFF});
}

TEST(DrivesimLifetime, WithoutGps) {
  DriveProcess drive({"--no-gps"});
  EXPECT_TRUE(fs::is_symlink(drive.File("com1")));
  EXPECT_FALSE(fs::is_symlink(drive.File("gps")));
}

TEST(DrivesimLifetime, TakesOverTheLinksOfOneThatWasKilled) {
  const Scratch folder;
  fs::create_symlink("/dev/pts/99999", folder.path() / "com1");
  fs::create_symlink("/dev/pts/99998", folder.path() / "gps");
  const Ending ending = RunShell(kProgram + " --seconds 0.1 --dir " + folder.path().string());
  EXPECT_EQ(ending.code, 0);
  EXPECT_TRUE(fs::is_empty(folder.path()));
}

TEST(DrivesimLifetime, MakesTheFolder) {
  const Scratch folder;
  const fs::path below = folder.path() / "a" / "b";
  EXPECT_EQ(RunShell(kProgram + " --seconds 0 --dir " + below.string()).code, 0);
  EXPECT_TRUE(fs::is_directory(below));
}

TEST(DrivesimLifetime, RefusesWhatIsInTheWay) {
  const Scratch folder;
  const std::string path = folder.path().string();
  std::ofstream(folder.path() / "gps") << "mine";
  const Ending file = RunShell(kProgram + " --seconds 0 --dir " + path);
  EXPECT_EQ(file.code, 1);
  EXPECT_EQ(file.output, "drivesim: " + path + "/gps: there is a file of that name that is no link\n");
  EXPECT_FALSE(fs::is_symlink(folder.path() / "com1"));  // nothing half-done stays
  const Ending pipe =
      RunShell(kProgram + " --no-gps --seconds 0 --dir " + path + " --control " + path + "/gps");
  EXPECT_EQ(pipe.code, 1);
  EXPECT_EQ(pipe.output, "drivesim: " + path + "/gps: there is a file of that name that is no pipe\n");
  const Ending log = RunShell(kProgram + " --no-gps --seconds 0 --dir " + path + " --log /no/such/log");
  EXPECT_EQ(log.code, 1);
  EXPECT_EQ(log.output, "drivesim: /no/such/log: cannot be written\n");
  EXPECT_EQ(ReadFile(folder.path() / "gps"), "mine");
}

TEST(DrivesimLifetime, HelpVersionAndWrongUse) {
  const Ending help = RunShell(kProgram + " --help");
  EXPECT_EQ(help.code, 0);
  EXPECT_THAT(help.output, StartsWith("Usage: drivesim --dir DIR [options]\n"));
  const Ending version = RunShell(kProgram + " --version");
  EXPECT_EQ(version.code, 0);
  EXPECT_EQ(version.output, "drivesim 1.02\n");
  const Ending wrong = RunShell(kProgram + " --dir x --rig FT1");
  EXPECT_EQ(wrong.code, 2);
  EXPECT_THAT(wrong.output, HasSubstr("--rig wants FT817, FT840, FT847, FT857 or FT897, not \"FT1\""));
  EXPECT_EQ(RunShell(kProgram + " --dir x --faults 1:noise:2").code, 2);
  EXPECT_EQ(RunShell(kProgram).code, 2);
}

}  // namespace
}  // namespace kestrum::drivesim
