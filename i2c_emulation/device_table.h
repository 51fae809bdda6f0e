#pragma once
// The device nodes the emulation stands in for, and the files open on them: a path such as
// "/dev/i2c-7" names an emulated adapter, and each file opened on it is a descriptor of its own
// with the state the kernel keeps per open file. Safe from any thread.

#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "i2c_emulation/emulated_i2c_adapter.h"

namespace ombrelay::i2c_emulation {

struct DeviceTraits {
  // Opening fails with EACCES, as for a user outside the i2c group.
  bool deny = false;
};

struct EmulatedDevice {
  std::shared_ptr<EmulatedI2cAdapter> adapter;
  DeviceTraits traits;
};

// A file open on an emulated device.
struct OpenDevice {
  std::shared_ptr<EmulatedI2cAdapter> adapter;
  I2cClient client;
};

class DeviceTable {
 public:
  // The one table the interposed calls consult; it outlives every static, since files may be
  // closed while the process exits.
  static DeviceTable& Instance();

  // Replaces whatever path stood for.
  void Register(const std::string& path, EmulatedDevice device);
  // Files already open on path stay open on its adapter.
  void Unregister(const std::string& path);
  std::optional<EmulatedDevice> Find(const std::string& path) const;

  void Attach(int fd, std::shared_ptr<EmulatedI2cAdapter> adapter);
  // Nothing for a descriptor that is not open on an emulated device.
  std::shared_ptr<OpenDevice> File(int fd) const;
  void Forget(int fd);

 private:
  mutable std::mutex mutex_;
  std::map<std::string, EmulatedDevice> devices_;
  std::map<int, std::shared_ptr<OpenDevice>> files_;
};

// An emulated device node for as long as it lives.
class RegisteredDevice {
 public:
  RegisteredDevice(std::string path, std::shared_ptr<EmulatedI2cAdapter> adapter,
                   DeviceTraits traits = {});
  ~RegisteredDevice();
  RegisteredDevice(const RegisteredDevice&) = delete;
  RegisteredDevice& operator=(const RegisteredDevice&) = delete;

  const std::string& Path() const { return path_; }

 private:
  std::string path_;
};

}  // namespace ombrelay::i2c_emulation
