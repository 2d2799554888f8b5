#include "Driver.h"
#include "convert/SaveButton.h"
#include "convert/genre_controls.h"
#include "core/mod_of_grobal_var.h"
#include "explorer/FileList.h"
#include "explorer/FolderTree.h"
#include "frame/DetailBoxes.h"
#include "frame/MainControls.h"
#include "mp3/cIDV3.h"
#include "platform/MsgBox.h"
#include "platform/drives.h"
#include "sample_files.h"
#include "selection/Picks.h"
#include "selection/final_list.h"
#include "tagged_files.h"
#include "test_main.h"
#include "ui_convert.h"

#include <QApplication>
#include <QTest>

#include <filesystem>

using namespace Qt::StringLiterals;

namespace fs = std::filesystem;

namespace {

const QString too_long = u"Unable to Convert! Artist's name is too long"_s;
const QString no_tag_written = u"Error! Can not Write ID3 Tag"_s;
const QString select_mp3 = u"Select MP3 File"_s;
const QString input_artist_title = u"Input Artist and Title"_s;
const QString folder = u"C:\\Music\\"_s;

/// Both panes and the detail fields on the main window's own controls, joined as there, with the save button.
struct SavingWindow
{
    SavingWindow()
    {
        form.resize(1000, 700);
        shared.last_open_node_index = -1;
        id3().init_FillComboGenre(*controls.cboGenre);
        QObject::connect(&tree, &FolderTree::files_wanted, &list, &FileList::FillListView);
        QObject::connect(&tree, &FolderTree::no_files_wanted, &*controls.lvListView, &ListView::Clear);
        QObject::connect(&*controls.txtFilename, &TextBox::Change, &list, [this] {
            if (controls.txtFilename->Text() != list.filename_box_text())
                controls.txtFilename->set_Text(list.filename_box_text());
        });
        QObject::connect(&*controls.cmdSave, &UsrButton::Click, &list, [this] { save.cmdSave_Click(); });
    }

    /// Shows the folder of the files.
    void open()
    {
        tree.init_main_tree();
        show_genre_controls(*controls.cboGenre, *controls.txtGenre, shared.genre_type, shared.fif_type);
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        driver.open_node(u"C:"_s);
        driver.click_node(u"C:\\Music"_s);
    }

    ListView& rows() const { return *controls.lvListView; }
    int row_of(const QString& name) const { return Driver::row_of(rows(), name); }
    void click_row(const QString& name) const { driver.click_row(rows(), row_of(name)); }
    void tick(const QString& name) const { driver.click_check_box(rows(), row_of(name)); }
    /// Types artist and title and presses the button.
    void save_as(const QString& artist, const QString& title) const
    {
        type_into(*controls.txtArtist, artist);
        type_into(*controls.txtTitle, title);
        driver.click(u"cmdSave"_s);
    }

    TestDisk disk;
    NotedMessages messages;
    QWidget form;
    MainControls controls{form};
    DetailBoxes boxes{controls};
    FolderTree tree{*controls.tvTreeView};
    Picks picks{*controls.lvListView,
                *controls.StatusBar1,
                {.selected_tree_key = [this] { return tree.selected_key(); },
                 .click_row = [this](int index) { list.ItemClick(index); },
                 .show_final_list = [] {}}};
    FileList list{*controls.lvListView, *controls.StatusBar1, picks};
    NotedTransport player;
    SaveButton save{{.fields = {*controls.txtArtist, *controls.txtTitle, *controls.txtGenre, *controls.cboGenre},
                     .txtFilename = *controls.txtFilename,
                     .lvListView = *controls.lvListView,
                     .transport = player,
                     .selected_tree_key = [this] { return tree.selected_key(); },
                     .click_row = [this](int index) { list.ItemClick(index); },
                     .refresh_all = [this] { tree.refresh_all(); }}};
    Driver driver{form};
};

} // namespace

class TestSaveButton : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void an_unticked_row_is_renamed_and_tagged();
    void a_ticked_row_takes_its_record_along();
    void a_name_that_is_listed_already_stops_it();
    void a_file_on_a_cd_stays();
    void without_files_it_asks_for_one();
    void without_rows_it_asks_for_a_file();
    void empty_fields_are_asked_for_data();
    void empty_fields_are_asked_for();
    void fields_that_make_no_name_change_nothing_data();
    void fields_that_make_no_name_change_nothing();
    void forbidden_characters_are_dropped();
    void a_file_that_bears_its_name_stays();
    void an_existing_target_is_told();
    void a_target_that_no_test_sees_stays_data();
    void a_target_that_no_test_sees_stays();
    void a_file_in_the_player_is_let_go_data();
    void a_file_in_the_player_is_let_go();
    void a_file_in_the_player_comes_back_under_its_old_name();
    void a_shape_without_genre_still_tags_it_data();
    void a_shape_without_genre_still_tags_it();
    void a_genre_from_the_list_is_used_as_it_stands();
    void a_picked_genre_is_not_cleaned();
    void a_genre_in_the_other_control_fills_in();
    void a_genre_that_no_list_holds_keeps_the_byte();
    void a_file_without_a_tag_keeps_its_length();
    void a_namesake_in_another_folder_stays();
    void a_file_renamed_elsewhere_is_saved();
    void a_row_selected_meanwhile_keeps_its_name();
    void a_file_that_went_away_is_told();
    void a_read_only_file_is_opened_up();
    void a_hidden_read_only_file_stays_closed();
    void a_row_of_a_vanished_file_may_have_the_name();
    void long_artists_data();
    void long_artists();

    void rename_mp3_makes_a_coded_name_data();
    void rename_mp3_makes_a_coded_name();
    void rename_mp3_renames_and_refreshes();
    void rename_mp3_leaves_an_existing_target();
    void rename_mp3_asks_the_final_list();
    void rename_mp3_stops_at_a_long_artist();

