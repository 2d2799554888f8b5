#pragma once

#include "explorer/FileList.h"
#include "explorer/FolderTree.h"
#include "fif/DetailFields.h"
#include "platform/controls/ListView.h"
#include "platform/controls/StatusBar.h"
#include "platform/controls/TreeView.h"
#include "rights.h"
#include "selection/Picks.h"
#include "test_main.h"

#include <QStringList>

#include <functional>

/// A genre box that notes what is put into it.
class NotedGenreBox : public GenreBox
{
public:
    void Clear() override { entries.clear(); }
    void AddItem(const QString& text) override;
    int ListIndex() const override { return position; }
    void set_ListIndex(int new_position) override;
    QString Text() const override { return entries.value(position); }

    QStringList entries; ///< in alphabetical order
    int position = -1;
};

/// The six detail fields as plain values, which keep of a text what text boxes keep; the shared state points here as
/// long as the object lives.
class NotedFields : public DetailFields
{
public:
    NotedFields();
    ~NotedFields() override;
    NotedFields(const NotedFields&) = delete;
    NotedFields& operator=(const NotedFields&) = delete;

    void set_txtFilename(const QString& text) override;
    void set_txtArtist(const QString& text) override;
    void set_txtTitle(const QString& text) override;
    void set_txtGenre(const QString& text) override;
    QString txtGenre() const override { return genre; }
    void set_Label_filesize(const QString& text) override { filesize = text; }
    GenreBox& cboGenre() override { return genre_box; }

    /// What the file name box makes of any text put into it; empty: it keeps the text.
    std::function<QString()> filename_rule;
    QString filename;
    QString artist;
    QString title;
    QString genre;
    QString filesize;
    NotedGenreBox genre_box;
};

/// Both panes on real controls and a real folder as drive C:, joined as in the main window.
class ExplorerPanes
{
public:
    ExplorerPanes();
    ~ExplorerPanes();
    ExplorerPanes(const ExplorerPanes&) = delete;
    ExplorerPanes& operator=(const ExplorerPanes&) = delete;

    /// Selects the node of this key, which must be there, and clicks it.
    void click_folder(const QString& key);
    /// Index of the row of this name, 0 for none.
    int row_of(const QString& name) const;
    const ListRow& row(const QString& name) const { return list_view.Item(row_of(name)); }
    /// The names listed, sorted.
    QStringList names() const;
    QStringList selected_names() const;
    QStringList ticked_names() const;
    /// A tick as a person sets or clears it.
    void tick(const QString& name, bool on = true);

    TestDisk disk;
    NotedMessages messages;
    NotedFields fields;
    TreeView tree_view;
    ListView list_view;
    StatusBar status_bar;
    FolderTree tree;
    Picks picks;
    FileList list;
    int final_list_shows = 0; ///< how often the dialog of the final list was asked for
};
