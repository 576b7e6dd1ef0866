#include "window/side_panels.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QTableView>
#include <QVBoxLayout>

#include "log/cleaning.h"
#include "window/record_text.h"
#include "window/theme.h"

namespace orvandi {
namespace {

struct GroupRow {
  GroupBy by;
  const char* text;
};
constexpr std::array<GroupRow, 5> kGroups = {{{GroupBy::kFile, "File"},
                                              {GroupBy::kAntenna, "Antenna"},
                                              {GroupBy::kRig, "Rig and mode"},
                                              {GroupBy::kFrequency, "Frequency"},
                                              {GroupBy::kDate, "Date"}}};

struct MarkRow {
  Mark mark;
  const char* text;
  const char* tip;
  std::size_t MarkCounts::*count;
};
constexpr std::array<MarkRow, 5> kMarks = {{
    {kNoFix, "No fix", "The receiver said that it had no fix; the position is an old one.",
     &MarkCounts::no_fix},
    {kNoPosition, "No position",
     "Coordinates that cannot be read or that are off the globe. They show in time and "
     "distribution only.",
     &MarkCounts::no_position},
    {kOldFix, "Old fix", "The position stands still while time runs.", &MarkCounts::old_fix},
    {kDeadRig, "Dead rig", "Raw value 0 in a run of records: the set did not answer.", &MarkCounts::dead_rig},
    {kUnknownSignal, "Unknown signal",
     "\"S?\" or \"???\": outside of the calibration table. Such records have no "
     "level to show.",
     &MarkCounts::unknown_signal},
}};

QLabel* WrappedLabel(const QString& name) {
  auto* label = new QLabel;
  label->setObjectName(name);
  label->setWordWrap(true);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  return label;
}

MarkCounts SumOfMarks(const Session& session) {
  MarkCounts sum;
  for (const OpenLog& log : session.Logs()) {
    const MarkCounts counts = CountMarks(log.file->Content());
    sum.records += counts.records;
    sum.shown += counts.shown;
    for (const MarkRow& row : kMarks) sum.*row.count += counts.*row.count;
  }
  return sum;
}

}  // namespace

LayerPanel::LayerPanel(Session& session, QWidget* parent)
    : QWidget(parent), session_(session), group_(new QComboBox), list_(new QListWidget) {
  group_->setObjectName(QStringLiteral("groupBy"));
  group_->setAccessibleName(QStringLiteral("What makes a layer"));
  group_->setToolTip(QStringLiteral("What the records are sorted into layers by."));
  for (const GroupRow& row : kGroups) group_->addItem(QString::fromLatin1(row.text));
  list_->setObjectName(QStringLiteral("layers"));
  list_->setAccessibleName(QStringLiteral("Layers"));
  list_->setToolTip(QStringLiteral("Uncheck a layer to leave it out of every view."));
  list_->setFrameShape(QFrame::NoFrame);
  list_->setUniformItemSizes(true);
  auto* head = new QHBoxLayout;
  head->addWidget(new QLabel(QStringLiteral("One layer for each")));
  head->addWidget(group_, 1);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(head);
  layout->addWidget(list_, 1);
  connect(group_, &QComboBox::activated, this,
          [this](int index) { session_.SetGroupBy(kGroups.at(static_cast<std::size_t>(index)).by); });
  connect(list_, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
    if (filling_) return;
    session_.SetLayerVisible(static_cast<std::size_t>(list_->row(item)), item->checkState() == Qt::Checked);
  });
  connect(&session_, &Session::LogsChanged, this, &LayerPanel::Refill);
  Refill();
}

void LayerPanel::Refill() {
  filling_ = true;
  for (std::size_t i = 0; i < kGroups.size(); ++i) {
    if (kGroups[i].by == session_.Grouping()) group_->setCurrentIndex(static_cast<int>(i));
  }
  const auto& looks = session_.View().layers;
  const auto& layers = session_.LayersOfBlocks().layers;
  while (list_->count() > static_cast<int>(looks.size())) delete list_->takeItem(list_->count() - 1);
  for (std::size_t i = 0; i < looks.size(); ++i) {
    const int row = static_cast<int>(i);
    if (row >= list_->count()) list_->addItem(new QListWidgetItem);
    QListWidgetItem* item = list_->item(row);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    item->setCheckState(looks[i].visible ? Qt::Checked : Qt::Unchecked);
    item->setIcon(ColorIcon(looks[i].color));
    const QString name = looks[i].name.isEmpty() ? QStringLiteral("(none)") : looks[i].name;
    item->setText(QStringLiteral("%1  \u2013  %2").arg(name, RecordsText(layers[i].record_count)));
  }
  filling_ = false;
}

