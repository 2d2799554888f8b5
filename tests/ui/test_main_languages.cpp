#include "core/mod_of_grobal_var.h"
#include "frame/QuilmoMain.h"
#include "frame/mnemonics.h"
#include "platform/controls/fonts.h"
#include "platform/language.h"
#include "test_main.h"

#include <QPainter>
#include <QSet>
#include <QTest>

#include <array>

using namespace Qt::StringLiterals;

namespace {

/// The five label pictures.
const QStringList label_pictures = {u"Picture_filename"_s, u"Picture_artist"_s, u"Picture_title"_s, u"Picture_genre"_s,
                                    u"Picture_length"_s};
/// The five buttons of the list row.
const QStringList word_buttons = {u"cmd_select_all"_s, u"cmdRemove"_s, u"Change_all"_s, u"cmdBurn"_s, u"cmdSave"_s};
const QStringList korean_font_controls = {
    u"txtFilename"_s,          u"txtArtist"_s, u"txtTitle"_s, u"txtGenre"_s, u"cboGenre"_s, u"Label_filesize"_s,
    u"label_title_of_player"_s};
const QStringList other_controls = {u"tvTreeView"_s, u"lvListView"_s, u"StatusBar1"_s, u"CurrentTime"_s};

/// A text of one control in the three languages.
struct SpokenText
{
    QStringView control; ///< one of several texts of a control has its number, from 1, behind a dot
    QStringView in_english;
    QStringView in_korean;
    QStringView in_german;

