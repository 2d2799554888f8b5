#include "core/drive_table.h"
#include "core/mod_of_grobal_var.h"
#include "platform/drives.h"
#include "ui_explorer.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTest>

#include <sys/stat.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

QStringList texts_of(const TreeNode* node)
{
    QStringList texts;
    for (const auto& child : node->children())
        texts.append(child->Text());
    return texts;
}

Drive drive_at(const QString& letter, DriveType type, const QByteArray& mount_point)
{
    return {.DriveLetter = letter,
            .Type = type,
            .VolumeName = u"Volume "_s + letter,
            .IsReady = !mount_point.isEmpty(),
            .mount_point = mount_point,
            .device = {}};
}

} // namespace

class TestFolderTree : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void the_root_bears_the_name_of_the_computer();
    void a_drive_gets_its_node_and_its_table_entry_data();
    void a_drive_gets_its_node_and_its_table_entry();
    void the_first_level_of_every_drive_is_read_at_start();
    void the_twenty_first_drive_has_a_node_but_no_state();

    void a_click_makes_a_folder_the_current_one();
    void a_click_by_mouse_reaches_the_tree();
    void a_drive_keeps_its_picture();
    void a_click_on_the_root_leaves_half_of_the_state();
    void a_second_click_reloads_nothing();
    void a_second_click_closes_what_was_open_before();
    void capitals_of_the_root_key_in_a_path_count_as_the_root_data();
    void capitals_of_the_root_key_in_a_path_count_as_the_root();
    void a_stale_index_beyond_the_nodes_ends_the_click();
    void a_stale_index_closes_another_open_folder();
    void a_stale_index_on_a_drive_changes_nothing();

    void a_vanished_folder_hands_over_to_its_parent();
    void three_vanished_levels_climb_to_the_drive();
    void a_drive_that_goes_away_climbs_to_the_root();
    void an_empty_drive_falls_back_to_the_root();
    void a_folder_gone_between_click_and_fill();
    void an_unreadable_folder_hands_over_to_its_parent();
    void unreadable_parents_climb_to_the_root();
    void a_folder_removed_while_shown();

    void expanding_reads_one_level_ahead();
    void filling_again_adds_nothing();
    void filling_ends_at_the_first_folder_that_is_there();
    void a_new_folder_takes_its_place_data();
    void a_new_folder_takes_its_place();
    void folder_names_compare_by_case();
    void a_duplicate_key_ends_the_fill();
    void an_unreadable_folder_keeps_its_nodes();
    void a_file_system_of_many_folders_is_brought_in_line();
    void refreshing_follows_the_disk();
    void refreshing_does_nothing_on_the_root();
    void odd_folder_names_data();
    void odd_folder_names();

    void focus_goes_to_the_tree();
    void what_a_path_is_data();
    void what_a_path_is();

private:
    void start();
    TreeNode* node(const QString& key) const { return panes_->tree_view.Item(key); }
    void remove_folder(const QString& key) const;
    QString selected() const { return panes_->tree.selected_key(); }

    std::unique_ptr<ExplorerPanes> panes_;
};

void TestFolderTree::init()
{
    panes_ = std::make_unique<ExplorerPanes>();
}

void TestFolderTree::cleanup()
{
    panes_.reset();
}

void TestFolderTree::start()
{
    panes_->tree.init_main_tree();
}

void TestFolderTree::remove_folder(const QString& key) const
{
    QVERIFY(QDir(QFile::decodeName(panes_->disk.native(key))).removeRecursively());
}

void TestFolderTree::the_root_bears_the_name_of_the_computer()
{
    shared.main_sort_toggles = {1, 1, 1};
    const QSignalSpy files(&panes_->tree, &FolderTree::files_wanted);
    start();
    const TreeNode* const root = panes_->tree_view.Item(1);
    QCOMPARE(root->Key(), u"MYCOMPUTER"_s);
    QCOMPARE(root->Image(), u"MYCOMPUTER"_s);
    QCOMPARE(root->Parent(), nullptr);
    QVERIFY(!root->Text().isEmpty());
    QVERIFY(!root->Text().contains(QChar(0)));
    QCOMPARE(root->Text(), get_computer_name());
    QCOMPARE(selected(), u"MYCOMPUTER"_s);
    QVERIFY(panes_->tree_view.Expanded(root));
    QCOMPARE(files.count(), 0);
    QCOMPARE(shared.current_folder, QString());
    QCOMPARE(shared.main_sort_toggles, (std::array<i16, 3>{}));
}

