#include "convert/Chang_FIF.h"
#include "convert/FIF_Auto_Convert.h"
#include "convert/FIF_convert.h"
#include "convert/Select_FIF_Format.h"
#include "convert/Set_genre_type.h"
#include "core/mod_of_grobal_var.h"
#include "explorer/File_copy_Dlg.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/TextBox.h"
#include "platform/controls/faces.h"
#include "platform/language.h"
#include "platform/twips.h"
#include "sample_files.h"
#include "selection/final_list.h"
#include "test_main.h"
#include "ui_convert.h"

#include <QAbstractItemView>
#include <QSet>
#include <QTest>

#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr Language all_languages[] = {english, korean, german};

const QString choose_format = u"Select_FIF_Format"_s;
const QString choose_genre_type = u"Set_genre_type"_s;
const QString single_edit = u"Chang_FIF"_s;
const QString final_list = u"FIF_convert"_s;
const QString auto_convert = u"FIF_Auto_Convert"_s;
const QString destination = u"File_copy_Dlg"_s;

const QStringList all_forms = {choose_format, choose_genre_type, single_edit, final_list, auto_convert, destination};

/// What a control reads: a column's header, a label's text, a button's tool tip or, without one, its accessible name.
QString text_of(const QWidget& form, const QString& control)
{
    auto* const widget = form.findChild<QWidget*>(control.section(u'.', 0, 0));
    if (const auto* list = qobject_cast<ListView*>(widget))
        return list->ColumnHeaders().at(control.section(u'.', 1).toUInt() - 1).Text;
    if (const auto* label = qobject_cast<QLabel*>(widget))
        return label->text();
    return widget->toolTip().isEmpty() ? widget->accessibleName() : widget->toolTip();
}

QImage drawn(const Picture& picture)
{
    QImage image(picture.size, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    picture.draw(painter, QRectF(QPointF(), picture.size));
    return image;
}

/// All pictures of a control: one of a picture box, three of a button; of an option what the form paints behind it.
std::vector<QImage> pictures_of(QWidget& form, const QString& control)
{
    auto* const widget = form.findChild<QWidget*>(control);
    if (const auto* button = qobject_cast<UsrButton*>(widget))
        return {drawn(button->PictureUp()), drawn(button->PictureDn()), drawn(button->PictureMove())};
    if (const auto* box = qobject_cast<PictureBox*>(widget))
        return {drawn(box->picture())};
    const QRect place = widget->geometry();
    widget->hide();
    return {form.grab(place).toImage()};
}

bool has_korean_font(const QWidget& widget)
{
    return widget.font().families().value(0) == u"굴림"_s;
}

} // namespace

class TestDialogLanguages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void texts_follow_the_language_data();
    void texts_follow_the_language();
    void the_korean_headers_of_names_are_the_same();
    void titles_follow_the_language_data();
    void titles_follow_the_language();
    void lists_have_names_in_every_language_data();
    void lists_have_names_in_every_language();
    void shapes_are_told_in_every_language_data();
    void shapes_are_told_in_every_language();
    void pictures_follow_the_language_data();
    void pictures_follow_the_language();
    void captions_are_painted_as_told_data();
    void captions_are_painted_as_told();
    void korean_texts_have_their_font_data();
    void korean_texts_have_their_font();
    void rows_of_the_final_list_have_the_korean_font();
    void options_stand_as_told_data();
    void options_stand_as_told();
    void a_fixed_value_is_named_like_its_label();
    void nothing_overlaps_at_the_smallest_size_data();
    void nothing_overlaps_at_the_smallest_size();

private:
    std::unique_ptr<QDialog> make(const QString& form, Language language);

    std::unique_ptr<TestDisk> disk_;
    std::unique_ptr<NotedMessages> messages_;
    std::unique_ptr<QWidget> main_form_;
    ComboBox* cboGenre_ = nullptr;
    TextBox* txtGenre_ = nullptr;
    ListView* lvListView_ = nullptr;
    ImageList images_;
    NotedTransport player_;
};

