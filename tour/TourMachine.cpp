#include "TourMachine.h"

#include "platform/drives.h"
#include "sample_collection.h"

#include <QDir>
#include <QFile>
#include <QSettings>

#include <filesystem>

using namespace Qt::StringLiterals;

namespace {

constexpr int seconds_of_longest_song = 32;

} // namespace

TourMachine::TourMachine()
{
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, disk_.filePath(u"settings"_s));
    const QByteArray root = QFile::encodeName(disk_.filePath(u"disk"_s));
    if (!write_sample_collection(root + "/Music", {.seconds = seconds_of_longest_song}) ||
        !QDir(disk_.path()).mkpath(u"disk/Copies"_s))
        qFatal("can't write the sample collection");
    set_drives({{.DriveLetter = u"C"_s,
                 .Type = DriveType::fixed,
                 .VolumeName = u"Tour"_s,
                 .IsReady = true,
                 .mount_point = root,
                 .device = {}}});
}

TourMachine::~TourMachine()
{
    std::error_code error; // QTemporaryDir itself leaves names behind that are not valid UTF-8
    std::filesystem::remove_all(disk_.path().toStdString(), error);
}
