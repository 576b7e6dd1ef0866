#pragma once

#include <QProxyStyle>

namespace kestrum {

// The Fusion style with boxes, radio buttons and edit fields outlined in the colours of the scheme, so that
// they are seen on black and in the sun.
class CockpitStyle : public QProxyStyle {
  Q_OBJECT

 public:
  CockpitStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
};

}  // namespace kestrum
