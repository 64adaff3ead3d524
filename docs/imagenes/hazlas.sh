#!/bin/sh
# Makes every picture of the README and the manual again:
#
#   docs/imagenes/hazlas.sh                          with the retrato of the release build, which it builds
#   docs/imagenes/hazlas.sh build/dev/docs/imagenes/retrato
#
# Look at each of them afterwards: nothing else does. See retrato.cpp for what the arguments mean.
set -eu

aqui=$(cd "$(dirname "$0")" && pwd)
raiz=$(cd "$aqui/../.." && pwd)
if [ $# -eq 0 ]; then
  cmake --build "$raiz/build/release" --target retrato
  set -- "$raiz/build/release/docs/imagenes/retrato"
fi
retrato=$(realpath "$1")
cosas=$(mktemp -d)
trap 'rm -rf "$cosas"' EXIT
cd "$raiz"

export QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR="$cosas" QT_LOGGING_RULES='*=false'

foto() {
  nombre=$1
  shift
  "$retrato" "$nombre" "$@" > "$cosas/dicho" 2>&1 || {
    cat "$cosas/dicho" >&2
    exit 1
  }
  echo "$nombre: $(wc -c < "$nombre") bytes"
}

primero=docs/imagenes/primero.asm

# The README's: the banked registers being filled.
foto docs/ventana.png --medida 1480x860 --asm ejemplos/bancos.asm --breakpoint 00B --pasos 350

# The manual's, in its order.
i=docs/imagenes
foto $i/paneles.png --asm $primero --pasos 40 \
  --numera "source mapa MP Label2 Frame3 Frame2 Frame5 Frame4 Label11 lpag(3)>"
foto $i/fuente.png --asm $primero --panel "Label5 FILASM source clip cargarasm fin"
foto $i/mapa.png --device 16C54 --asm ejemplos/parpadeo.asm --breakpoint 005 --pasos 5 --panel "mapa MP" --alto 240
foto $i/programa.png --device 16C54 --asm ejemplos/parpadeo.asm --breakpoint 005 --pasos 5 \
  --panel "Label10 FILHEX MP" --alto 300
foto $i/instruccion.png --asm $primero direc=003 "INS=DECF PB,1" --panel Frame1
foto $i/pic.png --asm $primero WATCHDOG --pasos 40 --panel Frame3
foto $i/pic-12c508.png --device 12C508 fext CMCLR --panel Frame3
foto $i/registros.png --asm $primero "eje1*12" RE#1 --panel Frame2
foto $i/puertos.png --asm $primero --pasos 110 --panel Frame5
foto $i/tmr0.png RE#2 dat=20 entrardat FR=1000 eje1 --panel Frame4
foto $i/datos.png --asm ejemplos/bancos.asm --pasos 350 --panel "Label11 nombres BPC MD(3) lpag(3)"
sed 's/^OTRA:    DECFSZ/OTRA:    DECSFZ/' $primero > "$cosas/primero.asm"
foto $i/error.png --asm "$cosas/primero.asm" --panel "source sl(0) clip" --alto 420
foto $i/aviso.png --asm "$cosas/primero.asm" --caja
foto $i/listado.png --asm $primero --listado --medida 1480x860 --panel "sl(0) sl(1) lst" --alto 700
foto $i/watchdog.png --asm $primero WATCHDOG RE#2 dat=8 entrardat "eje1*18000" --caja
foto $i/oscura.png --device 12C508 --asm ejemplos/despertar.asm --oscura --pasos 12
