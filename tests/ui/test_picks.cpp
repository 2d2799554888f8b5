#include "core/mod_of_grobal_var.h"
#include "platform/controls/message_window.h"
#include "platform/drives.h"
#include "sample_files.h"
#include "selection/final_list.h"
#include "ui_explorer.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QSignalSpy>
#include <QTest>

#include <fcntl.h>
#include <unistd.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 mebibyte = 1048576;

QByteArray tagged(const QByteArray& artist, const QByteArray& title)
{
    return sample_audio({.frames = 2}) + sample_tag({.title = title, .artist = artist});
}

QStringList live_paths()
{
    QStringList paths;
    for (const FinalListEntry& slot : final_list_slots()) {
        if (slot.in_use == 1)
            paths.append(slot.full_path);
    }
    return paths;
}

} // namespace

class TestPicks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void a_tick_picks_the_file_and_shows_it();
    void a_tick_by_mouse_reaches_the_picks();
    void a_tick_taken_off_drops_the_file();
    void ticks_survive_a_change_of_folder();
    void a_freed_slot_is_filled_first();
    void a_name_picked_elsewhere_is_refused();
    void a_refused_tick_leaves_the_final_list_alone();
    void letters_of_another_case_are_another_name();
    void the_thousand_and_first_file_is_not_picked();

    void a_tick_on_a_CD_data();
    void a_tick_on_a_CD();

    void sizes_beyond_32_bits_are_refused_data();
    void sizes_beyond_32_bits_are_refused();
    void a_picked_file_that_has_grown_stays_picked();

    void select_all_picks_every_row();
    void select_all_skips_a_name_picked_elsewhere();
    void select_all_stops_at_a_full_table();
    void select_all_goes_on_behind_a_huge_file();
    void select_all_in_an_empty_folder_changes_nothing();

    void clear_all_drops_the_folder_shown_only();
    void clear_all_shows_the_row_that_was_active();
    void clear_all_without_an_active_row_clicks_none();
    void clear_all_with_an_index_beyond_the_rows();
    void clear_all_stops_at_a_row_that_is_not_there();
    void clear_all_in_an_empty_folder_changes_nothing();

    void the_final_list_is_shown_when_it_holds_a_file();
    void the_total_is_rounded_data();
    void the_total_is_rounded();

private:
    void write(const QString& path, const QByteArray& content = QByteArray(200, 'x')) const;
    void make_sparse_file(const QString& path, qint64 size) const;
    void show_folder(const QString& key);
    void use_drive(DriveType type, bool ready = true);
    QString total() const { return panes_->status_bar.panel_text(3); }
    ListView& list() const { return panes_->list_view; }

    std::unique_ptr<ExplorerPanes> panes_;
};

void TestPicks::init()
{
    panes_ = std::make_unique<ExplorerPanes>();
    panes_->tree.init_main_tree();
    panes_->picks.show_final_total();
}

void TestPicks::cleanup()
{
    panes_.reset();
}

void TestPicks::write(const QString& path, const QByteArray& content) const
{
    panes_->disk.write(path, content);
}

void TestPicks::make_sparse_file(const QString& path, qint64 size) const
{
    panes_->disk.make_folder(path.left(path.lastIndexOf(u'\\')));
    const QByteArray native = panes_->disk.native(path);
    const int descriptor = open(native.constData(), O_CREAT | O_WRONLY | O_CLOEXEC, 0644);
    QVERIFY(descriptor >= 0);
    QCOMPARE(ftruncate(descriptor, size), 0);
    close(descriptor);
}

/// Clicks the folder, or refreshes it when it is the one shown.
void TestPicks::show_folder(const QString& key)
{
    panes_->tree.FillNodeFolders(panes_->tree_view.Item(u"C:"_s), u"C:\\"_s);
    if (shared.tree_node_path == key)
        panes_->tree.refresh_all();
    else
        panes_->click_folder(key);
}