void TestFolderTree::a_drive_gets_its_node_and_its_table_entry_data()
{
    QTest::addColumn<DriveType>("type");
    QTest::addColumn<bool>("ready");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("image");
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("state");

    QTest::newRow("an unknown drive shows its volume name")
        << DriveType::unknown << true << u"Volume D(D:)"_s << u"DRIVE"_s << 4 << 1;
    QTest::newRow("a removable drive shows just its letter")
        << DriveType::removable << true << u"(D:)"_s << u"35floppy"_s << 1 << 1;
    QTest::newRow("a removable drive without medium")
        << DriveType::removable << false << u"(D:)"_s << u"35floppy"_s << 1 << 0;
    QTest::newRow("a fixed drive shows its volume name")
        << DriveType::fixed << true << u"Volume D(D:)"_s << u"DRIVE"_s << 4 << 1;
    QTest::newRow("a CD drive with a disc") << DriveType::cd << true << u"(D:)"_s << u"Cddrive"_s << 2 << 2;
    QTest::newRow("a CD drive without a disc") << DriveType::cd << false << u"(D:)"_s << u"Cddrive"_s << 2 << 0;
    QTest::newRow("a RAM drive shows its volume name")
        << DriveType::ram << true << u"Volume D(D:)"_s << u"DRIVE"_s << 4 << 1;
    QTest::newRow("a network drive is left out") << DriveType::remote << true << QString() << QString() << 0 << 0;
}

void TestFolderTree::a_drive_gets_its_node_and_its_table_entry()
{
    QFETCH(const DriveType, type);
    QFETCH(const bool, ready);
    QFETCH(const QString, text);
    QFETCH(const QString, image);
    QFETCH(const int, kind);
    QFETCH(const int, state);
    panes_->disk.make_folder(u"C:\\other"_s);
    set_drives({drive_at(u"D"_s, type, ready ? panes_->disk.root() + "/other" : QByteArray())});
    start();
    QCOMPARE(get_drive_state(u"D"_s), state);
    QCOMPARE(shared.drive_table[0].kind, kind);
    const TreeNode* const drive = node(u"D:"_s);
    if (text.isEmpty()) {
        QCOMPARE(drive, nullptr);
        QCOMPARE(shared.drive_table[0].in_use, 0);
        return;
    }
    QCOMPARE(drive->Text(), text);
    QCOMPARE(drive->Image(), image);
    QCOMPARE(drive->Parent()->Key(), u"MYCOMPUTER"_s);
    QCOMPARE(shared.drive_table[0].in_use, 1);
    QCOMPARE(shared.drive_table[0].letter, u"D"_s);
    QCOMPARE(shared.drive_table[0].ready, ready ? 1 : 0);
}

void TestFolderTree::the_first_level_of_every_drive_is_read_at_start()
{
    panes_->disk.make_folder(u"C:\\Music\\Pop"_s);
    panes_->disk.make_folder(u"C:\\Apples"_s);
    set_drives({drive_at(u"C"_s, DriveType::fixed, panes_->disk.root()), drive_at(u"D"_s, DriveType::cd, {}),
                drive_at(u"E"_s, DriveType::fixed, panes_->disk.root() + "/Music")});
    start();
    QCOMPARE(texts_of(node(u"C:"_s)), (QStringList{u"Apples"_s, u"Music"_s}));
    QCOMPARE(texts_of(node(u"D:"_s)), QStringList());
    QCOMPARE(texts_of(node(u"E:"_s)), QStringList{u"Pop"_s});
    QCOMPARE(node(u"C:\\Music"_s)->Image(), u"FOLDER"_s);
    QCOMPARE(texts_of(node(u"C:\\Music"_s)), QStringList());
}

void TestFolderTree::the_twenty_first_drive_has_a_node_but_no_state()
{
    std::vector<Drive> drives;
    for (char16_t letter = u'C'; letter <= u'W'; ++letter)
        drives.push_back(drive_at(QString(QChar(letter)), DriveType::fixed, panes_->disk.root()));
    QCOMPARE(drives.size(), std::size_t{21});
    set_drives(drives);
    start();
    QCOMPARE(node(u"MYCOMPUTER"_s)->children().size(), std::size_t{21});
    QVERIFY(node(u"W:"_s) != nullptr);
    QCOMPARE(get_drive_state(u"V"_s), 1);
    QCOMPARE(get_drive_state(u"W"_s), 0);
}

void TestFolderTree::a_click_makes_a_folder_the_current_one()
{
    panes_->disk.make_folder(u"C:\\Music\\Pop"_s);
    panes_->disk.make_folder(u"C:\\Music\\Rock"_s);
    panes_->disk.write(u"C:\\Music\\Pop\\a.mp3"_s, "x");
    start();
    const QSignalSpy files(&panes_->tree, &FolderTree::files_wanted);
    panes_->click_folder(u"C:\\Music"_s);
    QCOMPARE(texts_of(node(u"C:\\Music"_s)).size(), 2);
    panes_->click_folder(u"C:\\Music\\Pop"_s);
    QCOMPARE(shared.current_folder, u"C:\\Music\\Pop\\"_s);
    QCOMPARE(shared.tree_node_path, u"C:\\Music\\Pop"_s);
    QCOMPARE(shared.tree_parent_key, u"C:\\Music"_s);
    QCOMPARE(shared.last_open_node_index, panes_->tree_view.Index(node(u"C:\\Music\\Pop"_s)));
    QCOMPARE(shared.focus_pane, pane_tree);
    QCOMPARE(node(u"C:\\Music"_s)->Image(), u"FOLDER"_s);
    QCOMPARE(node(u"C:\\Music\\Pop"_s)->Image(), u"OPENFOLDER"_s);
    QCOMPARE(files.count(), 2);
    QCOMPARE(files.last().first().toString(), u"C:\\Music\\Pop\\"_s);
    QCOMPARE(panes_->names(), QStringList{u"a.mp3"_s});
}

