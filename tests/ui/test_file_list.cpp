#include "core/mod_of_grobal_var.h"
#include "mp3/cIDV3.h"
#include "platform/drives.h"
#include "sample_files.h"
#include "selection/final_list.h"
#include "ui_explorer.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QContextMenuEvent>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QLocale>
#include <QSignalSpy>
#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utime.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 mebibyte = 1048576;

QByteArray tagged(const QByteArray& artist, const QByteArray& title, unsigned char genre = 17)
{
    return sample_audio({.frames = 2}) + sample_tag({.title = title, .artist = artist, .genre = genre});
}

/// A file of `size` bytes that takes no room on disk.
void make_sparse_file(const QByteArray& native, qint64 size)
{
    const int descriptor = open(native.constData(), O_CREAT | O_WRONLY | O_CLOEXEC, 0644);
    if (descriptor < 0 || ftruncate(descriptor, size) != 0)
        qFatal("can't make %s", native.constData());
    close(descriptor);
}

} // namespace

class TestFileList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void which_names_are_listed_data();
    void which_names_are_listed();
    void a_row_shows_its_size_data();
    void a_row_shows_its_size();
    void a_row_shows_type_and_date();
    void the_picture_tells_a_FIF_name_data();
    void the_picture_tells_a_FIF_name();
    void a_path_without_backslash_is_filled_as_well();
    void the_folder_text_tells_which_rows_are_ticked();

    void megabytes_are_rounded_file_by_file_data();
    void megabytes_are_rounded_file_by_file();
    void an_empty_folder_clears_the_details();
    void the_first_row_is_clicked_by_itself();
    void a_file_of_the_selected_name_keeps_the_old_path();
    void the_selected_name_compares_by_case();
    void the_selected_name_is_shown_as_a_name_whatever_it_is();
    void nothing_of_a_row_outlives_a_fill();

    void a_click_shows_the_file_data();
    void a_click_shows_the_file();
    void a_click_on_no_row_ends_silently();
    void a_click_by_mouse_reaches_the_list();
    void the_file_name_box_shows_the_key();

    void a_column_click_sorts_and_turns_round();
    void sizes_sort_as_text();
    void other_columns_do_nothing();
    void a_header_click_reaches_the_list();

    void the_right_button_opens_the_menu_data();
    void the_right_button_opens_the_menu();
    void the_left_button_beside_the_rows_takes_the_selection_off();
    void a_double_click_plays_a_row_only();
    void the_menu_key_opens_the_menu();
    void focus_goes_to_the_list();
    void the_view_changes();

    void a_folder_that_cannot_be_listed_data();
    void a_folder_that_cannot_be_listed();
    void an_unreadable_folder();
    void the_parent_is_filled_when_it_was_the_current_one();
    void more_files_than_the_counter_holds();

    void short_files_are_listed();
    void huge_files_are_listed();
    void only_regular_files_are_listed();
    void odd_file_names_data();
    void odd_file_names();
    void an_unreadable_file_is_listed();

private:
    QString folder(const QString& name = u"C:\\Music"_s) const { return panes_->disk.make_folder(name); }
    void write(const QString& name, const QByteArray& content = QByteArray(200, 'x')) const;
    void fill(const QString& path = u"C:\\Music\\"_s);
    void show_list();
    QAbstractItemView* view() const { return panes_->list_view.view(); }
    QPoint in_view(QPoint point) const { return view()->viewport()->mapFrom(&panes_->list_view, point); }
    QPoint beside_the_rows() const { return {50, view()->viewport()->height() - 5}; }
    QPoint on_row(const QString& name) const;

    std::unique_ptr<ExplorerPanes> panes_;
};

void TestFileList::init()
{
    panes_ = std::make_unique<ExplorerPanes>();
    folder();
}

void TestFileList::cleanup()
{
    panes_.reset();
}

void TestFileList::write(const QString& name, const QByteArray& content) const
{
    panes_->disk.write(u"C:\\Music\\"_s + name, content);
}

void TestFileList::fill(const QString& path)
{
    shared.current_folder = path;
    panes_->list.FillListView(path);
}

void TestFileList::show_list()
{
    panes_->list_view.resize(700, 300);
    panes_->list_view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&panes_->list_view));
}

QPoint TestFileList::on_row(const QString& name) const
{
    const QRect row = panes_->list_view.row_rect(panes_->row_of(name));
    return in_view(QPoint(row.left() + 60, row.center().y()));
}

