#include "core/mod_of_grobal_var.h"
#include "explorer/DragAndDrop.h"
#include "explorer/FileCommands.h"
#include "explorer/File_copy_Dlg.h"
#include "explorer/LabelCommands.h"
#include "tagged_files.h"
#include "ui_explorer.h"
#include "ui_faults.h"

#include <QApplication>
#include <QMimeData>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString new_folder_failed = u"Unable to create new folder"_s;

/// What may be shown of folders that can't be read any more.
QStringList device_errors(const QStringList& keys)
{
    QStringList messages;
    for (const QString& key : keys)
        messages += {u"Device Error : "_s + key, u"Device Error : "_s + key + u'\\'};
    return messages;
}

const QStringList devices = device_errors({u"C:"_s, u"C:\\Pop"_s, u"C:\\Rock"_s});
const QStringList pop = {u"C:\\Pop\\one.mp3"_s, u"C:\\Pop\\two-2.mp3"_s};
const QString rock = u"C:\\Rock\\stays.mp3"_s;

/// Both panes with all their commands, over the folders Pop, which is shown, and Rock. One of the files has a FIF name,
/// so that it is listed without being opened.
struct Shelf : ExplorerPanes
{
    Shelf()
    {
        for (const QString& path : pop + QStringList{rock})
            write(path);
        tree.init_main_tree();
        click_folder(u"C:\\Pop"_s);
    }

    void write(const QString& path) const
    {
        disk.write(path, marked_file(path.toUtf8(), sample_tag(tag_of("Ann", "Sea"))));
    }
    void select_rows(const QStringList& names)
    {
        list_view.clear_selection();
        for (const QString& name : names)
            list_view.set_Selected(row_of(name), true);
    }
    void go_to(const QString& key)
    {
        click_folder(key);
        shared.selected_mp3_name.clear();
    }
    QPoint on_node(const QString& key)
    {
        tree_view.set_Expanded(tree_view.Item(u"C:"_s), true);
        tree_view.resize(300, 400);
        return tree_view.node_rect(tree_view.Item(key)).center();
    }
    /// What happens when something that is being dragged is dropped on a folder.
    void drop(const QMimeData& data, const QString& key)
    {
        const QPoint point = on_node(key);
        Q_EMIT tree_view.OLEDragOver(data, point);
        Q_EMIT tree_view.OLEDragDrop(data, point);
    }

    const Panes panes{.tvTreeView = tree_view, .lvListView = list_view, .tree = tree, .list = list, .picks = picks};
    FileCommands files{panes};
    LabelCommands labels{panes, [] {}};
    DragAndDrop drag{panes};
};

QStringList sorted(QStringList paths)
{
    paths.sort();
    return paths;
}

} // namespace

/// The calls on the disk are those of the command alone: what goes before is not counted.
class TestFaultsExplorer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    void a_folder_is_shown();
    void a_folder_is_read_again();
    void a_folder_is_opened();
    void a_file_is_renamed();
    void a_file_is_not_renamed_onto_another();
    void a_file_gets_a_name_that_is_listed();
    void a_folder_is_renamed();
    void a_new_folder_is_made();
    void files_are_pasted();
    void files_are_pasted_beside_namesakes();
    void a_folder_is_pasted();
    void files_are_deleted_data();
    void files_are_deleted();
    void a_folder_is_deleted_data();
    void a_folder_is_deleted();
    void files_are_dropped();
    void a_folder_is_dropped();
    void the_selection_is_copied();
    void a_folder_is_renamed_in_the_copy_dialog();
    void a_folder_is_made_in_the_copy_dialog();

private:
    /// An operation on the shelf, which `before` makes ready for it.
    FaultedOperation operation(const char* name, const std::function<void(Shelf&)>& before,
                               const std::function<void(Shelf&)>& act);
    /// Proves that a drop on the folder Rock comes to `result`; `start` begins the drag.
    void prove_drop(const QString& text, const std::function<void(Shelf&, QMimeData&)>& start,
                    const QStringList& result);
    FaultedOperation copy_dialog(const char* name, const std::function<void()>& act);
    void open_copy_dialog();

    std::unique_ptr<Shelf> shelf_;
    std::unique_ptr<File_copy_Dlg> dialog_;
    ImageList images_;
    bool is_cancelled_ = false; ///< the label edit keeps the old text
};

