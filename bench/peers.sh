# shellcheck shell=bash
# Read by bench.sh: the companion, and other programs that rename by tags and write tags, each by its fastest way to do
# the very work. Wants $programs, $stopwatch, $results, $rounds, $largest, $files and $folders.
# shellcheck disable=SC2154,SC2034

companion=$PWD/build/bench/companion/quilmo-fif
peers=(floor quilmo quilmo-one-core quilmo-fif quilmo-fif-journal taglib id3ren mp3rename id3 id3tool mp3info)
slow_peers=(quilmo kid3-cli eyeD3 exiftool)

# The command of a peer's program, empty where the bench has not got it.
program_of() {
    case $1 in
    floor) echo "$programs/quilmo-bench-bare-calls" ;;
    quilmo | quilmo-one-core) echo "$programs/quilmo-bench-converter" ;;
    quilmo-fif | quilmo-fif-journal) echo "$companion" ;;
    taglib) echo "$programs/quilmo-bench-taglib" ;;
    *) command -v "$1" ;;
    esac
}

# kid3_of_each_folder COMMAND: a process for each folder, as what kid3-cli takes grows with the square of its files.
kid3_of_each_folder() {
    # shellcheck disable=SC2016
    "$stopwatch" bash -c 'for folder in ./*/; do kid3-cli -c "select all" -c "$1" -c save "$folder"*.mp3; done' - "$1"
}

# rename_with PEER: names all files [artist][title].mp3 by their tags, and prints how long that took.
rename_with() {
    case $1 in
    floor | quilmo | taglib) "$stopwatch" "$(program_of "$1")" rename "$PWD" ;;
    quilmo-one-core) "$stopwatch" "$(program_of "$1")" rename "$PWD" 1 ;;
    quilmo-fif) "$stopwatch" "$companion" convert --type 2 --apply --no-journal . ;;
    quilmo-fif-journal) "$stopwatch" "$companion" convert --type 2 --apply . ;;
    id3ren) "$stopwatch" id3ren -nocfg -quiet '-template=[%a][%s].mp3' ./*/*.mp3 ;;
    mp3rename)
        mp3rename -s '[&a][&t]' >/dev/null
        "$stopwatch" mp3rename ./*/*.mp3
        ;;
    kid3-cli) kid3_of_each_folder "fromtag '[%{artist}][%{title}]' 1" ;;
    eyeD3) "$stopwatch" eyeD3 --no-config -Q -l error -1 --rename "[\$artist][\$title]" ./*/*.mp3 ;;
    exiftool) "$stopwatch" exiftool -q -r -ext mp3 "-filename<[\$ID3v1:artist][\$ID3v1:title].mp3" . ;;
    esac
}

# tag_with PEER: gives all files a new artist, and prints how long that took.
tag_with() {
    local artist='New Artist'
    case $1 in
    floor | quilmo | taglib) "$stopwatch" "$(program_of "$1")" tag "$PWD" ;;
    quilmo-one-core) "$stopwatch" "$(program_of "$1")" tag "$PWD" 1 ;;
    quilmo-fif) "$stopwatch" "$companion" tag --artist "$artist" --apply --no-journal . ;;
    quilmo-fif-journal) "$stopwatch" "$companion" tag --artist "$artist" --apply . ;;
    # It asks for a title, and for what is not told to be left out.
    id3ren)
        "$stopwatch" id3ren -nocfg -quiet -tag -tagonly -edit -quick -nogenre -notrack -song=Title "-artist=$artist" \
            ./*/*.mp3
        ;;
    id3) "$stopwatch" id3 -a "$artist" ./*/*.mp3 ;;
    id3tool) "$stopwatch" id3tool -r "$artist" ./*/*.mp3 ;;
    mp3info) "$stopwatch" mp3info -a "$artist" ./*/*.mp3 ;;
    kid3-cli) kid3_of_each_folder "set artist '$artist' 1" ;;
    eyeD3) "$stopwatch" eyeD3 --no-config -Q -l error -1 -a "$artist" ./*/*.mp3 ;;
    esac
}

# can PEER WORK: whether it does such work at all.
can() {
    case $1-$2 in
    id3-rename | id3tool-rename | mp3info-rename | mp3rename-tag | exiftool-tag) return 1 ;;
    *) return 0 ;;
    esac
}

