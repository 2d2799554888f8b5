#include "core/drive_table.h"
#include "core/mod_of_grobal_var.h"
#include "explorer/File_copy_Dlg.h"
#include "platform/drives.h"
#include "rights.h"
#include "selection/final_list.h"
#include "ui_explorer.h"
#include "ui_file_prompts.h"

#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QTest>

#include <sys/stat.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

using Answer = ScriptedPrompts::Answer;

Drive drive(const QString& letter, DriveType type, bool is_ready)
{
    return {.DriveLetter = letter,
            .Type = type,
            .VolumeName = u"Volume"_s,
            .IsReady = is_ready,
            .mount_point = {},
            .device = {},
            .ShareName = u"Share"_s};
}

/// Prompts that note whether a form was on the screen when they asked.
class WatchingPrompts : public ScriptedPrompts
{
public:
    Overwrite ask_overwrite(const FileFacts& source, const FileFacts& target) override
    {
        was_visible = form->isVisible();
        return ScriptedPrompts::ask_overwrite(source, target);
    }

    const QWidget* form = nullptr;
    bool was_visible = true;
};

} // namespace

class TestFileCopyDlg : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void opens_with_its_texts();
    void drives_are_shown_data();
    void drives_are_shown();
    void opening_leaves_the_drive_table_alone();
    void tree_is_read_one_level_ahead();

    void a_click_chooses_the_folder();
    void the_open_folder_is_the_one_clicked_last();
    void a_drive_of_the_network_loses_its_picture();
    void a_drive_without_a_medium_stays_empty_without_a_message();
    void a_click_on_the_computer_is_no_choice();
    void a_folder_called_like_the_computer_keeps_the_old_parent();

    void a_folder_is_renamed_with_all_below_it();
    void a_name_that_exists_is_refused();
    void an_empty_name_is_refused();
    void the_same_name_is_no_rename();
    void a_name_that_another_folder_has_left_is_free();
    void a_drive_is_not_renamed();
    void a_folder_that_cannot_be_renamed_is_told();
    void nothing_is_renamed_before_the_first_click();
    void a_second_click_on_the_label_edits_it();

    void a_new_folder_gets_its_name_at_once();
    void new_folders_are_numbered();
    void a_new_folder_is_made_where_was_clicked_last();
    void a_new_folder_takes_the_place_of_a_stale_node();
    void no_new_folder_below_the_computer();
    void no_new_folder_on_a_ready_cd();
    void a_new_folder_that_cannot_be_made_is_told_data();
    void a_new_folder_that_cannot_be_made_is_told();

    void ok_copies_the_final_list();
    void ok_copies_only_as_many_slots_as_there_are_files();
    void ok_copies_to_the_folder_of_an_earlier_use();
    void ok_without_a_folder_stays_open_data();
    void ok_without_a_folder_stays_open();
    void ok_with_an_empty_final_list_only_closes();
    void ok_asks_before_it_overwrites();
    void ok_closes_when_the_copy_fails();
    void ok_after_a_rename_in_progress_copies_to_the_new_name();
    void enter_is_ok_and_escape_is_cancel();
    void cancel_closes_and_copies_nothing();

private:
    void open();
    template<typename Control> Control& control(const QString& name) const
    {
        return *dialog_->findChild<Control*>(name);
    }
    TreeView& tree() const { return control<TreeView>(u"FileCopyTreeView"_s); }
    TreeNode* node(const QString& key) const { return tree().Item(key); }
    void press(const QString& button) const { QTest::mouseClick(&control<UsrButton>(button), Qt::LeftButton); }
    void click(const QString& key) const;
    QLineEdit* editor() const;
    void type_label(const QString& text) const;
    QStringList on_disk(const QString& folder) const;
    void add_to_final_list(const QString& path) const;

    std::unique_ptr<TestDisk> disk_;
    std::unique_ptr<NotedMessages> messages_;
    std::unique_ptr<WatchingPrompts> prompts_;
    ImageList images_;
    std::unique_ptr<File_copy_Dlg> dialog_;
    int refreshes_ = 0;
};