void TestFileList::which_names_are_listed_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("listed");

    QTest::newRow("capitals") << u"song.MP3"_s << true;
    QTest::newRow("small letters") << u"song.mp3"_s << true;
    QTest::newRow("mixed letters") << u"song.Mp3"_s << true;
    QTest::newRow("no dot") << u"songmp3"_s << true;
    QTest::newRow("nothing before it") << u"MP3"_s << true;
    QTest::newRow("just the extension") << u".mp3"_s << true;
    QTest::newRow("one letter more") << u"song.mp3x"_s << false;
    QTest::newRow("one letter less") << u"p3"_s << false;
    QTest::newRow("another type") << u"song.mp2"_s << false;
    QTest::newRow("a blank behind") << u"song.mp3 "_s << false;
}

void TestFileList::which_names_are_listed()
{
    QFETCH(const QString, name);
    QFETCH(const bool, listed);
    write(name);
    fill();
    QCOMPARE(panes_->names(), listed ? QStringList{name} : QStringList());
    QCOMPARE(shared.folder_mp3_count, listed ? 1 : 0);
    if (listed)
        QCOMPARE(panes_->row(name).Key, name);
}

void TestFileList::a_row_shows_its_size_data()
{
    QTest::addColumn<qint64>("bytes");
    QTest::addColumn<QString>("kilobytes");
    QTest::addColumn<QString>("exact");

    QTest::newRow("an empty file") << qint64{0} << u"KB"_s << u"0"_s;
    QTest::newRow("under half a kilobyte") << qint64{511} << u"KB"_s << u"511"_s;
    QTest::newRow("half a kilobyte goes to 0") << qint64{512} << u"KB"_s << u"512"_s;
    QTest::newRow("just over half") << qint64{513} << u"1KB"_s << u"513"_s;
    QTest::newRow("1.5 goes to the even neighbour") << qint64{1536} << u"2KB"_s << u"1536"_s;
    QTest::newRow("2.5 goes to the even neighbour") << qint64{2560} << u"2KB"_s << u"2560"_s;
    QTest::newRow("3.5 goes to the even neighbour") << qint64{3584} << u"4KB"_s << u"3584"_s;
    QTest::newRow("999 kilobytes") << qint64{1022976} << u"999KB"_s << u"1022976"_s;
    QTest::newRow("thousands are grouped") << qint64{1024000} << u"1,000KB"_s << u"1024000"_s;
    QTest::newRow("300 MB") << 300 * mebibyte << u"307,200KB"_s << u"314572800"_s;
    QTest::newRow("5 GB") << 5120 * mebibyte << u"5,242,880KB"_s << u"5368709120"_s;
}

void TestFileList::a_row_shows_its_size()
{
    QFETCH(const qint64, bytes);
    QFETCH(const QString, kilobytes);
    QFETCH(const QString, exact);
    make_sparse_file(panes_->disk.native(u"C:\\Music\\a.mp3"_s), bytes);
    fill();
    QCOMPARE(panes_->row(u"a.mp3"_s).column(1), kilobytes);
    QCOMPARE(panes_->row(u"a.mp3"_s).column(4), exact);
}

void TestFileList::a_row_shows_type_and_date()
{
    write(u"a.mp3"_s);
    write(u"foomp3"_s);
    const QDateTime moment(QDate(2003, 4, 5), QTime(16, 7, 8));
    const utimbuf times = {.actime = moment.toSecsSinceEpoch(), .modtime = moment.toSecsSinceEpoch()};
    QCOMPARE(utime(panes_->disk.native(u"C:\\Music\\a.mp3"_s).constData(), &times), 0);
    fill();
    QCOMPARE(panes_->row(u"a.mp3"_s).column(2), u"MP3 File"_s);
    QCOMPARE(panes_->row(u"foomp3"_s).column(2), u"File"_s);
    const QLocale locale = QLocale::system();
    QCOMPARE(panes_->row(u"a.mp3"_s).column(3), locale.toString(moment.date(), QLocale::ShortFormat) + u' ' +
                                                    locale.toString(moment.time(), QLocale::ShortFormat));
}

void TestFileList::the_picture_tells_a_FIF_name_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("picture");

    QTest::newRow("a FIF name") << u"[Artist][Title].mp3"_s << QByteArray("x") << 1;
    QTest::newRow("a name that its tag can convert") << u"track01.mp3"_s << tagged("Artist", "Title") << 2;
    QTest::newRow("a name and no tag") << u"track01.mp3"_s << QByteArray("x") << 2;
}

void TestFileList::the_picture_tells_a_FIF_name()
{
    QFETCH(const QString, name);
    QFETCH(const QByteArray, content);
    QFETCH(const int, picture);
    write(name, content);
    fill();
    QCOMPARE(panes_->row(name).SmallIcon, picture);
}

