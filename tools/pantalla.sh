# shellcheck shell=bash
# A screen for a machine without one: a virtual display, shown by a web page that only this machine, and only who has the
# password in its address, can open. Sourced by ./run.

procesos=()
nombres=()

# aparte COMMAND…: a session of its own, so that Ctrl+C reaches only ./run, which ends them in order, each with whatever it
# started itself. Should ./run be killed, the system ends them. Nobody but ./run holds the end of the watch's pipe.
aparte() {
    exec setpriv --pdeathsig TERM setsid "$@" {cabo}>&-
}

# lanzar NAME COMMAND…: starts it apart, with a log of its own.
lanzar() {
    nombres+=("$1")
    (aparte "${@:2}") >"$privado/$1.log" 2>&1 </dev/null &
    procesos+=($!)
}

# Removes the folder when ./run has ended, however it did: the pipe has an end then.
vigilar() {
    # shellcheck disable=SC2016 # for the other shell
    exec {cabo}> >(trap '' INT TERM HUP &&
        exec setsid sh -c 'cat; sleep 1; rm -rf "$1"' sh "$privado" >/dev/null 2>&1)
}

# esperar PID COMMAND…: until the command succeeds; fails when the process has ended or after 20 seconds.
esperar() {
    local pid=$1 i
    shift
    for ((i = 0; i < 200; i++)); do
        "$@" && kill -0 "$pid" 2>/dev/null && return
        kill -0 "$pid" 2>/dev/null || return 1
        sleep 0.1
    done
    return 1
}

recoger() {
    trap '' INT TERM HUP
    local i j pid
    for ((i = ${#procesos[@]} - 1; i >= 0; i--)); do
        pid=${procesos[i]}
        kill -- "-$pid" 2>/dev/null || kill "$pid" 2>/dev/null || continue
        for ((j = 0; j < 50; j++)); do
            kill -0 -- "-$pid" 2>/dev/null || break
            sleep 0.1
        done
        kill -KILL -- "-$pid" 2>/dev/null || true
    done
    wait "${procesos[@]}" || true
    rm -rf "$privado"
}

sin_pantalla() {
    aviso "The virtual screen $2: $1"
    tail -n 5 "$privado/$1.log" >&2
    exit 1
}

escucha() {
    (exec 3<>"/dev/tcp/127.0.0.1/$1") 2>/dev/null
}

# The display's number, once its line is complete.
numero_anotado() {
    read -r numero <"$privado/numero"
}

en_pantalla_virtual() {
    local galleta clave numero='' puerto estado primero='' i
    privado=$(mktemp -d)
    vigilar
    trap recoger EXIT
    trap 'exit 129' HUP
    trap 'exit 130' INT
    trap 'exit 143' TERM

    # The server takes every cookie of the file, whatever display it is noted for; the number is known only afterwards.
    export XAUTHORITY=$privado/Xauthority
    galleta=$(od -An -v -N16 -tx1 /dev/urandom | tr -d ' \n')
    (umask 077 && touch "$XAUTHORITY" "$privado/clave")
    xauth -q source - <<<"add :0 . $galleta"
    : >"$privado/numero"
    lanzar Xvfb Xvfb -displayfd 3 -screen 0 1366x820x24 -auth "$XAUTHORITY" -nolisten tcp -noreset 3>"$privado/numero"
    esperar $! numero_anotado || sin_pantalla Xvfb "did not start"
    export DISPLAY=:$numero
    xauth -q source - <<<"add $DISPLAY . $galleta"

    # Without a window manager nothing can be maximised and a dialog has neither a title nor the keyboard. No menus and no
    # minimising: there is nothing that could bring a window back.
    cat >"$privado/ventanas" <<'FIN'
<JWM>
    <WindowStyle>
        <Font>DejaVu Sans-10</Font><Width>3</Width><Corner>0</Corner>
        <Foreground>#404040</Foreground><Background>#d0d0d0</Background>
        <Active><Foreground>#ffffff</Foreground><Background>#35608f</Background></Active>
    </WindowStyle>
    <TitleButtonOrder>tmx</TitleButtonOrder>
    <FocusModel>click</FocusModel>
    <Desktops width="1" height="1"><Background type="solid">#4a4f57</Background></Desktops>
    <Key mask="A" key="Tab">next</Key>
    <Key mask="A" key="F4">close</Key>
</JWM>
FIN
    lanzar jwm jwm -f "$privado/ventanas"

    # Through a socket in our own folder: no port that another user could try. The protocol takes eight characters.
    clave=$(head -c 6 /dev/urandom | base64 | tr '+/' '-_')
    printf '%s\n' "$clave" >"$privado/clave"
    lanzar x11vnc x11vnc -display "$DISPLAY" -auth "$XAUTHORITY" -unixsock "$privado/vnc" -rfbport 0 -rfbportv6 0 -noipv6 \
        -passwdfile "$privado/clave" -forever -shared -norc -noncache -quiet
    esperar $! test -S "$privado/vnc" || sin_pantalla x11vnc "did not start"

    for ((puerto = 6080; puerto < 6180; puerto++)); do
        escucha "$puerto" && continue
        lanzar websockify websockify --web /usr/share/novnc --unix-target "$privado/vnc" "127.0.0.1:$puerto"
        esperar $! escucha "$puerto" && break
        unset 'procesos[-1]' 'nombres[-1]'
    done
    [ "$puerto" -lt 6180 ] || sin_pantalla websockify "did not start"

    # What follows the # stays in the browser: no log holds the password.
    echo "Open http://127.0.0.1:$puerto/vnc.html#autoconnect=true&resize=scale&password=$clave"
    unset WAYLAND_DISPLAY
    export QT_QPA_PLATFORM=xcb QVX_PANTALLA_COMPLETA=1 XDG_RUNTIME_DIR=${XDG_RUNTIME_DIR:-$privado}
    (aparte "$@") &
    procesos+=($!)
    estado=0
    wait -n -p primero "${procesos[@]}" || estado=$?
    for i in "${!nombres[@]}"; do
        [ "${procesos[i]}" -ne "$primero" ] || sin_pantalla "${nombres[i]}" ended
    done
    exit "$estado"
}
