#pragma once

#include <QLabel>

#include "desktop/binding/binder.h"
#include "desktop/forms/layout_parts.h"

namespace kestrum {

class LampWidget;
class ListBox;
class Readout;
class StripChartWidget;
class TextLine;

// Makes the widgets of one panel, each bound to its control, so that a window reads like its form:
// line->addWidget(panel.Button(form.cmdDown)). Where a control says nothing by itself, `spoken` is what a
// screen reader says.
class Panel {
 public:
  Panel(Binder& binder, QWidget* parent) : binder_(binder), parent_(parent) {}

  QWidget* parent() const { return parent_; }

  LampWidget* Lamp(kestrum::Lamp& lamp, bool fills) const;
  // A text of normal size that asks for room for so many characters.
  TextLine* Value(Label& label, int characters) const;
  // Drawn as large as its longest text fits.
  kestrum::Readout* Readout(Label& label, double scale, const QString& longest) const;
  TextLine* Elided(Label& label, Qt::TextElideMode mode = Qt::ElideRight) const;
  StripChartWidget* Chart(StripChart& chart) const;
  QPushButton* Button(kestrum::Button& button) const;
  QCheckBox* Check(CheckBox& box) const;
  // Radio buttons that exclude each other.
  template <class Options>
  std::vector<QRadioButton*> Group(const Options& options) const {
    return MakeGroup({options.begin(), options.end()});
  }
  QLineEdit* Edit(TextBox& box, const QString& spoken, int most_characters = kMostOfNumber) const;
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
