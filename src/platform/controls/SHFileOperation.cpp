#include "platform/controls/SHFileOperation.h"

#include "platform/controls/file_work.h"

#include <QStringList>

static_assert(static_cast<int>(FileAction::move) == FO_MOVE);
static_assert(static_cast<int>(FileAction::copy) == FO_COPY);
static_assert(static_cast<int>(FileAction::remove) == FO_DELETE);
static_assert(static_cast<int>(FileAction::rename) == FO_RENAME);

int SHFileOperation(SHFILEOPSTRUCT& operation)
{
    operation.fAnyOperationsAborted = false;
    const QStringList sources = listed_paths(operation.pFrom);
    if (sources.isEmpty())
        return 0;
    const auto action = static_cast<FileAction>(operation.wFunc);
    const FileOutcome outcome = run_file_work(
        action, [&](FileOperationGuide& guide) { return run_file_operation(action, sources, operation.pTo, guide); });
    operation.fAnyOperationsAborted = outcome.aborted;
    if (outcome.aborted)
        return ERROR_CANCELLED;
    return outcome.failed ? ERROR_GEN_FAILURE : 0;
}
