#!/usr/bin/env bash
# Installs the Debian packages of the named groups that this system lacks:
#   scripts/install-packages.sh GROUP...
# Groups: build (compile the program), run (what it needs on a desktop beyond that), test, check (format and lint),
# fuzz (the fuzzing programs), bench (the benchmarks), peers (other programs that rename and tag, for the benchmarks to
# compare with), package (make and check a Debian package), prove (try a package in a system of its own).
# Where nothing is missing it needs neither the network nor root.
set -euo pipefail

packages_of() {
    case $1 in
    build) echo g++ cmake ninja-build pkg-config qt6-base-dev qt6-svg-dev libmount-dev libmpg123-dev libsdl2-dev ;;
    run) echo fonts-dejavu-core fonts-nanum qt6-translations-l10n qt6-wayland ;;
    test | bench) echo libbenchmark-dev ;;
    check) echo clang-format clang-tidy ;;
    fuzz) echo clang libclang-rt-14-dev ;;
    package) echo dpkg-dev file desktop-file-utils appstream lintian ;;
    prove) echo debootstrap xvfb openbox xdotool x11-utils imagemagick ;;
    peers) echo id3ren mp3rename id3 id3tool mp3info kid3-cli eyed3 libimage-exiftool-perl libtag1-dev ;;
    *)
        echo "$0: there is no package group \"$1\"" >&2
        return 2
        ;;
    esac
}

is_installed() {
    dpkg-query -W -f '${db:Status-Status}\n' "$1" 2>/dev/null | grep -qx installed
}

missing=()
for group in "$@"; do
    group_packages=$(packages_of "$group")
    for package in $group_packages; do
        is_installed "$package" || missing+=("$package")
    done
done
((${#missing[@]})) || exit 0

if ! command -v apt-get >/dev/null; then
    echo "Not a Debian system. Please install what stands for these packages yourself: ${missing[*]}" >&2
    exit 1
fi

as_root=()
if ((EUID != 0)); then
    if ! command -v sudo >/dev/null; then
        echo "These packages are missing, and there is no sudo to install them with: ${missing[*]}" >&2
        echo "Please run this as root:  apt-get install ${missing[*]}" >&2
        exit 1
    fi
    as_root=(sudo)
fi

apt_get() {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -y -q \
        -o Acquire::Retries=3 -o DPkg::Lock::Timeout=300 "$@" </dev/null
}

echo "Installing: ${missing[*]}"
apt_get update || echo "Not every package list could be refreshed; going on with those that are there." >&2
apt_get install --no-install-recommends "${missing[@]}"
