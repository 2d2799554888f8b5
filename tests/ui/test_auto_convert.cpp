#include "convert/FIF_Auto_Convert.h"
#include "core/mod_of_grobal_var.h"
#include "fif/mod_of_FIF.h"
#include "platform/MsgBox.h"
#include "platform/controls/TextBox.h"
#include "sample_files.h"
#include "selection/final_list.h"
#include "tagged_files.h"
#include "test_main.h"
#include "ui_convert.h"
#include "ui_explorer.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QTest>
#include <QTimer>

#include <filesystem>

using namespace Qt::StringLiterals;

namespace fs = std::filesystem;

namespace {

const QString folder = u"C:\\Music\\"_s;
const QString cannot = u"Can't Auto Convert"_s;
const QString click_preview = u"Click Preview Button"_s;
const QString input_artist = u"Input Artist Name"_s;
const QString input_genre = u"Input Genre Information"_s;
const QString no_tag_written = u"Error! Can not Write ID3 Tag"_s;

} // namespace

class TestAutoConvert : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void selected_rows_are_taken_over();
    void two_rows_of_one_name_are_one_file();
    void without_a_preview_it_asks_for_one();
    void without_rows_nothing_happens();
    void a_fixed_value_must_be_there_data();
    void a_fixed_value_must_be_there();
    void a_preview_touches_nothing();
    void a_file_without_a_source_of_its_title_is_skipped();
    void the_button_converts_what_is_ticked();
    void fixed_values_go_into_every_name();
    void fixed_values_changed_after_the_preview_count();
    void a_name_of_another_shape_is_written_anew_data();
    void a_name_of_another_shape_is_written_anew();
    void a_name_in_the_present_shape_stays();
    void an_existing_target_is_passed_over_silently();
    void a_target_that_no_test_sees_stays_data();
    void a_target_that_no_test_sees_stays();
    void a_listed_file_takes_its_tag_from_the_new_name_data();
    void a_listed_file_takes_its_tag_from_the_new_name();
    void a_name_that_is_listed_already_comes_too_late();
    void a_too_long_artist_does_not_stop_the_others();
    void long_artists_data();
    void long_artists();
    void a_file_in_the_player_is_let_go_data();
    void a_file_in_the_player_is_let_go();
    void a_file_in_the_player_comes_back_under_its_old_name();
    void a_fif_name_without_a_tag_keeps_its_length();
    void a_genre_that_no_list_holds_keeps_the_byte();
    void files_changed_meanwhile();
    void a_second_press_goes_by_the_new_names();
    void files_of_another_folder_stay();
    void columns_sort_by_the_shared_toggles_data();
    void columns_sort_by_the_shared_toggles();
    void the_pointer_lights_one_button();
    void keys_reach_everything();
    void thousands_of_rows_are_done_once();

private:
    void write(const QString& name, const QByteArray& content) const { panes_->disk.write(folder + name, content); }
    QByteArray read(const QString& name) const { return panes_->disk.read(folder + name); }
    bool exists(const QString& name) const { return panes_->disk.exists(folder + name); }
    TagTexts tag(const QString& name) const { return tag_in(read(name)); }
    fs::path native(const QString& name) const { return panes_->disk.native(folder + name).toStdString(); }
    QStringList messages() const { return panes_->messages.take(); }
    /// Shows the folder, selects all its rows and opens the dialog for them.
    void open_for_all();
    void open();
    template<typename Control> Control& control(const char* name) const
    {
        return *form_->findChild<Control*>(QLatin1StringView(name));
    }
    ListView& rows() const { return control<ListView>("Selected_ListView"); }
    int row_of(const QString& key) const;
    const ListRow& row(const QString& key) const { return rows().Item(row_of(key)); }
    void click_check_box(const QString& key) const;
    void tick(const QString& key) const;
    void untick(const QString& key) const;
    void press(const char* name) const { QTest::mouseClick(&control<UsrButton>(name), Qt::LeftButton); }
    void preview() const { press("freeview"); }
    void convert() const { press("autoconvert"); }
    /// Clicks the check box of a fixed value and types the value.
    void fix(const char* check, const char* box, const QString& text) const
    {
        if (!control<QCheckBox>(check).isChecked())
            QTest::mouseClick(&control<QCheckBox>(check), Qt::LeftButton, {}, QPoint(8, 8));
        QVERIFY(control<QCheckBox>(check).isChecked());
        type_into(control<TextBox>(box), text);
    }
    void fix_artist(const QString& text) const { fix("Check_Artist", "txtArtist", text); }
    void fix_genre(const QString& text) const { fix("Check_Genre", "txtGenre", text); }
    QString status() const { return control<StatusBar>("StatusBar1").panel_text(2); }

    std::unique_ptr<ExplorerPanes> panes_;
    NotedTransport player_;
    std::unique_ptr<FIF_Auto_Convert> form_;
    int refreshes_ = 0;
};

