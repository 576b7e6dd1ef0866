#include "desktop/forms/form1_window.h"

#include <QAction>
#include <QActionGroup>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>
#include <QVBoxLayout>

#include "desktop/forms/layout_parts.h"
#include "desktop/forms/panel.h"
#include "desktop/widgets/lamp_widget.h"
#include "desktop/widgets/patient_menu.h"
#include "desktop/widgets/readout.h"

namespace kestrum {

Form1Window::Form1Window(Form1& form, Binder& binder) : FormWindow(form, binder), form_(form) {
  auto* body = new QWidget(this);
  const int air = fontMetrics().height() / 4;
  auto* lamps = BuildLamps(body);
  auto* left = BuildRigPanel(body);
  auto* right = new QVBoxLayout;
  right->setSpacing(air);
  right->addWidget(BuildRxPanel(body), 1);
  auto* sites = Line();
  sites->addWidget(BuildTxPanel(body), 1);
  sites->addWidget(BuildDdePanel(body), 1);
  right->addLayout(sites);

  auto* panels = Line();
  panels->addWidget(left, 1);
  panels->addLayout(right, 1);
  auto* rows = new QVBoxLayout(body);
  rows->setContentsMargins(air * 2, air, air * 2, 0);
  rows->setSpacing(air);
  rows->addLayout(lamps, 1);
  rows->addLayout(panels, 10);
  rows->addLayout(BuildLogLines(body));
  setCentralWidget(body);

  BuildMenus();
  BuildStatusBar();
  findChild<QPushButton*>(QStringLiteral("cmdLoggin"))->setFocus();
  binder.Bind(form.tmrMain);
  binder.Bind(form.tmrAverageRSSI);
  binder.Bind(form.tmrLamps);
}

QLayout* Form1Window::BuildLamps(QWidget* parent) {
  const Panel panel(binder_, parent);
  auto* strip = Line();
  strip->addWidget(panel.Lamp(form_.lmpLog, true), 1);
  strip->addWidget(panel.Lamp(form_.lmpGps, false), 1);
  strip->addWidget(panel.Lamp(form_.lmpRig, false), 1);
  return strip;
}

void Form1Window::BuildMenus() {
  for (const MenuBranch& branch : MenuBar(form_)) {
    if (branch.lines.empty()) {
      auto* action = new QAction(this);
      menuBar()->addAction(action);
      binder_.Bind(branch.head, action);
      continue;
    }
    auto* menu = new PatientMenu(menuBar());
    menu->setToolTipsVisible(true);
    menuBar()->addMenu(menu);
    binder_.Bind(branch.head, menu->menuAction());
    QActionGroup* choices = nullptr;
    for (const MenuLine& line : branch.lines) {
      if (line.item == nullptr) {
        menu->addSeparator()->setObjectName(QLatin1String(line.rule->name));
        choices = nullptr;
        continue;
      }
      QAction* action = menu->addAction(QString());
      binder_.Bind(*line.item, action);
      if (line.item == &form_.mnuBaud) menu->StayOpenFor(action);
      if (line.item->mark != Mark::kChoice) continue;
      if (choices == nullptr) {
        choices = new QActionGroup(menu);
        // The program clears the others itself; a menu without a choice is a state of its own.
        choices->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
      }
      choices->addAction(action);
    }
  }
}

void Form1Window::BuildStatusBar() {
  statusBar()->setObjectName(QStringLiteral("StatusBar1"));
  statusBar()->setSizeGripEnabled(false);
  // In line with the texts above it; the bar itself adds a little on the left.
  constexpr int kOwnMargin = 3;
  const int air = fontMetrics().height() / 4 * 2;
  statusBar()->setContentsMargins(qMax(0, air - kOwnMargin), 0, air, 0);
  constexpr int kPanelCharacters = 18;
  for (StatusPanel& status : form_.StatusBar1) {
    auto* panel = new TextLine(statusBar());
    panel->SetRoom(kPanelCharacters);
    statusBar()->addWidget(panel, 1);
    binder_.Bind(status, panel);
  }
  const Panel beside(binder_, statusBar());
  TextLine* const sound = beside.Value(form_.lblSound, 15);
  sound->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  statusBar()->addPermanentWidget(sound);
  // Beside the panels and only as wide as what it says.
  auto* hint = new QLabel(statusBar());
  binder_.Bind(form_.lblHint, hint);
  statusBar()->addPermanentWidget(hint);
}

QLayout* Form1Window::BuildLogLines(QWidget* parent) {
  const Panel panel(binder_, parent);
  auto* into = panel.Edit(form_.lblLoggingInto, QStringLiteral("Logging state"), kMostOfPath);
  into->setReadOnly(true);
  into->setFrame(false);
  constexpr int kOwnMargin = 2;  // of an edit field, which would stand apart from the line below
  into->setTextMargins(-kOwnMargin, 0, 0, 0);
  into->setFocusPolicy(Qt::ClickFocus);
  // The text is selected for copying; that is no news to a driver.
  into->setStyleSheet(
      QStringLiteral("selection-background-color: palette(alternate-base); selection-color: palette(text);"));
  auto* status = panel.Elided(form_.lblStatusCaption, Qt::ElideMiddle);
  status->SetAlignment(Qt::AlignRight | Qt::AlignVCenter);
  auto* state = Line();
  state->addWidget(into, 1);
  state->addWidget(status, 1);
  auto* rows = new QVBoxLayout;
  rows->setSpacing(0);
  rows->addLayout(state);
  rows->addWidget(panel.Elided(form_.lblLog));
  return rows;
}

}  // namespace kestrum
