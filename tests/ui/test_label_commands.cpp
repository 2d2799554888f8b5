#include "core/drive_table.h"
#include "core/mod_of_grobal_var.h"
#include "rights.h"
#include "sample_files.h"
#include "selection/final_list.h"
#include "ui_commands.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <sys/stat.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

using Answer = ScriptedPrompts::Answer;

const QStringList all_of_pop = {u"one.mp3"_s, u"three.mp3"_s, u"two.mp3"_s};

} // namespace

class TestLabelCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void nothing_happens_while_the_computer_is_selected_data();
    void nothing_happens_while_the_computer_is_selected();
    void an_empty_list_has_nothing_to_rename();
    void an_edit_that_nobody_asked_for_is_refused();
    void an_open_edit_shows_in_the_pane_data();
    void an_open_edit_shows_in_the_pane();
    void the_key_renames_in_the_pane_of_the_last_act_data();
    void the_key_renames_in_the_pane_of_the_last_act();

    void a_renamed_file_shows_its_new_name();
    void the_picture_follows_the_new_name_data();
    void the_picture_follows_the_new_name();
    void the_tag_is_shown_for_a_name_that_is_not_FIF();
    void an_empty_name_is_refused();
    void an_unchanged_name_changes_nothing_data();
    void an_unchanged_name_changes_nothing();
    void forbidden_characters_stay_in_the_row();
    void a_name_without_its_ending_leaves_the_list_at_the_next_fill();
    void a_taken_name_is_refused();
    void a_playing_file_is_not_renamed();
    void a_stopped_file_is_taken_from_the_player();
    void another_file_in_the_player_stays_there();
    void a_ticked_file_takes_its_new_name_into_the_final_list();
    void a_name_in_the_final_list_is_told();
    void the_file_of_the_row_is_renamed();
    void a_row_of_another_folder_is_not_renamed();

    void a_renamed_folder_takes_its_folders_along();
    void drives_are_not_renamed();
    void a_folder_in_one_called_like_the_computer_is_not_renamed();
    void a_folder_that_cannot_be_renamed_keeps_its_label_data();
    void a_folder_that_cannot_be_renamed_keeps_its_label();
    void an_unchanged_folder_is_not_touched();
    void forbidden_characters_stay_in_the_label();
    void the_node_of_a_vanished_folder_makes_room();

    void new_folders_are_counted();
    void a_new_folder_is_named_at_once();
    void a_new_folder_below_a_closed_node_is_in_sight();
    void a_CD_takes_no_new_folder();
    void a_folder_without_rights_takes_no_new_one();
    void a_file_in_the_way_of_a_new_folder();
    void a_new_folder_takes_the_place_of_a_vanished_one();

private:
    /// Renames a file of the folder shown as a person does.
    void rename(const QString& name, const QString& text);
    void rename_folder(const QString& text);
    QString label(const QString& key) const { return panes_->tree_view.Item(key)->Text(); }

    std::unique_ptr<CommandedPanes> panes_;
};

void TestLabelCommands::init()
{
    panes_ = std::make_unique<CommandedPanes>();
    panes_->show();
}

void TestLabelCommands::cleanup()
{
    panes_.reset();
}

void TestLabelCommands::rename(const QString& name, const QString& text)
{
    panes_->list.ItemClick(panes_->row_of(name));
    panes_->labels.mnu_ListView_rename_Click();
    QVERIFY(panes_->list_view.is_editing());
    panes_->type_label(text);
    QVERIFY(!panes_->list_view.is_editing());
}

void TestLabelCommands::rename_folder(const QString& text)
{
    panes_->labels.mnu_tree_rename_Click();
    QVERIFY(panes_->tree_view.is_editing());
    panes_->type_label(text);
    QVERIFY(!panes_->tree_view.is_editing());
}

