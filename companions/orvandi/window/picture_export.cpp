#include "window/picture_export.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImage>
#include <QPdfWriter>
#include <QSaveFile>
#include <functional>

#include "map/map_view.h"
#include "plots/record_plot.h"
#include "window/theme.h"
#include "window/vector_pictures.h"

namespace orvandi {
namespace {

constexpr double kPngScale = 2;
constexpr int kScreenDpi = 96;
constexpr double kPointsPerInch = 72;

using Paint = std::function<void(QCPPainter& painter, double pixel_ratio, bool shapes)>;

void DrawPlot(QCPPainter& painter, Plot& plot, QSize size) {
  plot.Restyle(PlotInkOf(LightPalette()));
  plot.toPainter(&painter, size.width(), size.height());
  plot.Restyle(PlotInkOf(plot.palette()));
  plot.replot(QCustomPlot::rpQueuedReplot);
}

QByteArray Png(QSize size, const Paint& paint) {
  QImage image(size * kPngScale, QImage::Format_RGB32);
  image.setDevicePixelRatio(kPngScale);
  image.fill(Qt::white);
  QCPPainter painter(&image);
  paint(painter, kPngScale, false);
  painter.end();
  QByteArray bytes;
  QBuffer buffer(&bytes);
  image.save(&buffer, "PNG");
  return bytes;
}

QByteArray Pdf(QSize size, const QString& title, const Paint& paint) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QPdfWriter writer(&buffer);
  writer.setTitle(title);
  writer.setCreator(QStringLiteral("Orvandi"));
  writer.setResolution(kScreenDpi);
  writer.setPageMargins({});
  writer.setPageSize(QPageSize(QSizeF(size) * kPointsPerInch / kScreenDpi, QPageSize::Point));
  QCPPainter painter(&writer);
  painter.setMode(QCPPainter::pmVectorized);
  paint(painter, 1, true);
  painter.end();
  return bytes;
}

QString Save(const QString& path, QSize size, const QString& title, const Paint& paint) {
  const QString ending = QFileInfo(path).suffix().toLower();
  QByteArray bytes;
  if (ending == QLatin1String("png")) bytes = Png(size, paint);
  if (ending == QLatin1String("svg")) {
    bytes = SvgPicture(size, title, [&paint](QCPPainter& painter) { paint(painter, 1, true); });
  }
  if (ending == QLatin1String("pdf")) bytes = Pdf(size, title, paint);
  if (bytes.isEmpty()) {
    return QStringLiteral("The name of a picture has to end in %1: %2")
        .arg(WritesSvg() ? QStringLiteral(".png, .svg or .pdf") : QStringLiteral(".png or .pdf"), path);
  }
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
    return QStringLiteral("%1 cannot be written: %2").arg(path, file.errorString());
  }
  return {};
}

}  // namespace

QString SaveMapPicture(MapView& map, const QString& path) {
  return Save(path, map.size(), QStringLiteral("Map of the drive"),
              [&map](QCPPainter& painter, double pixel_ratio, bool shapes) {
                map.Render(painter, QSizeF(map.size()), InkOf(LightPalette()),
                           {.pixel_ratio = pixel_ratio, .shapes = shapes});
              });
}

QString SavePlotPicture(Plot& plot, const QString& path) {
  const QSize size = plot.size().expandedTo(plot.minimumSize());
  return Save(path, size, plot.accessibleName(),
              [&plot, size](QCPPainter& painter, double /*ratio*/, bool /*shapes*/) {
                DrawPlot(painter, plot, size);
              });
}

void PaintMap(QCPPainter& painter, MapView& map, const QRectF& target) {
  painter.save();
  painter.translate(target.topLeft());
  painter.setClipRect(QRectF(QPointF(0, 0), target.size()));
  map.Render(painter, target.size(), InkOf(LightPalette()), {.shapes = true, .whole = true});
  painter.restore();
}

void PaintPlot(QCPPainter& painter, Plot& plot, const QRectF& target) {
  painter.save();
  painter.translate(target.topLeft());
  DrawPlot(painter, plot, target.size().toSize());
  painter.restore();
}

}  // namespace orvandi