private:
    void write(const QString& name, const QByteArray& content) const { window_->disk.write(folder + name, content); }
    QByteArray read(const QString& name) const { return window_->disk.read(folder + name); }
    bool exists(const QString& name) const { return window_->disk.exists(folder + name); }
    TagTexts tag(const QString& name) const { return tag_in(read(name)); }
    QStringList fields() const
    {
        const MainControls& controls = window_->controls;
        return {controls.txtFilename->Text(), controls.txtArtist->Text(), controls.txtTitle->Text()};
    }

    std::unique_ptr<SavingWindow> window_;
};

void TestSaveButton::init()
{
    window_ = std::make_unique<SavingWindow>();
}

void TestSaveButton::cleanup()
{
    window_.reset();
}

void TestSaveButton::an_unticked_row_is_renamed_and_tagged()
{
    const QByteArray before = tagged("Old", "Older");
    write(u"a.mp3"_s, before);
    write(u"b.mp3"_s, before);
    window_->open();
    window_->click_row(u"a.mp3"_s);
    QCOMPARE(fields(), (QStringList{u"a.mp3"_s, u"Old"_s, u"Older"_s}));

    window_->save_as(u"  Ann "_s, u" Sea  "_s);

    const QString name = u"[Ann][Sea][Rock].mp3"_s;
    QVERIFY(!exists(u"a.mp3"_s));
    QCOMPARE(tag(name), (TagTexts{"Ann", "Sea", 17}));
    QCOMPARE(read(name).size(), before.size());
    QCOMPARE(read(name).chopped(128), before.chopped(128));
    QCOMPARE(read(name).right(65), before.right(65)); // album, year, comment and genre
    QCOMPARE(read(u"b.mp3"_s), before);

    const ListRow& row = window_->rows().Item(1);
    QCOMPARE(row.Key, name);
    QCOMPARE(row.Text, name);
    QCOMPARE(row.SmallIcon, 1);
    QVERIFY(row.Selected);
    QCOMPARE(fields(), (QStringList{name, u"Ann"_s, u"Sea"_s}));
    QCOMPARE(window_->controls.Label_filesize->Text(), u"20 byte"_s);
    QCOMPARE(window_->controls.cboGenre->Text(), u"Rock"_s);
    QCOMPARE(shared.selected_mp3_name, name);
    QCOMPARE(shared.selected_mp3_full, folder + name);
    QCOMPARE(shared.selected_mp3_path, folder + name);
    QCOMPARE(shared.final_list_count, 0);
    QCOMPARE(window_->messages.take(), QStringList());
    QCOMPARE(window_->player.take(), QStringList());
}

void TestSaveButton::a_ticked_row_takes_its_record_along()
{
    write(u"a.mp3"_s, tagged("Old", "Older"));
    window_->open();
    window_->tick(u"a.mp3"_s);
    QCOMPARE(shared.final_list[0].kind, i16(2));

    window_->save_as(u"Ann"_s, u"Sea"_s);

    const QString name = u"[Ann][Sea][Rock].mp3"_s;
    QVERIFY(exists(name));
    const FinalListEntry& record = shared.final_list[0];
    QCOMPARE(record.in_use, i16(1));
    QCOMPARE(record.name, name);
    QCOMPARE(record.folder, folder);
    QCOMPARE(record.full_path, folder + name);
    QCOMPARE(record.kind, i16(1));
    QCOMPARE(shared.final_list_count, 1);
    QVERIFY(window_->rows().Item(1).Checked);
}

void TestSaveButton::a_name_that_is_listed_already_stops_it()
{
    const QByteArray before = tagged("Old", "Older");
    write(u"a.mp3"_s, before);
    window_->open();
    QCOMPARE(
        add_to_final_list(u"[Ann][Sea][Rock].mp3"_s, u"C:\\Else\\"_s, u"C:\\Else\\[Ann][Sea][Rock].mp3"_s, 1, {}, {}),
        added);
    window_->tick(u"a.mp3"_s);

    window_->save_as(u"Ann"_s, u"Sea"_s);

    QCOMPARE(window_->messages.take(), QStringList{u"[Ann][Sea][Rock].mp3 already exists in MP3 File List"_s});
    QCOMPARE(read(u"a.mp3"_s), before);
    QVERIFY(!exists(u"[Ann][Sea][Rock].mp3"_s));
    QCOMPARE(shared.final_list[1].name, u"a.mp3"_s);
    QCOMPARE(window_->rows().Item(1).Text, u"a.mp3"_s);
    QCOMPARE(fields(), (QStringList{u"a.mp3"_s, u"Old"_s, u"Older"_s}));
}

