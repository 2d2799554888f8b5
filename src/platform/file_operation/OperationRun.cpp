#include "platform/file_operation/OperationRun.h"

#include "platform/file_names.h"

void OperationRun::tell(const DiskPlace& place)
{
    progress_.name = name_from_bytes(place.name());
    guide_.progress(progress_);
}

bool OperationRun::begin(const DiskPlace& place)
{
    tell(place);
    return go_on();
}

void OperationRun::pass_to(qint64 bytes)
{
    progress_.bytes_done = bytes;
    guide_.progress(progress_);
}

bool OperationRun::advance(qint64 bytes)
{
    progress_.bytes_done += bytes;
    guide_.progress(progress_);
    return go_on();
}

void OperationRun::set_bytes_all(qint64 bytes)
{
    progress_.bytes_all = bytes;
    progress_.bytes_done = 0;
}

bool OperationRun::go_on()
{
    outcome_.aborted = outcome_.aborted || guide_.is_cancelled();
    return !outcome_.aborted;
}

void OperationRun::report(const DiskPlace& place, int error)
{
    report(place, qt_error_string(error));
}

void OperationRun::report(const DiskPlace& place, Word reason)
{
    report(place, own_word(reason));
}

void OperationRun::report(const DiskPlace& place, const QString& reason)
{
    outcome_.failed = true;
    if (guide_.ask_error(place.shown, reason, more_follow_) == FileOperationGuide::OnError::cancel)
        abort();
}

bool OperationRun::may_replace(const FileFacts& source, const FileFacts& target)
{
    using Overwrite = FileOperationGuide::Overwrite;
    if (replaces_all_)
        return *replaces_all_;
    const Overwrite answer = guide_.ask_overwrite(source, target);
    if (answer == Overwrite::cancel)
        abort();
    if (answer == Overwrite::yes_to_all || answer == Overwrite::no_to_all)
        replaces_all_ = answer == Overwrite::yes_to_all;
    return answer == Overwrite::yes || answer == Overwrite::yes_to_all;
}