void TestPicks::use_drive(DriveType type, bool ready)
{
    shared.drive_table = {};
    panes_->tree_view.Remove(1);
    set_drives({{.DriveLetter = u"C"_s,
                 .Type = type,
                 .VolumeName = {},
                 .IsReady = ready,
                 .mount_point = panes_->disk.root(),
                 .device = {}}});
    panes_->tree.init_main_tree();
}

void TestPicks::a_tick_picks_the_file_and_shows_it()
{
    write(u"C:\\Music\\a.mp3"_s, tagged("Artist", "Title"));
    write(u"C:\\Music\\b.mp3"_s, tagged("Other", "Song"));
    write(u"C:\\Music\\[C][D].mp3"_s);
    show_folder(u"C:\\Music"_s);
    list().set_Selected(1, true);
    list().set_Selected(2, true);
    shared.focus_pane = pane_none;
    panes_->tick(u"b.mp3"_s);
    const ListRow& row = panes_->row(u"b.mp3"_s);
    QVERIFY(row.Checked);
    QCOMPARE(panes_->selected_names(), QStringList{u"b.mp3"_s});
    QCOMPARE(panes_->picks.last_row_index, panes_->row_of(u"b.mp3"_s));
    QCOMPARE(shared.focus_pane, pane_list);
    QCOMPARE(shared.selected_mp3_name, u"b.mp3"_s);
    QCOMPARE(shared.selected_mp3_full, u"C:\\Music\\b.mp3"_s);
    QCOMPARE(shared.selected_mp3_path, u"C:\\Music\\b.mp3"_s);
    QCOMPARE(panes_->fields.filename, u"b.mp3"_s);
    QCOMPARE(panes_->fields.artist, u"Other"_s);
    const FinalListEntry& entry = shared.final_list[0];
    QCOMPARE(entry.in_use, 1);
    QCOMPARE(entry.kind, 2);
    QCOMPARE(entry.name, u"b.mp3"_s);
    QCOMPARE(entry.folder, u"C:\\Music\\"_s);
    QCOMPARE(entry.full_path, u"C:\\Music\\b.mp3"_s);
    QCOMPARE(QString::number(entry.size), row.column(4));
    QCOMPARE(entry.type_text, row.column(2));
    QCOMPARE(entry.date_text, row.column(3));
    QCOMPARE(total(), u"1 files/0MB"_s);
    panes_->tick(u"[C][D].mp3"_s);
    QCOMPARE(panes_->fields.artist, u"C"_s);
    QCOMPARE(shared.final_list[1].kind, 1);
    QCOMPARE(total(), u"2 files/0MB"_s);
    QCOMPARE(panes_->messages.take(), QStringList());
}

void TestPicks::a_tick_by_mouse_reaches_the_picks()
{
    write(u"C:\\Music\\a.mp3"_s);
    write(u"C:\\Music\\b.mp3"_s);
    show_folder(u"C:\\Music"_s);
    list().resize(700, 300);
    list().show();
    QVERIFY(QTest::qWaitForWindowExposed(&list()));
    QAbstractItemView* const view = list().view();
    const QString second = list().Item(2).Text;
    const QPoint box = view->viewport()->mapFrom(&list(), list().check_rect(2).center());
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, box);
    QCOMPARE(live_paths(), QStringList{u"C:\\Music\\"_s + second});
    QCOMPARE(panes_->selected_names(), QStringList{second});
    QCOMPARE(panes_->fields.filename, second);
    QCOMPARE(panes_->ticked_names(), QStringList{second});
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, box);
    QCOMPARE(live_paths(), QStringList());
    QCOMPARE(panes_->ticked_names(), QStringList());
}

void TestPicks::a_tick_taken_off_drops_the_file()
{
    write(u"C:\\Music\\a.mp3"_s, QByteArray(1572864, 'x'));
    show_folder(u"C:\\Music"_s);
    panes_->tick(u"a.mp3"_s);
    QCOMPARE(total(), u"1 files/2MB"_s);
    shared.selected_mp3_name.clear();
    panes_->tick(u"a.mp3"_s, false);
    QCOMPARE(shared.final_list_count, 0);
    QCOMPARE(shared.final_list_bytes, 0);
    QCOMPARE(total(), u"0 files/0MB"_s);
    QCOMPARE(shared.selected_mp3_name, u"a.mp3"_s);
    QCOMPARE(panes_->selected_names(), QStringList{u"a.mp3"_s});
}

