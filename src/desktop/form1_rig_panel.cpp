#include <QCheckBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QVBoxLayout>
#include <array>

#include "desktop/fit_label.h"
#include "desktop/form1_window.h"
#include "desktop/layout_parts.h"
#include "desktop/meter_bar.h"

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

QLabel* Form1Window::Value(Label& label, const QString& name, QWidget* parent) {
  auto* value = new ElidedLabel(parent);
  value->AskUpTo(kMostOfValue);
  binder_.Bind(label, value, name);
  return value;
}

QWidget* Form1Window::BuildRigPanel(QWidget* parent) {
  auto* panel = new QGroupBox(parent);
  auto* rows = new QVBoxLayout(panel);
  AddReadings(rows, panel);
  AddTuning(rows, panel);
  AddModes(rows, panel);
  AddLoggingControls(rows, panel);
  AddCatEcho(rows, panel);
  binder_.Bind(form_.frmCatControl, panel, QStringLiteral("frmCatControl"));
  return panel;
}

void Form1Window::AddReadings(QBoxLayout* rows, QWidget* panel) {
  auto* s_text = new FitLabel(kReadoutScale, QStringLiteral("S9+60"), panel);
  auto* strength = new FitLabel(kReadoutScale, QStringLiteral("000.0 mV/m"), panel);
  for (FitLabel* readout : {s_text, strength}) readout->GrowTo(kLargestReadoutScale);
  strength->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  binder_.Bind(form_.lblRSSI, s_text, QStringLiteral("lblRSSI"));
  binder_.Bind(form_.lblFieldStrenght, strength, QStringLiteral("lblFieldStrenght"));
  auto* readouts = new QHBoxLayout;
  readouts->addWidget(s_text, 1);
  readouts->addWidget(strength, 2);
  rows->addLayout(readouts, 2);

  auto* bar = new MeterBar(panel);
  bar->setAccessibleName(tr("Signal"));
  rows->addWidget(bar);
  binder_.Bind(form_.ProgressBar1, bar, QStringLiteral("ProgressBar1"));

  auto* squelch = new QSlider(Qt::Horizontal, panel);
  squelch->setAccessibleName(tr("Squelch"));
  KeepPlace(squelch);
  auto* mark = Value(form_.lblSquelch, QStringLiteral("lblSquelch"), panel);
  mark->setMargin(mark->fontMetrics().height() / 6);
  auto* line = new QHBoxLayout;
  line->addWidget(mark);
  line->addWidget(squelch, 1);
  rows->addLayout(line);
  binder_.Bind(form_.sldSquelch, squelch, QStringLiteral("sldSquelch"));
}

void Form1Window::AddTuning(QBoxLayout* rows, QWidget* panel) {
  auto* frequency = new FitLabel(kSecondScale, QStringLiteral("00000.00 kHz"), panel);
  binder_.Bind(form_.lblFreq, frequency, QStringLiteral("lblFreq"));
  auto* power = new QPushButton(panel);
  auto* lock = new QCheckBox(panel);
  auto* beep = new QCheckBox(panel);
  auto* top = new QHBoxLayout;
  top->addWidget(frequency, 1);
  top->addWidget(lock);
  top->addWidget(beep);
  top->addWidget(power);
  rows->addLayout(top);

  auto* entry = new QLineEdit(panel);
  entry->setAccessibleName(tr("Frequency in kHz"));
  entry->setMinimumWidth(Characters(entry, 16));
  entry->setMaxLength(kMostOfNumber);
  auto* set = new QPushButton(panel);
  auto* down = new QPushButton(panel);
  auto* up = new QPushButton(panel);
  auto* step = new QSlider(Qt::Horizontal, panel);
  step->setAccessibleName(tr("Step in kHz"));
  step->setMinimumWidth(Characters(step, 10));
  auto* line = new QHBoxLayout;
  line->addWidget(entry, 2);
  line->addWidget(set);
  line->addWidget(down);
  line->addWidget(step, 1);
  line->addWidget(up);
  rows->addLayout(line);
  binder_.Bind(form_.txtFrequency, entry, QStringLiteral("txtFrequency"));
  binder_.Bind(form_.cmdSetFreq, set, QStringLiteral("cmdSetFreq"));
  set->setMinimumWidth(set->sizeHint().width() + Characters(set, 2));
  binder_.Bind(form_.cmdDown, down, QStringLiteral("cmdDown"));
  binder_.Bind(form_.sldkHzSteps, step, QStringLiteral("sldkHzSteps"));
  binder_.Bind(form_.cmdUp, up, QStringLiteral("cmdUp"));
  binder_.Bind(form_.chkLock, lock, QStringLiteral("chkLock"));
  binder_.Bind(form_.chkBeep, beep, QStringLiteral("chkBeep"));
  binder_.Bind(form_.cmdFT817OnOff, power, QStringLiteral("cmdFT817OnOff"));
}

