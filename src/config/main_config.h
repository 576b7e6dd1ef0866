#pragma once

#include "config/settings.h"
#include "forms/form1.h"
#include "platform/ports.h"

namespace kestrum {

// The main configuration file "Kestrum.cfg" in the application folder: a version line, 21 lines that are told
// apart by their position alone and up to 21 antenna lines.
class MainConfig {
 public:
  using OwnPorts = PortSet<Dialogs, Beeper, Program, FileStore, Worker>;

  MainConfig(State& state, Form1& form, const OwnPorts& ports);

  // Set by the application: the program is about to end without its shutdown steps.
  Handler ends_now;
  // Set by the application: what is on its way to the disk gets there.
  Handler last_write;

  // Fills the settings from the file. A missing file gives the defaults and requests the info text; one of
  // another version, or a torn one, gives a message and the defaults. The rejected
  // file is kept as "Kestrum.cfg.bad".
  void LoadCfg();
  // Writes the whole file, beside the window thread; a fault is reported in a message box.
  void SaveCfg();
  // The same at the end of the program, where a message may be waited for: a file that could not be read is
  // the user's and stays as it is.
  void SaveAtEnd();
  // Factory values. Window positions, the power caption and antenna entries 1 to 20 stay as they are: kept on
  // purpose, they belong to the user's desk and not to the set-up.
  void SetDefaults();

  // Menu: beep and save.
  void mnuSavecfg_Click();
  // Menu: after a question writes the factory values and ends the program without its shutdown steps.
  void mnuDefaultCfg_Click();

 private:
  enum class Told { kInPassing, kInABox };
  void Save(Told fault);
  std::string FileText() const;
  void RejectFile(const std::string& path);
  void TellUnreadable(const Fault& fault);

  State& state_;
  Form1& form_;
  OwnPorts ports_;
  bool unreadable_ = false;        // and so not overwritten
  bool keep_before_save_ = false;  // the first save moves the file aside
};

}  // namespace kestrum
