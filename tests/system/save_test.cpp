// Saving where the outside says no: the person is told, the old file stays, and the document can be saved
// elsewhere. Each test does so with every document: the HEX, its export and the source.
#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/file.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>
#include <vector>

#include "tests/support/ordinary_user.h"
#include "tests/support/temporary_folder.h"
#include "tests/system/child.h"
#include "tests/system/documents.h"

namespace estructura {
namespace {

namespace fs = std::filesystem;
using support::amount;
using support::become_ordinary_user;
using support::document_kind;
using support::document_window;
using support::file_of;
using support::give_to_ordinary_user;
using support::lee;
using support::listing_of;
using support::run_in_child;
using support::temporary_folder;
using support::write_file;

constexpr const char* refusal = "Error en escritura";
constexpr const char* no_disk = "<no disk>";

std::string said(const std::string& boxes, bool modified) {
  return boxes + (modified ? " [modified]" : " [saved]");
}

class save_document : public testing::TestWithParam<document_kind> {
 public:
  save_document() {
    EXPECT_TRUE(give_to_ordinary_user(folder.path().c_str()));
    window.put(amount::large);
  }

  void put_old(const std::string& path) {
    write_file(path, old_file);
    ASSERT_TRUE(give_to_ordinary_user(path.c_str()));
  }
  std::string save(const std::string& path) {
    const std::string boxes = window.salva(path);
    return said(boxes, window.modified());
  }
  [[nodiscard]] std::string holds(const std::string& path) const {
    const std::string bytes = lee(path);
    return bytes == new_file ? "new" : bytes == old_file ? "old" : std::to_string(bytes.size()) + " bytes";
  }
  // The export is no save: the document stays as modified as it was.
  [[nodiscard]] std::string done() const { return said("", GetParam() == document_kind::hex84); }
  [[nodiscard]] static std::string refused() { return said(refusal, true); }

