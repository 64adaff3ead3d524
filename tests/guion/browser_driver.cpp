#include "guion/browser_driver.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

#include "common/file.h"
#include "guion/words.h"

#ifndef GUION_DRIVER
#error "GUION_DRIVER has to name the program that holds the browser"
#endif

namespace estructura::guiones {

namespace fs = std::filesystem;

namespace {

using message = browser_process::message;

std::int64_t number(std::string_view text) {
  std::int64_t value = 0;
  const auto parsed = std::from_chars(text.data(), text.data() + text.size(), value);
  if (parsed.ec != std::errc{}) throw script_error("the page answered no number: " + std::string(text));
  return value;
}

int whole(std::string_view text) {
  return static_cast<int>(number(text));
}

std::vector<int> numbers(std::string_view text) {
  std::vector<int> values;
  while (!text.empty()) {
    const std::string_view one = text.substr(0, text.find(' '));
    values.push_back(whole(one));
    text.remove_prefix(std::min(text.size(), one.size() + 1));
  }
  return values;
}

box kind_of_box(std::string_view name) {
  if (name == "ok") return box::ok;
  if (name == "ok-right") return box::ok_right;
  if (name == "yesno") return box::yesno;
  if (name == "yesnocancel") return box::yesnocancel;
  if (name == "fault") return box::fault;
  throw script_error("the page shows a box of no known kind: " + std::string(name));
}

std::string content_of(const fs::path& path) {
  const std::ifstream file(path, std::ios::binary);
  std::ostringstream content;
  content << file.rdbuf();
  return content.str();
}

}  // namespace

// --- The process
// -----------------------------------------------------------------------------------------------

browser_process::browser_process(const std::string& page_file) {
  std::array<int, 2> down{};
  std::array<int, 2> up{};
  if (::pipe(down.data()) != 0 || ::pipe(up.data()) != 0) throw script_error("no pipe to the browser");
  child_ = ::fork();
  if (child_ < 0) throw script_error("no process for the browser");
  if (child_ == 0) {
    ::dup2(down[0], STDIN_FILENO);
    ::dup2(up[1], STDOUT_FILENO);
    for (const int end : {down[0], down[1], up[0], up[1]}) ::close(end);
    ::execlp("node", "node", GUION_DRIVER, page_file.c_str(), static_cast<char*>(nullptr));
    ::_exit(127);
  }
  ::close(down[0]);
  ::close(up[1]);
  to_ = ::fdopen(down[1], "wb");
  from_ = ::fdopen(up[0], "rb");
  call({"ready"});
}

browser_process::~browser_process() {
  std::fclose(to_);
  std::fclose(from_);
  ::waitpid(child_, nullptr, 0);
}

std::string browser_process::read_line() {
  std::string line;
  for (int c = std::fgetc(from_); c != '\n'; c = std::fgetc(from_)) {
    if (c == EOF) throw script_error("the browser has gone");
    line += static_cast<char>(c);
  }
  return line;
}

browser_process::message browser_process::call(const message& request) {
  std::string sent = std::to_string(request.size()) + '\n';
  for (const std::string& field : request) sent += std::to_string(field.size()) + '\n' + field;
  std::fwrite(sent.data(), 1, sent.size(), to_);
  std::fflush(to_);
  message reply(static_cast<std::size_t>(number(read_line())));
  for (std::string& field : reply) {
    field.resize(static_cast<std::size_t>(number(read_line())));
    if (std::fread(field.data(), 1, field.size(), from_) != field.size())
      throw script_error("the browser has gone");
  }
  if (reply.empty() || reply.front() != "ok")
    throw script_error(reply.size() > 1 ? "the page: " + reply[1] : "the page has no answer");
  reply.erase(reply.begin());
  return reply;
}

// --- Actions
// ---------------------------------------------------------------------------------------------------

browser_driver::browser_driver(browser_process& browser, scripted_desktop& desk)
    : browser_(browser), desk_(desk) {
  browser_.call({"open"});
}

message browser_driver::call_with_pause(message request) {
  const std::int64_t next = desk_.yields_to_next();
  request.insert(request.begin() + 1, std::to_string(next > 0 ? next : -1));
  return browser_.call(request);
}

void browser_driver::count_yields(const std::string& total) {
  const std::int64_t now = number(total);
  const std::int64_t passed = now - std::exchange(yields_, now);
  if (passed > 0) desk_.yielded(static_cast<int>(passed));
}

// Each answer of the page begins with what it waits for, how many actions have begun and not ended, and how
// often runs have yielded.
void browser_driver::act(const message& request) {
  const int outer = depth_;
  message reply = call_with_pause(request);
  for (;;) {
    const std::string waits_for = reply.at(0);
    const bool ended_here = whole(reply.at(1)) == outer;
    const int beeps = whole(reply.at(3));
    desk_.beeps += beeps - std::exchange(beeps_, beeps);
    if (!saving_as_.empty()) take_downloads(browser_.call({"downloads"}));
    if (ended_here) {
      count_yields(reply.at(2));
      break;
    }
    if (waits_for == "box") {
      reply = answer_box(reply);
    } else if (waits_for == "dialog") {
      reply = answer_dialog(reply);
    } else {
      depth_ = whole(reply.at(1));
      count_yields(reply.at(2));
      depth_ = outer;
      reply = call_with_pause({"resume"});
    }
  }
}

message browser_driver::answer_box(const message& shown) {
  switch (desk_.ask(kind_of_box(shown.at(4)), shown.at(5))) {
    case answer::yes: return call_with_pause({"answer", "yes"});
    case answer::no: return call_with_pause({"answer", "no"});
    case answer::cancel: return call_with_pause({"answer", "cancel"});
    case answer::ok: break;
  }
  return call_with_pause({"answer", "ok"});
}

message browser_driver::answer_dialog(const message& shown) {
  const bool save = shown.at(4) == "true";
  const std::string path = desk_.choose(save, shown.at(5), shown.at(6), shown.at(7));
  mirror_folder();
  saving_as_ = save ? path : "";
  return call_with_pause({"choose", path});
}

/// The page's folder holds what the script's holds: what the person could bring from the disk.
void browser_driver::mirror_folder() {
  message files{"mirror"};
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(".")) {
    const bool is_folder = entry.is_directory();
    files.push_back(entry.path().lexically_normal().string() + (is_folder ? "/" : ""));
    files.push_back(is_folder ? "" : content_of(entry.path()));
  }
  browser_.call(files);
}

