#include "platform/controls/ListModel.h"

#include "platform/RunTimeError.h"
#include "platform/display_text.h"
#include "platform/text.h"

#include <algorithm>
#include <numeric>

QString ListRow::column(int index) const
{
    if (index == 0)
        return Text;
    return index < 0 || index > static_cast<int>(SubItems.size()) ? QString()
                                                                  : SubItems[static_cast<std::size_t>(index) - 1];
}

namespace {

qsizetype room_of(const QString& text)
{
    constexpr char16_t first_wide = 0x1100;
    return text.size() +
           std::count_if(text.begin(), text.end(), [](QChar character) { return character.unicode() >= first_wide; });
}

} // namespace

ListModel::ListModel(QObject* parent) : QAbstractTableModel(parent) {}

void ListModel::set_headers(const std::vector<ColumnHeader>& headers)
{
    headers_ = headers;
    tell_rows();
}

void ListModel::set_images(const ImageList& images)
{
    images_ = images;
    tell_all_cells();
}

void ListModel::set_checkboxes(bool on)
{
    checkboxes_ = on;
    tell_all_cells();
}

void ListModel::set_multi_select(bool on)
{
    multi_select_ = on;
    if (!on && selected_item_ != 0) {
        const bool kept = Item(selected_item_).Selected;
        clear_selection();
        row(selected_item_).Selected = kept;
    }
}

void ListModel::Clear()
{
    rows_.clear();
    keys_.clear();
    selected_item_ = 0;
    tell_rows();
}

int ListModel::Add(const QString& key, const QString& text)
{
    if (!key.isEmpty()) {
        const auto count = keys_.size();
        keys_.insert(key);
        if (keys_.size() == count)
            throw RunTimeError(RunTimeError::key_not_unique);
    }
    const int added = Count();
    if (!is_held())
        beginInsertRows({}, added, added);
    ListRow& row = rows_.emplace_back();
    row.Key = key;
    row.Text = text;
    if (selected_item_ == 0)
        selected_item_ = 1;
    if (is_held()) {
        untold_ = Untold::rows;
    } else {
        told_rows_ = Count();
        endInsertRows();
    }
    return Count();
}

const ListRow& ListModel::Item(int index) const
{
    if (index < 1 || index > Count())
        throw RunTimeError(RunTimeError::subscript_out_of_range);
    return rows_[static_cast<std::size_t>(index) - 1];
}

ListRow& ListModel::row(int index)
{
    return const_cast<ListRow&>(std::as_const(*this).Item(index));
}

void ListModel::set_Key(int index, const QString& key)
{
    ListRow& changed = row(index);
    if (changed.Key == key)
        return;
    if (keys_.contains(key))
        throw RunTimeError(RunTimeError::key_not_unique);
    keys_.remove(changed.Key);
    if (!key.isEmpty())
        keys_.insert(key);
    changed.Key = key;
}

void ListModel::set_Text(int index, const QString& text)
{
    row(index).Text = text;
    tell_cell(index, 0);
}

void ListModel::set_SmallIcon(int index, int image)
{
    row(index).SmallIcon = image;
    tell_cell(index, 0);
}

void ListModel::set_SubItem(int index, int column, const QString& text)
{
    if (column < 1)
        throw RunTimeError(RunTimeError::subscript_out_of_range);
    std::vector<QString>& texts = row(index).SubItems;
    const auto place = static_cast<std::size_t>(column);
    if (texts.size() < place) {
        texts.reserve(std::max(place, headers_.size()));
        texts.resize(place);
    }
    texts[place - 1] = text;
    tell_cell(index, column);
}

void ListModel::set_Checked(int index, bool checked)
{
    ListRow& changed = row(index);
    if (changed.Checked == checked)
        return;
    changed.Checked = checked;
    tell_cell(index, 0);
}

