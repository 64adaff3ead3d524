// What a word says of its operand, for the steps that are made for one variant of an instruction.

#include "core/variant.h"

#include <array>
#include <gtest/gtest.h>

namespace estructura {
namespace {

struct variant_row {
  int word;
  variant wanted;
};

TEST(variant_of, tells_what_the_word_says_of_operand_and_destination) {
  using enum operand_kind;
  constexpr std::array rows = {
      variant_row{0x1E8, {op::addwf, common, true}},    // ADDWF 08
      variant_row{0x1CF, {op::addwf, common, false}},   // ADDWF 0F,W
      variant_row{0x210, {op::movf, banked, false}},    // MOVF 10,W
      variant_row{0x03F, {op::movwf, banked, false}},   // MOVWF 1F
      variant_row{0x060, {op::clrf, indirect, false}},  // CLRF 00
      variant_row{0x201, {op::movf, timer, false}},     // MOVF 01,W
      variant_row{0x1E2, {op::addwf, core, true}},      // ADDWF 02
      variant_row{0x603, {op::btfsc, core, false}},     // BTFSC 03,0
      variant_row{0x2A4, {op::incf, core, true}},       // INCF 04
      variant_row{0x4E5, {op::bcf, port, false}},       // BCF 05,7
      variant_row{0x067, {op::clrf, port, false}},      // CLRF 07
      variant_row{0x040, {op::clrw, none, false}},      // CLRW
      variant_row{0x006, {op::tris, none, false}},      // TRIS 6
      variant_row{0xC3F, {op::movlw, none, false}},     // MOVLW 3F
      variant_row{0x009, {op::nothing, none, false}},
  };
  for (const variant_row& row : rows)
    EXPECT_TRUE(variant_of(decoded(row.word)) == row.wanted) << std::hex << row.word;
}

TEST(variant, is_found_again_by_its_index_for_every_word) {
  for (int word = 0; word < 4096; ++word) {
    const variant v = variant_of(decoded(word));
    ASSERT_LT(v.index(), variant::count) << std::hex << word;
    ASSERT_TRUE(variant::at(v.index()) == v) << std::hex << word;
  }
}

TEST(variant, of_every_index_is_one_that_leads_back_to_itself) {
  for (std::size_t index = 0; index < variant::count; ++index) {
    const variant v = variant::at(index);
    ASSERT_TRUE(variant::at(v.index()) == v) << index;
    ASSERT_EQ(v.has_file(), v.operand != operand_kind::none) << index;
  }
}

}  // namespace
}  // namespace estructura
