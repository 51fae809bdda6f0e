#include <gtest/gtest.h>

#include "sim/gauge.h"
#include "sim/keld_dataflash.h"
#include "sim/sample_gauges.h"

namespace ombrelay::sim {
namespace {

constexpr std::uint8_t kAccess = Gauge::kManufacturerAccessCommand;
constexpr std::uint8_t kRowData = Gauge::kSharedDataCommand;

std::optional<Bytes> ReadRow(Gauge& gauge, std::uint16_t row) {
  EXPECT_TRUE(gauge.WriteWord(kAccess, static_cast<std::uint16_t>(0x0100 + row)));
  return gauge.ReadBlock(kRowData);
}

bool WriteRow(Gauge& gauge, std::uint16_t row, const Bytes& data) {
  EXPECT_TRUE(gauge.WriteWord(kAccess, static_cast<std::uint16_t>(0x0100 + row)));
  return gauge.WriteBlock(kRowData, data);
}

Bytes Pattern(std::size_t length, std::uint8_t start) {
  Bytes bytes(length);
  for (std::size_t i = 0; i < length; ++i)
    bytes[i] = static_cast<std::uint8_t>(start + i);
  return bytes;
}

std::optional<Bytes> ReadSubclass(Gauge& gauge, std::uint16_t number) {
  EXPECT_TRUE(gauge.WriteWord(QuillSubclasses::kSelectCommand, number));
  return gauge.ReadBlock(QuillSubclasses::kDataCommand);
}

TEST(DataflashRows, SelectedRowReadsAndWritesWholeRowsOnly) {
  VirtualClock clock;
  for (const Family family : {Family::Morlin, Family::KeldPlus}) {
    SCOPED_TRACE(FamilyName(family));
    Gauge gauge(family, {}, clock);
    gauge.SetDataflashBytes(0, Pattern(96, 0));
    EXPECT_EQ(ReadRow(gauge, 0), Pattern(32, 0));
    EXPECT_EQ(ReadRow(gauge, 2), Pattern(32, 64));
    EXPECT_EQ(ReadRow(gauge, 31), Bytes(32, Dataflash::kErased)) << "1024 bytes, 32 rows";

    EXPECT_TRUE(WriteRow(gauge, 1, Pattern(32, 0x40)));
    EXPECT_EQ(gauge.DataflashBytes(32, 32), Pattern(32, 0x40));
    EXPECT_EQ(gauge.DataflashBytes(0, 32), Pattern(32, 0)) << "neighbours untouched";
    EXPECT_EQ(gauge.DataflashBytes(64, 32), Pattern(32, 64));
    EXPECT_FALSE(gauge.WriteBlock(kRowData, Pattern(31, 9))) << "a short row is refused";
    EXPECT_FALSE(gauge.WriteBlock(kRowData, Pattern(33, 9)));
    EXPECT_EQ(gauge.DataflashBytes(32, 32), Pattern(32, 0x40));

    // The selection stays until another selecting word, so a re-read answers the same row.
    EXPECT_TRUE(gauge.WriteWord(kAccess, 0x0054));
    EXPECT_EQ(gauge.ReadBlock(kRowData), Pattern(32, 0x40));
  }
  Gauge keld(Family::Keld, {}, clock);
  EXPECT_FALSE(ReadRow(keld, 0)) << "KELD has no rows";
}

TEST(Dataflash, SealedRefusesEveryStyleAndUnsealingRestores) {
  VirtualClock clock;
  auto morlin = MakeSampleGauge(Family::Morlin, clock);
  auto keld = MakeSampleGauge(Family::Keld, clock);
  auto quill = MakeSampleGauge(Family::Quill, clock);
  const Bytes before = morlin->DataflashBytes(0, 64);
  for (Gauge* gauge : {morlin.get(), keld.get(), quill.get()})
    gauge->SetSecurityMode(SecurityMode::Sealed);

  EXPECT_FALSE(ReadRow(*morlin, 0));
  EXPECT_FALSE(WriteRow(*morlin, 0, Bytes(32, 0)));
  EXPECT_FALSE(keld->ReadBlock(KeldDataflash::kCalibrationBlockCommand));
  EXPECT_FALSE(keld->WriteBlock(KeldDataflash::kCalibrationBlockCommand, Bytes(64, 0)));
  EXPECT_FALSE(keld->ReadWord(KeldDataflash::kPackConfigurationCommand));
  EXPECT_FALSE(ReadSubclass(*quill, 104));
  EXPECT_FALSE(quill->WriteBlock(QuillSubclasses::kDataCommand, Bytes(32, 0)));
  EXPECT_EQ(morlin->DataflashBytes(0, 64), before);

  for (const SecurityMode mode : {SecurityMode::Unsealed, SecurityMode::FullAccess}) {
    morlin->SetSecurityMode(mode);
    EXPECT_EQ(ReadRow(*morlin, 0), morlin->DataflashBytes(0, 32));
  }
}

TEST(Dataflash, KeldBlockAndQuillSubclasses) {
  VirtualClock clock;
  Gauge keld(Family::Keld, {}, clock);
  EXPECT_TRUE(keld.WriteBlock(0x58, Pattern(64, 3)));
  EXPECT_EQ(keld.ReadBlock(0x58), Pattern(64, 3));
  EXPECT_FALSE(keld.WriteBlock(0x58, Pattern(32, 0))) << "the block goes whole";
  keld.SetDataflashBytes(KeldDataflash::kPackConfigurationAddress, Bytes{0x2B, 0x41});
  EXPECT_EQ(keld.ReadWord(0x2F), 0x2B41) << "high byte first in dataflash";

  Gauge quill(Family::Quill, {}, clock);
  quill.SetDataflashBytes(0, Pattern(72, 0));
  EXPECT_EQ(ReadSubclass(quill, 104), Pattern(32, 0));
  EXPECT_EQ(ReadSubclass(quill, 64), Pattern(8, 64));
  EXPECT_FALSE(quill.WriteBlock(0x78, Pattern(32, 0x90))) << "64 is 8 bytes long";
  EXPECT_TRUE(quill.WriteBlock(0x78, Pattern(8, 0x90)));
  EXPECT_EQ(quill.DataflashBytes(64, 8), Pattern(8, 0x90));
  EXPECT_EQ(quill.DataflashBytes(0, 32), Pattern(32, 0)) << "subclass 104 untouched";
  EXPECT_FALSE(ReadSubclass(quill, 65)) << "no such subclass, nothing selected";
  EXPECT_FALSE(quill.WriteBlock(0x78, Pattern(8, 0)));
}

TEST(Dataflash, SamplesConfigureTheirCellsEachInItsOwnStyle) {
  VirtualClock clock;
  const auto keld = MakeSampleGauge(Family::Keld, clock);
  EXPECT_EQ((*keld->ReadWord(0x2F) >> 8 & 3) + 1, 4);
  const auto quill = MakeSampleGauge(Family::Quill, clock);
  EXPECT_EQ((ReadSubclass(*quill, 64)->at(0) & 3) + 1, 3);
  const auto morlin = MakeSampleGauge(Family::Morlin, clock);
  EXPECT_EQ(ReadRow(*morlin, 10)->at(1) & 3, 2) << "second byte of 320: 3 cells";
  const auto keldPlus = MakeSampleGauge(Family::KeldPlus, clock);
  EXPECT_EQ(ReadRow(*keldPlus, 14)->at(0) & 3, 3) << "first byte of 448: 4 cells";

  // Factory calibration, high byte first, nominal for a perfect converter: MORLIN's cell
  // scales and gains; KELD's pack gain and alternative scales; QUILL's VCell scales and pack gain.
  Bytes nominal;
  for (int word = 0; word < 6; ++word)
    nominal.insert(nominal.end(), {0x50, 0x00});
  EXPECT_EQ(ReadRow(*morlin, 0)->at(0), 20480 >> 8);
  EXPECT_EQ(morlin->DataflashBytes(0, 12), nominal);
  EXPECT_EQ(keldPlus->DataflashBytes(0, 12), nominal);
  EXPECT_EQ(keld->DataflashBytes(19, 10), Bytes(nominal.begin(), nominal.begin() + 10));
  EXPECT_EQ(quill->DataflashBytes(8, 8), Bytes(nominal.begin(), nominal.begin() + 8));
  EXPECT_EQ(quill->DataflashBytes(17, 2), (Bytes{0x50, 0x00}));
  for (const auto* gauge : {keld.get(), quill.get(), morlin.get(), keldPlus.get()})
    EXPECT_EQ(gauge->GetSecurityMode(), SecurityMode::Unsealed);
}

TEST(Dataflash, InjectedReadBackAndWriteFaults) {
  VirtualClock clock;
  Gauge gauge(Family::Morlin, {}, clock);
  gauge.SetDataflashBytes(0, Pattern(64, 0));

  // Two spoilt writes in turn: byte 4 of the first, byte 3 of the second.
  gauge.StoreWrongDataflashByteOnNextWrite(4);
  gauge.StoreWrongDataflashByteOnNextWrite(3);
  EXPECT_TRUE(WriteRow(gauge, 0, Pattern(32, 0x10)));
  EXPECT_TRUE(WriteRow(gauge, 1, Pattern(32, 0x30)));
  EXPECT_TRUE(WriteRow(gauge, 2, Pattern(32, 0x50)));
  Bytes first = Pattern(32, 0x10);
  first[4] = static_cast<std::uint8_t>(~first[4]);
  Bytes second = Pattern(32, 0x30);
  second[3] = static_cast<std::uint8_t>(~second[3]);
  EXPECT_EQ(gauge.DataflashBytes(0, 32), first);
  EXPECT_EQ(gauge.DataflashBytes(32, 32), second);
  EXPECT_EQ(gauge.DataflashBytes(64, 32), Pattern(32, 0x50));

  // A spoilt read changes what arrives, not what is stored; words count low byte as byte 0.
  gauge.CorruptNextRead(Transfer::BlockRead, 7);
  Bytes spoilt = Pattern(32, 0x50);
  spoilt[7] = static_cast<std::uint8_t>(~spoilt[7]);
  EXPECT_EQ(gauge.ReadBlock(kRowData), spoilt);
  EXPECT_EQ(gauge.ReadBlock(kRowData), Pattern(32, 0x50));
  gauge.CorruptNextRead(Transfer::WordRead, 1);
  EXPECT_EQ(gauge.ReadWord(Gauge::kRelativeStateOfCharge), 0xFF00 | Gauge::kDefaultStateOfCharge);
  EXPECT_EQ(gauge.ReadWord(Gauge::kRelativeStateOfCharge), Gauge::kDefaultStateOfCharge);
}

}  // namespace
}  // namespace ombrelay::sim
