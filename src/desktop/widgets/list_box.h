#pragma once

#include <QPlainTextEdit>
#include <vector>

namespace kestrum {

// A scrolling text in a fixed-width font, read only, with an optional marked line.
class ListBox : public QPlainTextEdit {
  Q_OBJECT

 public:
  // `columns` by `lines` characters is the size that it asks for.
  ListBox(int columns, int lines, QWidget* parent);

  // From now on the fields of a line, which two or more blanks part, stand in columns at these characters.
  void AlignFieldsAt(const std::vector<int>& characters);

  // Replaces the text and keeps the scroll position where it can.
  void ShowText(const QString& text);
  // Marks a line counted from 0 and scrolls it into view; -1 marks none.
  void MarkLine(int line);
  int MarkedLine() const { return marked_line_; }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 private:
  void PaintMark();

  int columns_;
  int lines_;
  int marked_line_ = -1;
  bool aligned_ = false;
};

}  // namespace kestrum
