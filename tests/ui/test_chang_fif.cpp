#include "convert/Chang_FIF.h"
#include "convert/FIF_convert.h"
#include "core/mod_of_grobal_var.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/TextBox.h"
#include "sample_files.h"
#include "selection/final_list.h"
#include "tagged_files.h"
#include "test_main.h"
#include "ui_convert.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QLabel>
#include <QTest>

#include <filesystem>

using namespace Qt::StringLiterals;

namespace fs = std::filesystem;

namespace {

const QString too_long = u"Unable to Convert! Artist's name is too long"_s;
const QString no_tag_written = u"Error! Can not Write ID3 Tag"_s;
const QString folder = u"C:\\Music\\"_s;
const QColor disabled_colour(0xE0, 0xE0, 0xE0);

} // namespace

class TestChangFif : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void a_tag_fills_the_fields();
    void a_name_fills_the_fields_data();
    void a_name_fills_the_fields();
    void the_file_name_cannot_be_edited();
    void genre_controls_follow_the_switches_data();
    void genre_controls_follow_the_switches();
    void the_folder_is_that_of_the_record();
    void a_file_that_is_not_listed_is_looked_for_beside_the_first();
    void cancel_changes_nothing();
    void empty_fields_are_asked_for_data();
    void empty_fields_are_asked_for();
    void fields_that_make_no_name_keep_it_open_data();
    void fields_that_make_no_name_keep_it_open();
    void a_file_without_a_tag_is_renamed_and_tagged();
    void a_name_of_another_shape_is_written_anew();
    void a_shape_without_genre_still_tags_it();
    void a_typed_genre_is_cleaned();
    void a_genre_that_no_list_holds_keeps_the_byte();
    void saving_without_a_change_data();
    void saving_without_a_change();
    void a_too_long_artist_can_be_corrected();
    void an_existing_target_can_be_corrected();
    void a_name_that_is_listed_already_closes_it();
    void a_target_that_no_test_sees_stays_data();
    void a_target_that_no_test_sees_stays();
    void a_file_in_the_player_is_let_go_data();
    void a_file_in_the_player_is_let_go();
    void a_file_in_the_player_comes_back_under_its_old_name_data();
    void a_file_in_the_player_comes_back_under_its_old_name();
    void a_file_removed_meanwhile_is_told();
    void a_file_made_read_only_meanwhile_is_opened_up();
    void a_double_click_in_each_list_opens_it_data();
    void a_double_click_in_each_list_opens_it();
    void the_pointer_lights_one_button();
    void keys_reach_everything();

private:
    void write(const QString& name, const QByteArray& content) const { disk_->write(folder + name, content); }
    QByteArray read(const QString& name) const { return disk_->read(folder + name); }
    bool exists(const QString& name) const { return disk_->exists(folder + name); }
    fs::path native(const QString& name) const { return disk_->native(folder + name).toStdString(); }
    void list(const QString& name, const QByteArray& content) const;
    /// Opens the dialog for a listed file.
    void open(const QString& name);
    template<typename Control> Control& control(const char* name) const
    {
        return *form_->findChild<Control*>(QLatin1StringView(name));
    }
    TextBox& box(const char* name) const { return control<TextBox>(name); }
    ComboBox& combo() const { return control<ComboBox>("cboGenre"); }
    QString filesize() const { return control<QLabel>("Label_filesize").text(); }
    /// Texts of artist, title and genre.
    QStringList fields() const { return {box("txtArtist").Text(), box("txtTitle").Text(), box("txtGenre").Text()}; }
    void press(const char* name) const { QTest::mouseClick(&control<UsrButton>(name), Qt::LeftButton); }
    void save_as(const QString& artist, const QString& title) const
    {
        type_into(box("txtArtist"), artist);
        type_into(box("txtTitle"), title);
        press("cmdSave");
    }

    std::unique_ptr<TestDisk> disk_;
    std::unique_ptr<NotedMessages> messages_;
    NotedTransport player_;
    std::unique_ptr<Chang_FIF> form_;
    QStringList calls_; ///< what the dialog asked of the forms below it
};