void TestDialogLanguages::init()
{
    disk_ = std::make_unique<TestDisk>();
    messages_ = std::make_unique<NotedMessages>();
    main_form_ = std::make_unique<QWidget>();
    cboGenre_ = new ComboBox(main_form_.get());
    txtGenre_ = new TextBox(main_form_.get());
    lvListView_ = new ListView(main_form_.get());
    const QString folder = disk_->make_folder(u"C:\\Music"_s);
    const QByteArray content = sample_audio({.frames = 2}) + sample_tag({.title = "Sea", .artist = "Ann", .genre = 17});
    for (const QString& name : {u"[A][B].mp3"_s, u"tagged.mp3"_s}) {
        disk_->write(folder + name, content);
        QCOMPARE(add_to_final_list(name, folder, folder + name, static_cast<i32>(content.size()), {}, {}), added);
    }
    shared.current_folder = folder;
    shared.edit_file_name = u"tagged.mp3"_s;
}

void TestDialogLanguages::cleanup()
{
    set_program_language(english);
    main_form_.reset();
    messages_.reset();
    disk_.reset();
}

std::unique_ptr<QDialog> TestDialogLanguages::make(const QString& form, Language language)
{
    set_program_language(language);
    shared.language_id = language;
    if (form == choose_format)
        return std::make_unique<Select_FIF_Format>(*cboGenre_, *txtGenre_, nullptr);
    if (form == choose_genre_type)
        return std::make_unique<Set_genre_type>(*cboGenre_, *txtGenre_, nullptr);
    if (form == single_edit)
        return std::make_unique<Chang_FIF>(player_, Chang_FIF::Surroundings{[] {}, [] {}}, nullptr);
    if (form == final_list)
        return std::make_unique<FIF_convert>(player_, FIF_convert::Surroundings{[] {}, {}}, nullptr);
    if (form == auto_convert)
        return std::make_unique<FIF_Auto_Convert>(player_, FIF_Auto_Convert::Surroundings{*lvListView_, {}, [] {}},
                                                  nullptr);
    return std::make_unique<File_copy_Dlg>(File_copy_Dlg::Surroundings{[] {}, images_}, nullptr);
}

void TestDialogLanguages::texts_follow_the_language_data()
{
    QTest::addColumn<QString>("form");
    QTest::addColumn<QString>("control");
    QTest::addColumn<QStringList>("texts"); // English, Korean, German

    struct Texts
    {
        const QString& form;
        const char* control;
        QStringView english, korean, german;
    };
    const Texts table[] = {
        {single_edit, "cmdSave", u"Change the filename into FIF format", u"파일이름을 FIF 형식으로 변환합니다",
         u"훞dern dos Dateinamens im FIF Format"},
        {single_edit, "cmdExit", u"Cancel", u"취소", u"L?chen"},
        {final_list, "Change_FIF", u"Change all the files that are in the Auto Convert List into FIF format",
         u"Auto Convert List의 MP3 파일들을 FIF 형식으로 변환합니다.",
         u"훞dern aller Dateien der automatisch erstellten Liste fur das FIF Format"},
        {final_list, "cmd_transfer", u"Save all the MP3 files in the certain folder",
         u"모든 MP3 파일을 특정 폴더로 복사합니다.", u"Sichern aller MP3 Dateien in bestimmten Kapiteln"},
        {final_list, "Cancel", u"Cancel", u"취소", u"L?chen"},
        {final_list, "FIF_ListView.1", u"Name", u"이름", u"Name"},
        {final_list, "FIF_ListView.2", u"Location", u"위치", u"Ort"},
        {final_list, "FIF_ListView.3", u"Size", u"크기", u"Gr秤e"},
        {final_list, "Impossible_ListView.1", u"Name", u"이름", u"Name"},
        {final_list, "Impossible_ListView.2", u"Location", u"위치", u"Ort"},
        {final_list, "Impossible_ListView.3", u"Size", u"크기", u"Gr秤e"},
        {final_list, "Possible_ListView.1", u"Name", u"[이름]-자동변환 전", u"Name"},
        {final_list, "Possible_ListView.2", u"FIF", u"[이름]-자동변환 전", u"FIF"},
        {final_list, "Possible_ListView.3", u"Location", u"위치", u"Ort"},
        {final_list, "Possible_ListView.4", u"Size", u"크기", u"Gr秤e"},
        {auto_convert, "Label_fix_artist", u"Fix Artist", u"아티스트 고정", u"Wunsch K?stler"},
        {auto_convert, "Label_fix_genre", u"Fix Genre", u"장르고정", u"Wunsch Musikart"},
        {auto_convert, "Selected_ListView.1", u"Name", u"[이름]-자동변환 전", u"Name"},
        {auto_convert, "Selected_ListView.2", u"FIF", u"[이름]-자동변환 후", u"FIF"},
        {auto_convert, "Selected_ListView.3", u"Location", u"위치", u"Ort"},
        {auto_convert, "Selected_ListView.4", u"Size", u"크기", u"Gr秤e"},
        {destination, "Cmd_new_folder", u"New Folder", u"새 폴더", u"Neues Kapitel"},
        {destination, "cmd_ok", u"OK", u"확인", u"Ok"},
        {destination, "cmd_cancel", u"Cancel", u"취소", u"L?chen"},
    };
    for (const Texts& row : table)
        QTest::addRow("%s of %s", row.control, qPrintable(row.form))
            << row.form << QString::fromLatin1(row.control)
            << QStringList{row.english.toString(), row.korean.toString(), row.german.toString()};
}

