// The block and calibration parameter tables as CalInit builds them, every header and field
// compared with the table written out in tests/traces/tables/.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "calibration/calibration_tables.h"
#include "shell/shared_state.h"
#include "tests/support/expected_trace.h"

namespace ombrelay {
namespace {

std::string Hex4(std::int32_t value) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text = "0x0000";
  for (int i = 0; i < 4; ++i)
    text[5 - i] = kDigits[(value >> (4 * i)) & 0xF];
  return text;
}

// One line for the record's header, one for each slot that has a name or a type, in the form of
// the table file.
void Describe(const std::string& what, const MODBlock& block, std::vector<std::string>& lines) {
  lines.push_back(what + " " + Hex4(block.iCommand) + " \"" + block.sName + "\" data " +
                  Hex4(block.lDataCommand) + " fields " + std::to_string(block.lFieldCount) +
                  (block.bActive ? " active" : " inactive"));
  for (std::size_t i = 0; i < block.atFields.size(); ++i) {
    const MODField& field = block.atFields[i];
    if (field.sName.empty() && field.sDataType.empty()) continue;
    lines.push_back(std::to_string(i) + " \"" + field.sName + "\" " + field.sDataType + " @" +
                    field.sOffset + " \"" + field.sUnits + "\" = \"" + field.sValue + "\" map \"" +
                    field.sMapName + "\"" + (field.bInCalData ? " grid" : "") +
                    (field.sNote.empty() ? "" : " note \"" + field.sNote + "\""));
  }
}

TEST(CalInit, BuildsBothTablesAsWrittenOut) {
  ResetSharedState();
  CalInit();
  std::vector<std::string> lines;
  for (std::size_t i = 0; i < g_atMODBlocks.size(); ++i)
    Describe("block " + std::to_string(i), g_atMODBlocks[i], lines);
  for (std::size_t i = 0; i < g_atCalParameters.size(); ++i)
    Describe("record " + std::to_string(i), g_atCalParameters[i], lines);
  lines.push_back("read delay " + std::to_string(g_sngFlashReadDelay));
  lines.push_back("write delay " + std::to_string(g_sngFlashWriteDelay));
  EXPECT_TRUE(testing::MatchesTrace(lines, "tables/cal-init"));
  ResetSharedState();
}

}  // namespace
}  // namespace ombrelay
