#include "platform/FileSystemObject.h"

#include "platform/RunTimeError.h"
#include "platform/file_names.h"
#include "platform/language.h"
#include "platform/own_words.h"
#include "platform/paths.h"
#include "platform/rename_file.h"
#include "platform/uninterrupted.h"

#include <QDateTime>
#include <QHash>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <ctime>
#include <map>
#include <memory>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr mode_t all_write_bits = S_IWUSR | S_IWGRP | S_IWOTH;

std::optional<struct stat> status_of(const QString& path)
{
    const QByteArray native = native_path(path);
    struct stat status
    {
    };
    if (native.isEmpty() || uninterrupted([&] { return stat(native.constData(), &status); }) != 0)
        return std::nullopt;
    return status;
}

/// The status of a regular file; raises "File not found" where there is none.
struct stat file_status(const QString& path)
{
    const std::optional<struct stat> status = status_of(path);
    if (!status || !S_ISREG(status->st_mode))
        throw RunTimeError(RunTimeError::file_not_found);
    return *status;
}

/// The run-time error of a system call that changes a folder.
RunTimeError folder_change_error(int error)
{
    switch (error) {
    case EEXIST:
        return RunTimeError(RunTimeError::file_already_exists);
    case ENOENT:
    case ENOTDIR:
        return RunTimeError(RunTimeError::path_not_found);
    case EACCES:
    case EPERM:
    case EROFS:
    case EXDEV:
        return RunTimeError(RunTimeError::permission_denied);
    default:
        return RunTimeError(RunTimeError::path_file_access_error);
    }
}

/// The entries of a folder, one by one.
class FolderReader
{
public:
    explicit FolderReader(const QByteArray& native) : directory_(opendir(native.constData()), closedir)
    {
        if (!directory_)
            throw RunTimeError(errno == ENOENT || errno == ENOTDIR ? RunTimeError::path_not_found
                                                                   : RunTimeError::path_file_access_error);
    }

    /// The next entry but "." and "..", nullptr at the end.
    const dirent* next()
    {
        while (true) {
            errno = 0;
            const dirent* const entry = readdir(directory_.get());
            if (entry == nullptr && errno != 0)
                throw RunTimeError(RunTimeError::path_file_access_error);
            if (entry == nullptr || !is_self_or_parent(entry->d_name))
                return entry;
        }
    }

    /// The status of what an entry means, links followed; nothing when that is gone.
    std::optional<struct stat> status_of(const dirent& entry) const
    {
        struct stat status
        {
        };
        if (fstatat(dirfd(directory_.get()), entry.d_name, &status, 0) != 0)
            return std::nullopt;
        return status;
    }

private:
    static bool is_self_or_parent(QByteArrayView name) { return name == "." || name == ".."; }

    std::unique_ptr<DIR, int (*)(DIR*)> directory_;
};

bool may_be(const dirent& entry, unsigned char type)
{
    return entry.d_type == type || entry.d_type == DT_LNK || entry.d_type == DT_UNKNOWN;
}

bool is_folder(const FolderReader& reader, const dirent& entry)
{
    if (entry.d_type == DT_DIR)
        return true;
    if (!may_be(entry, DT_DIR))
        return false;
    const std::optional<struct stat> status = reader.status_of(entry);
    return status && S_ISDIR(status->st_mode);
}

/// Writes dates of files. Kept for the whole run, with the dates that came up: both to ask the system for its locale
/// and to format a date take longer than all else that a row of a list needs.
class DateWriter
{
public:
    QString text(qint64 seconds)
    {
        const auto moment = static_cast<std::time_t>(seconds);
        std::tm local{};
        if (localtime_r(&moment, &local) == nullptr)
            return {};
        const QTime time(local.tm_hour, local.tm_min, local.tm_sec);
        return date_text(QDate(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday)) + u' ' +
               locale_.toString(time, time_format_);
    }

private:
    const QString& date_text(QDate date)
    {
        QString& text = date_texts_[date.toJulianDay()];
        if (text.isEmpty())
            text = locale_.toString(date, date_format_);
        return text;
    }

    QLocale locale_ = program_locale();
    QString date_format_ = locale_.dateFormat(QLocale::ShortFormat);
    QString time_format_ = locale_.timeFormat(QLocale::ShortFormat);
    QHash<qint64, QString> date_texts_;
};

} // namespace

