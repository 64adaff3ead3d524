// Part of a test in a child process, which may lose its rights, its disk or its life without harm to the
// rest.
//
//   const relato told = en_hijo([&] { return become_ordinary_user() ? window.salva(path) : "a user"; });
//   EXPECT_EQ(told.text, "Error en escritura");
//   EXPECT_LT(told.cpu_s, 1.0);
//
// What the function returns comes back as `text`. A child that is still busy after twenty seconds, dies or
// throws says so instead. The memory is the most that the child has held at once, with what it has from its
// parent.
#pragma once

#include <chrono>
#include <csignal>
#include <exception>
#include <fcntl.h>
#include <memory>
#include <string>
#include <string_view>
#include <sys/resource.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace estructura::apoyo {

struct relato {
  std::string text;
  double cpu_s = 0;
  double wall_s = 0;
  long memory_kb = 0;
};

/// What a function returns as a text, or what it throws: out of here an exception would make the child a
/// second process of tests.
template <class Function>
std::string texto_de_hijo(Function& function) {
  try {
    return std::string(function());
  } catch (const std::exception& thrown) {
    return std::string("<exception: ") + thrown.what() + ">";
  } catch (...) {
    return "<exception>";
  }
}

template <class Function>
relato en_hijo(Function function) {
  constexpr unsigned patience_s = 20;
  int ends[2] = {-1, -1};
  if (::pipe(ends) != 0) return {.text = "<no pipe>"};
  const auto start = std::chrono::steady_clock::now();
  const pid_t child = ::fork();
  if (child == 0) {
    ::alarm(patience_s);
    const std::string text = texto_de_hijo(function);
    for (std::string_view rest = text; !rest.empty();) {
      const ssize_t sent = ::write(ends[1], rest.data(), rest.size());
      if (sent <= 0) break;
      rest.remove_prefix(static_cast<std::size_t>(sent));
    }
    ::_exit(0);
  }
  ::close(ends[1]);
  relato told;
  if (child < 0) told.text = "<no child>";
  char block[4096];
  for (ssize_t got = 0; child > 0 && (got = ::read(ends[0], block, sizeof block)) > 0;)
    told.text.append(block, static_cast<std::size_t>(got));
  ::close(ends[0]);
  int status = 0;
  struct rusage cost {};
  if (child > 0 && ::wait4(child, &status, 0, &cost) == child) {
    if (WIFSIGNALED(status))
      told.text += "<ended by signal " + std::to_string(WTERMSIG(status)) + ">";
    else if (WEXITSTATUS(status) != 0)
      told.text += "<ended with " + std::to_string(WEXITSTATUS(status)) + ">";
  }
  told.wall_s = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
  };
  told.cpu_s = seconds(cost.ru_utime) + seconds(cost.ru_stime);
  told.memory_kb = cost.ru_maxrss;
  return told;
}

/// A process that does something to a file until the test is done with it.
class otro_proceso {
 public:
  template <class Function>
  explicit otro_proceso(Function function) : child_(::fork()) {
    if (child_ == 0) {
      try {
        function();
      } catch (...) {
        ::_exit(1);
      }
      ::_exit(0);
    }
  }
  ~otro_proceso() { mata(); }
  otro_proceso(const otro_proceso&) = delete;
  otro_proceso& operator=(const otro_proceso&) = delete;
  otro_proceso(otro_proceso&&) = delete;
  otro_proceso& operator=(otro_proceso&&) = delete;

  void mata() {
    if (child_ <= 0) return;
    ::kill(child_, SIGKILL);
    ::waitpid(child_, nullptr, 0);
    child_ = -1;
  }
  /// Waits for its own end; whether it ended well.
  bool acaba() {
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
inline std::unique_ptr<otro_proceso> arrienda(const std::string& path, bool gives_back) {
  int ends[2] = {-1, -1};
  if (::pipe(ends) != 0) return nullptr;
  auto holder = std::make_unique<otro_proceso>([&] {
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

}  // namespace estructura::apoyo
