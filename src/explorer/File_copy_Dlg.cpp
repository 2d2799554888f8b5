#include "explorer/File_copy_Dlg.h"

#include "core/Mod_of_nation.h"
#include "core/captions.h"
#include "core/drive_table.h"
#include "core/mod_of_grobal_var.h"
#include "explorer/FolderTree.h"
#include "explorer/folder_nodes.h"
#include "platform/controls/SHFileOperation.h"
#include "platform/controls/fonts.h"
#include "platform/controls/message_window.h"
#include "platform/language.h"
#include "platform/own_words.h"

#include <QHBoxLayout>
#include <QStringList>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize dialog_size(520, 480);
constexpr QSize smallest_size(504, 300);
constexpr int dialog_margin = 16;
constexpr int button_gap = 8;

const QString drive_image = u"DRIVE"_s;
const QString cd_image = u"Cddrive"_s;
const QString removable_image = u"35floppy"_s;

/// Unlike the main window's tree this one shows drives of the network, and asks a drive whether it is ready before it
/// takes its name.
TreeNode* add_drive(TreeView& tree, TreeNode* root, const Drive& drive)
{
    const QString letter = u"("_s + drive.DriveLetter + u":)"_s;
    const QString key = drive.DriveLetter + u':';
    switch (drive.Type) {
    case DriveType::removable:
        return tree.Add(root, key, letter, removable_image);
    case DriveType::remote:
        return tree.Add(root, key, drive.ShareName + letter, u"Drivenet"_s);
    case DriveType::cd:
        return tree.Add(root, key, letter, cd_image);
    default:
        return tree.Add(root, key, drive.IsReady ? drive.VolumeName + letter : letter, drive_image);
    }
}

/// Whether the picture of a node follows the node that is shown. A drive of the network is not left out, on purpose:
/// once it has been shown it keeps the picture of a folder.
bool shows_a_folder(const TreeNode* node)
{
    return node->Key() != root_key && node->Image() != drive_image && node->Image() != cd_image &&
           node->Image() != removable_image;
}

} // namespace

File_copy_Dlg::File_copy_Dlg(Surroundings surroundings, QWidget* parent)
    : ButtonDialog(u"File_copy_Dlg"_s, u"Vurlo Utility Ver 1.0"_s, parent), surroundings_(std::move(surroundings))
{
    create_controls();
    lay_out();
    connect_controls();
    apply_language_file_copy();
    initialize_explorer();
}

void File_copy_Dlg::create_controls()
{
    FileCopyTreeView_ = new TreeView(this);
    FileCopyTreeView_->setObjectName(u"FileCopyTreeView"_s);
    FileCopyTreeView_->setAccessibleName(own_word(Word::name_folders));
    FileCopyTreeView_->set_images(surroundings_.images);
    FileCopyTreeView_->set_LabelEdit_automatic(true);
    Cmd_new_folder_ = add_button(u"Cmd_new_folder"_s, u"New Folder"_s);
    cmd_ok_ = add_button(u"cmd_ok"_s, u"OK"_s);
    cmd_cancel_ = add_button(u"cmd_cancel"_s, u"Cancel"_s);
    set_default_button(cmd_ok_);
}

void File_copy_Dlg::lay_out()
{
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(button_gap);
    buttons->addWidget(Cmd_new_folder_);
    buttons->addStretch();
    buttons->addWidget(cmd_ok_);
    buttons->addWidget(cmd_cancel_);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(dialog_margin, dialog_margin, dialog_margin, dialog_margin);
    rows->setSpacing(dialog_margin);
    rows->addWidget(FileCopyTreeView_);
    rows->addLayout(buttons);
    setMinimumSize(smallest_size);
}

void File_copy_Dlg::connect_controls()
{
    connect(FileCopyTreeView_, &TreeView::Expand, this, guarded([this](TreeNode* node) { Expand(node); }));
    connect(FileCopyTreeView_, &TreeView::NodeClick, this, guarded([this](TreeNode* node) { NodeClick(node); }));
    connect(FileCopyTreeView_, &TreeView::AfterLabelEdit, this,
            guarded([this](bool& cancel, const QString& text) { AfterLabelEdit(cancel, text); }));
    connect(FileCopyTreeView_, &TreeView::MouseMove, this, &ButtonDialog::put_out_buttons);
    connect(Cmd_new_folder_, &UsrButton::Click, this, guarded([this] { Cmd_new_folder_Click(); }));
    connect(cmd_ok_, &UsrButton::Click, this, guarded([this] { cmd_ok_Click(); }));
    connect(cmd_cancel_, &UsrButton::Click, this, &QDialog::close);
}

/// Captions in the language of the run; Korean ones in their own font.
void File_copy_Dlg::apply_language_file_copy()
{
    if (shared.language_id == english)
        return;
    for (UsrButton* button : {Cmd_new_folder_, cmd_ok_, cmd_cancel_}) {
        set_caption(*button, caption_of(Form::File_copy_Dlg, button->objectName()));
        if (shared.language_id == korean)
            button->setFont(korean_font());
    }
}

QSize File_copy_Dlg::sizeHint() const
{
    return dialog_size;
}

