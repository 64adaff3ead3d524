// What people read of each family, and what a device adds to that.
#include "ui/device_texts.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "core/devices.h"

namespace estructura {
namespace {

const device& model_of(std::string_view name) {
  return catalogue[static_cast<std::size_t>(device_index(name))].model;
}

using names = std::vector<std::string>;

TEST(texts_of, has_the_legends_of_each_family) {
  const family_texts& large = texts_of(model_of("16C54"));
  EXPECT_EQ(large.status_header, "210odZDC");
  EXPECT_EQ(large.status_tip, "PS2-PS1-PS0-/TO-/PD-Z-D-C");
  EXPECT_EQ(large.option_header, "--CSA210");
  EXPECT_EQ(large.option_tip, "*-*-TOCS-TOSE-PSA-PS2-PS1-PS0");
  const family_texts& small = texts_of(model_of("12C509"));
  EXPECT_EQ(small.status_header, "G-0odZDC");
  EXPECT_EQ(small.status_tip, "GPWUF-*-PS0-/TO-/PD-Z-D-C");
  EXPECT_EQ(small.option_header, "WPCSA210");
  EXPECT_EQ(small.option_tip, "/GPWU-/GPPU-TOCS-TOSE-PSA-PS2-PS1-PS0");
}

TEST(register_names, end_with_port_C_where_there_is_one) {
  EXPECT_EQ(register_names(model_of("16C57")),
            (names{"INDF", "TMR0", "PCL", "STATUS", "FSR", "PA", "PB", "PC"}));
  EXPECT_EQ(register_names(model_of("16C58")), (names{"INDF", "TMR0", "PCL", "STATUS", "FSR", "PA", "PB"}));
  EXPECT_EQ(register_names(model_of("12C508")),
            (names{"INDF", "TMR0", "PCL", "STATUS", "FSR", "OSCCAL", "GPIO"}));
}

TEST(register_name, is_empty_from_08_on_and_names_07_on_every_device) {
  for (const catalogue_row& row : catalogue) {
    EXPECT_EQ(register_name(row.model, 7), "PC") << row.name;
    for (int address = 8; address < 16; ++address)
      EXPECT_EQ(register_name(row.model, address), "") << row.name << ' ' << address;
  }
}

// Place, name and digits of each line, "0 PC 3".
names lines_of(const device& model) {
  names lines;
  for (const core_row& row : core_rows(model))
    lines.push_back(std::to_string(row.place) + " " + std::string(row.name) + " " +
                    std::to_string(row.digits));
  return lines;
}

TEST(core_rows, are_the_core_registers_that_the_device_has) {
  EXPECT_EQ(lines_of(model_of("16C55")),
            (names{"0 PC 3", "1 W 2", "2 OPTION 2", "3 TRISA 1", "4 TRISB 2", "5 TRISC 2"}));
  EXPECT_EQ(lines_of(model_of("16C56")), (names{"0 PC 3", "1 W 2", "2 OPTION 2", "3 TRISA 1", "4 TRISB 2"}));
  EXPECT_EQ(lines_of(model_of("12C509")), (names{"0 PC 3", "1 W 2", "2 OPTION 2", "4 TRIS 2"}));
}

TEST(map_scale, ends_three_rows_below_the_last_address_and_two_on_512_words) {
  EXPECT_EQ(map_scale(model_of("16C57")), 2050);
  EXPECT_EQ(map_scale(model_of("12C509")), 1026);
  EXPECT_EQ(map_scale(model_of("16C54")), 513);
  EXPECT_EQ(map_scale(model_of("12C508")), 513);
}

}  // namespace
}  // namespace estructura