CleaningPanel::CleaningPanel(Session& session, QWidget* parent)
    : QWidget(parent), session_(session), summary_(WrappedLabel(QStringLiteral("cleaningSummary"))) {
  auto* grid = new QGridLayout;
  auto* inside = new QWidget;
  auto* inside_layout = new QVBoxLayout(inside);
  inside_layout->addWidget(summary_);
  inside_layout->addLayout(grid);
  inside_layout->addStretch();
  auto* scroll = new QScrollArea;
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setWidgetResizable(true);
  scroll->setWidget(inside);
  scroll->viewport()->setAutoFillBackground(false);
  inside->setAutoFillBackground(false);
  scroll->setAccessibleName(QStringLiteral("Cleaning"));
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(scroll);
  for (const MarkRow& row : kMarks) {
    auto* box = new QCheckBox;
    box->setObjectName(QStringLiteral("show") + QString::fromLatin1(row.text).remove(QLatin1Char(' ')));
    box->setToolTip(QString::fromLatin1(row.tip) +
                    QStringLiteral("\nCheck it to show these records all the same."));
    connect(box, &QCheckBox::toggled, this, &CleaningPanel::Apply);
    const int place = static_cast<int>(boxes_.size());
    grid->addWidget(box, place / 2, place % 2);
    boxes_.push_back(box);
  }
  connect(&session_, &Session::ViewChanged, this, [this] { Recount(); });
  Recount();
}

void CleaningPanel::Recount() {
  const MarkCounts counts = SumOfMarks(session_);
  QString text =
      QStringLiteral("%1 records, %2 of them fit to be shown. Check a kind to see it all the same.")
          .arg(CountText(counts.records), CountText(counts.shown));
  if (const std::size_t hidden = session_.HiddenCount(); hidden > 0) {
    text += QStringLiteral(" %1 hidden by you (Undo brings them back).").arg(CountText(hidden));
  }
  summary_->setText(text);
  for (std::size_t i = 0; i < kMarks.size(); ++i) {
    boxes_[i]->setText(QStringLiteral("%1  \u2013  %2")
                           .arg(QString::fromLatin1(kMarks[i].text), CountText(counts.*kMarks[i].count)));
    boxes_[i]->setEnabled(counts.*kMarks[i].count > 0);
    const QSignalBlocker quiet(boxes_[i]);
    boxes_[i]->setChecked((session_.ShownMarks() & kMarks[i].mark) != 0);
  }
}

void CleaningPanel::Apply() {
  std::uint8_t marks = 0;
  for (std::size_t i = 0; i < kMarks.size(); ++i) {
    if (boxes_[i]->isChecked()) marks = static_cast<std::uint8_t>(marks | kMarks[i].mark);
  }
  session_.SetShownMarks(marks);
}

ComparePanel::ComparePanel(Session& session, QWidget* parent)
    : QWidget(parent),
      session_(session),
      first_(new QComboBox),
      second_(new QComboBox),
      cell_(new QComboBox),
      shown_(new QCheckBox(QStringLiteral("Show the difference on the map and in the pattern"))),
      outcome_(WrappedLabel(QStringLiteral("compareOutcome"))) {
  first_->setObjectName(QStringLiteral("compareA"));
  second_->setObjectName(QStringLiteral("compareB"));
  cell_->setObjectName(QStringLiteral("compareCell"));
  shown_->setObjectName(QStringLiteral("compareShown"));
  first_->setAccessibleName(QStringLiteral("First layer"));
  second_->setAccessibleName(QStringLiteral("Second layer"));
  cell_->setAccessibleName(QStringLiteral("Size of the squares"));
  for (QComboBox* box : {first_, second_}) {
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setMinimumContentsLength(8);
  }
  for (const int metres : {25, 50, 100}) cell_->addItem(QStringLiteral("%1 m").arg(metres), metres);
  cell_->setCurrentIndex(1);
  cell_->setToolTip(
      QStringLiteral("Side of the squares. Medians are compared where both layers have at least 3 records."));
  auto* line = new QHBoxLayout;
  line->addWidget(first_, 1);
  line->addWidget(new QLabel(QStringLiteral("minus")));
  line->addWidget(second_, 1);
  line->addWidget(new QLabel(QStringLiteral("by")));
  line->addWidget(cell_);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(line);
  layout->addWidget(shown_);
  layout->addWidget(outcome_);
  layout->addStretch();
  for (QComboBox* box : {first_, second_, cell_})
    connect(box, &QComboBox::activated, this, &ComparePanel::Apply);
  connect(shown_, &QCheckBox::toggled, this, &ComparePanel::Apply);
  connect(&session_, &Session::LogsChanged, this, &ComparePanel::Refill);
  connect(&session_, &Session::ViewChanged, this, [this] { Sync(); });
  Refill();
}

// What is compared may have been chosen elsewhere.
void ComparePanel::Sync() {
  filling_ = true;
  const std::optional<ComparisonChoice>& choice = session_.Compared();
  shown_->setChecked(choice.has_value());
  if (choice) {
    first_->setCurrentIndex(choice->layer_a);
    second_->setCurrentIndex(choice->layer_b);
    cell_->setCurrentIndex(cell_->findData(static_cast<int>(choice->cell_m)));
  }
  filling_ = false;
}

