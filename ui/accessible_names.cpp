#include "ui/accessible_names.h"

#include <algorithm>

#include "common/text.h"
#include "ui/device_texts.h"

namespace estructura {

namespace {

struct spoken_texts {
  id which;
  std::string_view name;
  std::string_view description;
};

// What stands for what the record says:
//   %c  the caption, without the mark of its accelerator
//   %n  the member of the group
//   %p  the port: "Puerto A", "Puerto B" or "GPIO", "Puerto C"
//   %r  the register that is TRISB, or TRIS on the devices with one port
//   %s  what a pin's box does now: it is an input that the person sets, or an output that the program sets
//   %t  the tool-tip
// clang-format off
constexpr std::array<spoken_texts, id_count> texts = {{
    {id::Frame7, "Fuente y ficheros", "El código fuente o su listado, y los botones de los ficheros ASM y HEX."},
    {id::sl, "%c", "Elige qué se ve en el cuadro grande: el código fuente o el listado."},
    {id::clip, "Edición del fuente", "Botones para editar el código fuente."},
    {id::tab, "Insertar 15 espacios", "Inserta 15 espacios en el código fuente, donde está el cursor."},
    {id::Copiar, "%c", "Copia al portapapeles lo seleccionado en el código fuente."},
    {id::Cortar, "%c", "Lleva al portapapeles lo seleccionado en el código fuente."},
    {id::Pegar, "%c", "Pone el texto del portapapeles en el código fuente, en lugar de lo seleccionado."},
    {id::source, "Código fuente", "Programa en ensamblador. El tabulador pasa al control siguiente."},
    {id::lst, "Texto del listado", "Listado del último ensamblado. Al pasar a una línea, la memoria de programa va a su dirección."},
    {id::cargarasm, "%c", "Carga un fichero ASM en el código fuente."},
    {id::salvarasm, "%c", "Salva el código fuente en un fichero ASM."},
    {id::borrarasm, "%c", "Borra el código fuente."},
    {id::desensamblar, "Desensamblar", "Desensambla la memoria de programa en el código fuente."},
    {id::Ensamblar, "Ensamblar", "Ensambla el código fuente en la memoria de programa."},
    {id::mapa, "Mapa de la memoria de programa", "Con el ratón va a una dirección; con el teclado, el cuadro Direc."},
    {id::MP, "Memoria de programa", "Una línea por dirección: código e instrucción. Entrar lleva la instrucción a su cuadro."},
    {id::Frame1, "Entrada de instrucciones", "Cambia una instrucción o un punto de parada a mano."},
    {id::Label1, "%c", "Título del cuadro de la dirección de programa."},
    {id::direc, "Direc., dirección de programa", "Tres cifras hexadecimales. La memoria de programa va a esa dirección."},
    {id::Label2, "%c", "Título del cuadro de la instrucción."},
    {id::INS, "Instrucción", "Una instrucción en ensamblador. Entrar la guarda en la dirección de programa."},
    {id::Label3, "%c", "Título del código de la instrucción."},
    {id::codop, "Código de la instrucción", "Código hexadecimal de la instrucción escrita; tres interrogaciones si no es válida."},
    {id::Entrarins, "Entrar instrucción", "Guarda la instrucción en la dirección de programa y pasa a la siguiente."},
    {id::borrarins, "Borrar instrucción", "Deja sin programar la dirección de programa."},
    {id::break_, "Break, punto de parada", "Pone o quita el punto de parada de la dirección de programa. Tecla F9."},
    {id::cargar, "%c", "Carga un fichero HEX en la memoria de programa."},
    {id::salvar, "%c", "Salva la memoria de programa en un fichero HEX."},
    {id::borrar, "%c", "Borra la memoria de programa."},
    {id::salvar16c84, "%c", "Salva la memoria de programa en un fichero HEX para el 16C84."},
    {id::Frame2, "Registros y entrada de datos", "Registros del núcleo, pila, y el cuadro que cambia un registro."},
    {id::nomre, "Nombres de los registros", "Nombres de los registros del núcleo, en el orden de sus valores."},
    {id::RE, "Registros", "Valores de los registros del núcleo. Espacio o Entrar elige el que se va a cambiar."},
    {id::PIL, "Pila", "Los dos niveles de la pila, primero la cabeza."},
    {id::Label16, "%c", "Título del registro que se va a cambiar."},
    {id::dirdat, "Registro que se va a cambiar", "Nombre o dirección del registro elegido en las listas; vacío si no hay ninguno."},
    {id::Label15, "%c", "Título del cuadro del valor nuevo."},
    {id::dat, "Dato", "Valor nuevo, en hexadecimal, del registro elegido en las listas. Entrar lo guarda."},
    {id::entrardat, "Entrar dato", "Guarda el dato en el registro elegido."},
    {id::nombres, "Nombres de la memoria de datos", "Nombres de las direcciones 00 a 07, en el orden de sus valores."},
    {id::dirmd, "Direcciones %n0 a %nF", "Direcciones de la memoria de datos, en el orden de sus valores."},
    {id::MDP, "Memoria de datos 00 a 0F", "Valores comunes a todos los bancos. Espacio o Entrar elige el que se va a cambiar."},
    {id::lpag, "Banco %c", "Número del banco de la columna."},
    {id::MD, "Memoria de datos 10 a 1F, banco %n", "Valores del banco. Espacio o Entrar elige el que se va a cambiar."},
    {id::TRISA, "TRISA en binario", "Del bit 7 al 0: 1 es pin de entrada y 0 de salida; un guion, un bit que no existe."},
    {id::TRISB, "%r en binario", "Del bit 7 al 0: 1 es pin de entrada y 0 de salida; un guion, un bit que no existe."},
    {id::TRISC, "TRISC en binario", "Del bit 7 al 0: 1 es pin de entrada y 0 de salida."},
    {id::loption, "Leyenda de OPTION", "Nombres de los bits, del 7 al 0: %t."},
    {id::OPT, "OPTION en binario", "Del bit 7 al 0; un guion, un bit que no existe."},
    {id::lstatus, "Leyenda de STATUS", "Nombres de los bits, del 7 al 0: %t."},
    {id::STATUS, "STATUS en binario", "Del bit 7 al 0."},
    {id::BPA, "%p en binario", "Registro del puerto, del bit 7 al 0; un guion, un bit que no existe."},
    {id::BPB, "%p en binario", "Registro del puerto, del bit 7 al 0; un guion, un bit que no existe."},
    {id::BPC, "%p en binario", "Registro del puerto, del bit 7 al 0."},
    {id::PAGFSR, "Banco que señala FSR", "Banco de la memoria de datos que señala FSR."},
    {id::DIRFSR, "Dirección que señala FSR", "Dirección de la memoria de datos, dentro de su banco, que señala FSR."},
    {id::INDF, "INDF, dato indirecto", "Valor de la dirección que señala FSR."},
    {id::Frame5, "%c", "Los pines, una casilla por bit."},
    {id::Label21, "Bit %c", "Número del bit de la columna."},
    {id::Label23, "Bit %c", "Número del bit de la columna."},
    {id::Label24, "Bit %c", "Número del bit de la columna."},
    {id::Label25, "Bit %c", "Número del bit de la columna."},
    {id::Label26, "Bit %c", "Número del bit de la columna."},
    {id::Label27, "Bit %c", "Número del bit de la columna."},
    {id::Label28, "Bit %c", "Número del bit de la columna."},
    {id::Label29, "Bit %c", "Número del bit de la columna."},
    {id::lp, "%p", "Título de la fila de casillas del puerto."},
    {id::PA, "%p, bit %n", "%s"},
    {id::PB, "%p, bit %n", "%s"},
    {id::PC, "%p, bit %n", "%s"},
    {id::Frame4, "%c", "El temporizador: señal, divisor y entrada T0CKI."},
    {id::Label33, "%c", "Título del cuadro de la frecuencia de T0CKI."},
    {id::FR, "F, frecuencia de T0CKI en Hz", "Frecuencia de la señal T0CKI, en hercios, en decimal. Con 0 los pulsos se dan a mano."},
    {id::TOCKI, "%c", "Da un pulso en T0CKI."},
    {id::Label22, "%c", "Título de la señal que cuenta el temporizador."},
    {id::SENTIM, "Señal del temporizador", "Externa ascendente, externa descendente, o F partido por 4 si es interna."},
    {id::Label20, "%c", "Título del divisor del temporizador."},
    {id::divtim, "Divisor del temporizador", "Pulsos de la señal por cada cuenta del temporizador."},
    {id::Frame3, "%c", "Dispositivo, reloj, ejecución, resets y contadores."},
    {id::eje1, "%c", "Ejecuta una instrucción. Teclas F7 y F8."},
    {id::ejecutar, "%c", "Ejecuta de forma continua o, durante la ejecución, la para. Tecla F5."},
    {id::MCLR, "%c", "Reset por el pin MCLR."},
    {id::WDT, "%c", "Provoca el desbordamiento del watchdog."},
    {id::por, "%c", "Reset de encendido. Permite volver a cambiar la configuración."},
    {id::Label8, "%c", "Título de los ciclos de instrucción transcurridos."},
    {id::ciclos, "Ciclos transcurridos", "Ciclos de instrucción desde el último reset. Doble clic o Control 0 lo pone a cero."},
    {id::VISMP, "%c", "Muestra u oculta la lista de la memoria de programa."},
    {id::Label9, "%c", "Título de los ciclos que faltan para que desborde el watchdog."},
    {id::contawdt, "Watchdog, ciclos hasta que desborda", "Ciclos de instrucción que faltan; vacío si el watchdog está parado."},
    {id::WATCHDOG, "%c, watchdog", "Marcada, el watchdog está en marcha. El número es su divisor."},
    {id::estsleep, "%c", "Marcada, el chip duerme. Solo lo muestra."},
    {id::PIC, "PIC, dispositivo", "Dispositivo que se simula."},
    {id::Label14, "%c", "Título del cuadro de la frecuencia del oscilador."},
    {id::FREC, "Frecuencia en kHz", "Frecuencia del oscilador, en kilohercios, en decimal."},
    {id::Label19, "%c", "Unidad de la frecuencia: kilohercios."},
    {id::fext, "Ext., reloj externo", "Marcada, el reloj viene de fuera y la frecuencia se puede cambiar."},
    {id::CMCLR, "MCLR, pin de reset", "Marcada, el pin GP3 es la entrada de reset MCLR."},
    {id::FILHEX, "Fichero HEX", "Nombre del fichero de la memoria de programa."},
    {id::FILASM, "Fichero ASM", "Nombre del fichero del código fuente."},
    {id::Label5, "%c", "Título del panel del código fuente."},
    {id::Label10, "%c", "Título de la lista de la memoria de programa."},
    {id::Label11, "%c", "Título de las listas de la memoria de datos."},
    {id::Label12, "%c", "Título de la lista de la pila."},
    {id::Label13, "%c", "Título de la lista de los registros."},
    {id::Label4, "%c", "Señala la cabeza de la pila."},
    {id::rotulo, "%c", "Nombre y versión del programa, y quién lo ha hecho."},
    {id::fin, "%c", "Termina el programa. Antes pregunta si se salva lo modificado."},
}};
// clang-format on

constexpr bool every_control_has_its_texts() {
  for (int i = 0; i < id_count; ++i) {
    const spoken_texts& row = texts[static_cast<std::size_t>(i)];
    if (row.which != static_cast<id>(i) || row.name.empty() || row.description.empty()) return false;
  }
  return true;
}
static_assert(every_control_has_its_texts());

const spoken_texts& texts_of(id which) {
  return texts[static_cast<std::size_t>(which)];
}

void replace_all(std::string& text, std::string_view what, std::string_view with) {
  for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + with.size()))
    text.replace(at, what.size(), with);
}