void TestFileList::a_path_without_backslash_is_filled_as_well()
{
    write(u"a.mp3"_s);
    panes_->disk.write(u"C:\\top.mp3"_s, "x");
    add_to_final_list(u"a.mp3"_s, u"C:\\Music\\"_s, u"C:\\Music\\a.mp3"_s, 1, {}, {});
    panes_->list.FillListView(u"C:\\Music"_s);
    QCOMPARE(panes_->ticked_names(), QStringList{u"a.mp3"_s});
    panes_->list.FillListView(u"C:"_s);
    QCOMPARE(panes_->names(), QStringList{u"top.mp3"_s});
    panes_->list.FillListView(u"C:\\"_s);
    QCOMPARE(panes_->names(), QStringList{u"top.mp3"_s});
}

void TestFileList::the_folder_text_tells_which_rows_are_ticked()
{
    write(u"a.mp3"_s);
    write(u"b.mp3"_s);
    panes_->disk.write(u"C:\\Other\\b.mp3"_s, "x");
    panes_->disk.write(u"C:\\top.mp3"_s, "x");
    add_to_final_list(u"a.mp3"_s, u"C:\\Music\\"_s, u"C:\\Music\\a.mp3"_s, 1, {}, {});
    add_to_final_list(u"b.mp3"_s, u"C:\\Other\\"_s, u"C:\\Other\\b.mp3"_s, 1, {}, {});
    add_to_final_list(u"top.mp3"_s, u"C:\\"_s, u"C:\\top.mp3"_s, 1, {}, {});
    fill();
    QCOMPARE(panes_->ticked_names(), QStringList{u"a.mp3"_s});
    fill(u"C:\\Other\\"_s);
    QCOMPARE(panes_->ticked_names(), QStringList{u"b.mp3"_s});
    fill(u"C:\\"_s);
    QCOMPARE(panes_->ticked_names(), QStringList{u"top.mp3"_s});
    remove_from_final_list(u"a.mp3"_s, u"C:\\Music\\"_s, {}, 1);
    fill();
    QCOMPARE(panes_->ticked_names(), QStringList());
}

void TestFileList::megabytes_are_rounded_file_by_file_data()
{
    QTest::addColumn<qint64>("bytes");
    QTest::addColumn<int>("files");
    QTest::addColumn<QString>("panel");

    QTest::newRow("files of 0.4 MB stay at 0") << mebibyte * 4 / 10 << 7 << u"0 MB"_s;
    QTest::newRow("files of 0.6 MB gain 1 each") << mebibyte * 6 / 10 << 7 << u"7 MB"_s;
    QTest::newRow("half a megabyte stays at the even 0") << mebibyte / 2 << 5 << u"0 MB"_s;
    QTest::newRow("1.5, then 3.5 go up to even numbers") << mebibyte * 3 / 2 << 2 << u"4 MB"_s;
    QTest::newRow("2.5, then 4.5 stay at even numbers") << mebibyte * 5 / 2 << 2 << u"4 MB"_s;
    QTest::newRow("one whole megabyte") << mebibyte << 1 << u"1 MB"_s;
    QTest::newRow("beyond 32 bits of bytes") << 5120 * mebibyte << 2 << u"10240 MB"_s;
}

void TestFileList::megabytes_are_rounded_file_by_file()
{
    QFETCH(const qint64, bytes);
    QFETCH(const int, files);
    QFETCH(const QString, panel);
    for (int number = 0; number < files; ++number)
        make_sparse_file(panes_->disk.native(u"C:\\Music\\%1.mp3"_s.arg(number)), bytes);
    fill();
    QCOMPARE(panes_->status_bar.panel_text(1), QString::number(files) + u" File"_s);
    QCOMPARE(panes_->status_bar.panel_text(2), panel);
    QCOMPARE(shared.folder_mp3_count, files);
    fill();
    QCOMPARE(panes_->status_bar.panel_text(2), panel);
}

