#include "export/exporter.h"

#include <QSaveFile>

#include "export/row_writer.h"

namespace orvandi {
namespace {

constexpr std::size_t kRecordsPerReport = 4096;

std::unique_ptr<RowWriter> MakeWriter(Format format, QIODevice& device) {
  switch (format) {
    case Format::kKml:
      return MakeKmlWriter(device);
    case Format::kGpx:
      return MakeGpxWriter(device);
    case Format::kGeoJson:
      return MakeGeoJsonWriter(device);
    case Format::kCsv:
      return MakeCsvWriter(device);
  }
  return {};
}

// One export: chooses the records and hands them to the writer, block by block.
class Export {
 public:
  Export(RowWriter& writer, std::span<const NamedLog> logs, const ExportOptions& options)
      : writer_(writer), logs_(logs), options_(options) {
    for (const NamedLog& named : logs) total_ += named.log->records.size();
  }

  ExportOutcome Run() {
    writer_.Begin(logs_, options_);
    for (std::uint32_t index = 0; index < logs_.size() && !outcome_.cancelled; ++index) RunLog(index);
    if (outcome_.cancelled) return outcome_;
    writer_.End();
    outcome_.ok = writer_.Ok();
    return outcome_;
  }

 private:
  void RunLog(std::uint32_t index) {
    const NamedLog& named = logs_[index];
    writer_.BeginLog(named);
    bool in_block = false;
    std::uint32_t block = 0;
    for (std::uint32_t record_index = 0; record_index < named.log->records.size(); ++record_index) {
      if (Cancelled()) return;
      const Record& record = named.log->records[record_index];
      if (!Takes(index, record_index, record)) continue;
      const Row row = RowOf(named, record, options_.recalibration);
      if (in_block && block != record.block) writer_.EndBlock();
      if (!in_block || block != record.block) writer_.BeginBlock(row);
      in_block = true;
      block = record.block;
      writer_.Write(row);
      ++outcome_.written;
    }
    if (in_block) writer_.EndBlock();
    writer_.EndLog();
  }

  bool Takes(std::uint32_t log, std::uint32_t index, const Record& record) {
    if ((record.marks & ~options_.shown_marks) != 0) {
      ++outcome_.marked;
      return false;
    }
    if (options_.hidden && options_.hidden(log, index)) return false;
    if (!record.HasPosition() && !writer_.TakesAll()) {
      ++outcome_.without_position;
      return false;
    }
    return true;
  }

  bool Cancelled() {
    if (done_++ % kRecordsPerReport == 0 && options_.progress && !options_.progress(done_ - 1, total_)) {
      outcome_.cancelled = true;
    }
    // A full disk ends it at once.
    return outcome_.cancelled || !writer_.Ok();
  }

  RowWriter& writer_;
  std::span<const NamedLog> logs_;
  const ExportOptions& options_;
  ExportOutcome outcome_;
  std::size_t total_ = 0;
  std::size_t done_ = 0;
};

}  // namespace

ExportOutcome ExportTo(QIODevice& device, Format format, std::span<const NamedLog> logs,
                       const ExportOptions& options) {
  const std::unique_ptr<RowWriter> writer = MakeWriter(format, device);
  ExportOutcome outcome = Export(*writer, logs, options).Run();
  if (outcome.cancelled) outcome.sentence = QStringLiteral("Cancelled.");
  if (!outcome.ok && !outcome.cancelled) {
    outcome.sentence = QStringLiteral("It could not be written: %1.").arg(device.errorString());
  }
  return outcome;
}

ExportOutcome ExportToFile(const QString& path, Format format, std::span<const NamedLog> logs,
                           const ExportOptions& options) {
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly)) {
    ExportOutcome outcome;
    outcome.sentence = QStringLiteral("%1 could not be written: %2.").arg(path, file.errorString());
    return outcome;
  }
  ExportOutcome outcome = ExportTo(file, format, logs, options);
  if (outcome.ok && !file.commit()) {
    outcome.ok = false;
    outcome.sentence = QStringLiteral("%1 could not be written: %2.").arg(path, file.errorString());
  }
  return outcome;
}

}  // namespace orvandi
