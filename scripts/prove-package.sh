#!/usr/bin/env bash
# Tries packages as on a fresh Debian 12:  scripts/prove-package.sh PACKAGE.deb...
# A system of its own is laid out below build/prove, with all that the packages need. Each of them is installed there with
# apt, in place of the one before, is started from its menu entry on a virtual screen by an ordinary user, and does the main
# job on sample files. The last one is removed, and what stays behind is told. The pictures of the screen are in build/prove/pictures.
# Needs root and the network, and some minutes. QUILMO_CLEAN_ROOT: a Debian 12 that is laid out already, which is copied.
set -euo pipefail
exec </dev/null
cd "$(dirname "$(readlink -f "$0")")/.."

if ((EUID != 0)) || (($# == 0)); then
    echo "usage, as root: $0 PACKAGE.deb..." >&2
    exit 2
fi
# All mounts go with this process.
if [[ -z ${QUILMO_PROVE_MOUNTS:-} ]]; then
    QUILMO_PROVE_MOUNTS=own exec unshare --mount --propagation private --pid --fork --kill-child "$0" "$@"
fi

work=$PWD/build/prove
root=$work/root
pictures=$work/pictures
display=:97
id=example.quilmo.Quilmo

step() { printf '\n== %s\n' "$1"; }
fail() {
    echo "$0: $1" >&2
    exit 1
}
# inside COMMAND...: in the new system, as root.
inside() { chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive "$@"; }
# as_user COMMAND...: in the new system, as an ordinary user in the home folder.
as_user() {
    inside runuser --user listener -- env --chdir=/home/listener HOME=/home/listener DISPLAY="$display" \
        SDL_AUDIODRIVER=dummy XDG_RUNTIME_DIR=/run/listener "$@"
}
apt_get() { inside apt-get -y -q -o Dpkg::Use-Pty=0 "$@"; }
# All that lies in the new system, but what changes with every use of apt, and the user's own home.
files_inside() {
    find "$root" -xdev \( -path "$root/proc" -o -path "$root/sys" -o -path "$root/dev" -o -path "$root/tmp" \
        -o -path "$root/run" -o -path "$root/home" -o -path "$root/var/lib/apt" -o -path "$root/var/cache/apt" \
        -o -path "$root/var/log" \) -prune -o -printf '/%P\n' | LC_ALL=C sort
}

# wait_for WHAT COMMAND...: until the command succeeds, half a minute at most.
wait_for() {
    local tries
    for ((tries = 0; tries < 150; ++tries)); do
        "${@:2}" >/dev/null 2>&1 && return
        sleep 0.2
    done
    fail "$1 did not come"
}
xdo() { DISPLAY=$display xdotool "$@"; }
picture() { DISPLAY=$display import -window root "$pictures/$1.png"; }
windows() { xdo search --onlyvisible --class '^quilmo$'; }
# The first window of at least this width: the main window, but not the splash.
window_wide() {
    local window WIDTH=0
    for window in $(windows); do
        eval "$(xdo getwindowgeometry --shell "$window")"
        if ((WIDTH >= $1)); then
            echo "$window"
            return
        fi
    done
    return 1
}
window_count() { (($(windows | wc -l) == $1)); }
loads_sdl() { grep -q libSDL2 "$root/proc/$(inside pgrep --exact quilmo)/maps"; }
# click X Y: in pixels of the window that has the focus.
click() {
    xdo mousemove --window "$(xdo getactivewindow)" "$1" "$2" click 1
    sleep 1
}

scripts/install-packages.sh prove
[[ -x build/package/samples/quilmo-samples ]] || {
    scripts/build.sh package
    cmake --build build/package --target quilmo-samples
}

step "A fresh Debian 12"
clean=${QUILMO_CLEAN_ROOT:-$work/clean}
if [[ -z ${QUILMO_CLEAN_ROOT:-} && (! -e $clean || -e $clean/debootstrap) ]]; then # or it was left half done
    rm -rf --one-file-system "$clean"
    debootstrap bookworm "$clean" http://deb.debian.org/debian
fi
rm -rf --one-file-system "$root" "$pictures"
mkdir -p "$pictures"
cp -a "$clean" "$root"
mount -t proc proc "$root/proc"
inside useradd --create-home --shell /bin/bash listener
mkdir -p "$root/run/listener" "$root/tmp/.X11-unix"
inside chown listener: /run/listener
inside chmod 700 /run/listener
apt_get update
# gio starts a program as a menu does.
apt_get install --no-install-recommends libglib2.0-bin
# What the packages need and recommend, so that what stays of it is not taken for something of theirs.
for package in "$@"; do
    apt_get satisfy "$(dpkg-deb --field "$package" Depends), $(dpkg-deb --field "$package" Recommends)"
done
files_inside >"$work/before"

Xvfb "$display" -screen 0 1280x900x24 -nolisten tcp >"$work/xvfb.log" 2>&1 &
wait_for "the screen" xdo getdisplaygeometry
mount --bind /tmp/.X11-unix "$root/tmp/.X11-unix"
DISPLAY=$display openbox >"$work/openbox.log" 2>&1 &

for package in "$@"; do
    name=$(dpkg-deb --field "$package" Package)

    step "$name: install"
    cp "$package" "$root/tmp/$name.deb"
    apt_get install "/tmp/$name.deb"
    # shellcheck disable=SC2016
    inside dpkg-query -W -f '${Package} ${Version} ${db:Status-Status}\n' 'quilmo*' | tee "$work/installed"
    (($(grep -c ' installed$' "$work/installed") == 1)) || fail "not exactly one of the packages is installed"

    step "$name: start from the menu entry"
    rm -rf "$root/home/listener/Music"
    build/package/samples/quilmo-samples "$work/Music" --files 60 >/dev/null
    mv "$work/Music" "$root/home/listener/Music"
    inside chown -R listener: /home/listener/Music
    as_user quilmo-fif check --json Music >"$work/$name.classes" || true
    as_user gio launch "/usr/share/applications/$id.desktop" &
    wait_for "the main window" window_wide 900
    xdo windowactivate --sync "$(window_wide 900)"
    sleep 1
    picture "$name-1-start"
    DISPLAY=$display xprop -id "$(window_wide 900)" WM_CLASS

    step "$name: the main job"
    # The music folder is the third drive, and its first folder the one below it.
    click 100 200
    xdo key Right
    sleep 1
    xdo key Down
    sleep 1
    click 120 90
    picture "$name-2-selected"
    click 630 90
    wait_for "the final list" window_count 2
    sleep 1
    picture "$name-3-final-list"
    click 515 590
    sleep 1
    picture "$name-4-changed"
    xdo key --delay 500 Escape
    wait_for "the main window again" window_count 1
    click 314 156
    click 686 604
    wait_for "the sound library" loads_sdl
    sleep 2
    picture "$name-5-playing"
    xdo key alt+F4
    wait_for "the end of the program" window_count 0
    as_user quilmo-fif check --json Music >"$work/$name.classes.after" || true
    before=$(grep -c '"class":"FIF"' "$work/$name.classes")
    after=$(grep -c '"class":"FIF"' "$work/$name.classes.after")
    echo "Files with FIF names: $before before, $after after"
    ((after > before)) || fail "no file has got a FIF name"

    step "$name: quilmo-fif"
    as_user sh -c 'cd Music && find . | sort | sha1sum && find . -type f | sort | xargs -d "\n" cat | sha1sum' >"$work/sums"
    as_user quilmo-fif convert --type 1 --tags --apply --journal run.journal Music | cut -d ' ' -f 1 | sort | uniq -c || true
    as_user quilmo-fif undo run.journal | cut -d ' ' -f 1 | sort | uniq -c
    as_user sh -c 'cd Music && find . | sort | sha1sum && find . -type f | sort | xargs -d "\n" cat | sha1sum' |
        diff "$work/sums" - || fail "undo did not bring back what was"
    as_user rm -f run.journal
    echo "Names and bytes are back."
done

step "Remove"
apt_get remove "$name"
files_inside >"$work/after"
echo "Files before that are gone, and files after that were not there before:"
diff --label before --label after "$work/before" "$work/after" | grep '^[<>]' || echo "none"
! grep -i quilmo "$work/after" || fail "something of the packages is left"
echo "New in the home folder:"
find "$root/home/listener" -newer "$work/before" -type f -not -path '*/Music/*' -printf '%P\n'
