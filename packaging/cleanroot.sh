#!/usr/bin/env bash
# Run by ./packages inside a clean root with the packages in /check.
set -euo pipefail
cd /check
export DEBIAN_FRONTEND=noninteractive QT_QPA_PLATFORM=offscreen HOME=/check/home LC_ALL=C.UTF-8
export XDG_RUNTIME_DIR=/check/run
mkdir -m 700 home run
quietly() { "$@" >log 2>&1 || { cat log; echo "failed: $*"; exit 1; }; }
install() { quietly apt-get install -y --no-install-recommends "$@"; }
ours() { find / -xdev \( -path /proc -o -path /sys -o -path /check -o -path /var/lib/dpkg \) -prune \
    -o \( -name '*freqstore*' -o -name '*frequencystore*' \) -print; }

# The programs with nothing but what they depend on.
install ./libfreqstore0_*.deb ./freqstore_*.deb
freqstore --demo --screenshot pictures >table 2>log || { cat log; exit 1; }
grep -Eq '^Local TargetList +[1-9][0-9]{2,} ' table
test -s pictures/window.png
freqstore-cli show /usr/share/frequencystore/samples/targets.xml >list
test "$(wc -l <list)" -gt 500
test "$(freqstore-cli receivers | wc -l)" -gt 250
freqstore-cli tune --receiver hamlib:1 7055kHz LSB | grep -q '^7055.000 kHz LSB'
grep -q 'application/x-freqstore-job+xml:\*\.pij' /usr/share/mime/globs2

# A broker is suggested and does not come along; without one, sharing tells what it lacks.
dpkg-query -W -f '${Suggests}' freqstore | grep -q mosquitto
if dpkg-query -W -f '${Depends} ${Recommends}' freqstore | grep -qw mosquitto || command -v mosquitto; then exit 1; fi
timeout 5 freqstore-cli watch mqtt://127.0.0.1/north 2>log || true
grep -q 'not connected: Connection refused' log

# A plug-in against the development package, with nothing but a compiler besides.
install ./libfreqstore-dev_*.deb ./freqstore-doc_*.deb g++ cmake make
quietly cmake -S /usr/share/doc/freqstore-doc/examples -B plugin
quietly cmake --build plugin
freqstore --demo --extension plugin/libbookmarks.so --screenshot pictures >table 2>log || { cat log; exit 1; }
grep -Eq '^Bookmarks +3 +3 ' table

mapfile -t packages < <(dpkg-query -W -f '${Package}\n' '*freqstore*')
test "${#packages[@]}" -eq 4
test -n "$(ours)"
quietly apt-get purge -y "${packages[@]}"
left=$(ours; grep -rl freqstore /usr/share/mime /usr/share/applications /etc || true)
test -z "$left" || { echo "Left by the packages:"; echo "$left"; exit 1; }
