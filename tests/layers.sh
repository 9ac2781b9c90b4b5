#!/usr/bin/env bash
# The arrows of the house run one way: each room includes only from the rooms that it may, no include goes in a circle,
# and each source file is in a room.
set -euo pipefail
shopt -s globstar nullglob
cd "$1"
status=0
fail() { echo "$1"; status=1; }

# A folder, or one file of it, and the rooms that it may include from besides its own.
declare -A allowed
room() { allowed[$1]="$*"; }
tests_of() { allowed[$1]="$1 tests/support ${allowed[$2]}"; }

room host/base
room host/valuetree host/base
room host/startup host/base host/valuetree
room host/report host/base host/valuetree
room host/freqstorexml host/base host/valuetree host/report
room host/gui host/base host/valuetree host/startup
room host/widgets host/base host/valuetree host/startup host/gui
room host/freqlist host

lists=controls/frequencystore
room $lists/common host
room $lists/files host $lists/common
for list in targets memory noi results detections; do
    room $lists/$list host $lists/common $lists/files
done
room $lists/merge host $lists/{common,files,targets,memory,noi}
# One class makes the mediator for each kind of list.
room $lists/common/halvonodemediatorctrl.cpp host $lists/common $lists/targets $lists/memory $lists/results

# The records of a file may be those of a job.
room $lists/files/filerecords.cpp host $lists/common $lists/files $lists/memory

# Rooms of the programs, none of which knows a widget. Some are still to be built.
for part in sweep interchange link; do
    room $part host/base host/valuetree host/report host/freqstorexml
done
allowed[link]+=" host/startup"
# A receiver is set by what an entry of a list says.
room receiver host $lists/common
room scan host $lists/common receiver
parts="sweep interchange receiver scan link"
room cli host controls $parts
room workstation host controls $parts

room tests/support host/base
for module in base valuetree startup report freqstorexml gui widgets freqlist; do
    tests_of tests/$module host/$module
done
allowed[tests/freqlist]+=" examples/bookmarks" # a plug-in at work
room tests/frequencystore tests/support host $lists/{common,files,targets,memory,noi,results,detections,merge}
for program in $parts cli workstation; do
    tests_of tests/$program $program
done
allowed[tests/workstation]+=" examples/bookmarks tests/link tests/receiver" # seats and radios beside the window
tests_of tests/recoverychild workstation
tests_of tests/keyringchild workstation
room bench host controls $parts workstation cli
room fuzz host controls $parts
# The same answers are expected of the scanner whoever damages the document.
room fuzz/xmlscanner.cpp host tests/report
# A plug-in has no more than the host's headers.
room examples host

room_of() { # PATH; the answer is in $found, as a subshell for each include takes seconds
    found=$1
    until [ -n "${allowed[$found]:-}" ]; do
        case $found in
        */*) found=${found%/*} ;;
        *) found=; return ;;
        esac
    done
}

check_include() { # FILE INCLUDED
    local may
    for may in ${allowed[$found]}; do
        [[ $2 != "$may"/* ]] || return 0
    done
    fail "$1 must not include $2"
}

folders=()
for folder in host controls $parts workstation cli tests bench fuzz examples; do
    [ ! -d "$folder" ] || folders+=("$folder")
done
tops=$(IFS='|'; echo "${folders[*]}")
for folder in */; do
    folder=${folder%/}
    if [[ ! $folder =~ ^($tops|build|cmake)$ && -n $(find "$folder" \( -name '*.h' -o -name '*.cpp' \) -print -quit) ]]; then
        fail "$folder is in no room"
    fi
done
includes=$(grep -rE '^ *# *include +(["<]('"$tops"')/|")' "${folders[@]}" --include='*.h' --include='*.cpp' |
           sed -E 's/^([^:]+): *# *include +["<]([^">]+).*/\1 \2/')
while read -r file included; do
    room_of "$file"
    if [[ ! $included =~ ^($tops)/ ]]; then
        fail "$file: $included is not spelt from the root"
    elif [ -n "$found" ]; then
        check_include "$file" "$included"
    fi
done <<<"$includes"
for folder in "${folders[@]}"; do
    for file in "$folder"/**/*.{h,cpp}; do
        room_of "$file"
        [ -n "$found" ] || fail "$file is in no room"
    done
done

# Views are made by the store only: the programs know none, and of a list's files only other views do. A mediator fills
# cells of the host's views; a handler, an entry or a reader knows no view at all.
while read -r file included; do
    case $file in
    tests/* | bench/* | *view.h | *view.cpp) ;;
    *) fail "$file must not include the view $included" ;;
    esac
done < <(grep -E ' controls/.*view\.h$' <<<"$includes" || true)
while read -r file included; do
    fail "$file must not include the view $included"
done < <(grep -E '^controls/[^ ]+ host/.*view\.h$' <<<"$includes" |
         grep -vE '^[^ ]+(view|mediator|mediatorctrl)\.(h|cpp) ' || true)
# Who registers a list knows its view by the header of a factory, so no other header declares one.
for header in $(grep -lE '\bFrequencyStoreListView\b' controls/**/*.h); do
    case $header in
    *view.h | *viewfactory.h) ;;
    *) fail "$header must not declare a view" ;;
    esac
done

# A circle of headers makes tsort complain.
circle=$(grep -E '^[^ ]+\.h ' <<<"$includes" | tsort 2>&1 >/dev/null || true)
[ -z "$circle" ] || fail "$circle"
exit $status
