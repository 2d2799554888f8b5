#include "frame/mnemonics.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// Where in `caption` its letter stands, which is then added to `taken`; the end of it when it has none.
QString::const_iterator take_letter(const QString& caption, QString& taken)
{
    const auto letter = std::ranges::find_if(caption, [&taken](QChar character) {
        return character.unicode() < 0x80 && character.isLetterOrNumber() &&
               !taken.contains(character, Qt::CaseInsensitive);
    });
    if (letter != caption.end())
        taken.append(*letter);
    return letter;
}

} // namespace

QStringList with_mnemonics(const QStringList& captions)
{
    QString taken;
    QStringList marked;
    for (const QString& caption : captions) {
        const auto letter = take_letter(caption, taken);
        QString text;
        for (auto character = caption.begin(); character != caption.end(); ++character) {
            if (character == letter || *character == u'&')
                text.append(u'&');
            text.append(*character);
        }
        marked.append(text);
    }
    return marked;
}

QString without_mnemonic(const QString& text)
{
    QString caption;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == u'&' && ++i == text.size())
            break;
        caption.append(text[i]);
    }
    return caption;
}
