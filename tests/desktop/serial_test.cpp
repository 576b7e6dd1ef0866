#include <fcntl.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <array>
#include <thread>

#include "desktop/linux/qt_serial_port.h"
#include "desktop/linux/serial_devices.h"
#include "desktop/platform_factory.h"
#include "support/reason_of.h"
#include "support_process/pty.h"
#include "support_process/qt_waits.h"

namespace kestrum {
namespace {

using std::chrono::milliseconds;
using test::ReasonOf;

// A rig at the far end of a pseudo-terminal, which the application folder names "com1".
class SerialTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(QFile::link(QString::fromStdString(rig_.device()), dir_.filePath(QStringLiteral("com1"))));
    port_.SetPort(1);
    port_.SetSettings(" 9600,N,8,2");
  }
  void TearDown() override { port_.Close(); }
  void RigSends(const std::string& bytes) const {
    const std::size_t before = rig_.Arrived();
    ASSERT_EQ(rig_.Write(bytes), bytes.size());
    ASSERT_TRUE(process::Eventually([&] { return rig_.Arrived() >= before + bytes.size(); }));
  }

  QTemporaryDir dir_;
  QtSerialPort port_{dir_.path()};
  process::Pty rig_;
};

TEST_F(SerialTest, OpensALinkInTheApplicationFolderAtTheSpeedOfTheSettings) {
  ASSERT_TRUE(port_.Open()) << ReasonOf(port_.Trouble());
  EXPECT_TRUE(port_.IsOpen());
  EXPECT_EQ(port_.Trouble(), std::nullopt);
  termios line{};
  ASSERT_EQ(::tcgetattr(rig_.device_end(), &line), 0);
  EXPECT_EQ(::cfgetospeed(&line), static_cast<speed_t>(B9600));
  EXPECT_EQ(line.c_cflag & CSIZE, static_cast<tcflag_t>(CS8));
  EXPECT_NE(line.c_cflag & CSTOPB, 0U);
  EXPECT_EQ(line.c_cflag & PARENB, 0U);
  EXPECT_EQ(line.c_cflag & CRTSCTS, 0U);
  EXPECT_EQ(line.c_iflag & (IXON | IXOFF), 0U);
  EXPECT_EQ(line.c_lflag & (ICANON | ECHO), 0U);
}

TEST_F(SerialTest, CarriesEveryByteBothWaysWithoutAnyEventLoop) {
  ASSERT_TRUE(port_.Open());
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all.push_back(static_cast<char>(byte));
  port_.Write(all);
  EXPECT_EQ(rig_.Read(256), all);
  RigSends(all);
  EXPECT_EQ(port_.ReadAll(), all);
  EXPECT_EQ(port_.ReadAll(), "");
}

TEST_F(SerialTest, ALateReplyIsTheBeginningOfTheNextOne) {
  ASSERT_TRUE(port_.Open());
  EXPECT_EQ(port_.ReadAll(), "");
  RigSends("abc");
  process::DeviceIsQuietFor(milliseconds(20));
  RigSends("de");
  EXPECT_EQ(port_.ReadAll(), "abcde");
}

TEST_F(SerialTest, WhatCameWhileTheWindowWasBusyWithEventsIsKept) {
  ASSERT_TRUE(port_.Open());
  RigSends("abc");
  EXPECT_TRUE(process::StaysTrueWhileEventsRun(milliseconds(20), [this] { return port_.IsOpen(); }));
  EXPECT_EQ(port_.ReadAll(), "abc");
}

// What it costs is measured by bench/run.
TEST_F(SerialTest, AnEndlessFloodDoesNotFillMemory) {
  ASSERT_TRUE(port_.Open());
  const std::string noise(4096, '\xAA');
  for (int i = 0; i < 20; ++i) {
    while (rig_.Write(noise) > 0) {
    }
    EXPECT_TRUE(process::StaysTrueWhileEventsRun(milliseconds(10), [this] { return port_.IsOpen(); }));
  }
  EXPECT_LE(port_.ReadAll().size(), 3U * 4096);
  EXPECT_TRUE(port_.IsOpen());
}

