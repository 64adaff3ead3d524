// A child process that stops before and after each of its system calls, so that something can happen to it,
// or to its files, at every moment that another process could tell apart, and at none by chance.
//
//   stepped_child child([&] { return save(path) ? 0 : 1; });
//   if (!child.traced()) GTEST_SKIP() << "the system lets nobody trace";
//   for (int stop = 0; stop < wanted && child.runs_to_next_stop(); ++stop) {}
//   child.kill();                  // or child.runs_to_end(), which answers what the function did
//
// One write is one system call: a child is never stopped in the middle of it.
#pragma once

#include <csignal>
#include <cstdint>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

namespace estructura::support {

class stepped_child {
 public:
  template <class Function>
  explicit stepped_child(Function function) : child_(::fork()) {
    if (child_ == 0) {
      if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) ::_exit(not_traced);
      ::raise(SIGSTOP);
      try {
        ::_exit(function());
      } catch (...) {
        ::_exit(threw);
      }
    }
    if (child_ < 0 || ::waitpid(child_, &status_, 0) != child_ || !WIFSTOPPED(status_)) {
      child_ = -1;
      return;
    }
    constexpr std::intptr_t options = PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL;
    if (::ptrace(PTRACE_SETOPTIONS, child_, nullptr, options) != 0) kill();
    traced_ = child_ > 0;
  }
  ~stepped_child() { kill(); }
  stepped_child(const stepped_child&) = delete;
  stepped_child& operator=(const stepped_child&) = delete;
  stepped_child(stepped_child&&) = delete;
  stepped_child& operator=(stepped_child&&) = delete;

  /// False where the system lets nobody trace, as in some containers: there is no child then.
  [[nodiscard]] bool traced() const { return traced_; }

  /// False once the child has come to its end.
  bool runs_to_next_stop() {
    for (std::intptr_t signal = 0; child_ > 0;) {
      if (::ptrace(PTRACE_SYSCALL, child_, nullptr, signal) != 0 || !waits()) break;
      constexpr int at_a_call = SIGTRAP | 0x80;
      if (WSTOPSIG(status_) == at_a_call) return true;
      signal = WSTOPSIG(status_);
    }
    return false;
  }

  /// What the function answered; -1 for a child that was ended by a signal.
  int runs_to_end() {
    for (std::intptr_t signal = 0; child_ > 0; signal = WSTOPSIG(status_))
      if (::ptrace(PTRACE_CONT, child_, nullptr, signal) != 0 || !waits()) break;
    return WIFEXITED(status_) ? WEXITSTATUS(status_) : -1;
  }

  void kill() {
    if (child_ <= 0) return;
    ::kill(child_, SIGKILL);
    ::waitpid(child_, &status_, 0);
    child_ = -1;
  }

 private:
  static constexpr int not_traced = 125;
  static constexpr int threw = 126;

  // Whether it stopped once more.
  bool waits() {
    if (::waitpid(child_, &status_, 0) == child_ && WIFSTOPPED(status_)) return true;
    child_ = -1;
    return false;
  }

  pid_t child_;
  int status_ = 0;
  bool traced_ = false;
};

}  // namespace estructura::support
