#include "ui/inventory.h"

#include <charconv>

#include "core/devices.h"

namespace estructura {

namespace {

constexpr bool hidden = false;
constexpr bool shown = true;
constexpr bool disabled = false;

// clang-format off
constexpr std::array<declaration, id_count> inventory = {{
    {id::Frame7, "Frame7", 1, kind::frame, id::none, {}, ""},
    {id::sl, "sl", 2, kind::option, id::Frame7, {"Fuente", "Listado"}, ""},
    {id::clip, "clip", 1, kind::frame, id::Frame7, {}, ""},
    {id::tab, "tab", 1, kind::button, id::clip, {"|------&>"}, ""},
    {id::Copiar, "Copiar", 1, kind::button, id::clip, {"Copiar"}, ""},
    {id::Cortar, "Cortar", 1, kind::button, id::clip, {"Cortar"}, ""},
    {id::Pegar, "Pegar", 1, kind::button, id::clip, {"Pegar"}, ""},
    {id::source, "source", 1, kind::text, id::Frame7, {}, ""},
    {id::lst, "lst", 1, kind::text, id::Frame7, {}, "Click para ver en Memoria de Programa", hidden},
    {id::cargarasm, "cargarasm", 1, kind::button, id::Frame7, {"&Cargar ASM"}, "Cargar fichero .asm a código fuente"},
    {id::salvarasm, "salvarasm", 1, kind::button, id::Frame7, {"&Salvar ASM"}, "Salvar código fuente a fichero .asm"},
    {id::borrarasm, "borrarasm", 1, kind::button, id::Frame7, {"&Borrar ASM"}, "Borrar código fuente"},
    {id::desensamblar, "desensamblar", 1, kind::button, id::Frame7, {"<---"}, "Desensamblar"},
    {id::Ensamblar, "Ensamblar", 1, kind::button, id::Frame7, {"--->"}, "Ensamblar"},
    {id::mapa, "mapa", 1, kind::picture, id::Frame7, {}, "Pulsa para ir a la posición"},
    {id::MP, "MP", 1, kind::list, id::none, {}, "Simple click para seleccionar, doble para leer"},
    {id::Frame1, "Frame1", 1, kind::frame, id::none, {}, ""},
    {id::Label1, "Label1", 1, kind::label, id::Frame1, {"Direc."}, ""},
    {id::direc, "direc", 1, kind::text, id::Frame1, {"000"}, "Dirección en la memoria de programa"},
    {id::Label2, "Label2", 1, kind::label, id::Frame1, {"Instrucción"}, ""},
    {id::INS, "INS", 1, kind::text, id::Frame1, {}, "Instrucción en ensamblador"},
    {id::Label3, "Label3", 1, kind::label, id::Frame1, {"Código"}, ""},
    {id::codop, "codop", 1, kind::label, id::Frame1, {}, "Código de la instrucción"},
    {id::Entrarins, "Entrarins", 1, kind::button, id::Frame1, {"Entrar"}, "Introducir instrucción", shown, disabled},
    {id::borrarins, "borrarins", 1, kind::button, id::Frame1, {"Borrar"}, "Introducir instrucción"},
    {id::break_, "break", 1, kind::button, id::Frame1, {"Break"}, "Borrar posición de memoria"},
    {id::cargar, "cargar", 1, kind::button, id::Frame7, {"C&argar HEX"}, "Cargar fichero .hex a memoria de programa"},
    {id::salvar, "salvar", 1, kind::button, id::Frame7, {"Sal&var HEX"}, "Salvar memoria de programa a fichero .hex"},
    {id::borrar, "borrar", 1, kind::button, id::Frame7, {"B&orrar HEX"}, "Borrar memoria de programa"},
    {id::salvar16c84, "salvar16c84", 1, kind::button, id::Frame7, {"&HEX 16C84"}, "Salvar memoria de programa a fichero .hex para el 16c84"},
    {id::Frame2, "Frame2", 1, kind::frame, id::none, {}, ""},
    {id::nomre, "nomre", 1, kind::list, id::Frame2, {}, ""},
    {id::RE, "RE", 1, kind::list, id::Frame2, {}, "Pulsa para modificar"},
    {id::PIL, "PIL", 1, kind::list, id::Frame2, {}, "Pila del PIC"},
    {id::Label16, "Label16", 1, kind::label, id::Frame2, {"Dirección"}, ""},
    {id::dirdat, "dirdat", 1, kind::label, id::Frame2, {}, "Dirección en la memoria de datos"},
    {id::Label15, "Label15", 1, kind::label, id::Frame2, {"Dato"}, ""},
    {id::dat, "dat", 1, kind::text, id::Frame2, {}, "", shown, disabled},
    {id::entrardat, "entrardat", 1, kind::button, id::Frame2, {"Entrar"}, "Introducir dato en registro", shown, disabled},
    {id::nombres, "nombres", 1, kind::list, id::none, {}, ""},
    {id::dirmd, "dirmd", 2, kind::list, id::none, {}, ""},
    {id::MDP, "MDP", 1, kind::list, id::none, {}, "Pulsa para modificar"},
    {id::lpag, "lpag", 4, kind::label, id::none, {"0", "1", "2", "3"}, ""},
    {id::MD, "MD", 4, kind::list, id::none, {}, "Pulsa para modificar"},
    {id::TRISA, "TRISA", 1, kind::label, id::none, {"----1111"}, "Valor binario"},
    {id::TRISB, "TRISB", 1, kind::label, id::none, {"11111111"}, "Valor binario"},
    {id::TRISC, "TRISC", 1, kind::label, id::none, {"11111111"}, "Valor binario"},
    {id::loption, "loption", 1, kind::label, id::none, {"--CSA210"}, "*-*-TOCS-TOSE-PSA-PS2-PS1-PS0"},
    {id::OPT, "OPT", 1, kind::label, id::none, {"--111111"}, "Valor binario"},
    {id::lstatus, "lstatus", 1, kind::label, id::none, {"210odZDC"}, "PS2-PS1-PS0-/TO-/PD-Z-D-C"},
    {id::STATUS, "STATUS", 1, kind::label, id::none, {"00011000"}, ""},
    {id::BPA, "BPA", 1, kind::label, id::none, {"----0000"}, "Valor binario"},
    {id::BPB, "BPB", 1, kind::label, id::none, {"00000000"}, "Valor binario"},
    {id::BPC, "BPC", 1, kind::label, id::none, {"00000000"}, "Valor binario"},
    {id::PAGFSR, "PAGFSR", 1, kind::label, id::none, {"0"}, "Página de memoria"},
    {id::DIRFSR, "DIRFSR", 1, kind::label, id::none, {"00"}, "Dirección de memoria"},
    {id::INDF, "INDF", 1, kind::label, id::none, {"00"}, "Dato indirecto"},
    {id::Frame5, "Frame5", 1, kind::frame, id::none, {"Puertos"}, ""},
    {id::Label21, "Label21", 1, kind::label, id::Frame5, {"0"}, ""},
    {id::Label23, "Label23", 1, kind::label, id::Frame5, {"1"}, ""},
    {id::Label24, "Label24", 1, kind::label, id::Frame5, {"2"}, ""},
    {id::Label25, "Label25", 1, kind::label, id::Frame5, {"3"}, ""},
    {id::Label26, "Label26", 1, kind::label, id::Frame5, {"4"}, ""},
    {id::Label27, "Label27", 1, kind::label, id::Frame5, {"5"}, ""},
    {id::Label28, "Label28", 1, kind::label, id::Frame5, {"6"}, ""},
    {id::Label29, "Label29", 1, kind::label, id::Frame5, {"7"}, ""},
    {id::lp, "lp", 3, kind::label, id::Frame5, {"PA", "PB", "PC"}, ""},
    {id::PA, "PA", 4, kind::check, id::Frame5, {}, "Activar/desactivar bit"},
    {id::PB, "PB", 8, kind::check, id::Frame5, {}, "Activar/desactivar bit", shown, true, 7},
    {id::PC, "PC", 8, kind::check, id::Frame5, {}, ""},
    {id::Frame4, "Frame4", 1, kind::frame, id::none, {"TMR0"}, ""},
    {id::Label33, "Label33", 1, kind::label, id::Frame4, {"F"}, ""},
    {id::FR, "FR", 1, kind::text, id::Frame4, {"0"}, "Frecuencia de TOCKI"},
    {id::TOCKI, "TOCKI", 1, kind::button, id::Frame4, {"T0C&KI"}, "Generar pulso en TOCKI"},
    {id::Label22, "Label22", 1, kind::label, id::Frame4, {"Señal"}, ""},
    {id::SENTIM, "SENTIM", 1, kind::label, id::Frame4, {"Ext. Des."}, ""},
    {id::Label20, "Label20", 1, kind::label, id::Frame4, {"Divisor"}, ""},
    {id::divtim, "divtim", 1, kind::label, id::Frame4, {"1"}, ""},
    {id::Frame3, "Frame3", 1, kind::frame, id::none, {"PIC"}, ""},
    {id::eje1, "eje1", 1, kind::button, id::Frame3, {"Ejec. &1"}, "Ejecjutar una instrucción"},
    {id::ejecutar, "ejecutar", 1, kind::button, id::Frame3, {"Ejecu&tar"}, "Ejecutar de forma continua"},
    {id::MCLR, "MCLR", 1, kind::button, id::Frame3, {"&MCLR"}, "Reset por MCLR"},
    {id::WDT, "WDT", 1, kind::button, id::Frame3, {"&WDT"}, "Desbordamiento del Watchdog", shown, disabled},
    {id::por, "por", 1, kind::button, id::Frame3, {"PO&R"}, "Power on Reset"},
    {id::Label8, "Label8", 1, kind::label, id::Frame3, {"Ciclos"}, ""},
    {id::ciclos, "ciclos", 1, kind::label, id::Frame3, {"0"}, "Ciclos de Instrucción transcurridos"},
    {id::VISMP, "VISMP", 1, kind::check, id::Frame3, {"Programa Visible"}, ""},
    {id::Label9, "Label9", 1, kind::label, id::Frame3, {"Watchdog"}, ""},
    {id::contawdt, "contawdt", 1, kind::label, id::Frame3, {}, "Ciclos hasta desbordamiento del Watchdog"},
    {id::WATCHDOG, "WATCHDOG", 1, kind::check, id::Frame3, {"WDT / 128"}, "Activar/desactivar Watchdog"},
    {id::estsleep, "estsleep", 1, kind::check, id::Frame3, {"SLEEP"}, "PIC en modo SLEEP"},
    {id::PIC, "PIC", 1, kind::combo, id::Frame3, {catalogue[default_device].name}, "Selecciuona el PIC"},
    {id::Label14, "Label14", 1, kind::label, id::Frame3, {"Frecuencia"}, ""},
    {id::FREC, "FREC", 1, kind::text, id::Frame3, {"4000"}, "Frecuencia del sistema"},
    {id::Label19, "Label19", 1, kind::label, id::Frame3, {"KHz"}, ""},
    {id::fext, "fext", 1, kind::check, id::Frame3, {"Ext."}, "Activar/desactivar frecuencia interna", hidden},
    {id::CMCLR, "CMCLR", 1, kind::check, id::Frame3, {"MCLR"}, "Activar/desactivar MCLR", hidden},
    {id::FILHEX, "FILHEX", 1, kind::label, id::none, {"[sin nombre]"}, ""},
    {id::FILASM, "FILASM", 1, kind::label, id::none, {"[sin nombre]"}, ""},
    {id::Label5, "Label5", 1, kind::label, id::none, {"CÓDIGO FUENTE"}, ""},
    {id::Label10, "Label10", 1, kind::label, id::none, {"MEMORIA DE PROGRAMA"}, ""},
    {id::Label11, "Label11", 1, kind::label, id::none, {"MEMORIA DE DATOS"}, ""},
    {id::Label12, "Label12", 1, kind::label, id::none, {"PILA"}, ""},
    {id::Label13, "Label13", 1, kind::label, id::none, {"REGISTROS"}, ""},
    {id::Label4, "Label4", 1, kind::label, id::none, {"TOS"}, "Cabeza de la PILA"},
    {id::rotulo, "rotulo", 1, kind::label, id::none, {"Estructura 1.0 · Los autores de Estructura"}, ""},
    {id::fin, "fin", 1, kind::button, id::Frame7, {"&Fin"}, "Terminar"},
}};
// clang-format on

constexpr bool rows_stand_at_their_id() {
  for (int i = 0; i < id_count; ++i)
    if (inventory[static_cast<std::size_t>(i)].which != static_cast<id>(i)) return false;
  return true;
}
static_assert(rows_stand_at_their_id());

}  // namespace

const declaration& declared(id which) {
  return inventory[static_cast<std::size_t>(which)];
}

std::optional<control_place> find_control(std::string_view name) {
  const std::size_t open = name.find('(');
  const bool has_index = open != std::string_view::npos;
  int index = 0;
  if (has_index) {
    const char* const end = name.data() + name.size();
    const auto parsed = std::from_chars(name.data() + open + 1, end, index);
    const bool closed = parsed.ec == std::errc{} && parsed.ptr + 1 == end && *parsed.ptr == ')';
    if (!closed) return std::nullopt;
  }
  for (const declaration& row : inventory) {
    if (row.name != name.substr(0, open)) continue;
    const bool is_member = has_index == (row.count > 1) && index >= 0 && index < row.count;
    return is_member ? std::optional(control_place{row.which, index}) : std::nullopt;
  }
  return std::nullopt;
}

}  // namespace estructura
