#include "desktop/forms/panel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>

#include "desktop/widgets/lamp_widget.h"
#include "desktop/widgets/meter_bar.h"
#include "desktop/widgets/pelorus_widget.h"
#include "desktop/widgets/readout.h"
#include "desktop/widgets/strip_chart_widget.h"

namespace kestrum {

LampWidget* Panel::Lamp(kestrum::Lamp& lamp, bool fills) const {
  return Bound(lamp, new LampWidget(fills, parent_));
}

TextLine* Panel::Value(Label& label, int characters) const {
  auto* line = new TextLine(parent_);
  line->SetRoom(characters);
  return Bound(label, line);
}

Readout* Panel::Readout(Label& label, double scale, const QString& longest) const {
  return Bound(label, new kestrum::Readout(scale, longest, parent_));
}

TextLine* Panel::Elided(Label& label, Qt::TextElideMode mode) const {
  auto* line = new TextLine(parent_);
  line->SetElide(mode);
  return Bound(label, line);
}

StripChartWidget* Panel::Chart(StripChart& chart) const {
  return Bound(chart, new StripChartWidget(parent_));
}

QPushButton* Panel::Button(kestrum::Button& button) const {
  return Bound(button, new QPushButton(parent_));
}

QCheckBox* Panel::Check(CheckBox& box) const {
  return Bound(box, new QCheckBox(parent_));
}

std::vector<QRadioButton*> Panel::MakeGroup(const std::vector<OptionButton*>& options) const {
  std::vector<QRadioButton*> buttons;
  std::vector<OptionEntry> group;
  for (OptionButton* option : options) {
    buttons.push_back(new QRadioButton(parent_));
    group.push_back({*option, buttons.back()});
  }
  binder_.BindGroup(group);
  return buttons;
}

QLineEdit* Panel::Edit(TextBox& box, const QString& spoken, int most_characters) const {
  auto* edit = new QLineEdit(parent_);
  edit->setMaxLength(most_characters);
  edit->setAccessibleName(spoken);
  return Bound(box, edit);
}

QComboBox* Panel::Combo(ComboBox& box, const QString& spoken) const {
  auto* combo = new QComboBox(parent_);
  combo->setAccessibleName(spoken);
  combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  Bound(box, combo);
  combo->lineEdit()->setMaxLength(kMostOfAntenna);
  return combo;
}

QSlider* Panel::Slide(Slider& slider, const QString& spoken) const {
  auto* widget = new QSlider(Qt::Horizontal, parent_);
  widget->setAccessibleName(spoken);
  return Bound(slider, widget);
}

MeterBar* Panel::Bar(ProgressBar& bar, const QString& spoken) const {
  auto* widget = new MeterBar(parent_);
  widget->setAccessibleName(spoken);
  return Bound(bar, widget);
}

PelorusWidget* Panel::Rose(CompassRose& rose) const {
  return Bound(rose, new PelorusWidget(parent_));
}

}  // namespace kestrum
