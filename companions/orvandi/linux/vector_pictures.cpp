#include "window/vector_pictures.h"

#include <QBuffer>
#include <QPainter>
#include <QSvgGenerator>
#include <QSvgRenderer>

#include "plots/qcustomplot_qt.h"

namespace orvandi {
namespace {

constexpr int kScreenDpi = 96;

}  // namespace

QPixmap PaintedIcon(const QByteArray& icon, int side, const QColor& color) {
  QByteArray colored = icon;
  colored.replace("currentColor", color.name().toLatin1());
  QSvgRenderer renderer(colored);
  QPixmap pixmap(side, side);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  renderer.render(&painter);
  return pixmap;
}

bool WritesSvg() {
  return true;
}

QByteArray SvgPicture(QSize size, const QString& title, const std::function<void(QCPPainter&)>& paint) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QSvgGenerator generator;
  generator.setOutputDevice(&buffer);
  generator.setSize(size);
  generator.setViewBox(QRect(QPoint(0, 0), size));
  generator.setResolution(kScreenDpi);
  generator.setTitle(title);
  QCPPainter painter(&generator);
  painter.setMode(QCPPainter::pmVectorized);
  paint(painter);
  painter.end();
  return bytes;
}

}  // namespace orvandi
