#pragma once

#include <QIODevice>
#include <memory>
#include <span>

#include "export/exporter.h"
#include "export/row.h"

namespace orvandi {

// One format. Begin, then for each log and each block that has rows BeginBlock, its rows, EndBlock; then End.
class RowWriter {
 public:
  virtual ~RowWriter() = default;
  virtual void Begin(std::span<const NamedLog> logs, const ExportOptions& options) = 0;
  virtual void BeginLog(const NamedLog& /*named*/) {}
  virtual void BeginBlock(const Row& /*first*/) {}
  virtual void Write(const Row& row) = 0;
  virtual void EndBlock() {}
  virtual void EndLog() {}
  virtual void End() = 0;
  // Whether every byte went out.
  virtual bool Ok() const = 0;
  // Whether records without a position have a place in it.
  virtual bool TakesAll() const { return false; }
};

std::unique_ptr<RowWriter> MakeCsvWriter(QIODevice& device);
std::unique_ptr<RowWriter> MakeGeoJsonWriter(QIODevice& device);
std::unique_ptr<RowWriter> MakeGpxWriter(QIODevice& device);
std::unique_ptr<RowWriter> MakeKmlWriter(QIODevice& device);

}  // namespace orvandi
