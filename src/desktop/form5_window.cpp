#include "desktop/form5_window.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QPushButton>
#include <array>

#include "desktop/fit_label.h"
#include "desktop/layout_parts.h"
#include "desktop/meter_bar.h"
#include "desktop/picture_widget.h"

namespace kestrum {
namespace {

constexpr double kGrowsWithWindow = 40;

}  // namespace

Form5Window::Form5Window(Form5& form, Binder& binder) : FormWindow(form, binder, QStringLiteral("Form5")) {
  setWindowFlag(Qt::WindowStaysOnTopHint);
  auto* panel = new QGroupBox(this);
  std::array<FitLabel*, 5> labels{};
  for (std::size_t i = 0; i < labels.size(); ++i) {
    auto* label = new FitLabel(kSecondScale, QStringLiteral("0000.0 km"), panel);
    label->GrowTo(kGrowsWithWindow);
    binder.Bind(form.Label1.at(i), label, QStringLiteral("Label1_%1").arg(i));
    labels.at(i) = label;
  }
  auto* bar = new MeterBar(panel);
  bar->setAccessibleName(tr("Signal"));
  bar->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  auto* needle = new PictureWidget(panel);
  auto* back = new QPushButton(panel);

  auto* grid = new QGridLayout(panel);
  grid->addWidget(labels[0], 0, 0);
  grid->addWidget(labels[1], 1, 0);
  grid->addWidget(needle, 0, 1, 3, 1);
  grid->addWidget(labels[2], 2, 0);
  grid->addWidget(bar, 3, 0, 1, 2);
  grid->addWidget(labels[4], 4, 0, 1, 2);
  grid->addWidget(labels[3], 5, 0);
  grid->addWidget(back, 5, 1);
  constexpr std::array<int, 6> kShares = {4, 4, 3, 2, 3, 2};
  for (int row = 0; row < static_cast<int>(kShares.size()); ++row) {
    grid->setRowStretch(row, kShares.at(static_cast<std::size_t>(row)));
  }
  grid->setColumnStretch(0, 3);
  grid->setColumnStretch(1, 2);
  setCentralWidget(panel);
  resize(Characters(this, 64), fontMetrics().height() * 20);

  binder.Bind(form.ProgressBar1, bar, QStringLiteral("ProgressBar1"));
  binder.Bind(form.Picture1, needle, QStringLiteral("Picture1"));
  binder.Bind(form.Command1, back, QStringLiteral("Command1"));
  binder.Bind(form.Frame1, panel, QStringLiteral("Frame1"));
}

}  // namespace kestrum
