# fish completion for halcyra-enroll

complete -c halcyra-enroll -f
complete -c halcyra-enroll -l from -r -F -d 'Take samples from photographs'
complete -c halcyra-enroll -l report -d 'Only judge the samples that are there'
complete -c halcyra-enroll -l json -d 'Print the report for programs'
complete -c halcyra-enroll -l sheet -r -F -d 'Write a picture of all samples'
complete -c halcyra-enroll -l per-pose -x -d 'Samples wanted of each pose'
complete -c halcyra-enroll -l samples-dir -x -a '(__fish_complete_directories)' -d "The owner's samples"
complete -c halcyra-enroll -l cascade -r -F -d 'Cascade for faces from the front'
complete -c halcyra-enroll -l profile-cascade -r -F -d 'Cascade for faces from the side'
complete -c halcyra-enroll -l fullscreen -d 'Cover the screen'
complete -c halcyra-enroll -s h -l help -d 'Show the usage'
complete -c halcyra-enroll -l version -d 'Show the version'
