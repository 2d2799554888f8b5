#include "ui_explorer.h"

#include "core/mod_of_grobal_var.h"
#include "mp3/cIDV3.h"
#include "platform/text.h"

#include <QObject>

#include <algorithm>
#include <filesystem>

using namespace Qt::StringLiterals;

namespace {

template<typename Wanted> QStringList names_of(const ListView& list, const Wanted& wanted)
{
    QStringList names;
    for (int index = 1; index <= list.Count(); ++index) {
        if (wanted(list.Item(index)))
            names.append(list.Item(index).Text);
    }
    names.sort();
    return names;
}

} // namespace

void NotedGenreBox::AddItem(const QString& text)
{
    const auto stands_before = [](const QString& a, const QString& b) { return a.compare(b, Qt::CaseInsensitive) < 0; };
    entries.insert(std::ranges::lower_bound(entries, text, stands_before), text);
}

void NotedGenreBox::set_ListIndex(int new_position)
{
    if (new_position >= -1 && new_position < entries.size())
        position = new_position;
}

NotedFields::NotedFields()
{
    shared.detail_fields = this;
}

NotedFields::~NotedFields()
{
    shared.detail_fields = nullptr;
}

void NotedFields::set_txtArtist(const QString& text)
{
    artist = text_box_text(text);
}

void NotedFields::set_txtTitle(const QString& text)
{
    title = text_box_text(text);
}

void NotedFields::set_txtGenre(const QString& text)
{
    genre = text_box_text(text);
}

void NotedFields::set_txtFilename(const QString& text)
{
    filename = filename_rule ? filename_rule() : text_box_text(text);
}

ExplorerPanes::ExplorerPanes()
    : status_bar({1000, 1000, 1000}),
      tree(tree_view),
      picks(list_view, status_bar,
            {.selected_tree_key = [this] { return tree.selected_key(); },
             .click_row = [this](int index) { list.ItemClick(index); },
             .show_final_list = [this] { ++final_list_shows; }}),
      list(list_view, status_bar, picks)
{
    shared.last_open_node_index = -1;
    fields.filename_rule = [this] { return list.filename_box_text(); };
    id3().init_FillComboGenre(fields.genre_box);
    list_view.set_ColumnHeaders({{.Text = u"Name"_s, .Width = 6700},
                                 {.Text = u"Size"_s, .Width = 1100},
                                 {.Text = u"Type"_s, .Width = 1800},
                                 {.Text = u"Date"_s, .Width = 2200},
                                 {.Text = u"Byte"_s, .Width = 0}});
    list_view.set_Checkboxes(true);
    list_view.set_MultiSelect(true);
    QObject::connect(&tree, &FolderTree::files_wanted, &list, &FileList::FillListView);
    QObject::connect(&tree, &FolderTree::no_files_wanted, &list_view, &ListView::Clear);
    QObject::connect(&list, &FileList::folder_failed, &tree, &FolderTree::fall_back_to_parent);
}

ExplorerPanes::~ExplorerPanes()
{
    // Names that are not UTF-8 stay behind when Qt removes a folder.
    std::filesystem::remove_all(disk.root().toStdString());
}

void ExplorerPanes::click_folder(const QString& key)
{
    TreeNode* const node = tree_view.Item(key);
    if (node == nullptr)
        qFatal("no node %s", qPrintable(key));
    tree_view.set_Selected(node);
    tree.Click_node_of_tree(node);
}

int ExplorerPanes::row_of(const QString& name) const
{
    for (int index = 1; index <= list_view.Count(); ++index) {
        if (list_view.Item(index).Text == name)
            return index;
    }
    return 0;
}

QStringList ExplorerPanes::names() const
{
    return names_of(list_view, [](const ListRow&) { return true; });
}

QStringList ExplorerPanes::selected_names() const
{
    return names_of(list_view, [](const ListRow& row) { return row.Selected; });
}

QStringList ExplorerPanes::ticked_names() const
{
    return names_of(list_view, [](const ListRow& row) { return row.Checked; });
}

void ExplorerPanes::tick(const QString& name, bool on)
{
    const int index = row_of(name);
    list_view.set_Checked(index, on);
    picks.ItemCheck(index);
}
