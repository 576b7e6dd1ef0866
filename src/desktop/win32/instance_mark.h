#pragma once

#include <string>

namespace kestrum {

// Marks this process as the user's only instance in `folder` until it ends, however it ends. False when
// another one has done so, whatever session or letter case it was started with.
bool MarkInstance(const std::wstring& folder);

}  // namespace kestrum