void TestPicks::ticks_survive_a_change_of_folder()
{
    write(u"C:\\A\\a.mp3"_s);
    write(u"C:\\A\\b.mp3"_s);
    write(u"C:\\B\\c.mp3"_s);
    show_folder(u"C:\\A"_s);
    panes_->tick(u"b.mp3"_s);
    show_folder(u"C:\\B"_s);
    QCOMPARE(panes_->ticked_names(), QStringList());
    show_folder(u"C:\\A"_s);
    QCOMPARE(panes_->ticked_names(), QStringList{u"b.mp3"_s});
    panes_->tree.refresh_all();
    QCOMPARE(panes_->ticked_names(), QStringList{u"b.mp3"_s});
    QCOMPARE(shared.final_list_count, 1);
}

void TestPicks::a_freed_slot_is_filled_first()
{
    for (const QString& name : {u"a"_s, u"b"_s, u"c"_s, u"d"_s})
        write(u"C:\\A\\"_s + name + u".mp3"_s);
    show_folder(u"C:\\A"_s);
    panes_->tick(u"a.mp3"_s);
    panes_->tick(u"b.mp3"_s);
    panes_->tick(u"c.mp3"_s);
    panes_->tick(u"a.mp3"_s, false);
    QCOMPARE(shared.final_list[0].in_use, 0);
    panes_->tick(u"d.mp3"_s);
    QCOMPARE(shared.final_list[0].name, u"d.mp3"_s);
    QCOMPARE(shared.final_list_count, 3);
}

void TestPicks::a_name_picked_elsewhere_is_refused()
{
    write(u"C:\\A\\a.mp3"_s);
    write(u"C:\\B\\a.mp3"_s);
    show_folder(u"C:\\A"_s);
    panes_->tick(u"a.mp3"_s);
    show_folder(u"C:\\B"_s);
    list().clear_selection();
    panes_->tick(u"a.mp3"_s);
    QCOMPARE(panes_->messages.take(), QStringList{u"a.mp3 is already selected"_s});
    QCOMPARE(panes_->ticked_names(), QStringList());
    QCOMPARE(panes_->selected_names(), QStringList{u"a.mp3"_s});
    QCOMPARE(live_paths(), QStringList{u"C:\\A\\a.mp3"_s});
    QCOMPARE(shared.selected_mp3_path, u"C:\\B\\a.mp3"_s);
    QCOMPARE(total(), u"1 files/0MB"_s);
}

void TestPicks::a_refused_tick_leaves_the_final_list_alone()
{
    write(u"C:\\A\\a.mp3"_s);
    write(u"C:\\B\\a.mp3"_s);
    write(u"C:\\B\\x.mp3"_s);
    show_folder(u"C:\\B"_s);
    panes_->tick(u"x.mp3"_s);
    panes_->tick(u"a.mp3"_s);
    panes_->tick(u"a.mp3"_s, false);
    panes_->tick(u"x.mp3"_s, false);
    show_folder(u"C:\\A"_s);
    panes_->tick(u"a.mp3"_s);
    show_folder(u"C:\\B"_s);
    // Slot 1 still holds the freed entry of the very file that is refused now.
    QCOMPARE(shared.final_list[1].full_path, u"C:\\B\\a.mp3"_s);
    panes_->tick(u"a.mp3"_s);
    QCOMPARE(panes_->messages.take().size(), 1);
    QCOMPARE(shared.final_list_count, 1);
    QCOMPARE(shared.final_list_bytes, 200);
}

