#include "platform/controls/ListView.h"
#include "platform/controls/TreeView.h"
#include "ui_soak_user.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QDrag>
#include <QDragEnterEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>

using namespace Qt::StringLiterals;

// What the user does with the main window and its menus.

QString SoakUser::rename_row(QWidget& window)
{
    const QString clicked = click_row(window);
    if (clicked.isEmpty())
        return {};
    const QString text = name();
    input_.key(window, Qt::Key_F2);
    if (dice_.once_in(2))
        input_.key(window, Qt::Key_A, Qt::ControlModifier);
    input_.type(window, text);
    input_.key(window, dice_.once_in(8) ? Qt::Key_Escape : Qt::Key_Return);
    return clicked + u", rename to "_s + text;
}

QString SoakUser::rename_node(QWidget& window)
{
    const QString clicked = click_node(window);
    if (clicked.isEmpty())
        return {};
    const QString text = name().left(30);
    input_.key(window, Qt::Key_F2);
    input_.type(window, text);
    input_.key(window, dice_.once_in(8) ? Qt::Key_Escape : Qt::Key_Return);
    return clicked + u", rename to "_s + text;
}

QString SoakUser::delete_row(QWidget& window)
{
    const QString clicked = click_row(window);
    if (clicked.isEmpty())
        return {};
    input_.key(window, Qt::Key_Delete);
    return clicked + u", delete"_s;
}

QString SoakUser::save_fields(QWidget& window)
{
    const QString clicked = click_row(window);
    auto* artist = window.findChild<QLineEdit*>(u"txtArtist"_s);
    auto* title = window.findChild<QLineEdit*>(u"txtTitle"_s);
    auto* save = window.findChild<QWidget*>(u"cmdSave"_s);
    if (clicked.isEmpty() || artist == nullptr || title == nullptr || save == nullptr)
        return {};
    QString texts;
    for (QLineEdit* box : {artist, title}) {
        const QString text = name().left(25);
        input_.click(*box, box->rect().center());
        input_.key(window, Qt::Key_A, Qt::ControlModifier);
        input_.type(window, text);
        texts += u' ' + text;
    }
    input_.click(*save, save->rect().center());
    return clicked + u", save"_s + texts;
}

QString SoakUser::open_menu(QWidget& window)
{
    auto* bar = window.findChild<QMenuBar*>();
    if (bar == nullptr)
        return {};
    QAction* const title = dice_.of(bar->actions());
    input_.click(*bar, bar->actionGeometry(title).center());
    return u"menu "_s + title->text();
}

void SoakUser::pull(QWidget& widget, QPoint from, QPoint to)
{
    constexpr int steps = 3;
    input_.move(widget, from);
    input_.press(widget, from);
    for (int step = 1; step <= steps; ++step)
        input_.move(widget, from + (to - from) * step / steps);
    input_.release(widget, to);
}

QString SoakUser::drag_row(QWidget& window)
{
    ListView* const list = some_list(window);
    if (list == nullptr)
        return {};
    const int row = some_row(*list);
    const QPoint from = list->row_rect(row).center();
    pull(*list, from, from + QPoint(3 * QApplication::startDragDistance(), 0));
    return u"drag row %1"_s.arg(row);
}

QString SoakUser::drag_node(QWidget& window)
{
    auto& tree = *window.findChild<TreeView*>(u"tvTreeView"_s);
    const QPoint from = place_of_node(tree);
    if (from.isNull())
        return {};
    pull(*tree.viewport(), from, from + QPoint(3 * QApplication::startDragDistance(), 0));
    return u"drag node at %1,%2"_s.arg(from.x()).arg(from.y());
}

QString SoakUser::drag_anything(QWidget& window)
{
    static const QList<QString> movable = {u"volume_button"_s, u"play_index_button"_s, u"imgSplitter"_s};
    auto* widget = window.findChild<QWidget*>(dice_.of(movable));
    if (widget == nullptr || !widget->isVisible() || dice_.once_in(2)) {
        const auto widgets = shown<QWidget>(window);
        widget = widgets.isEmpty() ? &window : dice_.of(widgets);
    }
    const QPoint from = dice_.in(widget->rect());
    const QPoint to = from + QPoint(dice_.below(400) - 200, dice_.below(100) - 50);
    pull(*widget, from, to);
    return u"pull %1 by %2,%3"_s.arg(widget->objectName()).arg((to - from).x()).arg((to - from).y());
}

QString SoakUser::fill_clipboard(QWidget& /*window*/)
{
    const QString text = dice_.once_in(5) ? QString(5000, u'c') : u"line 1\nline 2 "_s + name();
    QApplication::clipboard()->setText(text);
    return u"clipboard gets "_s + text.left(20);
}

// The platform's part of a drag: it enters the tree, moves about, and ends with a drop or without.
void SoakUser::carry_out(const QDrag& drag)
{
    auto& tree = *form_.findChild<TreeView*>(u"tvTreeView"_s);
    QWidget* const viewport = tree.viewport();
    bool is_welcome = false;
    QPoint place;
    for (int step = dice_.below(3); step >= 0; --step) {
        place = dice_.once_in(4) ? dice_.in(viewport->rect()) : place_of_node(tree);
        QDragEnterEvent enter(place, Qt::CopyAction, drag.mimeData(), Qt::LeftButton, {});
        QApplication::sendEvent(viewport, &enter);
        QDragMoveEvent move(place, Qt::CopyAction, drag.mimeData(), Qt::LeftButton, {});
        move.ignore();
        QApplication::sendEvent(viewport, &move);
        is_welcome = move.isAccepted();
    }
    if (is_welcome && !dice_.once_in(6)) {
        QDropEvent drop(place, Qt::CopyAction, drag.mimeData(), Qt::LeftButton, {});
        QApplication::sendEvent(viewport, &drop);
    } else {
        QDragLeaveEvent leave;
        QApplication::sendEvent(viewport, &leave);
    }
}

QString SoakUser::act_in_menu(QWidget& popup)
{
    auto& menu = *qobject_cast<QMenu*>(&popup);
    if (dice_.once_in(8))
        return press_key(popup);
    if (dice_.once_in(10) || menu.actions().isEmpty())
        return press_escape(popup);
    const QList<QAction*> entries = menu.actions();
    QAction* entry = dice_.of(entries);
    if (entry->objectName() == u"menu_File_Exit"_s && !dice_.once_in(10)) // a run that lasts gets further
        entry = entries.first();
    input_.click(menu, menu.actionGeometry(entry).center());
    return u"choose "_s + entry->objectName();
}

QString SoakUser::act_in_list_popup(QWidget& popup)
{
    const auto views = shown<QAbstractItemView>(popup);
    if (views.isEmpty() || dice_.once_in(4))
        return dice_.once_in(3) ? press_escape(popup) : press_key(popup);
    QWidget& viewport = *views.first()->viewport();
    const QPoint point = dice_.in(viewport.rect());
    input_.click(viewport, point);
    return u"choose in a list at %1"_s.arg(point.y());
}
