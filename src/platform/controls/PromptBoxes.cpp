#include "platform/controls/PromptBoxes.h"

#include "platform/controls/OverwriteDialog.h"
#include "platform/controls/front_window.h"
#include "platform/display_text.h"
#include "platform/own_words.h"

#include <QApplication>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

struct Choice
{
    QMessageBox::StandardButton button;
    Word caption;
};

/// Shows a modal dialog that may go together with the window behind it; gives its result, 0 when it went.
template<typename Dialog> int result_of(Dialog* dialog)
{
    const QPointer<Dialog> shown = dialog;
    // Work under way shows the wait cursor on every window, but this one waits for the person.
    QApplication::setOverrideCursor(Qt::ArrowCursor);
    const int result = shown->exec();
    QApplication::restoreOverrideCursor();
    delete shown;
    return result;
}

/// The button that the person pressed; NoButton when the box went without an answer.
int ask(QMessageBox::Icon icon, Word title, const QString& text, const QList<Choice>& choices,
        QMessageBox::StandardButton first, QMessageBox::StandardButton escape)
{
    auto* box = new QMessageBox(icon, own_word(title), QString(), QMessageBox::NoButton, front_window());
    box->setTextFormat(Qt::PlainText);
    box->setText(breakable_text(text));
    for (const Choice& choice : choices)
        box->addButton(choice.button)->setText(own_word(choice.caption));
    box->setDefaultButton(first);
    box->setEscapeButton(escape);
    return result_of(box);
}

QString question(const QStringList& paths, Word of_one, Word of_several)
{
    if (paths.size() != 1)
        return own_word(of_several).arg(paths.size());
    const QString& path = paths.first();
    return own_word(of_one).arg(display_text(path.sliced(path.lastIndexOf(u'\\') + 1)));
}

} // namespace

FilePrompts::Overwrite PromptBoxes::ask_overwrite(const FileFacts& source, const FileFacts& target)
{
    switch (result_of(new OverwriteDialog(source, target, front_window()))) {
    case QDialogButtonBox::Yes:
        return Overwrite::yes;
    case QDialogButtonBox::YesToAll:
        return Overwrite::yes_to_all;
    case QDialogButtonBox::No:
        return Overwrite::no;
    case QDialogButtonBox::NoToAll:
        return Overwrite::no_to_all;
    default:
        return Overwrite::cancel;
    }
}

FilePrompts::OnError PromptBoxes::ask_error(const QString& path, const QString& reason, bool more_follow)
{
    const QString text = own_word(Word::error_with).arg(display_text(path)) + u"\n\n"_s + reason;
    if (!more_follow) {
        ask(QMessageBox::Warning, Word::title_error, text, {{QMessageBox::Ok, Word::button_ok}}, QMessageBox::Ok,
            QMessageBox::Ok);
        return OnError::skip;
    }
    const int answer = ask(QMessageBox::Warning, Word::title_error, text,
                           {{QMessageBox::Ignore, Word::button_skip}, {QMessageBox::Cancel, Word::button_cancel}},
                           QMessageBox::Ignore, QMessageBox::Cancel);
    return answer == QMessageBox::Ignore ? OnError::skip : OnError::cancel;
}

bool PromptBoxes::ask_trash(const QStringList& paths)
{
    return ask(QMessageBox::Question, Word::title_trash, question(paths, Word::ask_trash_one, Word::ask_trash_several),
               {{QMessageBox::Yes, Word::button_yes}, {QMessageBox::No, Word::button_no}}, QMessageBox::Yes,
               QMessageBox::No) == QMessageBox::Yes;
}

bool PromptBoxes::ask_delete(const QStringList& paths)
{
    return ask(QMessageBox::Warning, Word::title_delete,
               question(paths, Word::ask_delete_one, Word::ask_delete_several),
               {{QMessageBox::Yes, Word::button_yes}, {QMessageBox::No, Word::button_no}}, QMessageBox::No,
               QMessageBox::No) == QMessageBox::Yes;
}
