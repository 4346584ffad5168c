#!/usr/bin/env bash
# What is installed, as somebody meets it who has not built it: the build of the folder given is installed into a folder of
# the test's own, where the program works with what lies there alone, and another host is built against it.
set -euo pipefail

construido=$1 proyecto=$2
privado=$(mktemp -d)
trap 'rm -rf "$privado"' EXIT
exec 2>&1

fallo() {
    printf '%s\n' "$*"
    exit 1
}

cmake --install "$construido" --prefix "$privado/usr" >"$privado/instalado.log"
libs=$(dirname "$(find "$privado/usr" -name libqvx.so)")
componente=$libs/qvx-1/libKT580.so
export XDG_CONFIG_HOME=$privado/config XDG_DATA_HOME=$privado/datos QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8
quorvex() {
    LD_LIBRARY_PATH=$libs "$privado/usr/bin/quorvex" "$@"
}

# The build's program puts its component into the registry; the installed one must take its own all the same.
cd "$privado"
"$construido/bin/quorvex" --base-datos plan.db --exportar 0001 construido.xml
grep -q "$construido/bin/libKT580.so" config/quorvex/componentes.ini || fallo "The build's component is not registered"
LD_DEBUG=files quorvex --base-datos plan.db --exportar 0001 instalado.xml >cargado.log 2>&1
grep -q "calling init: $componente" cargado.log || fallo "The installed component was not loaded"
! grep "calling init: $construido" cargado.log || fallo "The build's folder was loaded from"
cmp construido.xml instalado.xml

# The private folders: the document's schema, the server's client library, the workbooks' library.
quorvex --validar instalado.xml
quorvex --base-datos plan.db --importar instalado.xml --si
quorvex --base-datos plan.db --exportar-catalogo UNIDAD unidades.xlsx
quorvex --revisar --servidor postgresql://nadie@127.0.0.1:1/nada >servidor.log 2>&1 && fallo "There is no such server"
! grep -i 'faltan bibliotecas' servidor.log || fallo "The server's library was not found"
find usr -type f \( -name '*.so*' -o -name quorvex -perm /100 \) -exec readelf -dW {} + >dinamico.log
! grep -E 'R(UN)?PATH' dinamico.log || fallo "A path of the build was installed"

# The manual pages and the completion know the options that the program tells of.
opciones() {
    sed 's/\\-/-/g' | grep -oE -- '--[a-z][a-z-]+' | sort -u
}
quorvex --ayuda | opciones >opciones
(
    # shellcheck disable=SC1091 # of the folder just installed
    . usr/share/bash-completion/completions/quorvex
    # shellcheck disable=SC2034 # read by the completion
    COMP_WORDS=(quorvex --) COMP_CWORD=1
    _quorvex
    printf '%s\n' "${COMPREPLY[@]}"
) | opciones | diff opciones -
for pagina in usr/share/man/man1/quorvex.1 usr/share/man/es/man1/quorvex.1; do
    opciones <$pagina | diff opciones -
    MANROFFSEQ='' MANWIDTH=80 man --warnings -E UTF-8 -l -Tutf8 -Z $pagina 2>&1 >/dev/null | diff - /dev/null
done
desktop-file-validate usr/share/applications/*.desktop
appstreamcli validate --no-net --pedantic usr/share/metainfo/*.xml >metainfo.log || fallo "$(cat metainfo.log)"

# Another host: each header stands by itself, and the example shows the plan.
cmake -S "$proyecto/examples/anfitrion" -B anfitrion -G Ninja -DCMAKE_PREFIX_PATH="$privado/usr" \
    -DCMAKE_EXPORT_COMPILE_COMMANDS=ON >cmake.log || fallo "$(cat cmake.log)"
cmake --build anfitrion >obra.log || fallo "$(cat obra.log)"
read -ra compilar < <(sed -nE 's/.*"command": "(.*) -o .*/\1/p' anfitrion/compile_commands.json)
find usr/include -name '*.h' -print0 | xargs -0 -P "$(nproc)" -I{} "${compilar[@]}" -fsyntax-only -w -x c++ {} ||
    fallo "A header does not stand by itself"
QVX_TRAZA=$privado/traza LD_LIBRARY_PATH=$libs anfitrion/anfitrion plan.db 0001 >anfitrion.log 2>&1 &
anfitrion=$!
for ((i = 0; i < 300; i++)); do
    ! grep -q "Tep_Padre = '0029'" traza 2>/dev/null || break
    kill -0 $anfitrion 2>/dev/null || fallo "The host ended: $(cat anfitrion.log)"
    sleep 0.1
done
grep -q "Tep_Padre = '0029'" traza || fallo "The host shows no tree: $(cat anfitrion.log)"
kill $anfitrion
