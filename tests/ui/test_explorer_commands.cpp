#include "Driver.h"
#include "core/drive_table.h"
#include "core/mod_of_grobal_var.h"
#include "frame/QuilmoMain.h"
#include "platform/controls/message_window.h"
#include "sample_files.h"
#include "test_main.h"
#include "ui_file_prompts.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <filesystem>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

using Answer = ScriptedPrompts::Answer;

constexpr QKeyCombination copy_key = Qt::CTRL | Qt::Key_C;
constexpr QKeyCombination paste_key = Qt::CTRL | Qt::Key_V;
constexpr QKeyCombination delete_key = QKeyCombination(Qt::Key_Delete);

/// Whether the process has the file at this path open.
bool is_open(const QByteArray& native)
{
    using std::filesystem::directory_iterator;
    return std::ranges::any_of(directory_iterator("/proc/self/fd"), directory_iterator(), [&](const auto& entry) {
        std::error_code gone;
        return read_symlink(entry.path(), gone) == native.toStdString();
    });
}

} // namespace

/// The commands as a person reaches them: by menus, pop-up menus, toolbar and keys of the main window.
class TestExplorerCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void new_folder_data();
    void new_folder();
    void copy_and_paste_a_folder_data();
    void copy_and_paste_a_folder();
    void copy_and_paste_files_data();
    void copy_and_paste_files();
    void delete_a_folder_data();
    void delete_a_folder();
    void delete_files_data();
    void delete_files();
    void rename_a_folder_data();
    void rename_a_folder();
    void rename_a_file_data();
    void rename_a_file();
    void auto_convert_opens_from_the_list();

    void a_click_on_a_selected_label_edits_nothing();
    void a_refresh_makes_the_selected_folder_the_current_one_data();
    void a_refresh_makes_the_selected_folder_the_current_one();
    void a_save_leaves_the_files_of_a_folder_not_listed();
    void other_buttons_choose_no_folder_data();
    void other_buttons_choose_no_folder();
    void too_many_rows_to_copy_end_the_program();
    void the_file_menu_knows_the_computer();
    void the_tree_menu_is_for_the_selected_node();
    void the_tree_menu_opens_where_it_may_data();
    void the_tree_menu_opens_where_it_may();
    void the_menu_key_opens_the_tree_menu();

    void edit_keys_in_a_text_box_data();
    void edit_keys_in_a_text_box();
    void edit_keys_in_the_file_name_box();
    void edit_keys_in_a_text_never_reach_files();
    void edit_keys_in_a_label_are_its_own();
    void f2_in_a_text_box_does_nothing();
    void enter_in_a_label_does_not_save();
    void a_stopped_file_leaves_the_player_for_its_rename();

private:
    template<typename Control> Control& control(const QString& name) const { return driver_->control<Control>(name); }
    QAction& entry(const QString& name) const { return control<QAction>(name); }
    TreeView& tree() const { return control<TreeView>(u"tvTreeView"_s); }
    ListView& list() const { return control<ListView>(u"lvListView"_s); }
    void click_row(const QString& name) const { driver_->click_row(list(), Driver::row_of(list(), name)); }
    void right_click_node(const QString& key) const;
    /// Runs a command of a pane in one of the ways "pop-up", "menu", "key" and "toolbar".
    void run(const QString& way, const QString& popup, const QString& popup_entry, const QString& menu_entry,
             QKeyCombination key, const QString& button) const;
    void run_in_tree(const QString& way, const QString& command) const;
    void run_in_list(const QString& way, const QString& command) const;
    QLineEdit& label_editor() const;
    static void press(QKeyCombination key)
    {
        QTest::keyClick(QApplication::focusWidget(), key.key(), key.keyboardModifiers());
    }

    std::unique_ptr<TestDisk> disk_;
    std::unique_ptr<NotedMessages> messages_;
    std::unique_ptr<ScriptedPrompts> prompts_;
    std::unique_ptr<QuilmoMain> window_;
    std::unique_ptr<Driver> driver_;
};

