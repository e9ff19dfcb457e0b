// The array and file commands as a program sends them.
#include <gtest/gtest.h>

#include "runtime/text.h"
#include "tests/host/bridge.h"
#include "tests/runtime/values.h"
#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"

namespace {

using kavo::test::Bridge;
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
  Bridge bridge;
  EXPECT_EQ(take_rows(bridge.fetch("TRANSPOSE", rows({{1, 2}, {3, 4}}).get())),
            (Rows{{1, 3}, {2, 4}}));
}

TEST(DataCommands, ReshapeMakesABoard) {
  Bridge bridge;
  EXPECT_EQ(take_rows(bridge.fetch("RESHAPE", numbers({0}).get(), numbers({2, 3}).get())),
            (Rows{{0, 0, 0}, {0, 0, 0}}));
}

TEST(DataCommands, MvinsPutsARowOnTop) {
  Bridge bridge;
  EXPECT_EQ(take_rows(bridge.fetch("MVINS", rows({{1}}).get(), 0, 0, numbers({0}).get())),
            (Rows{{0}, {1}}));
}

TEST(DataCommands, MvinsTakesThePositionBeforeTheAxis) {
  Bridge bridge;
  EXPECT_EQ(take_rows(bridge.fetch("MVINS", rows({{1}, {2}}).get(), 1, 0, numbers({0}).get())),
            (Rows{{1}, {0}, {2}}));
  EXPECT_EQ(bridge.error_of_fetch("MVINS", rows({{1}, {2}}).get(), 0, 1, numbers({0}).get()),
            "MVINS: argument 3 (axis) must be 0, which means rows, got 1");
}

TEST(DataCommands, SplitCutsALine) {
  Bridge bridge;
  EXPECT_EQ(take_strings(bridge.fetch("SPLIT", "KAV;9999", ";")), (Strings{"KAV", "9999"}));
}

TEST(DataCommands, ErrorsNameCommandAndArgument) {
  Bridge bridge;
  EXPECT_EQ(bridge.error_of_fetch("TRANSPOSE", rows({{1, 2}, {3}}).get()),
            "TRANSPOSE: argument 1 must have rows of one length, but row 0 has 2 elements and "
            "row 1 has 1");
  EXPECT_EQ(bridge.error_of_fetch("SPLIT", "a", ""),
            "SPLIT: argument 2 (separator) must be at least one character, got \"\"");
}

TEST(DataCommands, RefuseLengthsThatCannotBe) {
  Bridge bridge;
  const char bytes[] = "a;b";
  qorrt_register_binary(bytes, 1'000'000'000'000);
  EXPECT_EQ(bridge.error_of_fetch("SPLIT", static_cast<const char*>(bytes), ";"),
            "SPLIT: argument 1 (text) must be at most 2147483648 bytes long, got 1000000000000");
  qorrt_register_binary(bytes, -1);
  const QorArray array = {.data = nullptr, .length = -1, .flags = 0, .tags = nullptr};
  EXPECT_EQ(bridge.error_of_fetch("TRANSPOSE", &array),
            "TRANSPOSE: argument 1 must not have a negative length, but one is -1");
}

TEST(DataCommands, ANullTextIsAnEmptyOne) {
  Bridge bridge;
  const char* null = nullptr;
  EXPECT_EQ(take_strings(bridge.fetch("SPLIT", null, ";")), Strings{""});
}

TEST(DataCommands, DirListsWhatExists) {
  const TemporaryFolder folder;
  Bridge bridge;
  EXPECT_EQ(take_strings(bridge.fetch("DIR$", folder / "scores.txt")), Strings{});
  EXPECT_EQ(bridge.take_error(), "");
  EXPECT_EQ(bridge.error_of("BINWRITER", folder / "scores.txt", "A;1\n"), "");
  EXPECT_EQ(take_strings(bridge.fetch("DIR$", folder / "scores.txt")), Strings{"scores.txt"});
}

TEST(DataCommands, BinwriterTakesTheRegisteredLength) {
  const TemporaryFolder folder;
  Bridge bridge;
  const char bytes[] = "a\0b";
  qorrt_register_binary(bytes, 3);
  bridge.send("BINWRITER", folder / "a.bin", static_cast<const char*>(bytes));
  qorrt_register_binary(bytes, -1);
  EXPECT_EQ(read_file(folder / "a.bin"), std::string("a\0b", 3));
}

TEST(DataCommands, SplitRegistersPartsWithNulBytes) {
  Bridge bridge;
  const char bytes[] = "a\0b;c";
  qorrt_register_binary(bytes, 5);
  const auto parts = own_deep(bridge.fetch("SPLIT", static_cast<const char*>(bytes), ";"));
  qorrt_register_binary(bytes, -1);
  EXPECT_EQ(qorrt_strlen(qor_array_get_str(parts.get(), 0)), 3);
  EXPECT_LT(qorrt_strlen(qor_array_get_str(parts.get(), 1)), 0);
}

TEST(DataCommands, BinwriterNamesPathAndReason) {
  Bridge bridge;
  EXPECT_EQ(bridge.error_of("BINWRITER", "/nowhere/a.txt", "x"),
            "BINWRITER: cannot write \"/nowhere/a.txt\": No such file or directory");
}

} // namespace