void TestLabelCommands::nothing_happens_while_the_computer_is_selected_data()
{
    using Command = void (LabelCommands::*)();
    QTest::addColumn<Command>("command");
    QTest::newRow("new folder") << Command(&LabelCommands::mnu_tree_add_folder_Click);
    QTest::newRow("rename folder") << Command(&LabelCommands::mnu_tree_rename_Click);
    QTest::newRow("rename file") << Command(&LabelCommands::mnu_ListView_rename_Click);
}

void TestLabelCommands::nothing_happens_while_the_computer_is_selected()
{
    using Command = void (LabelCommands::*)();
    QFETCH(const Command, command);
    panes_->select_computer();
    const int nodes = panes_->tree_view.Count();
    (panes_->labels.*command)();
    QVERIFY(!panes_->tree_view.is_editing());
    QVERIFY(!panes_->list_view.is_editing());
    QCOMPARE(panes_->tree_view.Count(), nodes);
    QCOMPARE(panes_->on_disk(u"C:"_s), (QStringList{u"Pop"_s, u"Rock"_s}));
}

void TestLabelCommands::an_empty_list_has_nothing_to_rename()
{
    panes_->click_folder(u"C:\\Rock"_s);
    panes_->labels.mnu_ListView_rename_Click();
    QVERIFY(!panes_->list_view.is_editing());
    // Nothing was asked for, so the next edit is refused as well.
    panes_->tree_view.StartLabelEdit();
    QVERIFY(!panes_->tree_view.is_editing());
}

void TestLabelCommands::an_edit_that_nobody_asked_for_is_refused()
{
    shared.focus_pane = pane_none;
    panes_->list_view.StartLabelEdit();
    panes_->tree_view.StartLabelEdit();
    QVERIFY(!panes_->list_view.is_editing());
    QVERIFY(!panes_->tree_view.is_editing());
    QCOMPARE(shared.focus_pane, i16(pane_none));

    // One command opens one edit.
    rename(u"one.mp3"_s, u"1.mp3"_s);
    panes_->list_view.StartLabelEdit();
    QVERIFY(!panes_->list_view.is_editing());
    rename_folder(u"Pop 2"_s);
    panes_->tree_view.StartLabelEdit();
    QVERIFY(!panes_->tree_view.is_editing());
}

void TestLabelCommands::an_open_edit_shows_in_the_pane_data()
{
    QTest::addColumn<bool>("in_tree");
    QTest::addColumn<Qt::Key>("end");
    QTest::newRow("the list, ended by Enter") << false << Qt::Key_Return;
    QTest::newRow("the list, ended by Esc") << false << Qt::Key_Escape;
    QTest::newRow("the tree, ended by Enter") << true << Qt::Key_Return;
    QTest::newRow("the tree, ended by Esc") << true << Qt::Key_Escape;
}

void TestLabelCommands::an_open_edit_shows_in_the_pane()
{
    QFETCH(const bool, in_tree);
    QFETCH(const Qt::Key, end);
    QWidget& pane = in_tree ? static_cast<QWidget&>(panes_->tree_view) : panes_->list_view;
    pane.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&pane));
    if (in_tree)
        panes_->labels.mnu_tree_rename_Click();
    else
        panes_->labels.mnu_ListView_rename_Click();
    QCOMPARE(shared.focus_pane, i16(in_tree ? 11 : 22));
    panes_->type_label(u"other"_s, end);
    QCOMPARE(shared.focus_pane, i16(in_tree ? 1 : 2));
    const bool is_renamed = panes_->disk.exists(in_tree ? u"C:\\other"_s : u"C:\\Pop\\other"_s);
    QCOMPARE(is_renamed, end == Qt::Key_Return);
}

void TestLabelCommands::the_key_renames_in_the_pane_of_the_last_act_data()
{
    QTest::addColumn<int>("pane");
    QTest::addColumn<bool>("edits_tree");
    QTest::addColumn<bool>("edits_list");
    QTest::newRow("the tree") << 1 << true << false;
    QTest::newRow("the list") << 2 << false << true;
    for (const int other : {0, 3, 4, 5, 6, 7, 11, 22})
        QTest::addRow("pane %d", other) << other << false << false;
}

