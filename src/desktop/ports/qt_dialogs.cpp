#include "desktop/ports/qt_dialogs.h"

#include <QApplication>
#include <QGridLayout>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QScreen>
#include <utility>

#include "desktop/ports/box_text.h"
#include "desktop/text_convert.h"

namespace kestrum {
namespace {

constexpr int kMostOfTitle = 120;
constexpr int kMostOfAnswer = 4096;  // no path is longer

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

// The window that a box belongs to: it then stays above it. None before the first window is shown, and never
// a notice, which may go at any time.
QWidget* Owner() {
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  QWidget* const active = QApplication::activeWindow();
  if (active != nullptr && qobject_cast<QMessageBox*>(active) == nullptr) return active;
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->isVisible() && window->windowType() == Qt::Window) return window;
  }
  return nullptr;
}

void SetText(QMessageBox& box, const std::string& text, Icon icon) {
  box.setIcon(QtIcon(icon));
  box.setText(BoxText(ToQtLines(text), box));
}

void Prepare(QMessageBox& box, const std::string& title, const std::string& text, Icon icon) {
  box.setWindowTitle(Shortened(ToQt(title), kMostOfTitle));
  box.setTextFormat(Qt::PlainText);
  SetText(box, text, icon);
  // The box takes the width of its layout, whatever its own idea of a title's width is.
  auto* grid = qobject_cast<QGridLayout*>(box.layout());
  if (grid == nullptr) return;
  auto* room =
      new QSpacerItem(TitleWidth(box, box.windowTitle()), 0, QSizePolicy::Minimum, QSizePolicy::Fixed);
  grid->addItem(room, grid->rowCount(), 0, 1, grid->columnCount());
}

}  // namespace

QtDialogs::QtDialogs(const Program& program, std::function<void()> before_box)
    : program_(program), before_box_(std::move(before_box)) {}

QtDialogs::~QtDialogs() {
  for (const QPointer<QMessageBox>& notice : notices_) delete notice;
}

bool QtDialogs::Run(QDialog& box, int wanted) {
  before_box_();
  open_.push_back(&box);
  const int result = box.exec();
  std::erase(open_, &box);
  // A notice that came while the box stood belongs to it, or it could not be answered; it outlives it.
  for (const QPointer<QMessageBox>& notice : notices_) {
    if (!notice || notice->parentWidget() != &box) continue;
    const bool stands = notice->isVisible();
    notice->setParent(Owner(), notice->windowFlags());
    if (stands && MayOpen()) notice->show();
  }
  return result == wanted && MayOpen();
}

void QtDialogs::Dismiss() {
  dismissed_ = true;
  for (QDialog* box : open_) box->reject();
  for (const QPointer<QMessageBox>& notice : notices_) {
    if (notice) notice->reject();
  }
}

QMessageBox* QtDialogs::NoticeOf(const QString& title, Icon icon) const {
  for (const QPointer<QMessageBox>& notice : notices_) {
    if (notice && notice->isVisible() && notice->windowTitle() == title && notice->icon() == QtIcon(icon))
      return notice;
  }
  return nullptr;
}

void QtDialogs::Notify(const std::string& title, const std::string& text, Icon icon) {
  if (!MayOpen()) return;
  if (QMessageBox* open = NoticeOf(Shortened(ToQt(title), kMostOfTitle), icon)) {
    SetText(*open, text, icon);
    return;
  }
  std::erase_if(notices_, [](const QPointer<QMessageBox>& notice) { return notice.isNull(); });
  auto* notice = new QMessageBox(Owner());
  Prepare(*notice, title, text, icon);
  notice->setStandardButtons(QMessageBox::Ok);
  notice->setModal(false);
  notice->setAttribute(Qt::WA_DeleteOnClose);
  notice->setAttribute(Qt::WA_ShowWithoutActivating);  // what is being typed goes where it went
  notices_.emplace_back(notice);
  notice->show();
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
  box.setWindowTitle(Shortened(ToQt(title), kMostOfTitle));
  box.setLabelText(BoxText(ToQtLines(prompt), box));
  (void)box.sizeHint();  // makes its widgets
  if (auto* edit = box.findChild<QLineEdit*>()) edit->setMaxLength(kMostOfAnswer);
  box.setTextValue(ToQt(proposal));  // the box selects it when it opens
  const int screen = box.screen()->availableGeometry().width() * 9 / 10;
  const int width =
      qMin(screen, qMax(box.fontMetrics().averageCharWidth() * 60, TitleWidth(box, box.windowTitle())));
  for (auto* label : box.findChildren<QLabel*>()) {
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setMinimumHeight(label->heightForWidth(width * 9 / 10));
  }
  box.resize(width, box.sizeHint().height());
  if (!Run(box, QDialog::Accepted)) return {};
  return FromQt(box.textValue());
}

}  // namespace kestrum
