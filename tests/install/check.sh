#!/usr/bin/env bash
# Installs the project into a scratch folder, builds the example plug-in against the installed package, and
# starts the installed workstation with it: the plug-in's list must come up as a tab of its own.
set -euo pipefail
build=$1 source=$2 cxx_flags=$3
scratch=$(mktemp -d)
quietly() { "$@" >"$scratch/log" 2>&1 || { cat "$scratch/log"; exit 1; }; }
trap 'rm -rf "$scratch"' EXIT

quietly cmake --install "$build" --prefix "$scratch/prefix"
quietly cmake -S "$source/examples" -B "$scratch/examples" -G Ninja -DCMAKE_PREFIX_PATH="$scratch/prefix" \
      -DCMAKE_CXX_FLAGS="$cxx_flags"
quietly cmake --build "$scratch/examples"

export QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR="$scratch" ASAN_OPTIONS=detect_leaks=0
"$scratch/prefix/bin/freqstore" --config "$scratch/config" --data "$scratch/data" --demo \
    --extension "$scratch/examples/libbookmarks.so" --screenshot "$scratch/pictures" | tee "$scratch/table"
grep -Eq '^Bookmarks +3 +3 ' "$scratch/table"
grep -Eq '^Local TargetList +[1-9][0-9]{2,} ' "$scratch/table"
test -s "$scratch/pictures/bookmarks.png"

"$scratch/prefix/bin/freqstore-cli" convert "$source/samples/targets.ltl" "$scratch/targets.xml"
"$scratch/prefix/bin/freqstore-cli" check "$scratch/targets.xml"