void Form1Window::AddModes(QBoxLayout* rows, QWidget* panel) {
  constexpr std::array<const char*, 7> kNames = {"optUsb",    "optLsb",   "OptCwWide", "optCwNar",
                                                 "OptAmWide", "OptAmNar", "OptFm"};
  std::vector<OptionEntry> group;
  auto* line = new QHBoxLayout;
  const auto buttons = ModeButtons(form_);
  for (std::size_t i = 0; i < buttons.size(); ++i) {
    auto* button = new QRadioButton(panel);
    line->addWidget(button);
    group.push_back({*buttons.at(i), button, QLatin1String(kNames.at(i))});
  }
  rows->addLayout(line);
  binder_.BindGroup(group);
}

void Form1Window::AddLoggingControls(QBoxLayout* rows, QWidget* panel) {
  auto* log = new QPushButton(panel);
  QFont prominent = ScaledFont(log, kSecondScale * 0.8);
  prominent.setBold(true);
  log->setFont(prominent);
  log->setMinimumHeight(log->fontMetrics().height() * 2);
  binder_.Bind(form_.cmdLoggin, log, QStringLiteral("cmdLoggin"));

  auto* interval = new QVBoxLayout;
  interval->setSpacing(0);
  auto* heading = Value(form_.lblIntervalHeading, QStringLiteral("lblIntervalHeading"), panel);
  heading->setFont(ScaledFont(heading, kHeadingScale));
  interval->addWidget(heading);
  interval->addWidget(Value(form_.lblInterval, QStringLiteral("lblInterval"), panel));
  auto* count = Value(form_.lblCatCount, QStringLiteral("lblCatCount"), panel);
  auto* prompt = new FitLabel(kSecondScale, QStringLiteral(" -"), panel);
  prompt->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Preferred);
  binder_.Bind(form_.lblPrompt, prompt, QStringLiteral("lblPrompt"));
  auto* line = new QHBoxLayout;
  line->addWidget(log, 1);
  QVBoxLayout* const buffered = Headed(tr("In buffer"), count);
  for (QVBoxLayout* column : {interval, buffered}) {
    line->addLayout(column);
    line->setAlignment(column, Qt::AlignVCenter);
  }
  line->addWidget(prompt);
  rows->addLayout(line, 1);
}

void Form1Window::AddCatEcho(QBoxLayout* rows, QWidget* panel) {
  auto* command = new ElidedLabel(panel);
  command->setFont(ScaledFont(command, kHeadingScale));
  binder_.Bind(form_.lblCatCmd, command, QStringLiteral("lblCatCmd"));
  auto* comment = new ElidedLabel(panel);
  comment->setFont(ScaledFont(comment, kHeadingScale));
  comment->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  binder_.Bind(form_.lblCatComment, comment, QStringLiteral("lblCatComment"));
  auto* line = new QHBoxLayout;
  line->addWidget(command, 3);
  line->addWidget(comment, 2);
  rows->addLayout(line);
}

}  // namespace kestrum