std::string_view port_of(const control& record, const family& of) {
  const auto& ports = texts_of(of).ports;
  switch (record.which()) {
    case id::PB:
    case id::BPB: return ports[1];
    case id::PC:
    case id::BPC: return ports[2];
    case id::lp: return ports[static_cast<std::size_t>(record.index())];
    default: return ports[0];
  }
}

std::string caption_of(const control& record) {
  std::string caption = record.text();
  if (record.is() != kind::label) std::erase(caption, '&');
  return caption;
}

std::string filled_in(std::string_view pattern, const control& record, const family& of) {
  std::string text(pattern);
  if (text.find('%') == std::string::npos) return text;
  // What is filled in holds no further sign, but for captions and tool-tips, which come last.
  replace_all(text, "%n", std::to_string(record.index()));
  replace_all(text, "%p", port_of(record, of));
  replace_all(text, "%r", texts_of(of).tris6);
  replace_all(
      text, "%s",
      record.enabled() ? "Pin de entrada. Marcada, está a 1." : "Pin de salida, lo pone el programa.");
  replace_all(text, "%t", record.tip());
  replace_all(text, "%c", caption_of(record));
  return text;
}

}  // namespace

std::string accessible_name(const control& record, const family& of) {
  return filled_in(texts_of(record.which()).name, record, of);
}