void TestFileCopyDlg::init()
{
    disk_ = std::make_unique<TestDisk>();
    messages_ = std::make_unique<NotedMessages>();
    prompts_ = std::make_unique<WatchingPrompts>();
    refreshes_ = 0;
    disk_->make_folder(u"C:\\Pop\\Live\\1999"_s);
    disk_->make_folder(u"C:\\Rock"_s);
    add_drive_entry(4, u"C"_s, 1);
}

void TestFileCopyDlg::cleanup()
{
    dialog_.reset();
    prompts_.reset();
    messages_.reset();
    disk_.reset();
}

void TestFileCopyDlg::open()
{
    dialog_ = std::make_unique<File_copy_Dlg>(
        File_copy_Dlg::Surroundings{.refresh_all = [this] { ++refreshes_; }, .images = images_}, nullptr);
    prompts_->form = dialog_.get();
    dialog_->show();
    QVERIFY(QTest::qWaitForWindowActive(dialog_.get()));
}

void TestFileCopyDlg::click(const QString& key) const
{
    tree().scrollTo(tree().currentIndex());
    QVERIFY2(node(key) != nullptr, qPrintable(key));
    for (TreeNode* above = node(key)->Parent(); above != nullptr; above = above->Parent())
        tree().set_Expanded(above, true);
    QTest::mouseClick(tree().viewport(), Qt::LeftButton, {}, tree().node_rect(node(key)).center());
}

QLineEdit* TestFileCopyDlg::editor() const
{
    for (auto* found : tree().findChildren<QLineEdit*>(u"label_editor"_s)) {
        if (found->isVisible())
            return found;
    }
    return nullptr;
}

void TestFileCopyDlg::type_label(const QString& text) const
{
    if (editor() == nullptr)
        QTest::keyClick(&tree(), Qt::Key_F2);
    QLineEdit* const box = editor();
    QVERIFY(box != nullptr);
    box->selectAll();
    QTest::keyClick(box, Qt::Key_Delete);
    if (!text.isEmpty())
        box->insert(text);
    box->setModified(true);
    QTest::keyClick(box, Qt::Key_Return);
}

QStringList TestFileCopyDlg::on_disk(const QString& folder) const
{
    return QDir(QFile::decodeName(disk_->native(folder)))
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
}

void TestFileCopyDlg::add_to_final_list(const QString& path) const
{
    disk_->write(path, path.toUtf8());
    const qsizetype name_start = path.lastIndexOf(u'\\') + 1;
    FinalListEntry& entry = shared.final_list.at(static_cast<std::size_t>(shared.final_list_count++));
    entry.in_use = 1;
    entry.name = path.mid(name_start);
    entry.folder = path.left(name_start);
    entry.full_path = path;
    entry.size = 10;
}

void TestFileCopyDlg::opens_with_its_texts()
{
    open();
    QCOMPARE(dialog_->objectName(), u"File_copy_Dlg"_s);
    QCOMPARE(dialog_->windowTitle(), u"Vurlo Utility Ver 1.0"_s);
    QCOMPARE(control<UsrButton>(u"Cmd_new_folder"_s).accessibleName(), u"New Folder"_s);
    QCOMPARE(control<UsrButton>(u"cmd_ok"_s).accessibleName(), u"OK"_s);
    QCOMPARE(control<UsrButton>(u"cmd_cancel"_s).accessibleName(), u"Cancel"_s);
    QVERIFY(!tree().accessibleName().isEmpty());
    const TreeNode* const root = tree().Item(1);
    QCOMPARE(root->Key(), u"MYCOMPUTER"_s);
    QCOMPARE(root->Image(), u"MYCOMPUTER"_s);
    QCOMPARE(root->Text(), get_computer_name());
    QVERIFY(tree().Expanded(root));
    QVERIFY(tree().selectionModel()->selectedIndexes().isEmpty());
}

