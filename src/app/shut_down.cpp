#include "app/shut_down.h"

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

void ShutDown(Parts& parts, Life& life, PowerQuestion question) {
  if (parts.ports.program.Ended()) return;
  if (life.ends_without_shutdown) {
    parts.log.FinishWriting();
    parts.ports.program.End();
    return;
  }
  if (life.exiting) return;
  life.exiting = true;
  if (!life.started) {  // nothing of the user's can have changed, and half-loaded settings must not be saved
    // A refused second instance must not close the reader of the first.
    if (life.reader_loaded) parts.gps.LoadGps(false);
    parts.ports.program.End();
    return;
  }
  Form1& form = parts.forms.form1;
  Settings& settings = parts.state.settings;
  settings.MainLeft = form.left;
  settings.MainTop = form.top;
  if (parts.forms.form5.visible) {
    settings.MinimalLeft = parts.forms.form5.left;
    settings.MinimalTop = parts.forms.form5.top;
  }
  form.tmrMain.Stop();
  form.tmrLamps.Stop();
  const bool set_is_on = parts.link.IsOpen() && form.mnuFT817.checked && PowerIsOn(form);
  if (set_is_on && question == PowerQuestion::kAsked &&
      parts.ports.dialogs.AskYesNo(AppTitle, "Switch FT817 Off (Y/N) ", Icon::kQuestion)) {
    Run(form.cmdFT817OnOff.click);
  }
  if (parts.link.IsOpen()) parts.link.CloseCatPort();
  parts.gps.LoadGps(false);
  parts.tx_site.StoreAntennas();
  parts.config.SaveAtEnd();
  // The windows stay until a longer block has been written: who closes the program sees when it is safe.
  if (parts.log.LogCount < 2) CloseAllWindows(parts.forms);
  parts.log.FlushAtEnd();
  CloseAllWindows(parts.forms);
  parts.ports.program.End();
}

void EndWithoutShutDown(Form1& form, Life& life) {
  life.exiting = true;
  life.ends_without_shutdown = true;
  form.tmrMain.Stop();
  form.tmrAverageRSSI.Stop();
  form.tmrLamps.Stop();
}

}  // namespace kestrum
