#include "common/fichero.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <vector>

#include "common/texto.h"

namespace estructura {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view bom = "\xEF\xBB\xBF";

class descriptor {
 public:
  explicit descriptor(int fd) : fd_(fd) {}
  ~descriptor() { (void)close_now(); }
  descriptor(const descriptor&) = delete;
  descriptor& operator=(const descriptor&) = delete;
  descriptor(descriptor&&) = delete;
  descriptor& operator=(descriptor&&) = delete;

  [[nodiscard]] bool open() const { return fd_ >= 0; }
  [[nodiscard]] int get() const { return fd_; }
  bool close_now() {
    if (fd_ < 0) return true;
    const int fd = fd_;
    fd_ = -1;
    return ::close(fd) == 0;
  }

 private:
  int fd_;
};

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

bool write_in_place(const std::string& path, std::string_view bytes) {
  descriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
  if (!file.open()) return false;
  if (!write_all(file.get(), bytes)) return false;
  // Not every kind of file can be forced to disk; the write itself is what counts here.
  (void)::fsync(file.get());
  return file.close_now();
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

}  // namespace

std::string localiza(std::string_view path) {
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

bool existe(const std::string& path) {
  std::error_code error;
  return fs::exists(fs::path(path), error);
}

bool lee_fichero(const std::string& path, std::string& bytes) {
  bytes.clear();
  std::error_code error;
  if (!fs::is_regular_file(fs::path(path), error)) return false;
  const descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (!file.open()) return false;
  std::array<char, 65536> block{};
  for (;;) {
    const ssize_t count = ::read(file.get(), block.data(), block.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return false;
    if (count == 0) return true;
    bytes.append(block.data(), static_cast<std::size_t>(count));
  }
}

bool guarda_fichero(const std::string& path, std::string_view bytes) {
  if (path.empty()) return false;
  const fs::path target = link_target(fs::path(path));
  struct stat old {};
  const bool had = ::stat(target.c_str(), &old) == 0;
  // A circle of links, or a folder that may not be looked into, is not a file that is missing.
  if (!had && errno != ENOENT) return false;
  if (had && !S_ISREG(old.st_mode))
    return S_ISDIR(old.st_mode) ? false : write_in_place(target.string(), bytes);
  // A file that may not be written stays as it is, even where its folder would let it be replaced.
  if (had && ::access(target.c_str(), W_OK) != 0) return false;

  std::string beside = (target.parent_path() / (".estructura-XXXXXX")).string();
  std::vector<char> name(beside.begin(), beside.end());
  name.push_back('\0');
  descriptor file(::mkostemp(name.data(), O_CLOEXEC));
  if (!file.open()) return folder_refuses(errno) && write_in_place(target.string(), bytes);
  beside.assign(name.data());

  const bool written = write_all(file.get(), bytes) &&
                       ::fchmod(file.get(), had ? old.st_mode & 07777U : new_file_mode()) == 0 &&
                       ::fsync(file.get()) == 0 && file.close_now();
  if (!written) {
    ::unlink(beside.c_str());
    return false;
  }
  // The owner follows where the system lets it; where not, the file is written in place and keeps its own.
  const bool foreign = had && (old.st_uid != ::geteuid() || old.st_gid != ::getegid());
  const bool kept = !foreign || ::chown(beside.c_str(), old.st_uid, old.st_gid) == 0;
  if (!kept) {
    ::unlink(beside.c_str());
    return write_in_place(target.string(), bytes);
  }
  if (::rename(beside.c_str(), target.c_str()) != 0) {
    const bool refused = folder_refuses(errno);
    ::unlink(beside.c_str());
    return refused && write_in_place(target.string(), bytes);
  }
  sync_folder(target.parent_path());
  return true;
}

std::string decodifica(std::string_view bytes, codificacion& encoding) {
  if (bytes.starts_with(bom) && is_valid_utf8(bytes)) {
    encoding = codificacion::utf8_con_bom;
    return std::string(bytes.substr(bom.size()));
  }
  if (is_valid_utf8(bytes)) {
    encoding = codificacion::utf8;
    return std::string(bytes);
  }
  encoding = codificacion::windows1252;
  return from_windows1252(bytes);
}

}  // namespace estructura
