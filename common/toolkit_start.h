#pragma once

namespace kestrum {

// Alive while the QApplication is made. A display that is named but dead would end the process by an abort
// and a page of text; with this it ends with one sentence on standard error and exit code 1. What the toolkit
// says otherwise is kept and printed at the end of this object.
class ToolkitStart {
 public:
  // `program` begins the sentence; it must outlive the object.
  explicit ToolkitStart(const char* program);
  ~ToolkitStart();
  ToolkitStart(const ToolkitStart&) = delete;
  ToolkitStart& operator=(const ToolkitStart&) = delete;
};

}  // namespace kestrum
