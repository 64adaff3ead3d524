// The process killed while it saves: before and after each system call of a save, and at moments that chance
// chooses. Each time the file is the old one or the new one, whole. ESTRUCTURA_LONG=1 in the environment has
// chance meet a thousand saves half-way instead of forty.
#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <string_view>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "common/file.h"
#include "core/chipstate.h"
#include "files/hex.h"
#include "files/hex84.h"
#include "files/source_file.h"
#include "tests/support/memory.h"
#include "tests/support/temporary_folder.h"
#include "tests/system/documents.h"
#include "tests/system/stepped_child.h"

namespace estructura {
namespace {

using support::lee;
using support::stepped_child;
using support::temporary_folder;
using support::text_of;

chipstate memory(int words, int word) {
  chipstate chip = support::empty_chip();
  for (int a = 0; a < words; ++a) chip.progmem[a] = static_cast<std::uint16_t>(word);
  return chip;
}

// --- at every system call ---

/// What was found after the kills of one save, one at each of its stops.
struct found {
  int stops = 0;
  int old_files = 0;
  int new_files = 0;
  int half_way = 0;  ///< a file was left beside the document
};

/// Kills a save of the one content over the other at each of its stops in turn, until it outlives them.
template <class Save>
void kill_at_each_stop(const temporary_folder& folder, const Save& save, bool which, found& met) {
  const std::string path = folder / "uno";
  ASSERT_TRUE(save(path, which));
  const std::string wanted = lee(path);
  for (bool outlived = false; !outlived; ++met.stops) {
    ASSERT_TRUE(save(path, !which));
    ASSERT_EQ(folder.entries(), 1) << "each save removes what the one before it left";
    const std::string old = lee(path);
    ASSERT_NE(old.size(), wanted.size());
    stepped_child child([&] { return save(path, which) ? 0 : 1; });
    if (!child.traced()) GTEST_SKIP() << "the system lets nobody trace";
    for (int stop = 0; stop <= met.stops && !outlived; ++stop) outlived = !child.runs_to_next_stop();
    if (outlived) {
      ASSERT_EQ(child.runs_to_end(), 0);
    }
    child.kill();
    const std::string content = lee(path);
    ASSERT_TRUE(content == old || content == wanted)
        << "killed at stop " << met.stops << " it left " << content.size() << " bytes";
    ++(content == old ? met.old_files : met.new_files);
    met.half_way += folder.entries() - 1;
  }
}

template <class Save>
void kill_while_it_saves(const Save& save) {
  for (const bool which : {true, false}) {
    const temporary_folder folder;
    found met;
    kill_at_each_stop(folder, save, which, met);
    if (testing::Test::HasFatalFailure() || testing::Test::IsSkipped()) return;
    // Between its creation and its new name the other file is written, gets its permissions and is forced to
    // disk: two stops each, or else not the whole save was tried.
    EXPECT_GE(met.half_way, 6) << met.stops << " stops";
    EXPECT_GE(met.old_files, met.half_way);
    EXPECT_GE(met.new_files, 2) << "after the renaming, and at its end";
  }
}

TEST(killed_save, leaves_a_whole_hex_file_at_every_moment) {
  const chipstate odd = memory(2048, 0xA55);
  const chipstate even = memory(1500, 0x0C5);
  kill_while_it_saves([&](const std::string& path, bool which) { return salva(which ? odd : even, path); });
}

TEST(killed_save, leaves_a_whole_export_at_every_moment) {
  const chipstate odd = memory(2048, 0xA55);
  const chipstate even = memory(1500, 0x0C5);
  kill_while_it_saves(
      [&](const std::string& path, bool which) { return salvahxx(which ? odd : even, path); });
}

TEST(killed_save, leaves_a_whole_source_at_every_moment) {
  const std::string odd = text_of('o', 300'000);
  const std::string even = text_of('e', 200'000);
  kill_while_it_saves([&](const std::string& path, bool which) {
    text_encoding encoding = text_encoding::utf8;
    return salvaasm(path, which ? odd : even, encoding);
  });
}

// --- by chance, which also meets a write in its middle ---

constexpr unsigned seed = 20240611;

int wanted_half_way() {
  const char* const asked = std::getenv("ESTRUCTURA_LONG");
  return asked != nullptr && std::string_view(asked) == "1" ? 1000 : 40;
}

/// A process that tells by a byte that it is about to begin, then saves the one content and the other in turn
/// until it dies; killed so long after the byte. Whether it died of that.
template <class Save>
bool dies_while_it_saves(const Save& save, std::chrono::microseconds life) {
  int ends[2] = {-1, -1};
  if (::pipe(ends) != 0) return false;
  const pid_t child = ::fork();
  if (child == 0) {
    if (::write(ends[1], "!", 1) != 1) ::_exit(1);
    for (bool which = true;; which = !which)
      if (!save(which)) ::_exit(1);
  }
  ::close(ends[1]);
  char begun = 0;
  const bool begins = child > 0 && ::read(ends[0], &begun, 1) == 1;
  ::close(ends[0]);
  std::this_thread::sleep_for(life);
  int status = 0;
  return begins && ::kill(child, SIGKILL) == 0 && ::waitpid(child, &status, 0) == child &&
         WIFSIGNALED(status);
}

TEST(killed_save, leaves_a_whole_file_whenever_it_comes) {
  const temporary_folder folder;
  const std::string path = folder / "uno";
  const std::string odd(300'000, 'o');
  const std::string even(200'000, 'e');
  ASSERT_TRUE(save_file(path, even));
  const auto save = [&](bool which) { return save_file(path, which ? odd : even); };
  std::mt19937 random(seed);
  unsigned longest_life_us = 5000;
  int half_way = 0;
  // Whoever is slow to begin is given longer, until enough saves were met half-way; it takes
  // no hundred kills for each, or else no save is ever half-way.
  for (int round = 0; half_way < wanted_half_way(); ++round) {
    ASSERT_LT(round, 100 * wanted_half_way()) << half_way << " of them half-way";
    ASSERT_TRUE(dies_while_it_saves(save, std::chrono::microseconds(random() % longest_life_us)))
        << "a save failed in round " << round;
    const std::string content = lee(path);
    ASSERT_TRUE(content == odd || content == even)
        << "round " << round << " of seed " << seed << " left " << content.size() << " bytes";
    const int left = folder.entries() - 1;
    ASSERT_LE(left, 1) << "each save removes what the one before it left";
    half_way += left;
    constexpr unsigned longest_of_all_us = 1'000'000;
    if (left == 0 && half_way * 10 < round)
      longest_life_us = std::min(2 * longest_life_us, longest_of_all_us);
  }
  EXPECT_TRUE(save(true));
  EXPECT_EQ(lee(path), odd);
  EXPECT_EQ(folder.entries(), 1) << "nothing is left after the next save";
}

}  // namespace
}  // namespace estructura