void TestLabelCommands::the_key_renames_in_the_pane_of_the_last_act()
{
    QFETCH(const int, pane);
    shared.focus_pane = static_cast<i16>(pane);
    panes_->labels.rename_in_pane();
    QTEST(panes_->tree_view.is_editing(), "edits_tree");
    QTEST(panes_->list_view.is_editing(), "edits_list");
}

void TestLabelCommands::a_renamed_file_shows_its_new_name()
{
    rename(u"one.mp3"_s, u"Ann - Sea.mp3"_s);
    QCOMPARE(panes_->on_disk(u"C:\\Pop"_s), (QStringList{u"Ann - Sea.mp3"_s, u"three.mp3"_s, u"two.mp3"_s}));
    const ListRow& row = panes_->row(u"Ann - Sea.mp3"_s);
    QCOMPARE(row.Key, u"one.mp3"_s);
    QVERIFY(row.Selected);
    QVERIFY(!row.Checked);
    QCOMPARE(shared.selected_mp3_name, u"Ann - Sea.mp3"_s);
    QCOMPARE(shared.selected_mp3_full, u"C:\\Pop\\Ann - Sea.mp3"_s);
    QCOMPARE(shared.selected_mp3_path, u"C:\\Pop\\Ann - Sea.mp3"_s);
    QCOMPARE(panes_->fields.filename, u"one.mp3"_s);
    QCOMPARE(panes_->fields.artist, u"Ann "_s);
    QCOMPARE(shared.final_list_count, i32(0));
    QCOMPARE(panes_->releases, 0);

    panes_->list.ItemClick(panes_->row_of(u"Ann - Sea.mp3"_s));
    QCOMPARE(panes_->fields.filename, u"one.mp3"_s);
    panes_->tree.refresh_all();
    QCOMPARE(panes_->row(u"Ann - Sea.mp3"_s).Key, u"Ann - Sea.mp3"_s);
    QCOMPARE(panes_->list.filename_box_text(), u"Ann - Sea.mp3"_s);
    rename(u"Ann - Sea.mp3"_s, u"again.mp3"_s);
    QVERIFY(panes_->disk.exists(u"C:\\Pop\\again.mp3"_s));
    rename(u"again.mp3"_s, u"once more.mp3"_s);
    QVERIFY(panes_->disk.exists(u"C:\\Pop\\once more.mp3"_s));
}

void TestLabelCommands::the_picture_follows_the_new_name_data()
{
    QTest::addColumn<QString>("old_name");
    QTest::addColumn<QString>("new_name");
    QTest::addColumn<int>("picture");
    QTest::newRow("into FIF") << u"one.mp3"_s << u"[Ann][Sea].mp3"_s << 1;
    QTest::newRow("out of FIF") << u"[Ann][Sky].mp3"_s << u"sky.mp3"_s << 2;
}

void TestLabelCommands::the_picture_follows_the_new_name()
{
    QFETCH(const QString, old_name);
    QFETCH(const QString, new_name);
    panes_->write(u"C:\\Pop\\[Ann][Sky].mp3"_s);
    panes_->tree.refresh_all();
    rename(old_name, new_name);
    QTEST(panes_->row(new_name).SmallIcon, "picture");
}

void TestLabelCommands::the_tag_is_shown_for_a_name_that_is_not_FIF()
{
    panes_->disk.write(u"C:\\Pop\\tagged.mp3"_s,
                       sample_audio({.frames = 2}) + sample_tag({.title = "Sea", .artist = "Ann"}));
    panes_->tree.refresh_all();
    panes_->fields.artist = u"old"_s;
    rename(u"tagged.mp3"_s, u"new.mp3"_s);
    QCOMPARE(panes_->fields.artist, u"Ann"_s);
    QCOMPARE(panes_->fields.title, u"Sea"_s);
    QCOMPARE(panes_->row(u"new.mp3"_s).SmallIcon, 2);
}