void TestFolderTree::a_click_by_mouse_reaches_the_tree()
{
    panes_->disk.write(u"C:\\Music\\a.mp3"_s, "x");
    start();
    panes_->tree_view.resize(300, 300);
    panes_->tree_view.show();
    const QRect drive = panes_->tree_view.node_rect(node(u"C:"_s));
    QTest::mouseClick(panes_->tree_view.viewport(), Qt::LeftButton, {}, drive.center());
    QCOMPARE(shared.tree_node_path, u"C:"_s);
    QCOMPARE(shared.current_folder, u"C:\\"_s);
    panes_->disk.make_folder(u"C:\\Music\\Deep"_s);
    panes_->tree_view.set_Expanded(node(u"C:"_s), true);
    QCOMPARE(texts_of(node(u"C:\\Music"_s)), QStringList{u"Deep"_s});
    QTest::mouseClick(panes_->tree_view.viewport(), Qt::LeftButton, {},
                      panes_->tree_view.node_rect(node(u"C:\\Music"_s)).center());
    QCOMPARE(shared.current_folder, u"C:\\Music\\"_s);
    QCOMPARE(panes_->names(), QStringList{u"a.mp3"_s});
}

void TestFolderTree::a_drive_keeps_its_picture()
{
    panes_->disk.make_folder(u"C:\\Music"_s);
    start();
    panes_->click_folder(u"C:\\Music"_s);
    panes_->click_folder(u"C:"_s);
    QCOMPARE(node(u"C:"_s)->Image(), u"DRIVE"_s);
    QCOMPARE(node(u"C:\\Music"_s)->Image(), u"FOLDER"_s);
    QCOMPARE(shared.current_folder, u"C:\\"_s);
    QCOMPARE(shared.tree_parent_key, u"MYCOMPUTER"_s);
}

void TestFolderTree::a_click_on_the_root_leaves_half_of_the_state()
{
    panes_->disk.write(u"C:\\Music\\[A][B].mp3"_s, "x");
    start();
    panes_->click_folder(u"C:\\Music"_s);
    QCOMPARE(panes_->names().size(), 1);
    panes_->fields.title = u"kept"_s;
    const QString panel = panes_->status_bar.panel_text(1);
    const i16 open_index = shared.last_open_node_index;
    shared.focus_pane = pane_none;
    panes_->click_folder(u"MYCOMPUTER"_s);
    QCOMPARE(panes_->names(), QStringList());
    QCOMPARE(panes_->fields.title, u"kept"_s);
    QCOMPARE(panes_->status_bar.panel_text(1), panel);
    QCOMPARE(shared.current_folder, u"MYCOMPUTER\\"_s);
    QCOMPARE(shared.tree_node_path, u"MYCOMPUTER"_s);
    QCOMPARE(shared.tree_parent_key, u"C:"_s);
    QCOMPARE(shared.last_open_node_index, open_index);
    QCOMPARE(shared.focus_pane, pane_none);
    QCOMPARE(node(u"MYCOMPUTER"_s)->Image(), u"MYCOMPUTER"_s);
    QCOMPARE(node(u"C:\\Music"_s)->Image(), u"FOLDER"_s);
}

void TestFolderTree::a_second_click_reloads_nothing()
{
    panes_->disk.write(u"C:\\Music\\a.mp3"_s, "x");
    start();
    panes_->click_folder(u"C:\\Music"_s);
    panes_->disk.write(u"C:\\Music\\b.mp3"_s, "x");
    panes_->tree_view.set_Image(node(u"C:\\Music"_s), u"FOLDER"_s);
    shared.focus_pane = pane_none;
    panes_->click_folder(u"C:\\Music"_s);
    QCOMPARE(panes_->names(), QStringList{u"a.mp3"_s});
    QCOMPARE(node(u"C:\\Music"_s)->Image(), u"OPENFOLDER"_s);
    QCOMPARE(shared.focus_pane, pane_tree);
    panes_->click_folder(u"C:\\Music"_s);
    QCOMPARE(node(u"C:\\Music"_s)->Image(), u"OPENFOLDER"_s);
}

