// A home of the tests' own: what the program keeps in it must not be the settings and games of
// whoever runs them, nor theirs be seen here.
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

#include "tests/support/temporary_folder.h"

namespace kavo::test {
namespace {

class OwnHome : public testing::Environment {
public:
  void SetUp() override {
    folder_ = std::make_unique<TemporaryFolder>();
    setenv("XDG_CONFIG_HOME", (*folder_ / "config").c_str(), 1);
    setenv("XDG_STATE_HOME", (*folder_ / "state").c_str(), 1);
  }
  void TearDown() override { folder_.reset(); }

private:
  std::unique_ptr<TemporaryFolder> folder_;
};

[[maybe_unused]] const auto* const own_home = testing::AddGlobalTestEnvironment(new OwnHome);

} // namespace
} // namespace kavo::test
