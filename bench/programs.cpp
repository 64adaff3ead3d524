#include "bench/programs.h"

#include <array>
#include <stdexcept>
#include <string>

#include "asm/encodeins.h"

namespace estructura {

namespace {

// Everything a real program does, in about the proportions of one: set-up once, then a loop of arithmetic,
// common, banked and indirect registers, a call into a computed table, skips both taken and not, ports,
// timer, watchdog.
// The codes of a display's digits, behind the computed jump into them.
std::vector<std::string_view> with_display_codes(std::vector<std::string_view> lines) {
  for (const std::string_view line : {"ADDWF 02", "RETLW 3F", "RETLW 06", "RETLW 5B", "RETLW 4F", "RETLW 66",
                                      "RETLW 6D", "RETLW 7D", "RETLW 07"})
    lines.push_back(line);
  return lines;
}

const std::vector<std::string_view> mixed_lines = with_display_codes({
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
    // 040: the codes
});

// Nested delay loops, as every blinking light has them.
const std::vector<std::string_view> delay_lines = {
    "MOVLW 00", "TRIS 6", "COMF 06", "DECFSZ 08", "GOTO 003", "DECFSZ 09", "GOTO 003", "GOTO 002",
};

// One instruction that jumps to itself: the bare cost of a step.
const std::vector<std::string_view> tight_lines = {"GOTO 000"};

// Two jumps that are none to themselves.
const std::vector<std::string_view> jump_lines = {"GOTO 001", "GOTO 000"};

// Codes of a display from a table reached by a computed jump.
const std::vector<std::string_view> table_lines = with_display_codes({
    /* 000 */ "MOVLW 00", "TRIS 6", "CLRF 08",
    /* 003 */ "MOVF 08,W", "CALL 00A", "MOVWF 06", "INCF 08", "BCF 08,3", "GOTO 003", "NOP",
    // 00A: the codes
});

// Waiting for TMR0 to change, with the prescaler at 4 and the instruction clock.
const std::vector<std::string_view> polled_lines = {
    /* 000 */ "MOVLW 01",  "OPTION",
    /* 002 */ "MOVF 01,W", "XORWF 08,W", "BTFSC 03,2", "GOTO 002",
    "MOVF 01,W",           "MOVWF 08",   "GOTO 002"};

// The prescaler at TMR0, which nobody reads.
const std::vector<std::string_view> prescaled_timer_lines = {
    /* 000 */ "MOVLW 07", "OPTION",
    /* 002 */ "INCF 08",  "INCFSZ 09", "GOTO 002", "INCF 0A", "GOTO 002"};

// The prescaler at the watchdog, which the loop clears.
const std::vector<std::string_view> prescaled_watchdog_lines = {
    /* 000 */ "MOVLW 0B", "OPTION",
    /* 002 */ "CLRWDT",   "INCF 08", "INCFSZ 09", "GOTO 002", "INCF 0A", "GOTO 002"};

// Edges at T0CKI counted with a prescaler and waited for.
const std::vector<std::string_view> pulses_lines = {
    /* 000 */ "MOVLW 20",  "OPTION",
    /* 002 */ "MOVF 01,W", "XORWF 08,W", "BTFSC 03,2", "GOTO 002",
    "MOVF 01,W",           "MOVWF 08",   "GOTO 002"};

// Every register of every bank through FSR and INDF.
const std::vector<std::string_view> indirect_lines = {
    /* 000 */ "MOVLW 10", "MOVWF 04",
    /* 002 */ "INCF 00",  "MOVF 00,W", "INCF 04", "BSF 04,4", "GOTO 002"};

// Pins toggled as fast as the chip can.
const std::vector<std::string_view> pins_lines = {
    /* 000 */ "MOVLW 00", "TRIS 6",
    /* 002 */ "COMF 08",  "MOVF 08,W", "MOVWF 06", "BSF 06,0", "BCF 06,0", "GOTO 002"};

// A line driven open-drain, as slow serial links are: its direction is written instead of its latch.
const std::vector<std::string_view> open_drain_lines = {
    /* 000 */ "CLRF 06",
    /* 001 */ "MOVLW FF", "TRIS 6", "BTFSC 06,0", "NOP", "MOVLW FE", "TRIS 6", "GOTO 001"};

// Nothing but the jump on the reset vector: what runs where no program was loaded.
const std::vector<std::string_view> blank_lines = {};

}  // namespace

std::span<const bench_program> bench_shapes() {
  static const std::array<bench_program, 13> shapes = {{
      {"mixed", true, mixed_lines},
      {"delay", false, delay_lines},
      {"tight", false, tight_lines},
      {"jumps", false, jump_lines},
      {"table", false, table_lines},
      {"polled", false, polled_lines},
      {"prescaled_timer", false, prescaled_timer_lines},
      {"prescaled_watchdog", true, prescaled_watchdog_lines},
      {"pulses", false, pulses_lines, "25000"},
      {"indirect", false, indirect_lines},
      {"pins", false, pins_lines},
      {"open_drain", false, open_drain_lines},
      {"blank", false, blank_lines},
  }};
  return shapes;
}

std::span<const bench_program> bench_programs() {
  return bench_shapes().first(3);
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
  window.type(id::FR, program.t0cki_hz);
}

}  // namespace estructura
