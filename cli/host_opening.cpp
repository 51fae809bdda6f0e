#include "cli/host_opening.h"

#include <ostream>

#include "hosts/i2c_dev_host.h"
#include "hosts/sim_host.h"
#include "sim/gauge.h"
#include "sim/sample_gauges.h"

namespace ombrelay::cli {
namespace {

// A simulator host that owns its gauge: the gauge lives exactly as long as the run's bus.
class SampleGaugeHost : public SimHost {
 public:
  SampleGaugeHost(sim::Family family, bool sealed, sim::Clock& clock)
      : SimHost(clock), gauge_(sim::MakeSampleGauge(family, clock)) {
    if (sealed) gauge_->SetSecurityMode(sim::SecurityMode::Sealed);
    Attach(gauge_.get());
  }

 private:
  std::unique_ptr<sim::Gauge> gauge_;
};

}  // namespace

std::unique_ptr<Host> OpenHost(const HostChoice& choice, sim::Clock& clock, std::ostream& err,
                               std::string& error) {
  if (choice.sim) return std::make_unique<SampleGaugeHost>(*choice.sim, choice.sealed, clock);
  I2cDevHost::Options options;
  options.pec = choice.pec;
  // The host's own waits run on the clock the panels wait on.
  options.sleep = [&clock](std::int32_t milliseconds) { clock.Wait(milliseconds); };
  std::unique_ptr<I2cDevHost> bus = I2cDevHost::Open(choice.bus, options, error);
  if (bus) {
    bus->onFailure = [&err](const std::string& sentence) {
      err << "ombrelay: " << sentence << '\n' << std::flush;
    };
  }
  return bus;
}

}  // namespace ombrelay::cli
