#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QSlider>
#include <memory>

#include "desktop/binding/binder.h"
#include "desktop/binding/user_events.h"
#include "desktop/ports/box_text.h"
#include "desktop/text_convert.h"

// Controls that the user works with.
namespace kestrum {
namespace {

// A caption without its mnemonic mark, for screen readers.
QString Spoken(const std::string& caption) {
  return ToQt(caption)
      .replace(QLatin1String("&&"), QLatin1String("\x01"))
      .remove(QLatin1Char('&'))
      .replace(QLatin1Char('\x01'), QLatin1Char('&'));
}

void ShowCaption(QAbstractButton* widget, const std::string& caption) {
  constexpr int kMostOfCaption = 32;
  widget->setText(Shortened(ToQt(caption), kMostOfCaption));
  widget->setAccessibleName(Shortened(Spoken(caption), kMostOfCaption));
}

// The checked option of an exclusive group refuses to be cleared, yet a group without a choice is a state of
// the program.
void ShowOption(QRadioButton* widget, bool checked) {
  widget->setAutoExclusive(false);
  widget->setChecked(checked);
  widget->setAutoExclusive(true);
}

void ShowChosen(QComboBox* widget, const std::string& text) {
  widget->setEditText(ToQt(text));
  // A long text shows its beginning.
  if (!widget->hasFocus()) widget->lineEdit()->setCursorPosition(0);
}

}  // namespace

void Binder::Bind(Button& button, QPushButton* widget) {
  BindCommon(button, widget);
  widget->setAutoDefault(false);
  Follow<std::string>(button.caption, [widget](const std::string& text) { ShowCaption(widget, text); });
  connect(widget, &QPushButton::clicked, this, [this, &button] { Deed(button.click); });
}

void Binder::Bind(CheckBox& box, QCheckBox* widget) {
  BindCommon(box, widget);
  Follow<std::string>(box.caption, [widget](const std::string& text) { ShowCaption(widget, text); });
  Follow<bool>(box.checked, [widget](const bool& checked) { widget->setChecked(checked); });
  connect(widget, &QCheckBox::clicked, this,
          [this, &box](bool checked) { Deed([&box, checked] { box.checked = checked; }, box.click); });
}

void Binder::BindGroup(const std::vector<OptionEntry>& group) {
  std::vector<OptionButton*> members;
  members.reserve(group.size());
  for (const OptionEntry& entry : group) members.push_back(&entry.control);
  for (const OptionEntry& entry : group) {
    OptionButton& option = entry.control;
    QRadioButton* const widget = entry.widget;
    BindCommon(option, widget);
    Follow<std::string>(option.caption, [widget](const std::string& text) { ShowCaption(widget, text); });
    Follow<bool>(option.checked, [widget](const bool& checked) { ShowOption(widget, checked); });
    connect(widget, &QRadioButton::clicked, this, [this, &option, members] {
      const auto choose = [&option, members] {
        for (OptionButton* member : members) member->checked = false;
        option.checked = true;
      };
      Deed(choose, option.click);
    });
  }
}

void Binder::BindText(TextBox& box, QLineEdit* widget) {
  Follow<std::string>(box.text, [widget](const std::string& text) {
    if (widget->text() != ToQt(text)) widget->setText(ToQt(text));
  });
  Follow<int>(box.selections, [&box, widget](const int& selections) {
    if (selections > 0) widget->setSelection(box.selection_start, box.selection_length);
  });
  connect(widget, &QLineEdit::textEdited, this,
          [this, &box](const QString& text) { Deed([&box, text] { box.text = FromQt(text); }, {}); });
}

void Binder::Bind(TextBox& box, QLineEdit* widget) {
  BindCommon(box, widget);
  BindText(box, widget);
  auto* events = new UserEvents(widget);
  events->clicked = [this, &box] { Deed(box.click); };
  events->focused = [this, &box] { Deed(box.focus); };
  events->enter_released = [this, &box] { Deed(box.enter_released); };
}

void Binder::Bind(ComboBox& box, QComboBox* widget) {
  BindCommon(box, widget);
  widget->setEditable(true);
  widget->setInsertPolicy(QComboBox::NoInsert);
  widget->setCompleter(nullptr);  // what is typed is what counts
  Follow<std::vector<std::string>>(box.items, [&box, widget](const std::vector<std::string>& items) {
    const QSignalBlocker quiet(widget);
    widget->clear();
    for (const std::string& item : items) widget->addItem(ToQt(item));
    ShowChosen(widget, box.text);
  });
  Follow<std::string>(box.text, [widget](const std::string& text) {
    const QSignalBlocker quiet(widget);
    if (widget->currentText() != ToQt(text)) ShowChosen(widget, text);
  });
  connect(widget, &QComboBox::editTextChanged, this,
          [this, &box](const QString& text) { Deed([&box, text] { box.text = FromQt(text); }, {}); });
  const auto typed = std::make_shared<bool>(false);  // and not taken over yet
  const auto take = [this, &box, typed] {
    *typed = false;
    Deed(box.taken);
  };
  connect(widget->lineEdit(), &QLineEdit::textEdited, this, [typed] { *typed = true; });
  connect(widget->lineEdit(), &QLineEdit::editingFinished, this, [typed, take] {
    if (*typed) take();
  });
  connect(widget, &QComboBox::activated, this, take);
  const auto enter = [this, &box, take] {
    Deed(box.enter_pressed);
    take();
  };
  (new UserEvents(widget))->enter_pressed = enter;
  (new UserEvents(widget->lineEdit()))->enter_pressed = enter;
}

void Binder::Bind(Slider& slider, QSlider* widget) {
  BindCommon(slider, widget);
  const auto quietly = [widget](auto change) {
    const QSignalBlocker quiet(widget);
    change();
  };
  Follow<int>(slider.minimum, [=](const int& value) { quietly([=] { widget->setMinimum(value); }); });
  Follow<int>(slider.maximum, [=](const int& value) { quietly([=] { widget->setMaximum(value); }); });
  Follow<int>(slider.value, [=](const int& value) { quietly([=] { widget->setValue(value); }); });
  connect(widget, &QSlider::valueChanged, this,
          [this, &slider](int value) { Deed([&slider, value] { slider.value = value; }, slider.change); });
}

}  // namespace kestrum
