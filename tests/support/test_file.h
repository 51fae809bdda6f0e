#pragma once
// A file of the test's own in the temporary folder: CTest runs each test in a process of its own,
// side by side, and two tests must not share a file.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>

namespace ombrelay::testing {

// TempDir/ombrelay_SUITE_TEST_name, '/' of a parameterised name made '_'.
inline std::string TestFile(const std::string& name) {
  const ::testing::TestInfo& test = *::testing::UnitTest::GetInstance()->current_test_info();
  std::string file =
      std::string("ombrelay_") + test.test_suite_name() + "_" + test.name() + "_" + name;
  std::ranges::replace(file, '/', '_');
  return (std::filesystem::path(::testing::TempDir()) / file).string();
}

}  // namespace ombrelay::testing