void TestExplorerCommands::init()
{
    disk_ = std::make_unique<TestDisk>();
    for (const QString& name : {u"one.mp3"_s, u"two.mp3"_s})
        disk_->write(u"C:\\Pop\\"_s + name, sample_audio());
    disk_->make_folder(u"C:\\Rock"_s);
    messages_ = std::make_unique<NotedMessages>();
    prompts_ = std::make_unique<ScriptedPrompts>();
    window_ = std::make_unique<QuilmoMain>();
    driver_ = std::make_unique<Driver>(*window_);
    window_->show();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    tree().setFocus();
    driver_->open_node(u"C:"_s);
    driver_->click_node(u"C:\\Pop"_s);
    QCOMPARE(list().Count(), 2);
}

void TestExplorerCommands::cleanup()
{
    driver_.reset();
    window_.reset();
    prompts_.reset();
    messages_.reset();
    disk_.reset();
    set_fatal_error_handler({});
    QApplication::clipboard()->clear();
}

void TestExplorerCommands::right_click_node(const QString& key) const
{
    const QRect place = tree().node_rect(tree().Item(key));
    QTest::mouseClick(tree().viewport(), Qt::RightButton, {}, QPoint(place.left() + 24, place.center().y()));
}

void TestExplorerCommands::run(const QString& way, const QString& popup, const QString& popup_entry,
                               const QString& menu_entry, QKeyCombination key, const QString& button) const
{
    if (way == u"pop-up"_s)
        driver_->choose_from_popup(popup, popup_entry);
    else if (way == u"menu"_s)
        driver_->choose(u"menu_Edit"_s, menu_entry);
    else if (way == u"key"_s)
        press(key);
    else
        QTest::mouseClick(
            control<Toolbar>(u"main_toolbar"_s).widgetForAction(control<Toolbar>(u"main_toolbar"_s).button(button)),
            Qt::LeftButton);
}

void TestExplorerCommands::run_in_tree(const QString& way, const QString& command) const
{
    const QKeyCombination key = command == u"copy"_s ? copy_key : command == u"paste"_s ? paste_key : delete_key;
    if (way == u"pop-up"_s)
        right_click_node(tree().SelectedItem()->Key());
    run(way, u"mnufile"_s, u"mnu_tree_"_s + command, u"menu_Edit_"_s + command, key,
        command.left(1).toUpper() + command.mid(1));
}

void TestExplorerCommands::run_in_list(const QString& way, const QString& command) const
{
    const QKeyCombination key = command == u"copy"_s ? copy_key : command == u"paste"_s ? paste_key : delete_key;
    if (way == u"pop-up"_s)
        driver_->right_click_row(list(), list().SelectedItem());
    run(way, u"mnu_ListView"_s, u"mnu_ListView_"_s + command, u"menu_Edit_"_s + command, key,
        command.left(1).toUpper() + command.mid(1));
}

QLineEdit& TestExplorerCommands::label_editor() const
{
    for (auto* editor : window_->findChildren<QLineEdit*>(u"label_editor"_s)) {
        if (editor->isVisible())
            return *editor;
    }
    qFatal("no label is being edited");
}

void TestExplorerCommands::new_folder_data()
{
    QTest::addColumn<QString>("way");
    QTest::newRow("the pop-up menu") << u"pop-up"_s;
    QTest::newRow("the File menu") << u"menu"_s;
    QTest::newRow("the toolbar") << u"toolbar"_s;
}

void TestExplorerCommands::new_folder()
{
    QFETCH(const QString, way);
    if (way == u"menu"_s) {
        driver_->choose(u"menu_File"_s, u"menu_File_add_folder"_s);
    } else {
        if (way == u"pop-up"_s)
            right_click_node(u"C:\\Pop"_s);
        run(way, u"mnufile"_s, u"mnu_tree_add_folder"_s, {}, {}, u"Add"_s);
    }
    QVERIFY(disk_->exists(u"C:\\Pop\\new folder"_s));
    QVERIFY(tree().is_editing());
    QTest::keyClicks(&label_editor(), u"Live"_s);
    press(QKeyCombination(Qt::Key_Return));
    QVERIFY(disk_->exists(u"C:\\Pop\\Live"_s));
    QCOMPARE(tree().SelectedItem()->Key(), u"C:\\Pop\\Live"_s);
    QCOMPARE(QApplication::focusWidget(), &tree());
}

