#include "tests/azar/persona.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string_view>

#include "common/texto.h"
#include "files/desensamblador.h"

namespace estructura::azar {

namespace {

using apoyo::gesto;

/// What a person who uses the window, rather than look for its limits, would do.
constexpr std::array frecuentes = {
    id::ejecutar, id::ejecutar, id::ejecutar,  id::ejecutar, id::eje1,   id::MP,   id::MP,       id::INS,
    id::direc,    id::source,   id::source,    id::dat,      id::MDP,    id::MD,   id::RE,       id::PIC,
    id::por,      id::PA,       id::PB,        id::PC,       id::MCLR,   id::WDT,  id::WATCHDOG, id::FREC,
    id::FR,       id::break_,   id::Ensamblar, id::cargar,   id::salvar, id::mapa, id::sl,       id::lst,
    id::Copiar,   id::Cortar,   id::Pegar,     id::tab};

constexpr std::array<std::string_view, 8> nombres_de_fichero = {"uno.hex",   "Dos.ASM",   "falta.hex", ".",
                                                                "nuevo.hex", "nuevo.asm", "uno.hex",   ""};

/// Yields after which a run is stopped: most are short.
constexpr std::array<std::int64_t, 6> carreras = {1, 20, 60, 200, 400, 6000};

constexpr int reset_vectors[] = {0x1FF, 0x3FF, 0x7FF};

std::string quoted(std::string_view text) {
  return impreso(guiones::texto(text));
}

std::string_view name_of(answer given) {
  return given == answer::yes ? "yes" : given == answer::no ? "no" : "cancel";
}

}  // namespace

std::string persona::suerte::text(int longest) {
  // Letters of Windows-1252 that a person can type, and a line end.
  static constexpr std::array<std::string_view, 20> letters = {"0", "1", "7",  "F",    "a",    "W", " ",
                                                               ",", "-", "\t", "\xF1", "\xD1", "H", ";",
                                                               ":", ".", "'",  "G",    "\r\n", "5"};
  std::string typed;
  for (int i = below(longest + 1); i > 0; --i)
    typed += letters[static_cast<std::size_t>(below(letters.size()))];
  return typed;
}

persona::persona(modelo::azar& chance)
    : chance_(chance), driver_(desk_), interpreter_(driver_, desk_, shown_) {
  desk_.asking = [this](box kind) { answer_question(kind); };
  desk_.choosing = [this](std::string_view proposed) { answer_dialog(proposed); };
  desk_.yielded = [this](int passed) { return yielded(passed); };
}

// --- What is done ---

suceso persona::prepara() {
  return haz({R"(write uno.hex ":04000000250C000AC1\r\n:00000001FF\r\n")",
              R"(write Dos.ASM "I: MOVLW 10\r\n GOTO I\r\n")", programa_al_azar(), "program 0x1FF 0xA00",
              "program 0x3FF 0xA00", "program 0x7FF 0xA00", "refresh"});
}

suceso persona::actua() {
  const std::string statement = sentencia();
  // Who copies has selected something.
  const bool copies = statement == "click Copiar" || statement == "click Cortar";
  if (copies) return haz({en_guion(seleccion_en_fuente()), statement});
  return haz({statement});
}

suceso persona::haz(const std::vector<std::string>& statements) {
  now_ = {};
  answers_.clear();
  inside_.clear();
  yields_ = 0;
  last_ = carreras[static_cast<std::size_t>(chance_.below(carreras.size()))];
  next_ = 1 + pausa();
  desk_.boxes.clear();
  desk_.dialogs.clear();
  desk_.beeps = 0;
  std::string done;
  for (const std::string& statement : statements) {
    if (const auto failure = interpreter_.run(statement))
      throw std::runtime_error(statement + ": " + failure->what);
    done += statement + '\n';
  }
  now_.after = toma(driver_, desk_);
  now_.script = answers_ + inside_ + done;
  return std::move(now_);
}

int persona::yielded(int passed) {
  // The window of widgets is painted at moments of its own. What a look changes (the caret of a box whose
  // text the run changed and changed back, the focus of a control closed for a while) must not depend on
  // them: both windows are looked at after each step.
  driver_.window().bring_up_to_date();
  yields_ += passed;
  const bool stop = yields_ >= last_;
  if (stop || yields_ >= next_) {
    next_ = yields_ + 1 + pausa();
    const std::string statement = stop ? "click ejecutar" : sentencia();
    // A failure stops the script, so that the run's click answers with it.
    interpreter_.run(statement);
    inside_ += '@' + std::to_string(yields_) + ' ' + statement + '\n';
    now_.during.push_back({yields_, toma(driver_, desk_)});
  }
  return 1;
}

/// Yields until something is done in the run again: a few times in all.
int persona::pausa() {
  return chance_.below(static_cast<int>(last_ / 3 + 1));
}

// --- Answers ---

void persona::answer_question(box kind) {
  constexpr std::array answers = {answer::yes, answer::no, answer::cancel};
  const int choices = kind == box::yesno ? 2 : 3;
  const answer given = answers[static_cast<std::size_t>(chance_.below(choices))];
  desk_.answers.push_back(given);
  answers_ += "answer " + std::string(name_of(given)) + '\n';
}

void persona::answer_dialog(std::string_view proposed) {
  // A No to the question before a file is replaced asks for the name again, for ever.
  constexpr std::size_t patience = 5;
  std::string chosen;
  if (desk_.dialogs.size() < patience) {
    const int choice = chance_.below(static_cast<int>(nombres_de_fichero.size()) + 1);
    const auto place = static_cast<std::size_t>(choice);
    chosen = place == nombres_de_fichero.size() ? proposed : nombres_de_fichero[place];
  }
  desk_.paths.push_back(chosen);
  answers_ += "choose " + quoted(chosen) + '\n';
}

// --- Statements ---

id persona::control_al_azar() {
  if (chance_.below(3) == 0) return frecuentes[static_cast<std::size_t>(chance_.below(frecuentes.size()))];
  for (;;) {
    const auto which = static_cast<id>(chance_.below(id_count));
    const kind is = declared(which).is;
    const bool dull = is == kind::label || is == kind::frame || which == id::fin;
    if (!dull || chance_.one_in(10)) return which;
  }
}

std::string persona::sentencia() {
  if (chance_.one_in(60)) return programa_al_azar();
  if (chance_.one_in(80)) {
    const bool lines = chance_.one_in(2);
    return "clipboard " + quoted(lines ? texto_para(id::source) : from_windows1252(chance_.text(20)));
  }
  if (chance_.one_in(600)) return "close";
  gesto one = apoyo::gesto_en(chance_, control_al_azar());
  if (chance_.one_in(25) && one.which != id::mapa) one.what = gesto::que::focus;
  if (one.what == gesto::que::type && chance_.one_in(2)) one.text = texto_para(one.which);
  return en_guion(one);
}

std::string persona::en_guion(const gesto& one) {
  const control& target = driver_.window().look(one.which, one.index);
  const std::string& name = target.name();
  const std::string place = std::to_string(one.place);
  const bool listens = one.which == id::lst;
  switch (one.what) {
    case gesto::que::click: return "click " + name;
    case gesto::que::enter:
      // A key let go in the listing is another statement.
      return listens ? "keyup lst " + place : "enter " + name;
    case gesto::que::select: return "select " + name + ' ' + place + ' ' + std::to_string(one.length);
    case gesto::que::click_text: return listens ? "click lst " + place : "focus " + name;
    case gesto::que::keyup_text: return listens ? "keyup lst " + place : "focus " + name;
    case gesto::que::type:
      // The listing cannot be typed into.
      return listens ? "focus lst" : "type " + name + ' ' + quoted(one.text);
    case gesto::que::pick:
      return "pick " + name + ' ' + quoted(target.rows()[static_cast<std::size_t>(one.place)]);
    case gesto::que::press: return "press " + name + ' ' + place;
    case gesto::que::dblclick: return "dblclick " + name;
    case gesto::que::click_row:
    case gesto::que::dblclick_row: {
      if (target.count() == 0) return "focus " + name;
      const std::string row = ' ' + std::to_string(one.place % target.count());
      if (one.what == gesto::que::dblclick_row) return "dblclick " + name + row;
      if (!one.control_held) return "row " + name + row;
      return "rows " + name + row + ' ' + std::to_string(chance_.below(target.count()));
    }
    case gesto::que::focus:
    case gesto::que::blur: break;
  }
  return "focus " + name;
}

gesto persona::seleccion_en_fuente() {
  gesto one;
  one.what = gesto::que::select;
  one.which = id::source;
  one.place = chance_.below(60);
  one.length = chance_.below(60);
  return one;
}

/// A text that does something in its box.
std::string persona::texto_para(id which) {
  switch (which) {
    case id::INS: return deshex(chance_.below(4096));
    case id::direc: return hexstr(chance_.below(2100), 3);
    case id::dat: return hexstr(chance_.below(256), 2);
    case id::FREC: return std::to_string(chance_.below(25000));
    case id::FR: return chance_.one_in(4) ? "0" : std::to_string(chance_.below(2'000'000));
    default: break;
  }
  // The last letter counts one here, and two to Qt.
  std::string lines = "I: CLRWDT ; ñ\U0001D11E\r\n";
  for (int line = chance_.below(8); line > 0; --line) lines += ' ' + deshex(chance_.below(4096)) + "\r\n";
  return lines + (chance_.one_in(3) ? " GOTO ¿?\r\n" : " GOTO I\r\n");
}

std::string persona::programa_al_azar() {
  std::string statement = "program 0";
  for (int word = 8 + chance_.below(40); word > 0; --word)
    statement += " 0x" + hexstr(chance_.below(4096), 3);
  return statement + " 0xA00";
}

}  // namespace estructura::azar
