#pragma once

#include <QObject>
#include <QSet>
#include <QUndoStack>
#include <memory>
#include <optional>
#include <vector>

#include "analysis/comparison.h"
#include "analysis/law.h"
#include "analysis/layers.h"
#include "analysis/pattern.h"
#include "analysis/recalibration.h"
#include "log/log_file.h"
#include "plots/view_data.h"

namespace orvandi {

// A log that is open.
struct OpenLog {
  int id = 0;  // stays while the log is open
  std::shared_ptr<LogFile> file;
  QString path;
  QString name;
  std::vector<std::uint8_t> hidden;  // by record, 1: hidden by the user
};

// Which record of which log a number of the views means.
struct RecordPlace {
  std::size_t log = 0;
  std::size_t record = 0;
};

// What two layers differ by.
struct ComparisonChoice {
  std::uint16_t layer_a = 0;
  std::uint16_t layer_b = 1;
  double cell_m = 50;
};

// The logs that are open and what is seen of them: unit, layers, marks, what is hidden, chosen and pointed
// at. Views paint what stands here and tell it what the user does in them; so all of them agree.
class Session final : public QObject {
  Q_OBJECT

 public:
  // What became of the positions: a map need not sort those again that it knows.
  enum class PlaceChange { kNone, kMore, kNew };

  explicit Session(QObject* parent = nullptr);

  // Takes the place of an open log with the same path.
  void AddLog(std::shared_ptr<LogFile> file, const QString& path);
  void CloseAll();
  // Reads what has come to the logs; true when there was something. News tells what is odd about it.
  bool LookForNews();
  [[nodiscard]] const std::vector<OpenLog>& Logs() const { return logs_; }
  [[nodiscard]] std::vector<NamedLog> NamedLogs() const;

  void SetUnit(Unit unit);
  void SetColoring(DotStyle::Coloring coloring);
  void SetGroupBy(GroupBy by);
  [[nodiscard]] GroupBy Grouping() const { return group_by_; }
  void SetLayerVisible(std::size_t layer, bool visible);
  void SetShownMarks(std::uint8_t marks);
  [[nodiscard]] std::uint8_t ShownMarks() const { return shown_marks_; }
  void SetSectorDeg(double sector_deg);
  [[nodiscard]] double SectorDeg() const { return sector_deg_; }
  void SetRecalibration(std::optional<Recalibration> recalibration);
  [[nodiscard]] const Recalibration* Calibration() const {
    return recalibration_ ? &*recalibration_ : nullptr;
  }
  void SetComparison(std::optional<ComparisonChoice> choice);

  void Choose(const std::vector<std::uint32_t>& records, bool add);
  [[nodiscard]] const std::vector<std::uint32_t>& ChosenRecords() const { return chosen_; }
  void Hover(std::int64_t record);
  // Hides what is chosen; Undo() of the stack brings it back.
  void HideChosen();
  [[nodiscard]] QUndoStack& Undo() { return undo_; }
  [[nodiscard]] std::size_t HiddenCount() const;

  [[nodiscard]] const ViewData& View() const { return view_; }
  [[nodiscard]] const std::vector<Place>& Places() const { return places_; }
  [[nodiscard]] RecordPlace PlaceOf(std::uint32_t record) const;
  [[nodiscard]] const Record& RecordOf(std::uint32_t record) const;
  [[nodiscard]] const Layers& LayersOfBlocks() const { return layers_; }
  [[nodiscard]] std::size_t ShownCount() const { return shown_count_; }
  // Of what is shown.
  [[nodiscard]] std::vector<Sample> SamplesOfLayer(std::uint16_t layer) const;
  [[nodiscard]] std::vector<Sample> AllSamples() const;
  [[nodiscard]] const Law& FittedLaw() const { return law_; }
  [[nodiscard]] const Law& PatternLaw() const { return pattern_law_; }  // fitted within sectors
  [[nodiscard]] const std::optional<ComparisonChoice>& Compared() const { return compared_; }
  // Median of the recalibrated levels minus those of the log, of what is shown; not-a-number without
  // calibration.
  [[nodiscard]] double RecalibrationShift() const;

 Q_SIGNALS:
  void LogsChanged();  // logs came, went or grew; ViewChanged follows
  void ViewChanged(PlaceChange places);
  void News(const QString& sentence);
  void ChosenChanged();
  void HoverChanged(qint64 record);

 private:
  friend class HideCommand;
  void SetHidden(int log_id, const std::vector<std::uint32_t>& records, bool hidden);
  void Rebuild();
  PlaceChange RebuildPlaces();
  void RebuildLayers();
  void RebuildValues();
  void RebuildShown();
  void RebuildLaws();
  void KeepChosen(const std::vector<std::pair<int, std::uint32_t>>& chosen);
  template <typename Wanted>
  [[nodiscard]] std::vector<Sample> SamplesWhere(Wanted wanted) const;

  std::vector<OpenLog> logs_;
  int last_id_ = 0;
  std::vector<std::size_t> first_;  // number of the first record of each log
  std::vector<Place> places_;
  ViewData view_;
  Layers layers_;
  GroupBy group_by_ = GroupBy::kFile;
  QSet<QString> invisible_;  // names of layers
  std::uint8_t shown_marks_ = 0;
  double sector_deg_ = 10;
  std::optional<Recalibration> recalibration_;
  std::optional<ComparisonChoice> compared_;
  std::vector<std::uint32_t> chosen_;
  std::int64_t hovered_ = -1;
  std::size_t shown_count_ = 0;
  Law law_;
  Law pattern_law_;
  QUndoStack undo_;
};

}  // namespace orvandi
