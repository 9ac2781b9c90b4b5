#!/usr/bin/env bash
# The arrows of the house run one way: each folder includes only from the folders that it may, and no include
# goes in a circle.
set -euo pipefail
cd "$1"
status=0

may_include() { # FOLDER ALLOWED-REGEX
    local bad
    bad=$(grep -rnE '^#include "(host|controls|sweep|workstation|cli)/' "$1" --include='*.h' --include='*.cpp' |
          grep -vE "#include \"($2)/" || true)
    [ -z "$bad" ] || { echo "$1 must not include:"; echo "$bad"; status=1; }
}

base=host/base
tree="$base|host/valuetree"
xml="$tree|host/startup|host/report|host/freqstorexml"
gui="$xml|host/gui|host/widgets"
may_include host/base "$base"
may_include host/valuetree "$tree"
may_include host/startup "$tree|host/startup"
may_include host/report "$tree|host/report"
may_include host/freqstorexml "$tree|host/report|host/freqstorexml"
may_include host/gui "$xml|host/gui"
may_include host/widgets "$gui"
may_include host/freqlist "$gui|host/freqlist"
may_include controls "host/[a-z]+|controls/frequencystore(/[a-z]+)?"
may_include sweep "host/[a-z]+|sweep"
may_include cli "host/[a-z]+|controls/frequencystore(/[a-z]+)?|sweep|cli"
may_include workstation "host/[a-z]+|controls/frequencystore(/[a-z]+)?|sweep|workstation"

# The window knows no view, and no handler knows one either.
views=$(grep -rnE '#include "controls/frequencystore/[a-z]*view\.h"' workstation controls/frequencystore/listviewshandler || true)
[ -z "$views" ] || { echo "views are made by the store only:"; echo "$views"; status=1; }

# A circle of headers would make tsort complain.
circle=$(grep -rE '^#include "(host|controls|sweep|workstation|cli)/' host controls sweep workstation cli --include='*.h' |
         sed -E 's/^([^:]+):#include "([^"]+)".*/\1 \2/' | tsort 2>&1 >/dev/null || true)
[ -z "$circle" ] || { echo "$circle"; status=1; }
exit $status
