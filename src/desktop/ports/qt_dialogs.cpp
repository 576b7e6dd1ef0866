#include "desktop/ports/qt_dialogs.h"

#include <QApplication>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <utility>

#include "desktop/text_convert.h"

namespace kestrum {
namespace {

QMessageBox::Icon QtIcon(Icon icon) {
  switch (icon) {
    case Icon::kInformation:
      return QMessageBox::Information;
    case Icon::kExclamation:
      return QMessageBox::Warning;
    case Icon::kCritical:
      return QMessageBox::Critical;
    case Icon::kQuestion:
      return QMessageBox::Question;
    case Icon::kNone:
      break;
  }
  return QMessageBox::NoIcon;
}

// The window that a box belongs to: it then stays above it. None before the first window is shown.
QWidget* Owner() {
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  if (QWidget* active = QApplication::activeWindow()) return active;
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->isVisible() && window->windowType() == Qt::Window) return window;
  }
  return nullptr;
}

void Prepare(QMessageBox& box, const std::string& title, const std::string& text, Icon icon) {
  box.setIcon(QtIcon(icon));
  box.setWindowTitle(ToQt(title));
  box.setTextFormat(Qt::PlainText);
  box.setText(ToQtLines(text));
}

}  // namespace

QtDialogs::QtDialogs(const Program& program, std::function<void()> before_box)
    : program_(program), before_box_(std::move(before_box)) {}

bool QtDialogs::Run(QDialog& box, int wanted) {
  before_box_();
  open_.push_back(&box);
  const int result = box.exec();
  std::erase(open_, &box);
  return result == wanted && MayOpen();
}

void QtDialogs::Dismiss() {
  dismissed_ = true;
  for (QDialog* box : open_) box->reject();
}

void QtDialogs::Show(const std::string& title, const std::string& text, Icon icon) {
  if (!MayOpen()) return;
  QMessageBox box(Owner());
  Prepare(box, title, text, icon);
  box.setStandardButtons(QMessageBox::Ok);
  Run(box, QMessageBox::Ok);
}

bool QtDialogs::AskYesNo(const std::string& title, const std::string& text, Icon icon) {
  if (!MayOpen()) return false;
  QMessageBox box(Owner());
  Prepare(box, title, text, icon);
  box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
  box.setDefaultButton(QMessageBox::No);
  box.setEscapeButton(QMessageBox::No);
  return Run(box, QMessageBox::Yes);
}

std::string QtDialogs::AskText(const std::string& title, const std::string& prompt,
                               const std::string& proposal) {
  if (!MayOpen()) return {};
  QInputDialog box(Owner());
  box.setWindowTitle(ToQt(title));
  box.setLabelText(ToQtLines(prompt));
  box.setTextValue(ToQt(proposal));  // the box selects it when it opens
  for (auto* label : box.findChildren<QLabel*>()) label->setTextFormat(Qt::PlainText);
  box.resize(box.fontMetrics().averageCharWidth() * 60, box.sizeHint().height());
  if (!Run(box, QDialog::Accepted)) return {};
  return FromQt(box.textValue());
}

}  // namespace kestrum
