#include <QComboBox>
#include <QGridLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "desktop/forms/form1_window.h"
#include "desktop/forms/layout_parts.h"
#include "desktop/forms/panel.h"
#include "desktop/widgets/panel_frame.h"
#include "desktop/widgets/pelorus_widget.h"
#include "desktop/widgets/readout.h"

// Where the car is, where the transmitter is, and what the GPS reader says.
namespace kestrum {
namespace {

constexpr double kSmallScale = 0.9;

TextLine* Small(TextLine* line) {
  line->setFont(ScaledFont(line, kSmallScale));
  return line;
}

}  // namespace

QWidget* Form1Window::BuildRxPanel(QWidget* parent) {
  auto* frame = new PanelFrame(parent);
  const Panel panel(binder_, frame);
  auto* toward = Line();
  toward->setSpacing(0);
  toward->addWidget(panel.Readout(form_.lblRxBearing, kReadoutScale, QStringLiteral("000°")), 5);
  toward->addWidget(panel.Readout(form_.lblTextBearing, kReadoutScale, QStringLiteral("NW")), 4);
  auto* readouts = new QVBoxLayout;
  readouts->setSpacing(0);
  readouts->addWidget(MakeHeading(QStringLiteral("Distance to TX"), frame));
  readouts->addWidget(panel.Readout(form_.lblRxDist, kReadoutScale, QStringLiteral("20003.99 km")), 1);
  readouts->addWidget(MakeHeading(QStringLiteral("Bearing to TX"), frame));
  readouts->addLayout(toward, 1);
  readouts->addWidget(MakeHeading(QStringLiteral("Pelorus, front of the car is 0°"), frame));
  readouts->addWidget(panel.Readout(form_.lblPelorus, kReadoutScale, QStringLiteral("000°NW")), 1);
  auto* upper = Line();
  upper->addLayout(readouts, 5);
  upper->addWidget(panel.Rose(form_.Picture1), 5);

  auto* lower = Line();
  lower->addLayout(Headed(QStringLiteral("GPS"), Small(panel.Value(form_.lblRxVal, 7))), 7);
  lower->addLayout(Headed(QStringLiteral("Latitude"), Small(panel.Value(form_.lblRxLat, 11))), 11);
  lower->addLayout(Headed(QStringLiteral("Longitude"), Small(panel.Value(form_.lblRxLong, 12))), 12);
  lower->addLayout(Headed(QStringLiteral("Height"), Small(panel.Value(form_.lblRxHeight, 9))), 9);
  lower->addLayout(Headed(QStringLiteral("Optical"), Small(panel.Value(form_.lblOpticalDistance, 8))), 8);
  auto* rows = PanelRows(frame);
  rows->addLayout(upper, 1);
  rows->addLayout(lower);
  binder_.Bind(form_.frmRxSite, frame);
  return frame;
}

QWidget* Form1Window::BuildTxPanel(QWidget* parent) {
  auto* frame = new PanelFrame(parent);
  const Panel panel(binder_, frame);
  auto* site = Line();
  site->addLayout(Headed(QStringLiteral("Latitude"), Small(panel.Value(form_.lblTxLat, 9))), 9);
  site->addLayout(Headed(QStringLiteral("Longitude"), Small(panel.Value(form_.lblTxLong, 10))), 10);
  site->addLayout(Headed(QStringLiteral("Height"), Small(panel.Value(form_.lblTxHeight, 6))), 6);
  auto* antenna = panel.Combo(form_.cmbTxAntenna, QStringLiteral("TX antenna"));
  antenna->setMinimumContentsLength(10);
  antenna->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  auto* rows = PanelRows(frame);
  rows->addLayout(site);
  rows->addWidget(antenna);
  rows->addWidget(panel.Button(form_.cmdGetTxFix));
  binder_.Bind(form_.frmTxSite, frame);
  return frame;
}

QWidget* Form1Window::BuildDdePanel(QWidget* parent) {
  auto* frame = new PanelFrame(parent);
  const Panel panel(binder_, frame);
  struct Field {
    const char* heading;
    LinkLabel& label;
  };
  const Field fields[] = {{"Latitude", form_.lblDDELat},  {"Longitude", form_.lblDDELong},
                          {"Valid", form_.lblDDEVal},     {"Compass", form_.lblDDECompas},
                          {"Height", form_.lblDDEHeight}, {"Speed", form_.lblDDESpeed}};
  auto* rows = PanelRows(frame);
  auto* grid = new QGridLayout;
  grid->setVerticalSpacing(0);
  grid->setHorizontalSpacing(rows->spacing());
  int place = 0;
  for (const Field& field : fields) {
    // A whole longitude as the reader sends it.
    TextLine* const value = Small(panel.Value(field.label, 13));
    grid->addLayout(Headed(tr(field.heading), value), place / 2, place % 2);
    ++place;
  }
  rows->addLayout(grid);
  rows->addStretch(1);
  binder_.Bind(form_.frmDDE, frame);
  return frame;
}

}  // namespace kestrum
