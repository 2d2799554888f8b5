#include "ui_soak_input.h"

#include <QCoreApplication>
#include <QTest>
#include <QWheelEvent>
#include <QWindow>

namespace {

constexpr int too_late_for_a_double_click_ms = 1000;

} // namespace

void SoakInput::send(QWidget& widget, QPoint point, QEvent::Type type, Qt::MouseButton button,
                     Qt::KeyboardModifiers keys)
{
    QWidget* const window = widget.window();
    QWindow* const handle = window->windowHandle();
    if (handle == nullptr)
        return;
    const QPoint place = widget.mapTo(window, point);
    qt_handleMouseEvent(handle, place, handle->mapToGlobal(place), held_, button, type, keys, milliseconds_);
}

void SoakInput::press(QWidget& widget, QPoint point, Qt::MouseButton button, Qt::KeyboardModifiers keys)
{
    held_.setFlag(button);
    send(widget, point, QEvent::MouseButtonPress, button, keys);
}

void SoakInput::move(QWidget& widget, QPoint point)
{
    send(widget, point, QEvent::MouseMove, Qt::NoButton, {});
}

void SoakInput::release(QWidget& widget, QPoint point, Qt::MouseButton button, Qt::KeyboardModifiers keys)
{
    held_.setFlag(button, false);
    send(widget, point, QEvent::MouseButtonRelease, button, keys);
}

void SoakInput::click(QWidget& widget, QPoint point, Qt::MouseButton button, Qt::KeyboardModifiers keys)
{
    milliseconds_ += too_late_for_a_double_click_ms;
    move(widget, point);
    press(widget, point, button, keys);
    release(widget, point, button, keys);
}

void SoakInput::double_click(QWidget& widget, QPoint point)
{
    click(widget, point);
    press(widget, point);
    release(widget, point);
    milliseconds_ += too_late_for_a_double_click_ms;
}

void SoakInput::wheel(QWidget& widget, QPoint point, int steps)
{
    constexpr int eighths_of_degrees = 120;
    QCoreApplication::postEvent(&widget,
                                new QWheelEvent(point, widget.mapToGlobal(point), {}, {0, steps * eighths_of_degrees},
                                                Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false));
}

void SoakInput::key(QWidget& window, int key, Qt::KeyboardModifiers keys, const QString& text)
{
    QWindow* const handle = window.windowHandle();
    if (handle == nullptr)
        return;
    qt_handleKeyEvent(handle, QEvent::KeyPress, key, keys, text);
    qt_handleKeyEvent(handle, QEvent::KeyRelease, key, keys, text);
}

void SoakInput::type(QWidget& window, const QString& text)
{
    for (const QChar character : text) {
        const bool is_plain = character.unicode() >= 0x20 && character.unicode() < 0x7F;
        key(window, is_plain ? character.toUpper().unicode() : int{Qt::Key_unknown}, {}, QString(character));
    }
}
