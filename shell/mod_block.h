#pragma once
// The record of the block table and of the calibration parameter table: a block selected by a
// ManufacturerAccess word, and up to 18 fields decoded from it. Every value is held as text.

#include <array>
#include <cstdint>
#include <string>

namespace ombrelay {

struct MODField {
  std::string sName;  // empty marks a free slot
  std::string sDataType;
  std::string sOffset;
  std::string sUnits;
  std::string sNote;
  std::string sValue;
  std::string sMapName;
  std::int16_t iGridRow = 0;
  bool bInCalData = false;
};

inline constexpr int kMODFieldSlots = 18;

struct MODBlock {
  std::int16_t iCommand = 0;
  std::string sName;
  std::int32_t lDataCommand = 0;
  std::int32_t lFieldCount = 0;
  bool bActive = false;
  std::array<MODField, kMODFieldSlots> atFields{};
};

}  // namespace ombrelay
