#include <gtest/gtest.h>

#include "host/desktop/idle_pointer.h"

namespace {

TEST(IdlePointer, IsIdleASecondAfterItsLastMotion) {
  kavo::host::IdlePointer pointer;
  pointer.move(5000);
  EXPECT_FALSE(pointer.is_idle(5000));
  EXPECT_FALSE(pointer.is_idle(5999));
  EXPECT_TRUE(pointer.is_idle(6000));
  pointer.move(6500);
  EXPECT_FALSE(pointer.is_idle(7499));
  EXPECT_TRUE(pointer.is_idle(7500));
}

} // namespace
