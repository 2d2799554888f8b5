#pragma once

#include "platform/controls/ListView.h"

#include <QFocusEvent>
#include <QListView>
#include <QMouseEvent>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QStyledItemDelegate>

#include <functional>
#include <optional>
#include <type_traits>

class LabelEditor;
class ListModel;
class ListSelection;
class QContextMenuEvent;
class QKeyEvent;

/// Qt's painting of rows, which also tells where a row's check box is.
class RowDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// `as_longest`: every row takes the room that the longest text needs.
    RowDelegate(bool as_longest, QObject* parent) : QStyledItemDelegate(parent), as_longest_(as_longest) {}

    /// Rectangle of the check box of `index`, given the option that its row is painted with.
    QRect check_rect(QStyleOptionViewItem option, const QModelIndex& index) const;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    bool as_longest_;
};

/// What the list makes of the events of its two views. `pass_on` is Qt's own handling of the event.
class ListViewEvents
{
public:
    using PassOn = std::function<void()>;

    ListViewEvents(ListView& list, ListModel& model, ListSelection& selection);

    /// To be called before a view does anything with an event.
    void prepare();
    void press(const QMouseEvent& event, const PassOn& pass_on);
    void move(const QMouseEvent& event, const PassOn& pass_on);
    void release(const QMouseEvent& event, const PassOn& pass_on);
    void double_click(const QMouseEvent& event, const PassOn& pass_on);
    void leave() { has_press_ = false; }
    /// Whether the mouse has been pressed here since it came. If not, the first press of a double click was elsewhere,
    /// say on the button that opened the form, and the second one is all that the list sees of it.
    bool has_press() const { return has_press_; }
    void key(const QKeyEvent& event, const PassOn& pass_on);
    void context_menu(const QContextMenuEvent& event);
    void focus_in(Qt::FocusReason reason);

    void start_label_edit();
    void cancel_label_edit();
    void drop_label_edit(); ///< the list goes: nobody is told
    bool is_editing() const;
    void place_editor(); ///< to be called when rows may have moved

    void set_drags_rows(bool on) { drags_rows_ = on; }

private:
    QPoint in_list(const QMouseEvent& event) const;
    /// Index of the row whose check box is under a point of the list, 0 for none.
    int check_at(QPoint point) const;
    /// Whether the press is one on a check box, which is the list's alone.
    bool takes_check_press(const QMouseEvent& event);
    void toggle(int index);
    void end_label_edit(const QPersistentModelIndex& edited, bool accepted, const QString& text);
    void start_drag();

    ListView& list_;
    ListModel& model_;
    ListSelection& selection_;
    int pressed_check_ = 0; ///< row of the check box that is held down, 0 for none
    bool has_press_ = false;
    QPointer<LabelEditor> editor_;
    bool drags_rows_ = false;
    std::optional<QPoint> pull_from_; ///< where a row was pressed that a pull will drag
    bool has_dragged_ = false;        ///< whether the press has become a drag
};

/// One of Qt's views of rows, with its events handed to the list.
template<typename View> class RowView : public View
{
public:
    RowView(ListViewEvents& events, QWidget* parent)
        : View(parent), events_(events), delegate_(new RowDelegate(std::is_same_v<View, QListView>, this))
    {
        this->setItemDelegate(delegate_);
    }

    /// Rectangle of a check box in the viewport.
    QRect check_rect(const QModelIndex& index) const
    {
        QStyleOptionViewItem option;
        this->initViewItemOption(&option);
        option.rect = this->visualRect(index);
        return delegate_->check_rect(option, index);
    }

protected:
    bool event(QEvent* event) override
    {
        events_.prepare();
        return View::event(event);
    }
    bool viewportEvent(QEvent* event) override
    {
        events_.prepare();
        if (event->type() == QEvent::Leave)
            events_.leave();
        return View::viewportEvent(event);
    }
    void mousePressEvent(QMouseEvent* event) override
    {
        events_.press(*event, [this, event] { View::mousePressEvent(event); });
    }
    void mouseMoveEvent(QMouseEvent* event) override
    {
        events_.move(*event, [this, event] { View::mouseMoveEvent(event); });
    }
    void mouseReleaseEvent(QMouseEvent* event) override
    {
        events_.release(*event, [this, event] { View::mouseReleaseEvent(event); });
    }
    void mouseDoubleClickEvent(QMouseEvent* event) override
    {
        if (events_.has_press()) {
            events_.double_click(*event, [this, event] { View::mouseDoubleClickEvent(event); });
            return;
        }
        QMouseEvent press(QEvent::MouseButtonPress, event->position(), event->scenePosition(), event->globalPosition(),
                          event->button(), event->buttons(), event->modifiers(), event->pointingDevice());
        mousePressEvent(&press);
    }
    void keyPressEvent(QKeyEvent* event) override
    {
        events_.key(*event, [this, event] { View::keyPressEvent(event); });
    }
    void updateEditorGeometries() override
    {
        View::updateEditorGeometries();
        events_.place_editor();
    }
    void scrollContentsBy(int dx, int dy) override
    {
        View::scrollContentsBy(dx, dy);
        events_.place_editor(); // a long way is no scrolling to Qt's view, and leaves the box behind
    }
    void contextMenuEvent(QContextMenuEvent* event) override { events_.context_menu(*event); }
    void focusInEvent(QFocusEvent* event) override
    {
        View::focusInEvent(event);
        events_.focus_in(event->reason());
    }

private:
    ListViewEvents& events_;
    RowDelegate* delegate_;
};
