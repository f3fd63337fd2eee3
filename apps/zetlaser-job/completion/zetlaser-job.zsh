#compdef zetlaser-job
# Completion for zsh, made by "zetlaser-job --completion zsh".

# The first word: a command, or what a call without one begins with.
_zetlaser_job_first() {
    local -a commands=(
@COMMANDS@
    )
    _describe -t commands command commands
    @FIRST@
}

_zetlaser_job() {
    local -a names=(@NAMES@)
    local command=
    if (( CURRENT > 2 && ${names[(Ie)$words[2]]} )); then
        command=$words[2]
        words[2]=()
        (( CURRENT-- ))
    fi
    case $command in
@ARGUMENTS@
    esac
}

if [[ $funcstack[1] == _zetlaser-job ]]; then
    _zetlaser_job "$@" # loaded by its file's name
else
    compdef _zetlaser_job zetlaser-job
fi
