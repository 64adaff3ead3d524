// What changed in the window since the page last copied it, as JSON.
//
//   record_writer writer(window);
//   writer.inventory()     -> [{"name":"Frame7","kind":"frame","frame":-1,"index":0,...}, ...]
//   writer.changes()       -> {"controls":[{"at":93,"text":"1"}],"focus":87,"running":false,...}
//   writer.typed(7, text)  the page has this text already
//
// Places are those of Estructura::look_all(). A property that is not there has not changed, except that the
// selection and the flags of a control always come together.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "asm/odd_readings.h"
#include "ui/announcement.h"
#include "ui/estructura.h"

namespace estructura {

class record_writer {
 public:
  explicit record_writer(Estructura& window);

  [[nodiscard]] std::string inventory();
  [[nodiscard]] std::string changes();

  /// The page shows this text by itself.
  void typed(std::size_t place, std::string_view text) { seen_[place].text = text; }

  /// How a line of the source is shown: its parts, and what is read as something else than it looks.
  [[nodiscard]] std::string highlighted(std::string_view line);

  [[nodiscard]] std::size_t place_of(id which, int index) const;

 private:
  struct copy {
    bool fresh = false;
    unsigned changes = 0;
    unsigned row_changes = 0;
    std::string text;
  };
  void write_control(std::string& out, const control& record, copy& before, std::size_t place);
  /// What a screen reader says of it, where that has changed.
  void write_spoken(std::string& out, const control& record, bool all);
  void write_spoken_rows(std::string& out, const control& record);
  void write_map(std::string& out);
  void learn_names();

  Estructura& window_;
  std::vector<copy> seen_;
  std::vector<std::size_t> first_;  ///< place of each control's first member
  std::string map_rows_;
  int map_scale_ = 0;
  announcer ear_;
  family_id family_{};          ///< whose names were written
  name_table names_;            ///< that the source defines
  unsigned names_changes_ = 0;  ///< changes of the source when they were learnt
};

}  // namespace estructura
