#!/usr/bin/env bash
# One drag with a real pointer: the program given, on a virtual screen, moves a service from the list to another part of
# the tree. Then the database is asked. The screen is as large as the window, so that there is nothing else to hit.
set -euo pipefail

programa=$1
if [ $# -eq 1 ]; then
    privado=$(mktemp -d)
    trap 'rm -rf "$privado"' EXIT
    xvfb-run -a -e "$privado/Xvfb.log" -s '-screen 0 1280x760x24 -noreset' "$0" "$programa" "$privado"
    exit
fi
privado=$2

fallo() {
    printf '%s\n' "$1" >&2
    cat "$privado"/*.log >&2
    exit 1
}

# esperar WHAT COMMAND…: until the command succeeds, 60 seconds at most.
esperar() {
    local que=$1 i
    shift
    for ((i = 0; i < 600; i++)); do
        "$@" && return
        kill -0 "$proceso" 2>/dev/null || break
        sleep 0.1
    done
    fallo "In vain: $que"
}

consulta() {
    sqlite3 -readonly "$privado/prueba.db" "$1" 2>/dev/null
}

# traza TEXT: a statement with this text has run.
traza() {
    grep -qF "$1" "$privado/traza" 2>/dev/null
}

export XDG_CONFIG_HOME=$privado XDG_DATA_HOME=$privado QT_QPA_PLATFORM=xcb QVX_TRAZA=$privado/traza
export QVX_PANTALLA_COMPLETA=1
# The keyboard library copies names out of the X server's answer by their length; the strict check wants an end in each.
export ASAN_OPTIONS=${ASAN_OPTIONS-}:strict_string_checks=0
"$programa" --base-datos "$privado/prueba.db" --tipo-equipo 0001 --operador mlopez >"$privado/quorvex.log" 2>&1 &
proceso=$!
trap 'kill "$proceso" 2>/dev/null && wait "$proceso" || true' EXIT

# Where things are in the window: the tree's second and third part, and the list's first row.
destino=(140 187)
origen=(140 211)
servicio=(480 190)

esperar "the tree" traza "Tep_Padre = '0029'"
xdotool mousemove "${origen[@]}" click 1
esperar "the services of part 0009" traza "Plan_Mantenimiento.Tep_ID = '0009'"

# The pointer goes a long way in short steps, as a hand does: the first ones begin the drag.
xdotool mousemove "${servicio[@]}" mousedown 1
for ((i = 1; i <= 10; i++)); do
    xdotool mousemove \
        $((servicio[0] + (destino[0] - servicio[0]) * i / 10)) $((servicio[1] + (destino[1] - servicio[1]) * i / 10))
done
xdotool mousemove_relative 1 1 mouseup 1

movido() {
    [ "$(consulta "SELECT rtrim(Tep_ID), Oper_Ult_Modif FROM Plan_Mantenimiento WHERE Te_Cve_Tipo_Equipo = '0001' AND
                       Pm_ID = '000017'")" = "0001|mlopez" ]
}
esperar "service 000017 under part 0001" movido
lineas=$(consulta "SELECT count(*), count(CASE rtrim(Tep_ID) WHEN '0001' THEN 1 END) FROM Plan_Mantenimiento_Detalle
                   WHERE Te_Cve_Tipo_Equipo = '0001' AND Pm_ID = '000017'")
[ "$lineas" = "2|2" ] || fallo "Its lines are elsewhere: $lineas"