void TestSaveButton::a_file_on_a_cd_stays()
{
    const QByteArray before = tagged("Old", "Older");
    write(u"a.mp3"_s, before);
    std::vector<Drive> drives = ::drives();
    drives.front().Type = DriveType::cd;
    set_drives(drives);
    window_->open();

    window_->save_as(u"Ann"_s, u"Sea"_s);

    QCOMPARE(window_->messages.take(), QStringList{u"MP3 files of CD can not be renamed to FIF Format"_s});
    QCOMPARE(read(u"a.mp3"_s), before);
    QCOMPARE(fields(), (QStringList{u"a.mp3"_s, u"Old"_s, u"Older"_s})); // what was typed has gone
}

void TestSaveButton::without_files_it_asks_for_one()
{
    window_->disk.make_folder(folder);
    window_->open();
    window_->save_as(u"Ann"_s, u"Sea"_s);
    QCOMPARE(window_->messages.take(), QStringList{select_mp3});
    QCOMPARE(fields(), (QStringList{QString(), u"Ann"_s, u"Sea"_s}));
}

void TestSaveButton::without_rows_it_asks_for_a_file()
{
    const QByteArray before = tagged("Old", "Older");
    write(u"a.mp3"_s, before);
    window_->open();
    window_->driver.click_node(u"MYCOMPUTER"_s);
    QCOMPARE(window_->rows().Count(), 0);
    window_->save_as(u"Ann"_s, u"Sea"_s);
    QCOMPARE(window_->messages.take(), QStringList{select_mp3});
    QCOMPARE(read(u"a.mp3"_s), before);
}

void TestSaveButton::empty_fields_are_asked_for_data()
{
    QTest::addColumn<QString>("artist");
    QTest::addColumn<QString>("title");

    QTest::newRow("no artist") << QString() << u"Sea"_s;
    QTest::newRow("no title") << u"Ann"_s << QString();
    QTest::newRow("neither") << QString() << QString();
}

void TestSaveButton::empty_fields_are_asked_for()
{
    QFETCH(QString, artist);
    QFETCH(QString, title);

    const QByteArray before = tagged("Old", "Older");
    write(u"a.mp3"_s, before);
    window_->open();
    window_->save_as(artist, title);
    QCOMPARE(window_->messages.take(), QStringList{input_artist_title});
    QCOMPARE(read(u"a.mp3"_s), before);
    QCOMPARE(fields(), (QStringList{u"a.mp3"_s, u"Old"_s, u"Older"_s}));
}

void TestSaveButton::fields_that_make_no_name_change_nothing_data()
{
    QTest::addColumn<i16>("fif_type");
    QTest::addColumn<QString>("artist");
    QTest::addColumn<QString>("title");

    QTest::newRow("an artist of blanks") << i16(1) << u"   "_s << u"Sea"_s;
    QTest::newRow("a title of blanks") << i16(1) << u"Ann"_s << u"  "_s;
    QTest::newRow("an artist of forbidden characters") << i16(1) << uR"(\/:*?"<>|)"_s << u"Sea"_s;
    QTest::newRow("a title of forbidden characters") << i16(1) << u"Ann"_s << uR"(\/:*?"<>|)"_s;
    QTest::newRow("an artist of square brackets") << i16(1) << u"[]"_s << u"Sea"_s;
    QTest::newRow("a title of round brackets") << i16(3) << u"Ann"_s << u"()"_s;
    QTest::newRow("an artist of dashes") << i16(5) << u"--"_s << u"Sea"_s;
    QTest::newRow("a title of all delimiters") << i16(6) << u"Ann"_s << u"[(-)]"_s;
}

void TestSaveButton::fields_that_make_no_name_change_nothing()
{
    QFETCH(i16, fif_type);
    QFETCH(QString, artist);
    QFETCH(QString, title);

    const QByteArray before = tagged("Old", "Older");
    write(u"a.mp3"_s, before);
    shared.fif_type = fif_type;
    window_->open();
    window_->tick(u"a.mp3"_s);
    window_->save_as(artist, title);
    QCOMPARE(window_->messages.take(), QStringList());
    QCOMPARE(read(u"a.mp3"_s), before);
    QCOMPARE(window_->rows().Count(), 1);
    QCOMPARE(shared.final_list[0].name, u"a.mp3"_s);
    QCOMPARE(fields(), (QStringList{u"a.mp3"_s, u"Old"_s, u"Older"_s}));
}

void TestSaveButton::forbidden_characters_are_dropped()
{
    write(u"a.mp3"_s, tagged("Old", "Older"));
    shared.genre_type = 2;
    window_->open();
    type_into(*window_->controls.txtGenre, uR"(  Ro/ck\:*?"<>| )"_s);
    window_->save_as(uR"(A\/:nn [live])"_s, uR"(*?"<>|Sea (2))"_s);
    QCOMPARE(window_->messages.take(), QStringList());
    QCOMPARE(tag(u"[Ann live][Sea (2)][Rock].mp3"_s), (TagTexts{"Ann live", "Sea (2)", 17}));
}

void TestSaveButton::a_file_that_bears_its_name_stays()
{
    const QByteArray before = tagged("Other", "Text");
    write(u"[Ann][Sea].mp3"_s, before);
    write(u"b.mp3"_s, before);
    window_->open();
    window_->click_row(u"[Ann][Sea].mp3"_s);
    window_->driver.click(u"cmdSave"_s);
    QCOMPARE(window_->messages.take(), QStringList());
    QCOMPARE(read(u"[Ann][Sea].mp3"_s), before);
    QCOMPARE(window_->rows().Count(), 2);
    QCOMPARE(fields(), (QStringList{u"[Ann][Sea].mp3"_s, u"Ann"_s, u"Sea"_s}));
}