void TestExplorerCommands::copy_and_paste_a_folder_data()
{
    QTest::addColumn<QString>("way");
    for (const char* way : {"pop-up", "menu", "key", "toolbar"})
        QTest::newRow(way) << QString::fromLatin1(way);
}

void TestExplorerCommands::copy_and_paste_a_folder()
{
    QFETCH(const QString, way);
    run_in_tree(way, u"copy"_s);
    driver_->click_node(u"C:\\Rock"_s);
    run_in_tree(way, u"paste"_s);
    QVERIFY(disk_->exists(u"C:\\Rock\\Pop\\two.mp3"_s));
    QVERIFY(disk_->exists(u"C:\\Pop\\two.mp3"_s));
    QVERIFY(tree().Item(u"C:\\Rock\\Pop"_s) != nullptr);
}

void TestExplorerCommands::copy_and_paste_files_data()
{
    copy_and_paste_a_folder_data();
}

void TestExplorerCommands::copy_and_paste_files()
{
    QFETCH(const QString, way);
    click_row(u"two.mp3"_s);
    run_in_list(way, u"copy"_s);
    disk_->write(u"C:\\Rock\\three.mp3"_s, sample_audio());
    driver_->click_node(u"C:\\Rock"_s);
    click_row(u"three.mp3"_s);
    run_in_list(way, u"paste"_s);
    QVERIFY(disk_->exists(u"C:\\Rock\\two.mp3"_s));
    QCOMPARE(list().Count(), 2);
}

void TestExplorerCommands::delete_a_folder_data()
{
    copy_and_paste_a_folder_data();
}

void TestExplorerCommands::delete_a_folder()
{
    QFETCH(const QString, way);
    prompts_->answers = {Answer::yes};
    run_in_tree(way, u"delete"_s);
    QCOMPARE(prompts_->take(), QStringList{u"trash C:\\Pop"_s});
    QVERIFY(!disk_->exists(u"C:\\Pop"_s));
    QCOMPARE(tree().SelectedItem()->Key(), u"C:\\Rock"_s);
    QCOMPARE(list().Count(), 0);
}

void TestExplorerCommands::delete_files_data()
{
    copy_and_paste_a_folder_data();
}

void TestExplorerCommands::delete_files()
{
    QFETCH(const QString, way);
    driver_->click_check_box(list(), Driver::row_of(list(), u"one.mp3"_s));
    click_row(u"one.mp3"_s);
    prompts_->answers = {Answer::yes};
    run_in_list(way, u"delete"_s);
    QCOMPARE(prompts_->take(), QStringList{u"trash C:\\Pop\\one.mp3"_s});
    QVERIFY(!disk_->exists(u"C:\\Pop\\one.mp3"_s));
    QCOMPARE(list().Count(), 1);
    QCOMPARE(control<StatusBar>(u"StatusBar1"_s).panel_text(3), u"0 files/0MB"_s);
}

void TestExplorerCommands::rename_a_folder_data()
{
    QTest::addColumn<QString>("way");
    QTest::newRow("the pop-up menu") << u"pop-up"_s;
    QTest::newRow("F2") << u"key"_s;
}

void TestExplorerCommands::rename_a_folder()
{
    QFETCH(const QString, way);
    if (way == u"pop-up"_s)
        right_click_node(u"C:\\Pop"_s);
    run(way, u"mnufile"_s, u"mnu_tree_rename"_s, {}, QKeyCombination(Qt::Key_F2), {});
    QVERIFY(tree().is_editing());
    QTest::keyClicks(&label_editor(), u"New"_s);
    press(QKeyCombination(Qt::Key_Return));
    QVERIFY(disk_->exists(u"C:\\New\\two.mp3"_s));
    QCOMPARE(tree().SelectedItem()->Text(), u"New"_s);
    QCOMPARE(list().Count(), 2);
}

void TestExplorerCommands::rename_a_file_data()
{
    rename_a_folder_data();
}

