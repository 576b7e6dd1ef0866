#include "desktop/forms/form3_window.h"

#include <QAction>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QSlider>

#include "desktop/forms/layout_parts.h"
#include "desktop/forms/panel.h"
#include "desktop/widgets/list_box.h"
#include "desktop/widgets/panel_frame.h"
#include "desktop/widgets/readout.h"

namespace kestrum {
namespace {

// The default list begins with its heading and a rule.
constexpr int kHeadingLines = 2;

}  // namespace

Form3Window::Form3Window(Form3& form, Binder& binder, QWidget* owner)
    : FormWindow(form, binder, owner), form_(form) {
  auto* body = new QWidget(this);
  auto* columns = new QHBoxLayout(body);
  columns->addWidget(BuildAcquisition(body));
  columns->addWidget(BuildLists(body), 1);
  setCentralWidget(body);
  BuildMenus();
}

void Form3Window::BuildMenus() {
  QMenu* files = menuBar()->addMenu(QStringLiteral("&Files"));
  const auto add = [this, files](const std::vector<MenuItem*>& items) {
    for (MenuItem* item : items) binder_.Bind(*item, files->addAction(QString()));
  };
  add({&form_.mnuClearCalibration, &form_.mnuDefaultCalibration});
  files->addSeparator();
  add({&form_.mnuLoadConf1, &form_.mnuLoadConf2, &form_.mnuLoad});
  files->addSeparator();
  add({&form_.mnuSave1, &form_.mnuSave2, &form_.mnuSaveAs});
  auto* about = new QAction(this);
  menuBar()->addAction(about);
  binder_.Bind(form_.mnuAbout, about);
}

QWidget* Form3Window::BuildAcquisition(QWidget* parent) {
  auto* frame = new PanelFrame(parent);
  const Panel panel(binder_, frame);
  const auto readout = [&panel](Label& label, const QString& room) {
    return panel.Readout(label, kSecondScale, room);
  };
  auto* grid = new QGridLayout(frame);
  int row = 0;
  grid->addWidget(MakeHeading(QStringLiteral("Receiver"), frame), row, 0);
  grid->addWidget(readout(form_.lblCalFrequency, QStringLiteral("00000.00 kHz")), row, 1, 1, 2);
  ++row;
  grid->addWidget(panel.Value(form_.lblSraw1, 10), row, 0);
  auto* raw = readout(form_.lblSraw, QStringLiteral(" 000 "));
  raw->SetAlignment(Qt::AlignCenter);
  grid->addWidget(raw, row, 1);
  grid->addWidget(panel.Button(form_.cmdStop), row, 2);
  ++row;
  grid->addWidget(MakeHeading(QStringLiteral("Table row"), frame), row, 0);
  grid->addWidget(readout(form_.lblRecNbr, QStringLiteral("000")), row, 1);
  ++row;
  grid->addWidget(panel.Slide(form_.sldIndex, QStringLiteral("Table row")), row, 0, 1, 3);
  ++row;
  grid->addWidget(panel.Elided(form_.lblAllS2F), row, 0, 1, 3);
  ++row;
  grid->setRowMinimumHeight(row, fontMetrics().height() / 2);
  ++row;
  grid->addWidget(readout(form_.lblSSelect, QStringLiteral("S9+60")), row, 0);
  grid->addWidget(panel.Button(form_.cmdSup), row, 1);
  grid->addWidget(panel.Button(form_.cmdSdown), row, 2);
  ++row;
  grid->addWidget(panel.Button(form_.cmdSstore), row, 0, 1, 3);
  ++row;
  grid->setRowMinimumHeight(row, fontMetrics().height() / 2);
  ++row;
  grid->addWidget(panel.Edit(form_.txtEdit, QStringLiteral("Signal input in uV")), row, 0);
  grid->addWidget(panel.Value(form_.lbluV, 4), row, 1);
  grid->addWidget(panel.Button(form_.cmduVStore), row, 2);
  ++row;
  grid->addWidget(panel.Elided(form_.lblNote), row, 0, 1, 3);
  ++row;
  grid->setRowStretch(row, 1);
  ++row;
  grid->addWidget(panel.Button(form_.cmdSave), row, 0, 1, 3);
  binder_.Bind(form_.frmCalibration, frame);
  return frame;
}

ListBox* Form3Window::List(Label& label, QWidget* parent) {
  auto* list = new ListBox(28, 20, parent);
  list->AlignFieldsAt({5, 16});
  binder_.Bind(label, list);
  return list;
}

QWidget* Form3Window::BuildLists(QWidget* parent) {
  auto* panel = new PanelFrame(parent);
  auto* columns = new QHBoxLayout(panel);
  ListBox* defaults = List(form_.Label1, panel);
  defaults->setAccessibleName(QStringLiteral("Default values"));
  ListBox* table = List(form_.Label2, panel);
  table->setAccessibleName(QStringLiteral("Table values"));
  ListBox* others = List(form_.Label3, panel);
  others->setAccessibleName(QStringLiteral("Other values"));
  for (ListBox* list : {defaults, table, others}) columns->addWidget(list, 1);
  ListBox* const points = table;
  ListBox* const all = others;
  binder_.Follow<int>(form_.stored_line, [points, all](const int& line) {
    for (ListBox* list : {points, all}) list->MarkLine(line);
  });
  binder_.Follow<int>(form_.selected_point,
                      [defaults](const int& point) { defaults->MarkLine(kHeadingLines + point); });
  binder_.Bind(form_.frmHelp, panel);
  return panel;
}

}  // namespace kestrum
