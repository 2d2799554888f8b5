#include "platform/language.h"

namespace {

Language language_of_run = english;

} // namespace

Language program_language()
{
    return language_of_run;
}

void set_program_language(Language language)
{
    language_of_run = language;
}

QLocale program_locale()
{
    const QLocale of_desktop = QLocale::system();
    switch (program_language()) {
    case korean:
        return of_desktop.language() == QLocale::Korean ? of_desktop : QLocale(QLocale::Korean);
    case german:
        return of_desktop.language() == QLocale::German ? of_desktop : QLocale(QLocale::German);
    case english:
        break;
    }
    return of_desktop;
}