void TestLabelCommands::an_empty_name_is_refused()
{
    rename(u"one.mp3"_s, QString());
    QCOMPARE(panes_->names(), all_of_pop);
    QCOMPARE(panes_->on_disk(u"C:\\Pop"_s), all_of_pop);
    QCOMPARE(panes_->prompts.take(), QStringList());
    QCOMPARE(shared.selected_mp3_name, u"one.mp3"_s);
}

void TestLabelCommands::an_unchanged_name_changes_nothing_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("is_playing");
    QTest::newRow("as it was") << u"one.mp3"_s << 0;
    QTest::newRow("as it was, playing") << u"one.mp3"_s << 1;
    QTest::newRow("more forbidden characters") << u"o?ne*.mp3"_s << 0;
}

void TestLabelCommands::an_unchanged_name_changes_nothing()
{
    QFETCH(const QString, text);
    QFETCH(const int, is_playing);
    panes_->tick(u"one.mp3"_s);
    shared.playing_mp3_path = u"C:\\Pop\\one.mp3"_s;
    shared.is_playing = static_cast<i16>(is_playing);
    rename(u"one.mp3"_s, text);
    QCOMPARE(panes_->names(), all_of_pop);
    QCOMPARE(panes_->prompts.take(), QStringList());
    QCOMPARE(panes_->messages.take(), QStringList());
    QCOMPARE(panes_->releases, 0);
    QCOMPARE(shared.selected_mp3_name, u"one.mp3"_s);
}

void TestLabelCommands::forbidden_characters_stay_in_the_row()
{
    panes_->tick(u"one.mp3"_s);
    rename(u"one.mp3"_s, u"what? <1>.mp3"_s);
    QVERIFY(panes_->disk.exists(u"C:\\Pop\\what 1.mp3"_s));
    QVERIFY(panes_->row_of(u"what? <1>.mp3"_s) != 0);
    QCOMPARE(shared.selected_mp3_full, u"C:\\Pop\\what? <1>.mp3"_s);
    QCOMPARE(is_in_final_list(u"what? <1>.mp3"_s, u"C:\\Pop\\"_s), i16(1));
}

void TestLabelCommands::a_name_without_its_ending_leaves_the_list_at_the_next_fill()
{
    rename(u"one.mp3"_s, u"one"_s);
    QVERIFY(panes_->disk.exists(u"C:\\Pop\\one"_s));
    QVERIFY(panes_->row_of(u"one"_s) != 0);
    panes_->tree.refresh_all();
    QCOMPARE(panes_->names(), (QStringList{u"three.mp3"_s, u"two.mp3"_s}));
}

void TestLabelCommands::a_taken_name_is_refused()
{
    panes_->tick(u"one.mp3"_s);
    panes_->prompts.answers = {Answer::skip};
    rename(u"one.mp3"_s, u"two.mp3"_s);
    QCOMPARE(panes_->prompts.take().size(), 1);
    QCOMPARE(panes_->messages.take(), QStringList());
    QCOMPARE(panes_->names(), all_of_pop);
    for (const QString& name : all_of_pop)
        QCOMPARE(panes_->disk.read(u"C:\\Pop\\"_s + name), CommandedPanes::content_of(u"C:\\Pop\\"_s + name));
    QCOMPARE(shared.selected_mp3_name, u"one.mp3"_s);
    QCOMPARE(is_in_final_list(u"one.mp3"_s, u"C:\\Pop\\"_s), i16(1));
}

