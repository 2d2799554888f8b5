// FIF names: what parses is made of its fields, and what is composed keeps within its limits and parses back.

#include "fif/fif_name.h"
#include "core/mod_of_grobal_var.h"
#include "fif/Check_korean.h"
#include "fif/mod_of_FIF.h"
#include "platform/code_page.h"
#include "platform/file_names.h"
#include "support.h"
#include "test_main.h"

#include <QStringBuilder>

#include <algorithm>
#include <array>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr int longest_name = 64;       ///< bytes of code page 949
constexpr int longest_disk_name = 255; ///< bytes on disk
constexpr QStringView forbidden_in_names = uR"(\/:*?"<>|)";

/// What stands around the fields of each of the six types, by number; slot 0 is not used.
struct Shape
{
    QStringView delimiters;
    QStringView before;
    QStringView between;
    QStringView behind;
    bool holds_genre;
};

constexpr std::array<Shape, 7> shapes = {{{},
                                          {u"[]", u"[", u"][", u"].mp3", true},
                                          {u"[]", u"[", u"][", u"].mp3", false},
                                          {u"()", u"(", u")(", u").mp3", true},
                                          {u"()", u"(", u")(", u").mp3", false},
                                          {u"[]()-", u"", u"-", u".mp3", true},
                                          {u"[]()-", u"", u"-", u".mp3", false}}};

QString plain_name(const Shape& shape, const FifFields& fields)
{
    QString name = shape.before % fields.artist % shape.between % fields.title;
    if (shape.holds_genre && !fields.genre.isEmpty())
        name += shape.between % fields.genre;
    return name % shape.behind;
}

bool holds_any(QStringView text, QStringView characters)
{
    return std::ranges::any_of(text, [characters](QChar c) { return characters.contains(c); });
}

/// `text` without some characters.
QString without(const QString& text, QStringView characters)
{
    QString rest;
    std::ranges::copy_if(text, std::back_inserter(rest), [characters](QChar c) { return !characters.contains(c); });
    return rest;
}

void check_cleaning(const Shape& shape, const QString& text)
{
    require(Clean_file_name(text) == without(text, forbidden_in_names), "names lose the nine characters and no other");
    require(Clean_fif_field(text) == without(Clean_file_name(text), shape.delimiters),
            "fields lose the delimiters of their type besides, and nothing else");
    require(Clean_fif_field(trimmed_and_cleaned(text)) == trimmed_and_cleaned(text), "clean text stays as it is");
}

/// The stem of what parsed is its fields with the delimiters of one form.
void check_parse(const QString& stem)
{
    const std::array<FifParse, 3> parses = {parse_brackets(stem, square_brackets), parse_brackets(stem, round_brackets),
                                            parse_dashes(stem)};
    require(std::ranges::count_if(parses, &FifParse::valid) <= 1, "a name is of one form at most");
    for (std::size_t form = 0; form < parses.size(); ++form) {
        const FifParse& parse = parses[form];
        require(parse.stores || (!parse.valid && parse.fields == FifFields()), "what fails at once has no fields");
        if (parse.valid)
            require(plain_name(shapes[2 * form + 1], parse.fields) == stem + u".mp3"_s, "a name is made of its fields");
    }
    const bool parsed = std::ranges::any_of(parses, &FifParse::valid);
    require(Check_file_for_fif(stem + u".xyz"_s) == (parsed ? 1 : 0), "without a tag only a FIF name counts");
    require(parse_fif_stem(stem_of(stem + u".mp3"_s), into_results) == parsed, "the parsers are tried in turn");
}

void check_parses_back(i16 type, const QString& name, const FifFields& fields)
{
    const Shape& shape = shapes.at(static_cast<std::size_t>(type));
    require(parse_fif_stem(stem_of(name), into_results), "a composed name parses");
    const FifFields back = {.artist = shared.fif_artist, .title = shared.fif_title, .genre = shared.fif_genre};
    require(back.artist == fields.artist, "the artist comes back");
    require(back.genre == (shape.holds_genre ? fields.genre : QString()), "so does the genre, where names hold one");
    if (name == plain_name(shape, fields)) {
        require(back.title == fields.title, "so does a title that fits");
        return;
    }
    require(Byte_count(plain_name(shape, fields)) > longest_name, "no title is cut without need");
    const bool has_dots = type <= 4 || back.genre != u"";
    require(!has_dots || back.title.endsWith(u".."), "a cut title has its full stops");
    require(fields.title.startsWith(has_dots ? back.title.chopped(2) : back.title), "a cut title begins as it did");
    const int charged = type == 6 ? Byte_count(fields.genre) : 0;
    require(Byte_count(name) >= longest_name - charged - 2, "a cut title fills its room");
}

void check_compose(i16 type, const FifFields& fields)
{
    const auto& [artist, title, genre] = fields;
    const ComposedName composed = compose_name(type, artist, title, genre);
    const QString& name = composed.name;
    require(name.isEmpty() == (composed.failure != ComposeFailure::none), "a name is made, or a reason given");
    require((composed.failure == ComposeFailure::empty_field) == (artist.isEmpty() || title.isEmpty()),
            "a name needs an artist and a title");
    bool is_reported = false;
    require(Compose_fif_name(artist, title, genre, [&is_reported] { is_reported = true; }) == name &&
                is_reported == (composed.failure == ComposeFailure::too_long),
            "what is too long is reported, and nothing else");
    if (name.isEmpty())
        return;

    require(Byte_count(name) <= longest_name, "a name takes at most 64 bytes");
    require(!holds_any(name, forbidden_in_names), "a name holds no forbidden character");
    check_parses_back(type, name, fields);
    require(compose_name(type, shared.fif_artist, shared.fif_title, shared.fif_genre).name == name,
            "a name made of a name's fields is that name");
    const QString all = artist + u' ' + title + u' ' + genre;
    if (!has_lone_surrogate(all) && !all.contains(QChar::Null)) {
        const QByteArray on_disk = name_to_bytes(name);
        require(!on_disk.isEmpty() && on_disk.size() <= longest_disk_name, "a file can bear a composed name");
    }
}

} // namespace

/// The first three lines are artist, title and genre; the whole is a stem besides.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const TestDisk disk;
    QByteArrayView bytes = bytes_of(data, size);
    const QString stem = any_text(bytes);
    if (code_page_bytes(stem) > std::numeric_limits<i16>::max() / 2)
        return 0;
    const QString artist = any_text(take_line(bytes));
    const QString title = any_text(take_line(bytes));
    const QString genre = any_text(take_line(bytes));
    check_parse(stem);
    for (shared.fif_type = 1; shared.fif_type <= 6; ++shared.fif_type) {
        for (const QString& text : {artist, title, genre, stem})
            check_cleaning(shapes.at(static_cast<std::size_t>(shared.fif_type)), text);
        check_compose(shared.fif_type, {.artist = trimmed_and_cleaned(artist),
                                        .title = trimmed_and_cleaned(title),
                                        .genre = trimmed_and_cleaned(genre)});
    }
    return 0;
}
