// The window without a toolkit: it owns the machine, the documents and every control, and takes what the
// person does through one door.
//
//   struct mute : window_host {} host;
//   Estructura window(host);
//   window.Form_Load();
//   window.click(id::eje1);
//   window.look(id::ciclos).text()       -> "0"
//
// Every member under "the door" is one action of a person: it is ignored while its control cannot be used,
// moves the focus as the person's click would, runs the handlers, and catches a fault. Everything under
// "looking" shows the views as they stand for whoever looks: texts are worked out then, not at each step.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "common/bounded_array.h"
#include "common/file.h"
#include "core/chipstate.h"
#include "ui/control.h"
#include "ui/inventory.h"
#include "ui/run_control.h"
#include "ui/window_host.h"

namespace estructura {

struct assembly_error;

enum class map_colour : std::uint8_t { none, yellow, blue };

/// The map as painted: its left half by address, the end of its scale, and the marker of the right half.
struct map_view {
  int scale = 0;  ///< lower end of the vertical scale; row y is address y
  bounded_array<map_colour, program_words> rows{};
  int marker = -1;  ///< address of the marker, -1 for none
  unsigned changes = 0;
};

/// A document of the window: a file's name, lower-cased, and whether the content differs from it.
struct document {
  std::string name;  ///< as shown: in lower case
  std::string file;  ///< the one on disk that was read or written last under that name
  bool modified = false;
};

struct focus_place {
  id which = id::none;
  int index = 0;
  bool operator==(const focus_place&) const = default;
};

class Estructura final : private run_listener, private event_sink {
 public:
  explicit Estructura(window_host& host);
  Estructura(const Estructura&) = delete;
  Estructura& operator=(const Estructura&) = delete;
  Estructura(Estructura&&) = delete;
  Estructura& operator=(Estructura&&) = delete;
  ~Estructura() = default;

  /// The window's load event; also what a device change runs again.
  void Form_Load();

  // --- The door ---

  /// A click on a button; on a check box or option, which takes its new value first.
  void click(id which, int index = 0);
  /// A click, or a key released, in a text box that listens to it, with the caret at `caret` characters.
  void click_text(id which, int caret);
  void keyup_text(id which, int caret);
  /// A double-click on a label.
  void dblclick(id which, int index = 0);
  /// A click on a line, alone or (`extend`) added to the selection with Ctrl, as far as the list takes
  /// several lines; and the same followed by the double-click.
  void click_row(id which, int index, int row, bool extend = false);
  void dblclick_row(id which, int index, int row);
  /// The selection of a list as the person made it by any means of the toolkit: counts as a click.
  void choose_rows(id which, int index, int current, std::vector<int> selected);
  /// An entry of the combo, by its text.
  void pick(id which, std::string_view entry);
  /// The whole text of a text box, replaced in one change; the caret goes to `caret`, or to its end.
  void type(id which, std::string_view text, int caret = -1);
  void select(id which, int start, int length);
  /// A button's function key: its click, with the focus left where it is.
  void press(id which);
  /// The Enter key in a text box.
  void enter(id which);
  /// The focus moves, as by the Tab key; `blur` leaves no control with it.
  void focus(id which, int index = 0);
  void blur();
  /// Mouse-down on the map at height `y` of its scale.
  void press_map(double y);
  /// The window's own close request.
  void close_request();

  // --- Looking ---

  /// Works out everything that is owed to the eye. The looks below do it themselves.
  void bring_up_to_date();
  [[nodiscard]] const control& look(id which, int index = 0);
  [[nodiscard]] const map_view& look_map();
  [[nodiscard]] const std::vector<control>& look_all();
  [[nodiscard]] focus_place focused() const { return focus_; }
  /// Whether a person can use the control: enabled, visible, and its frames visible.
  [[nodiscard]] bool usable(id which, int index = 0) const;
  [[nodiscard]] bool ended() const { return ended_; }
  [[nodiscard]] const document& hex() const { return hex_; }
  [[nodiscard]] const document& source() const { return asm_; }
  [[nodiscard]] const chipstate& chip() const { return chip_; }

  // --- For tests: the machine changed from outside, with no refresh until asked for ---

  /// The machine's state, open to change, after everything owed so far has been worked out.
  [[nodiscard]] chipstate& poke();
  void refresh();

 private:
  friend struct handler_table;
  using handler = void (Estructura::*)(int index);

  // run_listener: what running the machine asks for.
  void lock_configuration() override;
  void clear_entry() override;
  void show_whole_step() override { settle(); }
  void warn_watchdog() override;
  void guard_focus() override;
  void click_ejecutar() override { ejecutar_Click(0); }
  void rest() override { host_.rest(); }
  int yield() override { return host_.yield(); }

