// One control of the window as a record: what every control has, and what each kind has besides, with the
// events that setting it raises.
//
//   dat.set_text("1F");            // a text box: raises change, since the text was another
//   fext.set_value(false);         // a check box: raises click when it was checked, nothing otherwise
//   MP.choose_row(5);              // a list: the one selected line; counts as a click
//
// A property raises its event exactly when its value changes (a list line that the program chooses: always).
// The record does so itself, through the sink that the window is. What the user does enters through the
// window's door (ui/estructura.h), never here.
//
// A frame and a picture are a `control` and no more; every other kind is a class of its own, and only that
// has the means to change what is particular to it. Whoever copies the records elsewhere may read any
// property of any of them: one that the kind does not have reads as nothing.
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
struct declaration;

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
  /// The control of a row of the inventory, or a member of its group.
  control(const declaration& row, int member);
  virtual ~control() = default;
  control(const control&) = delete;
  control& operator=(const control&) = delete;
  control(control&&) = delete;
  control& operator=(control&&) = delete;

  /// From now on changes are told to `sink`; none before.
  void listen(event_sink& sink) { sink_ = &sink; }

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
  [[nodiscard]] const std::string& text() const { return text_; }

  /// Counts the changes of any property. For whoever copies the record elsewhere.
  [[nodiscard]] unsigned changes() const { return changes_; }

  // What only some kinds have, to be read of any: the classes below say what it is.
  [[nodiscard]] virtual bool value() const { return false; }
  [[nodiscard]] virtual const std::string& tag() const;
  [[nodiscard]] virtual int sel_start() const { return 0; }
  [[nodiscard]] virtual int sel_length() const { return 0; }
  [[nodiscard]] virtual unsigned documents() const { return 0; }
  [[nodiscard]] virtual unsigned shown_selections() const { return 0; }
  [[nodiscard]] virtual int marked_line() const { return 0; }
  [[nodiscard]] virtual const std::vector<std::string>& rows() const;
  [[nodiscard]] virtual int row() const { return -1; }
  [[nodiscard]] virtual const std::vector<int>& selected() const;
  [[nodiscard]] virtual bool face_background() const { return false; }
  [[nodiscard]] virtual unsigned row_changes() const { return 0; }
  [[nodiscard]] virtual unsigned shown_rows() const { return 0; }
  [[nodiscard]] int count() const { return static_cast<int>(rows().size()); }

 protected:
  /// Another text, of which nobody is told yet; false where it is the same.
  bool replace_text(std::string_view text);
  void touch();
  void raise(event what);

 private:
  event_sink* sink_ = nullptr;
  std::string name_;
  std::string text_;
  std::string tip_;
  int index_;
  unsigned changes_ = 0;
  id which_;
  kind kind_;
  bool visible_;
  bool enabled_;
};

class button final : public control {
 public:
  using control::control;
  void set_text(std::string_view text);
};

/// A check box, or an option of several.
class check_box final : public control {
 public:
  using control::control;
  void set_text(std::string_view text);

  /// Whether it is checked.
  [[nodiscard]] bool value() const override { return value_; }
  void set_value(bool value);
  /// As `set_value`, raising nothing: the box follows a state that it only shows.
  void show_value(bool value);

 private:
  bool value_ = false;
};

class label final : public control {
 public:
  using control::control;
  void set_text(std::string_view text);

  /// A free text that is not shown.
  [[nodiscard]] const std::string& tag() const override { return tag_; }
  void set_tag(std::string_view tag) { tag_ = tag; }

 private:
  std::string tag_;
};

class text_box final : public control {
 public:
  using control::control;

  /// Puts the caret at the start of the text.
  void set_text(std::string_view text);
  /// As `set_text`, with the caret where typing leaves it: at `caret` characters, or (-1) at the end.
  void set_typed_text(std::string_view text, int caret);
  /// As `set_text`, where the text is another document and not the old one changed: nobody is to come back
  /// from the one to the other by undoing. Counts as one though the text is the same.
  void set_document(std::string_view text);
  [[nodiscard]] unsigned documents() const override { return documents_; }

  /// The selection in characters, a line end counting two.
  [[nodiscard]] int sel_start() const override { return sel_start_; }
  [[nodiscard]] int sel_length() const override { return sel_length_; }
  void set_selection(int start, int length);
  void select_all();
  /// As `set_selection`, and it comes into sight even where it was selected already and scrolled away since.
  void show_selection(int start, int length);
  [[nodiscard]] unsigned shown_selections() const override { return shown_selections_; }

  /// Of a box of many lines: the line that bears a mark, from 1; 0 for none. Raises nothing.
  [[nodiscard]] int marked_line() const override { return marked_line_; }
  void set_marked_line(int line);

 private:
  int sel_start_ = 0;
  int sel_length_ = 0;
  int marked_line_ = 0;
  unsigned documents_ = 0;
  unsigned shown_selections_ = 0;
};

class list_box final : public control {
 public:
  using control::control;

  [[nodiscard]] const std::vector<std::string>& rows() const override { return rows_; }
  [[nodiscard]] int row() const override { return row_; }  ///< the current line, -1 for none
  [[nodiscard]] const std::vector<int>& selected() const override { return selected_; }  ///< ascending
  [[nodiscard]] bool face_background() const override { return face_background_; }
  /// Replaces all lines; no line is current afterwards. Raises nothing.
  void set_rows(std::vector<std::string> rows);
  /// Removes a line and inserts another in its place, which is not selected. Raises nothing.
  void replace_row(int row, std::string_view text);
  /// Makes a line the one selected; -1, or a line that is not there, selects none. Raises a click for a line.
  void choose_row(int row);
  /// The current line, having been scrolled away, comes into sight; raises nothing.
  void show_row();
  /// Counts the lines that were chosen, or shown again, by the program.
  [[nodiscard]] unsigned shown_rows() const override { return shown_rows_; }
  /// The selection as the user made it; raises nothing.
  void set_row_selection(int current, std::vector<int> selected);
  void set_face_background(bool face);
  /// Counts the changes of the lines' texts alone.
  [[nodiscard]] unsigned row_changes() const override { return row_changes_; }

 private:
  std::vector<std::string> rows_;
  std::vector<int> selected_;
  int row_ = -1;
  unsigned row_changes_ = 0;
  unsigned shown_rows_ = 0;
  bool face_background_ = false;
};

/// A drop-down list, whose text is one of its entries.
class combo_box final : public control {
 public:
  using control::control;
  void set_text(std::string_view text);

  [[nodiscard]] const std::vector<std::string>& rows() const override { return rows_; }
  void set_rows(std::vector<std::string> rows);
  /// As of a list.
  [[nodiscard]] unsigned row_changes() const override { return row_changes_; }

 private:
  std::vector<std::string> rows_;
  unsigned row_changes_ = 0;
};

}  // namespace estructura
