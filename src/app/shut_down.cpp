#include "app/application.h"
#include "config/app_title.h"

namespace kestrum {
namespace {

void CloseAllWindows(Forms& forms) {
  forms.form1.visible = false;
  forms.form2.visible = false;
  forms.form3.visible = false;
  forms.form4.visible = false;
  forms.form5.visible = false;
}

}  // namespace

void Application::Shutdown(bool may_ask) {
  if (ports_.program.Ended()) return;
  if (ends_without_shutdown_) {
    log.FinishWriting();
    ports_.program.End();
    return;
  }
  if (exiting_) return;
  exiting_ = true;
  if (!started_) {  // nothing of the user's can have changed, and half-loaded settings must not be saved
    // A refused second instance must not close the reader of the first.
    if (reader_loaded_) gps.LoadGps(false);
    ports_.program.End();
    return;
  }
  Form1& form = forms.form1;
  Settings& settings = state.settings;
  settings.MainLeft = form.left;
  settings.MainTop = form.top;
  if (forms.form5.visible) {
    settings.MinimalLeft = forms.form5.left;
    settings.MinimalTop = forms.form5.top;
  }
  form.tmrMain.Stop();
  form.tmrLamps.Stop();
  const bool set_is_on = link.IsOpen() && form.mnuFT817.checked && PowerIsOn(form);
  if (set_is_on && may_ask && ports_.dialogs.AskYesNo(AppTitle, "Switch FT817 Off (Y/N) ", Icon::kQuestion)) {
    Run(form.cmdFT817OnOff.click);
  }
  if (link.IsOpen()) link.CloseCatPort();
  gps.LoadGps(false);
  tx_site.StoreAntennas();
  config.SaveAtEnd();
  // The windows stay until a longer block has been written: who closes the program sees when it is safe.
  if (log.LogCount < 2) CloseAllWindows(forms);
  log.FlushAtEnd();
  CloseAllWindows(forms);
  ports_.program.End();
}

}  // namespace kestrum
