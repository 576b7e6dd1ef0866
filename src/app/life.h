#pragma once

namespace kestrum {

// How far start-up and shutdown have come.
struct Life {
  bool reader_loaded = false;  // the links to the GPS reader are ours to end
  bool started = false;
  bool exiting = false;
  bool ends_without_shutdown = false;  // under the last boxes of DefaultConfig
};

}  // namespace kestrum
