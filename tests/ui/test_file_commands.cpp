#include "core/drive_table.h"
#include "core/mod_of_grobal_var.h"
#include "explorer/tree_menu.h"
#include "platform/RunTimeError.h"
#include "platform/drives.h"
#include "rights.h"
#include "selection/final_list.h"
#include "ui_commands.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <sys/stat.h>

#include <functional>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

using Answer = ScriptedPrompts::Answer;

/// Answers Yes, after something has happened while the question stood.
class SlowYes : public ScriptedPrompts
{
public:
    bool ask_trash(const QStringList& paths) override
    {
        meanwhile();
        return ScriptedPrompts::ask_trash(paths);
    }

    std::function<void()> meanwhile;
};

/// The names in the slots that are in use.
QStringList copied_names()
{
    QStringList names;
    for (const CopyListEntry& slot : shared.copy_list) {
        if (slot.in_use == 1)
            names.append(slot.name);
    }
    return names;
}

const QStringList all_of_pop = {u"one.mp3"_s, u"three.mp3"_s, u"two.mp3"_s};

} // namespace

class TestFileCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void nothing_happens_while_the_computer_is_selected_data();
    void nothing_happens_while_the_computer_is_selected();

    void a_copied_folder_is_remembered();
    void copied_files_are_remembered_in_the_order_of_the_list();
    void a_copy_of_no_rows_pastes_nothing();
    void three_hundred_and_one_rows_can_be_copied();
    void the_next_row_is_one_too_many();
    void the_list_of_a_drag_is_loaded_without_a_guard();

    void nothing_copied_pastes_nothing();
    void a_pasted_folder_lands_below_the_selected_one();
    void a_folder_is_not_pasted_into_itself();
    void pasted_files_come_from_the_folder_they_were_copied_in();
    void files_can_be_pasted_into_their_own_folder();
    void a_cancelled_paste_leaves_the_rows();
    void a_paste_that_fails_in_part_shows_what_has_come();

    void a_deleted_folder_leaves_the_tree();
    void the_last_folder_hands_over_to_its_parent();
    void a_folder_kept_by_a_no_changes_nothing();
    void a_drive_is_never_deleted();

    void deleted_files_leave_the_final_list();
    void files_kept_by_a_no_change_nothing();
    void after_a_failure_only_what_is_gone_leaves_the_final_list();
    void deleting_no_rows_asks_nothing_and_fills_the_list();
    void the_rows_selected_at_the_start_are_deleted();
    void rows_of_another_folder_are_not_deleted();

    void commands_go_to_the_pane_of_the_last_act_data();
    void commands_go_to_the_pane_of_the_last_act();
    void entries_of_the_tree_menu_data();
    void entries_of_the_tree_menu();
    void the_tree_menu_opens_on_ready_drives_only();

private:
    std::unique_ptr<CommandedPanes> panes_;
};

void TestFileCommands::init()
{
    panes_ = std::make_unique<CommandedPanes>();
}

void TestFileCommands::cleanup()
{
    panes_.reset();
}

void TestFileCommands::nothing_happens_while_the_computer_is_selected_data()
{
    using Command = void (FileCommands::*)();
    QTest::addColumn<Command>("command");
    QTest::newRow("copy folder") << Command(&FileCommands::mnu_tree_copy_Click);
    QTest::newRow("copy files") << Command(&FileCommands::mnu_ListView_copy_Click);
    QTest::newRow("paste") << Command(&FileCommands::mnu_tree_paste_Click);
    QTest::newRow("delete folder") << Command(&FileCommands::mnu_tree_delete_Click);
    QTest::newRow("delete files") << Command(&FileCommands::mnu_ListView_delete_Click);
}

void TestFileCommands::nothing_happens_while_the_computer_is_selected()
{
    using Command = void (FileCommands::*)();
    QFETCH(const Command, command);
    panes_->select_rows({u"one.mp3"_s});
    for (const i16 kind : {copied_folder, copied_files}) {
        shared.copy_source_kind = kind;
        shared.copied_folder_path = u"C:\\Rock"_s;
        shared.copy_source_folder = u"C:\\Pop\\"_s;
        shared.copy_list_count = 1;
        shared.copy_list.at(0) = {.in_use = 1, .name = u"two.mp3"_s};
        panes_->select_computer();
        (panes_->files.*command)();
        QCOMPARE(shared.copy_source_kind, kind);
        QCOMPARE(copied_names(), QStringList{u"two.mp3"_s});
    }
    QCOMPARE(shared.copied_folder_path, u"C:\\Rock"_s);
    QCOMPARE(panes_->prompts.take(), QStringList());
    QCOMPARE(panes_->on_disk(u"C:\\Pop"_s), all_of_pop);
    QCOMPARE(panes_->names(), all_of_pop);
}

