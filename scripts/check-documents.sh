#!/usr/bin/env bash
# Holds the documents against what they speak of:
#   - what links and pictures of all pages point to is there, headings included;
#   - files, scripts and names of the code that the pages for developers tell of are there, and what quilmo-fif is asked to
#     do, it can;
#   - the guides in the three languages have the same chapters, the same pictures, and show them in their own language;
#   - what stands in bold in a guide is a text that the windows show in its language.
# Prints each fault; exit status 1 if there is one.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."

exec perl -CSDA -Mutf8 -Mstrict -Mwarnings -MFile::Basename -MFile::Spec - <<'PERL'
my $faults = 0;
sub fault { print "@_\n"; $faults = 1 }
sub text_of { open my $file, '<', $_[0] or die "$_[0]: $!\n"; local $/; return scalar <$file> }

my @files = split /\0/, qx(git ls-files -z --cached --others --exclude-standard);
my @pages = grep { /\.md$/ && -e } @files;

# A page without its code, and its headings with their levels.
sub prose { return text_of($_[0]) =~ s/^```.*?^```$//gmsr =~ s/\n\K(?:\n+ {4}[^\n]*)+//gr }
sub headings { return prose($_[0]) =~ /^(#+ .*)$/mg }
sub anchor_of {
    my $heading = lc $_[0] =~ s/^#+ //r;
    $heading =~ s/[^\p{L}\p{M}\p{N}_ -]//g;
    return $heading =~ tr/ /-/r;
}

for my $page (@pages) {
    for my $link (prose($page) =~ /\]\(([^)\s]+)\)/g) {
        next if $link =~ /^[a-z]+:/;
        my ($path, $anchor) = split /#/, $link, 2;
        my $target = $path eq '' ? $page : dirname($page) . "/$path";
        if (!-e $target) { fault("$page: $link points to nothing") }
        elsif (defined $anchor && !grep { anchor_of($_) eq $anchor } headings($target)) {
            fault("$page: there is no heading for $link");
        }
    }
}

for my $page ('README.md', 'CONTRIBUTING.md', 'docs/architecture.md') {
    for my $name (text_of($page) =~ m{(?<![\w/.*-])(?:\./)?([\w-]+(?:/[\w.-]+)*\.(?:cpp|h|sh|cmake))\b}g) {
        fault("$page: there is no $name") unless grep { $_ eq $name || m{/\Q$name\E$} } @files;
    }
}

my %word;
for my $source (grep { -f && m{\.(?:cpp|h|cmake|json|sh|txt)$|^\.ci/} } @files) {
    @word{text_of($source) =~ /\w+/g} = ();
}
for my $name (text_of('docs/architecture.md') =~ /`([A-Za-z_]\w*(?:::\w+)*)(?:\(\))?`/g) {
    exists $word{$_} or fault("docs/architecture.md: no source knows $name") for split /::/, $name;
}

my %guides = (en => 'docs/guide.md', ko => 'docs/ko/guide.md', de => 'docs/de/guide.md');
my %told = map { $_ => 1 } text_of('companion/help.cpp') =~ /(?:quilmo-fif |(?=--))([\w-]+)/g;
for my $page ('README.md', values %guides) {
    for my $order (text_of($page) =~ /quilmo-fif +([^`\n#]*)/g) {
        $told{$_} or fault("$page: quilmo-fif has no $_") for $order =~ /^[a-z]+\b|--[\w-]+/g;
    }
}

# The texts of the windows. Tables hold them in English, Korean and German, but the captions have no English column: it
# stands where a form is designed.
my $quoted = qr/u"((?:[^"\\]|\\.)*)"/;
sub shown { my $text = $_[0] =~ s/\\n/\n/gr; $text =~ s/&(?=\S)//g; $text =~ s/%\d/…/g; return bare($text) }
sub bare { return $_[0] =~ s/^[\s…]+|[\s…]+$//gr }
my %texts = (en => {}, ko => {}, de => {});
for my $table ('src/platform/own_words.cpp', 'src/core/Mod_of_nation.cpp') {
    my $text = text_of($table);
    while ($text =~ /\{$quoted,\s*$quoted,\s*$quoted\}/g) {
        @{$texts{$_->[0]}}{shown($_->[1])} = () for ['en', $1], ['ko', $2], ['de', $3];
    }
}
my $captions = text_of('src/core/captions.cpp');
while ($captions =~ /\{$quoted,\s*$quoted,\s*$quoted\}/g) {
    @{$texts{$_->[0]}}{shown($_->[1])} = () for ['ko', $2], ['de', $3];
}
my %designed;
for my $source (grep { m{^src/(?:frame|convert|explorer|selection|core/Mod)\S*\.cpp$} && -e } @files) {
    @designed{map { shown($_) } text_of($source) =~ /$quoted/g} = ();
}
@{$texts{en}}{keys %designed} = ();
for my $everywhere ("Can't Auto Convert", 'Vurlo', 'Vurlo Utility Ver 1.0', 'Select Burning Program', 'About') {
    exists $designed{$everywhere} or fault("No window shows \"$everywhere\"");
    @{$texts{$_}}{$everywhere} = () for 'ko', 'de';
}

my (%chapters, %pictures);
for my $language (sort keys %guides) {
    my $guide = $guides{$language};
    for my $text (prose($guide) =~ /\*\*(.+?)\*\*/g) {
        fault("$guide: no window shows \"$text\"") unless exists $texts{$language}{bare($text)};
    }
    $chapters{$language} = join ' ', map { /^(#+)/ } headings($guide);
    my @shown = map { File::Spec->canonpath($_) } prose($guide) =~ /!\[[^\]]+\]\(([^)]+)\)/g;
    my $folder = $language eq 'en' ? 'pictures' : "../pictures/$language";
    for (@shown) { dirname($_) eq $folder or fault("$guide shows $_, which is not in $folder") }
    $pictures{$language} = join ' ', map { basename($_) } @shown;
}
for my $language ('ko', 'de') {
    fault("The chapters of $guides{$language} are not those of $guides{en}") if $chapters{$language} ne $chapters{en};
    fault("The pictures of $guides{$language} are not those of $guides{en}") if $pictures{$language} ne $pictures{en};
}

print "The documents hold.\n" unless $faults;
exit $faults;
PERL
