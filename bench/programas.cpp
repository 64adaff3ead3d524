#include "bench/programas.h"

#include <array>
#include <stdexcept>
#include <string>

#include "asm/encodeins.h"

namespace estructura {

namespace {

// Everything a real program does, in about the proportions of one: set-up once, then a loop of arithmetic,
// common, banked and indirect registers, a call into a computed table, skips both taken and not, ports,
// timer, watchdog.
const std::vector<std::string_view> mixed_lines = {
    /* 000 */ "MOVLW 02",  // prescaler of TMR0, ratio 8, internal clock
    /* 001 */ "OPTION",
    /* 002 */ "MOVLW 00",
    /* 003 */ "TRIS 6",
    /* 004 */ "CLRF 08",
    /* 005 */ "MOVLW 10",
    /* 006 */ "MOVWF 04",
    /* 007 */ "CLRWDT",  // the loop
    /* 008 */ "INCF 08",
    /* 009 */ "MOVF 08,W",
    /* 00A */ "ANDLW 07",
    /* 00B */ "CALL 040",  // table
    /* 00C */ "MOVWF 06",  // to the port
    /* 00D */ "ADDWF 09",
    /* 00E */ "BTFSC 03,0",
    /* 00F */ "INCF 0A",
    /* 010 */ "MOVF 09,W",
    /* 011 */ "MOVWF 00",  // through FSR
    /* 012 */ "INCF 04",
    /* 013 */ "BSF 04,4",
    /* 014 */ "SUBWF 0B",
    /* 015 */ "RLF 0C",
    /* 016 */ "XORWF 0C,W",
    /* 017 */ "MOVWF 12",  // banked
    /* 018 */ "SWAPF 12,W",
    /* 019 */ "ADDWF 13",
    /* 01A */ "BTFSS 13,2",
    /* 01B */ "GOTO 01E",
    /* 01C */ "COMF 0D",
    /* 01D */ "RRF 0D",
    /* 01E */ "MOVF 01,W",  // the timer
    /* 01F */ "IORWF 0E",
    /* 020 */ "DECFSZ 0F",
    /* 021 */ "GOTO 023",
    /* 022 */ "CLRF 0E",
    /* 023 */ "CALL 030",  // plain subroutine
    /* 024 */ "GOTO 007",
    "NOP",
    "NOP",
    "NOP",
    "NOP",
    "NOP",
    "NOP",
    "NOP",
    "NOP",
    "NOP",
    "NOP",
    "NOP",
    /* 030 */ "MOVF 00,W",
    /* 031 */ "XORLW 5A",
    /* 032 */ "MOVWF 14",
    /* 033 */ "INCFSZ 15",
    /* 034 */ "BCF 06,1",
    /* 035 */ "RETLW 00",
    "NOP",
    "NOP",
    "NOP",
    "NOP",
    "NOP",
    "NOP",
    "NOP",
    "NOP",
    "NOP",
    "NOP",
    /* 040 */ "ADDWF 02",
    /* 041 */ "RETLW 3F",
    "RETLW 06",
    "RETLW 5B",
    "RETLW 4F",
    "RETLW 66",
    "RETLW 6D",
    "RETLW 7D",
    "RETLW 07",
};

// Nested delay loops, as every blinking light has them.
const std::vector<std::string_view> delay_lines = {
    "MOVLW 00", "TRIS 6", "COMF 06", "DECFSZ 08", "GOTO 003", "DECFSZ 09", "GOTO 003", "GOTO 002",
};

// One instruction that jumps to itself: the bare cost of a step.
const std::vector<std::string_view> tight_lines = {"GOTO 000"};

}  // namespace

std::span<const bench_program> bench_programs() {
  static const std::array<bench_program, 3> programs = {{
      {"mixed", true, mixed_lines},
      {"delay", false, delay_lines},
      {"tight", false, tight_lines},
  }};
  return programs;
}

void load_program(Estructura& window, const bench_program& program) {
  chipstate& chip = window.poke();
  const auto encoded = [](std::string_view line) {
    const int word = encodeins(line);
    if (word < 0) throw std::logic_error("no instruction: " + std::string(line));
    return static_cast<std::uint16_t>(word);
  };
  int address = 0;
  for (const std::string_view line : program.lines) chip.progmem[address++] = encoded(line);
  chip.progmem[chip.devmodel.progmask] = encoded("GOTO 000");
  if (program.watchdog) window.click(id::WATCHDOG);
}

}  // namespace estructura
