#pragma once

#include "platform/drives.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

/// A regular file of a folder, through links.
struct File
{
    QString Name;
    qint64 Size = 0;             ///< bytes
    qint64 modified_seconds = 0; ///< last change of the content, seconds since 1970 in universal time

    /// The file system's description of the type, in the build's language.
    QString Type() const;
    /// Date and time of the last change in local time, in the system's short form.
    QString DateLastModified() const;
};

/// A folder that could be opened. What it lists is read from disk at each call.
class Folder
{
public:
    explicit Folder(QString path, QByteArray native);

    /// The folder's path as the program writes it; only a drive's root ends in a backslash.
    const QString& Path() const { return path_; }
    /// The regular files (through links) whose names end in `suffix`, case ignored, in the order that the file system
    /// gives; folders, pipes and devices are never among them. Raises "Path not found" or "Path/File access error".
    std::vector<File> Files(const QString& suffix = {}) const;
    /// The names of the subfolders (through links) in the order that the file system gives; errors as Files.
    QStringList SubFolders() const;

private:
    QString path_;
    QByteArray native_;
};

/// The platform's view of drives, folders and files. Every path is one of the program's own (C:\Music\a.mp3).
class FileSystemObject
{
public:
    /// The attribute bits of a file.
    enum Attribute
    {
        read_only = 1,
        hidden = 2,
        archive = 32
    };

    const std::vector<Drive>& Drives() const { return drives(); }
    /// The folder at `path`, with or without a trailing backslash. Raises "Path not found" when there is none.
    Folder GetFolder(const QString& path) const;
    /// Whether `path` is a folder that can be reached; a ready drive's root is one.
    bool FolderExists(const QString& path) const;
    /// Whether `path` is a regular file (through links).
    bool FileExists(const QString& path) const;
    /// The attributes of the file at `path`: `archive`, with `read_only` when its owner may not write and `hidden`
    /// when its name begins with a full stop. Raises "File not found".
    int Attributes(const QString& path) const;
    /// Sets or clears the read-only attribute; the others follow from the name. Raises "File not found" or
    /// "Path/File access error".
    void set_Attributes(const QString& path, int attributes) const;
    /// Makes one folder in a folder that is there. Raises "File already exists" (whatever stands there), "Path not
    /// found", "Permission denied" or "Path/File access error".
    void CreateFolder(const QString& path) const;
    /// Gives the folder `old_path` the path `new_path` on the same drive, with all that is in it. Never replaces: what
    /// stands at the new path makes it fail. Errors as CreateFolder, with nothing changed.
    void MoveFolder(const QString& old_path, const QString& new_path) const;
};

/// Renames a file. Never replaces: an existing target, even a dangling link, makes it fail. Gives whether it was done.
bool MoveFileA(const QString& old_path, const QString& new_path);

/// The computer's name, empty on failure.
QString GetComputerNameA();
