#include <gtest/gtest.h>

#include "host/desktop/message_window.h"

namespace {

using kavo::host::wrapped;

TEST(MessageText, IsBrokenAtBlanks) {
  EXPECT_EQ(wrapped("one two three", 7), "one two\nthree");
  EXPECT_EQ(wrapped("one two three", 6), "one\ntwo\nthree");
  EXPECT_EQ(wrapped("one two three", 13), "one two three");
}

TEST(MessageText, KeepsItsOwnLines) {
  EXPECT_EQ(wrapped("one\n\ntwo three", 7), "one\n\ntwo\nthree");
  EXPECT_EQ(wrapped("one\n", 7), "one\n");
  EXPECT_EQ(wrapped("", 7), "");
}

TEST(MessageText, GivesALongWordALineOfItsOwn) {
  EXPECT_EQ(wrapped("a /home/player/data b", 7), "a\n/home/player/data\nb");
}

} // namespace
