#include "desktop/forms/panel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>

#include "desktop/widgets/fit_label.h"
#include "desktop/widgets/meter_bar.h"
#include "desktop/widgets/pelorus_widget.h"

namespace kestrum {

QLabel* Panel::Value(Label& label) const {
  return Bound(label, new QLabel(parent_));
}

FitLabel* Panel::Readout(Label& label, double scale, const QString& room) const {
  return Bound(label, new FitLabel(scale, room, parent_));
}

ElidedLabel* Panel::Elided(Label& label, Qt::TextElideMode mode) const {
  return Bound(label, new ElidedLabel(parent_, mode));
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

QLineEdit* Panel::Edit(TextBox& box, const QString& spoken) const {
  auto* edit = new QLineEdit(parent_);
  edit->setAccessibleName(spoken);
  return Bound(box, edit);
}

QComboBox* Panel::Combo(ComboBox& box, const QString& spoken) const {
  auto* combo = new QComboBox(parent_);
  combo->setAccessibleName(spoken);
  combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  return Bound(box, combo);
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
