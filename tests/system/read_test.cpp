// Loading what is no ordinary file, may not be read, or does not hold still: a message, at once, or the
// content whole.
#include <algorithm>
#include <array>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>
#include <vector>

#include "common/file.h"
#include "common/text.h"
#include "tests/support/ordinary_user.h"
#include "tests/support/temporary_folder.h"
#include "tests/system/child.h"
#include "tests/system/documents.h"
#include "tests/system/stepped_child.h"

namespace estructura {
namespace {

namespace fs = std::filesystem;
using support::document_kind;
using support::document_window;
using support::other_process;
using support::run_in_child;
using support::stepped_child;
using support::temporary_folder;
using support::write_file;

constexpr const char* refusal = "Error en lectura";

class read_document : public testing::TestWithParam<document_kind> {
 public:
  [[nodiscard]] bool source() const { return GetParam() == document_kind::source_text; }
  // A file that both readers take: one word, or one line.
  [[nodiscard]] std::string good_file() const {
    return source() ? "; bien\r\n" : ":020000000A0CE8\r\n:00000001FF\r\n";
  }
  [[nodiscard]] std::string content() {
    return source() ? window.source_text() : hexstr(window.chip().progmem[0], 4);
  }
  [[nodiscard]] std::string good_content() const { return source() ? "; bien" : "0C0A"; }
  [[nodiscard]] std::string no_content() const { return source() ? "" : "FFFF"; }

  // What a load says and what the document then holds.
  std::string load(const std::string& path) {
    const std::string boxes = window.carga(path);
    return boxes + " [" + content() + "]";
  }
  [[nodiscard]] std::string refused() const { return std::string(refusal) + " [" + no_content() + "]"; }
  [[nodiscard]] std::string loaded() const { return " [" + good_content() + "]"; }