void TestFileCommands::a_copied_folder_is_remembered()
{
    panes_->files.mnu_tree_copy_Click();
    QCOMPARE(shared.copy_source_kind, i16(1));
    QCOMPARE(shared.copied_folder_path, u"C:\\Pop"_s);
    panes_->tree_view.set_Selected(panes_->tree_view.Item(u"C:"_s));
    panes_->files.mnu_tree_copy_Click();
    QCOMPARE(shared.copied_folder_path, u"C:"_s);
}

void TestFileCommands::copied_files_are_remembered_in_the_order_of_the_list()
{
    for (CopyListEntry& slot : shared.copy_list)
        slot = {.in_use = 1, .name = u"old"_s};
    shared.copy_list_count = 301;
    panes_->list_view.sort(0, ListView::Order::descending);
    panes_->select_rows({u"one.mp3"_s, u"two.mp3"_s});
    panes_->files.mnu_ListView_copy_Click();
    QCOMPARE(shared.copy_source_kind, i16(2));
    QCOMPARE(shared.copy_list_count, i16(2));
    QCOMPARE(copied_names(), (QStringList{u"two.mp3"_s, u"one.mp3"_s}));
    QCOMPARE(shared.copy_source_folder, u"C:\\Pop\\"_s);
}

void TestFileCommands::a_copy_of_no_rows_pastes_nothing()
{
    panes_->files.mnu_tree_copy_Click();
    panes_->select_rows({});
    panes_->files.mnu_ListView_copy_Click();
    QCOMPARE(shared.copy_source_kind, i16(2));
    QCOMPARE(shared.copy_list_count, i16(0));
    panes_->write(u"C:\\Pop\\unseen.mp3"_s);
    panes_->files.mnu_tree_paste_Click();
    QCOMPARE(panes_->names(), all_of_pop);
    QCOMPARE(panes_->on_disk(u"C:\\Pop"_s).size(), 4);
}

void TestFileCommands::three_hundred_and_one_rows_can_be_copied()
{
    panes_->list_view.Clear();
    for (int number = 0; number < 301; ++number)
        panes_->list_view.set_Selected(panes_->list_view.Add(QString::number(number), QString::number(number)), true);
    panes_->files.mnu_ListView_copy_Click();
    QCOMPARE(shared.copy_list_count, i16(301));
    QCOMPARE(shared.copy_list.at(300).name, u"300"_s);
    QCOMPARE(shared.copy_source_folder, u"C:\\Pop\\"_s);
}

void TestFileCommands::the_next_row_is_one_too_many()
{
    panes_->list_view.Clear();
    for (int number = 0; number < 302; ++number)
        panes_->list_view.set_Selected(panes_->list_view.Add(QString::number(number), QString::number(number)), true);
    int error = 0;
    try {
        panes_->files.mnu_ListView_copy_Click();
    } catch (const RunTimeError& raised) {
        error = raised.number();
    }
    QCOMPARE(error, 9);
    QCOMPARE(shared.copy_source_kind, i16(2));
    QCOMPARE(shared.copy_list_count, i16(301));
    QCOMPARE(copied_names().size(), 301);
    QCOMPARE(shared.copy_source_folder, QString());
}

void TestFileCommands::the_list_of_a_drag_is_loaded_without_a_guard()
{
    panes_->select_rows({u"three.mp3"_s});
    panes_->select_computer();
    load_copy_list(panes_->list_view);
    QCOMPARE(copied_names(), QStringList{u"three.mp3"_s});
    QCOMPARE(shared.copy_source_folder, u"C:\\Pop\\"_s);
    QCOMPARE(shared.copy_source_kind, i16(0));
}

void TestFileCommands::nothing_copied_pastes_nothing()
{
    panes_->write(u"C:\\Pop\\unseen.mp3"_s);
    panes_->files.mnu_tree_paste_Click();
    QCOMPARE(panes_->names(), all_of_pop);
    QCOMPARE(panes_->prompts.take(), QStringList());
}

