#pragma once

#include <QEvent>
#include <QPoint>
#include <QString>
#include <QWidget>

#include <deque>
#include <functional>

/// A mouse and a keyboard whose events wait in a queue, as on a desktop: what stands in front when an event's turn
/// comes gets it, also a dialog or menu that an earlier one has opened.
class SoakInput
{
public:
    void press(QWidget& widget, QPoint point, Qt::MouseButton button = Qt::LeftButton, Qt::KeyboardModifiers keys = {});
    /// Moves the mouse, with the buttons held that were pressed before.
    void move(QWidget& widget, QPoint point);
    void release(QWidget& widget, QPoint point, Qt::MouseButton button = Qt::LeftButton,
                 Qt::KeyboardModifiers keys = {});
    void click(QWidget& widget, QPoint point, Qt::MouseButton button = Qt::LeftButton, Qt::KeyboardModifiers keys = {});
    void double_click(QWidget& widget, QPoint point);
    void wheel(QWidget& widget, QPoint point, int steps);
    void key(QWidget& window, int key, Qt::KeyboardModifiers keys = {}, const QString& text = {});
    void type(QWidget& window, const QString& text);

    bool is_pending() const { return !queue_.empty(); }
    /// Delivers the first event of the queue; returns when it has been worked on.
    void deliver();

private:
    void send(QWidget& widget, QPoint point, QEvent::Type type, Qt::MouseButton button, Qt::KeyboardModifiers keys);

    std::deque<std::function<void()>> queue_;
    Qt::MouseButtons held_;
    int milliseconds_ = 0; ///< the time that the mouse events bear
};
