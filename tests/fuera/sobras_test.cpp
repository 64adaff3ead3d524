// What a killed save leaves beside its document: the next save there removes it, and nothing else.
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "common/fichero.h"
#include "tests/apoyo/carpeta_temporal.h"
#include "tests/apoyo/usuario.h"
#include "tests/fuera/documentos.h"
#include "tests/fuera/hijo.h"

namespace estructura {
namespace {

namespace fs = std::filesystem;
using apoyo::carpeta_temporal;
using apoyo::en_hijo;
using apoyo::escribe;
using apoyo::give_to_ordinary_user;
using apoyo::lee;
using apoyo::retrato;

std::string leftover_name(int n) {
  return ".estructura-" + std::to_string(100000 + n);
}

TEST(sobras, go_with_the_next_save_in_the_folder) {
  const carpeta_temporal folder;
  for (int n = 0; n < 5; ++n) escribe(folder / leftover_name(n), "half");
  ASSERT_EQ(::chmod((folder / leftover_name(3)).c_str(), 0600), 0);
  EXPECT_TRUE(guarda_fichero(folder / "uno", "whole"));
  EXPECT_EQ(lee(folder / "uno"), "whole");
  EXPECT_EQ(folder.entries(), 1);
}

TEST(sobras, go_also_in_the_current_folder_and_behind_a_link) {
  const carpeta_temporal folder;
  escribe(folder / leftover_name(0), "half");
  escribe(folder / ("otra/" + leftover_name(1)), "half");
  fs::create_symlink("otra/dos", folder / "enlace");
  EXPECT_TRUE(apoyo::in_child([&] {
    fs::current_path(folder.path());
    return guarda_fichero("uno", "whole") && guarda_fichero("enlace", "whole");
  }));
  EXPECT_EQ(folder.entries(), 3) << "uno, otra, enlace";
  EXPECT_EQ(std::distance(fs::directory_iterator(folder / "otra"), {}), 1);
}

TEST(sobras, make_room_before_the_save_needs_it) {
  const carpeta_temporal folder;
  const auto saved = apoyo::on_small_disk(folder.path(), 4, 10, [&] {
    escribe(folder / "uno", "old");
    escribe(folder / leftover_name(0), std::string(std::size_t{2} * 4096, 'h'));
    return guarda_fichero(folder / "uno", std::string(std::size_t{2} * 4096, 'n')) && folder.entries() == 1;
  });
  if (!saved) GTEST_SKIP() << "the system lets this test mount no disk";
  EXPECT_TRUE(*saved);
}

TEST(sobras, are_only_files_of_that_name) {
  const carpeta_temporal folder;
  for (const char* name : {".estructura-", ".estructura-12345", ".estructura-1234567", "estructura-123456",
                           ".Estructura-123456", ".estructura_123456", "x.estructura-123456"})
    escribe(folder / name, "mine");
  fs::create_directory(folder / ".estructura-folder");
  escribe(folder / "target", "mine");
  fs::create_symlink("target", folder / ".estructura-linked");
  ASSERT_EQ(::mkfifo((folder / ".estructura-mkfifo").c_str(), 0666), 0);
  ASSERT_EQ(std::string(".estructura-folder").size(), leftover_name(0).size());
  const std::string before = retrato(folder.path());
  const auto told = en_hijo([&] { return guarda_fichero(folder / "target", "mine") ? "saved" : "refused"; });
  EXPECT_EQ(told.text, "saved");
  EXPECT_EQ(retrato(folder.path()), before);
}

TEST(sobras, of_another_user_stay) {
  if (::geteuid() != 0) GTEST_SKIP() << "only the administrator can make a file of somebody else's";
  const carpeta_temporal folder;
  ASSERT_TRUE(give_to_ordinary_user(folder.path().c_str()));
  escribe(folder / leftover_name(0), "half");
  ASSERT_EQ(::chmod((folder / leftover_name(0)).c_str(), 0666), 0);
  EXPECT_TRUE(apoyo::as_ordinary_user([&] { return guarda_fichero(folder / "uno", "whole"); }));
  EXPECT_EQ(folder.entries(), 2);
}

TEST(sobras, are_none_while_their_save_lives) {
  const carpeta_temporal folder;
  const std::string living = folder / leftover_name(0);
  escribe(living, "half");
  const int file = ::open(living.c_str(), O_RDWR | O_CLOEXEC);
  ASSERT_EQ(::flock(file, LOCK_EX), 0);
  EXPECT_TRUE(guarda_fichero(folder / "uno", "whole"));
  EXPECT_EQ(folder.entries(), 2);
  ::close(file);
  EXPECT_TRUE(guarda_fichero(folder / "uno", "whole"));
  EXPECT_EQ(folder.entries(), 1);
}

TEST(sobras, are_never_taken_from_another_program_that_is_saving) {
  const carpeta_temporal folder;
  const std::string even(100000, 'a');
  const std::string odd(70000, 'b');
  const auto saves = [&](const std::string& name) {
    for (int i = 0; i < 150; ++i)
      if (!guarda_fichero(folder / name, i % 2 == 0 ? even : odd)) ::_exit(1);
  };
  apoyo::otro_proceso same_file([&] { saves("uno"); });
  apoyo::otro_proceso other_file([&] { saves("dos"); });
  for (int i = 0; i < 150; ++i) ASSERT_TRUE(guarda_fichero(folder / "uno", i % 2 == 0 ? even : odd)) << i;
  EXPECT_TRUE(same_file.acaba());
  EXPECT_TRUE(other_file.acaba());
  EXPECT_EQ(folder.entries(), 2);
  EXPECT_EQ(lee(folder / "dos"), odd);
  const std::string content = lee(folder / "uno");
  EXPECT_TRUE(content == even || content == odd) << content.size();
}

}  // namespace
}  // namespace estructura
