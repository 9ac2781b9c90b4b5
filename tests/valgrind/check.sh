#!/usr/bin/env bash
# Runs commands of freqstore-cli on the samples, and on torn ones, under valgrind: memcheck must find no error in
# them and nothing that is lost for good.
set -euo pipefail
build=$(realpath "$1") source=$(realpath "$2")
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$source/samples"
status=0
export QT_ENABLE_REGEXP_JIT=0 # code that is made while it runs reads ahead of its texts

clean() { # STATUS COMMAND...; the status that the command ends with when all is well
    local expected=$1 ended=0
    shift
    valgrind --quiet --leak-check=full --show-leak-kinds=definite --errors-for-leak-kinds=definite --num-callers=40 \
        --suppressions="$source/tests/valgrind/qt.supp" --error-exitcode=99 "$build/freqstore-cli" "$@" \
        >"$scratch/log" 2>&1 || ended=$?
    if [ "$ended" -ne "$expected" ]; then
        cat "$scratch/log"
        echo "freqstore-cli $*: ended with $ended, not $expected"
        status=1
    fi
}

clean 0 check targets.ltl airband.sfl targets.csv targets.xml profiles.xml interest.* memory-*.xml job-*.pij sweep.csv
clean 0 convert targets.ltl "$scratch/targets.xml"
clean 0 convert --list results results.xml "$scratch/results.csv"
clean 0 convert --list memory-vuhf memory-vuhf.xml "$scratch/memory.json"
clean 0 job merge job-hf.pij memory-hf.sfl --out "$scratch/job.pij"
clean 0 job merge --replace job-vuhf.pij "$scratch/memory.json" --out "$scratch/job.pij"
clean 0 detect --time-zone UTC sweep.csv "$scratch/detections.xml"
clean 0 convert "$scratch/detections.xml" "$scratch/detections.json"

# A third of each file: it ends in the middle of an entry.
mkdir "$scratch/cut"
for file in targets.ltl targets.csv targets.xml interest.noi memory-hf.xml job-hf.pij sweep.csv; do
    head -c $(($(stat -c %s "$file") / 3)) "$file" >"$scratch/cut/$file"
done
clean 2 check "$scratch"/cut/*
clean 2 convert "$scratch/cut/targets.xml" "$scratch/rest.csv"
clean 2 job merge "$scratch/cut/job-hf.pij" memory-hf.sfl --out "$scratch/rest.pij"
clean 2 detect --time-zone UTC "$scratch/cut/sweep.csv" "$scratch/rest.xml"
exit $status
