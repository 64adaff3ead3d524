// Files: names found whatever their case, whole reads, saves that leave the old file or the new one.
#include "common/file.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "tests/support/ordinary_user.h"
#include "tests/support/temporary_folder.h"

namespace estructura {
namespace {

using support::as_ordinary_user;
using support::lee;
using support::temporary_folder;
using support::write_file;

namespace fs = std::filesystem;

constexpr std::size_t no_limit = std::numeric_limits<std::size_t>::max();

mode_t mode_of(const std::string& path) {
  struct stat data {};
  return ::stat(path.c_str(), &data) == 0 ? data.st_mode & 07777U : 0U;
}

ino_t inode_of(const std::string& path) {
  struct stat data {};
  return ::stat(path.c_str(), &data) == 0 ? data.st_ino : 0U;
}

TEST(find_file, finds_the_exact_name_first_then_one_that_differs_in_case_folder_by_folder) {
  const temporary_folder folder;
  for (const char* file : {"PIC/Uno.hex", "PIC/Dos.HEX", "PIC/dos.hex", "Año/ÑANDÚ.hex", "both/Both.hex",
                           "Both/Only.hex", "two/B.hex", "two/b.HEX", "con blancos/Tres.hex"})
    write_file(folder / file, file);
  struct row {
    const char* wanted;
    const char* found;
  };
  const std::vector<row> rows = {
      {"PIC/Uno.hex", "PIC/Uno.hex"},
      {"pic/uno.hex", "PIC/Uno.hex"},
      {"PIC/UNO.HEX", "PIC/Uno.hex"},
      {"PIC/dos.hex", "PIC/dos.hex"},
      {"pic/Dos.HEX", "PIC/Dos.HEX"},
      {"año/ñandú.hex", "Año/ÑANDÚ.hex"},
      {"both/both.hex", "both/Both.hex"},
      {"Both/only.hex", "Both/Only.hex"},
      {"both/only.hex", "both/only.hex"},  // the folder is the exact one, and has none
      {"two/b.hex", "two/B.hex"},          // several alike: the first in alphabetical order
      {"CON BLANCOS/tres.HEX", "con blancos/Tres.hex"},
      {"PIC/Nuevo.Hex", "PIC/nuevo.hex"},  // a new file has its name in lower case
      {"pic/Ñuevo.hex", "PIC/ñuevo.hex"},
      {"PIC", "PIC"},
      {"pic", "PIC"},
      {"pic/../pic/uno.hex", "PIC/../PIC/Uno.hex"},
  };
  for (const row& r : rows) EXPECT_EQ(find_file(folder / r.wanted), folder / r.found) << r.wanted;
}

TEST(find_file, finds_a_name_without_folder_in_the_current_one) {
  const temporary_folder folder;
  write_file(folder / "Uno.hex", "");
  EXPECT_TRUE(support::in_child([&] {
    fs::current_path(folder.path());
    return find_file("uno.HEX") == "Uno.hex" && find_file("Dos.hex") == "dos.hex" &&
           find_file("./uno.hex") == "./Uno.hex";
  }));
}

TEST(find_file, survives_folders_that_are_none) {
  const temporary_folder folder;
  write_file(folder / "file", "");
  EXPECT_EQ(find_file(""), "");
  EXPECT_FALSE(file_exists(find_file(folder / "none/uno.hex")));
  EXPECT_FALSE(file_exists(find_file(folder / "file/uno.hex")));
  EXPECT_EQ(find_file("/"), "/");
}

TEST(file_exists, is_true_of_files_and_folders) {
  const temporary_folder folder;
  write_file(folder / "uno.hex", "");
  fs::create_symlink(folder / "gone", folder / "dangling");
  EXPECT_TRUE(file_exists(folder / "uno.hex"));
  EXPECT_FALSE(file_exists(folder.path()));
  EXPECT_FALSE(file_exists(folder / "UNO.hex"));
  EXPECT_FALSE(file_exists(folder / "dangling"));
  EXPECT_FALSE(file_exists(""));
}

TEST(read_file, gives_the_bytes_as_they_are) {
  const temporary_folder folder;
  std::string all;
  for (int i = 0; i < 200000; ++i) all.push_back(static_cast<char>(i % 256));
  for (const std::string& content : {std::string(), std::string("a\r\nb\n\0c", 7), all}) {
    write_file(folder / "f", content);
    std::string bytes = "before";
    EXPECT_TRUE(read_file(folder / "f", bytes, no_limit));
    EXPECT_EQ(bytes, content);
  }
}

TEST(read_file, fails_on_a_missing_file_a_folder_and_what_is_no_file) {
  const temporary_folder folder;
  fs::create_symlink(folder / "loop", folder / "loop");
  ASSERT_EQ(::mkfifo((folder / "fifo").c_str(), 0600), 0);
  for (const std::string& path : {folder / "missing", folder.path(), folder / "loop", folder / "fifo",
                                  folder / "missing/f", std::string(), std::string("/dev/zero")}) {
    std::string bytes = "before";
    EXPECT_FALSE(read_file(path, bytes, no_limit)) << path;
    EXPECT_EQ(bytes, "") << path;
  }
}

TEST(read_file, fails_on_a_file_that_may_not_be_read) {
  const temporary_folder folder;
  write_file(folder / "f", "secret");
  ASSERT_TRUE(support::give_to_ordinary_user(folder.path().c_str()));
  ASSERT_TRUE(support::give_to_ordinary_user((folder / "f").c_str()));
  const auto reads = [&] {
    std::string bytes;
    return read_file(folder / "f", bytes, no_limit);
  };
  ASSERT_EQ(::chmod((folder / "f").c_str(), 0400), 0);
  EXPECT_TRUE(as_ordinary_user(reads));
  ASSERT_EQ(::chmod((folder / "f").c_str(), 0), 0);
  EXPECT_TRUE(as_ordinary_user([&] { return !reads(); }));
}

TEST(save_file, writes_a_new_file_and_replaces_an_old_one) {
  const temporary_folder folder;
  const std::string path = folder / "uno.hex";
  EXPECT_TRUE(save_file(path, "first\r\n"));
  EXPECT_EQ(lee(path), "first\r\n");
  EXPECT_TRUE(save_file(path, "b"));
  EXPECT_EQ(lee(path), "b");
  EXPECT_TRUE(save_file(path, ""));
  EXPECT_EQ(lee(path), "");
  EXPECT_EQ(folder.entries(), 1) << "nothing is left beside it";
}

TEST(save_file, keeps_the_permissions_and_gives_a_new_file_the_usual_ones) {
  const temporary_folder folder;
  const std::string path = folder / "uno.hex";
  for (const mode_t mode : {0600U, 0640U, 0644U, 0666U, 0755U}) {
    write_file(path, "old");
    ASSERT_EQ(::chmod(path.c_str(), mode), 0);
    EXPECT_TRUE(save_file(path, "new"));
    EXPECT_EQ(mode_of(path), mode);
    EXPECT_EQ(lee(path), "new");
  }
  EXPECT_TRUE(support::in_child([&] {
    ::umask(027);
    return save_file(folder / "fresh", "x") && mode_of(folder / "fresh") == 0640;
  }));
}

TEST(save_file, keeps_the_owner) {
  if (::geteuid() != 0) GTEST_SKIP() << "only the administrator can give a file to somebody else";
  const temporary_folder folder;
  const std::string path = folder / "uno.hex";
  write_file(path, "old");
  ASSERT_EQ(::chown(path.c_str(), 1234, 5678), 0);
  EXPECT_TRUE(save_file(path, "new"));
  struct stat data {};
  ASSERT_EQ(::stat(path.c_str(), &data), 0);
  EXPECT_EQ(data.st_uid, 1234U);
  EXPECT_EQ(data.st_gid, 5678U);
  EXPECT_EQ(lee(path), "new");
}

TEST(save_file, writes_through_symbolic_links) {
  const temporary_folder folder;
  write_file(folder / "real/uno.hex", "old");
  fs::create_symlink("real/uno.hex", folder / "relative");
  fs::create_symlink(folder / "relative", folder / "chain");
  fs::create_symlink("real/nuevo.hex", folder / "dangling");
  EXPECT_TRUE(save_file(folder / "chain", "new"));
  EXPECT_EQ(lee(folder / "real/uno.hex"), "new");
  EXPECT_TRUE(save_file(folder / "dangling", "fresh"));
  EXPECT_EQ(lee(folder / "real/nuevo.hex"), "fresh");
  for (const char* link : {"relative", "chain", "dangling"})
    EXPECT_TRUE(fs::is_symlink(folder / link)) << link;
}

TEST(save_file, fails_where_there_is_nowhere_to_write) {
  const temporary_folder folder;
  write_file(folder / "file", "old");
  fs::create_symlink(folder / "loop", folder / "loop");
  for (const std::string& path : {folder / "missing/uno.hex", folder.path(), folder / "file/uno.hex",
                                  folder / "loop", std::string(), std::string("/dev/full")})
    EXPECT_FALSE(save_file(path, "x")) << path;
  EXPECT_EQ(lee(folder / "file"), "old");
  EXPECT_TRUE(fs::is_symlink(folder / "loop"));
  EXPECT_EQ(folder.entries(), 2);
}

TEST(save_file, writes_in_place_where_the_folder_takes_no_new_file) {
  const temporary_folder folder;
  const std::string path = folder / "uno.hex";
  write_file(path, "a long old content");
  ASSERT_TRUE(support::give_to_ordinary_user(path.c_str()));
  ASSERT_EQ(::chmod(folder.path().c_str(), 0555), 0);
  const ino_t before = inode_of(path);
  EXPECT_TRUE(as_ordinary_user([&] { return save_file(path, "new"); }));
  EXPECT_TRUE(as_ordinary_user([&] { return !save_file(folder / "dos.hex", "new"); }))
      << "a new file has no place";
  EXPECT_EQ(lee(path), "new");
  EXPECT_EQ(inode_of(path), before);
  ASSERT_EQ(::chmod(folder.path().c_str(), 0755), 0);
  EXPECT_EQ(folder.entries(), 1);
}

TEST(save_file, leaves_a_file_alone_that_may_not_be_written) {
  const temporary_folder folder;
  const std::string path = folder / "uno.hex";
  write_file(path, "old");
  ASSERT_TRUE(support::give_to_ordinary_user(folder.path().c_str()));
  ASSERT_TRUE(support::give_to_ordinary_user(path.c_str()));
  ASSERT_EQ(::chmod(path.c_str(), 0444), 0);
  EXPECT_TRUE(as_ordinary_user([&] { return !save_file(path, "new"); }));
  EXPECT_EQ(lee(path), "old");
  EXPECT_EQ(mode_of(path), 0444U);
  EXPECT_EQ(folder.entries(), 1);
}

TEST(save_file, leaves_the_old_file_whole_when_the_disk_is_full) {
  const temporary_folder folder;
  const std::string path = folder / "uno.hex";
  const std::string old(3000, 'o');
  write_file(path, old);
  EXPECT_TRUE(support::with_file_limit(4096, [&] { return !save_file(path, std::string(100000, 'n')); }));
  EXPECT_EQ(lee(path), old);
  EXPECT_EQ(folder.entries(), 1) << "the half-written file is gone";
  EXPECT_TRUE(support::with_file_limit(4096, [&] { return save_file(path, std::string(4096, 'n')); }));
  EXPECT_EQ(lee(path), std::string(4096, 'n'));
}

// The folder that refuses is the one reason to give up the safe way: a disk that has no place for a new file
// may well let the old one be emptied, and then have no place for its new content either.
TEST(save_file, leaves_the_old_file_whole_when_the_disk_has_no_place_for_another) {
  const temporary_folder folder;
  const std::string path = folder / "uno.hex";
  const std::string old(3000, 'o');
  const auto refused_and_whole = [&] {
    write_file(path, old);
    return !save_file(path, std::string(100000, 'n')) && lee(path) == old && folder.entries() == 1;
  };
  for (const int files : {1, 2}) {
    const auto result = support::on_small_disk(folder.path(), 4, files, refused_and_whole);
    if (!result) GTEST_SKIP() << "the system lets this test mount no disk";
    EXPECT_TRUE(*result) << "a disk for " << files << " files";
  }
}

TEST(save_file, fails_with_the_old_file_whole_when_no_file_can_be_opened) {
  const temporary_folder folder;
  const std::string path = folder / "uno.hex";
  write_file(path, "old");
  EXPECT_TRUE(support::in_child([&] {
    const rlimit none{0, 0};
    return ::setrlimit(RLIMIT_NOFILE, &none) == 0 && !save_file(path, "new");
  }));
  EXPECT_EQ(lee(path), "old");
}

}  // namespace
}  // namespace estructura
