#include <QCheckBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QVBoxLayout>

#include "desktop/forms/form1_window.h"
#include "desktop/forms/layout_parts.h"
#include "desktop/forms/panel.h"
#include "desktop/widgets/fit_label.h"
#include "desktop/widgets/meter_bar.h"

// The rig's front panel: the reading first, then tuning, modes and logging.
namespace kestrum {
namespace {

// A hidden control keeps its place, so that the panel does not jump.
void KeepPlace(QWidget* widget) {
  QSizePolicy policy = widget->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  widget->setSizePolicy(policy);
}

}  // namespace

QWidget* Form1Window::BuildRigPanel(QWidget* parent) {
  auto* frame = new QGroupBox(parent);
  const Panel panel(binder_, frame);
  auto* rows = new QVBoxLayout(frame);
  AddReadings(rows, panel);
  AddTuning(rows, panel);
  AddModes(rows, panel);
  AddLoggingControls(rows, panel);
  AddCatEcho(rows, panel);
  binder_.Bind(form_.frmCatControl, frame);
  return frame;
}

void Form1Window::AddReadings(QBoxLayout* rows, const Panel& panel) {
  auto* s_text = panel.Readout(form_.lblRSSI, kReadoutScale, QStringLiteral("S9+60"));
  auto* strength = panel.Readout(form_.lblFieldStrenght, kReadoutScale, QStringLiteral("000.0 mV/m"));
  for (FitLabel* readout : {s_text, strength}) readout->GrowTo(kLargestReadoutScale);
  strength->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  auto* readouts = new QHBoxLayout;
  readouts->addWidget(s_text, 1);
  readouts->addWidget(strength, 2);
  rows->addLayout(readouts, 2);
  rows->addWidget(panel.Bar(form_.ProgressBar1, tr("Signal")));

  auto* mark = panel.Value(form_.lblSquelch);
  mark->setMargin(mark->fontMetrics().height() / 6);
  auto* squelch = panel.Slide(form_.sldSquelch, tr("Squelch"));
  KeepPlace(squelch);
  auto* line = new QHBoxLayout;
  line->addWidget(mark);
  line->addWidget(squelch, 1);
  rows->addLayout(line);
}

void Form1Window::AddTuning(QBoxLayout* rows, const Panel& panel) {
  auto* top = new QHBoxLayout;
  top->addWidget(panel.Readout(form_.lblFreq, kSecondScale, QStringLiteral("00000.00 kHz")), 1);
  top->addWidget(panel.Check(form_.chkLock));
  top->addWidget(panel.Check(form_.chkBeep));
  top->addWidget(panel.Button(form_.cmdFT817OnOff));
  rows->addLayout(top);

  auto* entry = panel.Edit(form_.txtFrequency, tr("Frequency in kHz"));
  entry->setMinimumWidth(Characters(entry, 16));
  auto* set = panel.Button(form_.cmdSetFreq);
  set->setMinimumWidth(set->sizeHint().width() + Characters(set, 2));
  auto* down = panel.Button(form_.cmdDown);
  auto* step = panel.Slide(form_.sldkHzSteps, tr("Step in kHz"));
  step->setMinimumWidth(Characters(step, 10));
  auto* line = new QHBoxLayout;
  line->addWidget(entry, 2);
  line->addWidget(set);
  line->addWidget(down);
  line->addWidget(step, 1);
  line->addWidget(panel.Button(form_.cmdUp));
  rows->addLayout(line);
}

void Form1Window::AddModes(QBoxLayout* rows, const Panel& panel) {
  auto* line = new QHBoxLayout;
  for (QRadioButton* button : panel.Group(ModeButtons(form_))) line->addWidget(button);
  rows->addLayout(line);
}

void Form1Window::AddLoggingControls(QBoxLayout* rows, const Panel& panel) {
  auto* log = panel.Button(form_.cmdLoggin);
  QFont prominent = ScaledFont(log, kSecondScale * 0.8);
  prominent.setBold(true);
  log->setFont(prominent);
  log->setMinimumHeight(log->fontMetrics().height() * 2);

  auto* interval = new QVBoxLayout;
  interval->setSpacing(0);
  auto* heading = panel.Value(form_.lblIntervalHeading);
  heading->setFont(ScaledFont(heading, kHeadingScale));
  interval->addWidget(heading);
  interval->addWidget(panel.Value(form_.lblInterval));
  QVBoxLayout* const buffered = Headed(tr("In buffer"), panel.Value(form_.lblCatCount));
  auto* prompt = panel.Readout(form_.lblPrompt, kSecondScale, QStringLiteral(" -"));
  prompt->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Preferred);
  auto* line = new QHBoxLayout;
  line->addWidget(log, 1);
  for (QVBoxLayout* column : {interval, buffered}) {
    line->addLayout(column);
    line->setAlignment(column, Qt::AlignVCenter);
  }
  line->addWidget(prompt);
  rows->addLayout(line, 1);
}

void Form1Window::AddCatEcho(QBoxLayout* rows, const Panel& panel) {
  auto* command = panel.Elided(form_.lblCatCmd);
  command->setFont(ScaledFont(command, kHeadingScale));
  auto* comment = panel.Elided(form_.lblCatComment);
  comment->setFont(ScaledFont(comment, kHeadingScale));
  comment->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  auto* line = new QHBoxLayout;
  line->addWidget(command, 3);
  line->addWidget(comment, 2);
  rows->addLayout(line);
}

}  // namespace kestrum