void TestFileCopyDlg::drives_are_shown_data()
{
    QTest::addColumn<DriveType>("type");
    QTest::addColumn<bool>("is_ready");
    QTest::addColumn<QString>("image");
    QTest::addColumn<QString>("text");
    for (const bool is_ready : {true, false}) {
        const char* state = is_ready ? "ready" : "not ready";
        const QString named = is_ready ? u"Volume(X:)"_s : u"(X:)"_s;
        QTest::addRow("unknown, %s", state) << DriveType::unknown << is_ready << u"DRIVE"_s << named;
        QTest::addRow("removable, %s", state) << DriveType::removable << is_ready << u"35floppy"_s << u"(X:)"_s;
        QTest::addRow("fixed, %s", state) << DriveType::fixed << is_ready << u"DRIVE"_s << named;
        QTest::addRow("network, %s", state) << DriveType::remote << is_ready << u"Drivenet"_s << u"Share(X:)"_s;
        QTest::addRow("CD, %s", state) << DriveType::cd << is_ready << u"Cddrive"_s << u"(X:)"_s;
        QTest::addRow("RAM, %s", state) << DriveType::ram << is_ready << u"DRIVE"_s << named;
    }
}

void TestFileCopyDlg::drives_are_shown()
{
    QFETCH(const DriveType, type);
    QFETCH(const bool, is_ready);
    set_drives({drive(u"X"_s, type, is_ready)});
    open();
    const TreeNode* const shown = tree().Item(2);
    QCOMPARE(shown->Key(), u"X:"_s);
    QCOMPARE(shown->Parent(), tree().Item(1));
    QTEST(shown->Image(), "image");
    QTEST(shown->Text(), "text");
}

void TestFileCopyDlg::opening_leaves_the_drive_table_alone()
{
    shared.drive_table = {};
    open();
    QCOMPARE(shared.drive_table.at(0).in_use, i16(0));
}

void TestFileCopyDlg::tree_is_read_one_level_ahead()
{
    open();
    QVERIFY(node(u"C:\\Pop"_s) != nullptr);
    QCOMPARE(node(u"C:\\Pop"_s)->Image(), u"FOLDER"_s);
    QVERIFY(node(u"C:\\Pop\\Live"_s) == nullptr);
    tree().set_Expanded(node(u"C:"_s), true);
    QVERIFY(node(u"C:\\Pop\\Live"_s) != nullptr);
    QVERIFY(node(u"C:\\Pop\\Live\\1999"_s) == nullptr);
}

void TestFileCopyDlg::a_click_chooses_the_folder()
{
    open();
    click(u"C:"_s);
    QCOMPARE(shared.dest_folder_path, u"C:"_s);
    QCOMPARE(shared.dest_node_key, u"MYCOMPUTER"_s);
    click(u"C:\\Pop"_s);
    QCOMPARE(shared.dest_folder_path, u"C:\\Pop"_s);
    QCOMPARE(shared.dest_node_key, u"C:"_s);
    // A folder made meanwhile is found when its node has no children yet.
    disk_->make_folder(u"C:\\Rock\\New"_s);
    click(u"C:\\Rock"_s);
    QVERIFY(node(u"C:\\Rock\\New"_s) != nullptr);
    QVERIFY(tree().Expanded(node(u"C:\\Rock"_s)));
}

void TestFileCopyDlg::the_open_folder_is_the_one_clicked_last()
{
    open();
    click(u"C:\\Pop"_s);
    QCOMPARE(node(u"C:\\Pop"_s)->Image(), u"OPENFOLDER"_s);
    click(u"C:\\Rock"_s);
    QCOMPARE(node(u"C:\\Pop"_s)->Image(), u"FOLDER"_s);
    QCOMPARE(node(u"C:\\Rock"_s)->Image(), u"OPENFOLDER"_s);
    click(u"C:"_s);
    QCOMPARE(node(u"C:\\Rock"_s)->Image(), u"FOLDER"_s);
    QCOMPARE(node(u"C:"_s)->Image(), u"DRIVE"_s);
    click(u"MYCOMPUTER"_s);
    QCOMPARE(node(u"C:"_s)->Image(), u"DRIVE"_s);
    QCOMPARE(tree().Item(1)->Image(), u"MYCOMPUTER"_s);
}