void TestLabelCommands::a_playing_file_is_not_renamed()
{
    shared.playing_mp3_path = u"C:\\Pop\\one.mp3"_s;
    shared.is_playing = 1;
    rename(u"one.mp3"_s, u"new.mp3"_s);
    QCOMPARE(panes_->messages.take(), QStringList{u"C:\\Pop\\one.mp3 is playing"_s});
    QCOMPARE(panes_->releases, 0);
    QCOMPARE(panes_->on_disk(u"C:\\Pop"_s), all_of_pop);
    QCOMPARE(panes_->names(), all_of_pop);
    QCOMPARE(shared.focus_pane, i16(pane_list));
}

void TestLabelCommands::a_stopped_file_is_taken_from_the_player()
{
    shared.playing_mp3_path = u"C:\\Pop\\one.mp3"_s;
    rename(u"one.mp3"_s, u"new.mp3"_s);
    QCOMPARE(panes_->messages.take(), QStringList());
    QCOMPARE(panes_->releases, 1);
    QVERIFY(panes_->disk.exists(u"C:\\Pop\\new.mp3"_s));
    QCOMPARE(shared.playing_mp3_path, u"C:\\Pop\\one.mp3"_s);
}

void TestLabelCommands::another_file_in_the_player_stays_there()
{
    shared.playing_mp3_path = u"C:\\Pop\\two.mp3"_s;
    shared.is_playing = 1;
    rename(u"one.mp3"_s, u"new.mp3"_s);
    QCOMPARE(panes_->releases, 0);
    QVERIFY(panes_->disk.exists(u"C:\\Pop\\new.mp3"_s));
}

void TestLabelCommands::a_ticked_file_takes_its_new_name_into_the_final_list()
{
    panes_->tick(u"one.mp3"_s);
    rename(u"one.mp3"_s, u"new.mp3"_s);
    QCOMPARE(is_in_final_list(u"new.mp3"_s, u"C:\\Pop\\"_s), i16(1));
    QCOMPARE(shared.final_list.at(0).full_path, u"C:\\Pop\\new.mp3"_s);
    QVERIFY(panes_->row(u"new.mp3"_s).Checked);
}

void TestLabelCommands::a_name_in_the_final_list_is_told()
{
    panes_->write(u"C:\\Rock\\new.mp3"_s);
    panes_->click_folder(u"C:\\Rock"_s);
    panes_->tick(u"new.mp3"_s);
    panes_->click_folder(u"C:\\Pop"_s);
    panes_->tick(u"one.mp3"_s);
    rename(u"one.mp3"_s, u"new.mp3"_s);
    QCOMPARE(panes_->messages.take(), QStringList{u"new.mp3 already exists in MP3 File List"_s});
    QVERIFY(panes_->disk.exists(u"C:\\Pop\\new.mp3"_s));
    QVERIFY(panes_->row_of(u"new.mp3"_s) != 0);
    QCOMPARE(is_in_final_list(u"one.mp3"_s, u"C:\\Pop\\"_s), i16(1));
}

// The selected file is still the one in Pop when the folder with a file of its name is shown.
void TestLabelCommands::the_file_of_the_row_is_renamed()
{
    panes_->write(u"C:\\Rock\\one.mp3"_s);
    panes_->list.ItemClick(panes_->row_of(u"one.mp3"_s));
    panes_->click_folder(u"C:\\Rock"_s);
    QCOMPARE(shared.selected_mp3_full, u"C:\\Pop\\one.mp3"_s);
    panes_->labels.mnu_ListView_rename_Click();
    panes_->type_label(u"new.mp3"_s);
    QCOMPARE(panes_->on_disk(u"C:\\Rock"_s), QStringList{u"new.mp3"_s});
    QCOMPARE(panes_->on_disk(u"C:\\Pop"_s), all_of_pop);
    QCOMPARE(shared.selected_mp3_path, u"C:\\Rock\\new.mp3"_s);
}

