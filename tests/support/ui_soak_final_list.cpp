#include "ui_soak_final_list.h"

#include "platform/controls/ListView.h"
#include "platform/controls/StatusBar.h"
#include "platform/controls/TreeView.h"
#include "selection/final_list.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QThread>

#include <algorithm>
#include <map>

using namespace Qt::StringLiterals;

namespace {

bool is_same(const FinalListEntry& slot, const FinalListEntry& other)
{
    return slot.in_use == other.in_use && slot.kind == other.kind && slot.convert == other.convert &&
           slot.name == other.name && slot.folder == other.folder && slot.full_path == other.full_path &&
           slot.size == other.size && slot.type_text == other.type_text && slot.date_text == other.date_text;
}

bool is_sound(const FinalListEntry& slot)
{
    return !slot.name.isEmpty() && slot.folder.endsWith(u'\\') && slot.full_path == slot.folder + slot.name &&
           slot.kind >= 0 && slot.kind <= 2 && slot.convert >= 0 && slot.convert <= 1 && slot.size >= 0;
}

} // namespace

FinalListWatch::FinalListWatch(const QWidget& form)
    : list_(*form.findChild<ListView*>(u"lvListView"_s)),
      tree_(*form.findChild<TreeView*>(u"tvTreeView"_s)),
      status_bar_(*form.findChild<StatusBar*>(u"StatusBar1"_s)),
      last_(state())
{
    // Rows come and go all at once, and are those of the node selected then.
    QObject::connect(list_.view()->model(), &QAbstractItemModel::modelReset, &listener_, [this] {
        const TreeNode* const node = tree_.SelectedItem();
        folder_of_rows_ = node != nullptr ? node->Key() + u'\\' : QString();
    });
}

FinalListWatch::State FinalListWatch::state() const
{
    State state;
    for (const FinalListEntry& slot : final_list_slots()) {
        if (slot.in_use != 1)
            continue;
        ++state.used;
        state.bytes += slot.size;
        state.paths.insert(slot.full_path);
    }
    state.rows_are_of_current_folder = folder_of_rows_ == shared.current_folder;
    add_rows(state);
    return state;
}

void FinalListWatch::add_rows(State& state) const
{
    std::map<Key, i32> sizes;
    for (const FinalListEntry& slot : final_list_slots()) {
        if (slot.in_use == 1)
            sizes.emplace(Key(slot.name, slot.folder), slot.size);
    }
    for (int index = 1; index <= list_.Count(); ++index) {
        const ListRow& row = list_.Item(index);
        const Key key(row.Text, shared.current_folder);
        const auto slot = sizes.find(key);
        if (row.Checked)
            state.ticked.insert(key);
        if (row.Checked && (slot == sizes.end() || slot->second != row.column(4).toLongLong()))
            state.sizes_differ = true;
        if (state.rows_are_of_current_folder && row.Checked != (slot != sizes.end()))
            state.wrong_ticks.append(key.second + key.first);
    }
}

/// Whether a removal can have hit a slot that was free already.
bool FinalListWatch::has_stale_slot_in_front(const State& now) const
{
    return std::ranges::any_of(final_list_slots(), [&](const FinalListEntry& slot) {
        const Key key(slot.name, slot.folder);
        return slot.in_use == 0 && !slot.name.isEmpty() &&
               (last_.ticked.contains(key) || last_.paths.contains(slot.full_path) ||
                now.paths.contains(slot.full_path));
    });
}

QStringList FinalListWatch::look()
{
    const State now = state();
    QStringList wrong;
    check_slots(wrong);
    check_totals(now, wrong);
    // While a handler of the main window waits for a dialog or for work on files, it is not done.
    const bool in_handler = QThread::currentThread()->loopLevel() > 1 || QApplication::activeModalWidget() != nullptr;
    if (!in_handler)
        check_window(now, wrong);
    check_dialog(now, wrong);
    dialog_stood_ = in_handler;
    added_ += std::max(0, now.used - last_.used);
    removed_ += std::max(0, last_.used - now.used);
    last_ = now;
    last_file_drift_ = now.file_drift();
    last_byte_drift_ = now.byte_drift();
    return wrong;
}

void FinalListWatch::check_slots(QStringList& wrong) const
{
    std::set<QString> names;
    for (const FinalListEntry& slot : final_list_slots()) {
        if (slot.in_use != 0 && slot.in_use != 1)
            wrong.append(u"a slot is neither used nor free"_s);
        if (slot.in_use != 1)
            continue;
        if (!is_sound(slot))
            wrong.append(u"a used slot is not sound: "_s + slot.full_path);
        if (!names.insert(slot.name).second)
            wrong.append(u"a name is listed twice: "_s + slot.name);
    }
    if (!is_same(shared.final_list.back(), FinalListEntry()))
        wrong.append(u"the slot behind the last one was used"_s);
}

void FinalListWatch::check_totals(const State& now, QStringList& wrong) const
{
    const bool hit_stale_slot = now.file_drift() < last_file_drift_ && has_stale_slot_in_front(now);
    if (now.file_drift() != last_file_drift_ && !hit_stale_slot)
        wrong.append(u"%1 slots are used, %2 counted; before they differed by %3"_s.arg(now.used)
                         .arg(shared.final_list_count)
                         .arg(last_file_drift_));
    if (now.byte_drift() != last_byte_drift_ && !hit_stale_slot && !last_.sizes_differ)
        wrong.append(u"%1 bytes are listed, %2 counted; before they differed by %3"_s.arg(now.bytes)
                         .arg(shared.final_list_bytes)
                         .arg(last_byte_drift_));
}

/// What holds while nothing stands in front of the main window.
void FinalListWatch::check_window(const State& now, QStringList& wrong) const
{
    if (status_bar_.panel_text(3) != final_total_text())
        wrong.append(u"the status bar tells %1 and not %2"_s.arg(status_bar_.panel_text(3), final_total_text()));
    if (list_.Count() > 0 && list_.Count() != shared.folder_mp3_count)
        wrong.append(u"%1 rows, %2 counted"_s.arg(list_.Count()).arg(shared.folder_mp3_count));
    const bool may_differ = dialog_stood_ || !last_.rows_are_of_current_folder || now.file_drift() != last_file_drift_;
    if (now.wrong_ticks.size() > last_.wrong_ticks.size() && !may_differ)
        wrong.append(u"rows with another tick than the list says: "_s + now.wrong_ticks.join(u", "_s));
}

/// The dialog of the final list shows each used slot once.
void FinalListWatch::check_dialog(const State& now, QStringList& wrong) const
{
    const QWidget* const dialog = QApplication::activeModalWidget();
    if (dialog == nullptr || dialog->objectName() != u"FIF_convert"_s)
        return;
    int rows = 0;
    for (const auto* list : dialog->findChildren<ListView*>())
        rows += list->Count();
    if (rows != now.used)
        wrong.append(u"the dialog shows %1 rows of %2 used slots"_s.arg(rows).arg(now.used));
}
