#pragma once

#include <QEvent>
#include <QPoint>
#include <QString>
#include <QWidget>

/// A mouse and a keyboard whose events are queued as a desktop queues them: the next loop of events that listens to a
/// person delivers them, also to a dialog or menu that has opened meanwhile.
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

private:
    void send(QWidget& widget, QPoint point, QEvent::Type type, Qt::MouseButton button, Qt::KeyboardModifiers keys);

    Qt::MouseButtons held_;
    int milliseconds_ = 0; ///< the time that the mouse events bear
};