void TestAutoConvert::init()
{
    panes_ = std::make_unique<ExplorerPanes>();
    panes_->disk.make_folder(folder);
    panes_->tree.init_main_tree();
    player_.take();
    player_.on_release = {};
    refreshes_ = 0;
}

void TestAutoConvert::cleanup()
{
    form_.reset();
    panes_.reset();
}

void TestAutoConvert::open_for_all()
{
    panes_->click_folder(u"C:"_s);
    panes_->click_folder(u"C:\\Music"_s);
    for (int index = 1; index <= panes_->list_view.Count(); ++index)
        panes_->list_view.set_Selected(index, true);
    open();
}

void TestAutoConvert::open()
{
    form_ = std::make_unique<FIF_Auto_Convert>(player_,
                                               FIF_Auto_Convert::Surroundings{.lvListView = panes_->list_view,
                                                                              .small_icons = {},
                                                                              .refresh_all =
                                                                                  [this] {
                                                                                      ++refreshes_;
                                                                                      panes_->tree.refresh_all();
                                                                                  }},
                                               nullptr);
    form_->show();
    QVERIFY(QTest::qWaitForWindowExposed(form_.get()));
}

int TestAutoConvert::row_of(const QString& key) const
{
    for (int index = 1; index <= rows().Count(); ++index) {
        if (rows().Item(index).Key == key)
            return index;
    }
    return 0;
}

void TestAutoConvert::click_check_box(const QString& key) const
{
    QWidget* viewport = rows().view()->viewport();
    QTest::mouseClick(viewport, Qt::LeftButton, {},
                      viewport->mapFrom(&rows(), rows().check_rect(row_of(key)).center()));
}

void TestAutoConvert::tick(const QString& key) const
{
    click_check_box(key);
    QVERIFY(row(key).Checked);
}

void TestAutoConvert::untick(const QString& key) const
{
    click_check_box(key);
    QVERIFY(!row(key).Checked);
}

void TestAutoConvert::selected_rows_are_taken_over()
{
    write(u"[A][B].mp3"_s, tagged("A", "B"));
    write(u"a.mp3"_s, sample_audio({.frames = 5}));
    write(u"b.mp3"_s, tagged("Bob", "Sky"));
    panes_->click_folder(u"C:"_s);
    panes_->click_folder(u"C:\\Music"_s);
    panes_->list_view.clear_selection();
    panes_->list_view.set_Selected(panes_->row_of(u"[A][B].mp3"_s), true);
    panes_->list_view.set_Selected(panes_->row_of(u"a.mp3"_s), true);
    shared.possible_sort_toggles = {1, 1, 1};
    open();
    QCOMPARE(rows().Count(), 2);
    const ListRow& fif = row(u"[A][B].mp3"_s);
    QCOMPARE(fif.Text, u"[A][B].mp3"_s);
    QCOMPARE(fif.SmallIcon, 1);
    QVERIFY(fif.Checked);
    QCOMPARE(fif.column(1), QString());
    QCOMPARE(fif.column(2), folder);
    QCOMPARE(fif.column(3), panes_->row(u"[A][B].mp3"_s).column(1));
    QCOMPARE(row(u"a.mp3"_s).SmallIcon, 2);
    QCOMPARE(row(u"a.mp3"_s).column(3), u"2KB"_s);
    QCOMPARE(status(), u"2files"_s);
    QCOMPARE(shared.possible_sort_toggles, (std::array<i16, 3>{0, 0, 0}));
}

void TestAutoConvert::two_rows_of_one_name_are_one_file()
{
    write(u"a.mp3"_s, tagged("Ann", "Sea"));
    panes_->click_folder(u"C:"_s);
    panes_->click_folder(u"C:\\Music"_s);
    panes_->list_view.set_Text(panes_->list_view.Add(u"gone.mp3"_s, u"gone.mp3"_s), u"a.mp3"_s);
    panes_->list_view.set_Selected(1, true);
    panes_->list_view.set_Selected(2, true);
    open();
    QCOMPARE(rows().Count(), 1);
    QCOMPARE(status(), u"1files"_s);
}

void TestAutoConvert::without_a_preview_it_asks_for_one()
{
    const QByteArray before = tagged("Ann", "Sea");
    write(u"a.mp3"_s, before);
    open_for_all();
    fix("Check_Artist", "txtArtist", QString()); // the preview is asked for first
    convert();
    QCOMPARE(messages(), QStringList{click_preview});
    QCOMPARE(read(u"a.mp3"_s), before);
    QCOMPARE(refreshes_, 0);
}

