// Text files, directories, paths and the environment.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "runtime/error.h"
#include "runtime/files.h"
#include "tests/runtime/values.h"

namespace {

using namespace std::string_literals;
using kavo::test::take;
namespace fs = std::filesystem;

// A folder of its own for each test, gone afterwards.
class Files : public testing::Test {
protected:
  void SetUp() override {
    qor_err_clear();
    folder_ = take(qor_mktemp("qor-files-test-"));
    ASSERT_TRUE(fs::create_directory(folder_));
  }
  void TearDown() override {
    fs::current_path(start_);
    fs::remove_all(folder_);
    qor_err_clear();
  }

  std::string path(const std::string& name) const { return folder_ + "/" + name; }
  const std::string& folder() const { return folder_; }

  static void put(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
  }
  static std::string bytes_in(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

private:
  fs::path start_ = fs::current_path();
  std::string folder_;
};

using Reading = Files;

TEST_F(Reading, OfAMissingFileIsEmptyAndNoError) {
  EXPECT_EQ(take(qor_txtreader(path("none").c_str())), "");
  EXPECT_EQ(take(qor_txtreader(nullptr)), "");
  EXPECT_EQ(take(qor_txtreader(folder().c_str())), "") << "a directory";
  EXPECT_EQ(qor_err_code_visible(), 0);
}

TEST_F(Reading, OfWhatIsNoFileIsEmptyAtOnce) {
  ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
  fs::create_symlink(path("pipe"), path("link"));
  EXPECT_EQ(take(qor_txtreader(path("pipe").c_str())), "");
  EXPECT_EQ(take(qor_txtreader(path("link").c_str())), "");
  EXPECT_EQ(take(qor_txtreader_enc("/dev/zero", "latin1")), "");
  EXPECT_EQ(qor_err_code_visible(), 0);
}

TEST_F(Reading, GivesTheWholeFile) {
  const std::string text = "AAA 100\nBBB 50\n" + std::string(100000, 'x');
  put(path("t"), text);
  EXPECT_EQ(take(qor_txtreader(path("t").c_str())), text);
}

TEST_F(Reading, FollowsAByteOrderMark) {
  put(path("t"), "\xFE\xFF\0\xFC"s);
  EXPECT_EQ(take(qor_txtreader(path("t").c_str())), "ü");
}

TEST_F(Reading, GivesTheRawBytesWhenTheyDoNotConvert) {
  put(path("t"), "gr\xFCn");
  EXPECT_EQ(take(qor_txtreader(path("t").c_str())), "gr\xFCn");
  EXPECT_EQ(take(qor_txtreader_enc(path("t").c_str(), "klingon")), "gr\xFCn");
  EXPECT_EQ(take(qor_txtreader_enc(path("t").c_str(), "utf8")), "gr\xFCn");
}

TEST_F(Reading, ConvertsFromTheNamedEncoding) {
  put(path("t"), "gr\xFCn");
  EXPECT_EQ(take(qor_txtreader_enc(path("t").c_str(), "cp1252")), "grün");
}

TEST_F(Reading, KeepsNulBytes) {
  put(path("t"), "a\0b"s);
  EXPECT_EQ(take(qor_txtreader(path("t").c_str())), "a\0b"s);
}

using Writing = Files;

TEST_F(Writing, ReplacesWhatTheFileHeld) {
  qor_txtwriter(path("t").c_str(), "a longer text\n");
  qor_txtwriter(path("t").c_str(), "short");
  EXPECT_EQ(bytes_in(path("t")), "short");
  qor_txtwriter(path("t").c_str(), nullptr);
  EXPECT_EQ(bytes_in(path("t")), "");
}

TEST_F(Writing, AppendsWhenAskedTo) {
  qor_txtwriter_append(path("t").c_str(), "a");
  qor_txtwriter_append(path("t").c_str(), "b");
  qor_txtwriter3(path("t").c_str(), "c", 1);
  EXPECT_EQ(bytes_in(path("t")), "abc");
  qor_txtwriter3(path("t").c_str(), "d", 0);
  EXPECT_EQ(bytes_in(path("t")), "d");
}

TEST_F(Writing, SkipsAFileThatCannotBeOpened) {
  qor_txtwriter(path("none/t").c_str(), "x");
  qor_txtwriter(nullptr, "x");
  qor_txtwriter_enc(path("none/t").c_str(), "x", 0, "utf8");
  EXPECT_EQ(qor_err_code_visible(), 0);
}

TEST_F(Writing, WaitsForNoReaderOfAPipe) {
  ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
  qor_txtwriter(path("pipe").c_str(), "x");
  qor_txtwriter_append(path("pipe").c_str(), "x");
  qor_txtwriter_enc(path("pipe").c_str(), "x", 0, "utf8");
  EXPECT_TRUE(fs::is_fifo(path("pipe")));
  EXPECT_EQ(qor_err_code_visible(), 0);
}

TEST_F(Writing, GivesAPipeThatIsReadWhatItTakes) {
  ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
  const int reader = open(path("pipe").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  qor_txtwriter(path("pipe").c_str(), "first");
  std::array<char, 8> received{};
  EXPECT_EQ(read(reader, received.data(), received.size()), 5);
  EXPECT_EQ(std::string(received.data()), "first");
  const std::string more_than_it_holds(4 << 20, 'x');
  qor_txtwriter(path("pipe").c_str(), more_than_it_holds.c_str());
  EXPECT_EQ(read(reader, received.data(), received.size()), 8);
  close(reader);
}

TEST_F(Writing, ConvertsToTheNamedEncoding) {
  qor_txtwriter_enc(path("t").c_str(), "grün", 0, "latin1");
  EXPECT_EQ(bytes_in(path("t")), "gr\xFCn");
  qor_txtwriter_enc(path("t").c_str(), "grün", 0, nullptr);
  EXPECT_EQ(bytes_in(path("t")), "grün");
  qor_txtwriter_enc(path("t").c_str(), nullptr, 0, "latin1");
  EXPECT_EQ(bytes_in(path("t")), "");
}

TEST_F(Writing, KeepsATextThatDoesNotConvert) {
  qor_txtwriter_enc(path("t").c_str(), "5 €", 0, "latin1");
  EXPECT_EQ(bytes_in(path("t")), "5 €");
  qor_txtwriter_enc(path("t").c_str(), "5 €", 0, "klingon");
  EXPECT_EQ(bytes_in(path("t")), "5 €");
}

TEST_F(Writing, MarksTheByteOrderOnceOnly) {
  qor_txtwriter_enc(path("t").c_str(), "a", 1, "utf16");
  qor_txtwriter_enc(path("t").c_str(), "b", 1, "utf16");
  EXPECT_EQ(bytes_in(path("t")), "\xFF\xFE\x61\0\x62\0"s);
}

using Directories = Files;

TEST_F(Directories, AreMadeAndRemoved) {
  EXPECT_EQ(qor_mkdir_native(path("d").c_str()), 0);
  EXPECT_EQ(qor_file_isdir(path("d").c_str()), 1);
  EXPECT_EQ(qor_mkdir_native(path("d").c_str()), -1) << "it exists";
  EXPECT_EQ(qor_mkdir_native(nullptr), -1);
  qor_rmdir(path("d").c_str());
  EXPECT_EQ(qor_file_exists(path("d").c_str()), 0);
  EXPECT_EQ(qor_err_code_visible(), 0);
}

TEST_F(Directories, AreRemovedOnlyWhenEmpty) {
  put(path("t"), "x");
  qor_rmdir(folder().c_str());
  qor_rmdir(nullptr);
  EXPECT_EQ(qor_file_isdir(folder().c_str()), 1);
}

TEST_F(Directories, AreNotOpenToOthersWriting) {
  qor_mkdir_native(path("d").c_str());
  const auto permissions = fs::status(path("d")).permissions();
  EXPECT_EQ(permissions & fs::perms::others_write, fs::perms::none);
  EXPECT_EQ(permissions & fs::perms::group_write, fs::perms::none);
  EXPECT_EQ(permissions & fs::perms::owner_all, fs::perms::owner_all);
}

TEST_F(Directories, AreChangedTo) {
  EXPECT_EQ(take(qor_cd(folder().c_str())), fs::canonical(folder()).string());
  EXPECT_EQ(take(qor_pwd()), fs::canonical(folder()).string());
  EXPECT_EQ(take(qor_cd("")), fs::canonical(folder()).string());
  EXPECT_EQ(take(qor_cd(nullptr)), fs::canonical(folder()).string());
  EXPECT_EQ(qor_err_code_visible(), 0);
}

TEST_F(Directories, ThatCannotBeEnteredSetTheErrorAndStay) {
  const auto here = take(qor_pwd());
  EXPECT_EQ(take(qor_cd(path("none").c_str())), here);
  EXPECT_EQ(qor_err_code(), 1);
  EXPECT_EQ(take(qor_err_msg()), "CD: cannot change directory");
}

TEST_F(Directories, ThatAreGoneReadAsEmpty) {
  const auto gone = path("gone");
  fs::create_directory(gone);
  take(qor_cd(gone.c_str()));
  fs::remove(gone);
  EXPECT_EQ(take(qor_pwd()), "");
}

using Questions = Files;

TEST_F(Questions, AboutAFile) {
  put(path("t"), "12345");
  EXPECT_EQ(qor_file_exists(path("t").c_str()), 1);
  EXPECT_EQ(qor_file_isdir(path("t").c_str()), 0);
  EXPECT_EQ(qor_file_size(path("t").c_str()), 5);
}

TEST_F(Questions, AboutADirectory) {
  EXPECT_EQ(qor_file_exists(folder().c_str()), 1);
  EXPECT_EQ(qor_file_isdir(folder().c_str()), 1);
  EXPECT_EQ(qor_file_size(folder().c_str()), -1);
}

TEST_F(Questions, AboutNothing) {
  for (const char* missing : {"", "/does/not/exist", static_cast<const char*>(nullptr)}) {
    EXPECT_EQ(qor_file_exists(missing), 0);
    EXPECT_EQ(qor_file_isdir(missing), 0);
    EXPECT_EQ(qor_file_size(missing), -1);
  }
}

class Environment : public Files {
protected:
  void SetUp() override {
    Files::SetUp();
    had_folder_ = std::getenv("TMPDIR") != nullptr;
    temporary_ = take(qor_getenv("TMPDIR"));
  }
  void TearDown() override {
    qor_setenv("TMPDIR", had_folder_ ? temporary_.c_str() : nullptr);
    Files::TearDown();
  }

private:
  bool had_folder_ = false;
  std::string temporary_;
};

TEST_F(Environment, TemporaryPathsStandInTmpByDefault) {
  qor_setenv("TMPDIR", nullptr);
  const auto path = take(qor_mktemp(nullptr));
  EXPECT_EQ(path.substr(0, 8), "/tmp/qor");
  EXPECT_EQ(path.size(), 8U + 6U);
  EXPECT_FALSE(fs::exists(path));
}

TEST_F(Environment, TemporaryPathsStandInTmpdirWithThePrefix) {
  qor_setenv("TMPDIR", folder().c_str());
  const auto path = take(qor_mktemp("shot-"));
  EXPECT_EQ(path.substr(0, path.size() - 6), folder() + "/shot-");
  EXPECT_FALSE(fs::exists(path));
}

TEST_F(Environment, ATemporaryPathThatCannotBeMadeIsEmpty) {
  qor_setenv("TMPDIR", "/does/not/exist");
  EXPECT_EQ(take(qor_mktemp("")), "");
}

TEST_F(Environment, VariablesAreSetReplacedAndUnset) {
  qor_setenv("QOR_TEST_VARIABLE", "one");
  qor_setenv("QOR_TEST_VARIABLE", "two");
  EXPECT_EQ(take(qor_getenv("QOR_TEST_VARIABLE")), "two");
  qor_setenv("QOR_TEST_VARIABLE", nullptr);
  EXPECT_EQ(take(qor_getenv("QOR_TEST_VARIABLE")), "");
  qor_setenv(nullptr, "x");
  qor_setenv("", "x");
  EXPECT_EQ(take(qor_getenv(nullptr)), "");
}

TEST(Paths, HaveAFolderPart) {
  for (const auto& [path, folder] : {std::pair{"a/b/c", "a/b"},
                                     {"a/b/", "a"},
                                     {"a", "."},
                                     {"/a", "/"},
                                     {"/", "/"},
                                     {"", "."},
                                     {"a//b", "a"},
                                     {"//a", "/"},
                                     {".", "."}})
    EXPECT_EQ(take(qor_path_dirname(path)), folder) << path;
  EXPECT_EQ(take(qor_path_dirname(nullptr)), ".");
}

TEST(Paths, AreNormalisedByTheirText) {
  for (const auto& [path, normal] : {std::pair{"a//b/./c/", "a/b/c"},
                                     {"a/../b", "b"},
                                     {"../a", "../a"},
                                     {"/..", "/"},
                                     {"a/..", "."},
                                     {"", "."},
                                     {"/", "/"},
                                     {"./a", "a"}})
    EXPECT_EQ(take(qor_path_normalize(path)), normal) << path;
}

} // namespace
