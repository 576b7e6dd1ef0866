#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

namespace kestrum::posdex {

// Cuts a stream of any bytes into lines (CR, LF or both end one). Holds at most `longest_line` bytes; a
// longer line is dropped whole. Empty lines are not reported.
class LineSplitter {
 public:
  explicit LineSplitter(qsizetype longest_line) : longest_line_(longest_line) {}

  // The lines that these bytes complete, in order and without their ends.
  QList<QByteArray> Feed(QByteArrayView bytes);

  // Forgets a half-read line, for a new connection.
  void Clear();

 private:
  qsizetype longest_line_;
  QByteArray pending_;
  bool too_long_ = false;
};

}  // namespace kestrum::posdex
