#pragma once

#include "platform/controls/ImageList.h"
#include "platform/numbers.h"

#include <QSet>
#include <QStackedWidget>
#include <QString>

#include <memory>
#include <vector>

class ListModel;
class ListSelection;
class ListViewEvents;
class QAbstractItemView;
class QListView;
class QMimeData;
class QTreeView;

/// A column of a list: its header and width.
struct ColumnHeader
{
    QString Text;
    int Width = 0; ///< twips; 0 hides the column
    Qt::Alignment Alignment = Qt::AlignLeft;
};

/// One row of a list.
struct ListRow
{
    QString Key;
    QString Text;
    int SmallIcon = 0; ///< index in the list's images, 0 for none
    bool Checked = false;
    bool Selected = false;
    std::vector<QString> SubItems; ///< texts of the columns behind the first; [0] is sub-item 1

    /// The text of a column: 0 is Text, n is sub-item n; empty where none was set.
    QString column(int index) const;
};

/// A list with columns, check boxes and several selected rows, made for tens of thousands of rows. Rows are numbered
/// from 1. `Selected` marks rows; SelectedItem is the one row that keys act on: the first row of a filled list, then
/// the row last clicked or last given Selected = true. Nothing that code does raises an event.
class ListView : public QStackedWidget
{
    Q_OBJECT

public:
    enum class ViewMode
    {
        list = 2,
        report = 3
    };
    enum class Order
    {
        ascending = 0,
        descending = 1
    };

    explicit ListView(QWidget* parent = nullptr);
    ~ListView() override;
    Q_DISABLE_COPY_MOVE(ListView)

    void set_ColumnHeaders(const std::vector<ColumnHeader>& headers);
    const std::vector<ColumnHeader>& ColumnHeaders() const;
    void set_SmallIcons(const ImageList& images);
    void set_Checkboxes(bool on);
    void set_MultiSelect(bool on);
    ViewMode View() const;
    void set_View(ViewMode mode);

    int Count() const;
    void Clear();
    /// Adds a row at the end; gives its index. Raises "Key is not unique in collection".
    int Add(const QString& key, const QString& text);
    /// The row at an index from 1. Raises "Subscript out of range", as all that follow do.
    const ListRow& Item(int index) const;
    void set_Key(int index, const QString& key); ///< raises "Key is not unique in collection"
    void set_Text(int index, const QString& text);
    void set_SmallIcon(int index, int image);
    void set_SubItem(int index, int column, const QString& text);
    void set_Checked(int index, bool checked);
    void set_Selected(int index, bool selected);
    void clear_selection(); ///< Selected = false on every row

    /// Index of the row that keys act on; 0 in an empty list.
    int SelectedItem() const;
    /// Index of the row under a point of this widget, 0 for none.
    int HitTest(QPoint point) const;
    void ensure_visible(int index); ///< nothing for an index that is none

    /// Lets a person edit the Text of SelectedItem in its place: raises BeforeLabelEdit and, when the edit is accepted,
    /// AfterLabelEdit. It is accepted by Enter, Tab or a click elsewhere, and cancelled by Esc or when the list is
    /// cleared, sorted or shown in another mode or SelectedItem changes. The focus is the list's again after it.
    /// Nothing in an empty list or while an edit is open.
    void StartLabelEdit();
    bool is_editing() const;

    /// Whether pulling a row with the left button drags the selected rows' texts. Off at first: it selects the rows
    /// passed. A press that ends in a drag raises no MouseUp.
    void set_OLEDragMode(bool automatic);

    /// Sorts the rows by the text of a column (0 is Text), once; the sort is stable.
    void sort(int column, Order order);
    int SortKey() const;
    Order SortOrder() const;

    /// While one lives, the views are not told of changes; when the last goes they are told once. For fills.
    class Update
    {
    public:
        explicit Update(ListView& list);
        ~Update();
        Q_DISABLE_COPY_MOVE(Update)

    private:
        ListView& list_;
    };

    /// The view shown now, for focus, tests and drags.
    QAbstractItemView* view() const;
    /// Rectangle of a row (its first column), and of its check box, in this widget's coordinates; empty when not shown.
    QRect row_rect(int index) const;
    QRect check_rect(int index) const;

Q_SIGNALS:
    void ItemClick(int index);    ///< a row was chosen and selected by mouse or key
    void ItemCheck(int index);    ///< a person changed the tick; Checked has its new value
    void ColumnClick(int column); ///< 0 is the first column
    void MouseDown(i16 button, QPoint point);
    void MouseMove(i16 buttons, QPoint point);
    void MouseUp(i16 button, QPoint point);
    void DblClick();
    void ContextKey(); ///< the menu key, where no mouse button opens the pop-up menu
    void GotFocus();
    void BeforeLabelEdit(bool& cancel); ///< an edit of SelectedItem's Text is about to open, unless cancelled
    /// An edit was accepted; the box is gone. The row's Text becomes `text`, unless cancelled. Once for each edit.
    void AfterLabelEdit(bool& cancel, const QString& text);
    /// The selected rows are about to be dragged. `data` holds their texts, joined by line breaks; more may be added.
    void OLEStartDrag(QMimeData& data);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void show_sort_indicator();
    /// What is seen of a rectangle of the view, in this widget's coordinates.
    QRect shown_rect(QRect rect) const;

    std::unique_ptr<ListModel> model_;
    std::unique_ptr<ListSelection> selection_;
    std::unique_ptr<ListViewEvents> events_;
    QTreeView* report_ = nullptr;
    QListView* list_ = nullptr;
    int sort_key_ = 0;
    Order sort_order_ = Order::ascending;
    bool is_sorted_ = false; ///< the rows now listed have been sorted
};