    QString in(Language language) const
    {
        return (language == english ? in_english : language == korean ? in_korean : in_german).toString();
    }
};

constexpr SpokenText captions[] = {
    {u"main_toolbar.1", u"New Folder", u"새 폴더", u"Neues Kapitel"},
    {u"main_toolbar.2", u"Copy", u"복사", u"Kopieren"},
    {u"main_toolbar.4", u"Paste", u"붙여넣기", u"Einf?en"},
    {u"main_toolbar.5", u"Delete", u"삭제", u"L?chen"},
    {u"main_toolbar.7", u"Refresh", u"이름 바꾸기", u"Erneuern"},
    {u"cmd_select_all", u"Select all the files in the current folder", u"현재 폴더의 MP3 파일을 모두 선택합니다.",
     u"Wahl  aller Dateien im laufendem Kapitel"},
    {u"cmdRemove", u"Cancel all selections made in the current folder", u"현재 폴더의 MP3 파일의 선택을 취소합니다.",
     u"L?chen aller gewahlten Dateien im laufenden Kapitel"},
    {u"Change_all", u"You can see the list of all the selected MP3 files",
     u"선택한 MP3 파일 리스트를 보실 수 있습니다.", u"Liste aller ausgew?lter MP3 Dateien"},
    {u"cmdBurn", u"Run the burning program", u"Burning program을 실행합니다.", u"Brenner Programm starten"},
    {u"cmdSave", u"Change the filename into FIF format", u"파일이름을 FIF 형식으로 변환합니다.",
     u"훞dern dos Dateinamens im FIF Format"},
    {u"muteBtn", u"Mute", u"Mute", u"Ton Pause"},
    {u"mnu_tree_add_folder", u"New Folder", u"새 폴더", u"Neues Kapitel"},
    {u"menu_File_add_folder", u"New Folder", u"새 폴더", u"Neues Kapitel"},
    {u"mnu_tree_copy", u"Copy", u"복사", u"Kopieren"},
    {u"mnu_ListView_copy", u"Copy", u"복사", u"Kopieren"},
    {u"menu_Edit_copy", u"Copy", u"복사", u"Kopieren"},
    {u"mnu_tree_paste", u"Paste", u"붙여넣기", u"Einf?en"},
    {u"mnu_ListView_paste", u"Paste", u"붙여넣기", u"Einf?en"},
    {u"menu_Edit_paste", u"Paste", u"붙여넣기", u"Einf?en"},
    {u"mnu_tree_delete", u"Delete", u"삭제", u"L?chen"},
    {u"mnu_ListView_delete", u"Delete", u"삭제", u"L?chen"},
    {u"menu_Edit_delete", u"Delete", u"삭제", u"L?chen"},
    {u"mnu_tree_rename", u"Rename", u"이름 바꾸기", u"Umbenennen"},
    {u"mnu_ListView_rename", u"Rename", u"이름 바꾸기", u"Umbenennen"},
    {u"mnu_ListView_auto", u"Auto Convert", u"자동변환", u"Autom. Wandlung"},
    {u"mnu_ListView_select_all", u"Select All", u"모두선택", u"Alles ausw?len"},
    {u"menu_File", u"File", u"파일", u"Datei"},
    {u"menu_File_Exit", u"Exit", u"종료", u"Beenden"},
    {u"menu_Edit", u"Edit", u"편집", u"Bearbeiten"},
    {u"menu_View", u"View", u"보기", u"Ansicht"},
    {u"menu_View_list", u"List", u"간단히", u"Auflisten"},
    {u"menu_View_details", u"Details", u"자세히", u"Einzelheiten"},
    {u"menu_View_refresh", u"Refresh", u"새로고침", u"Erneuern"},
    {u"menu_Tool", u"Tools", u"도구", u"Werkzeuge"},
    {u"menu_Tool_Select_all", u"Select All", u"Select All", u"Alles ausw?len"},
    {u"menu_Tool_clear_all", u"Clear All", u"Clear All", u"Alles l?chen"},
    {u"menu_Tool_display_final_list", u"Display Final List", u"Display Final List", u"Endg?tige Liste"},
    {u"menu_Tool_Burn", u"Burn", u"Burn", u"CD brennen"},
    {u"menu_Tool_Select_Burning_Program", u"Select Burning Program", u"Burning 프로그램 선택", u"Brenner Prog. w?len"},
    {u"menu_Tool_Select_FIF_Format", u"Set FIF Type", u"FIF type설정", u"FIF Typ festlegen"},
    {u"menu_Tool_Set_Genre_Type", u"Set Genre Type", u"장르 입력방식 설정", u"Musikart w?len"},
    {u"menu_Help", u"Help", u"도움말", u"Hilfe"},
    {u"menu_Help_about", u"About...", u"Brelith Utility 정보..", u"Wor?er"},
    {u"lvListView.1", u"Name", u"이름", u"Name"},
    {u"lvListView.2", u"Size", u"크기", u"Gr秤e"},
    {u"lvListView.3", u"Type", u"종류", u"Typ"},
    {u"lvListView.4", u"Date", u"바뀐 날짜", u"Ge?dert am"},
};

// A button with a word on it is read out by its tip, and so is the mute button.
constexpr SpokenText accessible_names[] = {
    {u"tvTreeView", u"Folders", u"폴더", u"Ordner"},
    {u"lvListView", u"MP3 files", u"MP3 파일", u"MP3-Dateien"},
    {u"StatusBar1", u"Totals", u"합계", u"Summen"},
    {u"Picture_mp3_back", u"Player", u"재생기", u"Abspielgerät"},
    {u"Picture_back_volume", u"Volume", u"음량", u"Lautstärke"},
    {u"txtArtist", u"Artist", u"아티스트", u"Künstler"},
    {u"PlayBtn", u"Play", u"재생", u"Wiedergabe"},
    {u"FastBtn", u"Next track", u"다음 곡", u"Nächster Titel"},
    {u"cmdBurn", u"Run the burning program", u"Burning program을 실행합니다.", u"Brenner Programm starten"},
    {u"muteBtn", u"Mute", u"Mute", u"Ton Pause"},
};

/// A text with the control that has it, for a failure that tells both.
QString told(const SpokenText& row, const QString& text)
{
    return row.control.toString() + u": "_s + text;
}

void add_languages()
{
    QTest::addColumn<Language>("language");
    QTest::newRow("English is the design") << english;
    QTest::newRow("Korean") << korean;
    QTest::newRow("German") << german;
}

QImage drawn(const Picture& picture)
{
    QImage image(picture.size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    picture.draw(painter, QRectF({}, picture.size));
    return image;
}

QByteArray bytes(const QImage& image)
{
    return {reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes()};
}

/// One main window in one language.
class SpeakingWindow
{
public:
    explicit SpeakingWindow(Language language)
    {
        set_program_language(language);
        window_ = std::make_unique<QuilmoMain>();
    }

    ~SpeakingWindow()
    {
        window_.reset();
        set_program_language(english);
    }

    SpeakingWindow(const SpeakingWindow&) = delete;
    SpeakingWindow& operator=(const SpeakingWindow&) = delete;

    template<typename Control> Control& control(const QString& name) const
    {
        auto* found = window_->findChild<Control*>(name);
        if (found == nullptr)
            qFatal("no control %s", qPrintable(name));
        return *found;
    }

    /// The text of a menu entry, toolbar button, column or tip, by the control's name and number.
    QString text(const QString& name) const
    {
        const QString control_name = name.section(u'.', 0, 0);
        const int number = name.section(u'.', 1).toInt();
        if (control_name == u"main_toolbar"_s)
            return control<Toolbar>(control_name).button(number)->toolTip();
        if (control_name == u"lvListView"_s)
            return control<ListView>(control_name).ColumnHeaders().at(static_cast<std::size_t>(number) - 1).Text;
        if (name.startsWith(u"mnu"_s) || name.startsWith(u"menu"_s))
            return without_mnemonic(control<QAction>(name).text());
        return control<QWidget>(name).toolTip();
    }

    const QWidget& window() const { return *window_; }

private:
    TestDisk disk_;
    std::unique_ptr<QuilmoMain> window_;
};

} // namespace

class TestMainLanguages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void texts();
    void texts_data();
    void headers_keep_widths_and_the_last_column();
    void accessible_names_follow_the_language();
    void accessible_names_follow_the_language_data();
    void fonts();
    void label_pictures_speak_every_language();
    void buttons_speak_german_and_no_korean();
    void the_design_fits_a_small_desktop();
    void the_design_fits_a_small_desktop_data();
};