void TestPicks::letters_of_another_case_are_another_name()
{
    write(u"C:\\A\\a.mp3"_s);
    write(u"C:\\A\\A.mp3"_s);
    show_folder(u"C:\\A"_s);
    panes_->tick(u"a.mp3"_s);
    panes_->tick(u"A.mp3"_s);
    QCOMPARE(panes_->messages.take(), QStringList());
    QCOMPARE(shared.final_list_count, 2);
}

void TestPicks::the_thousand_and_first_file_is_not_picked()
{
    for (int number = 0; number < 1001; ++number)
        write(u"C:\\A\\[A][%1].mp3"_s.arg(number));
    show_folder(u"C:\\A"_s);
    for (int row = 1; row <= 1001; ++row) {
        list().set_Checked(row, true);
        panes_->picks.ItemCheck(row);
    }
    QCOMPARE(shared.final_list_count, 1000);
    QCOMPARE(panes_->ticked_names().size(), 1000);
    QVERIFY(!list().Item(1001).Checked);
    QVERIFY(list().Item(1001).Selected);
    QCOMPARE(panes_->messages.take(), QStringList());
    QCOMPARE(total(), u"1000 files/0MB"_s);
    // Full goes before picked elsewhere: still no message.
    write(u"C:\\B\\"_s + list().Item(1).Text);
    const QString name = list().Item(1).Text;
    show_folder(u"C:\\B"_s);
    panes_->tick(name);
    QCOMPARE(panes_->messages.take(), QStringList());
    QCOMPARE(panes_->ticked_names(), QStringList());
}

void TestPicks::a_tick_on_a_CD_data()
{
    QTest::addColumn<bool>("ready");

    QTest::newRow("that was ready at start is refused") << true;
    QTest::newRow("that came later is accepted") << false;
}

void TestPicks::a_tick_on_a_CD()
{
    QFETCH(const bool, ready);
    write(u"C:\\Music\\a.mp3"_s);
    write(u"C:\\Music\\b.mp3"_s);
    use_drive(DriveType::cd, ready);
    show_folder(u"C:\\Music"_s);
    panes_->list.ItemClick(panes_->row_of(u"a.mp3"_s));
    list().clear_selection();
    const int index = panes_->row_of(u"b.mp3"_s);
    panes_->tick(u"b.mp3"_s);
    QCOMPARE(panes_->picks.last_row_index, index);
    if (!ready) {
        QCOMPARE(live_paths(), QStringList{u"C:\\Music\\b.mp3"_s});
        return;
    }
    QCOMPARE(panes_->messages.take(), QStringList{u"MP3 files of CD can not be selected"_s});
    QCOMPARE(live_paths(), QStringList());
    QCOMPARE(panes_->ticked_names(), QStringList());
    QCOMPARE(panes_->selected_names(), QStringList());
    QCOMPARE(shared.focus_pane, pane_none);
    QCOMPARE(shared.selected_mp3_name, u"a.mp3"_s);
    panes_->picks.cmd_select_all_Click();
    QCOMPARE(panes_->messages.take(), QStringList{u"MP3 files of CD can not be selected"_s});
    QCOMPARE(live_paths(), QStringList());
    QCOMPARE(panes_->selected_names(), QStringList());
}

void TestPicks::sizes_beyond_32_bits_are_refused_data()
{
    QTest::addColumn<qint64>("first");
    QTest::addColumn<qint64>("second");
    QTest::addColumn<bool>("accepted");

    QTest::newRow("the sum at its limit") << 1024 * mebibyte << 1024 * mebibyte - 1 << true;
    QTest::newRow("the sum one byte beyond") << 1024 * mebibyte << 1024 * mebibyte << false;
    QTest::newRow("a file of 2 GiB") << qint64{1} << 2048 * mebibyte << false;
    QTest::newRow("a file of 2 GiB less a byte") << qint64{0} << 2048 * mebibyte - 1 << true;
    QTest::newRow("a file of 5 GB") << qint64{1} << 5120 * mebibyte << false;
}