void TestSaveButton::an_existing_target_is_told()
{
    const QByteArray before = tagged("Old", "Older");
    const QByteArray other = tagged("Another", "File");
    write(u"a.mp3"_s, before);
    write(u"[Ann][Sea][Rock].mp3"_s, other);
    window_->open();
    window_->tick(u"a.mp3"_s);
    window_->save_as(u"Ann"_s, u"Sea"_s);
    QCOMPARE(window_->messages.take(), QStringList{u"[Ann][Sea][Rock].mp3 already exists"_s});
    QCOMPARE(read(u"a.mp3"_s), before);
    QCOMPARE(read(u"[Ann][Sea][Rock].mp3"_s), other);
    QCOMPARE(shared.final_list[0].name, u"a.mp3"_s);
    QCOMPARE(fields(), (QStringList{u"a.mp3"_s, u"Old"_s, u"Older"_s}));
}

void TestSaveButton::a_target_that_no_test_sees_stays_data()
{
    QTest::addColumn<bool>("is_link");
    QTest::newRow("a folder") << false;
    QTest::newRow("a dangling link") << true;
}

void TestSaveButton::a_target_that_no_test_sees_stays()
{
    QFETCH(bool, is_link);

    const QByteArray before = tagged("Old", "Older");
    write(u"a.mp3"_s, before);
    const fs::path target = window_->disk.native(folder + u"[Ann][Sea][Rock].mp3"_s).toStdString();
    if (is_link)
        fs::create_symlink("nowhere", target);
    else
        fs::create_directory(target);
    window_->open();
    window_->tick(u"a.mp3"_s);

    window_->save_as(u"Ann"_s, u"Sea"_s);

    // The record and the row have gone ahead; the file itself could not follow, and the tag found no file.
    QCOMPARE(window_->messages.take(), QStringList{no_tag_written});
    QCOMPARE(read(u"a.mp3"_s), before);
    QCOMPARE(fs::is_symlink(fs::symlink_status(target)), is_link);
    QCOMPARE(fs::is_directory(fs::symlink_status(target)), !is_link);
    QCOMPARE(shared.final_list[0].name, u"[Ann][Sea][Rock].mp3"_s);
    QCOMPARE(window_->rows().Item(1).Text, u"[Ann][Sea][Rock].mp3"_s);
    QCOMPARE(shared.selected_mp3_path, folder + u"[Ann][Sea][Rock].mp3"_s);
}

void TestSaveButton::a_file_in_the_player_is_let_go_data()
{
    QTest::addColumn<bool>("playing");
    QTest::newRow("while it plays") << true;
    QTest::newRow("while it stands stopped") << false;
}

void TestSaveButton::a_file_in_the_player_is_let_go()
{
    QFETCH(bool, playing);

    write(u"a.mp3"_s, tagged("Old", "Older"));
    window_->open();
    NotedTransport::load(folder + u"a.mp3"_s, playing);
    bool was_there = false;
    window_->player.on_release = [&] { was_there = exists(u"a.mp3"_s); };

    window_->save_as(u"Ann"_s, u"Sea"_s);

    const QString path = folder + u"[Ann][Sea][Rock].mp3"_s;
    QStringList calls = {u"release"_s, u"PlayBtn "_s + path};
    if (!playing)
        calls.append(u"StopBtn"_s);
    QVERIFY(was_there);
    QCOMPARE(window_->player.take(), calls);
    QCOMPARE(shared.is_playing, i16(playing ? 1 : 0));
    QCOMPARE(shared.playing_mp3_path, path);
    QVERIFY(window_->disk.exists(path));
}

void TestSaveButton::a_file_in_the_player_comes_back_under_its_old_name()
{
    write(u"a.mp3"_s, tagged("Old", "Older"));
    window_->open();
    NotedTransport::load(folder + u"a.mp3"_s, true);
    window_->save_as(u"  "_s, u"Sea"_s);
    QCOMPARE(window_->player.take(), (QStringList{u"release"_s, u"PlayBtn "_s + folder + u"a.mp3"_s}));
    QVERIFY(exists(u"a.mp3"_s));
}

void TestSaveButton::a_shape_without_genre_still_tags_it_data()
{
    QTest::addColumn<i16>("fif_type");
    QTest::addColumn<i16>("genre_type");
    QTest::addColumn<QString>("name");

    QTest::newRow("square brackets, list") << i16(2) << i16(1) << u"[Ann][Sea].mp3"_s;
    QTest::newRow("square brackets, text") << i16(2) << i16(2) << u"[Ann][Sea].mp3"_s;
    QTest::newRow("round brackets, list") << i16(4) << i16(1) << u"(Ann)(Sea).mp3"_s;
    QTest::newRow("round brackets, text") << i16(4) << i16(2) << u"(Ann)(Sea).mp3"_s;
    QTest::newRow("dash, list") << i16(6) << i16(1) << u"Ann-Sea.mp3"_s;
    QTest::newRow("dash, text") << i16(6) << i16(2) << u"Ann-Sea.mp3"_s;
}