void TestChangFif::init()
{
    disk_ = std::make_unique<TestDisk>();
    messages_ = std::make_unique<NotedMessages>();
    shared.current_folder = folder;
    disk_->make_folder(folder);
    player_.take();
    player_.on_release = {};
    calls_.clear();
}

void TestChangFif::cleanup()
{
    form_.reset();
    messages_.reset();
    disk_.reset();
}

void TestChangFif::list(const QString& name, const QByteArray& content) const
{
    write(name, content);
    QCOMPARE(add_to_final_list(name, folder, folder + name, static_cast<i32>(content.size()), {}, {}), added);
}

void TestChangFif::open(const QString& name)
{
    shared.edit_file_name = name;
    form_ = std::make_unique<Chang_FIF>(player_,
                                        Chang_FIF::Surroundings{.refresh_all = [this] { calls_.append(u"refresh"_s); },
                                                                .Fill_list = [this] { calls_.append(u"fill"_s); }},
                                        nullptr);
    form_->show();
    QVERIFY(QTest::qWaitForWindowExposed(form_.get()));
}

void TestChangFif::a_tag_fills_the_fields()
{
    list(u"a.mp3"_s, tagged("An?n [live]", " Sea-side", 7));
    open(u"a.mp3"_s);
    QCOMPARE(box("txtFilename").Text(), u"a.mp3"_s);
    QCOMPARE(fields(), (QStringList{u"Ann live"_s, u" Sea-side"_s, u"Hip-Hop"_s})); // the spelling of tags
    QCOMPARE(combo().Text(), u"Hip_Hop"_s);
    QCOMPARE(filesize(), u"14 byte"_s); // of C:\Music\a.mp3
    QCOMPARE(shared.edit_folder, folder);
    QCOMPARE(form_->focusWidget()->objectName(), u"txtArtist"_s);
}

void TestChangFif::a_name_fills_the_fields_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("with_tag");
    QTest::addColumn<QStringList>("expected_fields");
    QTest::addColumn<QString>("length");
    QTest::addColumn<QString>("entry");

    QTest::newRow("square brackets") << u"[Ann][Sea][Hip_Hop].mp3"_s << true
                                     << QStringList{u"Ann"_s, u"Sea"_s, u"Hip_Hop"_s} << u"19 byte"_s << u"Hip_Hop"_s;
    QTest::newRow("round brackets") << u"(가수)(Sea).mp3"_s << true << QStringList{u"가수"_s, u"Sea"_s, QString()}
                                    << u"11 byte"_s << QString();
    QTest::newRow("dashes") << u"Ann-Sea-Mine.mp3"_s << true << QStringList{u"Ann"_s, u"Sea"_s, u"Mine"_s}
                            << u"12 byte"_s << QString();
    QTest::newRow("without a tag no entry is chosen")
        << u"[Ann][Sea][Rock].mp3"_s << false << QStringList{u"Ann"_s, u"Sea"_s, u"Rock"_s} << u"16 byte"_s
        << QString();
}

void TestChangFif::a_name_fills_the_fields()
{
    QFETCH(QString, name);
    QFETCH(bool, with_tag);
    QFETCH(QStringList, expected_fields);
    QFETCH(QString, length);
    QFETCH(QString, entry);

    list(name, with_tag ? tagged("Other", "Text") : sample_audio({.frames = 2}));
    open(name);
    QCOMPARE(box("txtFilename").Text(), name); // the whole name
    QCOMPARE(fields(), expected_fields);
    QCOMPARE(filesize(), length); // of the name without its extension
    QCOMPARE(combo().Text(), entry);
    QCOMPARE(combo().ListIndex(), with_tag ? combo().findText(entry) : -1);
    QCOMPARE(combo().count(), 149);
}

