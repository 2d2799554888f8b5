#!/usr/bin/env bash
# Holds the proofs that docs/safety.md names against the code: each test program and each of its functions must be there.
# Prints each that is not; exit status 1 if there is one.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."

missing=0
tell() {
    echo "docs/safety.md names $1, which is not there."
    missing=1
}

page=$(<docs/safety.md)
while read -r name; do
    case $name in
    test_*) compgen -G "tests/*/$name.cpp" >/dev/null || tell "$name" ;;
    */*) [[ -e $name ]] || tell "$name" ;;
    *) grep -rqE "void (Test[A-Za-z]+::)?$name\(" tests || tell "$name" ;;
    esac
done < <(grep -oP '`\K([a-z]+(_[a-z0-9]+)+|[a-z]+/[a-z./_-]+)(?=[ `])' <<<"$page" | sort -u)

((missing == 0)) && echo "The proofs that docs/safety.md names are there."
exit "$missing"