void TestExplorerCommands::rename_a_file()
{
    QFETCH(const QString, way);
    click_row(u"two.mp3"_s);
    if (way == u"pop-up"_s)
        driver_->right_click_row(list(), Driver::row_of(list(), u"two.mp3"_s));
    run(way, u"mnu_ListView"_s, u"mnu_ListView_rename"_s, {}, QKeyCombination(Qt::Key_F2), {});
    QVERIFY(list().is_editing());
    label_editor().selectAll();
    QTest::keyClicks(&label_editor(), u"[Ann][Sea].mp3"_s);
    press(QKeyCombination(Qt::Key_Return));
    QVERIFY(disk_->exists(u"C:\\Pop\\[Ann][Sea].mp3"_s));
    QCOMPARE(control<TextBox>(u"txtArtist"_s).Text(), u"Ann"_s);
    QCOMPARE(control<TextBox>(u"txtFilename"_s).Text(), u"two.mp3"_s);
    press(QKeyCombination(Qt::Key_F5));
    QCOMPARE(control<TextBox>(u"txtFilename"_s).Text(), u"[Ann][Sea].mp3"_s);
}

void TestExplorerCommands::auto_convert_opens_from_the_list()
{
    click_row(u"two.mp3"_s);
    int shown = 0;
    Driver::in_next_dialog([&](QDialog& dialog) {
        ++shown;
        dialog.close();
    });
    driver_->right_click_row(list(), Driver::row_of(list(), u"two.mp3"_s));
    driver_->choose_from_popup(u"mnu_ListView"_s, u"mnu_ListView_auto"_s);
    QCOMPARE(shown, 1);
}

void TestExplorerCommands::a_click_on_a_selected_label_edits_nothing()
{
    click_row(u"two.mp3"_s);
    click_row(u"two.mp3"_s);
    driver_->click_node(u"C:\\Pop"_s);
    driver_->click_node(u"C:\\Pop"_s);
    list().StartLabelEdit();
    tree().StartLabelEdit();
    QVERIFY(!list().is_editing());
    QVERIFY(!tree().is_editing());
}

void TestExplorerCommands::a_refresh_makes_the_selected_folder_the_current_one_data()
{
    QTest::addColumn<QString>("way");
    QTest::newRow("the menu") << u"menu"_s;
    QTest::newRow("F5") << u"key"_s;
    QTest::newRow("the toolbar") << u"toolbar"_s;
}

// The click on the folder has ended early: the index of the folder last opened is from a time with more nodes.
void TestExplorerCommands::a_refresh_makes_the_selected_folder_the_current_one()
{
    QFETCH(const QString, way);
    disk_->write(u"C:\\Rock\\two.mp3"_s, "rock");
    shared.last_open_node_index = 1000;
    driver_->click_node(u"C:\\Rock"_s);
    QCOMPARE(list().Count(), 2);
    if (way == u"menu"_s)
        driver_->choose(u"menu_View"_s, u"menu_View_refresh"_s);
    else
        run(way, {}, {}, {}, QKeyCombination(Qt::Key_F5), u"Refresh"_s);
    QCOMPARE(list().Count(), 1);
    list().set_Selected(1, true);
    entry(u"mnu_ListView_copy"_s).trigger();
    QCOMPARE(shared.copy_source_folder, u"C:\\Rock\\"_s);
}

// The click on the folder has ended early, and the row seen is one of the other folder, with a file of its name here.
void TestExplorerCommands::a_save_leaves_the_files_of_a_folder_not_listed()
{
    const QString name = list().Item(1).Text;
    list().set_Selected(1, true);
    disk_->write(u"C:\\Rock\\"_s + name, "rock");
    shared.last_open_node_index = 1000;
    driver_->click_node(u"C:\\Rock"_s);
    window_->findChild<TextBox*>(u"txtArtist"_s)->set_Text(u"Artist"_s);
    window_->findChild<TextBox*>(u"txtTitle"_s)->set_Text(u"Title"_s);
    driver_->click(u"cmdSave"_s);
    QCOMPARE(disk_->read(u"C:\\Rock\\"_s + name), QByteArray("rock"));
    QCOMPARE(list().Count(), 1);
}

