#pragma once

#include <QString>

class QWidget;

namespace kestrum {

// Sizes of the windows and other matters of taste, in a small file of their own beside the settings. A file
// that is missing, damaged or cannot be written changes nothing else.
class WindowMemory {
 public:
  // An empty path remembers nothing.
  explicit WindowMemory(QString path) : path_(std::move(path)) {}

  // Gives a window, by its name, the size that it had, within its screen; it stays as it is when none is
  // known.
  void Restore(QWidget& window) const;
  void Keep(const QWidget& window) const;
  bool Flag(const QString& name, bool otherwise) const;
  void KeepFlag(const QString& name, bool on) const;
  int Number(const QString& name, int otherwise) const;
  void KeepNumber(const QString& name, int number) const;

 private:
  QString path_;
};

}  // namespace kestrum
