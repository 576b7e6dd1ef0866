#include "window/plot_deck.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

#include "window/elided_label.h"
#include "window/theme.h"

namespace orvandi {
namespace {

// The least room for a plot whose numbers are readable.
constexpr int kPanelWidth = 400;
constexpr int kPanelHeight = 230;

const std::array<QString, PlotDeck::kCount>& IconNames() {
  static const std::array<QString, PlotDeck::kCount> names = {
      QStringLiteral("time"), QStringLiteral("distance"), QStringLiteral("pattern"),
      QStringLiteral("distribution")};
  return names;
}

}  // namespace

PlotDeck::PlotDeck(QWidget* parent)
    : QWidget(parent),
      time_(new TimePlot),
      distance_(new DistancePlot),
      pattern_(new PatternPlot),
      distribution_(new DistributionPlot),
      sectors_(new QComboBox),
      grid_(new QGridLayout) {
  setObjectName(QStringLiteral("plots"));
  for (const int degrees : {5, 10, 30}) {
    sectors_->addItem(QStringLiteral("%1%2 sectors").arg(degrees).arg(QChar(0xB0)), degrees);
  }
  sectors_->setObjectName(QStringLiteral("sectors"));
  sectors_->setAccessibleName(QStringLiteral("Width of the sectors"));
  sectors_->setToolTip(
      QStringLiteral("Wide sectors hold more records, narrow ones show more of the antenna."));
  sectors_->setCurrentIndex(1);

  auto* switches = new QHBoxLayout;
  switches->setSpacing(2);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(4);
  layout->addLayout(switches);
  layout->addLayout(grid_, 1);
  grid_->setSpacing(6);
  AddPanel(kTime, time_, QStringLiteral("Time"), QStringLiteral("Signal over time"), nullptr);
  AddPanel(kDistance, distance_, QStringLiteral("Distance"),
           QStringLiteral(
               "Signal over the distance from the transmitter, with the line that fits and that of free "
               "space. Choose one record: the free-space line goes through it."),
           nullptr);
  AddPanel(kPattern, pattern_, QStringLiteral("Antenna pattern"),
           QStringLiteral(
               "Median signal at 1 km by direction, seen from the transmitter, with the range of the middle "
               "half of the records. Sectors with fewer than 5 records stay empty."),
           sectors_);
  AddPanel(kDistribution, distribution_, QStringLiteral("Distribution"),
           QStringLiteral(
               "How often which signal occurs; 10 % of the records lie below the first line, 10 % above "
               "the last."),
           nullptr);
  for (const Panel& panel : panels_) switches->addWidget(panel.button);
  switches->addStretch();
  Arrange();
}

void PlotDeck::AddPanel(Kind kind, Plot* plot, const QString& title, const QString& tip, QWidget* extra) {
  Panel& panel = panels_.at(kind);
  panel.button = new QToolButton;
  panel.button->setObjectName(QStringLiteral("show") + plot->objectName());
  panel.button->setText(title);
  panel.button->setToolTip(tip);
  panel.button->setCheckable(true);
  panel.button->setAutoRaise(true);
  panel.button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  connect(panel.button, &QToolButton::clicked, this, [this, kind] { Bring(kind); });

  auto* heading = new QLabel(title);
  QFont bold = heading->font();
  bold.setBold(true);
  heading->setFont(bold);
  auto* caption = new ElidedLabel;
  caption->setObjectName(plot->objectName() + QStringLiteral("Caption"));
  auto* head = new QHBoxLayout;
  head->setContentsMargins(8, 4, 8, 0);
  head->setSpacing(10);
  head->addWidget(heading);
  head->addWidget(caption, 1);
  if (extra != nullptr) head->addWidget(extra);
  panel.caption = caption;
  panel.frame = new QWidget(this);
  panel.frame->setObjectName(QStringLiteral("card"));
  panel.frame->setAttribute(Qt::WA_StyledBackground);
  auto* layout = new QVBoxLayout(panel.frame);
  layout->setContentsMargins(1, 1, 1, 1);
  layout->setSpacing(0);
  layout->addLayout(head);
  layout->addWidget(plot, 1);
}

std::array<Plot*, PlotDeck::kCount> PlotDeck::All() const {
  return {time_, distance_, pattern_, distribution_};
}

void PlotDeck::SetCaption(Kind kind, const QString& text) {
  panels_.at(kind).caption->SetFullText(text);
}

QString PlotDeck::Caption(Kind kind) const {
  return panels_.at(kind).caption->FullText();
}

void PlotDeck::Bring(Kind kind) {
  const auto found = std::find(order_.begin(), order_.end(), kind);
  std::rotate(order_.begin(), found, found + 1);
  Arrange();
}

bool PlotDeck::Shows(Kind kind) const {
  return !panels_.at(kind).frame->isHidden();
}

void PlotDeck::SetIcons(const QPalette& palette) {
  for (std::size_t i = 0; i < kCount; ++i) panels_.at(i).button->setIcon(IconFor(IconNames().at(i), palette));
}

QString PlotDeck::Order() const {
  QString order;
  for (const Kind kind : order_) order += QString::number(kind);
  return order;
}

void PlotDeck::SetOrder(const QString& order) {
  for (auto i = order.size() - 1; i >= 0; --i) {
    const int kind = order.at(i).digitValue();
    if (kind >= 0 && kind < static_cast<int>(kCount)) Bring(static_cast<Kind>(kind));
  }
}

void PlotDeck::Arrange() {
  const int columns = std::clamp(width() / kPanelWidth, 1, 2);
  const int rows = std::clamp(height() / kPanelHeight, 1, columns == 2 ? 2 : 4);
  const auto room = std::min(static_cast<std::size_t>(columns * rows), kCount);
  std::vector<Kind> shown(order_.begin(), order_.begin() + static_cast<std::ptrdiff_t>(room));
  std::sort(shown.begin(), shown.end());
  for (const Panel& panel : panels_) grid_->removeWidget(panel.frame);
  for (std::size_t i = 0; i < kCount; ++i) {
    const auto at = std::find(shown.begin(), shown.end(), static_cast<Kind>(i));
    const bool visible = at != shown.end();
    panels_.at(i).frame->setVisible(visible);
    panels_.at(i).button->setChecked(visible);
    if (!visible) continue;
    const int place = static_cast<int>(at - shown.begin());
    // A single plot in the last row takes all of it.
    const bool alone = columns == 2 && place == static_cast<int>(room) - 1 && place % 2 == 0;
    grid_->addWidget(panels_.at(i).frame, place / columns, place % columns, 1, alone ? 2 : 1);
  }
}

void PlotDeck::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  Arrange();
}

}  // namespace orvandi