std::string accessible_description(const control& record, const family& of) {
  return filled_in(texts_of(record.which()).description, record, of);
}

bool accessible_texts_vary(id which) {
  const spoken_texts& row = texts_of(which);
  return row.name.find('%') != std::string_view::npos || row.description.find('%') != std::string_view::npos;
}

// --- lines of lists ---

std::string bare_value(std::string_view shown) {
  std::string digits(shown);
  std::erase_if(digits, [](char c) { return c == ' ' || c == '-'; });
  return digits;
}

namespace {

/// A line of the program list: mark and address, word, instruction, with tab characters between.
std::string program_row(std::string_view line) {
  const std::size_t first = line.find('\t');
  const std::size_t second = first == std::string_view::npos ? first : line.find('\t', first + 1);
  std::string text = "dirección ";
  text += line.substr(1, first == std::string_view::npos ? first : first - 1);
  if (second == std::string_view::npos)
    text += ", sin programar";
  else
    text.append(", código ")
        .append(line.substr(first + 1, second - first - 1))
        .append(", ")
        .append(line.substr(second + 1));
  if (line.starts_with('*')) text += ", punto de parada";
  return text;
}

std::string value_text(std::string_view shown) {
  const std::string digits = bare_value(shown);
  return digits == "**" ? "sin valor propio" : "valor " + digits;
}

std::string row_of(Estructura& window, id list, int row) {
  const std::vector<std::string>& rows = window.look(list).rows();
  const auto at = static_cast<std::size_t>(row);
  return at < rows.size() ? rows[at] : std::string();
}

}  // namespace