void TestFileCopyDlg::a_drive_of_the_network_loses_its_picture()
{
    set_drives({drives().front(), drive(u"N"_s, DriveType::remote, true), drive(u"R"_s, DriveType::removable, false),
                drive(u"S"_s, DriveType::cd, false)});
    open();
    for (const QString& key : {u"N:"_s, u"R:"_s, u"S:"_s, u"C:"_s})
        click(key);
    QCOMPARE(node(u"N:"_s)->Image(), u"FOLDER"_s);
    QCOMPARE(node(u"R:"_s)->Image(), u"35floppy"_s);
    QCOMPARE(node(u"S:"_s)->Image(), u"Cddrive"_s);
    click(u"N:"_s);
    QCOMPARE(node(u"N:"_s)->Image(), u"OPENFOLDER"_s);
}

void TestFileCopyDlg::a_drive_without_a_medium_stays_empty_without_a_message()
{
    set_drives({drive(u"R"_s, DriveType::removable, false)});
    open();
    click(u"R:"_s);
    QCOMPARE(shared.dest_folder_path, u"R:"_s);
    QVERIFY(node(u"R:"_s)->children().empty());
    QCOMPARE(messages_->take(), QStringList());
}

void TestFileCopyDlg::a_click_on_the_computer_is_no_choice()
{
    open();
    add_to_final_list(u"C:\\Songs\\one.mp3"_s);
    click(u"C:\\Pop"_s);
    click(u"MYCOMPUTER"_s);
    QCOMPARE(shared.dest_folder_path, u"MYCOMPUTER"_s);
    QCOMPARE(shared.dest_node_key, u"C:"_s);
    press(u"cmd_ok"_s);
    QVERIFY(dialog_->isVisible());
    QCOMPARE(refreshes_, 0);
    QCOMPARE(on_disk(u"C:\\Pop"_s), QStringList{u"Live"_s});
}

void TestFileCopyDlg::a_folder_called_like_the_computer_keeps_the_old_parent()
{
    disk_->make_folder(u"C:\\MYCOMPUTER"_s);
    open();
    click(u"C:\\MYCOMPUTER"_s);
    QCOMPARE(shared.dest_folder_path, u"C:\\MYCOMPUTER"_s);
    QCOMPARE(shared.dest_node_key, QString());
}

void TestFileCopyDlg::a_folder_is_renamed_with_all_below_it()
{
    open();
    click(u"C:\\Pop"_s);
    click(u"C:\\Pop\\Live"_s);
    click(u"C:\\Pop"_s);
    type_label(u"Hits"_s);
    QCOMPARE(on_disk(u"C:"_s), (QStringList{u"Hits"_s, u"Rock"_s}));
    QCOMPARE(on_disk(u"C:\\Hits"_s), QStringList{u"Live"_s});
    QVERIFY(node(u"C:\\Pop"_s) == nullptr);
    QVERIFY(node(u"C:\\Pop\\Live"_s) == nullptr);
    QVERIFY(node(u"C:\\Hits\\Live"_s) != nullptr);
    QCOMPARE(node(u"C:\\Hits"_s)->Text(), u"Hits"_s);
    QCOMPARE(node(u"C:\\Hits"_s)->children().size(), std::size_t(1));
    QCOMPARE(shared.dest_folder_path, u"C:\\Hits"_s);
    QCOMPARE(shared.dest_node_key, u"C:"_s);
    QCOMPARE(messages_->take(), QStringList());
}

void TestFileCopyDlg::a_name_that_exists_is_refused()
{
    open();
    click(u"C:\\Pop"_s);
    type_label(u"Rock"_s);
    QCOMPARE(messages_->take(), QStringList{u"C:\\Rock already exists"_s});
    QCOMPARE(on_disk(u"C:"_s), (QStringList{u"Pop"_s, u"Rock"_s}));
    QCOMPARE(node(u"C:\\Pop"_s)->Text(), u"Pop"_s);
    QCOMPARE(shared.dest_folder_path, u"C:\\Pop"_s);
}

