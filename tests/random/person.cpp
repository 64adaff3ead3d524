#include "tests/random/person.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string_view>

#include "common/text.h"
#include "files/disassembler.h"

namespace estructura::random_events {

namespace {

using support::gesture;

/// What a person who uses the window, rather than look for its limits, would do.
constexpr std::array frequent = {
    id::ejecutar, id::ejecutar, id::ejecutar,  id::ejecutar, id::eje1,   id::MP,   id::MP,       id::INS,
    id::direc,    id::source,   id::source,    id::dat,      id::MDP,    id::MD,   id::RE,       id::PIC,
    id::por,      id::PA,       id::PB,        id::PC,       id::MCLR,   id::WDT,  id::WATCHDOG, id::FREC,
    id::FR,       id::break_,   id::Ensamblar, id::cargar,   id::salvar, id::mapa, id::sl,       id::lst,
    id::Copiar,   id::Cortar,   id::Pegar,     id::tab};

constexpr std::array<std::string_view, 8> file_names = {"uno.hex",   "Dos.ASM",   "falta.hex", ".",
                                                        "nuevo.hex", "nuevo.asm", "uno.hex",   ""};

/// Yields after which a run is stopped: most are short.
constexpr std::array<std::int64_t, 6> run_lengths = {1, 20, 60, 200, 400, 6000};

constexpr int reset_vectors[] = {0x1FF, 0x3FF, 0x7FF};

std::string in_quotes(std::string_view text) {
  return printed(guiones::text_value(text));
}

std::string_view name_of(answer given) {
  return given == answer::yes ? "yes" : given == answer::no ? "no" : "cancel";
}

}  // namespace

std::string person::luck::text(int longest) {
  // Letters of Windows-1252 that a person can type, and a line end.
  static constexpr std::array<std::string_view, 20> letters = {"0", "1", "7",  "F",    "a",    "W", " ",
                                                               ",", "-", "\t", "\xF1", "\xD1", "H", ";",
                                                               ":", ".", "'",  "G",    "\r\n", "5"};
  std::string typed;
  for (int i = below(longest + 1); i > 0; --i)
    typed += letters[static_cast<std::size_t>(below(letters.size()))];
  return typed;
}

person::person(second_model::random_source& chance)
    : chance_(chance), driver_(desk_), interpreter_(driver_, desk_, shown_) {
  desk_.asking = [this](box kind) { answer_question(kind); };
  desk_.choosing = [this](std::string_view proposed) { answer_dialog(proposed); };
  desk_.yielded = [this](int passed) { return yielded(passed); };
}

// --- What is done ---

recorded_event person::prepare() {
  return perform({R"(write uno.hex ":04000000250C000AC1\r\n:00000001FF\r\n")",
                  R"(write Dos.ASM "I: MOVLW 10\r\n GOTO I\r\n")", random_program(), "program 0x1FF 0xA00",
                  "program 0x3FF 0xA00", "program 0x7FF 0xA00", "refresh"});
}

recorded_event person::act() {
  const std::string statement = next_statement();
  // Who copies has selected something.
  const bool copies = statement == "click Copiar" || statement == "click Cortar";
  if (copies) return perform({as_statement(source_selection()), statement});
  return perform({statement});
}

recorded_event person::perform(const std::vector<std::string>& statements) {
  now_ = {};
  answers_.clear();
  inside_.clear();
  yields_ = 0;
  last_ = run_lengths[static_cast<std::size_t>(chance_.below(run_lengths.size()))];
  next_ = 1 + pause();
  desk_.boxes.clear();
  desk_.dialogs.clear();
  desk_.beeps = 0;
  std::string done;
  for (const std::string& statement : statements) {
    if (const auto failure = interpreter_.run(statement))
      throw std::runtime_error(statement + ": " + failure->what);
    done += statement + '\n';
  }
  now_.after = take_snapshot(driver_, desk_);
  now_.script = answers_ + inside_ + done;
  return std::move(now_);
}

int person::yielded(int passed) {
  // The window of widgets is painted at moments of its own. What a look changes (the caret of a box whose
  // text the run changed and changed back, the focus of a control closed for a while) must not depend on
  // them: both windows are looked at after each step.
  driver_.window().bring_up_to_date();
  yields_ += passed;
  const bool stop = yields_ >= last_;
  if (stop || yields_ >= next_) {
    next_ = yields_ + 1 + pause();
    const std::string statement = stop ? "click ejecutar" : next_statement();
    // A failure stops the script, so that the run's click answers with it.
    interpreter_.run(statement);
    inside_ += '@' + std::to_string(yields_) + ' ' + statement + '\n';
    now_.during.push_back({yields_, take_snapshot(driver_, desk_)});
  }
  return 1;
}

/// Yields until something is done in the run again: a few times in all.
int person::pause() {
  return chance_.below(static_cast<int>(last_ / 3 + 1));
}

// --- Answers ---

void person::answer_question(box kind) {
  constexpr std::array answers = {answer::yes, answer::no, answer::cancel};
  const int choices = kind == box::yesno ? 2 : 3;
  const answer given = answers[static_cast<std::size_t>(chance_.below(choices))];
  desk_.answers.push_back(given);
  answers_ += "answer " + std::string(name_of(given)) + '\n';
}

void person::answer_dialog(std::string_view proposed) {
  // A No to the question before a file is replaced asks for the name again, for ever.
  constexpr std::size_t patience = 5;
  std::string chosen;
  if (desk_.dialogs.size() < patience) {
    const int choice = chance_.below(static_cast<int>(file_names.size()) + 1);
    const auto place = static_cast<std::size_t>(choice);
    chosen = place == file_names.size() ? proposed : file_names[place];
  }
  desk_.paths.push_back(chosen);
  answers_ += "choose " + in_quotes(chosen) + '\n';
}

// --- Statements ---

id person::random_control() {
  if (chance_.below(3) == 0) return frequent[static_cast<std::size_t>(chance_.below(frequent.size()))];
  for (;;) {
    const auto which = static_cast<id>(chance_.below(id_count));
    const kind is = declared(which).is;
    const bool dull = is == kind::label || is == kind::frame || which == id::fin;
    if (!dull || chance_.one_in(10)) return which;
  }
}

std::string person::next_statement() {
  if (chance_.one_in(60)) return random_program();
  if (chance_.one_in(80)) {
    const bool lines = chance_.one_in(2);
    return "clipboard " + in_quotes(lines ? text_for(id::source) : from_windows1252(chance_.text(20)));
  }
  if (chance_.one_in(600)) return "close";
  gesture one = support::gesture_on(chance_, random_control());
  if (chance_.one_in(25) && one.which != id::mapa) one.what = gesture::action::focus;
  if (one.what == gesture::action::type && chance_.one_in(2)) one.text = text_for(one.which);
  return as_statement(one);
}

std::string person::as_statement(const gesture& one) {
  const control& target = driver_.window().look(one.which, one.index);
  const std::string& name = target.name();
  const std::string place = std::to_string(one.place);
  const bool listens = one.which == id::lst;
  switch (one.what) {
    case gesture::action::click: return "click " + name;
    case gesture::action::enter:
      // A key let go in the listing is another statement.
      return listens ? "keyup lst " + place : "enter " + name;
    case gesture::action::select: return "select " + name + ' ' + place + ' ' + std::to_string(one.length);
    case gesture::action::click_text: return listens ? "click lst " + place : "focus " + name;
    case gesture::action::keyup_text: return listens ? "keyup lst " + place : "focus " + name;
    case gesture::action::type:
      // The listing cannot be typed into.
      return listens ? "focus lst" : "type " + name + ' ' + in_quotes(one.text);
    case gesture::action::pick:
      return "pick " + name + ' ' + in_quotes(target.rows()[static_cast<std::size_t>(one.place)]);
    case gesture::action::press: return "press " + name + ' ' + place;
    case gesture::action::dblclick: return "dblclick " + name;
    case gesture::action::click_row:
    case gesture::action::dblclick_row: {
      if (target.count() == 0) return "focus " + name;
      const std::string row = ' ' + std::to_string(one.place % target.count());
      if (one.what == gesture::action::dblclick_row) return "dblclick " + name + row;
      if (!one.control_held) return "row " + name + row;
      return "rows " + name + row + ' ' + std::to_string(chance_.below(target.count()));
    }
    case gesture::action::focus:
    case gesture::action::blur: break;
  }
  return "focus " + name;
}

gesture person::source_selection() {
  gesture one;
  one.what = gesture::action::select;
  one.which = id::source;
  one.place = chance_.below(60);
  one.length = chance_.below(60);
  return one;
}

/// A text that does something in its box.
std::string person::text_for(id which) {
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

std::string person::random_program() {
  std::string statement = "program 0";
  for (int word = 8 + chance_.below(40); word > 0; --word)
    statement += " 0x" + hexstr(chance_.below(4096), 3);
  return statement + " 0xA00";
}

}  // namespace estructura::random_events
