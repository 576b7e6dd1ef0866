#include "reader_window.h"

#include <QFontDatabase>
#include <QFormLayout>
#include <QFrame>
#include <QVBoxLayout>

#include "bus_service.h"

namespace kestrum::posdex {
namespace {

constexpr double kValueScale = 1.4;

QFont ValueFont() {
  QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  font.setPointSizeF(font.pointSizeF() * kValueScale);
  return font;
}

}  // namespace

ReaderWindow::ReaderWindow(const QString& source) {
  setWindowTitle(QString::fromLatin1(kTitle));
  setAttribute(Qt::WA_ShowWithoutActivating);

  auto* values = new QFormLayout;
  const QFont font = ValueFont();
  for (std::size_t i = 0; i < kItems.size(); ++i) {
    values_[i] = AddLine(values, QString::fromLatin1(kItems[i].caption), kItems[i].name);
    values_[i]->setFont(font);
  }
  auto* rule = new QFrame;
  rule->setFrameShape(QFrame::HLine);
  rule->setFrameShadow(QFrame::Sunken);

  states_ = new QFormLayout;
  AddLine(states_, QStringLiteral("Source"), "lblSource")->setText(source);
  state_ = AddLine(states_, QStringLiteral("State"), "lblState");
  bus_ = AddLine(states_, QStringLiteral("Logger link"), "lblBus");
  complaint_ = AddLine(states_, QStringLiteral("Settings"), "lblComplaint");
  states_->setRowVisible(complaint_, false);
  SetState(QStringLiteral("connecting"));
  SetBusState(QStringLiteral("connecting"));

  auto* layout = new QVBoxLayout(this);
  layout->addLayout(values);
  layout->addWidget(rule);
  layout->addLayout(states_);
  layout->addStretch();
  SetTexts({});
}

QLabel* ReaderWindow::AddLine(QFormLayout* form, const QString& caption, const char* name) {
  auto* label = new QLabel;
  label->setObjectName(QString::fromLatin1(name));
  label->setAccessibleName(caption);
  label->setTextFormat(Qt::PlainText);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  label->setWordWrap(true);
  form->addRow(caption, label);
  return label;
}

void ReaderWindow::SetTexts(const GpsTexts& texts) {
  for (std::size_t i = 0; i < kItems.size(); ++i) values_[i]->setText(texts.*kItems[i].text);
}

void ReaderWindow::SetComplaint(const QString& complaint) {
  complaint_->setText(complaint);
  states_->setRowVisible(complaint_, !complaint.isEmpty());
}

}  // namespace kestrum::posdex
