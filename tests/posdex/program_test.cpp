#include "program.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QDir>

namespace kestrum::posdex {
namespace {

TEST(Program, PrintsHelpAndVersionWithoutADisplay) {
  Program program({});
  program.Start({Q("--version")});
  ASSERT_TRUE(program.WaitForEnd(5000));
  EXPECT_EQ(program.Process().readAllStandardOutput(), "Posdex Version 1.19\n");
  program.Start({Q("--help")});
  ASSERT_TRUE(program.WaitForEnd(5000));
  EXPECT_EQ(program.Process().exitCode(), 0);
  EXPECT_TRUE(program.Process().readAllStandardOutput().contains("--source serial:DEVICE@BAUD"));
}

TEST(Program, RefusesAMalformedSource) {
  Program program({});
  program.Start({Q("--source"), Q("serial:gps@fast")});
  ASSERT_TRUE(program.WaitForEnd(5000));
  EXPECT_EQ(program.Process().exitCode(), 2);
  EXPECT_TRUE(program.Process().readAllStandardError().contains("--source: bad baud rate \"fast\""));
}

TEST(Program, StartsFromItsConfigurationAndClosesWhenAsked) {
  const PrivateBus bus;
  const Pty pty;
  Program program(bus.Address());
  ASSERT_TRUE(QFile::link(pty.Device(), program.File("gps")));
  program.WriteFile("posdex.conf", "# the simulated receiver\r\nsource=serial:gps@4800\r\n");
  program.Start();
  const LinkClient client(bus.Address());
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
  EXPECT_EQ(program.Process().exitStatus(), QProcess::NormalExit);
  EXPECT_EQ(program.Process().exitCode(), 0);
}

TEST(Program, TheCommandLineWinsOverTheConfiguration) {
  const PrivateBus bus;
  Program program(bus.Address());
  program.WriteFile("posdex.conf", "source=file:other.nmea\n");
  program.WriteFile("drive.nmea", Nmea("GPRMC,120000.00,A,4807.03800,N,01131.00000,E,22.4,84.4,010125,,,A"));
  program.Start({Q("--source"), Q("file:drive.nmea")});
  const LinkClient client(bus.Address());
  EXPECT_TRUE(client.WaitForValue("lblLat1", Q("4807.0380N"), 5000));
  // The recording is over: its fix ends like any other.
  EXPECT_TRUE(client.WaitForValue("lblVal1", Q("A"), 1000));
  EXPECT_TRUE(client.WaitForValue("lblVal1", Q("V"), 5000));
}

TEST(Program, ASecondReaderSaysSoAndEnds) {
  const PrivateBus bus;
  Program first(bus.Address());
  first.Start({Q("--source"), Q("file:none")});
  const LinkClient client(bus.Address());
  ASSERT_TRUE(client.WaitForValue("lblVal1", Q("V"), 5000));
  Program second(bus.Address());
  second.Start({Q("--source"), Q("file:none")});
  ASSERT_TRUE(second.WaitForEnd(5000));
  EXPECT_EQ(second.Process().exitCode(), 1);
  EXPECT_TRUE(second.Process().readAllStandardError().contains(
      "Posdex: another GPS reader is already running on this session bus."));
  EXPECT_EQ(client.Get("lblVal1"), Q("V"));
}

TEST(Program, AKilledReaderIsReplacedByTheNextOne) {
  const PrivateBus bus;
  const LinkClient client(bus.Address());
  for (int round = 0; round < 2; ++round) {
    Program program(bus.Address());
    program.Start({Q("--source"), Q("file:none")});
    ASSERT_TRUE(client.WaitForValue("lblVal1", Q("V"), 5000)) << round;
    program.Process().kill();
    ASSERT_TRUE(program.WaitForEnd(3000));
  }
}

TEST(Program, EverySignalEndsItCleanly) {
  const PrivateBus bus;
  const LinkClient client(bus.Address());
  for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
    Program program(bus.Address());
    program.Start({Q("--source"), Q("file:none")});
    ASSERT_TRUE(client.WaitForValue("lblVal1", Q("V"), 5000)) << number;
    kill(static_cast<pid_t>(program.Process().processId()), number);
    ASSERT_TRUE(program.WaitForEnd(3000)) << number;
    EXPECT_EQ(program.Process().exitStatus(), QProcess::NormalExit) << number;
    EXPECT_EQ(program.Process().exitCode(), 0) << number;
  }
}

TEST(Program, RunsWithoutABusAndFindsALateOne) {
  Program program({});
  program.Start({Q("--source"), Q("file:none")});
  RunFor(1000);
  ASSERT_EQ(program.Process().state(), QProcess::Running);
  const PrivateBus bus(Q("unix:path=") + program.File("bus"));
  const LinkClient client(bus.Address());
  EXPECT_TRUE(client.WaitForValue("lblVal1", Q("V"), 5000));
}

// A bus that takes the connection and never answers.
TEST(Program, ABusThatDoesNotAnswerHoldsNothingUp) {
  Program program(Q("unix:path=") + QDir::tempPath() + QStringLiteral("/posdex-mute-bus-%1").arg(getpid()));
  const QByteArray path =
      (QDir::tempPath() + QStringLiteral("/posdex-mute-bus-%1").arg(getpid())).toLocal8Bit();
  unlink(path.constData());
  const int listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  qstrncpy(address.sun_path, path.constData(), sizeof(address.sun_path));
  ASSERT_EQ(bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
  ASSERT_EQ(listen(listener, 5), 0);
  program.Start({Q("--source"), Q("file:none")});
  RunFor(1500);
  ASSERT_EQ(program.Process().state(), QProcess::Running);
  kill(static_cast<pid_t>(program.Process().processId()), SIGTERM);
  EXPECT_TRUE(program.WaitForEnd(3000));
  EXPECT_EQ(program.Process().exitCode(), 0);
  close(listener);
  unlink(path.constData());
}

TEST(Program, AnUnpluggedSerialReceiverIsInvalidWithinFiveSecondsAndReturns) {
  const PrivateBus bus;
  Program program(bus.Address());
  const LinkClient client(bus.Address());
  {
    const Pty pty;
    ASSERT_TRUE(QFile::link(pty.Device(), program.File("gps")));
    program.Start({Q("--source"), Q("serial:gps@4800")});
    const Receiver receiver(pty);
    ASSERT_TRUE(client.WaitForValue("lblVal1", Q("A"), 8000));
  }
  EXPECT_TRUE(client.WaitForValue("lblVal1", Q("V"), 5000));
  EXPECT_EQ(client.Get("lblLat1"), Q("5157.0000N"));
  ASSERT_TRUE(QFile::remove(program.File("gps")));
  const Pty again;
  ASSERT_TRUE(QFile::link(again.Device(), program.File("gps")));
  const Receiver receiver(again);
  EXPECT_TRUE(client.WaitForValue("lblVal1", Q("A"), 8000));
}

}  // namespace
}  // namespace kestrum::posdex
