// The two grids beside the pages, the live block values and the calibration parameters, and the
// arrangement of the voltage and temperature page for the device.

#include <string>

#include "gauge/calibration_layout.h"
#include "panel/nbcal.h"
#include "shell/numeric.h"
#include "shell/platform.h"
#include "shell/shared_state.h"

namespace ombrelay {
namespace {

constexpr int kGridLeft = 10000;
constexpr int kGridWidth = 2800;
constexpr int kRowHeight = 255;
constexpr int kGGModeGridTop = 1000;
constexpr int kLabelAboveGrid = 500;

// The settings both grids share: two columns, a fixed heading row and name column.
void ApplyGridSettings(Grid& grid, int top, int left, int rows) {
  grid.SetCols(2);
  grid.SetRows(rows);
  grid.FixedCols = 1;
  grid.FixedRows = 1;
  for (int row = 0; row < rows; ++row)
    grid.SetRowHeight(row, kRowHeight);
  grid.Width = kGridWidth;
  grid.SetColWidth(0, kGridWidth / 20 * 12);
  grid.SetColWidth(1, kGridWidth / 20 * 8);
  grid.Top = top;
  grid.Left = left;
  for (const auto& [col, text] : {std::pair{0, "Parameter"}, std::pair{1, "Value"}}) {
    GridCell& cell = grid.Cell(0, col);
    cell.Text = text;
    cell.Alignment = CellAlignment::Centre;
    cell.FontSize = 9;
    cell.Bold = true;
  }
}

void SetValueCell(Grid& grid, int row, const std::string& value) {
  GridCell& cell = grid.Cell(row, 1);
  cell.Text = value;
  cell.Alignment = CellAlignment::Centre;
}

}  // namespace

void NBCal::SetUpGGModeGrid() {
  try {
    lblCurrentValues.Top = kGGModeGridTop - kLabelAboveGrid;
    lblCurrentValues.Left = kGridLeft;
    lblCurrentValues.Visible = true;
    int rows = g_bTS3Supported ? 16 : 14;
    if (g_bInternalTSandTS1only) rows -= 2;
    InitGrid(kGGModeGridTop, kGridLeft, ToInt16(rows));
    const std::int16_t voltagesEnd = AddMODBlocktoGrid(1, 0);
    AddMODBlocktoGrid(ToInt16(voltagesEnd + 1), 1);
    displaygrid.Height = displaygrid.RowHeight(1) * rows - 125;
  } catch (const RuntimeError&) {
    MsgBox("Error initializing voltage/temperature mode grid.");
  }
}

void NBCal::InitGrid(std::int16_t iTop, std::int16_t iLeft, std::int16_t iRows) {
  try {
    ApplyGridSettings(displaygrid, iTop, iLeft, iRows);
  } catch (const RuntimeError&) {
    MsgBox("Error creating grid 0.");
  }
}

std::int16_t NBCal::AddMODBlocktoGrid(std::int16_t iStartRow, std::int16_t dataIndex) {
  try {
    MODBlock& block = g_atMODBlocks.at(static_cast<std::size_t>(dataIndex));
    GridCell& heading = displaygrid.Cell(iStartRow, 0);
    heading.Text = block.sName;
    heading.Bold = true;
    SetValueCell(displaygrid, iStartRow, "----");
    int row = iStartRow;
    for (int k = 0; k < block.lFieldCount; ++k) {
      MODField& field = block.atFields.at(static_cast<std::size_t>(k));
      ++row;
      GridCell& name = displaygrid.Cell(row, 0);
      name.Text = field.sName;
      name.Alignment = CellAlignment::Left;
      SetValueCell(displaygrid, row, field.sValue);
      field.iGridRow = ToInt16(row);
      block.bActive = true;
    }
    return ToInt16(row);
  } catch (const std::exception&) {
    MsgBox("Error adding block of MOD data to Grid number  " + std::to_string(dataIndex) + ".");
    return 0;
  }
}

void NBCal::SetUpDFGrid() {
  const int top = g_iDFType == MORLIN ? 5500 : 2500;
  lblCalDF.Top = top - kLabelAboveGrid;
  lblCalDF.Left = kGridLeft;
  const std::int16_t record = CalBlockIndex();
  g_atCalParameters[0].atFields[14].bInCalData = g_bTS3Supported;
  g_atCalParameters[0].atFields[15].bInCalData = g_bTS4Supported;
  InitDFGrid(ToInt16(top), kGridLeft, record);
}

void NBCal::InitDFGrid(std::int16_t iTop, std::int16_t iLeft, std::int16_t iRecord) {
  try {
    MODBlock& parameters = g_atCalParameters.at(static_cast<std::size_t>(iRecord));
    int shown = 0;
    for (int slot = 0; slot <= parameters.lFieldCount; ++slot) {
      if (parameters.atFields.at(static_cast<std::size_t>(slot)).bInCalData) ++shown;
    }
    ApplyGridSettings(DFGrid, iTop, iLeft, shown + 2);
    DFGrid.Height = DFGrid.RowHeight(1) * (shown + 1) - (g_iDFType == QUILL ? 100 : 50);
    int row = 1;
    for (int slot = 0; slot <= parameters.lFieldCount; ++slot) {
      MODField& field = parameters.atFields[static_cast<std::size_t>(slot)];
      if (!field.bInCalData) continue;
      DFGrid.Cell(row, 0).Text = field.sName;
      SetValueCell(DFGrid, row, field.sValue);
      field.iGridRow = ToInt16(row);
      ++row;
    }
  } catch (const std::exception&) {
    MsgBox("Error initializing Data Flash Grid.");
  }
}

void NBCal::TransferCurrentValuestoGrid(std::int16_t Index) {
  const MODBlock& block = g_atMODBlocks.at(static_cast<std::size_t>(Index));
  for (int k = 0; k < block.lFieldCount; ++k) {
    const MODField& field = block.atFields.at(static_cast<std::size_t>(k));
    displaygrid.Cell(field.iGridRow, 1).Text = field.sValue;
  }
}

void NBCal::TransferDFValuestoGrid() {
  const MODBlock& parameters = g_atCalParameters.at(static_cast<std::size_t>(CalBlockIndex()));
  for (int slot = 0; slot <= parameters.lFieldCount; ++slot) {
    const MODField& field = parameters.atFields.at(static_cast<std::size_t>(slot));
    if (field.bInCalData) DFGrid.Cell(field.iGridRow, 1).Text = field.sValue;
  }
}

void NBCal::AlignTemperatureControls() {
  for (CheckBox& box : chkTemp)
    box.Left = 200;
}

void NBCal::ArrangePageforDevice() {
  if (g_iDFType == KELD) {
    displaygrid.Visible = false;
    chkTemp[1].Caption = "External Temperature";
  }
  if (!g_bBatteryVSupported) {
    txtBatMeasured.Visible = false;
    txtBatVoltageActual.Visible = false;
    lblCalibration[26].Visible = false;
    lblBatVoltage[4].Visible = false;
    lblCalibrationBat.Visible = false;
  }
  if (!g_bPackVSupported) frmPackCal.Visible = false;
  const std::array<bool, 5> sensors = {g_bIntTSSupported, true, g_bTS2Supported, g_bTS3Supported,
                                       g_bTS4Supported};
  for (std::size_t i = 0; i < sensors.size(); ++i) {
    if (sensors[i]) continue;
    chkTemp[i].Visible = false;
    txtMeasTemp[i].Visible = false;
    txtActualTemp[i].Visible = false;
    lbldegCmeasured[i].Visible = false;
    lbldegCmeasured[i + 5].Visible = false;
  }
  if (g_iNumCells == 4) {
    for (std::size_t row = 1; row <= 3; ++row) {
      txtCalMeasVoltage[row].Visible = txtCalMeasVoltage[row].Enabled = true;
      txtVoltage[row].Visible = txtVoltage[row].Enabled = true;
    }
    Label1[3].Visible = lblCalibration[19].Visible = lblCalibration[22].Visible = true;
  }
  if (g_iNumCells < 4) {
    txtCalMeasVoltage[3].Visible = txtVoltage[3].Visible = Label1[3].Visible = true;
    txtCalMeasVoltage[3].Enabled = txtVoltage[3].Enabled = false;
    txtCalMeasVoltage[2].Enabled = txtVoltage[2].Enabled = txtVoltage[1].Enabled = true;
  }
  if (g_iNumCells < 3) {
    txtVoltage[2].Enabled = txtCalMeasVoltage[2].Enabled = false;
    txtVoltage[1].Enabled = true;
  }
  if (g_bRemoveCell4onDisplay) {
    txtCalMeasVoltage[3].Visible = txtVoltage[3].Visible = Label1[3].Visible = false;
    lblCalibration[19].Visible = lblCalibration[22].Visible = false;
  }
  if (!g_bTS3Supported && !g_bTS4Supported) frmPackCal.Top = 2400;
}

}  // namespace ombrelay
