#include "tests/support/gauge_bench.h"

#include "shell/shared_state.h"

namespace ombrelay::testing {

void ApplyShippedSettings(sim::Family family) {
  switch (family) {
    case sim::Family::Keld:
      g_iDFType = KELD;
      break;
    case sim::Family::Quill:
      g_iDFType = QUILL;
      g_sDataFlashMapPath = std::string(OMBRELAY_SOURCE_APPDIR) + "/maps/quill-5120-3_01.json";
      break;
    case sim::Family::Morlin:
      g_iDFType = MORLIN;
      g_iSystemConfigAddress = 320;
      break;
    case sim::Family::KeldPlus:
      g_iDFType = KELD_PLUS;
      g_iSystemConfigAddress = 448;
      break;
  }
  g_bZenoMAC = 0;
  g_iManuDataCmd = 0x23;
  g_iDFAccessFlashCmd = 0x2F;
  g_iCalMode = 0x2D;
  g_iExitCalCommand = static_cast<std::int16_t>(0xF080);
  g_iKeldPlusCalFlag = 0x74;
  g_iKeldPlusCalFlagBitPos = 16;
  g_iSystemConfigurationParamLength = 2;
  g_iCalSubclassID = 0;
  g_sngFlashReadDelay = 0.02F;
  g_sngFlashWriteDelay = 0.132F;
}

GaugeBench::GaugeBench(sim::Family family) : SimBench(family) {
  ApplyShippedSettings(family);
  Restart();
}

}  // namespace ombrelay::testing
