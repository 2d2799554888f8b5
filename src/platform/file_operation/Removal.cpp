#include "platform/file_operation/Removal.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

void Removal::run(const QStringList& sources)
{
    if (sources.isEmpty())
        return;
    if (!run_.guide().ask_trash(sources)) {
        run_.abort();
        return;
    }
    for (qsizetype i = 0; i < sources.size(); ++i) {
        const OperationRun::Step step(run_, i + 1 < sources.size() || !left_.empty());
        const DiskPlace source = DiskPlace::of(sources[i]);
        if (!run_.begin(source))
            return;
        put_into_trash(source);
        if (run_.is_aborted())
            return;
    }
    if (!left_.empty())
        delete_for_good();
}

void Removal::put_into_trash(const DiskPlace& source)
{
    if (source.native.isEmpty() || source.is_drive()) {
        run_.report(source, source.is_drive() ? Word::reason_drive : Word::reason_no_place);
        return;
    }
    if (!status_of(source.native)) {
        run_.report(source, errno);
        return;
    }
    const Trash::Answer answer = trash_.take(source.native);
    if (answer.outcome == Trash::Outcome::no_trash)
        left_.push_back(source);
    else if (answer.outcome == Trash::Outcome::failed)
        run_.report(source, answer.error);
}

void Removal::delete_for_good()
{
    QStringList paths;
    for (const DiskPlace& place : left_)
        paths.append(place.shown);
    if (!run_.guide().ask_delete(paths)) {
        run_.abort();
        return;
    }
    for (std::size_t i = 0; i < left_.size() && !run_.is_aborted(); ++i) {
        const OperationRun::Step step(run_, i + 1 < left_.size());
        const DiskPlace& place = left_[i];
        const std::optional<struct stat> status = status_of(place.native);
        if (!status)
            run_.report(place, errno);
        else
            delete_entry(AT_FDCWD, place.native, place, status->st_dev);
    }
}

/// Deletes what is called `name` in an open folder, a link itself, with all below it; other volumes that are mounted
/// there stay. Reports what fails. Gives whether it is gone.
bool Removal::delete_entry(int folder, const QByteArray& name, const DiskPlace& place, dev_t volume)
{
    if (!run_.begin(place))
        return false;
    struct stat status
    {
    };
    int error = fstatat(folder, name.constData(), &status, AT_SYMLINK_NOFOLLOW) == 0 ? 0 : errno;
    const bool is_folder = S_ISDIR(status.st_mode);
    if (error == 0 && is_folder && status.st_dev != volume)
        error = EBUSY;
    if (error == 0 && is_folder && !delete_content(folder, name, place, volume))
        return false;
    if (error == 0 && unlinkat(folder, name.constData(), is_folder ? AT_REMOVEDIR : 0) != 0)
        error = errno;
    if (error != 0)
        run_.report(place, error);
    return error == 0;
}

bool Removal::delete_content(int folder, const QByteArray& name, const DiskPlace& place, dev_t volume)
{
    const Descriptor opened = open_folder(folder, name);
    std::vector<QByteArray> names;
    const int error = opened.is_open() ? read_names(opened, names) : errno;
    if (error != 0) {
        run_.report(place, error);
        return false;
    }
    bool is_empty = true;
    for (std::size_t i = 0; i < names.size() && !run_.is_aborted(); ++i) {
        // The folder itself is left to delete after the last of them.
        const OperationRun::Step step(run_, i + 1 < names.size());
        is_empty = delete_entry(opened.number(), names[i], place.child(names[i]), volume) && is_empty;
    }
    return is_empty && !run_.is_aborted();
}
