#include "fif/fif_name.h"

#include "core/mod_of_grobal_var.h"
#include "fif/Check_korean.h"
#include "platform/text.h"

#include <QStringBuilder>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView extension = u".mp3";

// Both are asked about each character of thousands of names.

/// Whether a character can't stand in a file name.
bool is_forbidden(QChar c)
{
    switch (c.unicode()) {
    case u'\\':
    case u'/':
    case u':':
    case u'*':
    case u'?':
    case u'"':
    case u'<':
    case u'>':
    case u'|':
        return true;
    default:
        return false;
    }
}

bool is_bracket(QChar c)
{
    return c == u'[' || c == u']' || c == u'(' || c == u')';
}

struct Brackets
{
    QChar opening;
    QChar closing;
};

enum class GroupWalk
{
    refused,
    open,
    closed
};

/// Walks one group of a bracket form from `position` on. `position` moves behind what was walked.
GroupWalk walk_group(QStringView stem, const Brackets& brackets, qsizetype& position, QString& field)
{
    const QStringView rest = stem.sliced(position);
    if (rest.empty())
        return GroupWalk::open;
    if (rest.front() != brackets.opening)
        return GroupWalk::refused;
    const QStringView inside = rest.sliced(1);
    const qsizetype length = std::ranges::find(inside, brackets.closing) - inside.begin();
    if (length == 0 && !inside.empty())
        return GroupWalk::refused;
    field = inside.first(length).toString();
    if (length == inside.size()) {
        position = stem.size();
        return GroupWalk::open;
    }
    position += length + 2;
    return GroupWalk::closed;
}

enum class FieldWalk
{
    refused,
    end,
    dash
};

/// Walks the first field of a dash form from the stem's start on. `position` moves behind what was walked.
FieldWalk walk_first_field(QStringView stem, qsizetype& position, QString& field)
{
    position = std::ranges::find_if(stem, [](QChar c) { return c == u'-' || is_bracket(c); }) - stem.begin();
    field = stem.first(position).toString();
    if (position == stem.size())
        return FieldWalk::end;
    if (position == 0 || is_bracket(stem[position]))
        return FieldWalk::refused;
    ++position;
    return FieldWalk::dash;
}

/// Whether a character other than the nine may stand in a field of a shape: only delimiters are ever refused.
bool kept_in_field(QChar c, i16 fif_type)
{
    switch (c.unicode()) {
    case u'[':
    case u']':
        return fif_type == 3 || fif_type == 4;
    case u'(':
    case u')':
        return fif_type == 1 || fif_type == 2;
    case u'-':
        return fif_type >= 1 && fif_type <= 4;
    default:
        return true;
    }
}

/// What stands around the fields of a name.
struct Delimiters
{
    QStringView before;
    QStringView between;
    QStringView behind;
};

constexpr Delimiters square = {u"[", u"][", u"]"};
constexpr Delimiters round = {u"(", u")(", u")"};
constexpr Delimiters dash = {u"", u"-", u""};

/// How the names of one shape keep within 64 bytes. Lengths are bytes.
struct LengthRule
{
    i16 fif_type;
    bool with_genre;    ///< whether the rule is for files with a genre or for those without
    int fits;           ///< the most that the fields of the name may take for it to stay whole
    int cut;            ///< the most that artist and charged genre may take for the title to be cut
    int room;           ///< room of a cut title together with artist and charged genre
    bool genre_charged; ///< whether the genre counts in `cut` and `room`
    bool genre_in_name; ///< whether the name holds the genre, which then counts in `fits`
    QStringView dots;   ///< what follows a cut title
    Delimiters delimiters;
};

// On purpose: type 6 charges a genre that its names don't hold, and a cut title of a two-field dash name has no full
// stops. The names that people already have were made by these rules.
constexpr LengthRule length_rules[] = {
    // type, with genre, fits, cut, room, genre charged, genre in name, dots, delimiters
    {1, true, 54, 50, 52, true, true, u"..", square},    // [a][t][g] and [a][t'..][g]
    {3, true, 54, 50, 52, true, true, u"..", round},     // (a)(t)(g) and (a)(t'..)(g)
    {5, true, 58, 54, 56, true, true, u"..", dash},      // a-t-g and a-t'..-g
    {2, true, 56, 52, 54, false, false, u"..", square},  // [a][t] and [a][t'..]
    {4, true, 56, 52, 54, false, false, u"..", round},   // (a)(t) and (a)(t'..)
    {6, true, 59, 55, 59, true, false, u"", dash},       // a-t and a-t'
    {1, false, 56, 52, 54, false, false, u"..", square}, // [a][t] and [a][t'..]
    {2, false, 56, 52, 54, false, false, u"..", square}, // [a][t] and [a][t'..]
    {3, false, 56, 52, 54, false, false, u"..", round},  // (a)(t) and (a)(t'..)
    {4, false, 56, 52, 54, false, false, u"..", round},  // (a)(t) and (a)(t'..)
    {5, false, 59, 55, 59, false, false, u"", dash},     // a-t and a-t'
    {6, false, 59, 55, 59, false, false, u"", dash},     // a-t and a-t'
};