void TestAutoConvert::without_rows_nothing_happens()
{
    open_for_all();
    QCOMPARE(rows().Count(), 0);
    QCOMPARE(status(), u"0files"_s);
    preview();
    QCOMPARE(messages(), QStringList());
    convert();
    convert();
    QCOMPARE(messages(), (QStringList{click_preview, click_preview}));
}

void TestAutoConvert::a_fixed_value_must_be_there_data()
{
    QTest::addColumn<i16>("fif_type");
    QTest::addColumn<QString>("text");

    QTest::newRow("nothing") << i16(1) << QString();
    QTest::newRow("blanks") << i16(1) << u"   "_s;
    QTest::newRow("forbidden characters") << i16(1) << uR"(\/:*?"<>|)"_s;
    QTest::newRow("delimiters of the shape") << i16(5) << u"[-]"_s;
}

void TestAutoConvert::a_fixed_value_must_be_there()
{
    QFETCH(i16, fif_type);
    QFETCH(QString, text);

    const QByteArray before = tagged("Ann", "Sea");
    write(u"a.mp3"_s, before);
    shared.fif_type = fif_type;
    open_for_all();
    fix_artist(text);
    fix_genre(text);
    preview();
    QCOMPARE(messages(), QStringList{input_artist});
    fix_artist(u"Bob"_s);
    preview();
    QCOMPARE(messages(), QStringList{input_genre});
    QCOMPARE(row(u"a.mp3"_s).column(1), QString());
    convert();
    QCOMPARE(messages(), QStringList{click_preview}); // no preview has run yet
    fix_genre(u"Pop"_s);
    preview();
    QCOMPARE(messages(), QStringList());
    fix_genre(text);
    convert();
    QCOMPARE(messages(), QStringList{input_genre});
    fix_artist(text);
    convert();
    QCOMPARE(messages(), QStringList{input_artist});
    QCOMPARE(read(u"a.mp3"_s), before);
}

void TestAutoConvert::a_preview_touches_nothing()
{
    const QByteArray before = tagged("An[n]", "Sea", 7);
    write(u"a.mp3"_s, before);
    write(u"Bob-Sky.mp3"_s, before);
    open_for_all();
    untick(u"Bob-Sky.mp3"_s);
    preview();
    QCOMPARE(row(u"a.mp3"_s).column(1), u"[Ann][Sea][Hip_Hop].mp3"_s);
    QCOMPARE(row(u"Bob-Sky.mp3"_s).column(1), u"[Bob][Sky].mp3"_s); // ticks play no part
    QCOMPARE(row(u"a.mp3"_s).Text, u"a.mp3"_s);
    QCOMPARE(read(u"a.mp3"_s), before);
    QCOMPARE(read(u"Bob-Sky.mp3"_s), before);
    QCOMPARE(messages(), QStringList());
    QCOMPARE(refreshes_, 0);
}

void TestAutoConvert::a_file_without_a_source_of_its_title_is_skipped()
{
    const QByteArray audio = sample_audio({.frames = 5});
    write(u"bare.mp3"_s, audio);
    open_for_all();
    fix_artist(u"Ann"_s);
    preview();
    QCOMPARE(row(u"bare.mp3"_s).column(1), cannot);
    convert();
    QCOMPARE(read(u"bare.mp3"_s), audio);
    QCOMPARE(row(u"bare.mp3"_s).Text, u"bare.mp3"_s);
    QCOMPARE(messages(), QStringList());
    QCOMPARE(refreshes_, 1);
}

void TestAutoConvert::the_button_converts_what_is_ticked()
{
    const QByteArray before = tagged("Bob", "Sky");
    write(u"a.mp3"_s, tagged(tag_of(" An?n ", "Sea ", 7, ' ')));
    write(u"b.mp3"_s, before);
    open_for_all();
    untick(u"b.mp3"_s);
    preview();
    convert();
    const QString name = u"[Ann][Sea][Hip_Hop].mp3"_s;
    QCOMPARE(tag(name), (TagTexts{"Ann", "Sea", 7}));
    QVERIFY(!exists(u"a.mp3"_s));
    QCOMPARE(read(u"b.mp3"_s), before);
    QCOMPARE(row(u"a.mp3"_s).Text, name); // the key keeps the old name
    QCOMPARE(row(u"a.mp3"_s).SmallIcon, 1);
    QCOMPARE(row(u"b.mp3"_s).Text, u"b.mp3"_s);
    QCOMPARE(row(u"b.mp3"_s).SmallIcon, 2);
    QCOMPARE(panes_->names(), (QStringList{name, u"b.mp3"_s})); // the main list follows
    QCOMPARE(refreshes_, 1);
    QVERIFY(form_->isVisible());
    QCOMPARE(player_.take(), QStringList());
}

