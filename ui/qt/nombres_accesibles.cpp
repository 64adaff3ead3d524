#include "ui/qt/nombres_accesibles.h"

#include <array>
#include <string_view>
#include <utility>

#include <QLabel>

#include "ui/qt/accesible.h"
#include "ui/qt/lista.h"
#include "ui/qt/texto_qt.h"

namespace estructura {

namespace {

struct voz {
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
constexpr std::array<voz, id_count> voces = {{
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

constexpr bool every_control_has_its_voice() {
  for (int i = 0; i < id_count; ++i) {
    const voz& row = voces[static_cast<std::size_t>(i)];
    if (row.which != static_cast<id>(i) || row.name.empty() || row.description.empty()) return false;
  }
  return true;
}
static_assert(every_control_has_its_voice());

const voz& voz_de(id which) {
  return voces[static_cast<std::size_t>(which)];
}

/// Whether what is said follows the record: most does not, and the values change at every frame of a run.
bool cambiante(id which) {
  const voz& row = voz_de(which);
  return row.name.find('%') != std::string_view::npos || row.description.find('%') != std::string_view::npos;
}

/// Titles and what they stand beside. Of lists Qt does not tell whom they are labelled by.
constexpr std::array<std::pair<id, id>, 12> titulos = {{{id::Label5, id::source},
                                                        {id::Label1, id::direc},
                                                        {id::Label2, id::INS},
                                                        {id::Label3, id::codop},
                                                        {id::Label14, id::FREC},
                                                        {id::Label9, id::contawdt},
                                                        {id::Label8, id::ciclos},
                                                        {id::Label33, id::FR},
                                                        {id::Label22, id::SENTIM},
                                                        {id::Label20, id::divtim},
                                                        {id::Label16, id::dirdat},
                                                        {id::Label15, id::dat}}};

QString puerto(const control& record, bool is16c5x) {
  int port = 0;
  switch (record.which()) {
    case id::PB:
    case id::BPB: port = 1; break;
    case id::PC:
    case id::BPC: port = 2; break;
    case id::lp: port = record.index(); break;
    default: break;
  }
  if (port == 1 && !is16c5x) return QStringLiteral("GPIO");
  return QStringLiteral("Puerto ") + QLatin1Char(static_cast<char>('A' + port));
}

QString completa(std::string_view pattern, const control& record, bool is16c5x) {
  QString text = a_qt(pattern);
  // The same order as above; what is filled in holds no further sign, but for captions and tool-tips, which
  // come last.
  text.replace(QLatin1String("%n"), QString::number(record.index()));
  if (text.contains(QLatin1String("%p"))) text.replace(QLatin1String("%p"), puerto(record, is16c5x));
  text.replace(QLatin1String("%r"), QLatin1String(is16c5x ? "TRISB" : "TRIS"));
  text.replace(QLatin1String("%s"), record.enabled() ? QStringLiteral("Pin de entrada. Marcada, está a 1.")
                                                     : QStringLiteral("Pin de salida, lo pone el programa."));
  text.replace(QLatin1String("%t"), a_qt(record.tip()));
  if (text.contains(QLatin1String("%c"))) {
    QString caption = a_qt(record.text());
    if (record.is() != kind::label) caption.remove(QLatin1Char('&'));
    text.replace(QLatin1String("%c"), caption);
  }
  return text;
}

}  // namespace

QString nombre_accesible(const control& record, bool is16c5x) {
  return completa(voz_de(record.which()).name, record, is16c5x);
}

QString descripcion_accesible(const control& record, bool is16c5x) {
  return completa(voz_de(record.which()).description, record, is16c5x);
}

// --- lines of lists ---

namespace {

/// A line of the program list: mark and address, word, instruction, with tab characters between.
QString fila_de_programa(const QString& line) {
  const QStringList columns = line.split(QLatin1Char('\t'));
  QString text = QStringLiteral("dirección ") + columns[0].mid(1);
  if (columns.size() < 3)
    text += QStringLiteral(", sin programar");
  else
    text += QStringLiteral(", código %1, %2").arg(columns[1], columns[2]);
  if (columns[0].startsWith(QLatin1Char('*'))) text += QStringLiteral(", punto de parada");
  return text;
}

QString hex2(int value) {
  return QStringLiteral("%1").arg(value, 2, 16, QLatin1Char('0')).toUpper();
}

/// The value as it is read aloud: the signs before it only align it.
QString valor(const QString& shown) {
  QString digits = shown;
  digits.remove(QLatin1Char(' ')).remove(QLatin1Char('-'));
  if (digits == QLatin1String("**")) return QStringLiteral("sin valor propio");
  return QStringLiteral("valor ") + digits;
}

QString fila(Estructura& window, id list, int row) {
  const std::vector<std::string>& rows = window.look(list).rows();
  const auto at = static_cast<std::size_t>(row);
  return at < rows.size() ? a_qt(rows[at]) : QString();
}

}  // namespace

QString fila_accesible(Estructura& window, id list, int index, int row) {
  const std::vector<std::string>& rows = window.look(list, index).rows();
  const auto at = static_cast<std::size_t>(row);
  if (row < 0 || at >= rows.size()) return {};
  const QString shown = a_qt(rows[at]);
  switch (list) {
    case id::MP:
      return fila_de_programa(shown) +
             (row == window.chip().cpu.pc ? QStringLiteral(", la siguiente que se ejecuta") : QString());
    case id::RE: return fila(window, id::nomre, row) + QStringLiteral(", ") + valor(shown);
    case id::PIL:
      return (row == 0 ? QStringLiteral("cabeza de la pila, ") : QStringLiteral("segundo nivel, ")) +
             valor(shown);
    case id::nombres: return shown + QStringLiteral(", dirección ") + hex2(row);
    case id::dirmd: return QStringLiteral("dirección ") + shown;
    case id::MDP: {
      const QString name = fila(window, id::nombres, row);
      return (name.isEmpty() ? QString() : name + QStringLiteral(", ")) +
             QStringLiteral("dirección %1, %2").arg(hex2(row), valor(shown));
    }
    case id::MD:
      return QStringLiteral("dirección %1, banco %2, %3").arg(hex2(row + 16)).arg(index).arg(valor(shown));
    default: return {};
  }
}

// --- widgets ---

nombres_accesibles::nombres_accesibles(Estructura& window, buscador find)
    : window_(window), find_(std::move(find)) {
  instala_accesibles();
}

void nombres_accesibles::enlaza() {
  for (const control& record : window_.look_all()) {
    if (record.is() != kind::list) continue;
    const auto* const view = static_cast<vista_lista*>(find_(record.which(), record.index()));
    const auto say = [this, view, which = record.which(), index = record.index()](int row) {
      QString text = fila_accesible(window_, which, index, row);
      constexpr int marks = 32;
      if (row < marks && (view->marcadas() >> row & 1U) != 0) text += QStringLiteral(", ha cambiado");
      return text;
    };
    static_cast<modelo_lista*>(view->model())->voz = say;
  }
  for (const auto& [title, field] : titulos) static_cast<QLabel*>(find_(title, 0))->setBuddy(find_(field, 0));
}

void nombres_accesibles::actualiza() {
  const std::vector<control>& controls = window_.look_all();
  const bool is16c5x = window_.chip().devmodel.is16c5x;
  const bool all = seen_.empty() || is16c5x != is16c5x_;
  is16c5x_ = is16c5x;
  seen_.resize(controls.size());
  for (std::size_t i = 0; i < controls.size(); ++i) {
    const control& record = controls[i];
    if (!all && (seen_[i] == record.changes() || !cambiante(record.which()))) continue;
    seen_[i] = record.changes();
    QWidget& widget = *find_(record.which(), record.index());
    // Each setting is told to whoever listens, be it the same text.
    if (const QString name = nombre_accesible(record, is16c5x); widget.accessibleName() != name)
      widget.setAccessibleName(name);
    if (const QString text = descripcion_accesible(record, is16c5x); widget.accessibleDescription() != text)
      widget.setAccessibleDescription(text);
  }
}

}  // namespace estructura
