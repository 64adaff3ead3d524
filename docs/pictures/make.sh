#!/bin/sh
# Makes every picture of the README and the manual again, and compares them with what stands here:
#
#   docs/pictures/make.sh                          with the portrait of the release build, which it builds
#   docs/pictures/make.sh build/dev/docs/pictures/portrait
#   docs/pictures/make.sh --check [PORTRAIT]       changes nothing; fails when a picture is not the window's any more
#
# Either way it fails when the pages name a picture that is not made here, or the other way round. Look at each
# new picture: nothing else does. See portrait.cpp for what the arguments mean. Fonts are those of the package
# fonts-dejavu-core and no others, whatever the machine has.
set -eu

check=no
if [ "${1-}" = --check ]; then
  check=yes
  shift
fi
here=$(cd "$(dirname "$0")" && pwd)
top=$(cd "$here/../.." && pwd)
if [ $# -eq 0 ]; then
  cmake --build "$top/build/release" --target portrait
  set -- "$top/build/release/docs/pictures/portrait"
fi
portrait=$(realpath "$1")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$top"

cat > "$work/fonts.conf" <<END
<?xml version="1.0"?>
<!DOCTYPE fontconfig SYSTEM "fonts.dtd">
<fontconfig>
  <dir>/usr/share/fonts/truetype/dejavu</dir>
  <cachedir>$work/font-cache</cachedir>
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
END

outdated=0
picture() {
  name=$1
  shift
  echo "$name" >> "$work/made"
  if [ $check = yes ]; then set -- --compare "$@"; fi
  # Nothing of the person's settings (scale, style, theme) reaches a picture. The seed keeps the files the same to
  # the byte: the order of their colours is that of a hash.
  if env -i PATH="$PATH" HOME="$work" LANG=C.UTF-8 XDG_RUNTIME_DIR="$work" FONTCONFIG_FILE="$work/fonts.conf" \
    QT_QPA_PLATFORM=offscreen QT_HASH_SEED=0 QT_LOGGING_RULES='*=false' "$portrait" "$name" "$@" > "$work/said" 2>&1; then
    echo "$name: $(wc -c < "$name") bytes"
    return
  fi
  echo "$name:" >&2
  cat "$work/said" >&2
  [ $check = yes ] || exit 1
  outdated=$((outdated + 1))
}

first=docs/pictures/primero.asm

# The README's, which is the manual's first too: the banked registers being filled.
picture docs/ventana.png --size 1366x720 --asm ejemplos/bancos.asm --breakpoint 00B --steps 350

# The manual's, in its order.
i=docs/pictures
picture $i/paneles.png --asm $first --steps 40 \
  --numbers "source mapa MP Label2 Frame2 Label11> dirmd(1) Frame5 Frame4 Frame3"
picture $i/fuente.png --asm $first --panel "Label5 FILASM source clip cargarasm Ensamblar"
picture $i/mapa.png --device 16C54 --asm ejemplos/parpadeo.asm --breakpoint 005 --steps 5 --panel "map_breakpoints mapa MP" --height 240
picture $i/programa.png --device 16C54 --asm ejemplos/parpadeo.asm --breakpoint 005 --steps 5 \
  --panel "Label10 FILHEX MP" --height 300
picture $i/instruccion.png --asm $first direc=003 "INS=DECF PB,1" --panel Frame1
picture $i/registros.png --asm $first "eje1*11" eje1 RE#1 --panel Frame2
picture $i/datos.png --asm ejemplos/bancos.asm --steps 350 --panel "Label11 nombres BPC MD(3) lpag(3)"
picture $i/puertos.png --asm $first --steps 110 --panel Frame5
picture $i/tmr0.png RE#2 dat=20 entrardat FR=1000 eje1 --panel Frame4
picture $i/pic.png --asm $first WATCHDOG --steps 40 --panel Frame3
picture $i/pic-12c508.png --device 12C508 fext CMCLR --panel Frame3
# A slip of the fingers, for the assembler to find.
sed 's/DECFSZ/DECSFZ/' $first > "$work/primero.asm"
picture $i/error.png --asm "$work/primero.asm" --panel "source sl(0) clip" --height 420
picture $i/aviso.png --asm "$work/primero.asm" --box
picture $i/listado.png --asm $first --listing --size 1366x720 --panel "sl(0) sl(1) lst" --height 700
picture $i/watchdog.png --asm $first WATCHDOG RE#2 dat=8 entrardat "eje1*18000" --box
picture $i/oscura.png --device 12C508 --asm ejemplos/despertar.asm --dark --steps 12

# What the pages show and what is made here are the same, but for the pictures of the page for browsers (page.mjs).
{
  grep -o '([a-z0-9/-]*\.png)' README.md | tr -d '()'
  grep -o '([a-z0-9/-]*\.png)' docs/manual.md | tr -d '()' | sed 's,^,docs/,'
} | grep -v /pagina- | sort -u > "$work/named"
sort "$work/made" > "$work/sorted"
if ! diff "$work/named" "$work/sorted" > "$work/differences"; then
  echo "Named by the pages (<) and made here (>) differ:" >&2
  cat "$work/differences" >&2
  exit 1
fi
if [ "$outdated" -ne 0 ]; then
  echo "Pictures that do not show the window as it is: $outdated. Make them again with docs/pictures/make.sh" >&2
  exit 1
fi
