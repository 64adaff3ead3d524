// What the data sheets say of the 33 instructions, written down once more for the tests: nothing here comes
// from the table that the system itself reads.
#pragma once

#include <array>
#include <string_view>

namespace estructura::support {

enum class kind { none, port, file, file_dest, file_bit, literal8, literal9 };

struct expected_instruction {
  std::string_view mnemonic;
  kind operands;
  int base;  ///< the word with operands 0; TRIS counts from 0, so its port is the word
};

// clang-format off
inline constexpr std::array<expected_instruction, 33> expected_instructions = {{
    {"NOP", kind::none, 0x000},        {"OPTION", kind::none, 0x002},     {"SLEEP", kind::none, 0x003},
    {"CLRWDT", kind::none, 0x004},     {"TRIS", kind::port, 0x000},       {"MOVWF", kind::file, 0x020},
    {"CLRW", kind::none, 0x040},       {"CLRF", kind::file, 0x060},       {"SUBWF", kind::file_dest, 0x080},
    {"DECF", kind::file_dest, 0x0C0},  {"IORWF", kind::file_dest, 0x100}, {"ANDWF", kind::file_dest, 0x140},
    {"XORWF", kind::file_dest, 0x180}, {"ADDWF", kind::file_dest, 0x1C0}, {"MOVF", kind::file_dest, 0x200},
    {"COMF", kind::file_dest, 0x240},  {"INCF", kind::file_dest, 0x280},  {"DECFSZ", kind::file_dest, 0x2C0},
    {"RRF", kind::file_dest, 0x300},   {"RLF", kind::file_dest, 0x340},   {"SWAPF", kind::file_dest, 0x380},
    {"INCFSZ", kind::file_dest, 0x3C0},{"BCF", kind::file_bit, 0x400},    {"BSF", kind::file_bit, 0x500},
    {"BTFSC", kind::file_bit, 0x600},  {"BTFSS", kind::file_bit, 0x700},  {"RETLW", kind::literal8, 0x800},
    {"CALL", kind::literal8, 0x900},   {"GOTO", kind::literal9, 0xA00},   {"MOVLW", kind::literal8, 0xC00},
    {"IORLW", kind::literal8, 0xD00},  {"ANDLW", kind::literal8, 0xE00},  {"XORLW", kind::literal8, 0xF00},
}};
// clang-format on

}  // namespace estructura::support