  // event_sink: what the controls report.
  void raised(control& source, event what) override;
  void touched(control& source) override;

  // The door and the focus (estructura.cpp).
  template <class Action>
  void through_the_door(Action action);
  void fault();
  void move_focus(focus_place place);
  void leave_withdrawn_focus();
  [[nodiscard]] focus_place harmless(const control& next) const;
  control& at(id which, int index = 0);
  [[nodiscard]] const control& at(id which, int index = 0) const;
  answer ask(box kind, const std::string& text);
  void settle();
  void settle_row();
  void settle_marker();

  // Start-up and devices (arranque.cpp).
  void load();
  void show_device();
  void PIC_Click(int);
  void sl_Click(int);

  // Register views and their editing (registros.cpp).
  void show_views();
  void show_memory();
  void show_binary_views();
  void show_core_registers();
  void show_counters();
  void show_timer();
  void show_pins();
  [[nodiscard]] bool opened_by_refresh(id which, int index = 0) const;
  [[nodiscard]] bool timer_counts_pulses() const;
  [[nodiscard]] bool gp2_is_t0cki() const;
  void edit_register(int code, const std::string& caption, const std::string& value);
  void MDP_Click(int);
  void MD_Click(int bank);
  void RE_Click(int);
  void data_list_LostFocus(id which, int index);
  void MDP_LostFocus(int);
  void MD_LostFocus(int bank);
  void RE_LostFocus(int);
  void dirdat_Change(int);
  void dat_Change(int);
  void dat_KeyPress(int);
  void dat_GotFocus(int);
  void FR_GotFocus(int);
  void FREC_GotFocus(int);
  void direc_GotFocus(int);
  void INS_GotFocus(int);
  void entrardat_Click(int);

  // Run control, clocks, resets and pins (control_pic.cpp).
  void show_watchdog_count();
  void show_pc();
  void erase_marker() { runner_.seen().marked = false; }
  void eje1_Click(int);
  void ejecutar_Click(int);
  void stop_run();
  void por_Click(int);
  void MCLR_Click(int);
  void WDT_Click(int);
  void WATCHDOG_Click(int);
  void CMCLR_Click(int);
  void fext_Click(int);
  void TOCKI_Click(int);
  void FR_Change(int);
  void ciclos_DblClick(int);
  void PA_Click(int bit);
  void PB_Click(int bit);
  void PC_Click(int bit);
  void VISMP_Click(int);

  // Program memory: list, map, entry by hand (programa.cpp).
  void listaprog();
  void pintamapa();
  void rebuild_row(int address);
  void MP_Click(int);
  void MP_DblClick(int);
  void show_instruction_at(int address);
  void direc_Change(int);
  void INS_Change(int);
  void INS_KeyPress(int);
  void enterins();
  void Entrarins_Click(int);
  void borrarins_Click(int);
  void break_Click(int);

  // Source and listing (editor.cpp).
  void Ensamblar_Click(int);
  void show_assembly_error(const assembly_error& error);
  void desensamblar_Click(int);
  void lst_Click(int);
  void lst_KeyUp(int);
  void replace_selection(std::string_view text);
  void Copiar_Click(int);
  void Cortar_Click(int);
  void Pegar_Click(int);
  void tab_Click(int);

  // The documents (documentos.cpp).
  bool ask_to_save_hex();
  bool ask_to_save_source(const std::string& question);
  [[nodiscard]] std::string source_question() const;
  std::string choose_file(bool save, std::string_view filter, std::string_view extension,
                          std::string_view proposed);
  std::string choose_save_name(std::string_view filter, std::string_view extension, const document& current);
  void show_name(id label, const document& doc);
  void cargar_Click(int);
  void salvar_Click(int);
  void salvar16c84_Click(int);
  void borrar_Click(int);
  void read_hex(const std::string& path);
  void erase_program_memory();
  void source_Change(int);
  void cargarasm_Click(int);
  void salvarasm_Click(int);
  void borrarasm_Click(int);
  void fin_Click(int);
  void Form_Unload();
  void end_program();

  window_host& host_;
  chipstate chip_;
  inputs in_;
  run_control runner_{chip_, in_, *this};
  std::vector<control> controls_;
  std::array<int, id_count> first_member_{};
  map_view map_;
  document hex_;
  document asm_;
  text_encoding asm_encoding_ = text_encoding::utf8;
  focus_place focus_;
  bool run_on_stack_ = false;
  bool ended_ = false;
};

}  // namespace estructura
