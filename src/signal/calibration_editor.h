#pragma once

#include <cstddef>
#include <string>

#include "signal/calibration_files.h"
#include "signal/s_meter.h"

namespace kestrum {

// The calibration editor, Form3: builds a table on the bench from live readings.
class CalibrationEditor {
 public:
  CalibrationEditor(State& state, Forms& forms, const PortSet<Dialogs, Beeper, Program, FileStore>& ports,
                    CalibrationTable& table, CalibrationFiles& files);

  // Hangs the handlers on Form3's controls, and Load on form3.load.
  void Wire();
  // Builds the window's content and starts acquiring.
  void Load();
  // Opens the window (menu mnuCalibration of Form1).
  void Open();
  // Follows the live reading while acquiring; called on every reading.
  void FollowReading();
  // Shows everything that depends on the table, the band or the frequency; nothing while it is not loaded.
  void Refresh();

 private:
  void WireButtons();
  void WireMenus();
  void Close();
  void SetAcquiring(bool acquiring);
  void SelectPoint(int index);

  void ShowDefaultList();
  void ShowTableLists();
  // Marks the row in the list of the table, if it stands there.
  void MarkStored(std::size_t row);
  void Note(const std::string& text);
  void ShowRecord(std::size_t row);
  std::size_t SelectedRow() const;
  bool HoldsDefaultPoints() const;

  void cmdSstore_Click();
  void cmduVStore_Click();
  // Stores a value in uV at the frozen row, or at the live one while acquiring.
  void Store(const std::string& microvolt);
  // Empties the first row that holds this uV text.
  bool DropDuplicate(const std::string& microvolt);

  void mnuLoad_Click();
  void mnuSaveAs_Click();
  void LoadFile(const std::string& path);

  State& state_;
  Forms& forms_;
  PortSet<Dialogs, Beeper, Program, FileStore> ports_;
  CalibrationTable& table_;
  CalibrationFiles& files_;
  bool acquiring_ = false;
};

}  // namespace kestrum
