// A person doing anything at all: a stream of clicks, texts, rows, files and answers on the toolkit-free
// window, with the window's invariants checked after each event, also in the middle of a run.
//
// A fault leaves the state as it was at that moment until the next refresh, so after one nothing is checked
// before the refresh that follows the event; and nothing is once the program has ended.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>
#include <vector>

#include "common/text.h"
#include "files/disassembler.h"
#include "files/hex.h"
#include "files/source_file.h"
#include "tests/fuzz/target.h"
#include "tests/support/gestures.h"
#include "ui/estructura.h"

namespace {

using namespace estructura;
using fuzz::must;
using support::gesture;
using support::random_gesture;
namespace fs = std::filesystem;

void check_registers(Estructura& window) {
  const chipstate& chip = window.chip();
  const device& model = chip.devmodel;
  must((chip.regs[reg_fsr] & ~model.datamask) == 0, "FSR lies within its mask");
  must((chip.regs[reg_5] & ~model.mask5) == 0, "address 5 lies within its mask");
  must((chip.regs[reg_6] & ~model.mask6) == 0, "address 6 lies within its mask");
  must((chip.cpu.option & ~model.optmask) == 0, "OPTION lies within its mask");
  must((chip.cpu.trisa & ~model.mask5) == 0 && (chip.cpu.trisb & ~model.mask6) == 0,
       "TRIS lies within its mask");
  const int status = chip.regs[reg_status];
  must(((status >> 3) & 1) == chip.pdlatch && ((status >> 4) & 1) == chip.tolatch,
       "STATUS shows the latches");
  must((status & ~model.status_mask) == 0, "what STATUS lacks is 0");
  for (const std::int16_t value : chip.regs) must(value >= 0 && value <= 255, "registers hold bytes");
  for (const std::int16_t value : chip.bankregs)
    must(value >= 0 && value <= 255, "banked registers hold bytes");
  must(chip.cpu.w >= 0 && chip.cpu.w <= 255, "W holds a byte");
  must(chip.cpu.trisc >= 0 && chip.cpu.trisc <= 255, "TRISC holds a byte");
  const auto is_address = [](int value) { return value >= 0 && value < program_words; };
  must(is_address(chip.cpu.pc), "the program counter lies within memory");
  must(is_address(chip.stack[0]) && is_address(chip.stack[1]), "the stack holds addresses");
}

void check_name(Estructura& window, id label, const document& doc) {
  const control& shown = window.look(label);
  must(shown.text() == (doc.name.empty() ? "[sin nombre]" : nomfic(doc.name)),
       "a label shows its document's name");
  must(shown.tip() == doc.name, "a label's tip is the whole name");
  must(to_lower(doc.name) == doc.name, "names are kept in lower case");
}

void check_window(Estructura& window) {
  const chipstate& chip = window.chip();
  const control& list = window.look(id::MP);
  must(list.count() == chip.devmodel.progmask + 1, "the program list has a line for each address");
  must(list.row() < list.count(), "the current line is one of the list");
  must(window.look(id::source).visible() != window.look(id::lst).visible(), "source or listing, one of them");
  must(window.look(id::dat).enabled() == !window.look(id::dirdat).text().empty(), "dat opens with its label");
  must(chip.running || window.look(id::ejecutar).text() == "Ejecu&tar" || window.ended(),
       "a stopped run says so");
  const control_place focus = window.focused();
  must(focus.which == id::none || window.usable(focus.which, focus.index),
       "the focus is where it can be used");
  check_name(window, id::FILHEX, window.hex());
  check_name(window, id::FILASM, window.source());
}

// The lines of the program list, each looked at again only when it or its word is another than at the last
// look: a run asks hundreds of times, and a line takes a while to make.
class list_check {
 public:
  void look(Estructura& window) {
    const control& list = window.look(id::MP);
    const chipstate& chip = window.chip();
    const auto count = static_cast<std::size_t>(list.count());
    if (list.row_changes() == changes_ && rows_.size() == count && same_words(chip)) return;
    rows_.resize(count);
    for (int a = 0; a < list.count(); ++a) {
      std::string& known = rows_[static_cast<std::size_t>(a)];
      const std::string& line = list.rows()[static_cast<std::size_t>(a)];
      if (line == known && chip.progmem[a] == words_[a] && chip.breakpts[a] == breaks_[a]) continue;
      must(line == lineaprog(chip, a), "a line shows its address's word");
      known = line;
    }
    changes_ = list.row_changes();
    words_ = chip.progmem;
    breaks_ = chip.breakpts;
  }

 private:
  [[nodiscard]] bool same_words(const chipstate& chip) const {
    return chip.progmem == words_ && chip.breakpts == breaks_;
  }

  std::vector<std::string> rows_;
  unsigned changes_ = 0;
  decltype(chipstate::progmem) words_{};
  decltype(chipstate::breakpts) breaks_{};
};

// Nothing that a person made is passed for saved: a document that has changed since the last look, and that
// the window would abandon without a question, is empty or in the file whose name it bears. A document that
// has not changed may be declared saved by its save, and by the choice of a device.
class document_check {
 public:
  explicit document_check(Estructura& window)
      : text_(window.look(id::source).text()), words_(window.chip().progmem) {}

  void look(Estructura& window) {
    const std::string& text = window.look(id::source).text();
    if (text != text_) {
      must(window.source().modified || text.empty() || text == in_file(window.source().name),
           "a source that is not in its file is unsaved");
      text_ = text;
    }
    const chipstate& chip = window.chip();
    if (chip.progmem != words_) {
      must(window.hex().modified || chip.progmem == read_into_blank(chip.devmodel, window.hex().name),
           "program memory that is not in its file is unsaved");
      words_ = chip.progmem;
    }
  }

 private:
  using words = decltype(chipstate::progmem);

