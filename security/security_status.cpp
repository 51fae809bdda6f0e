// The gauge's security mode: read afresh for each decision, shown, and changed by btnGo.

#include <array>

#include "gauge/manufacturer_access.h"
#include "security/auth_morlin.h"
#include "shell/platform.h"
#include "shell/shared_state.h"

namespace ombrelay {
namespace {

constexpr std::int16_t kOperationStatusWord = 0x0054;
constexpr std::int16_t kSealWord = 0x0030;

constexpr std::int16_t kFullAccess = 1;
constexpr std::int16_t kUnsealed = 2;
constexpr std::int16_t kSealed = 3;

constexpr const char* kStatusNotSent =
    "Not able to send operation status to MAC. Please check communication with device.";

}  // namespace

std::int32_t AuthMorlin::CheckOperationStatusSEC1andSEC0bits(std::int16_t& securityBits) {
  // Zero-filled each time, so that a failed read gives no mode rather than a stale one.
  std::array<std::uint8_t, 256> buffer{};
  const Status status = WriteManufacturerAccess(kOperationStatusWord, g_iTargetAddress);
  g_oPlatform->Sleep(10);
  if (status != 0) {
    MsgBox(kStatusNotSent);
    return 1;
  }
  std::int16_t length = 0;
  ReadMODData(buffer, length, g_iTargetAddress);
  securityBits = static_cast<std::int16_t>(buffer[1] & 3);
  return 0;
}

void AuthMorlin::ShowDeviceMode() {
  std::int16_t securityBits = 0;
  CheckOperationStatusSEC1andSEC0bits(securityBits);
  static constexpr std::array<const char*, 4> kModes = {"Last Operation Failed", "Full Access",
                                                        "Unsealed", "Sealed"};
  lblSealStatus.Caption = kModes[static_cast<std::size_t>(securityBits)];
}

void AuthMorlin::optionAction_Click(std::int16_t Index) {
  for (std::size_t i = 0; i < optionAction.size(); ++i) {
    if (static_cast<std::int16_t>(i) != Index) optionAction[i].Value = false;
  }
}

void AuthMorlin::btnGo_Click() {
  ShowDeviceMode();
  std::size_t selected = 0;
  while (selected < optionAction.size() && !optionAction[selected].Value)
    ++selected;
  if (selected == optionAction.size()) return;

  btnGo.Enabled = false;
  std::int16_t securityBits = 0;
  if (CheckOperationStatusSEC1andSEC0bits(securityBits) != 0) {
    MsgBox("Not able to read operation status of device. Please check communication with device.");
    btnGo.Enabled = true;
    return;
  }

  const char* refusal = nullptr;
  if (selected == 0 && securityBits == kSealed) {
    refusal = "Device is already sealed. Nothing to do.";
  } else if (selected == 1 && (securityBits == kUnsealed || securityBits == kFullAccess)) {
    refusal = "Device is not sealed. Nothing to do.";
  } else if (selected == 2 && securityBits == kFullAccess) {
    refusal = "Device is already in full access mode. Nothing to do.";
  }
  if (refusal != nullptr) {
    MsgBox(refusal);
    btnGo.Enabled = true;
    return;
  }

  if (selected == 0) {
    SealDevice();
  } else {
    UnsealDevice(selected == 1 ? "unseal" : "fullaccess");
  }
  btnGo.Enabled = true;
  ShowDeviceMode();
}

void AuthMorlin::SealDevice() {
  const Status status = WriteManufacturerAccess(kSealWord, g_iTargetAddress);
  g_oPlatform->Sleep(20);
  if (status != 0) {
    MsgBox("Unable to send seal command.");
    return;
  }
  std::int16_t securityBits = 0;
  if (CheckOperationStatusSEC1andSEC0bits(securityBits) != 0) {
    MsgBox(kStatusNotSent);
    return;
  }
  if (securityBits != kSealed) MsgBox("Attempt to seal device failed.");
}

}  // namespace ombrelay
