#pragma once

#include "platform/numbers.h"

#include <QString>

/// Number of genres that have a name: indexes 0 to 147.
constexpr int genre_count = 148;

/// The list spelling of a genre, as tags mean it; empty for an index outside 0 to 147.
QString genre_name(int index);

/// The index of a genre in list spelling, compared exactly; -1 for none.
i16 genre_index_of(const QString& name);

/// `genre` in the spelling of file names and combo boxes: one of the eleven names with "-" or "/" gets its "_" form,
/// any other text stays as it is.
QString fif_genre_spelling(const QString& genre);

/// `genre` in list spelling: one of the eleven "_" forms gets its list spelling, any other text stays as it is.
QString id3_genre_spelling(const QString& genre);
