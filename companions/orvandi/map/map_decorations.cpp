#include "map/map_decorations.h"

#include <QFontMetricsF>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

namespace orvandi {
namespace {

constexpr double kMargin = 12;  // of cards to the edge of the map
constexpr double kPadding = 8;  // inside of cards
constexpr double kCorner = 6;   // radius of their corners
constexpr double kGridPixels = 110;
constexpr double kRingPixels = 190;
constexpr int kRingPoints = 180;
constexpr int kMostRings = 12;
constexpr double kMetresPerKm = 1000;
constexpr double kFurthestRingKm = 5000;

void PaintCard(QPainter& painter, const QRectF& rectangle, const MapInk& ink) {
  painter.setPen(QPen(ink.line, 1));
  painter.setBrush(ink.card);
  painter.drawRoundedRect(rectangle, kCorner, kCorner);
}

QFont SmallFont(const QPainter& painter) {
  QFont font = painter.font();
  font.setPointSizeF(std::max(font.pointSizeF() * 0.9, 7.0));
  return font;
}

// A text that stays readable on any background.
void PaintHaloText(QPainter& painter, QPointF baseline, const QString& text, const QColor& color,
                   const QColor& halo) {
  QPainterPath path;
  path.addText(baseline, painter.font(), text);
  painter.strokePath(path, QPen(halo, 3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.fillPath(path, color);
}

QString DegreesText(double degrees, double step, QLatin1String positive, QLatin1String negative) {
  const int decimals = step >= 1 ? 0 : static_cast<int>(std::ceil(-std::log10(step) - 1e-9));
  return QString::number(std::abs(degrees), 'f', decimals) + QChar(0xB0) +
         (degrees < 0 ? negative : positive);
}

// Round distances, about kRingPixels apart, as far as the map shows.
std::vector<double> RingRadii(const Camera& camera, const Place& center) {
  const double km_per_pixel =
      MetresPerWorldUnit(center.latitude_deg) / camera.PixelsPerWorld() / kMetresPerKm;
  const double step = RoundStep(km_per_pixel * kRingPixels);
  const QPointF middle = camera.ToScreen(ToWorld(center));
  const double reach = km_per_pixel * std::hypot(std::max(middle.x(), camera.size.width() - middle.x()),
                                                 std::max(middle.y(), camera.size.height() - middle.y()));
  std::vector<double> radii;
  for (int ring = 1; ring <= kMostRings && ring * step <= std::min(reach, kFurthestRingKm); ++ring) {
    radii.push_back(ring * step);
  }
  return radii;
}

}  // namespace

MapInk InkOf(const QPalette& palette) {
  MapInk ink;
  ink.dark = palette.color(QPalette::Window).lightness() < 128;
  ink.ground = ink.dark ? QColor(0x1B, 0x1F, 0x24) : QColor(0xF4, 0xF5, 0xF3);
  ink.line = ink.dark ? QColor(0x3A, 0x41, 0x4A) : QColor(0xD3, 0xD7, 0xD6);
  ink.text = ink.dark ? QColor(0xE8, 0xEA, 0xED) : QColor(0x20, 0x24, 0x28);
  ink.faint_text = ink.dark ? QColor(0x9A, 0xA3, 0xAD) : QColor(0x5B, 0x63, 0x6A);
  ink.card = ink.dark ? QColor(0x25, 0x2A, 0x31, 0xE6) : QColor(0xFF, 0xFF, 0xFF, 0xE6);
  ink.accent = ink.dark ? QColor(0xFF, 0x8A, 0x65) : QColor(0xC6, 0x28, 0x28);
  return ink;
}

double RoundStep(double limit) {
  if (!(limit > 0) || !std::isfinite(limit)) return 1;
  const double decade = std::pow(10, std::floor(std::log10(limit)));
  for (const double factor : {5.0, 2.0}) {
    if (factor * decade <= limit * (1 + 1e-9)) return factor * decade;
  }
  return decade;
}

QString DistanceText(double km) {
  if (km < 1) return QStringLiteral("%1 m").arg(km * kMetresPerKm);
  return QStringLiteral("%1 km").arg(km);
}

void PaintGrid(QPainter& painter, const Camera& camera, const MapInk& ink, const QRectF& covered) {
  const QRectF visible = camera.Visible();
  const Place north_west = ToGeo(visible.topLeft());
  const Place south_east = ToGeo(visible.bottomRight());
  const double step = std::min(RoundStep(360 / camera.PixelsPerWorld() * kGridPixels * 2), 20.0);
  painter.setFont(SmallFont(painter));
  const QFontMetricsF metrics(painter.font());
  for (double at = std::ceil(north_west.longitude_deg / step) * step; at <= south_east.longitude_deg;
       at += step) {
    const double x = std::round(camera.ToScreen(ToWorld({0, at})).x()) + 0.5;
    painter.setPen(QPen(ink.line, 1));
    painter.drawLine(QPointF(x, 0), QPointF(x, camera.size.height()));
    painter.setPen(ink.faint_text);
    painter.drawText(QPointF(x + 4, metrics.ascent() + 3),
                     DegreesText(at, step, QLatin1String("E"), QLatin1String("W")));
  }
  for (double at = std::ceil(south_east.latitude_deg / step) * step; at <= north_west.latitude_deg;
       at += step) {
    const double y = std::round(camera.ToScreen(ToWorld({at, 0})).y()) + 0.5;
    painter.setPen(QPen(ink.line, 1));
    painter.drawLine(QPointF(0, y), QPointF(camera.size.width(), y));
    if (y < 2.5 * metrics.height()) continue;  // the longitudes stand there
    const QString text = DegreesText(at, step, QLatin1String("N"), QLatin1String("S"));
    const QRectF place(camera.size.width() - metrics.horizontalAdvance(text) - 6, y - 3 - metrics.ascent(),
                       metrics.horizontalAdvance(text), metrics.height());
    if (place.intersects(covered)) continue;
    painter.setPen(ink.faint_text);
    painter.drawText(QPointF(place.left(), y - 3), text);
  }
}

void PaintRings(QPainter& painter, const Camera& camera, const MapInk& ink, const Place& center) {
  painter.setRenderHint(QPainter::Antialiasing);
  QColor line = ink.faint_text;
  line.setAlpha(150);
  painter.setPen(QPen(line, 1, Qt::DashLine));
  painter.setBrush(Qt::NoBrush);
  for (const double radius : RingRadii(camera, center)) {
    QPolygonF points;
    for (int i = 0; i <= kRingPoints; ++i) {
      points << camera.ToScreen(ToWorld(Destination(center, i * 360.0 / kRingPoints, radius)));
    }
    painter.drawPolyline(points);
  }
}

void PaintRingLabels(QPainter& painter, const Camera& camera, const MapInk& ink, const Place& center) {
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setFont(SmallFont(painter));
  QColor halo = ink.ground;
  halo.setAlpha(220);
  const QRectF screen(QPointF(0, 0), camera.size);
  for (const double radius : RingRadii(camera, center)) {
    const QString text = DistanceText(radius);
    const double half = QFontMetricsF(painter.font()).horizontalAdvance(text) / 2;
    const QPointF top = camera.ToScreen(ToWorld(Destination(center, 0, radius)));
    if (screen.contains(top)) PaintHaloText(painter, top + QPointF(-half, -3), text, ink.text, halo);
  }
}

void PaintTransmitter(QPainter& painter, const Camera& camera, const MapInk& ink, const Transmitter& site) {
  const QPointF at = camera.ToScreen(ToWorld(site.place));
  if (!QRectF(QPointF(-80, -80), camera.size + QSizeF(160, 160)).contains(at)) return;
  painter.setRenderHint(QPainter::Antialiasing);
  constexpr double kMast = 20;
  for (const auto& [color, width] : {std::pair(ink.ground, 5.0), std::pair(ink.accent, 2.2)}) {
    painter.setPen(QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    const QPointF top = at - QPointF(0, kMast);
    painter.drawPolyline(QPolygonF({at + QPointF(-6, 0), top, at + QPointF(6, 0)}));
    painter.drawLine(at + QPointF(-3.5, -kMast * 0.4), at + QPointF(3.5, -kMast * 0.4));
    for (const double radius : {6.0, 11.0}) {
      const QRectF circle(top - QPointF(radius, radius), QSizeF(2 * radius, 2 * radius));
      painter.drawArc(circle, -40 * 16, 80 * 16);
      painter.drawArc(circle, 140 * 16, 80 * 16);
    }
  }
  QFont font = painter.font();
  font.setBold(true);
  painter.setFont(font);
  QColor halo = ink.ground;
  halo.setAlpha(220);
  const double width = QFontMetricsF(font).horizontalAdvance(site.name);
  PaintHaloText(painter, at + QPointF(-width / 2, QFontMetricsF(font).ascent() + 5), site.name, ink.text,
                halo);
}

void PaintCells(QPainter& painter, const Camera& camera, const std::vector<MapCell>& cells,
                const ColorScale& scale) {
  painter.setRenderHint(QPainter::Antialiasing, false);
  const QRectF visible = camera.Visible();
  for (const MapCell& cell : cells) {
    const QPointF south_west = ToWorld(cell.south_west);
    const QPointF north_east = ToWorld(cell.north_east);
    const QRectF world(QPointF(south_west.x(), north_east.y()), QPointF(north_east.x(), south_west.y()));
    if (!visible.intersects(world)) continue;
    QRectF screen(camera.ToScreen(world.topLeft()), camera.ToScreen(world.bottomRight()));
    // Squares of a few metres would vanish when a whole drive is in view.
    constexpr double kLeast = 5;
    if (screen.width() < kLeast) {
      screen.adjust((screen.width() - kLeast) / 2, (screen.height() - kLeast) / 2,
                    (kLeast - screen.width()) / 2, (kLeast - screen.height()) / 2);
    }
    painter.fillRect(screen, QColor(scale.Color(cell.value)));
  }
}

QRectF PaintScaleBar(QPainter& painter, const Camera& camera, const MapInk& ink) {
  const double longest = std::min(140.0, camera.size.width() / 3);
  const double metres = RoundStep(camera.MetresPerPixel() * longest);
  const double length = metres / camera.MetresPerPixel();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setFont(SmallFont(painter));
  const QFontMetricsF metrics(painter.font());
  const QString text = DistanceText(metres / kMetresPerKm);
  const double width = std::max(length, metrics.horizontalAdvance(text)) + 2 * kPadding;
  const double height = metrics.height() + 12;
  const QRectF card(kMargin, camera.size.height() - kMargin - height, width, height);
  PaintCard(painter, card, ink);
  const double left = card.left() + kPadding;
  const double base = card.bottom() - 6;
  painter.setPen(QPen(ink.text, 1.6));
  painter.drawPolyline(QPolygonF({QPointF(left, base - 5), QPointF(left, base), QPointF(left + length, base),
                                  QPointF(left + length, base - 5)}));
  painter.setPen(ink.text);
  painter.drawText(QPointF(left + 3, card.top() + metrics.ascent() + 2), text);
  return card;
}

namespace {

constexpr double kLegendBarWidth = 14;

struct LegendLayout {
  QRectF card;
  double bar_height = 0;
  std::vector<double> ticks;
  QStringList texts;
};

LegendLayout LayOut(const QFontMetricsF& metrics, QSizeF size, const Legend& legend) {
  constexpr double kIntervals = 3.5;
  LegendLayout layout;
  layout.bar_height = std::clamp(size.height() * 0.28, 90.0, 220.0);
  double text_width = 0;
  const double low = legend.scale.low;
  const double range = legend.scale.high - legend.scale.low;
  const double tick_step = RoundStep(range / kIntervals);
  for (double at = std::ceil(low / tick_step) * tick_step; at <= low + range * (1 + 1e-9); at += tick_step) {
    layout.ticks.push_back(at);
    layout.texts << legend.text(at);
    text_width = std::max(text_width, metrics.horizontalAdvance(layout.texts.back()));
  }
  const double width =
      std::max(kLegendBarWidth + 8 + text_width, metrics.horizontalAdvance(legend.title)) + 2 * kPadding;
  const double height = layout.bar_height + 2 * metrics.height() + 2 * kPadding;
  layout.card = QRectF(size.width() - kMargin - width,
                       size.height() - kMargin - metrics.height() - 4 - height, width, height);
  return layout;
}

}  // namespace

QRectF LegendCard(const QPainter& painter, QSizeF size, const Legend& legend) {
  return LayOut(QFontMetricsF(SmallFont(painter)), size, legend).card;
}

void PaintLegend(QPainter& painter, QSizeF size, const MapInk& ink, const Legend& legend) {
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setFont(SmallFont(painter));
  const QFontMetricsF metrics(painter.font());
  const LegendLayout layout = LayOut(metrics, size, legend);
  const QRectF& card = layout.card;
  const double low = legend.scale.low;
  const double range = legend.scale.high - legend.scale.low;
  PaintCard(painter, card, ink);
  painter.setPen(ink.text);
  painter.drawText(QPointF(card.left() + kPadding, card.top() + kPadding + metrics.ascent()), legend.title);
  const QRectF bar(card.left() + kPadding, card.top() + kPadding + metrics.height() * 1.5, kLegendBarWidth,
                   layout.bar_height);
  const double step = bar.height() / kColorSteps;
  painter.setRenderHint(QPainter::Antialiasing, false);
  for (int i = 0; i < kColorSteps; ++i) {
    const QColor color((*legend.scale.palette)[static_cast<std::size_t>(i)]);
    painter.fillRect(QRectF(bar.left(), bar.bottom() - (i + 1) * step, bar.width(), step + 0.5), color);
  }
  painter.setRenderHint(QPainter::Antialiasing);
  for (std::size_t i = 0; i < layout.ticks.size(); ++i) {
    const double y = bar.bottom() - bar.height() * (layout.ticks[i] - low) / range;
    painter.setPen(QPen(ink.faint_text, 1));
    painter.drawLine(QPointF(bar.right(), y), QPointF(bar.right() + 4, y));
    painter.setPen(ink.text);
    painter.drawText(QPointF(bar.right() + 8, y + metrics.ascent() / 2 - 1),
                     layout.texts.at(static_cast<qsizetype>(i)));
  }
}

void PaintAttribution(QPainter& painter, QSizeF size, const MapInk& ink, const QString& text) {
  if (text.isEmpty()) return;
  painter.setFont(SmallFont(painter));
  const QFontMetricsF metrics(painter.font());
  const QString shown = metrics.elidedText(text, Qt::ElideRight, size.width() * 0.7);
  const double width = metrics.horizontalAdvance(shown) + 8;
  const QRectF strip(size.width() - width, size.height() - metrics.height() - 2, width, metrics.height() + 2);
  painter.fillRect(strip, ink.card);
  painter.setPen(ink.text);
  painter.drawText(strip, Qt::AlignCenter, shown);
}

}  // namespace orvandi
