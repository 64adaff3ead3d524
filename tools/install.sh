# Para incluir desde ./arrancar y ./probar: instala los paquetes de Debian de packages.txt que falten, y los de npm que
# usan las pruebas de la página.

faltan_paquetes() {
  local paquete
  while read -r paquete; do
    # Un Node de otra procedencia trae su propio npm, y no admite el de Debian.
    [ "$paquete" != npm ] || ! command -v npm >/dev/null || continue
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$paquete" 2>/dev/null)" = installed ] || printf '%s ' "$paquete"
  done <packages.txt
}

instala_paquetes() {
  local faltan como_root=()
  faltan=$(faltan_paquetes)
  [ -n "$faltan" ] || return 0
  if [ "$(id -u)" -ne 0 ]; then
    if command -v sudo >/dev/null && sudo -v; then
      como_root=(sudo)
    else
      echo "Faltan paquetes y no hay permiso para instalarlos. Instálelos con: apt-get install $faltan" >&2
      return 1
    fi
  fi
  echo "Instalando: $faltan"
  # shellcheck disable=SC2086
  if ! { "${como_root[@]}" apt-get update -qq &&
         "${como_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $faltan; }; then
    echo "No se han podido instalar los paquetes. Instálelos con: apt-get install $faltan" >&2
    return 1
  fi
}

# Las versiones exactas, y su contenido, los fija package-lock.json; sin cambios en él no se descarga nada.
instala_paquetes_npm() {
  local lista=tests/web/package-lock.json hecha=tests/web/node_modules/.instalada
  cmp -s "$lista" "$hecha" && return 0
  echo "Instalando los paquetes de npm de tests/web"
  if ! npm ci --prefix tests/web --ignore-scripts --no-audit --no-fund --loglevel=error; then
    echo "No se han podido instalar los paquetes de npm: las pruebas de la página los necesitan." >&2
    return 1
  fi
  cp "$lista" "$hecha"
}
