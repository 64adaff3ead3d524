// Runs part of a test where the disk may say no: as an ordinary user, for whom permissions hold, and under
// limits of the process, all in a child of its own.
//
//   EXPECT_TRUE(as_ordinary_user([&] { return !save_file(read_only, "x"); }));
//
// The child reports by its exit status alone, so the function answers true or false and compares inside. What
// it throws ends the child, as false, with a line on the error output.
#pragma once

#include <array>
#include <csignal>
#include <cstdio>
#include <exception>
#include <fstream>
#include <grp.h>
#include <linux/capability.h>
#include <optional>
#include <sched.h>
#include <string>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

namespace estructura::support {

inline constexpr uid_t nobody = 65534;

/// For a child: what a function answers, and false when it throws. Out of here an exception would make the
/// child a second process of tests.
template <class Function>
bool answer_of(Function& function) {
  try {
    return function();
  } catch (const std::exception& thrown) {
    std::fprintf(stderr, "in a child: %s\n", thrown.what());
  } catch (...) {
    std::fprintf(stderr, "in a child: an exception\n");
  }
  return false;
}

/// What a function answers in a child process; false as well when the child dies or throws.
template <class Function>
bool in_child(Function function) {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(answer_of(function) ? 0 : 1);
  int status = 0;
  if (child < 0 || ::waitpid(child, &status, 0) != child) return false;
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

/// For a child: gives up the administrator's rights, which no permission stops. Who has none keeps his own,
/// but for what `may_mount` gave him.
inline bool become_ordinary_user() {
  if (::geteuid() != 0) {
    __user_cap_header_struct self{_LINUX_CAPABILITY_VERSION_3, 0};
    const std::array<__user_cap_data_struct, _LINUX_CAPABILITY_U32S_3> none{};
    return ::syscall(SYS_capset, &self, none.data()) == 0;
  }
  return ::setgroups(0, nullptr) == 0 && ::setgid(nobody) == 0 && ::setuid(nobody) == 0 && ::geteuid() != 0;
}

/// The same without the administrator's rights.
template <class Function>
bool as_ordinary_user(Function function) {
  return in_child([&function] { return become_ordinary_user() && function(); });
}

/// The same where no file can grow beyond a size, as on a full disk: a write beyond it fails.
template <class Function>
bool with_file_limit(rlim_t bytes, Function function) {
  return in_child([bytes, &function] {
    ::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{bytes, bytes};
    return ::setrlimit(RLIMIT_FSIZE, &limit) == 0 && function();
  });
}

/// For a child: the right to mount, seen by nobody else. An ordinary user has it in a namespace of his own,
/// where he is who he was. False where the system grants none.
inline bool may_mount() {
  if (::geteuid() == 0) return ::unshare(CLONE_NEWNS) == 0;
  const auto himself = [](unsigned who) { return std::to_string(who) + ' ' + std::to_string(who) + " 1"; };
  const std::string user = himself(::geteuid());
  const std::string group = himself(::getegid());
  if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
  std::ofstream("/proc/self/setgroups") << "deny";
  return static_cast<bool>(std::ofstream("/proc/self/uid_map") << user << std::flush) &&
         static_cast<bool>(std::ofstream("/proc/self/gid_map") << group << std::flush);
}

/// For a child: a folder becomes a disk of its own, of so many pages of 4096 bytes and so many files. False
/// where the system lets nobody mount one, as in some containers.
inline bool mount_small_disk(const std::string& folder, int pages, int files) {
  // The folder itself counts as a file of the disk.
  const std::string size = "size=" + std::to_string(pages * 4096) + ",nr_inodes=" + std::to_string(files + 1);
  return may_mount() && ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
         ::mount("disk", folder.c_str(), "tmpfs", 0, size.c_str()) == 0;
}

/// The same with a folder that is a disk of its own, of so many pages of 4096 bytes and so many files.
/// Nothing where the system lets nobody mount one, as in some containers.
template <class Function>
std::optional<bool> on_small_disk(const std::string& folder, int pages, int files, Function function) {
  constexpr int refused = 2;
  const pid_t child = ::fork();
  if (child == 0) ::_exit(!mount_small_disk(folder, pages, files) ? refused : (answer_of(function) ? 0 : 1));
  int status = 0;
  if (child < 0 || ::waitpid(child, &status, 0) != child || !WIFEXITED(status)) return false;
  if (WEXITSTATUS(status) == refused) return std::nullopt;
  return WEXITSTATUS(status) == 0;
}

/// Gives a path to the user that `as_ordinary_user` becomes. Nothing to do for who is one already.
inline bool give_to_ordinary_user(const char* path) {
  return ::geteuid() != 0 || ::chown(path, nobody, static_cast<gid_t>(nobody)) == 0;
}

}  // namespace estructura::support
