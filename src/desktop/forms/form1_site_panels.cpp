#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QPushButton>
#include <QVBoxLayout>

#include "desktop/forms/form1_window.h"
#include "desktop/forms/layout_parts.h"
#include "desktop/forms/panel.h"
#include "desktop/widgets/fit_label.h"
#include "desktop/widgets/pelorus_widget.h"

// Where the car is, where the transmitter is, and what the GPS reader says.
namespace kestrum {

QWidget* Form1Window::BuildRxPanel(QWidget* parent) {
  auto* frame = new QGroupBox(parent);
  const Panel panel(binder_, frame);
  auto* distance = panel.Readout(form_.lblRxDist, kReadoutScale, QStringLiteral("0000.0 km"));
  auto* bearing = panel.Readout(form_.lblRxBearing, kReadoutScale, QStringLiteral("000°"));
  auto* pelorus = panel.Readout(form_.lblPelorus, kReadoutScale, QStringLiteral("000°"));
  for (FitLabel* readout : {distance, bearing, pelorus}) readout->GrowTo(kLargestReadoutScale);

  auto* toward = new QHBoxLayout;
  toward->addWidget(bearing, 3);
  toward->addWidget(panel.Readout(form_.lblTextBearing, kReadoutScale * 0.7, QStringLiteral("NW ")), 2);
  auto* readouts = new QVBoxLayout;
  readouts->addWidget(MakeHeading(tr("Distance to TX"), frame));
  readouts->addWidget(distance, 1);
  readouts->addWidget(MakeHeading(tr("Bearing to TX"), frame));
  readouts->addLayout(toward, 1);
  readouts->addWidget(MakeHeading(tr("Pelorus, front of the car is 0°"), frame));
  readouts->addWidget(pelorus, 1);
  readouts->setSpacing(0);
  auto* upper = new QHBoxLayout;
  upper->addLayout(readouts, 1);
  upper->addWidget(panel.Rose(form_.Picture1), 1);

  auto* lower = new QHBoxLayout;
  lower->addLayout(Headed(tr("GPS"), panel.Value(form_.lblRxVal)));
  lower->addLayout(Headed(tr("Latitude"), panel.Value(form_.lblRxLat)));
  lower->addLayout(Headed(tr("Longitude"), panel.Value(form_.lblRxLong)));
  lower->addLayout(Headed(tr("Height"), panel.Value(form_.lblRxHeight)));
  lower->addLayout(Headed(tr("Optical"), panel.Value(form_.lblOpticalDistance)));
  auto* rows = new QVBoxLayout(frame);
  rows->addLayout(upper, 1);
  rows->addLayout(lower);
  binder_.Bind(form_.frmRxSite, frame);
  return frame;
}

QWidget* Form1Window::BuildTxPanel(QWidget* parent) {
  auto* frame = new QGroupBox(parent);
  const Panel panel(binder_, frame);
  auto* site = new QHBoxLayout;
  site->addLayout(Headed(tr("Latitude"), panel.Value(form_.lblTxLat)));
  site->addLayout(Headed(tr("Longitude"), panel.Value(form_.lblTxLong)));
  site->addLayout(Headed(tr("Height"), panel.Value(form_.lblTxHeight)));
  auto* antenna = panel.Combo(form_.cmbTxAntenna, tr("TX antenna"));
  antenna->setMinimumContentsLength(12);
  antenna->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  auto* rows = new QVBoxLayout(frame);
  rows->addLayout(site);
  rows->addWidget(antenna);
  rows->addWidget(panel.Button(form_.cmdGetTxFix));
  binder_.Bind(form_.frmTxSite, frame);
  return frame;
}

QWidget* Form1Window::BuildDdePanel(QWidget* parent) {
  auto* frame = new QGroupBox(parent);
  const Panel panel(binder_, frame);
  struct Field {
    const char* heading;
    LinkLabel& label;
  };
  const Field fields[] = {{"Latitude", form_.lblDDELat},  {"Longitude", form_.lblDDELong},
                          {"Valid", form_.lblDDEVal},     {"Compass", form_.lblDDECompas},
                          {"Height", form_.lblDDEHeight}, {"Speed", form_.lblDDESpeed}};
  auto* grid = new QGridLayout(frame);
  int place = 0;
  for (const Field& field : fields) {
    auto* value = panel.Elided(field.label);
    // A whole longitude as the reader sends it, and a little air; the columns of both rows are of one width.
    value->setMinimumWidth(value->fontMetrics().horizontalAdvance(QStringLiteral("00532.00000E")));
    grid->addLayout(Headed(tr(field.heading), value), place / 2, place % 2);
    ++place;
  }
  binder_.Bind(form_.frmDDE, frame);
  return frame;
}

}  // namespace kestrum