QString shaped_name(const LengthRule& rule, const QString& artist, const QString& title, const QString& genre)
{
    const auto& [before, between, behind] = rule.delimiters;
    if (rule.genre_in_name)
        return before % artist % between % title % between % genre % behind % extension;
    return before % artist % between % title % behind % extension;
}

} // namespace

FifParse parse_brackets(QStringView stem, i16 bracket_kind)
{
    if (bracket_kind != square_brackets && bracket_kind != round_brackets)
        return {};
    const Brackets brackets = bracket_kind == square_brackets ? Brackets{u'[', u']'} : Brackets{u'(', u')'};

    FifParse parse = {.valid = false, .stores = true, .fields = {}};
    qsizetype position = 0;
    int groups = 0;
    for (QString* field : {&parse.fields.artist, &parse.fields.title, &parse.fields.genre}) {
        const GroupWalk walk = walk_group(stem, brackets, position, *field);
        if (walk == GroupWalk::refused)
            return {};
        if (walk == GroupWalk::open)
            break;
        ++groups;
        parse.valid = groups >= 2 && position == stem.size();
        if (parse.valid)
            break;
    }
    return parse;
}

FifParse parse_dashes(QStringView stem)
{
    FifParse parse = {.valid = false, .stores = true, .fields = {}};
    qsizetype position = 0;
    const FieldWalk walk = walk_first_field(stem, position, parse.fields.artist);
    if (walk == FieldWalk::refused)
        return {};
    int dashes = walk == FieldWalk::dash ? 1 : 0;

    // A dash that ends the stem right behind the artist is accepted on purpose, with an empty title.
    const QStringView rest = stem.sliced(position);
    if (rest.startsWith(u'-') || rest.endsWith(u'-') || std::ranges::any_of(rest, is_bracket))
        return {};
    for (const QStringView field : rest.tokenize(u'-')) {
        (dashes == 2 ? parse.fields.genre : parse.fields.title).append(field);
        ++dashes;
    }
    --dashes; // each field but the first has one before it
    parse.valid = dashes == 1 || dashes == 2;
    return parse;
}

std::optional<FifFields> fif_fields_of(QStringView stem)
{
    FifParse parse = parse_brackets(stem, square_brackets);
    if (!parse.valid)
        parse = parse_brackets(stem, round_brackets);
    if (!parse.valid)
        parse = parse_dashes(stem);
    return parse.valid ? std::optional(std::move(parse.fields)) : std::nullopt;
}

QString stem_of(const QString& file_name)
{
    return file_name.left(std::max<qsizetype>(file_name.size() - extension.size(), 0));
}

QString Clean_fif_field(const QString& text)
{
    QString cleaned = text;
    cleaned.removeIf([type = shared.fif_type](QChar c) { return is_forbidden(c) || !kept_in_field(c, type); });
    return cleaned;
}

QString Clean_file_name(const QString& text)
{
    QString cleaned = text;
    cleaned.removeIf(is_forbidden);
    return cleaned;
}

QString trimmed_and_cleaned(const QString& text)
{
    return Clean_fif_field(trim_blanks(text));
}

FifFields trimmed_and_cleaned(const FifFields& fields)
{
    return {.artist = trimmed_and_cleaned(fields.artist),
            .title = trimmed_and_cleaned(fields.title),
            .genre = trimmed_and_cleaned(fields.genre)};
}

FifFields fields_to_convert(const FifFields& found, const FixedFields& fixed)
{
    return trimmed_and_cleaned(FifFields{.artist = fixed.artist.value_or(found.artist),
                                         .title = found.title,
                                         .genre = fixed.genre.value_or(found.genre)});
}

ComposedName compose_name(i16 fif_type, const QString& artist, const QString& title, const QString& genre)
{
    if (artist.isEmpty() || title.isEmpty())
        return {.name = {}, .failure = ComposeFailure::empty_field};
    const auto* const rule = std::ranges::find_if(length_rules, [&](const LengthRule& candidate) {
        return candidate.fif_type == fif_type && candidate.with_genre == !genre.isEmpty();
    });
    if (rule == std::end(length_rules))
        return {.name = {}, .failure = ComposeFailure::unknown_shape};

    const int artist_bytes = Byte_count(artist);
    const int genre_bytes = Byte_count(genre);
    const int name_bytes = artist_bytes + Byte_count(title) + (rule->genre_in_name ? genre_bytes : 0);
    if (name_bytes <= rule->fits)
        return {.name = shaped_name(*rule, artist, title, genre)};
    const int charged = artist_bytes + (rule->genre_charged ? genre_bytes : 0);
    if (charged <= rule->cut)
        return {.name = shaped_name(*rule, artist, cut_title(title, rule->room - charged) % rule->dots, genre)};
    return {.name = {}, .failure = ComposeFailure::too_long};
}

QString cut_title(const QString& title, int room)
{
    const qsizetype longest = std::min<qsizetype>(title.size(), std::max(room, 0));
    qsizetype length = 0;
    while (length < longest && Byte_count(QStringView(title).first(length)) < room - 1)
        ++length;
    // Half of a surrogate pair can't stand in a file name.
    if (length > 0 && title[length - 1].isHighSurrogate())
        --length;
    return title.first(length);
}