TEST_F(SerialTest, ALineThatTakesNothingDoesNotBlockTheWindow) {
  ASSERT_TRUE(port_.Open());
  const std::string block(1000, 'x');
  // Nobody ever reads at the far end: a write that waits for that would not come back.
  for (int i = 0; i < 200; ++i) port_.Write(block);
  EXPECT_TRUE(port_.IsOpen());
}

TEST_F(SerialTest, ALineThatTakesNothingIsTriedAgainAtTheNextCycle) {
  ASSERT_TRUE(port_.Open());
  // Nobody reads at the far end until the line refuses, and for some cycles more.
  const std::string noise(1000, 'x');
  for (int i = 0; i < 200; ++i) {
    port_.Write(noise);
    if (i % 20 == 0) QApplication::processEvents();
    ASSERT_TRUE(port_.IsOpen()) << ReasonOf(port_.Trouble());
  }
  EXPECT_TRUE(process::StaysTrueWhileEventsRun(milliseconds(20), [this] { return port_.IsOpen(); }));
  EXPECT_EQ(port_.Trouble(), std::nullopt);
  // The rig comes back to life: old bytes may come first, the new command comes whole and last.
  rig_.ReadAll();
  port_.Write("\x01\x02\x03\x04\x05");
  const std::string received = rig_.Read(5);
  EXPECT_EQ(received, "\x01\x02\x03\x04\x05");
  RigSends("reply");
  EXPECT_EQ(port_.ReadAll(), "reply");
}

TEST_F(SerialTest, AFullLineWhoseAdapterVanishesIsLost) {
  ASSERT_TRUE(port_.Open());
  const std::string noise(1000, 'x');
  for (int i = 0; i < 50; ++i) port_.Write(noise);
  ASSERT_TRUE(port_.IsOpen());
  rig_.Unplug();
  EXPECT_TRUE(process::WaitFor([&] {
    port_.Write(noise);
    EXPECT_EQ(port_.ReadAll(), "");
    return !port_.IsOpen();
  }));
  EXPECT_NE(ReasonOf(port_.Trouble()).find("was lost"), std::string::npos);
}

TEST_F(SerialTest, AVanishedAdapterClosesThePortAndSaysSo) {
  ASSERT_TRUE(port_.Open());
  rig_.Unplug();
  port_.Write(std::string(5, '\0'));
  EXPECT_TRUE(process::Eventually([this] {
    EXPECT_EQ(port_.ReadAll(), "");
    return !port_.IsOpen();
  }));
  EXPECT_NE(ReasonOf(port_.Trouble()).find("was lost"), std::string::npos) << ReasonOf(port_.Trouble());
  EXPECT_FALSE(port_.Open());
}

TEST_F(SerialTest, AnAdapterThatVanishesBetweenTicksIsLost) {
  ASSERT_TRUE(port_.Open());
  rig_.Unplug();
  EXPECT_TRUE(process::WaitFor([this] { return !port_.IsOpen(); }));
}

TEST_F(SerialTest, AReturnedAdapterIsOpenedAgain) {
  ASSERT_TRUE(port_.Open());
  port_.Close();
  EXPECT_FALSE(port_.IsOpen());
  ASSERT_TRUE(port_.Open()) << ReasonOf(port_.Trouble());
  port_.Write("x");
  EXPECT_EQ(rig_.Read(1), "x");
}

TEST_F(SerialTest, WhatWasWrittenLastLeavesBeforeThePortCloses) {
  ASSERT_TRUE(port_.Open());
  port_.Write("12345");
  port_.Close();
  EXPECT_EQ(rig_.Read(5), "12345");
}

TEST_F(SerialTest, SaysWhyAPortDoesNotOpen) {
  port_.SetPort(0);
  EXPECT_FALSE(port_.Open());
  EXPECT_NE(ReasonOf(port_.Trouble()).find("No serial port"), std::string::npos);
  port_.SetPort(6);
  qputenv("KESTRUM_COM6", "/dev/no-such-device");
  EXPECT_FALSE(port_.Open());
  EXPECT_EQ(ReasonOf(port_.Trouble()), "/dev/no-such-device is not there. Is the cable plugged in?");
  qputenv("KESTRUM_COM6", "/etc/hostname");
  EXPECT_FALSE(port_.Open());
  EXPECT_EQ(ReasonOf(port_.Trouble()), "/etc/hostname is not a serial port.");
  qunsetenv("KESTRUM_COM6");
}

