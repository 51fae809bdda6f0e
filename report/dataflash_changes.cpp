#include "report/dataflash_changes.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <map>

#include "gauge/dataflash_rows.h"
#include "shell/shared_state.h"

namespace ombrelay {
namespace {

constexpr std::int32_t kManufacturerAccess = 0x00;
constexpr std::uint16_t kLastRowWord = 0x01FF;
constexpr std::int32_t kKeldBlockCommand = 0x58;
constexpr std::int32_t kSubclassSelectCommand = 0x77;
constexpr std::int32_t kSubclassDataCommand = 0x78;

// What is known of one byte of an area.
struct Byte {
  std::optional<std::uint8_t> old;
  std::optional<std::uint8_t> written;
  std::optional<std::uint8_t> readBack;
};

struct Area {
  std::string name;
  std::int32_t base = 0;  // the absolute address of its byte 0, for rows
  std::size_t firstWritten = 0;
  bool awaitingReadBack = false;
  std::map<std::int32_t, Byte> bytes;
};

std::string Hex(std::int32_t value) {
  std::array<char, 8> text{};
  std::snprintf(text.data(), text.size(), "0x%02X", static_cast<unsigned>(value));
  return text.data();
}

bool Is(const BusOperation& op, TransferKind kind) {
  return TransferOf(op) == kind;
}

class Tracker {
 public:
  explicit Tracker(const DataflashAreas& where) : where_(where) {}

  void Take(const BusOperation& op) {
    if (Is(op, TransferKind::WordWrite)) Select(op);
    if (op.status != 0 || !(Is(op, TransferKind::BlockRead) || Is(op, TransferKind::BlockWrite)))
      return;
    Area* area = AreaOf(op.cmd);
    if (area == nullptr) return;
    const auto length = std::min<std::size_t>(op.data.size(), static_cast<std::size_t>(op.len));
    if (Is(op, TransferKind::BlockWrite)) {
      if (!area->awaitingReadBack && area->firstWritten == 0) area->firstWritten = ++written_;
      for (std::size_t i = 0; i < length; ++i) {
        Byte& byte = area->bytes[static_cast<std::int32_t>(i)];
        byte.written = op.data[i];
        byte.readBack.reset();
      }
      area->awaitingReadBack = true;
      return;
    }
    for (std::size_t i = 0; i < length; ++i) {
      Byte& byte = area->bytes[static_cast<std::int32_t>(i)];
      if (area->awaitingReadBack) {
        if (byte.written) byte.readBack = op.data[i];
      } else if (!byte.written && !byte.old) {
        byte.old = op.data[i];
      }
    }
    area->awaitingReadBack = false;
  }

  std::vector<ChangedByte> Changes() const {
    std::vector<const Area*> written;
    for (const auto& [name, area] : found_)
      if (area.firstWritten > 0) written.push_back(&area);
    std::sort(written.begin(), written.end(),
              [](const Area* a, const Area* b) { return a->firstWritten < b->firstWritten; });
    std::vector<ChangedByte> changes;
    for (const Area* area : written) {
      for (const auto& [offset, byte] : area->bytes) {
        if (!byte.written) continue;
        const bool changed = !byte.old || *byte.old != *byte.written;
        const bool keptOther = byte.readBack && *byte.readBack != *byte.written;
        if (changed || keptOther)
          changes.push_back(
              {area->name, area->base + offset, byte.old, *byte.written, byte.readBack});
      }
    }
    return changes;
  }

 private:
  bool Rows() const { return where_.family == MORLIN || where_.family == KELD_PLUS; }

  // A row or subclass selection points the data command at its area; any other word to the
  // same command leaves the data command pointing nowhere this report can tell.
  void Select(const BusOperation& op) {
    if (!op.word) return;
    if (Rows() && op.cmd == kManufacturerAccess) {
      const bool row = op.status == 0 && *op.word >= kFirstRowWord && *op.word <= kLastRowWord;
      selected_ = row ? std::optional<std::int32_t>(*op.word - kFirstRowWord) : std::nullopt;
    } else if (where_.family == QUILL && op.cmd == kSubclassSelectCommand) {
      selected_ = op.status == 0 ? std::optional<std::int32_t>(*op.word) : std::nullopt;
    }
  }

  Area* AreaOf(std::int32_t command) {
    if (where_.family == KELD && command == kKeldBlockCommand)
      return &Named("block " + Hex(command), 0);
    if (!selected_) return nullptr;
    if (Rows() && command == where_.rowDataCommand)
      return &Named("row " + std::to_string(*selected_), *selected_ * kRowLength);
    if (where_.family == QUILL && command == kSubclassDataCommand)
      return &Named("subclass " + Hex(*selected_), 0);
    return nullptr;
  }

  Area& Named(const std::string& name, std::int32_t base) {
    Area& area = found_[name];
    area.name = name;
    area.base = base;
    return area;
  }

  const DataflashAreas& where_;
  std::map<std::string, Area> found_;
  std::optional<std::int32_t> selected_;
  std::size_t written_ = 0;
};

}  // namespace

std::vector<ChangedByte> DataflashChanges(std::span<const BusOperation> operations,
                                          const DataflashAreas& areas) {
  Tracker tracker(areas);
  for (const BusOperation& op : operations)
    tracker.Take(op);
  return tracker.Changes();
}

}  // namespace ombrelay
