#include "desktop/forms/form1_window.h"

#include <QAction>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>
#include <QVBoxLayout>

#include "desktop/forms/layout_parts.h"
#include "desktop/forms/panel.h"
#include "desktop/widgets/fit_label.h"

namespace kestrum {
Form1Window::Form1Window(Form1& form, Binder& binder) : FormWindow(form, binder), form_(form) {
  auto* body = new QWidget(this);
  auto* left = BuildRigPanel(body);
  auto* right = new QVBoxLayout;
  right->addWidget(BuildRxPanel(body), 1);
  auto* sites = new QHBoxLayout;
  sites->addWidget(BuildTxPanel(body), 1);
  sites->addWidget(BuildDdePanel(body), 1);
  right->addLayout(sites);

  auto* panels = new QHBoxLayout;
  panels->addWidget(left, 1);
  panels->addLayout(right, 1);
  auto* rows = new QVBoxLayout(body);
  rows->addLayout(panels, 1);
  rows->addLayout(BuildLogLines(body));
  setCentralWidget(body);

  BuildMenus();
  BuildStatusBar();
  findChild<QPushButton*>(QStringLiteral("cmdLoggin"))->setFocus();
  binder.Bind(form.tmrMain);
  binder.Bind(form.tmrAverageRSSI);
}

void Form1Window::BuildMenus() {
  for (const MenuBranch& branch : MenuBar(form_)) {
    if (branch.lines.empty()) {
      auto* action = new QAction(this);
      menuBar()->addAction(action);
      binder_.Bind(branch.head, action);
      continue;
    }
    auto* menu = new QMenu(menuBar());
    menu->setToolTipsVisible(true);
    menuBar()->addMenu(menu);
    binder_.Bind(branch.head, menu->menuAction());
    for (const MenuLine& line : branch.lines) {
      if (line.item != nullptr) {
        binder_.Bind(*line.item, menu->addAction(QString()));
      } else {
        menu->addSeparator()->setObjectName(QLatin1String(line.rule->name));
      }
    }
  }
}

void Form1Window::BuildStatusBar() {
  statusBar()->setObjectName(QStringLiteral("StatusBar1"));
  for (std::size_t i = 0; i < form_.StatusBar1.size(); ++i) {
    auto* panel = new QLabel(statusBar());
    panel->setIndent(Characters(panel, 1));
    statusBar()->addWidget(panel, 1);
    binder_.Bind(form_.StatusBar1.at(i), panel);
  }
  // Beside the panels and only as wide as what it says.
  statusBar()->addPermanentWidget(Panel(binder_, statusBar()).Value(form_.lblHint));
}

QLayout* Form1Window::BuildLogLines(QWidget* parent) {
  const Panel panel(binder_, parent);
  auto* into = panel.Edit(form_.lblLoggingInto, tr("Logging state"));
  into->setReadOnly(true);
  into->setFrame(false);
  QPalette plain = into->palette();
  plain.setColor(QPalette::Base, Qt::transparent);
  into->setPalette(plain);
  auto* state = new QHBoxLayout;
  state->addWidget(into, 1);
  state->addWidget(panel.Elided(form_.lblStatusCaption, Qt::ElideMiddle), 1);
  auto* rows = new QVBoxLayout;
  rows->setSpacing(0);
  rows->addLayout(state);
  rows->addWidget(panel.Elided(form_.lblLog));
  return rows;
}

}  // namespace kestrum
