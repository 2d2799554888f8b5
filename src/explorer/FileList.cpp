#include "explorer/FileList.h"

#include "core/Mod_of_nation.h"
#include "core/mod_of_grobal_var.h"
#include "fif/DetailFields.h"
#include "fif/mod_of_FIF.h"
#include "platform/controls/column_sort.h"
#include "platform/controls/message_window.h"
#include "platform/controls/mouse.h"
#include "platform/text.h"
#include "selection/Picks.h"
#include "selection/final_list.h"

using namespace Qt::StringLiterals;

namespace {

QString with_trailing_backslash(const QString& path)
{
    return path.endsWith(u'\\') ? path : path + u'\\';
}

/// One more listed file. The megabytes are rounded file by file, on purpose: small files add nothing.
void count_file(qint64 size)
{
    shared.folder_mp3_count = checked<i16>(shared.folder_mp3_count + 1);
    shared.folder_mp3_mb = rounded<i32>(shared.folder_mp3_mb + static_cast<double>(size) / 1048576.0);
}

/// The fields of a folder without files; txtGenre stays as it was.
void clear_details()
{
    if (shared.detail_fields == nullptr)
        return;
    shared.detail_fields->set_txtFilename({});
    shared.detail_fields->set_txtArtist({});
    shared.detail_fields->set_txtTitle({});
    shared.detail_fields->set_Label_filesize(u"0"_s);
    shared.detail_fields->cboGenre().set_ListIndex(0);
}

} // namespace

int small_icon_of(const QString& name)
{
    constexpr int fif_icon = 1;
    constexpr int other_icon = 2;
    return Check_file_for_fif(name) == 1 ? fif_icon : other_icon;
}

FileList::FileList(ListView& list, StatusBar& status_bar, Picks& picks, QObject* parent)
    : QObject(parent), list_(list), status_bar_(status_bar), picks_(picks)
{
    connect(&list_, &ListView::ItemClick, this, guarded([this](int index) { ItemClick(index); }));
    connect(&list_, &ListView::ColumnClick, this, guarded([this](int column) { ColumnClick(column); }));
    connect(&list_, &ListView::MouseDown, this, guarded([this](i16 /*button*/, QPoint point) { MouseDown(point); }));
    connect(&list_, &ListView::MouseUp, this, guarded([this](i16 button, QPoint /*point*/) { MouseUp(button); }));
    connect(&list_, &ListView::DblClick, this, guarded([this] {
        if (shared.list_drag_active == 1)
            Q_EMIT play_wanted();
    }));
    connect(&list_, &ListView::ContextKey, this, guarded([this] { Q_EMIT popup_wanted(list_.SelectedItem() != 0); }));
    connect(&list_, &ListView::GotFocus, this, [] { shared.focus_pane = pane_list; });
}

void FileList::FillListView(const QString& path)
{
    shared.folder_mp3_mb = 0;
    shared.folder_mp3_count = 0;
    folder_ = with_trailing_backslash(path);
    list_.Clear();
    if (errors_ignored([&] { fill(path); }))
        return;
    list_.Clear();
    show_name_message(msg_device_error, path);
    Q_EMIT folder_failed();
}

void FileList::fill(const QString& path)
{
    const Folder folder = shared.fso.GetFolder(path);
    const bool selection_found =
        add_rows(folder.Files(music_name_ending.toString()), with_trailing_backslash(folder.Path()));
    if (!selection_found && list_.Count() > 0)
        ItemClick(1);
    else if (!selection_found)
        clear_details();
    show_folder_totals(shared.folder_mp3_count, shared.folder_mp3_mb);
}

/// Gives whether the selected file is among them.
bool FileList::add_rows(const std::vector<File>& files, const QString& folder)
{
    const ListView::Update update(list_);
    const QSet<QString> ticked_names = final_list_names_in(folder);
    bool selection_found = false;
    for (const File& file : files) {
        if (!add_row(file, ticked_names))
            continue;
        if (file.Name == shared.selected_mp3_name) {
            // The path of the last click, on purpose: a file of the same name elsewhere stays the one that plays.
            shared.selected_mp3_path = shared.selected_mp3_full;
            selection_found = true;
            Show_fif_info(shared.selected_mp3_name);
        }
        count_file(file.Size);
    }
    return selection_found;
}

/// Gives whether it is new: the disk may tell a file twice that another program renames to and fro meanwhile.
bool FileList::add_row(const File& file, const QSet<QString>& ticked_names)
{
    int index = 0;
    if (!errors_ignored([&] { index = list_.Add(file.Name, file.Name); }))
        return false;
    list_.set_SmallIcon(index, small_icon_of(file.Name));
    list_.set_SubItem(index, 1, kilobytes_text(file.Size));
    list_.set_SubItem(index, 4, QString::number(file.Size));
    list_.set_SubItem(index, 2, file.Type());
    list_.set_SubItem(index, 3, file.DateLastModified());
    if (ticked_names.contains(file.Name))
        list_.set_Checked(index, true);
    if (file.Name == shared.selected_mp3_name)
        list_.set_Selected(index, true);
    return true;
}

void FileList::ItemClick(int index)
{
    errors_ignored([&] {
        list_.set_Selected(index, true);
        picks_.last_row_index = checked<i16>(index);
        shared.focus_pane = pane_list;
        select_file(QString(list_.Item(index).Text));
    });
}

void FileList::ColumnClick(int column)
{
    sort_by_toggle(list_, column, {0, 1, 2}, shared.main_sort_toggles);
}

void FileList::show_folder_totals(int count, int megabytes)
{
    status_bar_.set_panel_text(1, QString::number(count) + u" File"_s);
    status_bar_.set_panel_text(2, QString::number(megabytes) + u" MB"_s);
}

QString FileList::filename_box_text() const
{
    const int row = list_.SelectedItem();
    return row == 0 ? QString() : list_.Item(row).Key;
}

void FileList::set_View(ListView::ViewMode mode)
{
    list_.set_View(mode);
}

void FileList::MouseDown(QPoint point)
{
    shared.list_drag_active = list_.HitTest(point) != 0 ? 1 : 0;
}

void FileList::MouseUp(i16 button)
{
    const bool on_row = shared.list_drag_active == 1;
    if (!on_row && list_.Count() > 0)
        list_.set_Selected(list_.SelectedItem(), false);
    if (button == mouse_button_number(Qt::RightButton))
        Q_EMIT popup_wanted(on_row);
}
