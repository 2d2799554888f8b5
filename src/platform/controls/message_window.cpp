#include "platform/controls/message_window.h"

#include "platform/MsgBox.h"
#include "platform/own_words.h"

#include <QApplication>
#include <QMessageBox>
#include <QTextBoundaryFinder>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int longest_run = 40; ///< letters of a word that fit into the box
constexpr char16_t zero_width_space = 0x200b;

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

/// `text` with places to break it where a word, such as a long file name, would not fit into the box.
QString breakable(const QString& text)
{
    QString result;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    int run = 0;
    for (qsizetype start = 0, end = finder.toNextBoundary(); end > start; start = end, end = finder.toNextBoundary()) {
        run = text.at(start).isSpace() ? 0 : run + 1;
        if (run > longest_run) {
            result += QChar(zero_width_space);
            run = 1;
        }
        result += QStringView(text).mid(start, end - start);
    }
    return result;
}

void show_box(const QString& text, int /*style*/, const QString& title)
{
    QMessageBox box(QMessageBox::Information, title, breakable(text), QMessageBox::Ok, QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
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
