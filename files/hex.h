// Intel HEX files of program memory, read and written.
//
//   const hex_reading met = carga(chip, "uno.hex");   // merges the file into chip.progmem
//   if (met.failed) ...                               // "Error en lectura"
//   for (const std::string& message : met.messages) ...
//   if (!salva(chip, "uno.hex")) ...                  // "Error en escritura"
//
// A record is two bytes a word, low byte first; its address counts bytes:
//
//   :04000000250C000AC1
//    | |   | |       checksum: all bytes of the record add up to 0 modulo 256
//    | |   | data: 0C25 0A00
//    | |   type: 00 data, 01 end
//    | byte address of the first word, high byte first
//    count of data bytes
//
// The reader is lenient on purpose: fields are numbers as far as they are hexadecimal, missing data is 0, a
// record with a wrong checksum is stored all the same. It leaves the memory that the file does not name
// alone. Left out: extended addresses (types 02 to 05), which no memory of 2048 words needs.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/chipstate.h"

namespace estructura {

/// What `extlinfic` makes of a line.
enum hex_code : int {
  hex_accepted = 0,
  hex_bad_format = 1,    ///< no ":" at the start, or a record type other than 00 and 01
  hex_bad_checksum = 2,  ///< stored all the same
  hex_bad_word = 3,      ///< a word of more than 12 bits; the words before it are stored
  hex_bad_address = 4,
  hex_end = 5
};

struct hex_reading {
  std::vector<std::string> messages;  ///< in the order met, in Spanish, for a box each
  bool failed = false;                ///< the file could not be read, or not to its end
};

/// Builds the data record of the words up to the first unprogrammed one, without line end. `address` is that
/// of the first word; one whose double does not fit 16 bits is a `machine_fault`.
void crealin(int address, const std::array<std::uint16_t, 8>& words, std::string& line);

/// Takes one line into program memory; a `hex_code`. A word past the end of program memory is a
/// `machine_fault`, with the words before it stored.
[[nodiscard]] int extlinfic(chipstate& chip, std::string_view line);

/// The bytes of a HEX file that are read: over a thousand times the longest that `salva` writes, and room for
/// those of the biggest chips, whose reader shall be told that they are meant for another.
inline constexpr std::size_t longest_hex_file = std::size_t{16} << 20U;

/// Reads a file into program memory, in the encodings that `common/file.h` knows and with line ends CR LF,
/// CR CR LF, LF or CR, up to the character 1A if it has one. The name may differ from the file's in case. Of
/// a file longer than `longest_hex_file` only the beginning is read; where neither a record nor a 1A in it
/// ends the reading, the reading fails.
[[nodiscard]] hex_reading carga(chipstate& chip, const std::string& path);

/// What turns the words of one record into its line; `crealin` or a relative of it.
using record_builder = void (*)(int address, const std::array<std::uint16_t, 8>& words, std::string& line);

/// As `salva`, with the records built by `build`.
[[nodiscard]] bool write_hex(const chipstate& chip, const std::string& path, record_builder build);

/// Writes program memory up to the device's last word; false when it could not be written, with the old file
/// whole. A name that differs in case from a file's replaces that file; a new file gets the lower-cased name.
[[nodiscard]] bool salva(const chipstate& chip, const std::string& path);

}  // namespace estructura
