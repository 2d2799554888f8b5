#include "platform/file_operation/FileOperation.h"

#include "platform/file_operation/OperationRun.h"
#include "platform/file_operation/Removal.h"
#include "platform/file_operation/Transfer.h"

namespace {

void rename_source(const QStringList& sources, const QString& target, OperationRun& run, const FileCalls& calls)
{
    if (sources.isEmpty())
        return;
    const DiskPlace source = DiskPlace::of(sources.first());
    const DiskPlace new_place = DiskPlace::of(target);
    if (source.is_drive())
        run.report(source, Word::reason_drive);
    else if (source.native.isEmpty() || new_place.native.isEmpty())
        run.report(source.native.isEmpty() ? source : new_place, Word::reason_no_place);
    else if (const int error = rename_without_replacing(source.native, new_place.native, calls.rename); error != 0)
        run.report(source, error);
}

} // namespace

QStringList listed_paths(const QString& list)
{
    return list.split(QChar::Null, Qt::SkipEmptyParts);
}

FileOutcome run_file_operation(FileAction action, const QStringList& sources, const QString& target,
                               FileOperationGuide& guide, const FileCalls& calls)
{
    OperationRun run(guide);
    switch (action) {
    case FileAction::copy:
        Transfer(Transfer::Kind::copy, run, calls).run(sources, target);
        break;
    case FileAction::move:
        Transfer(Transfer::Kind::move, run, calls).run(sources, target);
        break;
    case FileAction::rename:
        rename_source(sources, target, run, calls);
        break;
    case FileAction::remove:
        Removal(run, calls).run(sources);
        break;
    }
    return run.outcome();
}
