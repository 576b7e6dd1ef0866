#include "desktop/forms/windows.h"

#include <utility>

#include "desktop/forms/form1_window.h"
#include "desktop/forms/form2_window.h"
#include "desktop/forms/form3_window.h"
#include "desktop/forms/form4_window.h"
#include "desktop/forms/form5_window.h"

namespace kestrum {

Windows::Windows(Forms& forms, Binder& binder) : binder_(binder) {
  auto main = std::make_unique<Form1Window>(forms.form1, binder);
  windows_.push_back(std::make_unique<Form2Window>(forms.form2, binder, main.get()));
  windows_.push_back(std::make_unique<Form3Window>(forms.form3, binder, main.get()));
  windows_.push_back(std::make_unique<Form4Window>(forms.form4, binder, main.get()));
  windows_.push_back(std::make_unique<Form5Window>(forms.form5, binder));
  windows_.push_back(std::move(main));
}

Windows::~Windows() {
  binder_.Clear();
}

}  // namespace kestrum
