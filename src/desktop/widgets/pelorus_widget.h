#pragma once

#include <QPixmap>
#include <QWidget>
#include <optional>
#include <string>

namespace kestrum {

// A pelorus: the car with its front at the top, and a needle whose angle turns clockwise from there. Compass
// letters stand around it while the car's course is known.
class PelorusWidget : public QWidget {
  Q_OBJECT

 public:
  explicit PelorusWidget(QWidget* parent);

  // An angle text in degrees ("045", "045°"); "32768" shows no needle.
  void SetNeedle(const std::string& text);
  // Degrees; nothing when no needle is shown.
  std::optional<double> Needle() const { return needle_deg_; }
  // Course over ground as a number text, by which the letters turn; empty for no letters.
  void SetCourse(const std::string& text);
  std::optional<double> Course() const { return course_deg_; }
  void SetStale(bool stale);
  bool Stale() const { return stale_; }
  // Stands across the dial while it is stale.
  void SetBadge(const QString& badge);
  QString Badge() const { return badge_; }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  double Radius() const;
  void PaintStill();
  void PaintLetters(QPainter& painter, double radius) const;

  std::optional<double> needle_deg_;
  std::optional<double> course_deg_;
  bool stale_ = false;
  QString badge_;
  QPixmap still_;  // rim, ticks and car
};

}  // namespace kestrum
