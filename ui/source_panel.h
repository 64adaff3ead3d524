// The source and its listing: assembling, and the tools beside the source text.
//
//   source.text()                            // lines divided by CR LF
//   source.set_document(text);               // loaded from a file
//   source.replace_selection("\r\n");        // as if typed there
#pragma once

#include <string>
#include <string_view>

#include "ui/panel.h"
#include "ui/program_panel.h"

namespace estructura {

struct assembly_error;

class source_panel final : public panel {
 public:
  source_panel(const shared_parts& shared, program_panel& program);

  [[nodiscard]] const std::string& text() const { return source.text(); }
  /// Another document; the changed text of the same one.
  void set_document(std::string_view text) { source.set_document(text); }
  void set_text(std::string_view text) { source.set_text(text); }
  void clear_listing() { lst.set_text(""); }
  /// What was selected gives way to `text`, the caret behind it; the focus comes to the source.
  void replace_selection(std::string_view text);

 private:
  struct handlers;
  void show_error(const assembly_error& error);
  void copy_selection();

  program_panel& program_;
  group<check_box> sl = own_group<check_box>(id::sl);
  control& clip = own<control>(id::clip);
  text_box& source = own<text_box>(id::source);
  text_box& lst = own<text_box>(id::lst);
};

}  // namespace estructura
