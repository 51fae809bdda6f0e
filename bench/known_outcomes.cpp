#include "bench/known_outcomes.h"

#include <initializer_list>
#include <optional>

#include "gauge/dataflash_rows.h"

namespace ombrelay {
namespace {

constexpr std::int32_t kManufacturerAccess = 0x00;
constexpr std::uint16_t kFirstRow = kFirstRowWord;
constexpr std::uint16_t kSecondRow = kFirstRowWord + 1;
constexpr std::int32_t kSubclassSelect = 0x77;
// The KELD calibration block's read-back looks at this many bytes of its 64.
constexpr std::int32_t kKeldBytesReadBack = 32;

enum Reason {
  kWrongAnswer,
  kRowSelectionUnread,
  kRowReadUnread,
  kKeldUpperHalf,
  kSubclassSelectionUnread,
  kBlockDecodedAsGiven,
};

bool IsTransfer(const BusOperation& op) {
  return op.cmd != BusOperation::kNoCommand;
}

// The nearest transfers before and after operation k, if any.
const BusOperation* PreviousTransfer(const Strike& strike) {
  for (std::size_t i = strike.k; i-- > 0;)
    if (IsTransfer(strike.operations[i])) return &strike.operations[i];
  return nullptr;
}

const BusOperation* NextTransfer(const Strike& strike) {
  for (std::size_t i = strike.k + 1; i < strike.operations.size(); ++i)
    if (IsTransfer(strike.operations[i])) return &strike.operations[i];
  return nullptr;
}

bool IsBlockRead(const BusOperation* op) {
  return op != nullptr && TransferOf(*op) == TransferKind::BlockRead;
}

bool IsWordWrite(const BusOperation* op, std::int32_t cmd) {
  return op != nullptr && TransferOf(*op) == TransferKind::WordWrite && op->cmd == cmd;
}

bool IsRowSelection(const BusOperation* op) {
  return IsWordWrite(op, kManufacturerAccess) && (op->word == kFirstRow || op->word == kSecondRow);
}

bool IsOneOf(FaultKind kind, std::initializer_list<FaultKind> kinds) {
  for (const FaultKind one : kinds)
    if (kind == one) return true;
  return false;
}

bool IsLengthOrFailure(FaultKind kind) {
  return IsOneOf(kind, {FaultKind::TransferFails, FaultKind::ShorterBlock, FaultKind::LongerBlock,
                        FaultKind::EmptyBlock, FaultKind::Block255});
}

std::optional<Reason> ReasonOf(const Strike& strike) {
  const FaultKind kind = strike.fault.kind;
  const BusOperation& struck = strike.operations[strike.k];
  if (IsOneOf(kind, {FaultKind::FirstByteCorrupt, FaultKind::LastByteCorrupt})) return kWrongAnswer;
  if (kind == FaultKind::TransferFails && IsRowSelection(&struck) &&
      IsBlockRead(NextTransfer(strike)))
    return kRowSelectionUnread;
  const bool afterRowSelection = IsRowSelection(PreviousTransfer(strike));
  if (IsLengthOrFailure(kind) && IsBlockRead(&struck) && afterRowSelection) return kRowReadUnread;
  if (strike.family == sim::Family::Keld && kind == FaultKind::WrongStoredByte &&
      strike.fault.length > kKeldBytesReadBack)
    return kKeldUpperHalf;
  if (strike.family == sim::Family::Quill && kind == FaultKind::TransferFails &&
      IsWordWrite(&struck, kSubclassSelect))
    return kSubclassSelectionUnread;
  const bool showsValues = strike.flow == "startup" || strike.flow == "scan_tick";
  if (showsValues && IsOneOf(kind, {FaultKind::ShorterBlock, FaultKind::EmptyBlock}) &&
      IsBlockRead(&struck) && !afterRowSelection)
    return kBlockDecodedAsGiven;
  return std::nullopt;
}

}  // namespace

const std::vector<KnownOutcome>& KnownOutcomes() {
  static const std::vector<KnownOutcome> outcomes = {
      {"wrong_answer_needs_pec",
       "an answer of the right length with a wrong byte: only the bus's PEC tells it from a true "
       "one, and with --pec the host fails such a transfer, which the campaign injects as "
       "transfer_fails"},
      {"row_selection_status_unread",
       "the calibration-row read does not look at the status of its row selection, so it reads "
       "the row the gauge still has selected"},
      {"row_read_result_unread",
       "a second calibration row that fails or comes short leaves zeros and does not count; "
       "entering calibration mode and start-up do not look at the first row's result"},
      {"keld_block_upper_half_unverified",
       "the KELD calibration block's read-back compares bytes 0 to 31 only"},
      {"subclass_selection_status_unread",
       "the calibration subclass read does not look at the status of its subclass selection"},
      {"measurement_block_decoded_as_given",
       "a measurement block is decoded as far as the length the gauge gave"},
  };
  return outcomes;
}

const KnownOutcome* KnownOutcomeOf(const Strike& strike) {
  const std::optional<Reason> reason = ReasonOf(strike);
  return reason ? &KnownOutcomes()[*reason] : nullptr;
}

}  // namespace ombrelay
