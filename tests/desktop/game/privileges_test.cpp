// What the real program asks of the system while a game is played, lost, named and saved: no
// network, no other program, no other rights, and nothing written outside of its own folder.
#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <filesystem>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "tests/desktop/game/playing.h"
#include "tests/desktop/game/sound_server.h"

namespace {

using kavo::playing::Conditions;
using kavo::playing::Game;
using kavo::playing::Player;
using kavo::playing::Runtime;
using kavo::playing::SoundServer;

// The leak sanitizer starts a process that traces its own.
void look_for_no_leaks(kavo::desktop::Launch& launch) {
  launch.environment["ASAN_OPTIONS"] = "detect_leaks=0";
}

void play_to_a_saved_score(Game& game) {
  game.lose();
  game.enter_name();
  EXPECT_TRUE(game.is_on_title());
  game.tap("Escape");
  const auto outcome = game.process->wait();
  EXPECT_TRUE(outcome.has_exited) << "ended by signal " << outcome.code;
  EXPECT_EQ(outcome.code, 0) << outcome.errors;
  EXPECT_TRUE(kavo::test::read_file(game.folder / "tmp/kavo_high.txt").starts_with("AAA;"));
}

// ---- enforced -----------------------------------------------------------------------------------

constexpr uint32_t offset_of_first_argument = offsetof(seccomp_data, args);

// Kills the process that makes the system call.
void forbid(std::vector<sock_filter>& filter, uint32_t call) {
  filter.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, call, 0, 1));
  filter.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_KILL_PROCESS));
}

// Local sockets lead to the display, the kernel's tell of devices that are plugged in.
void forbid_networks(std::vector<sock_filter>& filter) {
  filter.insert(filter.end(), {BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_socket, 0, 5),
                               BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offset_of_first_argument),
                               BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, AF_UNIX, 2, 0),
                               BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, AF_NETLINK, 1, 0),
                               BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_KILL_PROCESS),
                               BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW)});
}

// Threads stay allowed; a filter cannot read what clone3 is given, and libc then takes clone.
void forbid_processes(std::vector<sock_filter>& filter) {
  filter.insert(filter.end(), {BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_clone3, 0, 1),
                               BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | ENOSYS),
                               BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_clone, 0, 4),
                               BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offset_of_first_argument),
                               BPF_JUMP(BPF_JMP | BPF_JSET | BPF_K, CLONE_THREAD, 1, 0),
                               BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_KILL_PROCESS),
                               BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW)});
}

std::vector<sock_filter> filter_of_what_a_game_needs() {
  std::vector<sock_filter> filter = {
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr))};
  for (const uint32_t call :
       {SYS_setuid, SYS_setgid, SYS_setreuid, SYS_setregid, SYS_setresuid, SYS_setresgid,
        SYS_setgroups, SYS_capset, SYS_ptrace, SYS_mount, SYS_chroot, SYS_bpf, SYS_reboot})
    forbid(filter, call);
#ifdef SYS_fork
  forbid(filter, SYS_fork);
  forbid(filter, SYS_vfork);
#endif
  forbid_networks(filter);
  forbid_processes(filter);
  filter.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
  return filter;
}

void confine() {
  std::vector<sock_filter> filter = filter_of_what_a_game_needs();
  const sock_fprog program = {static_cast<unsigned short>(filter.size()), filter.data()};
  if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 ||
      prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) != 0)
    _exit(99);
}

bool is_killed_by_the_filter(const std::vector<std::string>& command) {
  const auto outcome = kavo::desktop::Process({command, {}, ".", confine}).wait();
  return !outcome.has_exited && outcome.code == SIGSYS;
}

TEST(Privileges, TheFilterStopsWhatItIsToStop) {
  EXPECT_TRUE(is_killed_by_the_filter({"bash", "-c", ": >/dev/tcp/127.0.0.1/9"}));
  EXPECT_TRUE(is_killed_by_the_filter({"bash", "-c", "true | true"}));
}

TEST(Privileges, AGameNeedsNoNetworkNoProcessAndNoOtherRights) {
  Game game(Conditions{.change = [](kavo::desktop::Launch& launch) {
    look_for_no_leaks(launch);
    launch.last_act = confine;
  }});
  play_to_a_saved_score(game);
}

// ---- traced -------------------------------------------------------------------------------------

// Those that this machine's kernel does not know are passed over.
constexpr const char* traced_calls =
    "trace=?socket,?execve,?execveat,?open,?openat,?openat2,?creat,?truncate,?mkdir,?mkdirat,?"
    "rmdir,"
    "?rename,?renameat,?renameat2,?link,?linkat,?symlink,?symlinkat,?unlink,?unlinkat,?chmod,"
    "?fchmodat,?chown,?lchown,?fchownat,?mknod,?mknodat,?utimensat";

std::vector<std::string> traced_command() {
  return {"strace", "-f", "-qq", "-s", "4096", "-o", "trace", "-e", traced_calls};
}

bool may_trace() {
  const kavo::test::TemporaryFolder folder;
  auto command = traced_command();
  command.emplace_back("true");
  const auto outcome = kavo::desktop::Process({command, {}, folder.path()}).wait();
  return outcome.has_exited && outcome.code == 0;
}

std::vector<std::string> lines_of(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);)
    lines.push_back(line);
  return lines;
}

