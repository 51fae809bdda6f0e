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

// What the gauge layer's own tests do not reach: the ends of the dataflash and refused sizes.
TEST(Dataflash, RowsBlocksAndSubclassesGoWholeOrNotAtAll) {
  VirtualClock clock;
  for (const Family family : {Family::Morlin, Family::KeldPlus}) {
    SCOPED_TRACE(FamilyName(family));
    Gauge gauge(family, {}, clock);
    gauge.SetDataflashBytes(0, Pattern(64, 0));
    EXPECT_EQ(ReadRow(gauge, 31), Bytes(32, Dataflash::kErased)) << "1024 bytes, 32 rows";
    EXPECT_FALSE(WriteRow(gauge, 1, Pattern(31, 9))) << "a short row is refused";
    EXPECT_FALSE(gauge.WriteBlock(kRowData, Pattern(33, 9)));
    EXPECT_EQ(gauge.DataflashBytes(32, 32), Pattern(32, 32));
  }
  Gauge keld(Family::Keld, {}, clock);
  EXPECT_FALSE(ReadRow(keld, 0)) << "KELD has no rows";
  EXPECT_FALSE(keld.WriteBlock(KeldDataflash::kCalibrationBlockCommand, Pattern(32, 0)));

  Gauge quill(Family::Quill, {}, clock);
  EXPECT_FALSE(quill.WriteBlock(QuillSubclasses::kDataCommand, Pattern(8, 0))) << "none selected";
  EXPECT_EQ(ReadSubclass(quill, 64)->size(), 8U);
  EXPECT_FALSE(quill.WriteBlock(QuillSubclasses::kDataCommand, Pattern(32, 0x90)));
  EXPECT_FALSE(ReadSubclass(quill, 65)) << "no such subclass, nothing selected";
  EXPECT_FALSE(quill.WriteBlock(QuillSubclasses::kDataCommand, Pattern(8, 0)));
}

}  // namespace
}  // namespace ombrelay::sim
