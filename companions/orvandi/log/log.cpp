#include "log/log.h"

namespace orvandi {

std::string_view ReasonText(DropReason reason) {
  switch (reason) {
    case DropReason::kForeign:
      return "Neither a header nor a record";
    case DropReason::kTorn:
      return "Torn: it does not go on to its end";
    case DropReason::kBadTime:
      return "A record without a time of day";
    case DropReason::kBadHeader:
      return "A header with a date that cannot be";
    case DropReason::kBinary:
      return "Bytes that no text holds";
    case DropReason::kTooLong:
      return "Longer than any line of a log";
    case DropReason::kTooMany:
      return "More records than are kept in memory";
  }
  return {};
}

}  // namespace orvandi