void TestFileCopyDlg::an_empty_name_is_refused()
{
    open();
    click(u"C:\\Pop"_s);
    type_label({});
    QCOMPARE(messages_->take(), QStringList{u"C:\\ already exists"_s});
    QCOMPARE(node(u"C:\\Pop"_s)->Text(), u"Pop"_s);
}

void TestFileCopyDlg::the_same_name_is_no_rename()
{
    open();
    click(u"C:\\Pop"_s);
    type_label(u"Pop"_s);
    QCOMPARE(messages_->take(), QStringList());
    QCOMPARE(node(u"C:\\Pop"_s)->Text(), u"Pop"_s);
}

void TestFileCopyDlg::a_name_that_another_folder_has_left_is_free()
{
    open();
    click(u"C:\\Pop"_s);
    QVERIFY(QDir(QFile::decodeName(disk_->native(u"C:"_s))).rmdir(u"Rock"_s));
    type_label(u"Rock"_s);
    QCOMPARE(messages_->take(), QStringList());
    QCOMPARE(on_disk(u"C:"_s), QStringList{u"Rock"_s});
    QCOMPARE(node(u"C:"_s)->children().size(), std::size_t(1));
    QVERIFY(node(u"C:\\Rock\\Live"_s) != nullptr);
}

void TestFileCopyDlg::a_drive_is_not_renamed()
{
    open();
    click(u"C:"_s);
    type_label(u"Disc"_s);
    QCOMPARE(messages_->take(), QStringList{u"Run-time error '76':\n\nPath not found"_s});
    QCOMPARE(node(u"C:"_s)->Text(), u"Test(C:)"_s);
    QCOMPARE(shared.dest_folder_path, u"C:"_s);
    QVERIFY(dialog_->isVisible());
}

void TestFileCopyDlg::a_folder_that_cannot_be_renamed_is_told()
{
    open();
    click(u"C:\\Pop"_s);
    const BoundByRights bound;
    chmod(disk_->root().constData(), 0555);
    type_label(u"Hits"_s);
    chmod(disk_->root().constData(), 0755);
    QCOMPARE(messages_->take(), QStringList{u"Run-time error '70':\n\nPermission denied"_s});
    QCOMPARE(node(u"C:\\Pop"_s)->Text(), u"Pop"_s);
    QVERIFY(node(u"C:\\Pop\\Live"_s) != nullptr);
    QCOMPARE(shared.dest_folder_path, u"C:\\Pop"_s);
}

void TestFileCopyDlg::nothing_is_renamed_before_the_first_click()
{
    shared.dest_node_key = u"C:"_s;
    shared.dest_folder_path = u"C:\\Pop"_s;
    open();
    tree().set_Selected(tree().Item(1));
    type_label(u"Hits"_s);
    QCOMPARE(on_disk(u"C:"_s), (QStringList{u"Pop"_s, u"Rock"_s}));
    QCOMPARE(tree().Item(1)->Text(), get_computer_name());
}

void TestFileCopyDlg::a_second_click_on_the_label_edits_it()
{
    open();
    click(u"C:\\Rock"_s);
    click(u"C:"_s);
    click(u"C:\\Rock"_s);
    QVERIFY(editor() == nullptr);
    click(u"C:\\Rock"_s);
    QTRY_VERIFY(editor() != nullptr);
    type_label(u"Metal"_s);
    QVERIFY(disk_->exists(u"C:\\Metal"_s));
}

