#pragma once

#include "core/mod_of_grobal_var.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <set>
#include <utility>

class ListView;
class StatusBar;
class TreeView;

/// Watches the final list and the rows of the main window from one action to the next.
///
/// Two rules of the list make its totals drift on purpose: a removal takes the first slot of a name, in use or not, and
/// takes the size off that the row tells. So the totals may only drift when one of these has come about.
class FinalListWatch
{
public:
    /// `form` is the main window, without any dialog yet.
    explicit FinalListWatch(const QWidget& form);

    /// What is wrong with the list now, beside what was the last time; empty when all is as it should be.
    QStringList look();
    /// How many files were added and removed so far.
    int added() const { return added_; }
    int removed() const { return removed_; }

private:
    using Key = std::pair<QString, QString>; ///< name and folder

    struct State
    {
        int used = 0;
        qint64 bytes = 0;          ///< of the used slots
        std::set<QString> paths;   ///< of the used slots
        std::set<Key> ticked;      ///< the ticked rows of the main window
        bool sizes_differ = false; ///< whether a ticked row tells another size than its slot
        /// A click that ends early tells a folder whose rows are not shown, on purpose.
        bool rows_are_of_current_folder = true;
        QStringList wrong_ticks; ///< rows whose tick is not what the list holds
        int file_drift() const { return shared.final_list_count - used; }
        qint64 byte_drift() const { return shared.final_list_bytes - bytes; }
    };

    State state() const;
    void add_rows(State& state) const;
    bool has_stale_slot_in_front(const State& now) const;
    void check_slots(QStringList& wrong) const;
    void check_totals(const State& now, QStringList& wrong) const;
    void check_window(const State& now, QStringList& wrong) const;
    void check_dialog(const State& now, QStringList& wrong) const;

    const ListView& list_;
    const TreeView& tree_;
    const StatusBar& status_bar_;
    QObject listener_;
    QString folder_of_rows_;
    State last_;
    int last_file_drift_ = 0;
    qint64 last_byte_drift_ = 0;
    bool dialog_stood_ = false; ///< in front of the main window, the last time
    int added_ = 0;
    int removed_ = 0;
};
