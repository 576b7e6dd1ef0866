#include "window/session.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <future>

#include "analysis/distribution.h"
#include "map/wide_registers.h"

namespace orvandi {
namespace {

// Colours follow what is seen: ends of the scale leave out 2 % of the levels.
ColorScale ScaleOf(const ViewData& view) {
  std::vector<double> levels;
  // A scale needs no more than a sample of a million.
  const std::size_t step = 1 + view.Count() / 50'000;
  for (std::size_t i = 0; i < view.Count(); i += step) {
    if (view.Shows(i)) levels.push_back(view.level_db[i]);
  }
  if (levels.empty()) return ScaleForPercentiles(0, 60);
  return ScaleForPercentiles(Quantile(levels, 0.02), Quantile(levels, 0.98));
}

}  // namespace

class HideCommand final : public QUndoCommand {
 public:
  HideCommand(Session& session, std::vector<std::pair<int, std::vector<std::uint32_t>>> records,
              std::size_t count)
      : QUndoCommand(QStringLiteral("hide %1 records").arg(count)),
        session_(session),
        records_(std::move(records)) {}

  void redo() override { Apply(true); }
  void undo() override { Apply(false); }

 private:
  void Apply(bool hidden) {
    for (const auto& [log, records] : records_) session_.SetHidden(log, records, hidden);
    session_.RebuildShown();
    Q_EMIT session_.ViewChanged(Session::PlaceChange::kNone);
  }

