#include "guion/words.h"

#include <charconv>
#include <utility>

namespace estructura::guiones {

namespace {

bool is_blank(char c) {
  return c == ' ' || c == '\t';
}

/// Reads a quoted text from its opening quote on; `used` receives the bytes it takes, both quotes included.
std::string unquoted(std::string_view written, std::size_t& used) {
  std::string text;
  for (std::size_t i = 1; i < written.size(); ++i) {
    const char c = written[i];
    if (c == '"') {
      used = i + 1;
      return text;
    }
    if (c != '\\') {
      text += c;
      continue;
    }
    if (++i == written.size()) break;
    switch (written[i]) {
      case '"': text += '"'; break;
      case '\\': text += '\\'; break;
      case 'r': text += '\r'; break;
      case 'n': text += '\n'; break;
      case 't': text += '\t'; break;
      default: throw script_error(std::string("no such escape: \\") + written[i]);
    }
  }
  throw script_error("a closing quote is missing");
}

std::string quoted(std::string_view text) {
  std::string written = "\"";
  for (const char c : text) {
    switch (c) {
      case '"': written += "\\\""; break;
      case '\\': written += "\\\\"; break;
      case '\r': written += "\\r"; break;
      case '\n': written += "\\n"; break;
      case '\t': written += "\\t"; break;
      default: written += c;
    }
  }
  return written + '"';
}

/// Takes values off the front of a text.
class value_reader {
 public:
  explicit value_reader(std::string_view written) : rest_(written) {}

  script_value whole() {
    script_value value = next(true);
    if (!blanks_skipped().empty())
      throw script_error("the expected value ends before: " + std::string(rest_));
    return value;
  }

 private:
  std::string_view blanks_skipped() {
    while (!rest_.empty() && is_blank(rest_.front())) rest_.remove_prefix(1);
    return rest_;
  }

  script_value next(bool list_allowed) {
    if (blanks_skipped().empty()) throw script_error("the expected value is missing");
    if (rest_.front() == '[' && list_allowed) return list();
    if (rest_.front() == '"') {
      std::size_t used = 0;
      script_value value = text_value(unquoted(rest_, used));
      rest_.remove_prefix(used);
      return value;
    }
    const std::string_view word = rest_.substr(0, rest_.find_first_of(list_allowed ? " \t" : " \t,]"));
    rest_.remove_prefix(word.size());
    if (word == "true" || word == "false") return truth_value(word == "true");
    if (const auto number = read_number(word)) return number_value(*number);
    throw script_error("no value is written so (texts stand in double quotes): " + std::string(word));
  }

  script_value list() {
    std::vector<script_value> values;
    rest_.remove_prefix(1);
    if (!blanks_skipped().empty() && rest_.front() == ']') {
      rest_.remove_prefix(1);
      return {std::move(values)};
    }
    for (;;) {
      values.push_back(next(false));
      const char c = blanks_skipped().empty() ? '\0' : rest_.front();
      if (c != ',' && c != ']') throw script_error("a list in brackets is not closed");
      rest_.remove_prefix(1);
      if (c == ']') return {std::move(values)};
    }
  }

  std::string_view rest_;
};

}  // namespace

script_value text_value(std::string_view text) {
  return {std::string(text)};
}
script_value number_value(std::int64_t number) {
  return {number};
}
script_value truth_value(bool truth) {
  return {truth};
}

script_value sequence_value(const std::vector<std::string>& texts) {
  std::vector<script_value> values;
  for (const std::string& text : texts) values.push_back(text_value(text));
  return {std::move(values)};
}

script_value sequence_value(const std::vector<int>& numbers) {
  std::vector<script_value> values;
  for (const int number : numbers) values.push_back(number_value(number));
  return {std::move(values)};
}

std::string printed(const script_value& value) {
  if (const auto* const text = std::get_if<std::string>(&value.content)) return guiones::quoted(*text);
  if (const auto* const number = std::get_if<std::int64_t>(&value.content)) return std::to_string(*number);
  if (const auto* const truth = std::get_if<bool>(&value.content)) return *truth ? "true" : "false";
  std::string written = "[";
  for (const script_value& member : std::get<std::vector<script_value>>(value.content)) {
    if (written.size() > 1) written += ", ";
    written += printed(member);
  }
  return written + ']';
}

script_value read_value(std::string_view written) {
  return value_reader(written).whole();
}

std::optional<std::int64_t> read_number(std::string_view word) {
  const bool negative = word.starts_with('-');
  if (negative) word.remove_prefix(1);
  const bool hex = word.starts_with("0x") || word.starts_with("0X");
  if (hex) word.remove_prefix(2);
  if (word.empty() || word.front() == '-') return std::nullopt;
  std::int64_t number = 0;
  const char* const end = word.data() + word.size();
  const auto parsed = std::from_chars(word.data(), end, number, hex ? 16 : 10);
  if (parsed.ec != std::errc{} || parsed.ptr != end) return std::nullopt;
  return negative ? -number : number;
}

script_word script_line::next() {
  if (at_end()) throw script_error("a word is missing");
  script_word word;
  std::size_t used = 0;
  if (rest_.front() == '"') {
    word.text = unquoted(rest_, used);
    if (used < rest_.size() && !is_blank(rest_[used]))
      throw script_error("a blank is missing after a closing quote");
  } else {
    while (used < rest_.size() && !is_blank(rest_[used])) {
      if (rest_[used] == '(' && rest_.substr(used + 1).starts_with('"')) {
        std::size_t name = 0;
        unquoted(rest_.substr(used + 1), name);
        used += name;
      }
      ++used;
    }
    word.text = rest_.substr(0, used);
  }
  word.written = rest_.substr(0, used);
  rest_.remove_prefix(used);
  skip_blanks();
  return word;
}

std::int64_t script_line::next_number(std::int64_t least, std::int64_t most) {
  const script_word word = next();
  const auto number = read_number(word.text);
  if (!number) throw script_error("no number: " + std::string(word.written));
  if (*number < least || *number > most) {
    throw script_error("the number must lie in " + std::to_string(least) + ".." + std::to_string(most) +
                       ": " + std::string(word.written));
  }
  return *number;
}

void script_line::expect_end() const {
  if (!at_end()) throw script_error("too many words: " + std::string(rest_));
}

void script_line::skip_blanks() {
  while (!rest_.empty() && is_blank(rest_.front())) rest_.remove_prefix(1);
}

}  // namespace estructura::guiones
