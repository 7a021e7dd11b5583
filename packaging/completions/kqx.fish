# SPDX-License-Identifier: MIT
# Completion of kqx for fish: commands, options, values of options, and captures.
function __kqx_ports
    # In "set" a pattern without a match is allowed; in a command line fish would print an error.
    set -l ports /dev/ttyUSB* /dev/ttyACM* /dev/serial/by-id/*
    string join \n -- $ports (seq 16)
    string match -q '/*' -- (commandline -ct); and __fish_complete_path (commandline -ct)
end

set -l commands convert fetch info measure open page ports screen table
complete -c kqx -n "not __fish_seen_subcommand_from $commands" -f
complete -c kqx -n __fish_use_subcommand -a convert -d "Write samples for other programs"
complete -c kqx -n __fish_use_subcommand -a fetch -d "Fetch captures from the instrument"
complete -c kqx -n __fish_use_subcommand -a info -d "Print what captures hold"
complete -c kqx -n __fish_use_subcommand -a measure -d "Measure samples in volts and seconds"
complete -c kqx -n __fish_use_subcommand -a open -d "Open a capture in the program"
complete -c kqx -n __fish_use_subcommand -a page -d "Write printed pages"
complete -c kqx -n __fish_use_subcommand -a ports -d "List the connections to an instrument"
complete -c kqx -n __fish_use_subcommand -a screen -d "Write screens"
complete -c kqx -n __fish_use_subcommand -a table -d "Write samples as tables"
complete -c kqx -n __fish_use_subcommand -l help -d "List the commands"
complete -c kqx -n __fish_use_subcommand -l version -d "Print the version"
complete -c kqx -n "__fish_seen_subcommand_from ports" -f
complete -c kqx -n "__fish_seen_subcommand_from $commands" -l help -d "Print help"
set -l lists "__fish_seen_subcommand_from convert info measure page screen table"
complete -c kqx -n $lists -l files-from -r -F -d "Read more file names from this list"
complete -c kqx -n $lists -l null -d "Names in the list end with a NUL byte"
complete -c kqx -n $lists -l jobs -x -d "Files to work on at the same time"
set -l writes "__fish_seen_subcommand_from convert page screen table"
complete -c kqx -n $writes -l out-dir -x -a "(__fish_complete_directories)" -d "Write into this folder"
complete -c kqx -n $writes -l no-clobber -d "Do not replace existing files"
complete -c kqx -n "__fish_seen_subcommand_from convert" -l to -x -a "csv npz sr" -d "Kind of file"
complete -c kqx -n "__fish_seen_subcommand_from page" -l to -x -a pdf -d "Kind of file"
complete -c kqx -n "__fish_seen_subcommand_from screen" -l to -x -a png -d "Kind of file"
complete -c kqx -n "__fish_seen_subcommand_from table" -l to -x -a "csv txt xls xlsx" -d "Kind of file"
complete -c kqx -n "__fish_seen_subcommand_from convert measure" -l channels -x -a "(__fish_append , ch1 ch2 A B C D)" -d "Only these channels"
complete -c kqx -n "__fish_seen_subcommand_from info measure ports" -l json -d "Print JSON"
complete -c kqx -n "__fish_seen_subcommand_from measure" -l csv -d "A row for each channel"
complete -c kqx -n "__fish_seen_subcommand_from measure" -l all -d "All samples of a slow scan"
complete -c kqx -n "__fish_seen_subcommand_from fetch" -l serial -x -k -a "(__kqx_ports)" -d "Over a serial line"
complete -c kqx -n "__fish_seen_subcommand_from fetch" -l usb -d "Over USB"
complete -c kqx -n "__fish_seen_subcommand_from fetch" -s o -l output -r -F -d "File or folder"
complete -c kqx -n "__fish_seen_subcommand_from fetch" -l every -x -d "Seconds between fetches"
complete -c kqx -n "__fish_seen_subcommand_from fetch" -l count -x -d "Number of captures"
complete -c kqx -n "__fish_seen_subcommand_from fetch" -l timeout -x -d "Seconds until a read has failed"
complete -c kqx -n "__fish_seen_subcommand_from fetch" -l force -d "Overwrite an existing file"
complete -c kqx -n "__fish_seen_subcommand_from page" -l paper -x -a "A3 A4 A5 Letter Legal" -d "Size of the paper"
complete -c kqx -n "__fish_seen_subcommand_from page" -l landscape -d "On its side"
complete -c kqx -n "__fish_seen_subcommand_from page" -l margins -x -d "In centimetres: top,bottom,left,right"
complete -c kqx -n "__fish_seen_subcommand_from screen" -l points -d "Points instead of lines"
complete -c kqx -n "__fish_seen_subcommand_from screen" -l cross -d "Cross instead of the graticule"
complete -c kqx -n "__fish_seen_subcommand_from screen" -l scale -x -d "Enlarge each pixel"
complete -c kqx -n "__fish_seen_subcommand_from screen" -l thumbnail -x -d "A small picture"
complete -c kqx -n "__fish_seen_subcommand_from table" -l columns -x -d "These columns in this order"
complete -c kqx -n "__fish_seen_subcommand_from table" -l language -x -a "0\t中文 1\tEnglish" -d "Language of the unit line"
complete -c kqx -n "__fish_seen_subcommand_from table" -l time -d "A column of seconds"
complete -c kqx -n "__fish_seen_subcommand_from table" -l volts -d "Volts at the probe's tip"
