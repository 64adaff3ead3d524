#include "common/file.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "common/text.h"

namespace estructura {

namespace fs = std::filesystem;

namespace {

// The file that a save writes beside the old one; mkostemp puts six characters of its own for the X.
constexpr std::string_view beside_pattern = ".estructura-XXXXXX";
constexpr std::string_view beside_prefix = beside_pattern.substr(0, beside_pattern.find('X'));

class descriptor {
 public:
  explicit descriptor(int fd) : fd_(fd) {}
  ~descriptor() {
    if (fd_ >= 0) ::close(fd_);
  }
  descriptor(const descriptor&) = delete;
  descriptor& operator=(const descriptor&) = delete;
  descriptor(descriptor&&) = delete;
  descriptor& operator=(descriptor&&) = delete;

  [[nodiscard]] bool open() const { return fd_ >= 0; }
  [[nodiscard]] int get() const { return fd_; }

 private:
  int fd_;
};

// While it lives, a write beyond the size that the process may give a file fails like any other, instead of
// ending the program with a signal.
class file_limit_as_error {
 public:
  file_limit_as_error() {
    struct sigaction ignore {};
    ignore.sa_handler = SIG_IGN;
    changed_ = ::sigaction(SIGXFSZ, &ignore, &before_) == 0;
  }
  ~file_limit_as_error() {
    if (changed_) ::sigaction(SIGXFSZ, &before_, nullptr);
  }
  file_limit_as_error(const file_limit_as_error&) = delete;
  file_limit_as_error& operator=(const file_limit_as_error&) = delete;
  file_limit_as_error(file_limit_as_error&&) = delete;
  file_limit_as_error& operator=(file_limit_as_error&&) = delete;

