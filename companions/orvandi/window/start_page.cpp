#include "window/start_page.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "window/theme.h"

namespace orvandi {
namespace {

constexpr int kPictureSide = 96;

}  // namespace

StartPage::StartPage(QWidget* parent)
    : QWidget(parent),
      picture_(new QLabel),
      waiting_(new QLabel),
      open_(new QPushButton),
      demo_(new QPushButton) {
  setObjectName(QStringLiteral("startPage"));
  setAttribute(Qt::WA_StyledBackground);
  picture_->setAlignment(Qt::AlignCenter);
  auto* title = new QLabel(QStringLiteral("See the drive"));
  QFont large = title->font();
  large.setPointSizeF(large.pointSizeF() * 1.8);
  large.setBold(true);
  title->setFont(large);
  title->setAlignment(Qt::AlignCenter);
  auto* text =
      new QLabel(QStringLiteral("Open a log of the field-strength logger, or drop it here.\n"
                                "The map shows where the signal is strong, the plots show why."));
  text->setAlignment(Qt::AlignCenter);
  text->setWordWrap(true);
  open_->setObjectName(QStringLiteral("openLog"));
  open_->setText(QStringLiteral("Open a log\u2026"));
  open_->setDefault(true);
  demo_->setObjectName(QStringLiteral("openDemo"));
  demo_->setText(QStringLiteral("Show the demo's drive"));
  demo_->hide();
  waiting_->setObjectName(QStringLiteral("waitingFor"));
  waiting_->setAlignment(Qt::AlignCenter);
  waiting_->setWordWrap(true);
  waiting_->setForegroundRole(QPalette::PlaceholderText);

  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(10);
  buttons->addStretch();
  buttons->addWidget(open_);
  buttons->addWidget(demo_);
  buttons->addStretch();
  auto* layout = new QVBoxLayout(this);
  layout->setSpacing(14);
  layout->addStretch(2);
  layout->addWidget(picture_);
  layout->addWidget(title);
  layout->addWidget(text);
  layout->addLayout(buttons);
  layout->addWidget(waiting_);
  layout->addStretch(3);
  connect(open_, &QPushButton::clicked, this, &StartPage::OpenWanted);
  connect(demo_, &QPushButton::clicked, this, &StartPage::DemoWanted);
}

void StartPage::SetWaitingFor(const QString& path) {
  waiting_->setText(path.isEmpty()
                        ? QString()
                        : QStringLiteral("Waiting for the logger's own log:\n%1\nIt is shown as soon as "
                                         "the logger writes it.")
                              .arg(path));
}

void StartPage::SetDemoLog(const QString& path) {
  demo_->setVisible(!path.isEmpty());
  demo_->setToolTip(path);
}

void StartPage::SetIcons(const QPalette& palette) {
  picture_->setPixmap(
      IconFor(QStringLiteral("car"), palette).pixmap(QSize(kPictureSide, kPictureSide), devicePixelRatioF()));
  open_->setIcon(IconFor(QStringLiteral("open"), palette));
}

}  // namespace orvandi
