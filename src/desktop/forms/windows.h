#pragma once

#include <memory>
#include <vector>

#include "desktop/binding/binder.h"
#include "desktop/forms/form_window.h"
#include "forms/forms.h"

namespace kestrum {

// The five windows of the program, hidden until their forms say visible. Must go before the forms do.
class Windows {
 public:
  Windows(Forms& forms, Binder& binder);
  ~Windows();
  Windows(const Windows&) = delete;
  Windows& operator=(const Windows&) = delete;

 private:
  Binder& binder_;
  FormKeys keys_;
  std::vector<std::unique_ptr<FormWindow>> windows_;
};

}  // namespace kestrum
