#include "platform/own_words.h"

#include <algorithm>
#include <array>

static_assert(QUILMO_LANGUAGE >= 1 && QUILMO_LANGUAGE <= 3);

namespace {

struct WordTexts
{
    Word word;
    std::array<QStringView, 3> texts; ///< English, Korean, German
};

constexpr auto words = std::to_array<WordTexts>({
    {Word::run_time_error, {u"Run-time error '%1':", u"런타임 오류 '%1':", u"Laufzeitfehler '%1':"}},
    {Word::type_mp3, {u"MP3 File", u"MP3 파일", u"MP3-Datei"}},
    {Word::type_file, {u"File", u"파일", u"Datei"}},
    {Word::drive_root_name, {u"File System", u"파일 시스템", u"Dateisystem"}},
    {Word::drive_home_name, {u"Home", u"홈", u"Persönlicher Ordner"}},
    {Word::drive_music_name, {u"Music", u"음악", u"Musik"}},
});

} // namespace

QString own_word(Word word)
{
    const auto* const entry = std::ranges::find(words, word, &WordTexts::word);
    return entry == words.end() ? QString() : entry->texts[QUILMO_LANGUAGE - 1].toString();
}
