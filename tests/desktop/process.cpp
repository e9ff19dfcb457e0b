#include "tests/desktop/process.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <thread>

namespace kavo::desktop {

namespace {

using namespace std::chrono_literals;

constexpr auto patience = 60s;
constexpr int cannot_start = 127;

int memory_file(const char* name) {
  const int file = memfd_create(name, MFD_CLOEXEC);
  if (file < 0)
    throw std::runtime_error("no memory file");
  return file;
}

// Leaves the place where the program writes alone: it shares it.
std::string content_of(int file) {
  struct stat status = {};
  fstat(file, &status);
  std::string content(static_cast<size_t>(status.st_size), '\0');
  const ssize_t read = pread(file, content.data(), content.size(), 0);
  content.resize(read < 0 ? 0 : static_cast<size_t>(read));
  return content;
}

void apply(const Launch& launch) {
  for (const auto& [name, value] : launch.environment) {
    if (value)
      setenv(name.c_str(), value->c_str(), 1);
    else
      unsetenv(name.c_str());
  }
  if (chdir(launch.folder.c_str()) != 0)
    _exit(cannot_start);
}

[[noreturn]] void become(const Launch& launch, int output, int errors) {
  prctl(PR_SET_PDEATHSIG, SIGKILL); // nothing outlives a test that crashes
  dup2(output, STDOUT_FILENO);
  dup2(errors, STDERR_FILENO);
  apply(launch);
  if (launch.last_act)
    launch.last_act();
  std::vector<char*> arguments;
  for (const std::string& argument : launch.arguments)
    arguments.push_back(const_cast<char*>(argument.c_str()));
  arguments.push_back(nullptr);
  execvp(arguments[0], arguments.data());
  _exit(cannot_start);
}

} // namespace

Process::Process(const Launch& launch)
    : output_(memory_file("output")), errors_(memory_file("errors")) {
  id_ = fork();
  if (id_ == 0)
    become(launch, output_, errors_);
  if (id_ < 0)
    throw std::runtime_error("cannot fork");
}

Process::~Process() {
  if (is_running()) {
    kill(id_, SIGKILL);
    reap(true);
  }
  close(output_);
  close(errors_);
}

bool Process::is_running() {
  reap(false);
  return !status_;
}

void Process::send_signal(int signal) const {
  if (!status_)
    kill(id_, signal);
}

std::string Process::output_so_far() const {
  return content_of(output_);
}

std::string Process::errors_so_far() const {
  return content_of(errors_);
}

Outcome Process::wait() {
  const auto deadline = std::chrono::steady_clock::now() + patience;
  while (is_running()) {
    if (std::chrono::steady_clock::now() > deadline)
      throw std::runtime_error("still running after a minute; it said: " + content_of(output_) +
                               content_of(errors_));
    std::this_thread::sleep_for(2ms);
  }
  const bool has_exited = WIFEXITED(*status_);
  return {has_exited, has_exited ? WEXITSTATUS(*status_) : WTERMSIG(*status_), content_of(output_),
          content_of(errors_)};
}

void Process::reap(bool is_to_block) {
  int status = 0;
  if (!status_ && waitpid(id_, &status, is_to_block ? 0 : WNOHANG) == id_)
    status_ = status;
}

} // namespace kavo::desktop
