#include "platform/drive_letters.h"

#include "platform/file_names.h"
#include "platform/own_words.h"

#include <algorithm>
#include <set>

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView free_letters = u"DEFGIJKLNOPQRSTUVWXYZ";

bool is_optical(const BlockDevice& device)
{
    return device.name.startsWith("sr");
}

QByteArray node_of(const BlockDevice& device)
{
    return "/dev/" + device.name;
}

/// The block device that holds a node: itself or one of its partitions is the node.
const BlockDevice* holder_of(const Machine& machine, const QByteArray& node)
{
    const auto holds = [&node](const BlockDevice& device) {
        const auto is_node = [&node](const QByteArray& partition) { return node == "/dev/" + partition; };
        return node == node_of(device) || std::ranges::any_of(device.partitions, is_node);
    };
    const auto device = std::ranges::find_if(machine.block_devices, holds);
    return device == machine.block_devices.end() ? nullptr : &*device;
}

bool is_local_volume(const MountedVolume& mount)
{
    // The root of a btrfs mount is the name of a subvolume; elsewhere it tells that only a folder is mounted.
    const bool is_whole = mount.root == "/" || mount.type == "btrfs";
    return mount.source.startsWith("/dev/") && mount.source != "/dev/fuse" && !mount.is_network && !mount.is_pseudo &&
           mount.type != "squashfs" && is_whole && mount.is_folder && mount.mount_point != "/";
}

/// The label of a volume, or the name of the folder that it is mounted on.
QString volume_name(const Machine& machine, const MountedVolume& mount)
{
    const auto label = machine.labels.find(mount.source);
    if (label != machine.labels.end())
        return label->second;
    return name_from_bytes(mount.mount_point.sliced(mount.mount_point.lastIndexOf('/') + 1));
}

/// The drives, still without letters, of the mounted volumes other than the root's and those of optical drives.
std::vector<Drive> volume_drives(const Machine& machine)
{
    std::set<quint64> seen;
    for (const MountedVolume& mount : machine.mounts) {
        if (mount.mount_point == "/")
            seen.insert(mount.number);
    }
    std::vector<Drive> volumes;
    for (const MountedVolume& mount : machine.mounts) {
        const BlockDevice* const device = holder_of(machine, mount.source);
        if (!is_local_volume(mount) || (device != nullptr && is_optical(*device)) || !seen.insert(mount.number).second)
            continue;
        const bool removable = device != nullptr && device->is_removable;
        volumes.push_back({.DriveLetter = {},
                           .Type = removable ? DriveType::removable : DriveType::fixed,
                           .VolumeName = volume_name(machine, mount),
                           .IsReady = true,
                           .mount_point = mount.mount_point,
                           .device = mount.source});
    }
    return volumes;
}

Drive optical_drive(const Machine& machine, const BlockDevice& device)
{
    Drive drive{.DriveLetter = {},
                .Type = DriveType::cd,
                .VolumeName = {},
                .IsReady = device.has_disc,
                .mount_point = {},
                .device = node_of(device)};
    const auto is_disc = [&drive](const MountedVolume& mount) {
        return mount.source == drive.device && is_local_volume(mount);
    };
    const auto disc = std::ranges::find_if(machine.mounts, is_disc);
    if (disc != machine.mounts.end()) {
        drive.VolumeName = volume_name(machine, *disc);
        drive.IsReady = true;
        drive.mount_point = disc->mount_point;
    }
    return drive;
}

/// The drives, still without letters, of all optical drives, by their numbers.
std::vector<Drive> optical_drives(const Machine& machine)
{
    std::vector<Drive> drives;
    for (const BlockDevice& device : machine.block_devices) {
        if (is_optical(device))
            drives.push_back(optical_drive(machine, device));
    }
    std::ranges::sort(drives, [](const Drive& a, const Drive& b) {
        return a.device.size() != b.device.size() ? a.device.size() < b.device.size() : a.device < b.device;
    });
    return drives;
}

Drive folder_drive(QChar letter, const QString& name, const QByteArray& folder)
{
    return {.DriveLetter = letter,
            .Type = DriveType::fixed,
            .VolumeName = name,
            .IsReady = true,
            .mount_point = folder,
            .device = {}};
}

} // namespace

std::vector<Drive> lettered_drives(const Machine& machine)
{
    const auto letters = static_cast<std::size_t>(free_letters.size());
    std::vector<Drive> optical = optical_drives(machine);
    optical.resize(std::min(optical.size(), letters));
    std::vector<Drive> drives = volume_drives(machine);
    drives.resize(std::min(drives.size(), letters - optical.size()));
    drives.insert(drives.end(), optical.begin(), optical.end());
    for (std::size_t place = 0; place < drives.size(); ++place)
        drives[place].DriveLetter = free_letters[static_cast<qsizetype>(place)];

    drives.push_back(folder_drive(u'C', own_word(Word::drive_root_name), "/"));
    if (!machine.home.isEmpty())
        drives.push_back(folder_drive(u'H', own_word(Word::drive_home_name), machine.home));
    if (!machine.music.isEmpty() && machine.music != machine.home)
        drives.push_back(folder_drive(u'M', own_word(Word::drive_music_name), machine.music));
    std::ranges::sort(drives, {}, &Drive::DriveLetter);
    return drives;
}

QString decoded_label(const QByteArray& spelling)
{
    QByteArray label;
    for (qsizetype place = 0; place < spelling.size(); ++place) {
        const QByteArray code = spelling.mid(place, 4);
        const bool may_be_code = code.size() == 4 && code.startsWith("\\x");
        bool is_code = false;
        const unsigned byte = may_be_code ? code.sliced(2).toUInt(&is_code, 16) : 0U;
        label += is_code ? static_cast<char>(byte) : code[0];
        place += is_code ? 3 : 0;
    }
    return QString::fromUtf8(label);
}
