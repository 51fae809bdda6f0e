#include "tests/support/panel_probe.h"

#include <algorithm>

namespace ombrelay::testing {
namespace {

std::string OnOff(bool on) {
  return on ? "on" : "off";
}

}  // namespace

FlowTrace::Probe PanelProbe(const NBCal& panel) {
  return [&panel] {
    const auto calibrationButtons = panel.CalibrationButtons();
    const bool buttons = std::all_of(calibrationButtons.begin(), calibrationButtons.end(),
                                     [](const Button* button) { return button->Enabled; });
    const bool boxes =
        panel.chkVoltageCal.Enabled && std::all_of(panel.chkTemp.begin(), panel.chkTemp.end(),
                                                   [](const CheckBox& box) { return box.Enabled; });
    const std::string controls =
        buttons == boxes ? "controls " + OnOff(buttons)
                         : "buttons " + OnOff(buttons) + ", check boxes " + OnOff(boxes);
    return std::vector<std::string>{"timer " + OnOff(panel.tmrScan.Enabled()),
                                    controls,
                                    "done mark " + OnOff(panel.imgCalDoneBox.Visible),
                                    "pack mark " + OnOff(panel.imgPackVoltage.Visible),
                                    "current mark " + OnOff(panel.ImgPackCurrent.Visible),
                                    "offset mark " + OnOff(panel.imageCCOffsetDone.Visible),
                                    "board mark " + OnOff(panel.ImgBoardOffset.Visible)};
  };
}

}  // namespace ombrelay::testing
