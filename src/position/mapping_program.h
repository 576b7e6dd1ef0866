#pragma once

#include "forms/form1.h"
#include "platform/ports.h"

namespace kestrum {

// Menu mnuOrvandi: starts the mapping program of the application folder and records in the check mark whether
// it was found.
void ShowOrvandi(Form1& form, const PortSet<Dialogs, Program, FileStore>& ports);

}  // namespace kestrum
