#include "test_main.h"

#include "core/Mod_of_nation.h"
#include "core/mod_of_grobal_var.h"

#include <QCoreApplication>
#include <QTest>

#include <array>

using namespace Qt::StringLiterals;

namespace {

struct Row
{
    i16 code;
    QString english;
    QString korean;
    QString german;
};

const Row complete_messages[] = {
    {1, u"Unable to Convert! Artist's name is too long"_s, u"아티스트의 이름을 줄여 주세요."_s,
     u"Umwandlung nicht m?lich. Name zu lang"_s},
    {2, u"Select MP3 File"_s, u"파일을 선택해 주세요"_s, u"MP3 Datei w?len"_s},
    {3, u"MP3 files of CD can not be selected"_s, u"CD의 MP3 파일은 선택할 수 없습니다."_s,
     u"CD Dateien konnen nicht gew?lt werden"_s},
    {4, u"MP3 files of CD can not be renamed to FIF Format"_s, u"CD안의 MP3파일은 FIF포맷으로 변경할 수 없습니다."_s,
     u"Cd Dateien k?nen nicht umbenannt werden"_s},
    {5, u"Input Artist and Title"_s, u"아티스트이름과 곡제목을 입력해 주십시요."_s, u"Eingabe K?stler und Titel"_s},
    {6, u"MP3 files of CD can not be selected"_s, u"CD의 MP3 파일은 선택할 수 없습니다."_s,
     u"CD Dateien konnen nicht gew?lt werden"_s},
    {7, u"Unable to create new folder"_s, u"새 폴더를 만들 수 없습니다."_s,
     u"Es kann kein neues Kapitel erstellt werden"_s},
    {8, u"Click Preview Button"_s, u"먼저 미리보기 버튼을 눌러 확인하십시요."_s, u"Vorschautaste dr?ken"_s},
    {9, u"Input Artist Name"_s, u"아티스트이름을 입력해 주십시요."_s, u"K?stler Namen eingeben"_s},
    {10, u"Input Genre Information"_s, u"장르 정보를 입력해 주십시요."_s, u"Musikart eingeben"_s},
    {11, u"Error! Can not Write ID3 Tag"_s, u"ID3 태그를 업데이트를 하지 못했습니다."_s,
     u"Fehler! kein ID 3 Label erzeugbar"_s},
};

const Row name_messages[] = {
    {101, u" is too long"_s, u"의 아티스트의 이름을 줄여 주세요."_s, u" zu lang"_s},
    {102, u" is playing"_s, u"은 Play중 입니다."_s, u" spielt"_s},
    {103, u" is already selected"_s, u"은 선택되었습니다."_s, u" ist bereits gew?lt"_s},
    {104, u"Device Error : "_s, u"Device Error : "_s, u"Fehler : "_s},
    {105, u" already exists"_s, u"은 존재합니다."_s, u" besteht bereits"_s},
    {106, u" already exists in MP3 File List"_s, u"은 MP3 파일리스트에 존재합니다."_s,
     u" besteht bereits in der MP 3 Liste"_s},
};

const QString name = u"Some name.mp3"_s;
constexpr std::array<i16, 3> languages = {1, 2, 3};

/// Joins the name as the code wants it.
QString joined(i16 code, const QString& fixed_part)
{
    return code == 104 ? fixed_part + name : name + fixed_part;
}

} // namespace

class TestMessages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void every_complete_message_shows_its_text_in_each_language();
    void every_name_message_shows_its_text_in_each_language();
    void other_codes_show_no_box();
    void an_unknown_language_shows_no_box_data();
    void an_unknown_language_shows_no_box();
    void the_box_has_an_information_icon_and_the_title();
    void an_empty_name_leaves_the_fixed_part();
    void both_guards_of_a_cd_say_the_same();
};

void TestMessages::every_complete_message_shows_its_text_in_each_language()
{
    const TestDisk disk;
    NotedMessages messages;
    for (const Row& row : complete_messages) {
        for (const i16 language : languages) {
            shared.language_id = language;
            show_message(row.code);
        }
        QCOMPARE(messages.take(), QStringList({row.english, row.korean, row.german}));
    }
}

void TestMessages::every_name_message_shows_its_text_in_each_language()
{
    const TestDisk disk;
    NotedMessages messages;
    for (const Row& row : name_messages) {
        for (const i16 language : languages) {
            shared.language_id = language;
            show_name_message(row.code, name);
        }
        QCOMPARE(messages.take(), QStringList({joined(row.code, row.english), joined(row.code, row.korean),
                                               joined(row.code, row.german)}));
    }
}

void TestMessages::other_codes_show_no_box()
{
    const TestDisk disk;
    NotedMessages messages;
    for (int code = -300; code <= 300; ++code) {
        if (code < 1 || code > 11)
            show_message(static_cast<i16>(code));
        if (code < 101 || code > 106)
            show_name_message(static_cast<i16>(code), name);
    }
    QCOMPARE(messages.take(), QStringList());
}

void TestMessages::an_unknown_language_shows_no_box_data()
{
    QTest::addColumn<i16>("language");
    QTest::newRow("before the start") << i16{0};
    QTest::newRow("past the last language") << i16{4};
    QTest::newRow("negative") << i16{-1};
}

void TestMessages::an_unknown_language_shows_no_box()
{
    QFETCH(const i16, language);
    const TestDisk disk;
    NotedMessages messages;
    shared.language_id = language;
    for (const Row& row : complete_messages)
        show_message(row.code);
    for (const Row& row : name_messages)
        show_name_message(row.code, name);
    QCOMPARE(messages.take(), QStringList());
}

void TestMessages::the_box_has_an_information_icon_and_the_title()
{
    const TestDisk disk;
    NotedMessages messages;
    show_message(msg_select_mp3);
    QCOMPARE(messages.last_style, 64);
    QCOMPARE(messages.last_title, u"Vurlo"_s);
    messages.last_style = 0;
    messages.last_title.clear();
    show_name_message(msg_is_playing, name);
    QCOMPARE(messages.last_style, 64);
    QCOMPARE(messages.last_title, u"Vurlo"_s);
}

void TestMessages::an_empty_name_leaves_the_fixed_part()
{
    const TestDisk disk;
    NotedMessages messages;
    show_name_message(msg_is_playing, QString());
    QCOMPARE(messages.take(), QStringList(u" is playing"_s));
}

void TestMessages::both_guards_of_a_cd_say_the_same()
{
    const TestDisk disk;
    NotedMessages messages;
    for (const i16 language : languages) {
        shared.language_id = language;
        show_message(msg_cd_not_selectable);
        show_message(msg_cd_not_checkable);
        const QStringList texts = messages.take();
        QCOMPARE(texts.size(), 2);
        QCOMPARE(texts[0], texts[1]);
    }
}

QUILMO_LOGIC_TEST(TestMessages)
#include "test_messages.moc"
