#include "i2c_emulation/device_table.h"

#include <utility>

namespace ombrelay::i2c_emulation {

DeviceTable& DeviceTable::Instance() {
  static auto* table = new DeviceTable;
  return *table;
}

void DeviceTable::Register(const std::string& path, EmulatedDevice device) {
  const std::scoped_lock lock(mutex_);
  devices_.insert_or_assign(path, std::move(device));
}

void DeviceTable::Unregister(const std::string& path) {
  const std::scoped_lock lock(mutex_);
  devices_.erase(path);
}

std::optional<EmulatedDevice> DeviceTable::Find(const std::string& path) const {
  const std::scoped_lock lock(mutex_);
  const auto found = devices_.find(path);
  if (found == devices_.end()) return std::nullopt;
  return found->second;
}

void DeviceTable::Attach(int fd, std::shared_ptr<EmulatedI2cAdapter> adapter) {
  const std::scoped_lock lock(mutex_);
  files_.insert_or_assign(fd, std::make_shared<OpenDevice>(std::move(adapter), I2cClient{}));
}

std::shared_ptr<OpenDevice> DeviceTable::File(int fd) const {
  const std::scoped_lock lock(mutex_);
  const auto found = files_.find(fd);
  return found == files_.end() ? nullptr : found->second;
}

void DeviceTable::Forget(int fd) {
  const std::scoped_lock lock(mutex_);
  files_.erase(fd);
}

RegisteredDevice::RegisteredDevice(std::string path, std::shared_ptr<EmulatedI2cAdapter> adapter,
                                   DeviceTraits traits)
    : path_(std::move(path)) {
  DeviceTable::Instance().Register(path_, {std::move(adapter), traits});
}

RegisteredDevice::~RegisteredDevice() {
  DeviceTable::Instance().Unregister(path_);
}

}  // namespace ombrelay::i2c_emulation
