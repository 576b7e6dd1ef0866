#include "window/vector_pictures.h"

#include <QImage>
#include <QPainter>

namespace orvandi {

// The icons have been painted black and large when the program was built.
QPixmap PaintedIcon(const QByteArray& icon, int side, const QColor& color) {
  const QImage shape =
      QImage::fromData(icon, "PNG").scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation);
  QPixmap pixmap(side, side);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.drawImage(0, 0, shape);
  painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
  painter.fillRect(pixmap.rect(), color);
  return pixmap;
}

bool WritesSvg() {
  return false;
}

QByteArray SvgPicture(QSize /*size*/, const QString& /*title*/,
                      const std::function<void(QCPPainter&)>& /*paint*/) {
  return {};
}

}  // namespace orvandi
