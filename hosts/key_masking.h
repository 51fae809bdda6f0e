#pragma once
// Keeps keys out of bus records that outlive the run: a key goes over the bus in clear only in a
// key change, as the block written on the authentication command after the word that starts the
// change, and that block's bytes are withheld from the record.

#include "hosts/bus_operation.h"

namespace ombrelay {

class KeyMasking {
 public:
  // Looks at every operation in bus order; withholds the data of the one that carries a key.
  void Apply(BusOperation& operation);

 private:
  // A key-change word went out and its key block has not yet followed.
  bool keyExpected_ = false;
};

}  // namespace ombrelay