# measure_peer PEER WORK: five rounds on fresh files, or one where that takes over ten seconds; notes the time of each
# that did the work on every file.
measure_peer() {
    local peer=$1 work=$2 name=peer/$2/$1 names=plain way seconds checked kind corpus=$TMPDIR/peers
    if ! can "$peer" "$work"; then
        printf '%s/note\tcannot\n' "$name"
        return
    fi
    [[ $work == rename ]] || names=fif
    way=$(declare -f program_of kid3_of_each_folder "${work}_with")
    for _ in 1 2 3 4 5; do
        mkdir "$corpus"
        "$programs/quilmo-bench-corpus" make "$corpus" "$files" "$folders" "$names"
        sync -f "$corpus"
        # A program that asks where it should not is not waited for for ever.
        seconds=$(cd "$corpus" && timeout 900 bash -c "$way; ${work}_with $peer" </dev/null 2>"$TMPDIR/errors") || true
        if [[ $work == rename ]]; then
            checked=$("$programs/quilmo-bench-corpus" check-names "$corpus")
        else
            IFS=$'\t' read -r checked kind < <("$programs/quilmo-bench-corpus" check-tags "$corpus")
            [[ $kind == ID3v1 ]] || printf '%s/note\t%s\n' "$name" "$kind"
        fi
        rm -r "$corpus"
        if [[ -z $seconds || $checked != "$files" ]]; then
            echo "$peer could not $work all files: $checked of $files. $(head -c 300 "$TMPDIR/errors")" >&2
            printf '%s/note\t%s of %s files\n' "$name" "$checked" "$files"
            return
        fi
        printf '%s\t%s\n' "$name" "$seconds"
        ((${seconds%.*} < 10)) || return 0
    done
}

# measure_peers PEER...
measure_peers() {
    local peer work
    export programs stopwatch companion
    for peer in "$@"; do
        if [[ ! -x $(program_of "$peer") ]]; then
            echo "$peer is not installed, so it is left out." >&2
            printf 'peer/%s/%s/note\tnot installed\n' rename "$peer" tag "$peer"
            continue
        fi
        for work in rename tag; do
            measure_peer "$peer" "$work"
        done
    done
}

# make_plain SIZE: a fresh corpus, 200 files to the folder.
make_plain() {
    rm -rf "$TMPDIR/companion"
    mkdir "$TMPDIR/companion"
    "$programs/quilmo-bench-corpus" make "$TMPDIR/companion" "$1" "$((($1 + 199) / 200))" plain
    sync -f "$TMPDIR/companion"
}

# note_of NAME COMMAND...: runs the stopwatch on the command and notes what it tells.
note_of() {
    local told
    told=$("$stopwatch" "${@:2}" 2>/dev/null)
    printf '%s\t%s\n' "$1" "$told"
}

# all_renamed FOLDER SIZE: whether all files in it bear the names of their tags.
all_renamed() {
    local renamed
    renamed=$("$programs/quilmo-bench-corpus" check-names "$1")
    [[ $renamed == "$2" ]] || echo "$renamed of $2 files were renamed." >&2
    [[ $renamed == "$2" ]]
}

# measure_companion: what the companion takes for few and many files, beside the bare system calls, and its memory.
measure_companion() {
    local size round corpus=$TMPDIR/companion
    for size in 100 1000 10000 100000; do
        ((size <= largest)) || continue
        make_plain "$size"
        for ((round = 0; round < (size > 10000 ? 3 : rounds); ++round)); do
            note_of "companion_check/$size/floor" "$programs/quilmo-bench-bare-calls" check "$corpus"
            note_of "companion_check/$size/work" "$companion" check "$corpus"
        done
        note_of "companion_memory/check/$size" --memory "$companion" check "$corpus"
        for ((round = 0; round < (size > 10000 ? 1 : (rounds + 2) / 3); ++round)); do
            make_plain "$size"
            note_of "companion_convert/$size/floor" "$programs/quilmo-bench-bare-calls" convert "$corpus"
            make_plain "$size"
            note_of "companion_convert/$size/work" \
                "$companion" convert --type 2 --apply --no-journal "$corpus"
            all_renamed "$corpus" "$size"
        done
        make_plain "$size"
        note_of "companion_memory/convert/$size" --memory "$companion" convert --type 2 --apply "$corpus"
    done
}
