// The driver of the page in a real browser. A program of node's (tests/web/driver.mjs) holds the browser;
// this one tells it what the person does, and reads back what the page shows.
//
//   browser_process browser(page_file);
//   browser_driver driver(browser, desk);      // the page, just opened
//   driver.click(place_of("eje1"));               // the mouse on the button
//
// A question is answered by a press on its button, a file dialog by the name typed into it; what is saved is
// downloaded, and lies in the script's folder afterwards. Not read from the page, since it shows them
// nowhere: the machine, the documents' names, a label's tag, and how often a run has yielded. The tab's own
// closing can ask nothing but whether to stay, so `close` asks the program behind the page.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

#include "guion/scripted_desktop.h"
#include "guion/window_driver.h"

namespace estructura::guiones {

/// The browser, for as many scripts as there are.
class browser_process {
 public:
  explicit browser_process(const std::string& page_file);
  ~browser_process();
  browser_process(const browser_process&) = delete;
  browser_process& operator=(const browser_process&) = delete;
  browser_process(browser_process&&) = delete;
  browser_process& operator=(browser_process&&) = delete;

  using message = std::vector<std::string>;
  /// Throws where the other side met an error.
  message call(const message& request);

 private:
  [[nodiscard]] std::string read_line();

  pid_t child_ = -1;
  std::FILE* to_ = nullptr;
  std::FILE* from_ = nullptr;
};

class browser_driver final : public window_driver {
 public:
  browser_driver(browser_process& browser, scripted_desktop& desk);

  const chipstate& chip() override;
  void change_machine(const std::function<void(chipstate&)>& change) override;
  void refresh() override;
  document hex() override;
  document source() override;
  bool ended() override;

  void click(const script_place& place) override;
  void click_text(const script_place& place, int caret) override;
  void keyup_text(const script_place& place, int caret) override;
  void dblclick(const script_place& place) override;
  void click_row(const script_place& place, int row, bool control_held) override;
  void dblclick_row(const script_place& place, int row) override;
  void pick(const script_place& place, int entry) override;
  void type(const script_place& place, std::string_view text) override;
  void select(const script_place& place, int start, int length) override;
  void enter(const script_place& place) override;
  void focus(const script_place& place) override;
  void press_map(double y) override;
  void close() override;
  void set_clipboard(std::string_view text) override;

  bool usable(const script_place& place) override;
  appearance look(const script_place& place) override;
  map_view look_map() override;
  std::string focused() override;
  std::string clipboard() override;

 private:
  /// One action, with all that it asks on its way, to its end.
  void act(const browser_process::message& request);
  browser_process::message answer_box(const browser_process::message& shown);
  browser_process::message answer_dialog(const browser_process::message& shown);
  browser_process::message call_with_pause(browser_process::message request);
  void mirror_folder();
  void take_downloads(const browser_process::message& names);
  void count_yields(const std::string& total);

  browser_process& browser_;
  scripted_desktop& desk_;
  chipstate chip_;
  std::int64_t yields_ = 0;
  int depth_ = 0;          ///< actions that wait at a pause, this one's within them
  std::string saving_as_;  ///< the path last given to a dialog for saving
  int beeps_ = 0;
};

}  // namespace estructura::guiones
