// How long a test waits for what has to come, before it takes the program to hang. Long enough for a machine
// that gives the test a hundredth of its time: whoever waits goes on as soon as it has come.
//
//   EXPECT_TRUE(QTest::qWaitFor([&] { return seen; }, support::hang_ms));
#pragma once

namespace estructura::support {

inline constexpr int hang_ms = 600'000;

}  // namespace estructura::support
