// Every text the voltage and temperature page and the panel's frame show of their own, with the
// limits of the entry boxes and where the pages stand, compared with the list written out in
// tests/traces/panel/.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "panel/nbcal.h"
#include "tests/support/expected_trace.h"
#include "tests/support/sim_bench.h"

namespace ombrelay {
namespace {

// Line breaks show as \r and \n, so that each text stays on its line.
std::string Visible(const std::string& text) {
  std::string shown;
  for (const char c : text) {
    if (c == '\r') {
      shown += "\\r";
    } else if (c == '\n') {
      shown += "\\n";
    } else {
      shown += c;
    }
  }
  return shown;
}

class Texts {
 public:
  void Add(const std::string& name, const std::string& caption, const std::string& tip = {}) {
    lines_.push_back(name + " \"" + Visible(caption) + "\"" +
                     (tip.empty() ? "" : " tip \"" + tip + "\""));
  }
  void Add(const std::string& name, const TextBox& box) {
    lines_.push_back(name + " text \"" + box.Text + "\"" + (box.Locked ? " read-only" : "") +
                     (box.MaxLength > 0 ? " max " + std::to_string(box.MaxLength) : "") +
                     (box.ToolTipText.empty() ? "" : " tip \"" + box.ToolTipText + "\""));
  }
  template <typename Control, std::size_t N>
  void AddAll(const std::string& name, const std::array<Control, N>& controls) {
    for (std::size_t i = 0; i < N; ++i) {
      const std::string indexed = name + "(" + std::to_string(i) + ")";
      if constexpr (std::is_same_v<Control, TextBox>) {
        Add(indexed, controls[i]);
      } else {
        Add(indexed, controls[i].Caption);
      }
    }
  }
  const std::vector<std::string>& Lines() const { return lines_; }

 private:
  std::vector<std::string> lines_;
};

TEST(PanelTexts, TheFirstPageAndTheFrameReadAsWrittenOut) {
  testing::SimBench bench(std::nullopt);
  NBCal panel(bench.host, bench.platform);
  panel.UserControl_Show();  // without a gauge start-up ends after the page's layout

  Texts texts;
  texts.Add("SStabCal", panel.SStabCal.TabCaptions.at(0) + "|" + panel.SStabCal.TabCaptions.at(1) +
                            " tab " + std::to_string(panel.SStabCal.Tab));
  for (std::size_t i = 0; i < panel.picCalibration.size(); ++i) {
    const Picture& page = panel.picCalibration[i];
    texts.Add("picCalibration(" + std::to_string(i) + ")",
              std::to_string(page.Top) + " " + std::to_string(page.Left) + " " +
                  std::to_string(page.Height) + " " + std::to_string(page.Width) +
                  (page.Visible ? " shown" : " hidden"));
  }
  texts.Add("chkUpdates", panel.chkUpdates.Caption);
  texts.Add("txtVersion", panel.txtVersion.Caption);
  texts.Add("lblVTCalibration", panel.lblVTCalibration.Caption);
  texts.Add("frmVoltTemp", panel.frmVoltTemp.Caption);
  texts.Add("lblHelp(0)", panel.lblHelp[0].Caption);
  texts.Add("chkVoltageCal", panel.chkVoltageCal.Caption);
  texts.AddAll("Label1", panel.Label1);
  texts.Add("lblVoltageEnteredHeading", panel.lblVoltageEnteredHeading.Caption);
  texts.Add("lblVoltageMeasuredHeading", panel.lblVoltageMeasuredHeading.Caption);
  texts.AddAll("txtVoltage", panel.txtVoltage);
  texts.AddAll("txtCalMeasVoltage", panel.txtCalMeasVoltage);
  texts.Add("lblBatVoltage(4)", panel.lblBatVoltage.at(4).Caption);
  texts.Add("txtBatVoltageActual", panel.txtBatVoltageActual);
  texts.Add("txtBatMeasured", panel.txtBatMeasured);
  texts.Add("lblCellCountHeading", panel.lblCellCountHeading.Caption);
  texts.Add("txtCellCount", panel.txtCellCount);
  texts.Add("Frame1", panel.Frame1.Caption);
  texts.AddAll("chkTemp", panel.chkTemp);
  texts.Add("lblTempEnteredHeading", panel.lblTempEnteredHeading.Caption);
  texts.Add("lblTempMeasuredHeading", panel.lblTempMeasuredHeading.Caption);
  texts.AddAll("txtActualTemp", panel.txtActualTemp);
  texts.AddAll("txtMeasTemp", panel.txtMeasTemp);
  texts.Add("btnCalibrate", panel.btnCalibrate.Caption, panel.btnCalibrate.ToolTipText);
  texts.Add("btncalpg1", panel.btncalpg1.Caption);
  texts.Add("lblCurrentValues", panel.lblCurrentValues.Caption);
  texts.Add("lblCalDF", panel.lblCalDF.Caption);
  EXPECT_TRUE(testing::MatchesTrace(texts.Lines(), "panel/texts-of-the-first-page"));
}

}  // namespace
}  // namespace ombrelay
