#pragma once

#include <QPointer>
#include <functional>
#include <vector>

#include "platform/dialogs.h"
#include "platform/program.h"

class QDialog;
class QMessageBox;

namespace kestrum {

class QtDialogs : public Dialogs {
 public:
  // `before_box` paints what is still waiting, so that the windows behind a box tell the truth.
  QtDialogs(const Program& program, std::function<void()> before_box);
  ~QtDialogs() override;

  void Show(const std::string& title, const std::string& text, Icon icon) override;
  bool AskYesNo(const std::string& title, const std::string& text, Icon icon) override;
  void Notify(const std::string& title, const std::string& text, Icon icon) override;
  std::string AskText(const std::string& title, const std::string& prompt,
                      const std::string& proposal) override;
  void Dismiss() override;

 private:
  bool MayOpen() const { return !dismissed_ && !program_.Ended(); }
  // Shows the box until it is closed; the result counts only when nobody has dismissed it.
  bool Run(QDialog& box, int wanted);
  // The open notice with this title, or none.
  QMessageBox* NoticeOf(const QString& title, Icon icon) const;

  const Program& program_;
  std::function<void()> before_box_;
  std::vector<QDialog*> open_;
  std::vector<QPointer<QMessageBox>> notices_;
  bool dismissed_ = false;
};

}  // namespace kestrum
