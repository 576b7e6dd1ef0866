#include "start_style.h"

#include <QString>

namespace orvandi {

bool StartedMinimised() {
  constexpr auto kVariable = "KESTRUM_START_MINIMISED";
  const bool minimised = qEnvironmentVariable(kVariable) == QLatin1String("1");
  qunsetenv(kVariable);
  return minimised;
}

}  // namespace orvandi
