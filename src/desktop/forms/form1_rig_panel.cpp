#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QVBoxLayout>

#include "desktop/forms/form1_window.h"
#include "desktop/forms/layout_parts.h"
#include "desktop/forms/panel.h"
#include "desktop/widgets/log_button.h"
#include "desktop/widgets/meter_bar.h"
#include "desktop/widgets/panel_frame.h"
#include "desktop/widgets/readout.h"
#include "desktop/widgets/strip_chart_widget.h"

// The rig's front panel: the reading first, then tuning, modes and logging.
namespace kestrum {
namespace {

// A button that is as wide as its text needs, below the width that the style wants.
void KeepNarrow(QPushButton* button, int characters) {
  button->setFixedWidth(Characters(button, characters));
}

}  // namespace

QWidget* Form1Window::BuildRigPanel(QWidget* parent) {
  auto* frame = new PanelFrame(parent);
  const Panel panel(binder_, frame);
  auto* rows = PanelRows(frame);
  AddReadings(rows, panel);
  AddTuning(rows, panel);
  AddModes(rows, panel);
  AddLoggingControls(rows, panel);
  AddCatEcho(rows, panel);
  binder_.Bind(form_.frmCatControl, frame);
  return frame;
}

void Form1Window::AddReadings(QBoxLayout* rows, const Panel& panel) {
  auto* s_text = panel.Readout(form_.lblRSSI, kReadoutScale, QStringLiteral("S9 + 60dB"));
  auto* strength = panel.Readout(form_.lblFieldStrenght, kReadoutScale, QStringLiteral("50000.0 mV/m"));
  strength->SetAlignment(Qt::AlignRight | Qt::AlignVCenter);
  auto* readouts = Line();
  readouts->addWidget(s_text, 4);
  readouts->addWidget(strength, 6);
  rows->addLayout(readouts, 4);
  auto* bar = panel.Bar(form_.ProgressBar1, QStringLiteral("Signal"));
  bar->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  rows->addWidget(bar, 2);
  rows->addWidget(panel.Chart(form_.chtSignal), 6);

  auto* mark = panel.Value(form_.lblSquelch, 6);
  mark->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  auto* line = Line();
  line->addWidget(mark);
  line->addWidget(panel.Slide(form_.sldSquelch, QStringLiteral("Squelch")), 1);
  rows->addLayout(line);
}

void Form1Window::AddTuning(QBoxLayout* rows, const Panel& panel) {
  auto* top = Line();
  auto* frequency = panel.Readout(form_.lblFreq, kSecondScale, QStringLiteral("430000.25 kHz"));
  top->addWidget(frequency, 1);
  top->addWidget(panel.Check(form_.chkLock));
  top->addWidget(panel.Check(form_.chkBeep));
  auto* power = panel.Button(form_.cmdFT817OnOff);
  KeepNarrow(power, 8);
  top->addWidget(power);
  rows->addLayout(top, 2);

  auto* entry = panel.Edit(form_.txtFrequency, QStringLiteral("Frequency in kHz"));
  entry->setMinimumWidth(Characters(entry, 11));
  auto* set = panel.Button(form_.cmdSetFreq);
  auto* down = panel.Button(form_.cmdDown);
  // Made in the order of the eye, which the tab key follows.
  auto* step = panel.Slide(form_.sldkHzSteps, QStringLiteral("Step in kHz"));
  auto* up = panel.Button(form_.cmdUp);
  KeepNarrow(down, 8);
  KeepNarrow(up, 8);
  step->setMinimumWidth(Characters(step, 5));
  auto* line = Line();
  line->addWidget(entry, 2);
  line->addWidget(set);
  line->addWidget(down);
  line->addWidget(step, 1);
  line->addWidget(up);
  rows->addLayout(line);
}

void Form1Window::AddModes(QBoxLayout* rows, const Panel& panel) {
  auto* line = Line();
  for (QRadioButton* button : panel.Group(ModeButtons(form_))) line->addWidget(button);
  rows->addLayout(line);
}

void Form1Window::AddLoggingControls(QBoxLayout* rows, const Panel& panel) {
  auto* log = new LogButton(panel.parent());
  binder_.Bind(form_.cmdLoggin, log);
  binder_.Follow<std::string>(form_.cmdLoggin.caption, [this, log](const std::string& caption) {
    log->ShowLogging(SameText(caption, kLoggingOnCaption));
    // A space bar that is hit by chance must not end a drive: the focus rests where no key does anything.
    if (log->Logging() && log->hasFocus()) centralWidget()->setFocus();
  });

  auto* heading = panel.Value(form_.lblIntervalHeading, 15);
  heading->setFont(ScaledFont(heading, kHeadingScale));
  auto* interval = new QVBoxLayout;
  interval->setSpacing(0);
  interval->addWidget(heading);
  interval->addWidget(panel.Value(form_.lblInterval, 10));
  QVBoxLayout* const buffered = Headed(QStringLiteral("In buffer"), panel.Value(form_.lblCatCount, 4));
  auto* prompt = panel.Value(form_.lblPrompt, 3);
  auto* line = Line();
  line->addWidget(log, 5);
  line->addLayout(interval, 4);
  line->addLayout(buffered, 2);
  for (QVBoxLayout* column : {interval, buffered}) line->setAlignment(column, Qt::AlignVCenter);
  line->addWidget(prompt);
  rows->addLayout(line, 2);
}

void Form1Window::AddCatEcho(QBoxLayout* rows, const Panel& panel) {
  auto* command = panel.Elided(form_.lblCatCmd);
  command->setFont(ScaledFont(command, kHeadingScale));
  auto* comment = panel.Elided(form_.lblCatComment);
  comment->setFont(ScaledFont(comment, kHeadingScale));
  comment->SetAlignment(Qt::AlignRight | Qt::AlignVCenter);
  auto* line = Line();
  line->addWidget(command, 3);
  line->addWidget(comment, 2);
  rows->addLayout(line);
}

}  // namespace kestrum
