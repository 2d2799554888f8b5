#include "platform/drive_letters.h"
#include "platform/own_words.h"
#include "test_main.h"

#include <QCoreApplication>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// A machine with a root on sda1 and a home and music folder.
Machine plain_machine()
{
    Machine machine;
    machine.mounts = {
        {.source = "sysfs", .mount_point = "/sys", .type = "sysfs", .number = 21, .is_pseudo = true},
        {.source = "/dev/sda1", .mount_point = "/", .type = "ext4", .number = 801},
    };
    machine.block_devices = {{.name = "sda", .partitions = {"sda1", "sda2"}}};
    machine.home = "/home/ann";
    machine.music = "/home/ann/Music";
    return machine;
}

MountedVolume volume(const QByteArray& source, const QByteArray& mount_point, const QByteArray& type, quint64 number)
{
    return {.source = source, .mount_point = mount_point, .type = type, .number = number};
}

BlockDevice empty_optical_drive(const QByteArray& name)
{
    return {.name = name, .partitions = {}, .is_removable = true};
}

QString letters_of(const std::vector<Drive>& drives)
{
    QString letters;
    for (const Drive& drive : drives)
        letters += drive.DriveLetter;
    return letters;
}

const Drive& drive_of(const std::vector<Drive>& drives, const QString& letter)
{
    return *std::ranges::find(drives, letter, &Drive::DriveLetter);
}

} // namespace

class TestDrives : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void plain_machine_has_three_drives();
    void home_and_music_only_where_they_are_data();
    void home_and_music_only_where_they_are();
    void no_drives_data();
    void no_drives();
    void usb_stick_is_removable_and_named();
    void volume_without_label_is_named_after_its_folder();
    void device_has_one_letter_by_its_first_mount();
    void btrfs_disk_has_one_letter();
    void volumes_take_free_letters_in_mount_order();
    void letters_run_out_quietly();
    void labels_are_decoded_data();
    void labels_are_decoded();
    void optical_drive_has_a_letter_data();
    void optical_drive_has_a_letter();
    void optical_drives_stand_in_their_order();
    void this_machine_has_its_root_first();
    void other_drives_can_take_their_place();
};

void TestDrives::plain_machine_has_three_drives()
{
    const std::vector<Drive> drives = lettered_drives(plain_machine());

    QCOMPARE(letters_of(drives), u"CHM"_s);
    QCOMPARE(drives[0].VolumeName, own_word(Word::drive_root_name));
    QCOMPARE(drives[1].VolumeName, own_word(Word::drive_home_name));
    QCOMPARE(drives[2].VolumeName, own_word(Word::drive_music_name));
    QCOMPARE(drives[0].mount_point, QByteArray("/"));
    QCOMPARE(drives[1].mount_point, QByteArray("/home/ann"));
    QCOMPARE(drives[2].mount_point, QByteArray("/home/ann/Music"));
    for (const Drive& drive : drives) {
        QCOMPARE(drive.Type, DriveType::fixed);
        QVERIFY(drive.IsReady);
    }
}

void TestDrives::home_and_music_only_where_they_are_data()
{
    QTest::addColumn<QByteArray>("home");
    QTest::addColumn<QByteArray>("music");
    QTest::addColumn<QString>("letters");

    QTest::newRow("neither") << QByteArray() << QByteArray() << u"CD"_s;
    QTest::newRow("a home without music") << QByteArray("/root") << QByteArray() << u"CDH"_s;
    QTest::newRow("music in the home itself") << QByteArray("/root") << QByteArray("/root") << u"CDH"_s;
    QTest::newRow("music without a home") << QByteArray() << QByteArray("/srv/music") << u"CDM"_s;
}

void TestDrives::home_and_music_only_where_they_are()
{
    QFETCH(QByteArray, home);
    QFETCH(QByteArray, music);
    QFETCH(QString, letters);
    Machine machine = plain_machine();
    machine.home = home;
    machine.music = music;
    machine.mounts.push_back(volume("/dev/sdb1", "/media/stick", "vfat", 817));

    QCOMPARE(letters_of(lettered_drives(machine)), letters);
}

