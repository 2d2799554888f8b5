#pragma once

#include "platform/numbers.h"

#include <QString>
#include <QStringView>

#include <optional>

// The FIF format itself: what a name holds, and how a name is built. No file is touched and nothing is shown.
// A character is one UTF-16 unit; lengths of names are bytes of the code page.

/// What the names of music files end in, case ignored.
constexpr QStringView music_name_ending = u"MP3";

/// The three fields of a FIF name; the genre is empty in a two-field name.
struct FifFields
{
    QString artist;
    QString title;
    QString genre;

    bool operator==(const FifFields&) const = default;
};

/// What became of parsing a stem.
struct FifParse
{
    bool valid = false;
    /// Whether the fields reach the store step: always when valid, and with partial fields after a late failure.
    bool stores = false;
    FifFields fields;
};

/// The pair of delimiters of a bracket form.
enum BracketKind : i16
{
    square_brackets = 1,
    round_brackets = 2
};

/// Parses a stem (a name without its extension) as a bracket form. A kind other than the two has no names.
FifParse parse_brackets(QStringView stem, i16 bracket_kind);

/// Parses a stem as a dash form.
FifParse parse_dashes(QStringView stem);

/// The fields of a stem that is FIF, by the first parser that takes it: square brackets, round ones, dashes. Nothing
/// when none does.
std::optional<FifFields> fif_fields_of(QStringView stem);

/// A name without its last four characters, whatever they are; empty for a name shorter than four characters.
QString stem_of(const QString& file_name);

/// `text` without what can't stand in a field of the current `fif_type`: the nine characters that no file name holds,
/// and the delimiters of the shape; all delimiters for a shape outside 1 to 6.
QString Clean_fif_field(const QString& text);

/// `text` without the nine characters that no file name holds.
QString Clean_file_name(const QString& text);

/// The state that every converter brings its fields to: blanks at both ends removed, then cleaned.
QString trimmed_and_cleaned(const QString& text);

/// All three fields brought to that state.
FifFields trimmed_and_cleaned(const FifFields& fields);

/// Values that a conversion forces on all files in place of those that it finds.
struct FixedFields
{
    std::optional<QString> artist;
    std::optional<QString> genre;
};

/// The fields that such a conversion makes a name of: those that it `found` but for the fixed ones, trimmed and
/// cleaned.
FifFields fields_to_convert(const FifFields& found, const FixedFields& fixed);

/// Why no name could be made.
enum class ComposeFailure
{
    none,
    empty_field,
    unknown_shape,
    too_long
};

/// A composed name, or an empty one and the reason.
struct ComposedName
{
    QString name;
    ComposeFailure failure = ComposeFailure::none;
};

/// The name of the shape `fif_type` for trimmed and cleaned fields, within 64 bytes: the title alone is cut. A shape
/// outside 1 to 6 has no names.
ComposedName compose_name(i16 fif_type, const QString& artist, const QString& title, const QString& genre);

/// The first characters of a title: gathered one by one until they take `room` - 1 bytes or more, at most `room`. A
/// surrogate pair is never left in half.
QString cut_title(const QString& title, int room);