void TestMainLanguages::texts_data()
{
    add_languages();
}

void TestMainLanguages::texts()
{
    QFETCH(const Language, language);
    const SpeakingWindow window(language);
    for (const SpokenText& row : captions)
        QCOMPARE(told(row, window.text(row.control.toString())), told(row, row.in(language)));
}

void TestMainLanguages::headers_keep_widths_and_the_last_column()
{
    const std::vector<ColumnHeader> design = SpeakingWindow(english).control<ListView>(u"lvListView"_s).ColumnHeaders();
    for (const Language language : {korean, german}) {
        const SpeakingWindow other(language);
        const auto& list = other.control<ListView>(u"lvListView"_s);
        QCOMPARE(list.ColumnHeaders().size(), design.size());
        for (std::size_t i = 0; i < design.size(); ++i)
            QCOMPARE(list.ColumnHeaders()[i].Width, design[i].Width);
        QCOMPARE(list.ColumnHeaders().back().Text, design.back().Text);
        QCOMPARE(list.view()->model()->headerData(1, Qt::Horizontal).toString(), list.ColumnHeaders()[1].Text);
    }
}

void TestMainLanguages::accessible_names_follow_the_language_data()
{
    add_languages();
}

void TestMainLanguages::accessible_names_follow_the_language()
{
    QFETCH(const Language, language);
    const SpeakingWindow window(language);
    for (const SpokenText& row : accessible_names)
        QCOMPARE(told(row, window.control<QWidget>(row.control.toString()).accessibleName()),
                 told(row, row.in(language)));
}

void TestMainLanguages::fonts()
{
    std::array<QStringList, 3> families;
    for (const Language language : {english, korean, german}) {
        const SpeakingWindow window(language);
        for (const QString& name : korean_font_controls + other_controls)
            families.at(language - 1).append(window.control<QWidget>(name).font().families().first());
    }
    const QStringList& design = families[english - 1];
    QVERIFY(!design.contains(u"굴림"_s));
    QCOMPARE(families[german - 1], design);
    QCOMPARE(families[korean - 1],
             QStringList(korean_font_controls.size(), u"굴림"_s) + design.mid(korean_font_controls.size()));
}

void TestMainLanguages::label_pictures_speak_every_language()
{
    QSet<QByteArray> words;
    for (const Language language : {english, korean, german}) {
        const SpeakingWindow window(language);
        for (const QString& name : label_pictures)
            words.insert(bytes(drawn(window.control<PictureBox>(name).picture())));
    }
    QCOMPARE(words.size(), 3 * label_pictures.size());
}

void TestMainLanguages::buttons_speak_german_and_no_korean()
{
    std::array<QList<QByteArray>, 3> faces;
    for (const Language language : {english, korean, german}) {
        const SpeakingWindow window(language);
        for (const QString& name : word_buttons) {
            const auto& button = window.control<UsrButton>(name);
            for (const Picture& face : {button.PictureUp(), button.PictureDn(), button.PictureMove()})
                faces.at(language - 1).append(bytes(drawn(face)));
        }
    }
    constexpr int states = 15;
    QCOMPARE(faces[english - 1].size(), states);
    QVERIFY(faces[korean - 1] == faces[english - 1]);
    for (int i = 0; i < states; ++i)
        QVERIFY(faces[german - 1][i] != faces[english - 1][i]);
}

void TestMainLanguages::the_design_fits_a_small_desktop_data()
{
    add_languages();
}

// What a desktop of 1024 x 768 leaves: its panel takes 40 pixels, the frame 5 on each side and a title of 28.
void TestMainLanguages::the_design_fits_a_small_desktop()
{
    constexpr QSize room(1024 - 10, 768 - 40 - 10 - 28);
    QFETCH(const Language, language);
    const SpeakingWindow speaking(language);
    const QWidget& window = speaking.window();
    QVERIFY(window.width() <= room.width());
    QVERIFY(window.height() <= room.height());
    QCOMPARE(window.minimumSizeHint().boundedTo(room), window.minimumSizeHint());
}

QUILMO_UI_TEST(TestMainLanguages)
#include "test_main_languages.moc"