void TestDrives::no_drives_data()
{
    QTest::addColumn<MountedVolume>("mount");

    const auto row = [](const char* name, const MountedVolume& mount) { QTest::newRow(name) << mount; };
    row("a snap", volume("/dev/loop3", "/snap/core/1", "squashfs", 703));
    row("a container's overlay", volume("overlay", "/var/lib/docker/overlay2/x/merged", "overlay", 50));
    row("memory", volume("tmpfs", "/run", "tmpfs", 23));
    row("a network folder of Unix",
        {.source = "server:/music", .mount_point = "/mnt/nfs", .type = "nfs4", .number = 52, .is_network = true});
    row("a network folder of Windows",
        {.source = "//server/music", .mount_point = "/mnt/smb", .type = "cifs", .number = 53, .is_network = true});
    row("a network folder by way of ssh", {.source = "ann@server:",
                                           .mount_point = "/home/ann/far",
                                           .type = "fuse.sshfs",
                                           .number = 54,
                                           .is_network = true});
    row("a network block file system",
        {.source = "/dev/drbd0", .mount_point = "/mnt/gfs", .type = "gfs2", .number = 55, .is_network = true});
    row("a user's file system", volume("/dev/fuse", "/run/user/1000/doc", "fuse", 56));
    row("a pseudo file system with a device for its source",
        {.source = "/dev/pts", .mount_point = "/dev/pts", .type = "devpts", .number = 24, .is_pseudo = true});
    row("a file mounted into a container",
        {.source = "/dev/sdb1", .mount_point = "/etc/hosts", .type = "ext4", .number = 817, .is_folder = false});
    row("a folder mounted a second time",
        {.source = "/dev/sdb1", .mount_point = "/srv/x", .root = "/data/x", .type = "ext4", .number = 817});
    row("the root's own device", volume("/dev/sda1", "/mnt/again", "ext4", 801));
}

void TestDrives::no_drives()
{
    QFETCH(MountedVolume, mount);
    Machine machine = plain_machine();
    machine.mounts.push_back(mount);

    QCOMPARE(letters_of(lettered_drives(machine)), u"CHM"_s);
}

void TestDrives::usb_stick_is_removable_and_named()
{
    Machine machine = plain_machine();
    machine.mounts.push_back(volume("/dev/sdb1", "/media/ann/1234-ABCD", "vfat", 817));
    machine.block_devices.push_back({.name = "sdb", .partitions = {"sdb1"}, .is_removable = true});
    machine.labels["/dev/sdb1"] = u"MY MUSIC"_s;

    const Drive stick = drive_of(lettered_drives(machine), u"D"_s);
    QCOMPARE(stick.Type, DriveType::removable);
    QCOMPARE(stick.VolumeName, u"MY MUSIC"_s);
    QCOMPARE(stick.mount_point, QByteArray("/media/ann/1234-ABCD"));
    QVERIFY(stick.IsReady);
}

void TestDrives::volume_without_label_is_named_after_its_folder()
{
    Machine machine = plain_machine();
    machine.mounts.push_back(volume("/dev/sda2", "/srv/big disk", "ext4", 802));

    const Drive disk = drive_of(lettered_drives(machine), u"D"_s);
    QCOMPARE(disk.Type, DriveType::fixed);
    QCOMPARE(disk.VolumeName, u"big disk"_s);
}

void TestDrives::device_has_one_letter_by_its_first_mount()
{
    Machine machine = plain_machine();
    machine.mounts.push_back(volume("/dev/sda2", "/first", "ext4", 802));
    machine.mounts.push_back(volume("/dev/sda2", "/second", "ext4", 802));

    const std::vector<Drive> drives = lettered_drives(machine);
    QCOMPARE(letters_of(drives), u"CDHM"_s);
    QCOMPARE(drive_of(drives, u"D"_s).mount_point, QByteArray("/first"));
}

void TestDrives::btrfs_disk_has_one_letter()
{
    Machine machine = plain_machine();
    machine.mounts[1] = {.source = "/dev/sda1", .mount_point = "/", .root = "/@", .type = "btrfs", .number = 30};
    machine.mounts.push_back(
        {.source = "/dev/sda1", .mount_point = "/home", .root = "/@home", .type = "btrfs", .number = 30});
    machine.mounts.push_back(
        {.source = "/dev/sdb1", .mount_point = "/srv", .root = "/@srv", .type = "btrfs", .number = 31});
    machine.mounts.push_back(
        {.source = "/dev/sdb1", .mount_point = "/opt", .root = "/@opt", .type = "btrfs", .number = 31});

    const std::vector<Drive> drives = lettered_drives(machine);
    QCOMPARE(letters_of(drives), u"CDHM"_s);
    QCOMPARE(drive_of(drives, u"D"_s).mount_point, QByteArray("/srv"));
}

void TestDrives::volumes_take_free_letters_in_mount_order()
{
    Machine machine = plain_machine();
    machine.home.clear();
    machine.music.clear();
    for (quint64 number = 0; number < 10; ++number) {
        const QByteArray name = QByteArray::number(9 - number);
        machine.mounts.push_back(volume("/dev/sdc" + name, "/mnt/" + name, "ext4", 900 + number));
    }

    const std::vector<Drive> drives = lettered_drives(machine);
    // H and M stay free for the home and the music folder.
    QCOMPARE(letters_of(drives), u"CDEFGIJKLNO"_s);
    QCOMPARE(drive_of(drives, u"D"_s).mount_point, QByteArray("/mnt/9"));
    QCOMPARE(drive_of(drives, u"O"_s).mount_point, QByteArray("/mnt/0"));
}

