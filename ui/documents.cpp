#include "ui/documents.h"

#include <algorithm>

#include "common/file.h"
#include "common/text.h"
#include "files/disassembler.h"
#include "files/hex.h"
#include "files/hex84.h"
#include "files/source_file.h"

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

void show_name(label& shown, const document& doc) {
  shown.set_text(doc.name.empty() ? "[sin nombre]" : nomfic(doc.name));
  shown.set_tip(doc.name);
}

}  // namespace

struct documents::handlers {
  // --- HEX ---

  static void cargar_Click(documents& self, int) {
    if (!self.ask_to_save_hex()) return;
    const auto& words = self.chip_.progmem;
    const bool holds_program =
        std::any_of(words.begin(), words.end(), [](std::uint16_t word) { return word != unprogrammed; });
    bool merged = false;
    if (holds_program) {
      merged = self.window_.ask(box::yesno, "¿Desea borrar la memoria de programa?") != answer::yes;
      if (!merged) self.erase_program_memory();
    }
    const std::string chosen = self.window_.choose_file(false, hex_filter, hex_extension, "");
    name_after(self.hex(), chosen);
    show_name(self.FILHEX, self.hex());
    if (!chosen.empty()) self.read_hex(chosen);
    self.hex().modified = merged;
    self.show_other_program();
  }

  static void salvar_Click(documents& self, int) { self.save_hex(); }

  // The document is named after the exported file, and stays as modified as it was.
  static void salvar16c84_Click(documents& self, int) {
    const std::string chosen = self.choose_save_name(hex_filter, hex_extension, self.hex());
    if (chosen.empty()) return;
    name_after(self.hex(), chosen);
    if (!salvahxx(self.chip_, chosen) || !self.host_.hand_over(chosen))
      self.window_.ask(box::ok, write_error);
    show_name(self.FILHEX, self.hex());
  }

  static void borrar_Click(documents& self, int) {
    if (!self.ask_to_save_hex()) return;
    self.hex() = {};
    self.erase_program_memory();
    show_name(self.FILHEX, self.hex());
    self.show_other_program();
  }

  // --- Source ---

  static void cargarasm_Click(documents& self, int) {
    if (!self.ask_to_save_source(self.source_question())) return;
    self.source_.set_document("");
    const std::string chosen = self.window_.choose_file(false, asm_load_filter, asm_extension, "");
    self.forget_source();
    name_after(self.source(), chosen);
    if (!chosen.empty()) self.read_source(chosen);
    show_name(self.FILASM, self.source());
    self.source().modified = false;
  }

  static void salvarasm_Click(documents& self, int) { self.save_source(); }

  static void borrarasm_Click(documents& self, int) {
    if (!self.ask_to_save_source(self.source().name + " (ASM) ha sido modificado.\r¿Desea salvarlo?")) return;
    self.source_.set_document("");
    self.source_.clear_listing();
    self.forget_source();
    show_name(self.FILASM, self.source());
  }

  // The program takes the place of the source text, of which it knows nothing.
  static void desensamblar_Click(documents& self, int) {
    if (!self.ask_to_save_source(self.source_question())) return;
    self.source_.set_text(disassemble(self.chip_));
    self.source().modified = true;
  }

  // --- The end ---

  static void fin_Click(documents& self, int) {
    if (self.hex().modified) {
      const answer reply = self.window_.ask(box::yesnocancel, self.hex_question());
      if (reply == answer::cancel) return;
      // A No ends the program at once, without a word about the source.
      if (reply == answer::no) return self.end_program();
      self.save_hex();
    }
    if (self.ask_to_save_source(self.source_question())) self.end_program();
  }

  // clang-format off
  static constexpr handler_row rows[] = {
      {id::cargar,       event::click, act<cargar_Click>},
      {id::salvar,       event::click, act<salvar_Click>},
      {id::salvar16c84,  event::click, act<salvar16c84_Click>},
      {id::borrar,       event::click, act<borrar_Click>},
      {id::cargarasm,    event::click, act<cargarasm_Click>},
      {id::salvarasm,    event::click, act<salvarasm_Click>},
      {id::borrarasm,    event::click, act<borrarasm_Click>},
      {id::desensamblar, event::click, act<desensamblar_Click>},
      {id::fin,          event::click, act<fin_Click>},
  };
  // clang-format on
};