void TestFileList::an_empty_folder_clears_the_details()
{
    write(u"[A][B].mp3"_s);
    fill();
    panes_->fields.filesize = u"8 byte"_s;
    panes_->fields.genre = u"kept"_s;
    panes_->fields.genre_box.position = 5;
    const QString selected_path = shared.selected_mp3_path;
    fill(folder(u"C:\\Empty"_s));
    QCOMPARE(panes_->names(), QStringList());
    QCOMPARE(panes_->status_bar.panel_text(1), u"0 File"_s);
    QCOMPARE(panes_->status_bar.panel_text(2), u"0 MB"_s);
    QCOMPARE(panes_->fields.filename, QString());
    QCOMPARE(panes_->fields.artist, QString());
    QCOMPARE(panes_->fields.title, QString());
    QCOMPARE(panes_->fields.filesize, u"0"_s);
    QCOMPARE(panes_->fields.genre, u"kept"_s);
    QCOMPARE(panes_->fields.genre_box.position, 0);
    QCOMPARE(shared.selected_mp3_name, u"[A][B].mp3"_s);
    QCOMPARE(shared.selected_mp3_path, selected_path);
}

void TestFileList::the_first_row_is_clicked_by_itself()
{
    write(u"a.mp3"_s, tagged("Artist", "Title"));
    write(u"b.mp3"_s, tagged("Artist", "Title"));
    fill();
    const QString first = panes_->list_view.Item(1).Text;
    QCOMPARE(panes_->selected_names(), QStringList{first});
    QCOMPARE(panes_->fields.filename, first);
    QCOMPARE(panes_->fields.artist, u"Artist"_s);
    QCOMPARE(shared.selected_mp3_name, first);
    QCOMPARE(shared.selected_mp3_path, u"C:\\Music\\"_s + first);
    QCOMPARE(panes_->picks.last_row_index, 1);
    QCOMPARE(shared.focus_pane, pane_list);
}

void TestFileList::a_file_of_the_selected_name_keeps_the_old_path()
{
    panes_->disk.write(u"C:\\Other\\[A][B].mp3"_s, tagged("Other", "Tag", 9));
    write(u"[A][B].mp3"_s, "x");
    write(u"[C][D].mp3"_s, "x");
    fill();
    panes_->list.ItemClick(panes_->row_of(u"[A][B].mp3"_s));
    shared.selected_mp3_path = u"something else"_s;
    shared.focus_pane = pane_none;
    panes_->picks.last_row_index = 7;
    fill(u"C:\\Other\\"_s);
    QCOMPARE(panes_->selected_names(), QStringList{u"[A][B].mp3"_s});
    QCOMPARE(shared.selected_mp3_full, u"C:\\Music\\[A][B].mp3"_s);
    QCOMPARE(shared.selected_mp3_path, u"C:\\Music\\[A][B].mp3"_s);
    QCOMPARE(panes_->fields.filename, u"[A][B].mp3"_s);
    QCOMPARE(panes_->fields.artist, u"A"_s);
    // It is no click: the row last clicked and the pane stay.
    QCOMPARE(panes_->picks.last_row_index, 7);
    QCOMPARE(shared.focus_pane, pane_none);
    panes_->list.ItemClick(1);
    QCOMPARE(shared.selected_mp3_path, u"C:\\Other\\[A][B].mp3"_s);
}

void TestFileList::the_selected_name_compares_by_case()
{
    write(u"Song.mp3"_s);
    fill();
    panes_->list.ItemClick(1);
    panes_->disk.write(u"C:\\Other\\song.mp3"_s, "x");
    fill(u"C:\\Other\\"_s);
    QCOMPARE(shared.selected_mp3_name, u"song.mp3"_s);
    QCOMPARE(shared.selected_mp3_path, u"C:\\Other\\song.mp3"_s);
}

void TestFileList::the_selected_name_is_shown_as_a_name_whatever_it_is()
{
    write(u"track.mp3"_s, tagged("Artist", "Title"));
    fill();
    QCOMPARE(panes_->fields.artist, u"Artist"_s);
    // The next fill finds the selected file and looks at its name alone, which tells no title.
    fill();
    QVERIFY(panes_->fields.artist != u"Artist"_s);
    QCOMPARE(panes_->fields.title, QString());
}

void TestFileList::nothing_of_a_row_outlives_a_fill()
{
    write(u"a.mp3"_s);
    write(u"b.mp3"_s);
    fill();
    panes_->list_view.set_Selected(1, true);
    panes_->list_view.set_Selected(2, true);
    panes_->list_view.set_Checked(1, true);
    panes_->list_view.set_Text(1, u"renamed.mp3"_s);
    shared.selected_mp3_name = u"b.mp3"_s;
    fill();
    QCOMPARE(panes_->names(), (QStringList{u"a.mp3"_s, u"b.mp3"_s}));
    QCOMPARE(panes_->ticked_names(), QStringList());
    QCOMPARE(panes_->selected_names(), QStringList{u"b.mp3"_s});
}

