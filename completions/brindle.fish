# Completion of brindle's command line in fish.

set -l commands run check encrypt register unregister
set -l first "not __fish_seen_subcommand_from $commands"
set -l running "not __fish_seen_subcommand_from encrypt register unregister check"
set -l reading "not __fish_seen_subcommand_from encrypt register unregister"

complete -c brindle -n "$first" -a run -d 'run a script'
complete -c brindle -n "$first" -a check -d 'look for mistakes without running a script'
complete -c brindle -n "$first" -a encrypt -d 'write the enciphered form of a script'
complete -c brindle -n "$first" -a register -d 'let scripts create objects of a server library'
complete -c brindle -n "$first" -a unregister -d 'end that'
complete -c brindle -n "__fish_seen_subcommand_from check" -l format -x -a 'text json sarif' -d 'how problems are written'
complete -c brindle -n "__fish_seen_subcommand_from check" -l strict -d 'warnings count like errors'
complete -c brindle -n "__fish_seen_subcommand_from check" -l function -x -d 'a function that the host registers'
complete -c brindle -n "__fish_seen_subcommand_from check" -l codes -d 'list every kind of problem'
complete -c brindle -n "$running" -l ui -x -a 'auto window console' -d 'where message boxes and dialogs go'
complete -c brindle -n "$running" -l on-error -x -a 'ask continue abort' -d 'how an error box is answered'
complete -c brindle -n "$reading" -l codepage -x -a 'UTF-8 windows-1252 cp437 cp850 ISO-8859-1' -d 'code page of scripts'
complete -c brindle -n "$running" -l trace -d 'show where an error was reported, and the calls'
complete -c brindle -n "$running" -l max-statements -x -d 'end the run after so many statements'
complete -c brindle -n "$running" -l max-seconds -x -d 'end the run after so many seconds'
complete -c brindle -n "$running" -l max-memory -x -d 'end the run when its data takes so many MiB'
complete -c brindle -n "$running" -l max-depth -x -d 'end the run when so many procedure calls nest'
complete -c brindle -n "$running" -l root -x -a '(__fish_complete_directories)' -d 'a folder that no path of the script leads out of'
complete -c brindle -n "$running" -l forbid -x -a 'runexe externals automation serial' -d 'what the script may not use'
complete -c brindle -n "$first" -l version -d 'show the version'
complete -c brindle -l help -d 'show a summary'