void TestPicks::sizes_beyond_32_bits_are_refused()
{
    QFETCH(const qint64, first);
    QFETCH(const qint64, second);
    QFETCH(const bool, accepted);
    make_sparse_file(u"C:\\Big\\a.mp3"_s, first);
    make_sparse_file(u"C:\\Big\\b.mp3"_s, second);
    show_folder(u"C:\\Big"_s);
    panes_->tick(u"a.mp3"_s);
    bool ended = false;
    set_fatal_error_handler([&](const RunTimeError&) { ended = true; });
    panes_->tick(u"b.mp3"_s);
    set_fatal_error_handler({});
    QVERIFY(!ended);
    const QStringList boxes = panes_->messages.take();
    QCOMPARE(boxes.size(), accepted ? 0 : 1);
    QCOMPARE(shared.final_list_count, accepted ? 2 : 1);
    QCOMPARE(qint64{shared.final_list_bytes}, accepted ? first + second : first);
    QCOMPARE(panes_->row(u"b.mp3"_s).Checked, accepted);
    QVERIFY(panes_->row(u"b.mp3"_s).Selected);
    if (!accepted) {
        QVERIFY(boxes.front().contains(u'6'));
        QVERIFY(boxes.front().contains(u"Overflow"_s));
        QCOMPARE(total(), final_total_text());
    }
}

void TestPicks::a_picked_file_that_has_grown_stays_picked()
{
    make_sparse_file(u"C:\\Big\\a.mp3"_s, mebibyte);
    show_folder(u"C:\\Big"_s);
    panes_->tick(u"a.mp3"_s);
    make_sparse_file(u"C:\\Big\\a.mp3"_s, 5120 * mebibyte);
    panes_->tree.refresh_all();
    QVERIFY(panes_->row(u"a.mp3"_s).Checked);
    panes_->tick(u"a.mp3"_s, false);
    QCOMPARE(panes_->messages.take().size(), 1);
    QVERIFY(panes_->row(u"a.mp3"_s).Checked);
    QCOMPARE(shared.final_list_count, 1);
    panes_->picks.cmdRemove_Click();
    QCOMPARE(panes_->messages.take().size(), 1);
    QVERIFY(panes_->row(u"a.mp3"_s).Checked);
    QCOMPARE(shared.final_list_count, 1);
}

void TestPicks::select_all_picks_every_row()
{
    for (const QString& name : {u"a"_s, u"b"_s, u"c"_s})
        write(u"C:\\A\\"_s + name + u".mp3"_s);
    show_folder(u"C:\\A"_s);
    panes_->tick(u"b.mp3"_s);
    const QSignalSpy checks(&list(), &ListView::ItemCheck);
    panes_->picks.cmd_select_all_Click();
    QCOMPARE(checks.count(), 0);
    const QStringList all = {u"a.mp3"_s, u"b.mp3"_s, u"c.mp3"_s};
    QCOMPARE(panes_->ticked_names(), all);
    QCOMPARE(panes_->selected_names(), all);
    QCOMPARE(shared.final_list_count, 3);
    QCOMPARE(total(), u"3 files/0MB"_s);
    QCOMPARE(list().Item(list().SelectedItem()).Key, u"b.mp3"_s);
    QCOMPARE(panes_->messages.take(), QStringList());
}

void TestPicks::select_all_skips_a_name_picked_elsewhere()
{
    write(u"C:\\A\\b.mp3"_s);
    for (const QString& name : {u"a"_s, u"b"_s, u"c"_s})
        write(u"C:\\B\\"_s + name + u".mp3"_s);
    show_folder(u"C:\\A"_s);
    panes_->tick(u"b.mp3"_s);
    show_folder(u"C:\\B"_s);
    panes_->picks.cmd_select_all_Click();
    QCOMPARE(panes_->ticked_names(), (QStringList{u"a.mp3"_s, u"c.mp3"_s}));
    QCOMPARE(panes_->selected_names().size(), 3);
    QCOMPARE(shared.final_list_count, 3);
    QCOMPARE(panes_->messages.take(), QStringList());
}