void TestFileList::a_click_shows_the_file_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("artist");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("size");

    QTest::newRow("a FIF name shows the name's fields")
        << u"[Name][Song].mp3"_s << tagged("Tag", "Other") << u"Name"_s << u"Song"_s << u"16 byte"_s;
    QTest::newRow("another name shows the tag")
        << u"track.mp3"_s << tagged("Tag", "Other") << u"Tag"_s << u"Other"_s << u"9 byte"_s;
    QTest::newRow("without a tag the fields are empty")
        << u"track.mp3"_s << QByteArray(200, 'x') << QString() << QString() << u"9 byte"_s;
    QTest::newRow("a tag without an artist is shown as it is")
        << u"track.mp3"_s << tagged("", "Other") << QString() << u"Other"_s << u"9 byte"_s;
}

void TestFileList::a_click_shows_the_file()
{
    QFETCH(const QString, name);
    QFETCH(const QByteArray, content);
    QFETCH(const QString, artist);
    QFETCH(const QString, title);
    QFETCH(const QString, size);
    write(u"0 first.mp3"_s);
    write(name, content);
    fill();
    panes_->list.ItemClick(panes_->row_of(u"0 first.mp3"_s));
    shared.focus_pane = pane_none;
    const int row = panes_->row_of(name);
    panes_->list.ItemClick(row);
    QVERIFY(panes_->list_view.Item(row).Selected);
    QCOMPARE(panes_->picks.last_row_index, row);
    QCOMPARE(shared.focus_pane, pane_list);
    QCOMPARE(shared.selected_mp3_name, name);
    QCOMPARE(shared.selected_mp3_full, u"C:\\Music\\"_s + name);
    QCOMPARE(shared.selected_mp3_path, u"C:\\Music\\"_s + name);
    QCOMPARE(panes_->fields.filename, name);
    QCOMPARE(panes_->fields.artist, artist);
    QCOMPARE(panes_->fields.title, title);
    QCOMPARE(panes_->fields.filesize, size);
}

void TestFileList::a_click_on_no_row_ends_silently()
{
    write(u"a.mp3"_s);
    fill();
    shared.focus_pane = pane_none;
    for (const int index : {0, 2, -1, 40000}) {
        panes_->list.ItemClick(index);
        QCOMPARE(panes_->picks.last_row_index, 1);
        QCOMPARE(shared.focus_pane, pane_none);
        QCOMPARE(shared.selected_mp3_name, u"a.mp3"_s);
    }
    QCOMPARE(panes_->messages.take(), QStringList());
}

void TestFileList::a_click_by_mouse_reaches_the_list()
{
    write(u"a.mp3"_s);
    write(u"b.mp3"_s);
    fill();
    show_list();
    for (const QString& name : {u"b.mp3"_s, u"a.mp3"_s, u"b.mp3"_s}) {
        QTest::mouseClick(view()->viewport(), Qt::LeftButton, {}, on_row(name));
        QCOMPARE(shared.selected_mp3_name, name);
        QCOMPARE(panes_->selected_names(), QStringList{name});
        QCOMPARE(shared.list_drag_active, 1);
    }
}

void TestFileList::the_file_name_box_shows_the_key()
{
    QCOMPARE(panes_->list.filename_box_text(), QString());
    write(u"a.mp3"_s);
    fill();
    QCOMPARE(panes_->list.filename_box_text(), u"a.mp3"_s);
    // A row renamed in place shows its old name until the next fill.
    panes_->list_view.set_Text(1, u"new.mp3"_s);
    panes_->list.ItemClick(1);
    QCOMPARE(panes_->list.filename_box_text(), u"a.mp3"_s);
    QCOMPARE(panes_->fields.filename, u"a.mp3"_s);
    QCOMPARE(shared.selected_mp3_name, u"new.mp3"_s);
}

void TestFileList::a_column_click_sorts_and_turns_round()
{
    write(u"a.mp3"_s);
    write(u"b.mp3"_s);
    write(u"c.mp3"_s);
    fill();
    panes_->list.ColumnClick(0);
    QCOMPARE(panes_->list_view.Item(1).Text, u"c.mp3"_s);
    QCOMPARE(shared.main_sort_toggles, (std::array<i16, 3>{1, 0, 0}));
    QCOMPARE(panes_->list_view.SortKey(), 0);
    QCOMPARE(panes_->list_view.SortOrder(), ListView::Order::descending);
    panes_->list.ColumnClick(0);
    QCOMPARE(panes_->list_view.Item(1).Text, u"a.mp3"_s);
    QCOMPARE(shared.main_sort_toggles, (std::array<i16, 3>{0, 0, 0}));
    panes_->list.ColumnClick(2);
    QCOMPARE(shared.main_sort_toggles, (std::array<i16, 3>{0, 0, 1}));
    panes_->list.ColumnClick(1);
    QCOMPARE(shared.main_sort_toggles, (std::array<i16, 3>{0, 1, 1}));
    QCOMPARE(panes_->list_view.SortKey(), 1);
}

