// Source and listing: assembling, disassembling, and the tools beside the source text.
#include <string>
#include <utility>

#include "asm/assembler.h"
#include "common/number.h"
#include "common/text.h"
#include "files/disassembler.h"
#include "files/source_file.h"
#include "ui/estructura.h"

namespace estructura {

void Estructura::Ensamblar_Click(int) {
  control& source = at(id::source);
  if (!source.text().ends_with("\r\n")) source.set_typed_text(source.text() + "\r\n", source.sel_start());
  const assembly made = assemble(source.text(), chip_.devmodel.progmask);
  if (made.error) return show_assembly_error(*made.error);
  source.set_marked_line(0);
  chip_.progmem = made.image;
  chip_.breakpts.fill(0);
  at(id::lst).set_text(made.listing);
  hex_.modified = true;
  listaprog();
}

void Estructura::show_assembly_error(const assembly_error& error) {
  if (error.while_encoding) at(id::lst).set_text("");
  // The line selected can only be seen in the source.
  if (!at(id::sl, 0).value()) {
    at(id::sl, 1).show_value(false);
    at(id::sl, 0).set_value(true);
  }
  at(id::source).set_marked_line(static_cast<int>(error.line));
  ask(box::ok, std::string(error.message));
  at(id::source).show_selection(static_cast<int>(error.start), static_cast<int>(error.length));
  move_focus({id::source, 0});
}

void Estructura::desensamblar_Click(int) {
  if (!ask_to_save_source(source_question())) return;
  at(id::source).set_text(disassemble(chip_));
  asm_.modified = true;
}

void Estructura::lst_Click(int) {
  control& listing = at(id::lst);
  listing.set_selection(listing.sel_start(), 0);
  const std::string& text = listing.text();
  const std::size_t caret = byte_of_char(text, static_cast<std::size_t>(listing.sel_start()));
  const std::size_t line_feed = caret == 0 ? std::string::npos : text.rfind('\n', caret - 1);
  const std::size_t start = line_feed == std::string::npos ? 0 : line_feed + 1;
  const std::string digits = text.substr(start, 3);
  if (digits.size() != 3 || !ishex(digits)) return;
  const int address = valhex(digits);
  if (address > chip_.devmodel.progmask) return;
  at(id::MP).choose_row(address);
  show_instruction_at(address);
}

void Estructura::lst_KeyUp(int) {
  lst_Click(0);
}

// The clipboard's commands. The buttons took the focus; the text gets it back.

namespace {

struct selected_bytes {
  std::size_t from;
  std::size_t count;
};

selected_bytes selection_of(const control& box) {
  const std::size_t from = byte_of_char(box.text(), static_cast<std::size_t>(box.sel_start()));
  const std::string_view behind = std::string_view(box.text()).substr(from);
  return {from, byte_of_char(behind, static_cast<std::size_t>(box.sel_length()))};
}

}  // namespace

void Estructura::replace_selection(std::string_view text) {
  control& source = at(id::source);
  const auto [from, count] = selection_of(source);
  std::string whole = source.text();
  whole.replace(from, count, text);
  const int caret = source.sel_start() + static_cast<int>(char_count(text));
  source.set_typed_text(whole, caret);
  source.set_selection(caret, 0);
  move_focus({id::source, 0});
}

void Estructura::Copiar_Click(int) {
  const control& source = at(id::source);
  const auto [from, count] = selection_of(source);
  if (count > 0) host_.set_clipboard_text(std::string_view(source.text()).substr(from, count));
  move_focus({id::source, 0});
}

void Estructura::Cortar_Click(int) {
  Copiar_Click(0);
  replace_selection("");
}

void Estructura::Pegar_Click(int) {
  replace_selection(with_crlf(host_.clipboard_text()));
}

void Estructura::tab_Click(int) {
  replace_selection(std::string(15, ' '));
}

}  // namespace estructura
