// The table's file: a real folder, real files, real failures.
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cmath>
#include <csignal>
#include <filesystem>
#include <vector>

#include "game/highscores/table.h"
#include "tests/game/game_fixture.h"

namespace kavo::test {
namespace {

namespace fs = std::filesystem;

constexpr const char* file = "tmp/kavo_high.txt";
constexpr const char* default_table = "---;0\n---;0\n---;0\n---;0\n---;0";

class ScoreFileTest : public GameTest {
protected:
  void SetUp() override {
    GameTest::SetUp();
    fs::create_directory("tmp");
  }

  static void load(const std::string& content) {
    write_file(file, content);
    run(LOADHIGH());
  }

  static void expect_entry(int64_t slot, const std::string& name, double score) {
    EXPECT_EQ(name_at(slot), name) << "slot " << slot;
    EXPECT_EQ(score_at(slot), score) << "slot " << slot;
  }

  static void expect_defaults_from(int64_t first) {
    for (int64_t slot = first; slot < 5; ++slot)
      expect_entry(slot, "---", 0);
  }

  // Saves a table with one entry and expects the host to refuse, naming the file.
  static std::string refused_save() {
    run(HS_INSERT("NEW", 0, 600));
    std::string message = take_error();
    EXPECT_TRUE(message.starts_with("BINWRITER: cannot write \"tmp/kavo_high.txt\": ")) << message;
    expect_entry(0, "NEW", 600);
    return message;
  }