void TestFileCommands::a_pasted_folder_lands_below_the_selected_one()
{
    panes_->disk.make_folder(u"C:\\Pop\\Live"_s);
    panes_->files.mnu_tree_copy_Click();
    panes_->click_folder(u"C:\\Rock"_s);
    panes_->write(u"C:\\Rock\\unseen.mp3"_s);
    panes_->files.mnu_tree_paste_Click();
    QCOMPARE(shared.dest_folder_path, u"C:\\Rock"_s);
    QCOMPARE(panes_->disk.read(u"C:\\Rock\\Pop\\one.mp3"_s), CommandedPanes::content_of(u"C:\\Pop\\one.mp3"_s));
    QCOMPARE(panes_->on_disk(u"C:\\Pop"_s).size(), 4);
    QVERIFY(panes_->has_node(u"C:\\Rock\\Pop"_s));
    QCOMPARE(panes_->names(), QStringList{u"unseen.mp3"_s});
    QCOMPARE(panes_->tree.selected_key(), u"C:\\Rock"_s);

    // What was copied is kept: it can be pasted elsewhere as well.
    panes_->click_folder(u"C:\\Rock\\Pop"_s);
    panes_->files.mnu_tree_paste_Click();
    QVERIFY(panes_->disk.exists(u"C:\\Rock\\Pop\\Pop\\Live"_s));
}

void TestFileCommands::a_folder_is_not_pasted_into_itself()
{
    panes_->prompts.answers = {Answer::skip};
    panes_->files.mnu_tree_copy_Click();
    panes_->write(u"C:\\Pop\\unseen.mp3"_s);
    panes_->files.mnu_tree_paste_Click();
    QCOMPARE(panes_->prompts.take(), QStringList{u"error C:\\Pop"_s});
    QVERIFY(!panes_->disk.exists(u"C:\\Pop\\Pop"_s));
    // The panes are reloaded all the same.
    QVERIFY(panes_->row_of(u"unseen.mp3"_s) != 0);
}

void TestFileCommands::pasted_files_come_from_the_folder_they_were_copied_in()
{
    panes_->select_rows({u"one.mp3"_s, u"two.mp3"_s});
    panes_->files.mnu_ListView_copy_Click();
    for (const QString& target : {u"C:\\Rock"_s, u"C:"_s}) {
        panes_->click_folder(target);
        panes_->files.mnu_tree_paste_Click();
        QCOMPARE(panes_->names(), (QStringList{u"one.mp3"_s, u"two.mp3"_s}));
        QCOMPARE(panes_->disk.read(target + u"\\two.mp3"_s), CommandedPanes::content_of(u"C:\\Pop\\two.mp3"_s));
    }
    QCOMPARE(panes_->on_disk(u"C:\\Pop"_s), all_of_pop);
    QCOMPARE(shared.copy_list_count, i16(2));
    QCOMPARE(panes_->prompts.take(), QStringList());
}

void TestFileCommands::files_can_be_pasted_into_their_own_folder()
{
    panes_->select_rows({u"one.mp3"_s});
    panes_->files.mnu_ListView_copy_Click();
    panes_->files.mnu_tree_paste_Click();
    QCOMPARE(panes_->prompts.take(), QStringList());
    QCOMPARE(panes_->names().size(), 4);
    QCOMPARE(panes_->names(), panes_->on_disk(u"C:\\Pop"_s));
    for (const QString& name : all_of_pop)
        QCOMPARE(panes_->disk.read(u"C:\\Pop\\"_s + name), CommandedPanes::content_of(u"C:\\Pop\\"_s + name));
}

void TestFileCommands::a_cancelled_paste_leaves_the_rows()
{
    panes_->select_rows({u"one.mp3"_s});
    panes_->files.mnu_ListView_copy_Click();
    panes_->click_folder(u"C:\\Rock"_s);
    panes_->write(u"C:\\Rock\\one.mp3"_s);
    panes_->prompts.answers = {Answer::cancel};
    panes_->files.mnu_tree_paste_Click();
    QCOMPARE(panes_->prompts.take(), QStringList{u"overwrite C:\\Rock\\one.mp3 from C:\\Pop\\one.mp3"_s});
    QCOMPARE(panes_->names(), QStringList());
    QCOMPARE(panes_->disk.read(u"C:\\Rock\\one.mp3"_s), CommandedPanes::content_of(u"C:\\Rock\\one.mp3"_s));
}