void TestAutoConvert::fixed_values_go_into_every_name()
{
    write(u"[Ann][Sea].mp3"_s, tagged("Old", "Older", 200));
    write(u"b.mp3"_s, tagged("Bob", "Sky", 13));
    open_for_all();
    fix_artist(u"  Vari?ous "_s);
    fix_genre(u" Hip_Hop"_s);
    preview();
    QCOMPARE(row(u"[Ann][Sea].mp3"_s).column(1), u"[Various][Sea][Hip_Hop].mp3"_s);
    convert();
    QCOMPARE(tag(u"[Various][Sea][Hip_Hop].mp3"_s), (TagTexts{"Various", "Sea", 7}));
    QCOMPARE(tag(u"[Various][Sky][Hip_Hop].mp3"_s), (TagTexts{"Various", "Sky", 7}));
}

void TestAutoConvert::fixed_values_changed_after_the_preview_count()
{
    write(u"a.mp3"_s, tagged("Ann", "Sea"));
    open_for_all();
    fix_artist(u"Bob"_s);
    preview();
    QCOMPARE(row(u"a.mp3"_s).column(1), u"[Bob][Sea][Rock].mp3"_s);
    fix_artist(u"Cid"_s);
    convert();
    QVERIFY(exists(u"[Cid][Sea][Rock].mp3"_s));
    QCOMPARE(row(u"a.mp3"_s).column(1), u"[Bob][Sea][Rock].mp3"_s); // as previewed
    QCOMPARE(messages(), QStringList());
}

void TestAutoConvert::a_name_of_another_shape_is_written_anew_data()
{
    QTest::addColumn<i16>("fif_type");
    QTest::addColumn<QString>("old_name");
    QTest::addColumn<QString>("new_name");

    const QString round = u"(A[n]n)(Sea-side)(Rock).mp3"_s;
    QTest::newRow("square brackets with genre") << i16(1) << round << u"[Ann][Sea-side][Rock].mp3"_s;
    QTest::newRow("square brackets") << i16(2) << round << u"[Ann][Sea-side].mp3"_s;
    QTest::newRow("round brackets with genre") << i16(3) << u"[A(n)n][Sea][Rock].mp3"_s << u"(Ann)(Sea)(Rock).mp3"_s;
    QTest::newRow("round brackets") << i16(4) << round << u"(A[n]n)(Sea-side).mp3"_s;
    QTest::newRow("dashes with genre") << i16(5) << round << u"Ann-Seaside-Rock.mp3"_s;
    QTest::newRow("dashes") << i16(6) << round << u"Ann-Seaside.mp3"_s;
}

void TestAutoConvert::a_name_of_another_shape_is_written_anew()
{
    QFETCH(i16, fif_type);
    QFETCH(QString, old_name);
    QFETCH(QString, new_name);

    write(old_name, tagged("Old", "Older", 200));
    shared.fif_type = fif_type;
    open_for_all();
    preview();
    QCOMPARE(row(old_name).column(1), new_name);
    convert();
    QVERIFY(exists(new_name));
    QVERIFY(!exists(old_name));
    QCOMPARE(tag(new_name).genre, 17); // also where the name drops it
}

void TestAutoConvert::a_name_in_the_present_shape_stays()
{
    const QByteArray before = tagged("Old", "Older");
    write(u"[Ann][Sea][Pop].mp3"_s, before);
    open_for_all();
    preview();
    convert();
    QCOMPARE(messages(), QStringList());
    QCOMPARE(read(u"[Ann][Sea][Pop].mp3"_s), before);
    QCOMPARE(row(u"[Ann][Sea][Pop].mp3"_s).Text, u"[Ann][Sea][Pop].mp3"_s);
}

void TestAutoConvert::an_existing_target_is_passed_over_silently()
{
    const QByteArray before = tagged("Ann", "Sea");
    const QByteArray other = tagged("Another", "File");
    write(u"a.mp3"_s, before);
    open_for_all();
    write(u"[Ann][Sea][Rock].mp3"_s, other);
    preview();
    convert();
    QCOMPARE(messages(), QStringList());
    QCOMPARE(read(u"a.mp3"_s), before);
    QCOMPARE(read(u"[Ann][Sea][Rock].mp3"_s), other);
    QCOMPARE(row(u"a.mp3"_s).Text, u"[Ann][Sea][Rock].mp3"_s); // shown all the same
    QCOMPARE(row(u"a.mp3"_s).SmallIcon, 1);
}

void TestAutoConvert::a_target_that_no_test_sees_stays_data()
{
    QTest::addColumn<bool>("is_link");
    QTest::newRow("a folder") << false;
    QTest::newRow("a dangling link") << true;
}

