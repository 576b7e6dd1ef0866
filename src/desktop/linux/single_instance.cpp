#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>

#include "desktop/platform_factory.h"

namespace kestrum {
namespace {

// In the user's own folder where there is one, so that no other user can be in the way.
QString LockPath() {
  const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
  if (!runtime.isEmpty() && QFileInfo(runtime).isWritable()) return runtime + QStringLiteral("/kestrum.lock");
  return QStringLiteral("/tmp/kestrum-%1.lock").arg(::getuid());
}

}  // namespace

// The lock belongs to the open file: the system releases it with the process, also after a crash. The
// descriptor stays open on purpose; companions do not inherit it.
bool ClaimSingleInstance() {
  const int file =
      ::open(QFile::encodeName(LockPath()).constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
  if (file < 0) return true;  // without a place for the lock, starting is better than refusing
  if (::flock(file, LOCK_EX | LOCK_NB) == 0) return true;
  ::close(file);
  return false;
}

}  // namespace kestrum
