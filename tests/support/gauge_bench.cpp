#include "tests/support/gauge_bench.h"

#include "shell/numeric.h"
#include "shell/shared_state.h"
#include "shell/utils.h"

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

void GaugeBench::After(const std::string& op, int nth, std::function<void()> then) {
  host.onOperation = [op, nth, then = std::move(then),
                      seen = 0](const BusOperation& operation) mutable {
    if (operation.op == op && ++seen == nth) then();
  };
}

void GaugeBench::Restart() {
  host.Clear();
  platform.ClearMessages();
  startMs_ = clock.NowMs();
}

std::vector<std::string> GaugeBench::Trace() const {
  std::vector<std::string> lines;
  for (const BusOperation& operation : host.Operations()) {
    std::string line = std::to_string(operation.tMs - startMs_) + " " + operation.op;
    if (operation.cmd != BusOperation::kNoCommand)
      line += " " + PadLeftZeros(Hex(static_cast<std::uint32_t>(operation.cmd)), 2);
    if (operation.word) {
      line += " " + PadLeftZeros(Hex(*operation.word), 4);
    } else {
      line +=
          " " + std::to_string(operation.op == "CheckForError" ? operation.status : operation.len);
    }
    lines.push_back(line);
  }
  return lines;
}

}  // namespace ombrelay::testing
