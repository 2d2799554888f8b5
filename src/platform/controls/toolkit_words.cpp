#include "platform/controls/toolkit_words.h"

#include "platform/language.h"

#include <QCoreApplication>
#include <QTranslator>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

QString translation_name(Language language)
{
    switch (language) {
    case korean:
        return u"qtbase_ko"_s;
    case german:
        return u"qtbase_de"_s;
    case english:
        break;
    }
    return {};
}

} // namespace

void translate_toolkit(const QString& folder)
{
    static QTranslator translator; // the application drops it by itself when it ends first
    QCoreApplication::removeTranslator(&translator);
    const QString name = translation_name(program_language());
    if (!name.isEmpty() && translator.load(name, folder))
        QCoreApplication::installTranslator(&translator);
}
