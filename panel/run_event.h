#pragma once

#include <functional>

namespace ombrelay {

// Runs an event handler for the event loop. A run-time error that no handler of the panels
// trapped is shown in an error box rather than taking the host down with it.
void RunEvent(const std::function<void()>& handler);

}  // namespace ombrelay