std::string accessible_row(Estructura& window, id list, int index, int row) {
  const std::vector<std::string>& rows = window.look(list, index).rows();
  const auto at = static_cast<std::size_t>(row);
  if (row < 0 || at >= rows.size()) return {};
  const std::string& shown = rows[at];
  switch (list) {
    case id::MP:
      return program_row(shown) + (row == window.chip().cpu.pc ? ", la siguiente que se ejecuta" : "");
    case id::RE: return row_of(window, id::nomre, row) + ", " + value_text(shown);
    case id::PIL: return (row == 0 ? "cabeza de la pila, " : "segundo nivel, ") + value_text(shown);
    case id::nombres: return shown + ", dirección " + hexstr(row, 2);
    case id::dirmd: return "dirección " + shown;
    case id::MDP: {
      const std::string name = row_of(window, id::nombres, row);
      return (name.empty() ? "" : name + ", ") + "dirección " + hexstr(row, 2) + ", " + value_text(shown);
    }
    case id::MD:
      return "dirección " + hexstr(row + 16, 2) + ", banco " + std::to_string(index) + ", " +
             value_text(shown);
    default: return {};
  }
}

std::string accessible_map(const map_view& map) {
  const int end = std::min(map.scale, program_words);
  const auto count = [&](map_colour colour) {
    int found = 0;
    for (int a = 0; a < end; ++a) found += map.rows[a] == colour ? 1 : 0;
    return std::to_string(found);
  };
  const std::string marker =
      map.marker < 0 ? "Sin marca de la dirección actual" : "Dirección actual " + hexstr(map.marker, 3);
  return marker + "; puntos de parada: " + count(map_colour::blue) +
         "; otras direcciones programadas: " + count(map_colour::yellow) + ".";
}

}  // namespace estructura
