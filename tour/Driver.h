#pragma once

#include "platform/controls/ListView.h"
#include "platform/controls/TreeView.h"
#include "platform/controls/UsrButton.h"

#include <QDialog>
#include <QWidget>

#include <functional>

class QMenu;

/// Drives a form as a person does: by mouse and key events on its controls, which are found by their names.
class Driver
{
public:
    explicit Driver(QWidget& form) : form_(form) {}

    /// The control of this name; ends the process when there is none.
    template<typename Control> Control& control(const QString& name) const
    {
        auto* found = form_.findChild<Control*>(name);
        if (found == nullptr)
            qFatal("no control %s", qPrintable(name));
        return *found;
    }

    /// Clicks a node of a tree; all above it are open.
    void click_node(const QString& key, const QString& tree = QStringLiteral("tvTreeView")) const;
    /// Clicks a node of a tree and opens it by the right arrow key.
    void open_node(const QString& key, const QString& tree = QStringLiteral("tvTreeView")) const;
    /// Clicks the check box of a row; the row is scrolled into view first.
    void click_check_box(ListView& list, int row) const;
    /// Clicks a row beside its check box, with keys held if wanted.
    void click_row(ListView& list, int row, Qt::KeyboardModifiers keys = {}) const;
    /// Clicks a row with the right button.
    void right_click_row(ListView& list, int row) const;
    /// Double-clicks a row.
    void double_click_row(ListView& list, int row) const;
    /// Replaces the text of a box by typing.
    void type(const QString& box, const QString& text) const;
    /// Opens a menu of the menu bar.
    QMenu& open_menu(const QString& menu) const;
    /// Opens a menu of the menu bar and clicks one of its entries.
    void choose(const QString& menu, const QString& entry) const;
    /// Clicks an entry of a pop-up menu that is open.
    void choose_from_popup(const QString& menu, const QString& entry) const;
    /// The row of this text, 0 for none.
    static int row_of(const ListView& list, const QString& text);
    /// Moves the pointer over a button.
    void hover(const QString& button) const;
    /// Clicks a button.
    void click(const QString& button) const;

    /// Runs `visit` once inside the next modal dialog, as soon as that is on screen in front of the present one; ends
    /// the process when none comes within ten seconds.
    static void in_next_dialog(std::function<void(QDialog&)> visit);

private:
    QWidget& form_;
};