void TestSaveButton::a_shape_without_genre_still_tags_it()
{
    QFETCH(i16, fif_type);
    QFETCH(i16, genre_type);
    QFETCH(QString, name);

    write(u"a.mp3"_s, tagged("Old", "Older"));
    shared.fif_type = fif_type;
    shared.genre_type = genre_type;
    window_->open();
    // Set by the name of another file shown before; a person can't change a disabled control.
    window_->controls.cboGenre->set_ListIndex(window_->controls.cboGenre->findText(u"Hip_Hop"_s));
    window_->controls.txtGenre->set_Text(u"Hip_Hop"_s);
    QVERIFY(!(genre_type == 1 ? window_->controls.cboGenre->isEnabled() : window_->controls.txtGenre->isEnabled()));

    window_->save_as(u"Ann"_s, u"Sea"_s);

    QCOMPARE(tag(name), (TagTexts{"Ann", "Sea", 7}));
    QCOMPARE(window_->messages.take(), QStringList());
}

void TestSaveButton::a_genre_from_the_list_is_used_as_it_stands()
{
    write(u"a.mp3"_s, tagged("Old", "Older"));
    window_->open();
    pick_genre(*window_->controls.cboGenre, u"Hip"_s);
    QCOMPARE(window_->controls.cboGenre->Text(), u"Hip_Hop"_s);
    window_->save_as(u"Ann"_s, u"Sea"_s);
    QCOMPARE(tag(u"[Ann][Sea][Hip_Hop].mp3"_s), (TagTexts{"Ann", "Sea", 7}));
    QCOMPARE(window_->controls.txtGenre->Text(), u"Hip_Hop"_s);
}

void TestSaveButton::a_picked_genre_is_not_cleaned()
{
    write(u"a.mp3"_s, tagged("Old", "Older"));
    shared.fif_type = 1;
    window_->open();
    window_->controls.cboGenre->addItem(u"  [Pop] "_s);
    window_->controls.cboGenre->set_ListIndex(window_->controls.cboGenre->findText(u"  [Pop] "_s));
    window_->save_as(u"Ann"_s, u"Sea"_s);
    QVERIFY(window_->disk.exists(folder + u"[Ann][Sea][  [Pop] ].mp3"_s));
}

void TestSaveButton::a_genre_in_the_other_control_fills_in()
{
    write(u"a.mp3"_s, tagged("Old", "Older"));
    shared.genre_type = 0; // neither control is the one in use
    window_->open();
    window_->controls.txtGenre->set_Text(u" Po?p "_s);
    window_->save_as(u"Ann"_s, u"Sea"_s);
    QCOMPARE(tag(u"[Ann][Sea][Pop].mp3"_s), (TagTexts{"Ann", "Sea", 13}));
}

void TestSaveButton::a_genre_that_no_list_holds_keeps_the_byte()
{
    write(u"a.mp3"_s, tagged("Old", "Older", 200));
    shared.genre_type = 2;
    window_->open();
    type_into(*window_->controls.txtGenre, u"My Own"_s);
    window_->save_as(u"Ann"_s, u"Sea"_s);
    QCOMPARE(tag(u"[Ann][Sea][My Own].mp3"_s), (TagTexts{"Ann", "Sea", 200}));
    QCOMPARE(window_->messages.take(), QStringList());
}

void TestSaveButton::a_file_without_a_tag_keeps_its_length()
{
    const QByteArray audio = sample_audio({.frames = 2});
    write(u"a.mp3"_s, audio);
    window_->open();
    QCOMPARE(fields(), (QStringList{u"a.mp3"_s, QString(), QString()}));
    window_->save_as(u"Ann"_s, u"Sea"_s);
    const QByteArray after = read(u"[Ann][Sea].mp3"_s);
    QCOMPARE(after.size(), audio.size());
    QCOMPARE(after.chopped(128), audio.chopped(128));
    QCOMPARE(tag_in(after), (TagTexts{"Ann", "Sea", 12}));
}

void TestSaveButton::a_namesake_in_another_folder_stays()
{
    const QByteArray before = tagged("Old", "Older");
    write(u"01.mp3"_s, before);
    window_->disk.write(u"C:\\Music\\Live\\01.mp3"_s, tagged("New", "Newer"));
    window_->open();
    NotedTransport::load(folder + u"01.mp3"_s, true);
    window_->driver.open_node(u"C:\\Music"_s);
    window_->driver.click_node(u"C:\\Music\\Live"_s);
    QCOMPARE(shared.selected_mp3_path, folder + u"01.mp3"_s); // the row has been selected by its name, not clicked

    window_->save_as(u"Ann"_s, u"Sea"_s);

    QCOMPARE(window_->messages.take(), QStringList());
    QCOMPARE(window_->player.take(), QStringList()); // it holds the other file
    QCOMPARE(read(u"01.mp3"_s), before);
    QVERIFY(!window_->disk.exists(u"C:\\Music\\Live\\01.mp3"_s));
    QCOMPARE(window_->rows().Count(), 1);
    QCOMPARE(shared.selected_mp3_path, u"C:\\Music\\Live\\"_s + window_->rows().Item(1).Text);
    QVERIFY(window_->disk.exists(shared.selected_mp3_path));
}

