#include "ui_soak_input.h"

#include <QGuiApplication>
#include <QPointer>
#include <QTest>
#include <QWheelEvent>
#include <QWindow>

#include <utility>

namespace {

constexpr int too_late_for_a_double_click_ms = 1000;

} // namespace

void SoakInput::deliver()
{
    const std::function<void()> event = std::move(queue_.front());
    queue_.pop_front();
    event();
}

void SoakInput::send(QWidget& widget, QPoint point, QEvent::Type type, Qt::MouseButton button,
                     Qt::KeyboardModifiers keys)
{
    QWidget* const window = widget.window();
    const QPoint place = widget.mapTo(window, point);
    queue_.emplace_back([=, handle = QPointer(window->windowHandle()), held = held_, time = milliseconds_] {
        if (handle != nullptr)
            qt_handleMouseEvent(handle, place, handle->mapToGlobal(place), held, button, type, keys, time);
    });
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
    queue_.emplace_back([=, target = QPointer(&widget)] {
        if (target == nullptr)
            return;
        QWheelEvent event(point, target->mapToGlobal(point), {}, {0, steps * eighths_of_degrees}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(target, &event);
    });
}

// The window with the focus gets a key, and the one meant only where none has it.
void SoakInput::key(QWidget& window, int key, Qt::KeyboardModifiers keys, const QString& text)
{
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        queue_.emplace_back([=, meant = QPointer(window.windowHandle())] {
            QWindow* const focused = QGuiApplication::focusWindow();
            if (QWindow* const target = focused != nullptr ? focused : meant.data())
                qt_handleKeyEvent(target, type, key, keys, text);
        });
    }
}

void SoakInput::type(QWidget& window, const QString& text)
{
    for (const QChar character : text) {
        const bool is_plain = character.unicode() >= 0x20 && character.unicode() < 0x7F;
        key(window, is_plain ? character.toUpper().unicode() : int{Qt::Key_unknown}, {}, QString(character));
    }
}
