# fish completion for the recorder of the Halcyra Control Center

complete -c halcyra-record -f -a '(__fish_complete_directories)'
complete -c halcyra-record -l seconds -x -d 'End so many seconds after the first set'
complete -c halcyra-record -l sets -x -d 'End after so many sets'
complete -c halcyra-record -l streams -x -a 'color ir depth color,ir,depth' -d 'Streams to record'
complete -c halcyra-record -l color -x -a 'jpeg png' -d 'Files of the colour pictures'
complete -c halcyra-record -l jpeg-quality -x -d '1 to 100'
complete -c halcyra-record -l anonymous -d "Leave out the sensor's serial number"
complete -c halcyra-record -s h -l help -d 'Show the usage'
complete -c halcyra-record -l version -d 'Show the version'