void TestSaveButton::a_file_renamed_elsewhere_is_saved()
{
    const QByteArray before = tagged("Old", "Older");
    write(u"a.mp3"_s, before);
    write(u"b.mp3"_s, tagged("Bob", "Sky"));
    window_->open();
    window_->click_row(u"a.mp3"_s);
    // What the dialog for a listed file leaves behind: the name is the new one, the path that of the last click.
    const QString renamed = u"[Bob][Sky][Rock].mp3"_s;
    QVERIFY(MoveFileA(folder + u"b.mp3"_s, folder + renamed));
    shared.selected_mp3_name = renamed;
    window_->tree.refresh_all();

    window_->save_as(u"Bob"_s, u"Sun"_s);

    QCOMPARE(window_->messages.take(), QStringList());
    QCOMPARE(read(u"a.mp3"_s), before);
    QVERIFY(!exists(renamed));
    QCOMPARE(window_->rows().Count(), 2);
    QCOMPARE(tag(window_->rows().Item(window_->rows().SelectedItem()).Text).title, QByteArray("Sun"));
}

void TestSaveButton::a_row_selected_meanwhile_keeps_its_name()
{
    write(u"a.mp3"_s, tagged("Old", "Older"));
    write(u"b.mp3"_s, tagged("Bob", "Sky"));
    window_->open();
    window_->click_row(u"a.mp3"_s);
    const int saved_row = window_->row_of(u"a.mp3"_s);
    const int other_row = window_->row_of(u"b.mp3"_s);
    fs::remove(window_->disk.native(folder + u"a.mp3"_s).toStdString());
    set_message_box([&](const QString& /*text*/, int /*style*/, const QString& /*title*/) {
        window_->rows().clear_selection();
        window_->list.ItemClick(other_row); // the player goes on to its next file
    });
    window_->save_as(u"Ann"_s, u"Sea"_s);
    set_message_box({});
    QCOMPARE(window_->rows().Item(saved_row).Text, u"[Ann][Sea][Rock].mp3"_s);
    QCOMPARE(window_->rows().Item(other_row).Text, u"b.mp3"_s);
    QCOMPARE(shared.selected_mp3_name, u"b.mp3"_s);
}

void TestSaveButton::a_file_that_went_away_is_told()
{
    write(u"a.mp3"_s, tagged("Old", "Older"));
    write(u"b.mp3"_s, tagged("Old", "Older"));
    window_->open();
    window_->click_row(u"a.mp3"_s);
    const QByteArray before = read(u"a.mp3"_s);
    fs::rename(window_->disk.native(folder + u"a.mp3"_s).toStdString(),
               window_->disk.native(folder + u"elsewhere.mp3"_s).toStdString());
    window_->save_as(u"Ann"_s, u"Sea"_s);
    QCOMPARE(window_->messages.take(), QStringList{no_tag_written});
    QVERIFY(!exists(u"[Ann][Sea][Rock].mp3"_s));
    QCOMPARE(read(u"elsewhere.mp3"_s), before);
    QCOMPARE(window_->rows().Item(1).Text, u"[Ann][Sea][Rock].mp3"_s);
    QCOMPARE(fields(), (QStringList{u"[Ann][Sea][Rock].mp3"_s, u"Ann"_s, u"Sea"_s})); // from the row's name alone
}

void TestSaveButton::a_read_only_file_is_opened_up()
{
    write(u"a.mp3"_s, tagged("Old", "Older"));
    window_->open();
    const fs::perms readable = fs::perms::owner_read | fs::perms::group_read;
    fs::permissions(window_->disk.native(folder + u"a.mp3"_s).toStdString(), readable);
    window_->save_as(u"Ann"_s, u"Sea"_s);
    QCOMPARE(window_->messages.take(), QStringList());
    QCOMPARE(tag(u"[Ann][Sea][Rock].mp3"_s), (TagTexts{"Ann", "Sea", 17}));
}

void TestSaveButton::a_hidden_read_only_file_stays_closed()
{
    const QByteArray before = tagged("Old", "Older");
    write(u"a.mp3"_s, before);
    shared.fif_type = 6;
    window_->open();
    const fs::perms readable = fs::perms::owner_read | fs::perms::group_read;
    fs::permissions(window_->disk.native(folder + u"a.mp3"_s).toStdString(), readable);
    window_->save_as(u".Ann"_s, u"Sea"_s); // a name that begins with a full stop is hidden
    QCOMPARE(window_->messages.take(), QStringList{no_tag_written});
    QCOMPARE(read(u".Ann-Sea.mp3"_s), before);
}

void TestSaveButton::a_row_of_a_vanished_file_may_have_the_name()
{
    write(u"a.mp3"_s, tagged("Old", "Older"));
    write(u"[Ann][Sea][Rock].mp3"_s, tagged("Ann", "Sea"));
    window_->open();
    window_->click_row(u"a.mp3"_s);
    fs::remove(window_->disk.native(folder + u"[Ann][Sea][Rock].mp3"_s).toStdString());
    window_->save_as(u"Ann"_s, u"Sea"_s);
    QCOMPARE(window_->messages.take(), QStringList());
    QVERIFY(!exists(u"a.mp3"_s));
    QVERIFY(exists(u"[Ann][Sea][Rock].mp3"_s));
    QCOMPARE(window_->row_of(u"a.mp3"_s), 0);
    window_->tree.refresh_all();
    QCOMPARE(window_->rows().Count(), 1);
}

