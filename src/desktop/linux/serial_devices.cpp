#include "desktop/linux/serial_devices.h"

#include <grp.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <chrono>
#include <thread>

namespace kestrum {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kLongestDrain{200};
constexpr milliseconds kDrainStep{5};

// The name of the group that may read and write the device; empty when none may.
QString GroupOf(const QByteArray& path) {
  constexpr mode_t kGroupMay = S_IRGRP | S_IWGRP;
  struct stat about {};
  if (::stat(path.constData(), &about) != 0 || (about.st_mode & kGroupMay) != kGroupMay) return {};
  const group* const owner = ::getgrgid(about.st_gid);
  return owner != nullptr ? QString::fromLocal8Bit(owner->gr_name) : QString();
}

}  // namespace

QString SerialDevice(int number, const QString& application_folder) {
  QString named = qEnvironmentVariable(qPrintable(QStringLiteral("KESTRUM_COM%1").arg(number)));
  if (!named.isEmpty()) return named;
  // A link to a device that is unplugged still stands for it: no other device may take its place.
  const QFileInfo link(QStringLiteral("%1/com%2").arg(application_folder).arg(number));
  if (link.exists() || link.isSymLink()) return link.absoluteFilePath();
  QString first = QStringLiteral("/dev/ttyUSB%1").arg(number - 1);
  for (const QString& device : {first, QStringLiteral("/dev/ttyACM%1").arg(number - 1),
                                QStringLiteral("/dev/ttyS%1").arg(number - 1)}) {
    if (QFileInfo::exists(device)) return device;
  }
  return first;
}

QString WhyDeviceIsClosed(const QString& device) {
  const QByteArray path = QFile::encodeName(device);
  if (::access(path.constData(), F_OK) != 0) {
    return QStringLiteral("%1 is not there. Is the cable plugged in?").arg(device);
  }
  if (::access(path.constData(), R_OK | W_OK) != 0) {
    const QString group = GroupOf(path);
    if (group.isEmpty()) {
      return QStringLiteral(
                 "No permission for %1, and no group may use it: its owner must change its rights.")
          .arg(device);
    }
    return QStringLiteral(
               "No permission for %1. Join the group \"%2\" and log in again: sudo usermod -aG %2 $USER")
        .arg(device, group);
  }
  struct stat about {};
  if (::stat(path.constData(), &about) == 0 && !S_ISCHR(about.st_mode)) {
    return QStringLiteral("%1 is not a serial port.").arg(device);
  }
  return {};
}

bool SerialLineLives(int handle) {
  termios line{};
  pollfd state{handle, 0, 0};  // asks for nothing, hears of a hang-up all the same
  return ::tcgetattr(handle, &line) == 0 && ::poll(&state, 1, 0) == 0;
}

void DrainSerialLine(int handle) {
  int waiting = 0;
  for (milliseconds spent{0}; spent < kLongestDrain; spent += kDrainStep) {
    if (::ioctl(handle, TIOCOUTQ, &waiting) != 0 || waiting == 0) return;
    std::this_thread::sleep_for(kDrainStep);
  }
}

}  // namespace kestrum
