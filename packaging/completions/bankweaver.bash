# Completion of bankweaver, bankweaver-cli and nesasm for bash.

# _bankweaver_files GLOB: folders, and files whose names fit the extended pattern; case doesn't count.
_bankweaver_files() {
    local cur=${COMP_WORDS[COMP_CWORD]} IFS=$'\n' restore file
    compopt -o filenames 2>/dev/null
    restore=$(shopt -p nocasematch extglob)
    shopt -s nocasematch extglob
    COMPREPLY=()
    for file in $(compgen -f -- "$cur"); do
        # shellcheck disable=SC2053 # a pattern
        [[ -d $file || $file == $1 ]] && COMPREPLY+=("$file")
    done
    eval "$restore"
}

_bankweaver_words() {
    local IFS=$' \t\n'
    # shellcheck disable=SC2207 # the words hold no blanks
    COMPREPLY=($(compgen -W "$1" -- "${COMP_WORDS[COMP_CWORD]}"))
}

_bankweaver() {
    if [[ ${COMP_WORDS[COMP_CWORD - 1]} == --play ]]; then
        _bankweaver_files '*.@(nes|unf)'
        return
    fi
    case ${COMP_WORDS[COMP_CWORD]} in
        -*) _bankweaver_words "--play --help --version" ;;
        *) _bankweaver_files '*.@(nes|fcl)' ;;
    esac
}

_nesasm() {
    case ${COMP_WORDS[COMP_CWORD - 1]} in
        -o | --output) _bankweaver_files '*.nes' ;;
        -C | --folder) COMPREPLY=($(compgen -d -- "${COMP_WORDS[COMP_CWORD]}")) ;;
        -l | --listing | -s | --symbols) _bankweaver_files '*' ;;
        *)
            case ${COMP_WORDS[COMP_CWORD]} in
                -*) _bankweaver_words "--output --listing --symbols --folder --help --version" ;;
                *) _bankweaver_files '*.asm' ;;
            esac
            ;;
    esac
}

# PART=FILE; readline has cut the word at its "=".
_bankweaver_cli_part() {
    local parts="design screen texts background-tiles sprite-tiles name-table attributes sprites
        background-palette sprite-palette"
    case $1 in
        --load) parts="$parts video-memory-2000 video-memory-2c00" ;;
        --save) parts="$parts mmc5-attributes characters" ;;
    esac
    compopt -o nospace 2>/dev/null
    _bankweaver_words "$parts"
    COMPREPLY=("${COMPREPLY[@]/%/=}")
}

_bankweaver_cli() {
    local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD - 1]}
    local command=${COMP_WORDS[1]} names menu
    if [[ $COMP_CWORD == 1 ]]; then
        _bankweaver_words "info build export list split compare check play design help --help --version"
        return
    fi
    if [[ $command == design ]]; then
        if [[ $COMP_CWORD == 2 ]]; then
            _bankweaver_words "pack unpack render info check convert import-picture --help"
            return
        fi
        command="design ${COMP_WORDS[2]}"
    fi
    # Readline cuts words at "=": after an option's comes its value, after a part's comes its file.
    local at=$COMP_CWORD
    if [[ $cur == "=" ]]; then
        COMP_WORDS[at]="" cur="" at=$((at + 1))
    fi
    if [[ ${COMP_WORDS[at - 1]} == "=" || $at != "$COMP_CWORD" ]]; then
        prev=${COMP_WORDS[at - 2]}
        if [[ $prev != --* ]]; then
            _bankweaver_files '*'
            return
        fi
    fi
    case "$command $prev" in
        "help "*) _bankweaver_words "info build export list split compare check play design" ;;
        *" --board") _bankweaver_words "coolboy mindkids coolgirl" ;;
        *" --leave-out") _bankweaver_words "fewest last" ;;
        *" --keep-places") _bankweaver_files '*.@(nes|unf|bin)' ;;
        *" --menu-size") _bankweaver_words "128 256 512" ;;
        *" --page-size") _bankweaver_words "5 10 15 20" ;;
        *" --style") _bankweaver_words "default white" ;;
        *" --music") _bankweaver_words "0 1 2 3 4 5" ;;
        *" --turning-speed") _bankweaver_words "1 2 3 4" ;;
        "check --format") _bankweaver_words "nes unf" ;;
        *" --format") _bankweaver_words "nes unf bin" ;;
        *" --sector") _bankweaver_words "4 64 128 256" ;;
        *" --view") _bankweaver_words "screen tiles" ;;
        *" --dither") _bankweaver_words "none ordered" ;;
        *" --scale") _bankweaver_words "1 2 3 4 5 6 7 8" ;;
        *" --layers")
            _bankweaver_words \
                "background sprites texts list caption cursor page-number colours grid"
            ;;
        *" --load" | *" --save") _bankweaver_cli_part "$prev" ;;
        *" --design") _bankweaver_files '*.fcm' ;;
        *" --names") _bankweaver_files '*.@(dat|xml)' ;;
        *" --extern-menu") _bankweaver_files '*.@(asm|nes)' ;;
        *" --report" | *" --sheet" | *" --output" | *" -o") _bankweaver_files '*' ;;
        *" --keep-work" | *" --look-in" | *" --directory" | *" -d" | "design pack "*) _bankweaver_files '' ;;
        *)
            if [[ $cur != -* ]]; then
                case $command in
                    "design render" | "design check") _bankweaver_files '*.@(fcm|fcl|nes)' ;;
                    "design import-picture") _bankweaver_files '*.@(png|fcm)' ;;
                    design*) _bankweaver_files '*.fcm' ;;
                    check) _bankweaver_files '*.@(nes|unf|fcl)' ;;
                    play) _bankweaver_files '*.@(nes|unf)' ;;
                    list) _bankweaver_files '*.@(nes|fcl|unf|bin)' ;;
                    split) _bankweaver_files '*.@(nes|unf|bin)' ;;
                    compare) _bankweaver_files '*' ;;
                    *) _bankweaver_files '*.@(nes|fcl)' ;;
                esac
                return
            fi
            names="--page-size --page-number --insert-row --number --dot --fill"
            local collection="--look-in --skip-damaged --keep-best --names --tidy-names --shorten-names"
            menu="--board --menu-size --style --music --turning-speed --design --extern-menu $names
                --strict --skip-unsupported $collection"
            case $command in
                info) names="--json --why --fit --board" ;;
                "design info") names="--json" ;;
                list) names="--json --output --board --leave-out --fill-up $collection" ;;
                split) names="--directory" ;;
                compare) names="--json --sector" ;;
                play) names="" ;;
                build) names="$menu --leave-out --fill-up --format --keep-places --keep-work --report --dry-run --output" ;;
                export) names="$menu --leave-out --fill-up --directory" ;;
                check) names="$menu --format --jobs --frames --only --json --sheet" ;;
                "design pack") names="--output" ;;
                "design unpack") names="--directory" ;;
                "design check") names="$names --json" ;;
                "design render") names="$names --output --layers --view --scale" ;;
                "design convert") names="--load --save" ;;
                "design import-picture")
                    names="--output --at --keep-palettes --keep-tiles --dither --report"
                    ;;
                *) names="" ;;
            esac
            _bankweaver_words "$names --quiet --verbose --help"
            ;;
    esac
}

complete -F _bankweaver bankweaver
complete -F _nesasm nesasm
complete -F _bankweaver_cli bankweaver-cli
