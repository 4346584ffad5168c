# shellcheck shell=bash
# What ./run and ./test share: messages, packages of Debian, logged steps, builds. Sourced; works in the project's root.

BITACORAS=build/log

# shellcheck disable=SC2034 # used by those who source this
paquetes_programa=(
    g++ cmake ninja-build
    qt6-base-dev qt6-base-dev-tools libqt6sql6-sqlite libqt6svg6 qt6-translations-l10n
    libsqlite3-dev libxml2-dev libxlsxwriter-dev libpq-dev libfontconfig-dev libgl-dev libxkbcommon-dev fonts-dejavu-core
)

aviso() {
    printf '%s\n' "$*" >&2
}

fallo() {
    aviso "$*"
    exit 1
}

# Installs those of the named packages that are missing; costs one question to dpkg when nothing is.
instalar() {
    command -v dpkg-query >/dev/null || fallo "This command needs Debian 12: dpkg-query was not found."
    local faltan como=()
    mapfile -t faltan < <(
        # shellcheck disable=SC2016 # dpkg-query fills in these variables, not the shell
        comm -13 <(dpkg-query -W -f='${db:Status-Status} ${Package}\n' "$@" 2>/dev/null | sed -n 's/^installed //p' | sort -u) \
            <(printf '%s\n' "$@" | sort -u)
    )
    [ ${#faltan[@]} -gt 0 ] || return 0
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || fallo "Missing packages: ${faltan[*]}. Run this again as root or as a user with sudo."
        como=(sudo)
        # Nobody is there to type a password in an unattended run.
        [ -z "${CI:-}" ] || como+=(-n)
    fi
    aviso "Installing from Debian: ${faltan[*]}"
    # Where the server's installation reads whether to make and start a cluster of its own.
    como+=(env DEBIAN_FRONTEND=noninteractive PGSYSCONFDIR="$PWD/tools/sin_cluster" apt-get -o DPkg::Lock::Timeout=300)
    # The lists of a machine with one unreachable source may still be good enough: the installation itself decides.
    registrar apt-update "${como[@]}" update || true
    paso apt-install "${como[@]}" install -y --no-install-recommends "${faltan[@]}"
}

# registrar NAME COMMAND…: runs the command with its output in the log of that name.
registrar() {
    local nombre=$1
    shift
    mkdir -p "$BITACORAS"
    "$@" >"$BITACORAS/$nombre.log" 2>&1 </dev/null
}

# paso NAME COMMAND…: the same; a failure is told in one line, with what the log says about it, and ends the script.
paso() {
    registrar "$@" && return
    local bitacora=$BITACORAS/$1.log
    aviso "FAILED: $1 (log: $bitacora)"
    { grep -E -A 3 'error: |^CMake Error|undefined reference|^E: |^error' "$bitacora" || tail -n 20 "$bitacora"; } |
        sed "s|$PWD/||g" | head -n 40 >&2
    exit 1
}

# construir PRESET: configures and builds it. Where nobody waits to change a file again, the desk's are compiled several at
# a time: one that misses an include shows it to its author.
construir() {
    local dir=build/$1 antes lanzador=${CMAKE_CXX_COMPILER_LAUNCHER-}
    # A build folder that came along with a copy of the project still points to where it was made.
    antes=$(sed -n 's/^CMAKE_HOME_DIRECTORY:INTERNAL=//p' "$dir/CMakeCache.txt" 2>/dev/null || true)
    [ -z "$antes" ] || [ "$antes" -ef . ] || rm -rf "$dir"
    [ -n "$lanzador" ] || ! command -v ccache >/dev/null || lanzador=ccache
    paso "configure-$1" cmake --preset "$1" -DCMAKE_CXX_COMPILER_LAUNCHER="$lanzador" -DQVX_JUNTAR=${CI:+ON}
    paso "build-$1" cmake --build --preset "$1"
}

# fuentes EXTENSIONS: the project's files of those kinds ("cpp|h"), committed or not yet.
fuentes() {
    find . \( -path ./build -o -path './.?*' \) -prune -o -type f -regextype egrep -regex ".*\.($1)" -print
}

# para_pruebas: the folder for what tests write and nobody keeps: in memory, where there is plenty of it.
para_pruebas() {
    local lugar=/dev/shm
    [ "$(awk '/^MemAvailable:/ { print $2 }' /proc/meminfo)" -ge $((8 * 2 ** 20)) ] && [ -w $lugar ] &&
        [ "$(df --output=avail $lugar | tail -n 1)" -ge $((4 * 2 ** 20)) ] || lugar=/tmp
    echo $lugar
}

# apartar [FOLDER]: a folder "datos" that goes with the script, in the one named, in place of what the user keeps at
# home or has set for this session: nothing that a test or a measurement does may depend on that, or reach it.
apartar() {
    local variable
    datos=$(mktemp -d ${1:+-p "$1"})
    trap 'rm -rf "$datos"' EXIT
    mkdir -m 700 "$datos/run"
    for variable in $(compgen -e | grep -E '^(QT|QVX|XDG)_|^PG|^(DISPLAY|WAYLAND_DISPLAY|XAUTHORITY)$'); do
        unset "$variable"
    done
    export HOME=$datos TMPDIR=$datos XDG_RUNTIME_DIR=$datos/run QT_QPA_PLATFORM=offscreen
    export XDG_CONFIG_HOME=$datos/config XDG_DATA_HOME=$datos/data XDG_CACHE_HOME=$datos/cache XDG_STATE_HOME=$datos/state
}

# anotar FILE DOCUMENT: puts the file between the document's marks.
anotar() {
    sed -i -e '/^<!-- measured -->/,/^<!-- end -->/{/^<!--/!d}' -e "/^<!-- measured -->/r $1" "$2"
}