void TestFileCopyDlg::a_new_folder_gets_its_name_at_once()
{
    open();
    click(u"C:\\Rock"_s);
    press(u"Cmd_new_folder"_s);
    QVERIFY(disk_->exists(u"C:\\Rock\\new folder"_s));
    QCOMPARE(node(u"C:\\Rock\\new folder"_s)->Text(), u"new folder"_s);
    QCOMPARE(node(u"C:\\Rock\\new folder"_s)->Image(), u"FOLDER"_s);
    QCOMPARE(tree().SelectedItem(), node(u"C:\\Rock\\new folder"_s));
    QCOMPARE(shared.dest_folder_path, u"C:\\Rock\\new folder"_s);
    QCOMPARE(shared.dest_node_key, u"C:\\Rock"_s);
    QVERIFY(editor() != nullptr);
    QCOMPARE(editor()->selectedText(), u"new folder"_s);
    type_label(u"Live"_s);
    QCOMPARE(on_disk(u"C:\\Rock"_s), QStringList{u"Live"_s});
    QCOMPARE(shared.dest_folder_path, u"C:\\Rock\\Live"_s);
    QCOMPARE(messages_->take(), QStringList());
}

void TestFileCopyDlg::new_folders_are_numbered()
{
    open();
    const auto make_one = [this](const QString& new_name) {
        click(u"C:\\Rock"_s);
        press(u"Cmd_new_folder"_s);
        type_label(new_name);
    };
    make_one(u"new folder"_s);
    make_one(u"new folder1"_s);
    make_one(u"new folder2"_s);
    QCOMPARE(on_disk(u"C:\\Rock"_s), (QStringList{u"new folder"_s, u"new folder1"_s, u"new folder2"_s}));
    click(u"C:\\Rock\\new folder"_s);
    type_label(u"Live"_s);
    make_one(u"new folder"_s);
    QCOMPARE(on_disk(u"C:\\Rock"_s), (QStringList{u"Live"_s, u"new folder"_s, u"new folder1"_s, u"new folder2"_s}));
    QCOMPARE(messages_->take(), QStringList());
}

void TestFileCopyDlg::a_new_folder_is_made_where_was_clicked_last()
{
    open();
    click(u"C:\\Rock"_s);
    tree().set_Selected(node(u"C:\\Pop"_s)); // no click
    press(u"Cmd_new_folder"_s);
    QCOMPARE(on_disk(u"C:\\Rock"_s), QStringList{u"new folder"_s});
    QCOMPARE(on_disk(u"C:\\Pop"_s), QStringList{u"Live"_s});
}

void TestFileCopyDlg::a_new_folder_takes_the_place_of_a_stale_node()
{
    disk_->make_folder(u"C:\\Rock\\new folder"_s);
    open();
    click(u"C:\\Rock"_s);
    QVERIFY(node(u"C:\\Rock\\new folder"_s) != nullptr);
    QVERIFY(QDir(QFile::decodeName(disk_->native(u"C:\\Rock"_s))).rmdir(u"new folder"_s));
    press(u"Cmd_new_folder"_s);
    QCOMPARE(on_disk(u"C:\\Rock"_s), QStringList{u"new folder"_s});
    QCOMPARE(node(u"C:\\Rock"_s)->children().size(), std::size_t(1));
}

void TestFileCopyDlg::no_new_folder_below_the_computer()
{
    open();
    click(u"C:\\Rock"_s);
    shared.dest_folder_path = u"C:\\Rock"_s;
    tree().set_Selected(tree().Item(1));
    press(u"Cmd_new_folder"_s);
    QCOMPARE(on_disk(u"C:\\Rock"_s), QStringList());
    QCOMPARE(messages_->take(), QStringList());
}

void TestFileCopyDlg::no_new_folder_on_a_ready_cd()
{
    shared.drive_table = {};
    add_drive_entry(2, u"C"_s, 1);
    open();
    click(u"C:\\Rock"_s);
    press(u"Cmd_new_folder"_s);
    QCOMPARE(messages_->take(), QStringList{u"Unable to create new folder"_s});
    QCOMPARE(on_disk(u"C:\\Rock"_s), QStringList());
    QVERIFY(editor() == nullptr);
}

void TestFileCopyDlg::a_new_folder_that_cannot_be_made_is_told_data()
{
    QTest::addColumn<QString>("where");
    QTest::newRow("in a folder without rights") << u"C:\\Rock"_s;
    QTest::newRow("in a folder of an earlier use that the tree has not read") << u"C:\\Pop\\Live\\1999"_s;
}

