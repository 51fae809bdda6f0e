#pragma once
// The live scan's values over time, as the calibration panel showed them: each sample turns the
// texts of the panel's measured boxes into numbers, and a box that showed no number, such as
// "Err_Rd", leaves a gap. No Qt here, so that the arithmetic is tested on its own.

#include <array>
#include <cstddef>
#include <deque>
#include <optional>
#include <string>

namespace ombrelay {

enum class ScanChart { CellVoltages, StackVoltages, Temperatures, Current, Count };

struct ScanSeries {
  const char* name;
  const char* unit;
  ScanChart chart;
};

inline constexpr std::size_t kScanSeriesCount = 13;

// Cell 1 to 4, the stack, battery and pack, the five temperatures and the current, in this
// order: the order of a sample's values and of the CSV's columns.
const std::array<ScanSeries, kScanSeriesCount>& ScanSeriesList();

// The texts the panel shows at one moment. A box the panel does not use for the gauge, a cell
// above its count or a sensor it lacks, is nullopt.
struct ShownTexts {
  // "Cell 1", "Cell 1 + 2", ...: the panel shows the stack up to each cell.
  std::array<std::optional<std::string>, 4> stackedCells;
  std::optional<std::string> battery;
  std::optional<std::string> pack;
  // Internal, then Ext 1 to Ext 4.
  std::array<std::optional<std::string>, 5> temperatures;
  std::optional<std::string> current;
};

struct ScanSample {
  double seconds = 0;
  std::array<std::optional<double>, kScanSeriesCount> values{};
};

// Each cell's own voltage is its stack less the one below it; the stack is the top cell's.
ScanSample SampleOf(double seconds, const ShownTexts& shown);

class ScanHistory {
 public:
  // A day at one sample a second; the oldest go first.
  static constexpr std::size_t kMostSamples = 86400;

  void Add(const ScanSample& sample);
  const std::deque<ScanSample>& Samples() const { return samples_; }
  // A header of "seconds" and each series with its unit, then a line per sample; a gap is an
  // empty field.
  std::string ToCsv() const;

 private:
  std::deque<ScanSample> samples_;
};

}  // namespace ombrelay
