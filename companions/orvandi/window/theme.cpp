#include "window/theme.h"

#include <QApplication>
#include <QFile>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

#include "window/vector_pictures.h"

// Resources of a static library are found only when somebody asks for them; the macro wants no namespace.
static void LoadIcons() {
  Q_INIT_RESOURCE(orvandi);
}

namespace orvandi {
namespace {

struct Tones {
  QRgb window, base, alternate, text, faint, button, accent, accent_text, mid, tip;
};
constexpr Tones kLight = {0xF6F7F8, 0xFFFFFF, 0xF1F3F5, 0x1F2328, 0x8A929A,
                          0xFFFFFF, 0x1565C0, 0xFFFFFF, 0xC9CED3, 0xFFFFFF};
constexpr Tones kDark = {0x22272E, 0x1B1F24, 0x262C33, 0xE3E6EA, 0x7C858F,
                         0x2D333B, 0x4C9AFF, 0x0B1016, 0x444C56, 0x2D333B};

QPalette PaletteOf(const Tones& tones) {
  QPalette palette;
  palette.setColor(QPalette::Window, tones.window);
  palette.setColor(QPalette::Base, tones.base);
  palette.setColor(QPalette::AlternateBase, tones.alternate);
  palette.setColor(QPalette::Button, tones.button);
  palette.setColor(QPalette::ToolTipBase, tones.tip);
  for (const auto role :
       {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
    palette.setColor(role, tones.text);
    palette.setColor(QPalette::Disabled, role, tones.faint);
  }
  palette.setColor(QPalette::PlaceholderText, tones.faint);
  palette.setColor(QPalette::BrightText, tones.accent);
  palette.setColor(QPalette::Highlight, tones.accent);
  palette.setColor(QPalette::HighlightedText, tones.accent_text);
  palette.setColor(QPalette::Link, tones.accent);
  palette.setColor(QPalette::Mid, tones.mid);
  palette.setColor(QPalette::Midlight, QColor(tones.mid).lighter(112));
  palette.setColor(QPalette::Light, QColor(tones.button).lighter(108));
  palette.setColor(QPalette::Dark, QColor(tones.mid).darker(130));
  palette.setColor(QPalette::Shadow, Qt::black);
  return palette;
}

}  // namespace

QPalette LightPalette() {
  return PaletteOf(kLight);
}

QPalette DarkPalette() {
  return PaletteOf(kDark);
}

void ApplyTheme(Theme theme) {
  static const bool desktop_is_dark = QApplication::palette().color(QPalette::Window).lightness() < 128;
  static const bool styled = QApplication::setStyle(QStringLiteral("Fusion")) != nullptr;
  (void)styled;
  const bool dark = theme == Theme::kDark || (theme == Theme::kDesktop && desktop_is_dark);
  const QPalette palette = dark ? DarkPalette() : LightPalette();
  QApplication::setPalette(palette);
  QToolTip::setPalette(palette);
}

QIcon IconFor(const QString& name, const QPalette& palette) {
  LoadIcons();
  QFile file(QStringLiteral(":/orvandi/icons/%1.svg").arg(name));
  if (!file.open(QIODevice::ReadOnly)) return {};
  const QByteArray svg = file.readAll();
  QIcon icon;
  for (const int side : {16, 20, 24, 32, 48, 64, 96, 144, 192}) {
    icon.addPixmap(PaintedIcon(svg, side, palette.color(QPalette::ButtonText)));
    icon.addPixmap(PaintedIcon(svg, side, palette.color(QPalette::Disabled, QPalette::ButtonText)),
                   QIcon::Disabled);
  }
  return icon;
}

QIcon ColorIcon(const QColor& color) {
  constexpr int kSide = 32;
  QPixmap pixmap(kSide, kSide);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(color);
  painter.drawRoundedRect(QRectF(4, 4, kSide - 8, kSide - 8), 6, 6);
  return QIcon(pixmap);
}

}  // namespace orvandi