void TestFileCopyDlg::a_new_folder_that_cannot_be_made_is_told()
{
    QFETCH(const QString, where);
    open();
    click(u"C:\\Rock"_s);
    shared.dest_folder_path = where;
    const BoundByRights bound;
    chmod(disk_->native(u"C:\\Rock"_s).constData(), 0555);
    press(u"Cmd_new_folder"_s);
    chmod(disk_->native(u"C:\\Rock"_s).constData(), 0755);
    QCOMPARE(messages_->take(), QStringList{u"Unable to create new folder"_s});
    QCOMPARE(on_disk(where), QStringList());
    QVERIFY(node(u"C:\\Rock"_s)->children().empty());
    QVERIFY(editor() == nullptr);
}

void TestFileCopyDlg::ok_copies_the_final_list()
{
    open();
    for (const QString& path : {u"C:\\Songs\\one.mp3"_s, u"C:\\Songs\\two.mp3"_s, u"C:\\Pop\\three.mp3"_s})
        add_to_final_list(path);
    click(u"C:\\Rock"_s);
    press(u"cmd_ok"_s);
    QCOMPARE(on_disk(u"C:\\Rock"_s), (QStringList{u"one.mp3"_s, u"three.mp3"_s, u"two.mp3"_s}));
    QCOMPARE(disk_->read(u"C:\\Rock\\three.mp3"_s), "C:\\Pop\\three.mp3");
    QVERIFY(disk_->exists(u"C:\\Songs\\one.mp3"_s));
    QVERIFY(!dialog_->isVisible());
    QCOMPARE(refreshes_, 1);
    QCOMPARE(shared.final_list_count, i32(3));
    QCOMPARE(shared.dest_folder_path, u"C:\\Rock"_s);
    QCOMPARE(prompts_->take(), QStringList());
}

void TestFileCopyDlg::ok_copies_only_as_many_slots_as_there_are_files()
{
    open();
    for (const QString& path : {u"C:\\Songs\\one.mp3"_s, u"C:\\Songs\\two.mp3"_s, u"C:\\Songs\\three.mp3"_s})
        add_to_final_list(path);
    remove_from_final_list_by_path(u"C:\\Songs\\one.mp3"_s);
    QCOMPARE(shared.final_list_count, i32(2));
    click(u"C:\\Rock"_s);
    press(u"cmd_ok"_s);
    QCOMPARE(on_disk(u"C:\\Rock"_s), QStringList{u"two.mp3"_s});
    QCOMPARE(shared.final_list_count, i32(2));
}

void TestFileCopyDlg::ok_copies_to_the_folder_of_an_earlier_use()
{
    shared.dest_folder_path = u"C:\\Pop\\Live\\1999"_s;
    open();
    add_to_final_list(u"C:\\Songs\\one.mp3"_s);
    tree().set_Selected(node(u"C:"_s)); // no click
    press(u"cmd_ok"_s);
    QCOMPARE(on_disk(u"C:\\Pop\\Live\\1999"_s), QStringList{u"one.mp3"_s});
    QVERIFY(!dialog_->isVisible());
}

void TestFileCopyDlg::ok_without_a_folder_stays_open_data()
{
    QTest::addColumn<QString>("selected");
    QTest::addColumn<QString>("folder");
    QTest::newRow("nothing selected") << QString() << u"C:\\Rock"_s;
    QTest::newRow("the computer selected") << u"MYCOMPUTER"_s << u"C:\\Rock"_s;
    QTest::newRow("no folder chosen") << u"C:"_s << QString();
}

void TestFileCopyDlg::ok_without_a_folder_stays_open()
{
    QFETCH(const QString, selected);
    open();
    add_to_final_list(u"C:\\Songs\\one.mp3"_s);
    if (!selected.isEmpty())
        tree().set_Selected(node(selected));
    QFETCH(const QString, folder);
    shared.dest_folder_path = folder;
    press(u"cmd_ok"_s);
    QVERIFY(dialog_->isVisible());
    QCOMPARE(refreshes_, 0);
    QCOMPARE(on_disk(u"C:\\Rock"_s), QStringList());
}