/// What was downloaded lies where the person said, under the name that the program gave it.
void browser_driver::take_downloads(const message& names) {
  for (const std::string& name : names) {
    std::error_code error;
    fs::copy_file(name, find_file(saving_as_), fs::copy_options::overwrite_existing, error);
    if (error) throw script_error("the file downloaded cannot be put where it was to be: " + saving_as_);
    fs::remove(name, error);
  }
}

void browser_driver::click(const script_place& place) {
  act({"click", place.name});
}
void browser_driver::click_text(const script_place& place, int caret) {
  act({"click_text", place.name, std::to_string(caret)});
}
void browser_driver::keyup_text(const script_place& place, int caret) {
  act({"keyup_text", place.name, std::to_string(caret)});
}
void browser_driver::dblclick(const script_place& place) {
  act({"dblclick", place.name});
}
void browser_driver::click_row(const script_place& place, int row, bool control_held) {
  act({"click_row", place.name, std::to_string(row), control_held ? "control" : ""});
}
void browser_driver::dblclick_row(const script_place& place, int row) {
  act({"dblclick_row", place.name, std::to_string(row)});
}
void browser_driver::pick(const script_place& place, int entry) {
  act({"pick", place.name, std::to_string(entry)});
}
void browser_driver::type(const script_place& place, std::string_view text) {
  act({"type", place.name, std::string(text)});
}
void browser_driver::select(const script_place& place, int start, int length) {
  act({"select", place.name, std::to_string(start), std::to_string(length)});
}
void browser_driver::enter(const script_place& place) {
  act({"enter", place.name});
}
void browser_driver::focus(const script_place& place) {
  act({"focus", place.name});
}
void browser_driver::press_map(double y) {
  std::ostringstream exact;
  exact.precision(17);
  exact << y;
  act({"press_map", exact.str()});
}
void browser_driver::close() {
  act({"close"});
}
void browser_driver::refresh() {
  act({"refresh"});
}
void browser_driver::set_clipboard(std::string_view text) {
  browser_.call({"set_clipboard", std::string(text)});
}

// --- Looking
// ---------------------------------------------------------------------------------------------------

const chipstate& browser_driver::chip() {
  const std::string bytes = browser_.call({"machine"}).at(0);
  if (bytes.size() != sizeof chip_) throw script_error("the page's machine has another size");
  std::memcpy(&chip_, bytes.data(), sizeof chip_);
  return chip_;
}

void browser_driver::change_machine(const std::function<void(chipstate&)>& change) {
  chipstate changed = chip();
  change(changed);
  std::string bytes(sizeof changed, '\0');
  std::memcpy(bytes.data(), &changed, sizeof changed);
  browser_.call({"set_machine", bytes});
}

document browser_driver::hex() {
  const message told = browser_.call({"documents"});
  return {.name = told.at(0), .file = {}, .modified = told.at(1) == "1"};
}
document browser_driver::source() {
  const message told = browser_.call({"documents"});
  return {.name = told.at(2), .file = {}, .modified = told.at(3) == "1"};
}
bool browser_driver::ended() {
  return browser_.call({"ended"}).at(0) == "true";
}

bool browser_driver::usable(const script_place& place) {
  return browser_.call({"usable", place.name}).at(0) == "true";
}

appearance browser_driver::look(const script_place& place) {
  const message told = browser_.call({"look", place.name});
  appearance shown;
  shown.text = told.at(0);
  shown.tip = told.at(1);
  if (place.which == id::dirdat) shown.tag = browser_.call({"documents"}).at(4);
  shown.enabled = told.at(2) == "true";
  shown.visible = told.at(3) == "true";
  shown.value = told.at(4) == "true";
  shown.row = whole(told.at(5));
  shown.selected = numbers(told.at(6));
  shown.face_background = told.at(7) == "true";
  shown.sel_start = whole(told.at(8));
  shown.sel_length = whole(told.at(9));
  shown.rows.assign(told.begin() + 10, told.end());
  return shown;
}

map_view browser_driver::look_map() {
  const message told = browser_.call({"look_map"});
  map_view seen;
  seen.scale = whole(told.at(0));
  seen.marker = whole(told.at(1));
  for (int address = 0; address < program_words; ++address)
    seen.rows[address] = static_cast<map_colour>(told.at(2).at(static_cast<std::size_t>(address)) - '0');
  return seen;
}

std::string browser_driver::focused() {
  return browser_.call({"focused"}).at(0);
}

std::string browser_driver::clipboard() {
  return browser_.call({"clipboard"}).at(0);
}

}  // namespace estructura::guiones
