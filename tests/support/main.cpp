// The main of every test binary: a run that executes no test fails.
#include <gtest/gtest.h>

#include <cstdio>

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  const int result = RUN_ALL_TESTS();
  if (testing::UnitTest::GetInstance()->test_to_run_count() > 0)
    return result;
  std::fputs("No test ran: look at the filter\n", stderr);
  return 1;
}