QString File::Type() const
{
    return own_word(Name.endsWith(u".mp3", Qt::CaseInsensitive) ? Word::type_mp3 : Word::type_file);
}

QString File::DateLastModified() const
{
    static std::map<Language, DateWriter> writers;
    return writers[program_language()].text(modified_seconds);
}

Folder::Folder(QString path, QByteArray native) : path_(std::move(path)), native_(std::move(native)) {}

std::vector<File> Folder::Files(const QString& suffix) const
{
    FolderReader reader(native_);
    std::vector<File> files;
    while (const dirent* const entry = reader.next()) {
        if (!may_be(*entry, DT_REG))
            continue;
        QString name = name_from_bytes(entry->d_name);
        if (!name.endsWith(suffix, Qt::CaseInsensitive))
            continue;
        const std::optional<struct stat> status = reader.status_of(*entry);
        if (status && S_ISREG(status->st_mode))
            files.push_back(
                {.Name = std::move(name), .Size = status->st_size, .modified_seconds = status->st_mtim.tv_sec});
    }
    return files;
}

QStringList Folder::SubFolders() const
{
    FolderReader reader(native_);
    QStringList names;
    while (const dirent* const entry = reader.next()) {
        if (is_folder(reader, *entry))
            names.append(name_from_bytes(entry->d_name));
    }
    return names;
}

Folder FileSystemObject::GetFolder(const QString& path) const
{
    if (!FolderExists(path))
        throw RunTimeError(RunTimeError::path_not_found);
    QString clean = path.endsWith(u'\\') ? path.chopped(1) : path;
    if (clean.size() == 2)
        clean += u'\\';
    return Folder(clean, native_path(path));
}

bool FileSystemObject::FolderExists(const QString& path) const
{
    const std::optional<struct stat> status = status_of(path);
    return status && S_ISDIR(status->st_mode);
}

bool FileSystemObject::FileExists(const QString& path) const
{
    const std::optional<struct stat> status = status_of(path);
    return status && S_ISREG(status->st_mode);
}

int FileSystemObject::Attributes(const QString& path) const
{
    const struct stat status = file_status(path);
    const bool is_hidden = QStringView(path).sliced(path.lastIndexOf(u'\\') + 1).startsWith(u'.');
    const bool is_read_only = (status.st_mode & S_IWUSR) == 0;
    return archive | (is_read_only ? read_only : 0) | (is_hidden ? hidden : 0);
}

void FileSystemObject::set_Attributes(const QString& path, int attributes) const
{
    const mode_t old_mode = file_status(path).st_mode & ~static_cast<mode_t>(S_IFMT);
    const bool makes_read_only = (attributes & read_only) != 0;
    const mode_t mode = makes_read_only ? old_mode & ~all_write_bits : old_mode | S_IWUSR;
    if (mode != old_mode && uninterrupted([&] { return chmod(native_path(path).constData(), mode); }) != 0)
        throw RunTimeError(RunTimeError::path_file_access_error);
}

void FileSystemObject::CreateFolder(const QString& path) const
{
    const QByteArray native = native_path(path);
    if (native.isEmpty())
        throw RunTimeError(RunTimeError::path_not_found);
    constexpr mode_t all_rights = 0777; // less what the person's umask takes
    if (mkdir(native.constData(), all_rights) != 0)
        throw folder_change_error(errno);
}

void FileSystemObject::MoveFolder(const QString& old_path, const QString& new_path) const
{
    const QByteArray new_native = native_path(new_path);
    if (!FolderExists(old_path) || new_native.isEmpty())
        throw RunTimeError(RunTimeError::path_not_found);
    const int error = rename_without_replacing(native_path(old_path), new_native);
    if (error != 0)
        throw folder_change_error(error);
}

bool MoveFileA(const QString& old_path, const QString& new_path)
{
    const QByteArray old_native = native_path(old_path);
    const QByteArray new_native = native_path(new_path);
    return !old_native.isEmpty() && !new_native.isEmpty() && rename_without_replacing(old_native, new_native) == 0;
}

QString GetComputerNameA()
{
    std::array<char, 256> name{};
    // One byte stays behind the name: the system does not end a name that it had to cut.
    if (gethostname(name.data(), name.size() - 1) != 0)
        return {};
    return QString::fromUtf8(name.data());
}