void TestFileList::sizes_sort_as_text()
{
    write(u"nine.mp3"_s, QByteArray(9216, 'x'));
    write(u"ten.mp3"_s, QByteArray(10240, 'x'));
    fill();
    panes_->list.ColumnClick(1);
    QCOMPARE(panes_->list_view.Item(1).column(1), u"9KB"_s);
    panes_->list.ColumnClick(1);
    QCOMPARE(panes_->list_view.Item(1).column(1), u"10KB"_s);
}

void TestFileList::other_columns_do_nothing()
{
    write(u"a.mp3"_s);
    write(u"b.mp3"_s);
    fill();
    panes_->list.ColumnClick(0);
    for (const int column : {3, 4, -1}) {
        panes_->list.ColumnClick(column);
        QCOMPARE(panes_->list_view.Item(1).Text, u"b.mp3"_s);
        QCOMPARE(panes_->list_view.SortKey(), 0);
        QCOMPARE(shared.main_sort_toggles, (std::array<i16, 3>{1, 0, 0}));
    }
}

void TestFileList::a_header_click_reaches_the_list()
{
    write(u"a.mp3"_s);
    fill();
    Q_EMIT panes_->list_view.ColumnClick(1);
    QCOMPARE(shared.main_sort_toggles, (std::array<i16, 3>{0, 1, 0}));
}

void TestFileList::the_right_button_opens_the_menu_data()
{
    QTest::addColumn<bool>("on_a_row");
    QTest::addColumn<bool>("has_rows");

    QTest::newRow("on a row with its entries enabled") << true << true;
    QTest::newRow("beside the rows with its entries disabled") << false << true;
    QTest::newRow("in an empty list with its entries disabled") << false << false;
}

void TestFileList::the_right_button_opens_the_menu()
{
    QFETCH(const bool, on_a_row);
    QFETCH(const bool, has_rows);
    if (has_rows)
        write(u"a.mp3"_s);
    fill();
    show_list();
    QStringList selected_at_menu;
    QList<bool> menus;
    QObject::connect(&panes_->list, &FileList::popup_wanted, [&](bool on_row) {
        menus.append(on_row);
        selected_at_menu = panes_->selected_names();
    });
    QTest::mouseClick(view()->viewport(), Qt::RightButton, {}, on_a_row ? on_row(u"a.mp3"_s) : beside_the_rows());
    QCOMPARE(menus, QList<bool>{on_a_row});
    QCOMPARE(selected_at_menu, on_a_row ? QStringList{u"a.mp3"_s} : QStringList());
    QCOMPARE(shared.list_drag_active, on_a_row ? 1 : 0);
}

void TestFileList::the_left_button_beside_the_rows_takes_the_selection_off()
{
    write(u"a.mp3"_s);
    write(u"b.mp3"_s);
    fill();
    show_list();
    const QSignalSpy menus(&panes_->list, &FileList::popup_wanted);
    QTest::mouseClick(view()->viewport(), Qt::LeftButton, {}, on_row(u"b.mp3"_s));
    QCOMPARE(panes_->selected_names(), QStringList{u"b.mp3"_s});
    QTest::mouseClick(view()->viewport(), Qt::LeftButton, {}, beside_the_rows());
    QCOMPARE(shared.list_drag_active, 0);
    QCOMPARE(panes_->selected_names(), QStringList());
    QCOMPARE(menus.count(), 0);
}

void TestFileList::a_double_click_plays_a_row_only()
{
    write(u"a.mp3"_s);
    fill();
    show_list();
    const QSignalSpy plays(&panes_->list, &FileList::play_wanted);
    QTest::mouseClick(view()->viewport(), Qt::LeftButton, {}, beside_the_rows());
    QTest::mouseDClick(view()->viewport(), Qt::LeftButton, {}, beside_the_rows());
    QCOMPARE(plays.count(), 0);
    QTest::mouseClick(view()->viewport(), Qt::LeftButton, {}, on_row(u"a.mp3"_s));
    QTest::mouseDClick(view()->viewport(), Qt::LeftButton, {}, on_row(u"a.mp3"_s));
    QCOMPARE(plays.count(), 1);
}

