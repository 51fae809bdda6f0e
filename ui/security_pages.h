#pragma once
// The three pages of the security panel. The first two are laid out with ordinary layouts; the
// key change page stands its bands and rules where the controls' twips put them.

#include "security/auth_morlin.h"
#include "ui/input_binders.h"

class QWidget;

namespace ombrelay {

class WidgetFactory;

// Digits of what the hex boxes hold.
inline constexpr int kKeyDigits = 32;
inline constexpr int kDigestDigits = 40;
inline constexpr int kKeyAndChallengeDigits = kKeyDigits + kDigestDigits;

// A key box's handlers: its Change and its Validate.
TextBoxHandlers KeyBoxHandlers(AuthMorlin& panel, void (AuthMorlin::*change)(),
                               void (AuthMorlin::*validate)(bool& Cancel));

// Page 0: the key for unsealing, the challenge and answer, and the mode with its change.
QWidget* MakeModePage(AuthMorlin& panel, WidgetFactory& make);
// Page 1: the authentication key, the gauge's digest and the host's own.
QWidget* MakeAuthenticationPage(AuthMorlin& panel, WidgetFactory& make);
// Page 2: a band for each of the three keys, between rules.
QWidget* MakeKeyChangePage(AuthMorlin& panel, WidgetFactory& make);

}  // namespace ombrelay
