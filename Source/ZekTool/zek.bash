# Completion of zek's command line for bash.

_zek() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local command=${COMP_WORDS[1]} options=--help
    COMPREPLY=()

    if [ "$COMP_CWORD" -eq 1 ]; then
        mapfile -t COMPREPLY < <(compgen -W "info dump check mark report help --version" -- "$current")
        return
    fi
    case $previous in
        --section)
            mapfile -t COMPREPLY < <(compgen -W \
                "header nodes meshes materials probes textures bones lightmaps" -- "$current")
            return ;;
        --ignore | --error | --explain)
            # The program lists the codes when it is asked for one that there is not.
            mapfile -t COMPREPLY < <(compgen -W \
                "$(zek check --explain '?' 2>&1 | sed -n 's/^  //p')" -- "$current")
            return ;;
        --name | -j | --jobs | --max-findings)
            return ;;
    esac

    local of_models="--json --name --files0-from --jobs"
    case $command in
        help) mapfile -t COMPREPLY < <(compgen -W "info dump check mark report" -- "$current"); return ;;
        info) options+=" $of_models" ;;
        dump) options+=" --json --elements --section" ;;
        check) options+=" $of_models --deep --max-findings --ignore --error --explain"
               options+=" --cubemap-folders" ;;
        report) options+=" $of_models --csv --output --cubemap-folders" ;;
        mark) options+=" $of_models --dry-run --always --output --depfile --cubemap-folders" ;;
    esac
    if [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
    else
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    fi
}

complete -F _zek zek
