// The process killed at random moments of many saves: each time the file is the old one or the new one,
// whole. ESTRUCTURA_LARGO=1 in the environment kills a thousand times each instead of forty.
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

#include "core/chipstate.h"
#include "files/fuente.h"
#include "files/hex.h"
#include "files/hex84.h"
#include "tests/apoyo/carpeta_temporal.h"
#include "tests/apoyo/memoria.h"
#include "tests/fuera/documentos.h"

namespace estructura {
namespace {

using apoyo::carpeta_temporal;
using apoyo::lee;
using apoyo::texto_de;

constexpr unsigned seed = 20240611;

int rounds() {
  const char* const asked = std::getenv("ESTRUCTURA_LARGO");
  return asked != nullptr && std::string_view(asked) == "1" ? 1000 : 40;
}

chipstate memory(int words, int word) {
  chipstate chip = apoyo::empty_chip();
  for (int a = 0; a < words; ++a) chip.progmem[a] = static_cast<std::uint16_t>(word);
  return chip;
}

// Tells by a byte that it is about to begin, then saves the one content and the other in turn until it dies.
template <class Save>
[[noreturn]] void save_for_ever(int begins, bool which, const Save& save) {
  if (::write(begins, "!", 1) != 1) ::_exit(1);
  for (;; which = !which)
    if (!save(which)) ::_exit(1);
}

template <class Save>
void kill_while_it_saves(const Save& save) {
  const carpeta_temporal folder;
  const std::string path = folder / "uno";
  ASSERT_TRUE(save(path, true));
  const std::string odd = lee(path);
  ASSERT_TRUE(save(path, false));
  const std::string even = lee(path);
  ASSERT_NE(odd.size(), even.size());

  std::mt19937 random(seed);
  const int kills = rounds();
  int unfinished = 0;
  for (int round = 0; round < kills; ++round) {
    const bool first = random() % 2 != 0;
    const std::chrono::microseconds life(100 + random() % 5000);
    int ends[2] = {-1, -1};
    ASSERT_EQ(::pipe(ends), 0);
    const pid_t child = ::fork();
    if (child == 0) save_for_ever(ends[1], first, [&](bool which) { return save(path, which); });
    ::close(ends[1]);
    ASSERT_GT(child, 0);
    char begun = 0;
    ASSERT_EQ(::read(ends[0], &begun, 1), 1);
    ::close(ends[0]);
    std::this_thread::sleep_for(life);
    ASSERT_EQ(::kill(child, SIGKILL), 0);
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status)) << "a save failed in round " << round;

    const std::string content = lee(path);
    ASSERT_TRUE(content == odd || content == even)
        << "round " << round << " of seed " << seed << " left " << content.size() << " bytes";
    ASSERT_LE(folder.entries(), 2) << "each save removes what the one before it left";
    unfinished += folder.entries() - 1;
  }
  // Or else nothing was tried: every kill would have come between two saves.
  EXPECT_GT(unfinished, kills / 20);
  EXPECT_TRUE(save(path, true));
  EXPECT_EQ(lee(path), odd);
  EXPECT_EQ(folder.entries(), 1) << "nothing is left after the next save";
}

TEST(muerte, leaves_a_whole_hex_file) {
  const chipstate odd = memory(2048, 0xA55);
  const chipstate even = memory(1500, 0x0C5);
  kill_while_it_saves([&](const std::string& path, bool which) { return salva(which ? odd : even, path); });
}

TEST(muerte, leaves_a_whole_export) {
  const chipstate odd = memory(2048, 0xA55);
  const chipstate even = memory(1500, 0x0C5);
  kill_while_it_saves(
      [&](const std::string& path, bool which) { return salvahxx(which ? odd : even, path); });
}

TEST(muerte, leaves_a_whole_source) {
  const std::string odd = texto_de('o', 3'000'000);
  const std::string even = texto_de('e', 2'000'000);
  kill_while_it_saves([&](const std::string& path, bool which) {
    codificacion encoding = codificacion::utf8;
    return salvaasm(path, which ? odd : even, encoding);
  });
}

}  // namespace
}  // namespace estructura
