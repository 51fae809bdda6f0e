#include "app/scan_history.h"

#include <charconv>

#include "shell/numeric.h"

namespace ombrelay {
namespace {

enum Index : std::size_t { kCell1, kStack = 4, kBattery, kPack, kInternalTemp, kCurrent = 12 };

// The number a box shows, when all it shows is a number.
std::optional<double> NumberIn(const std::optional<std::string>& text) {
  if (!text) return std::nullopt;
  const std::string_view trimmed = Trim(*text);
  double value = 0;
  const char* end = trimmed.data() + trimmed.size();
  const auto [stop, error] = std::from_chars(trimmed.data(), end, value);
  if (trimmed.empty() || error != std::errc() || stop != end) return std::nullopt;
  return value;
}

}  // namespace

const std::array<ScanSeries, kScanSeriesCount>& ScanSeriesList() {
  static const std::array<ScanSeries, kScanSeriesCount> series = {{
      {"Cell 1", "mV", ScanChart::CellVoltages},
      {"Cell 2", "mV", ScanChart::CellVoltages},
      {"Cell 3", "mV", ScanChart::CellVoltages},
      {"Cell 4", "mV", ScanChart::CellVoltages},
      {"Stack", "mV", ScanChart::StackVoltages},
      {"Battery", "mV", ScanChart::StackVoltages},
      {"Pack", "mV", ScanChart::StackVoltages},
      {"Internal Temp", "degC", ScanChart::Temperatures},
      {"Ext 1 Temp", "degC", ScanChart::Temperatures},
      {"Ext 2 Temp", "degC", ScanChart::Temperatures},
      {"Ext 3 Temp", "degC", ScanChart::Temperatures},
      {"Ext 4 Temp", "degC", ScanChart::Temperatures},
      {"Current", "mA", ScanChart::Current},
  }};
  return series;
}

ScanSample SampleOf(double seconds, const ShownTexts& shown) {
  ScanSample sample;
  sample.seconds = seconds;
  std::optional<double> below = 0.0;
  for (std::size_t i = 0; i < shown.stackedCells.size() && shown.stackedCells[i]; ++i) {
    const std::optional<double> stack = NumberIn(shown.stackedCells[i]);
    if (stack && below) sample.values[kCell1 + i] = *stack - *below;
    sample.values[kStack] = stack;
    below = stack;
  }
  sample.values[kBattery] = NumberIn(shown.battery);
  sample.values[kPack] = NumberIn(shown.pack);
  for (std::size_t i = 0; i < shown.temperatures.size(); ++i)
    sample.values[kInternalTemp + i] = NumberIn(shown.temperatures[i]);
  sample.values[kCurrent] = NumberIn(shown.current);
  return sample;
}

void ScanHistory::Add(const ScanSample& sample) {
  samples_.push_back(sample);
  if (samples_.size() > kMostSamples) samples_.pop_front();
}

std::string ScanHistory::ToCsv() const {
  std::string csv = "seconds";
  for (const ScanSeries& series : ScanSeriesList())
    csv += std::string(",") + series.name + " (" + series.unit + ")";
  csv += '\n';
  for (const ScanSample& sample : samples_) {
    csv += FormatShortest(sample.seconds);
    for (const std::optional<double>& value : sample.values) {
      csv += ',';
      if (value) csv += FormatShortest(*value);
    }
    csv += '\n';
  }
  return csv;
}

}  // namespace ombrelay