void TestPicks::select_all_stops_at_a_full_table()
{
    for (int number = 0; number < 1003; ++number)
        write(u"C:\\A\\[A][%1].mp3"_s.arg(number));
    show_folder(u"C:\\A"_s);
    list().clear_selection();
    shared.selected_mp3_name = list().Item(1003).Key;
    panes_->picks.cmd_select_all_Click();
    QCOMPARE(shared.final_list_count, 1000);
    QVERIFY(list().Item(1000).Checked);
    QVERIFY(!list().Item(1001).Checked);
    QVERIFY(list().Item(1000).Selected);
    QVERIFY(!list().Item(1001).Selected);
    QVERIFY(!list().Item(1002).Selected);
    QVERIFY(list().Item(1003).Selected);
    QCOMPARE(total(), u"1000 files/0MB"_s);
    QCOMPARE(panes_->messages.take(), QStringList());
}

void TestPicks::select_all_goes_on_behind_a_huge_file()
{
    write(u"C:\\A\\a.mp3"_s);
    make_sparse_file(u"C:\\A\\b.mp3"_s, 5120 * mebibyte);
    make_sparse_file(u"C:\\A\\c.mp3"_s, 2048 * mebibyte);
    write(u"C:\\A\\d.mp3"_s);
    show_folder(u"C:\\A"_s);
    panes_->picks.cmd_select_all_Click();
    QCOMPARE(panes_->ticked_names(), (QStringList{u"a.mp3"_s, u"d.mp3"_s}));
    QCOMPARE(panes_->selected_names().size(), 4);
    QCOMPARE(shared.final_list_bytes, 400);
    const QStringList boxes = panes_->messages.take();
    QCOMPARE(boxes.size(), 1);
    QVERIFY(boxes.front().contains(u"Overflow"_s));
}

void TestPicks::select_all_in_an_empty_folder_changes_nothing()
{
    panes_->disk.make_folder(u"C:\\Empty"_s);
    show_folder(u"C:\\Empty"_s);
    panes_->status_bar.set_panel_text(3, u"as it was"_s);
    panes_->picks.cmd_select_all_Click();
    QCOMPARE(total(), u"as it was"_s);
    QCOMPARE(panes_->messages.take(), QStringList());
}

void TestPicks::clear_all_drops_the_folder_shown_only()
{
    write(u"C:\\A\\a.mp3"_s);
    write(u"C:\\B\\b.mp3"_s);
    write(u"C:\\B\\c.mp3"_s);
    show_folder(u"C:\\A"_s);
    panes_->tick(u"a.mp3"_s);
    show_folder(u"C:\\B"_s);
    panes_->picks.cmd_select_all_Click();
    QCOMPARE(shared.final_list_count, 3);
    const QSignalSpy checks(&list(), &ListView::ItemCheck);
    panes_->picks.cmdRemove_Click();
    QCOMPARE(checks.count(), 0);
    QCOMPARE(live_paths(), QStringList{u"C:\\A\\a.mp3"_s});
    QCOMPARE(panes_->ticked_names(), QStringList());
    QCOMPARE(total(), u"1 files/0MB"_s);
    show_folder(u"C:\\A"_s);
    QCOMPARE(panes_->ticked_names(), QStringList{u"a.mp3"_s});
}

void TestPicks::clear_all_shows_the_row_that_was_active()
{
    write(u"C:\\A\\a.mp3"_s);
    write(u"C:\\A\\b.mp3"_s);
    write(u"C:\\A\\c.mp3"_s);
    show_folder(u"C:\\A"_s);
    panes_->picks.cmd_select_all_Click();
    panes_->picks.last_row_index = static_cast<i16>(panes_->row_of(u"b.mp3"_s));
    shared.selected_mp3_name = u"other"_s;
    panes_->picks.cmdRemove_Click();
    QCOMPARE(panes_->selected_names(), QStringList{u"b.mp3"_s});
    QCOMPARE(shared.selected_mp3_name, u"b.mp3"_s);
    QCOMPARE(panes_->fields.filename, u"b.mp3"_s);
}

