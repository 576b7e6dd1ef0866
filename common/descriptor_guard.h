#pragma once

namespace kestrum {

// Opens those of the descriptors 0 to 2 that are closed, on nothing. Called first of all: otherwise the next
// file, socket or pipe of the process takes their number, and a warning printed to it does harm.
void OpenStandardDescriptors();

}  // namespace kestrum