void TestFolderTree::a_second_click_closes_what_was_open_before()
{
    panes_->disk.make_folder(u"C:\\A"_s);
    panes_->disk.make_folder(u"C:\\B"_s);
    start();
    panes_->click_folder(u"C:\\A"_s);
    panes_->tree_view.set_Image(node(u"C:\\B"_s), u"OPENFOLDER"_s);
    shared.last_open_node_index = static_cast<i16>(panes_->tree_view.Index(node(u"C:\\B"_s)));
    panes_->click_folder(u"C:\\A"_s);
    QCOMPARE(node(u"C:\\B"_s)->Image(), u"FOLDER"_s);
    QCOMPARE(node(u"C:\\A"_s)->Image(), u"OPENFOLDER"_s);
}

void TestFolderTree::capitals_of_the_root_key_in_a_path_count_as_the_root_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QStringList>("names");

    QTest::newRow("the capitals show an empty list") << u"C:\\My MYCOMPUTER files"_s << QStringList();
    QTest::newRow("small letters show the files") << u"C:\\MyComputer"_s << QStringList{u"a.mp3"_s};
}

void TestFolderTree::capitals_of_the_root_key_in_a_path_count_as_the_root()
{
    QFETCH(const QString, folder);
    QFETCH(const QStringList, names);
    panes_->disk.write(folder + u"\\a.mp3"_s, "x");
    panes_->disk.write(u"C:\\Music\\b.mp3"_s, "x");
    start();
    panes_->click_folder(u"C:\\Music"_s);
    panes_->click_folder(folder);
    QCOMPARE(panes_->names(), names);
    QCOMPARE(shared.current_folder, folder + u'\\');
    QCOMPARE(shared.tree_node_path, folder);
    QCOMPARE(shared.tree_parent_key, u"C:"_s);
}

void TestFolderTree::a_stale_index_beyond_the_nodes_ends_the_click()
{
    panes_->disk.write(u"C:\\Music\\a.mp3"_s, "x");
    start();
    shared.last_open_node_index = 1000;
    panes_->click_folder(u"C:\\Music"_s);
    QCOMPARE(shared.current_folder, u"C:\\Music\\"_s);
    QCOMPARE(shared.tree_node_path, QString());
    QCOMPARE(shared.last_open_node_index, 1000);
    QCOMPARE(node(u"C:\\Music"_s)->Image(), u"FOLDER"_s);
    QCOMPARE(panes_->names(), QStringList());
    QCOMPARE(panes_->messages.take(), QStringList());
}

void TestFolderTree::a_stale_index_closes_another_open_folder()
{
    panes_->disk.make_folder(u"C:\\A"_s);
    panes_->disk.make_folder(u"C:\\B"_s);
    start();
    panes_->tree_view.set_Image(node(u"C:\\B"_s), u"OPENFOLDER"_s);
    shared.last_open_node_index = static_cast<i16>(panes_->tree_view.Index(node(u"C:\\B"_s)));
    panes_->click_folder(u"C:\\A"_s);
    QCOMPARE(node(u"C:\\B"_s)->Image(), u"FOLDER"_s);
    QCOMPARE(node(u"C:\\A"_s)->Image(), u"OPENFOLDER"_s);
}

void TestFolderTree::a_stale_index_on_a_drive_changes_nothing()
{
    panes_->disk.make_folder(u"C:\\A"_s);
    start();
    shared.last_open_node_index = static_cast<i16>(panes_->tree_view.Index(node(u"C:"_s)));
    panes_->click_folder(u"C:\\A"_s);
    QCOMPARE(node(u"C:"_s)->Image(), u"DRIVE"_s);
    QCOMPARE(shared.tree_node_path, u"C:\\A"_s);
}

void TestFolderTree::a_vanished_folder_hands_over_to_its_parent()
{
    panes_->disk.make_folder(u"C:\\Music\\Pop"_s);
    panes_->disk.write(u"C:\\Music\\a.mp3"_s, "x");
    start();
    panes_->click_folder(u"C:"_s);
    panes_->tree_view.set_Expanded(node(u"C:"_s), true);
    remove_folder(u"C:\\Music\\Pop"_s);
    QVERIFY(node(u"C:\\Music\\Pop"_s) != nullptr);
    panes_->click_folder(u"C:\\Music\\Pop"_s);
    QCOMPARE(panes_->messages.take(), QStringList{u"Device Error : C:\\Music\\Pop"_s});
    QCOMPARE(selected(), u"C:\\Music"_s);
    QCOMPARE(node(u"C:\\Music\\Pop"_s), nullptr);
    QCOMPARE(panes_->names(), QStringList{u"a.mp3"_s});
    QCOMPARE(shared.current_folder, u"C:\\Music\\"_s);
    QCOMPARE(shared.tree_node_path, u"C:\\Music"_s);
    QCOMPARE(shared.tree_parent_key, u"C:"_s);
    QCOMPARE(shared.last_open_node_index, panes_->tree_view.Index(node(u"C:\\Music"_s)));
    QCOMPARE(node(u"C:\\Music"_s)->Image(), u"OPENFOLDER"_s);
}