void TestDialogLanguages::texts_follow_the_language()
{
    QFETCH(QString, form);
    QFETCH(QString, control);
    QFETCH(QStringList, texts);

    for (const Language language : all_languages)
        QCOMPARE(text_of(*make(form, language), control), texts[language - 1]);
}

void TestDialogLanguages::the_korean_headers_of_names_are_the_same()
{
    const auto form = make(final_list, korean);
    QCOMPARE(text_of(*form, u"Possible_ListView.2"_s), text_of(*form, u"Possible_ListView.1"_s));
}

void TestDialogLanguages::titles_follow_the_language_data()
{
    QTest::addColumn<QString>("form");
    QTest::addColumn<QStringList>("titles");

    const auto row = [](const QString& form, const QString& in_english, const QString& in_korean,
                        const QString& in_german) {
        QTest::addRow("%s", qPrintable(form)) << form << QStringList{in_english, in_korean, in_german};
    };
    row(choose_format, u"Set FIF Type"_s, u"FIF 형식 설정"_s, u"FIF-Typ festlegen"_s);
    row(choose_genre_type, u"Set Genre Type"_s, u"장르 입력방식 설정"_s, u"Eingabe der Musikart"_s);
    row(single_edit, u"Edit File"_s, u"파일 편집"_s, u"Datei bearbeiten"_s);
    row(final_list, u"Final List"_s, u"최종 목록"_s, u"Endgültige Liste"_s);
    row(auto_convert, u"Auto Convert"_s, u"자동변환"_s, u"Automatische Umwandlung"_s);
    row(destination, u"Vurlo Utility Ver 1.0"_s, u"Vurlo Utility Ver 1.0"_s, u"Vurlo Utility Ver 1.0"_s);
}

void TestDialogLanguages::titles_follow_the_language()
{
    QFETCH(QString, form);
    QFETCH(QStringList, titles);

    for (const Language language : all_languages)
        QCOMPARE(make(form, language)->windowTitle(), titles[language - 1]);
}

