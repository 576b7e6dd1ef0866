#include "desktop/form1_window.h"

#include <QAction>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>
#include <QVBoxLayout>
#include <array>

#include "desktop/fit_label.h"
#include "desktop/layout_parts.h"

namespace kestrum {
namespace {

// Items that carry a check mark show an empty place for it while they are not checked.
void PrepareCheckMarks(Form1Window* window) {
  for (const char* name :
       {"mnuFT817", "mnuFT840", "mnuFT847", "mnuFT857", "mnuFT897", "mnuCom1", "mnuCom2", "mnuCom3",
        "mnuCom4", "mnuCom5", "mnuCom6", "mnuAverageRSSI", "mnuMinimalDisplay"}) {
    window->findChild<QAction*>(QLatin1String(name))->setCheckable(true);
  }
}

}  // namespace

Form1Window::Form1Window(Form1& form, Binder& binder)
    : FormWindow(form, binder, QStringLiteral("Form1")), form_(form) {
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
    const QString name = QString::fromStdString(branch.head.name);
    if (branch.lines.empty()) {
      auto* action = new QAction(this);
      menuBar()->addAction(action);
      binder_.Bind(*branch.head.item, action, name);
      continue;
    }
    auto* menu = new QMenu(menuBar());
    menu->setToolTipsVisible(true);
    menuBar()->addMenu(menu);
    binder_.Bind(*branch.head.item, menu->menuAction(), name);
    for (const MenuLine& line : branch.lines) {
      const bool is_rule = line.item->caption == "-";
      QAction* action = is_rule ? menu->addSeparator() : menu->addAction(QString());
      if (is_rule) {
        action->setObjectName(QString::fromStdString(line.name));
      } else {
        binder_.Bind(*line.item, action, QString::fromStdString(line.name));
      }
    }
  }
  PrepareCheckMarks(this);
}

void Form1Window::BuildStatusBar() {
  statusBar()->setObjectName(QStringLiteral("StatusBar1"));
  for (std::size_t i = 0; i < form_.StatusBar1.size(); ++i) {
    auto* panel = new ElidedLabel(statusBar());
    panel->setIndent(Characters(panel, 1));
    panel->AskUpTo(kMostOfPanel);
    statusBar()->addWidget(panel, 1);
    binder_.Bind(form_.StatusBar1.at(i), panel, QStringLiteral("StatusBar1_%1").arg(i));
  }
}

QLayout* Form1Window::BuildLogLines(QWidget* parent) {
  auto* rows = new QVBoxLayout;
  rows->setSpacing(0);
  auto* into = new QLineEdit(parent);
  into->setMaxLength(kMostOfPath);
  into->setReadOnly(true);
  into->setFrame(false);
  into->setAccessibleName(tr("Logging state"));
  QPalette plain = into->palette();
  plain.setColor(QPalette::Base, Qt::transparent);
  into->setPalette(plain);
  binder_.Bind(form_.lblLoggingInto, into, QStringLiteral("lblLoggingInto"));
  auto* log = new ElidedLabel(parent);
  binder_.Bind(form_.lblLog, log, QStringLiteral("lblLog"));
  auto* status = new ElidedLabel(parent, Qt::ElideMiddle);
  binder_.Bind(form_.lblStatusCaption, status, QStringLiteral("lblStatusCaption"));
  auto* state = new QHBoxLayout;
  state->addWidget(into, 1);
  state->addWidget(status, 1);
  rows->addLayout(state);
  rows->addWidget(log);
  return rows;
}

}  // namespace kestrum
