#pragma once
// The expected traces of the flows, kept as files beside the tests: tests/traces/<name>.trace,
// one line of the FlowTrace format each, written from the algorithms they pin. In the files:
//
//   # a comment                 a whole line; blank lines are ignored as well
//   repeat 3                    the lines up to the matching "end", three times; blocks nest
//   end
//   include read-cal-rows       the lines of tests/traces/read-cal-rows.trace, spliced in
//   {challenge}                 a value the test works out for itself, such as a digest over a
//                               challenge the gauge made up, put in by name

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace ombrelay::testing {

// The lines of the expected trace name, comments dropped, repeats and includes expanded.
std::vector<std::string> ExpectedTrace(const std::string& name);

// Passes when actual is the expected trace name, line for line. Else it shows where the two
// part, and leaves actual in traces-actual/<name>.trace under the working directory, to be read
// against the algorithm (never to be copied over unread).
::testing::AssertionResult MatchesTrace(const std::vector<std::string>& actual,
                                        const std::string& name);
// The same, with each {key} of values put in first.
::testing::AssertionResult MatchesTrace(const std::vector<std::string>& actual,
                                        const std::string& name,
                                        const std::map<std::string, std::string>& values);

// A trace's name as a parameterised test's name, which takes letters, digits and '_' only.
std::string TestNameOf(std::string traceName);

}  // namespace ombrelay::testing
