#pragma once
// For runs without a user: the live scan under the plots while the bench's sources change, as
// an engineer turning the knobs would.

#include <functional>

class QWidget;

namespace ombrelay {

// Turns the calibration panel's continuous updates on and, at each quarter of seconds, changes
// the bench's sources of its window: a load of 2 A, then cell 2 up 150 mV and TS1 up 8 degrees,
// then the load off. Calls done after seconds.
void ScanWhileSourcesChange(QWidget& panel, int seconds, std::function<void()> done);

}  // namespace ombrelay