  const temporary_folder folder;
  document_window window{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(documents, read_document,
                         testing::Values(document_kind::hex, document_kind::source_text), support::case_name);

TEST_P(read_document, refuses_at_once_what_is_no_file_and_takes_the_next) {
  write_file(folder / "bien", good_file());
  write_file(folder / "vacio", "");
  fs::create_directory(folder / "carpeta");
  fs::create_symlink("circulo", folder / "circulo");
  fs::create_symlink("no hay", folder / "al vacio");
  fs::create_symlink("mudo", folder / "a fifo");
  for (const char* name : {"fifo", "mudo"}) ASSERT_EQ(::mkfifo((folder / name).c_str(), 0600), 0);
  const int silent = ::open((folder / "mudo").c_str(), O_RDWR);
  ASSERT_GE(silent, 0) << "somebody who has the pipe open and writes nothing";
  const std::string socket_name = folder / "socket";
  const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  ASSERT_LT(socket_name.size(), sizeof address.sun_path);
  std::copy(socket_name.begin(), socket_name.end(), address.sun_path);
  ASSERT_EQ(::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);

  const std::vector<std::string> paths = {
      folder / "no hay",
      folder / "carpeta",
      folder / "carpeta/",
      folder / "bien/uno",
      folder / "circulo",
      folder / "al vacio",
      folder / "fifo",
      folder / "mudo",
      folder / "a fifo",
      folder / "socket",
      folder / "vacio",
      "/dev/zero",
      "/dev/null",
      "/dev/full",
      "/dev/urandom",
      "/dev/tty",
      "/dev/ptmx",
      "/proc/self/mem",
      "/proc",
      "/proc/kmsg",
      "/proc/self/fd/0/x",
      folder / std::string(300, 'n'),
  };
  for (const std::string& path : paths) {
    const auto told = run_in_child([&] {
      const std::string first = load(path);
      return first + load(folder / "bien");
    });
    EXPECT_EQ(told.text, refused() + loaded()) << path;
    // Not even looked into, however much there would be of it: what was moved is the good file. Only the log
    // of the system is a regular file by its name, and has as much in it as nobody has read yet.
    if (path != "/proc/kmsg") {
      EXPECT_LT(told.io_bytes, 1000) << path;
    }
  }
  ::close(silent);
  ::close(socket);
}

TEST_P(read_document, takes_nothing_out_of_a_fifo) {
  const std::string path = folder / "fifo";
  ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
  const int reader = ::open(path.c_str(), O_RDONLY | O_NONBLOCK);
  write_file(path, good_file());
  EXPECT_EQ(run_in_child([&] { return load(path); }).text, refused());
  std::string waiting(1000, '?');
  const ssize_t length = ::read(reader, waiting.data(), waiting.size());
  ASSERT_GE(length, 0);
  EXPECT_EQ(waiting.substr(0, static_cast<std::size_t>(length)), good_file());
  ::close(reader);
}

TEST_P(read_document, refuses_what_may_not_be_read) {
  write_file(folder / "secreto", good_file());
  write_file(folder / "oculta/uno", good_file());
  ASSERT_TRUE(support::give_to_ordinary_user(folder.path().c_str()));
  for (const char* name : {"secreto", "oculta", "oculta/uno"})
    ASSERT_TRUE(support::give_to_ordinary_user((folder / name).c_str()));
  const auto as_user = [&](const char* name) {
    return run_in_child(
               [&] { return support::become_ordinary_user() ? load(folder / name) : "<administrator>"; })
        .text;
  };
  EXPECT_EQ(as_user("secreto"), loaded());
  EXPECT_EQ(as_user("oculta/uno"), loaded());
  ASSERT_EQ(::chmod((folder / "secreto").c_str(), 0200), 0);
  ASSERT_EQ(::chmod((folder / "oculta").c_str(), 0600), 0);
  EXPECT_EQ(as_user("secreto"), refused());
  EXPECT_EQ(as_user("oculta/uno"), refused());
}

// What the system makes up as it is read is a regular file of size 0.
TEST_P(read_document, takes_a_file_of_the_system) {
  ASSERT_TRUE(fs::is_regular_file("/proc/version"));
  const std::string boxes = window.carga("/proc/version");
  if (source()) {
    EXPECT_EQ(boxes, "");
    EXPECT_TRUE(content().starts_with("Linux version ")) << content();
  } else {
    EXPECT_EQ(boxes, "Error en fichero /proc/version.\rFormato incorrecto.");
  }
}

TEST_P(read_document, is_not_stopped_by_the_locks_of_others) {
  write_file(folder / "bien", good_file());
  const int file = ::open((folder / "bien").c_str(), O_RDWR);
  ASSERT_GE(file, 0);
  ASSERT_EQ(::flock(file, LOCK_EX), 0);
  struct flock whole {};
  whole.l_type = F_WRLCK;
  ASSERT_EQ(::fcntl(file, F_SETLK, &whole), 0);
  EXPECT_EQ(run_in_child([&] { return load(folder / "bien"); }).text, loaded());
  ::close(file);
}

TEST_P(read_document, waits_a_moment_for_a_lease_and_no_longer) {
  write_file(folder / "bien", good_file());
  // To give it back the holder needs a processor, which it may not get within the moment where the machine is
  // busy: then again with another lease. Who does not wait at all never comes to read one.
  std::string got = refused();
  for (int tries = 0; tries < 50 && got == refused(); ++tries) {
    const auto holder = support::take_lease(folder / "bien", true);
    if (!holder) GTEST_SKIP() << "the system gives no leases here";
    got = run_in_child([&] { return load(folder / "bien"); }).text;
  }
  EXPECT_EQ(got, loaded());
  // The system takes a lease that is not given back away after most of a minute, and then the file is read.
  const auto holder = support::take_lease(folder / "bien", false);
  ASSERT_TRUE(holder);
  EXPECT_EQ(run_in_child([&] { return load(folder / "bien"); }).text, refused());
}

TEST_P(read_document, finds_a_file_that_comes_and_goes_whole_or_not_at_all) {
  const std::string path = folder / "viene y va";
  const other_process coming_and_going([&] {
    for (;;) {
      write_file(folder / "bien", good_file());
      ::rename((folder / "bien").c_str(), path.c_str());
      ::unlink(path.c_str());
    }
  });
  for (int i = 0; i < 150; ++i) {
    const std::string told = load(path);
    ASSERT_TRUE(told == loaded() || told == refused()) << told;
    // Nothing of this load may be taken for the next one's.
    window.put(support::amount::small);
    window.carga(folder / "no hay");
  }
}

// --- a file that changes while it is read ---

enum outcome { refused_it, read_as_it_was, read_as_it_became, read_a_mixture };

/// What comes of a read when at one of its stops the file gets another length; nothing when it has fewer
/// stops than that.
std::optional<outcome> read_with_change_at(const std::string& path, int stop, std::size_t before,
                                           std::size_t after) {
  write_file(path, std::string(before, 'x'));
  stepped_child child([&]() -> int {
    std::string bytes;
    if (!read_file(path, bytes, std::max(before, after))) return refused_it;
    return bytes.size() == before  ? read_as_it_was
           : bytes.size() == after ? read_as_it_became
                                   : read_a_mixture;
  });
  for (int passed = 0; passed <= stop; ++passed)
    if (!child.runs_to_next_stop()) return std::nullopt;
  if (::truncate(path.c_str(), static_cast<off_t>(after)) != 0) return read_a_mixture;
  const int answer = child.runs_to_end();
  return answer < 0 || answer > read_a_mixture ? read_a_mixture : static_cast<outcome>(answer);
}

TEST(changing_file, never_mixes_two_states_of_a_file_that_shrinks_or_grows) {
  const temporary_folder folder;
  if (!stepped_child([] { return 0; }).traced()) GTEST_SKIP() << "the system lets nobody trace";
  // Several reads long, and several in the middle of which it may change.
  constexpr std::size_t longest = 400'000;
  for (const bool shrinks : {true, false}) {
    const std::size_t before = shrinks ? longest : longest / 2;
    const std::size_t after = shrinks ? longest / 2 : longest;
    std::array<int, 4> outcomes{};
    for (int stop = 0;; ++stop) {
      const auto met = read_with_change_at(folder / "uno", stop, before, after);
      if (!met) break;
      ASSERT_NE(*met, read_a_mixture) << "changed at stop " << stop;
      ++outcomes[*met];
    }
    // Changed before it is opened, in the middle, and behind the last look at it.
    EXPECT_GT(outcomes[read_as_it_became], 0);
    EXPECT_GT(outcomes[refused_it], 6);
    EXPECT_GT(outcomes[read_as_it_was], 0);
  }
}

}  // namespace
}  // namespace estructura
