#include "desktop/form4_window.h"

#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "desktop/fit_label.h"
#include "desktop/layout_parts.h"

namespace kestrum {

Form4Window::Form4Window(Form4& form, Binder& binder, QWidget* owner)
    : FormWindow(form, binder, QStringLiteral("Form4"), owner) {
  auto* body = new QWidget(this);
  auto* rows = new QVBoxLayout(body);
  auto* columns = new QHBoxLayout;
  auto* entries = new QVBoxLayout;
  entries->addWidget(BuildEntry({form.Frame1, form.Text1, form.Label1, 1}, body));
  entries->addWidget(BuildEntry({form.Frame2, form.Text2, form.Label2, 2}, body));
  columns->addLayout(entries, 1);
  columns->addWidget(BuildChoice(form, body));
  rows->addLayout(columns);
  auto* ok = new QPushButton(body);
  rows->addWidget(ok, 0, Qt::AlignRight);
  rows->addStretch(1);
  binder.Bind(form.cmdOk, ok, QStringLiteral("cmdOk"));
  setCentralWidget(body);
}

QGroupBox* Form4Window::BuildEntry(const Entry& entry, QWidget* parent) {
  auto* panel = new QGroupBox(parent);
  auto* line = new QHBoxLayout(panel);
  auto* edit = new QLineEdit(panel);
  edit->setMinimumWidth(Characters(edit, 12));
  edit->setMaxLength(kMostOfNumber);
  auto* unit = new ElidedLabel(panel);
  unit->AskUpTo(kMostOfValue);
  unit->setMinimumWidth(Characters(unit, 14));
  line->addWidget(edit, 1);
  line->addWidget(unit);
  binder_.Bind(entry.frame, panel, QStringLiteral("Frame%1").arg(entry.number));
  binder_.Bind(entry.box, edit, QStringLiteral("Text%1").arg(entry.number));
  binder_.Bind(entry.unit, unit, QStringLiteral("Label%1").arg(entry.number));
  binder_.Follow<std::string>(entry.frame.caption, [edit, panel](const std::string& /*text*/) {
    edit->setAccessibleName(panel->title());
  });
  return panel;
}

QGroupBox* Form4Window::BuildChoice(Form4& form, QWidget* parent) {
  auto* panel = new QGroupBox(parent);
  auto* rows = new QVBoxLayout(panel);
  auto* by_time = new QRadioButton(panel);
  auto* by_distance = new QRadioButton(panel);
  rows->addWidget(by_time);
  rows->addWidget(by_distance);
  rows->addStretch(1);
  binder_.Bind(form.Frame3, panel, QStringLiteral("Frame3"));
  binder_.BindGroup({{form.Option1, by_time, QStringLiteral("Option1")},
                     {form.Option2, by_distance, QStringLiteral("Option2")}});
  return panel;
}

}  // namespace kestrum
