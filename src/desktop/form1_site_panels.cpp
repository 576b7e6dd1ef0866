#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "desktop/fit_label.h"
#include "desktop/form1_window.h"
#include "desktop/layout_parts.h"
#include "desktop/pelorus_widget.h"

// Where the car is, where the transmitter is, and what the GPS reader says.
namespace kestrum {

QWidget* Form1Window::BuildRxPanel(QWidget* parent) {
  auto* panel = new QGroupBox(parent);
  auto* distance = new FitLabel(kReadoutScale, QStringLiteral("0000.0 km"), panel);
  auto* bearing = new FitLabel(kReadoutScale, QStringLiteral("000°"), panel);
  auto* word = new FitLabel(kReadoutScale * 0.7, QStringLiteral("NW "), panel);
  auto* pelorus = new FitLabel(kReadoutScale, QStringLiteral("000°"), panel);
  for (FitLabel* readout : {distance, bearing, pelorus}) readout->GrowTo(kLargestReadoutScale);
  auto* rose = new PelorusWidget(panel);
  binder_.Bind(form_.lblRxDist, distance, QStringLiteral("lblRxDist"));
  binder_.Bind(form_.lblRxBearing, bearing, QStringLiteral("lblRxBearing"));
  binder_.Bind(form_.lblTextBearing, word, QStringLiteral("lblTextBearing"));
  binder_.Bind(form_.lblPelorus, pelorus, QStringLiteral("lblPelorus"));
  binder_.Bind(form_.Picture1, rose, QStringLiteral("Picture1"));

  auto* toward = new QHBoxLayout;
  toward->addWidget(bearing, 3);
  toward->addWidget(word, 2);
  auto* readouts = new QVBoxLayout;
  readouts->addWidget(MakeHeading(tr("Distance to TX"), panel));
  readouts->addWidget(distance, 1);
  readouts->addWidget(MakeHeading(tr("Bearing to TX"), panel));
  readouts->addLayout(toward, 1);
  readouts->addWidget(MakeHeading(tr("Pelorus, front of the car is 0°"), panel));
  readouts->addWidget(pelorus, 1);
  readouts->setSpacing(0);
  auto* upper = new QHBoxLayout;
  upper->addLayout(readouts, 1);
  upper->addWidget(rose, 1);

  auto* lower = new QHBoxLayout;
  auto* fix = Value(form_.lblRxVal, QStringLiteral("lblRxVal"), panel);
  lower->addLayout(Headed(tr("GPS"), fix));
  lower->addLayout(Headed(tr("Latitude"), Value(form_.lblRxLat, QStringLiteral("lblRxLat"), panel)));
  lower->addLayout(Headed(tr("Longitude"), Value(form_.lblRxLong, QStringLiteral("lblRxLong"), panel)));
  lower->addLayout(Headed(tr("Height"), Value(form_.lblRxHeight, QStringLiteral("lblRxHeight"), panel)));
  lower->addLayout(
      Headed(tr("Optical"), Value(form_.lblOpticalDistance, QStringLiteral("lblOpticalDistance"), panel)));
  auto* rows = new QVBoxLayout(panel);
  rows->addLayout(upper, 1);
  rows->addLayout(lower);
  binder_.Bind(form_.frmRxSite, panel, QStringLiteral("frmRxSite"));
  return panel;
}

QWidget* Form1Window::BuildTxPanel(QWidget* parent) {
  auto* panel = new QGroupBox(parent);
  auto* site = new QHBoxLayout;
  site->addLayout(Headed(tr("Latitude"), Value(form_.lblTxLat, QStringLiteral("lblTxLat"), panel)));
  site->addLayout(Headed(tr("Longitude"), Value(form_.lblTxLong, QStringLiteral("lblTxLong"), panel)));
  site->addLayout(Headed(tr("Height"), Value(form_.lblTxHeight, QStringLiteral("lblTxHeight"), panel)));
  auto* antenna = new QComboBox(panel);
  antenna->setAccessibleName(tr("TX antenna"));
  antenna->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  antenna->setMinimumContentsLength(12);
  antenna->setEditable(true);
  antenna->lineEdit()->setMaxLength(kMostOfAntenna);
  antenna->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  auto* take_fix = new QPushButton(panel);
  auto* rows = new QVBoxLayout(panel);
  rows->addLayout(site);
  rows->addWidget(antenna);
  rows->addWidget(take_fix);
  binder_.Bind(form_.cmbTxAntenna, antenna, QStringLiteral("cmbTxAntenna"));
  binder_.Bind(form_.cmdGetTxFix, take_fix, QStringLiteral("cmdGetTxFix"));
  binder_.Bind(form_.frmTxSite, panel, QStringLiteral("frmTxSite"));
  return panel;
}

QWidget* Form1Window::BuildDdePanel(QWidget* parent) {
  auto* panel = new QGroupBox(parent);
  struct Field {
    const char* heading;
    LinkLabel& label;
    const char* name;
  };
  const Field fields[] = {
      {"Latitude", form_.lblDDELat, "lblDDELat"},     {"Longitude", form_.lblDDELong, "lblDDELong"},
      {"Valid", form_.lblDDEVal, "lblDDEVal"},        {"Compass", form_.lblDDECompas, "lblDDECompas"},
      {"Height", form_.lblDDEHeight, "lblDDEHeight"}, {"Speed", form_.lblDDESpeed, "lblDDESpeed"}};
  auto* grid = new QGridLayout(panel);
  int place = 0;
  for (const Field& field : fields) {
    auto* value = new ElidedLabel(panel);
    // A whole longitude as the reader sends it, and a little air; the columns of both rows are of one width.
    value->setMinimumWidth(value->fontMetrics().horizontalAdvance(QStringLiteral("00532.00000E")));
    binder_.Bind(field.label, value, QLatin1String(field.name));
    grid->addLayout(Headed(tr(field.heading), value), place / 2, place % 2);
    ++place;
  }
  binder_.Bind(form_.frmDDE, panel, QStringLiteral("frmDDE"));
  return panel;
}

}  // namespace kestrum
