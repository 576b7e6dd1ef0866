#include "reader_window.h"

#include <QFontDatabase>
#include <QFormLayout>
#include <QFrame>

#include "common/reader_contract.h"

namespace kestrum::posdex {
namespace {

constexpr double kValueScale = 1.4;

QFont ValueFont() {
  QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  font.setPointSizeF(font.pointSizeF() * kValueScale);
  return font;
}

}  // namespace

ReaderWindow::ReaderWindow(const QString& source) : form_(new QFormLayout(this)) {
  setWindowTitle(QString::fromLatin1(reader::kTitle));
  setAttribute(Qt::WA_ShowWithoutActivating);

  const QFont font = ValueFont();
  for (std::size_t i = 0; i < kItems.size(); ++i) {
    values_[i] = AddLine(QString::fromLatin1(kItems[i].caption), kItems[i].name);
    values_[i]->setFont(font);
    values_[i]->setToolTip(QStringLiteral("As the logger reads it. A: fix, V: no fix, 32768: not told."));
  }
  auto* rule = new QFrame;
  rule->setFrameShape(QFrame::HLine);
  rule->setFrameShadow(QFrame::Sunken);
  form_->addRow(rule);

  fix_ = AddLine(QStringLiteral("Receiver"), "lblFix");
  age_ = AddLine(QStringLiteral("Age of position"), "lblAge");
  source_ = AddLine(QStringLiteral("Source"), "lblSource");
  Tell(source_, source);
  state_ = AddLine(QStringLiteral("State"), "lblState");
  bus_ = AddLine(QStringLiteral("Logger link"), "lblBus");
  complaint_ = AddLine(QStringLiteral("Settings"), "lblComplaint");
  form_->setRowVisible(complaint_, false);
  // Wide enough for the usual states, so that the window does not change with them; longer ones wrap.
  state_->setMinimumWidth(
      state_->fontMetrics().horizontalAdvance(QStringLiteral("no receiver: Connection refused, retrying")));
  SetState(QStringLiteral("connecting"));
  SetBusState(QStringLiteral("connecting"));
  SetFix(QStringLiteral("no fix"), QStringLiteral("no position yet"));
  SetTexts({});
}

QLabel* ReaderWindow::AddLine(const QString& caption, const char* name) {
  auto* label = new QLabel;
  label->setObjectName(QString::fromLatin1(name));
  label->setTextFormat(Qt::PlainText);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  label->setWordWrap(true);
  form_->addRow(caption, label);
  return label;
}

// A screen reader hears the caption and the value: a name of the caption alone would hide the value.
void ReaderWindow::Tell(QLabel* label, const QString& text) {
  if (text == label->text() && !label->accessibleName().isEmpty()) return;
  label->setText(text);
  const auto* caption = qobject_cast<QLabel*>(form_->labelForField(label));
  label->setAccessibleName(caption->text() + QStringLiteral(": ") + text);
}

void ReaderWindow::SetTexts(const GpsTexts& texts) {
  for (std::size_t i = 0; i < kItems.size(); ++i) Tell(values_[i], texts.*kItems[i].text);
}

void ReaderWindow::SetState(const QString& state) {
  Tell(state_, state);
  GrowToFit();
}

void ReaderWindow::SetSource(const QString& source) {
  Tell(source_, source);
  GrowToFit();
}

void ReaderWindow::SetFix(const QString& fix, const QString& age) {
  Tell(fix_, fix);
  Tell(age_, age);
}

void ReaderWindow::SetBusState(const QString& state) {
  Tell(bus_, state);
  GrowToFit();
}

void ReaderWindow::SetComplaint(const QString& complaint) {
  Tell(complaint_, complaint);
  form_->setRowVisible(complaint_, !complaint.isEmpty());
  GrowToFit();
}

void ReaderWindow::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  GrowToFit();
}

// Qt leaves a window as high as it is when a text in it wraps.
void ReaderWindow::GrowToFit() {
  const int needed = form_->totalHeightForWidth(width());
  if (isVisible() && needed > height()) resize(width(), needed);
}

}  // namespace kestrum::posdex
