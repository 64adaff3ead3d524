// The two documents: loading and saving them, and every question before unsaved work is abandoned.
//
//   documents.Form_Unload();         // the window's close request: the questions, and the end
//
// Which files they are is ui/open_documents.h; the text of the source is the source panel's.
#pragma once

#include <string>
#include <string_view>

#include "ui/chip_panel.h"
#include "ui/panel.h"
#include "ui/program_panel.h"
#include "ui/source_panel.h"

namespace estructura {

class documents final : public panel {
 public:
  documents(const shared_parts& shared, program_panel& program, source_panel& source, chip_panel& chip);

  void Form_Unload();

 private:
  struct handlers;
  [[nodiscard]] document& hex() { return documents_.hex; }
  [[nodiscard]] document& source() { return documents_.source; }
  [[nodiscard]] std::string hex_question() const;
  [[nodiscard]] std::string source_question() const;
  bool ask_to_save_hex();
  bool ask_to_save_source(const std::string& question);
  std::string choose_save_name(std::string_view filter, std::string_view extension, const document& current);
  void erase_program_memory();
  void show_other_program();
  void read_hex(const std::string& path);
  void save_hex();
  void forget_source();
  void read_source(const std::string& path);
  void save_source();
  void end_program();

  program_panel& program_;
  source_panel& source_;
  chip_panel& chip_panel_;
  label& FILHEX = own<label>(id::FILHEX);
  label& FILASM = own<label>(id::FILASM);
};

}  // namespace estructura
