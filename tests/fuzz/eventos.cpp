// A person doing anything at all: a stream of clicks, texts, rows, files and answers on the toolkit-free
// window, with the window's invariants checked after each event, also in the middle of a run.
#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>
#include <vector>

#include "common/texto.h"
#include "files/desensamblador.h"
#include "tests/apoyo/gestos.h"
#include "tests/fuzz/objetivo.h"
#include "ui/estructura.h"

namespace {

using namespace estructura;
using apoyo::gesto;
using apoyo::gesto_al_azar;
using fuzz::must;
namespace fs = std::filesystem;

// Answers as the input says, and lets the person act between two steps of a run.
class host final : public anfitrion {
 public:
  host(fuzz::decisions& input, fs::path folder) : input_(input), folder_(std::move(folder)) {}
  Estructura* window = nullptr;
  bool faulted = false;

  answer mensaje(box kind, std::string_view) override {
    if (kind == box::fault) faulted = true;
    if (kind != box::yesno && kind != box::yesnocancel) return answer::ok;
    const int choice = input_.below(kind == box::yesno ? 2 : 3);
    return choice == 0 ? answer::no : choice == 1 ? answer::yes : answer::cancel;
  }
  std::string elige_fichero(bool, std::string_view, std::string_view, std::string_view proposed) override {
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
  std::string portapapeles() override { return clipboard_; }
  void pon_portapapeles(std::string_view text) override { clipboard_ = text; }
  int cede() override;

 private:
  fuzz::decisions& input_;
  fs::path folder_;
  std::string clipboard_ = "a\nb";
  int turns_ = 0;
};

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
  must(model.is16c5x || (status & 64) == 0, "bit 6 of STATUS is 0 on a 12C50x");
  for (const std::int16_t value : chip.regs) must(value >= 0 && value <= 255, "registers hold bytes");
  for (const std::int16_t value : chip.bankregs)
    must(value >= 0 && value <= 255, "banked registers hold bytes");
  must(chip.cpu.pc >= 0 && chip.cpu.pc < program_words, "the program counter lies within memory");
}

void check_document(Estructura& window, id label, const document& doc) {
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
  const focus_place focus = window.focused();
  must(focus.which == id::none || window.usable(focus.which, focus.index),
       "the focus is where it can be used");
  check_document(window, id::FILHEX, window.hex());
  check_document(window, id::FILASM, window.source());
}

void check_list(Estructura& window) {
  const control& list = window.look(id::MP);
  for (int a = 0; a < list.count(); ++a)
    must(list.rows()[static_cast<std::size_t>(a)] == lineaprog(window.chip(), a),
         "a line shows its address's word");
}

void act(Estructura& window, fuzz::decisions& input) {
  const gesto one = gesto_al_azar(input);
  switch (one.what) {
    case gesto::que::click: window.click(one.which, one.index); break;
    case gesto::que::enter: window.enter(one.which); break;
    case gesto::que::select: window.select(one.which, one.place, one.length); break;
    case gesto::que::click_text: window.click_text(one.which, one.place); break;
    case gesto::que::keyup_text: window.keyup_text(one.which, one.place); break;
    case gesto::que::type: window.type(one.which, one.text); break;
    case gesto::que::click_row: window.click_row(one.which, one.index, one.place, one.control_held); break;
    case gesto::que::dblclick_row: window.dblclick_row(one.which, one.index, one.place); break;
    case gesto::que::pick:
      window.pick(one.which, window.look(one.which).rows()[static_cast<std::size_t>(one.place)]);
      break;
    case gesto::que::press: window.press_map(one.place); break;
    case gesto::que::dblclick: window.dblclick(one.which, one.index); break;
    case gesto::que::focus: window.focus(one.which, one.index); break;
    case gesto::que::blur: window.blur(); break;
  }
}

int host::cede() {
  constexpr int longest_run = 400;
  if (++turns_ % 8 == 0 && input_.left()) act(*window, input_);
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
  while (input.left() && !window.ended()) {
    desktop.faulted = false;
    act(window, input);
    // A fault leaves the state as it was at that moment, until the next refresh.
    if (desktop.faulted) window.refresh();
    check_registers(window);
    check_window(window);
  }
  check_list(window);
  return 0;
}
