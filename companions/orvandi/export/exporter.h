#pragma once

#include <QIODevice>
#include <QString>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>

#include "analysis/layers.h"
#include "analysis/recalibration.h"

namespace orvandi {

enum class Format : std::uint8_t { kKml, kGpx, kGeoJson, kCsv };
// "kml", "gpx", "geojson", "csv", without regard to letter case.
std::optional<Format> FormatOfName(const QString& name);
// By the name's ending.
std::optional<Format> FormatOfPath(const QString& path);

struct ExportOptions {
  std::uint8_t shown_marks = 0;  // of Mark: records with other marks are left out and counted
  const Recalibration* recalibration = nullptr;
  std::function<bool(std::uint32_t log, std::uint32_t record)> hidden;  // left out besides; may be empty
  // Called now and then with the records done and all of them; false cancels.
  std::function<bool(std::size_t done, std::size_t total)> progress;
};

struct ExportOutcome {
  bool ok = false;
  bool cancelled = false;
  std::size_t written = 0;           // records
  std::size_t marked = 0;            // left out for their marks
  std::size_t without_position = 0;  // left out since a map has no place for them (all formats but CSV)
  QString sentence;                  // what went wrong
};

// Into an open device.
ExportOutcome ExportTo(QIODevice& device, Format format, std::span<const NamedLog> logs,
                       const ExportOptions& options = {});
// Into a file, which is replaced only when all went well.
ExportOutcome ExportToFile(const QString& path, Format format, std::span<const NamedLog> logs,
                           const ExportOptions& options = {});

}  // namespace orvandi
