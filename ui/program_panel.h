// Program memory: its list and its map, and the entry of one instruction by hand.
//
//   program.listaprog();             // another program, or another device
//   program.choose(0x20);            // a line, as the program chooses it: `direc` follows
//   program.show_step();             // line, address and marker follow what has been run
#pragma once

#include <cstdint>

#include "common/bounded_array.h"
#include "ui/panel.h"

namespace estructura {

enum class map_colour : std::uint8_t { none, yellow, blue };

/// The map as painted: its left half by address, the end of its scale, and the marker of the right half.
struct map_view {
  int scale = 0;  ///< lower end of the vertical scale; row y is address y
  bounded_array<map_colour, program_words> rows{};
  int marker = -1;  ///< address of the marker, -1 for none
  unsigned changes = 0;
};

class program_panel final : public panel {
 public:
  explicit program_panel(const shared_parts& shared);

  /// All lines anew, and the map.
  void listaprog();
  void pintamapa();
  /// What the steps since the last look have left to show.
  void show_step();

  void choose(int address) { MP.choose_row(address); }
  /// The current line's instruction, ready to be edited; nothing without a current line.
  void read_current_line();
  void read_instruction(int address);
  /// Empties the instruction box and its code.
  void clear_entry();
  /// A press on the map at height `y` of its scale.
  void press_map(double y);

  [[nodiscard]] const map_view& map() const { return map_; }

  void touched(const control& source) override;

 private:
  struct handlers;
  void show_row_of_step();
  void show_marker();
  void rebuild_row(int address);
  void show_address();
  void follow_address();
  void enterins();

  list_box& MP = own<list_box>(id::MP);
  check_box& VISMP = own<check_box>(id::VISMP);
  text_box& direc = own<text_box>(id::direc);
  text_box& INS = own<text_box>(id::INS);
  label& codop = own<label>(id::codop);
  button& Entrarins = own<button>(id::Entrarins);
  button& borrarins = own<button>(id::borrarins);
  button& break_ = own<button>(id::break_);
  map_view map_;
};

}  // namespace estructura
