#pragma once

#include "platform/controls/ListView.h"
#include "platform/controls/StatusBar.h"

#include <QObject>
#include <QSet>
#include <QString>

class Picks;
struct File;

/// The small icon of a file's row: 1 for a FIF name, 2 for any other. The file lies in the current folder.
int small_icon_of(const QString& name);

/// The right pane: the MP3 files of the current folder. A click makes a file the selected one; a tick picks it for the
/// disc.
class FileList : public QObject
{
    Q_OBJECT

public:
    /// Acts on `list` and on panels 1 and 2 of `status_bar`, and tells `picks` of the row last clicked; all outlive it.
    FileList(ListView& list, StatusBar& status_bar, Picks& picks, QObject* parent = nullptr);

    /// Empties the list and fills it from the folder `path`, with or without a trailing backslash. A folder that can't
    /// be listed is shown as message 104.
    void FillListView(const QString& path);
    /// Whether the rows are those of this folder, which ends in a backslash.
    bool shows(const QString& folder) const { return folder == folder_; }
    /// What a click on a row does. Any failure ends it silently.
    void ItemClick(int index);
    /// Sorts by column 0, 1 or 2 and turns that column's direction round; other columns do nothing.
    void ColumnClick(int column);
    /// Writes panels 1 and 2 of the status bar.
    void show_folder_totals(int count, int megabytes);
    /// What the file name box has to show: the key of the row that keys act on, or nothing in an empty list.
    QString filename_box_text() const;

    /// Report mode or list mode.
    void set_View(ListView::ViewMode mode);

Q_SIGNALS:
    /// A folder could not be listed; its rows are gone.
    void folder_failed();
    /// The pop-up menu is wanted; `on_row` tells whether its entries are enabled.
    void popup_wanted(bool on_row);
    /// A row was double-clicked: its file is to be played.
    void play_wanted();

private:
    void fill(const QString& path);
    bool add_rows(const std::vector<File>& files, const QString& folder);
    bool add_row(const File& file, const QSet<QString>& ticked_names);
    void MouseDown(QPoint point);
    void MouseUp(i16 button);

    ListView& list_;
    StatusBar& status_bar_;
    Picks& picks_;
    QString folder_; ///< of the last fill, with trailing backslash
};
