// The words of a guion: how a line is cut, how a number or an expected value is written, how a value is
// printed.
//
//   script_line line(R"(type INS "MOVLW 5")");
//   line.next().text                    -> "type", "INS", "MOVLW 5"
//   read_number("0x1F")                 -> 31
//   printed(read_value(R"([1, 2])"))         -> "[1, 2]"
//
// A word is bare or in double quotes. A quote inside a bare word is an ordinary character, except that the
// quoted name of file("a b") and exists("a b") belongs to the word, blanks included.
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace estructura::guiones {

/// What is wrong with a script or with what it found: the text behind FILE:LINE.
class script_error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A value looked at: a text, a number, a boolean, or a list of such.
struct script_value {
  std::variant<std::string, std::int64_t, bool, std::vector<script_value>> content;
  bool operator==(const script_value&) const = default;
};

script_value text_value(std::string_view text);
script_value number_value(std::int64_t number);
script_value truth_value(bool truth);
script_value sequence_value(const std::vector<std::string>& texts);
script_value sequence_value(const std::vector<int>& numbers);

/// The value as `show` prints it.
std::string printed(const script_value& value);

/// A value written as printed; throws when it is no such value or more follows it.
script_value read_value(std::string_view written);

/// A decimal or 0x-hexadecimal number, with its sign; nothing when the word is no number.
std::optional<std::int64_t> read_number(std::string_view word);

/// A word of a line: what it stands for (quotes and escapes undone) and how it was written.
struct script_word {
  std::string text;
  std::string_view written;
};

/// A line read word by word. The text must outlive it.
class script_line {
 public:
  explicit script_line(std::string_view line) : rest_(line) { skip_blanks(); }

  [[nodiscard]] bool at_end() const { return rest_.empty(); }
  /// What has not been read yet, from its first non-blank on.
  [[nodiscard]] std::string_view rest() const { return rest_; }
  /// The next word; throws when there is none.
  script_word next();
  /// The next word as a number within the limits; throws otherwise.
  std::int64_t next_number(std::int64_t least, std::int64_t most);
  /// Throws when words are left.
  void expect_end() const;

 private:
  void skip_blanks();

  std::string_view rest_;
};

}  // namespace estructura::guiones