void TestChangFif::the_file_name_cannot_be_edited()
{
    list(u"a.mp3"_s, tagged("Ann", "Sea"));
    open(u"a.mp3"_s);
    QTest::mouseClick(&box("txtFilename"), Qt::LeftButton);
    QTest::keyClicks(&box("txtFilename"), u"xyz"_s);
    QCOMPARE(box("txtFilename").Text(), u"a.mp3"_s);
    box("txtFilename").set_Text(u"other"_s);
    QCOMPARE(box("txtFilename").Text(), u"a.mp3"_s);
}

void TestChangFif::genre_controls_follow_the_switches_data()
{
    QTest::addColumn<i16>("genre_type");
    QTest::addColumn<i16>("fif_type");
    QTest::addColumn<bool>("enabled");

    for (i16 type = 1; type <= 6; ++type) {
        QTest::addRow("list, shape %d", type) << i16(1) << type << (type == 1 || type == 3 || type == 5);
        QTest::addRow("text, shape %d", type) << i16(2) << type << (type == 1 || type == 3 || type == 5);
    }
}

void TestChangFif::genre_controls_follow_the_switches()
{
    QFETCH(i16, genre_type);
    QFETCH(i16, fif_type);
    QFETCH(bool, enabled);

    shared.genre_type = genre_type;
    shared.fif_type = fif_type;
    list(u"a.mp3"_s, tagged("Ann", "Sea"));
    open(u"a.mp3"_s);
    const bool as_text = genre_type == 2;
    QCOMPARE(combo().isVisible(), !as_text);
    QCOMPARE(box("txtGenre").isVisible(), as_text);
    QCOMPARE((combo().focusPolicy() & Qt::TabFocus) != 0, !as_text);
    QCOMPARE((box("txtGenre").focusPolicy() & Qt::TabFocus) != 0, as_text);
    const QWidget& used = as_text ? static_cast<QWidget&>(box("txtGenre")) : combo();
    QCOMPARE(used.isEnabled(), enabled);
    if (as_text)
        QCOMPARE(used.palette().color(enabled ? QPalette::Active : QPalette::Disabled, QPalette::Base),
                 enabled ? QApplication::palette().color(QPalette::Base) : disabled_colour);
    // One place for both, whichever is shown.
    const QPoint place = used.mapTo(form_.get(), QPoint());
    QCOMPARE(place.x(), box("txtTitle").x());
    QVERIFY(place.y() > box("txtTitle").geometry().bottom());
}

void TestChangFif::the_folder_is_that_of_the_record()
{
    const QString other = u"C:\\Else\\"_s;
    shared.current_folder = other;
    const QByteArray content = tagged("Ann", "Sea");
    disk_->write(other + u"a.mp3"_s, content);
    QCOMPARE(add_to_final_list(u"a.mp3"_s, other, other + u"a.mp3"_s, 1, {}, {}), added);
    shared.current_folder = folder;
    open(u"a.mp3"_s);
    QCOMPARE(shared.edit_folder, other);
    QCOMPARE(fields(), (QStringList{u"Ann"_s, u"Sea"_s, u"Rock"_s}));

    save_as(u"Bob"_s, u"Sky"_s);
    QVERIFY(disk_->exists(other + u"[Bob][Sky][Rock].mp3"_s));
    QCOMPARE(shared.final_list[0].full_path, other + u"[Bob][Sky][Rock].mp3"_s);
}

void TestChangFif::a_file_that_is_not_listed_is_looked_for_beside_the_first()
{
    list(u"a.mp3"_s, tagged("Ann", "Sea"));
    write(u"b.mp3"_s, tagged("Bob", "Sky"));
    open(u"b.mp3"_s);
    QCOMPARE(shared.edit_folder, folder);
    QCOMPARE(fields(), (QStringList{u"Bob"_s, u"Sky"_s, u"Rock"_s}));
}

