#include "drive_process.h"

namespace kestrum::drivesim {
namespace {

// The logs of a test go where the test looks for them.
process::Call CallOf(const Scratch& scratch, const std::vector<std::string>& arguments) {
  process::Call call{{DRIVESIM_PROGRAM, "--dir", scratch.path().string()}, {}, scratch.path().string(), true};
  call.words.insert(call.words.end(), arguments.begin(), arguments.end());
  return call;
}

}  // namespace

DriveProcess::DriveProcess(const std::vector<std::string>& arguments)
    : program_(CallOf(scratch_, arguments)), ready_(program_.ReadLine()) {}

Ending RunShell(const std::string& command) {
  return process::Run({{"sh", "-c", command}, {}, {}, false});
}

}  // namespace kestrum::drivesim