void TestFileCommands::a_paste_that_fails_in_part_shows_what_has_come()
{
    panes_->select_rows({u"one.mp3"_s, u"two.mp3"_s});
    panes_->files.mnu_ListView_copy_Click();
    QVERIFY(QFile::remove(QFile::decodeName(panes_->disk.native(u"C:\\Pop\\one.mp3"_s))));
    panes_->click_folder(u"C:\\Rock"_s);
    panes_->prompts.always = Answer::skip;
    panes_->files.mnu_tree_paste_Click();
    QCOMPARE(panes_->prompts.take().size(), 1);
    QCOMPARE(panes_->names(), QStringList{u"two.mp3"_s});
}

void TestFileCommands::a_deleted_folder_leaves_the_tree()
{
    panes_->write(u"C:\\Rock\\four.mp3"_s);
    panes_->tick(u"two.mp3"_s);
    shared.tree_parent_key = u"stale"_s;
    panes_->prompts.answers = {Answer::yes};
    panes_->files.mnu_tree_delete_Click();
    QCOMPARE(panes_->prompts.take(), QStringList{u"trash C:\\Pop"_s});
    QVERIFY(!panes_->disk.exists(u"C:\\Pop"_s));
    QVERIFY(!panes_->has_node(u"C:\\Pop"_s));
    QCOMPARE(panes_->tree.selected_key(), u"C:\\Rock"_s);
    QCOMPARE(shared.tree_node_path, u"C:\\Rock"_s);
    QCOMPARE(shared.tree_parent_key, u"C:"_s);
    QCOMPARE(shared.current_folder, u"C:\\Rock\\"_s);
    QCOMPARE(panes_->names(), QStringList{u"four.mp3"_s});
    // Files of the final list below it stay listed.
    QCOMPARE(shared.final_list_count, i32(1));
}

void TestFileCommands::the_last_folder_hands_over_to_its_parent()
{
    panes_->disk.make_folder(u"C:\\Rock\\Old"_s);
    panes_->click_folder(u"C:\\Rock"_s);
    panes_->click_folder(u"C:\\Rock\\Old"_s);
    panes_->prompts.answers = {Answer::yes};
    panes_->files.mnu_tree_delete_Click();
    QCOMPARE(panes_->tree.selected_key(), u"C:\\Rock"_s);
    QCOMPARE(shared.current_folder, u"C:\\Rock\\"_s);
}

void TestFileCommands::a_folder_kept_by_a_no_changes_nothing()
{
    panes_->write(u"C:\\Pop\\unseen.mp3"_s);
    panes_->prompts.answers = {Answer::no};
    panes_->files.mnu_tree_delete_Click();
    QCOMPARE(panes_->prompts.take(), QStringList{u"trash C:\\Pop"_s});
    QVERIFY(panes_->disk.exists(u"C:\\Pop\\one.mp3"_s));
    QCOMPARE(panes_->tree.selected_key(), u"C:\\Pop"_s);
    QCOMPARE(panes_->names(), all_of_pop);
}

void TestFileCommands::a_drive_is_never_deleted()
{
    panes_->click_folder(u"C:"_s);
    panes_->prompts.answers = {Answer::yes, Answer::skip};
    panes_->files.mnu_tree_delete_Click();
    QCOMPARE(panes_->prompts.take(), (QStringList{u"trash C:"_s, u"error C:"_s}));
    QCOMPARE(panes_->on_disk(u"C:\\Pop"_s), all_of_pop);
    QVERIFY(panes_->has_node(u"C:"_s));
}

void TestFileCommands::deleted_files_leave_the_final_list()
{
    for (const QString& name : all_of_pop)
        panes_->tick(name);
    panes_->tick(u"one.mp3"_s, false);
    panes_->list_view.sort(0, ListView::Order::ascending);
    panes_->select_rows({u"one.mp3"_s, u"two.mp3"_s});
    shared.tree_node_path = shared.current_folder = u"stale"_s;
    panes_->prompts.answers = {Answer::yes};
    panes_->files.mnu_ListView_delete_Click();
    QCOMPARE(panes_->prompts.take(), QStringList{u"trash C:\\Pop\\one.mp3, C:\\Pop\\two.mp3"_s});
    QCOMPARE(panes_->on_disk(u"C:\\Pop"_s), QStringList{u"three.mp3"_s});
    QCOMPARE(panes_->names(), QStringList{u"three.mp3"_s});
    QCOMPARE(panes_->ticked_names(), QStringList{u"three.mp3"_s});
    QCOMPARE(shared.final_list_count, i32(1));
    QCOMPARE(shared.final_list_bytes, i32(200));
    QCOMPARE(is_in_final_list(u"two.mp3"_s, u"C:\\Pop\\"_s), i16(0));
    QCOMPARE(panes_->status_bar.panel_text(3), u"1 files/0MB"_s);
    QCOMPARE(panes_->status_bar.panel_text(1), u"1 File"_s);
}

