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

    {Word::copy_of, {u"Copy of %1", u"%1 - 복사본", u"Kopie von %1"}},
    {Word::copy_of_numbered, {u"Copy of %1 (%2)", u"%1 - 복사본 (%2)", u"Kopie von %1 (%2)"}},

    {Word::reason_no_place,
     {u"There is no such place on this computer.", u"이 컴퓨터에 없는 위치입니다.",
      u"Diesen Ort gibt es auf diesem Computer nicht."}},
    {Word::reason_drive,
     {u"A drive can't be copied, moved, renamed or deleted as a whole.",
      u"드라이브 전체를 복사, 이동, 삭제하거나 이름을 바꿀 수 없습니다.",
      u"Ein Laufwerk kann nicht als Ganzes kopiert, verschoben, umbenannt oder gelöscht werden."}},
    {Word::reason_into_itself,
     {u"A folder can't be put into itself or into a folder inside it.",
      u"폴더를 그 폴더 자신이나 그 하위 폴더에 넣을 수 없습니다.",
      u"Ein Ordner kann nicht in sich selbst oder in einen Ordner darin gelegt werden."}},
    {Word::reason_same_file,
     {u"The source and the target are the same file.", u"원본과 대상이 같은 파일입니다.",
      u"Quelle und Ziel sind dieselbe Datei."}},
    {Word::reason_file_in_the_way,
     {u"Something that is not a folder already has this name.", u"폴더가 아닌 항목이 이미 이 이름을 쓰고 있습니다.",
      u"Diesen Namen trägt schon etwas, das kein Ordner ist."}},
    {Word::reason_folder_in_the_way,
     {u"A folder already has this name.", u"같은 이름의 폴더가 이미 있습니다.",
      u"Diesen Namen trägt schon ein Ordner."}},
    {Word::reason_special_file,
     {u"This is neither a file nor a folder nor a link.", u"파일이나 폴더, 링크가 아닙니다.",
      u"Dies ist weder eine Datei noch ein Ordner noch eine Verknüpfung."}},
    {Word::reason_changed,
     {u"The file was changed while it was being copied.", u"복사하는 동안 파일이 변경되었습니다.",
      u"Die Datei wurde während des Kopierens geändert."}},
    {Word::reason_changed_later,
     {u"The file or its copy was changed after it was copied; it stays where it was.",
      u"복사한 뒤에 파일이나 복사본이 변경되어 원본을 그대로 두었습니다.",
      u"Die Datei oder ihre Kopie wurde nach dem Kopieren geändert; sie bleibt, wo sie war."}},
});

} // namespace

QString own_word(Word word)
{
    const auto* const entry = std::ranges::find(words, word, &WordTexts::word);
    return entry == words.end() ? QString() : entry->texts[QUILMO_LANGUAGE - 1].toString();
}
