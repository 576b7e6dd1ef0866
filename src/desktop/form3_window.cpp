#include "desktop/form3_window.h"

#include <QAction>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QSlider>

#include "desktop/fit_label.h"
#include "desktop/layout_parts.h"
#include "desktop/list_box.h"

namespace kestrum {
namespace {

// The default list begins with its heading and a rule.
constexpr int kHeadingLines = 2;

}  // namespace

Form3Window::Form3Window(Form3& form, Binder& binder, QWidget* owner)
    : FormWindow(form, binder, QStringLiteral("Form3"), owner), form_(form) {
  auto* body = new QWidget(this);
  auto* columns = new QHBoxLayout(body);
  columns->addWidget(BuildAcquisition(body));
  columns->addWidget(BuildLists(body), 1);
  setCentralWidget(body);
  BuildMenus();
}

void Form3Window::BuildMenus() {
  struct Line {
    MenuItem* item;
    const char* name;
  };
  const Line lines[] = {{&form_.mnuClearCalibration, "mnuClearCalibration"},
                        {&form_.mnuDefaultCalibration, "mnuDefaultCalibration"},
                        {nullptr, ""},
                        {&form_.mnuLoadConf1, "mnuLoadConf1"},
                        {&form_.mnuLoadConf2, "mnuLoadConf2"},
                        {&form_.mnuLoad, "mnuLoad"},
                        {nullptr, ""},
                        {&form_.mnuSave1, "mnuSave1"},
                        {&form_.mnuSave2, "mnuSave2"},
                        {&form_.mnuSaveAs, "mnuSaveAs"}};
  QMenu* files = menuBar()->addMenu(tr("&Files"));
  for (const Line& line : lines) {
    if (line.item == nullptr) {
      files->addSeparator();
    } else {
      binder_.Bind(*line.item, files->addAction(QString()), QLatin1String(line.name));
    }
  }
  auto* about = new QAction(this);
  menuBar()->addAction(about);
  binder_.Bind(form_.mnuAbout, about, QStringLiteral("mnuAbout"));
}

QWidget* Form3Window::BuildAcquisition(QWidget* parent) {
  auto* panel = new QGroupBox(parent);
  const auto button = [this, panel](Button& control, const char* name) {
    auto* widget = new QPushButton(panel);
    binder_.Bind(control, widget, QLatin1String(name));
    return widget;
  };
  const auto label = [this, panel](Label& control, const char* name) {
    auto* widget = new ElidedLabel(panel);
    widget->AskUpTo(kMostOfValue);
    binder_.Bind(control, widget, QLatin1String(name));
    return widget;
  };
  const auto readout = [this, panel](Label& control, const char* name, const QString& room) {
    auto* widget = new FitLabel(kSecondScale, room, panel);
    binder_.Bind(control, widget, QLatin1String(name));
    return widget;
  };
  auto* grid = new QGridLayout(panel);
  int row = 0;
  grid->addWidget(MakeHeading(tr("Receiver"), panel), row, 0);
  grid->addWidget(readout(form_.lblCalFrequency, "lblCalFrequency", QStringLiteral("00000.00 kHz")), row, 1,
                  1, 2);
  ++row;
  grid->addWidget(label(form_.lblSraw1, "lblSraw1"), row, 0);
  auto* raw = readout(form_.lblSraw, "lblSraw", QStringLiteral(" 000 "));
  raw->setAlignment(Qt::AlignCenter);
  grid->addWidget(raw, row, 1);
  grid->addWidget(button(form_.cmdStop, "cmdStop"), row, 2);
  ++row;
  grid->addWidget(MakeHeading(tr("Table row"), panel), row, 0);
  grid->addWidget(readout(form_.lblRecNbr, "lblRecNbr", QStringLiteral("000")), row, 1);
  ++row;
  auto* index = new QSlider(Qt::Horizontal, panel);
  index->setAccessibleName(tr("Table row"));
  grid->addWidget(index, row, 0, 1, 3);
  binder_.Bind(form_.sldIndex, index, QStringLiteral("sldIndex"));
  ++row;
  auto* record = new ElidedLabel(panel);
  binder_.Bind(form_.lblAllS2F, record, QStringLiteral("lblAllS2F"));
  grid->addWidget(record, row, 0, 1, 3);
  ++row;
  grid->setRowMinimumHeight(row, fontMetrics().height() / 2);
  ++row;
  grid->addWidget(readout(form_.lblSSelect, "lblSSelect", QStringLiteral("S9+60")), row, 0);
  grid->addWidget(button(form_.cmdSup, "cmdSup"), row, 1);
  grid->addWidget(button(form_.cmdSdown, "cmdSdown"), row, 2);
  ++row;
  grid->addWidget(button(form_.cmdSstore, "cmdSstore"), row, 0, 1, 3);
  ++row;
  grid->setRowMinimumHeight(row, fontMetrics().height() / 2);
  ++row;
  auto* edit = new QLineEdit(panel);
  edit->setAccessibleName(tr("Signal input in uV"));
  edit->setMaxLength(kMostOfNumber);
  grid->addWidget(edit, row, 0);
  grid->addWidget(label(form_.lbluV, "lbluV"), row, 1);
  grid->addWidget(button(form_.cmduVStore, "cmduVStore"), row, 2);
  binder_.Bind(form_.txtEdit, edit, QStringLiteral("txtEdit"));
  ++row;
  grid->setRowStretch(row, 1);
  ++row;
  grid->addWidget(button(form_.cmdSave, "cmdSave"), row, 0, 1, 3);
  binder_.Bind(form_.frmCalibration, panel, QStringLiteral("frmCalibration"));
  return panel;
}

ListBox* Form3Window::List(Label& label, const QString& name, QWidget* parent) {
  auto* list = new ListBox(28, 20, parent);
  list->AlignFieldsAt({5, 16});
  binder_.Bind(label, list, name);
  return list;
}

QWidget* Form3Window::BuildLists(QWidget* parent) {
  auto* panel = new QGroupBox(parent);
  auto* columns = new QHBoxLayout(panel);
  ListBox* defaults = List(form_.Label1, QStringLiteral("Label1"), panel);
  defaults->setAccessibleName(tr("Default values"));
  ListBox* table = List(form_.Label2, QStringLiteral("Label2"), panel);
  table->setAccessibleName(tr("Table values"));
  ListBox* others = List(form_.Label3, QStringLiteral("Label3"), panel);
  others->setAccessibleName(tr("Other values"));
  for (ListBox* list : {defaults, table, others}) columns->addWidget(list, 1);
  binder_.Follow<int>(form_.selected_point,
                      [defaults](const int& point) { defaults->MarkLine(kHeadingLines + point); });
  binder_.Bind(form_.frmHelp, panel, QStringLiteral("frmHelp"));
  return panel;
}

}  // namespace kestrum
