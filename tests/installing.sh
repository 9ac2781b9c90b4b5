#!/usr/bin/env bash
# Packages that the project is built with are installed without starting their services: run with an apt-get that notes
# what it is asked and whether services may start, and installs nothing.
set -euo pipefail
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir "$folder/bin"
export POLICY_RC_D=$folder/policy-rc.d PATH=$folder/bin:$PATH FOLDER=$folder
cat >"$folder/bin/apt-get" <<'END'
#!/bin/bash
[ "$1" = install ] || exit 0
code=0
[ ! -e "$POLICY_RC_D" ] || "$POLICY_RC_D" mosquitto start || code=$?
echo "$code ${*: -1}" >"$FOLDER/asked"
[ -z "${APT_INTERRUPTED:-}" ] || kill -TERM "$PPID"
exit "${APT_STATUS:-0}"
END
printf '#!/bin/sh\nexit 1\n' >"$folder/bin/dpkg-query" # nothing is installed
printf '#!/bin/sh\nexec "$@"\n' >"$folder/bin/sudo"
chmod +x "$folder"/bin/*
source "$1/cmake/packages.sh"

expect() { [ "$2" = "$3" ] || { echo "$1: \"$2\", not \"$3\""; exit 1; }; }
install_missing_packages last-package >/dev/null
expect "services and last package" "$(cat "$folder/asked")" "101 last-package"
expect "policy afterwards" "$(ls "$POLICY_RC_D" 2>/dev/null)" ""
status=0
APT_STATUS=7 install_missing_packages >/dev/null || status=$?
expect "status of apt-get" "$status" 7
expect "policy after a failure" "$(ls "$POLICY_RC_D" 2>/dev/null)" ""
(APT_INTERRUPTED=yes install_missing_packages) >/dev/null 2>&1 || true
expect "policy after an interruption" "$(ls "$POLICY_RC_D" 2>/dev/null)" ""
printf '#!/bin/sh\nexit 104\n' >"$POLICY_RC_D"
chmod +x "$POLICY_RC_D"
install_missing_packages own >/dev/null
expect "services with a policy of the machine" "$(cat "$folder/asked")" "104 own"
expect "the machine's policy" "$(tail -n 1 "$POLICY_RC_D")" "exit 104"
