#!/usr/bin/env bash
# Tells what is wrong with a Debian package of ours:  scripts/check-package.sh PACKAGE.deb
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
package=$(readlink -f "$1")
work=$(mktemp -d)
trap 'rm -r "$work"' EXIT

name=$(dpkg-deb --field "$package" Package)
dpkg-deb --extract "$package" "$work/root"
share=$work/root/usr/share
id=example.quilmo.Quilmo

# Rights, owner and path of everything that it installs.
dpkg-deb --contents "$package" | awk '{ print $1, $2, $6 }' | LC_ALL=C sort -k 3 >"$work/files"
sed "s|@QUILMO_PACKAGE@|$name|" packaging/debian/files | diff - "$work/files" || {
    echo "The package does not hold what packaging/debian/files lists." >&2
    exit 1
}

desktop-file-validate "$share/applications/$id.desktop"
# The maker's address ends in a domain that the validator does not know, so it doubts the id; nothing else may be said.
appstreamcli validate --no-net --no-color "$share/metainfo/$id.metainfo.xml" >"$work/metainfo" || true
if grep -E '^[A-Z]: ' "$work/metainfo" | grep -v '^I: .* cid-maybe-not-rdns '; then
    echo "appstreamcli complains." >&2
    exit 1
fi
grep -q 'Validation was successful' "$work/metainfo"

lintian --allow-root --tag-display-limit 0 --display-info --pedantic "$package" | tee "$work/lintian"
if [[ -s $work/lintian ]]; then
    echo "lintian complains." >&2
    exit 1
fi

for program in quilmo quilmo-fif; do
    scripts/check-hardening.sh "$work/root/usr/bin/$program"
done

"$work/root/usr/bin/quilmo-fif" --help >/dev/null
# The window stays open until it is ended from outside, which `timeout` tells by 124.
ended=0
HOME=$work XDG_RUNTIME_DIR=$work QT_QPA_PLATFORM=offscreen SDL_AUDIODRIVER=dummy timeout 5 "$work/root/usr/bin/quilmo" || ended=$?
if ((ended != 124)); then
    echo "quilmo ended by itself, with status $ended." >&2
    exit 1
fi
