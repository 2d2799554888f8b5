#include "sample_collection.h"

#include "sample_files.h"
#include "sample_melody.h"

#include <QString>
#include <QStringList>

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <filesystem>
#include <numeric>

using namespace Qt::StringLiterals;

namespace {

/// What a song can be called in one kind of writing.
struct Repertoire
{
    QString folder;
    QStringList artists;
    QStringList first_words;
    QStringList last_words;
    QString long_artist; ///< with long_title too much for a name of 64 bytes
    QString long_title;
    QString legacy_word; ///< begins the names that are in a legacy code page on disk
    QByteArray (*legacy_bytes)(const QString& text);
};

const std::array<Repertoire, 3>& repertoires()
{
    static const std::array<Repertoire, 3> all = {{
        {.folder = u"Korean"_s,
         .artists = {u"달빛상자"_s, u"푸른고래"_s, u"한여름"_s, u"종이우산"_s, u"새벽열차"_s, u"민들레 합창단"_s,
                     u"은하다방"_s},
         .first_words = {u"하얀"_s, u"느린"_s, u"작은"_s, u"먼"_s, u"조용한"_s, u"붉은"_s, u"젖은"_s, u"잠든"_s,
                         u"뒤늦은"_s, u"맑은"_s, u"오래된"_s},
         .last_words = {u"골목"_s, u"바다"_s, u"편지"_s, u"겨울"_s, u"기차역"_s, u"노을"_s, u"꽃밭"_s, u"강가"_s,
                        u"정류장"_s, u"창문"_s, u"언덕"_s, u"뷁섬"_s, u"별자리"_s},
         .long_artist = u"바람부는언덕위의작은합창단들"_s,
         .long_title = u"지난겨울너에게쓰지못한편지"_s,
         .legacy_word = u"노래"_s,
         .legacy_bytes = korean_bytes},
        {.folder = u"Western"_s,
         .artists = {u"Café Lumière"_s, u"Björn Åsgard"_s, u"Die Straßenkatzen"_s, u"Señor Ruiseñor"_s,
                     u"Ümit Çelebi"_s, u"Les Érables"_s, u"Göran & Øyvind"_s},
         .first_words = {u"Früher"_s, u"Été"_s, u"Après"_s, u"Grüße"_s, u"Mañana"_s, u"Über"_s, u"Noël"_s, u"Déjà"_s,
                         u"Sågar"_s, u"Tränen"_s, u"Más"_s},
         .last_words = {u"Morgen"_s, u"de la mer"_s, u"Straße"_s, u"sans toi"_s, u"im Mai"_s, u"Abend"_s, u"à deux"_s,
                        u"en été"_s, u"Brücke"_s, u"Fjäll"_s, u"d'été"_s, u"Corazón"_s, u"Höhe"_s},
         .long_artist = u"Orchestre du Café de la Forêt"_s,
         .long_title = u"Über den Dächern von Grünstädt"_s,
         .legacy_word = u"Café"_s,
         .legacy_bytes = western_bytes},
        {.folder = u"Mixed"_s,
         .artists = {u"The Paper Lanterns"_s, u"Nine Mile Orchard"_s, u"Velvet Cartography"_s, u"DJ Teapot"_s,
                     u"Harbour & Sons"_s, u"Slow Comets"_s, u"Ada Winterbourne"_s},
         .first_words = {u"Silver"_s, u"Broken"_s, u"Midnight"_s, u"Second"_s, u"Hollow"_s, u"Paper"_s, u"Distant"_s,
                         u"Golden"_s, u"Quiet"_s, u"Electric"_s, u"Lost"_s},
         .last_words = {u"River"_s, u"Avenue"_s, u"Summer"_s, u"Letters"_s, u"Machine"_s, u"Horizon"_s, u"Garden"_s,
                        u"Radio"_s, u"Shadows"_s, u"Carousel"_s, u"Tide"_s, u"Lullaby"_s, u"Signal"_s},
         .long_artist = u"The Grand Avenue Brass Band"_s,
         .long_title = u"Waiting for the Last Night Bus"_s,
         .legacy_word = u"Déjà"_s,
         .legacy_bytes = western_bytes},
    }};
    return all;
}

/// A genre in a tag and in a file name.
struct SampleGenre
{
    unsigned char index;
    QStringView name;
};

constexpr std::array<SampleGenre, 8> genres = {{{13, u"Pop"},
                                                {17, u"Rock"},
                                                {8, u"Jazz"},
                                                {7, u"Hip_Hop"},
                                                {80, u"Folk"},
                                                {32, u"Classical"},
                                                {62, u"Pop_Funk"},
                                                {12, u"Other"}}};

/// How a sample is named, and what its tag lacks. The songs of a folder go through them in turn.
enum class Kind
{
    title_only,
    square_with_genre,
    square,
    long_fields,
    round_with_genre,
    round_without_tag,
    title_without_tag,
    dashes_with_genre,
    dashes,
    title_without_artist,
    track_and_capitals,
    legacy_name,
};
constexpr int kinds = 12;

struct Song
{
    QString artist;
    QString title;
    SampleGenre genre;
};

/// The song of a number; no other number gives its title.
Song song_of(const Repertoire& repertoire, int number)
{
    // The counts of the words have no common factor with the stride, so that it visits every pair of words once.
    constexpr int stride = 29;
    const auto firsts = static_cast<int>(repertoire.first_words.size());
    const auto pairs = firsts * static_cast<int>(repertoire.last_words.size());
    const int pair = number % pairs * stride % pairs;
    QString title = repertoire.first_words[pair % firsts] + u' ' + repertoire.last_words[pair / firsts];
    if (number >= pairs)
        title += u' ' + QString::number(number / pairs + 1);
    return {.artist = repertoire.artists[number % repertoire.artists.size()],
            .title = title,
            .genre = genres.at(static_cast<std::size_t>(number) % genres.size())};
}

QByteArray name_of(const Repertoire& repertoire, Kind kind, const Song& song, int number, bool broken_names)
{
    const QString genre = song.genre.name.toString();
    const QString legacy = repertoire.legacy_word + u' ' + song.title + u".mp3"_s;
    switch (kind) {
    case Kind::title_only:
    case Kind::title_without_tag:
    case Kind::title_without_artist:
        return (song.title + u".mp3"_s).toUtf8();
    case Kind::long_fields:
        return (song.title + u" (long).mp3"_s).toUtf8();
    case Kind::square_with_genre:
        return u"[%1][%2][%3].mp3"_s.arg(song.artist, song.title, genre).toUtf8();
    case Kind::square:
        return u"[%1][%2].mp3"_s.arg(song.artist, song.title).toUtf8();
    case Kind::round_with_genre:
        return u"(%1)(%2)(%3).mp3"_s.arg(song.artist, song.title, genre).toUtf8();
    case Kind::round_without_tag:
        return u"(%1)(%2).mp3"_s.arg(song.artist, song.title).toUtf8();
    case Kind::dashes_with_genre:
        return u"%1-%2-%3.mp3"_s.arg(song.artist, song.title, genre).toUtf8();
    case Kind::dashes:
        return u"%1-%2.mp3"_s.arg(song.artist, song.title).toUtf8();
    case Kind::track_and_capitals:
        return u"%1 %2.MP3"_s.arg(number % 99 + 1, 2, 10, QLatin1Char('0')).arg(song.title).toUtf8();
    case Kind::legacy_name:
        return broken_names ? repertoire.legacy_bytes(legacy) : legacy.toUtf8();
    }
    return {};
}

/// The tag, or nothing.
QByteArray tag_of(const Repertoire& repertoire, Kind kind, const Song& song, int number)
{
    if (kind == Kind::round_without_tag || kind == Kind::title_without_tag)
        return {};
    const bool is_long = kind == Kind::long_fields;
    SampleTag tag{.title = repertoire.legacy_bytes(is_long ? repertoire.long_title : song.title),
                  .artist = repertoire.legacy_bytes(is_long ? repertoire.long_artist : song.artist),
                  .album = "Sampler " + QByteArray::number(number / 12 + 1),
                  .year = QByteArray::number(1990 + number % 30),
                  .comment = {},
                  .genre = song.genre.index,
                  .padding = number % 2 == 0 ? '\0' : ' '};
    // The long title of each file begins with its number, so that no two of them make the same name before the cut.
    if (is_long)
        tag.title = QByteArray::number(number + 1) + ' ' + tag.title;
    if (kind == Kind::title_without_artist)
        tag.artist.clear();
    return sample_tag(tag);
}

QByteArray audio_of(int number, const SampleCollection& collection)
{
    constexpr int most_files_for_listening = 300;
    static const std::array<ToneAudio, 3> kinds_of_audio = {
        {{.rate = 44100, .kilobits = {128}, .mode = ToneMode::joint_stereo, .is_original = true},
         {.rate = 48000, .kilobits = {64}, .mode = ToneMode::joint_stereo, .is_original = true},
         {.rate = 44100, .kilobits = {192}}}};
    ToneAudio audio = kinds_of_audio.at(static_cast<std::size_t>(number) % kinds_of_audio.size());
    const int most_frames = collection.seconds * audio.rate / samples_per_frame(audio.rate);
    audio.frames = collection.files > most_files_for_listening ? 3 : most_frames * (20 + number * 8 % 21) / 40;
    audio.tone = sample_melody(number);
    return tone_audio(audio);
}

/// Writes a file unless one is there; gives false when there is none afterwards. What could not be written whole goes.
bool write_new_file(const QByteArray& native, const QByteArray& content)
{
    const int descriptor = open(native.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (descriptor < 0)
        return errno == EEXIST;
    const bool is_written = write(descriptor, content.constData(), static_cast<std::size_t>(content.size())) ==
                            static_cast<ssize_t>(content.size());
    const bool is_closed = close(descriptor) == 0;
    if (!is_written || !is_closed)
        unlink(native.constData());
    return is_written && is_closed;
}

bool make_folder(const QByteArray& native)
{
    std::error_code error;
    std::filesystem::create_directories(native.toStdString(), error);
    return !error;
}

QByteArray folder_name(int folder)
{
    const auto& all = repertoires();
    const auto count = static_cast<int>(all.size());
    const QString name = all.at(static_cast<std::size_t>(folder % count)).folder;
    return (folder < count ? name : name + u' ' + QString::number(folder / count + 1)).toUtf8();
}

} // namespace

bool write_sample_collection(const QByteArray& native, const SampleCollection& collection)
{
    const auto& all = repertoires();
    bool is_whole = make_folder(native);
    for (int folder = 0; folder < collection.folders; ++folder)
        is_whole = make_folder(native + '/' + folder_name(folder)) && is_whole;
    for (int number = 0; number < collection.files; ++number) {
        const int folder = number % collection.folders;
        const int place = number / collection.folders;
        // The folder of all kinds of writing takes turns, the others hold their own.
        const auto own = static_cast<std::size_t>(folder) % all.size();
        const Repertoire& repertoire = own == 2 ? all.at(static_cast<std::size_t>(place) % all.size()) : all.at(own);
        const auto kind = static_cast<Kind>((place + folder * 5) % kinds);
        const Song song = song_of(repertoire, number);
        const QByteArray name = name_of(repertoire, kind, song, number, collection.broken_names);
        const QByteArray content = audio_of(number, collection) + tag_of(repertoire, kind, song, number);
        is_whole = write_new_file(native + '/' + folder_name(folder) + '/' + name, content) && is_whole;
    }
    return is_whole;
}