void TestFaultsExplorer::cleanup()
{
    dialog_.reset();
    shelf_.reset();
}

FaultedOperation TestFaultsExplorer::operation(const char* name, const std::function<void(Shelf&)>& before,
                                               const std::function<void(Shelf&)>& act)
{
    FaultedOperation made;
    made.name = name;
    made.prepare = [this, before] {
        cleanup();
        shelf_ = std::make_unique<Shelf>();
        is_cancelled_ = false;
        before(*shelf_);
    };
    made.act = [this, act] { act(*shelf_); };
    made.result = sorted(pop + QStringList{rock});
    made.bystanders = {rock};
    made.told_messages = devices;
    return made;
}

// Of a folder that can't be read the folder above it is shown. Its files are only looked at.

void TestFaultsExplorer::a_folder_is_shown()
{
    FaultedOperation shown = operation(
        "showing a folder", [](Shelf& shelf) { shelf.go_to(u"C:\\Rock"_s); },
        [](Shelf& shelf) { shelf.click_folder(u"C:\\Pop"_s); });
    shown.bystanders = shown.result;
    prove_against_faults(shown);
}

void TestFaultsExplorer::a_folder_is_read_again()
{
    FaultedOperation refresh = operation(
        "reading a folder again",
        [](Shelf& shelf) {
            shelf.tick(u"one.mp3"_s);
            shelf.disk.make_folder(u"C:\\Pop\\Live"_s);
        },
        [](Shelf& shelf) { shelf.tree.refresh_all(); });
    refresh.bystanders = refresh.result;
    prove_against_faults(refresh);
}

void TestFaultsExplorer::a_folder_is_opened()
{
    FaultedOperation opened = operation(
        "opening a folder", [](Shelf& shelf) { shelf.disk.make_folder(u"C:\\Pop\\Live"_s); },
        [](Shelf& shelf) { shelf.tree.Tree_Expand(shelf.tree_view.Item(u"C:"_s)); });
    opened.bystanders = opened.result;
    opened.told_messages = {};
    prove_against_faults(opened);
}

// A file that keeps its name keeps its row's text and its record too.

void TestFaultsExplorer::a_file_is_renamed()
{
    FaultedOperation rename = operation(
        "rename of a file",
        [](Shelf& shelf) {
            shelf.tick(u"one.mp3"_s);
            shared.playing_mp3_path = u"C:\\Pop\\one.mp3"_s;
        },
        [this](Shelf& shelf) { Q_EMIT shelf.list_view.AfterLabelEdit(is_cancelled_, u"new.mp3"_s); });
    rename.result = {u"C:\\Pop\\new.mp3"_s, u"C:\\Pop\\two-2.mp3"_s, rock};
    rename.bystanders += {u"C:\\Pop\\two-2.mp3"_s};
    rename.told_questions = {u"error C:\\Pop\\one.mp3"_s};
    rename.more_findings = [this](const FaultedRun&) {
        const bool has_old_name = shelf_->disk.exists(u"C:\\Pop\\one.mp3"_s);
        return is_cancelled_ == has_old_name ? QStringList() : QStringList{u"the row tells otherwise"_s};
    };
    prove_against_faults(rename);
}

void TestFaultsExplorer::a_file_is_not_renamed_onto_another()
{
    FaultedOperation rename = operation(
        "rename of a file onto another", [](Shelf& shelf) { shelf.tick(u"one.mp3"_s); },
        [this](Shelf& shelf) { Q_EMIT shelf.list_view.AfterLabelEdit(is_cancelled_, u"two-2.mp3"_s); });
    rename.bystanders = rename.result;
    rename.told_questions = {u"error C:\\Pop\\one.mp3"_s};
    prove_against_faults(rename);
}

// The final list refuses a name that it has, and the file is renamed all the same: its record stays behind.