// The index of the folder last opened, from a time with more nodes, ends the click before the list is filled.
void TestLabelCommands::a_row_of_another_folder_is_not_renamed()
{
    panes_->write(u"C:\\Rock\\one.mp3"_s);
    shared.last_open_node_index = 1000;
    panes_->click_folder(u"C:\\Rock"_s);
    QCOMPARE(panes_->names(), all_of_pop);
    panes_->labels.mnu_ListView_rename_Click();
    QVERIFY(!panes_->list_view.is_editing());
    QCOMPARE(panes_->names(), QStringList{u"one.mp3"_s});
    rename(u"one.mp3"_s, u"new.mp3"_s);
    QCOMPARE(panes_->on_disk(u"C:\\Rock"_s), QStringList{u"new.mp3"_s});
    QCOMPARE(panes_->on_disk(u"C:\\Pop"_s), all_of_pop);
}

void TestLabelCommands::a_renamed_folder_takes_its_folders_along()
{
    panes_->disk.make_folder(u"C:\\Pop\\Live\\1999"_s);
    panes_->disk.make_folder(u"C:\\Pop\\Studio"_s);
    panes_->tree.refresh_all();
    panes_->tree_view.set_Expanded(panes_->tree_view.Item(u"C:\\Pop"_s), true);
    QVERIFY(panes_->has_node(u"C:\\Pop\\Live\\1999"_s));
    panes_->tick(u"one.mp3"_s);
    panes_->write(u"C:\\Pop\\unseen.mp3"_s);
    shared.tree_parent_key = shared.current_folder = u"stale"_s;
    rename_folder(u"New"_s);
    QVERIFY(panes_->disk.exists(u"C:\\New\\Live\\1999"_s));
    QVERIFY(!panes_->disk.exists(u"C:\\Pop"_s));
    QVERIFY(!panes_->has_node(u"C:\\Pop"_s));
    QVERIFY(!panes_->has_node(u"C:\\Pop\\Live"_s));
    QVERIFY(!panes_->has_node(u"C:\\Pop\\Live\\1999"_s));
    QCOMPARE(label(u"C:\\New"_s), u"New"_s);
    QCOMPARE(panes_->tree_view.Item(u"C:\\New"_s)->children().size(), std::size_t(2));
    QVERIFY(panes_->has_node(u"C:\\New\\Live"_s));
    QVERIFY(panes_->has_node(u"C:\\New\\Studio"_s));
    QCOMPARE(shared.tree_node_path, u"C:\\New"_s);
    QCOMPARE(shared.tree_parent_key, u"C:"_s);
    QCOMPARE(shared.current_folder, u"C:\\New\\"_s);
    QCOMPARE(panes_->names().size(), 4);
    // What lies below it in the final list keeps its old path.
    QCOMPARE(shared.final_list.at(0).full_path, u"C:\\Pop\\one.mp3"_s);
    QCOMPARE(panes_->prompts.take(), QStringList());
}

void TestLabelCommands::drives_are_not_renamed()
{
    panes_->click_folder(u"C:"_s);
    panes_->labels.mnu_tree_rename_Click();
    QVERIFY(!panes_->tree_view.is_editing());
}

void TestLabelCommands::a_folder_in_one_called_like_the_computer_is_not_renamed()
{
    panes_->disk.make_folder(u"C:\\Pop\\Live"_s);
    panes_->tree.refresh_all();
    panes_->click_folder(u"C:\\Pop\\Live"_s);
    panes_->tree_view.set_Text(panes_->tree_view.Item(u"C:\\Pop"_s), panes_->tree_view.Item(1)->Text());
    panes_->labels.mnu_tree_rename_Click();
    QVERIFY(!panes_->tree_view.is_editing());
}

void TestLabelCommands::a_folder_that_cannot_be_renamed_keeps_its_label_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("a taken name") << u"Rock"_s;
    QTest::newRow("no name at all") << QString();
    QTest::newRow("nothing but forbidden characters") << u"???"_s;
    QTest::newRow("the folder above") << u".."_s;
    QTest::newRow("a name too long") << QString(300, u'x');
}

