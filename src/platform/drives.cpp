#include "platform/drives.h"

#include "platform/drive_letters.h"
#include "platform/file_names.h"
#include "platform/late_library.h"

#include <QFile>
#include <QStandardPaths>

#include <fcntl.h>
#include <libmount.h>
#include <linux/cdrom.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// A function of libmount, nothing where the system has no libmount.
template<typename Function> Function loaded(const char* name)
{
    return late_function<Function>(u"mount"_s, 1, name);
}

struct Libmount
{
    decltype(&mnt_new_table) new_table = loaded<decltype(new_table)>("mnt_new_table");
    decltype(&mnt_unref_table) unref_table = loaded<decltype(unref_table)>("mnt_unref_table");
    decltype(&mnt_table_parse_file) table_parse_file = loaded<decltype(table_parse_file)>("mnt_table_parse_file");
    decltype(&mnt_new_iter) new_iter = loaded<decltype(new_iter)>("mnt_new_iter");
    decltype(&mnt_free_iter) free_iter = loaded<decltype(free_iter)>("mnt_free_iter");
    decltype(&mnt_table_next_fs) table_next_fs = loaded<decltype(table_next_fs)>("mnt_table_next_fs");
    decltype(&mnt_fs_get_source) fs_get_source = loaded<decltype(fs_get_source)>("mnt_fs_get_source");
    decltype(&mnt_fs_get_target) fs_get_target = loaded<decltype(fs_get_target)>("mnt_fs_get_target");
    decltype(&mnt_fs_get_root) fs_get_root = loaded<decltype(fs_get_root)>("mnt_fs_get_root");
    decltype(&mnt_fs_get_fstype) fs_get_fstype = loaded<decltype(fs_get_fstype)>("mnt_fs_get_fstype");
    decltype(&mnt_fs_get_devno) fs_get_devno = loaded<decltype(fs_get_devno)>("mnt_fs_get_devno");
    decltype(&mnt_fs_is_netfs) fs_is_netfs = loaded<decltype(fs_is_netfs)>("mnt_fs_is_netfs");
    decltype(&mnt_fs_is_pseudofs) fs_is_pseudofs = loaded<decltype(fs_is_pseudofs)>("mnt_fs_is_pseudofs");
};

/// libmount, loaded when drives are first asked for: with what it needs itself it takes a part of the start, and the
/// splash shows no drives.
const Libmount& libmount()
{
    static const Libmount functions;
    return functions;
}

/// The names in a folder of the system; none where it can't be read.
std::vector<QByteArray> names_in(const QByteArray& folder)
{
    std::vector<QByteArray> names;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder.toStdString(), error), end; !error && entry != end;
         entry.increment(error))
        names.push_back(QByteArray::fromStdString(entry->path().filename().string()));
    return names;
}

bool is_folder(const QByteArray& path)
{
    struct stat status
    {
    };
    return stat(path.constData(), &status) == 0 && S_ISDIR(status.st_mode);
}

/// The node that a path under /dev means, links followed; the path itself where there is none.
QByteArray real_node(const QByteArray& path)
{
    std::array<char, PATH_MAX> resolved{};
    return realpath(path.constData(), resolved.data()) == nullptr ? path : QByteArray(resolved.data());
}

MountedVolume mounted_volume(libmnt_fs* mount)
{
    MountedVolume volume{.source = libmount().fs_get_source(mount),
                         .mount_point = libmount().fs_get_target(mount),
                         .root = libmount().fs_get_root(mount),
                         .type = libmount().fs_get_fstype(mount),
                         .number = libmount().fs_get_devno(mount),
                         .is_network = libmount().fs_is_netfs(mount) == 1,
                         .is_pseudo = libmount().fs_is_pseudofs(mount) == 1};
    if (volume.source.startsWith("/dev/"))
        volume.source = real_node(volume.source);
    return volume;
}

/// The mount table, in mount order. No mounted file system is touched.
std::vector<MountedVolume> mount_table()
{
    std::vector<MountedVolume> volumes;
    if (libmount().new_table == nullptr)
        return volumes;
    const std::unique_ptr<libmnt_table, decltype(&mnt_unref_table)> table(libmount().new_table(),
                                                                          libmount().unref_table);
    const std::unique_ptr<libmnt_iter, decltype(&mnt_free_iter)> iterator(libmount().new_iter(MNT_ITER_FORWARD),
                                                                          libmount().free_iter);
    if (!table || !iterator || libmount().table_parse_file(table.get(), "/proc/self/mountinfo") != 0)
        return volumes;
    libmnt_fs* mount = nullptr;
    while (libmount().table_next_fs(table.get(), iterator.get(), &mount) == 0)
        volumes.push_back(mounted_volume(mount));
    return volumes;
}

bool holds_readable_disc(const QByteArray& node)
{
    const int descriptor = open(node.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0)
        return false;
    const int status = ioctl(descriptor, CDROM_DRIVE_STATUS, CDSL_CURRENT);
    close(descriptor);
    return status == CDS_DISC_OK;
}

BlockDevice block_device(const QByteArray& name)
{
    const QByteArray folder = "/sys/block/" + name;
    BlockDevice device;
    device.name = name;
    for (const QByteArray& entry : names_in(folder)) {
        if (QFile::exists(QFile::decodeName(folder + '/' + entry + "/partition")))
            device.partitions.push_back(entry);
    }
    QFile removable(QFile::decodeName(folder + "/removable"));
    device.is_removable = removable.open(QIODevice::ReadOnly) && removable.readAll().trimmed() == "1";
    device.has_disc = name.startsWith("sr") && holds_readable_disc("/dev/" + name);
    return device;
}

std::map<QByteArray, QString> volume_labels()
{
    const QByteArray folder = "/dev/disk/by-label/";
    std::map<QByteArray, QString> labels;
    for (const QByteArray& name : names_in(folder))
        labels.emplace(real_node(folder + name), decoded_label(name));
    return labels;
}

QByteArray folder_or_none(const QByteArray& path)
{
    const QByteArray clean = path.size() > 1 && path.endsWith('/') ? path.chopped(1) : path;
    return is_folder(clean) ? clean : QByteArray();
}

Machine this_machine()
{
    Machine machine;
    machine.mounts = mount_table();
    for (MountedVolume& mount : machine.mounts) {
        // A network mount that has died would hang here, so nothing but local storage is asked.
        if (mount.source.startsWith("/dev/") && !mount.is_network && !mount.is_pseudo)
            mount.is_folder = is_folder(mount.mount_point);
    }
    for (const QByteArray& name : names_in("/sys/block"))
        machine.block_devices.push_back(block_device(name));
    machine.labels = volume_labels();
    machine.home = folder_or_none(qgetenv("HOME"));
    machine.music = folder_or_none(QFile::encodeName(QStandardPaths::writableLocation(QStandardPaths::MusicLocation)));
    return machine;
}

std::optional<std::vector<Drive>>& kept_drives()
{
    static std::optional<std::vector<Drive>> kept;
    return kept;
}

} // namespace

const std::vector<Drive>& drives()
{
    std::optional<std::vector<Drive>>& kept = kept_drives();
    if (!kept)
        kept = drives_of_this_machine();
    return *kept;
}

void set_drives(std::vector<Drive> drives)
{
    kept_drives() = std::move(drives);
}

QByteArray mount_point_of(const QByteArray& device)
{
    for (const MountedVolume& mount : mount_table()) {
        if (mount.source == device && mount.root == "/")
            return mount.mount_point;
    }
    return {};
}

std::vector<Drive> drives_of_this_machine()
{
    return lettered_drives(this_machine());
}
