# Completion of the game's arguments in fish: the scene words follow "shot".
complete -c kavo -f
complete -c kavo -n 'test (count (commandline -opc)) -eq 1' -a shot -d 'Draw a fixed scene and save its picture'
complete -c kavo -n 'test (count (commandline -opc)) -eq 1' -l calm -d 'Fade whatever flashes'
complete -c kavo -n 'test (count (commandline -opc)) -eq 1' -l help -d 'Show a short help'
complete -c kavo -n 'test (count (commandline -opc)) -eq 1' -l version -d 'Show the version'
complete -c kavo -n 'test (count (commandline -opc)) -eq 2; and __fish_seen_subcommand_from shot' -a 'kavo pop pu storm qbomb title opts enter'