void TestFolderTree::three_vanished_levels_climb_to_the_drive()
{
    panes_->disk.make_folder(u"C:\\A\\B\\C"_s);
    panes_->disk.write(u"C:\\top.mp3"_s, "x");
    start();
    panes_->click_folder(u"C:\\A"_s);
    panes_->click_folder(u"C:\\A\\B"_s);
    panes_->click_folder(u"MYCOMPUTER"_s);
    remove_folder(u"C:\\A"_s);
    panes_->click_folder(u"C:\\A\\B\\C"_s);
    QCOMPARE(panes_->messages.take(),
             (QStringList{u"Device Error : C:\\A\\B\\C"_s, u"Device Error : C:\\A\\B"_s, u"Device Error : C:\\A"_s}));
    QCOMPARE(selected(), u"C:"_s);
    QCOMPARE(shared.current_folder, u"C:\\"_s);
    QCOMPARE(shared.tree_node_path, u"C:"_s);
    QCOMPARE(shared.tree_parent_key, u"MYCOMPUTER"_s);
    QCOMPARE(node(u"C:\\A"_s), nullptr);
    QCOMPARE(panes_->names(), QStringList{u"top.mp3"_s});
}

void TestFolderTree::a_drive_that_goes_away_climbs_to_the_root()
{
    panes_->disk.make_folder(u"C:\\stick\\A\\B"_s);
    panes_->disk.write(u"C:\\stick\\A\\a.mp3"_s, "x");
    set_drives({drive_at(u"D"_s, DriveType::removable, panes_->disk.root() + "/stick")});
    start();
    panes_->click_folder(u"D:\\A"_s);
    QCOMPARE(panes_->names(), QStringList{u"a.mp3"_s});
    set_drives({drive_at(u"D"_s, DriveType::removable, {})});
    panes_->click_folder(u"D:\\A\\B"_s);
    // The folder above is the one shown so far: a click on it reloads nothing, and so tells nothing.
    QCOMPARE(panes_->messages.take(), QStringList{u"Device Error : D:\\A\\B"_s});
    QCOMPARE(selected(), u"D:\\A"_s);
    panes_->tree.refresh_all();
    QCOMPARE(panes_->messages.take(), (QStringList{u"Device Error : D:\\A\\"_s, u"Device Error : D:"_s}));
    QCOMPARE(selected(), u"MYCOMPUTER"_s);
    QCOMPARE(shared.tree_node_path, u"MYCOMPUTER"_s);
    QCOMPARE(shared.current_folder, u"MYCOMPUTER\\"_s);
    QCOMPARE(panes_->names(), QStringList());
}

void TestFolderTree::an_empty_drive_falls_back_to_the_root()
{
    set_drives({drive_at(u"C"_s, DriveType::fixed, panes_->disk.root()), drive_at(u"D"_s, DriveType::cd, {})});
    panes_->disk.write(u"C:\\a.mp3"_s, "x");
    start();
    panes_->click_folder(u"C:"_s);
    panes_->click_folder(u"D:"_s);
    QCOMPARE(panes_->messages.take(), QStringList{u"Device Error : D:"_s});
    QCOMPARE(selected(), u"MYCOMPUTER"_s);
    QCOMPARE(shared.tree_node_path, u"MYCOMPUTER"_s);
    QCOMPARE(shared.current_folder, u"MYCOMPUTER\\"_s);
    QCOMPARE(panes_->names(), QStringList());
    QCOMPARE(node(u"D:"_s)->Image(), u"Cddrive"_s);
    // A disc that comes later is read, while the table of drives keeps its first answer.
    set_drives({drive_at(u"C"_s, DriveType::fixed, panes_->disk.root()),
                drive_at(u"D"_s, DriveType::cd, panes_->disk.root())});
    panes_->click_folder(u"D:"_s);
    QCOMPARE(panes_->messages.take(), QStringList());
    QCOMPARE(panes_->names(), QStringList{u"a.mp3"_s});
    QCOMPARE(get_drive_state(u"D"_s), 0);
}

void TestFolderTree::a_folder_gone_between_click_and_fill()
{
    panes_->disk.write(u"C:\\Music\\Pop\\a.mp3"_s, "x");
    panes_->disk.write(u"C:\\Music\\b.mp3"_s, "x");
    start();
    panes_->click_folder(u"C:\\Music"_s);
    FolderTree tree(panes_->tree_view);
    QObject::connect(&tree, &FolderTree::files_wanted, [this](const QString& path) {
        remove_folder(u"C:\\Music\\Pop"_s);
        panes_->list.FillListView(path);
    });
    panes_->tree_view.set_Selected(node(u"C:\\Music\\Pop"_s));
    tree.Click_node_of_tree(node(u"C:\\Music\\Pop"_s));
    QCOMPARE(panes_->messages.take(), QStringList{u"Device Error : C:\\Music\\Pop\\"_s});
    QCOMPARE(selected(), u"C:\\Music"_s);
    QCOMPARE(shared.current_folder, u"C:\\Music\\"_s);
    QCOMPARE(shared.tree_node_path, u"C:\\Music"_s);
    QCOMPARE(panes_->names(), QStringList{u"b.mp3"_s});
    QCOMPARE(node(u"C:\\Music\\Pop"_s), nullptr);
}

