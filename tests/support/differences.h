// Where two machines differ, field by field, for the message of a failed comparison.
//
//   EXPECT_EQ(differences(wanted, got), "") << deshex(word);
//   // "\n  cpu.pc: wanted 5, got 6\n  regs[3]: wanted 24, got 28"
//
// Two machines that are equal give an empty text; `==` itself decides, so that a field missing in the walk
// below still fails a test.
#pragma once

#include <sstream>
#include <string>
#include <string_view>

#include "core/chipstate.h"

namespace estructura::support {

namespace detail {

template <class Value>
void compare(std::ostringstream& out, std::string_view name, const Value& wanted, const Value& got) {
  if (wanted != got) out << "\n  " << name << ": wanted " << +wanted << ", got " << +got;
}

template <class Cells>
void compare_cells(std::ostringstream& out, std::string_view name, const Cells& wanted, const Cells& got) {
  for (int i = 0; i < Cells::size(); ++i)
    compare(out, std::string(name) + "[" + std::to_string(i) + "]", wanted[i], got[i]);
}

}  // namespace detail

inline std::string differences(const chipstate& wanted, const chipstate& got) {
  if (wanted == got) return {};
  std::ostringstream out;
  const auto field = [&](std::string_view name, auto member) {
    detail::compare(out, name, wanted.*member, got.*member);
  };
  const auto cells = [&](std::string_view name, auto member) {
    detail::compare_cells(out, name, wanted.*member, got.*member);
  };
  const auto of_device = [&](std::string_view name, auto member) {
    detail::compare(out, name, wanted.devmodel.*member, got.devmodel.*member);
  };
  const auto of_cpu = [&](std::string_view name, auto member) {
    detail::compare(out, name, wanted.cpu.*member, got.cpu.*member);
  };
  of_device("devmodel.progmask", &device::progmask);
  of_device("devmodel.datamask", &device::datamask);
  of_device("devmodel.optmask", &device::optmask);
  of_device("devmodel.mask5", &device::mask5);
  of_device("devmodel.mask6", &device::mask6);
  of_device("devmodel.hasportc", &device::hasportc);
  of_device("devmodel.is16c5x", &device::is16c5x);
  of_device("devmodel.status_mask", &device::status_mask);
  of_device("devmodel.port_a_pins", &device::port_a_pins);
  of_device("devmodel.osccal_at_reset", &device::osccal_at_reset);
  of_device("devmodel.waking_pins", &device::waking_pins);
  of_device("devmodel.internal_khz", &device::internal_khz);
  of_device("devmodel.shares_pins", &device::shares_pins);
  cells("progmem", &chipstate::progmem);
  cells("breakpts", &chipstate::breakpts);
  cells("regs", &chipstate::regs);
  cells("bankregs", &chipstate::bankregs);
  of_cpu("pc", &core_registers::pc);
  of_cpu("w", &core_registers::w);
  of_cpu("option", &core_registers::option);
  of_cpu("trisa", &core_registers::trisa);
  of_cpu("trisb", &core_registers::trisb);
  of_cpu("trisc", &core_registers::trisc);
  cells("stack", &chipstate::stack);
  field("pdlatch", &chipstate::pdlatch);
  field("tolatch", &chipstate::tolatch);
  field("gpwuflatch", &chipstate::gpwuflatch);
  field("sleeping", &chipstate::sleeping);
  field("pina", &chipstate::pina);
  field("pinb", &chipstate::pinb);
  field("pinc", &chipstate::pinc);
  field("cycles", &chipstate::cycles);
  field("wdtcount", &chipstate::wdtcount);
  field("wdtlimit", &chipstate::wdtlimit);
  field("prescount", &chipstate::prescount);
  field("tockicount", &chipstate::tockicount);
  field("tockiperiod", &chipstate::tockiperiod);
  field("tockifreq", &chipstate::tockifreq);
  field("firststep", &chipstate::firststep);
  field("running", &chipstate::running);
  field("resumebp", &chipstate::resumebp);
  const std::string named = out.str();
  return named.empty() ? "\n  a field that differences() does not name" : named;
}

}  // namespace estructura::support
