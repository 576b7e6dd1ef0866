#pragma once

#include <QProgressBar>

namespace kestrum {

// The signal bar, drawn as a row of segments or as one plain bar.
class MeterBar : public QProgressBar {
  Q_OBJECT

 public:
  explicit MeterBar(QWidget* parent);

  void SetSegments(bool segments);
  bool Segments() const { return segments_; }
  // Height as a share of the full height; 1 is about two lines of text.
  void SetHeightShare(double share);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  bool segments_ = true;
  double height_share_ = 1;
};

}  // namespace kestrum
