#pragma once

#include <QLabel>

#include "desktop/binding/binder.h"

namespace kestrum {

class ElidedLabel;
class FitLabel;
class ListBox;

// Makes the widgets of one panel, each bound to its control, so that a window reads like its form:
// line->addWidget(panel.Button(form.cmdDown)). Where a control says nothing by itself, `spoken` is what a
// screen reader says.
class Panel {
 public:
  Panel(Binder& binder, QWidget* parent) : binder_(binder), parent_(parent) {}

  QLabel* Value(Label& label) const;
  // Drawn as large as fits; see FitLabel.
  FitLabel* Readout(Label& label, double scale, const QString& room) const;
  ElidedLabel* Elided(Label& label, Qt::TextElideMode mode = Qt::ElideRight) const;
  QPushButton* Button(kestrum::Button& button) const;
  QCheckBox* Check(CheckBox& box) const;
  // Radio buttons that exclude each other.
  template <class Options>
  std::vector<QRadioButton*> Group(const Options& options) const {
    return MakeGroup({options.begin(), options.end()});
  }
  QLineEdit* Edit(TextBox& box, const QString& spoken) const;
  QComboBox* Combo(ComboBox& box, const QString& spoken) const;
  QSlider* Slide(Slider& slider, const QString& spoken) const;
  MeterBar* Bar(ProgressBar& bar, const QString& spoken) const;
  PelorusWidget* Rose(CompassRose& rose) const;

 private:
  std::vector<QRadioButton*> MakeGroup(const std::vector<OptionButton*>& options) const;
  template <class Widget, class Control>
  Widget* Bound(Control& control, Widget* widget) const {
    binder_.Bind(control, widget);
    return widget;
  }

  Binder& binder_;
  QWidget* parent_;
};

}  // namespace kestrum
