// QUILL's calibration area: a subclass selected by number, then read or written whole.

#include <algorithm>
#include <array>

#include "gauge/calibration_dataflash.h"
#include "gauge/manufacturer_access.h"
#include "shell/platform.h"
#include "shell/shared_state.h"

namespace ombrelay {
namespace {

constexpr std::int32_t kSelectSubclassCommand = 0x77;
constexpr std::int32_t kSubclassDataCommand = 0x78;
constexpr std::int16_t kCalibrationSubclass = 0x68;
// A shorter answer cannot be the calibration subclass.
constexpr std::int16_t kShortestSubclass = 15;

using Buffer = std::array<std::uint8_t, kCalDataSize>;

void SelectCalibrationSubclass() {
  g_oHost->WriteSMBusWord_(kSelectSubclassCommand, kCalibrationSubclass, g_iTargetAddress);
}

}  // namespace

Status ReadCalSubclass(std::span<std::uint8_t> buffer) {
  DrainBusErrors();
  g_oPlatform->Sleep(20);
  SelectCalibrationSubclass();
  g_oPlatform->Sleep(5);
  std::int16_t length = 0;
  if (g_oHost->ReadSMBusBlock_(kSubclassDataCommand, buffer, length, g_iTargetAddress) == 0) {
    return 0;
  }
  MsgBox("Communication or length incorrect copying calibration dataflash to local buffer.");
  return 1;
}

Status WriteCalSubclass() {
  DrainBusErrors();
  g_oPlatform->Sleep(20);
  SelectCalibrationSubclass();
  g_oPlatform->Sleep(10);
  // This read only tells how long the subclass is.
  Buffer probe{};
  std::int16_t length = 0;
  g_oHost->ReadSMBusBlock_(kSubclassDataCommand, probe, length, g_iTargetAddress);
  if (length < kShortestSubclass) {
    MsgBox(
        "Number of read from calibration subclass is fewer than expected.  Please check "
        "communication with device.");
    return 1;
  }
  Buffer written{};
  std::copy_n(g_abCalData.begin(), length, written.begin());

  SelectCalibrationSubclass();
  g_oPlatform->Sleep(5);
  const Status status =
      g_oHost->WriteSMBusBlock(kSubclassDataCommand, g_abCalData, length, g_iTargetAddress);
  g_oPlatform->Sleep(132);
  if (status != 0) {
    MsgBox("Communication error writing local calibration buffer to Dataflash.");
    return 1;
  }

  Buffer readBack{};
  ReadCalSubclass(readBack);
  if (!std::equal(written.begin(), written.begin() + length, readBack.begin())) {
    MsgBox(
        "Verification of calibration Dataflash written and compared with readback failed.  "
        "Please check communications and perform calibration again.");
    return 1;
  }
  return 0;
}

}  // namespace ombrelay
