#include "files/hex.h"

#include <algorithm>

#include "common/checked.h"
#include "common/fault.h"
#include "common/file.h"
#include "common/number.h"
#include "common/text.h"

namespace estructura {

namespace {

constexpr std::string_view end_record = ":00000001FF";
constexpr std::string_view line_end = "\r\n";
constexpr std::string_view blanks = " \t";
constexpr int highest_high_byte = 15;  // words have 12 bits

// One byte per character, whatever the text holds: fields are counted in characters, and those beyond ASCII
// are no digits, whichever they are.
std::string one_byte_per_character(std::string_view utf8) {
  std::string out;
  out.reserve(utf8.size());
  while (!utf8.empty()) {
    const std::size_t length = byte_of_char(utf8, 1);
    const bool ascii = static_cast<unsigned char>(utf8.front()) < 0x80;
    out.push_back(ascii ? utf8.front() : '?');
    utf8.remove_prefix(length);
  }
  return out;
}

// A field that begins at a position, or as much of it as the line has.
std::string_view cut(std::string_view line, std::size_t at, std::size_t length) {
  return at < line.size() ? line.substr(at, length) : std::string_view{};
}

// The nearest whole number to half of a value that is not negative, halves to the even one: 3 gives 2, 5
// gives 2.
int half_to_even(int value) {
  const int below = value / 2;
  return value % 2 != 0 && below % 2 != 0 ? below + 1 : below;
}

bool adds_up(int checksum, int sum) {
  return ((checksum + sum) & 0xFF) == 0;
}

// The two bytes of word `i` of a record's data.
struct word_bytes {
  int low;
  int high;
};

word_bytes bytes_of_word(std::string_view data, int i) {
  const auto at = static_cast<std::size_t>(i) * 4;
  return {valhex(cut(data, at, 2)), valhex(cut(data, at + 2, 2))};
}

// Walks the items of a file's text. An item ends at a line end or a comma, and blanks and tabs around it are
// dropped; one that begins with a double quote runs to the next quote, whatever stands between.
class item_reader {
 public:
  explicit item_reader(std::string_view text) : rest_(text) {}

  [[nodiscard]] bool at_end() const { return rest_.empty(); }

  std::string_view next() {
    skip_blanks();
    if (rest_.starts_with('"')) return quoted();
    const std::string_view item = trim(rest_.substr(0, rest_.find_first_of(",\r\n")), blanks);
    rest_.remove_prefix(std::min(rest_.size(), rest_.find_first_of(",\r\n")));
    skip_separator();
    return item;
  }

 private:
  std::string_view quoted() {
    rest_.remove_prefix(1);
    const std::string_view item = rest_.substr(0, rest_.find('"'));
    rest_.remove_prefix(std::min(rest_.size(), item.size() + 1));
    skip_blanks();
    skip_separator();
    return item;
  }
  void skip_blanks() { rest_.remove_prefix(std::min(rest_.size(), rest_.find_first_not_of(blanks))); }
  // The line end at the end of the file starts no item, so what ends an item goes with it.
  void skip_separator() {
    if (rest_.starts_with(line_end))
      rest_.remove_prefix(line_end.size());
    else if (!rest_.empty() && std::string_view(",\r\n").find(rest_.front()) != std::string_view::npos)
      rest_.remove_prefix(1);
  }

