// Every text the voltage and temperature page and the panel's frame show of their own, with the
// limits of the entry boxes and where the pages stand, compared with the list written out in
// tests/traces/panel/.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "panel/nbcal.h"
#include "tests/support/control_texts.h"
#include "tests/support/expected_trace.h"
#include "tests/support/sim_bench.h"

namespace ombrelay {
namespace {

TEST(PanelTexts, TheFirstPageAndTheFrameReadAsWrittenOut) {
  testing::SimBench bench(std::nullopt);
  NBCal panel(bench.host, bench.platform);
  panel.UserControl_Show();  // without a gauge start-up ends after the page's layout

  testing::ControlTexts texts;
  texts.Line("SStabCal \"" + panel.SStabCal.TabCaptions.at(0) + "|" +
             panel.SStabCal.TabCaptions.at(1) + " tab " + std::to_string(panel.SStabCal.Tab) +
             "\"");
  for (std::size_t i = 0; i < panel.picCalibration.size(); ++i) {
    const Picture& page = panel.picCalibration[i];
    texts.Line("picCalibration(" + std::to_string(i) + ") \"" + std::to_string(page.Top) + " " +
               std::to_string(page.Left) + " " + std::to_string(page.Height) + " " +
               std::to_string(page.Width) + (page.Visible ? " shown\"" : " hidden\""));
  }
  texts.Add("chkUpdates", panel.chkUpdates);
  texts.Add("txtVersion", panel.txtVersion);
  texts.Add("lblVTCalibration", panel.lblVTCalibration);
  texts.Add("frmVoltTemp", panel.frmVoltTemp);
  texts.Add("lblHelp(0)", panel.lblHelp[0]);
  texts.Add("chkVoltageCal", panel.chkVoltageCal);
  texts.Add("Label1", panel.Label1);
  texts.Add("lblVoltageEnteredHeading", panel.lblVoltageEnteredHeading);
  texts.Add("lblVoltageMeasuredHeading", panel.lblVoltageMeasuredHeading);
  texts.Add("txtVoltage", panel.txtVoltage);
  texts.Add("txtCalMeasVoltage", panel.txtCalMeasVoltage);
  texts.Add("lblBatVoltage(4)", panel.lblBatVoltage.at(4));
  texts.Add("txtBatVoltageActual", panel.txtBatVoltageActual);
  texts.Add("txtBatMeasured", panel.txtBatMeasured);
  texts.Add("lblCellCountHeading", panel.lblCellCountHeading);
  texts.Add("txtCellCount", panel.txtCellCount);
  texts.Add("Frame1", panel.Frame1);
  texts.Add("chkTemp", panel.chkTemp);
  texts.Add("lblTempEnteredHeading", panel.lblTempEnteredHeading);
  texts.Add("lblTempMeasuredHeading", panel.lblTempMeasuredHeading);
  texts.Add("txtActualTemp", panel.txtActualTemp);
  texts.Add("txtMeasTemp", panel.txtMeasTemp);
  texts.Add("btnCalibrate", panel.btnCalibrate);
  texts.Add("btncalpg1", panel.btncalpg1);
  texts.Add("lblCurrentValues", panel.lblCurrentValues);
  texts.Add("lblCalDF", panel.lblCalDF);
  EXPECT_TRUE(testing::MatchesTrace(texts.Lines(), "panel/texts-of-the-first-page"));
}

}  // namespace
}  // namespace ombrelay