bool contains(const std::string& line, const char* pattern) {
  return std::regex_search(line, std::regex(pattern));
}

// Changes a name or opens a file for more than reading.
bool is_writing(const std::string& line) {
  if (contains(line, R"(^\d+ +(open|openat|openat2)\()"))
    return contains(line, "O_WRONLY|O_RDWR|O_CREAT|O_TRUNC|O_APPEND");
  return !contains(line, R"(^\d+ +(socket|execve|execveat)\()") && contains(line, R"(^\d+ +\w+\()");
}

// What was there already is not made again.
bool finds_it_there(const std::string& line) {
  return contains(line, R"(^\d+ +mkdir(at)?\(.* = -1 EEXIST )");
}

// Where a player's settings and last games lie, or the game's own folders for them.
using Places = std::vector<std::string>;

// The names in the line all lie in the game's own folders for files, or are devices.
bool is_within_bounds(const std::string& line, const Places& places) {
  const std::regex name(R"rx("((?:[^"\\]|\\.)*)")rx");
  for (std::sregex_iterator found(line.begin(), line.end(), name), end; found != end; ++found)
    if (!contains((*found)[1], "^(tmp|tmp/[^/]*|/dev/null|/dev/input/.*|/dev/snd/.*)$") &&
        std::ranges::none_of(places, [&](const std::string& place) {
          return (*found)[1] == place || (*found)[1].str().starts_with(place + "/kavo");
        }))
      return false;
  return true;
}

void trace(kavo::desktop::Launch& launch) {
  look_for_no_leaks(launch);
  auto command = traced_command();
  command.push_back(launch.arguments.front());
  launch.arguments = command;
}

void expect_within_bounds(const std::string& calls, const Places& places) {
  int started = 0;
  int written = 0;
  for (const std::string& line : lines_of(calls)) {
    started += contains(line, R"(^\d+ +execve)");
    if (contains(line, R"(^\d+ +socket\()")) {
      EXPECT_TRUE(contains(line, R"(\((AF_UNIX|AF_NETLINK), )")) << line;
    }
    if (!is_writing(line) || finds_it_there(line))
      continue;
    ++written;
    EXPECT_TRUE(is_within_bounds(line, places)) << line;
  }
  EXPECT_EQ(started, 1) << "it starts other programs";
  EXPECT_GE(written, 3) << "its folder, the table's new content and its renaming were not seen";
}

TEST(Privileges, AGameWritesInItsOwnFolderOnly) {
  if (!may_trace())
    GTEST_SKIP() << "system calls may not be traced here: what is written was NOT looked at";
  Game game(Conditions{.change = trace});
  play_to_a_saved_score(game);
  expect_within_bounds(kavo::test::read_file(game.folder / "trace"),
                       {game.folder / "config", game.folder / "state"});
}

// ---- with a sound server ------------------------------------------------------------------------

class WithASoundServer : public testing::TestWithParam<Runtime> {
protected:
  const kavo::test::TemporaryFolder folder;
  const Player player{folder.path(), GetParam()};
  const SoundServer server{player};
};

TEST_P(WithASoundServer, AGameIsHeardAndNeedsNoNetworkNoProcessAndNoOtherRights) {
  Game game(Conditions{.change = [&](kavo::desktop::Launch& launch) {
    player.own(launch);
    look_for_no_leaks(launch);
    launch.last_act = confine;
  }});
  EXPECT_TRUE(server.is_heard());
  play_to_a_saved_score(game);
  EXPECT_EQ(game.process->errors_so_far(), "");
}

TEST_P(WithASoundServer, AGameWritesInItsOwnFolderOnly) {
  if (!may_trace())
    GTEST_SKIP() << "system calls may not be traced here: what is written was NOT looked at";
  Game game(Conditions{.change = [&](kavo::desktop::Launch& launch) {
    player.own(launch);
    trace(launch);
  }});
  EXPECT_TRUE(server.is_heard());
  play_to_a_saved_score(game);
  expect_within_bounds(kavo::test::read_file(game.folder / "trace"),
                       {player.configuration(), player.state()});
}

INSTANTIATE_TEST_SUITE_P(WhereTheRuntimeFolder, WithASoundServer,
                         testing::Values(Runtime::is_set, Runtime::is_not),
                         [](const auto& runtime) {
                           return runtime.param == Runtime::is_set ? "IsSet" : "IsNot";
                         });

TEST(WithoutASoundServer, NothingIsLeftInTheHomeOrTheTemporaryFolder) {
  const kavo::test::TemporaryFolder folder;
  const Player player(folder.path(), Runtime::is_not);
  Game game(Conditions{.change = [&](kavo::desktop::Launch& launch) {
    player.own(launch);
    look_for_no_leaks(launch);
  }});
  play_to_a_saved_score(game);
  std::filesystem::remove_all(player.configuration() + "/kavo");
  EXPECT_TRUE(std::filesystem::remove(player.configuration())) << "something else is in it";
  EXPECT_TRUE(std::filesystem::is_empty(player.home()));
  EXPECT_TRUE(std::filesystem::is_empty(player.temporary_folder()));
  const std::string said = game.process->errors_so_far();
  EXPECT_TRUE(said.empty() ||
              (said.starts_with("no sound: ") && said.find('\n') == said.size() - 1))
      << said;
}

} // namespace
