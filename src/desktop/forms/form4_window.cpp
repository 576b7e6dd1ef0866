#include "desktop/forms/form4_window.h"

#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <array>

#include "desktop/forms/layout_parts.h"
#include "desktop/forms/panel.h"
#include "desktop/widgets/panel_frame.h"
#include "desktop/widgets/readout.h"

namespace kestrum {

Form4Window::Form4Window(Form4& form, Binder& binder, QWidget* owner) : FormWindow(form, binder, owner) {
  auto* body = new QWidget(this);
  auto* rows = new QVBoxLayout(body);
  auto* columns = new QHBoxLayout;
  auto* entries = new QVBoxLayout;
  entries->addWidget(BuildEntry({form.Frame1, form.Text1, form.Label1}, body));
  entries->addWidget(BuildEntry({form.Frame2, form.Text2, form.Label2}, body));
  columns->addLayout(entries, 1);
  columns->addWidget(BuildChoice(form, body));
  rows->addLayout(columns);
  auto* ok = new QPushButton(body);
  rows->addWidget(ok, 0, Qt::AlignRight);
  rows->addStretch(1);
  binder.Bind(form.cmdOk, ok);
  setCentralWidget(body);
}

QGroupBox* Form4Window::BuildEntry(const Entry& entry, QWidget* parent) {
  auto* panel = new PanelFrame(parent);
  auto* line = new QHBoxLayout(panel);
  auto* edit = new QLineEdit(panel);
  edit->setMaxLength(kMostOfNumber);
  edit->setMinimumWidth(Characters(edit, 12));
  auto* unit = new TextLine(panel);
  unit->SetRoom(14);
  line->addWidget(edit, 1);
  line->addWidget(unit);
  binder_.Bind(entry.frame, panel);
  binder_.Bind(entry.box, edit);
  binder_.Bind(entry.unit, unit);
  binder_.Follow<std::string>(entry.frame.caption, [edit, panel](const std::string& /*text*/) {
    edit->setAccessibleName(panel->title());
  });
  return panel;
}

QGroupBox* Form4Window::BuildChoice(Form4& form, QWidget* parent) {
  auto* panel = new PanelFrame(parent);
  auto* rows = new QVBoxLayout(panel);
  const std::array options = {&form.Option1, &form.Option2};
  for (QRadioButton* option : Panel(binder_, panel).Group(options)) rows->addWidget(option);
  rows->addStretch(1);
  binder_.Bind(form.Frame3, panel);
  return panel;
}

}  // namespace kestrum
