# shellcheck shell=bash
# To be included by ./arrancar and ./probar, whose messages are in Spanish: installs what is missing of the Debian
# packages of packages.txt, and the npm ones that the page's tests use.

missing_packages() {
  local package
  while read -r package; do
    # A Node from elsewhere brings an npm of its own, and does not get along with Debian's.
    [ "$package" != npm ] || ! command -v npm >/dev/null || continue
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || printf '%s ' "$package"
  done <packages.txt
}

install_packages() {
  local missing as_root=()
  missing=$(missing_packages)
  [ -n "$missing" ] || return 0
  if [ "$(id -u)" -ne 0 ]; then
    if command -v sudo >/dev/null && sudo -v; then
      as_root=(sudo)
    else
      echo "Faltan paquetes y no hay permiso para instalarlos. Instálelos con: apt-get install $missing" >&2
      return 1
    fi
  fi
  echo "Instalando: $missing"
  # shellcheck disable=SC2086
  if ! { "${as_root[@]}" apt-get update -qq &&
         "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $missing; }; then
    echo "No se han podido instalar los paquetes. Instálelos con: apt-get install $missing" >&2
    return 1
  fi
}

# The exact versions, and what is in them, are fixed by package-lock.json; while it does not change nothing is downloaded.
install_npm_packages() {
  local wanted=tests/web/package-lock.json installed=tests/web/node_modules/.installed
  cmp -s "$wanted" "$installed" && return 0
  echo "Instalando los paquetes de npm de tests/web"
  if ! npm ci --prefix tests/web --ignore-scripts --no-audit --no-fund --loglevel=error; then
    echo "No se han podido instalar los paquetes de npm: las pruebas de la página los necesitan." >&2
    return 1
  fi
  cp "$wanted" "$installed"
}