void TestFileCopyDlg::ok_with_an_empty_final_list_only_closes()
{
    open();
    click(u"C:\\Rock"_s);
    press(u"cmd_ok"_s);
    QVERIFY(!dialog_->isVisible());
    QCOMPARE(refreshes_, 1);
    QCOMPARE(on_disk(u"C:\\Rock"_s), QStringList());
}

void TestFileCopyDlg::ok_asks_before_it_overwrites()
{
    open();
    add_to_final_list(u"C:\\Songs\\one.mp3"_s);
    add_to_final_list(u"C:\\Songs\\two.mp3"_s);
    disk_->write(u"C:\\Rock\\one.mp3"_s, "mine");
    disk_->write(u"C:\\Rock\\two.mp3"_s, "mine");
    click(u"C:\\Rock"_s);
    prompts_->answers = {Answer::no, Answer::yes};
    press(u"cmd_ok"_s);
    QCOMPARE(prompts_->take(), (QStringList{u"overwrite C:\\Rock\\one.mp3 from C:\\Songs\\one.mp3"_s,
                                            u"overwrite C:\\Rock\\two.mp3 from C:\\Songs\\two.mp3"_s}));
    QVERIFY(!prompts_->was_visible);
    QCOMPARE(disk_->read(u"C:\\Rock\\one.mp3"_s), "mine");
    QCOMPARE(disk_->read(u"C:\\Rock\\two.mp3"_s), "C:\\Songs\\two.mp3");
    QVERIFY(!dialog_->isVisible());
    QCOMPARE(refreshes_, 1);
}

void TestFileCopyDlg::ok_closes_when_the_copy_fails()
{
    open();
    add_to_final_list(u"C:\\Songs\\one.mp3"_s);
    click(u"C:\\Rock"_s);
    QVERIFY(QDir(QFile::decodeName(disk_->native(u"C:"_s))).rmdir(u"Rock"_s));
    prompts_->always = Answer::skip;
    press(u"cmd_ok"_s);
    QCOMPARE(prompts_->take().size(), 1);
    QVERIFY(!dialog_->isVisible());
    QCOMPARE(refreshes_, 1);
}

void TestFileCopyDlg::ok_after_a_rename_in_progress_copies_to_the_new_name()
{
    open();
    add_to_final_list(u"C:\\Songs\\one.mp3"_s);
    click(u"C:\\Rock"_s);
    press(u"Cmd_new_folder"_s);
    QVERIFY(editor() != nullptr);
    QTest::keyClicks(editor(), u"Disc"_s);
    press(u"cmd_ok"_s);
    QCOMPARE(on_disk(u"C:\\Rock\\Disc"_s), QStringList{u"one.mp3"_s});
    QCOMPARE(on_disk(u"C:\\Rock"_s), QStringList{u"Disc"_s});
}

void TestFileCopyDlg::enter_is_ok_and_escape_is_cancel()
{
    open();
    add_to_final_list(u"C:\\Songs\\one.mp3"_s);
    click(u"C:\\Rock"_s);
    QTest::keyClick(&tree(), Qt::Key_Escape);
    QVERIFY(!dialog_->isVisible());
    QCOMPARE(on_disk(u"C:\\Rock"_s), QStringList());
    open();
    click(u"C:\\Rock"_s);
    QTest::keyClick(&tree(), Qt::Key_Return);
    QVERIFY(!dialog_->isVisible());
    QCOMPARE(on_disk(u"C:\\Rock"_s), QStringList{u"one.mp3"_s});
}

void TestFileCopyDlg::cancel_closes_and_copies_nothing()
{
    open();
    add_to_final_list(u"C:\\Songs\\one.mp3"_s);
    click(u"C:\\Rock"_s);
    press(u"cmd_cancel"_s);
    QVERIFY(!dialog_->isVisible());
    QCOMPARE(refreshes_, 0);
    QCOMPARE(on_disk(u"C:\\Rock"_s), QStringList());
}

QUILMO_UI_TEST(TestFileCopyDlg)
#include "test_file_copy_dlg.moc"
