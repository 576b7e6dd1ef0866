#include "desktop/platform_factory.h"

#include "desktop/linux/bus_links.h"
#include "desktop/linux/posix_file_store.h"

namespace kestrum {

std::unique_ptr<LinksAndWindows> MakeLinks() {
  return std::make_unique<BusLinks>();
}

std::unique_ptr<FileStore> MakeFileStore(const QString& folder) {
  return std::make_unique<PosixFileStore>(folder);
}

QString ExecutableName(const QString& name) {
  const QString ending = QStringLiteral(".exe");
  return name.endsWith(ending, Qt::CaseInsensitive) ? name.chopped(ending.size()) : name;
}

}  // namespace kestrum
