// The inventory of the window: every control, declared once.
//
//   declared(id::PB).count         -> 8
//   declared(id::eje1).texts[0]    -> "Ejec. &1"
//
// The order of the table is the order in which the Tab key walks the controls. The file dialog is no control:
// its filters stand with the documents.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "ui/control.h"

namespace estructura {

enum class id : std::uint8_t {
  Frame7,
  sl,
  clip,
  tab,
  Copiar,
  Cortar,
  Pegar,
  source,
  lst,
  cargarasm,
  salvarasm,
  borrarasm,
  desensamblar,
  Ensamblar,
  mapa,
  MP,
  Frame1,
  Label1,
  direc,
  Label2,
  INS,
  Label3,
  codop,
  Entrarins,
  borrarins,
  break_,
  cargar,
  salvar,
  borrar,
  salvar16c84,
  Frame2,
  nomre,
  RE,
  PIL,
  Label16,
  dirdat,
  Label15,
  dat,
  entrardat,
  nombres,
  dirmd,
  MDP,
  lpag,
  MD,
  TRISA,
  TRISB,
  TRISC,
  loption,
  OPT,
  lstatus,
  STATUS,
  BPA,
  BPB,
  BPC,
  PAGFSR,
  DIRFSR,
  INDF,
  Frame5,
  Label21,
  Label23,
  Label24,
  Label25,
  Label26,
  Label27,
  Label28,
  Label29,
  lp,
  PA,
  PB,
  PC,
  Frame4,
  Label33,
  FR,
  TOCKI,
  Label22,
  SENTIM,
  Label20,
  divtim,
  Frame3,
  eje1,
  ejecutar,
  MCLR,
  WDT,
  por,
  Label8,
  ciclos,
  VISMP,
  Label9,
  contawdt,
  WATCHDOG,
  estsleep,
  PIC,
  Label14,
  FREC,
  Label19,
  fext,
  CMCLR,
  FILHEX,
  FILASM,
  Label5,
  Label10,
  Label11,
  Label12,
  Label13,
  Label4,
  rotulo,
  fin,
  none
};

/// Number of names; members of a group share one.
inline constexpr int id_count = static_cast<int>(id::none);

struct declaration {
  id which;
  std::string_view name;
  int count;  ///< members of the group, 1 for a control of its own
  kind is;
  id frame;                               ///< none: stands on the form itself
  std::array<std::string_view, 4> texts;  ///< caption or initial text by member; a single one serves all
  std::string_view tip;
  bool visible = true;
  bool enabled = true;
  int tip_member = -1;  ///< the one member that has the tip; -1: all
};

const declaration& declared(id which);

/// The lists of names and addresses: there is nothing to do in them, and the values beside them tell both.
constexpr bool skipped_by_tab(id which) {
  return which == id::nomre || which == id::nombres || which == id::dirmd;
}

/// One control: its name, and its place within its group.
struct control_place {
  id which = id::none;
  int index = 0;
  bool operator==(const control_place&) const = default;
};

/// The control that a name means, "eje1" or "PB(3)"; nothing when there is none.
[[nodiscard]] std::optional<control_place> find_control(std::string_view name);

}  // namespace estructura
