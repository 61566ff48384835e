# fish completion for fenrow
# fenrow itself knows its commands, options and the names in its data.
function __fenrow_complete
    set -l before (commandline -opc)
    set -l current (commandline -ct | string unescape)
    # With only an opening quote "string unescape" gives nothing: drop it.
    or set current (commandline -ct | string replace -r '^["\']' '')
    set -l answer (command $before[1] __complete $before[2..-1] "$current" 2>/dev/null)
    or return
    if test "$answer[1]" = :files
        __fish_complete_path $current
    end
    printf '%s\n' $answer[2..-1]
end

complete -c fenrow -f -a '(__fenrow_complete)'
