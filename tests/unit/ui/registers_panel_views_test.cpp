// The views of registers and data memory: the text of each for a state, on every device.
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "common/text.h"
#include "core/devices.h"
#include "tests/support/test_window.h"

namespace estructura {
namespace {

using support::test_window;

std::int16_t word16(int value) {
  return static_cast<std::int16_t>(value);
}

const std::vector<support::shown_text> texts = {
    {"16C57", [](chipstate& c) { c.regs[4] = 0x35, c.bankregs[21] = 0x9A; }, "PAGFSR", "1"},
    {"16C57", [](chipstate& c) { c.regs[4] = 0x35; }, "DIRFSR", "15"},
    {"16C57", [](chipstate& c) { c.regs[4] = 0x35, c.bankregs[21] = 0x9A; }, "INDF", "9A"},
    {"16C57", [](chipstate& c) { c.regs[4] = 0x07, c.regs[7] = 0xB7; }, "INDF", "B7"},
    {"16C57", [](chipstate& c) { c.regs[4] = 0x00, c.regs[0] = 0x5C; }, "INDF", "5C"},
    {"16C57", [](chipstate& c) { c.regs[4] = 0x04; }, "INDF", "04"},
    {"12C509", [](chipstate& c) { c.regs[4] = 0x3F, c.bankregs[31] = 0x66; }, "INDF", "66"},
    {"16C54", [](chipstate& c) { c.regs[4] = 0x3F; }, "PAGFSR", "0"},
    {"16C57", [](chipstate& c) { c.regs[3] = 0xE7; }, "STATUS", "11111111"},
    {"16C57", [](chipstate& c) { c.pdlatch = c.tolatch = 0; }, "STATUS", "00000000"},
    {"12C508", [](chipstate& c) { c.regs[3] = 0xFF; }, "STATUS", "10111111"},
    {"16C57", [](chipstate& c) { c.cpu.option = 0x2A; }, "OPT", "--101010"},
    {"16C57", [](chipstate& c) { c.cpu.option = 0xFF; }, "OPT", "--111111"},
    {"12C508", [](chipstate& c) { c.cpu.option = 0x8A; }, "OPT", "10001010"},
    {"16C57", [](chipstate& c) { c.regs[5] = 0xF9; }, "BPA", "----1001"},
    {"12C508", [](chipstate& c) { c.regs[5] = 0xFC; }, "BPA", "----1100"},
    {"16C57", [](chipstate& c) { c.regs[6] = 0x81; }, "BPB", "10000001"},
    {"12C508", [](chipstate& c) { c.regs[6] = 0xE1; }, "BPB", "--100001"},
    {"16C57", [](chipstate& c) { c.regs[7] = 0x5A; }, "BPC", "01011010"},
    {"16C57", [](chipstate& c) { c.cpu.trisa = 0xF6; }, "TRISA", "----0110"},
    {"16C57", [](chipstate& c) { c.cpu.trisb = 0x0F; }, "TRISB", "00001111"},
    {"12C509", [](chipstate& c) { c.cpu.trisb = 0xCF; }, "TRISB", "--001111"},
    {"16C57", [](chipstate& c) { c.cpu.trisc = 0xC3; }, "TRISC", "11000011"},
};

TEST(register_view, has_the_text_of_its_row) {
  support::expect_texts(texts);
}

TEST(register_view, of_data_memory_shows_every_register_of_every_bank) {
  for (const auto& [device, model] : catalogue) {
    test_window w(device);
    chipstate& chip = w.view.poke();
    for (int i = 0; i < 16; ++i) chip.regs[i] = word16(0xA0 + i);
    for (int i = 0; i < 64; ++i) chip.bankregs[i] = word16(0x30 + i);
    w.view.refresh();
    std::vector<std::string> common;
    for (int i = 0; i < 16; ++i) common.push_back(hexstr(0xA0 + i, 2));
    common[0] = "**";
    common[3] = "BB";  // /TO and /PD as latched
    common[4] = hexstr(0xA4 & model.datamask, 2);
    common[5] = model.is16c5x ? "-5" : "A4";
    common[6] = model.is16c5x ? "A6" : "26";
    EXPECT_EQ(w.at("MDP").rows(), common) << device;
    for (int b = 0; b < 4; ++b) {
      std::vector<std::string> bank;
      for (int i = 0; i < 16; ++i) bank.push_back(hexstr(0x30 + b * 16 + i, 2));
      EXPECT_EQ(w.view.look(id::MD, b).rows(), bank) << device << ", bank " << b;
    }
  }
}

TEST(register_view, has_the_one_white_bank_where_FSR_points) {
  for (int fsr = 0; fsr < 128; ++fsr) {
    test_window w;
    w.view.poke().regs[4] = word16(fsr);
    w.view.refresh();
    for (int b = 0; b < 4; ++b) EXPECT_EQ(w.view.look(id::MD, b).face_background(), b != fsr / 32) << fsr;
  }
}

TEST(register_view, lists_the_core_registers_that_the_device_has) {
  struct core_row {
    const char* device;
    std::vector<std::string> values;
    std::vector<std::string> names;
  };
  const std::vector<core_row> cases = {
      {"16C57", {"123", " 5A", " 2B", " -C", " 7D", " E7"}, {"PC", "W", "OPTION", "TRISA", "TRISB", "TRISC"}},
      {"16C54", {"123", " 5A", " 2B", " -C", " 7D"}, {"PC", "W", "OPTION", "TRISA", "TRISB"}},
      {"12C508", {"123", " 5A", " 2B", " 3D"}, {"PC", "W", "OPTION", "TRIS"}},
  };
  for (const core_row& r : cases) {
    test_window w(r.device);
    core_registers& cpu = w.view.poke().cpu;
    cpu.pc = 0x123;
    cpu.w = 0x5A;
    cpu.option = 0x2B;
    cpu.trisa = 0x0C;
    cpu.trisb = 0x7D;
    cpu.trisc = 0xE7;
    w.view.refresh();
    EXPECT_EQ(w.at("RE").rows(), r.values) << r.device;
    EXPECT_EQ(w.at("nomre").rows(), r.names) << r.device;
  }
}

TEST(register_view, has_the_top_of_the_stack_first) {
  test_window w;
  w.view.poke().stack[0] = 0x7FF;
  w.view.poke().stack[1] = 0x01;
  w.view.refresh();
  EXPECT_EQ(w.at("PIL").rows(), (std::vector<std::string>{"7FF", "001"}));
}

}  // namespace
}  // namespace estructura
