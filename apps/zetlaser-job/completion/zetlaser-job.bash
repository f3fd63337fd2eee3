# Completion for bash, made by "zetlaser-job --completion bash".
#
# Kinds of what can be completed: choice (one of the values), list (some of them, with commas), file (the values are
# suffixes, none stand for any file), folder, text (nothing is known of it).

# Sets what the command $1 takes: flags, and arguments, each a kind and its values.
_zetlaser_job_command() {
    isRepeated=
    case $1 in
@COMMANDS@
    esac
}

# Sets what the command $1 expects behind the option $2: kind, which is empty for nothing, and values.
_zetlaser_job_option() {
    kind= values=
    case "$1 $2" in
@OPTIONS@
    esac
}

# Adds those of the files read that have one of the suffixes, and the folders, which may lead to some.
_zetlaser_job_add_files() {
    local file suffix
    while IFS= read -r file; do
        if [[ -z $values || -d ${file/#\~\//"$HOME/"} ]]; then
            COMPREPLY+=("$prefix$file")
            continue
        fi
        for suffix in $values; do
            if [[ ${file,,} == *".${suffix,,}" ]]; then
                COMPREPLY+=("$prefix$file")
                break
            fi
        done
    done
}

_zetlaser_job_add_words() {
    local word
    while IFS= read -r word; do
        COMPREPLY+=("$prefix$word")
    done < <(compgen -W "$values" -- "$current")
}

_zetlaser_job_add() {
    case $kind in
        choice) _zetlaser_job_add_words ;;
        list)
            prefix+=${current%"${current##*,}"}
            current=${current##*,}
            compopt -o nospace 2>/dev/null
            _zetlaser_job_add_words
            ;;
        file)
            compopt -o filenames 2>/dev/null
            _zetlaser_job_add_files < <(compgen -f -- "$current")
            ;;
        folder)
            compopt -o filenames 2>/dev/null
            values=
            _zetlaser_job_add_files < <(compgen -d -- "$current")
            ;;
    esac
}

# Walks through the words before the one to complete, as the tool itself does.
_zetlaser_job() {
    local current=${COMP_WORDS[COMP_CWORD]} commands="@NAMES@" command= option= isEnded= position=0 prefix=
    local flags arguments isRepeated kind values word i
    COMPREPLY=()
    for ((i = 1; i < COMP_CWORD; ++i)); do
        word=${COMP_WORDS[i]}
        if [[ $i == 1 && " $commands " == *" $word "* ]]; then
            command=$word
        elif [[ $option && $word == = ]]; then
            : # bash makes a word of its own of it
        elif [[ $option ]]; then
            option=
        elif [[ $isEnded || $word != -?* ]]; then
            ((++position))
        elif [[ $word == -- ]]; then
            isEnded=1
        else
            _zetlaser_job_option "$command" "$word"
            [[ $kind ]] && option=$word
        fi
    done
    if [[ $option && $current == = ]]; then
        current=
    elif [[ ! $option && ! $isEnded && $current == --*=* ]]; then # where "=" doesn't part words
        option=${current%%=*} prefix=$option= current=${current#*=}
    fi

    _zetlaser_job_command "$command"
    if [[ $option ]]; then
        _zetlaser_job_option "$command" "$option"
    elif [[ ! $isEnded && $current == -* ]]; then
        kind=choice values=$flags
    else
        [[ $isRepeated && $position -ge ${#arguments[@]} ]] && position=$((${#arguments[@]} - 1))
        read -r kind values <<<"${arguments[position]-}"
        if [[ $COMP_CWORD == 1 ]]; then
            mapfile -t COMPREPLY < <(compgen -W "$commands" -- "$current")
        fi
    fi
    _zetlaser_job_add
}

complete -F _zetlaser_job zetlaser-job
