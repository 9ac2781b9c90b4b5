#!/usr/bin/env bash
# The files with which the program presents itself to a desktop are valid and name the same kinds of files.
set -euo pipefail
cd "$1/packaging"
desktop-file-validate freqstore.desktop
appstreamcli validate --no-net ./*.metainfo.xml
xmllint --noout freqstore.mime.xml

types() { grep -o 'application/x-freqstore-[a-z+]*' "$1" | sort; }
for file in freqstore.desktop ./*.metainfo.xml; do
    diff <(types freqstore.mime.xml) <(types "$file") || { echo "$file names other types"; exit 1; }
done