void TestExplorerCommands::other_buttons_choose_no_folder_data()
{
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::newRow("the middle one") << Qt::MiddleButton;
    QTest::newRow("the one for the way back") << Qt::BackButton;
}

// A folder chosen without a click on it would leave the list with the files of another one.
void TestExplorerCommands::other_buttons_choose_no_folder()
{
    QFETCH(const Qt::MouseButton, button);
    const QRect place = tree().node_rect(tree().Item(u"C:\\Rock"_s));
    QTest::mouseClick(tree().viewport(), button, {}, QPoint(place.left() + 24, place.center().y()));
    QCOMPARE(tree().SelectedItem()->Key(), u"C:\\Pop"_s);
}

void TestExplorerCommands::too_many_rows_to_copy_end_the_program()
{
    for (int number = 0; number < 302; ++number)
        disk_->write(u"C:\\Pop\\%1.mp3"_s.arg(number), "x");
    press(QKeyCombination(Qt::Key_F5));
    click_row(u"one.mp3"_s);
    press(Qt::CTRL | Qt::Key_A);
    int error = 0;
    set_fatal_error_handler([&](const RunTimeError& raised) { error = raised.number(); });
    press(copy_key);
    QCOMPARE(error, 9);
    QCOMPARE(shared.copy_list_count, i16(301));
}

void TestExplorerCommands::the_file_menu_knows_the_computer()
{
    auto& menu = control<QMenu>(u"menu_File"_s);
    const auto is_enabled = [&] {
        menu.popup({});
        const bool enabled = entry(u"menu_File_add_folder"_s).isEnabled();
        menu.close();
        return enabled;
    };
    QVERIFY(is_enabled());
    driver_->click_node(u"MYCOMPUTER"_s);
    QVERIFY(!is_enabled());
    QVERIFY(entry(u"menu_File_add_folder"_s).isEnabled()); // for its shortcut
    driver_->click_node(u"C:"_s);
    QVERIFY(is_enabled());
}

void TestExplorerCommands::the_tree_menu_is_for_the_selected_node()
{
    auto& menu = control<QMenu>(u"mnufile"_s);
    const auto right_click_beside_nodes = [this] {
        QTest::mouseClick(tree().viewport(), Qt::RightButton, {}, QPoint(20, tree().viewport()->height() - 5));
    };
    right_click_beside_nodes();
    QVERIFY(menu.isVisible());
    QVERIFY(entry(u"mnu_tree_rename"_s).isEnabled());
    QVERIFY(!entry(u"mnu_tree_paste"_s).isEnabled());
    menu.close();
    shared.copy_source_kind = 1;
    right_click_beside_nodes();
    QVERIFY(entry(u"mnu_tree_paste"_s).isEnabled());
    menu.close();
    // The press chooses a node first, and the menu is for that one.
    right_click_node(u"C:"_s);
    QVERIFY(menu.isVisible());
    QVERIFY(entry(u"mnu_tree_add_folder"_s).isEnabled());
    QVERIFY(!entry(u"mnu_tree_copy"_s).isEnabled());
    QVERIFY(entry(u"mnu_tree_paste"_s).isEnabled());
    QVERIFY(!entry(u"mnu_tree_delete"_s).isEnabled());
    QVERIFY(!entry(u"mnu_tree_rename"_s).isEnabled());
}

void TestExplorerCommands::the_tree_menu_opens_where_it_may_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("ready");
    QTest::addColumn<bool>("opens");
    QTest::newRow("a folder") << u"C:\\Pop"_s << 4 << 1 << true;
    QTest::newRow("a folder on a CD") << u"C:\\Pop"_s << 2 << 1 << true;
    QTest::newRow("a drive that was not ready") << u"C:"_s << 1 << 0 << false;
    QTest::newRow("the computer") << u"MYCOMPUTER"_s << 4 << 1 << false;
}

