#include "file_copies.h"

#include "bench_disk.h"
#include "floor.h"
#include "platform/file_operation/FileOperation.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QStorageInfo>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

/// The files of a row.
struct Load
{
    int files = 0;
    qsizetype size = 0; ///< bytes of each file

    bool operator==(const Load&) const = default;
};

constexpr Load large_files = {.files = 1000, .size = 4'000'000};
constexpr Load small_files = {.files = 5000, .size = 3'000};

int file_count(const Load& load)
{
    const int limit = qEnvironmentVariableIntValue("QUILMO_BENCH_FILES");
    return limit > 0 ? std::min(load.files, limit) : load.files;
}

bool has_room_for(const Load& load)
{
    constexpr qint64 block = 4096;
    const qint64 each = (load.size + block - 1) / block * block;
    const qint64 sources_and_copies = 2 * each * file_count(load);
    return QStorageInfo(QDir::tempPath()).bytesAvailable() >= 3 * sources_and_copies;
}

/// A drive with a folder of files to copy and a folder for the copies.
class CopyDisk
{
public:
    explicit CopyDisk(const Load& load) : load_(load)
    {
        QByteArray content(load.size, Qt::Uninitialized);
        // No file system can make these bytes fewer.
        std::ranges::generate(content, [random = QRandomGenerator(1)]() mutable { return char(random.generate()); });
        QDir(QFile::decodeName(disk_.native())).mkdir(u"From"_s);
        for (int number = 0; number < file_count(load); ++number) {
            const QString name = u"track %1.mp3"_s.arg(number, 5, 10, QChar(u'0'));
            sources_.push_back(u"C:\\From\\"_s + name);
            native_copies_.push_back(target_folder() + '/' + name.toUtf8());
            QFile file(QFile::decodeName(source_folder()) + u'/' + name);
            if (!file.open(QIODevice::WriteOnly) || file.write(content) < 0)
                qFatal("can't write %s", qPrintable(file.fileName()));
        }
    }

    const Load& load() const { return load_; }
    QByteArray source_folder() const { return disk_.native() + "/From"; }
    QByteArray target_folder() const { return disk_.native() + "/To"; }

    /// The files to copy and the folder for the copies, as the program writes them.
    const QStringList& sources() const { return sources_; }
    static QString target() { return u"C:\\To"_s; }
    /// Paths on disk of the copies.
    const std::vector<QByteArray>& native_copies() const { return native_copies_; }

    /// Leaves the folder for the copies empty and nothing unwritten on the file system.
    void clear_target() const
    {
        QDir target(QFile::decodeName(target_folder()));
        if (!target.removeRecursively() || !target.mkpath(u"."_s))
            qFatal("can't clear %s", target_folder().constData());
        sync_file_system(target_folder().constData());
    }

    bool has_all_copies() const
    {
        const QFileInfoList found = QDir(QFile::decodeName(target_folder())).entryInfoList(QDir::Files);
        return found.size() == sources_.size() &&
               std::ranges::all_of(found, [this](const QFileInfo& file) { return file.size() == load_.size; });
    }

private:
    Load load_;
    BenchDisk disk_;
    QStringList sources_;
    std::vector<QByteArray> native_copies_;
};

/// Gives the disk of the last call as long as the load stays the same, since writing its files takes long.
const CopyDisk* disk_with(const Load& load)
{
    static std::unique_ptr<CopyDisk> disk;
    if (!disk || disk->load() != load) {
        disk.reset();
        if (has_room_for(load))
            disk = std::make_unique<CopyDisk>(load);
    }
    return disk.get();
}

template<typename Copy> void measure(benchmark::State& state, const Load& load, const Copy& copy)
{
    const CopyDisk* disk = disk_with(load);
    if (disk == nullptr) {
        state.SkipWithError("left out: less than three times the needed room is free on the disk");
        return;
    }
    for ([[maybe_unused]] auto round : state) {
        state.PauseTiming();
        disk->clear_target();
        state.ResumeTiming();
        copy(*disk);
    }
    if (!disk->has_all_copies())
        state.SkipWithError("a file was not copied");
    const QStorageInfo storage(QFile::decodeName(disk->target_folder()));
    state.SetLabel(std::to_string(file_count(load)) + " files on " + storage.fileSystemType().toStdString());
}

void copy_by_cp(const CopyDisk& disk)
{
    const QString all_sources = QFile::decodeName(disk.source_folder()) + u"/."_s;
    if (QProcess::execute(u"cp"_s, {u"-a"_s, all_sources, QFile::decodeName(disk.target_folder())}) != 0)
        qFatal("cp has failed");
}

void copy_by_cp_and_sync(const CopyDisk& disk)
{
    copy_by_cp(disk);
    for (const QByteArray& copy : disk.native_copies())
        sync_file(copy.constData());
}

/// There is nothing to answer: nothing stands in the way, and whatever fails is missing afterwards.
class SilentGuide : public FileOperationGuide
{
public:
    Overwrite ask_overwrite(const FileFacts& /*source*/, const FileFacts& /*target*/) override
    {
        return Overwrite::cancel;
    }
    OnError ask_error(const QString& /*path*/, const QString& /*reason*/, bool /*more_follow*/) override
    {
        return OnError::cancel;
    }
    bool ask_trash(const QStringList& /*paths*/) override { return false; }
    bool ask_delete(const QStringList& /*paths*/) override { return false; }
    void progress(const FileProgress& /*progress*/) override {}
    bool is_cancelled() const override { return false; }
};

void copy_by_program(const CopyDisk& disk)
{
    SilentGuide guide;
    run_file_operation(FileAction::copy, disk.sources(), disk.target(), guide);
}

} // namespace

void copy_large_floor(benchmark::State& state)
{
    measure(state, large_files, copy_by_cp);
}

void copy_large_floor_synced(benchmark::State& state)
{
    measure(state, large_files, copy_by_cp_and_sync);
}

void copy_large_work(benchmark::State& state)
{
    measure(state, large_files, copy_by_program);
}

void copy_small_floor_synced(benchmark::State& state)
{
    measure(state, small_files, copy_by_cp_and_sync);
}

void copy_small_work(benchmark::State& state)
{
    measure(state, small_files, copy_by_program);
}
