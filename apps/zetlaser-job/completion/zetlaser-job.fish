# Completion for fish, made by "zetlaser-job --completion fish".

# Whether the command line calls the command of that name; the empty name is that of a call without one.
function __zetlaser_job_calls
    set -l words (commandline -opc)
    set -l command ""
    contains -- "$words[2]" @NAMES@; and set command $words[2]
    test "$command" = "$argv[1]"
end

complete -c zetlaser-job -f
@COMPLETIONS@
