// The two documents and every question before unsaved work is abandoned.
#include <algorithm>
#include <string>

#include "common/file.h"
#include "common/text.h"
#include "files/hex.h"
#include "files/hex84.h"
#include "files/source_file.h"
#include "ui/estructura.h"

namespace estructura {

namespace {

constexpr std::string_view hex_filter = "Archivos hexadecimales (*.hex)|*.hex|Todos los archivos (*.*)|*.*";
constexpr std::string_view hex_extension = "hex";
// The two filters of the source differ in one word.
constexpr std::string_view asm_load_filter =
    "Archivos en ensamblador (*.asm)|*.asm|Todos los archivos (*.*)|*.*";
constexpr std::string_view asm_save_filter =
    "Archivos de ensamblador (*.asm)|*.asm|Todos los archivos (*.*)|*.*";
constexpr std::string_view asm_extension = "asm";

constexpr const char* read_error = "Error en lectura";
constexpr const char* write_error = "Error en escritura";

std::string modified_question(const document& doc, std::string_view document_kind) {
  return doc.name + " (" + std::string(document_kind) + ")\rHa sido modificado.\r¿Desea salvarlo?";
}

void name_after(document& doc, const std::string& chosen) {
  doc.name = to_lower(chosen);
  doc.file = find_file(chosen);
}

}  // namespace

void Estructura::show_name(id label, const document& doc) {
  at(label).set_text(doc.name.empty() ? "[sin nombre]" : nomfic(doc.name));
  at(label).set_tip(doc.name);
}

// The question before a document is abandoned; false when the person wants to stay. Whatever becomes of the
// save that a Yes asks for, the command goes on.
bool Estructura::ask_to_save_hex() {
  if (!hex_.modified) return true;
  const answer reply = ask(box::yesnocancel, modified_question(hex_, "HEX"));
  if (reply == answer::yes) salvar_Click(0);
  return reply != answer::cancel;
}

bool Estructura::ask_to_save_source(const std::string& question) {
  if (!asm_.modified) return true;
  const answer reply = ask(box::yesnocancel, question);
  if (reply == answer::yes) salvarasm_Click(0);
  return reply != answer::cancel;
}

std::string Estructura::source_question() const {
  return modified_question(asm_, "ASM");
}

std::string Estructura::choose_file(bool save, std::string_view filter, std::string_view extension,
                                    std::string_view proposed) {
  // Whoever chooses a file sees the window as it stands.
  bring_up_to_date();
  return host_.choose_file(save, filter, extension, proposed);
}

// The dialog of every save command, with the question before a file is replaced; empty when the person gave
// up.
std::string Estructura::choose_save_name(std::string_view filter, std::string_view extension,
                                         const document& current) {
  // One No to the replace question stands until the question is asked again.
  bool refused = false;
  for (;;) {
    std::string chosen = choose_file(true, filter, extension, current.name);
    if (chosen.empty()) return {};
    // The document's name alone does not tell its file: another may differ from it only in case.
    const std::string file = find_file(chosen);
    if (file_exists(file) && !same_file(file, current.file)) {
      const answer reply = ask(box::yesnocancel, chosen + " ya existe.\r¿Desea reemplazarlo?");
      if (reply == answer::cancel) return {};
      refused = reply == answer::no;
    }
    if (!refused) return chosen;
  }
}

// --- HEX ---

void Estructura::erase_program_memory() {
  chip_.progmem.fill(unprogrammed);
  chip_.breakpts.fill(0);
}

void Estructura::cargar_Click(int) {
  if (!ask_to_save_hex()) return;
  const auto& words = chip_.progmem;
  const bool holds_program =
      std::any_of(words.begin(), words.end(), [](std::uint16_t word) { return word != unprogrammed; });
  bool merged = false;
  if (holds_program) {
    merged = ask(box::yesno, "¿Desea borrar la memoria de programa?") != answer::yes;
    if (!merged) erase_program_memory();
  }
  const std::string chosen = choose_file(false, hex_filter, hex_extension, "");
  name_after(hex_, chosen);
  show_name(id::FILHEX, hex_);
  if (!chosen.empty()) read_hex(chosen);
  hex_.modified = merged;
  listaprog();
  por_Click(0);
}

void Estructura::read_hex(const std::string& path) {
  const hex_reading reading = carga(chip_, path);
  for (const std::string& message : reading.messages)
    ask(box::ok_right, "Error en fichero " + hex_.name + ".\r" + message);
  if (reading.failed) ask(box::ok, read_error);
}

void Estructura::salvar_Click(int) {
  const std::string chosen = choose_save_name(hex_filter, hex_extension, hex_);
  if (chosen.empty()) return;
  name_after(hex_, chosen);
  if (salva(chip_, chosen) && host_.hand_over(chosen))
    hex_.modified = false;
  else
    ask(box::ok, write_error);
  show_name(id::FILHEX, hex_);
}

// The document is named after the exported file, and stays as modified as it was.
void Estructura::salvar16c84_Click(int) {
  const std::string chosen = choose_save_name(hex_filter, hex_extension, hex_);
  if (chosen.empty()) return;
  name_after(hex_, chosen);
  if (!salvahxx(chip_, chosen) || !host_.hand_over(chosen)) ask(box::ok, write_error);
  show_name(id::FILHEX, hex_);
}

void Estructura::borrar_Click(int) {
  if (!ask_to_save_hex()) return;
  hex_ = {};
  erase_program_memory();
  show_name(id::FILHEX, hex_);
  listaprog();
  por_Click(0);
}

// --- Source ---

void Estructura::source_Change(int) {
  // Where the error stood when it was met says nothing of another text.
  at(id::source).set_marked_line(0);
  if (!at(id::source).text().empty()) asm_.modified = true;
}

void Estructura::cargarasm_Click(int) {
  if (!ask_to_save_source(source_question())) return;
  at(id::source).set_document("");
  const std::string chosen = choose_file(false, asm_load_filter, asm_extension, "");
  asm_ = {};
  name_after(asm_, chosen);
  asm_encoding_ = text_encoding::utf8;
  if (!chosen.empty()) {
    std::string text;
    if (cargaasm(chosen, text, asm_encoding_))
      at(id::source).set_document(text);
    else
      ask(box::ok, read_error);
  }
  show_name(id::FILASM, asm_);
  asm_.modified = false;
}

void Estructura::salvarasm_Click(int) {
  const std::string chosen = choose_save_name(asm_save_filter, asm_extension, asm_);
  if (chosen.empty()) return;
  name_after(asm_, chosen);
  if (salvaasm(chosen, at(id::source).text(), asm_encoding_) && host_.hand_over(chosen))
    asm_.modified = false;
  else
    ask(box::ok, write_error);
  show_name(id::FILASM, asm_);
}

void Estructura::borrarasm_Click(int) {
  if (!ask_to_save_source(asm_.name + " (ASM) ha sido modificado.\r¿Desea salvarlo?")) return;
  at(id::source).set_document("");
  at(id::lst).set_text("");
  asm_ = {};
  asm_encoding_ = text_encoding::utf8;
  show_name(id::FILASM, asm_);
}

// --- The end ---

void Estructura::fin_Click(int) {
  if (hex_.modified) {
    const answer reply = ask(box::yesnocancel, modified_question(hex_, "HEX"));
    if (reply == answer::cancel) return;
    // A No ends the program at once, without a word about the source.
    if (reply == answer::no) return end_program();
    salvar_Click(0);
  }
  if (ask_to_save_source(source_question())) end_program();
}

void Estructura::Form_Unload() {
  chip_.running = false;
  if (hex_.modified && ask(box::yesno, modified_question(hex_, "HEX")) == answer::yes) salvar_Click(0);
  if (asm_.modified && ask(box::yesno, source_question()) == answer::yes) salvarasm_Click(0);
  end_program();
}

void Estructura::end_program() {
  chip_.running = false;
  ended_ = true;
  host_.end();
}

}  // namespace estructura
