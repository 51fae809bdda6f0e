#pragma once

#include <functional>

namespace ombrelay {

// Runs an event handler for the event loop. A run-time error that no handler of the panels
// trapped is shown in an error box rather than taking the host down with it.
void RunEvent(const std::function<void()>& handler);

// True while a handler runs through RunEvent. Its waits let other events in, and nothing else
// may start a conversation with the gauge in the middle of the handler's.
bool EventRunning();

}  // namespace ombrelay
