#pragma once

#include "platform/file_operation/FileCalls.h"

#include <QString>
#include <QStringList>

/// What a file operation does with its sources.
enum class FileAction
{
    move = 1,
    copy = 2,
    remove = 3,
    rename = 4
};

/// What is known of a file that stands in the way, or of the one that is to take its place.
struct FileFacts
{
    QString path;                ///< as the program writes it
    bool is_folder = false;      ///< a folder can't take a file's place, nor a file a folder's
    qint64 size = 0;             ///< bytes
    qint64 modified_seconds = 0; ///< since 1970, universal time
};

/// How far an operation has come.
struct FileProgress
{
    QString name;          ///< of the file at work, without its folder
    qint64 bytes_done = 0; ///< of all files to copy
    qint64 bytes_all = 0;  ///< 0 while the sources are still being counted, and where nothing needs to be copied
};

/// The person whose word a file operation asks. All are called on the thread that the operation runs on.
class FileOperationGuide
{
public:
    enum class Overwrite
    {
        yes,
        yes_to_all,
        no,
        no_to_all,
        cancel
    };
    enum class OnError
    {
        skip,
        cancel
    };

    virtual ~FileOperationGuide() = default;
    /// A file stands where another is to go. The words "to all" are remembered by the operation.
    virtual Overwrite ask_overwrite(const FileFacts& source, const FileFacts& target) = 0;
    /// Something went wrong with the file or folder at `path`; `reason` is the system's, or the operation's own word
    /// for it. `more_follow` tells whether anything would be left to do after a skip.
    virtual OnError ask_error(const QString& path, const QString& reason, bool more_follow) = 0;
    /// Whether these items are to go to the trash.
    virtual bool ask_trash(const QStringList& paths) = 0;
    /// Whether the items that no trash takes are to be deleted for good.
    virtual bool ask_delete(const QStringList& paths) = 0;
    /// Called often, also in the middle of a large file; cheap to answer.
    virtual void progress(const FileProgress& progress) = 0;
    /// Whether the person has cancelled. Asked often, also in the middle of a large file; may be answered from any
    /// thread.
    virtual bool is_cancelled() const = 0;
};

/// How an operation ended.
struct FileOutcome
{
    bool failed = false;  ///< something was not done because of an error
    bool aborted = false; ///< the person cancelled, or said no to a deletion
};

/// The paths of a list in which one NUL stands between them and one or two may end it.
QStringList listed_paths(const QString& list);

/// Does `action` with `sources`; paths are the program's own. Works on any thread, and touches no state of the program.
///
/// Copy and move: into the folder `target`. Folders of one name become one; a file takes another's place only at the
/// person's word, and under its real name stands nothing but whole files. A copy into the source's own folder becomes
/// "Copy of NAME". Links are copied as links. Copies keep times and rights, and are on the disk at the end. A move to
/// another file system deletes a source when its copy is on the disk and both are as they were then; of a source in the
/// middle of which the person cancels, nothing is deleted.
/// Rename: the one source becomes `target`, where nothing may stand. An error is told through ask_error.
/// Remove: to the trash after one question, what no trash takes for good after one more; `target` is not used.
FileOutcome run_file_operation(FileAction action, const QStringList& sources, const QString& target,
                               FileOperationGuide& guide, const FileCalls& calls = FileCalls::of_this_machine());