void TestChangFif::cancel_changes_nothing()
{
    const QByteArray before = tagged("Ann", "Sea");
    list(u"a.mp3"_s, before);
    open(u"a.mp3"_s);
    type_into(box("txtArtist"), u"Bob"_s);
    press("cmdExit");
    QVERIFY(!form_->isVisible());
    QCOMPARE(read(u"a.mp3"_s), before);
    QCOMPARE(shared.final_list[0].name, u"a.mp3"_s);
    QCOMPARE(calls_, QStringList());
}

void TestChangFif::empty_fields_are_asked_for_data()
{
    QTest::addColumn<QString>("artist");
    QTest::addColumn<QString>("title");

    QTest::newRow("no artist") << QString() << u"Sea"_s;
    QTest::newRow("no title") << u"Ann"_s << QString();
}

void TestChangFif::empty_fields_are_asked_for()
{
    QFETCH(QString, artist);
    QFETCH(QString, title);

    const QByteArray before = tagged("Old", "Older");
    list(u"a.mp3"_s, before);
    open(u"a.mp3"_s);
    NotedTransport::load(folder + u"a.mp3"_s, true);
    save_as(artist, title);
    QCOMPARE(messages_->take(), QStringList{u"Input Artist and Title"_s});
    QVERIFY(form_->isVisible());
    QCOMPARE(read(u"a.mp3"_s), before);
    QCOMPARE(player_.take(), QStringList()); // not even let go
}

void TestChangFif::fields_that_make_no_name_keep_it_open_data()
{
    QTest::addColumn<i16>("fif_type");
    QTest::addColumn<QString>("artist");
    QTest::addColumn<QString>("title");

    QTest::newRow("blanks") << i16(1) << u"  "_s << u"Sea"_s;
    QTest::newRow("forbidden characters") << i16(1) << u"Ann"_s << uR"(\/:*?"<>|)"_s;
    QTest::newRow("delimiters") << i16(5) << u"[-]"_s << u"Sea"_s;
}

void TestChangFif::fields_that_make_no_name_keep_it_open()
{
    QFETCH(i16, fif_type);
    QFETCH(QString, artist);
    QFETCH(QString, title);

    const QByteArray before = tagged("Old", "Older");
    list(u"a.mp3"_s, before);
    shared.fif_type = fif_type;
    open(u"a.mp3"_s);
    save_as(artist, title);
    QCOMPARE(messages_->take(), QStringList());
    QVERIFY(form_->isVisible());
    QCOMPARE(read(u"a.mp3"_s), before);
    QCOMPARE(calls_, QStringList());
    QCOMPARE(fields().first(2), (QStringList{artist, title}));
}

void TestChangFif::a_file_without_a_tag_is_renamed_and_tagged()
{
    const QByteArray audio = sample_audio({.frames = 2});
    list(u"a.mp3"_s, audio);
    QCOMPARE(shared.final_list[0].kind, i16(0));
    open(u"a.mp3"_s);
    QCOMPARE(fields(), QStringList({QString(), QString(), QString()}));
    pick_genre(combo(), u"Rock"_s);
    save_as(u" Ann "_s, u"Sea"_s);

    const QString name = u"[Ann][Sea][Rock].mp3"_s;
    const QByteArray after = read(name);
    QCOMPARE(after.size(), audio.size());
    QCOMPARE(after.chopped(128), audio.chopped(128));
    QCOMPARE(tag_in(after), (TagTexts{"Ann", "Sea", 17}));
    QVERIFY(!exists(u"a.mp3"_s));
    QCOMPARE(shared.final_list[0].name, name);
    QCOMPARE(shared.final_list[0].full_path, folder + name);
    QCOMPARE(shared.final_list[0].kind, i16(1));
    QCOMPARE(shared.selected_mp3_name, name); // whichever file was selected in the main window
    QCOMPARE(calls_, (QStringList{u"refresh"_s, u"fill"_s, u"refresh"_s}));
    QVERIFY(!form_->isVisible());
    QCOMPARE(messages_->take(), QStringList());
    QCOMPARE(player_.take(), QStringList());
}

