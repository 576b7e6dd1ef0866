#include "desktop/forms/form5_window.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QPushButton>
#include <array>

#include "desktop/forms/layout_parts.h"
#include "desktop/forms/panel.h"
#include "desktop/widgets/fit_label.h"
#include "desktop/widgets/meter_bar.h"
#include "desktop/widgets/picture_widget.h"

namespace kestrum {
namespace {

constexpr double kGrowsWithWindow = 40;

}  // namespace

Form5Window::Form5Window(Form5& form, Binder& binder) : FormWindow(form, binder) {
  setWindowFlag(Qt::WindowStaysOnTopHint);
  auto* frame = new QGroupBox(this);
  const Panel panel(binder, frame);
  std::array<FitLabel*, 5> labels{};
  for (std::size_t i = 0; i < labels.size(); ++i) {
    labels.at(i) = panel.Readout(form.Label1.at(i), kSecondScale, QStringLiteral("0000.0 km"));
    labels.at(i)->GrowTo(kGrowsWithWindow);
  }
  auto* bar = panel.Bar(form.ProgressBar1, tr("Signal"));
  bar->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  auto* needle = new PictureWidget(frame);

  auto* grid = new QGridLayout(frame);
  grid->addWidget(labels[0], 0, 0);
  grid->addWidget(labels[1], 1, 0);
  grid->addWidget(needle, 0, 1, 3, 1);
  grid->addWidget(labels[2], 2, 0);
  grid->addWidget(bar, 3, 0, 1, 2);
  grid->addWidget(labels[4], 4, 0, 1, 2);
  grid->addWidget(labels[3], 5, 0);
  grid->addWidget(panel.Button(form.Command1), 5, 1);
  constexpr std::array<int, 6> kShares = {4, 4, 3, 2, 3, 2};
  for (int row = 0; row < static_cast<int>(kShares.size()); ++row) {
    grid->setRowStretch(row, kShares.at(static_cast<std::size_t>(row)));
  }
  grid->setColumnStretch(0, 3);
  grid->setColumnStretch(1, 2);
  setCentralWidget(frame);
  resize(Characters(this, 64), fontMetrics().height() * 20);

  binder.Bind(form.Picture1, needle);
  binder.Bind(form.Frame1, frame);
}

}  // namespace kestrum