  Session& session_;
  std::vector<std::pair<int, std::vector<std::uint32_t>>> records_;
};

Session::Session(QObject* parent) : QObject(parent) {
  view_.scale = ScaleForPercentiles(0, 60);
}

std::vector<NamedLog> Session::NamedLogs() const {
  std::vector<NamedLog> named;
  named.reserve(logs_.size());
  for (const OpenLog& log : logs_) named.push_back({&log.file->Content(), log.name.toStdString()});
  return named;
}

void Session::AddLog(std::shared_ptr<LogFile> file, const QString& path) {
  const auto known =
      std::find_if(logs_.begin(), logs_.end(), [&](const OpenLog& log) { return log.path == path; });
  OpenLog log{++last_id_, std::move(file), path, QFileInfo(path).fileName(), {}};
  if (known != logs_.end()) {
    *known = std::move(log);
  } else {
    logs_.push_back(std::move(log));
  }
  // Logs of the same name are told apart by their folders.
  for (OpenLog& one : logs_) {
    const auto same = std::count_if(logs_.begin(), logs_.end(), [&](const OpenLog& other) {
      return QFileInfo(other.path).fileName() == QFileInfo(one.path).fileName();
    });
    const QFileInfo info(one.path);
    one.name = same > 1 ? info.dir().dirName() + QLatin1Char('/') + info.fileName() : info.fileName();
  }
  chosen_.clear();
  Rebuild();
}

void Session::CloseAll() {
  logs_.clear();
  chosen_.clear();
  undo_.clear();
  compared_.reset();
  Rebuild();
}

bool Session::LookForNews() {
  bool changed = false;
  for (OpenLog& log : logs_) {
    const LogFile::Change change = log.file->Update();
    if (change.reread) {
      log.hidden.clear();
      chosen_.clear();
    }
    changed = changed || change.changed;
    if (change.changed && !change.sentence.empty()) Q_EMIT News(QString::fromStdString(change.sentence));
  }
  if (changed) Rebuild();
  return changed;
}

void Session::Rebuild() {
  std::vector<std::pair<int, std::uint32_t>> chosen;
  for (const std::uint32_t record : chosen_) {
    const RecordPlace place = PlaceOf(record);
    chosen.emplace_back(logs_[place.log].id, static_cast<std::uint32_t>(place.record));
  }
  hovered_ = -1;
  const PlaceChange places = RebuildPlaces();
  RebuildLayers();
  RebuildValues();
  RebuildShown();
  KeepChosen(chosen);
  Q_EMIT LogsChanged();
  Q_EMIT ViewChanged(places);
  Q_EMIT ChosenChanged();
}

void Session::KeepChosen(const std::vector<std::pair<int, std::uint32_t>>& chosen) {
  chosen_.clear();
  for (const auto& [id, record] : chosen) {
    for (std::size_t i = 0; i < logs_.size(); ++i) {
      if (logs_[i].id != id || record >= logs_[i].file->Content().records.size()) continue;
      chosen_.push_back(static_cast<std::uint32_t>(first_[i] + record));
    }
  }
}

Session::PlaceChange Session::RebuildPlaces() {
  const std::vector<Place> before = std::move(places_);
  std::size_t count = 0;
  for (const OpenLog& log : logs_) count += log.file->Content().records.size();
  first_.clear();
  places_.clear();
  places_.reserve(count);
  view_.time_s.clear();
  view_.time_s.reserve(count);
  view_.log_distance.clear();
  view_.log_distance.reserve(count);
  view_.bearing_deg.clear();
  view_.bearing_deg.reserve(count);
  ForgetWideRegisters();
  for (OpenLog& log : logs_) {
    first_.push_back(places_.size());
    const Log& content = log.file->Content();
    log.hidden.resize(content.records.size(), 0);
    for (const Record& record : content.records) {
      places_.push_back(record.HasPosition() ? Place{record.latitude_deg, record.longitude_deg}
                                             : Place{kUnknownDegrees, kUnknownDegrees});
      view_.time_s.push_back(static_cast<double>(record.time_s));
      view_.log_distance.push_back(record.distance_km > 0 ? std::log10(record.distance_km) : kUnknown);
      view_.bearing_deg.push_back(record.bearing_deg);
    }
  }
  // Bit by bit: an unknown position stays one.
  const bool same = before.size() <= places_.size() && !before.empty() &&
                    std::memcmp(before.data(), places_.data(), before.size() * sizeof(Place)) == 0;
  return same ? PlaceChange::kMore : PlaceChange::kNew;
}

void Session::RebuildLayers() {
  const std::vector<NamedLog> named = NamedLogs();
  layers_ = MakeLayers(named, group_by_);
  view_.layers.clear();
  for (const Layer& layer : layers_.layers) {
    const QString name = QString::fromStdString(layer.name);
    view_.layers.push_back(
        {name, LayerColor(static_cast<int>(view_.layers.size())), !invisible_.contains(name)});
  }
  view_.layer.clear();
  view_.layer.reserve(places_.size());
  for (std::size_t i = 0; i < named.size(); ++i) {
    for (const Record& record : named[i].log->records) {
      view_.layer.push_back(static_cast<std::uint16_t>(layers_.of_block[i][record.block]));
    }
  }
  if (compared_ && std::max(compared_->layer_a, compared_->layer_b) >= view_.layers.size()) compared_.reset();
}

void Session::RebuildValues() {
  view_.level_db.clear();
  view_.level_db.reserve(places_.size());
  ForgetWideRegisters();
  for (const OpenLog& log : logs_) {
    const Log& content = log.file->Content();
    for (const Record& record : content.records) {
      view_.level_db.push_back(static_cast<float>(LevelOf(content, record, view_.unit, Calibration())));
    }
  }
}

void Session::RebuildShown() {
  view_.shown.assign(view_.Count(), 0);
  shown_count_ = 0;
  std::size_t at = 0;
  for (const OpenLog& log : logs_) {
    const Log& content = log.file->Content();
    for (std::size_t i = 0; i < content.records.size(); ++i, ++at) {
      const bool marked = (content.records[i].marks & ~shown_marks_) != 0;
      if (marked || log.hidden[i] != 0 || !view_.layers[view_.layer[at]].visible) continue;
      view_.shown[at] = 1;
      ++shown_count_;
    }
  }
  view_.scale = ScaleOf(view_);
  RebuildLaws();
}

void Session::RebuildLaws() {
  const std::vector<Sample> samples = AllSamples();
  ForgetWideRegisters();
  auto law = std::async([&] { return FitLaw(samples); });
  pattern_law_ = FitLawWithinSectors(samples, sector_deg_);
  law_ = law.get();
}

void Session::SetUnit(Unit unit) {
  view_.unit = unit;
  RebuildValues();
  RebuildShown();
  Q_EMIT ViewChanged(PlaceChange::kNone);
}

void Session::SetColoring(DotStyle::Coloring coloring) {
  view_.coloring = coloring;
  Q_EMIT ViewChanged(PlaceChange::kNone);
}

void Session::SetGroupBy(GroupBy by) {
  group_by_ = by;
  compared_.reset();
  RebuildLayers();
  RebuildShown();
  Q_EMIT LogsChanged();
  Q_EMIT ViewChanged(PlaceChange::kNone);
}

void Session::SetLayerVisible(std::size_t layer, bool visible) {
  if (layer >= view_.layers.size() || view_.layers[layer].visible == visible) return;
  view_.layers[layer].visible = visible;
  if (visible) {
    invisible_.remove(view_.layers[layer].name);
  } else {
    invisible_.insert(view_.layers[layer].name);
  }
  RebuildShown();
  Q_EMIT ViewChanged(PlaceChange::kNone);
}

void Session::SetShownMarks(std::uint8_t marks) {
  shown_marks_ = marks;
  RebuildShown();
  Q_EMIT ViewChanged(PlaceChange::kNone);
}

void Session::SetSectorDeg(double sector_deg) {
  sector_deg_ = sector_deg;
  RebuildLaws();
  Q_EMIT ViewChanged(PlaceChange::kNone);
}

void Session::SetRecalibration(std::optional<Recalibration> recalibration) {
  recalibration_ = std::move(recalibration);
  RebuildValues();
  RebuildShown();
  Q_EMIT ViewChanged(PlaceChange::kNone);
}

void Session::SetComparison(std::optional<ComparisonChoice> choice) {
  compared_ = choice;
  Q_EMIT ViewChanged(PlaceChange::kNone);
}

double Session::RecalibrationShift() const {
  std::vector<double> shifts;
  for (std::size_t at = 0; recalibration_ && at < view_.Count(); ++at) {
    if (!view_.Shows(at)) continue;
    const RecordPlace place = PlaceOf(static_cast<std::uint32_t>(at));
    const Log& log = logs_[place.log].file->Content();
    const double before = LevelOf(log, log.records[place.record], view_.unit);
    if (!std::isnan(before)) shifts.push_back(view_.level_db[at] - before);
  }
  return shifts.empty() ? std::nan("") : Quantile(shifts, 0.5);
}

void Session::Choose(const std::vector<std::uint32_t>& records, bool add) {
  if (add) {
    chosen_.insert(chosen_.end(), records.begin(), records.end());
    std::sort(chosen_.begin(), chosen_.end());
    chosen_.erase(std::unique(chosen_.begin(), chosen_.end()), chosen_.end());
  } else {
    chosen_ = records;
  }
  Q_EMIT ChosenChanged();
}

void Session::Hover(std::int64_t record) {
  if (record == hovered_) return;
  hovered_ = record;
  Q_EMIT HoverChanged(record);
}

void Session::HideChosen() {
  if (chosen_.empty()) return;
  std::vector<std::pair<int, std::vector<std::uint32_t>>> records;
  for (const OpenLog& log : logs_) records.emplace_back(log.id, std::vector<std::uint32_t>());
  for (const std::uint32_t record : chosen_) {
    const RecordPlace place = PlaceOf(record);
    records[place.log].second.push_back(static_cast<std::uint32_t>(place.record));
  }
  const std::size_t count = chosen_.size();
  chosen_.clear();
  undo_.push(new HideCommand(*this, std::move(records), count));
  Q_EMIT ChosenChanged();
}

void Session::SetHidden(int log_id, const std::vector<std::uint32_t>& records, bool hidden) {
  for (OpenLog& log : logs_) {
    if (log.id != log_id) continue;
    for (const std::uint32_t record : records) {
      if (record < log.hidden.size()) log.hidden[record] = hidden ? 1 : 0;
    }
  }
}

std::size_t Session::HiddenCount() const {
  std::size_t count = 0;
  for (const OpenLog& log : logs_) {
    count += static_cast<std::size_t>(std::count(log.hidden.begin(), log.hidden.end(), std::uint8_t{1}));
  }
  return count;
}

RecordPlace Session::PlaceOf(std::uint32_t record) const {
  const auto after = std::upper_bound(first_.begin(), first_.end(), std::size_t{record});
  const auto log = static_cast<std::size_t>(after - first_.begin()) - 1;
  return {log, record - first_[log]};
}

const Record& Session::RecordOf(std::uint32_t record) const {
  const RecordPlace place = PlaceOf(record);
  return logs_[place.log].file->Content().records[place.record];
}

template <typename Wanted>
std::vector<Sample> Session::SamplesWhere(Wanted wanted) const {
  std::vector<Sample> samples;
  samples.reserve(shown_count_);
  std::size_t at = 0;
  for (std::uint32_t log = 0; log < logs_.size(); ++log) {
    const std::vector<Record>& records = logs_[log].file->Content().records;
    for (std::uint32_t i = 0; i < records.size(); ++i, ++at) {
      if (!view_.Shows(at) || !wanted(at)) continue;
      samples.push_back({places_[at].latitude_deg, places_[at].longitude_deg, records[i].distance_km,
                         view_.bearing_deg[at], view_.level_db[at], log, i});
    }
  }
  return samples;
}

std::vector<Sample> Session::SamplesOfLayer(std::uint16_t layer) const {
  return SamplesWhere([&](std::size_t at) { return view_.layer[at] == layer; });
}

std::vector<Sample> Session::AllSamples() const {
  return SamplesWhere([](std::size_t) { return true; });
}

}  // namespace orvandi