void ComparePanel::SetOutcome(const QString& text) {
  outcome_->setText(text);
}

void ComparePanel::Refill() {
  filling_ = true;
  const auto& looks = session_.View().layers;
  int which = 0;
  for (QComboBox* box : {first_, second_}) {
    const int before = box->currentIndex();
    box->clear();
    for (const LayerLook& look : looks) box->addItem(ColorIcon(look.color), look.name);
    const int usual = std::min(which, box->count() - 1);
    box->setCurrentIndex(before >= 0 && before < box->count() && session_.Compared() ? before : usual);
    ++which;
  }
  const bool possible = looks.size() >= 2;
  shown_->setEnabled(possible);
  shown_->setChecked(possible && session_.Compared().has_value());
  if (!possible) {
    SetOutcome(
        QStringLiteral("A comparison needs two layers: open a second log, or make a layer for each antenna, "
                       "rig, frequency or date."));
  } else if (!shown_->isChecked()) {
    SetOutcome(QString());
  }
  filling_ = false;
}

void ComparePanel::Apply() {
  if (filling_) return;
  if (!shown_->isChecked()) {
    SetOutcome(QString());
    session_.SetComparison(std::nullopt);
    return;
  }
  ComparisonChoice choice;
  choice.layer_a = static_cast<std::uint16_t>(std::max(0, first_->currentIndex()));
  choice.layer_b = static_cast<std::uint16_t>(std::max(0, second_->currentIndex()));
  choice.cell_m = cell_->currentData().toDouble();
  session_.SetComparison(choice);
}

DroppedModel::DroppedModel(Session& session, QObject* parent)
    : QAbstractTableModel(parent), session_(session) {}

void DroppedModel::Refresh() {
  beginResetModel();
  rows_.clear();
  for (std::size_t i = 0; i < session_.Logs().size(); ++i) {
    for (std::size_t k = 0; k < session_.Logs()[i].file->Content().dropped.size(); ++k)
      rows_.push_back({i, k});
  }
  endResetModel();
}

int DroppedModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int DroppedModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : 4;
}

QVariant DroppedModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole)) return {};
  const Row& row = rows_.at(static_cast<std::size_t>(index.row()));
  const OpenLog& log = session_.Logs().at(row.log);
  const DroppedLine& line = log.file->Content().dropped.at(row.line);
  switch (index.column()) {
    case 0:
      return static_cast<qulonglong>(line.line);
    case 1:
      return QString::fromStdString(line.text);
    case 2: {
      const std::string_view reason = ReasonText(line.reason);
      return QString::fromUtf8(reason.data(), static_cast<qsizetype>(reason.size()));
    }
    default:
      return line.pending ? JournalOf(log.name) : log.name;
  }
}

QVariant DroppedModel::headerData(int section, Qt::Orientation orientation, int role) const {
  static const std::array<QString, 4> kTitles = {QStringLiteral("Line"), QStringLiteral("Text"),
                                                 QStringLiteral("Why"), QStringLiteral("File")};
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  return kTitles.at(static_cast<std::size_t>(section));
}

DroppedPanel::DroppedPanel(Session& session, QWidget* parent)
    : QWidget(parent),
      session_(session),
      model_(session),
      summary_(WrappedLabel(QStringLiteral("droppedSummary"))),
      table_(new QTableView) {
  table_->setObjectName(QStringLiteral("droppedLines"));
  table_->setAccessibleName(QStringLiteral("Lines that were not understood"));
  table_->setModel(&model_);
  table_->setFrameShape(QFrame::NoFrame);
  table_->setShowGrid(false);
  table_->setAlternatingRowColors(true);
  table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->setWordWrap(false);
  table_->verticalHeader()->hide();
  table_->verticalHeader()->setDefaultSectionSize(table_->fontMetrics().height() + 6);
  table_->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
  table_->horizontalHeader()->setSectionResizeMode(2, QHeaderView::Stretch);
  table_->horizontalHeader()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
  table_->horizontalHeader()->setHighlightSections(false);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(summary_);
  layout->addWidget(table_, 1);
  connect(&session_, &Session::LogsChanged, this, &DroppedPanel::Refresh);
  Refresh();
}

void DroppedPanel::Refresh() {
  model_.Refresh();
  count_ = 0;
  for (const OpenLog& log : session_.Logs()) count_ += log.file->Content().dropped_count;
  if (count_ == 0) {
    summary_->setText(QStringLiteral("Every line was understood."));
  } else if (count_ > static_cast<std::uint64_t>(model_.rowCount())) {
    summary_->setText(QStringLiteral("%1 lines were not understood; the first %2 of them:")
                          .arg(CountText(count_), CountText(static_cast<std::uint64_t>(model_.rowCount()))));
  } else {
    summary_->setText(QStringLiteral("Lines that were not understood, and so are in no view:"));
  }
  table_->setVisible(count_ > 0);
  Q_EMIT CountChanged();
}

}  // namespace orvandi
