#pragma once

#include "platform/controls/ButtonDialog.h"
#include "platform/controls/ImageList.h"
#include "platform/controls/TreeView.h"
#include "platform/numbers.h"

#include <functional>

struct Drive;

/// The dialog of the destination folder: a tree of drives and folders of its own, in which a person picks the folder
/// that all files of the final list are copied to.
class File_copy_Dlg : public ButtonDialog
{
    Q_OBJECT

public:
    struct Surroundings
    {
        std::function<void()> refresh_all; ///< of the main window
        const ImageList& images;           ///< those of the main window's tree
    };

    File_copy_Dlg(Surroundings surroundings, QWidget* parent);

    QSize sizeHint() const override;

private:
    void create_controls();
    void lay_out();
    void connect_controls();
    void apply_language_file_copy();
    void initialize_explorer();
    void Expand(const TreeNode* node);
    void NodeClick(TreeNode* node);
    void move_open_folder_image(TreeNode* node);
    void AfterLabelEdit(bool& cancel, const QString& new_text);
    bool rename_folder(TreeNode* node, const QString& new_text);
    void Cmd_new_folder_Click();
    void cmd_ok_Click();
    void copy_final_list();
    bool is_root_selected() const;

    Surroundings surroundings_;
    TreeView* FileCopyTreeView_ = nullptr;
    UsrButton* Cmd_new_folder_ = nullptr;
    UsrButton* cmd_ok_ = nullptr;
    UsrButton* cmd_cancel_ = nullptr;
    i16 dest_open_index_ = 1; ///< index of the node that shows the open folder
};