 private:
  struct sigaction before_ {};
  bool changed_ = false;
};

// Opens without waiting for anybody. Only for a lease, which a file server holds on a file for one of its
// clients, is there a wait of half a second: the holder is told of the attempt and gives up in milliseconds,
// or else is left alone (the system itself would wait 45 s for it).
int open_at_once(const char* path, int flags, mode_t mode = 0) {
  constexpr useconds_t pause_us = 10'000;
  for (int tries = 50;; --tries) {
    const int fd = ::open(path, flags | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, mode);
    if (fd >= 0 || tries == 0 || (errno != EWOULDBLOCK && errno != EINTR)) return fd;
    ::usleep(pause_us);
  }
}

// Opens a regular file for reading and tells about it; -1 for everything else. The name is looked up first,
// since opening alone sets some devices going, and what was opened is looked at again, since names change
// hands.
int open_regular(const char* path, struct stat& data) {
  if (::stat(path, &data) != 0 || !S_ISREG(data.st_mode)) return -1;
  const int fd = open_at_once(path, O_RDONLY);
  if (fd < 0 || (::fstat(fd, &data) == 0 && S_ISREG(data.st_mode))) return fd;
  ::close(fd);
  return -1;
}

bool same_content(const struct stat& a, const struct stat& b) {
  return a.st_size == b.st_size && a.st_mtim.tv_sec == b.st_mtim.tv_sec &&
         a.st_mtim.tv_nsec == b.st_mtim.tv_nsec;
}

// The entry of a folder whose name differs only in case; the first in alphabetical order when there are
// several.
std::string same_but_case(const fs::path& folder, const std::string& wanted) {
  const std::string lower = to_lower(wanted);
  std::string found;
  std::error_code error;
  for (fs::directory_iterator it(folder.empty() ? fs::path(".") : folder, error), end; !error && it != end;
       it.increment(error)) {
    const std::string name = it->path().filename().string();
    if (to_lower(name) == lower && (found.empty() || name < found)) found = name;
  }
  return found;
}

bool write_all(int fd, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(fd, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

// Whether a step was refused because of the folder, its disk or its neighbours, and not for want of
// something. Only then is writing in place any safer than not writing.
bool folder_refuses(int error) {
  return error == EACCES || error == EPERM || error == EROFS || error == EBUSY || error == EXDEV;
}

// Room on the disk for the whole content, so that an old one is not given up for half of a new one. Disks
// that can reserve none are trusted to have it.
bool make_room(int fd, off_t size, off_t old_size) {
  if (size == 0 || ::fallocate(fd, 0, 0, size) == 0) return true;
  if (errno == EOPNOTSUPP || errno == ENOSYS) return true;
  // A disk that does not even take this back leaves nothing else to try.
  [[maybe_unused]] const int taken_back = ::ftruncate(fd, old_size);
  return false;
}

// `fresh`: there is no such file yet. To ask for a new one where somebody else's stands is refused in folders
// that everybody may write, even when that file may be written.
bool write_in_place(const std::string& path, std::string_view bytes, bool fresh) {
  const descriptor file(open_at_once(path.c_str(), O_WRONLY | (fresh ? O_CREAT : 0), 0666));
  struct stat old {};
  if (!file.open() || ::fstat(file.get(), &old) != 0 || !S_ISREG(old.st_mode)) return false;
  const auto size = static_cast<off_t>(bytes.size());
  return make_room(file.get(), size, old.st_size) && write_all(file.get(), bytes) &&
         ::ftruncate(file.get(), size) == 0 && ::fsync(file.get()) == 0;
}

void sync_folder(const fs::path& folder) {
  const descriptor handle(::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (handle.open()) (void)::fsync(handle.get());
}

// What a new file may be allowed, as the process's mask leaves it.
mode_t new_file_mode() {
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return static_cast<mode_t>(0666) & ~mask;
}

bool lock(int fd, int how) {
  int result = 0;
  do {
    result = ::flock(fd, how);
  } while (result != 0 && errno == EINTR);
  return result == 0;
}

// Creates the file beside the old one, with the name it got, and locks it for as long as this save lives.
// Disks that know no locks have no leftovers removed either.
int create_beside(const fs::path& folder, std::string& name) {
  for (;;) {
    name = (folder / beside_pattern).string();
    const int fd = ::mkostemp(name.data(), O_CLOEXEC);
    struct stat data {};
    if (fd < 0 || !lock(fd, LOCK_EX) || ::fstat(fd, &data) != 0 || data.st_nlink > 0) return fd;
    // Between its creation and its lock another save has taken it for a leftover.
    ::close(fd);
  }
}

// Removes what killed saves have left in a folder: the lock of a save goes with its process.
void remove_leftovers(const fs::path& folder) {
  std::error_code error;
  for (fs::directory_iterator it(folder.empty() ? fs::path(".") : folder, error), end; !error && it != end;
       it.increment(error)) {
    const std::string name = it->path().filename().string();
    if (name.size() != beside_pattern.size() || !name.starts_with(beside_prefix)) continue;
    std::error_code unknown;
    if (!fs::is_regular_file(it->symlink_status(unknown))) continue;
    const descriptor file(open_at_once(it->path().c_str(), O_WRONLY | O_NOFOLLOW));
    struct stat data {};
    if (file.open() && ::fstat(file.get(), &data) == 0 && data.st_uid == ::geteuid() &&
        lock(file.get(), LOCK_EX | LOCK_NB))
      ::unlink(it->path().c_str());
  }
}

// The name at the end of a chain of symbolic links, also where the last one points to nothing yet.
fs::path link_target(fs::path path) {
  for (int depth = 0; depth < 40; ++depth) {
    std::error_code error;
    if (!fs::is_symlink(path, error)) break;
    const fs::path next = fs::read_symlink(path, error);
    if (error) break;
    path = next.is_absolute() ? next : path.parent_path() / next;
  }
  return path;
}

std::string decode(std::string_view bytes, text_encoding& encoding) {
  if (bytes.starts_with(byte_order_mark) && is_valid_utf8(bytes)) {
    encoding = text_encoding::utf8_with_bom;
    return std::string(bytes.substr(byte_order_mark.size()));
  }
  if (is_valid_utf8(bytes)) {
    encoding = text_encoding::utf8;
    return std::string(bytes);
  }
  encoding = text_encoding::windows1252;
  return from_windows1252(bytes);
}

// CR CR LF becomes CR LF, in place: the text may be as long as memory allows.
void merge_doubled_returns(std::string& text) {
  constexpr std::string_view doubled = "\r\r\n";
  std::size_t at = text.find(doubled);
  if (at == std::string::npos) return;
  std::size_t kept = at;
  while (at < text.size()) {
    if (std::string_view(text).substr(at).starts_with(doubled)) ++at;
    text[kept++] = text[at++];
  }
  text.resize(kept);
}

}  // namespace

std::string find_file(std::string_view path) {
  const fs::path wanted{std::string(path)};
  std::error_code error;
  if (wanted.empty() || fs::exists(wanted, error)) return wanted.string();
  fs::path found;
  bool lost = false;
  for (auto part = wanted.begin(); part != wanted.end(); ++part) {
    const fs::path next = found / *part;
    if (lost || part->empty() || *part == "/" || fs::exists(fs::symlink_status(next, error))) {
      found = next;
      continue;
    }
    const std::string alike = same_but_case(found, part->string());
    const bool last = std::next(part) == wanted.end();
    lost = alike.empty() && !last;
    if (!alike.empty())
      found /= alike;
    else
      found /= last ? to_lower(part->string()) : part->string();
  }
  return found.string();
}

bool file_exists(const std::string& path) {
  std::error_code error;
  const fs::file_status found = fs::status(fs::path(path), error);
  return fs::exists(found) && !fs::is_directory(found);
}

bool same_file(const std::string& one, const std::string& other) {
  std::error_code error;
  return fs::equivalent(fs::path(one), fs::path(other), error) && !error;
}

bool read_start(const std::string& path, std::string& bytes, std::size_t most, bool& whole) {
  bytes.clear();
  whole = false;
  struct stat before {};
  const descriptor file(open_regular(path.c_str(), before));
  if (!file.open()) return false;
  const auto size = static_cast<std::size_t>(before.st_size);

  std::string content;
  content.reserve(std::min(size, most));
  std::array<char, 65536> block{};
  // Until the end and not until the size: what the system makes up as it is read (/proc) has size 0.
  while (content.size() <= most) {
    const ssize_t count = ::read(file.get(), block.data(), block.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return false;
    if (count == 0) break;
    content.append(block.data(), static_cast<std::size_t>(count));
  }
  struct stat after {};
  if (::fstat(file.get(), &after) != 0 || !same_content(before, after)) return false;
  const bool longer = content.size() > most;
  // It has no size to speak of, so nobody knows where it ends.
  if (longer && size <= most) return false;
  if (longer) content.resize(most);
  whole = !longer;
  bytes = std::move(content);
  return true;
}

bool read_file(const std::string& path, std::string& bytes, std::size_t most) {
  bool whole = false;
  if (read_start(path, bytes, most, whole) && whole) return true;
  bytes.clear();
  return false;
}

bool save_file(const std::string& path, std::string_view bytes) {
  if (path.empty()) return false;
  const fs::path target = link_target(fs::path(path));
  struct stat old {};
  const bool had = ::stat(target.c_str(), &old) == 0;
  // A circle of links, or a folder that may not be looked into, is not a file that is missing.
  if (!had && errno != ENOENT) return false;
  // A FIFO or a device could keep the program waiting for as long as it likes.
  if (had && !S_ISREG(old.st_mode)) return false;
  // A file that may not be written stays as it is, even where its folder would let it be replaced.
  if (had && ::access(target.c_str(), W_OK) != 0) return false;

  const file_limit_as_error guard;
  const fs::path folder = target.parent_path();
  remove_leftovers(folder);
  std::string beside;
  const descriptor file(create_beside(folder, beside));
  if (!file.open()) return folder_refuses(errno) && write_in_place(target.string(), bytes, !had);

  // Open, and so locked, until it has its final name; all that closing could report, fsync has reported.
  const bool written = write_all(file.get(), bytes) &&
                       ::fchmod(file.get(), had ? old.st_mode & 07777U : new_file_mode()) == 0 &&
                       ::fsync(file.get()) == 0;
  if (!written) {
    ::unlink(beside.c_str());
    return false;
  }
  // The owner follows where the system lets it; where not, the file is written in place and keeps its own.
  const bool foreign = had && (old.st_uid != ::geteuid() || old.st_gid != ::getegid());
  const bool kept = !foreign || ::fchown(file.get(), old.st_uid, old.st_gid) == 0;
  if (!kept) {
    ::unlink(beside.c_str());
    return write_in_place(target.string(), bytes, !had);
  }
  if (::rename(beside.c_str(), target.c_str()) != 0) {
    const bool refused = folder_refuses(errno);
    ::unlink(beside.c_str());
    return refused && write_in_place(target.string(), bytes, !had);
  }
  sync_folder(folder);
  return true;
}

std::size_t text_length(std::string_view bytes) {
  return std::min(bytes.find('\x1A'), bytes.size());
}

std::string decode_text(std::string_view bytes, text_encoding& encoding) {
  std::string text = decode(bytes.substr(0, text_length(bytes)), encoding);
  merge_doubled_returns(text);
  return text;
}

}  // namespace estructura
