#pragma once

#include "desktop/widgets/dial.h"
#include "forms/control.h"

namespace kestrum {

// A pelorus: the car with its front at the top, and a needle whose angle turns clockwise from there. Compass
// letters stand around it while the car's course is known.
class PelorusWidget : public Dial {
  Q_OBJECT

 public:
  explicit PelorusWidget(QWidget* parent);

  void SetNeedle(Needle needle_deg);
  Needle ShownNeedle() const { return needle_deg_; }
  // Course over ground, by which the letters turn; nothing for no letters.
  void SetCourse(Needle course_deg);
  Needle Course() const { return course_deg_; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  double Radius() const;
  void PaintStill();  // rim, ticks and car
  void PaintLetters(QPainter& painter, double radius) const;

  Needle needle_deg_;
  Needle course_deg_;
};

}  // namespace kestrum
