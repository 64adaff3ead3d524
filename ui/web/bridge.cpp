// The program as the page sees it: one function for each thing that a person does, one that tells what has
// changed since, and, for tests, the machine behind it.
//
//   program._estructura_start();
//   program._estructura_click(which, index);
//   JSON.parse(text(program._estructura_changes()))
//
// An action that has to wait for the person comes back to the page at once and goes on later;
// page_action_done tells its end.
#include <cstring>
#include <emscripten.h>
#include <string>
#include <sys/stat.h>
#include <vector>

#include "ui/estructura.h"
#include "ui/web/browser_host.h"
#include "ui/web/page_imports.h"
#include "ui/web/record_writer.h"

namespace {

using namespace estructura;

struct page_program {
  browser_host host;
  Estructura window{host};
  record_writer writer{window};
  std::string told;  ///< what the page was told last; it reads it before the next call
};

page_program& program() {
  static page_program the_one;
  return the_one;
}

/// Performs one action of the person, to its end.
template <class Action>
void act(const Action& action) {
  program().host.begin_action();
  action(program().window);
  page_action_done();
}

const char* tell(std::string text) {
  program().told = std::move(text);
  return program().told.c_str();
}

}  // namespace

extern "C" {

EMSCRIPTEN_KEEPALIVE void estructura_watch() {
  // Emscripten's own would leave nobody any right to a new file.
  ::umask(022);
  program().host.watch(program().window);
}
EMSCRIPTEN_KEEPALIVE void estructura_start() {
  act([](Estructura& window) { window.Form_Load(); });
}

EMSCRIPTEN_KEEPALIVE void estructura_click(int which, int index) {
  act([=](Estructura& window) { window.click(static_cast<id>(which), index); });
}
EMSCRIPTEN_KEEPALIVE void estructura_press(int which) {
  act([=](Estructura& window) { window.press(static_cast<id>(which)); });
}
EMSCRIPTEN_KEEPALIVE void estructura_dblclick(int which, int index) {
  act([=](Estructura& window) { window.dblclick(static_cast<id>(which), index); });
}
EMSCRIPTEN_KEEPALIVE void estructura_click_text(int which, int caret) {
  act([=](Estructura& window) { window.click_text(static_cast<id>(which), caret); });
}
EMSCRIPTEN_KEEPALIVE void estructura_keyup_text(int which, int caret) {
  act([=](Estructura& window) { window.keyup_text(static_cast<id>(which), caret); });
}
EMSCRIPTEN_KEEPALIVE void estructura_choose_rows(int which, int index, int current, const int* selected,
                                                 int count) {
  act([=](Estructura& window) {
    window.choose_rows(static_cast<id>(which), index, current, std::vector<int>(selected, selected + count));
  });
}
EMSCRIPTEN_KEEPALIVE void estructura_dblclick_row(int which, int index, int row) {
  act([=](Estructura& window) { window.dblclick_row(static_cast<id>(which), index, row); });
}
EMSCRIPTEN_KEEPALIVE void estructura_pick(int which, const char* entry) {
  act([=](Estructura& window) { window.pick(static_cast<id>(which), entry); });
}
EMSCRIPTEN_KEEPALIVE void estructura_type(int which, const char* text, int size, int caret) {
  const std::string typed(text, static_cast<std::size_t>(size));
  program().writer.typed(program().writer.place_of(static_cast<id>(which), 0), typed);
  act([&](Estructura& window) { window.type(static_cast<id>(which), typed, caret); });
}
EMSCRIPTEN_KEEPALIVE void estructura_select(int which, int start, int length) {
  act([=](Estructura& window) { window.select(static_cast<id>(which), start, length); });
}
EMSCRIPTEN_KEEPALIVE void estructura_enter(int which) {
  act([=](Estructura& window) { window.enter(static_cast<id>(which)); });
}
EMSCRIPTEN_KEEPALIVE void estructura_focus(int which, int index) {
  act([=](Estructura& window) { window.focus(static_cast<id>(which), index); });
}
EMSCRIPTEN_KEEPALIVE void estructura_press_map(double y) {
  act([=](Estructura& window) { window.press_map(y); });
}
EMSCRIPTEN_KEEPALIVE void estructura_close() {
  act([](Estructura& window) { window.close_request(); });
}

/// Works out what is put off until somebody looks, which may end in the box of a fault: so it is an action,
/// and the changes are asked for when it has ended.
EMSCRIPTEN_KEEPALIVE void estructura_bring_up_to_date() {
  act([](Estructura& window) { window.bring_up_to_date(); });
}

EMSCRIPTEN_KEEPALIVE const char* estructura_inventory() {
  return tell(program().writer.inventory());
}
EMSCRIPTEN_KEEPALIVE const char* estructura_changes() {
  return tell(program().writer.changes());
}

/// How a line of the source is shown, in the page's units: its parts as [[start, length, part], ...], and the
/// operands that are read as something else than they look as [[start, length, tip], ...].
EMSCRIPTEN_KEEPALIVE const char* estructura_highlight(const char* text, int size) {
  const std::string_view line(text, static_cast<std::size_t>(size));
  return tell(program().writer.highlighted(line));
}

// --- For tests: the machine behind the page ---

/// The state as it lies in memory, and its size; to be changed only between two actions.
EMSCRIPTEN_KEEPALIVE chipstate* estructura_machine() {
  return &program().window.poke();
}
EMSCRIPTEN_KEEPALIVE int estructura_machine_size() {
  return sizeof(chipstate);
}
EMSCRIPTEN_KEEPALIVE void estructura_refresh() {
  act([](Estructura& window) { window.refresh(); });
}
EMSCRIPTEN_KEEPALIVE void estructura_pause_after(int yields) {
  program().host.pause_after(yields);
}
EMSCRIPTEN_KEEPALIVE double estructura_yields() {
  return static_cast<double>(program().host.yields());
}
/// Names and flags of the two documents, and the tag of the register to be changed.
EMSCRIPTEN_KEEPALIVE const char* estructura_documents() {
  const Estructura& window = program().window;
  const auto text = [](const document& doc) { return doc.name + '\n' + (doc.modified ? '1' : '0') + '\n'; };
  return tell(text(window.hex()) + text(window.source()) + program().window.look(id::dirdat).tag());
}

}  // extern "C"
