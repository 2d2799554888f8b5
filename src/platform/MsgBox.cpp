#include "platform/MsgBox.h"

#include <cstdio>
#include <utility>

namespace {

void print_message(const QString& text, int /*style*/, const QString& title)
{
    std::fprintf(stderr, "%s: %s\n", qUtf8Printable(title), qUtf8Printable(text));
}

MessageBoxAnswerer& message_box()
{
    static MessageBoxAnswerer answerer = print_message;
    return answerer;
}

} // namespace

void MsgBox(const QString& text, int style, const QString& title)
{
    message_box()(text, style, title);
}

void set_message_box(MessageBoxAnswerer answerer)
{
    message_box() = answerer ? std::move(answerer) : print_message;
}
