#include <fcntl.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <algorithm>
#include <array>
#include <ctime>
#include <thread>

#include "desktop/linux/qt_serial_port.h"
#include "desktop/linux/serial_devices.h"
#include "desktop/platform_factory.h"

namespace kestrum {
namespace {

using std::chrono::milliseconds;

// A rig at the far end of a pseudo-terminal, which the application folder names "com1".
class SerialTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::array<char, 64> name{};
    ASSERT_EQ(::openpty(&rig_, &slave_, name.data(), nullptr, nullptr), 0);
    termios raw{};
    ::tcgetattr(rig_, &raw);
    ::cfmakeraw(&raw);
    ::tcsetattr(rig_, TCSANOW, &raw);
    ASSERT_TRUE(QFile::link(QString::fromLatin1(name.data()), dir_.filePath(QStringLiteral("com1"))));
    port_.SetPort(1);
    port_.SetSettings(" 9600,N,8,2");
  }
  void TearDown() override {
    port_.Close();
    Unplug();
  }
  void Unplug() {
    for (int* end : {&rig_, &slave_}) {
      if (*end >= 0) ::close(*end);
      *end = -1;
    }
  }
  std::string RigReceives(std::size_t count) const {
    std::string bytes;
    pollfd ready{rig_, POLLIN, 0};
    while (bytes.size() < count && ::poll(&ready, 1, 2000) > 0) {
      std::array<char, 256> piece{};
      const ssize_t got = ::read(rig_, piece.data(), piece.size());
      if (got <= 0) break;
      bytes.append(piece.data(), static_cast<std::size_t>(got));
    }
    return bytes;
  }
  void RigSends(const std::string& bytes) const {
    ASSERT_EQ(::write(rig_, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
  }

  QTemporaryDir dir_;
  QtSerialPort port_{dir_.path()};
  int rig_ = -1;
  int slave_ = -1;
};

TEST_F(SerialTest, OpensALinkInTheApplicationFolderAtTheSpeedOfTheSettings) {
  ASSERT_TRUE(port_.Open()) << port_.Trouble();
  EXPECT_TRUE(port_.IsOpen());
  EXPECT_EQ(port_.Trouble(), "");
  termios line{};
  ASSERT_EQ(::tcgetattr(slave_, &line), 0);
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
  EXPECT_EQ(RigReceives(256), all);
  RigSends(all);
  std::this_thread::sleep_for(milliseconds(50));
  EXPECT_EQ(port_.ReadAll(), all);
  EXPECT_EQ(port_.ReadAll(), "");
}

TEST_F(SerialTest, ALateReplyIsTheBeginningOfTheNextOne) {
  ASSERT_TRUE(port_.Open());
  EXPECT_EQ(port_.ReadAll(), "");
  RigSends("abc");
  std::this_thread::sleep_for(milliseconds(20));
  RigSends("de");
  std::this_thread::sleep_for(milliseconds(20));
  EXPECT_EQ(port_.ReadAll(), "abcde");
}

TEST_F(SerialTest, WhatCameWhileTheWindowWasBusyWithEventsIsKept) {
  ASSERT_TRUE(port_.Open());
  RigSends("abc");
  QTest::qWait(20);
  EXPECT_EQ(port_.ReadAll(), "abc");
}

TEST_F(SerialTest, AnEndlessFloodNeitherFillsMemoryNorKeepsTheProcessorBusy) {
  ASSERT_TRUE(port_.Open());
  ::fcntl(rig_, F_SETFL, O_NONBLOCK);
  const std::string noise(4096, '\xAA');
  for (int i = 0; i < 20; ++i) {
    while (::write(rig_, noise.data(), noise.size()) > 0) {
    }
    QTest::qWait(10);
  }
  const std::clock_t before = std::clock();
  QTest::qWait(300);
  EXPECT_LT(std::clock() - before, CLOCKS_PER_SEC * 15 / 100);
  EXPECT_LE(port_.ReadAll().size(), 3U * 4096);
  EXPECT_TRUE(port_.IsOpen());
}

TEST_F(SerialTest, ALineThatTakesNothingDoesNotBlockTheWindow) {
  ASSERT_TRUE(port_.Open());
  const std::string block(1000, 'x');
  const auto begin = std::chrono::steady_clock::now();
  for (int i = 0; i < 200; ++i) port_.Write(block);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, milliseconds(1000));
}

TEST_F(SerialTest, ALineThatTakesNothingIsTriedAgainAtTheNextCycle) {
  ASSERT_TRUE(port_.Open());
  // Nobody reads at the far end until the line refuses, and for some cycles more.
  const std::string noise(1000, 'x');
  for (int i = 0; i < 200; ++i) {
    port_.Write(noise);
    if (i % 20 == 0) QTest::qWait(1);
    ASSERT_TRUE(port_.IsOpen()) << port_.Trouble();
  }
  QTest::qWait(20);
  EXPECT_TRUE(port_.IsOpen());
  EXPECT_EQ(port_.Trouble(), "");
  // The rig comes back to life: old bytes may come first, the new command comes whole and last.
  ::fcntl(rig_, F_SETFL, O_NONBLOCK);
  std::array<char, 4096> old{};
  while (::read(rig_, old.data(), old.size()) > 0) {
  }
  ::fcntl(rig_, F_SETFL, 0);
  port_.Write("\x01\x02\x03\x04\x05");
  const std::string received = RigReceives(5);
  EXPECT_EQ(received, "\x01\x02\x03\x04\x05");
  RigSends("reply");
  std::this_thread::sleep_for(milliseconds(20));
  EXPECT_EQ(port_.ReadAll(), "reply");
}

TEST_F(SerialTest, AFullLineWhoseAdapterVanishesIsLost) {
  ASSERT_TRUE(port_.Open());
  const std::string noise(1000, 'x');
  for (int i = 0; i < 50; ++i) port_.Write(noise);
  ASSERT_TRUE(port_.IsOpen());
  Unplug();
  QTest::qWait(20);
  port_.Write(noise);
  EXPECT_EQ(port_.ReadAll(), "");
  EXPECT_FALSE(port_.IsOpen());
  EXPECT_NE(port_.Trouble().find("was lost"), std::string::npos);
}

TEST_F(SerialTest, AVanishedAdapterClosesThePortAndSaysSo) {
  ASSERT_TRUE(port_.Open());
  Unplug();
  port_.Write(std::string(5, '\0'));
  std::this_thread::sleep_for(milliseconds(10));
  EXPECT_EQ(port_.ReadAll(), "");
  EXPECT_FALSE(port_.IsOpen());
  EXPECT_NE(port_.Trouble().find("was lost"), std::string::npos) << port_.Trouble();
  EXPECT_FALSE(port_.Open());
}

TEST_F(SerialTest, AnAdapterThatVanishesBetweenTicksLeavesTheProcessorIdle) {
  ASSERT_TRUE(port_.Open());
  Unplug();
  QTest::qWait(50);
  const std::clock_t before = std::clock();
  QTest::qWait(300);
  EXPECT_LT(std::clock() - before, CLOCKS_PER_SEC * 15 / 100);
  EXPECT_FALSE(port_.IsOpen());
}

TEST_F(SerialTest, AReturnedAdapterIsOpenedAgain) {
  ASSERT_TRUE(port_.Open());
  port_.Close();
  EXPECT_FALSE(port_.IsOpen());
  ASSERT_TRUE(port_.Open()) << port_.Trouble();
  port_.Write("x");
  EXPECT_EQ(RigReceives(1), "x");
}

TEST_F(SerialTest, WhatWasWrittenLastLeavesBeforeThePortCloses) {
  ASSERT_TRUE(port_.Open());
  port_.Write("12345");
  port_.Close();
  EXPECT_EQ(RigReceives(5), "12345");
}

TEST_F(SerialTest, SaysWhyAPortDoesNotOpen) {
  port_.SetPort(0);
  EXPECT_FALSE(port_.Open());
  EXPECT_NE(port_.Trouble().find("No serial port"), std::string::npos);
  port_.SetPort(6);
  qputenv("KESTRUM_COM6", "/dev/no-such-device");
  EXPECT_FALSE(port_.Open());
  EXPECT_EQ(port_.Trouble(), "/dev/no-such-device is not there. Is the cable plugged in?");
  qputenv("KESTRUM_COM6", "/etc/hostname");
  EXPECT_FALSE(port_.Open());
  EXPECT_EQ(port_.Trouble(), "/etc/hostname is not a serial port.");
  qunsetenv("KESTRUM_COM6");
}

TEST_F(SerialTest, SaysThatAnotherProgramHoldsThePort) {
  ASSERT_TRUE(port_.Open());
  QtSerialPort second(dir_.path());
  second.SetPort(1);
  second.SetSettings(" 9600,N,8,2");
  EXPECT_FALSE(second.Open());
  EXPECT_EQ(second.Trouble(), dir_.filePath(QStringLiteral("com1")).toStdString() +
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
      const std::string text = WhyDeviceIsClosed(device).toStdString();
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

TEST_F(SerialTest, EveryReplyWithinTheWaitArrives) {
  ASSERT_TRUE(port_.Open());
  std::thread rig([this] {
    for (int i = 0; i < 10; ++i) {
      if (RigReceives(5).size() < 5) return;
      RigSends("\x01\x02\x03\x04\x05");
    }
  });
  for (int i = 0; i < 10; ++i) {
    port_.Write(std::string(5, '\x07'));
    std::this_thread::sleep_for(milliseconds(50));
    EXPECT_EQ(port_.ReadAll(), "\x01\x02\x03\x04\x05");
  }
  rig.join();
}

}  // namespace
}  // namespace kestrum