void TestLabelCommands::a_folder_that_cannot_be_renamed_keeps_its_label()
{
    QFETCH(const QString, text);
    panes_->write(u"C:\\Pop\\unseen.mp3"_s);
    panes_->prompts.answers = {Answer::skip};
    rename_folder(text);
    QCOMPARE(panes_->prompts.take().size(), 1);
    QCOMPARE(label(u"C:\\Pop"_s), u"Pop"_s);
    QCOMPARE(panes_->on_disk(u"C:"_s), (QStringList{u"Pop"_s, u"Rock"_s}));
    QCOMPARE(panes_->on_disk(u"C:\\Pop"_s).size(), 4);
    QCOMPARE(shared.tree_node_path, u"C:\\Pop"_s);
    QCOMPARE(panes_->names().size(), 4); // reloaded all the same
}

void TestLabelCommands::an_unchanged_folder_is_not_touched()
{
    panes_->write(u"C:\\Pop\\unseen.mp3"_s);
    rename_folder(u"Pop"_s);
    QCOMPARE(panes_->prompts.take(), QStringList());
    QCOMPARE(label(u"C:\\Pop"_s), u"Pop"_s);
    QCOMPARE(panes_->names().size(), 4);
}

void TestLabelCommands::forbidden_characters_stay_in_the_label()
{
    rename_folder(u"A/B"_s);
    QCOMPARE(label(u"C:\\AB"_s), u"A/B"_s);
    QVERIFY(panes_->disk.exists(u"C:\\AB\\one.mp3"_s));
}

void TestLabelCommands::the_node_of_a_vanished_folder_makes_room()
{
    QVERIFY(QDir().rmdir(QFile::decodeName(panes_->disk.native(u"C:\\Rock"_s))));
    rename_folder(u"Rock"_s);
    QCOMPARE(panes_->tree_view.Item(u"C:"_s)->children().size(), std::size_t(1));
    QCOMPARE(panes_->tree.selected_key(), u"C:\\Rock"_s);
    QCOMPARE(panes_->names(), all_of_pop);
}

void TestLabelCommands::new_folders_are_counted()
{
    for (const QString& name : {u"new folder"_s, u"new folder1"_s, u"new folder2"_s}) {
        panes_->click_folder(u"C:\\Pop"_s);
        panes_->labels.mnu_tree_add_folder_Click();
        QVERIFY(panes_->disk.exists(u"C:\\Pop\\"_s + name));
        QCOMPARE(panes_->tree.selected_key(), u"C:\\Pop\\"_s + name);
        panes_->type_label(name);
    }
    // A name in between that is free again is taken first.
    QVERIFY(QDir().rmdir(QFile::decodeName(panes_->disk.native(u"C:\\Pop\\new folder1"_s))));
    panes_->click_folder(u"C:\\Pop"_s);
    panes_->labels.mnu_tree_add_folder_Click();
    QVERIFY(panes_->disk.exists(u"C:\\Pop\\new folder1"_s));
}

void TestLabelCommands::a_new_folder_is_named_at_once()
{
    shared.tree_node_path = shared.tree_parent_key = shared.current_folder = u"stale"_s;
    panes_->labels.mnu_tree_add_folder_Click();
    const TreeNode* const node = panes_->tree_view.Item(u"C:\\Pop\\new folder"_s);
    QVERIFY(node != nullptr);
    QCOMPARE(node->Parent()->Key(), u"C:\\Pop"_s);
    QCOMPARE(node->Text(), u"new folder"_s);
    QCOMPARE(node->Image(), u"FOLDER"_s);
    QCOMPARE(panes_->tree_view.SelectedItem(), node);
    QCOMPARE(shared.tree_node_path, u"C:\\Pop\\new folder"_s);
    QCOMPARE(shared.tree_parent_key, u"C:\\Pop"_s);
    QCOMPARE(shared.current_folder, u"C:\\Pop\\new folder\\"_s);
    QCOMPARE(panes_->names(), QStringList());
    QVERIFY(panes_->tree_view.is_editing());
    QCOMPARE(shared.focus_pane, i16(pane_tree_edit));
    panes_->type_label(u"Live"_s);
    QVERIFY(panes_->disk.exists(u"C:\\Pop\\Live"_s));
    QVERIFY(!panes_->disk.exists(u"C:\\Pop\\new folder"_s));
    QCOMPARE(label(u"C:\\Pop\\Live"_s), u"Live"_s);
    QCOMPARE(shared.current_folder, u"C:\\Pop\\Live\\"_s);
    QCOMPARE(panes_->prompts.take(), QStringList());
}