  const temporary_folder folder;
  const std::string old_file = file_of(GetParam(), amount::small);
  const std::string new_file = file_of(GetParam(), amount::large);
  document_window window{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(documents, save_document,
                         testing::Values(document_kind::hex, document_kind::hex84,
                                         document_kind::source_text),
                         support::case_name);

TEST_P(save_document, the_two_contents_differ) {
  EXPECT_GT(new_file.size(), 11000U);
  EXPECT_LT(old_file.size(), 4096U);
  EXPECT_TRUE(new_file.ends_with("\r\n"));
}

TEST_P(save_document, is_refused_where_no_file_can_be_and_can_be_done_elsewhere) {
  put_old(folder / "fichero");
  put_old(folder / "de lectura");
  put_old(folder / "cerrada/uno");
  put_old(folder / "oculta/uno");
  put_old(folder / "carpeta/dentro");
  fs::create_symlink(folder / "circulo", folder / "circulo");
  fs::create_symlink("vuelta", folder / "ida");
  fs::create_symlink("ida", folder / "vuelta");
  fs::create_symlink("no hay/uno", folder / "a ninguna carpeta");
  fs::create_symlink("carpeta", folder / "a carpeta");
  fs::create_symlink("de lectura", folder / "a de lectura");
  fs::create_symlink("fifo", folder / "a fifo");
  ASSERT_EQ(::mkfifo((folder / "fifo").c_str(), 0666), 0);
  const std::string socket_name = folder / "socket";
  const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  ASSERT_LT(socket_name.size(), sizeof address.sun_path);
  std::copy(socket_name.begin(), socket_name.end(), address.sun_path);
  ASSERT_EQ(::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  for (const char* name : {"fifo", "socket"}) ASSERT_EQ(::chmod((folder / name).c_str(), 0666), 0);
  ASSERT_EQ(::chmod((folder / "de lectura").c_str(), 0444), 0);
  ASSERT_EQ(::chmod((folder / "cerrada").c_str(), 0555), 0);
  ASSERT_EQ(::chmod((folder / "oculta").c_str(), 0), 0);
  const std::string before = listing_of(folder.path());

  const std::vector<std::string> paths = {
      folder / "carpeta",
      folder / "a carpeta",
      folder / "carpeta/",
      folder / "fichero/uno",
      folder / "no hay/uno",
      folder / "no hay/",
      folder / "circulo",
      folder / "ida",
      folder / "vuelta",
      folder / "a ninguna carpeta",
      folder / "de lectura",
      folder / "a de lectura",
      folder / "cerrada/nuevo",
      folder / "oculta/uno",
      folder / "oculta/nuevo",
      folder / "fifo",
      folder / "a fifo",
      folder / "socket",
      folder / std::string(300, 'n'),
      "/",
      "/dev/null",
      "/dev/full",
      "/dev/zero",
      "/proc/version",
      "/proc/uno",
      "/proc/self/uno",
      "/sys/uno",
  };
  for (const std::string& path : paths) {
    const auto told = run_in_child([&] { return become_ordinary_user() ? save(path) : "<administrator>"; });
    EXPECT_EQ(told.text, refused()) << path;
    EXPECT_EQ(listing_of(folder.path()), before) << path;
    EXPECT_LT(told.io_bytes, 1000) << path;
  }
  const auto told = run_in_child([&] {
    if (!become_ordinary_user()) return std::string("<administrator>");
    const std::string first = save(folder / "no hay/uno");
    return first + save(folder / "fichero");
  });
  EXPECT_EQ(told.text, refused() + done());
  EXPECT_EQ(holds(folder / "fichero"), "new");
  ::close(socket);
  ASSERT_EQ(::chmod((folder / "oculta").c_str(), 0755), 0);
  EXPECT_EQ(holds(folder / "oculta/uno"), "old");
  EXPECT_EQ(std::distance(fs::directory_iterator(folder / "oculta"), {}), 1);
}

// Whoever reads may be slow, or have stopped: nothing goes into a pipe, so nothing can wait for it.
TEST_P(save_document, sends_nothing_to_who_reads_a_fifo) {
  const std::string path = folder / "fifo";
  ASSERT_EQ(::mkfifo(path.c_str(), 0666), 0);
  ASSERT_EQ(::chmod(path.c_str(), 0666), 0);
  const int reader = ::open(path.c_str(), O_RDONLY | O_NONBLOCK);
  ASSERT_GE(reader, 0);
  EXPECT_EQ(run_in_child([&] { return save(path); }).text, refused());
  char byte = 0;
  EXPECT_EQ(::read(reader, &byte, 1), 0) << "the end, with nothing before it";
  ::close(reader);
  EXPECT_TRUE(fs::is_fifo(path));
}

TEST_P(save_document, goes_through_links_to_the_file_they_mean) {
  struct row {
    const char* saved_as;
    const char* file;
  };
  const std::vector<row> rows = {
      {"relativo", "real/uno"},        {"absoluto", "real/uno"},          {"cadena", "real/uno"},
      {"al vacío", "real/nuevo"},      {"cadena al vacío", "real/nuevo"}, {"puente/uno", "real/uno"},
      {"puente/otra vez", "real/uno"},
  };
  for (const row& r : rows) {
    const temporary_folder place;
    write_file(place / "real/uno", old_file);
    fs::create_symlink("real/uno", place / "relativo");
    fs::create_symlink(place / "real/uno", place / "absoluto");
    fs::create_symlink("absoluto", place / "cadena");
    fs::create_symlink("real/nuevo", place / "al vacío");
    fs::create_symlink("al vacío", place / "cadena al vacío");
    fs::create_symlink("real", place / "puente");
    fs::create_symlink("../real/uno", place / "real/otra vez");
    window.put(amount::large);
    EXPECT_EQ(save(place / r.saved_as), done()) << r.saved_as;
    EXPECT_EQ(holds(place / r.file), "new") << r.saved_as;
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(place / r.file))) << r.saved_as;
    for (const char* link :
         {"relativo", "absoluto", "cadena", "al vacío", "cadena al vacío", "puente", "real/otra vez"})
      EXPECT_TRUE(fs::is_symlink(place / link)) << r.saved_as << " changed " << link;
  }
}

TEST_P(save_document, keeps_the_old_file_on_a_full_disk_and_saves_once_there_is_room) {
  const std::string path = folder / "uno";
  const auto told = run_in_child([&]() -> std::string {
    // Old file 1 page, filler 3, new file 3.
    if (!support::mount_small_disk(folder.path(), 5, 10)) return no_disk;
    put_old(path);
    write_file(folder / "relleno", std::string(std::size_t{3} * 4096, 'r'));
    const std::string before = listing_of(folder.path());
    std::string story = save(path);
    story += listing_of(folder.path()) == before ? " whole " : " CHANGED ";
    fs::remove(folder / "relleno");
    story += save(path);
    return story + (holds(path) == "new" && folder.entries() == 1 ? " whole" : " CHANGED");
  });
  if (told.text == no_disk) GTEST_SKIP() << "the system lets this test mount no disk";
  EXPECT_EQ(told.text, refused() + " whole " + done() + " whole");
}

// Where the folder takes no file beside the old one, the old one is written over; not before there is room.
TEST_P(save_document, keeps_the_old_file_on_a_full_disk_in_a_closed_folder) {
  const std::string path = folder / "uno";
  const auto told = run_in_child([&]() -> std::string {
    if (!support::mount_small_disk(folder.path(), 5, 10)) return no_disk;
    put_old(path);
    write_file(folder / "relleno", std::string(std::size_t{3} * 4096, 'r'));
    if (::chmod(folder.path().c_str(), 0555) != 0) return "<chmod>";
    const auto as_user = [&] { return become_ordinary_user() ? save(path) : "<administrator>"; };
    const std::string before = listing_of(folder.path());
    std::string story = run_in_child(as_user).text;
    story += listing_of(folder.path()) == before ? " whole " : " CHANGED ";
    fs::remove(folder / "relleno");
    story += run_in_child(as_user).text;
    return story + (holds(path) == "new" && folder.entries() == 1 ? " whole" : " CHANGED");
  });
  if (told.text == no_disk) GTEST_SKIP() << "the system lets this test mount no disk";
  EXPECT_EQ(told.text, refused() + " whole " + done() + " whole");
}

// The limit comes with a signal that ends who does not expect it.
TEST_P(save_document, keeps_the_old_file_where_files_may_not_grow_so_long) {
  put_old(folder / "uno");
  put_old(folder / "cerrada/uno");
  ASSERT_EQ(::chmod((folder / "cerrada").c_str(), 0555), 0);
  const std::string before = listing_of(folder.path());
  for (const char* name : {"uno", "cerrada/uno", "nuevo"}) {
    const auto told = run_in_child([&]() -> std::string {
      const rlimit limit{8000, 8000};
      if (!become_ordinary_user() || ::setrlimit(RLIMIT_FSIZE, &limit) != 0) return "<no limit>";
      const std::string story = save(folder / name);
      struct sigaction now {};
      ::sigaction(SIGXFSZ, nullptr, &now);
      return story + (now.sa_handler == SIG_DFL ? "" : " <signal changed>");
    });
    EXPECT_EQ(told.text, refused()) << name;
    EXPECT_EQ(listing_of(folder.path()), before) << name;
  }
}

TEST_P(save_document, is_refused_on_a_disk_for_reading_only) {
  const std::string path = folder / "uno";
  const auto told = run_in_child([&]() -> std::string {
    if (!support::mount_small_disk(folder.path(), 20, 10)) return no_disk;
    put_old(path);
    if (::mount("disk", folder.path().c_str(), "tmpfs", MS_REMOUNT | MS_RDONLY, nullptr) != 0) return no_disk;
    const std::string before = listing_of(folder.path());
    std::string story = save(path);
    story += save(folder / "nuevo");
    return story + (listing_of(folder.path()) == before ? " whole" : " CHANGED");
  });
  if (told.text == no_disk) GTEST_SKIP() << "the system lets this test mount no disk";
  EXPECT_EQ(told.text, refused() + refused() + " whole");
}

TEST_P(save_document, writes_over_the_file_where_the_folder_takes_no_other) {
  put_old(folder / "cerrada/uno");
  fs::create_symlink("cerrada/uno", folder / "enlace");
  ASSERT_EQ(::chmod((folder / "cerrada").c_str(), 0555), 0);
  for (const char* name : {"cerrada/uno", "enlace"}) {
    for (const std::size_t old_size : {std::size_t{0}, std::size_t{1}, std::size_t{100000}}) {
      write_file(folder / "cerrada/uno", std::string(old_size, 'x'));
      const auto told =
          run_in_child([&] { return become_ordinary_user() ? save(folder / name) : "<administrator>"; });
      EXPECT_EQ(told.text, done()) << name;
      EXPECT_EQ(holds(folder / "cerrada/uno"), "new") << name << " over " << old_size << " bytes";
    }
  }
}

// As in /tmp: everybody makes files there, and nobody may replace another's.
TEST_P(save_document, writes_over_somebody_elses_file_in_a_folder_for_everybody) {
  if (::geteuid() != 0) GTEST_SKIP() << "only the administrator can make a file of somebody else's";
  write_file(folder / "de todos/uno", old_file);
  ASSERT_EQ(::chmod((folder / "de todos/uno").c_str(), 0666), 0);
  ASSERT_EQ(::chmod((folder / "de todos").c_str(), 01777), 0);
  const auto told = run_in_child(
      [&] { return become_ordinary_user() ? save(folder / "de todos/uno") : "<administrator>"; });
  EXPECT_EQ(told.text, done());
  EXPECT_EQ(holds(folder / "de todos/uno"), "new");
  EXPECT_EQ(fs::directory_iterator(folder / "de todos")->path(), folder / "de todos/uno");
  EXPECT_EQ(std::distance(fs::directory_iterator(folder / "de todos"), {}), 1);
}

// As a container is given single files of its host: nothing can be renamed over them.
TEST_P(save_document, writes_over_a_file_that_is_a_disk_of_its_own) {
  put_old(folder / "fuera/uno");
  put_old(folder / "dentro/uno");
  fs::create_directory(folder / "otro");
  const auto told = run_in_child([&]() -> std::string {
    if (!support::mount_small_disk(folder / "otro", 1, 1)) return no_disk;
    if (::mount((folder / "fuera/uno").c_str(), (folder / "dentro/uno").c_str(), nullptr, MS_BIND, nullptr) !=
        0)
      return no_disk;
    const std::string story = save(folder / "dentro/uno");
    const auto left = std::distance(fs::directory_iterator(folder / "dentro"), {});
    return story + (left == 1 ? "" : " <something left>");
  });
  if (told.text == no_disk) GTEST_SKIP() << "the system lets this test mount no disk";
  EXPECT_EQ(told.text, done());
  EXPECT_EQ(holds(folder / "fuera/uno"), "new");
  EXPECT_EQ(holds(folder / "dentro/uno"), "old") << "what the disk stood upon";
}

TEST_P(save_document, is_not_stopped_by_the_locks_of_others) {
  const std::string path = folder / "uno";
  put_old(path);
  const int file = ::open(path.c_str(), O_RDWR);
  ASSERT_GE(file, 0);
  ASSERT_EQ(::flock(file, LOCK_EX), 0);
  struct flock whole {};
  whole.l_type = F_WRLCK;
  ASSERT_EQ(::fcntl(file, F_SETLK, &whole), 0);
  EXPECT_EQ(run_in_child([&] { return save(path); }).text, done());
  EXPECT_EQ(holds(path), "new");
  ::close(file);
}

TEST_P(save_document, does_not_wait_for_a_lease) {
  put_old(folder / "uno");
  const auto holder = support::take_lease(folder / "uno", false);
  if (!holder) GTEST_SKIP() << "the system gives no leases here";
  if (!support::holds_untouched_lease(*holder)) GTEST_SKIP() << "the system does not show its leases";
  EXPECT_EQ(run_in_child([&] { return save(folder / "uno"); }).text, done());
  EXPECT_EQ(holds(folder / "uno"), "new");
  EXPECT_TRUE(support::holds_untouched_lease(*holder)) << "nobody was asked for it";
}

}  // namespace
}  // namespace estructura
