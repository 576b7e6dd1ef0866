#pragma once

#include <string>

#include "config/settings.h"
#include "forms/forms.h"
#include "platform/ports.h"

namespace kestrum {

// The info window, Form2: the text file "Kestrum.txt" or the table hints, as InfoRequest says.
class InfoWindow {
 public:
  InfoWindow(State& state, Forms& forms, const PortSet<Program, FileStore>& ports);

  // Hangs the close handler on Form2.
  void Wire();
  // Opens the window with what InfoRequest asks for.
  void Open();
  // Text and caption from a file of the application folder. A file that cannot be read leaves the text empty
  // and the caption naming the file.
  void LoadInfo(const std::string& file_name);

 private:
  State& state_;
  Forms& forms_;
  PortSet<Program, FileStore> ports_;
};

}  // namespace kestrum
