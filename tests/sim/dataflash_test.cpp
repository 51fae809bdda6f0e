#include <gtest/gtest.h>

#include "sim/gauge.h"
#include "sim/keld_dataflash.h"
#include "sim/quill_subclasses.h"

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

}  // namespace
}  // namespace ombrelay::sim
