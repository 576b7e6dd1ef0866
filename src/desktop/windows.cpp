#include "desktop/windows.h"

#include "desktop/form1_window.h"
#include "desktop/form2_window.h"
#include "desktop/form3_window.h"
#include "desktop/form4_window.h"
#include "desktop/form5_window.h"

namespace kestrum {

Windows::Windows(Forms& forms, Binder& binder)
    : binder_(binder),
      main_(std::make_unique<Form1Window>(forms.form1, binder)),
      minimal_(std::make_unique<Form5Window>(forms.form5, binder)) {
  new Form2Window(forms.form2, binder, main_.get());
  new Form3Window(forms.form3, binder, main_.get());
  new Form4Window(forms.form4, binder, main_.get());
}

Windows::~Windows() {
  binder_.Clear();
}

}  // namespace kestrum
