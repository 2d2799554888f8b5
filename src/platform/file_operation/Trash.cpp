#include "platform/file_operation/Trash.h"

#include "platform/file_operation/disk_entry.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <memory>

namespace {

constexpr qsizetype longest_name = 220; ///< bytes of a name; leaves room for a number and the ending of its note

/// The absolute path of an entry, without links on the way to it. Empty where there is none.
QByteArray real_path(const QByteArray& native)
{
    const DiskPlace place{.native = native, .shown = {}};
    const std::unique_ptr<char, decltype(&std::free)> folder(realpath(place.folder().constData(), nullptr), std::free);
    if (folder == nullptr)
        return {};
    return DiskPlace{.native = QByteArray(folder.get()), .shown = {}}.child(place.name()).native;
}

bool is_own_folder(const QByteArray& native)
{
    const std::optional<struct stat> status = status_of(native);
    return status && S_ISDIR(status->st_mode) && status->st_uid == geteuid();
}

/// Makes a folder for nobody but the user, with those above it.
void make_folders(const QByteArray& native)
{
    if (mkdir(native.constData(), S_IRWXU) == 0 || errno != ENOENT)
        return;
    make_folders(DiskPlace{.native = native, .shown = {}}.folder());
    mkdir(native.constData(), S_IRWXU);
}

/// Whether things can be put into a trash; makes its two folders where they are missing.
bool can_take(const QByteArray& trash)
{
    for (const char* const name : {"/files", "/info"}) {
        const QByteArray folder = trash + name;
        mkdir(folder.constData(), S_IRWXU);
        const std::optional<struct stat> status = status_of(folder);
        if (!status || !S_ISDIR(status->st_mode) ||
            faccessat(AT_FDCWD, folder.constData(), W_OK | X_OK, AT_EACCESS) != 0)
            return false;
    }
    return true;
}

/// The folder at a volume's root that an administrator has made for the trash of all users.
bool is_common_folder(const QByteArray& native)
{
    const std::optional<struct stat> status = status_of(native);
    return status && S_ISDIR(status->st_mode) && (status->st_mode & S_ISVTX) != 0;
}

/// The name that a trash gives to the `number`th thing of one name.
QByteArray trash_name(const QByteArray& name, int number)
{
    constexpr unsigned char kind_bits = 0xC0;
    constexpr unsigned char continuation = 0x80;
    qsizetype end = std::min(name.size(), longest_name);
    while (end < name.size() && end > 0 && (static_cast<unsigned char>(name[end]) & kind_bits) == continuation)
        --end;
    const QByteArray short_name = name.first(end);
    return number == 1 ? short_name : short_name + '.' + QByteArray::number(number);
}

QByteArray note_of(const QByteArray& place)
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    std::array<char, 32> date{};
    const std::size_t length = std::strftime(date.data(), date.size(), "%Y-%m-%dT%H:%M:%S", &local);
    return "[Trash Info]\nPath=" + place.toPercentEncoding("/") +
           "\nDeletionDate=" + QByteArray(date.data(), static_cast<qsizetype>(length)) + '\n';
}

/// Writes a new file. Gives 0 or an error number; after an error there is none.
int write_note(const QByteArray& native, const QByteArray& note, const FileCalls& calls)
{
    constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    const Descriptor file(open(native.constData(), flags, S_IRUSR | S_IWUSR));
    if (!file.is_open())
        return errno;
    const ssize_t written = calls.write(file.number(), note.constData(), static_cast<std::size_t>(note.size()), 0);
    if (written == note.size())
        return 0;
    unlink(native.constData());
    return written < 0 ? static_cast<int>(-written) : ENOSPC;
}

} // namespace

Trash::Answer Trash::take(const QByteArray& native)
{
    const QByteArray real = real_path(native);
    const QByteArray volume = calls_.volume_root(native);
    if (real.isEmpty() || volume.isEmpty())
        return {.outcome = Outcome::failed, .error = ENOENT};
    // What another volume is mounted on is held by the system.
    if (volume == real)
        return {.outcome = Outcome::failed, .error = EBUSY};
    for (const Store& store : stores_of(volume)) {
        const Answer answer = put(store, native, real);
        if (answer.outcome != Outcome::no_trash)
            return answer;
    }
    return {.outcome = Outcome::no_trash};
}

const std::vector<Trash::Store>& Trash::stores_of(const QByteArray& volume)
{
    if (const auto known = stores_.constFind(volume); known != stores_.constEnd())
        return known.value();
    const std::optional<QByteArray> home = home_folder();
    std::vector<Store> stores;
    if (home && calls_.volume_root(*home + "/files") == volume) {
        if (can_take(*home))
            stores.push_back({.folder = *home, .base = {}});
        return *stores_.insert(volume, stores);
    }
    const QByteArray user = QByteArray::number(geteuid());
    const QByteArray root = volume == "/" ? QByteArray() : volume;
    std::vector<QByteArray> folders;
    if (is_common_folder(root + "/.Trash"))
        folders.push_back(root + "/.Trash/" + user);
    folders.push_back(root + "/.Trash-" + user);
    for (const QByteArray& folder : folders) {
        mkdir(folder.constData(), S_IRWXU);
        if (is_own_folder(folder) && can_take(folder))
            stores.push_back({.folder = folder, .base = root + '/'});
    }
    return *stores_.insert(volume, stores);
}

/// The trash in the user's data folder, made where it is missing.
std::optional<QByteArray> Trash::home_folder()
{
    QByteArray data = qgetenv("XDG_DATA_HOME");
    if (!data.startsWith('/')) {
        const QByteArray home = qgetenv("HOME");
        if (!home.startsWith('/'))
            return std::nullopt;
        data = home + "/.local/share";
    }
    const QByteArray folder = data + "/Trash";
    make_folders(folder);
    mkdir((folder + "/files").constData(), S_IRWXU);
    return folder;
}

/// The note comes first, so that nothing ever lies in the trash without a word of where it belongs.
Trash::Answer Trash::put(const Store& store, const QByteArray& native, const QByteArray& real)
{
    const QByteArray name = DiskPlace{.native = native, .shown = {}}.name();
    const QByteArray note = note_of(store.base.isEmpty() ? real : real.sliced(store.base.size()));
    int& number = numbers_[store.folder + '/' + name];
    while (true) {
        const QByteArray new_name = trash_name(name, ++number);
        const QByteArray note_file = store.folder + "/info/" + new_name + ".trashinfo";
        int error = write_note(note_file, note, calls_);
        if (error == EEXIST)
            continue;
        if (error != 0)
            return {.outcome = Outcome::no_trash};
        error = rename_without_replacing(native, store.folder + "/files/" + new_name, calls_.rename);
        if (error == 0)
            return {.outcome = Outcome::taken};
        unlink(note_file.constData());
        if (error == EXDEV || error == EINVAL)
            return {.outcome = Outcome::no_trash};
        if (error != EEXIST)
            return {.outcome = Outcome::failed, .error = error};
    }
}