void TestChangFif::a_name_of_another_shape_is_written_anew()
{
    list(u"[A(n)n][Sea-side][Rock].mp3"_s, tagged("Old", "Older", 200));
    shared.fif_type = 3;
    shared.genre_type = 2;
    open(u"[A(n)n][Sea-side][Rock].mp3"_s);
    QCOMPARE(fields(), (QStringList{u"A(n)n"_s, u"Sea-side"_s, u"Rock"_s}));
    press("cmdSave");
    QCOMPARE(tag_in(read(u"(Ann)(Sea-side)(Rock).mp3"_s)), (TagTexts{"Ann", "Sea-side", 17}));
    QCOMPARE(messages_->take(), QStringList());
}

void TestChangFif::a_shape_without_genre_still_tags_it()
{
    list(u"[Ann][Sea][Hip_Hop].mp3"_s, tagged("Old", "Older", 200));
    shared.fif_type = 2;
    open(u"[Ann][Sea][Hip_Hop].mp3"_s);
    QVERIFY(!combo().isEnabled());
    QCOMPARE(combo().Text(), u"Hip_Hop"_s);
    press("cmdSave");
    QCOMPARE(tag_in(read(u"[Ann][Sea].mp3"_s)), (TagTexts{"Ann", "Sea", 7}));
}

void TestChangFif::a_typed_genre_is_cleaned()
{
    list(u"a.mp3"_s, tagged("Old", "Older"));
    shared.genre_type = 2;
    open(u"a.mp3"_s);
    type_into(box("txtGenre"), u" Hip/Hop "_s);
    save_as(u"Ann"_s, u"Sea"_s);
    QCOMPARE(tag_in(read(u"[Ann][Sea][HipHop].mp3"_s)), (TagTexts{"Ann", "Sea", 17}));
}

void TestChangFif::a_genre_that_no_list_holds_keeps_the_byte()
{
    list(u"a.mp3"_s, tagged("Old", "Older", 200));
    shared.genre_type = 2;
    open(u"a.mp3"_s);
    QCOMPARE(box("txtGenre").Text(), QString());
    type_into(box("txtGenre"), u"My Own"_s);
    save_as(u"Ann"_s, u"Sea"_s);
    QCOMPARE(tag_in(read(u"[Ann][Sea][My Own].mp3"_s)), (TagTexts{"Ann", "Sea", 200}));
    QCOMPARE(messages_->take(), QStringList());
}

void TestChangFif::saving_without_a_change_data()
{
    QTest::addColumn<bool>("selected_in_main_window");
    QTest::newRow("the main window's file") << true;
    QTest::newRow("another file") << false;
}

void TestChangFif::saving_without_a_change()
{
    QFETCH(bool, selected_in_main_window);

    const QString name = u"[Ann][Sea].mp3"_s;
    const QByteArray before = tagged("Old", "Older");
    list(name, before);
    shared.selected_mp3_name = selected_in_main_window ? name : u"other.mp3"_s;
    open(name);
    press("cmdSave");
    QCOMPARE(messages_->take(), selected_in_main_window ? QStringList() : QStringList{name + u" already exists"_s});
    QCOMPARE(calls_, selected_in_main_window ? QStringList{u"refresh"_s} : QStringList());
    QVERIFY(form_->isVisible());
    QCOMPARE(read(name), before);
}

void TestChangFif::a_too_long_artist_can_be_corrected()
{
    list(u"a.mp3"_s, tagged("Old", "Older", 200));
    open(u"a.mp3"_s);
    save_as(QString(54, u'A'), u"Sea"_s);
    QCOMPARE(messages_->take(), QStringList{too_long});
    QVERIFY(form_->isVisible());
    QVERIFY(exists(u"a.mp3"_s));
    QCOMPARE(fields().first(2), (QStringList{QString(54, u'A'), u"Sea"_s}));
    save_as(QString(26, QChar(0xAC00)), u"Sea"_s); // 52 bytes
    QCOMPARE(messages_->take(), QStringList());
    QVERIFY(exists(u"["_s + QString(26, QChar(0xAC00)) + u"][Sea].mp3"_s));
}

