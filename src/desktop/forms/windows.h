#pragma once

#include <QString>
#include <memory>
#include <vector>

#include "desktop/binding/binder.h"
#include "desktop/forms/form_window.h"
#include "desktop/forms/window_memory.h"
#include "desktop/sound/speaker.h"
#include "forms/forms.h"

namespace kestrum {

// The five windows of the program, hidden until their forms say visible. Must go before the forms do.
class Windows {
 public:
  // `memory` is the file that keeps sizes, the choice of day and night and what is heard; empty for none.
  // Without a speaker nothing is.
  Windows(Forms& forms, Binder& binder, const QString& memory = {}, Speaker* speaker = nullptr);
  ~Windows();
  Windows(const Windows&) = delete;
  Windows& operator=(const Windows&) = delete;

 private:
  void FollowNight(const bool& night);
  void FollowSound(Sounder& sound, Speaker* speaker);

  Binder& binder_;
  FormKeys keys_;
  WindowMemory memory_;
  std::vector<std::unique_ptr<FormWindow>> windows_;
};

}  // namespace kestrum
