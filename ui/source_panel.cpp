#include "ui/source_panel.h"

#include "asm/assembler.h"
#include "common/number.h"
#include "common/text.h"
#include "files/source_file.h"

namespace estructura {

namespace {

struct selected_bytes {
  std::size_t from;
  std::size_t count;
};

selected_bytes selection_of(const text_box& box) {
  const std::size_t from = byte_of_char(box.text(), static_cast<std::size_t>(box.sel_start()));
  const std::string_view behind = std::string_view(box.text()).substr(from);
  return {from, byte_of_char(behind, static_cast<std::size_t>(box.sel_length()))};
}

}  // namespace

struct source_panel::handlers {
  static void sl_Click(source_panel& self, int) {
    const bool shows_source = self.sl[0].value();
    self.source.set_visible(shows_source);
    self.clip.set_visible(shows_source);
    self.lst.set_visible(!shows_source);
  }

  static void source_Change(source_panel& self, int) {
    // Where the error stood when it was met says nothing of another text.
    self.source.set_marked_line(0);
    if (!self.source.text().empty()) self.documents_.source.modified = true;
  }

  static void Ensamblar_Click(source_panel& self, int) {
    text_box& source = self.source;
    if (!source.text().ends_with("\r\n")) source.set_typed_text(source.text() + "\r\n", source.sel_start());
    const assembly made = assemble(source.text(), self.chip_.devmodel.progmask);
    if (made.error) return self.show_error(*made.error);
    source.set_marked_line(0);
    self.chip_.progmem = made.image;
    self.chip_.breakpts.fill(0);
    self.lst.set_text(made.listing);
    self.documents_.hex.modified = true;
    self.program_.listaprog();
  }

  static void lst_Click(source_panel& self, int) {
    text_box& listing = self.lst;
    listing.set_selection(listing.sel_start(), 0);
    const std::string& text = listing.text();
    const std::size_t caret = byte_of_char(text, static_cast<std::size_t>(listing.sel_start()));
    const std::size_t line_feed = caret == 0 ? std::string::npos : text.rfind('\n', caret - 1);
    const std::size_t start = line_feed == std::string::npos ? 0 : line_feed + 1;
    const std::string digits = text.substr(start, 3);
    if (digits.size() != 3 || !ishex(digits)) return;
    const int address = valhex(digits);
    if (address > self.chip_.devmodel.progmask) return;
    self.program_.choose(address);
    self.program_.read_instruction(address);
  }

  static void lst_KeyUp(source_panel& self, int) { lst_Click(self, 0); }

  // The clipboard's commands. The buttons took the focus; the text gets it back.

  static void Copiar_Click(source_panel& self, int) { self.copy_selection(); }

  static void Cortar_Click(source_panel& self, int) {
    self.copy_selection();
    self.replace_selection("");
  }

  static void Pegar_Click(source_panel& self, int) {
    self.replace_selection(with_crlf(self.host_.clipboard_text()));
  }

  static void tab_Click(source_panel& self, int) { self.replace_selection(std::string(15, ' ')); }

  // clang-format off
  static constexpr handler_row rows[] = {
      {id::sl,        event::click,  act<sl_Click>},
      {id::source,    event::change, act<source_Change>},
      {id::Ensamblar, event::click,  act<Ensamblar_Click>},
      {id::lst,       event::click,  act<lst_Click>},
      {id::lst,       event::keyup,  act<lst_KeyUp>},
      {id::Copiar,    event::click,  act<Copiar_Click>},
      {id::Cortar,    event::click,  act<Cortar_Click>},
      {id::Pegar,     event::click,  act<Pegar_Click>},
      {id::tab,       event::click,  act<tab_Click>},
  };
  // clang-format on
};

source_panel::source_panel(const shared_parts& shared, program_panel& program)
    : panel(shared, handlers::rows), program_(program) {}

void source_panel::show_error(const assembly_error& error) {
  if (error.while_encoding) clear_listing();
  // The line selected can only be seen in the source.
  if (!sl[0].value()) {
    sl[1].show_value(false);
    sl[0].set_value(true);
  }
  source.set_marked_line(static_cast<int>(error.line));
  window_.ask(box::ok, std::string(error.message));
  source.show_selection(static_cast<int>(error.start), static_cast<int>(error.length));
  window_.move_focus({id::source, 0});
}

void source_panel::replace_selection(std::string_view text) {
  const auto [from, count] = selection_of(source);
  std::string whole = source.text();
  whole.replace(from, count, text);
  const int caret = source.sel_start() + static_cast<int>(char_count(text));
  source.set_typed_text(whole, caret);
  source.set_selection(caret, 0);
  window_.move_focus({id::source, 0});
}

void source_panel::copy_selection() {
  const auto [from, count] = selection_of(source);
  if (count > 0) host_.set_clipboard_text(std::string_view(source.text()).substr(from, count));
  window_.move_focus({id::source, 0});
}

}  // namespace estructura