void TestFaultsExplorer::a_file_gets_a_name_that_is_listed()
{
    FaultedOperation rename = operation(
        "rename of a file to a listed name",
        [](Shelf& shelf) {
            shelf.go_to(u"C:\\Rock"_s);
            shelf.tick(u"stays.mp3"_s);
            shelf.go_to(u"C:\\Pop"_s);
            shelf.tick(u"one.mp3"_s);
        },
        [this](Shelf& shelf) { Q_EMIT shelf.list_view.AfterLabelEdit(is_cancelled_, u"stays.mp3"_s); });
    rename.result = {u"C:\\Pop\\stays.mp3"_s, u"C:\\Pop\\two-2.mp3"_s, rock};
    rename.messages = {u"stays.mp3 already exists in MP3 File List"_s};
    rename.told_questions = {u"error C:\\Pop\\one.mp3"_s};
    rename.record_may_lag = true;
    prove_against_faults(rename);
}

// Records of files below a folder that gets another name or place are not brought along.

void TestFaultsExplorer::a_folder_is_renamed()
{
    FaultedOperation rename = operation(
        "rename of a folder", [](Shelf& shelf) { shelf.tick(u"one.mp3"_s); },
        [this](Shelf& shelf) { Q_EMIT shelf.tree_view.AfterLabelEdit(is_cancelled_, u"Rap"_s); });
    rename.result = {u"C:\\Rap\\one.mp3"_s, u"C:\\Rap\\two-2.mp3"_s, rock};
    rename.told_questions = {u"error C:\\Pop"_s};
    rename.told_messages += device_errors({u"C:\\Rap"_s});
    rename.record_may_lag = true;
    rename.more_findings = [this](const FaultedRun&) {
        const bool has_old_name = shelf_->disk.exists(u"C:\\Pop"_s);
        return is_cancelled_ == has_old_name ? QStringList() : QStringList{u"the node tells otherwise"_s};
    };
    prove_against_faults(rename);
}

void TestFaultsExplorer::a_new_folder_is_made()
{
    FaultedOperation made = operation(
        "new folder", [](Shelf& shelf) { shelf.disk.make_folder(u"C:\\Pop\\new folder"_s); },
        [](Shelf& shelf) { shelf.labels.mnu_tree_add_folder_Click(); });
    made.bystanders = made.result;
    made.told_messages += device_errors({u"C:\\Pop\\new folder1"_s}) + QStringList{new_folder_failed};
    made.more_findings = [this](const FaultedRun& run) {
        const bool is_told = run.messages.contains(new_folder_failed);
        return is_told != shelf_->disk.exists(u"C:\\Pop\\new folder1"_s) ? QStringList()
                                                                         : QStringList{u"made or told?"_s};
    };
    prove_against_faults(made);
}

// A copy never takes the place of a file, unless the person says so.

void TestFaultsExplorer::files_are_pasted()
{
    FaultedOperation paste = operation(
        "paste of files",
        [](Shelf& shelf) {
            shelf.select_rows({u"one.mp3"_s, u"two-2.mp3"_s});
            shelf.files.mnu_ListView_copy_Click();
            shelf.go_to(u"C:\\Rock"_s);
        },
        [](Shelf& shelf) { shelf.files.mnu_tree_paste_Click(); });
    paste.result = sorted(paste.result + QStringList{u"C:\\Rock\\one.mp3"_s, u"C:\\Rock\\two-2.mp3"_s});
    paste.bystanders += pop;
    paste.told_questions = {u"error C:\\"_s};
    paste.may_copy = true;
    prove_against_faults(paste);
}

void TestFaultsExplorer::files_are_pasted_beside_namesakes()
{
    FaultedOperation paste = operation(
        "paste of files beside namesakes",
        [](Shelf& shelf) {
            shelf.write(u"C:\\Rock\\one.mp3"_s);
            shelf.select_rows({u"one.mp3"_s, u"two-2.mp3"_s});
            shelf.files.mnu_ListView_copy_Click();
            shelf.go_to(u"C:\\Rock"_s);
        },
        [](Shelf& shelf) { shelf.files.mnu_tree_paste_Click(); });
    paste.result = sorted(paste.result + QStringList{u"C:\\Rock\\one.mp3"_s, u"C:\\Rock\\two-2.mp3"_s});
    paste.bystanders += pop + QStringList{u"C:\\Rock\\one.mp3"_s};
    paste.told_questions = {u"error C:\\"_s, u"overwrite C:\\Rock\\one.mp3"_s};
    paste.on_error = FilePrompts::OnError::cancel;
    paste.may_copy = true;
    prove_against_faults(paste);
}

