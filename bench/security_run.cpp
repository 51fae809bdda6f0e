#include "bench/security_run.h"

#include <functional>

#include "bench/real_time_bench.h"
#include "hosts/recording_host.h"
#include "security/auth_morlin.h"
#include "shell/shared_state.h"
#include "sim/challenge_digest.h"

namespace ombrelay {
namespace {

constexpr const char* kNewUnsealKey = "0123456789ABCDEF00112233445566FF";
constexpr sim::SecurityKey kNewUnsealKeyBytes = {0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF,
                                                 0x00, 0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0xFF};

}  // namespace

std::vector<SecurityRunResult> RunSecurityOperations(sim::Family family,
                                                     const std::string& appDir) {
  RealTimeBench bench(family, appDir);
  RecordingHost& host = bench.host;
  AccountingPlatform& platform = bench.platform;
  const std::unique_ptr<sim::Gauge>& gauge = bench.gauge;

  AuthMorlin panel(host, platform);
  panel.UserControl_Show();
  std::vector<SecurityRunResult> results;
  const auto measure = [&](const char* operation, const std::function<void()>& click,
                           const std::function<bool()>& ok) {
    const SliceMeasures measures = MeasureSlice(host, platform, click);
    results.push_back({operation, measures, ok()});
  };
  const auto go = [&panel](std::int16_t option) {
    return [&panel, option] {
      panel.optionAction[static_cast<std::size_t>(option)].Value = true;
      panel.optionAction_Click(option);
      panel.btnGo_Click();
    };
  };
  const auto mode = [&panel, &gauge](const char* caption, sim::SecurityMode expected) {
    return [&panel, &gauge, caption, expected] {
      return panel.lblSealStatus.Caption == caption && gauge->GetSecurityMode() == expected;
    };
  };

  measure("seal", go(0), mode("Sealed", sim::SecurityMode::Sealed));
  measure("unseal", go(1), mode("Unsealed", sim::SecurityMode::Unsealed));
  measure("full_access", go(2), mode("Full Access", sim::SecurityMode::FullAccess));
  measure(
      "authenticate", [&panel] { panel.btnAuthenticate_Click(); },
      [&panel] { return panel.lblAuthenticationStatus.Caption == "Authentication Successful"; });
  panel.txtUnsealKeyNew.Text = kNewUnsealKey;
  measure(
      "change_key", [&panel] { panel.Change_Unseal_Key_Click(); },
      [&panel, &gauge] {
        return panel.lblUnsealkeyStatus.Caption == "Unseal Key Change Successful" &&
               gauge->Key(sim::GaugeKey::Unseal) == kNewUnsealKeyBytes;
      });
  return results;
}

}  // namespace ombrelay