void TestSaveButton::long_artists_data()
{
    QTest::addColumn<QList<int>>("fif_types");
    QTest::addColumn<QString>("genre");
    QTest::addColumn<QString>("title");
    QTest::addColumn<int>(
        "uncut_up_to"); // bytes of the longest artist that leaves the title whole; 51: none that is tried
    QTest::addColumn<QStringList>("cuts"); // what is left of the title for artists longer by one byte, by two, ...

    const QList<int> brackets = {1, 2, 3, 4};
    const QList<int> dashes = {5, 6};
    const QString sea = u"Sea"_s;
    const QString long_title = u"Long Title"_s;
    QTest::newRow("brackets, short title") << brackets << QString() << sea << 53 << QStringList();
    QTest::newRow("brackets, long title") << brackets << QString() << long_title << 51 << QStringList{u"L.."_s};
    QTest::newRow("dashes, short title") << dashes << QString() << sea << 56 << QStringList();
    QTest::newRow("dashes, long title") << dashes << QString() << long_title << 51
                                        << QStringList{u"Long T"_s, u"Long "_s, u"Long"_s, u"Lon"_s};
    QTest::newRow("brackets with genre") << QList<int>{1, 3} << u"Rock"_s << sea << 51 << QStringList();
    QTest::newRow("brackets that drop the genre") << QList<int>{2, 4} << u"Rock"_s << sea << 53 << QStringList();
    QTest::newRow("dashes with genre") << QList<int>{5} << u"Rock"_s << sea << 51 << QStringList();
    QTest::newRow("dashes that drop the genre") << QList<int>{6} << u"Rock"_s << sea << 56 << QStringList();
    QTest::newRow("dashes that charge the genre") << QList<int>{6} << u"Rock"_s << long_title << 51 << QStringList();
}

void TestSaveButton::long_artists()
{
    QFETCH(QList<int>, fif_types);
    QFETCH(QString, genre);
    QFETCH(QString, title);
    QFETCH(int, uncut_up_to);
    QFETCH(QStringList, cuts);

    const QHash<int, QString> shapes = {{1, u"[%1][%2].mp3"_s}, {2, u"[%1][%2].mp3"_s}, {3, u"(%1)(%2).mp3"_s},
                                        {4, u"(%1)(%2).mp3"_s}, {5, u"%1-%2.mp3"_s},    {6, u"%1-%2.mp3"_s}};
    const auto artist_of = [](const QString& alphabet, int bytes) {
        if (alphabet == u"ASCII"_s)
            return QString(bytes, u'A');
        const QString hangul((bytes - 2) / 2, QChar(0xAC00)); // two bytes each
        if (alphabet == u"Hangul"_s)
            return bytes % 2 == 0 ? hangul + QChar(0xAC01) : QString();
        return (bytes % 2 == 0 ? u"AB"_s : u"ABC"_s) + hangul;
    };
    shared.genre_type = 2;
    write(u"a.mp3"_s, tagged("Old", "Older", 200));
    window_->open();
    for (const int fif_type : fif_types) {
        shared.fif_type = static_cast<i16>(fif_type);
        enable_genre_controls(*window_->controls.cboGenre, *window_->controls.txtGenre, shared.fif_type);
        for (const QString& alphabet : {u"ASCII"_s, u"Hangul"_s, u"mixture"_s}) {
            for (int bytes = 52; bytes <= 60; ++bytes) {
                const QString artist = artist_of(alphabet, bytes);
                if (artist.isEmpty())
                    continue;
                window_->controls.txtGenre->set_Text(genre);
                window_->save_as(artist, title);

                const int cut = bytes - uncut_up_to - 1;
                const bool named = cut < cuts.size();
                const QString name = !named ? u"a.mp3"_s : shapes[fif_type].arg(artist, cut < 0 ? title : cuts[cut]);
                QCOMPARE(window_->messages.take(), named ? QStringList() : QStringList{too_long});
                QVERIFY2(exists(name), qPrintable(u"type %1, %2 bytes of %3"_s.arg(fif_type).arg(bytes).arg(alphabet)));
                QVERIFY(korean_bytes(name).size() <= 64);
                QCOMPARE(window_->rows().Item(1).Text, name);
                QCOMPARE(shared.selected_mp3_path, folder + name);
                fs::rename(window_->disk.native(folder + name).toStdString(),
                           window_->disk.native(folder + u"a.mp3"_s).toStdString());
                window_->tree.refresh_all();
                window_->click_row(u"a.mp3"_s);
            }
        }
    }
}

void TestSaveButton::rename_mp3_makes_a_coded_name_data()
{
    QTest::addColumn<QString>("artist");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("stem");

    const QString hangul(40, QChar(0xAC00));
    QTest::newRow("a short name stays whole") << u"A"_s << u"B"_s << u"[A][B][POP]"_s;
    QTest::newRow("60 bytes stay whole") << u"A"_s << QString(50, u't') << u"[A]["_s + QString(50, u't') + u"][POP]"_s;
    QTest::newRow("61 bytes are cut") << u"A"_s << QString(51, u't') << u"[A]["_s + QString(48, u't') + u"..][POP]"_s;
    QTest::newRow("blanks stay") << u" A "_s << u" B "_s << u"[ A ][ B ][POP]"_s;
    QTest::newRow("room of one letter") << QString(48, u'A') << u"titles"_s
                                        << u"["_s + QString(48, u'A') + u"][t..][POP]"_s;
    QTest::newRow("no room") << QString(49, u'A') << u"titles"_s << QString();
    QTest::newRow("Hangul in an even room ends in it")
        << u"A"_s << hangul << u"[A]["_s + hangul.left(24) + u"..][POP]"_s;
    QTest::newRow("Hangul in an odd room ends one below")
        << u"AB"_s << hangul << u"[AB]["_s + hangul.left(23) + u"..][POP]"_s;
    QTest::newRow("no room for a syllable")
        << QString(48, u'A') << hangul << u"["_s + QString(48, u'A') + u"][..][POP]"_s;
    QTest::newRow("no half of a character")
        << QString(46, u'A') << u"xx\U0001F3B5\U0001F3B5\U0001F3B5"_s << u"["_s + QString(46, u'A') + u"][xx..][POP]"_s;
}

