#pragma once

#include <QWidget>
#include <functional>
#include <utility>

namespace kestrum {

// A display that can be reached and pressed by the keyboard and by screen readers too.
class Pressable {
 public:
  void MakePressable(QWidget& self, std::function<void()> press) {
    press_ = std::move(press);
    self.setFocusPolicy(Qt::TabFocus);
  }
  bool IsPressable() const { return static_cast<bool>(press_); }
  void Press() const { press_(); }

 private:
  std::function<void()> press_;
};

}  // namespace kestrum
