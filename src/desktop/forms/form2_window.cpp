#include "desktop/forms/form2_window.h"

#include "desktop/widgets/list_box.h"

namespace kestrum {

Form2Window::Form2Window(Form2& form, Binder& binder, QWidget* owner) : FormWindow(form, binder, owner) {
  auto* text = new ListBox(86, 28, this);
  text->setFrameShape(QFrame::NoFrame);
  text->setAccessibleName(tr("Information"));
  setCentralWidget(text);
  binder.Bind(form.Text1, text);
}

}  // namespace kestrum
