#include <utility>

#include "common/end_signals.h"
#include "desktop/platform_factory.h"

namespace kestrum {

void OnEndRequests(QObject* context, std::function<void()> ask_to_end) {
  const auto* signals_of_the_system = new EndSignals(context);
  QObject::connect(signals_of_the_system, &EndSignals::Received, context, std::move(ask_to_end));
}

}  // namespace kestrum
