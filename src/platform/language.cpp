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
