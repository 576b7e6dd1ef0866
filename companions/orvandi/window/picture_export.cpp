#include "window/picture_export.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImage>
#include <QPdfWriter>
#include <QPicture>
#include <QSaveFile>
#include <QSvgGenerator>
#include <functional>

#include "map/map_view.h"
#include "plots/record_plot.h"
#include "window/theme.h"

namespace orvandi {
namespace {

constexpr double kPngScale = 2;
constexpr int kScreenDpi = 96;
constexpr double kPointsPerInch = 72;

using Paint = std::function<void(QPainter& painter, double pixel_ratio, bool shapes)>;

void DrawPlot(Plot& plot, QPainter& painter, QSize size) {
  // The plot paints itself through a painter of its own kind.
  QPicture picture;
  QCPPainter recorder;
  if (!recorder.begin(&picture)) return;
  plot.Restyle(PlotInkOf(LightPalette()));
  plot.toPainter(&recorder, size.width(), size.height());
  recorder.end();
  plot.Restyle(PlotInkOf(plot.palette()));
  plot.replot();
  painter.drawPicture(0, 0, picture);
}

QByteArray Png(QSize size, const Paint& paint) {
  QImage image(size * kPngScale, QImage::Format_RGB32);
  image.setDevicePixelRatio(kPngScale);
  image.fill(Qt::white);
  QPainter painter(&image);
  paint(painter, kPngScale, false);
  painter.end();
  QByteArray bytes;
  QBuffer buffer(&bytes);
  image.save(&buffer, "PNG");
  return bytes;
}

QByteArray Svg(QSize size, const QString& title, const Paint& paint) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QSvgGenerator generator;
  generator.setOutputDevice(&buffer);
  generator.setSize(size);
  generator.setViewBox(QRect(QPoint(0, 0), size));
  generator.setResolution(kScreenDpi);
  generator.setTitle(title);
  QPainter painter(&generator);
  paint(painter, 1, true);
  painter.end();
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
  QPainter painter(&writer);
  paint(painter, 1, true);
  painter.end();
  return bytes;
}

QString Save(const QString& path, QSize size, const QString& title, const Paint& paint) {
  const QString ending = QFileInfo(path).suffix().toLower();
  QByteArray bytes;
  if (ending == QLatin1String("png")) bytes = Png(size, paint);
  if (ending == QLatin1String("svg")) bytes = Svg(size, title, paint);
  if (ending == QLatin1String("pdf")) bytes = Pdf(size, title, paint);
  if (bytes.isEmpty()) return QStringLiteral("The name of a picture has to end in .png, .svg or .pdf: %1").arg(path);
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
    return QStringLiteral("%1 cannot be written: %2").arg(path, file.errorString());
  }
  return {};
}

}  // namespace

QString SaveMapPicture(MapView& map, const QString& path) {
  return Save(path, map.size(), QStringLiteral("Map of the drive"),
              [&map](QPainter& painter, double pixel_ratio, bool shapes) {
                map.Render(painter, QSizeF(map.size()), InkOf(LightPalette()),
                           {.pixel_ratio = pixel_ratio, .shapes = shapes});
              });
}

QString SavePlotPicture(Plot& plot, const QString& path) {
  const QSize size = plot.size().expandedTo(plot.minimumSize());
  return Save(path, size, plot.accessibleName(), [&plot, size](QPainter& painter, double /*ratio*/, bool /*shapes*/) {
    DrawPlot(plot, painter, size);
  });
}

void PaintMap(QPainter& painter, MapView& map, const QRectF& target, double pixels_per_unit) {
  painter.save();
  painter.translate(target.topLeft());
  painter.scale(1 / pixels_per_unit, 1 / pixels_per_unit);
  const QSizeF size = target.size() * pixels_per_unit;
  painter.setClipRect(QRectF(QPointF(0, 0), size));
  map.Render(painter, size, InkOf(LightPalette()), {.shapes = true, .whole = true});
  painter.restore();
}

void PaintPlot(QPainter& painter, Plot& plot, const QRectF& target, double pixels_per_unit) {
  painter.save();
  painter.translate(target.topLeft());
  painter.scale(1 / pixels_per_unit, 1 / pixels_per_unit);
  DrawPlot(plot, painter, (target.size() * pixels_per_unit).toSize());
  painter.restore();
}

}  // namespace orvandi