void TestFolderTree::an_unreadable_folder_hands_over_to_its_parent()
{
    panes_->disk.write(u"C:\\Music\\Secret\\a.mp3"_s, "x");
    panes_->disk.write(u"C:\\Music\\b.mp3"_s, "x");
    start();
    panes_->click_folder(u"C:"_s);
    panes_->tree_view.set_Expanded(node(u"C:"_s), true);
    const WithoutRights secret(panes_->disk.native(u"C:\\Music\\Secret"_s));
    for (int click = 0; click < 2; ++click) {
        panes_->click_folder(u"C:\\Music\\Secret"_s);
        QCOMPARE(panes_->messages.take(), QStringList{u"Device Error : C:\\Music\\Secret\\"_s});
        QCOMPARE(selected(), u"C:\\Music"_s);
        // The list and the folder that it is of belong together.
        QCOMPARE(panes_->names(), QStringList{u"b.mp3"_s});
        QCOMPARE(shared.current_folder, u"C:\\Music\\"_s);
        QCOMPARE(shared.tree_node_path, u"C:\\Music"_s);
        QCOMPARE(shared.selected_mp3_path, u"C:\\Music\\b.mp3"_s);
    }
}

void TestFolderTree::unreadable_parents_climb_to_the_root()
{
    panes_->disk.make_folder(u"C:\\A\\B"_s);
    start();
    panes_->click_folder(u"C:\\A"_s);
    panes_->click_folder(u"C:\\A\\B"_s);
    panes_->click_folder(u"C:"_s);
    const WithoutRights drive(panes_->disk.root());
    panes_->tree_view.set_Selected(node(u"C:\\A\\B"_s));
    panes_->tree.refresh_all();
    QCOMPARE(panes_->messages.take(),
             (QStringList{u"Device Error : C:\\A\\B\\"_s, u"Device Error : C:\\A"_s, u"Device Error : C:\\"_s}));
    QCOMPARE(selected(), u"MYCOMPUTER"_s);
    QCOMPARE(panes_->names(), QStringList());
}

void TestFolderTree::a_folder_removed_while_shown()
{
    panes_->disk.write(u"C:\\Music\\a.mp3"_s, "x");
    panes_->disk.write(u"C:\\b.mp3"_s, "x");
    start();
    panes_->click_folder(u"C:\\Music"_s);
    remove_folder(u"C:\\Music"_s);
    QCOMPARE(panes_->names(), QStringList{u"a.mp3"_s});
    panes_->tree.refresh_all();
    QCOMPARE(panes_->messages.take(), QStringList{u"Device Error : C:\\Music\\"_s});
    QCOMPARE(selected(), u"C:"_s);
    QCOMPARE(shared.current_folder, u"C:\\"_s);
    QCOMPARE(panes_->names(), QStringList{u"b.mp3"_s});
    QCOMPARE(node(u"C:\\Music"_s), nullptr);
}

void TestFolderTree::expanding_reads_one_level_ahead()
{
    panes_->disk.make_folder(u"C:\\A\\AA\\AAA"_s);
    panes_->disk.make_folder(u"C:\\B\\BB"_s);
    start();
    QCOMPARE(node(u"C:\\A\\AA"_s), nullptr);
    panes_->tree.Tree_Expand(node(u"C:"_s));
    QCOMPARE(texts_of(node(u"C:\\A"_s)), QStringList{u"AA"_s});
    QCOMPARE(texts_of(node(u"C:\\B"_s)), QStringList{u"BB"_s});
    QCOMPARE(node(u"C:\\A\\AA\\AAA"_s), nullptr);
}

void TestFolderTree::filling_again_adds_nothing()
{
    panes_->disk.make_folder(u"C:\\A\\AA"_s);
    start();
    panes_->tree.Tree_Expand(node(u"C:"_s));
    const int count = panes_->tree_view.Count();
    panes_->tree.Tree_Expand(node(u"C:"_s));
    panes_->tree.FillNodeFolders(node(u"C:"_s), u"C:\\"_s);
    QCOMPARE(panes_->tree_view.Count(), count);
}

void TestFolderTree::filling_ends_at_the_first_folder_that_is_there()
{
    panes_->disk.make_folder(u"C:\\A\\only"_s);
    start();
    panes_->tree_view.Add(node(u"C:\\A"_s), u"C:\\A\\only"_s, u"only"_s, u"FOLDER"_s);
    panes_->tree.FillNodeFolders_sub(node(u"C:\\A"_s), u"C:\\A\\"_s);
    QVERIFY(!node(u"C:\\A"_s)->Sorted());
    panes_->tree_view.Remove(panes_->tree_view.Index(node(u"C:\\A\\only"_s)));
    panes_->tree.FillNodeFolders_sub(node(u"C:\\A"_s), u"C:\\A\\"_s);
    QVERIFY(node(u"C:\\A"_s)->Sorted());
}