void File_copy_Dlg::initialize_explorer()
{
    shared.fso = {};
    TreeNode* const root = FileCopyTreeView_->Add(nullptr, root_key, get_computer_name(), root_key);
    for (const Drive& drive : shared.fso.Drives())
        add_drive(*FileCopyTreeView_, root, drive);
    FileCopyTreeView_->set_Expanded(root, true);
}

void File_copy_Dlg::Expand(const TreeNode* node)
{
    for (const auto& child : node->children())
        add_subfolders(*FileCopyTreeView_, child.get(), folder_of(child.get()));
}

void File_copy_Dlg::NodeClick(TreeNode* node)
{
    move_open_folder_image(node);
    if (node->children().empty()) {
        add_subfolders(*FileCopyTreeView_, node, folder_of(node));
        FileCopyTreeView_->set_Expanded(node, true);
    }
    if (!node->Key().contains(root_key))
        shared.dest_node_key = node->Parent()->Key();
    shared.dest_folder_path = node->Key();
}

void File_copy_Dlg::move_open_folder_image(TreeNode* node)
{
    // Indexes shift when nodes go and the remembered one does not follow, on purpose: another node may be meant, or
    // none.
    errors_ignored([this] {
        TreeNode* const last_open = FileCopyTreeView_->Item(dest_open_index_);
        if (shows_a_folder(last_open))
            FileCopyTreeView_->set_Image(last_open, folder_image);
    });
    dest_open_index_ = checked<i16>(FileCopyTreeView_->Index(node));
    if (shows_a_folder(node))
        FileCopyTreeView_->set_Image(node, open_folder_image);
}

// The folder last clicked is renamed. Before the first click that is one of an earlier use, which nobody sees selected.
void File_copy_Dlg::AfterLabelEdit(bool& cancel, const QString& new_text)
{
    TreeNode* const node = FileCopyTreeView_->SelectedItem();
    cancel = new_text == node->Text() || node->Key() != shared.dest_folder_path || !rename_folder(node, new_text);
}

/// Gives whether the folder last clicked has its new name.
bool File_copy_Dlg::rename_folder(TreeNode* node, const QString& new_text)
{
    const QString new_path = shared.dest_node_key + u'\\' + new_text;
    if (shared.fso.FolderExists(new_path)) {
        show_name_message(msg_already_exists, new_path);
        return false;
    }
    // A folder that can't be renamed is an everyday thing, so it is told and not the program's end.
    try {
        shared.fso.MoveFolder(shared.dest_folder_path, new_path);
    } catch (const RunTimeError& error) {
        show_run_time_error(error);
        return false;
    }
    remove_stale_node(*FileCopyTreeView_, new_path);
    FileCopyTreeView_->set_Key(node, new_path);
    remove_children(*FileCopyTreeView_, node);
    add_subfolders(*FileCopyTreeView_, node, folder_of(node));
    shared.dest_folder_path = new_path;
    return true;
}

// The new folder goes where a person clicked last, which the selection need not tell.
void File_copy_Dlg::Cmd_new_folder_Click()
{
    constexpr i16 ready_cd = 2;
    if (is_root_selected())
        return;
    if (get_drive_state(FileCopyTreeView_->SelectedItem()->Key().left(1)) == ready_cd) {
        show_message(msg_new_folder_failed);
        return;
    }
    TreeNode* const parent = FileCopyTreeView_->Item(shared.dest_folder_path);
    const QString name = new_folder_name(shared.dest_folder_path);
    const QString path = shared.dest_folder_path + u'\\' + name;
    if (parent == nullptr || !errors_ignored([&] { shared.fso.CreateFolder(path); })) {
        show_message(msg_new_folder_failed);
        return;
    }
    remove_stale_node(*FileCopyTreeView_, path);
    TreeNode* const node = FileCopyTreeView_->Add(parent, path, name, folder_image);
    FileCopyTreeView_->set_Selected(node);
    shared.dest_node_key = parent->Key();
    shared.dest_folder_path = path;
    FileCopyTreeView_->StartLabelEdit();
}

void File_copy_Dlg::cmd_ok_Click()
{
    if (is_root_selected() || shared.dest_folder_path.isEmpty())
        return;
    if (shared.final_list_count >= 1) {
        hide();
        copy_final_list();
    }
    surroundings_.refresh_all();
    close();
}

// Only as many slots are looked at as files are listed, on purpose: behind holes that removals left, files stay out.
void File_copy_Dlg::copy_final_list()
{
    QStringList paths;
    for (i32 slot = 0; slot < shared.final_list_count; ++slot) {
        const FinalListEntry& entry = shared.final_list.at(static_cast<std::size_t>(slot));
        if (entry.in_use == 1)
            paths.append(entry.full_path);
    }
    SHFILEOPSTRUCT operation = {.wFunc = FO_COPY, .pFrom = paths.join(QChar(u'\0')), .pTo = shared.dest_folder_path};
    SHFileOperation(operation);
}

bool File_copy_Dlg::is_root_selected() const
{
    const TreeNode* const selected = FileCopyTreeView_->SelectedItem();
    return selected == nullptr || FileCopyTreeView_->Index(selected) == 1;
}
