#pragma once
// For unattended runs: an unseal from the security panel, as an engineer at the bench would
// make it, through the widgets.

class QWidget;

namespace ombrelay {

// Selects Unseal and presses Go, with the key that start-up put into the key box. True when the
// panel then shows the gauge Unsealed.
bool UnsealAsAnEngineerWould(QWidget& panel);

}  // namespace ombrelay