void TestAutoConvert::a_target_that_no_test_sees_stays()
{
    QFETCH(bool, is_link);

    const QByteArray before = tagged("Ann", "Sea");
    write(u"a.mp3"_s, before);
    open_for_all();
    const fs::path target = native(u"[Ann][Sea][Rock].mp3"_s);
    if (is_link)
        fs::create_symlink("nowhere", target);
    else
        fs::create_directory(target);
    preview();
    convert();
    QCOMPARE(messages(), QStringList{no_tag_written});
    QCOMPARE(read(u"a.mp3"_s), before);
    QCOMPARE(fs::is_symlink(fs::symlink_status(target)), is_link);
    QCOMPARE(fs::is_directory(fs::symlink_status(target)), !is_link);
}

void TestAutoConvert::a_listed_file_takes_its_tag_from_the_new_name_data()
{
    QTest::addColumn<i16>("fif_type");
    QTest::addColumn<bool>("listed");
    QTest::addColumn<QString>("new_name");
    QTest::addColumn<QByteArray>("title");
    QTest::addColumn<int>("genre");

    // An artist of 30 letters and a title that has to be cut; the fixed genre is "Pop", 13, the tag's 17.
    const QString artist(30, u'A');
    const QString with_genre = u"["_s + artist + u"][Twenty-seven lette..][Pop].mp3"_s;
    QTest::newRow("listed: the cut title") << i16(1) << true << with_genre << "Twenty-seven lette.."_ba << 13;
    QTest::newRow("unlisted: the whole title")
        << i16(1) << false << with_genre << "Twenty-seven letters, no more"_ba << 13;
    const QString without_genre = u"["_s + artist + u"][Twenty-seven letters, n..].mp3"_s;
    QTest::newRow("listed, no genre in the name: that of the tag")
        << i16(2) << true << without_genre << "Twenty-seven letters, n.."_ba << 17;
    QTest::newRow("unlisted, no genre in the name: the fixed one")
        << i16(2) << false << without_genre << "Twenty-seven letters, no more"_ba << 13;
}

void TestAutoConvert::a_listed_file_takes_its_tag_from_the_new_name()
{
    QFETCH(i16, fif_type);
    QFETCH(bool, listed);
    QFETCH(QString, new_name);
    QFETCH(QByteArray, title);
    QFETCH(int, genre);

    const QByteArray artist(30, 'A');
    write(u"a.mp3"_s, tagged(artist, "Twenty-seven letters, no more"));
    shared.fif_type = fif_type;
    open_for_all();
    if (listed)
        panes_->tick(u"a.mp3"_s);
    fix_genre(u"Pop"_s);
    preview();
    convert();
    QCOMPARE(row(u"a.mp3"_s).Text, new_name);
    QCOMPARE(tag(new_name), (TagTexts{artist, title, genre}));
    QCOMPARE(shared.final_list_count, listed ? 1 : 0);
    if (listed) {
        QCOMPARE(shared.final_list[0].name, new_name);
        QCOMPARE(shared.final_list[0].full_path, folder + new_name);
        QCOMPARE(shared.final_list[0].kind, i16(1));
        QCOMPARE(panes_->ticked_names(), QStringList{new_name});
    }
    QCOMPARE(messages(), QStringList());
}

void TestAutoConvert::a_name_that_is_listed_already_comes_too_late()
{
    write(u"a.mp3"_s, tagged("Ann", "Sea"));
    open_for_all();
    panes_->tick(u"a.mp3"_s);
    const QString name = u"[Ann][Sea][Rock].mp3"_s;
    QCOMPARE(add_to_final_list(name, u"C:\\Else\\"_s, u"C:\\Else\\"_s + name, 1, {}, {}), added);
    preview();
    QStringList shown;
    set_message_box([&](const QString& text, int /*style*/, const QString& /*title*/) {
        shown.append(text);
        Check_file_for_fif(u"[Other][Track][Pop].mp3"_s); // the player went on to its next file meanwhile
    });
    convert();
    set_message_box({});
    QCOMPARE(shown, QStringList{name + u" already exists in MP3 File List"_s});
    QVERIFY(exists(name)); // the file has been renamed already
    QCOMPARE(tag(name), (TagTexts{"Ann", "Sea", 17}));
    QCOMPARE(shared.final_list[0].name, u"a.mp3"_s);
}