void TestExplorerCommands::the_tree_menu_opens_where_it_may()
{
    QFETCH(const QString, key);
    QFETCH(const int, kind);
    QFETCH(const int, ready);
    shared.drive_table = {};
    add_drive_entry(static_cast<i16>(kind), u"C"_s, static_cast<i16>(ready));
    right_click_node(key);
    QTEST(control<QMenu>(u"mnufile"_s).isVisible(), "opens");
    control<QMenu>(u"mnufile"_s).close();
    QTest::mouseClick(tree().viewport(), Qt::MiddleButton, {}, QPoint(20, tree().viewport()->height() - 5));
    driver_->click_node(key);
    QVERIFY(!control<QMenu>(u"mnufile"_s).isVisible());
}

void TestExplorerCommands::the_menu_key_opens_the_tree_menu()
{
    auto& menu = control<QMenu>(u"mnufile"_s);
    QTest::keyClick(&tree(), Qt::Key_F10, Qt::ShiftModifier);
    QVERIFY(menu.isVisible());
    const QRect node = tree().node_rect(tree().SelectedItem());
    QCOMPARE(menu.pos(), tree().viewport()->mapToGlobal(node.bottomLeft()));
    QVERIFY(entry(u"mnu_tree_rename"_s).isEnabled());
}

void TestExplorerCommands::edit_keys_in_a_text_box_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("the artist") << u"txtArtist"_s;
    QTest::newRow("the title") << u"txtTitle"_s;
    QTest::newRow("the genre") << u"txtGenre"_s;
}

void TestExplorerCommands::edit_keys_in_a_text_box()
{
    QFETCH(const QString, name);
    auto& box = control<TextBox>(name);
    box.show();
    box.setEnabled(true);
    box.set_Text(u"abcdef"_s);
    box.setFocus(Qt::TabFocusReason);
    QCOMPARE(QApplication::focusWidget(), &box);
    const QSignalSpy copies(&entry(u"menu_Edit_copy"_s), &QAction::triggered);
    const QSignalSpy pastes(&entry(u"menu_Edit_paste"_s), &QAction::triggered);
    const QSignalSpy deletes(&entry(u"menu_Edit_delete"_s), &QAction::triggered);
    box.setSelection(0, 2);
    press(copy_key);
    QCOMPARE(copies.size(), 1);
    QCOMPARE(QApplication::clipboard()->text(), u"ab"_s);
    box.setSelection(4, 2);
    press(paste_key);
    QCOMPARE(pastes.size(), 1);
    QCOMPARE(box.Text(), u"abcdab"_s);
    box.setSelection(0, 1);
    press(delete_key);
    QCOMPARE(box.Text(), u"bcdab"_s);
    press(delete_key);
    QCOMPARE(box.Text(), u"cdab"_s);
    QCOMPARE(deletes.size(), 2);
    // All other keys are still the box's own.
    press(Qt::CTRL | Qt::Key_A);
    QCOMPARE(box.selectedText(), u"cdab"_s);
    press(Qt::CTRL | Qt::Key_X);
    QCOMPARE(box.Text(), QString());
    press(Qt::CTRL | Qt::Key_Z);
    QCOMPARE(box.Text(), u"cdab"_s);
    QCOMPARE(shared.copy_source_kind, i16(0));
}

void TestExplorerCommands::edit_keys_in_the_file_name_box()
{
    click_row(u"two.mp3"_s);
    auto& box = control<TextBox>(u"txtFilename"_s);
    box.setFocus(Qt::TabFocusReason);
    QCOMPARE(shared.focus_pane, i16(pane_filename));
    box.setSelection(0, 3);
    press(copy_key);
    QCOMPARE(QApplication::clipboard()->text(), u"two"_s);
    int changes = 0;
    connect(&box, &TextBox::Change, &box, [&changes] { ++changes; });
    for (const QKeyCombination key : {paste_key, delete_key}) {
        changes = 0;
        press(key);
        QVERIFY(changes > 0); // it was emptied for a moment
        QCOMPARE(box.Text(), u"two.mp3"_s);
    }
    QCOMPARE(list().Count(), 2);
}