void TestChangFif::an_existing_target_can_be_corrected()
{
    const QByteArray other = tagged("Another", "File");
    list(u"a.mp3"_s, tagged("Old", "Older"));
    write(u"[Ann][Sea][Rock].mp3"_s, other);
    open(u"a.mp3"_s);
    save_as(u"Ann"_s, u"Sea"_s);
    QCOMPARE(messages_->take(), QStringList{u"[Ann][Sea][Rock].mp3 already exists"_s});
    QVERIFY(form_->isVisible());
    QCOMPARE(read(u"[Ann][Sea][Rock].mp3"_s), other);
    QCOMPARE(shared.final_list[0].name, u"a.mp3"_s);
    save_as(u"Ann"_s, u"Sky"_s);
    QCOMPARE(tag_in(read(u"[Ann][Sky][Rock].mp3"_s)), (TagTexts{"Ann", "Sky", 17}));
    QVERIFY(!form_->isVisible());
}

void TestChangFif::a_name_that_is_listed_already_closes_it()
{
    const QByteArray before = tagged("Old", "Older");
    list(u"a.mp3"_s, before);
    QCOMPARE(
        add_to_final_list(u"[Ann][Sea][Rock].mp3"_s, u"C:\\Else\\"_s, u"C:\\Else\\[Ann][Sea][Rock].mp3"_s, 1, {}, {}),
        added);
    open(u"a.mp3"_s);
    save_as(u"Ann"_s, u"Sea"_s);
    QCOMPARE(messages_->take(), QStringList{u"[Ann][Sea][Rock].mp3 already exists in MP3 File List"_s});
    QVERIFY(!form_->isVisible());
    QCOMPARE(read(u"a.mp3"_s), before);
    QCOMPARE(shared.final_list[0].name, u"a.mp3"_s);
    QCOMPARE(shared.selected_mp3_name, QString());
    QCOMPARE(calls_, QStringList{u"refresh"_s}); // nothing was renamed, so the lists stand
}

void TestChangFif::a_target_that_no_test_sees_stays_data()
{
    QTest::addColumn<bool>("is_link");
    QTest::newRow("a folder") << false;
    QTest::newRow("a dangling link") << true;
}

void TestChangFif::a_target_that_no_test_sees_stays()
{
    QFETCH(bool, is_link);

    const QByteArray before = tagged("Old", "Older");
    list(u"a.mp3"_s, before);
    open(u"a.mp3"_s);
    const fs::path target = native(u"[Ann][Sea][Rock].mp3"_s);
    if (is_link)
        fs::create_symlink("nowhere", target);
    else
        fs::create_directory(target);
    save_as(u"Ann"_s, u"Sea"_s);
    QCOMPARE(messages_->take(), QStringList{no_tag_written});
    QCOMPARE(read(u"a.mp3"_s), before);
    QCOMPARE(fs::is_symlink(fs::symlink_status(target)), is_link);
    QCOMPARE(fs::is_directory(fs::symlink_status(target)), !is_link);
    QCOMPARE(shared.final_list[0].name, u"[Ann][Sea][Rock].mp3"_s); // the record went ahead
}

void TestChangFif::a_file_in_the_player_is_let_go_data()
{
    QTest::addColumn<bool>("playing");
    QTest::newRow("while it plays") << true;
    QTest::newRow("while it stands stopped") << false;
}

