#pragma once

#include "platform/RunTimeError.h"

#include <functional>
#include <utility>

class QWidget;

/// Makes MsgBox show real boxes: modal, with the title and an OK button, the text taken as plain text. `title` is that
/// of the boxes for run-time errors.
void install_message_window(const QString& title);

/// Shows a run-time error's number and text in a box.
void show_run_time_error(const RunTimeError& error);

/// What happens to a run-time error that no handler took: shows it, then ends the program with exit status 1.
/// Tests put a double in its place; an empty handler brings the program's own back.
using FatalErrorHandler = std::function<void(const RunTimeError& error)>;
void set_fatal_error_handler(FatalErrorHandler handler);
void fatal_run_time_error(const RunTimeError& error);

/// An event handler for a connection: an error that leaves it is the program's end, never an exception in Qt's event
/// loop.
template<typename Handler> auto guarded(Handler handler)
{
    return [handler = std::move(handler)](auto&&... arguments) mutable {
        try {
            handler(std::forward<decltype(arguments)>(arguments)...);
        } catch (const RunTimeError& error) {
            fatal_run_time_error(error);
        }
    };
}