void TestFileCommands::files_kept_by_a_no_change_nothing()
{
    panes_->tick(u"two.mp3"_s);
    panes_->select_rows(all_of_pop);
    panes_->write(u"C:\\Pop\\unseen.mp3"_s);
    panes_->status_bar.set_panel_text(3, u"as it was"_s);
    panes_->prompts.answers = {Answer::no};
    panes_->files.mnu_ListView_delete_Click();
    QCOMPARE(panes_->prompts.take().size(), 1);
    QCOMPARE(panes_->on_disk(u"C:\\Pop"_s).size(), 4);
    QCOMPARE(panes_->names(), all_of_pop);
    QCOMPARE(panes_->selected_names(), all_of_pop);
    QCOMPARE(shared.final_list_count, i32(1));
    QCOMPARE(panes_->status_bar.panel_text(3), u"as it was"_s);
}

void TestFileCommands::after_a_failure_only_what_is_gone_leaves_the_final_list()
{
    for (const QString& name : all_of_pop)
        panes_->tick(name);
    panes_->select_rows({u"one.mp3"_s, u"two.mp3"_s});
    const QByteArray folder = panes_->disk.native(u"C:\\Pop"_s);
    QVERIFY(QFile::remove(QFile::decodeName(folder + "/two.mp3")));
    panes_->prompts.always = Answer::skip;
    panes_->prompts.answers = {Answer::yes};
    const BoundByRights bound;
    chmod(folder.constData(), 0555);
    panes_->files.mnu_ListView_delete_Click();
    chmod(folder.constData(), 0755);
    QVERIFY(panes_->disk.exists(u"C:\\Pop\\one.mp3"_s));
    QCOMPARE(panes_->ticked_names(), (QStringList{u"one.mp3"_s, u"three.mp3"_s}));
    QCOMPARE(shared.final_list_count, i32(2));
    QCOMPARE(is_in_final_list(u"two.mp3"_s, u"C:\\Pop\\"_s), i16(0));
    QCOMPARE(panes_->status_bar.panel_text(3), u"2 files/0MB"_s);
}

void TestFileCommands::deleting_no_rows_asks_nothing_and_fills_the_list()
{
    panes_->select_rows({});
    panes_->write(u"C:\\Pop\\unseen.mp3"_s);
    panes_->status_bar.set_panel_text(3, u"as it was"_s);
    panes_->files.mnu_ListView_delete_Click();
    QCOMPARE(panes_->prompts.take(), QStringList());
    QCOMPARE(panes_->names().size(), 4);
    QCOMPARE(panes_->status_bar.panel_text(3), u"0 files/0MB"_s);
}

void TestFileCommands::the_rows_selected_at_the_start_are_deleted()
{
    panes_->tick(u"two.mp3"_s);
    panes_->tick(u"three.mp3"_s);
    panes_->select_rows({u"two.mp3"_s});
    SlowYes prompts;
    prompts.answers = {Answer::yes};
    prompts.meanwhile = [this] { panes_->select_rows({u"three.mp3"_s}); }; // as the player does at a track's end
    panes_->files.mnu_ListView_delete_Click();
    QCOMPARE(panes_->on_disk(u"C:\\Pop"_s), (QStringList{u"one.mp3"_s, u"three.mp3"_s}));
    QCOMPARE(panes_->ticked_names(), QStringList{u"three.mp3"_s});
    QCOMPARE(shared.final_list_count, i32(1));
}

// The index of the folder last opened, from a time with more nodes, ends the click before the list is filled.
void TestFileCommands::rows_of_another_folder_are_not_deleted()
{
    panes_->write(u"C:\\Rock\\one.mp3"_s);
    shared.last_open_node_index = 1000;
    panes_->click_folder(u"C:\\Rock"_s);
    QCOMPARE(panes_->names(), all_of_pop);
    panes_->select_rows({u"one.mp3"_s});
    panes_->files.mnu_ListView_delete_Click();
    QCOMPARE(panes_->prompts.take(), QStringList());
    QVERIFY(panes_->disk.exists(u"C:\\Rock\\one.mp3"_s));
    QCOMPARE(panes_->on_disk(u"C:\\Pop"_s), all_of_pop);
    QCOMPARE(panes_->names(), QStringList{u"one.mp3"_s});
    // Now the row is the file's own.
    panes_->prompts.answers = {Answer::yes};
    panes_->files.mnu_ListView_delete_Click();
    QCOMPARE(panes_->prompts.take(), QStringList{u"trash C:\\Rock\\one.mp3"_s});
}

