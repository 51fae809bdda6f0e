#pragma once
// A flow's whole sequence as readable lines: every bus operation with the bytes it sent, every
// wait with its kind, every message box, and every change of what a probe watches, such as the
// panel's controls and timer, at the point where it happened. Tests compare it whole with the
// expected trace files beside them.
//
//   WriteSMBusWord_ 00 0054          word writes: command and word, in hex
//   ReadSMBusWord_ 0D                word reads: command; what came back is the gauge's business
//   ReadSMBusBlock_ 23 -> 26         block reads: command and the length that came back
//   WriteSMBusBlock 2F 32 4FE34FF4…  block writes: command, length and every byte sent
//   CheckForError -> 0               the error it gave
//   Delay 250                        the host's own wait
//   ... -> fail                      an operation whose status was not 0
//   ... @11                          an address other than 23, in decimal
//   sleep 50                         a plain wait that blocks, in ms
//   pumpwait 20                      a wait that pumps events while it waits, in ms; the pumps
//                                    inside it are not listed
//   pump                             one pass of pending events
//   box "text"                       a message box; "box error" for the stop icon, and
//                                    title "..." behind the text when it has its own title

#include <functional>
#include <string>
#include <vector>

#include "hosts/bus_operation.h"
#include "platforms/virtual_platform.h"

namespace ombrelay::testing {

class FlowTrace {
 public:
  // The lines of a state that the trace watches, each as it should read in the trace ("timer
  // on", "controls off"). A line that differs from the last look goes into the trace before the
  // next event.
  using Probe = std::function<std::vector<std::string>()>;

  void Record(const BusOperation& operation);
  void Record(const PlatformActivity& activity);

  // Watches probe from now on; its present lines count as seen.
  void Watch(Probe probe);
  // Forgets every line so far; what the probe shows now counts as seen.
  void Clear();
  // The lines so far, with a last look through the probe.
  std::vector<std::string> Lines();

 private:
  void Look();

  std::vector<std::string> lines_;
  Probe probe_;
  std::vector<std::string> seen_;
  int pumpingWaits_ = 0;  // open pumping waits, whose own pumps are not listed
};

}  // namespace ombrelay::testing