void TestPicks::clear_all_without_an_active_row_clicks_none()
{
    write(u"C:\\A\\a.mp3"_s);
    show_folder(u"C:\\A"_s);
    panes_->tick(u"a.mp3"_s);
    panes_->picks.last_row_index = 0;
    shared.selected_mp3_name = u"other"_s;
    panes_->picks.cmdRemove_Click();
    QCOMPARE(shared.final_list_count, 0);
    QCOMPARE(panes_->selected_names(), QStringList());
    QCOMPARE(shared.selected_mp3_name, u"other"_s);
    QCOMPARE(total(), u"0 files/0MB"_s);
}

void TestPicks::clear_all_with_an_index_beyond_the_rows()
{
    write(u"C:\\A\\a.mp3"_s);
    show_folder(u"C:\\A"_s);
    panes_->tick(u"a.mp3"_s);
    panes_->picks.last_row_index = 500;
    panes_->picks.cmdRemove_Click();
    QCOMPARE(shared.final_list_count, 0);
    QCOMPARE(panes_->selected_names(), QStringList());
    QCOMPARE(panes_->messages.take(), QStringList());
    QCOMPARE(total(), u"0 files/0MB"_s);
}

void TestPicks::clear_all_stops_at_a_row_that_is_not_there()
{
    write(u"C:\\A\\a.mp3"_s);
    write(u"C:\\A\\b.mp3"_s);
    show_folder(u"C:\\A"_s);
    panes_->picks.cmd_select_all_Click();
    panes_->picks.last_row_index = 0;
    list().set_Text(1, u"unknown.mp3"_s);
    panes_->picks.cmdRemove_Click();
    QVERIFY(list().Item(1).Checked);
    QVERIFY(list().Item(2).Checked);
    QCOMPARE(shared.final_list_count, 2);
    QCOMPARE(panes_->selected_names().size(), 2);
}

void TestPicks::clear_all_in_an_empty_folder_changes_nothing()
{
    panes_->disk.make_folder(u"C:\\Empty"_s);
    show_folder(u"C:\\Empty"_s);
    panes_->picks.last_row_index = 1;
    panes_->status_bar.set_panel_text(3, u"as it was"_s);
    panes_->picks.cmdRemove_Click();
    QCOMPARE(total(), u"as it was"_s);
}

void TestPicks::the_final_list_is_shown_when_it_holds_a_file()
{
    write(u"C:\\A\\a.mp3"_s);
    show_folder(u"C:\\A"_s);
    panes_->picks.Change_all_Click();
    QCOMPARE(panes_->messages.take(), QStringList{u"Select MP3 File"_s});
    QCOMPARE(panes_->final_list_shows, 0);
    panes_->tick(u"a.mp3"_s);
    panes_->picks.Change_all_Click();
    QCOMPARE(panes_->messages.take(), QStringList());
    QCOMPARE(panes_->final_list_shows, 1);
}

void TestPicks::the_total_is_rounded_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("bytes");
    QTest::addColumn<QString>("text");

    QTest::newRow("nothing picked") << 0 << 0 << u"0 files/0MB"_s;
    QTest::newRow("42 MB") << 12 << 44040192 << u"12 files/42MB"_s;
    QTest::newRow("1.5 goes to the even 2") << 1 << 1572864 << u"1 files/2MB"_s;
    QTest::newRow("2.5 goes to the even 2") << 1 << 2621440 << u"1 files/2MB"_s;
    QTest::newRow("3.5 goes to the even 4") << 1 << 3670016 << u"1 files/4MB"_s;
}

void TestPicks::the_total_is_rounded()
{
    QFETCH(const int, count);
    QFETCH(const int, bytes);
    QFETCH(const QString, text);
    shared.final_list_count = count;
    shared.final_list_bytes = bytes;
    panes_->picks.show_final_total();
    QCOMPARE(total(), text);
}

QUILMO_UI_TEST(TestPicks)
#include "test_picks.moc"
