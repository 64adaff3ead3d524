// An array of fixed size whose index is always checked: an index outside it is a `machine_fault`.
//
//   bounded_array<std::int16_t, 16> regs{};
//   regs[3] = 24;        // fine
//   regs[16] = 0;        // throws machine_fault
//
// Left out on purpose: everything a std::array has beyond indexing, walking and comparing.
#pragma once

#include <cstddef>

#include "common/fault.h"

namespace estructura {

template <class T, std::size_t N>
struct bounded_array {
  T cells[N];

  /// The cell of an index 0..N-1; any other index, negative ones included, throws `machine_fault`.
  constexpr T& operator[](int i) { return cells[checked(i)]; }
  constexpr const T& operator[](int i) const { return cells[checked(i)]; }

  static constexpr int size() { return static_cast<int>(N); }
  constexpr T* begin() { return cells; }
  constexpr T* end() { return cells + N; }
  constexpr const T* begin() const { return cells; }
  constexpr const T* end() const { return cells + N; }
  constexpr void fill(const T& value) {
    for (T& cell : cells) cell = value;
  }
  bool operator==(const bounded_array&) const = default;

 private:
  static constexpr std::size_t checked(int i) {
    const auto index = static_cast<std::size_t>(i);
    if (index >= N) [[unlikely]]
      throw_fault("index out of bounds");
    return index;
  }
};

}  // namespace estructura
