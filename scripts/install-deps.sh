#!/usr/bin/env bash
# Installs the Debian packages that building and testing Zevrin need, skipping those already
# present, so that a second run costs no network time. Needs root (or sudo) on Debian 12.
set -euo pipefail

packages=(build-essential cmake ninja-build pkg-config libgtest-dev libgmock-dev libbenchmark-dev nlohmann-json3-dev
    qt6-base-dev qt6-svg-dev libqt6sql6-sqlite libqt6sql6-psql libgl-dev sqlite3 postgresql
    clang libclang-rt-14-dev valgrind
    mariadb-server libqt6sql6-mysql firebird3.0-server firebird3.0-utils libqt6sql6-ibase)

missing=()
for p in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
        missing+=("$p")
    fi
done

if [ ${#missing[@]} -eq 0 ]; then
    echo "install-deps: all ${#packages[@]} packages present"
    exit 0
fi

sudo=""
if [ "$(id -u)" -ne 0 ]; then sudo="sudo"; fi
echo "install-deps: installing ${missing[*]}"
# The database servers are only started by the tests, on sockets of their own: a policy that
# refuses service starts keeps the packages from starting system-wide instances while installing.
policy=/usr/sbin/policy-rc.d
if [ ! -e "$policy" ]; then
    printf '#!/bin/sh\nexit 101\n' | $sudo tee "$policy" >/dev/null
    $sudo chmod 755 "$policy"
    trap '$sudo rm -f "$policy"' EXIT
fi
$sudo apt-get update -qq
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
