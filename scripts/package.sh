#!/usr/bin/env bash
# Builds the Debian packages of the named languages, the English one where none is named, and tells where they are:
#   scripts/package.sh [en|ko|de]...
set -euo pipefail
exec </dev/null
cd "$(dirname "$(readlink -f "$0")")/.."

languages=()
for language in "${@:-en}"; do
    case $language in
    en) languages+=(1) ;;
    ko) languages+=(2) ;;
    de) languages+=(3) ;;
    *)
        echo "usage: $0 [en|ko|de]..." >&2
        exit 2
        ;;
    esac
done

scripts/install-packages.sh build package
# All languages are built in one folder: they differ in one source file.
for language in "${languages[@]}"; do
    scripts/build.sh package -DQUILMO_LANGUAGE="$language"
    cpack --config build/package/CPackConfig.cmake -B build/packages
done
rm -r build/packages/_CPack_Packages