void TestChangFif::a_file_in_the_player_is_let_go()
{
    QFETCH(bool, playing);

    list(u"a.mp3"_s, tagged("Old", "Older"));
    open(u"a.mp3"_s);
    NotedTransport::load(folder + u"a.mp3"_s, playing);
    bool was_there = false;
    player_.on_release = [&] { was_there = exists(u"a.mp3"_s); };
    save_as(u"Ann"_s, u"Sea"_s);

    const QString name = u"[Ann][Sea][Rock].mp3"_s;
    QStringList calls = {u"release"_s, u"play %1%2 as %2"_s.arg(folder, name)};
    if (!playing)
        calls.append(u"stop"_s);
    QVERIFY(was_there);
    QCOMPARE(player_.take(), calls);
    QCOMPARE(shared.is_playing, i16(playing ? 1 : 0));
    QCOMPARE(shared.selected_mp3_path, folder + name);
    QCOMPARE(tag_in(read(name)), (TagTexts{"Ann", "Sea", 17}));
}

void TestChangFif::a_file_in_the_player_comes_back_under_its_old_name_data()
{
    QTest::addColumn<QString>("artist");
    QTest::addColumn<bool>("listed_elsewhere");
    QTest::newRow("no name could be made") << u"  "_s << false;
    QTest::newRow("the artist is too long") << QString(60, u'A') << false;
    QTest::newRow("the name is listed already") << u"Ann"_s << true;
}

void TestChangFif::a_file_in_the_player_comes_back_under_its_old_name()
{
    QFETCH(QString, artist);
    QFETCH(bool, listed_elsewhere);

    const QByteArray before = tagged("Old", "Older");
    list(u"a.mp3"_s, before);
    QCOMPARE(
        add_to_final_list(u"[Ann][Sea][Rock].mp3"_s, u"C:\\Else\\"_s, u"C:\\Else\\[Ann][Sea][Rock].mp3"_s, 1, {}, {}),
        added);
    open(u"a.mp3"_s);
    NotedTransport::load(folder + u"a.mp3"_s, false);
    save_as(artist, u"Sea"_s);
    QCOMPARE(player_.take(), (QStringList{u"release"_s, u"play %1a.mp3 as a.mp3"_s.arg(folder), u"stop"_s}));
    QCOMPARE(shared.playing_mp3_path, folder + u"a.mp3"_s);
    QCOMPARE(shared.selected_mp3_path, folder + u"a.mp3"_s);
    QCOMPARE(form_->isVisible(), !listed_elsewhere);
    QCOMPARE(read(u"a.mp3"_s), before);
}

void TestChangFif::a_file_removed_meanwhile_is_told()
{
    list(u"a.mp3"_s, tagged("Old", "Older"));
    open(u"a.mp3"_s);
    fs::remove(native(u"a.mp3"_s));
    save_as(u"Ann"_s, u"Sea"_s);
    QCOMPARE(messages_->take(), QStringList{no_tag_written});
    QVERIFY(!exists(u"[Ann][Sea][Rock].mp3"_s));
    QVERIFY(!form_->isVisible());
    QCOMPARE(calls_, (QStringList{u"refresh"_s, u"fill"_s, u"refresh"_s})); // the fill drops the record
}

void TestChangFif::a_file_made_read_only_meanwhile_is_opened_up()
{
    list(u"a.mp3"_s, tagged("Old", "Older"));
    open(u"a.mp3"_s);
    fs::permissions(native(u"a.mp3"_s), fs::perms::owner_read | fs::perms::group_read);
    save_as(u"Ann"_s, u"Sea"_s);
    QCOMPARE(messages_->take(), QStringList());
    QCOMPARE(tag_in(read(u"[Ann][Sea][Rock].mp3"_s)), (TagTexts{"Ann", "Sea", 17}));
}

void TestChangFif::a_double_click_in_each_list_opens_it_data()
{
    QTest::addColumn<QByteArray>("list_name");
    QTest::addColumn<QString>("name");

    QTest::newRow("a FIF name") << "FIF_ListView"_ba << u"[A][B].mp3"_s;
    QTest::newRow("a changeable file") << "Possible_ListView"_ba << u"tagged.mp3"_s;
    QTest::newRow("an unchangeable file") << "Impossible_ListView"_ba << u"bare.mp3"_s;
}