void TestDialogLanguages::lists_have_names_in_every_language_data()
{
    QTest::addColumn<QString>("form");
    QTest::addColumn<QString>("control");
    QTest::addColumn<QStringList>("names");

    QTest::newRow("FIF names") << final_list << u"FIF_ListView"_s
                               << QStringList{u"FIF List"_s, u"FIF 목록"_s, u"FIF-Liste"_s};
    QTest::newRow("files to convert") << final_list << u"Possible_ListView"_s
                                      << QStringList{u"Auto Convert List"_s, u"자동변환 목록"_s,
                                                     u"Automatisch umzuwandeln"_s};
    QTest::newRow("files to name by hand")
        << final_list << u"Impossible_ListView"_s
        << QStringList{u"Manual Convert List"_s, u"수동변환 목록"_s, u"Von Hand umzuwandeln"_s};
    QTest::newRow("selected rows") << auto_convert << u"Selected_ListView"_s
                                   << QStringList{u"Auto Convert List"_s, u"자동변환 목록"_s,
                                                  u"Automatisch umzuwandeln"_s};
    QTest::newRow("destination folders") << destination << u"FileCopyTreeView"_s
                                         << QStringList{u"Folders"_s, u"폴더"_s, u"Ordner"_s};
}

void TestDialogLanguages::lists_have_names_in_every_language()
{
    QFETCH(QString, form);
    QFETCH(QString, control);
    QFETCH(QStringList, names);

    for (const Language language : all_languages)
        QCOMPARE(make(form, language)->findChild<QWidget*>(control)->accessibleName(), names[language - 1]);
}

void TestDialogLanguages::shapes_are_told_in_every_language_data()
{
    QTest::addColumn<i16>("language");
    QTest::addColumn<QStringList>("shapes");

    QTest::newRow("English") << i16(english) << QStringList{u"[Artist][Title][Genre].mp3"_s, u"[Artist][Title].mp3"_s,
                                                            u"(Artist)(Title)(Genre).mp3"_s, u"(Artist)(Title).mp3"_s,
                                                            u"Artist-Title-Genre.mp3"_s,     u"Artist-Title.mp3"_s};
    QTest::newRow("Korean") << i16(korean) << QStringList{u"[아티스트][제목][장르].mp3"_s, u"[아티스트][제목].mp3"_s,
                                                          u"(아티스트)(제목)(장르).mp3"_s, u"(아티스트)(제목).mp3"_s,
                                                          u"아티스트-제목-장르.mp3"_s,     u"아티스트-제목.mp3"_s};
    QTest::newRow("German") << i16(german)
                            << QStringList{u"[Künstler][Titel][Musikart].mp3"_s, u"[Künstler][Titel].mp3"_s,
                                           u"(Künstler)(Titel)(Musikart).mp3"_s, u"(Künstler)(Titel).mp3"_s,
                                           u"Künstler-Titel-Musikart.mp3"_s,     u"Künstler-Titel.mp3"_s};
}

void TestDialogLanguages::shapes_are_told_in_every_language()
{
    QFETCH(i16, language);
    QFETCH(QStringList, shapes);

    const auto form = make(choose_format, Language(language));
    for (int type = 1; type <= 6; ++type)
        QCOMPARE(form->findChild<QWidget*>(u"Option_%1"_s.arg(type))->accessibleName(), shapes[type - 1]);
}

void TestDialogLanguages::pictures_follow_the_language_data()
{
    QTest::addColumn<QString>("form");
    QTest::addColumn<QString>("control");
    QTest::addColumn<bool>("other_in_korean");
    QTest::addColumn<bool>("other_in_german");

    const auto rows = [](const QString& form, const QStringList& controls, bool other_in_korean, bool other_in_german) {
        for (const QString& control : controls)
            QTest::addRow("%s of %s", qPrintable(control), qPrintable(form))
                << form << control << other_in_korean << other_in_german;
    };
    rows(single_edit,
         {u"Picture_filename"_s, u"Picture_artist"_s, u"Picture_title"_s, u"Picture_genre"_s, u"Picture_length"_s},
         true, true);
    rows(single_edit, {u"cmdSave"_s, u"cmdExit"_s}, false, true);
    rows(choose_format,
         {u"Option_1"_s, u"Option_2"_s, u"Option_3"_s, u"Option_4"_s, u"Option_5"_s, u"Option_6"_s, u"cmd_cancel"_s},
         true, true);
    rows(choose_genre_type, {u"Option_combo"_s, u"Option_edit"_s, u"cmd_cancel"_s}, true, true);
    for (const QString& form : {choose_format, choose_genre_type})
        rows(form, {u"cmd_ok"_s}, true, false); // "OK" is the same word
    rows(auto_convert,
         {u"Picture_main"_s, u"Picture_artist"_s, u"Picture_genre"_s, u"freeview"_s, u"autoconvert"_s, u"Cancel"_s},
         true, true);
    rows(final_list, {u"Pic_fif"_s, u"Pic_manual"_s, u"Pic_auto"_s, u"Change_FIF"_s, u"cmd_transfer"_s, u"Cancel"_s},
         false, true);
    rows(destination, {u"Cmd_new_folder"_s, u"cmd_ok"_s, u"cmd_cancel"_s}, true, true);
}