void TestFileList::the_menu_key_opens_the_menu()
{
    QList<bool> menus;
    QObject::connect(&panes_->list, &FileList::popup_wanted, [&](bool on_row) { menus.append(on_row); });
    Q_EMIT panes_->list_view.ContextKey();
    write(u"a.mp3"_s);
    fill();
    show_list();
    QContextMenuEvent key(QContextMenuEvent::Keyboard, QPoint(), QPoint());
    QApplication::sendEvent(view(), &key);
    QCOMPARE(menus, (QList<bool>{false, true}));
}

void TestFileList::focus_goes_to_the_list()
{
    show_list();
    QVERIFY(QTest::qWaitForWindowActive(&panes_->list_view));
    view()->clearFocus();
    view()->setFocus(Qt::TabFocusReason);
    QTRY_COMPARE(shared.focus_pane, pane_list);
}

void TestFileList::the_view_changes()
{
    panes_->list.set_View(ListView::ViewMode::list);
    QCOMPARE(panes_->list_view.View(), ListView::ViewMode::list);
    panes_->list.set_View(ListView::ViewMode::report);
    QCOMPARE(panes_->list_view.View(), ListView::ViewMode::report);
}

void TestFileList::a_folder_that_cannot_be_listed_data()
{
    QTest::addColumn<QString>("path");

    QTest::newRow("a folder that is gone") << u"C:\\Gone\\"_s;
    QTest::newRow("a path without backslash is told as it is") << u"C:\\Gone"_s;
    QTest::newRow("a drive that is not there") << u"Q:\\"_s;
    QTest::newRow("a file in place of a folder") << u"C:\\Music\\a.mp3\\"_s;
    QTest::newRow("the root of the tree") << u"MYCOMPUTER\\"_s;
}

void TestFileList::a_folder_that_cannot_be_listed()
{
    QFETCH(const QString, path);
    write(u"a.mp3"_s);
    fill();
    panes_->list.show_folder_totals(77, 88);
    const QSignalSpy failures(&panes_->list, &FileList::folder_failed);
    fill(path);
    QCOMPARE(panes_->messages.take(), QStringList{u"Device Error : "_s + path});
    QCOMPARE(failures.count(), 1);
    QCOMPARE(panes_->names(), QStringList());
    QCOMPARE(panes_->status_bar.panel_text(1), u"77 File"_s);
    QCOMPARE(panes_->status_bar.panel_text(2), u"88 MB"_s);
}

void TestFileList::an_unreadable_folder()
{
    write(u"a.mp3"_s);
    fill();
    const WithoutRights music(panes_->disk.native(u"C:\\Music"_s));
    fill();
    QCOMPARE(panes_->messages.take(), QStringList{u"Device Error : C:\\Music\\"_s});
    QCOMPARE(panes_->names(), QStringList());
}

void TestFileList::the_parent_is_filled_when_it_was_the_current_one()
{
    panes_->disk.write(u"C:\\top.mp3"_s, "x");
    panes_->tree.init_main_tree();
    panes_->click_folder(u"C:"_s);
    const WithoutRights music(panes_->disk.native(u"C:\\Music"_s));
    panes_->click_folder(u"C:\\Music"_s);
    QCOMPARE(panes_->messages.take(), QStringList{u"Device Error : C:\\Music\\"_s});
    QCOMPARE(panes_->names(), QStringList{u"top.mp3"_s});
    QCOMPARE(panes_->status_bar.panel_text(1), u"1 File"_s);
    QCOMPARE(panes_->tree.selected_key(), u"C:"_s);
    QCOMPARE(shared.current_folder, u"C:\\"_s);
}

void TestFileList::more_files_than_the_counter_holds()
{
    const QByteArray first = panes_->disk.native(u"C:\\Music\\[A][0].mp3"_s);
    make_sparse_file(first, 1);
    for (int number = 1; number < 32767; ++number) {
        const QByteArray name = first.chopped(6) + QByteArray::number(number) + "].mp3";
        QCOMPARE(link(first.constData(), name.constData()), 0);
    }
    fill();
    QCOMPARE(panes_->status_bar.panel_text(1), u"32767 File"_s);
    QCOMPARE(panes_->messages.take(), QStringList());
    write(u"[A][one more].mp3"_s);
    fill();
    QCOMPARE(panes_->messages.take(), QStringList{u"Device Error : C:\\Music\\"_s});
    QCOMPARE(panes_->list_view.Count(), 0);
}

