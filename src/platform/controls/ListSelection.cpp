#include "platform/controls/ListSelection.h"

#include "platform/controls/ListModel.h"

#include <QScopedValueRollback>

namespace {

/// The selected rows as ranges of neighbours, all columns each.
QItemSelection selected_ranges(const ListModel& model)
{
    QItemSelection ranges;
    const int count = model.Count();
    const int last_column = model.columnCount() - 1;
    for (int first = 1; first <= count; ++first) {
        if (!model.Item(first).Selected)
            continue;
        int last = first;
        while (last < count && model.Item(last + 1).Selected)
            ++last;
        ranges.append(QItemSelectionRange(model.index(first - 1, 0), model.index(last - 1, last_column)));
        first = last;
    }
    return ranges;
}

} // namespace

ListSelection::ListSelection(ListModel& model) : model_(model), shown_(&model)
{
    connect(&shown_, &QItemSelectionModel::selectionChanged, this,
            [this](const QItemSelection& selected, const QItemSelection& deselected) {
                take_rows(deselected, false);
                take_rows(selected, true);
            });
    connect(&shown_, &QItemSelectionModel::currentChanged, this, [this](const QModelIndex& current) {
        if (!is_updating_ && !model_.is_held() && current.isValid())
            model_.set_SelectedItem(current.row() + 1);
    });
}

void ListSelection::set_changed()
{
    if (!std::exchange(is_outdated_, true))
        Q_EMIT Outdated();
}

void ListSelection::update()
{
    // While the rows are held the views know other rows than these.
    if (!is_outdated_ || model_.is_held())
        return;
    is_outdated_ = false;
    const QScopedValueRollback updating(is_updating_, true);
    // In two steps: Qt compares each range of an old selection with each of a new one.
    shown_.clearSelection();
    shown_.select(selected_ranges(model_), QItemSelectionModel::Select);
    shown_.setCurrentIndex(model_.index(model_.SelectedItem() - 1, 0), QItemSelectionModel::NoUpdate);
}

void ListSelection::take_rows(const QItemSelection& rows, bool selected)
{
    if (is_updating_ || model_.is_held())
        return;
    for (const QItemSelectionRange& range : rows)
        model_.set_selected_range(range.top() + 1, range.bottom() + 1, selected);
}
