// The register views: the text of each for a state, on every device.
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "common/text.h"
#include "core/devices.h"
#include "tests/ui/test_window.h"
#include "ui/format.h"

namespace estructura {
namespace {

using support::test_window;

std::int16_t word16(int value) {
  return static_cast<std::int16_t>(value);
}

struct row {
  const char* device;
  std::function<void(chipstate&)> state;
  const char* control;
  const char* text;
};

const std::vector<row> rows = {
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
    {"16C57", [](chipstate& c) { c.cycles = 1000; }, "ciclos", "1.000"},
    {"16C57", [](chipstate& c) { c.cycles = 1234567; }, "ciclos", "1.234.567"},
    {"16C57", [](chipstate& c) { c.cpu.option = 0x0F; }, "WATCHDOG", "WDT / 128"},
    {"16C57", [](chipstate& c) { c.cpu.option = 0x08; }, "WATCHDOG", "WDT / 1"},
    {"16C57", [](chipstate& c) { c.cpu.option = 0x0C; }, "WATCHDOG", "WDT / 16"},
    {"16C57", [](chipstate& c) { c.cpu.option = 0x07; }, "WATCHDOG", "WDT / 1"},
    {"16C57", [](chipstate& c) { c.cpu.option = 0x07; }, "divtim", "256"},
    {"16C57", [](chipstate& c) { c.cpu.option = 0x00; }, "divtim", "2"},
    {"16C57", [](chipstate& c) { c.cpu.option = 0x0F; }, "divtim", "1"},
    {"16C57", [](chipstate& c) { c.cpu.option = 0x30; }, "SENTIM", "Ext. Des."},
    {"16C57", [](chipstate& c) { c.cpu.option = 0x20; }, "SENTIM", "Ext. Asc."},
    {"16C57", [](chipstate& c) { c.cpu.option = 0x10; }, "SENTIM", "F/4"},
    {"16C57", [](chipstate& c) { c.wdtcount = 5; }, "contawdt", ""},
};

TEST(view, has_the_text_of_its_row) {
  for (const row& r : rows) {
    test_window w(r.device);
    r.state(w.view.poke());
    w.view.refresh();
    EXPECT_EQ(w.text(r.control), r.text) << r.control << " on a " << r.device;
  }
}

TEST(view, stays_as_it_was_until_the_refresh) {
  test_window w;
  w.view.poke().cycles = 1000;
  EXPECT_EQ(w.text("ciclos"), "0");
  w.view.refresh();
  EXPECT_EQ(w.text("ciclos"), "1.000");
}

TEST(view, of_data_memory_shows_every_register_of_every_bank) {
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

TEST(view, has_the_one_white_bank_where_FSR_points) {
  for (int fsr = 0; fsr < 128; ++fsr) {
    test_window w;
    w.view.poke().regs[4] = word16(fsr);
    w.view.refresh();
    for (int b = 0; b < 4; ++b) EXPECT_EQ(w.view.look(id::MD, b).face_background(), b != fsr / 32) << fsr;
  }
}

TEST(view, lists_the_core_registers_that_the_device_has) {
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

TEST(view, has_the_top_of_the_stack_first) {
  test_window w;
  w.view.poke().stack[0] = 0x7FF;
  w.view.poke().stack[1] = 0x01;
  w.view.refresh();
  EXPECT_EQ(w.at("PIL").rows(), (std::vector<std::string>{"7FF", "001"}));
}

TEST(view, of_the_watchdog_counts_down_while_it_is_on) {
  test_window w;
  w.view.click(id::WATCHDOG);
  EXPECT_EQ(w.text("contawdt"), "2304000");
  w.view.poke().wdtcount = 1000;
  w.view.refresh();
  EXPECT_EQ(w.text("contawdt"), "2303000");
  w.view.poke().wdtcount = 2304001;
  w.view.refresh();
  EXPECT_EQ(w.text("contawdt"), "-1");
  w.view.click(id::WATCHDOG);
  EXPECT_EQ(w.text("contawdt"), "");
  EXPECT_EQ(w.chip().wdtlimit, 2304000);
}

TEST(view, opens_what_the_timer_source_needs) {
  struct timer_row {
    const char* device;
    int option;
    const char* fr;
    bool fr_enabled, tocki_enabled, gp2_visible;
  };
  for (const timer_row& r :
       {timer_row{"16C57", 0x20, "0", true, true, true}, timer_row{"16C57", 0x20, "50", true, false, true},
        timer_row{"16C57", 0x00, "0", false, false, true}, timer_row{"16C57", 0x00, "50", false, false, true},
        timer_row{"12C508", 0x20, "0", true, true, false}, timer_row{"12C508", 0x00, "0", false, false, true},
        timer_row{"12C508", 0x20, "50", true, false, false}}) {
    test_window w(r.device);
    w.view.type(id::FR, r.fr);
    w.view.poke().cpu.option = word16(r.option);
    w.view.refresh();
    const std::string where = std::string(r.device) + ", OPTION " + std::to_string(r.option) + ", FR " + r.fr;
    EXPECT_EQ(w.enabled("FR"), r.fr_enabled) << where;
    EXPECT_EQ(w.enabled("TOCKI"), r.tocki_enabled) << where;
    EXPECT_EQ(w.visible("PB(2)"), r.gp2_visible) << where;
  }
}

TEST(view, of_the_pins_opens_inputs_and_lets_outputs_follow_the_latch) {
  for (const int tris : {0x00, 0xFF, 0xA5, 0x5A}) {
    test_window w;
    for (int i = 0; i < 8; i += 2) {
      if (i < 4) w.view.click(id::PA, i);
      w.view.click(id::PB, i);
      w.view.click(id::PC, i);
    }
    chipstate& chip = w.view.poke();
    chip.cpu.trisa = word16(tris % 16);
    chip.cpu.trisb = chip.cpu.trisc = word16(tris);
    chip.regs[5] = 0x06;
    chip.regs[6] = chip.regs[7] = 0x66;
    w.view.refresh();
    for (int i = 0; i < 8; ++i) {
      const bool input = tris / (1 << i) % 2 == 1;
      const bool level = input ? i % 2 == 0 : 0x66 / (1 << i) % 2 == 1;
      for (const id port : {id::PA, id::PB, id::PC}) {
        if (port == id::PA && i > 3) continue;
        const control& box = w.view.look(port, i);
        EXPECT_EQ(box.enabled(), input) << box.name() << ", TRIS " << tris;
        EXPECT_EQ(box.value(), level) << box.name() << ", TRIS " << tris;
      }
    }
  }
}

TEST(view, of_an_output_port_shows_what_the_program_wrote) {
  test_window w;
  w.store(0, {0xC00, 0x006, 0xC55, 0x026, 0x206});
  w.stand_at(0);
  for (int i = 0; i < 4; ++i) w.view.click(id::eje1);
  std::string boxes;
  for (int i = 7; i >= 0; --i) boxes += w.view.look(id::PB, i).value() ? '1' : '0';
  EXPECT_EQ(boxes, "01010101");
  w.view.click(id::eje1);
  EXPECT_EQ(w.chip().cpu.w, 0x55);
}

}  // namespace
}  // namespace estructura