  WorkingFolder folder;
};

// ---- reading
// -------------------------------------------------------------------------------------

TEST_F(ScoreFileTest, WithoutAFileTheTableHoldsFiveDashesWithZero) {
  run(LOADHIGH());
  expect_defaults_from(0);
  EXPECT_TRUE(same(new_trace(), {R"(DIR$ "tmp/kavo_high.txt")"}));
}

TEST_F(ScoreFileTest, WithoutAFolderTheDefaultsStay) {
  fs::remove("tmp");
  run(LOADHIGH());
  expect_defaults_from(0);
}

TEST_F(ScoreFileTest, TheFileIsListedThenSplitIntoLinesAndFields) {
  load("JON;1200\nABE;900");
  EXPECT_TRUE(same(new_trace(), {
                                    R"(DIR$ "tmp/kavo_high.txt")",
                                    "SPLIT \"JON;1200\nABE;900\" \"\n\"",
                                    R"(SPLIT "JON;1200" ";")",
                                    R"(SPLIT "ABE;900" ";")",
                                }));
}

TEST_F(ScoreFileTest, FiveLinesFillTheTable) {
  load("JON;12000\nABE;8400\nZED;5000\nQUI;1200\nTOM;10");
  expect_entry(0, "JON", 12000);
  expect_entry(1, "ABE", 8400);
  expect_entry(2, "ZED", 5000);
  expect_entry(3, "QUI", 1200);
  expect_entry(4, "TOM", 10);
}

TEST_F(ScoreFileTest, ThreeLinesLeaveTheLastTwoSlotsAtTheirDefaults) {
  load("JON;12000\nABE;8400\nZED;5000");
  expect_entry(2, "ZED", 5000);
  expect_defaults_from(3);
}

TEST_F(ScoreFileTest, LinesAfterTheFifthAreIgnored) {
  load("A;5\nB;4\nC;3\nD;2\nE;1\nF;99");
  expect_entry(4, "E", 1);
  EXPECT_EQ(host().count("SPLIT"), 6);
}

TEST_F(ScoreFileTest, ALineWithoutASemicolonLeavesItsSlotAsItWas) {
  load("JON;12000\nnonsense\nZED;5000");
  expect_entry(0, "JON", 12000);
  expect_entry(1, "---", 0);
  expect_entry(2, "ZED", 5000);
}

TEST_F(ScoreFileTest, FieldsAfterTheSecondAreIgnored) {
  load("JON;12000;7;8");
  expect_entry(0, "JON", 12000);
}

TEST_F(ScoreFileTest, AScoreThatIsNoNumberReadsAsZero) {
  load("JON;many\nABE;12abc\nZED;");
  expect_entry(0, "JON", 0);
  expect_entry(1, "ABE", 12);
  expect_entry(2, "ZED", 0);
}

TEST_F(ScoreFileTest, ABlankNameIsKept) {
  load(";7\n   ;6");
  expect_entry(0, "", 7);
  expect_entry(1, "   ", 6);
}

TEST_F(ScoreFileTest, LinesOutOfOrderAreKeptInTheOrderRead) {
  load("A;1\nB;9\nC;5");
  expect_entry(0, "A", 1);
  expect_entry(1, "B", 9);
  expect_entry(2, "C", 5);
}

TEST_F(ScoreFileTest, AnEmptyFileLeavesTheDefaults) {
  load("");
  expect_defaults_from(0);
}

TEST_F(ScoreFileTest, AFinalLineFeedDoesNoHarm) {
  load("JON;12000\n");
  expect_entry(0, "JON", 12000);
  expect_defaults_from(1);
}

TEST_F(ScoreFileTest, CarriageReturnsDoNotReachNamesOrScores) {
  load("JON;12000\r\nABE;8400\r\n");
  expect_entry(0, "JON", 12000);
  expect_entry(1, "ABE", 8400);
  expect_defaults_from(2);
}

TEST_F(ScoreFileTest, OnlySemicolonsGiveEmptyNamesWithoutPoints) {
  load(std::string(100, ';'));
  expect_entry(0, "", 0);
  expect_defaults_from(1);
}

TEST_F(ScoreFileTest, OneVeryLongLineIsRead) {
  const std::string name(1'000'000, 'N');
  load(name + ";77");
  EXPECT_TRUE(name_at(0) == name);
  EXPECT_EQ(score_at(0), 77);
}

TEST_F(ScoreFileTest, ANumberOfFourHundredDigitsIsInfinitelyHighAndSurvivesASave) {
  load("JON;" + std::string(400, '9'));
  EXPECT_TRUE(std::isinf(score_at(0)));
  EXPECT_EQ(run(HS_RANK(1e300)), 1);
  run(SAVEHIGH());
  run(LOADHIGH());
  EXPECT_TRUE(std::isinf(score_at(0)));
}

TEST_F(ScoreFileTest, NulBytesEndTheProgramNowhereAndTheTableStaysWhole) {
  load(std::string("JON;12\0ABE;8\n", 13) + std::string(50, '\0') + "\nZED;5");
  expect_entry(0, "JON", 12);
  for (int64_t slot = 0; slot < 5; ++slot)
    EXPECT_NE(qor_array_get_str(HS_NAME.get(), slot), nullptr);
}

TEST_F(ScoreFileTest, ANameEndsAtANulByteAndKeepsItsScoreWhenItIsSaved) {
  load(std::string("JON\0\0N;12\nABE;8", 15));
  run(SAVEHIGH());
  EXPECT_EQ(read_file(file), "JON;12\nABE;8\n---;0\n---;0\n---;0");
}

TEST_F(ScoreFileTest, BytesAboveAsciiAreKeptAsTheyAre) {
  load("J\xC3\x96N;12\n\xFF\x80Z;5");
  expect_entry(0, "J\xC3\x96N", 12);
  EXPECT_EQ(score_at(1), 5);
}

TEST_F(ScoreFileTest, AByteOrderMarkOfUtf16DoesNotHarmTheOtherSlots) {
  load("\xFF\xFEJON;12\nABE;8");
  expect_defaults_from(2);
  EXPECT_EQ(qor_err_code(), 0);
}

TEST_F(ScoreFileTest, AFolderInPlaceOfTheFileLeavesTheDefaults) {
  fs::create_directory(file);
  run(LOADHIGH());
  expect_defaults_from(0);
}

// A socket: no reader opens it, whatever rights it has.
TEST_F(ScoreFileTest, AFileThatIsThereButCannotBeOpenedLeavesTheDefaults) {
  sockaddr_un address = {.sun_family = AF_UNIX, .sun_path = {}};
  std::string_view(file).copy(address.sun_path, sizeof address.sun_path - 1);
  const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
  ASSERT_EQ(bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  run(LOADHIGH());
  close(listener);
  EXPECT_EQ(host().count("DIR$"), 1);
  EXPECT_EQ(host().count("SPLIT"), 2) << "of nothing, which is one empty line";
  expect_defaults_from(0);
  EXPECT_EQ(qor_err_code(), 0);
}

TEST_F(ScoreFileTest, LoadingStopsAtTheCommandThatFails) {
  const auto arrange = [] { write_file(file, "JON;12000\nABE;8400"); };
  EXPECT_EQ(fail_each_command(arrange, [] { run(LOADHIGH()); }), 4);
}

TEST_F(ScoreFileTest, WhatWasReadBeforeAFailureStays) {
  write_file(file, "JON;12000\nABE;8400");
  host().fail_at = 4;
  run(LOADHIGH());
  EXPECT_EQ(take_error(), "SPLIT: failed on command");
  expect_entry(0, "JON", 12000);
  expect_defaults_from(1);
}

// ---- writing
// -------------------------------------------------------------------------------------

TEST_F(ScoreFileTest, TheWholeTableIsWrittenWithOneCommand) {
  run(SAVEHIGH());
  EXPECT_TRUE(same(new_trace(),
                   {"BINWRITER \"tmp/kavo_high.txt\" \"" + std::string(default_table) + "\""}));
  EXPECT_EQ(read_file(file), default_table);
}

TEST_F(ScoreFileTest, AfterAnInsertTheFileHoldsFiveLinesTheFirstBeingTheBest) {
  load("JON;12000\nABE;8400\nZED;5000\nQUI;1200\nTOM;10");
  run(HS_INSERT("NEW", 0, 13000));
  EXPECT_EQ(read_file(file), "NEW;13000\nJON;12000\nABE;8400\nZED;5000\nQUI;1200");
}

TEST_F(ScoreFileTest, ScoresAreWrittenByTheNumberConversion) {
  for (const auto& [slot, score] : {std::pair(0, 1e15), {1, 999999999.0}, {2, 2.5}, {3, -1.0}})
    qor_array_set(HS_SCORE.get(), slot, score);
  run(SAVEHIGH());
  EXPECT_EQ(read_file(file), "---;1e+15\n---;999999999\n---;2.5\n---;-1\n---;0");
}

TEST_F(ScoreFileTest, WhatWasSavedIsReadBack) {
  run(HS_INSERT("KAV", 0, 4242));
  run(HS_INSERT(" B ", 1, 17));
  set_initial_values();
  run(LOADHIGH());
  expect_entry(0, "KAV", 4242);
  expect_entry(1, " B ", 17);
  expect_defaults_from(2);
}

TEST_F(ScoreFileTest, SavingLeavesNothingButTheFileBehind) {
  run(SAVEHIGH());
  run(SAVEHIGH());
  EXPECT_EQ(std::distance(fs::directory_iterator("tmp"), fs::directory_iterator()), 1);
}

TEST_F(ScoreFileTest, AFolderInPlaceOfTheFileIsAnErrorAndTheFolderStays) {
  fs::create_directory(file);
  EXPECT_TRUE(refused_save().ends_with("Is a directory"));
  EXPECT_TRUE(fs::is_directory(file));
}

TEST_F(ScoreFileTest, AFileInPlaceOfTheFolderIsAnErrorAndTheFileStays) {
  fs::remove("tmp");
  write_file("tmp", "a file");
  EXPECT_TRUE(refused_save().ends_with("Not a directory"));
  EXPECT_EQ(read_file("tmp"), "a file");
}

TEST_F(ScoreFileTest, WithoutAFolderSavingIsAnError) {
  fs::remove("tmp");
  EXPECT_TRUE(refused_save().ends_with("No such file or directory"));
}

// Permissions stop nobody who is root, so root becomes somebody else for a while.
class AsUser {
public:
  AsUser() {
    if (!was_root_)
      return;
    for (const char* path : {".", "tmp", file})
      EXPECT_EQ(chown(path, user, user), 0) << path;
    EXPECT_EQ(setresuid(user, user, root), 0);
  }
  ~AsUser() {
    if (was_root_ && setresuid(root, root, root) != 0)
      ADD_FAILURE() << "cannot become root again";
  }
  AsUser(const AsUser&) = delete;
  AsUser& operator=(const AsUser&) = delete;

private:
  static constexpr uid_t root = 0;
  static constexpr uid_t user = 65534;
  bool was_root_ = geteuid() == root;
};

TEST_F(ScoreFileTest, AReadOnlyFolderIsAnErrorAndTheOldFileStays) {
  write_file(file, "JON;12000");
  fs::permissions("tmp", fs::perms::owner_read | fs::perms::owner_exec);
  {
    const AsUser user;
    EXPECT_TRUE(refused_save().ends_with("Permission denied"));
    EXPECT_EQ(read_file(file), "JON;12000");
  }
  fs::permissions("tmp", fs::perms::owner_all);
}

// A disk that is full after a few bytes.
class FullDisk {
public:
  explicit FullDisk(rlim_t bytes) : old_handler_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &old_limit_);
    const rlimit limit = {bytes, old_limit_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FullDisk() {
    setrlimit(RLIMIT_FSIZE, &old_limit_);
    std::signal(SIGXFSZ, old_handler_);
  }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;

private:
  rlimit old_limit_ = {};
  void (*old_handler_)(int);
};

TEST_F(ScoreFileTest, AFullDiskIsAnErrorAndTheOldFileStays) {
  write_file(file, "JON;12000");
  std::string message;
  {
    const FullDisk disk(10);
    run(HS_INSERT("NEW", 0, 600));
    message = take_error();
  }
  EXPECT_EQ(message, "BINWRITER: cannot write \"tmp/kavo_high.txt\": File too large");
  EXPECT_EQ(read_file(file), "JON;12000");
  EXPECT_EQ(std::distance(fs::directory_iterator("tmp"), fs::directory_iterator()), 1);
}

TEST_F(ScoreFileTest, AFileThatMayNotBeWrittenIsAnErrorAndStays) {
  write_file(file, "JON;12000");
  fs::permissions(file, fs::perms::owner_read);
  const AsUser user;
  EXPECT_TRUE(refused_save().ends_with("Permission denied"));
  EXPECT_EQ(read_file(file), "JON;12000");
}

} // namespace
} // namespace kavo::test
