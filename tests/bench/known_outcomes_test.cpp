// Which untold outcomes the campaign puts down to the flows' own algorithms: each reason only
// where its algorithm is, so that a fault anywhere else still counts against the program.

#include "bench/known_outcomes.h"

#include <gtest/gtest.h>

namespace ombrelay {
namespace {

using sim::Family;

BusOperation WordWrite(std::int32_t cmd, std::uint16_t word) {
  BusOperation op;
  op.op = "WriteSMBusWord_";
  op.cmd = cmd;
  op.word = word;
  return op;
}

BusOperation Block(const char* name, std::int32_t cmd) {
  BusOperation op;
  op.op = name;
  op.cmd = cmd;
  op.len = 32;
  return op;
}

BusOperation Drain() {
  BusOperation op;
  op.op = "CheckForError";
  return op;
}

struct Case {
  const char* flow;
  Family family;
  std::vector<BusOperation> operations;
  std::size_t k;
  Fault fault;
  const char* expected;  // nullptr: nothing explains it
};

const BusOperation kSelectFirstRow = WordWrite(0x00, 0x0100);
const BusOperation kSelectSecondRow = WordWrite(0x00, 0x0101);
const BusOperation kRowRead = Block("ReadSMBusBlock_", 0x2F);
const BusOperation kRowWrite = Block("WriteSMBusBlock", 0x2F);
const BusOperation kMeasurementRead = Block("ReadSMBusBlock_", 0x23);

TEST(KnownOutcomes, EachReasonHoldsOnlyWhereItsAlgorithmIs) {
  using enum FaultKind;
  const std::vector<Case> cases = {
      {"cc_offset",
       Family::Morlin,
       {kSelectFirstRow, Drain(), kRowRead},
       0,
       {TransferFails},
       "row_selection_status_unread"},
      // The row write's own read-back tells a failed selection before it.
      {"cc_offset", Family::Morlin, {kSelectFirstRow, kRowWrite}, 0, {TransferFails}, nullptr},
      {"cc_offset",
       Family::Morlin,
       {WordWrite(0x00, 0x0054), kRowRead},
       0,
       {TransferFails},
       nullptr},
      {"current",
       Family::KeldPlus,
       {kSelectSecondRow, Drain(), kRowRead},
       2,
       {EmptyBlock},
       "row_read_result_unread"},
      {"current",
       Family::KeldPlus,
       {kSelectSecondRow, kRowRead},
       1,
       {Block255},
       "row_read_result_unread"},
      {"current", Family::KeldPlus, {kSelectSecondRow, kRowRead}, 1, {WrongStoredByte}, nullptr},
      {"current", Family::KeldPlus, {WordWrite(0x00, 0x0054), kRowRead}, 1, {EmptyBlock}, nullptr},
      {"pack_voltage",
       Family::Keld,
       {Block("WriteSMBusBlock", 0x58)},
       0,
       {WrongStoredByte, sim::Transfer::BlockWrite, 64},
       "keld_block_upper_half_unverified"},
      {"pack_voltage",
       Family::Keld,
       {Block("WriteSMBusBlock", 0x58)},
       0,
       {WrongStoredByte, sim::Transfer::BlockWrite, 32},
       nullptr},
      {"pack_voltage",
       Family::Quill,
       {Block("WriteSMBusBlock", 0x78)},
       0,
       {WrongStoredByte, sim::Transfer::BlockWrite, 64},
       nullptr},
      {"cc_offset",
       Family::Quill,
       {WordWrite(0x77, 0x68)},
       0,
       {TransferFails},
       "subclass_selection_status_unread"},
      {"cc_offset", Family::Morlin, {WordWrite(0x77, 0x68)}, 0, {TransferFails}, nullptr},
      {"cc_offset", Family::Quill, {WordWrite(0x77, 0x68)}, 0, {PendingErrors}, nullptr},
      {"scan_tick",
       Family::Morlin,
       {kMeasurementRead},
       0,
       {ShorterBlock},
       "measurement_block_decoded_as_given"},
      {"startup",
       Family::Morlin,
       {kMeasurementRead},
       0,
       {EmptyBlock},
       "measurement_block_decoded_as_given"},
      {"startup", Family::Morlin, {kMeasurementRead}, 0, {TransferFails}, nullptr},
      {"voltage_temperature", Family::Morlin, {kMeasurementRead}, 0, {ShorterBlock}, nullptr},
      {"seal", Family::Keld, {kMeasurementRead}, 0, {LastByteCorrupt}, "wrong_answer_needs_pec"},
  };
  for (const Case& one : cases) {
    const KnownOutcome* known =
        KnownOutcomeOf({one.flow, one.family, one.operations, one.k, one.fault});
    const std::string got = known != nullptr ? known->name : "none";
    EXPECT_EQ(got, one.expected != nullptr ? one.expected : "none")
        << one.flow << " " << sim::FamilyName(one.family) << " k " << one.k << " "
        << FaultName(one.fault.kind);
  }
}

}  // namespace
}  // namespace ombrelay
