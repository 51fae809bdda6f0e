#include "sim/gauge.h"

#include <gtest/gtest.h>

#include "sim/family.h"
#include "sim/sample_gauges.h"

namespace ombrelay::sim {
namespace {

constexpr std::uint8_t kData = Gauge::kSharedDataCommand;

void RequestIdentification(Gauge& gauge) {
  const Bytes zeros(62, 0);
  for (const std::uint8_t command : {0x22, 0x20, 0x22})
    EXPECT_TRUE(gauge.WriteBlock(command, zeros));
}

std::vector<std::int32_t> DrainErrors(Gauge& gauge) {
  std::vector<std::int32_t> errors;
  while (const std::int32_t error = gauge.TakePendingError())
    errors.push_back(error);
  return errors;
}

TEST(Family, NamesRoundTripInAnyCase) {
  for (const Family family : {Family::Keld, Family::Quill, Family::Morlin, Family::KeldPlus}) {
    EXPECT_EQ(FamilyFromName(FamilyName(family)), family);
  }
  EXPECT_EQ(FamilyName(Family::KeldPlus), "keld_plus");
  EXPECT_EQ(FamilyFromName("KeLd_PlUs"), Family::KeldPlus);
  for (const char* name : {"", "keld ", "keldplus", "morlinx", "k"}) {
    EXPECT_FALSE(FamilyFromName(name)) << name;
  }
}

TEST(Gauge, SamplesAnswerTheirIdentificationBlocksAfterTheRequest) {
  const std::vector<std::pair<Family, Bytes>> samples = {
      {Family::Morlin, {0x4D, 0x31, 0x02, 0x05, 0x00, 0x20, 1, 0, 0, 0, 0}},
      {Family::Keld, {0x0B, 0x12, 0x01, 0x07, 0x00, 0x12, 2, 0, 0, 0, 0}},
      {Family::Quill, {0x51, 0x20, 0x03, 0x01, 0x01, 0x01, 255, 0, 0, 4, 0}},
      {Family::KeldPlus, {0x4B, 0x60, 0x01, 0x10, 0x00, 0x03, 0, 0, 0, 0, 1, 0, 5}}};
  VirtualClock clock;
  for (const auto& [family, expected] : samples) {
    SCOPED_TRACE(FamilyName(family));
    auto gauge = MakeSampleGauge(family, clock);
    EXPECT_EQ(gauge->GetFamily(), family);
    EXPECT_FALSE(gauge->ReadBlock(kData)) << "nothing selected yet";
    RequestIdentification(*gauge);
    EXPECT_EQ(gauge->ReadBlock(kData), expected);
    EXPECT_FALSE(gauge->WriteBlock(kData, expected)) << "identification is read-only";
    // Each sample leaves one or two errors behind its request, then the bus is clean.
    const auto errors = DrainErrors(*gauge);
    EXPECT_GE(errors.size(), 1U);
    EXPECT_LE(errors.size(), 2U);
  }
}

TEST(Gauge, AnyRawIdentificationBlockIsAnsweredAsSet) {
  VirtualClock clock;
  Gauge gauge(Family::KeldPlus, {}, clock);
  EXPECT_TRUE(gauge.WriteBlock(0x22, Bytes(62, 0)));
  const std::vector<Bytes> blocks = {
      {0x4B, 0x60, 1, 0x10, 0, 3, 0, 0, 0, 0, 2, 0, 5}, Bytes(12, 1), {}, Bytes(255, 0xAA)};
  for (const auto& block : blocks) {
    gauge.SetIdentificationBlock(block);
    EXPECT_EQ(gauge.ReadBlock(kData), block);
  }
}

TEST(Gauge, PendingErrorsAreHandedOutOneByOneOldestFirst) {
  VirtualClock clock;
  Gauge gauge(Family::Morlin, {}, clock);
  RequestIdentification(gauge);
  EXPECT_TRUE(DrainErrors(gauge).empty()) << "a plain gauge leaves no errors";

  gauge.SetIdentificationRequestErrors(3);
  gauge.QueuePendingErrors(1, 7);
  RequestIdentification(gauge);    // only the write on 0x20 leaves errors
  gauge.QueuePendingErrors(2, 0);  // 0 is no error
  EXPECT_EQ(DrainErrors(gauge), (std::vector<std::int32_t>{7, 1, 1, 1}));
  EXPECT_EQ(gauge.TakePendingError(), 0);
}

TEST(Gauge, WordsUnknownCommandsAndManufacturerAccess) {
  VirtualClock clock;
  Gauge gauge(Family::Morlin, {}, clock);
  EXPECT_EQ(gauge.ReadWord(Gauge::kRelativeStateOfCharge), 80);
  gauge.SetWord(Gauge::kRelativeStateOfCharge, 0xFFFF);
  EXPECT_EQ(gauge.ReadWord(Gauge::kRelativeStateOfCharge), 0xFFFF);
  EXPECT_FALSE(gauge.WriteWord(Gauge::kRelativeStateOfCharge, 5));
  EXPECT_FALSE(gauge.ReadWord(0x99));
  EXPECT_FALSE(gauge.ReadBlock(0x99));
  EXPECT_FALSE(gauge.WriteBlock(0x99, Bytes{1}));

  EXPECT_EQ(gauge.ReadWord(Gauge::kManufacturerAccessCommand), 0);
  EXPECT_TRUE(gauge.WriteWord(Gauge::kManufacturerAccessCommand, 0x1234));  // unknown: accepted
  EXPECT_EQ(gauge.ReadWord(Gauge::kManufacturerAccessCommand), 0x1234);

  // A part of the gauge can make a word select what the shared data command carries.
  Bytes written;
  gauge.GetManufacturerAccess().On(0x0054, [&] {
    gauge.SharedData().Select({[]() -> std::optional<Bytes> {
                                 return Bytes{9, 8};
                               },
                               [&](std::span<const std::uint8_t> data) {
                                 written.assign(data.begin(), data.end());
                                 return true;
                               }});
  });
  EXPECT_FALSE(gauge.ReadBlock(kData));
  EXPECT_TRUE(gauge.WriteWord(Gauge::kManufacturerAccessCommand, 0x0054));
  EXPECT_EQ(gauge.ManufacturerAccessWord(), 0x0054);
  EXPECT_EQ(gauge.ReadBlock(kData), (Bytes{9, 8}));
  EXPECT_TRUE(gauge.WriteBlock(kData, Bytes{1, 2, 3}));
  EXPECT_EQ(written, (Bytes{1, 2, 3}));
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

  RequestIdentification(*gauge);
  gauge->FailNext(Transfer::BlockRead, 1);
  gauge->FailNext(Transfer::WordWrite, 3);
  gauge->FailNext(Transfer::WordWrite, 0);  // a new count replaces the old
  EXPECT_TRUE(gauge->WriteWord(Gauge::kManufacturerAccessCommand, 1));
  EXPECT_FALSE(gauge->ReadBlock(kData));
  EXPECT_EQ(gauge->ReadBlock(kData)->size(), 11U);
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
  gauge->AnswerNextBlockReadsWithLength(1, 0);
  EXPECT_EQ(gauge->ReadBlock(kData), Bytes{});
}

TEST(Gauge, DisconnectedGaugeFailsEveryTransferUntilReconnected) {
  VirtualClock clock;
  auto gauge = MakeSampleGauge(Family::Keld, clock);
  RequestIdentification(*gauge);
  gauge->SetDisconnected(true);
  EXPECT_FALSE(gauge->ReadWord(Gauge::kRelativeStateOfCharge));
  EXPECT_FALSE(gauge->WriteWord(Gauge::kManufacturerAccessCommand, 1));
  EXPECT_FALSE(gauge->ReadBlock(kData));
  EXPECT_FALSE(gauge->WriteBlock(0x22, Bytes(62, 0)));
  gauge->SetDisconnected(false);
  EXPECT_EQ(gauge->ReadBlock(kData), gauge->IdentificationBlock());
}

}  // namespace
}  // namespace ombrelay::sim
