#pragma once

#include <QWidget>
#include <vector>

#include "desktop/widgets/pressable.h"
#include "desktop/widgets/still_picture.h"
#include "forms/control.h"

namespace kestrum {

// The signal bar, drawn as a row of segments or as one plain bar, with the scale of the table in use below it
// and a thin mark at the peak of a moment ago.
class MeterBar : public QWidget, public Pressable {
  Q_OBJECT
  Q_PROPERTY(int value READ value WRITE setValue)

 public:
  explicit MeterBar(QWidget* parent);

  int minimum() const { return 0; }
  int maximum() const { return maximum_; }
  void setMaximum(int maximum);
  int value() const { return value_; }
  void setValue(int value);

  void SetSegments(bool segments);
  bool Segments() const { return segments_; }
  void SetPeak(int peak);
  int Peak() const { return peak_; }
  void SetScale(std::vector<ScaleMark> marks);
  // Hatched: the value is not true.
  void SetStale(bool stale);
  bool Stale() const { return stale_; }
  // Height as a share of the full height; 1 is about two lines of text.
  void SetHeightShare(double share);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void Redraw();
  QRectF Track() const;  // the bar without the scale
  double XOf(double value) const;
  void UpdateBetween(int one, int other);
  void PaintStill();
  void PaintScale(QPainter& painter) const;
  int ScaleHeight() const;

  int maximum_ = 255;
  int value_ = 0;
  int peak_ = -1;
  bool segments_ = true;
  bool stale_ = false;
  std::vector<ScaleMark> marks_;
  double height_share_ = 1;
  StillPicture still_;  // track, scale and hatching
};

}  // namespace kestrum
