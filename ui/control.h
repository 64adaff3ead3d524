// One control of the window as a record: its kind and name, what it shows, and the events that setting it
// raises.
//
//   dat.set_text("1F");            // raises change, since the text was another
//   fext.set_value(false);         // raises click when it was checked, nothing otherwise
//   MP.choose_row(5);              // the one selected line; counts as a click
//
// A property raises its event exactly when its value changes (a list line that the program chooses: always).
// The record does so itself, through the sink that the window is. What the user does enters through the
// window's door (ui/estructura.h), never here.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace estructura {

enum class kind : std::uint8_t { button, check, option, text, label, list, combo, picture, frame };
enum class event : std::uint8_t { click, dblclick, change, gotfocus, lostfocus, keyup, enter };
enum class id : std::uint8_t;

class control;

class event_sink {
 public:
  virtual void raised(control& source, event what) = 0;
  /// A property of the control has changed; told before the event, and also where there is none.
  virtual void touched(control& source) = 0;

 protected:
  event_sink() = default;
  ~event_sink() = default;
  event_sink(const event_sink&) = default;
  event_sink& operator=(const event_sink&) = default;
};

class control {
 public:
  control(id which, int index, kind is_a, std::string name);

  /// From now on changes are told to `sink`; none before.
  void listen(event_sink* sink) { sink_ = sink; }

  // Identity; never changes.
  [[nodiscard]] id which() const { return which_; }
  [[nodiscard]] int index() const { return index_; }  ///< within its group, 0 for a control of its own
  [[nodiscard]] kind is() const { return kind_; }
  [[nodiscard]] const std::string& name() const { return name_; }  ///< "eje1", "PB(3)"

  // What every control has.
  [[nodiscard]] const std::string& tip() const { return tip_; }
  [[nodiscard]] bool visible() const { return visible_; }
  [[nodiscard]] bool enabled() const { return enabled_; }
  void set_tip(std::string_view tip);
  void set_visible(bool visible);
  void set_enabled(bool enabled);

  /// Caption of a button, check box, option, label or frame; text of a text box (line ends CR LF) or combo.
  /// Setting a text box's text puts the caret at its start.
  [[nodiscard]] const std::string& text() const { return text_; }
  void set_text(std::string_view text);
  /// As `set_text`, with the caret where typing leaves it: at `caret` characters, or (-1) at the end.
  void set_typed_text(std::string_view text, int caret);
  /// As `set_text`, where the text is another document and not the old one changed: nobody is to come back
  /// from the one to the other by undoing. Counts as one though the text is the same.
  void set_document(std::string_view text);
  [[nodiscard]] unsigned documents() const { return documents_; }

  /// Check box or option: whether it is checked.
  [[nodiscard]] bool value() const { return value_; }
  void set_value(bool value);
  /// As `set_value`, raising nothing: the box follows a state that it only shows.
  void show_value(bool value);

  /// Text box: selection in characters, a line end counting two.
  [[nodiscard]] int sel_start() const { return sel_start_; }
  [[nodiscard]] int sel_length() const { return sel_length_; }
  void set_selection(int start, int length);
  void select_all();
  /// As `set_selection`, and it comes into sight even where it was selected already and scrolled away since.
  void show_selection(int start, int length);
  [[nodiscard]] unsigned shown_selections() const { return shown_selections_; }
  /// Text box of many lines: the line that bears a mark, from 1; 0 for none. Raises nothing.
  [[nodiscard]] int marked_line() const { return marked_line_; }
  void set_marked_line(int line);

  /// Label: a free text that is not shown.
  [[nodiscard]] const std::string& tag() const { return tag_; }
  void set_tag(std::string_view tag) { tag_ = tag; }

  // List, and the entries of a combo.
  [[nodiscard]] const std::vector<std::string>& rows() const { return rows_; }
  [[nodiscard]] int count() const { return static_cast<int>(rows_.size()); }
  [[nodiscard]] int row() const { return row_; }  ///< the current line, -1 for none
  [[nodiscard]] const std::vector<int>& selected() const { return selected_; }  ///< ascending
  [[nodiscard]] bool face_background() const { return face_background_; }
  /// Replaces all lines; no line is current afterwards. Raises nothing.
  void set_rows(std::vector<std::string> rows);
  /// Removes a line and inserts another in its place, which is not selected. Raises nothing.
  void replace_row(int row, std::string_view text);
  /// Makes a line the one selected; -1, or a line that is not there, selects none. Raises a click for a line.
  void choose_row(int row);
  /// The current line, having been scrolled away, comes into sight; raises nothing.
  void show_row();
  /// Counts the lines that were chosen, or shown again, by the program.
  [[nodiscard]] unsigned shown_rows() const { return shown_rows_; }
  /// The selection as the user made it; raises nothing.
  void set_row_selection(int current, std::vector<int> selected);
  void set_face_background(bool face);

  /// Counts the changes of any property; of the texts of lines alone. For whoever copies the record
  /// elsewhere.
  [[nodiscard]] unsigned changes() const { return changes_; }
  [[nodiscard]] unsigned row_changes() const { return row_changes_; }

 private:
  void touch();
  void raise(event what);

  event_sink* sink_ = nullptr;
  std::string name_;
  std::string text_;
  std::string tip_;
  std::string tag_;
  std::vector<std::string> rows_;
  std::vector<int> selected_;
  int index_;
  int row_ = -1;
  int sel_start_ = 0;
  int sel_length_ = 0;
  int marked_line_ = 0;
  unsigned changes_ = 0;
  unsigned row_changes_ = 0;
  unsigned documents_ = 0;
  unsigned shown_selections_ = 0;
  unsigned shown_rows_ = 0;
  id which_;
  kind kind_;
  bool visible_ = true;
  bool enabled_ = true;
  bool value_ = false;
  bool face_background_ = false;
};

}  // namespace estructura