void TestFolderTree::a_new_folder_takes_its_place_data()
{
    QTest::addColumn<bool>("sorted");
    QTest::addColumn<QStringList>("texts");

    QTest::newRow("in a sorted node its place by name") << true << QStringList{u"alpha"_s, u"Beta"_s, u"gamma"_s};
    QTest::newRow("in any other node the end") << false << QStringList{u"alpha"_s, u"gamma"_s, u"Beta"_s};
}

void TestFolderTree::a_new_folder_takes_its_place()
{
    QFETCH(const bool, sorted);
    QFETCH(const QStringList, texts);
    panes_->disk.make_folder(u"C:\\Music\\alpha"_s);
    start();
    TreeNode* const music = node(u"C:\\Music"_s);
    if (sorted)
        panes_->tree.FillNodeFolders_sub(music, u"C:\\Music\\"_s);
    else
        panes_->tree.FillNodeFolders(music, u"C:\\Music\\"_s);
    panes_->disk.make_folder(u"C:\\Music\\gamma"_s);
    panes_->tree.FillNodeFolders(music, u"C:\\Music\\"_s);
    panes_->disk.make_folder(u"C:\\Music\\Beta"_s);
    panes_->click_folder(u"C:\\Music"_s);
    QCOMPARE(texts_of(music), texts);
}

void TestFolderTree::folder_names_compare_by_case()
{
    panes_->disk.make_folder(u"C:\\Pop"_s);
    start();
    remove_folder(u"C:\\Pop"_s);
    panes_->disk.make_folder(u"C:\\pop"_s);
    panes_->tree.FillNodeFolders(node(u"C:"_s), u"C:\\"_s);
    QCOMPARE(texts_of(node(u"C:"_s)), QStringList{u"pop"_s});
}

void TestFolderTree::a_duplicate_key_ends_the_fill()
{
    panes_->disk.make_folder(u"C:\\kept"_s);
    start();
    panes_->disk.make_folder(u"C:\\gone"_s);
    panes_->tree.FillNodeFolders(node(u"C:"_s), u"C:\\"_s);
    remove_folder(u"C:\\gone"_s);
    panes_->tree_view.set_Text(node(u"C:\\kept"_s), u"another text"_s);
    panes_->tree.FillNodeFolders(node(u"C:"_s), u"C:\\"_s);
    QVERIFY(node(u"C:\\gone"_s) != nullptr);
    QCOMPARE(node(u"C:\\kept"_s)->Text(), u"another text"_s);
}

void TestFolderTree::an_unreadable_folder_keeps_its_nodes()
{
    panes_->disk.make_folder(u"C:\\Music\\Pop"_s);
    start();
    panes_->tree.FillNodeFolders(node(u"C:\\Music"_s), u"C:\\Music\\"_s);
    const WithoutRights music(panes_->disk.native(u"C:\\Music"_s));
    panes_->tree.FillNodeFolders(node(u"C:\\Music"_s), u"C:\\Music\\"_s);
    QCOMPARE(texts_of(node(u"C:\\Music"_s)), QStringList{u"Pop"_s});
    QCOMPARE(panes_->messages.take(), QStringList());
}

void TestFolderTree::a_file_system_of_many_folders_is_brought_in_line()
{
    for (int number = 0; number < 300; ++number)
        panes_->disk.make_folder(u"C:\\Music\\old %1"_s.arg(number));
    start();
    panes_->tree.FillNodeFolders(node(u"C:\\Music"_s), u"C:\\Music\\"_s);
    QCOMPARE(texts_of(node(u"C:\\Music"_s)).size(), 300);
    for (int number = 0; number < 299; ++number)
        remove_folder(u"C:\\Music\\old %1"_s.arg(number));
    panes_->disk.make_folder(u"C:\\Music\\new"_s);
    panes_->tree.FillNodeFolders(node(u"C:\\Music"_s), u"C:\\Music\\"_s);
    QCOMPARE(texts_of(node(u"C:\\Music"_s)), (QStringList{u"old 299"_s, u"new"_s}));
}

void TestFolderTree::refreshing_follows_the_disk()
{
    panes_->disk.make_folder(u"C:\\Music\\Pop"_s);
    panes_->disk.make_folder(u"C:\\Music\\Rock"_s);
    start();
    panes_->click_folder(u"C:\\Music"_s);
    remove_folder(u"C:\\Music\\Pop"_s);
    panes_->disk.make_folder(u"C:\\Music\\Soul"_s);
    panes_->disk.write(u"C:\\Music\\a.mp3"_s, "x");
    QVERIFY(node(u"C:\\Music\\Pop"_s) != nullptr);
    panes_->tree.refresh_all();
    QCOMPARE(node(u"C:\\Music\\Pop"_s), nullptr);
    QVERIFY(node(u"C:\\Music\\Soul"_s) != nullptr);
    QCOMPARE(panes_->names(), QStringList{u"a.mp3"_s});
    QCOMPARE(selected(), u"C:\\Music"_s);
}

