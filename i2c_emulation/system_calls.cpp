// The C library's open, close and ioctl, interposed: a file opened on an emulated device node is
// a real descriptor (reserved on /dev/null) whose ioctls its emulated adapter answers. Every other
// call goes to the C library unchanged.

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <optional>

#include "i2c_emulation/device_table.h"

namespace {

using ombrelay::i2c_emulation::DeviceTable;

using OpenCall = int(const char*, int, ...);
using OpenAtCall = int(int, const char*, int, ...);
using CloseCall = int(int);
using IoctlCall = int(int, unsigned long, ...);

// The next definition of name after ours: the C library's.
template <typename Call>
Call* Real(const char* name) {
  return reinterpret_cast<Call*>(dlsym(RTLD_NEXT, name));
}

OpenCall* RealOpen() {
  static OpenCall* const call = Real<OpenCall>("open");
  return call;
}

// Nothing when path is no emulated device: the caller opens it for real.
std::optional<int> OpenEmulated(const char* path, int flags) {
  if (path == nullptr) return std::nullopt;
  const auto device = DeviceTable::Instance().Find(path);
  if (!device) return std::nullopt;
  if (device->traits.deny) {
    errno = EACCES;
    return -1;
  }
  const int fd = RealOpen()("/dev/null", O_RDWR | (flags & O_CLOEXEC));
  if (fd >= 0) DeviceTable::Instance().Attach(fd, device->adapter);
  return fd;
}

// The mode follows the flags only when they may create a file.
mode_t ModeOf(int flags, va_list arguments) {
  const bool creates = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
  return creates ? static_cast<mode_t>(va_arg(arguments, int)) : 0;
}

}  // namespace

// Visible to the dynamic linker, which binds every caller in the process to these.
#pragma GCC visibility push(default)
extern "C" {

int open(const char* path, int flags, ...) {
  if (const auto fd = OpenEmulated(path, flags)) return *fd;
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = ModeOf(flags, arguments);
  va_end(arguments);
  return RealOpen()(path, flags, mode);
}

int open64(const char* path, int flags, ...) {
  if (const auto fd = OpenEmulated(path, flags)) return *fd;
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = ModeOf(flags, arguments);
  va_end(arguments);
  static OpenCall* const real = Real<OpenCall>("open64");
  return real(path, flags, mode);
}

int openat(int directory, const char* path, int flags, ...) {
  if (const auto fd = OpenEmulated(path, flags)) return *fd;
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = ModeOf(flags, arguments);
  va_end(arguments);
  static OpenAtCall* const real = Real<OpenAtCall>("openat");
  return real(directory, path, flags, mode);
}

int openat64(int directory, const char* path, int flags, ...) {
  if (const auto fd = OpenEmulated(path, flags)) return *fd;
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = ModeOf(flags, arguments);
  va_end(arguments);
  static OpenAtCall* const real = Real<OpenAtCall>("openat64");
  return real(directory, path, flags, mode);
}

// Forgotten first, so that a descriptor number the C library hands out again is never taken for
// the emulated file it was.
int close(int fd) {
  DeviceTable::Instance().Forget(fd);
  static CloseCall* const real = Real<CloseCall>("close");
  return real(fd);
}

// Every request takes one argument, a number or a pointer, passed as a register-wide word.
int ioctl(int fd, unsigned long request, ...) noexcept {
  va_list arguments;
  va_start(arguments, request);
  const auto argument = va_arg(arguments, unsigned long);
  va_end(arguments);
  static IoctlCall* const real = Real<IoctlCall>("ioctl");
  if (const auto file = DeviceTable::Instance().File(fd)) {
    // The crossing into the kernel that every ioctl of a real device makes, on the descriptor's
    // /dev/null, which has no ioctls and refuses at once: so that a transfer costs a program at
    // least what it costs on a real bus, and a host's own cost is measured against that.
    real(fd, request, argument);
    return file->adapter->Ioctl(file->client, request, argument);
  }
  return real(fd, request, argument);
}

}  // extern "C"
#pragma GCC visibility pop
