# Completions of varilum4 for bash, made by packaging/make_man. Source it, or put it into
# /usr/share/bash-completion/completions/varilum4.
_varilum4() {
    local word=${COMP_WORDS[COMP_CWORD]} options=
    if [ "$COMP_CWORD" -eq 1 ]; then
        mapfile -t COMPREPLY < <(compgen -W "deflicker analyze render info panel session validate demo --help --version" -- "$word")
        return
    fi
    case ${COMP_WORDS[1]} in
        deflicker) options='--adjust-clipping --codec --correction-method --crf --deflicker-method --depth --dont-deflicker --duplicates --effect --encoder-option --favor-brighter --flashes --force --fps --help --host-role --luminance --memory --no-audio --no-favor-brighter --pixel-format --plot --preset --progress --quality --quiet --report --report-frames --shift-spread --shots --smoothing-frames --speed --start-number --subrect --target --threads' ;;
        analyze) options='--adjust-clipping --correction-method --deflicker-method --dont-deflicker --duplicates --effect --favor-brighter --flashes --force --fps --help --host-role --luminance --memory --no-favor-brighter --output --progress --quiet --shift-spread --shots --smoothing-frames --speed --start-number --subrect --target --threads' ;;
        render) options='--adjust-clipping --codec --correction-method --crf --deflicker-method --depth --dont-deflicker --effect --encoder-option --favor-brighter --force --fps --frames --help --host-role --input --luminance --memory --no-audio --no-favor-brighter --pixel-format --preset --progress --quality --quiet --report --report-frames --shift-spread --smoothing-frames --speed --start-number --subrect --target --threads' ;;
        info) options='--duplicates --effect --flashes --force --fps --help --json --memory --plot --progress --quiet --shots --start-number --threads' ;;
        panel) options='--adjust-clipping --all-frames --blue --correction-method --deflicker-method --dont-deflicker --effect --favor-brighter --font-size --force --frame --green --help --input --luminance --memory --no-favor-brighter --output --progress --quiet --red --scale --shift-spread --smoothing-frames --speed --subrect --target --threads --width --zoom' ;;
        session) options='--effect --help --memory --progress --quiet --threads' ;;
        validate) options='--help --json --list --only --seed --silence --strictness' ;;
        demo) options='--effect --force --help --memory --progress --quiet --threads' ;;
    esac
    case $word in
        -*) mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word") ;;
        *) mapfile -t COMPREPLY < <(compgen -f -- "$word") ;;
    esac
}
complete -o filenames -F _varilum4 varilum4 ./varilum4