// A refresh makes the list the place of the last act while the caret still stands in the box.
void TestExplorerCommands::edit_keys_in_a_text_never_reach_files()
{
    auto& box = control<TextBox>(u"txtArtist"_s);
    box.setFocus(Qt::TabFocusReason);
    box.set_Text(u"abc"_s);
    shared.focus_pane = pane_list;
    press(delete_key);
    QCOMPARE(box.Text(), u"bc"_s);
    QCOMPARE(prompts_->take(), QStringList());
    press(Qt::CTRL | Qt::Key_A);
    press(copy_key);
    QCOMPARE(QApplication::clipboard()->text(), u"bc"_s);
    QCOMPARE(shared.copy_source_kind, i16(0));
}

void TestExplorerCommands::edit_keys_in_a_label_are_its_own()
{
    click_row(u"two.mp3"_s);
    press(QKeyCombination(Qt::Key_F2));
    QLineEdit& editor = label_editor();
    const QSignalSpy deletes(&entry(u"menu_Edit_delete"_s), &QAction::triggered);
    editor.setCursorPosition(0);
    press(delete_key);
    QCOMPARE(editor.text(), u"wo.mp3"_s);
    editor.setSelection(0, 2);
    press(copy_key);
    QCOMPARE(QApplication::clipboard()->text(), u"wo"_s);
    press(paste_key);
    QCOMPARE(editor.text(), u"wo.mp3"_s);
    QCOMPARE(deletes.size(), 0);
    QCOMPARE(shared.copy_source_kind, i16(0));
    press(QKeyCombination(Qt::Key_Escape));
    QVERIFY(disk_->exists(u"C:\\Pop\\two.mp3"_s));
}

void TestExplorerCommands::f2_in_a_text_box_does_nothing()
{
    control<TextBox>(u"txtTitle"_s).setFocus(Qt::TabFocusReason);
    press(QKeyCombination(Qt::Key_F2));
    QVERIFY(!tree().is_editing());
    QVERIFY(!list().is_editing());
}

void TestExplorerCommands::enter_in_a_label_does_not_save()
{
    const QSignalSpy saves(&control<UsrButton>(u"cmdSave"_s), &UsrButton::Click);
    for (QWidget* pane : {static_cast<QWidget*>(&tree()), static_cast<QWidget*>(list().view())}) {
        pane->setFocus(Qt::TabFocusReason);
        press(QKeyCombination(Qt::Key_F2));
        QTest::keyClicks(&label_editor(), u"New"_s);
        shared.enter_saves = 1;
        press(QKeyCombination(Qt::Key_Return));
        QVERIFY(!tree().is_editing());
        QVERIFY(!list().is_editing());
    }
    QCOMPARE(saves.size(), 0);
    QVERIFY(disk_->exists(u"C:\\New\\New.mp3"_s));
}

void TestExplorerCommands::a_stopped_file_leaves_the_player_for_its_rename()
{
    const auto rename = [this](const QString& text) {
        press(QKeyCombination(Qt::Key_F2));
        QTest::keyClicks(&label_editor(), text);
        press(QKeyCombination(Qt::Key_Return));
    };
    disk_->write(u"C:\\Pop\\two.mp3"_s, sample_audio({.frames = 2000}));
    driver_->double_click_row(list(), Driver::row_of(list(), u"two.mp3"_s));
    QTRY_VERIFY(is_open(disk_->native(u"C:\\Pop\\two.mp3"_s)));
    rename(u"new"_s);
    QCOMPARE(messages_->take(), QStringList{u"C:\\Pop\\two.mp3 is playing"_s});
    QVERIFY(disk_->exists(u"C:\\Pop\\two.mp3"_s));
    QTest::mouseClick(&control<UsrButton>(u"StopBtn"_s), Qt::LeftButton);
    QVERIFY(is_open(disk_->native(u"C:\\Pop\\two.mp3"_s)));
    rename(u"new"_s);
    QVERIFY(disk_->exists(u"C:\\Pop\\new.mp3"_s));
    QVERIFY(!is_open(disk_->native(u"C:\\Pop\\new.mp3"_s)));
}

QUILMO_UI_TEST(TestExplorerCommands)
#include "test_explorer_commands.moc"
