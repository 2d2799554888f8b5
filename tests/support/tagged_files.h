#pragma once

#include "core/mod_of_grobal_var.h"
#include "sample_files.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <array>

// What the tests of classification, tag writing and detail fields share.

/// A tag whose album, year and comment are set, too.
inline SampleTag tag_of(const QByteArray& artist, const QByteArray& title, unsigned char genre = 17,
                        char padding = '\0')
{
    return {.title = title,
            .artist = artist,
            .album = "Album",
            .year = "1999",
            .comment = "Comment",
            .genre = genre,
            .padding = padding};
}

/// A file of audio with a tag at its end.
inline QByteArray tagged(const SampleTag& tag)
{
    return sample_audio({.frames = 2}) + sample_tag(tag);
}

inline QByteArray tagged(const QByteArray& artist, const QByteArray& title, unsigned char genre = 17)
{
    return tagged(tag_of(artist, title, genre));
}

/// The three result strings of the last parse.
inline QStringList results()
{
    return {shared.fif_artist, shared.fif_title, shared.fif_genre};
}

/// Puts the same text into all three of them.
inline void set_results(const QString& text)
{
    shared.fif_artist = text;
    shared.fif_title = text;
    shared.fif_genre = text;
}

/// A genre that names spell otherwise than tags.
struct Spelling
{
    unsigned char index;
    QString list;
    QString fif;
};

inline const std::array<Spelling, 11> spellings = {{
    {128, QStringLiteral("Club-House"), QStringLiteral("Club_House")},
    {124, QStringLiteral("Euro-House"), QStringLiteral("Euro_House")},
    {25, QStringLiteral("Euro-Techno"), QStringLiteral("Euro_Techno")},
    {84, QStringLiteral("Fast-Fusion"), QStringLiteral("Fast_Fusion")},
    {81, QStringLiteral("Folk/Rock"), QStringLiteral("Folk_Rock")},
    {7, QStringLiteral("Hip-Hop"), QStringLiteral("Hip_Hop")},
    {71, QStringLiteral("Lo-Fi"), QStringLiteral("Lo_Fi")},
    {62, QStringLiteral("Pop/Funk"), QStringLiteral("Pop_Funk")},
    {51, QStringLiteral("Techno-Industrial"), QStringLiteral("Techno_Industrial")},
    {27, QStringLiteral("Trip-Hop"), QStringLiteral("Trip_Hop")},
    {53, QStringLiteral("Pop-Folk"), QStringLiteral("Pop_Folk")},
}};
