#pragma once

#include "platform/file_operation/FileOperation.h"

#include <QString>

/// What SHFileOperation does: `wFunc` 1 move, 2 copy, 3 delete, 4 rename.
constexpr int FO_MOVE = 1;
constexpr int FO_COPY = 2;
constexpr int FO_DELETE = 3;
constexpr int FO_RENAME = 4;
/// Deletions go to the trash, and the person is asked before anything is overwritten or deleted.
constexpr int FOF_ALLOWUNDO = 64;
/// What SHFileOperation gives when something was not done because of an error.
constexpr int ERROR_GEN_FAILURE = 31;
/// What SHFileOperation gives when the person cancelled, or said no to a deletion.
constexpr int ERROR_CANCELLED = 1223;

struct SHFILEOPSTRUCT
{
    int wFunc = 0;
    QString pFrom; ///< paths with one NUL between them; one or two NULs may end the list
    QString pTo;   ///< move and copy: the folder that takes them; rename: the new path; delete: not used
    int fFlags = FOF_ALLOWUNDO;
    bool fAnyOperationsAborted = false; ///< comes back: the person cancelled, or said no to a deletion
};

/// Does a file operation with the prompts, and on longer work the progress and Cancel, that a person expects; returns
/// when it is over. Gives 0 when all was done or passed over by the person's word, or when there was nothing to do;
/// else ERROR_CANCELLED or ERROR_GEN_FAILURE.
int SHFileOperation(SHFILEOPSTRUCT& operation);