TEST_F(SerialTest, SaysThatAnotherProgramHoldsThePort) {
  ASSERT_TRUE(port_.Open());
  QtSerialPort second(dir_.path());
  second.SetPort(1);
  second.SetSettings(" 9600,N,8,2");
  EXPECT_FALSE(second.Open());
  EXPECT_EQ(ReasonOf(second.Trouble()),
            dir_.filePath(QStringLiteral("com1")).toStdString() +
                " is in use by another program. Close it, then choose the port again.");
  EXPECT_TRUE(port_.IsOpen());
}

// As a user without rights: the group is named only when joining it would help.
TEST_F(SerialTest, SaysWhichGroupToJoin) {
  const QString device = dir_.filePath(QStringLiteral("tty"));
  const QByteArray path = QFile::encodeName(device);
  ASSERT_EQ(::close(::open(path.constData(), O_CREAT | O_WRONLY, 0660)), 0);
  ASSERT_EQ(::chmod(dir_.path().toLocal8Bit().constData(), 0755), 0);
  const auto why = [&](mode_t mode) {
    EXPECT_EQ(::chmod(path.constData(), mode), 0);
    std::array<int, 2> line{};
    EXPECT_EQ(::pipe(line.data()), 0);
    const pid_t child = ::fork();
    if (child == 0) {
      if (::geteuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0)) ::_exit(1);
      const std::string text = ReasonOf(WhyDeviceIsClosed(device));
      ::_exit(::write(line[1], text.data(), text.size()) < 0 ? 1 : 0);
    }
    ::close(line[1]);
    std::array<char, 400> text{};
    const ssize_t got = ::read(line[0], text.data(), text.size());
    ::close(line[0]);
    ::waitpid(child, nullptr, 0);
    return std::string(text.data(), static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
  };
  const struct group* owner = ::getgrgid(::getegid());
  ASSERT_NE(owner, nullptr);
  const std::string name = device.toStdString();
  if (::geteuid() == 0) {
    EXPECT_EQ(why(0660), "No permission for " + name + ". Join the group \"" + owner->gr_name +
                             "\" and log in again: sudo usermod -aG " + owner->gr_name + " $USER");
  }
  EXPECT_EQ(why(0000),
            "No permission for " + name + ", and no group may use it: its owner must change its rights.");
}

TEST_F(SerialTest, TheDeviceOfANumber) {
  EXPECT_EQ(port_.DeviceName(1), dir_.filePath(QStringLiteral("com1")).toStdString());
  qputenv("KESTRUM_COM1", "/dev/my-rig");
  EXPECT_EQ(port_.DeviceName(1), "/dev/my-rig");
  qunsetenv("KESTRUM_COM1");
  EXPECT_EQ(port_.DeviceName(0), "");
  // A link whose device is unplugged still stands for it.
  QFile::remove(dir_.filePath(QStringLiteral("com1")));
  QFile::link(QStringLiteral("/dev/gone"), dir_.filePath(QStringLiteral("com1")));
  EXPECT_EQ(port_.DeviceName(1), dir_.filePath(QStringLiteral("com1")).toStdString());
}

TEST_F(SerialTest, EveryReplyArrives) {
  ASSERT_TRUE(port_.Open());
  std::thread rig([this] {
    for (int i = 0; i < 10; ++i) {
      if (rig_.Read(5).size() < 5) return;
      rig_.Write("\x01\x02\x03\x04\x05");
    }
  });
  for (int i = 0; i < 10; ++i) {
    port_.Write(std::string(5, '\x07'));
    EXPECT_TRUE(process::Eventually([this] { return rig_.Arrived() == 5; }));
    EXPECT_EQ(port_.ReadAll(), "\x01\x02\x03\x04\x05");
  }
  rig.join();
}

}  // namespace
}  // namespace kestrum
