#include "bench/campaign_faults.h"

#include <optional>

namespace ombrelay {
namespace {

// The bus errors that appear at once: the drain loops take them one by one.
constexpr int kPendingErrors = 3;

// The simulator's name for the transfer the clean run made.
std::optional<sim::Transfer> SimTransferOf(const BusOperation& clean) {
  const std::optional<TransferKind> kind = TransferOf(clean);
  if (!kind) return std::nullopt;
  switch (*kind) {
    case TransferKind::WordRead:
      return sim::Transfer::WordRead;
    case TransferKind::WordWrite:
      return sim::Transfer::WordWrite;
    case TransferKind::BlockRead:
      return sim::Transfer::BlockRead;
    case TransferKind::BlockWrite:
      return sim::Transfer::BlockWrite;
  }
  return std::nullopt;
}

}  // namespace

std::string FaultName(FaultKind kind) {
  switch (kind) {
    case FaultKind::TransferFails:
      return "transfer_fails";
    case FaultKind::ShorterBlock:
      return "block_shorter";
    case FaultKind::LongerBlock:
      return "block_longer";
    case FaultKind::EmptyBlock:
      return "block_length_0";
    case FaultKind::Block255:
      return "block_length_255";
    case FaultKind::FirstByteCorrupt:
      return "first_byte_corrupt";
    case FaultKind::LastByteCorrupt:
      return "last_byte_corrupt";
    case FaultKind::PendingErrors:
      return "pending_errors";
    case FaultKind::CounterStalls:
      return "raw_counter_stalls";
    case FaultKind::WrongStoredByte:
      return "wrong_stored_byte";
  }
  return "unknown";
}

std::vector<Fault> FaultsFor(const BusOperation& clean) {
  std::vector<Fault> faults{{FaultKind::PendingErrors}};
  const std::optional<sim::Transfer> transfer = SimTransferOf(clean);
  if (!transfer) return faults;
  const auto add = [&](FaultKind kind) { faults.push_back({kind, *transfer, clean.len}); };
  add(FaultKind::TransferFails);
  // A fault on an answer needs an answer: on a transfer that failed it would strike a later one.
  const bool answered = clean.status == 0;
  if (*transfer == sim::Transfer::BlockRead && answered) {
    if (clean.len > 0) add(FaultKind::ShorterBlock);
    if (clean.len < 255) add(FaultKind::LongerBlock);
    if (clean.len != 0) add(FaultKind::EmptyBlock);
    if (clean.len != 255) add(FaultKind::Block255);
    add(FaultKind::CounterStalls);
  }
  const bool read = *transfer == sim::Transfer::WordRead || *transfer == sim::Transfer::BlockRead;
  if (read && answered && clean.len > 0) {
    add(FaultKind::FirstByteCorrupt);
    if (clean.len > 1) add(FaultKind::LastByteCorrupt);
  }
  if (*transfer == sim::Transfer::BlockWrite && clean.len > 0) add(FaultKind::WrongStoredByte);
  return faults;
}

void Inject(const Fault& fault, sim::Gauge& gauge) {
  const auto last = static_cast<std::size_t>(fault.length > 0 ? fault.length - 1 : 0);
  switch (fault.kind) {
    case FaultKind::TransferFails:
      gauge.FailNext(fault.transfer, 1);
      break;
    case FaultKind::ShorterBlock:
      gauge.AnswerNextBlockReadsWithLength(1, static_cast<std::uint8_t>(fault.length - 1));
      break;
    case FaultKind::LongerBlock:
      gauge.AnswerNextBlockReadsWithLength(1, static_cast<std::uint8_t>(fault.length + 1));
      break;
    case FaultKind::EmptyBlock:
      gauge.AnswerNextBlockReadsWithLength(1, 0);
      break;
    case FaultKind::Block255:
      gauge.AnswerNextBlockReadsWithLength(1, 255);
      break;
    case FaultKind::FirstByteCorrupt:
      gauge.CorruptNextRead(fault.transfer, 0);
      break;
    case FaultKind::LastByteCorrupt:
      gauge.CorruptNextRead(fault.transfer, last);
      break;
    case FaultKind::PendingErrors:
      gauge.QueuePendingErrors(kPendingErrors);
      break;
    case FaultKind::CounterStalls:
      gauge.StallRawCounter(true);
      break;
    case FaultKind::WrongStoredByte:
      gauge.StoreWrongDataflashByteOnNextWrite(last);
      break;
  }
}

}  // namespace ombrelay
