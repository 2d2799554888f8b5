#include "bench_disk.h"

#include "core/mod_of_grobal_var.h"
#include "platform/drives.h"
#include "sample_files.h"
#include "selection/final_list.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace {

/// A third of the tags each in ASCII, Korean and Western text.
QByteArray file_content(int number)
{
    static const QByteArray audio = sample_audio({.frames = 12});
    static const QByteArray artists[] = {"Plain Artist", korean_bytes(u"한국 가수"_s), western_bytes(u"Café Müller"_s)};
    return audio + sample_tag({.title = "Title " + QByteArray::number(number),
                               .artist = artists[number % 3],
                               .genre = static_cast<unsigned char>(number % 148)});
}

} // namespace

BenchDisk::BenchDisk(int files)
{
    shared = {};
    shared.language_id = 1;
    shared.fif_type = 1;
    shared.genre_type = 1;
    shared.current_folder = folder();
    set_drives({{.DriveLetter = u"C"_s,
                 .Type = DriveType::fixed,
                 .VolumeName = u"Bench"_s,
                 .IsReady = true,
                 .mount_point = QFile::encodeName(disk_.path()),
                 .device = {}}});
    QDir(disk_.path()).mkdir(u"Bench"_s);
    for (int number = 0; number < files; ++number) {
        names_.push_back(u"track %1.mp3"_s.arg(number, 5, 10, QChar(u'0')));
        native_paths_.push_back(native_folder() + '/' + names_.back().toUtf8());
        QFile file(QFile::decodeName(native_paths_.back()));
        if (!file.open(QIODevice::WriteOnly) || file.write(file_content(number)) < 0)
            qFatal("can't write %s", native_paths_.back().constData());
    }
}

QString BenchDisk::folder() const
{
    return u"C:\\Bench\\"_s;
}

QByteArray BenchDisk::native_folder() const
{
    return QFile::encodeName(disk_.path()) + "/Bench";
}

void BenchDisk::list_all() const
{
    for (const QString& name : names_)
        add_to_final_list(name, folder(), folder() + name, 5000, {}, {});
}
