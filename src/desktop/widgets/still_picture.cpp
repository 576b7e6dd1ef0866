#include "desktop/widgets/still_picture.h"

#include <QPainter>
#include <QWidget>

namespace kestrum {

bool StillPicture::IsDue(const QWidget& widget) const {
  const double ratio = widget.devicePixelRatioF();
  return pixels_.devicePixelRatio() != ratio || pixels_.size() != (QSizeF(widget.size()) * ratio).toSize();
}

QPixmap& StillPicture::Begin(const QWidget& widget, const QColor& ground) {
  const double ratio = widget.devicePixelRatioF();
  pixels_ = QPixmap((QSizeF(widget.size()) * ratio).toSize());
  pixels_.setDevicePixelRatio(ratio);
  pixels_.fill(ground);
  return pixels_;
}

void StillPicture::Draw(QPainter& painter, const QRectF& part) const {
  const double ratio = pixels_.devicePixelRatio();
  painter.drawPixmap(part, pixels_, QRectF(part.topLeft() * ratio, part.size() * ratio));
}

}  // namespace kestrum
