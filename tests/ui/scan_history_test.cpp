// The plots' numbers from the panel's texts: each cell from the stacks the panel shows, gaps for
// what shows no number, and the CSV an engineer exports.

#include "app/scan_history.h"

#include <gtest/gtest.h>

namespace ombrelay {
namespace {

using Values = std::array<std::optional<double>, kScanSeriesCount>;

ShownTexts ThreeCellPack() {
  ShownTexts shown;
  shown.stackedCells = {"3806", "7541", "11487", std::nullopt};
  shown.battery = "11143";
  shown.pack = "11600";
  shown.temperatures = {"26.8", "22.9", "", std::nullopt, std::nullopt};
  shown.current = "-546";
  return shown;
}

TEST(ScanHistory, CellsComeFromTheStacksAndWhatShowsNoNumberIsAGap) {
  EXPECT_EQ(SampleOf(2.5, ThreeCellPack()).values,
            (Values{3806, 3735, 3946, std::nullopt, 11487, 11143, 11600, 26.8, 22.9, std::nullopt,
                    std::nullopt, std::nullopt, -546}));

  // A failed read in the middle of the stack: neither that cell nor the one above it is known,
  // the top of the stack still is.
  ShownTexts broken = ThreeCellPack();
  broken.stackedCells[1] = "Err_Rd";
  broken.current = "12 mA";
  broken.battery = " 11143 ";
  const Values values = SampleOf(0, broken).values;
  EXPECT_EQ(values[0], 3806);
  EXPECT_EQ(values[1], std::nullopt);
  EXPECT_EQ(values[2], std::nullopt);
  EXPECT_EQ(values[4], 11487);
  EXPECT_EQ(values[5], 11143);
  EXPECT_EQ(values[12], std::nullopt);

  // The top box failing leaves the stack unknown, not the one below it.
  ShownTexts topFailed = ThreeCellPack();
  topFailed.stackedCells[2] = "Err_Rd";
  EXPECT_EQ(SampleOf(0, topFailed).values[4], std::nullopt);
}

TEST(ScanHistory, ExportsEverySampleWithItsGapsAsCsv) {
  ScanHistory history;
  history.Add(SampleOf(1, ThreeCellPack()));
  ShownTexts later = ThreeCellPack();
  later.current = "Err_Rd";
  later.temperatures[1] = "30.9";
  history.Add(SampleOf(3.25, later));
  EXPECT_EQ(history.ToCsv(),
            "seconds,Cell 1 (mV),Cell 2 (mV),Cell 3 (mV),Cell 4 (mV),Stack (mV),Battery (mV),"
            "Pack (mV),Internal Temp (degC),Ext 1 Temp (degC),Ext 2 Temp (degC),"
            "Ext 3 Temp (degC),Ext 4 Temp (degC),Current (mA)\n"
            "1,3806,3735,3946,,11487,11143,11600,26.8,22.9,,,,-546\n"
            "3.25,3806,3735,3946,,11487,11143,11600,26.8,30.9,,,,\n");
}

TEST(ScanHistory, KeepsTheLatestDayOnly) {
  ScanHistory history;
  for (std::size_t i = 0; i < ScanHistory::kMostSamples + 2; ++i)
    history.Add(SampleOf(static_cast<double>(i), {}));
  EXPECT_EQ(history.Samples().size(), ScanHistory::kMostSamples);
  EXPECT_EQ(history.Samples().front().seconds, 2);
  EXPECT_EQ(history.Samples().back().seconds, static_cast<double>(ScanHistory::kMostSamples + 1));
}

}  // namespace
}  // namespace ombrelay
