// What every fuzz target is made of: one function that takes any bytes, and a way to say that something is
// wrong.
//
// Built with the preset `fuzz` (clang) each target is a libFuzzer program; everywhere else it replays the
// files it is given, which is how ctest runs the corpora.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace estructura::fuzz {

inline std::string_view as_text(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

/// Ends the program when a rule does not hold, saying which.
inline void must(bool holds, const char* rule) {
  if (holds) return;
  std::fprintf(stderr, "broken: %s\n", rule);
  std::abort();
}

/// A source of small decisions read from the input; once it is used up every answer is 0.
class decisions {
 public:
  explicit decisions(std::string_view bytes) : bytes_(bytes) {}
  [[nodiscard]] bool left() const { return !bytes_.empty(); }
  /// 0..limit-1.
  int below(int limit) {
    if (bytes_.empty() || limit <= 0) return 0;
    int value = static_cast<unsigned char>(bytes_.front());
    bytes_.remove_prefix(1);
    if (limit > 256 && !bytes_.empty()) {
      value = value * 256 + static_cast<unsigned char>(bytes_.front());
      bytes_.remove_prefix(1);
    }
    return value % limit;
  }
  /// Up to `longest` bytes, as they stand.
  std::string text(int longest) {
    const auto count = static_cast<std::size_t>(below(longest + 1));
    const std::string_view part = bytes_.substr(0, count);
    bytes_.remove_prefix(part.size());
    return std::string(part);
  }

 private:
  std::string_view bytes_;
};

}  // namespace estructura::fuzz
