#pragma once

#include <QByteArray>
#include <QColor>
#include <QPixmap>
#include <QSize>
#include <QString>
#include <functional>

class QCPPainter;

// What needs the toolkit's part for SVG, which is not to be had for every system; each folder linux/ or
// win32/ implements it.
namespace orvandi {

// One of the program's icons in one colour; `icon` is its file as it lies in the resources.
QPixmap PaintedIcon(const QByteArray& icon, int side, const QColor& color);

// Whether pictures can be written as SVG, and one of them.
bool WritesSvg();
QByteArray SvgPicture(QSize size, const QString& title, const std::function<void(QCPPainter&)>& paint);

}  // namespace orvandi
