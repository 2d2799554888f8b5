#include "platform/controls/message_window.h"

#include "platform/MsgBox.h"
#include "platform/display_text.h"
#include "platform/own_words.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

#include <cstdio>
#include <cstdlib>

namespace {

struct ErrorWindow
{
    QString title;
    FatalErrorHandler handler;
};

ErrorWindow& error_window()
{
    static ErrorWindow window;
    return window;
}

void show_box(const QString& text, int /*style*/, const QString& title)
{
    QMessageBox box(QMessageBox::Information, title, QString(), QMessageBox::Ok, QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    box.setText(breakable_text(text));
    box.button(QMessageBox::Ok)->setText(own_word(Word::button_ok));
    // Long work shows the wait cursor on every window, but this one waits for the person.
    QApplication::setOverrideCursor(Qt::ArrowCursor);
    box.exec();
    QApplication::restoreOverrideCursor();
}

[[noreturn]] void show_and_end(const RunTimeError& error)
{
    show_run_time_error(error);
    std::fflush(nullptr);
    std::_Exit(EXIT_FAILURE);
}

} // namespace

void install_message_window(const QString& title)
{
    error_window().title = title;
    set_message_box(show_box);
}

void show_run_time_error(const RunTimeError& error)
{
    const QString number = own_word(Word::run_time_error).arg(error.number());
    MsgBox(number + QStringLiteral("\n\n") + error.text(), message_box_information, error_window().title);
}

void set_fatal_error_handler(FatalErrorHandler handler)
{
    error_window().handler = std::move(handler);
}

void fatal_run_time_error(const RunTimeError& error)
{
    if (error_window().handler)
        error_window().handler(error);
    else
        show_and_end(error);
}
