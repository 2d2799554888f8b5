#include "core/captions.h"

#include "core/mod_of_grobal_var.h"
#include "platform/language.h"

#include <algorithm>

namespace {

// Some texts lack letters, hold a question mark or another letter in their place, or tell of another command, on
// purpose: they are fixed as they stand.

constexpr Caption main_captions[] = {
    {u"main_toolbar.1", u"새 폴더", u"Neues Kapitel"},
    {u"main_toolbar.2", u"복사", u"Kopieren"},
    {u"main_toolbar.4", u"붙여넣기", u"Einf?en"},
    {u"main_toolbar.5", u"삭제", u"L?chen"},
    {u"main_toolbar.7", u"이름 바꾸기", u"Erneuern"},
    {u"cmd_select_all", u"현재 폴더의 MP3 파일을 모두 선택합니다.", u"Wahl  aller Dateien im laufendem Kapitel"},
    {u"cmdRemove", u"현재 폴더의 MP3 파일의 선택을 취소합니다.",
     u"L?chen aller gewahlten Dateien im laufenden Kapitel"},
    {u"Change_all", u"선택한 MP3 파일 리스트를 보실 수 있습니다.", u"Liste aller ausgew?lter MP3 Dateien"},
    {u"cmdBurn", u"Burning program을 실행합니다.", u"Brenner Programm starten"},
    {u"cmdSave", u"파일이름을 FIF 형식으로 변환합니다.", u"훞dern dos Dateinamens im FIF Format"},
    {u"muteBtn", u"Mute", u"Ton Pause"},
    {u"mnu_tree_add_folder", u"새 폴더", u"Neues Kapitel"},
    {u"menu_File_add_folder", u"새 폴더", u"Neues Kapitel"},
    {u"mnu_tree_copy", u"복사", u"Kopieren"},
    {u"mnu_ListView_copy", u"복사", u"Kopieren"},
    {u"menu_Edit_copy", u"복사", u"Kopieren"},
    {u"mnu_tree_paste", u"붙여넣기", u"Einf?en"},
    {u"mnu_ListView_paste", u"붙여넣기", u"Einf?en"},
    {u"menu_Edit_paste", u"붙여넣기", u"Einf?en"},
    {u"mnu_tree_delete", u"삭제", u"L?chen"},
    {u"mnu_ListView_delete", u"삭제", u"L?chen"},
    {u"menu_Edit_delete", u"삭제", u"L?chen"},
    {u"mnu_tree_rename", u"이름 바꾸기", u"Umbenennen"},
    {u"mnu_ListView_rename", u"이름 바꾸기", u"Umbenennen"},
    {u"mnu_ListView_auto", u"자동변환", u"Autom. Wandlung"},
    {u"mnu_ListView_select_all", u"모두선택", u"Alles ausw?len"},
    {u"menu_File", u"파일", u"Datei"},
    {u"menu_File_Exit", u"종료", u"Beenden"},
    {u"menu_Edit", u"편집", u"Bearbeiten"},
    {u"menu_View", u"보기", u"Ansicht"},
    {u"menu_View_list", u"간단히", u"Auflisten"},
    {u"menu_View_details", u"자세히", u"Einzelheiten"},
    {u"menu_View_refresh", u"새로고침", u"Erneuern"},
    {u"menu_Tool", u"도구", u"Werkzeuge"},
    {u"menu_Tool_Select_all", u"Select All", u"Alles ausw?len"},
    {u"menu_Tool_clear_all", u"Clear All", u"Alles l?chen"},
    {u"menu_Tool_display_final_list", u"Display Final List", u"Endg?tige Liste"},
    {u"menu_Tool_Burn", u"Burn", u"CD brennen"},
    {u"menu_Tool_Select_Burning_Program", u"Burning 프로그램 선택", u"Brenner Prog. w?len"},
    {u"menu_Tool_Select_FIF_Format", u"FIF type설정", u"FIF Typ festlegen"},
    {u"menu_Tool_Set_Genre_Type", u"장르 입력방식 설정", u"Musikart w?len"},
    {u"menu_Help", u"도움말", u"Hilfe"},
    {u"menu_Help_about", u"Brelith Utility 정보..", u"Wor?er"},
    {u"lvListView.1", u"이름", u"Name"},
    {u"lvListView.2", u"크기", u"Gr秤e"},
    {u"lvListView.3", u"종류", u"Typ"},
    {u"lvListView.4", u"바뀐 날짜", u"Ge?dert am"},
};

constexpr Caption chang_fif_captions[] = {
    {u"cmdSave", u"파일이름을 FIF 형식으로 변환합니다", u"훞dern dos Dateinamens im FIF Format"},
    {u"cmdExit", u"취소", u"L?chen"},
};

constexpr Caption fif_convert_captions[] = {
    {u"Change_FIF", u"Auto Convert List의 MP3 파일들을 FIF 형식으로 변환합니다.",
     u"훞dern aller Dateien der automatisch erstellten Liste fur das FIF Format"},
    {u"cmd_transfer", u"모든 MP3 파일을 특정 폴더로 복사합니다.", u"Sichern aller MP3 Dateien in bestimmten Kapiteln"},
    {u"Cancel", u"취소", u"L?chen"},
    {u"FIF_ListView.1", u"이름", u"Name"},
    {u"FIF_ListView.2", u"위치", u"Ort"},
    {u"FIF_ListView.3", u"크기", u"Gr秤e"},
    {u"Impossible_ListView.1", u"이름", u"Name"},
    {u"Impossible_ListView.2", u"위치", u"Ort"},
    {u"Impossible_ListView.3", u"크기", u"Gr秤e"},
    {u"Possible_ListView.1", u"[이름]-자동변환 전", u"Name"},
    {u"Possible_ListView.2", u"[이름]-자동변환 전", u"FIF"},
    {u"Possible_ListView.3", u"위치", u"Ort"},
    {u"Possible_ListView.4", u"크기", u"Gr秤e"},
};

constexpr Caption auto_convert_captions[] = {
    {u"Label_fix_artist", u"아티스트 고정", u"Wunsch K?stler"},
    {u"Label_fix_genre", u"장르고정", u"Wunsch Musikart"},
    {u"Selected_ListView.1", u"[이름]-자동변환 전", u"Name"},
    {u"Selected_ListView.2", u"[이름]-자동변환 후", u"FIF"},
    {u"Selected_ListView.3", u"위치", u"Ort"},
    {u"Selected_ListView.4", u"크기", u"Gr秤e"},
};

constexpr Caption file_copy_captions[] = {
    {u"Cmd_new_folder", u"새 폴더", u"Neues Kapitel"},
    {u"cmd_ok", u"확인", u"Ok"},
    {u"cmd_cancel", u"취소", u"L?chen"},
};

} // namespace

std::span<const Caption> captions_of(Form form)
{
    switch (form) {
    case Form::QuilmoMain:
        return main_captions;
    case Form::Chang_FIF:
        return chang_fif_captions;
    case Form::FIF_convert:
        return fif_convert_captions;
    case Form::FIF_Auto_Convert:
        return auto_convert_captions;
    case Form::File_copy_Dlg:
        return file_copy_captions;
    }
    return {};
}

QString caption_text(const Caption& caption)
{
    switch (shared.language_id) {
    case korean:
        return caption.korean.toString();
    case german:
        return caption.german.toString();
    default:
        return {};
    }
}

QString caption_of(Form form, QStringView control)
{
    const auto captions = captions_of(form);
    const auto caption = std::ranges::find(captions, control, &Caption::control);
    return caption == captions.end() ? QString() : caption_text(*caption);
}
