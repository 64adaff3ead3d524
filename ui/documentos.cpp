// The two documents and every question before unsaved work is abandoned.
#include <algorithm>
#include <string>

#include "common/fichero.h"
#include "common/texto.h"
#include "files/hex.h"
#include "ui/estructura.h"

namespace estructura {

namespace {

constexpr std::string_view hex_filter = "Archivos hexadecimales (*.hex)|*.hex|Todos los archivos (*.*)|*.*";
constexpr std::string_view hex_extension = "hex";

std::string modified_question(const std::string& name, std::string_view document_kind) {
  return name + " (" + std::string(document_kind) + ")\rHa sido modificado.\r¿Desea salvarlo?";
}

}  // namespace

void Estructura::show_name(id label, const document& doc) {
  at(label).set_text(doc.name.empty() ? "[sin nombre]" : nomfic(doc.name));
  at(label).set_tip(doc.name);
}

// The question before program memory is abandoned; false when the person wants to stay.
bool Estructura::ask_to_save_hex() {
  if (!hex_.modified) return true;
  const answer reply = ask(box::yesnocancel, modified_question(hex_.name, "HEX"));
  if (reply == answer::yes) salvar_Click(0);
  return reply != answer::cancel;
}

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
  bring_up_to_date();
  const std::string chosen = host_.elige_fichero(false, hex_filter, hex_extension, "");
  hex_.name = to_lower(chosen);
  show_name(id::FILHEX, hex_);
  if (!chosen.empty()) read_hex(localiza(chosen));
  hex_.modified = merged;
  listaprog();
  por_Click(0);
}

void Estructura::read_hex(const std::string& path) {
  const hex_reading reading = carga(chip_, path);
  for (const std::string& message : reading.messages)
    ask(box::ok_right, "Error en fichero " + hex_.name + ".\r" + message);
  if (reading.failed) ask(box::ok, "Error en lectura");
}

void Estructura::salvar_Click(int) {
  // One No to the replace question stands until the question is asked again.
  bool refused = false;
  std::string chosen;
  do {
    bring_up_to_date();
    chosen = host_.elige_fichero(true, hex_filter, hex_extension, hex_.name);
    if (chosen.empty()) return;
    if (to_lower(chosen) != hex_.name && existe(localiza(chosen))) {
      const answer reply = ask(box::yesnocancel, chosen + " ya existe.\r¿Desea reemplazarlo?");
      if (reply == answer::cancel) return;
      refused = reply == answer::no;
    }
  } while (refused);
  hex_.name = to_lower(chosen);
  if (salva(chip_, localiza(chosen)))
    hex_.modified = false;
  else
    ask(box::ok, "Error en escritura");
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

void Estructura::fin_Click(int) {
  if (hex_.modified) {
    const answer reply = ask(box::yesnocancel, modified_question(hex_.name, "HEX"));
    if (reply == answer::cancel) return;
    if (reply == answer::yes) salvar_Click(0);
  }
  end_program();
}

void Estructura::close_request() {
  if (ended_) return;
  chip_.running = false;
  if (hex_.modified && ask(box::yesno, modified_question(hex_.name, "HEX")) == answer::yes) salvar_Click(0);
  end_program();
}

void Estructura::end_program() {
  chip_.running = false;
  ended_ = true;
  host_.termina();
}

}  // namespace estructura