void TestFaultsExplorer::a_folder_is_pasted()
{
    FaultedOperation paste = operation(
        "paste of a folder",
        [](Shelf& shelf) {
            shelf.go_to(u"C:\\Rock"_s);
            shelf.files.mnu_tree_copy_Click();
            shelf.go_to(u"C:\\Pop"_s);
        },
        [](Shelf& shelf) { shelf.files.mnu_tree_paste_Click(); });
    paste.result = sorted(paste.result + QStringList{u"C:\\Pop\\Rock\\stays.mp3"_s});
    paste.bystanders += pop;
    paste.told_questions = {u"error C:\\"_s};
    paste.may_copy = true;
    prove_against_faults(paste);
}

// What is deleted lies in the trash, or the person has said that it may go for good. When the person stops in between,
// the records stay as they are; else those go whose files are not told to be there.

void TestFaultsExplorer::files_are_deleted_data()
{
    QTest::addColumn<bool>("for_good");
    QTest::newRow("what no trash takes stays") << false;
    QTest::newRow("what no trash takes goes for good") << true;
}

void TestFaultsExplorer::files_are_deleted()
{
    QFETCH(bool, for_good);
    FaultedOperation removal = operation(
        "delete of files",
        [](Shelf& shelf) {
            shelf.tick(u"one.mp3"_s);
            shelf.select_rows({u"one.mp3"_s, u"two-2.mp3"_s});
        },
        [](Shelf& shelf) { shelf.files.mnu_ListView_delete_Click(); });
    removal.result = {rock, u"trash: one.mp3"_s, u"trash: two-2.mp3"_s};
    removal.told_questions = {u"trash "_s, u"error C:\\Pop\\one.mp3"_s, u"error C:\\Pop\\two-2.mp3"_s, u"delete "_s};
    removal.may_delete = for_good;
    removal.record_may_go = true;
    removal.record_may_lag = true;
    prove_against_faults(removal);
}

void TestFaultsExplorer::a_folder_is_deleted_data()
{
    files_are_deleted_data();
}

void TestFaultsExplorer::a_folder_is_deleted()
{
    QFETCH(bool, for_good);
    FaultedOperation removal = operation(
        "delete of a folder", [](Shelf& shelf) { shelf.tick(u"one.mp3"_s); },
        [](Shelf& shelf) { shelf.files.mnu_tree_delete_Click(); });
    removal.result = {rock, u"trash: Pop/one.mp3"_s, u"trash: Pop/two-2.mp3"_s};
    removal.told_questions = {u"trash "_s, u"error C:\\Pop"_s, u"delete "_s};
    removal.may_delete = for_good;
    removal.record_may_lag = true;
    prove_against_faults(removal);
}

// A drop doesn't touch the final list: the record of a moved file stays behind.

void TestFaultsExplorer::prove_drop(const QString& text, const std::function<void(Shelf&, QMimeData&)>& start,
                                    const QStringList& result)
{
    QMimeData data;
    data.setText(text);
    FaultedOperation drop = operation(
        "drop",
        [&](Shelf& shelf) {
            shelf.tick(u"one.mp3"_s);
            start(shelf, data);
        },
        [&](Shelf& shelf) { shelf.drop(data, u"C:\\Rock"_s); });
    drop.result = result;
    drop.told_questions = {u"error C:\\"_s};
    drop.record_may_lag = true;
    prove_against_faults(drop);
}

void TestFaultsExplorer::files_are_dropped()
{
    prove_drop(u"one.mp3"_s,
               [](Shelf& shelf, QMimeData& data) {
                   shelf.select_rows({u"one.mp3"_s, u"two-2.mp3"_s});
                   Q_EMIT shelf.list_view.OLEStartDrag(data);
               },
               {u"C:\\Rock\\one.mp3"_s, rock, u"C:\\Rock\\two-2.mp3"_s});
}

