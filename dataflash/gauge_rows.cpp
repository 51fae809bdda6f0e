#include "dataflash/gauge_rows.h"

#include <algorithm>
#include <array>

#include "gauge/value_conversion.h"
#include "shell/shared_state.h"

namespace ombrelay {
namespace {

// As long as any block the gauge may answer, so that a row of the wrong length is told by its
// length rather than as a failed transfer.
using Buffer = std::array<std::uint8_t, kCalDataSize>;

std::string RowText(std::int32_t row) {
  return "row " + std::to_string(row);
}

// Requests row and reads it into buffer; why it did not come whole, or empty when it did.
std::string ReadOneRow(std::int32_t row, Buffer& buffer) {
  if (RequestRow(RowWord(row)) != 0) return "could not be requested";
  Status status = 0;
  std::int16_t length = 0;
  if (ReadRow(buffer, status, length)) return {};
  if (status != 0) return "could not be read";
  return "came with " + std::to_string(length) + " bytes instead of " + std::to_string(kRowLength);
}

}  // namespace

bool ReadGaugeRows(const std::set<std::int32_t>& rows, DataflashRows& read, std::string& failure) {
  StartAbsoluteRead();
  Buffer buffer{};
  for (const std::int32_t row : rows) {
    const std::string why = ReadOneRow(row, buffer);
    if (!why.empty()) {
      failure = RowText(row) + " of the gauge's dataflash " + why;
      return false;
    }
    std::copy_n(buffer.begin(), kRowLength, read[row].begin());
  }
  return true;
}

bool WriteVerifiedRow(std::int32_t row, const DataflashRow& bytes, std::string& failure) {
  if (RequestRow(RowWord(row)) != 0) {
    failure = RowText(row) + " could not be requested for its write";
    return false;
  }
  if (WriteRow(bytes) != 0) {
    failure = RowText(row) + " could not be written";
    return false;
  }
  Buffer readBack{};
  const std::string why = ReadOneRow(row, readBack);
  if (!why.empty()) {
    failure = RowText(row) + " was written, but its read-back " + why;
    return false;
  }
  const auto differs = std::mismatch(bytes.begin(), bytes.end(), readBack.begin());
  if (differs.first == bytes.end()) return true;
  failure = RowText(row) + " read back otherwise than written: byte " +
            std::to_string(differs.first - bytes.begin()) + " holds 0x" +
            ByteHexString(*differs.second) + " where 0x" + ByteHexString(*differs.first) +
            " was written";
  return false;
}

}  // namespace ombrelay
