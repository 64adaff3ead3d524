// Part of a test in a child process, which may lose its rights, its disk or its life without harm to the
// rest.
//
//   const account told = run_in_child([&] { return become_ordinary_user() ? window.salva(path) : "a user";
//   }); EXPECT_EQ(told.text, "Error en escritura"); EXPECT_LT(told.io_bytes, 1000);
//
// What the function returns comes back as `text`. A child that dies or throws says so instead; so does one
// that hangs, after more processor time than any machine needs for a test, or when it sleeps for good. The
// memory is the most that the child has held at once, with what it has from its parent.
#pragma once

#include <array>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <exception>
#include <fcntl.h>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <sys/resource.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

#include "tests/system/allocations.h"

namespace estructura::support {

struct account {
  std::string text;
  std::int64_t io_bytes = 0;         ///< read and written, of files and devices, while the function ran
  std::int64_t allocated_bytes = 0;  ///< asked operator new for meanwhile, given back or not
  long memory_kb = 0;
};

/// What this process has read and written so far; 0 where the system does not count it.
inline std::int64_t io_bytes() {
  std::ifstream file("/proc/self/io");
  std::string name;
  std::int64_t read = 0;
  std::int64_t written = 0;
  return file >> name >> read >> name >> written && name == "wchar:" ? read + written : 0;
}

/// Ends this process when it hangs, busy or asleep, and for no other reason.
inline void end_when_it_hangs() {
  constexpr rlim_t most_cpu_s = 300;
  constexpr unsigned longest_sleep_s = 1200;
  const rlimit limit{most_cpu_s, most_cpu_s};
  (void)::setrlimit(RLIMIT_CPU, &limit);
  (void)::alarm(longest_sleep_s);
}

/// What a function returns as a text, or what it throws: out of here an exception would make the child a
/// second process of tests.
template <class Function>
std::string text_of_child(Function& function) {
  try {
    return std::string(function());
  } catch (const std::exception& thrown) {
    return std::string("<exception: ") + thrown.what() + ">";
  } catch (...) {
    return "<exception>";
  }
}

inline bool write_whole(int file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t sent = ::write(file, bytes.data(), bytes.size());
    if (sent <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(sent));
  }
  return true;
}

template <class Function>
account run_in_child(Function function) {
  int ends[2] = {-1, -1};
  if (::pipe(ends) != 0) return {.text = "<no pipe>"};
  const pid_t child = ::fork();
  if (child == 0) {
    end_when_it_hangs();
    const std::int64_t moved_before = io_bytes();
    const std::int64_t allocated_before = allocated_bytes();
    const std::string text = text_of_child(function);
    const std::array<std::int64_t, 2> counts = {io_bytes() - moved_before,
                                                allocated_bytes() - allocated_before};
    // The counts, which are of fixed length, first.
    write_whole(ends[1], {reinterpret_cast<const char*>(counts.data()), sizeof counts});
    write_whole(ends[1], text);
    ::_exit(0);
  }
  ::close(ends[1]);
  account told;
  if (child < 0) told.text = "<no child>";
  std::string bytes;
  char block[4096];
  for (ssize_t got = 0; child > 0 && (got = ::read(ends[0], block, sizeof block)) > 0;)
    bytes.append(block, static_cast<std::size_t>(got));
  ::close(ends[0]);
  if (std::array<std::int64_t, 2> counts{}; bytes.size() >= sizeof counts) {
    std::memcpy(counts.data(), bytes.data(), sizeof counts);
    told.io_bytes = counts[0];
    told.allocated_bytes = counts[1];
    told.text = bytes.substr(sizeof counts);
  }
  int status = 0;
  struct rusage cost {};
  if (child > 0 && ::wait4(child, &status, 0, &cost) == child) {
    if (WIFSIGNALED(status))
      told.text += "<ended by signal " + std::to_string(WTERMSIG(status)) + ">";
    else if (WEXITSTATUS(status) != 0)
      told.text += "<ended with " + std::to_string(WEXITSTATUS(status)) + ">";
  }
  told.memory_kb = cost.ru_maxrss;
  return told;
}

/// A process that does something to a file until the test is done with it.
class other_process {
 public:
  template <class Function>
  explicit other_process(Function function) : child_(::fork()) {
    if (child_ == 0) {
      try {
        function();
      } catch (...) {
        ::_exit(1);
      }
      ::_exit(0);
    }
  }
  ~other_process() { kill_it(); }
  other_process(const other_process&) = delete;
  other_process& operator=(const other_process&) = delete;
  other_process(other_process&&) = delete;
  other_process& operator=(other_process&&) = delete;

  void kill_it() {
    if (child_ <= 0) return;
    ::kill(child_, SIGKILL);
    ::waitpid(child_, nullptr, 0);
    child_ = -1;
  }
  [[nodiscard]] pid_t pid() const { return child_; }
  /// Waits for its own end; whether it ended well.
  bool ends_well() {
    int status = 0;
    const bool ended = child_ > 0 && ::waitpid(child_, &status, 0) == child_;
    child_ = -1;
    return ended && WIFEXITED(status) && WEXITSTATUS(status) == 0;
  }

 private:
  pid_t child_;
};

/// Another process with a lease on a file, as a file server takes one for its clients: who opens the file has
/// to wait until it is given back, or for most of a minute. Nothing where the system gives no leases.
inline std::unique_ptr<other_process> take_lease(const std::string& path, bool gives_back) {
  int ends[2] = {-1, -1};
  if (::pipe(ends) != 0) return nullptr;
  auto holder = std::make_unique<other_process>([&] {
    sigset_t asked{};
    sigemptyset(&asked);
    sigaddset(&asked, SIGIO);
    sigprocmask(SIG_BLOCK, &asked, nullptr);
    const int file = ::open(path.c_str(), O_RDWR);
    const char result = ::fcntl(file, F_SETLEASE, F_WRLCK) == 0 ? 'y' : 'n';
    if (::write(ends[1], &result, 1) != 1 || result == 'n') return;
    int signal = 0;
    sigwait(&asked, &signal);
    while (!gives_back) ::pause();
    ::fcntl(file, F_SETLEASE, F_UNLCK);
    for (;;) ::pause();
  });
  char result = 'n';
  const bool told = ::read(ends[0], &result, 1) == 1;
  ::close(ends[0]);
  ::close(ends[1]);
  return told && result == 'y' ? std::move(holder) : nullptr;
}

/// Whether a process has a lease that nobody has asked it to give back.
inline bool holds_untouched_lease(const other_process& holder) {
  const std::string wanted = " WRITE " + std::to_string(holder.pid()) + " ";
  std::ifstream locks("/proc/locks");
  for (std::string line; std::getline(locks, line);)
    if (line.find(" LEASE  ACTIVE ") != std::string::npos && line.find(wanted) != std::string::npos)
      return true;
  return false;
}

}  // namespace estructura::support
