#include "ui/qt/text/spanish.h"

#include <string_view>

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

namespace estructura {

namespace {

struct phrase {
  std::string_view context;
  std::string_view source;
  const char* spanish;
};

// In the words of the window: it says "salvar" and "fichero". Accelerators are kept apart within each dialog.
constexpr phrase phrases[] = {
    // Buttons of boxes, by the desktop that names them.
    {"QPlatformTheme", "OK", "Aceptar"},
    {"QPlatformTheme", "Save", "Salvar"},
    {"QPlatformTheme", "Save All", "Salvar todo"},
    {"QPlatformTheme", "Open", "Abrir"},
    {"QPlatformTheme", "&Yes", "&Sí"},
    {"QPlatformTheme", "Yes to &All", "Sí a &todo"},
    {"QPlatformTheme", "&No", "&No"},
    {"QPlatformTheme", "N&o to All", "N&o a todo"},
    {"QPlatformTheme", "Abort", "Interrumpir"},
    {"QPlatformTheme", "Retry", "Reintentar"},
    {"QPlatformTheme", "Ignore", "Ignorar"},
    {"QPlatformTheme", "Close", "Cerrar"},
    {"QPlatformTheme", "Cancel", "Cancelar"},
    {"QPlatformTheme", "Discard", "Descartar"},
    {"QPlatformTheme", "Help", "Ayuda"},
    {"QPlatformTheme", "Apply", "Aplicar"},
    {"QPlatformTheme", "Reset", "Restablecer"},
    {"QPlatformTheme", "Restore Defaults", "Valores iniciales"},
    {"QGnomeTheme", "&OK", "&Aceptar"},
    {"QGnomeTheme", "&Save", "&Salvar"},
    {"QGnomeTheme", "&Cancel", "&Cancelar"},
    {"QGnomeTheme", "&Close", "C&errar"},
    {"QGnomeTheme", "Close without Saving", "Cerrar sin salvar"},
    {"QDialogButtonBox", "OK", "Aceptar"},
    {"QMessageBox", "OK", "Aceptar"},
    {"QMessageBox", "Show Details...", "Mostrar los detalles..."},
    {"QMessageBox", "Hide Details...", "Ocultar los detalles..."},

    // Context menus of texts.
    {"QLineEdit", "&Undo", "&Deshacer"},
    {"QLineEdit", "&Redo", "&Rehacer"},
    {"QLineEdit", "Cu&t", "Cor&tar"},
    {"QLineEdit", "&Copy", "&Copiar"},
    {"QLineEdit", "&Paste", "&Pegar"},
    {"QLineEdit", "Delete", "Borrar"},
    {"QLineEdit", "Select All", "Seleccionar todo"},
    {"QWidgetTextControl", "&Undo", "&Deshacer"},
    {"QWidgetTextControl", "&Redo", "&Rehacer"},
    {"QWidgetTextControl", "Cu&t", "Cor&tar"},
    {"QWidgetTextControl", "&Copy", "&Copiar"},
    {"QWidgetTextControl", "Copy &Link Location", "Copiar la dirección del en&lace"},
    {"QWidgetTextControl", "&Paste", "&Pegar"},
    {"QWidgetTextControl", "Delete", "Borrar"},
    {"QWidgetTextControl", "Select All", "Seleccionar todo"},
    {"QUnicodeControlCharacterMenu", "Insert Unicode control character",
     "Insertar carácter de control Unicode"},
    {"QUnicodeControlCharacterMenu", "LRM Left-to-right mark", "LRM Marca de izquierda a derecha"},
    {"QUnicodeControlCharacterMenu", "RLM Right-to-left mark", "RLM Marca de derecha a izquierda"},
    {"QUnicodeControlCharacterMenu", "ZWJ Zero width joiner", "ZWJ Unión de anchura cero"},
    {"QUnicodeControlCharacterMenu", "ZWNJ Zero width non-joiner", "ZWNJ Separación de anchura cero"},
    {"QUnicodeControlCharacterMenu", "ZWSP Zero width space", "ZWSP Espacio de anchura cero"},
    {"QUnicodeControlCharacterMenu", "LRE Start of left-to-right embedding",
     "LRE Principio de inclusión de izquierda a derecha"},
    {"QUnicodeControlCharacterMenu", "RLE Start of right-to-left embedding",
     "RLE Principio de inclusión de derecha a izquierda"},
    {"QUnicodeControlCharacterMenu", "LRO Start of left-to-right override",
     "LRO Principio de orden forzado de izquierda a derecha"},
    {"QUnicodeControlCharacterMenu", "RLO Start of right-to-left override",
     "RLO Principio de orden forzado de derecha a izquierda"},
    {"QUnicodeControlCharacterMenu", "PDF Pop directional formatting", "PDF Fin de formato direccional"},
    {"QUnicodeControlCharacterMenu", "LRI Left-to-right isolate", "LRI Aislamiento de izquierda a derecha"},
    {"QUnicodeControlCharacterMenu", "RLI Right-to-left isolate", "RLI Aislamiento de derecha a izquierda"},
    {"QUnicodeControlCharacterMenu", "FSI First strong isolate", "FSI Aislamiento del primero fuerte"},
    {"QUnicodeControlCharacterMenu", "PDI Pop directional isolate", "PDI Fin de aislamiento direccional"},

    // Context menus of scroll bars.
    {"QScrollBar", "Scroll here", "Desplazar hasta aquí"},
    {"QScrollBar", "Left edge", "Borde izquierdo"},
    {"QScrollBar", "Top", "Principio"},
    {"QScrollBar", "Right edge", "Borde derecho"},
    {"QScrollBar", "Bottom", "Final"},
    {"QScrollBar", "Page left", "Una página a la izquierda"},
    {"QScrollBar", "Page up", "Una página hacia arriba"},
    {"QScrollBar", "Page right", "Una página a la derecha"},
    {"QScrollBar", "Page down", "Una página hacia abajo"},
    {"QScrollBar", "Scroll left", "Desplazar hacia la izquierda"},
    {"QScrollBar", "Scroll up", "Desplazar hacia arriba"},
    {"QScrollBar", "Scroll right", "Desplazar hacia la derecha"},
    {"QScrollBar", "Scroll down", "Desplazar hacia abajo"},

    // Keys, as Spanish keyboards name them.
    {"QShortcut", "Ctrl", "Ctrl"},
    {"QShortcut", "Shift", "Mayús"},
    {"QShortcut", "Alt", "Alt"},
    {"QShortcut", "Meta", "Meta"},
    {"QShortcut", "Num", "Num"},
    {"QShortcut", "+", "+"},
    {"QShortcut", "F%1", "F%1"},
    {"QShortcut", "Esc", "Esc"},
    {"QShortcut", "Tab", "Tab"},
    {"QShortcut", "Backtab", "Mayús+Tab"},
    {"QShortcut", "Backspace", "Retroceso"},
    {"QShortcut", "Return", "Entrar"},
    {"QShortcut", "Enter", "Intro"},
    {"QShortcut", "Ins", "Insert"},
    {"QShortcut", "Del", "Supr"},
    {"QShortcut", "Pause", "Pausa"},
    {"QShortcut", "Print", "ImprPant"},
    {"QShortcut", "SysReq", "PetSis"},
    {"QShortcut", "Home", "Inicio"},
    {"QShortcut", "End", "Fin"},
    {"QShortcut", "Left", "Izquierda"},
    {"QShortcut", "Up", "Arriba"},
    {"QShortcut", "Right", "Derecha"},
    {"QShortcut", "Down", "Abajo"},
    {"QShortcut", "PgUp", "RePág"},
    {"QShortcut", "PgDown", "AvPág"},
    {"QShortcut", "CapsLock", "BloqMayús"},
    {"QShortcut", "NumLock", "BloqNum"},
    {"QShortcut", "ScrollLock", "BloqDespl"},
    {"QShortcut", "Menu", "Menú"},
    {"QShortcut", "Help", "Ayuda"},
    {"QShortcut", "Space", "Espacio"},
    {"QShortcut", "Back", "Atrás"},
    {"QShortcut", "Forward", "Adelante"},
    {"QShortcut", "Refresh", "Actualizar"},
    {"QShortcut", "Open", "Abrir"},
    {"QShortcut", "Copy", "Copiar"},
    {"QShortcut", "Cut", "Cortar"},
    {"QShortcut", "Paste", "Pegar"},
    {"QShortcut", "Undo", "Deshacer"},
    {"QShortcut", "Redo", "Rehacer"},

    // The file dialog.
    // What the system says of a file that has gone meanwhile.
    {"QIODevice", "No such file or directory", "No existe el fichero o la carpeta"},
    {"QIODevice", "Permission denied", "Permiso denegado"},
    {"QIODevice", "Too many open files", "Demasiados ficheros abiertos"},
    {"QIODevice", "No space left on device", "No queda sitio en el dispositivo"},
    {"QIODevice", "Unknown error", "Error desconocido"},
    {"QFileDialog", "Look in:", "Buscar en:"},
    {"QFileDialog", "Back", "Atrás"},
    {"QFileDialog", "Go back", "Ir atrás"},
    {"QFileDialog", "Forward", "Adelante"},
    {"QFileDialog", "Go forward", "Ir adelante"},
    // Not shown: read as keys, by the names above.
    {"QFileDialog", "Alt+Left", "Alt+Izquierda"},
    {"QFileDialog", "Alt+Right", "Alt+Derecha"},
    {"QFileDialog", "Alt+Up", "Alt+Arriba"},
    {"QFileDialog", "Parent Directory", "Carpeta superior"},
    {"QFileDialog", "Go to the parent directory", "Ir a la carpeta superior"},
    {"QFileDialog", "Create New Folder", "Crear una carpeta"},
    {"QFileDialog", "Create a New Folder", "Crear una carpeta nueva"},
    {"QFileDialog", "List View", "Lista"},
    {"QFileDialog", "Change to list view mode", "Mostrar los ficheros en una lista"},
    {"QFileDialog", "Detail View", "Detalles"},
    {"QFileDialog", "Change to detail view mode", "Mostrar los ficheros con sus detalles"},
    {"QFileDialog", "Sidebar", "Barra lateral"},
    {"QFileDialog", "List of places and bookmarks", "Lista de sitios y marcadores"},
    {"QFileDialog", "Files", "Ficheros"},
    {"QFileDialog", "Files of type:", "Tipo de fichero:"},
    {"QFileDialog", "File &name:", "&Nombre del fichero:"},
    {"QFileDialog", "Directory:", "Carpeta:"},
    {"QFileDialog", "Find Directory", "Buscar carpeta"},
    {"QFileDialog", "Open", "Abrir"},
    {"QFileDialog", "Save As", "Salvar como"},
    {"QFileDialog", "&Open", "&Abrir"},
    {"QFileDialog", "&Choose", "&Elegir"},
    {"QFileDialog", "&Save", "&Salvar"},
    {"QFileDialog", "All Files (*)", "Todos los archivos (*)"},
    {"QFileDialog", "&Rename", "Cambia&r el nombre"},
    {"QFileDialog", "&Delete", "&Borrar"},
    {"QFileDialog", "Show &hidden files", "Mostrar los ficheros &ocultos"},
    {"QFileDialog", "&New Folder", "Carpeta &nueva"},
    {"QFileDialog", "New Folder", "Carpeta nueva"},
    {"QFileDialog", "Show ", "Mostrar "},
    {"QFileDialog", "Delete", "Borrar"},
    {"QFileDialog", "Are you sure you want to delete '%1'?", "¿Seguro que desea borrar «%1»?"},
    {"QFileDialog", "'%1' is write protected.\nDo you want to delete it anyway?",
     "«%1» está protegido contra escritura.\n¿Desea borrarlo de todos modos?"},
    {"QFileDialog", "Could not delete directory.", "No se ha podido borrar la carpeta."},
    {"QFileDialog", "%1\nDirectory not found.\nPlease verify the correct directory name was given.",
     "%1\nNo existe esa carpeta.\nCompruebe que el nombre es correcto."},
    {"QFileDialog", "%1\nFile not found.\nPlease verify the correct file name was given.",
     "%1\nNo existe ese fichero.\nCompruebe que el nombre es correcto."},
    {"QFileDialog", "%1 already exists.\nDo you want to replace it?", "%1 ya existe.\n¿Desea reemplazarlo?"},
    {"QFileDialog", "Recent Places", "Sitios recientes"},
    {"QFileDialog", "Remove", "Quitar"},
    {"QFileDialog", "Computer", "Equipo"},
    {"QFileSystemModel", "Name", "Nombre"},
    {"QFileSystemModel", "Size", "Tamaño"},
    {"QFileSystemModel", "Type", "Tipo"},
    {"QFileSystemModel", "Date Modified", "Modificado"},
    {"QFileSystemModel", "Computer", "Equipo"},
    {"QAbstractFileIconProvider", "Drive", "Unidad"},
    {"QAbstractFileIconProvider", "Folder", "Carpeta"},
    {"QAbstractFileIconProvider", "Shortcut", "Acceso directo"},
    {"QAbstractFileIconProvider", "Unknown", "Desconocido"},

    // Not shown: in which direction the language is written.
    {"QGuiApplication", "QT_LAYOUT_DIRECTION", "LTR"},

    // What a screen reader offers to do.
    {"QAccessibleActionInterface", "Press", "Pulsar"},
    {"QAccessibleActionInterface", "Increase", "Aumentar"},
    {"QAccessibleActionInterface", "Decrease", "Disminuir"},
    {"QAccessibleActionInterface", "ShowMenu", "Mostrar el menú"},
    {"QAccessibleActionInterface", "SetFocus", "Poner el foco"},
    {"QAccessibleActionInterface", "Toggle", "Conmutar"},
    {"QAccessibleActionInterface", "Scroll Left", "Desplazar a la izquierda"},
    {"QAccessibleActionInterface", "Scroll Right", "Desplazar a la derecha"},
    {"QAccessibleActionInterface", "Scroll Up", "Desplazar hacia arriba"},
    {"QAccessibleActionInterface", "Scroll Down", "Desplazar hacia abajo"},
    {"QAccessibleActionInterface", "Previous Page", "Página anterior"},
    {"QAccessibleActionInterface", "Next Page", "Página siguiente"},
    {"QAccessibleActionInterface", "Triggers the action", "Realiza la acción"},
    {"QAccessibleActionInterface", "Increase the value", "Aumenta el valor"},
    {"QAccessibleActionInterface", "Decrease the value", "Disminuye el valor"},
    {"QAccessibleActionInterface", "Shows the menu", "Muestra el menú"},
    {"QAccessibleActionInterface", "Sets the focus", "Pone el foco"},
    {"QAccessibleActionInterface", "Toggles the state", "Conmuta el estado"},
    {"QAccessibleActionInterface", "Scrolls to the left", "Desplaza a la izquierda"},
    {"QAccessibleActionInterface", "Scrolls to the right", "Desplaza a la derecha"},
    {"QAccessibleActionInterface", "Scrolls up", "Desplaza hacia arriba"},
    {"QAccessibleActionInterface", "Scrolls down", "Desplaza hacia abajo"},
    {"QAccessibleActionInterface", "Goes back a page", "Retrocede una página"},
    {"QAccessibleActionInterface", "Goes to the next page", "Avanza una página"},
    {"QComboBox", "Open the combo box selection popup", "Abrir la lista"},
};

class spanish_translator final : public QTranslator {
 public:
  using QTranslator::QTranslator;

  [[nodiscard]] bool isEmpty() const override { return false; }
  QString translate(const char* context, const char* source, const char*, int) const override {
    for (const phrase& row : phrases)
      if (row.source == source && row.context == context) return QString::fromUtf8(row.spanish);
    return {};
  }
};

}  // namespace

void speak_spanish(QCoreApplication& app) {
  // Named, not chosen by the locale.
  auto* catalogue = new QTranslator(&app);
  if (catalogue->load(QStringLiteral("qtbase_es"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
    QCoreApplication::installTranslator(catalogue);
  // The one installed last is asked first.
  QCoreApplication::installTranslator(new spanish_translator(&app));
}

}  // namespace estructura