  static std::string in_file(const std::string& name) {
    std::string text;
    text_encoding encoding{};
    return cargaasm(name, text, encoding) ? text : std::string();
  }
  // As the window reads it: what a bad file holds before its error counts. No name, no file: blank.
  static words read_into_blank(const device& model, const std::string& name) {
    chipstate other;
    other.devmodel = model;
    other.progmem.fill(unprogrammed);
    if (!name.empty()) (void)carga(other, name);
    return other.progmem;
  }

  std::string text_;
  words words_;
};

class all_checks {
 public:
  explicit all_checks(Estructura& window) : window_(window), documents_(window) {}
  void look() {
    check_registers(window_);
    check_window(window_);
    list_.look(window_);
    documents_.look(window_);
  }

 private:
  Estructura& window_;
  list_check list_;
  document_check documents_;
};

// Answers as the input says, and lets the person act between two steps of a run.
class host final : public window_host {
 public:
  host(fuzz::decisions& input, fs::path folder) : input_(input), folder_(std::move(folder)) {}
  Estructura* window = nullptr;
  all_checks* checks = nullptr;
  bool faulted = false;
  bool cancelled = false;  ///< a question was answered so

  answer show_box(box kind, std::string_view) override {
    if (kind == box::fault) faulted = true;
    if (kind != box::yesno && kind != box::yesnocancel) return answer::ok;
    const int choice = input_.below(kind == box::yesno ? 2 : 3);
    if (choice == 2) cancelled = true;
    return choice == 0 ? answer::no : choice == 1 ? answer::yes : answer::cancel;
  }
  std::string choose_file(bool, std::string_view, std::string_view, std::string_view proposed) override {
    // Whoever has nothing more to say gives the dialog up; a No to the replace question would stand for ever.
    if (!input_.left()) return {};
    switch (input_.below(7)) {
      case 0: return (folder_ / "uno.hex").string();
      case 1: return (folder_ / "Dos.ASM").string();
      case 2: return (folder_ / "falta.hex").string();
      case 3: return folder_.string();
      case 4: return std::string(proposed);
      case 5: return (folder_ / "nuevo.hex").string();
      default: return {};
    }
  }
  std::string clipboard_text() override { return clipboard_; }
  void set_clipboard_text(std::string_view text) override { clipboard_ = text; }
  int yield() override;
  /// One gesture of the person, anywhere.
  void act();

 private:
  fuzz::decisions& input_;
  fs::path folder_;
  std::string clipboard_ = "a\nb";
  int turns_ = 0;
};

void perform(Estructura& window, const gesture& one) {
  switch (one.what) {
    case gesture::action::click: window.click(one.which, one.index); break;
    case gesture::action::enter: window.enter(one.which); break;
    case gesture::action::select: window.select(one.which, one.place, one.length); break;
    case gesture::action::click_text: window.click_text(one.which, one.place); break;
    case gesture::action::keyup_text: window.keyup_text(one.which, one.place); break;
    case gesture::action::type: window.type(one.which, one.text); break;
    case gesture::action::click_row:
      window.click_row(one.which, one.index, one.place, one.control_held);
      break;
    case gesture::action::dblclick_row: window.dblclick_row(one.which, one.index, one.place); break;
    case gesture::action::pick:
      window.pick(one.which, window.look(one.which).rows()[static_cast<std::size_t>(one.place)]);
      break;
    case gesture::action::press: window.press_map(one.place); break;
    case gesture::action::dblclick: window.dblclick(one.which, one.index); break;
    case gesture::action::focus: window.focus(one.which, one.index); break;
    case gesture::action::blur: window.blur(); break;
  }
}

void host::act() {
  const gesture one = random_gesture(input_);
  const bool disassembles =
      one.what == gesture::action::click && one.which == id::desensamblar && window->usable(id::desensamblar);
  cancelled = false;
  perform(*window, one);
  if (faulted || window->ended()) return;
  // Even where the text is the one that was there, and was saved.
  must(!disassembles || cancelled || window->source().modified, "a disassembly is unsaved");
}

int host::yield() {
  constexpr int longest_run = 400;
  if (++turns_ % 8 == 0 && input_.left()) {
    act();
    // What is put off until somebody looks may end in a fault of its own.
    window->bring_up_to_date();
    if (!faulted && !window->ended()) checks->look();
  }
  if (turns_ < longest_run && input_.left()) return 1 + input_.below(20);
  turns_ = 0;
  if (window->chip().running) window->click(id::ejecutar);
  return 1;
}

class scratch_folder {
 public:
  scratch_folder() : path(fs::temp_directory_path() / ("estructura-fuzz-" + std::to_string(::getpid()))) {
    fs::remove_all(path);
    fs::create_directories(path);
    std::ofstream(path / "uno.hex") << ":04000000250C000AC1\r\n:00000001FF\r\n";
    std::ofstream(path / "Dos.ASM") << "I: MOVLW 10\r\n GOTO I\r\n";
  }
  ~scratch_folder() { fs::remove_all(path); }
  scratch_folder(const scratch_folder&) = delete;
  scratch_folder& operator=(const scratch_folder&) = delete;
  scratch_folder(scratch_folder&&) = delete;
  scratch_folder& operator=(scratch_folder&&) = delete;
  fs::path path;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const scratch_folder folder;
  fuzz::decisions input(fuzz::as_text(data, size));
  host desktop(input, folder.path);
  Estructura window(desktop);
  desktop.window = &window;
  window.Form_Load();
  all_checks checks(window);
  desktop.checks = &checks;
  checks.look();
  while (input.left() && !window.ended()) {
    desktop.faulted = false;
    desktop.act();
    if (desktop.faulted) window.refresh();
    if (!window.ended()) checks.look();
  }
  return 0;
}
