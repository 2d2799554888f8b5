#include "file_operations.h"

#include "platform/drives.h"

#include <QFile>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 nanoseconds_per_second = 1'000'000'000;

QByteArray content_of(const std::string& native)
{
    std::ifstream file(native, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return QByteArray::fromStdString(content.str());
}

} // namespace

TwoDisks::TwoDisks() : other_(u"/dev/shm/quilmo-test-XXXXXX"_s)
{
    std::vector<Drive> both = drives();
    both.push_back({.DriveLetter = u"D"_s,
                    .Type = DriveType::fixed,
                    .VolumeName = u"Other"_s,
                    .IsReady = true,
                    .mount_point = QFile::encodeName(other_.path()),
                    .device = {}});
    set_drives(both);
}

TwoDisks::~TwoDisks()
{
    std::error_code error;
    std::filesystem::remove_all(other_.path().toStdString(), error);
}

bool TwoDisks::are_two() const
{
    return status_at(root()).st_dev != status_at(QFile::encodeName(other_.path())).st_dev;
}

FileOperationGuide::Overwrite ScriptedGuide::ask_overwrite(const FileFacts& source, const FileFacts& target)
{
    questions_.append(u"overwrite "_s + target.path);
    if (overwrites.isEmpty())
        qFatal("no answer for overwriting %s", qPrintable(target.path));
    if (on_overwrite)
        on_overwrite(source, target);
    return overwrites.takeFirst();
}

FileOperationGuide::OnError ScriptedGuide::ask_error(const QString& path, const QString& reason, bool more_follow)
{
    questions_.append(u"error "_s + path + u": "_s + reason + (more_follow ? u" ..."_s : QString()));
    return on_error;
}

bool ScriptedGuide::ask_trash(const QStringList& paths)
{
    questions_.append(u"trash "_s + paths.join(u' '));
    return trashes;
}

bool ScriptedGuide::ask_delete(const QStringList& paths)
{
    questions_.append(u"delete "_s + paths.join(u' '));
    return deletes;
}

void ScriptedGuide::progress(const FileProgress& progress)
{
    last_progress = progress;
    ++progress_count;
    if (on_progress)
        on_progress(progress);
}

QStringList ScriptedGuide::take()
{
    return std::exchange(questions_, {});
}

QByteArrayList tree_of(const QByteArray& native)
{
    namespace fs = std::filesystem;
    QByteArrayList tree;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(native.toStdString())) {
        const QByteArray path = QByteArray::fromStdString(entry.path().string()).sliced(native.size() + 1);
        const fs::file_status status = entry.symlink_status();
        if (fs::is_symlink(status))
            tree.append(path + " -> " + QByteArray::fromStdString(fs::read_symlink(entry.path()).string()));
        else if (fs::is_directory(status))
            tree.append(path + '/');
        else if (fs::is_regular_file(status))
            tree.append(path + " = " + content_of(entry.path().string()));
        else
            tree.append(path + " ?");
    }
    std::ranges::sort(tree);
    return tree;
}

struct stat status_at(const QByteArray& native)
{
    struct stat status
    {
    };
    if (lstat(native.constData(), &status) != 0)
        return {};
    return status;
}

bool stands(const QByteArray& native)
{
    return status_at(native).st_mode != 0;
}

qint64 modified_at(const QByteArray& native)
{
    const timespec time = status_at(native).st_mtim;
    return time.tv_sec * nanoseconds_per_second + time.tv_nsec;
}

void set_modified(const QByteArray& native, qint64 nanoseconds)
{
    const timespec time = {.tv_sec = nanoseconds / nanoseconds_per_second,
                           .tv_nsec = nanoseconds % nanoseconds_per_second};
    const timespec times[] = {time, time};
    utimensat(AT_FDCWD, native.constData(), times, AT_SYMLINK_NOFOLLOW);
}

void write_native(const QByteArray& native, const QByteArray& content)
{
    std::ofstream file(native.toStdString(), std::ios::binary | std::ios::trunc);
    if (!file.write(content.constData(), content.size()))
        qFatal("can't write %s", native.constData());
}

void make_link(const QByteArray& leads_to, const QByteArray& native)
{
    if (symlink(leads_to.constData(), native.constData()) != 0)
        qFatal("can't link %s", native.constData());
}

QString reason(int error)
{
    return qt_error_string(error);
}

QByteArray content_of_size(qsizetype size)
{
    constexpr qsizetype block_size = 65'521; // a prime, so that no chunk begins as another does
    static const QByteArray block = [] {
        QByteArray numbers;
        for (int number = 0; numbers.size() < block_size; ++number)
            numbers += QByteArray::number(number, 36) + ',';
        return numbers.first(block_size);
    }();
    return block.repeated(size / block_size + 1).first(size);
}

bool is_done(const FileOutcome& outcome)
{
    return !outcome.failed && !outcome.aborted;
}

QString error_text(const QString& path, Word word)
{
    return u"error "_s + path + u": "_s + own_word(word);
}

QString error_text(const QString& path, int error)
{
    return u"error "_s + path + u": "_s + reason(error);
}