  std::string_view rest_;
};

const char* message_of(int code) {
  switch (code) {
    case hex_bad_format: return "Formato incorrecto.";
    case hex_bad_word: return "Código de operación no valido.";
    case hex_bad_address: return "Dirección no valida.";
    default: return nullptr;
  }
}

/// Takes item after item until a code ends the reading, with its message if it has one, or the text does.
/// `whole`: the text is all of the file; the end of a part of it is not to be spoken of. Whether the reading
/// came to an end: at a code, or at that of the file.
bool take_items(chipstate& chip, std::string_view text, bool whole, std::vector<std::string>& messages) {
  bool checksum_error = false;
  for (item_reader items(text); !items.at_end();) {
    const int code = extlinfic(chip, items.next());
    if (code == hex_bad_checksum) {
      checksum_error = true;
    } else if (code != hex_accepted) {
      // The checksums of a file that was read to its end record, or given up, are deliberately not spoken of.
      if (const char* message = message_of(code)) messages.emplace_back(message);
      return true;
    }
  }
  if (!whole) return false;
  messages.emplace_back("No hay código de fin.");
  if (checksum_error) messages.emplace_back("Error de checksum.");
  return true;
}

}  // namespace

void crealin(int address, const std::array<std::uint16_t, 8>& words, std::string& line) {
  const int byte_address = checked16(2 * checked16(address));
  std::string data;
  int count = 0;
  int sum = 0;
  for (const int word : words) {
    if (word == unprogrammed) break;
    data += hexstr(word % 256, 2) + hexstr(word / 256, 2);
    sum += word % 256 + word / 256;
    count += 2;
  }
  const int high = byte_address / 256;
  const int low = byte_address % 256;
  sum += count + high + low;
  line = ":" + hexstr(count, 2) + hexstr(high, 2) + hexstr(low, 2) + "00" + data +
         hexstr((256 - sum % 256) % 256, 2);
}

int extlinfic(chipstate& chip, std::string_view text) {
  const std::string characters = one_byte_per_character(text);
  std::string_view line = characters;
  if (!line.starts_with(':')) return hex_bad_format;
  line.remove_prefix(1);
  // Two digits are at most FF; four may be negative.
  const int count = valhex(cut(line, 0, 2));
  const int address = valhex(cut(line, 2, 4));
  const int type = valhex(cut(line, 6, 2));
  const int checksum = valhex(line.substr(line.size() - std::min<std::size_t>(line.size(), 2)));
  if (address < 0 || address > 2 * chip.devmodel.progmask) return hex_bad_address;

  int sum = address / 256 + count + address % 256 + type;
  if (type == 1) return adds_up(checksum, sum) ? hex_end : hex_bad_checksum;
  if (type != 0) return hex_bad_format;

  std::string_view data = cut(line, 8, std::string_view::npos);
  data.remove_suffix(std::min<std::size_t>(data.size(), 2));
  const int first = half_to_even(address);
  const int words = half_to_even(count);
  for (int i = 0; i < words; ++i) {
    const auto [low, high] = bytes_of_word(data, i);
    sum += low + high;
  }
  for (int i = 0; i < words; ++i) {
    const auto [low, high] = bytes_of_word(data, i);
    if (high > highest_high_byte) return hex_bad_word;
    chip.progmem[first + i] = static_cast<std::uint16_t>(high * 256 + low);
  }
  return adds_up(checksum, sum) ? hex_accepted : hex_bad_checksum;
}

hex_reading carga(chipstate& chip, const std::string& path) {
  hex_reading met;
  std::string bytes;
  bool whole = false;
  if (!read_start(find_file(path), bytes, longest_hex_file, whole)) {
    met.failed = true;
    return met;
  }
  if (const std::size_t length = text_length(bytes); length < bytes.size()) {
    bytes.resize(length);
    whole = true;
  }
  // The last line of a part may be half a line.
  if (!whole) bytes.resize(bytes.find_last_of("\r\n") + 1);
  text_encoding encoding{};
  const std::string text = decode_text(bytes, encoding);
  // A file without a single item has nothing to read its first one from.
  if (text.empty()) {
    met.failed = true;
    return met;
  }
  try {
    met.failed = !take_items(chip, text, whole, met.messages);
  } catch (const machine_fault&) {
    met.failed = true;
  }
  return met;
}

bool write_hex(const chipstate& chip, const std::string& path, record_builder build) {
  const int last = chip.devmodel.progmask;
  std::string text;
  try {
    for (int a = 0; a <= last;) {
      std::array<std::uint16_t, 8> words{};
      words.fill(unprogrammed);
      int copied = 0;
      for (std::uint16_t& word : words) {
        if (a + copied > last || chip.progmem[a + copied] == unprogrammed) break;
        word = chip.progmem[a + copied];
        ++copied;
      }
      if (copied > 0) {
        std::string line;
        build(a, words, line);
        text.append(line).append(line_end);
      }
      a += std::max(copied, 1);
    }
  } catch (const machine_fault&) {
    return false;
  }
  text.append(end_record).append(line_end);
  return save_file(find_file(path), text);
}

bool salva(const chipstate& chip, const std::string& path) {
  return write_hex(chip, path, crealin);
}

}  // namespace estructura