void ListModel::sort(int column, ListView::Order order)
{
    std::vector<QString> texts;
    texts.reserve(rows_.size());
    for (const ListRow& row : rows_)
        texts.push_back(row.column(column));
    std::vector<std::size_t> places(rows_.size());
    std::iota(places.begin(), places.end(), std::size_t{0});
    std::stable_sort(places.begin(), places.end(), [&](std::size_t a, std::size_t b) {
        const int compared = compare_texts(texts[a], texts[b]);
        return order == ListView::Order::ascending ? compared < 0 : compared > 0;
    });

    std::vector<ListRow> sorted;
    sorted.reserve(rows_.size());
    int selected_item = 0;
    for (const std::size_t place : places) {
        sorted.push_back(std::move(rows_[place]));
        if (static_cast<int>(place) + 1 == selected_item_)
            selected_item = static_cast<int>(sorted.size());
    }
    rows_ = std::move(sorted);
    selected_item_ = selected_item;
    tell_rows();
}

QString ListModel::longest_text() const
{
    const auto longest = std::max_element(rows_.begin(), rows_.end(), [](const ListRow& a, const ListRow& b) {
        return room_of(a.Text) < room_of(b.Text);
    });
    return longest == rows_.end() ? QString() : display_text(longest->Text);
}

bool ListModel::set_Selected(int index, bool selected)
{
    ListRow& changed = row(index);
    const bool item_changes = selected && selected_item_ != index;
    if (changed.Selected == selected && !item_changes)
        return false;
    if (item_changes) {
        if (!multi_select_)
            row(selected_item_).Selected = false;
        selected_item_ = index;
    }
    changed.Selected = selected;
    return true;
}

bool ListModel::clear_selection()
{
    bool any = false;
    for (ListRow& row : rows_)
        any = std::exchange(row.Selected, false) || any;
    return any;
}

void ListModel::set_selected_range(int first, int last, bool selected)
{
    for (int index = std::max(first, 1); index <= std::min(last, Count()); ++index)
        row(index).Selected = selected;
}

void ListModel::hold()
{
    ++holds_;
}

bool ListModel::release()
{
    if (--holds_ > 0)
        return false;
    const Untold untold = std::exchange(untold_, Untold::nothing);
    if (untold == Untold::rows)
        tell_rows();
    else if (untold == Untold::cells)
        tell_all_cells();
    return untold == Untold::rows;
}

void ListModel::tell_cell(int index, int column)
{
    if (is_held())
        untold_ = std::max(untold_, Untold::cells);
    else if (column < columnCount())
        Q_EMIT dataChanged(this->index(index - 1, column), this->index(index - 1, column));
}

void ListModel::tell_all_cells()
{
    if (is_held())
        untold_ = std::max(untold_, Untold::cells);
    else if (told_rows_ > 0 && columnCount() > 0)
        Q_EMIT dataChanged(index(0, 0), index(told_rows_ - 1, columnCount() - 1));
}

void ListModel::tell_rows()
{
    if (is_held()) {
        untold_ = Untold::rows;
        return;
    }
    beginResetModel();
    told_rows_ = Count();
    endResetModel();
}

int ListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : told_rows_;
}

int ListModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : std::max(1, static_cast<int>(headers_.size()));
}

QVariant ListModel::data(const QModelIndex& index, int role) const
{
    // While the rows are held a view may still ask for one that is gone.
    if (!index.isValid() || index.row() >= Count())
        return {};
    return cell(rows_[static_cast<std::size_t>(index.row())], index.column(), role);
}

QVariant ListModel::cell(const ListRow& row, int column, int role) const
{
    switch (role) {
    case Qt::DisplayRole:
        return display_text(row.column(column));
    case Qt::DecorationRole:
        return column == 0 && row.SmallIcon > 0 ? QVariant(images_.icon(row.SmallIcon)) : QVariant();
    case Qt::CheckStateRole:
        return column == 0 && checkboxes_ ? QVariant(row.Checked ? Qt::Checked : Qt::Unchecked) : QVariant();
    case Qt::TextAlignmentRole:
        return headerData(column, Qt::Horizontal, role);
    default:
        return {};
    }
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= static_cast<int>(headers_.size()))
        return {};
    const ColumnHeader& header = headers_[static_cast<std::size_t>(section)];
    if (role == Qt::DisplayRole)
        return header.Text;
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(header.Alignment | Qt::AlignVCenter);
    return {};
}

Qt::ItemFlags ListModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    return checkboxes_ && index.column() == 0 ? flags | Qt::ItemIsUserCheckable : flags;
}
