# Sourced by the scripts: installs what is missing of the Debian packages that the project is built with.
packages=(g++ cmake ninja-build ccache pkg-config qt6-base-dev qt6-base-dev-tools qt6-svg-dev qt6-tools-dev
          qt6-l10n-tools qt6-translations-l10n libgl-dev libgtest-dev libgmock-dev libbenchmark-dev
          libgeographiclib-dev libexpat1-dev libxml2-utils fonts-dejavu-core python3 tzdata valgrind desktop-file-utils
          appstream xvfb xdotool rapidjson-dev libhamlib-dev libhamlib-utils socat libmosquitto-dev mosquitto openssl
          qtkeychain-qt6-dev)

install_missing_packages() {
    local missing=() package
    for package in "${packages[@]}" "$@"; do
        dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
    done
    [ "${#missing[@]}" -eq 0 ] && return
    echo "Installing: ${missing[*]}"
    local sudo=()
    [ "$(id -u)" -eq 0 ] || sudo=(sudo)
    "${sudo[@]}" apt-get update -qq
    install_without_services "${missing[@]}"
}

# Installs packages none of whose services starts: the tests start a broker of their own. A policy for services that the
# machine has itself stays; ours does not outlive this.
install_without_services() {
    local policy=${POLICY_RC_D:-/usr/sbin/policy-rc.d} sudo=()
    [ "$(id -u)" -eq 0 ] || sudo=(sudo)
    (
        if [ ! -e "$policy" ]; then
            trap '"${sudo[@]}" rm -f "$policy"' EXIT
            printf '#!/bin/sh\nexit 101\n' | "${sudo[@]}" install -m 755 /dev/stdin "$policy"
        fi
        "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "$@" >/dev/null
    )
}
