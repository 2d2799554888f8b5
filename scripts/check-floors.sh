#!/usr/bin/env bash
# The floors of src/: a folder includes only what stands below it, the widget-free half knows no widgets,
# and no file takes part in an include loop. companion/ stands on the widget-free half alone, and src/ knows nothing of it.
# Prints each breach; exit status 1 if there is one.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."

floors=(platform core mp3 fif selection explorer player convert frame) # from the ground up
declare -A height
for i in "${!floors[@]}"; do
    height[${floors[i]}]=$i
done

# One line for each include of a file of ours: the file, a blank, what it includes.
includes() {
    grep -roP --include='*.cpp' --include='*.h' '^\s*#\s*include\s*"\K[^"]+' src companion | sed 's|^src/||; s|:| |'
}

is_logic() {
    case $1 in
    platform/controls/*) return 1 ;;
    platform/* | core/* | mp3/* | fif/* | selection/final_list.* | companion/*) return 0 ;;
    *) return 1 ;;
    esac
}

breaches=0
breach() {
    local place=src/
    [[ $1 != companion/* ]] || place=
    echo "$place$1 must not include \"$2\": $3"
    breaches=$((breaches + 1))
}

edges=
while read -r file included; do
    [[ $included == */* ]] || included=$(dirname "$file")/$included
    edges+="$file $included"$'\n'
    from=${file%%/*} to=${included%%/*}
    if [[ $from == companion ]]; then
        is_logic "$included" || breach "$file" "$included" "it belongs to the half with widgets"
        continue
    fi
    [[ -n ${height[$from]:-} ]] || continue # main.cpp stands above all floors
    if [[ -z ${height[$to]:-} ]]; then
        breach "$file" "$included" "that is no floor of src/"
    elif ((height[$to] > height[$from])); then
        breach "$file" "$included" "$to stands above $from"
    elif is_logic "$file" && ! is_logic "$included"; then
        breach "$file" "$included" "it belongs to the half without widgets"
    fi
done < <(includes)

while IFS=: read -r file line; do
    if is_logic "$file"; then
        breach "$file" "$line" "it belongs to the half without widgets"
    fi
done < <(grep -roP --include='*.cpp' --include='*.h' '^\s*#\s*include\s*<\KQt(Gui|Widgets|Svg)[^>]*' src companion | sed 's|^src/||')

if ! tsort <<<"$edges" >/dev/null; then
    echo "The files above include each other in a loop."
    breaches=$((breaches + 1))
fi

((breaches == 0)) && echo "The floors hold."
