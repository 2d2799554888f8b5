#pragma once

#include "explorer/FileCommands.h"
#include "explorer/LabelCommands.h"
#include "ui_explorer.h"
#include "ui_file_prompts.h"

#include <QByteArray>
#include <QStringList>

// What the tests of the explorer's commands share.

/// Both panes with their commands. C: holds the folders Pop and Rock, Pop the files one.mp3, two.mp3 and three.mp3;
/// Pop is shown.
class CommandedPanes : public ExplorerPanes
{
public:
    CommandedPanes();

    /// What write puts into a file: another content for each path, and long enough to be looked at for a tag.
    static QByteArray content_of(const QString& path) { return path.toUtf8().leftJustified(200, ' '); }
    void write(const QString& path) const { disk.write(path, content_of(path)); }
    /// The names of the files and folders in a folder on the disk, sorted.
    QStringList on_disk(const QString& folder) const;
    /// Selects exactly the rows of these names.
    void select_rows(const QStringList& names);
    void select_computer() { tree_view.set_Selected(tree_view.Item(1)); }
    bool has_node(const QString& key) const { return tree_view.Item(key) != nullptr; }

    /// Shows both controls, as a label edit needs.
    void show();
    /// Types a text over the label that is being edited, and ends the edit by a key.
    void type_label(const QString& text, Qt::Key end = Qt::Key_Return);

    ScriptedPrompts prompts;
    const Panes panes{.tvTreeView = tree_view, .lvListView = list_view, .tree = tree, .list = list, .picks = picks};
    FileCommands files{panes};
    int releases = 0; ///< how often the player was told to let go of its file
    LabelCommands labels{panes, [this] { ++releases; }};
};
