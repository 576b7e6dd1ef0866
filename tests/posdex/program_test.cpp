#include "program.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace kestrum::posdex {
namespace {

TEST(Program, PrintsHelpAndVersionWithoutADisplay) {
  Program program({});
  program.Start({"--version"});
  ASSERT_TRUE(program.WaitForEnd(5000));
  EXPECT_EQ(program.Output(), "Posdex Version 1.19\n");
  program.Start({"--help"});
  ASSERT_TRUE(program.WaitForEnd(5000));
  EXPECT_EQ(program.ExitCode(), 0);
  EXPECT_TRUE(program.Output().find("--source serial:DEVICE@BAUD") != std::string::npos);
}

TEST(Program, RefusesAMalformedSource) {
  Program program({});
  program.Start({"--source", "serial:gps@fast"});
  ASSERT_TRUE(program.WaitForEnd(5000));
  EXPECT_EQ(program.ExitCode(), 2);
  EXPECT_TRUE(program.Errors().find("--source: bad baud rate \"fast\"") != std::string::npos);
}

TEST(Program, StartsFromItsConfigurationAndClosesWhenAsked) {
  const PrivateBus bus;
  const Pty pty;
  Program program(bus.address());
  ASSERT_TRUE(program.PlugIn(pty));
  program.WriteFile("posdex.conf", "# the simulated receiver\r\nsource=serial:gps@4800\r\n");
  program.Start();
  const LinkClient client(bus.address());
  ASSERT_TRUE(client.WaitForValue("Title", Q("Posdex Version 1.19"), 5000));
  const Receiver receiver(pty);
  ASSERT_TRUE(client.WaitForValue("lblHeight1", Q("328.1"), 5000));
  EXPECT_EQ(client.Get("lblVal1"), Q("A"));
  EXPECT_EQ(client.Get("lblLat1"), Q("5157.0000N"));
  EXPECT_EQ(client.Get("lblLong1"), Q("00532.0000E"));
  EXPECT_EQ(client.Get("lblSpeed1"), Q("10"));
  EXPECT_EQ(client.Get("lblCompas1"), Q("45"));
  client.Quit();
  ASSERT_TRUE(program.WaitForEnd(3000));
  EXPECT_EQ(program.ExitCode(), 0);
}

TEST(Program, TheCommandLineWinsOverTheConfiguration) {
  const PrivateBus bus;
  Program program(bus.address());
  program.WriteFile("posdex.conf", "source=file:other.nmea\n");
  program.WriteFile("drive.nmea", Nmea("GPRMC,120000.00,A,4807.03800,N,01131.00000,E,22.4,84.4,010125,,,A"));
  program.Start({"--source", "file:drive.nmea"});
  const LinkClient client(bus.address());
  EXPECT_TRUE(client.WaitForValue("lblLat1", Q("4807.0380N"), 5000));
  // The recording is over: its fix ends like any other.
  EXPECT_TRUE(client.WaitForValue("lblVal1", Q("A"), 1000));
  EXPECT_TRUE(client.WaitForValue("lblVal1", Q("V"), 5000));
}

TEST(Program, ASecondReaderSaysSoAndEnds) {
  const PrivateBus bus;
  Program first(bus.address());
  first.Start({"--source", "file:none"});
  const LinkClient client(bus.address());
  ASSERT_TRUE(client.WaitForValue("lblVal1", Q("V"), 5000));
  Program second(bus.address());
  second.Start({"--source", "file:none"});
  ASSERT_TRUE(second.WaitForEnd(5000));
  EXPECT_EQ(second.ExitCode(), 1);
  EXPECT_TRUE(second.Errors().find("Posdex: another GPS reader is already running on this session bus.") !=
              std::string::npos);
  EXPECT_EQ(client.Get("lblVal1"), Q("V"));
}

TEST(Program, AKilledReaderIsReplacedByTheNextOne) {
  const PrivateBus bus;
  const LinkClient client(bus.address());
  for (int round = 0; round < 2; ++round) {
    Program program(bus.address());
    program.Start({"--source", "file:none"});
    ASSERT_TRUE(client.WaitForValue("lblVal1", Q("V"), 5000)) << round;
    program.Signal(SIGKILL);
    ASSERT_TRUE(program.WaitForEnd(3000));
  }
}

TEST(Program, EverySignalEndsItCleanly) {
  const PrivateBus bus;
  const LinkClient client(bus.address());
  for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
    Program program(bus.address());
    program.Start({"--source", "file:none"});
    ASSERT_TRUE(client.WaitForValue("lblVal1", Q("V"), 5000)) << number;
    program.Signal(number);
    ASSERT_TRUE(program.WaitForEnd(3000)) << number;
    EXPECT_EQ(program.ExitCode(), 0) << number;
  }
}

TEST(Program, RunsWithoutABusAndFindsALateOne) {
  Program program({});
  program.Start({"--source", "file:none"});
  ASSERT_TRUE(StaysTrueWhileEventsRun(milliseconds(1000), [&] { return program.Running(); }));
  const PrivateBus bus(program.Folder());
  const LinkClient client(bus.address());
  EXPECT_TRUE(client.WaitForValue("lblVal1", Q("V"), 5000));
}

// A bus that takes the connection and never answers.
TEST(Program, ABusThatDoesNotAnswerHoldsNothingUp) {
  const process::Scratch folder;
  const std::string path = folder.File("bus");
  Program program("unix:path=" + path);
  const int listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path.copy(static_cast<char*>(address.sun_path), sizeof(address.sun_path) - 1);
  ASSERT_EQ(bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
  ASSERT_EQ(listen(listener, 5), 0);
  program.Start({"--source", "file:none"});
  ASSERT_TRUE(StaysTrueWhileEventsRun(milliseconds(1500), [&] { return program.Running(); }));
  program.Signal(SIGTERM);
  EXPECT_TRUE(program.WaitForEnd(3000));
  EXPECT_EQ(program.ExitCode(), 0);
  close(listener);
}

TEST(Program, AnUnpluggedSerialReceiverIsInvalidWithinFiveSecondsAndReturns) {
  const PrivateBus bus;
  Program program(bus.address());
  const LinkClient client(bus.address());
  {
    const Pty pty;
    ASSERT_TRUE(program.PlugIn(pty));
    program.Start({"--source", "serial:gps@4800"});
    const Receiver receiver(pty);
    ASSERT_TRUE(client.WaitForValue("lblVal1", Q("A"), 8000));
  }
  EXPECT_TRUE(client.WaitForValue("lblVal1", Q("V"), 5000));
  EXPECT_EQ(client.Get("lblLat1"), Q("5157.0000N"));
  ASSERT_TRUE(program.PullOut());
  const Pty again;
  ASSERT_TRUE(program.PlugIn(again));
  const Receiver receiver(again);
  EXPECT_TRUE(client.WaitForValue("lblVal1", Q("A"), 8000));
}

}  // namespace
}  // namespace kestrum::posdex
