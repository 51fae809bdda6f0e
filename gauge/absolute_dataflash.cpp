#include "gauge/absolute_dataflash.h"

#include <algorithm>
#include <array>

#include "gauge/dataflash_rows.h"
#include "gauge/manufacturer_access.h"
#include "shell/platform.h"
#include "shell/shared_state.h"

namespace ombrelay {
namespace {

using Buffer = std::array<std::uint8_t, kCalDataSize>;

// Where an address lies: its row, its position in the row, and how many rows past the first
// the pair reaches.
struct Place {
  std::int16_t row;
  std::int16_t position;
  std::int16_t lastRow;
};

Place PlaceOf(std::int16_t address) {
  const auto position = static_cast<std::int16_t>(address % kRowLength);
  return {static_cast<std::int16_t>(address / kRowLength), position,
          static_cast<std::int16_t>(position == kRowLength - 1 ? 1 : 0)};
}

Status RequestRowOf(const Place& place, int i) {
  return RequestRow(RowWord(place.row + i));
}

void CopyRow(const Buffer& rowBuffer, Buffer& local, int i) {
  std::copy_n(rowBuffer.begin(), kRowLength, local.begin() + i * kRowLength);
}

}  // namespace

Status ReadDFAbsolute(std::int16_t address, std::uint8_t& firstByte, std::uint8_t& secondByte) {
  if (address < 0) return 1;
  const Place place = PlaceOf(address);
  StartAbsoluteRead();

  Buffer rowBuffer{};
  Buffer local{};
  for (int i = 0; i <= place.lastRow; ++i) {
    if (RequestRowOf(place, i) != 0) {
      MsgBox("Communication Error when Requesting Absolute Dataflash Read.");
      return 1;
    }
    Status status = 0;
    std::int16_t length = 0;
    if (!ReadRow(rowBuffer, status, length)) {
      MsgBox("Communication Error returned reading absolute address.");
      return status;
    }
    CopyRow(rowBuffer, local, i);
  }
  firstByte = local[place.position];
  secondByte = local[place.position + 1];
  return 0;
}

Status WriteDFAbsolute(std::int16_t address, std::uint8_t firstByte, std::uint8_t secondByte) {
  if (address < 0) return 1;
  const Place place = PlaceOf(address);
  Status result = 0;
  Buffer rowBuffer{};
  Buffer local{};
  for (int i = 0; i <= place.lastRow; ++i) {
    if (RequestRowOf(place, i) != 0) {
      MsgBox("Communication Error when Requesting Absolute Dataflash Read.");
      return 1;
    }
    Status status = 0;
    std::int16_t length = 0;
    const bool whole = ReadRow(rowBuffer, status, length);
    CopyRow(rowBuffer, local, i);
    if (!whole) {
      MsgBox("Communication Error returned when reading block to write absolute address.");
      result = status;
    }
  }

  local[place.position] = firstByte;
  local[place.position + 1] = secondByte;

  for (int i = 0; i <= place.lastRow; ++i) {
    std::copy_n(local.begin() + i * kRowLength, kRowLength, rowBuffer.begin());
    if (RequestRowOf(place, i) != 0) {
      MsgBox("Communication error when requesting absolute page to write.");
      return 1;
    }
    const Status status = WriteRow(rowBuffer);
    if (status != 0) {
      MsgBox("Communication Error returned when writing absoute address to Dataflash.");
      result = status;
    }
  }

  // The read-back is bus traffic only: its length and bytes are not judged, a failed transfer is.
  for (int i = 0; i <= place.lastRow; ++i) {
    WriteManufacturerAccess(RowWord(place.row + i), g_iTargetAddress);
    Status status = 0;
    std::int16_t length = 0;
    ReadRow(rowBuffer, status, length);
    if (status != 0) {
      MsgBox("Communication Error returned when reading block to verify Dataflash write.");
      result = status;
    }
  }
  return result;
}

}  // namespace ombrelay
