#include "companion/command_line.h"

QByteArray help_text()
{
    return R"(usage: quilmo-fif check   [--type N] [--json] {PATH... | -0}
       quilmo-fif convert [--type N] [--fix-artist TEXT] [--fix-genre TEXT] [--tags]
                          [--apply [--journal FILE | --no-journal]] [--json] {PATH... | -0}
       quilmo-fif tag     [--artist TEXT] [--title TEXT] [--album TEXT] [--year TEXT]
                          [--comment TEXT] [--genre NAME]
                          [--apply [--journal FILE | --no-journal]] [--json] {PATH... | -0}
       quilmo-fif info    [--json] {PATH... | -0}
       quilmo-fif undo    [--json] JOURNAL

Brings the names of MP3 files into the FIF format and their tags in line with the names, as the
desktop program does. Folders are walked; without --apply nothing is changed.

Commands
  check    tells of each file its class (FIF: the name is FIF; tag: a FIF name can be made from the
           tag; none: neither), the bytes of its name, artist, title, genre, and its new name
  convert  files that are not FIF get names from their tags, names that are FIF stay; with --type,
           --fix-artist or --fix-genre all names are made anew
  tag      sets fields of the tags and leaves the others as they are; a file without a tag gets one
           in place of its last 128 bytes
  info     tells the facts of the sound and the tag
  undo     takes back what a run with --apply did, by its journal

Options
  --type N           the shape of new names: 1 [a][t][g]  2 [a][t]  3 (a)(t)(g)  4 (a)(t)  5 a-t-g
                     6 a-t; without it the one chosen in the desktop program
  --fix-artist TEXT  the artist of all files
  --fix-genre TEXT   the genre of all files
  --tags             writes tags, too: of files that get a name because of --type, --fix-artist or
                     --fix-genre, and without these of names that are FIF
  --apply            does what is otherwise shown only, and writes a journal first
  --journal FILE     where to; otherwise into ~/.local/state/quilmo
  --no-journal       writes none: nothing can be undone
  -0, --from-stdin   reads the paths from standard input, a NUL behind each
  --json             one JSON object a line
  -h, --help         this text
  --version          the version
Options may stand anywhere before --, and long ones be shortened as far as they are clear.

Exit status: 0 all done, 1 some files could not, 2 wrong usage.)";
}
