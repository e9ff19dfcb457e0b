// The array and file commands as a program sends them.
#include <gtest/gtest.h>

#include "runtime/text.h"
#include "tests/host/bridge.h"
#include "tests/runtime/values.h"
#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"

namespace {

using kavo::test::InvisibleBridge;
using kavo::test::Numbers;
using kavo::test::numbers;
using kavo::test::own_deep;
using kavo::test::read_file;
using kavo::test::Rows;
using kavo::test::rows;
using kavo::test::Strings;
using kavo::test::take_rows;
using kavo::test::take_strings;
using kavo::test::TemporaryFolder;

TEST(DataCommands, TransposeGivesANewMatrix) {
  InvisibleBridge host;
  EXPECT_EQ(take_rows(host.bridge.fetch("TRANSPOSE", rows({{1, 2}, {3, 4}}).get())),
            (Rows{{1, 3}, {2, 4}}));
}

TEST(DataCommands, ReshapeMakesABoard) {
  InvisibleBridge host;
  EXPECT_EQ(take_rows(host.bridge.fetch("RESHAPE", numbers({0}).get(), numbers({2, 3}).get())),
            (Rows{{0, 0, 0}, {0, 0, 0}}));
}

TEST(DataCommands, MvinsPutsARowOnTop) {
  InvisibleBridge host;
  EXPECT_EQ(take_rows(host.bridge.fetch("MVINS", rows({{1}}).get(), 0, 0, numbers({0}).get())),
            (Rows{{0}, {1}}));
}

TEST(DataCommands, SplitCutsALine) {
  InvisibleBridge host;
  EXPECT_EQ(take_strings(host.bridge.fetch("SPLIT", "KAV;9999", ";")), (Strings{"KAV", "9999"}));
}

TEST(DataCommands, ErrorsNameCommandAndArgument) {
  InvisibleBridge host;
  EXPECT_EQ(host.bridge.error_of_fetch("TRANSPOSE", rows({{1, 2}, {3}}).get()),
            "TRANSPOSE: argument 1 must have rows of one length, but row 0 has 2 elements and "
            "row 1 has 1");
  EXPECT_EQ(host.bridge.error_of_fetch("SPLIT", "a", ""),
            "SPLIT: argument 2 (separator) must be at least one character, got \"\"");
}

TEST(DataCommands, ANullTextIsAnEmptyOne) {
  InvisibleBridge host;
  const char* null = nullptr;
  EXPECT_EQ(take_strings(host.bridge.fetch("SPLIT", null, ";")), Strings{""});
}

TEST(DataCommands, DirListsWhatExists) {
  const TemporaryFolder folder;
  InvisibleBridge host;
  EXPECT_EQ(take_strings(host.bridge.fetch("DIR$", folder / "scores.txt")), Strings{});
  EXPECT_EQ(host.bridge.take_error(), "");
  EXPECT_EQ(host.bridge.error_of("BINWRITER", folder / "scores.txt", "A;1\n"), "");
  EXPECT_EQ(take_strings(host.bridge.fetch("DIR$", folder / "scores.txt")), Strings{"scores.txt"});
}

TEST(DataCommands, BinwriterTakesTheRegisteredLength) {
  const TemporaryFolder folder;
  InvisibleBridge host;
  const char bytes[] = "a\0b";
  qorrt_register_binary(bytes, 3);
  host.bridge.send("BINWRITER", folder / "a.bin", static_cast<const char*>(bytes));
  qorrt_register_binary(bytes, -1);
  EXPECT_EQ(read_file(folder / "a.bin"), std::string("a\0b", 3));
}

TEST(DataCommands, SplitRegistersPartsWithNulBytes) {
  InvisibleBridge host;
  const char bytes[] = "a\0b;c";
  qorrt_register_binary(bytes, 5);
  const auto parts = own_deep(host.bridge.fetch("SPLIT", static_cast<const char*>(bytes), ";"));
  qorrt_register_binary(bytes, -1);
  EXPECT_EQ(qorrt_strlen(qor_array_get_str(parts.get(), 0)), 3);
  EXPECT_LT(qorrt_strlen(qor_array_get_str(parts.get(), 1)), 0);
}

TEST(DataCommands, BinwriterNamesPathAndReason) {
  InvisibleBridge host;
  EXPECT_EQ(host.bridge.error_of("BINWRITER", "/nowhere/a.txt", "x"),
            "BINWRITER: cannot write \"/nowhere/a.txt\": No such file or directory");
}

} // namespace
