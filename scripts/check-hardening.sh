#!/usr/bin/env bash
# Tells what a release binary lacks of its hardening:  scripts/check-hardening.sh BINARY
set -euo pipefail
binary=$1

header=$(readelf --file-header --wide "$binary")
segments=$(readelf --segments --wide "$binary")
dynamic=$(readelf --dynamic --wide "$binary")
imports=$(readelf --dyn-syms --wide "$binary" | grep ' UND ')

missing=0
# expect WHAT TEXT PATTERN: the text has a line that fits the pattern.
expect() {
    if ! grep -Eq -- "$3" <<<"$2"; then
        echo "$binary: $1" >&2
        missing=1
    fi
}

expect "not position-independent" "$header" 'Type: +DYN'
expect "not marked as position-independent" "$dynamic" 'FLAGS_1.* PIE'
expect "relocations stay writable" "$segments" 'GNU_RELRO'
expect "functions are bound late, so their table stays writable" "$dynamic" 'FLAGS_1.* NOW'
expect "the stack can be executed" "$segments" 'GNU_STACK .* RW +0x'
expect "no stack protector" "$imports" ' __stack_chk_fail'
expect "no checked calls of the C library (_FORTIFY_SOURCE)" "$imports" ' __[a-z0-9_]+_chk(@|$)'
expect "no checked containers (_GLIBCXX_ASSERTIONS)" "$imports" 'glibcxx_assert_fail'
exit "$missing"
