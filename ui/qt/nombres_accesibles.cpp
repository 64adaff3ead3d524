#include "ui/qt/nombres_accesibles.h"

#include "ui/controles.h"

namespace estructura {

QString nombre_accesible(const control& record) {
  const QString member = QString::number(record.index());
  switch (record.which()) {
    case id::Frame7: return QStringLiteral("Código fuente");
    case id::Frame1: return QStringLiteral("Entrada de instrucciones");
    case id::Frame2: return QStringLiteral("Registros y entrada de datos");
    case id::clip: return QStringLiteral("Edición");
    case id::tab: return QStringLiteral("Tabulador");
    case id::source: return QStringLiteral("Código fuente");
    case id::lst: return QStringLiteral("Listado");
    case id::Ensamblar: return QStringLiteral("Ensamblar");
    case id::desensamblar: return QStringLiteral("Desensamblar");
    case id::mapa: return QStringLiteral("Mapa de la memoria de programa");
    case id::MP: return QStringLiteral("Memoria de programa");
    case id::direc: return QStringLiteral("Dirección de programa");
    case id::INS: return QStringLiteral("Instrucción");
    case id::PIC: return QStringLiteral("PIC");
    case id::FREC: return QStringLiteral("Frecuencia, en kHz");
    case id::FR: return QStringLiteral("Frecuencia de T0CKI, en Hz");
    case id::PA: return QStringLiteral("PA ") + member;
    case id::PB: return QStringLiteral("PB ") + member;
    case id::PC: return QStringLiteral("PC ") + member;
    case id::dat: return QStringLiteral("Dato");
    case id::nomre: return QStringLiteral("Nombres de los registros");
    case id::RE: return QStringLiteral("Registros");
    case id::PIL: return QStringLiteral("Pila");
    case id::nombres: return QStringLiteral("Nombres de la memoria de datos");
    case id::dirmd: return QStringLiteral("Direcciones de la memoria de datos");
    case id::MDP: return QStringLiteral("Memoria de datos, 00 a 0F");
    case id::MD: return QStringLiteral("Memoria de datos, 10 a 1F, banco ") + member;
    default: return {};
  }
}

}  // namespace estructura