void TestFolderTree::refreshing_does_nothing_on_the_root()
{
    panes_->disk.write(u"C:\\a.mp3"_s, "x");
    start();
    panes_->click_folder(u"C:"_s);
    panes_->tree_view.set_Selected(node(u"MYCOMPUTER"_s));
    const QSignalSpy files(&panes_->tree, &FolderTree::files_wanted);
    panes_->disk.make_folder(u"C:\\New"_s);
    panes_->tree.refresh_all();
    QCOMPARE(files.count(), 0);
    QCOMPARE(node(u"C:\\New"_s), nullptr);
    QCOMPARE(panes_->names(), QStringList{u"a.mp3"_s});
}

void TestFolderTree::odd_folder_names_data()
{
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("255 bytes") << QByteArray(255, 'n');
    QTest::newRow("not UTF-8") << QByteArray("caf\xe9");
    QTest::newRow("a line break") << QByteArray("two\nlines");
    QTest::newRow("a backslash") << QByteArray("back\\slash");
    QTest::newRow("a leading dot") << QByteArray(".hidden");
    QTest::newRow("blanks at both ends") << QByteArray(" blanks ");
    QTest::newRow("Korean") << QByteArray("\xed\x95\x9c\xea\xb5\xad");
    QTest::newRow("a colon") << QByteArray("a:b");
}

void TestFolderTree::odd_folder_names()
{
    QFETCH(const QByteArray, bytes);
    const QByteArray native = panes_->disk.root() + '/' + bytes;
    QCOMPARE(mkdir(native.constData(), 0755), 0);
    const QByteArray path = native + "/a.mp3";
    std::unique_ptr<FILE, int (*)(FILE*)> stream(fopen(path.constData(), "w"), fclose);
    QVERIFY(stream != nullptr);
    stream.reset();
    QCOMPARE(mkdir((native + "/sub").constData(), 0755), 0);
    start();
    QCOMPARE(node(u"C:"_s)->children().size(), std::size_t{1});
    const QString key = node(u"C:"_s)->children().front()->Key();
    panes_->click_folder(key);
    QCOMPARE(panes_->messages.take(), QStringList());
    QCOMPARE(panes_->names(), QStringList{u"a.mp3"_s});
    QVERIFY(node(key + u"\\sub"_s) != nullptr);
}

void TestFolderTree::focus_goes_to_the_tree()
{
    start();
    panes_->tree_view.show();
    QVERIFY(QTest::qWaitForWindowActive(&panes_->tree_view));
    panes_->tree_view.clearFocus();
    panes_->tree_view.setFocus(Qt::TabFocusReason);
    QTRY_COMPARE(shared.focus_pane, pane_tree);
}

void TestFolderTree::what_a_path_is_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("selected");
    QTest::addColumn<int>("result");

    QTest::newRow("the computer is selected") << u"D:\\Music"_s << u"MYCOMPUTER"_s << 2;
    QTest::newRow("the computer goes before a CD drive") << u"E:"_s << u"MYCOMPUTER"_s << 2;
    QTest::newRow("exactly a CD drive") << u"E:"_s << u"C:"_s << 3;
    QTest::newRow("exactly another drive") << u"C:"_s << u"C:"_s << 1;
    QTest::newRow("a removable drive") << u"D:"_s << u"C:"_s << 1;
    QTest::newRow("below a CD drive") << u"E:\\Music"_s << u"E:"_s << 4;
    QTest::newRow("the root folder of a CD") << u"E:\\"_s << u"E:"_s << 4;
    QTest::newRow("below another drive") << u"C:\\Music"_s << u"C:"_s << 0;
    QTest::newRow("a drive that is not there") << u"Z:"_s << u"C:"_s << 0;
    QTest::newRow("below a drive that is not there") << u"Z:\\Music"_s << u"C:"_s << 0;
    QTest::newRow("no path at all") << QString() << u"C:"_s << 0;
}

void TestFolderTree::what_a_path_is()
{
    QFETCH(const QString, path);
    QFETCH(const QString, selected);
    QFETCH(const int, result);
    set_drives({drive_at(u"C"_s, DriveType::fixed, panes_->disk.root()),
                drive_at(u"D"_s, DriveType::removable, panes_->disk.root()),
                drive_at(u"E"_s, DriveType::cd, panes_->disk.root())});
    QCOMPARE(check_dirve(path, selected), result);
}

QUILMO_UI_TEST(TestFolderTree)
#include "test_folder_tree.moc"
