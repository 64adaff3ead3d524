# Para incluir desde ./arrancar y ./probar: instala los paquetes de Debian de paquetes.txt que falten.

faltan_paquetes() {
  local paquete
  while read -r paquete; do
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$paquete" 2>/dev/null)" = installed ] || printf '%s ' "$paquete"
  done <paquetes.txt
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