void TestFileList::short_files_are_listed()
{
    for (const int size : {0, 1, 127, 128, 129})
        write(u"%1.mp3"_s.arg(size), QByteArray(size, 'T'));
    fill();
    QCOMPARE(panes_->names().size(), 5);
    for (int row = 1; row <= 5; ++row) {
        panes_->list.ItemClick(row);
        QCOMPARE(panes_->fields.artist, QString());
        QCOMPARE(shared.selected_mp3_name, panes_->list_view.Item(row).Text);
    }
    QCOMPARE(panes_->messages.take(), QStringList());
}

void TestFileList::huge_files_are_listed()
{
    make_sparse_file(panes_->disk.native(u"C:\\Music\\a.mp3"_s), 300 * mebibyte);
    make_sparse_file(panes_->disk.native(u"C:\\Music\\b.mp3"_s), 5120 * mebibyte);
    fill();
    QCOMPARE(panes_->names(), (QStringList{u"a.mp3"_s, u"b.mp3"_s}));
    QCOMPARE(panes_->status_bar.panel_text(2), u"5420 MB"_s);
    panes_->list.ItemClick(panes_->row_of(u"b.mp3"_s));
    QCOMPARE(shared.selected_mp3_name, u"b.mp3"_s);
}

void TestFileList::only_regular_files_are_listed()
{
    folder(u"C:\\Music\\folder.mp3"_s);
    QCOMPARE(mkfifo(panes_->disk.native(u"C:\\Music\\pipe.mp3"_s).constData(), 0644), 0);
    QCOMPARE(symlink("nowhere.mp3", panes_->disk.native(u"C:\\Music\\dangling.mp3"_s).constData()), 0);
    QCOMPARE(symlink("pipe.mp3", panes_->disk.native(u"C:\\Music\\to pipe.mp3"_s).constData()), 0);
    write(u"real.mp3"_s, tagged("A", "B"));
    QCOMPARE(symlink("real.mp3", panes_->disk.native(u"C:\\Music\\to real.mp3"_s).constData()), 0);
    fill();
    QCOMPARE(panes_->names(), (QStringList{u"real.mp3"_s, u"to real.mp3"_s}));
    QCOMPARE(panes_->row(u"to real.mp3"_s).column(4), panes_->row(u"real.mp3"_s).column(4));
    QCOMPARE(shared.folder_mp3_count, 2);
}

void TestFileList::odd_file_names_data()
{
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("255 bytes") << QByteArray(251, 'n') + ".mp3";
    QTest::newRow("not UTF-8") << QByteArray("caf\xe9.mp3");
    QTest::newRow("a line break") << QByteArray("two\nlines.mp3");
    QTest::newRow("a backslash") << QByteArray("back\\slash.mp3");
    QTest::newRow("a leading dot") << QByteArray(".hidden.mp3");
    QTest::newRow("blanks at both ends") << QByteArray(" blanks mp3");
    QTest::newRow("Korean") << QByteArray("\xed\x95\x9c\xea\xb5\xad.mp3");
    QTest::newRow("85 Korean syllables") << QByteArray("\xed\x95\x9c").repeated(83) + ".mp3";
}

void TestFileList::odd_file_names()
{
    QFETCH(const QByteArray, bytes);
    const QByteArray native = panes_->disk.native(u"C:\\Music"_s) + '/' + bytes;
    const QByteArray content = tagged("Artist", "Title");
    const int descriptor = open(native.constData(), O_CREAT | O_WRONLY | O_CLOEXEC, 0644);
    QVERIFY(descriptor >= 0);
    QCOMPARE(::write(descriptor, content.constData(), static_cast<std::size_t>(content.size())), content.size());
    close(descriptor);
    fill();
    QCOMPARE(panes_->list_view.Count(), 1);
    QCOMPARE(panes_->fields.artist, u"Artist"_s);
    QCOMPARE(panes_->disk.native(shared.selected_mp3_path), native);
    panes_->tick(panes_->list_view.Item(1).Text);
    QCOMPARE(panes_->disk.native(shared.final_list[0].full_path), native);
    fill();
    QVERIFY(panes_->list_view.Item(1).Checked);
}

void TestFileList::an_unreadable_file_is_listed()
{
    write(u"a.mp3"_s, tagged("Artist", "Title"));
    const WithoutRights file(panes_->disk.native(u"C:\\Music\\a.mp3"_s));
    fill();
    QCOMPARE(panes_->names(), QStringList{u"a.mp3"_s});
    QCOMPARE(panes_->row(u"a.mp3"_s).SmallIcon, 2);
    QCOMPARE(panes_->fields.artist, QString());
    QCOMPARE(panes_->messages.take(), QStringList());
}

QUILMO_UI_TEST(TestFileList)
#include "test_file_list.moc"
