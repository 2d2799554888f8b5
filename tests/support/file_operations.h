#pragma once

#include "platform/file_operation/FileOperation.h"
#include "platform/own_words.h"
#include "test_main.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <sys/stat.h>

#include <functional>

// What the tests of file operations share.

/// The temporary folder on disk as the drive C:, and one on another file system as D:.
class TwoDisks : public TestDisk
{
public:
    TwoDisks();
    ~TwoDisks();
    TwoDisks(const TwoDisks&) = delete;
    TwoDisks& operator=(const TwoDisks&) = delete;

    /// Whether the machine has a second file system at all.
    bool are_two() const;

private:
    QTemporaryDir other_;
};

/// A person who says what was laid down before, and whose every question is noted.
class ScriptedGuide : public FileOperationGuide
{
public:
    Overwrite ask_overwrite(const FileFacts& source, const FileFacts& target) override;
    OnError ask_error(const QString& path, const QString& reason, bool more_follow) override;
    bool ask_trash(const QStringList& paths) override;
    bool ask_delete(const QStringList& paths) override;
    void progress(const FileProgress& progress) override;
    bool is_cancelled() const override { return cancelled; }

    /// The questions since the last take, oldest first: "overwrite TARGET", "error PATH: REASON" (with " ..." when more
    /// follow), "trash PATHS", "delete PATHS".
    QStringList take();

    QList<Overwrite> overwrites; ///< the answers one by one; after them no more may come
    OnError on_error = OnError::skip;
    bool trashes = true;
    bool deletes = true;
    bool cancelled = false;
    std::function<void(const FileFacts&, const FileFacts&)> on_overwrite; ///< runs before the answer
    std::function<void(const FileProgress&)> on_progress;
    FileProgress last_progress;
    int progress_count = 0;

private:
    QStringList questions_;
};

/// All below a folder on disk, sorted: "path/", "path = content", "path -> link target", "path ?" for anything else.
QByteArrayList tree_of(const QByteArray& native);

/// The status of what stands at a path, a link itself; all 0 for nothing.
struct stat status_at(const QByteArray& native);
bool stands(const QByteArray& native);
/// The time of the last change in nanoseconds.
qint64 modified_at(const QByteArray& native);
void set_modified(const QByteArray& native, qint64 nanoseconds);

/// Makes a file at a path on disk, whatever bytes its name has.
void write_native(const QByteArray& native, const QByteArray& content);
void make_link(const QByteArray& leads_to, const QByteArray& native);

/// Content in which no two places within a chunk of a copy look alike.
QByteArray content_of_size(qsizetype size);

/// Whether nothing failed and nobody cancelled.
bool is_done(const FileOutcome& outcome);
/// The note of a question about an error.
QString error_text(const QString& path, Word word);
QString error_text(const QString& path, int error);

/// The system's words for an error number.
QString reason(int error);
