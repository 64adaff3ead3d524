// The inventory: every control with its kind, frame, text, tip and flags, once more as a table, against a
// window before its start-up and after it.
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/test_window.h"

namespace estructura {
namespace {

constexpr std::string_view form;  // stands on the form itself, in no frame

struct row {
  std::string_view name;
  kind is;
  std::string_view frame;
  std::string_view text;
  std::string_view tip;
};

// clang-format off
const std::vector<row> inventory = {
    // Source and listing.
    {"Frame7", kind::frame, form, "", ""},
    {"sl(0)", kind::option, "Frame7", "Fuente", ""},
    {"sl(1)", kind::option, "Frame7", "Listado", ""},
    {"lst", kind::text, "Frame7", "", "Click para ver en Memoria de Programa"},
    {"clip", kind::frame, "Frame7", "", ""},
    {"tab", kind::button, "clip", "|------&>", ""},
    {"Pegar", kind::button, "clip", "Pegar", ""},
    {"Cortar", kind::button, "clip", "Cortar", ""},
    {"Copiar", kind::button, "clip", "Copiar", ""},
    {"source", kind::text, "Frame7", "", ""},
    {"salvar16c84", kind::button, "Frame7", "&HEX 16C84", "Salvar memoria de programa a fichero .hex para el 16c84"},
    {"cargarasm", kind::button, "Frame7", "&Cargar ASM", "Cargar fichero .asm a código fuente"},
    {"salvarasm", kind::button, "Frame7", "&Salvar ASM", "Salvar código fuente a fichero .asm"},
    {"borrarasm", kind::button, "Frame7", "&Borrar ASM", "Borrar código fuente"},
    {"desensamblar", kind::button, "Frame7", "<---", "Desensamblar"},
    {"Ensamblar", kind::button, "Frame7", "--->", "Ensamblar"},
    {"mapa", kind::picture, "Frame7", "", "Pulsa para ir a la posición"},
    {"borrar", kind::button, "Frame7", "B&orrar HEX", "Borrar memoria de programa"},
    {"fin", kind::button, "Frame7", "&Fin", "Terminar"},
    {"salvar", kind::button, "Frame7", "Sal&var HEX", "Salvar memoria de programa a fichero .hex"},
    {"cargar", kind::button, "Frame7", "C&argar HEX", "Cargar fichero .hex a memoria de programa"},
    // Ports.
    {"Frame5", kind::frame, form, "Puertos", ""},
    {"PA(0)", kind::check, "Frame5", "", "Activar/desactivar bit"},
    {"PA(1)", kind::check, "Frame5", "", "Activar/desactivar bit"},
    {"PA(2)", kind::check, "Frame5", "", "Activar/desactivar bit"},
    {"PA(3)", kind::check, "Frame5", "", "Activar/desactivar bit"},
    {"PB(0)", kind::check, "Frame5", "", ""},
    {"PB(1)", kind::check, "Frame5", "", ""},
    {"PB(2)", kind::check, "Frame5", "", ""},
    {"PB(3)", kind::check, "Frame5", "", ""},
    {"PB(4)", kind::check, "Frame5", "", ""},
    {"PB(5)", kind::check, "Frame5", "", ""},
    {"PB(6)", kind::check, "Frame5", "", ""},
    {"PB(7)", kind::check, "Frame5", "", "Activar/desactivar bit"},
    {"PC(0)", kind::check, "Frame5", "", ""},
    {"PC(1)", kind::check, "Frame5", "", ""},
    {"PC(2)", kind::check, "Frame5", "", ""},
    {"PC(3)", kind::check, "Frame5", "", ""},
    {"PC(4)", kind::check, "Frame5", "", ""},
    {"PC(5)", kind::check, "Frame5", "", ""},
    {"PC(6)", kind::check, "Frame5", "", ""},
    {"PC(7)", kind::check, "Frame5", "", ""},
    {"lp(0)", kind::label, "Frame5", "PA", ""},
    {"lp(1)", kind::label, "Frame5", "PB", ""},
    {"lp(2)", kind::label, "Frame5", "PC", ""},
    {"Label21", kind::label, "Frame5", "0", ""},
    {"Label23", kind::label, "Frame5", "1", ""},
    {"Label24", kind::label, "Frame5", "2", ""},
    {"Label25", kind::label, "Frame5", "3", ""},
    {"Label26", kind::label, "Frame5", "4", ""},
    {"Label27", kind::label, "Frame5", "5", ""},
    {"Label28", kind::label, "Frame5", "6", ""},
    {"Label29", kind::label, "Frame5", "7", ""},
    // Timer 0.
    {"Frame4", kind::frame, form, "TMR0", ""},
    {"FR", kind::text, "Frame4", "0", "Frecuencia de TOCKI"},
    {"TOCKI", kind::button, "Frame4", "T0C&KI", "Generar pulso en TOCKI"},
    {"Label33", kind::label, "Frame4", "F", ""},
    {"Label22", kind::label, "Frame4", "Señal", ""},
    {"SENTIM", kind::label, "Frame4", "Ext. Des.", ""},
    {"Label20", kind::label, "Frame4", "Divisor", ""},
    {"divtim", kind::label, "Frame4", "1", ""},
    // Chip control.
    {"Frame3", kind::frame, form, "PIC", ""},
    {"VISMP", kind::check, "Frame3", "Programa Visible", ""},
    {"eje1", kind::button, "Frame3", "Ejec. &1", "Ejecjutar una instrucción"},
    {"por", kind::button, "Frame3", "PO&R", "Power on Reset"},
    {"MCLR", kind::button, "Frame3", "&MCLR", "Reset por MCLR"},
    {"WDT", kind::button, "Frame3", "&WDT", "Desbordamiento del Watchdog"},
    {"ejecutar", kind::button, "Frame3", "Ejecu&tar", "Ejecutar de forma continua"},
    {"fext", kind::check, "Frame3", "Ext.", "Activar/desactivar frecuencia interna"},
    {"CMCLR", kind::check, "Frame3", "MCLR", "Activar/desactivar MCLR"},
    {"PIC", kind::combo, "Frame3", "16C57", "Selecciuona el PIC"},
    {"FREC", kind::text, "Frame3", "4000", "Frecuencia del sistema"},
    {"Label19", kind::label, "Frame3", "KHz", ""},
    {"Label14", kind::label, "Frame3", "Frecuencia", ""},
    {"estsleep", kind::check, "Frame3", "SLEEP", "PIC en modo SLEEP"},
    {"WATCHDOG", kind::check, "Frame3", "WDT / 128", "Activar/desactivar Watchdog"},
    {"Label9", kind::label, "Frame3", "Watchdog", ""},
    {"contawdt", kind::label, "Frame3", "", "Ciclos hasta desbordamiento del Watchdog"},
    {"Label8", kind::label, "Frame3", "Ciclos", ""},
    {"ciclos", kind::label, "Frame3", "0", "Ciclos de Instrucción transcurridos"},
    // Data entry.
    {"Frame2", kind::frame, form, "", ""},
    {"dat", kind::text, "Frame2", "", ""},
    {"entrardat", kind::button, "Frame2", "Entrar", "Introducir dato en registro"},
    {"dirdat", kind::label, "Frame2", "", "Dirección en la memoria de datos"},
    {"Label16", kind::label, "Frame2", "Dirección", ""},
    {"Label15", kind::label, "Frame2", "Dato", ""},
    {"PIL", kind::list, "Frame2", "", "Pila del PIC"},
    {"nomre", kind::list, "Frame2", "", ""},
    {"RE", kind::list, "Frame2", "", "Pulsa para modificar"},
    // Instruction entry. The tips of the two buttons are the wrong way round, and stay so.
    {"Frame1", kind::frame, form, "", ""},
    {"borrarins", kind::button, "Frame1", "Borrar", "Introducir instrucción"},
    {"break", kind::button, "Frame1", "Break", "Borrar posición de memoria"},
    {"Entrarins", kind::button, "Frame1", "Entrar", "Introducir instrucción"},
    {"INS", kind::text, "Frame1", "", "Instrucción en ensamblador"},
    {"direc", kind::text, "Frame1", "000", "Dirección en la memoria de programa"},
    {"codop", kind::label, "Frame1", "", "Código de la instrucción"},
    {"Label3", kind::label, "Frame1", "Código", ""},
    {"Label2", kind::label, "Frame1", "Instrucción", ""},
    {"Label1", kind::label, "Frame1", "Direc.", ""},
    // Memory and registers.
    {"nombres", kind::list, form, "", ""},
    {"dirmd(0)", kind::list, form, "", ""},
    {"dirmd(1)", kind::list, form, "", ""},
    {"MD(0)", kind::list, form, "", "Pulsa para modificar"},
    {"MD(1)", kind::list, form, "", "Pulsa para modificar"},
    {"MD(2)", kind::list, form, "", "Pulsa para modificar"},
    {"MD(3)", kind::list, form, "", "Pulsa para modificar"},
    {"MDP", kind::list, form, "", "Pulsa para modificar"},
    {"MP", kind::list, form, "", "Simple click para seleccionar, doble para leer"},
    {"FILHEX", kind::label, form, "[sin nombre]", ""},
    {"FILASM", kind::label, form, "[sin nombre]", ""},
    {"Label5", kind::label, form, "CÓDIGO FUENTE", ""},
    {"Label4", kind::label, form, "TOS", "Cabeza de la PILA"},
    {"lpag(0)", kind::label, form, "0", ""},
    {"lpag(1)", kind::label, form, "1", ""},
    {"lpag(2)", kind::label, form, "2", ""},
    {"lpag(3)", kind::label, form, "3", ""},
    {"TRISA", kind::label, form, "----1111", "Valor binario"},
    {"TRISB", kind::label, form, "11111111", "Valor binario"},
    {"TRISC", kind::label, form, "11111111", "Valor binario"},
    {"loption", kind::label, form, "--CSA210", "*-*-TOCS-TOSE-PSA-PS2-PS1-PS0"},
    {"lstatus", kind::label, form, "210odZDC", "PS2-PS1-PS0-/TO-/PD-Z-D-C"},
    {"OPT", kind::label, form, "--111111", "Valor binario"},
    {"STATUS", kind::label, form, "00011000", ""},
    {"BPA", kind::label, form, "----0000", "Valor binario"},
    {"BPB", kind::label, form, "00000000", "Valor binario"},
    {"BPC", kind::label, form, "00000000", "Valor binario"},
    {"PAGFSR", kind::label, form, "0", "Página de memoria"},
    {"DIRFSR", kind::label, form, "00", "Dirección de memoria"},
    {"INDF", kind::label, form, "00", "Dato indirecto"},
    {"Label13", kind::label, form, "REGISTROS", ""},
    {"Label12", kind::label, form, "PILA", ""},
    {"Label11", kind::label, form, "MEMORIA DE DATOS", ""},
    {"Label10", kind::label, form, "MEMORIA DE PROGRAMA", ""},
};
// clang-format on

const std::set<std::string_view> hidden = {"lst", "fext", "CMCLR"};
const std::set<std::string_view> disabled = {"WDT", "dat", "entrardat", "Entrarins"};

const control& found(Estructura& view, std::string_view name) {
  const auto place = find_control(name);
  EXPECT_TRUE(place) << "no control " << name;
  return place ? view.look(place->which, place->index) : view.look(id::Label1);
}

TEST(inventory, has_every_control_with_its_kind_frame_text_and_tip) {
  support::fake_desktop desktop;
  Estructura view(desktop);
  for (const row& r : inventory) {
    const control& c = found(view, r.name);
    const id frame = declared(c.which()).frame;
    EXPECT_EQ(c.name(), r.name);
    EXPECT_EQ(c.is(), r.is) << r.name;
    EXPECT_EQ(c.text(), r.text) << r.name;
    EXPECT_EQ(c.tip(), r.tip) << r.name;
    EXPECT_EQ(frame == id::none ? form : declared(frame).name, r.frame) << r.name;
  }
}

TEST(inventory, has_nothing_else_but_the_banner) {
  support::fake_desktop desktop;
  Estructura view(desktop);
  std::set<std::string> expected = {"rotulo"};
  for (const row& r : inventory) EXPECT_TRUE(expected.insert(std::string(r.name)).second) << r.name;
  std::set<std::string> standing;
  for (const control& c : view.look_all()) EXPECT_TRUE(standing.insert(c.name()).second) << c.name();
  EXPECT_EQ(standing, expected);
  EXPECT_EQ(view.look(id::rotulo).is(), kind::label);
  // Version and authorship in one line.
  EXPECT_EQ(view.look(id::rotulo).text(), "Estructura 1.0 · Los autores de Estructura");
}

TEST(inventory, starts_with_its_flags_and_values) {
  support::fake_desktop desktop;
  Estructura view(desktop);
  for (const row& r : inventory) {
    const control& c = found(view, r.name);
    EXPECT_EQ(c.visible(), !hidden.contains(r.name)) << r.name;
    EXPECT_EQ(c.enabled(), !disabled.contains(r.name)) << r.name;
    EXPECT_EQ(c.value(), r.name == "sl(0)") << r.name;
    EXPECT_EQ(c.tag(), "") << r.name;
    EXPECT_EQ(c.row(), -1) << r.name;
  }
}

TEST(Form_Load, changes_only_what_the_start_up_says) {
  support::test_window w;
  for (const row& r : inventory) {
    const control& c = w.at(r.name);
    // The list is on the reset vector, and the address box follows it.
    EXPECT_EQ(c.text(), r.name == "direc" ? "7FF" : r.text) << r.name;
    EXPECT_EQ(c.tip(), r.tip) << r.name;
    EXPECT_EQ(c.visible(), !hidden.contains(r.name)) << r.name;
    EXPECT_EQ(c.enabled(), !disabled.contains(r.name)) << r.name;
    EXPECT_EQ(c.value(), r.name == "sl(0)" || r.name == "VISMP") << r.name;
    EXPECT_EQ(c.row(), r.name == "MP" ? 2047 : -1) << r.name;
    EXPECT_EQ(c.face_background(), r.name == "MD(1)" || r.name == "MD(2)" || r.name == "MD(3)") << r.name;
  }
}

}  // namespace
}  // namespace estructura
