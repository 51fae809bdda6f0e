#include "sim/gauge.h"

#include <gtest/gtest.h>

#include "sim/family.h"
#include "sim/sample_gauges.h"

namespace ombrelay::sim {
namespace {

constexpr std::uint8_t kData = Gauge::kSharedDataCommand;

void RequestIdentification(Gauge& gauge) {
  for (const std::uint8_t command : {0x22, 0x20, 0x22})
    EXPECT_TRUE(gauge.WriteBlock(command, Bytes(62, 0)));
}

std::vector<std::int32_t> DrainErrors(Gauge& gauge) {
  std::vector<std::int32_t> errors;
  while (const std::int32_t error = gauge.TakePendingError())
    errors.push_back(error);
  return errors;
}

TEST(Gauge, IdentificationFollowsTheRequestAndPendingErrorsComeOldestFirst) {
  VirtualClock clock;
  auto gauge = MakeSampleGauge(Family::Morlin, clock);
  EXPECT_FALSE(gauge->ReadBlock(kData)) << "nothing selected yet";
  gauge->SetIdentificationRequestErrors(3);
  gauge->QueuePendingErrors(1, 7);
  RequestIdentification(*gauge);    // only the write on 0x20 leaves errors
  gauge->QueuePendingErrors(2, 0);  // 0 is no error
  EXPECT_EQ(DrainErrors(*gauge), (std::vector<std::int32_t>{7, 1, 1, 1}));
  EXPECT_EQ(gauge->ReadBlock(kData), gauge->IdentificationBlock());
  EXPECT_FALSE(gauge->WriteBlock(kData, gauge->IdentificationBlock())) << "read-only";
}

TEST(Gauge, InjectedFailuresCountDownByKind) {
  VirtualClock clock;
  auto gauge = MakeSampleGauge(Family::Morlin, clock);
  gauge->FailNext(Transfer::WordRead, 2);
  gauge->FailNext(Transfer::BlockWrite, 1);
  EXPECT_TRUE(gauge->WriteWord(Gauge::kManufacturerAccessCommand, 1));  // other kinds unharmed
  EXPECT_FALSE(gauge->ReadWord(Gauge::kRelativeStateOfCharge));
  EXPECT_FALSE(gauge->ReadWord(Gauge::kRelativeStateOfCharge));
  EXPECT_EQ(gauge->ReadWord(Gauge::kRelativeStateOfCharge), 80);

  // A failed write never reached the gauge: nothing selected, no errors left.
  EXPECT_FALSE(gauge->WriteBlock(0x20, Bytes(62, 0)));
  EXPECT_FALSE(gauge->ReadBlock(kData));
  EXPECT_EQ(gauge->TakePendingError(), 0);
}

TEST(Gauge, WrongLengthAnswersTruncateOrPadThenStop) {
  VirtualClock clock;
  auto gauge = MakeSampleGauge(Family::Morlin, clock);
  RequestIdentification(*gauge);
  const Bytes block = gauge->IdentificationBlock();

  gauge->AnswerNextBlockReadsWithLength(2, 5);
  EXPECT_FALSE(gauge->ReadBlock(0x99)) << "an unanswered read uses up no wrong length";
  EXPECT_EQ(gauge->ReadBlock(kData), Bytes(block.begin(), block.begin() + 5));
  EXPECT_EQ(gauge->ReadBlock(kData)->size(), 5U);
  EXPECT_EQ(gauge->ReadBlock(kData), block);

  gauge->AnswerNextBlockReadsWithLength(1, 14);
  Bytes padded = block;
  padded.resize(14, 0);
  EXPECT_EQ(gauge->ReadBlock(kData), padded);
}

}  // namespace
}  // namespace ombrelay::sim
