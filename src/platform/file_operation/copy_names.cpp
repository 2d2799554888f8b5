#include "platform/file_operation/copy_names.h"

#include "platform/own_words.h"

#include <cerrno>

using namespace Qt::StringLiterals;

namespace {

QString copy_name(const QString& stem, int number)
{
    QString name = own_word(number == 1 ? Word::copy_of : Word::copy_of_numbered);
    if (number > 1)
        name.replace(u"%2"_s, QString::number(number));
    return name.replace(u"%1"_s, stem);
}

} // namespace

std::optional<DiskPlace> free_copy_place(const DiskPlace& source, bool is_folder)
{
    const qsizetype name_start = source.shown.lastIndexOf(u'\\') + 1;
    const qsizetype dot = is_folder ? -1 : source.shown.lastIndexOf(u'.');
    const qsizetype name_end = dot > name_start ? dot : source.shown.size();
    const QString stem = source.shown.sliced(name_start, name_end - name_start);
    const QString ending = source.shown.sliced(name_end);
    for (int number = 1;; ++number) {
        const DiskPlace place = DiskPlace::of(source.shown.first(name_start) + copy_name(stem, number) + ending);
        if (status_of(place.native))
            continue;
        // What is too long a name stands nowhere either.
        const bool is_free = errno == ENOENT || errno == ENAMETOOLONG;
        return is_free ? std::optional(place) : std::nullopt;
    }
}
