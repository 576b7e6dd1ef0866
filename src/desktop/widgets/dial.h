#pragma once

#include <QString>
#include <QWidget>

#include "desktop/widgets/still_picture.h"

namespace kestrum {

// What both dials have in common: a still picture, and a position that is no longer true is faded and wears
// a badge.
class Dial : public QWidget {
  Q_OBJECT

 public:
  bool Stale() const { return stale_; }
  void SetStale(bool stale);
  QString Badge() const { return badge_; }
  // Stands across the dial while it is stale.
  void SetBadge(const QString& badge);

  QSize sizeHint() const override { return Square(hint_lines_); }
  QSize minimumSizeHint() const override { return Square(least_lines_); }

 protected:
  // The sides asked for, in lines of text.
  Dial(int hint_lines, int least_lines, QWidget* parent);
  void changeEvent(QEvent* event) override;

  StillPicture& still() { return still_; }

 private:
  QSize Square(int lines) const;

  int hint_lines_;
  int least_lines_;
  bool stale_ = false;
  QString badge_;
  StillPicture still_;
};

}  // namespace kestrum
