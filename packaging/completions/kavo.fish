# Completion of the game's arguments in fish: the scene words follow "shot".
complete -c kavo -f
complete -c kavo -n 'not __fish_seen_subcommand_from shot' -a shot -d 'Draw a fixed scene and save its picture'
complete -c kavo -n 'not __fish_seen_subcommand_from shot' -l calm -d 'Fade whatever flashes'
complete -c kavo -n 'not __fish_seen_subcommand_from shot' -l music -x -d 'How loud the music is, 0 to 100'
complete -c kavo -n 'not __fish_seen_subcommand_from shot' -l effects -x -d 'How loud the effects are, 0 to 100'
complete -c kavo -n 'not __fish_seen_subcommand_from shot' -l fullscreen -d 'Fill the display'
complete -c kavo -n 'not __fish_seen_subcommand_from shot' -l scale -x -d 'The size of the picture, 1 to 16 times'
complete -c kavo -n 'not __fish_seen_subcommand_from shot' -l lang -x -a 'de en' -d 'The language of help and settings'
complete -c kavo -n 'not __fish_seen_subcommand_from shot' -s h -l help -d 'Show a short help'
complete -c kavo -n 'not __fish_seen_subcommand_from shot' -l version -d 'Show the version'
complete -c kavo -n '__fish_seen_subcommand_from shot; and test (commandline -opc)[-1] = shot' -a 'kavo pop pu storm qbomb title opts enter'
