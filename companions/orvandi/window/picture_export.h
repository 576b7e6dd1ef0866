#pragma once

#include <QPainter>
#include <QRectF>
#include <QString>

namespace orvandi {

class MapView;
class Plot;

// Pictures of views, by the ending of the name: .png, .svg or .pdf. Always in the light colours, which print well.
// They return a sentence when it failed, "" otherwise. The file is replaced only when all went well.
QString SaveMapPicture(MapView& map, const QString& path);
QString SavePlotPicture(Plot& plot, const QString& path);

// The same onto paper: `target` in the painter's units, at a size of `pixels_per_unit` screen pixels to one of them.
void PaintMap(QPainter& painter, MapView& map, const QRectF& target, double pixels_per_unit);
void PaintPlot(QPainter& painter, Plot& plot, const QRectF& target, double pixels_per_unit);

}  // namespace orvandi
