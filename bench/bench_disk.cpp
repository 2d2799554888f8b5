#include "bench_disk.h"

#include "core/mod_of_grobal_var.h"
#include "platform/drives.h"
#include "platform/file_names.h"
#include "platform/file_operation/disk_entry.h"
#include "selection/final_list.h"

#include <QFile>

#include <map>
#include <memory>

using namespace Qt::StringLiterals;

BenchDisk::BenchDisk(const Corpus& corpus)
{
    for (const CorpusFile& file : write_corpus(native(), corpus))
        files_.push_back({.folder = u"C:\\"_s + name_from_bytes(file.folder) + u'\\',
                          .name = name_from_bytes(file.name),
                          .native = native() + '/' + file.folder + '/' + file.name});
    begin_run();
}

const BenchDisk& BenchDisk::of(const Corpus& corpus)
{
    static std::map<Corpus, std::unique_ptr<BenchDisk>> disks;
    std::unique_ptr<BenchDisk>& disk = disks[corpus];
    if (!disk)
        disk = std::make_unique<BenchDisk>(corpus);
    disk->begin_run();
    return *disk;
}

QByteArray BenchDisk::native() const
{
    return QFile::encodeName(disk_.path());
}

std::vector<QByteArray> BenchDisk::paths_as_listed() const
{
    const QByteArray folder = native() + "/folder 000";
    std::vector<QByteArray> names;
    if (read_names(folder, names) != 0)
        qFatal("can't list %s", folder.constData());
    for (QByteArray& name : names)
        name.prepend(folder + '/');
    return names;
}

void BenchDisk::begin_run() const
{
    shared = {};
    shared.language_id = 1;
    shared.fif_type = 1;
    shared.genre_type = 1;
    if (!files_.empty())
        shared.current_folder = files_.front().folder;
    set_drives({{.DriveLetter = u"C"_s,
                 .Type = DriveType::fixed,
                 .VolumeName = u"Bench"_s,
                 .IsReady = true,
                 .mount_point = native(),
                 .device = {}}});
}

void BenchDisk::list_all() const
{
    for (const File& file : files_) {
        shared.current_folder = file.folder;
        add_to_final_list(file.name, file.folder, file.folder + file.name, 5000, {}, {});
    }
}