void TestDialogLanguages::pictures_follow_the_language()
{
    QFETCH(QString, form);
    QFETCH(QString, control);
    QFETCH(bool, other_in_korean);
    QFETCH(bool, other_in_german);

    const std::vector<QImage> design = pictures_of(*make(form, english), control);
    const std::vector<QImage> in_korean = pictures_of(*make(form, korean), control);
    const std::vector<QImage> in_german = pictures_of(*make(form, german), control);
    for (std::size_t state = 0; state < design.size(); ++state) {
        QCOMPARE(in_korean[state] != design[state], other_in_korean);
        QCOMPARE(in_german[state] != design[state], other_in_german);
    }
}

void TestDialogLanguages::captions_are_painted_as_told_data()
{
    QTest::addColumn<QString>("control");
    QTest::addColumn<QStringList>("captions");

    QTest::newRow("new folder") << u"Cmd_new_folder"_s
                                << QStringList{u"New Folder"_s, u"새 폴더"_s, u"Neues Kapitel"_s};
    QTest::newRow("ok") << u"cmd_ok"_s << QStringList{u"OK"_s, u"확인"_s, u"Ok"_s};
    QTest::newRow("cancel") << u"cmd_cancel"_s << QStringList{u"Cancel"_s, u"취소"_s, u"L?chen"_s};
}

void TestDialogLanguages::captions_are_painted_as_told()
{
    QFETCH(QString, control);
    QFETCH(QStringList, captions);

    for (const Language language : all_languages) {
        const auto form = make(destination, language);
        const UsrButton& button = *form->findChild<UsrButton*>(control);
        const QString& caption = captions[language - 1];
        QCOMPARE(drawn(button.PictureUp()), drawn(button_face(caption, FaceState::up, button.size())));
        QCOMPARE(drawn(button.PictureDn()), drawn(button_face(caption, FaceState::down, button.size())));
        QCOMPARE(drawn(button.PictureMove()), drawn(button_face(caption, FaceState::hover, button.size())));
    }
}

void TestDialogLanguages::korean_texts_have_their_font_data()
{
    QTest::addColumn<QString>("form");
    QTest::addColumn<QSet<QString>>("controls");

    const auto row = [](const QString& form, const QSet<QString>& controls) {
        QTest::addRow("%s", qPrintable(form)) << form << controls;
    };
    row(choose_format, {});
    row(choose_genre_type, {});
    row(single_edit,
        {u"txtFilename"_s, u"txtArtist"_s, u"txtTitle"_s, u"txtGenre"_s, u"Label_filesize"_s, u"cboGenre"_s});
    row(auto_convert, {u"txtArtist"_s, u"txtGenre"_s, u"Label_fix_artist"_s, u"Label_fix_genre"_s});
    row(final_list, {u"Label_FIF"_s, u"Label_UnChangeable"_s, u"Label_Changeable"_s, u"FIF_ListView"_s,
                     u"Impossible_ListView"_s, u"Possible_ListView"_s});
    row(destination, {u"Cmd_new_folder"_s, u"cmd_ok"_s, u"cmd_cancel"_s});
}

