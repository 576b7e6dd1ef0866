#pragma once

#include <QWidget>
#include <optional>
#include <string>

namespace kestrum {

// A compass rose with a needle; up is straight ahead or north, angles turn clockwise.
class PelorusWidget : public QWidget {
  Q_OBJECT

 public:
  explicit PelorusWidget(QWidget* parent);

  // An angle text in degrees ("045", "045°"); "32768" shows no needle.
  void SetNeedle(const std::string& text);
  // Degrees; nothing when no needle is shown.
  std::optional<double> Needle() const { return needle_deg_; }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void PaintRose(QPainter& painter, double radius);
  void PaintNeedle(QPainter& painter, double radius);

  std::optional<double> needle_deg_;
};

}  // namespace kestrum