documents::documents(const shared_parts& shared, program_panel& program, source_panel& source,
                     chip_panel& chip)
    : panel(shared, handlers::rows), program_(program), source_(source), chip_panel_(chip) {}

// --- Questions ---

std::string documents::hex_question() const {
  return modified_question(documents_.hex, "HEX");
}

std::string documents::source_question() const {
  return modified_question(documents_.source, "ASM");
}

// The question before a document is abandoned; false when the person wants to stay. Whatever becomes of the
// save that a Yes asks for, the command goes on.
bool documents::ask_to_save_hex() {
  if (!hex().modified) return true;
  const answer reply = window_.ask(box::yesnocancel, hex_question());
  if (reply == answer::yes) save_hex();
  return reply != answer::cancel;
}

bool documents::ask_to_save_source(const std::string& question) {
  if (!source().modified) return true;
  const answer reply = window_.ask(box::yesnocancel, question);
  if (reply == answer::yes) save_source();
  return reply != answer::cancel;
}

// The dialog of every save command, with the question before a file is replaced; empty when the person gave
// up.
std::string documents::choose_save_name(std::string_view filter, std::string_view extension,
                                        const document& current) {
  // One No to the replace question stands until the question is asked again.
  bool refused = false;
  for (;;) {
    std::string chosen = window_.choose_file(true, filter, extension, current.name);
    if (chosen.empty()) return {};
    // The document's name alone does not tell its file: another may differ from it only in case.
    const std::string file = find_file(chosen);
    if (file_exists(file) && !same_file(file, current.file)) {
      const answer reply = window_.ask(box::yesnocancel, chosen + " ya existe.\r¿Desea reemplazarlo?");
      if (reply == answer::cancel) return {};
      refused = reply == answer::no;
    }
    if (!refused) return chosen;
  }
}

// --- HEX ---

void documents::erase_program_memory() {
  chip_.progmem.fill(unprogrammed);
  chip_.breakpts.fill(0);
}

void documents::show_other_program() {
  program_.listaprog();
  chip_panel_.power_on_reset();
}

void documents::read_hex(const std::string& path) {
  const hex_reading reading = carga(chip_, path);
  for (const std::string& message : reading.messages)
    window_.ask(box::ok_right, "Error en fichero " + hex().name + ".\r" + message);
  if (reading.failed) window_.ask(box::ok, read_error);
}

void documents::save_hex() {
  const std::string chosen = choose_save_name(hex_filter, hex_extension, hex());
  if (chosen.empty()) return;
  name_after(hex(), chosen);
  if (salva(chip_, chosen) && host_.hand_over(chosen))
    hex().modified = false;
  else
    window_.ask(box::ok, write_error);
  show_name(FILHEX, hex());
}

// --- Source ---

void documents::forget_source() {
  source() = {};
  documents_.source_encoding = text_encoding::utf8;
}

void documents::read_source(const std::string& path) {
  std::string text;
  if (cargaasm(path, text, documents_.source_encoding))
    source_.set_document(text);
  else
    window_.ask(box::ok, read_error);
}

void documents::save_source() {
  const std::string chosen = choose_save_name(asm_save_filter, asm_extension, source());
  if (chosen.empty()) return;
  name_after(source(), chosen);
  if (salvaasm(chosen, source_.text(), documents_.source_encoding) && host_.hand_over(chosen))
    source().modified = false;
  else
    window_.ask(box::ok, write_error);
  show_name(FILASM, source());
}

// --- The end ---

void documents::Form_Unload() {
  chip_.running = false;
  if (hex().modified && window_.ask(box::yesno, hex_question()) == answer::yes) save_hex();
  if (source().modified && window_.ask(box::yesno, source_question()) == answer::yes) save_source();
  end_program();
}

void documents::end_program() {
  chip_.running = false;
  window_.end();
}

}  // namespace estructura