void TestAutoConvert::a_too_long_artist_does_not_stop_the_others()
{
    const QByteArray before = tagged(QByteArray(30, 'A'), "Sea", 140); // "Contemporary Christian"
    write(u"a.mp3"_s, before);
    write(u"b.mp3"_s, tagged("Bob", "Sky"));
    open_for_all();
    preview();
    QCOMPARE(messages(), QStringList{u"a.mp3 is too long"_s});
    QCOMPARE(row(u"a.mp3"_s).column(1), QString());
    QCOMPARE(row(u"b.mp3"_s).column(1), u"[Bob][Sky][Rock].mp3"_s);
    convert();
    QCOMPARE(messages(), QStringList{u"a.mp3 is too long"_s});
    QCOMPARE(read(u"a.mp3"_s), before);
    QCOMPARE(row(u"a.mp3"_s).Text, u"a.mp3"_s);
    QVERIFY(exists(u"[Bob][Sky][Rock].mp3"_s));
}

void TestAutoConvert::long_artists_data()
{
    QTest::addColumn<i16>("fif_type");
    QTest::addColumn<QString>("shape");
    QTest::addColumn<int>("longest"); // bytes of the longest artist with a title of three letters

    QTest::newRow("square brackets with genre") << i16(1) << u"[%1][Sea].mp3"_s << 53;
    QTest::newRow("square brackets") << i16(2) << u"[%1][Sea].mp3"_s << 53;
    QTest::newRow("round brackets with genre") << i16(3) << u"(%1)(Sea).mp3"_s << 53;
    QTest::newRow("round brackets") << i16(4) << u"(%1)(Sea).mp3"_s << 53;
    QTest::newRow("dashes with genre") << i16(5) << u"%1-Sea.mp3"_s << 56;
    QTest::newRow("dashes") << i16(6) << u"%1-Sea.mp3"_s << 56;
}

void TestAutoConvert::long_artists()
{
    QFETCH(i16, fif_type);
    QFETCH(QString, shape);
    QFETCH(int, longest);

    shared.fif_type = fif_type;
    write(u"(Ann)(Sea).mp3"_s, tagged("Old", "Older"));
    open_for_all();
    for (int bytes = 52; bytes <= 60; ++bytes) {
        QStringList artists = {QString(bytes, u'A')};
        if (bytes % 2 == 0)
            artists.append(QString(bytes / 2, QChar(0xAC00)));
        artists.append(QString(bytes % 2 == 0 ? 2 : 1, u'A') + QString((bytes - 1) / 2, QChar(0xAC00)));
        for (const QString& artist : artists) {
            fix_artist(artist);
            preview();
            QCOMPARE(messages(), bytes <= longest ? QStringList() : QStringList{u"(Ann)(Sea).mp3 is too long"_s});
            QCOMPARE(row(u"(Ann)(Sea).mp3"_s).column(1), bytes <= longest ? shape.arg(artist) : QString());
        }
    }
}

void TestAutoConvert::a_file_in_the_player_is_let_go_data()
{
    QTest::addColumn<bool>("playing");
    QTest::newRow("while it plays") << true;
    QTest::newRow("while it stands stopped") << false;
}

void TestAutoConvert::a_file_in_the_player_is_let_go()
{
    QFETCH(bool, playing);

    write(u"a.mp3"_s, tagged("Ann", "Sea"));
    write(u"b.mp3"_s, tagged("Bob", "Sky"));
    open_for_all();
    preview();
    NotedTransport::load(folder + u"a.mp3"_s, playing);
    bool was_there = false;
    player_.on_release = [&] { was_there = exists(u"a.mp3"_s); };
    convert();
    const QString name = u"[Ann][Sea][Rock].mp3"_s;
    QStringList calls = {u"release"_s, u"play %1%2 as %2"_s.arg(folder, name)};
    if (!playing)
        calls.append(u"StopBtn"_s);
    QVERIFY(was_there);
    QCOMPARE(player_.take(), calls);
    QCOMPARE(shared.playing_mp3_path, folder + name);
    QCOMPARE(shared.is_playing, i16(playing ? 1 : 0));
    QCOMPARE(tag(name), (TagTexts{"Ann", "Sea", 17}));
    QVERIFY(exists(u"[Bob][Sky][Rock].mp3"_s));
}

void TestAutoConvert::a_file_in_the_player_comes_back_under_its_old_name()
{
    write(u"a.mp3"_s, tagged(QByteArray(30, 'A'), "Sea", 140));
    open_for_all();
    preview();
    NotedTransport::load(folder + u"a.mp3"_s, true);
    convert();
    QCOMPARE(player_.take(), (QStringList{u"release"_s, u"play %1a.mp3 as a.mp3"_s.arg(folder)}));
    QCOMPARE(shared.playing_mp3_path, folder + u"a.mp3"_s);
}

void TestAutoConvert::a_fif_name_without_a_tag_keeps_its_length()
{
    const QByteArray audio = sample_audio({.frames = 2});
    write(u"Ann-Sea.mp3"_s, audio);
    open_for_all();
    preview();
    convert();
    const QByteArray after = read(u"[Ann][Sea].mp3"_s);
    QCOMPARE(after.size(), audio.size());
    QCOMPARE(after.chopped(128), audio.chopped(128));
    QCOMPARE(tag_in(after), (TagTexts{"Ann", "Sea", 12}));
}

