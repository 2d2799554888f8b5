#include "companion/Journal.h"

#include "platform/uninterrupted.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <ctime>

namespace {

/// The folder for what programs keep of their runs; empty when the user has none.
QByteArray state_folder()
{
    const QByteArray told = qgetenv("XDG_STATE_HOME");
    if (told.startsWith('/'))
        return told;
    const QByteArray home = qgetenv("HOME");
    return home.startsWith('/') ? home + "/.local/state" : QByteArray();
}

/// Makes the folders of a path that are missing, for the user alone, and brings their entries to the disk.
void make_folders(const QByteArray& path)
{
    for (qsizetype end = path.indexOf('/', 1); end >= 0; end = path.indexOf('/', end + 1)) {
        const QByteArray folder = path.first(end);
        if (mkdir(folder.constData(), S_IRWXU) == 0) {
            const Descriptor parent(open_folder(AT_FDCWD, folder.first(folder.lastIndexOf('/') + 1)));
            if (parent.is_open() && uninterrupted([&] { return fsync(parent.number()); }) == 0)
                continue;
        } else if (errno == EEXIST) {
            continue;
        }
        throw JournalError{.path = folder, .text = "cannot be made: " + error_text(errno)};
    }
}

QByteArray time_text()
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    std::array<char, 32> text{};
    localtime_r(&now, &local);
    return {text.data(), static_cast<qsizetype>(std::strftime(text.data(), text.size(), "%Y-%m-%d-%H%M%S", &local))};
}

} // namespace

QByteArray default_journal()
{
    const QByteArray state = state_folder();
    if (state.isEmpty())
        throw JournalError{.path = "--journal", .text = "there is no home folder to put a journal into; say where"};
    const QByteArray wanted = state + "/quilmo/journal-" + time_text();
    make_folders(wanted);
    return wanted;
}
