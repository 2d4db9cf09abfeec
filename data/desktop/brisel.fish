# Completion of brisel for fish.

set -l commands convert info layout generate automate
set -l first "not __fish_seen_subcommand_from $commands"

complete -c brisel -s h -l help -d 'Print a help and exit'
complete -c brisel -n $first -l version -d 'Print the version and exit'
complete -c brisel -n $first -l one-model -d 'Open the files together, as parts of one model'
complete -c brisel -n $first -a convert -d 'Write a model in another format'
complete -c brisel -n $first -a info -d 'Count what a model holds'
complete -c brisel -n $first -a layout -d 'Lay out a model or a plain graph'
complete -c brisel -n $first -a generate -d 'Write source text that a template makes of a model'
complete -c brisel -n $first -a automate -d 'Serve the components by JSON-RPC'

complete -c brisel -n '__fish_seen_subcommand_from convert' -l to -x -a 'dim svg png pdf' -d 'Format to write'
complete -c brisel -n '__fish_seen_subcommand_from convert' -l scale -x -d 'Scale of a .png'
complete -c brisel -n '__fish_seen_subcommand_from info' -l json -d 'Write JSON'
complete -c brisel -n '__fish_seen_subcommand_from layout' -l style -x -a '%HIERARCHY% MATRIX RANDOM SPRING' -d 'Style of the layout'
complete -c brisel -n '__fish_seen_subcommand_from layout' -s o -l output -r -d 'Where to write the drawing'
complete -c brisel -n '__fish_seen_subcommand_from generate' -l template -r -a '(brisel generate --list 2>/dev/null)' -d 'Template'
complete -c brisel -n '__fish_seen_subcommand_from generate' -s o -l output -r -d 'Folder to write to'
complete -c brisel -n '__fish_seen_subcommand_from generate' -l class -x -d 'Class to write'
complete -c brisel -n '__fish_seen_subcommand_from generate' -l force -d 'Overwrite files that differ'
complete -c brisel -n '__fish_seen_subcommand_from generate' -l list -d 'List the templates'
complete -c brisel -n '__fish_seen_subcommand_from automate' -l window -d 'Show what is created in windows'
