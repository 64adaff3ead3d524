#include "guion/palabras.h"

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
      default: throw error_de_guion(std::string("no such escape: \\") + written[i]);
    }
  }
  throw error_de_guion("a closing quote is missing");
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

  valor whole() {
    valor value = next(true);
    if (!blanks_skipped().empty())
      throw error_de_guion("the expected value ends before: " + std::string(rest_));
    return value;
  }

 private:
  std::string_view blanks_skipped() {
    while (!rest_.empty() && is_blank(rest_.front())) rest_.remove_prefix(1);
    return rest_;
  }

  valor next(bool list_allowed) {
    if (blanks_skipped().empty()) throw error_de_guion("the expected value is missing");
    if (rest_.front() == '[' && list_allowed) return list();
    if (rest_.front() == '"') {
      std::size_t used = 0;
      valor value = texto(unquoted(rest_, used));
      rest_.remove_prefix(used);
      return value;
    }
    const std::string_view word = rest_.substr(0, rest_.find_first_of(list_allowed ? " \t" : " \t,]"));
    rest_.remove_prefix(word.size());
    if (word == "true" || word == "false") return logico(word == "true");
    if (const auto number = numero(word)) return entero(*number);
    throw error_de_guion("no value is written so (texts stand in double quotes): " + std::string(word));
  }

  valor list() {
    std::vector<valor> values;
    rest_.remove_prefix(1);
    if (!blanks_skipped().empty() && rest_.front() == ']') {
      rest_.remove_prefix(1);
      return {std::move(values)};
    }
    for (;;) {
      values.push_back(next(false));
      const char c = blanks_skipped().empty() ? '\0' : rest_.front();
      if (c != ',' && c != ']') throw error_de_guion("a list in brackets is not closed");
      rest_.remove_prefix(1);
      if (c == ']') return {std::move(values)};
    }
  }

  std::string_view rest_;
};

}  // namespace

valor texto(std::string_view text) {
  return {std::string(text)};
}
valor entero(std::int64_t number) {
  return {number};
}
valor logico(bool truth) {
  return {truth};
}

valor lista(const std::vector<std::string>& texts) {
  std::vector<valor> values;
  for (const std::string& text : texts) values.push_back(texto(text));
  return {std::move(values)};
}

valor lista(const std::vector<int>& numbers) {
  std::vector<valor> values;
  for (const int number : numbers) values.push_back(entero(number));
  return {std::move(values)};
}

std::string impreso(const valor& value) {
  if (const auto* const text = std::get_if<std::string>(&value.content)) return guiones::quoted(*text);
  if (const auto* const number = std::get_if<std::int64_t>(&value.content)) return std::to_string(*number);
  if (const auto* const truth = std::get_if<bool>(&value.content)) return *truth ? "true" : "false";
  std::string written = "[";
  for (const valor& member : std::get<std::vector<valor>>(value.content)) {
    if (written.size() > 1) written += ", ";
    written += impreso(member);
  }
  return written + ']';
}

valor leido(std::string_view written) {
  return value_reader(written).whole();
}

std::optional<std::int64_t> numero(std::string_view word) {
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

palabra renglon::next() {
  if (at_end()) throw error_de_guion("a word is missing");
  palabra word;
  std::size_t used = 0;
  if (rest_.front() == '"') {
    word.text = unquoted(rest_, used);
    if (used < rest_.size() && !is_blank(rest_[used]))
      throw error_de_guion("a blank is missing after a closing quote");
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

std::int64_t renglon::next_number(std::int64_t least, std::int64_t most) {
  const palabra word = next();
  const auto number = numero(word.text);
  if (!number) throw error_de_guion("no number: " + std::string(word.written));
  if (*number < least || *number > most) {
    throw error_de_guion("the number must lie in " + std::to_string(least) + ".." + std::to_string(most) +
                         ": " + std::string(word.written));
  }
  return *number;
}

void renglon::expect_end() const {
  if (!at_end()) throw error_de_guion("too many words: " + std::string(rest_));
}

void renglon::skip_blanks() {
  while (!rest_.empty() && is_blank(rest_.front())) rest_.remove_prefix(1);
}

}  // namespace estructura::guiones
