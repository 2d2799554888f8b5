#pragma once

#include "platform/controls/ListView.h"

#include <QAbstractTableModel>
#include <QSet>

#include <vector>

/// The rows of a ListView, for its views. Rows are numbered from 1 as the list numbers them.
class ListModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit ListModel(QObject* parent = nullptr);

    void set_headers(const std::vector<ColumnHeader>& headers);
    const std::vector<ColumnHeader>& headers() const { return headers_; }
    void set_images(const ImageList& images);
    void set_checkboxes(bool on);
    bool has_checkboxes() const { return checkboxes_; }
    void set_multi_select(bool on);

    int Count() const { return static_cast<int>(rows_.size()); }
    void Clear();
    int Add(const QString& key, const QString& text);
    const ListRow& Item(int index) const;
    void set_Key(int index, const QString& key);
    void set_Text(int index, const QString& text);
    void set_SmallIcon(int index, int image);
    void set_SubItem(int index, int column, const QString& text);
    void set_Checked(int index, bool checked);
    void sort(int column, ListView::Order order);
    /// The Text that takes most room, as shown; a fair guess by the number of characters, wide ones counted twice.
    QString longest_text() const;

    /// Sets the flag and, when on, SelectedItem; gives whether anything changed.
    bool set_Selected(int index, bool selected);
    /// Clears the flag of every row; gives whether any was set.
    bool clear_selection();
    int SelectedItem() const { return selected_item_; }
    /// SelectedItem alone, the flags untouched.
    void set_SelectedItem(int index) { selected_item_ = index; }
    /// The flags alone, of the rows `first` to `last`.
    void set_selected_range(int first, int last, bool selected);

    /// From hold to release the views are told nothing; release tells them once. They may nest.
    void hold();
    /// Gives whether the rows were made anew meanwhile.
    bool release();
    bool is_held() const { return holds_ > 0; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    /// What the views have not been told of yet.
    enum class Untold
    {
        nothing,
        cells,
        rows
    };

    ListRow& row(int index);
    void tell_cell(int index, int column);
    void tell_all_cells();
    void tell_rows();
    QVariant cell(const ListRow& row, int column, int role) const;

    std::vector<ColumnHeader> headers_;
    std::vector<ListRow> rows_;
    QSet<QString> keys_;
    ImageList images_;
    int selected_item_ = 0;
    int told_rows_ = 0; ///< the number of rows that the views know of
    int holds_ = 0;
    Untold untold_ = Untold::nothing;
    bool checkboxes_ = false;
    bool multi_select_ = false;
};
