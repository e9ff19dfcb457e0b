// A program that is killed while it saves, at any moment, and others that run beside it: the table
// is always a whole one, and the next start leaves nothing beside it.
//
// Three hundred kills; with KAVO_KILLS set, that many.
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <new>
#include <random>
#include <string>
#include <thread>

#include "game/highscores/table.h"
#include "game/state.h"
#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"

namespace kavo::test {
namespace {

namespace fs = std::filesystem;

constexpr const char* path = "tmp/kavo_high.txt";

int kills_wanted() {
  const char* wanted = std::getenv("KAVO_KILLS");
  return wanted == nullptr ? 300 : std::atoi(wanted);
}

// The `number`th table that is saved, as it is in memory and in its file.
void set_table(int64_t number) {
  for (int64_t slot = 0; slot < 5; ++slot) {
    put_text(HS_NAME.get(), slot, "KAV");
    qor_array_set(HS_SCORE.get(), slot, static_cast<double>(number * 10 - slot));
  }
}
std::string table_text(int64_t number) {
  std::string text;
  for (int64_t slot = 0; slot < 5; ++slot)
    text += (slot == 0 ? "KAV;" : "\nKAV;") + std::to_string(number * 10 - slot);
  return text;
}

// What a process tells its parent about itself, also after it was killed.
struct Report {
  std::atomic<int64_t> begun = 0; // the table that it was saving last
  std::atomic<int64_t> done = 0;  // the last one that was saved
};

class SharedReport {
public:
  SharedReport()
      : report_(new (mmap(nullptr, sizeof(Report), PROT_READ | PROT_WRITE,
                          MAP_SHARED | MAP_ANONYMOUS, -1, 0)) Report) {}
  ~SharedReport() { munmap(report_, sizeof(Report)); }
  SharedReport(const SharedReport&) = delete;
  SharedReport& operator=(const SharedReport&) = delete;

  Report* operator->() const { return report_; }

private:
  Report* report_;
};

// As much of a start as concerns the table. Only a program that has a name takes it for itself.
void start_up(bool is_alone) {
  std::string name = "kavo";
  char* arguments[] = {name.data(), nullptr};
  qor_runtime_set_handle(is_alone ? qorrt_init(1, arguments) : qorrt_init(0, nullptr));
  set_geometry();
  set_initial_values();
  static_cast<void>(LOADHIGH());
}

// False when that failed; the message is then on standard error.
bool save() {
  static_cast<void>(SAVEHIGH());
  error_is_pending();
  if (qor_err_code() == 0)
    return true;
  const Text message(qor_err_msg());
  std::fprintf(stderr, "%s\n", chars(message));
  return false;
}

// A process that starts, tells so, waits for a go and then saves table after table.
class Saver {
public:
  Saver(const SharedReport& report, int64_t first) {
    if (pipe(started_.data()) != 0 || pipe(go_.data()) != 0)
      std::abort();
    id_ = fork();
    if (id_ == 0)
      save_for_ever(report, first);
    wait_for_byte(started_[0]);
  }
  ~Saver() {
    for (const int end : {started_[0], started_[1], go_[0], go_[1]})
      close(end);
  }
  Saver(const Saver&) = delete;
  Saver& operator=(const Saver&) = delete;

  void kill_after(std::chrono::microseconds delay) {
    send_byte(go_[1]);
    std::this_thread::sleep_for(delay);
    kill(id_, SIGKILL);
    int status = 0;
    waitpid(id_, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status)) << "it ended by itself";
  }

private:
  [[noreturn]] void save_for_ever(const SharedReport& report, int64_t first) {
    start_up(true);
    send_byte(started_[1]);
    wait_for_byte(go_[0]);
    for (int64_t number = first;; ++number) {
      set_table(number);
      report->begun = number;
      if (!save())
        _exit(1);
      report->done = number;
    }
  }
  static void send_byte(int end) { EXPECT_EQ(write(end, "", 1), 1); }
  static void wait_for_byte(int end) {
    char byte = 0;
    EXPECT_EQ(read(end, &byte, 1), 1);
  }

  std::array<int, 2> started_ = {};
  std::array<int, 2> go_ = {};
  pid_t id_ = 0;
};

class Killing : public ::testing::Test {
protected:
  void SetUp() override {
    fs::create_directory("tmp");
    write_file(path, table_text(1));
  }

  // Beside the lock that a program holds while it runs.
  static long files() {
    return std::distance(fs::directory_iterator("tmp"), {}) -
           static_cast<long>(fs::exists("tmp/.kavo_high.txt.lock"));
  }

private:
  WorkingFolder folder_;
};

// What the kills hit.
struct Tally {
  int while_saving = 0;
  int leftovers = 0;
  int new_tables = 0; // though the save had not come back yet
};

TEST_F(Killing, LeavesTheOldTableOrTheNewOneWholeAndNothingElseAfterTheNextStart) {
  const SharedReport report;
  report->begun = report->done = 1;
  std::mt19937 random(1);
  std::uniform_int_distribution<int> delay(0, 4000);
  Tally tally;
  const int kills = kills_wanted();
  for (int i = 0; i < kills; ++i) {
    Saver saver(report, report->begun + 1);
    ASSERT_EQ(files(), 1) << "left after the next start";
    saver.kill_after(std::chrono::microseconds(delay(random)));
    const std::string table = read_file(path);
    const bool is_new = table == table_text(report->begun);
    ASSERT_TRUE(is_new || table == table_text(report->done)) << table;
    tally.while_saving += report->begun != report->done;
    tally.leftovers += files() > 1;
    tally.new_tables += is_new && report->begun != report->done;
    if (is_new)
      report->done = report->begun.load();
  }
  std::printf("%d kills, %d while saving: %d left a temporary file, %d the new table\n", kills,
              tally.while_saving, tally.leftovers, tally.new_tables);
  EXPECT_GT(tally.while_saving, kills / 2) << "hardly a kill came when it mattered";
  EXPECT_GT(tally.leftovers, 0) << "no kill came when it mattered";
}

// Starts and saves again and again; 0 when nothing failed.
[[noreturn]] void start_and_save_often(int64_t number) {
  constexpr int rounds = 50;
  start_up(false);
  for (int i = 0; i < rounds; ++i) {
    static_cast<void>(LOADHIGH());
    set_table(number);
    if (!save())
      _exit(1);
  }
  _exit(0);
}

// Where no lock keeps them apart.
TEST_F(Killing, IsNotWhatSeveralGamesDoToEachOther) {
  constexpr int games = 4;
  for (int64_t number = 1; number <= games; ++number)
    if (fork() == 0)
      start_and_save_often(number);
  for (int i = 0; i < games; ++i) {
    int status = 0;
    ASSERT_GT(wait(&status), 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
  }
  EXPECT_EQ(files(), 1);
  const std::string table = read_file(path);
  EXPECT_TRUE(table == table_text(1) || table == table_text(2) || table == table_text(3) ||
              table == table_text(4))
      << table;
}

} // namespace
} // namespace kavo::test
