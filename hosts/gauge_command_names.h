#pragma once
// What the gauge's commands and ManufacturerAccess words are called on the bench: the Smart
// Battery words the panels read, the words and blocks the panels use, and those config.ini
// gives. Names that hang on what went before on the bus are the bus log decoder's to give.

#include <cstdint>
#include <optional>
#include <string>

#include "shell/configured_commands.h"

namespace ombrelay {

// What the blocks on 0x2F, and on the dataflash row command, carry by the traffic before them.
enum class BlockExchange {
  None,
  Row,             // a row request went out: the row follows on the row command
  Identification,  // the identification request went out: the gauge answers its block
  Unseal,          // an unseal or full access word: the gauge's challenge, then the digest
  KeyChange,       // a key change word: the gauge's challenge, then the new key
  KeySent,         // and the new key went: the gauge's digest under it
  Authentication,  // a challenge written with no word before it: the gauge's digest
};
// The exchange a ManufacturerAccess word starts: None, Row, Unseal or KeyChange.
BlockExchange ExchangeStartedBy(std::uint16_t word);

// The name of a word written to ManufacturerAccess; empty when it has none.
std::string ManufacturerAccessWordName(std::uint16_t word, const ConfiguredCommands& configured);

// The dataflash row that a ManufacturerAccess word selects, if it is a row request.
std::optional<std::int32_t> SelectedRow(std::uint16_t word);
// "calibration row 0" and "calibration row 1" for the two rows of the calibration area,
// "dataflash row N" for the others.
std::string RowName(std::int32_t row, const ConfiguredCommands& configured);

// The name of a command read or written as a word, ManufacturerAccess aside; empty when it has
// none.
std::string WordCommandName(std::int32_t command, const ConfiguredCommands& configured);

// The blocks written to ask the gauge for its identification, which it then answers on 0x2F.
bool IsIdentificationRequest(std::int32_t command);

// The name of a block command whose content does not hang on what went before; empty when it
// has none.
std::string BlockCommandName(std::int32_t command, const ConfiguredCommands& configured);

}  // namespace ombrelay