void TestLabelCommands::a_new_folder_below_a_closed_node_is_in_sight()
{
    QVERIFY(!panes_->tree_view.Expanded(panes_->tree_view.Item(u"C:\\Pop"_s)));
    panes_->labels.mnu_tree_add_folder_Click();
    QVERIFY(panes_->tree_view.Expanded(panes_->tree_view.Item(u"C:\\Pop"_s)));
    const QRect place = panes_->tree_view.node_rect(panes_->tree_view.SelectedItem());
    QVERIFY(panes_->tree_view.viewport()->rect().contains(place.topLeft()));
}

void TestLabelCommands::a_CD_takes_no_new_folder()
{
    shared.drive_table = {};
    add_drive_entry(2, u"C"_s, 1);
    panes_->write(u"C:\\Pop\\unseen.mp3"_s);
    panes_->labels.mnu_tree_add_folder_Click();
    QCOMPARE(panes_->messages.take(), QStringList{u"Unable to create new folder"_s});
    QCOMPARE(panes_->on_disk(u"C:\\Pop"_s).size(), 4);
    QVERIFY(!panes_->tree_view.is_editing());
    QCOMPARE(panes_->names().size(), 4); // reloaded all the same
}

void TestLabelCommands::a_folder_without_rights_takes_no_new_one()
{
    panes_->write(u"C:\\Pop\\unseen.mp3"_s);
    const QByteArray folder = panes_->disk.native(u"C:\\Pop"_s);
    const BoundByRights bound;
    chmod(folder.constData(), 0555);
    panes_->labels.mnu_tree_add_folder_Click();
    chmod(folder.constData(), 0755);
    QCOMPARE(panes_->messages.take(), QStringList{u"Unable to create new folder"_s});
    QVERIFY(panes_->tree_view.Item(u"C:\\Pop"_s)->children().empty());
    QCOMPARE(panes_->tree.selected_key(), u"C:\\Pop"_s);
    QVERIFY(!panes_->tree_view.is_editing());
    QCOMPARE(panes_->names().size(), 4);
}

void TestLabelCommands::a_file_in_the_way_of_a_new_folder()
{
    panes_->write(u"C:\\Pop\\new folder"_s);
    panes_->labels.mnu_tree_add_folder_Click();
    QCOMPARE(panes_->messages.take(), QStringList{u"Unable to create new folder"_s});
    QCOMPARE(panes_->disk.read(u"C:\\Pop\\new folder"_s), CommandedPanes::content_of(u"C:\\Pop\\new folder"_s));
}

void TestLabelCommands::a_new_folder_takes_the_place_of_a_vanished_one()
{
    panes_->disk.make_folder(u"C:\\Pop\\new folder"_s);
    panes_->tree.refresh_all();
    QVERIFY(QDir().rmdir(QFile::decodeName(panes_->disk.native(u"C:\\Pop\\new folder"_s))));
    panes_->labels.mnu_tree_add_folder_Click();
    QCOMPARE(panes_->tree.selected_key(), u"C:\\Pop\\new folder"_s);
    QCOMPARE(panes_->tree_view.Item(u"C:\\Pop"_s)->children().size(), std::size_t(1));
}

QUILMO_UI_TEST(TestLabelCommands)
#include "test_label_commands.moc"