void TestFaultsExplorer::a_folder_is_dropped()
{
    prove_drop(u"Pop"_s,
               [](Shelf& shelf, QMimeData& data) {
                   const QPoint pressed = shelf.on_node(u"C:\\Pop"_s);
                   shelf.go_to(u"C:"_s);
                   Q_EMIT shelf.tree_view.MouseDown(1, pressed);
                   Q_EMIT shelf.tree_view.OLEStartDrag(data);
               },
               {u"C:\\Rock\\Pop\\one.mp3"_s, u"C:\\Rock\\Pop\\two-2.mp3"_s, rock});
}

void TestFaultsExplorer::open_copy_dialog()
{
    dialog_ =
        std::make_unique<File_copy_Dlg>(File_copy_Dlg::Surroundings{.refresh_all = [] {}, .images = images_}, nullptr);
    auto& tree = *dialog_->findChild<TreeView*>(u"FileCopyTreeView"_s);
    tree.set_Expanded(tree.Item(u"C:"_s), true);
    tree.set_Selected(tree.Item(u"C:\\Rock"_s));
    Q_EMIT tree.NodeClick(tree.Item(u"C:\\Rock"_s));
}

/// An operation of the dialog, in which the folder Rock is chosen.
FaultedOperation TestFaultsExplorer::copy_dialog(const char* name, const std::function<void()>& act)
{
    FaultedOperation made = operation(
        name,
        [this](Shelf& shelf) {
            shelf.tick(u"one.mp3"_s);
            shelf.tick(u"two-2.mp3"_s);
            open_copy_dialog();
        },
        [act](Shelf&) { act(); });
    made.bystanders = made.result;
    made.told_messages = {};
    return made;
}

void TestFaultsExplorer::the_selection_is_copied()
{
    FaultedOperation copy =
        copy_dialog("copy of the selection", [this] { Q_EMIT dialog_->findChild<UsrButton*>(u"cmd_ok"_s)->Click(); });
    copy.result = sorted(copy.result + QStringList{u"C:\\Rock\\one.mp3"_s, u"C:\\Rock\\two-2.mp3"_s});
    copy.told_questions = {u"error C:\\"_s};
    copy.may_copy = true;
    prove_against_faults(copy);
}

// The folder's name and what the dialog takes for the chosen folder change together or not at all. What stood against
// it is told by its number.

void TestFaultsExplorer::a_folder_is_renamed_in_the_copy_dialog()
{
    FaultedOperation rename = copy_dialog("rename in the copy dialog", [this] {
        Q_EMIT dialog_->findChild<TreeView*>(u"FileCopyTreeView"_s)->AfterLabelEdit(is_cancelled_, u"Rap"_s);
    });
    rename.result = sorted(pop + QStringList{u"C:\\Rap\\stays.mp3"_s});
    rename.bystanders = pop;
    rename.told_messages = {u"Run-time error '70':\n\nPermission denied"_s,
                            u"Run-time error '75':\n\nPath/File access error"_s,
                            u"Run-time error '76':\n\nPath not found"_s};
    rename.more_findings = [this](const FaultedRun& run) {
        QStringList findings;
        const QString place = shelf_->disk.exists(u"C:\\Rap"_s) ? u"C:\\Rap"_s : u"C:\\Rock"_s;
        if (shared.dest_folder_path != place || is_cancelled_ != (place == u"C:\\Rock"_s))
            findings.append(u"the node tells otherwise"_s);
        if (is_cancelled_ && run.messages.size() != 1)
            findings.append(u"nothing is told"_s);
        return findings;
    };
    prove_against_faults(rename);
}

void TestFaultsExplorer::a_folder_is_made_in_the_copy_dialog()
{
    FaultedOperation made = copy_dialog("new folder in the copy dialog", [this] {
        Q_EMIT dialog_->findChild<UsrButton*>(u"Cmd_new_folder"_s)->Click();
    });
    made.told_messages = {new_folder_failed};
    made.more_findings = [this](const FaultedRun& run) {
        return run.messages.isEmpty() == shelf_->disk.exists(u"C:\\Rock\\new folder"_s)
                   ? QStringList()
                   : QStringList{u"made or told?"_s};
    };
    prove_against_faults(made);
}

QUILMO_FAULTS_TEST(TestFaultsExplorer)
#include "test_faults_explorer.moc"
