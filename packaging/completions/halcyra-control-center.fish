# fish completion for the Halcyra Control Center

set -l poses 'frontal profile_left profile_right frontal_or_profile'
set -l views 'rgb ir depth skeletal combo room_overview follow'
for program in halcyra-control-center halcyra
    complete -c $program -f
    complete -c $program -l frames -x -d 'End after so many frames'
    complete -c $program -l no-camera -d 'Do not look for a sensor'
    complete -c $program -l smoke -d 'Shortest waits, 90 frames unless told otherwise'
    complete -c $program -l detector-type -x -a $poses -d 'Poses that are looked for'
    complete -c $program -l detection-style -x -a $poses -d 'Poses that are looked for'
    complete -c $program -l screen-percent -x -d 'Share of the screen, 0.35 to 1.0'
    complete -c $program -l width -x -d 'Width of the window, 800 to 7680'
    complete -c $program -l height -x -d 'Height of the window, 480 to 4320'
    complete -c $program -l font-scale -x -d 'Size of the text, 0.7 to 2.4'
    complete -c $program -l fullscreen -d 'Cover the screen'
    complete -c $program -l windowed -d 'Open a window'
    complete -c $program -l preset -x -a 'compact normal large' -d 'Size of the window'
    complete -c $program -l view -x -a $views -d 'What is shown first'
    complete -c $program -l overlay-mode -x -a $views -d 'What is shown first'
    complete -c $program -l layout-test -d '30 turns without a sensor, and a picture'
    complete -c $program -l samples-dir -x -a '(__fish_complete_directories)' -d "The owner's samples"
    complete -c $program -l cascade -r -F -d 'Cascade for faces from the front'
    complete -c $program -l profile-cascade -r -F -d 'Cascade for faces from the side'
    complete -c $program -s h -l help -d 'Show the usage'
end
complete -c halcyra -l demonstration -d 'Show a rendered room'
complete -c halcyra -n __fish_use_subcommand -a enroll -d "Take samples of the owner's face"
complete -c halcyra -n __fish_use_subcommand -a record -d 'Record what the sensor sees'
