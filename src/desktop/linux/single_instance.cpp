#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QCryptographicHash>
#include <QDir>
#include <QFile>

#include "desktop/platform_factory.h"

namespace kestrum {
namespace {

// A file that belongs to this user and that nobody else can have put there; -1 when there is no such place.
int OpenOwnFile(const QString& path) {
  const int file = ::open(QFile::encodeName(path).constData(),
                          O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600);
  struct stat about {};
  if (file < 0 || (::fstat(file, &about) == 0 && S_ISREG(about.st_mode) && about.st_uid == ::getuid())) {
    return file;
  }
  ::close(file);
  return -1;
}

// In the folder itself, which every start of the program sees the same, whatever its environment says; for a
// folder that cannot be written to, under a name made of its path.
int OpenLock(const QString& folder) {
  const QString user = QString::number(::getuid());
  const int beside = OpenOwnFile(QStringLiteral("%1/.kestrum-%2.lock").arg(folder, user));
  if (beside >= 0) return beside;
  const QByteArray path = QFile::encodeName(QDir(folder).canonicalPath());
  const QByteArray name = QCryptographicHash::hash(path, QCryptographicHash::Sha1).toHex().left(16);
  return OpenOwnFile(QStringLiteral("/tmp/kestrum-%1-%2.lock").arg(user, QString::fromLatin1(name)));
}

}  // namespace

// The lock belongs to the open file: the system releases it with the process, also after a crash. The
// descriptor stays open on purpose; companions do not inherit it.
bool ClaimSingleInstance(const QString& folder) {
  const int file = OpenLock(folder);
  if (file < 0) return true;  // without a place for the lock, starting is better than refusing
  if (::flock(file, LOCK_EX | LOCK_NB) == 0) return true;
  ::close(file);
  return false;
}

}  // namespace kestrum