void TestChangFif::a_double_click_in_each_list_opens_it()
{
    QFETCH(QByteArray, list_name);
    QFETCH(QString, name);

    list(u"[A][B].mp3"_s, tagged("A", "B"));
    list(u"tagged.mp3"_s, tagged("Tag", "Ged"));
    list(u"bare.mp3"_s, sample_audio({.frames = 5}));
    FIF_convert lists(player_, {.refresh_all = [] {}, .small_icons = {}}, nullptr);
    connect(&lists, &FIF_convert::edit_wanted, this, [&] {
        form_ = std::make_unique<Chang_FIF>(
            player_, Chang_FIF::Surroundings{.refresh_all = [] {}, .Fill_list = [&] { lists.Fill_list(); }}, &lists);
        form_->show();
    });
    lists.show();
    QVERIFY(QTest::qWaitForWindowExposed(&lists));
    auto& rows = *lists.findChild<ListView*>(QLatin1StringView(list_name));
    QWidget* viewport = rows.view()->viewport();
    const QPoint place = viewport->mapFrom(&rows, rows.row_rect(1).center());
    QTest::mouseClick(viewport, Qt::LeftButton, {}, place);
    QTest::mouseDClick(viewport, Qt::LeftButton, {}, place);
    QVERIFY(form_ && QTest::qWaitForWindowExposed(form_.get()));
    QCOMPARE(box("txtFilename").Text(), name);

    save_as(u"Ann"_s, u"Sea"_s);
    const auto& fif_rows = *lists.findChild<ListView*>(u"FIF_ListView"_s);
    QStringList fif_names;
    for (int row = 1; row <= fif_rows.Count(); ++row)
        fif_names.append(fif_rows.Item(row).Text);
    const QString new_name = name == u"tagged.mp3"_s ? u"[Ann][Sea][Rock].mp3"_s : u"[Ann][Sea].mp3"_s;
    QVERIFY2(fif_names.contains(new_name), qPrintable(fif_names.join(u' ')));
    QVERIFY(exists(new_name));
    QVERIFY(!exists(name));
    form_.reset();
}

void TestChangFif::the_pointer_lights_one_button()
{
    list(u"a.mp3"_s, tagged("Old", "Older"));
    open(u"a.mp3"_s);
    const auto lit = [this] {
        QStringList names;
        for (const UsrButton* each : form_->findChildren<UsrButton*>()) {
            if (each->shown() == UsrButton::Shown::move)
                names.append(each->objectName());
        }
        return names;
    };
    for (const char* name : {"cmdSave", "cmdExit"}) {
        QTest::mouseMove(&control<UsrButton>(name));
        QTRY_COMPARE(lit(), QStringList{QLatin1StringView(name)});
    }
    QTest::mouseMove(form_.get(), QPoint(3, 3));
    QTRY_COMPARE(lit(), QStringList());
    QCOMPARE(control<UsrButton>("cmdSave").toolTip(), u"Change the filename into FIF format"_s);
}

void TestChangFif::keys_reach_everything()
{
    list(u"a.mp3"_s, tagged("Old", "Older"));
    open(u"a.mp3"_s);
    QStringList order;
    for (int step = 0; step < 6; ++step) {
        order.append(form_->focusWidget()->objectName());
        QTest::keyClick(form_->focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(order,
             (QStringList{u"txtArtist"_s, u"txtTitle"_s, u"cboGenre"_s, u"cmdSave"_s, u"cmdExit"_s, u"txtFilename"_s}));
    type_into(box("txtArtist"), u"Ann"_s);
    type_into(box("txtTitle"), u"Sea"_s);
    control<UsrButton>("cmdSave").setFocus();
    QTest::keyClick(form_->focusWidget(), Qt::Key_Return);
    QVERIFY(exists(u"[Ann][Sea][Rock].mp3"_s));
}

QUILMO_UI_TEST(TestChangFif)

#include "test_chang_fif.moc"
