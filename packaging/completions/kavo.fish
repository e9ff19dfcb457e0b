# Completion of the game's arguments in fish: the scene words follow "shot".
complete -c kavo -f
complete -c kavo -n 'not __fish_seen_subcommand_from shot' -a shot -d 'Draw a fixed scene and save its picture'
complete -c kavo -n 'not __fish_seen_subcommand_from shot' -l calm -d 'Fade whatever flashes'
complete -c kavo -n 'not __fish_seen_subcommand_from shot' -s h -l help -d 'Show a short help'
complete -c kavo -n 'not __fish_seen_subcommand_from shot' -l version -d 'Show the version'
complete -c kavo -n '__fish_seen_subcommand_from shot; and test (commandline -opc)[-1] = shot' -a 'kavo pop pu storm qbomb title opts enter'
