# bash completion for quorvex                              -*- shell-script -*-

_quorvex() {
    local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD - 1]} palabras=
    case $prev in
    --decimal) palabras='punto coma' ;;
    --delimitador) palabras='; , tab' ;;
    --codificacion) palabras='utf-8 windows-1252' ;;
    --reporte) palabras='plan hojas materiales' ;;
    --papel) palabras='carta a4' ;;
    --inicio) palabras='hecho arranque lectura' ;;
    --descanso) palabras='ninguno domingo fin-de-semana' ;;
    --importar-catalogo | --exportar-catalogo)
        palabras='TIPO_EQUIPO PRODUCTO TIPO_GASTO TIPO_SERVICIO PRIORIDAD_SERVICIO UNIDAD'
        ;;
    --servidor | --operador | --tipo-equipo | --exportar | --programa | --desde | --uso | --dias-semana | --equipos | \
        --lectura | --mes | --servicios | --operacion | --deshacer | --rehacer | --historial-depurar)
        return
        ;;
    *)
        [[ $cur != -* ]] || palabras='--base-datos --servidor --tipo-equipo --operador --sin-ejemplos --crear-esquema
            --actualizar-esquema --con-ejemplos --exportar --importar --importar-catalogo --exportar-catalogo
            --delimitador --decimal --codificacion --si --actualizar-costos --completar-gastos --programa --desde --ics
            --uso --dias-semana --equipos --inicio --lectura --descanso --festivos --reporte --papel --con-renglones
            --mes --servicios --con-costos --por-parte --una-ronda --validar --comparar --historial --operacion
            --deshacer --rehacer --historial-depurar --respaldar --restaurar --revisar --ayuda --version'
        ;;
    esac
    if [ -n "$palabras" ]; then
        mapfile -t COMPREPLY < <(compgen -W "$palabras" -- "$cur")
    else
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$cur")
    fi
}
complete -F _quorvex quorvex
