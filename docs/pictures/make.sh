#!/bin/sh
# Makes every picture of the README and the manual again, and compares them with what stands here:
#
#   docs/pictures/make.sh                          with the portrait of the release build, which it builds
#   docs/pictures/make.sh build/dev/docs/pictures/portrait
#   docs/pictures/make.sh --comprueba [RETRATO]    changes nothing; fails when a picture is not the window's any more
#
# Either way it fails when the pages name a picture that is not made here, or the other way round. Look at each
# new picture: nothing else does. See portrait.cpp for what the arguments mean. Fonts are those of the package
# fonts-dejavu-core and no others, whatever the machine has.
set -eu

comprueba=no
if [ "${1-}" = --comprueba ]; then
  comprueba=yes
  shift
fi
aqui=$(cd "$(dirname "$0")" && pwd)
raiz=$(cd "$aqui/../.." && pwd)
if [ $# -eq 0 ]; then
  cmake --build "$raiz/build/release" --target portrait
  set -- "$raiz/build/release/docs/pictures/portrait"
fi
portrait=$(realpath "$1")
cosas=$(mktemp -d)
trap 'rm -rf "$cosas"' EXIT
cd "$raiz"

cat > "$cosas/fonts.conf" <<FIN
<?xml version="1.0"?>
<!DOCTYPE fontconfig SYSTEM "fonts.dtd">
<fontconfig>
  <dir>/usr/share/fonts/truetype/dejavu</dir>
  <cachedir>$cosas/letras</cachedir>
  <selectfont>
    <acceptfont>
      <glob>/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf</glob>
      <glob>/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf</glob>
      <glob>/usr/share/fonts/truetype/dejavu/DejaVuSansMono.ttf</glob>
      <glob>/usr/share/fonts/truetype/dejavu/DejaVuSansMono-Bold.ttf</glob>
    </acceptfont>
    <rejectfont><glob>*</glob></rejectfont>
  </selectfont>
  <alias binding="same"><family>monospace</family><prefer><family>DejaVu Sans Mono</family></prefer></alias>
  <match>
    <edit name="family" mode="append_last"><string>DejaVu Sans</string></edit>
    <edit name="hintstyle" mode="append"><const>hintslight</const></edit>
  </match>
</fontconfig>
FIN

viejas=0
foto() {
  nombre=$1
  shift
  echo "$nombre" >> "$cosas/hechas"
  if [ $comprueba = yes ]; then set -- --compara "$@"; fi
  # Nothing of the person's settings (scale, style, theme) reaches a picture. The seed keeps the files the same to
  # the byte: the order of their colours is that of a hash.
  if env -i PATH="$PATH" HOME="$cosas" LANG=C.UTF-8 XDG_RUNTIME_DIR="$cosas" FONTCONFIG_FILE="$cosas/fonts.conf" \
    QT_QPA_PLATFORM=offscreen QT_HASH_SEED=0 QT_LOGGING_RULES='*=false' "$portrait" "$nombre" "$@" > "$cosas/dicho" 2>&1; then
    echo "$nombre: $(wc -c < "$nombre") bytes"
    return
  fi
  echo "$nombre:" >&2
  cat "$cosas/dicho" >&2
  [ $comprueba = yes ] || exit 1
  viejas=$((viejas + 1))
}

primero=docs/pictures/primero.asm

# The README's, which is the manual's first too: the banked registers being filled.
foto docs/ventana.png --medida 1366x720 --asm ejemplos/bancos.asm --breakpoint 00B --pasos 350

# The manual's, in its order.
i=docs/pictures
foto $i/paneles.png --asm $primero --pasos 40 \
  --numera "source mapa MP Label2 Frame2 Label11> dirmd(1) Frame5 Frame4 Frame3"
foto $i/fuente.png --asm $primero --panel "Label5 FILASM source clip cargarasm Ensamblar"
foto $i/mapa.png --device 16C54 --asm ejemplos/parpadeo.asm --breakpoint 005 --pasos 5 --panel "map_breakpoints mapa MP" --alto 240
foto $i/programa.png --device 16C54 --asm ejemplos/parpadeo.asm --breakpoint 005 --pasos 5 \
  --panel "Label10 FILHEX MP" --alto 300
foto $i/instruccion.png --asm $primero direc=003 "INS=DECF PB,1" --panel Frame1
foto $i/registros.png --asm $primero "eje1*11" eje1 RE#1 --panel Frame2
foto $i/datos.png --asm ejemplos/bancos.asm --pasos 350 --panel "Label11 nombres BPC MD(3) lpag(3)"
foto $i/puertos.png --asm $primero --pasos 110 --panel Frame5
foto $i/tmr0.png RE#2 dat=20 entrardat FR=1000 eje1 --panel Frame4
foto $i/pic.png --asm $primero WATCHDOG --pasos 40 --panel Frame3
foto $i/pic-12c508.png --device 12C508 fext CMCLR --panel Frame3
# A slip of the fingers, for the assembler to find.
sed 's/DECFSZ/DECSFZ/' $primero > "$cosas/primero.asm"
foto $i/error.png --asm "$cosas/primero.asm" --panel "source sl(0) clip" --alto 420
foto $i/aviso.png --asm "$cosas/primero.asm" --caja
foto $i/listado.png --asm $primero --listado --medida 1366x720 --panel "sl(0) sl(1) lst" --alto 700
foto $i/watchdog.png --asm $primero WATCHDOG RE#2 dat=8 entrardat "eje1*18000" --caja
foto $i/oscura.png --device 12C508 --asm ejemplos/despertar.asm --oscura --pasos 12

# What the pages show and what is made here are the same, but for the pictures of the page for browsers (page.mjs).
{
  grep -o '([a-z0-9/-]*\.png)' README.md | tr -d '()'
  grep -o '([a-z0-9/-]*\.png)' docs/manual.md | tr -d '()' | sed 's,^,docs/,'
} | grep -v /pagina- | sort -u > "$cosas/nombradas"
sort "$cosas/hechas" > "$cosas/ordenadas"
if ! diff "$cosas/nombradas" "$cosas/ordenadas" > "$cosas/sobran"; then
  echo "Named by the pages (<) and made here (>) differ:" >&2
  cat "$cosas/sobran" >&2
  exit 1
fi
if [ "$viejas" -ne 0 ]; then
  echo "Pictures that do not show the window as it is: $viejas. Make them again with docs/pictures/make.sh" >&2
  exit 1
fi
