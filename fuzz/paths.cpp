// Names and paths between the disk and the program: no byte is lost, and no path leaves its drive.

#include "platform/paths.h"
#include "fixed_drive.h"
#include "platform/drive_letters.h"
#include "platform/drives.h"
#include "platform/file_address.h"
#include "platform/file_names.h"
#include "support.h"

#include <QByteArrayList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// Drives within drives, one of them in a folder whose name is no UTF-8, and one that holds no medium.
void set_some_drives()
{
    set_drives({fixed_drive(u"C"_s, "/"), fixed_drive(u"D"_s, "/media/disk"), fixed_drive(u"E"_s, "/media/disk/\xFF"),
                fixed_drive(u"F"_s, {}), fixed_drive(u"H"_s, "/home/user")});
}

bool can_be_a_name(QByteArrayView bytes)
{
    return !bytes.empty() && bytes != "." && bytes != ".." && !bytes.contains('/') && !bytes.contains('\0');
}

void check_names(QByteArrayView bytes, const QString& text)
{
    const QString name = name_from_bytes(bytes);
    require(!name.contains(u'\\'), "no name from the disk holds a backslash");
    if (can_be_a_name(bytes))
        require(name_to_bytes(name) == bytes, "the bytes of a name survive");
    else
        require(name_to_bytes(name).isEmpty(), "what can be no name on disk is none");

    const QByteArray made = name_to_bytes(text);
    require(made.isEmpty() || can_be_a_name(made), "a text becomes a name on disk, or none");
    require(made.isEmpty() || name_to_bytes(name_from_bytes(made)) == made, "a name made of a text survives");
    QByteArray path = "/folder/";
    require(append_name(path, text) != made.isEmpty() && (made.isEmpty() || path == "/folder/" + made),
            "a name is added to a path as it stands alone");
}

void check_program_path(const QString& path)
{
    const QByteArray native = native_path(path);
    const QByteArray address = file_address(path);
    require(native.isEmpty() == address.isEmpty(), "a path with a place on disk has an address");
    if (native.isEmpty())
        return;

    const auto has_letter = [&path](const Drive& one) { return one.DriveLetter == path[0]; };
    const auto holder = std::ranges::find_if(drives(), has_letter);
    require(holder != drives().end() && !holder->mount_point.isEmpty(), "a path on disk lies on a drive");
    const QByteArray root = holder->mount_point == "/" ? QByteArray() : holder->mount_point;
    require(native.startsWith(root), "a path lies below its drive's root");
    QByteArray below = native.sliced(root.size());
    if (below == "/" && root.isEmpty())
        below.clear();
    require(below.isEmpty() || below.startsWith('/'), "a path goes down from its drive's root");
    const QByteArrayList names = below.isEmpty() ? QByteArrayList() : below.sliced(1).split('/');
    require(std::ranges::all_of(names, can_be_a_name), "a path on disk is made of names alone");
    const qsizetype backslashes = path.count(u'\\') - (path.endsWith(u'\\') ? 1 : 0);
    require(names.size() == backslashes, "each backslash is one step down");

    require(native_path(program_path(native)) == native, "a path on disk survives");
    require(address.startsWith("file:///") && QByteArray::fromPercentEncoding(address.sliced(7)) == native,
            "an address holds every byte of its path");
    const auto is_plain = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               QByteArrayView("-._~/:%").contains(c);
    };
    require(std::ranges::all_of(address, is_plain), "an address is made of plain characters");
}

void check_disk_path(const QByteArray& native)
{
    const QString path = program_path(native);
    QByteArrayList names = native.split('/');
    names.removeAll({});
    const bool leads_about = names.contains(".") || names.contains("..");
    // The root of the file system is a drive.
    require(path.isEmpty() == (!native.startsWith('/') || leads_about), "every plain path on disk is one of a drive");
    if (!path.isEmpty() && !native.contains('\0'))
        require(native_path(path) == '/' + names.join('/'), "a path on disk comes back without needless slashes");
}

/// A machine with a volume for each line: "source mount-point type device partition label".
void check_letters(QByteArrayView input)
{
    constexpr std::size_t most_volumes = 40;
    Machine machine;
    while (!input.empty() && machine.mounts.size() < most_volumes) {
        const QByteArrayList words = take_line(input).toByteArray().split(' ');
        MountedVolume mount;
        mount.source = words.value(0);
        mount.mount_point = words.value(1);
        mount.type = words.value(2);
        mount.number = static_cast<quint64>(mount.source.size());
        machine.mounts.push_back(mount);
        machine.block_devices.push_back({.name = words.value(3), .partitions = {words.value(4)}});
        machine.labels.emplace(mount.source, decoded_label(words.value(5)));
    }
    char16_t last = u'A' - 1;
    for (const Drive& one : lettered_drives(machine)) {
        require(one.DriveLetter.size() == 1 && one.DriveLetter[0] > last, "letters are in order, each given once");
        last = one.DriveLetter[0].unicode();
        require(last <= u'Z', "a letter is a capital one");
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const bool ready = (set_some_drives(), true);
    const QByteArrayView bytes = bytes_of(data, size);
    const QString text = any_text(bytes);
    check_names(bytes, text);
    check_program_path(text);
    for (const Drive& one : drives())
        check_program_path(one.DriveLetter + u":\\"_s + text);
    check_disk_path(bytes.toByteArray());
    check_disk_path("/media/disk/" + bytes.toByteArray());
    check_letters(bytes);
    return ready ? 0 : -1;
}
