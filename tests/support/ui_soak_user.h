#pragma once

#include "ui_soak_input.h"

#include <QList>
#include <QString>
#include <QWidget>

#include <random>
#include <span>

class ListView;
class QDrag;
class QLineEdit;
class TreeView;

/// The numbers of a seed; the same on every machine.
class SoakDice
{
public:
    explicit SoakDice(unsigned seed) : engine_(seed) {}

    int below(int count) { return count <= 1 ? 0 : static_cast<int>(engine_() % static_cast<unsigned>(count)); }
    bool once_in(int times) { return below(times) == 0; }
    QPoint in(QRect area) { return {area.left() + below(area.width()), area.top() + below(area.height())}; }
    template<typename Value> const Value& of(const QList<Value>& values)
    {
        return values.at(below(static_cast<int>(values.size())));
    }

private:
    std::mt19937 engine_;
};

/// A person who does at random what can be done: with the main window or with what stands in front of it.
class SoakUser
{
public:
    /// Drags are the user's to carry out as long as it lives.
    SoakUser(QWidget& form, unsigned seed);
    ~SoakUser();
    SoakUser(const SoakUser&) = delete;
    SoakUser& operator=(const SoakUser&) = delete;

    /// Begins the next action; gives a word for it.
    QString act();
    /// Whether the action that was begun has events left.
    bool is_acting() const { return input_.is_pending(); }
    /// Goes on with it by one event.
    void go_on() { input_.deliver(); }
    /// How long the person rests after it, in milliseconds.
    int rest();

private:
    /// One way to act; gives a word for what it did, empty when there was nothing to do it with.
    using Act = QString (SoakUser::*)(QWidget& window);
    struct Choice
    {
        int weight;
        Act act;
    };

    QString act_by(std::span<const Choice> choices, QWidget& window);

    // With any window.
    QString click_anything(QWidget& window);
    QString press_button(QWidget& window);
    QString press_key(QWidget& window);
    QString press_shortcut(QWidget& window);
    QString type_text(QWidget& window);
    QString fill_box(QWidget& window);
    QString click_row(QWidget& window);
    QString click_check_box(QWidget& window);
    QString double_click_row(QWidget& window);
    QString open_row_menu(QWidget& window);
    QString click_header(QWidget& window);
    QString click_node(QWidget& window);
    QString open_node(QWidget& window);
    QString open_node_menu(QWidget& window);
    QString turn_wheel(QWidget& window);
    QString move_mouse(QWidget& window);
    QString resize_window(QWidget& window);
    QString close_window(QWidget& window);
    QString press_escape(QWidget& window);

    // With the main window.
    QString rename_row(QWidget& window);
    QString rename_node(QWidget& window);
    QString delete_row(QWidget& window);
    QString save_fields(QWidget& window);
    QString open_menu(QWidget& window);
    QString drag_row(QWidget& window);
    QString drag_node(QWidget& window);
    QString drag_anything(QWidget& window);
    QString fill_clipboard(QWidget& window);

    QString act_in_menu(QWidget& popup);
    QString act_in_list_popup(QWidget& popup);

    void carry_out(const QDrag& drag);
    QString name();
    ListView* some_list(QWidget& window);
    int some_row(ListView& list);
    /// A place on a node in sight, rather a deep one; nothing without one.
    QPoint place_of_node(TreeView& tree);
    void pull(QWidget& widget, QPoint from, QPoint to);
    /// The widgets of a window that can be acted on.
    template<typename Widget> static QList<Widget*> shown(const QWidget& window)
    {
        auto widgets = window.findChildren<Widget*>();
        widgets.removeIf([&window](const QWidget* widget) {
            return !widget->isVisible() || !widget->isEnabled() || widget->window() != &window ||
                   widget->size().isEmpty();
        });
        return widgets;
    }

    QWidget& form_;
    SoakDice dice_;
    SoakInput input_;
};
