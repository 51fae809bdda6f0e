#include "calibration/calibration_tables.h"

#include <cstddef>
#include <initializer_list>

#include "shell/shared_state.h"

namespace ombrelay {
namespace {

struct BlockFieldRow {
  const char* name;
  const char* type;
  const char* offset;
  const char* units;
};

struct CalFieldRow {
  const char* name;
  const char* type;
  const char* offset;
  const char* units;
  const char* value;
  const char* mapName;
  bool inCalData;
};

MODBlock Block(std::int16_t command, const char* name, std::int32_t dataCommand,
               std::int32_t fieldCount, bool active) {
  MODBlock block;
  block.iCommand = command;
  block.sName = name;
  block.lDataCommand = dataCommand;
  block.lFieldCount = fieldCount;
  block.bActive = active;
  return block;
}

MODBlock LiveBlock(std::int16_t command, const char* name, std::int32_t dataCommand,
                   std::int32_t fieldCount, bool active,
                   std::initializer_list<BlockFieldRow> rows) {
  MODBlock block = Block(command, name, dataCommand, fieldCount, active);
  std::size_t slot = 0;
  for (const BlockFieldRow& row : rows) {
    MODField& field = block.atFields[slot++];
    field.sName = row.name;
    field.sDataType = row.type;
    field.sOffset = row.offset;
    field.sUnits = row.units;
    field.sValue = "0";
  }
  return block;
}

MODBlock CalRecord(std::int16_t command, const char* name, std::int32_t dataCommand,
                   std::initializer_list<CalFieldRow> rows) {
  // Here lFieldCount is the highest field index: the loops over a record include it.
  MODBlock record = Block(command, name, dataCommand, 15, false);
  std::size_t slot = 0;
  for (const CalFieldRow& row : rows) {
    MODField& field = record.atFields[slot++];
    field.sName = row.name;
    field.sDataType = row.type;
    field.sOffset = row.offset;
    field.sUnits = row.units;
    field.sValue = row.value;
    field.sMapName = row.mapName;
    field.bInCalData = row.inCalData;
  }
  return record;
}

void FillMODBlocks() {
  g_atMODBlocks = {};
  g_atMODBlocks[0] = LiveBlock(0x0071, "Voltages", 0x23, 6, true,
                               {{"Cell Voltage 1", "U2", "0", "mV"},
                                {"Cell Voltage 2", "U2", "2", "mV"},
                                {"Cell Voltage 3", "U2", "4", "mV"},
                                {"Cell Voltage 4", "U2", "6", "mV"},
                                {"Battery Voltage", "U2", "8", "mV"},
                                {"Pack Voltage", "U2", "10", "mV"}});
  g_atMODBlocks[1] = LiveBlock(0x0072, "Temperatures", 0x23, 7, true,
                               {{"Internal Temp", "T2", "0", "degC"},
                                {"TS1 Temp", "T2", "2", "degC"},
                                {"TS2 Temp", "T2", "4", "degC"},
                                {"TS3 Temp", "T2", "6", "degC"},
                                {"TS4 Temp", "T2", "8", "degC"},
                                {"Cell Temp", "T2", "10", "degC"},
                                {"FET Temp", "T2", "12", "degC"}});
  // Bytes 16 to 19 are not decoded; slot 11 lies beyond the count and is read by index.
  g_atMODBlocks[2] = LiveBlock(0x0082, "Raw Cal Values", 0x23, 11, true,
                               {{"Rolling Counter", "U1", "0", "--"},
                                {"Status Byte", "U1", "1", "--"},
                                {"Coulomb Counter", "I2", "2", "--"},
                                {"Cell Voltage 1", "U2", "4", "mV"},
                                {"Cell Voltage 2", "U2", "6", "mV"},
                                {"Cell Voltage 3", "U2", "8", "mV"},
                                {"Cell Voltage 4", "U2", "10", "mV"},
                                {"TInt", "I2", "12", "--"},
                                {"TS1", "I2", "14", "--"},
                                {"TS4", "I2", "20", "--"},
                                {"Pack Voltage", "U2", "22", "--"},
                                {"Bat Voltage", "U2", "24", "--"}});
  // Filled from the SBS Current word, never read as a block.
  g_atMODBlocks[3] =
      LiveBlock(0x000A, "Current", 0x0A, 1, false, {{"Pack Current", "I2", "0", "mA"}});
}

void FillCalParameters() {
  g_atCalParameters = {};
  g_atCalParameters[0] =
      CalRecord(0, "Calibration", 23,
                {{"Cell Scale 0", "I2", "0", "-", "20451", "Cell Scale 0", true},
                 {"Cell Scale 1", "I2", "2", "-", "20468", "Cell Scale 1", true},
                 {"Cell Scale 2", "I2", "4", "-", "20520", "ScaleCell0", true},
                 {"Cell Scale 3", "I2", "6", "-", "20455", "ScaleCell1", true},
                 {"Pack Gain", "U2", "8", "-", "41000", "", true},
                 {"Battery Gain", "U2", "10", "-", "44100", "", true},
                 {"CC Gain", "F4", "12", "-", "0.9419", "CC Gain", true},
                 {"Capacity Gain", "F4", "16", "-", "280932.625", "Capacity Gain", true},
                 {"Current Offset", "I2", "20", "-", "-7204", "Current Offset", true},
                 {"CC Offset Samples", "I2", "22", "-", "64", "", true},
                 {"Board Offset", "I2", "24", "-", "0", "", true},
                 {"Int Temp Offset", "I1", "26", ".1 deg C", "0", "IntTS", true},
                 {"Ext 1 Temp Offset", "I1", "27", ".1 deg C", "0", "ExtTS1", true},
                 {"Ext 2 Temp Offset", "I1", "28", ".1 deg C", "0", "ExtTS2", true},
                 {"Ext 3 Temp Offset", "I1", "29", ".1 deg C", "0", "ExtTS3", false},
                 {"Ext 4 Temp Offset", "I1", "30", ".1 deg C", "0", "ExtTS4", false}});
  // Records 1 and 2 leave slot 15 empty; its empty type makes every loop pass it by.
  g_atCalParameters[1] = CalRecord(0x0082, "Calibration Dataflash", 35,
                                   {{"Sense Resistor Gain", "F4", "0", "--", "0", "", true},
                                    {"Coulomb Cnt Delta", "F4", "4", "--", "0", "", true},
                                    {"CC Offset", "I2", "8", "--", "-7000", "", true},
                                    {"Int Temp Offset", "I1", "11", ".0.1K", "0", "", true},
                                    {"Temp Offset", "I1", "12", "0,1K", "0", "", true},
                                    {"Aux Temp Offset", "I1", "13", "mV", "0", "", false},
                                    {"Board Offset", "I2", "14", "--", "0", "", true},
                                    {"CC Offset Samples", "I2", "16", "--", "64", "", true},
                                    {"Alt Cell 1 Scale", "U2", "21", "--", "20500", "", true},
                                    {"Alt Cell 2 Scale", "U2", "23", "--", "20501", "", true},
                                    {"Alt Cell 3 Scale", "U2", "25", "--", "20502", "", true},
                                    {"Alt Cell 4 Scale", "U2", "27", "--", "20503", "", true},
                                    {"Ext 3 Temp Offset", "I1", "28", ".1 deg C", "0", "", false},
                                    {"Ext 4 Temp Offset", "I1", "29", ".1 deg C", "0", "", false},
                                    {"Pack Gain", "U2", "19", "-", "22050", "", false}});
  g_atCalParameters[2] = CalRecord(0x0082, "Calibration Dataflash", 35,
                                   {{"Sense Resistor Gain", "F4", "0", "--", "0", "", true},
                                    {"Coulomb Counter Delta", "F4", "4", "--", "0", "", true},
                                    {"VCell 1 Scale Factor", "U2", "8", "--", "20500", "", true},
                                    {"VCell 2 Scale Factor", "U2", "10", "---", "20500", "", true},
                                    {"VCell 3 Scale Factor", "U2", "12", "---", "20500", "", true},
                                    {"VCell 4 Scale Factor", "U2", "14", "---", "20500", "", true},
                                    {"AFE Pack Gain", "I2", "17", "--", "0", "", true},
                                    {"CC Offset", "I2", "19", "--", "-7744", "", true},
                                    {"Board Offset", "I2", "21", "--", "0", "", true},
                                    {"Int Temp Offset", "I1", "23", "--", "0", "", true},
                                    {"Ext 1 Temp Offset", "I1", "24", "--", "0", "", true},
                                    {"Ext 2 Temp Offset", "I1", "25", "--", "0", "", true},
                                    {"Ext 3 Temp Offset", "I1", "26", "--", "0", "", false},
                                    {"Ext 4 Temp Offset", "I1", "27", "--", "0", "", false},
                                    {"Battery Gain", "U2", "27", "--", "0", "", false}});
}

}  // namespace

void CalInit() {
  FillMODBlocks();
  FillCalParameters();
  g_sngFlashReadDelay = 0.02F;
  g_sngFlashWriteDelay = 0.132F;
}

}  // namespace ombrelay