void TestAutoConvert::a_genre_that_no_list_holds_keeps_the_byte()
{
    write(u"a.mp3"_s, tagged("Ann", "Sea", 200));
    open_for_all();
    fix_genre(u"My Own"_s);
    preview();
    convert();
    QCOMPARE(tag(u"[Ann][Sea][My Own].mp3"_s), (TagTexts{"Ann", "Sea", 200}));
    QCOMPARE(messages(), QStringList());
}

void TestAutoConvert::files_changed_meanwhile()
{
    const QByteArray before = tagged("Ann", "Sea");
    write(u"a-gone.mp3"_s, tagged("Old", "Older"));
    write(u"b gone.mp3"_s, tagged("Bob", "Sky"));
    write(u"c.mp3"_s, tagged("Cid", "Sun"));
    write(u"d.mp3"_s, before);
    open_for_all();
    preview();
    fs::remove(native(u"a-gone.mp3"_s));
    fs::remove(native(u"b gone.mp3"_s));
    fs::permissions(native(u"c.mp3"_s), fs::perms::owner_read);
    fs::rename(native(u"d.mp3"_s), native(u"e.mp3"_s));
    convert();
    QCOMPARE(messages(), QStringList{no_tag_written});    // for the FIF name, which no file has to bear out
    QCOMPARE(row(u"b gone.mp3"_s).Text, u"b gone.mp3"_s); // without its tag it can't be converted
    QCOMPARE(tag(u"[Cid][Sun][Rock].mp3"_s), (TagTexts{"Cid", "Sun", 17})); // opened up
    QCOMPARE(read(u"e.mp3"_s), before);
    QVERIFY(!exists(u"[a][gone].mp3"_s));
    QCOMPARE(panes_->names(), (QStringList{u"[Cid][Sun][Rock].mp3"_s, u"e.mp3"_s}));
}

void TestAutoConvert::a_second_press_goes_by_the_new_names()
{
    write(u"a.mp3"_s, tagged("Ann", "Sea"));
    open_for_all();
    preview();
    convert();
    shared.fif_type = 6;
    convert(); // no new preview is asked for
    QCOMPARE(messages(), QStringList());
    QCOMPARE(tag(u"Ann-Sea.mp3"_s), (TagTexts{"Ann", "Sea", 17}));
    QCOMPARE(row(u"a.mp3"_s).Text, u"Ann-Sea.mp3"_s);
    QVERIFY(!exists(u"[Ann][Sea][Rock].mp3"_s));
}

void TestAutoConvert::files_of_another_folder_stay()
{
    const QByteArray before = tagged("Ann", "Sea");
    const QString live = u"C:\\Music\\Live\\"_s;
    write(u"01.mp3"_s, before);
    panes_->disk.write(live + u"01.mp3"_s, tagged("Bob", "Sky"));
    panes_->click_folder(u"C:"_s);
    panes_->click_folder(u"C:\\Music"_s);
    panes_->click_folder(u"C:\\Music\\Live"_s);
    open();
    preview();
    untick(u"01.mp3"_s);
    fs::remove_all(panes_->disk.native(live).toStdString());
    convert(); // nothing is ticked, but the main window looks at the disk again
    QCOMPARE(shared.current_folder, folder);
    panes_->messages.take();
    tick(u"01.mp3"_s);

    preview();
    convert();

    QCOMPARE(row(u"01.mp3"_s).column(1), cannot);
    QCOMPARE(read(u"01.mp3"_s), before);
    QCOMPARE(panes_->names(), QStringList{u"01.mp3"_s});
}

void TestAutoConvert::columns_sort_by_the_shared_toggles_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("toggle");

    QTest::newRow("the name") << 0 << 0;
    QTest::newRow("the preview") << 1 << 1;
    QTest::newRow("the folder") << 2 << 2;
    QTest::newRow("not the size") << 3 << -1;
}

