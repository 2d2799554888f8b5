#include "mp3/genre_list.h"

#include <QStringView>

#include <algorithm>
#include <array>

namespace {

/// The names by index. Six of them differ from the public list on purpose ("RNB", "Alt. Rock", "Psychadelic",
/// "Folk/Rock", "Fast-Fusion", "Bebob"): file names written so far bear these spellings.
constexpr std::array<QStringView, genre_count> genres{
    u"Blues",
    u"Classic Rock",
    u"Country",
    u"Dance",
    u"Disco",
    u"Funk",
    u"Grunge",
    u"Hip-Hop",
    u"Jazz",
    u"Metal",
    u"New Age",
    u"Oldies",
    u"Other",
    u"Pop",
    u"RNB",
    u"Rap",
    u"Reggae",
    u"Rock",
    u"Techno",
    u"Industrial",
    u"Alternative",
    u"Ska",
    u"Death Metal",
    u"Pranks",
    u"Soundtrack",
    u"Euro-Techno",
    u"Ambient",
    u"Trip-Hop",
    u"Vocal",
    u"Jazz+Funk",
    u"Fusion",
    u"Trance",
    u"Classical",
    u"Instrumental",
    u"Acid",
    u"House",
    u"Game",
    u"Sound Clip",
    u"Gospel",
    u"Noise",
    u"Alt. Rock",
    u"Bass",
    u"Soul",
    u"Punk",
    u"Space",
    u"Meditative",
    u"Instrumental Pop",
    u"Instrumental Rock",
    u"Ethnic",
    u"Gothic",
    u"Darkwave",
    u"Techno-Industrial",
    u"Electronic",
    u"Pop-Folk",
    u"Eurodance",
    u"Dream",
    u"Southern Rock",
    u"Comedy",
    u"Cult",
    u"Gangsta",
    u"Top 40",
    u"Christian Rap",
    u"Pop/Funk",
    u"Jungle",
    u"Native American",
    u"Cabaret",
    u"New Wave",
    u"Psychadelic",
    u"Rave",
    u"Showtunes",
    u"Trailer",
    u"Lo-Fi",
    u"Tribal",
    u"Acid Punk",
    u"Acid Jazz",
    u"Polka",
    u"Retro",
    u"Musical",
    u"Rock & Roll",
    u"Hard Rock",
    u"Folk",
    u"Folk/Rock",
    u"National Folk",
    u"Swing",
    u"Fast-Fusion",
    u"Bebob",
    u"Latin",
    u"Revival",
    u"Celtic",
    u"Bluegrass",
    u"Avantgarde",
    u"Gothic Rock",
    u"Progressive Rock",
    u"Psychedelic Rock",
    u"Symphonic Rock",
    u"Slow Rock",
    u"Big Band",
    u"Chorus",
    u"Easy Listening",
    u"Acoustic",
    u"Humour",
    u"Speech",
    u"Chanson",
    u"Opera",
    u"Chamber Music",
    u"Sonata",
    u"Symphony",
    u"Booty Bass",
    u"Primus",
    u"Porn Groove",
    u"Satire",
    u"Slow Jam",
    u"Club",
    u"Tango",
    u"Samba",
    u"Folklore",
    u"Ballad",
    u"Power Ballad",
    u"Rhythmic Soul",
    u"Freestyle",
    u"Duet",
    u"Punk Rock",
    u"Drum Solo",
    u"A Cappella",
    u"Euro-House",
    u"Dance Hall",
    u"Goa",
    u"Drum & Bass",
    u"Club-House",
    u"Hardcore",
    u"Terror",
    u"Indie",
    u"BritPop",
    u"Negerpunk",
    u"Polsk Punk",
    u"Beat",
    u"Christian Gangsta Rap",
    u"Heavy Metal",
    u"Black Metal",
    u"Crossover",
    u"Contemporary Christian",
    u"Christian Rock",
    u"Merengue",
    u"Salsa",
    u"Thrash Metal",
    u"Anime",
    u"JPop",
    u"Synthpop",
};

struct Spelling
{
    QStringView list;
    QStringView fif;
};

constexpr std::array<Spelling, 11> spellings{{
    {u"Club-House", u"Club_House"},
    {u"Euro-House", u"Euro_House"},
    {u"Euro-Techno", u"Euro_Techno"},
    {u"Fast-Fusion", u"Fast_Fusion"},
    {u"Folk/Rock", u"Folk_Rock"},
    {u"Hip-Hop", u"Hip_Hop"},
    {u"Lo-Fi", u"Lo_Fi"},
    {u"Pop/Funk", u"Pop_Funk"},
    {u"Techno-Industrial", u"Techno_Industrial"},
    {u"Trip-Hop", u"Trip_Hop"},
    {u"Pop-Folk", u"Pop_Folk"},
}};

/// The name beside `genre` in the table of spellings, or `genre` itself when it has none.
QString respelled(const QString& genre, QStringView Spelling::*from, QStringView Spelling::*to)
{
    const auto* const spelling = std::ranges::find(spellings, QStringView(genre), from);
    return spelling == spellings.end() ? genre : (spelling->*to).toString();
}

} // namespace

QString genre_name(int index)
{
    // The names last as long as the program, so that no copy is needed.
    return index >= 0 && index < genre_count ? QString::fromRawData(genres[index].data(), genres[index].size())
                                             : QString();
}

i16 genre_index_of(const QString& name)
{
    const auto* const genre = std::ranges::find(genres, QStringView(name));
    return genre == genres.end() ? i16{-1} : static_cast<i16>(genre - genres.begin());
}

QString fif_genre_spelling(const QString& genre)
{
    return respelled(genre, &Spelling::list, &Spelling::fif);
}

QString id3_genre_spelling(const QString& genre)
{
    return respelled(genre, &Spelling::fif, &Spelling::list);
}
