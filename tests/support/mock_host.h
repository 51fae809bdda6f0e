#pragma once
// A host whose calls can be watched and shaped by a test, passing through to a real one unless
// told otherwise.

#include <gmock/gmock.h>

#include <utility>

#include "shell/host.h"

namespace ombrelay::testing {

class MockHost : public Host {
 public:
  MOCK_METHOD(Status, ReadSMBusBlock_,
              (std::int32_t, std::span<std::uint8_t>, std::int16_t&, std::int16_t), (override));
  MOCK_METHOD(Status, ReadSMBusBlock, (std::int32_t, std::string&, std::int16_t), (override));
  MOCK_METHOD(Status, WriteSMBusBlock,
              (std::int32_t, std::span<const std::uint8_t>, std::int16_t, std::int16_t),
              (override));
  MOCK_METHOD(Status, ReadSMBusWord, (std::int32_t, std::uint8_t&, std::uint8_t&, std::int16_t),
              (override));
  MOCK_METHOD(Status, ReadSMBusWord_, (std::int32_t, std::int16_t&, std::int16_t), (override));
  MOCK_METHOD(Status, WriteSMBusWord, (std::int32_t, std::uint8_t, std::uint8_t, std::int16_t),
              (override));
  MOCK_METHOD(Status, WriteSMBusWord_, (std::int32_t, std::int16_t, std::int16_t), (override));
  MOCK_METHOD(std::int32_t, CheckForError, (), (override));
  MOCK_METHOD(void, Delay, (std::int16_t), (override));

  // Every call goes on to inner unless a test's expectation says otherwise.
  void DelegateTo(Host& inner) {
    using ::testing::_;
    ON_CALL(*this, ReadSMBusBlock_(_, _, _, _)).WillByDefault([&inner](auto&&... args) {
      return inner.ReadSMBusBlock_(std::forward<decltype(args)>(args)...);
    });
    ON_CALL(*this, ReadSMBusBlock(_, _, _)).WillByDefault([&inner](auto&&... args) {
      return inner.ReadSMBusBlock(std::forward<decltype(args)>(args)...);
    });
    ON_CALL(*this, WriteSMBusBlock(_, _, _, _)).WillByDefault([&inner](auto&&... args) {
      return inner.WriteSMBusBlock(std::forward<decltype(args)>(args)...);
    });
    ON_CALL(*this, ReadSMBusWord(_, _, _, _)).WillByDefault([&inner](auto&&... args) {
      return inner.ReadSMBusWord(std::forward<decltype(args)>(args)...);
    });
    ON_CALL(*this, ReadSMBusWord_(_, _, _)).WillByDefault([&inner](auto&&... args) {
      return inner.ReadSMBusWord_(std::forward<decltype(args)>(args)...);
    });
    ON_CALL(*this, WriteSMBusWord(_, _, _, _)).WillByDefault([&inner](auto&&... args) {
      return inner.WriteSMBusWord(std::forward<decltype(args)>(args)...);
    });
    ON_CALL(*this, WriteSMBusWord_(_, _, _)).WillByDefault([&inner](auto&&... args) {
      return inner.WriteSMBusWord_(std::forward<decltype(args)>(args)...);
    });
    ON_CALL(*this, CheckForError()).WillByDefault([&inner] { return inner.CheckForError(); });
    ON_CALL(*this, Delay(_)).WillByDefault([&inner](std::int16_t count) { inner.Delay(count); });
  }
};

}  // namespace ombrelay::testing
