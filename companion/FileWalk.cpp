#include "companion/FileWalk.h"

#include "companion/NameList.h"
#include "fif/fif_name.h"
#include "platform/file_operation/disk_entry.h"

#include <QHash>

#include <dirent.h>
#include <sys/stat.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <utility>

namespace {

bool is_music(QByteArrayView name)
{
    return QLatin1StringView(name).endsWith(music_name_ending, Qt::CaseInsensitive);
}

QByteArray real_path(const QByteArray& path)
{
    const std::unique_ptr<char, decltype(&std::free)> real(realpath(path.constData(), nullptr), std::free);
    return {real.get()};
}

QByteArray with_slash(const QByteArray& path)
{
    return path.endsWith('/') ? path : path + '/';
}

QByteArray without_slash(const QByteArray& path)
{
    return path.size() > 1 && path.endsWith('/') ? path.chopped(1) : path;
}

quint64 mark_of(const struct stat& status)
{
    return qHashMulti(0, status.st_dev, status.st_ino);
}

/// What an entry of a folder is: DT_REG, DT_DIR or another of the system's types.
unsigned char type_of(const dirent& entry, const QByteArray& folder)
{
    if (entry.d_type != DT_UNKNOWN)
        return entry.d_type;
    const std::optional<struct stat> status = status_of(folder + entry.d_name);
    return status ? static_cast<unsigned char>(IFTODT(status->st_mode)) : entry.d_type;
}

} // namespace

void FileWalk::walk(PathSource& paths)
{
    while (const std::optional<QByteArray> path = paths.next())
        visit(*path);
    if (!paths.error().isEmpty())
        visitor_.failed("standard input", paths.error());
}

/// Whether a path was named before as that of a file, which may have another name by now.
bool FileWalk::was_named(const QByteArray& path)
{
    const qsizetype name_at = path.lastIndexOf('/') + 1;
    return !seen_files_.isEmpty() && enter_parent(path.first(name_at)) &&
           seen_files_.contains(qHash(parent_folder_.native + path.sliced(name_at)));
}

void FileWalk::visit(const QByteArray& path)
{
    if (was_named(path))
        return;
    const std::optional<struct stat> status = status_through_links(path);
    if (!status)
        visitor_.failed(path, std::strerror(errno));
    else if (S_ISREG(status->st_mode))
        visit_file(path);
    else if (!S_ISDIR(status->st_mode))
        visitor_.failed(path, "neither a file nor a folder");
    else if (const QByteArray native = real_path(path); native.isEmpty())
        visitor_.failed(path, std::strerror(errno));
    else
        visit_folders({.native = with_slash(native), .shown = with_slash(path)});
}

void FileWalk::visit_file(const QByteArray& path)
{
    const qsizetype name_at = path.lastIndexOf('/') + 1;
    const QByteArray name = path.sliced(name_at);
    if (!is_music(name)) {
        visitor_.failed(path, "no MP3 file: its name does not end in mp3");
        return;
    }
    if (!enter_parent(path.first(name_at))) {
        visitor_.failed(path, std::strerror(errno));
        return;
    }
    if (seen_folders_.contains(parent_mark_))
        return;
    MusicFile file = {.folder = parent_folder_, .name = name, .is_named = true};
    seen_files_.insert(qHash(file.native()));
    visitor_.file(std::move(file));
}

/// Looks at the folder that a named file lies in; false, with errno set, when that can't be done.
bool FileWalk::enter_parent(const QByteArray& parent)
{
    if (!parent_folder_.native.isEmpty() && parent == parent_folder_.shown)
        return true;
    const QByteArray native = real_path(parent.isEmpty() ? QByteArray(".") : parent);
    const std::optional<struct stat> status = native.isEmpty() ? std::nullopt : status_of(native);
    if (!status)
        return false;
    parent_folder_ = {.native = with_slash(native), .shown = parent};
    parent_mark_ = mark_of(*status);
    return true;
}

void FileWalk::visit_folders(MusicFolder top)
{
    std::vector<MusicFolder> pending{std::move(top)};
    while (!pending.empty()) {
        const MusicFolder folder = std::move(pending.back());
        pending.pop_back();
        visit_folder(folder, pending);
    }
}

void FileWalk::visit_folder(const MusicFolder& folder, std::vector<MusicFolder>& pending)
{
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(opendir(folder.native.constData()), closedir);
    struct stat status = {};
    if (!directory || fstat(dirfd(directory.get()), &status) != 0) {
        visitor_.failed(without_slash(folder.shown), std::strerror(errno));
        return;
    }
    const qsizetype seen_before = seen_folders_.size();
    seen_folders_.insert(mark_of(status));
    if (seen_folders_.size() == seen_before)
        return;

    NameList files;
    NameList folders;
    errno = 0;
    while (const dirent* const entry = readdir(directory.get())) {
        const QByteArrayView name(entry->d_name);
        const unsigned char type = type_of(*entry, folder.native);
        if (type == DT_REG && is_music(name))
            files.add(name);
        else if (type == DT_DIR && name != "." && name != "..")
            folders.add(name);
        errno = 0;
    }
    if (errno != 0)
        visitor_.failed(without_slash(folder.shown), std::strerror(errno));

    files.sort();
    for (qsizetype index = 0; index < files.size(); ++index) {
        MusicFile file = {.folder = folder, .name = files.at(index).toByteArray()};
        if (seen_files_.isEmpty() || !seen_files_.contains(qHash(file.native())))
            visitor_.file(std::move(file));
    }
    visitor_.folder_end();
    folders.sort();
    for (qsizetype index = folders.size(); index > 0; --index) {
        const QByteArray name = folders.at(index - 1).toByteArray();
        pending.push_back({.native = folder.native + name + '/', .shown = folder.shown + name + '/'});
    }
}
