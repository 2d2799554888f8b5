#pragma once

#include "platform/file_operation/FileOperation.h"

#include <QString>
#include <QStringList>

/// What a person is asked in the course of a file operation. All are called on the thread of the windows.
class FilePrompts
{
public:
    using Overwrite = FileOperationGuide::Overwrite;
    using OnError = FileOperationGuide::OnError;

    virtual ~FilePrompts() = default;
    /// A file stands at `target` where the one at `source` is to go.
    virtual Overwrite ask_overwrite(const FileFacts& source, const FileFacts& target) = 0;
    /// Something went wrong with the file or folder at `path`. When nothing more follows the person is only told, and
    /// the answer is to skip it.
    virtual OnError ask_error(const QString& path, const QString& reason, bool more_follow) = 0;
    /// Whether these items are to go to the trash.
    virtual bool ask_trash(const QStringList& paths) = 0;
    /// Whether these items, which no trash takes, are to be deleted for good.
    virtual bool ask_delete(const QStringList& paths) = 0;
};

/// What the file operations ask.
FilePrompts& file_prompts();
/// Puts `prompts`, which outlive their use, in the place of the program's own boxes; nullptr brings these back.
void set_file_prompts(FilePrompts* prompts);