void TestDrives::letters_run_out_quietly()
{
    Machine machine = plain_machine();
    for (quint64 number = 0; number < 25; ++number) {
        const QByteArray name = QByteArray::number(number);
        machine.mounts.push_back(volume("/dev/sdc" + name, "/mnt/" + name, "ext4", 900 + number));
    }
    machine.block_devices.push_back(empty_optical_drive("sr0"));

    const std::vector<Drive> drives = lettered_drives(machine);
    QCOMPARE(letters_of(drives), u"CDEFGHIJKLMNOPQRSTUVWXYZ"_s);
    QCOMPARE(drive_of(drives, u"Y"_s).mount_point, QByteArray("/mnt/19"));
    QCOMPARE(drive_of(drives, u"Z"_s).Type, DriveType::cd);
}

void TestDrives::labels_are_decoded_data()
{
    QTest::addColumn<QByteArray>("spelling");
    QTest::addColumn<QString>("label");

    QTest::newRow("plain") << QByteArray("MUSIC") << u"MUSIC"_s;
    QTest::newRow("a blank and a slash") << QByteArray("MY\\x20MUSIC\\x2fA") << u"MY MUSIC/A"_s;
    QTest::newRow("Korean as it stands") << QByteArray("\xEA\xB0\x80") << u"가"_s;
    QTest::newRow("Korean spelled out") << QByteArray(R"(\xea\xb0\x80)") << u"가"_s;
    QTest::newRow("a backslash spelled out") << QByteArray("a\\x5cx20") << u"a\\x20"_s;
    QTest::newRow("a code cut short stays") << QByteArray("a\\x2") << u"a\\x2"_s;
    QTest::newRow("no code stays") << QByteArray("\\xzzb") << u"\\xzzb"_s;
}

void TestDrives::labels_are_decoded()
{
    QFETCH(QByteArray, spelling);
    QFETCH(QString, label);

    QCOMPARE(decoded_label(spelling), label);
}

void TestDrives::optical_drive_has_a_letter_data()
{
    QTest::addColumn<bool>("has_disc");
    QTest::addColumn<bool>("is_mounted");
    QTest::addColumn<bool>("is_ready");

    QTest::newRow("empty") << false << false << false;
    QTest::newRow("with a disc that is not mounted") << true << false << true;
    QTest::newRow("with a mounted disc") << true << true << true;
    QTest::newRow("mounted and yet silent about its disc") << false << true << true;
}

void TestDrives::optical_drive_has_a_letter()
{
    QFETCH(bool, has_disc);
    QFETCH(bool, is_mounted);
    QFETCH(bool, is_ready);
    Machine machine = plain_machine();
    machine.block_devices.push_back({.name = "sr0", .partitions = {}, .is_removable = true, .has_disc = has_disc});
    if (is_mounted)
        machine.mounts.push_back(volume("/dev/sr0", "/media/disc", "iso9660", 1100));

    const std::vector<Drive> drives = lettered_drives(machine);
    QCOMPARE(letters_of(drives), u"CDHM"_s);
    const Drive disc = drive_of(drives, u"D"_s);
    QCOMPARE(disc.Type, DriveType::cd);
    QCOMPARE(disc.IsReady, is_ready);
    QCOMPARE(disc.device, QByteArray("/dev/sr0"));
    QCOMPARE(disc.mount_point, is_mounted ? QByteArray("/media/disc") : QByteArray());
}

void TestDrives::optical_drives_stand_in_their_order()
{
    Machine machine = plain_machine();
    machine.block_devices.push_back(empty_optical_drive("sr10"));
    machine.block_devices.push_back(empty_optical_drive("sr2"));
    machine.block_devices.push_back(empty_optical_drive("sr1"));

    const std::vector<Drive> drives = lettered_drives(machine);
    QCOMPARE(drive_of(drives, u"D"_s).device, QByteArray("/dev/sr1"));
    QCOMPARE(drive_of(drives, u"E"_s).device, QByteArray("/dev/sr2"));
    QCOMPARE(drive_of(drives, u"F"_s).device, QByteArray("/dev/sr10"));
}

void TestDrives::this_machine_has_its_root_first()
{
    const std::vector<Drive> drives = drives_of_this_machine();

    QCOMPARE(drives.front().DriveLetter, u"C"_s);
    QCOMPARE(drives.front().mount_point, QByteArray("/"));
    QVERIFY(std::ranges::is_sorted(drives, {}, &Drive::DriveLetter));
    QCOMPARE(drive_of(drives, u"H"_s).mount_point, qgetenv("HOME"));
}

void TestDrives::other_drives_can_take_their_place()
{
    const std::vector<Drive> others = lettered_drives(plain_machine());
    set_drives(others);

    QCOMPARE(letters_of(::drives()), letters_of(others));
}

QUILMO_LOGIC_TEST(TestDrives)
#include "test_drives.moc"
