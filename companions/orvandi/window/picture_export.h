#pragma once

#include <QRectF>
#include <QString>

class QCPPainter;

namespace orvandi {

class MapView;
class Plot;

// Pictures of views, by the ending of the name: .png, .svg or .pdf. Always in the light colours, which print
// well. They return a sentence when it failed, "" otherwise. The file is replaced only when all went well.
QString SaveMapPicture(MapView& map, const QString& path);
QString SavePlotPicture(Plot& plot, const QString& path);

// The same onto paper, with all of the drive: `target` in the painter's units, which are the screen's pixels.
void PaintMap(QCPPainter& painter, MapView& map, const QRectF& target);
void PaintPlot(QCPPainter& painter, Plot& plot, const QRectF& target);

}  // namespace orvandi
