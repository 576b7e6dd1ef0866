#pragma once

#include <QPixmap>
#include <QWidget>

#include "forms/control.h"

namespace kestrum {

// A pelorus: the car with its front at the top, and a needle whose angle turns clockwise from there. Compass
// letters stand around it while the car's course is known.
class PelorusWidget : public QWidget {
  Q_OBJECT

 public:
  explicit PelorusWidget(QWidget* parent);

  void SetNeedle(Needle needle_deg);
  Needle ShownNeedle() const { return needle_deg_; }
  // Course over ground, by which the letters turn; nothing for no letters.
  void SetCourse(Needle course_deg);
  Needle Course() const { return course_deg_; }
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

  Needle needle_deg_;
  Needle course_deg_;
  bool stale_ = false;
  QString badge_;
  QPixmap still_;  // rim, ticks and car
};

}  // namespace kestrum
