#include <QFileInfo>

#include "export/exporter.h"

namespace orvandi {

std::optional<Format> FormatOfName(const QString& name) {
  const QString lower = name.toLower();
  if (lower == QLatin1String("kml")) return Format::kKml;
  if (lower == QLatin1String("gpx")) return Format::kGpx;
  if (lower == QLatin1String("geojson")) return Format::kGeoJson;
  if (lower == QLatin1String("csv")) return Format::kCsv;
  return {};
}

std::optional<Format> FormatOfPath(const QString& path) {
  const QString ending = QFileInfo(path).suffix().toLower();
  if (ending == QLatin1String("json")) return Format::kGeoJson;
  return FormatOfName(ending);
}

}  // namespace orvandi
