#include "core/Mod_of_nation.h"

#include "core/mod_of_grobal_var.h"
#include "platform/MsgBox.h"
#include "platform/display_text.h"

#include <QStringBuilder>
#include <QStringView>

#include <algorithm>
#include <array>
#include <span>

using namespace Qt::StringLiterals;

namespace {

struct Message
{
    i16 code;
    std::array<QStringView, 3> texts; ///< English, Korean, German
};

// Some German words lack letters or hold a question mark in their place on purpose: the texts are fixed as they stand.

constexpr Message messages[] = {
    {msg_artist_too_long,
     {u"Unable to Convert! Artist's name is too long", u"아티스트의 이름을 줄여 주세요.",
      u"Umwandlung nicht m?lich. Name zu lang"}},
    {msg_select_mp3, {u"Select MP3 File", u"파일을 선택해 주세요", u"MP3 Datei w?len"}},
    {msg_cd_not_selectable,
     {u"MP3 files of CD can not be selected", u"CD의 MP3 파일은 선택할 수 없습니다.",
      u"CD Dateien konnen nicht gew?lt werden"}},
    {msg_cd_not_renamable,
     {u"MP3 files of CD can not be renamed to FIF Format", u"CD안의 MP3파일은 FIF포맷으로 변경할 수 없습니다.",
      u"Cd Dateien k?nen nicht umbenannt werden"}},
    {msg_input_artist_title,
     {u"Input Artist and Title", u"아티스트이름과 곡제목을 입력해 주십시요.", u"Eingabe K?stler und Titel"}},
    {msg_cd_not_checkable,
     {u"MP3 files of CD can not be selected", u"CD의 MP3 파일은 선택할 수 없습니다.",
      u"CD Dateien konnen nicht gew?lt werden"}},
    {msg_new_folder_failed,
     {u"Unable to create new folder", u"새 폴더를 만들 수 없습니다.", u"Es kann kein neues Kapitel erstellt werden"}},
    {msg_click_preview, {u"Click Preview Button", u"먼저 미리보기 버튼을 눌러 확인하십시요.", u"Vorschautaste dr?ken"}},
    {msg_input_artist, {u"Input Artist Name", u"아티스트이름을 입력해 주십시요.", u"K?stler Namen eingeben"}},
    {msg_input_genre, {u"Input Genre Information", u"장르 정보를 입력해 주십시요.", u"Musikart eingeben"}},
    {msg_tag_write_failed,
     {u"Error! Can not Write ID3 Tag", u"ID3 태그를 업데이트를 하지 못했습니다.",
      u"Fehler! kein ID 3 Label erzeugbar"}},
};

constexpr Message name_messages[] = {
    {msg_name_too_long, {u" is too long", u"의 아티스트의 이름을 줄여 주세요.", u" zu lang"}},
    {msg_is_playing, {u" is playing", u"은 Play중 입니다.", u" spielt"}},
    {msg_already_selected, {u" is already selected", u"은 선택되었습니다.", u" ist bereits gew?lt"}},
    {msg_device_error, {u"Device Error : ", u"Device Error : ", u"Fehler : "}},
    {msg_already_exists, {u" already exists", u"은 존재합니다.", u" besteht bereits"}},
    {msg_exists_in_list,
     {u" already exists in MP3 File List", u"은 MP3 파일리스트에 존재합니다.", u" besteht bereits in der MP 3 Liste"}},
};

/// The text of a code in the language of the run; null when the code is not in the table or the language unknown.
QStringView text_of(std::span<const Message> table, i16 code)
{
    const auto message = std::ranges::find(table, code, &Message::code);
    const bool language_known = shared.language_id >= 1 && shared.language_id <= 3;
    if (message == table.end() || !language_known)
        return {};
    return message->texts[static_cast<std::size_t>(shared.language_id) - 1];
}

void show_text(const QString& text)
{
    MsgBox(text, message_box_information, application_title());
}

} // namespace

QString application_title()
{
    return u"Vurlo"_s;
}

void show_message(i16 code)
{
    const QStringView text = text_of(messages, code);
    if (!text.isNull())
        show_text(text.toString());
}

void show_name_message(i16 code, const QString& name)
{
    const QStringView fixed_part = text_of(name_messages, code);
    if (fixed_part.isNull())
        return;
    const QString shown = display_text(name);
    show_text(code == msg_device_error ? QString(fixed_part % shown) : QString(shown % fixed_part));
}