void TestAutoConvert::columns_sort_by_the_shared_toggles()
{
    QFETCH(int, column);
    QFETCH(int, toggle);

    for (const QString& number : {u"2"_s, u"3"_s, u"1"_s})
        write(number + u".mp3"_s,
              sample_audio({.frames = 3 * number.toInt()}) + sample_tag({.title = number.toLatin1(), .artist = "A"}));
    open_for_all();
    preview();
    const auto names = [this] {
        QStringList texts;
        for (int index = 1; index <= rows().Count(); ++index)
            texts.append(rows().Item(index).Text);
        return texts;
    };
    const QStringList unsorted = names();
    const QStringList ascending = {u"1.mp3"_s, u"2.mp3"_s, u"3.mp3"_s};
    const QStringList descending = {u"3.mp3"_s, u"2.mp3"_s, u"1.mp3"_s};
    const bool sorts = toggle == 0 || toggle == 1;
    Q_EMIT rows().ColumnClick(column);
    QCOMPARE(names(), sorts ? descending : unsorted); // all folders are one
    for (int each = 0; each < 3; ++each)
        QCOMPARE(shared.possible_sort_toggles.at(static_cast<std::size_t>(each)), i16(each == toggle ? 1 : 0));
    Q_EMIT rows().ColumnClick(column);
    QCOMPARE(names(), sorts ? ascending : unsorted);
    QCOMPARE(shared.possible_sort_toggles, (std::array<i16, 3>{0, 0, 0}));

    // A sorted list is converted row by row all the same.
    convert();
    for (int index = 1; index <= 3; ++index)
        QVERIFY(exists(u"[A][%1][Other].mp3"_s.arg(index)));
}

void TestAutoConvert::the_pointer_lights_one_button()
{
    write(u"a.mp3"_s, tagged("Ann", "Sea"));
    open_for_all();
    const auto lit = [this] {
        QStringList names;
        for (const UsrButton* each : form_->findChildren<UsrButton*>()) {
            if (each->shown() == UsrButton::Shown::move)
                names.append(each->objectName());
        }
        return names;
    };
    QWidget* const places_that_put_out[] = {form_.get(), rows().view()->viewport(), &control<StatusBar>("StatusBar1")};
    const char* const buttons[] = {"freeview", "autoconvert", "Cancel"};
    for (int each = 0; each < 3; ++each) {
        QTest::mouseMove(&control<UsrButton>(buttons[each]));
        QTRY_COMPARE(lit(), QStringList{QLatin1StringView(buttons[each])});
        QTest::mouseMove(places_that_put_out[each], QPoint(4, 4));
        QTRY_COMPARE(lit(), QStringList());
    }
    press("Cancel");
    QVERIFY(!form_->isVisible());
}

void TestAutoConvert::keys_reach_everything()
{
    write(u"a.mp3"_s, tagged("Ann", "Sea"));
    open_for_all();
    QCOMPARE(form_->focusWidget()->objectName(), u"freeview"_s);
    QTest::keyClick(form_->focusWidget(), Qt::Key_Return);
    QCOMPARE(row(u"a.mp3"_s).column(1), u"[Ann][Sea][Rock].mp3"_s);

    const auto focused = [this] {
        const bool in_rows = rows().isAncestorOf(form_->focusWidget());
        return in_rows ? rows().objectName() : form_->focusWidget()->objectName();
    };
    QStringList order;
    for (int step = 0; step < 8; ++step) {
        QTest::keyClick(form_->focusWidget(), Qt::Key_Tab);
        order.append(focused());
    }
    QCOMPARE(order, (QStringList{u"autoconvert"_s, u"Cancel"_s, u"Selected_ListView"_s, u"txtArtist"_s,
                                 u"Check_Artist"_s, u"txtGenre"_s, u"Check_Genre"_s, u"freeview"_s}));
}

void TestAutoConvert::thousands_of_rows_are_done_once()
{
    constexpr int count = 10000;
    for (int number = 0; number < count; ++number)
        write(u"%1.mp3"_s.arg(number), sample_tag({.title = QByteArray::number(number), .artist = "Ann", .genre = 17}));
    open_for_all();
    QCOMPARE(status(), u"10000files"_s);
    QElapsedTimer time;
    time.start();
    preview();
    qInfo("preview: %lld ms", time.restart());
    QTimer timer; // what runs beside it goes on, and the windows are painted
    int ticks = 0;
    connect(&timer, &QTimer::timeout, this, [&ticks] { ++ticks; });
    timer.start(10);
    convert();
    QVERIFY(ticks > 0);
    QCOMPARE(refreshes_, 1);
    qInfo("conversion: %lld ms", time.elapsed());
    QCOMPARE(messages(), QStringList());
    for (int index = 1; index <= count; ++index) {
        const ListRow& item = rows().Item(index);
        const QString name = u"[Ann][%1][Rock].mp3"_s.arg(stem_of(item.Key));
        QCOMPARE(item.column(1), name);
        QCOMPARE(item.Text, name);
    }
    QCOMPARE(panes_->list_view.Count(), count);
    for (int index = 1; index <= count; ++index) {
        const QString name = panes_->list_view.Item(index).Text;
        QVERIFY(name.startsWith(u"[Ann]["_s));
        QCOMPARE(tag(name).title, name.mid(6).section(u']', 0, 0).toLatin1());
    }
}

QUILMO_UI_TEST(TestAutoConvert)

#include "test_auto_convert.moc"
