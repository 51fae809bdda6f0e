// ombrelay-bus-benchmark: the i2c-dev host's own cost per transfer, against the bare libi2c
// calls (or the bare I2C_RDWR ioctl, where the host uses one) that carry the same transfer, on
// the same emulated bus in one run. One JSON object per kind of transfer: nanoseconds per
// transfer each way (medians over the rounds) and the median of the rounds' ratios. The bus adds
// no time of its own, so the ratio shows the host's checks and bookkeeping against the cost of
// the kernel interface alone.

#include <fcntl.h>
#include <linux/i2c-dev.h>
#include <linux/i2c.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <functional>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "hosts/i2c_dev_host.h"
#include "i2c_emulation/device_table.h"
#include "sim/sample_gauges.h"

extern "C" {
#include <i2c/smbus.h>
}

namespace ombrelay {
namespace {

constexpr const char* kBus = "/dev/i2c-40";
constexpr std::int16_t kAddress = 23;
constexpr int kGaugeAddress = 0x0B;
constexpr std::uint8_t kStateOfCharge = 0x0D;
constexpr std::uint8_t kManufacturerAccess = 0x00;
constexpr std::uint16_t kOperationStatus = 0x0054;
// The identification request takes a block of any length and selects the identification block
// that the shared data command then answers: transfers that change nothing between rounds.
constexpr std::uint8_t kIdentificationRequest = 0x22;
constexpr std::uint8_t kSharedData = 0x2F;
constexpr int kRounds = 201;
constexpr int kTransfersPerRound = 1000;

struct Transfer {
  const char* name;
  std::function<void()> host;
  std::function<void()> bare;
};

// Nanoseconds per call of transfer, over one round.
double NanosecondsPer(const std::function<void()>& transfer) {
  const auto start = std::chrono::steady_clock::now();
  for (int i = 0; i < kTransfersPerRound; ++i)
    transfer();
  return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start)
             .count() /
         kTransfersPerRound;
}

double Median(std::vector<double> values) {
  std::ranges::nth_element(values, values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2));
  return values[values.size() / 2];
}

int ReadWrite(int fd, std::span<i2c_msg> messages) {
  i2c_rdwr_ioctl_data transfer{messages.data(), static_cast<std::uint32_t>(messages.size())};
  return ioctl(fd, I2C_RDWR, &transfer);
}

}  // namespace
}  // namespace ombrelay

int main() {
  using namespace ombrelay;
  sim::VirtualClock clock;
  const std::unique_ptr<sim::Gauge> gauge = sim::MakeSampleGauge(sim::Family::Morlin, clock);
  const i2c_emulation::RegisteredDevice device(
      kBus, std::make_shared<i2c_emulation::EmulatedI2cAdapter>(gauge.get()));
  std::string error;
  const std::unique_ptr<I2cDevHost> host = I2cDevHost::Open(kBus, {}, error);
  const int fd = open(kBus, O_RDWR);
  if (!host || fd < 0 || ioctl(fd, I2C_SLAVE, kGaugeAddress) < 0) {
    std::cerr << "ombrelay-bus-benchmark: cannot open the emulated bus: " << error << '\n';
    return 1;
  }

  std::array<std::uint8_t, 256> block{};
  std::int16_t length = 0;
  std::int16_t word = 0;
  std::uint8_t command = kSharedData;
  std::array<std::uint8_t, 64> request{kIdentificationRequest, 62};
  const std::vector<Transfer> transfers = {
      {"word_read", [&] { host->ReadSMBusWord_(kStateOfCharge, word, kAddress); },
       [&] { i2c_smbus_read_word_data(fd, kStateOfCharge); }},
      {"word_write",
       [&] { host->WriteSMBusWord_(kManufacturerAccess, kOperationStatus, kAddress); },
       [&] { i2c_smbus_write_word_data(fd, kManufacturerAccess, kOperationStatus); }},
      {"block_write_32",
       [&] { host->WriteSMBusBlock(kIdentificationRequest, block, 32, kAddress); },
       [&] { i2c_smbus_write_block_data(fd, kIdentificationRequest, 32, block.data()); }},
      {"block_write_62",
       [&] { host->WriteSMBusBlock(kIdentificationRequest, block, 62, kAddress); },
       [&] {
         std::array messages = {i2c_msg{kGaugeAddress, 0, 64, request.data()}};
         ReadWrite(fd, messages);
       }},
      {"block_read", [&] { host->ReadSMBusBlock_(kSharedData, block, length, kAddress); },
       [&] {
         std::array messages = {i2c_msg{kGaugeAddress, 0, 1, &command},
                                i2c_msg{kGaugeAddress, I2C_M_RD, 256, block.data()}};
         ReadWrite(fd, messages);
       }},
  };

  bool within = true;
  for (const Transfer& transfer : transfers) {
    std::vector<double> hostNs;
    std::vector<double> bareNs;
    std::vector<double> ratios;
    for (int round = 0; round < kRounds; ++round) {
      // Each goes first in every other round, so that neither gets the warmer caches; the two
      // of a round are compared, so that a slower moment of the machine counts against neither.
      if (round % 2 == 0) hostNs.push_back(NanosecondsPer(transfer.host));
      bareNs.push_back(NanosecondsPer(transfer.bare));
      if (round % 2 == 1) hostNs.push_back(NanosecondsPer(transfer.host));
      ratios.push_back(hostNs.back() / bareNs.back());
    }
    const double ratio = Median(ratios);
    within = within && ratio <= 1.05;
    std::cout << nlohmann::ordered_json{{"transfer", transfer.name},
                                        {"host_ns", Median(hostNs)},
                                        {"bare_ns", Median(bareNs)},
                                        {"host_over_bare", ratio}}
                     .dump()
              << std::endl;
  }
  close(fd);
  return within ? 0 : 1;
}
