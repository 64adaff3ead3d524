// What a killed save leaves beside its document: the next save there removes it, and nothing else.
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "common/file.h"
#include "tests/support/ordinary_user.h"
#include "tests/support/temporary_folder.h"
#include "tests/system/child.h"
#include "tests/system/documents.h"

namespace estructura {
namespace {

namespace fs = std::filesystem;
using support::give_to_ordinary_user;
using support::lee;
using support::listing_of;
using support::run_in_child;
using support::temporary_folder;
using support::write_file;

std::string leftover_name(int n) {
  return ".estructura-" + std::to_string(100000 + n);
}

TEST(leftovers, go_with_the_next_save_in_the_folder) {
  const temporary_folder folder;
  for (int n = 0; n < 5; ++n) write_file(folder / leftover_name(n), "half");
  ASSERT_EQ(::chmod((folder / leftover_name(3)).c_str(), 0600), 0);
  EXPECT_TRUE(save_file(folder / "uno", "whole"));
  EXPECT_EQ(lee(folder / "uno"), "whole");
  EXPECT_EQ(folder.entries(), 1);
}

TEST(leftovers, go_also_in_the_current_folder_and_behind_a_link) {
  const temporary_folder folder;
  write_file(folder / leftover_name(0), "half");
  write_file(folder / ("otra/" + leftover_name(1)), "half");
  fs::create_symlink("otra/dos", folder / "enlace");
  EXPECT_TRUE(support::in_child([&] {
    fs::current_path(folder.path());
    return save_file("uno", "whole") && save_file("enlace", "whole");
  }));
  EXPECT_EQ(folder.entries(), 3) << "uno, otra, enlace";
  EXPECT_EQ(std::distance(fs::directory_iterator(folder / "otra"), {}), 1);
}

TEST(leftovers, make_room_before_the_save_needs_it) {
  const temporary_folder folder;
  const auto saved = support::on_small_disk(folder.path(), 4, 10, [&] {
    write_file(folder / "uno", "old");
    write_file(folder / leftover_name(0), std::string(std::size_t{2} * 4096, 'h'));
    return save_file(folder / "uno", std::string(std::size_t{2} * 4096, 'n')) && folder.entries() == 1;
  });
  if (!saved) GTEST_SKIP() << "the system lets this test mount no disk";
  EXPECT_TRUE(*saved);
}

TEST(leftovers, are_only_files_of_that_name) {
  const temporary_folder folder;
  for (const char* name : {".estructura-", ".estructura-12345", ".estructura-1234567", "estructura-123456",
                           ".Estructura-123456", ".estructura_123456", "x.estructura-123456"})
    write_file(folder / name, "mine");
  fs::create_directory(folder / ".estructura-folder");
  write_file(folder / "target", "mine");
  fs::create_symlink("target", folder / ".estructura-linked");
  ASSERT_EQ(::mkfifo((folder / ".estructura-mkfifo").c_str(), 0666), 0);
  ASSERT_EQ(std::string(".estructura-folder").size(), leftover_name(0).size());
  const std::string before = listing_of(folder.path());
  const auto told = run_in_child([&] { return save_file(folder / "target", "mine") ? "saved" : "refused"; });
  EXPECT_EQ(told.text, "saved");
  EXPECT_EQ(listing_of(folder.path()), before);
}

TEST(leftovers, of_another_user_stay) {
  if (::geteuid() != 0) GTEST_SKIP() << "only the administrator can make a file of somebody else's";
  const temporary_folder folder;
  ASSERT_TRUE(give_to_ordinary_user(folder.path().c_str()));
  write_file(folder / leftover_name(0), "half");
  ASSERT_EQ(::chmod((folder / leftover_name(0)).c_str(), 0666), 0);
  EXPECT_TRUE(support::as_ordinary_user([&] { return save_file(folder / "uno", "whole"); }));
  EXPECT_EQ(folder.entries(), 2);
}

TEST(leftovers, are_none_while_their_save_lives) {
  const temporary_folder folder;
  const std::string living = folder / leftover_name(0);
  write_file(living, "half");
  const int file = ::open(living.c_str(), O_RDWR | O_CLOEXEC);
  ASSERT_EQ(::flock(file, LOCK_EX), 0);
  EXPECT_TRUE(save_file(folder / "uno", "whole"));
  EXPECT_EQ(folder.entries(), 2);
  ::close(file);
  EXPECT_TRUE(save_file(folder / "uno", "whole"));
  EXPECT_EQ(folder.entries(), 1);
}

TEST(leftovers, are_never_taken_from_another_program_that_is_saving) {
  const temporary_folder folder;
  const std::string even(100000, 'a');
  const std::string odd(70000, 'b');
  const auto saves = [&](const std::string& name) {
    for (int i = 0; i < 150; ++i)
      if (!save_file(folder / name, i % 2 == 0 ? even : odd)) ::_exit(1);
  };
  support::other_process same_file([&] { saves("uno"); });
  support::other_process other_file([&] { saves("dos"); });
  for (int i = 0; i < 150; ++i) ASSERT_TRUE(save_file(folder / "uno", i % 2 == 0 ? even : odd)) << i;
  EXPECT_TRUE(same_file.ends_well());
  EXPECT_TRUE(other_file.ends_well());
  EXPECT_EQ(folder.entries(), 2);
  EXPECT_EQ(lee(folder / "dos"), odd);
  const std::string content = lee(folder / "uno");
  EXPECT_TRUE(content == even || content == odd) << content.size();
}

}  // namespace
}  // namespace estructura
