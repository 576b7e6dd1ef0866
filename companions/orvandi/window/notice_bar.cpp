#include "window/notice_bar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

namespace orvandi {

NoticeBar::NoticeBar(QWidget* parent) : QFrame(parent), text_(new QLabel) {
  setObjectName(QStringLiteral("notice"));
  setAttribute(Qt::WA_StyledBackground);
  text_->setObjectName(QStringLiteral("noticeText"));
  text_->setTextFormat(Qt::PlainText);
  text_->setWordWrap(true);
  text_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  auto* close = new QToolButton;
  close->setObjectName(QStringLiteral("closeNotice"));
  close->setText(QString(QChar(0x2715)));
  close->setAutoRaise(true);
  close->setToolTip(QStringLiteral("Close this line"));
  close->setAccessibleName(close->toolTip());
  connect(close, &QToolButton::clicked, this, &QWidget::hide);
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(12, 6, 6, 6);
  layout->addWidget(text_, 1);
  layout->addWidget(close, 0, Qt::AlignTop);
  hide();
}

void NoticeBar::Say(const QString& text) {
  text_->setText(text);
  setVisible(!text.isEmpty());
}

QString NoticeBar::Text() const {
  return isHidden() ? QString() : text_->text();
}

}  // namespace orvandi
