#pragma once

class FileCommands;
class TextBox;

/// The Edit menu, which acts where the user acted last: in one of the panes or in one of the four text boxes. Only for
/// text boxes it uses the system's clipboard.
class EditMenu
{
public:
    /// The text boxes that the menu acts on.
    struct Boxes
    {
        TextBox& txtArtist;
        TextBox& txtFilename;
        TextBox& txtTitle;
        TextBox& txtGenre;
    };

    /// `commands` and the boxes outlive the menu.
    EditMenu(FileCommands& commands, const Boxes& boxes) : commands_(commands), boxes_(boxes) {}

    void menu_Edit_copy_Click();
    void menu_Edit_paste_Click();
    void menu_Edit_delete_Click();

    /// The text box that the user acted in last; nullptr when it was elsewhere.
    TextBox* box() const;

private:
    FileCommands& commands_;
    Boxes boxes_;
};
