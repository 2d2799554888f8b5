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

    {Word::field_filename, {u"File Name", u"파일 이름", u"Dateiname"}},
    {Word::field_artist, {u"Artist", u"아티스트", u"Künstler"}},
    {Word::field_title, {u"Title", u"제목", u"Titel"}},
    {Word::field_genre, {u"Genre", u"장르", u"Musikart"}},
    {Word::field_length, {u"Length", u"길이", u"Länge"}},

    {Word::title_edit, {u"Edit File", u"파일 편집", u"Datei bearbeiten"}},
    {Word::title_auto_convert, {u"Auto Convert", u"자동변환", u"Automatische Umwandlung"}},
    {Word::title_choose_format, {u"Set FIF Type", u"FIF type 설정", u"FIF-Typ festlegen"}},
    {Word::title_choose_genre_type, {u"Set Genre Type", u"장르 입력방식 설정", u"Eingabe der Musikart"}},

    {Word::button_ok, {u"OK", u"확인", u"OK"}},
    {Word::button_cancel, {u"Cancel", u"취소", u"Abbrechen"}},
    {Word::button_close, {u"Close", u"닫기", u"Schließen"}},
    {Word::button_preview, {u"Preview", u"미리보기", u"Vorschau"}},
    {Word::button_convert, {u"Convert", u"변환", u"Umwandeln"}},
    {Word::button_save, {u"Save", u"Save", u"Speichern"}},
    {Word::button_leave_edit, {u"Cancel", u"Cancel", u"Abbrechen"}},

    {Word::list_auto_convert, {u"Auto Convert List", u"자동변환 목록", u"Automatisch umzuwandeln"}},
    {Word::option_genre_from_list,
     {u"Choose the genre from the list", u"목록에서 장르 선택", u"Musikart aus der Liste wählen"}},
    {Word::option_genre_as_text, {u"Type the genre", u"장르 직접 입력", u"Musikart selbst eingeben"}},

    {Word::sound_on, {u"Sound on", u"소리 켜짐", u"Ton an"}},
    {Word::sound_off, {u"Muted", u"음소거됨", u"Stumm"}},
});

} // namespace

QString own_word(Word word)
{
    const auto* const entry = std::ranges::find(words, word, &WordTexts::word);
    return entry == words.end() ? QString() : entry->texts[QUILMO_LANGUAGE - 1].toString();
}
