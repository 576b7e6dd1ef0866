#include "desktop/linux/serial_devices.h"

#include <grp.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <string>
#include <thread>

#include "desktop/text_convert.h"

namespace kestrum {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kLongestDrain{200};
constexpr milliseconds kDrainStep{5};

// The name of the group that may read and write the device, when one may.
std::optional<std::string> GroupOf(const QByteArray& path) {
  constexpr mode_t kGroupMay = S_IRGRP | S_IWGRP;
  struct stat about {};
  if (::stat(path.constData(), &about) != 0 || (about.st_mode & kGroupMay) != kGroupMay) {
    return std::nullopt;
  }
  const group* const owner = ::getgrgid(about.st_gid);
  if (owner == nullptr) return std::nullopt;
  return owner->gr_name;
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

std::optional<Fault> WhyDeviceIsClosed(const QString& device) {
  const QByteArray path = QFile::encodeName(device);
  const std::string name = FromQt(device);
  if (::access(path.constData(), F_OK) != 0) {
    return Fault{name, name + " is not there. Is the cable plugged in?"};
  }
  if (::access(path.constData(), R_OK | W_OK) != 0) {
    const std::optional<std::string> group = GroupOf(path);
    const std::string refused = "No permission for " + name;
    if (!group) {
      return Fault{name, refused + ", and no group may use it: its owner must change its rights."};
    }
    return Fault{name, refused + ". Join the group \"" + *group + "\" and log in again: sudo usermod -aG " +
                           *group + " $USER"};
  }
  struct stat about {};
  if (::stat(path.constData(), &about) == 0 && !S_ISCHR(about.st_mode)) {
    return Fault{name, name + " is not a serial port."};
  }
  return std::nullopt;
}

bool SerialLineLives(int handle) {
  termios line{};
  pollfd state{handle, 0, 0};  // asks for nothing, hears of a hang-up all the same
  return ::tcgetattr(handle, &line) == 0 && ::poll(&state, 1, 0) == 0;
}

bool SerialLineHasNews(int handle) {
  pollfd state{handle, POLLIN, 0};
  return ::poll(&state, 1, 0) != 0;
}

std::string ReadFromLine(int handle, std::size_t most) {
  std::string bytes;
  std::array<char, 1024> piece{};
  while (bytes.size() < most) {
    const ssize_t got = ::read(handle, piece.data(), std::min(piece.size(), most - bytes.size()));
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) break;
    bytes.append(piece.data(), static_cast<std::size_t>(got));
  }
  return bytes;
}

std::size_t WriteToLine(int handle, std::string_view bytes) {
  const ssize_t written = ::write(handle, bytes.data(), bytes.size());
  return written > 0 ? static_cast<std::size_t>(written) : 0;
}

void DrainSerialLine(int handle) {
  int waiting = 0;
  for (milliseconds spent{0}; spent < kLongestDrain; spent += kDrainStep) {
    if (::ioctl(handle, TIOCOUTQ, &waiting) != 0 || waiting == 0) return;
    std::this_thread::sleep_for(kDrainStep);
  }
}

}  // namespace kestrum