void TestDialogLanguages::korean_texts_have_their_font()
{
    QFETCH(QString, form);
    QFETCH(QSet<QString>, controls);

    for (const Language language : all_languages) {
        const auto made = make(form, language);
        QSet<QString> in_korean_font;
        for (const QWidget* widget : made->findChildren<QWidget*>()) {
            // What lies inside a control, without a name, only takes its font from it.
            const bool has_font_of_its_own = widget->testAttribute(Qt::WA_SetFont) && !widget->objectName().isEmpty();
            if (has_font_of_its_own && has_korean_font(*widget))
                in_korean_font.insert(widget->objectName());
        }
        QCOMPARE(in_korean_font, language == korean ? controls : QSet<QString>());
    }
}

void TestDialogLanguages::rows_of_the_final_list_have_the_korean_font()
{
    const auto form = make(final_list, korean);
    for (const ListView* list : form->findChildren<ListView*>())
        QVERIFY(has_korean_font(*list->view()));
}

void TestDialogLanguages::options_stand_as_told_data()
{
    QTest::addColumn<i16>("language");
    QTest::addColumn<int>("combo_left"); // twips
    QTest::addColumn<int>("edit_left");

    QTest::newRow("English") << i16(english) << 270 << 2700;
    QTest::newRow("Korean") << i16(korean) << 270 << 2700;
    QTest::newRow("German") << i16(german) << 204 << 2520;
}

void TestDialogLanguages::options_stand_as_told()
{
    QFETCH(i16, language);
    QFETCH(int, combo_left);
    QFETCH(int, edit_left);

    const auto form = make(choose_genre_type, Language(language));
    const QRect combo = form->findChild<QWidget*>(u"Option_combo"_s)->geometry();
    const QRect edit = form->findChild<QWidget*>(u"Option_edit"_s)->geometry();
    QCOMPARE(combo.left(), to_pixels(combo_left));
    QCOMPARE(edit.left(), to_pixels(edit_left));
    QCOMPARE(edit.top(), combo.top());
    QVERIFY(combo.right() < edit.left());
    QVERIFY(edit.right() < form->width());
}

void TestDialogLanguages::a_fixed_value_is_named_like_its_label()
{
    for (const Language language : all_languages) {
        const auto form = make(auto_convert, language);
        for (const QString& value : {u"Artist"_s, u"Genre"_s})
            QCOMPARE(form->findChild<QWidget*>(u"Check_"_s + value)->accessibleName(),
                     text_of(*form, u"Label_fix_"_s + value.toLower()));
    }
}

void TestDialogLanguages::nothing_overlaps_at_the_smallest_size_data()
{
    QTest::addColumn<QString>("form");
    for (const QString& form : all_forms)
        QTest::addRow("%s", qPrintable(form)) << form;
}

void TestDialogLanguages::nothing_overlaps_at_the_smallest_size()
{
    QFETCH(QString, form);

    const auto is_label_on_its_check_box = [](const QWidget& one, const QWidget& other) {
        return one.objectName().startsWith(u"Check_") && other.objectName().startsWith(u"Label_fix_");
    };
    for (const Language language : all_languages) {
        const auto made = make(form, language);
        made->show();
        made->resize(1, 1);
        QVERIFY(QTest::qWaitForWindowExposed(made.get()));
        QVERIFY(made->width() <= 1024 && made->height() <= 700);
        const auto children = made->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
        for (qsizetype i = 0; i < children.size(); ++i) {
            const QWidget& one = *children[i];
            QVERIFY2(made->rect().contains(one.geometry()) && one.height() > 10, qPrintable(one.objectName()));
            for (const QWidget* other : children.sliced(i + 1))
                QVERIFY2(is_label_on_its_check_box(one, *other) || !one.geometry().intersects(other->geometry()),
                         qPrintable(one.objectName() + u" and "_s + other->objectName()));
        }
    }
}

QUILMO_UI_TEST(TestDialogLanguages)

#include "test_dialog_languages.moc"