void TestSaveButton::rename_mp3_makes_a_coded_name()
{
    QFETCH(QString, artist);
    QFETCH(QString, title);
    QFETCH(QString, stem);

    QCOMPARE(coded_stem(artist, title, u"POP"_s), stem);
    QVERIFY(korean_bytes(stem).size() <= 60);
}

void TestSaveButton::rename_mp3_renames_and_refreshes()
{
    const QByteArray before = tagged("Old", "Older");
    write(u"a.mp3"_s, before);
    shared.fif_type = 5; // has no say
    window_->open();
    type_into(*window_->controls.txtArtist, u" A-n?n "_s);
    type_into(*window_->controls.txtTitle, u"[Sea]"_s);
    window_->controls.cboGenre->set_ListIndex(12);
    window_->save.rename_mp3();
    const QString name = u"[ Ann ][Sea][POP].mp3"_s;
    QCOMPARE(read(name), before); // no tag is written
    QVERIFY(!exists(u"a.mp3"_s));
    QCOMPARE(shared.selected_mp3_name, name);
    QCOMPARE(shared.selected_mp3_full, folder + name);
    QCOMPARE(window_->rows().Item(1).Text, name);

    type_into(*window_->controls.txtArtist, u"Ann"_s);
    window_->controls.cboGenre->set_ListIndex(17); // behind the last code
    window_->save.rename_mp3();
    QCOMPARE(read(u"[Ann][Sea][].mp3"_s), before);
    QCOMPARE(window_->messages.take(), QStringList());
}

void TestSaveButton::rename_mp3_leaves_an_existing_target()
{
    const QByteArray before = tagged("Old", "Older");
    const QByteArray other = tagged("Another", "File");
    write(u"a.mp3"_s, before);
    write(u"[Ann][Sea][POP].mp3"_s, other);
    window_->open();
    window_->click_row(u"a.mp3"_s);
    type_into(*window_->controls.txtArtist, u"Ann"_s);
    type_into(*window_->controls.txtTitle, u"Sea"_s);
    window_->controls.cboGenre->set_ListIndex(12);
    window_->save.rename_mp3();
    QCOMPARE(read(u"a.mp3"_s), before);
    QCOMPARE(read(u"[Ann][Sea][POP].mp3"_s), other);
    QCOMPARE(window_->messages.take(), QStringList());
    QCOMPARE(shared.selected_mp3_name, u"[Ann][Sea][POP].mp3"_s); // taken over all the same
}

void TestSaveButton::rename_mp3_asks_the_final_list()
{
    write(u"a.mp3"_s, tagged("Old", "Older"));
    window_->open();
    window_->tick(u"a.mp3"_s);
    type_into(*window_->controls.txtArtist, u"Ann"_s);
    type_into(*window_->controls.txtTitle, u"Sea"_s);
    window_->controls.cboGenre->set_ListIndex(0);
    window_->save.rename_mp3();
    QVERIFY(exists(u"[Ann][Sea][ALT].mp3"_s));
    QCOMPARE(shared.final_list[0].name, u"[Ann][Sea][ALT].mp3"_s);
    QVERIFY(window_->rows().Item(1).Checked);

    QCOMPARE(
        add_to_final_list(u"[Ann][Sky][ALT].mp3"_s, u"C:\\Else\\"_s, u"C:\\Else\\[Ann][Sky][ALT].mp3"_s, 1, {}, {}),
        added);
    type_into(*window_->controls.txtTitle, u"Sky"_s);
    window_->controls.cboGenre->set_ListIndex(0);
    window_->save.rename_mp3();
    QCOMPARE(window_->messages.take(), QStringList{u"[Ann][Sky][ALT].mp3 already exists in MP3 File List"_s});
    QVERIFY(exists(u"[Ann][Sea][ALT].mp3"_s));
    QVERIFY(!exists(u"[Ann][Sky][ALT].mp3"_s));
}

void TestSaveButton::rename_mp3_stops_at_a_long_artist()
{
    const QByteArray before = tagged("Old", "Older");
    write(u"a.mp3"_s, before);
    window_->open();
    type_into(*window_->controls.txtArtist, QString(49, u'A'));
    type_into(*window_->controls.txtTitle, u"A long title"_s);
    window_->save.rename_mp3();
    QCOMPARE(window_->messages.take(), QStringList{too_long});
    QCOMPARE(read(u"a.mp3"_s), before);
    QCOMPARE(shared.selected_mp3_name, u"a.mp3"_s);
}

QUILMO_UI_TEST(TestSaveButton)

#include "test_save_button.moc"