void TestFileCommands::commands_go_to_the_pane_of_the_last_act_data()
{
    QTest::addColumn<int>("pane");
    QTest::addColumn<int>("copied"); ///< kind
    QTest::addColumn<QString>("question");
    QTest::newRow("the tree") << 1 << 1 << u"trash C:\\Pop"_s;
    QTest::newRow("the list") << 2 << 2 << u"trash C:\\Pop\\one.mp3"_s;
    for (const int other : {0, 3, 4, 5, 6, 7, 11, 22})
        QTest::addRow("pane %d", other) << other << 0 << QString();
}

void TestFileCommands::commands_go_to_the_pane_of_the_last_act()
{
    QFETCH(const int, pane);
    QFETCH(const QString, question);
    panes_->select_rows({u"one.mp3"_s});
    shared.focus_pane = static_cast<i16>(pane);
    panes_->prompts.always = Answer::no;
    panes_->files.copy_in_pane();
    QTEST(int(shared.copy_source_kind), "copied");
    panes_->files.delete_in_pane();
    QCOMPARE(panes_->prompts.take().join(u'|'), question);
}

void TestFileCommands::entries_of_the_tree_menu_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("enabled"); ///< a letter for each of Add folder, Copy, Paste, Delete, Rename
    QTest::newRow("a drive, a folder copied") << u"C:"_s << 1 << 0 << u"A.P.."_s;
    QTest::newRow("a drive, files copied") << u"C:"_s << 2 << 1 << u"A.P.."_s;
    QTest::newRow("a drive, no files copied") << u"C:"_s << 2 << 0 << u"A.P.."_s;
    QTest::newRow("a drive, nothing copied") << u"C:"_s << 0 << 0 << u"A...."_s;
    QTest::newRow("a CD drive, files copied") << u"D:"_s << 2 << 1 << u"....."_s;
    QTest::newRow("a CD drive, nothing copied") << u"D:"_s << 0 << 0 << u"....."_s;
    QTest::newRow("a folder, a folder copied") << u"C:\\Pop"_s << 1 << 0 << u"ACPDR"_s;
    QTest::newRow("a folder, files copied") << u"C:\\Pop"_s << 2 << 1 << u"ACPDR"_s;
    QTest::newRow("a folder, files copied before a folder") << u"C:\\Pop"_s << 1 << 3 << u"ACPDR"_s;
    QTest::newRow("a folder, no files copied") << u"C:\\Pop"_s << 2 << 0 << u"AC.DR"_s;
    QTest::newRow("a folder, nothing copied") << u"C:\\Pop"_s << 0 << 0 << u"AC.DR"_s;
    QTest::newRow("a folder on a CD, files copied") << u"D:\\Pop"_s << 2 << 1 << u".C..."_s;
    QTest::newRow("a folder on a CD, nothing copied") << u"D:\\Pop"_s << 0 << 0 << u".C..."_s;
}

void TestFileCommands::entries_of_the_tree_menu()
{
    QFETCH(const QString, key);
    QFETCH(const int, kind);
    QFETCH(const int, count);
    add_drive_entry(2, u"D"_s, 1);
    shared.copy_source_kind = static_cast<i16>(kind);
    shared.copy_list_count = static_cast<i16>(count);
    QVERIFY(tree_menu_opens(key));
    const TreeMenuEntries entries = tree_menu_entries(key);
    QString enabled = u"ACPDR"_s;
    int place = 0;
    for (const bool is_on : {entries.add_folder, entries.copy, entries.paste, entries.remove, entries.rename}) {
        if (!is_on)
            enabled[place] = u'.';
        ++place;
    }
    QTEST(enabled, "enabled");
}

void TestFileCommands::the_tree_menu_opens_on_ready_drives_only()
{
    add_drive_entry(1, u"A"_s, 0);
    add_drive_entry(2, u"D"_s, 0);
    QVERIFY(!tree_menu_opens(u"MYCOMPUTER"_s));
    QVERIFY(!tree_menu_opens(u"A:"_s));
    QVERIFY(!tree_menu_opens(u"D:\\Pop"_s));
    QVERIFY(!tree_menu_opens(u"X:"_s));
    QVERIFY(tree_menu_opens(u"C:\\MYCOMPUTER"_s));
}

QUILMO_UI_TEST(TestFileCommands)
#include "test_file_commands.moc"
