#include "scratch_disks.h"

#include "fixed_drive.h"
#include "platform/file_operation/disk_entry.h"
#include "support.h"

#include <QFile>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <filesystem>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 nanoseconds_per_second = 1'000'000'000;

QByteArray content_of(const QByteArray& native, const struct stat& status)
{
    if (S_ISLNK(status.st_mode)) {
        QByteArray leads_to(PATH_MAX, '\0');
        leads_to.truncate(readlink(native.constData(), leads_to.data(), PATH_MAX));
        return leads_to;
    }
    if (!S_ISREG(status.st_mode))
        return {};
    const Descriptor file(open(native.constData(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC));
    QByteArray content(status.st_size, '\0');
    const auto size = static_cast<std::size_t>(content.size());
    require(pread(file.number(), content.data(), size, 0) == content.size(), "a file can be read");
    return content;
}

void remove_all(const QByteArray& native)
{
    std::error_code error;
    std::filesystem::remove_all(native.toStdString(), error);
    require(!error, "the disk can be emptied");
}

void make_folder(const QByteArray& native)
{
    require(mkdir(native.constData(), S_IRWXU) == 0, "a folder can be made");
}

} // namespace

bool lies_in(const QByteArray& path, const QByteArray& top)
{
    return path.startsWith(top) && (path.size() == top.size() || path[top.size()] == '/');
}

QByteArray real_place(const QByteArray& native)
{
    const DiskPlace place{.native = native, .shown = {}};
    const std::unique_ptr<char, decltype(&std::free)> folder(realpath(place.folder().constData(), nullptr), std::free);
    return folder == nullptr || !status_of(native) ? QByteArray() : QByteArray(folder.get()) + '/' + place.name();
}

ScratchDisks::ScratchDisks() : top_(disk_.root())
{
    for (const char* const folder : {"/c", "/d", "/outside", "/home", "/home/.local", "/home/.local/share"})
        make_folder(top_ + folder);
    QFile file(QFile::decodeName(secret()));
    require(file.open(QIODevice::WriteOnly) && file.write("secret") > 0, "a file can be made");
    qputenv("XDG_DATA_HOME", top_ + "/home/.local/share");
    set_drives({fixed_drive(u"C"_s, c()), fixed_drive(u"D"_s, d())});
}

void ScratchDisks::clear() const
{
    for (const QByteArray& folder : {c(), d()}) {
        remove_all(folder);
        make_folder(folder);
    }
    remove_all(home_trash());
}

QByteArray ScratchDisks::d_trash() const
{
    return d() + "/.Trash-" + QByteArray::number(geteuid());
}

QList<Standing> ScratchDisks::all_within() const
{
    QList<Standing> all;
    for (const QByteArray& folder : {c(), d(), home_trash()})
        add_all_below(folder, all);
    return all;
}

QList<Standing> ScratchDisks::all_outside() const
{
    QList<Standing> all;
    add_all_below(top_ + "/outside", all);
    std::vector<QByteArray> names;
    for (const char* const folder : {"", "/home", "/home/.local"})
        require(read_names(top_ + folder, names) == 0, "a folder can be read");
    std::ranges::sort(names);
    for (const QByteArray& name : names)
        all.append({.path = name, .content = {}});
    return all;
}

void ScratchDisks::add_all_below(const QByteArray& folder, QList<Standing>& all) const
{
    std::vector<QByteArray> names;
    read_names(folder, names);
    std::ranges::sort(names);
    for (const QByteArray& name : names) {
        const QByteArray path = folder + '/' + name;
        const auto status = status_of(path);
        require(status.has_value(), "what is listed is there");
        all.append({.path = path,
                    .mode = status->st_mode,
                    .modified = status->st_mtim.tv_sec * nanoseconds_per_second + status->st_mtim.tv_nsec,
                    .content = content_of(path, *status)});
        if (S_ISDIR(status->st_mode))
            add_all_below(path, all);
    }
}

FileCalls ScratchDisks::calls() const
{
    FileCalls calls = FileCalls::of_this_machine();
    calls.sync = [](int) { return 0; };
    calls.volume_root = [this](const QByteArray& native) {
        if (!status_of(native))
            return QByteArray();
        return lies_in(native, d()) ? d() : top_;
    };
    const auto crosses = [this](const QByteArray& a, const QByteArray& b) {
        return lies_in(a, d()) != lies_in(b, d());
    };
    for (RenameCalls::Call* const call : {&calls.rename.rename_no_replace, &calls.rename.link})
        *call = [crosses, of_machine = *call](const QByteArray& a, const QByteArray& b) {
            return crosses(a, b) ? EXDEV : of_machine(a, b);
        };
    return calls;
}
