#include "platform/own_words.h"

#include "platform/language.h"

#include <algorithm>
#include <array>

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
    {Word::drive_home_name, {u"Home", u"홈", u"Persönlich"}},
    {Word::drive_music_name, {u"Music", u"음악", u"Musik"}},

    {Word::field_filename, {u"File Name", u"파일 이름", u"Dateiname"}},
    {Word::field_artist, {u"Artist", u"아티스트", u"Künstler"}},
    {Word::field_title, {u"Title", u"제목", u"Titel"}},
    {Word::field_genre, {u"Genre", u"장르", u"Musikart"}},
    {Word::field_length, {u"Length", u"길이", u"Länge"}},

    {Word::title_edit, {u"Edit File", u"파일 편집", u"Datei bearbeiten"}},
    {Word::title_auto_convert, {u"Auto Convert", u"자동변환", u"Automatische Umwandlung"}},
    {Word::title_choose_format, {u"Set FIF Type", u"FIF 형식 설정", u"FIF-Typ festlegen"}},
    {Word::title_choose_genre_type, {u"Set Genre Type", u"장르 입력방식 설정", u"Eingabe der Musikart"}},
    {Word::title_final_list, {u"Final List", u"최종 목록", u"Endgültige Liste"}},

    {Word::button_ok, {u"OK", u"확인", u"OK"}},
    {Word::button_cancel, {u"Cancel", u"취소", u"Abbrechen"}},
    {Word::button_close, {u"Close", u"닫기", u"Schließen"}},
    {Word::button_preview, {u"Preview", u"미리보기", u"Vorschau"}},
    {Word::button_convert, {u"Convert", u"변환", u"Umwandeln"}},
    {Word::button_save, {u"Save", u"Save", u"Speichern"}},
    {Word::button_leave_edit, {u"Cancel", u"Cancel", u"Abbrechen"}},
    {Word::button_select_all, {u"Select All", u"Select All", u"Alles auswählen"}},
    {Word::button_clear_all, {u"Clear All", u"Clear All", u"Auswahl aufheben"}},
    {Word::button_final_list, {u"Final List", u"Final List", u"Endgültige Liste"}},
    {Word::button_burn, {u"Burn", u"Burn", u"CD brennen"}},

    {Word::list_fif, {u"FIF List", u"FIF 목록", u"FIF-Liste"}},
    {Word::list_auto_convert, {u"Auto Convert List", u"자동변환 목록", u"Automatisch umzuwandeln"}},
    {Word::list_manual_convert, {u"Manual Convert List", u"수동변환 목록", u"Von Hand umzuwandeln"}},
    {Word::picture_list_fif, {u"FIF List", u"FIF List", u"FIF-Liste"}},
    {Word::picture_list_auto_convert, {u"Auto Convert List", u"Auto Convert List", u"Automatisch umzuwandeln"}},
    {Word::picture_list_manual_convert, {u"Manual Convert List", u"Manual Convert List", u"Von Hand umzuwandeln"}},
    {Word::button_change_to_fif, {u"Change to FIF", u"Change to FIF", u"In FIF umwandeln"}},
    {Word::button_copy_to_folder, {u"Copy to Folder", u"Copy to Folder", u"In Ordner kopieren"}},
    {Word::button_close_list, {u"Close", u"Close", u"Schließen"}},

    {Word::option_genre_from_list, {u"From the list", u"목록에서 선택", u"Aus der Liste"}},
    {Word::option_genre_as_text, {u"By hand", u"직접 입력", u"Von Hand"}},

    {Word::sound_on, {u"Sound on", u"소리 켜짐", u"Ton an"}},
    {Word::sound_off, {u"Muted", u"음소거됨", u"Stumm"}},
    {Word::no_audio_device,
     {u"There is no sound device: music plays silently", u"사운드 장치가 없어 소리 없이 재생합니다",
      u"Kein Audiogerät gefunden: Musik läuft ohne Ton"}},

    {Word::track_previous, {u"Previous track", u"이전 곡", u"Vorheriger Titel"}},
    {Word::seconds_back, {u"5 seconds back", u"5초 뒤로", u"5 Sekunden zurück"}},
    {Word::play, {u"Play", u"재생", u"Wiedergabe"}},
    {Word::stop, {u"Stop", u"정지", u"Stopp"}},
    {Word::seconds_forward, {u"5 seconds forward", u"5초 앞으로", u"5 Sekunden vor"}},
    {Word::track_next, {u"Next track", u"다음 곡", u"Nächster Titel"}},

    {Word::name_toolbar, {u"Folder and file commands", u"폴더 및 파일 명령", u"Ordner- und Dateibefehle"}},
    {Word::name_folders, {u"Folders", u"폴더", u"Ordner"}},
    {Word::name_files, {u"MP3 files", u"MP3 파일", u"MP3-Dateien"}},
    {Word::name_splitter, {u"Border of the panes", u"창 경계", u"Grenze der Bereiche"}},
    {Word::name_totals, {u"Totals", u"합계", u"Summen"}},
    {Word::name_player, {u"Player", u"재생기", u"Abspielgerät"}},
    {Word::name_playing_title, {u"Title being played", u"재생 중인 제목", u"Laufender Titel"}},
    {Word::name_position, {u"Position", u"재생 위치", u"Abspielposition"}},
    {Word::name_position_knob, {u"Position knob", u"재생 위치 손잡이", u"Regler der Abspielposition"}},
    {Word::name_volume, {u"Volume", u"음량", u"Lautstärke"}},
    {Word::name_volume_knob, {u"Volume knob", u"음량 손잡이", u"Lautstärkeregler"}},

    {Word::button_yes, {u"&Yes", u"예(&Y)", u"&Ja"}},
    {Word::button_yes_to_all, {u"Yes to &All", u"모두 예(&A)", u"Ja, &alle"}},
    {Word::button_no, {u"&No", u"아니요(&N)", u"&Nein"}},
    {Word::button_no_to_all, {u"N&o to All", u"모두 아니요(&O)", u"N&ein, keine"}},
    {Word::button_skip, {u"&Skip", u"건너뛰기(&S)", u"Ü&berspringen"}},

    {Word::title_copying, {u"Copying", u"복사 중", u"Kopieren"}},
    {Word::title_moving, {u"Moving", u"이동 중", u"Verschieben"}},
    {Word::title_deleting, {u"Deleting", u"삭제 중", u"Löschen"}},
    {Word::title_renaming, {u"Renaming", u"이름 바꾸는 중", u"Umbenennen"}},
    {Word::progress_amount, {u"%1 of %2", u"%1 / %2", u"%1 von %2"}},
    {Word::progress_cancelling, {u"Cancelling…", u"취소하는 중…", u"Wird abgebrochen …"}},

    {Word::title_replace, {u"Replace File", u"파일 바꾸기", u"Datei ersetzen"}},
    {Word::title_error, {u"Error", u"오류", u"Fehler"}},
    {Word::title_trash, {u"Move to Trash", u"휴지통으로 이동", u"In den Papierkorb verschieben"}},
    {Word::title_delete, {u"Delete for Good", u"영구 삭제", u"Endgültig löschen"}},
    {Word::ask_replace,
     {u"A file named “%1” already exists here. Replace it?", u"이 위치에 ‘%1’ 파일이 이미 있습니다. 바꾸시겠습니까?",
      u"Eine Datei namens „%1“ gibt es hier schon. Soll sie ersetzt werden?"}},
    {Word::replace_here, {u"File here now", u"지금 있는 파일", u"Vorhandene Datei"}},
    {Word::replace_with, {u"Replace with", u"대신할 파일", u"Ersetzen durch"}},
    {Word::replace_newer, {u"Newer", u"더 최신", u"Neuer"}},
    {Word::error_with,
     {u"Something went wrong with “%1”:", u"‘%1’ 항목을 처리하지 못했습니다.",
      u"Bei „%1“ ist ein Fehler aufgetreten:"}},
    {Word::ask_trash_one,
     {u"Move “%1” to the trash?", u"‘%1’ 항목을 휴지통으로 옮기시겠습니까?",
      u"Soll „%1“ in den Papierkorb verschoben werden?"}},
    {Word::ask_trash_several,
     {u"Move these %1 items to the trash?", u"이 항목 %1개를 휴지통으로 옮기시겠습니까?",
      u"Sollen diese %1 Objekte in den Papierkorb verschoben werden?"}},
    {Word::ask_delete_one,
     {u"“%1” can't be moved to the trash. Delete it for good?",
      u"‘%1’ 항목은 휴지통으로 옮길 수 없습니다. 영구히 삭제하시겠습니까?",
      u"„%1“ kann nicht in den Papierkorb verschoben werden. Endgültig löschen?"}},
    {Word::ask_delete_several,
     {u"These %1 items can't be moved to the trash. Delete them for good?",
      u"이 항목 %1개는 휴지통으로 옮길 수 없습니다. 영구히 삭제하시겠습니까?",
      u"Diese %1 Objekte können nicht in den Papierkorb verschoben werden. Endgültig löschen?"}},

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

    {Word::all_files, {u"All files", u"모든 파일", u"Alle Dateien"}},
    {Word::program_not_started,
     {u"%1 can't be started: %2", u"%1을(를) 시작할 수 없습니다: %2", u"%1 kann nicht gestartet werden: %2"}},
});

} // namespace

QString own_word(Word word)
{
    const auto* const entry = std::ranges::find(words, word, &WordTexts::word);
    return entry == words.end() ? QString() : entry->texts[static_cast<std::size_t>(program_language() - 1)].toString();
}
