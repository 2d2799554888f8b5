#include "platform/file_operation/NewFile.h"

#include <QRandomGenerator>

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <utility>

namespace {

QByteArray hidden_name_in(const QByteArray& folder)
{
    return folder + "/.quilmo-" + QByteArray::number(QRandomGenerator::system()->generate64(), 36);
}

/// The path under which the system lets an open file be linked; empty when it offers none.
QByteArray link_path(const Descriptor& file)
{
    const QByteArray path = "/proc/self/fd/" + QByteArray::number(file.number());
    return access(path.constData(), F_OK) == 0 ? path : QByteArray();
}

} // namespace

NewFile NewFile::file_in(const QByteArray& folder, const FileCalls& calls)
{
    NewFile made(folder, calls);
    made.file_ = Descriptor(calls.open_unnamed(folder));
    if (made.file_.is_open() && !link_path(made.file_).isEmpty())
        return made;
    made.take_hidden_name([&made](const QByteArray& name) {
        constexpr int flags = O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
        made.file_ = Descriptor(open(name.constData(), flags, S_IRUSR | S_IWUSR));
        return made.file_.is_open() ? 0 : errno;
    });
    return made;
}

NewFile NewFile::link_in(const QByteArray& folder, const QByteArray& link_target, const FileCalls& calls)
{
    NewFile made(folder, calls);
    made.take_hidden_name([&link_target](const QByteArray& name) {
        return symlink(link_target.constData(), name.constData()) == 0 ? 0 : errno;
    });
    return made;
}

NewFile::~NewFile()
{
    // Where another program swaps files at the target at the same time, the hidden name can end up with one of its.
    const std::optional<struct stat> present = hidden_.isEmpty() ? std::nullopt : status_of(hidden_);
    if (present && made_ && is_same_file(*present, *made_))
        unlink(hidden_.constData());
}

NewFile::NewFile(NewFile&& other) noexcept
    : folder_(std::move(other.folder_)),
      calls_(other.calls_),
      file_(std::move(other.file_)),
      hidden_(std::exchange(other.hidden_, {})),
      made_(other.made_),
      error_(other.error_)
{
}

template<typename Make> void NewFile::take_hidden_name(const Make& make)
{
    QByteArray name;
    do {
        name = hidden_name_in(folder_);
        error_ = make(name);
    } while (error_ == EEXIST);
    if (error_ != 0)
        return;
    hidden_ = name;
    made_ = status_of(name);
}

std::optional<struct stat> NewFile::status() const
{
    return file_.is_open() ? status_of(file_) : status_of(hidden_);
}

int NewFile::give_name(const QByteArray& name) const
{
    const QByteArray path = link_path(file_);
    return linkat(AT_FDCWD, path.constData(), AT_FDCWD, name.constData(), AT_SYMLINK_FOLLOW) == 0 ? 0 : errno;
}

int NewFile::publish(const QByteArray& target)
{
    if (hidden_.isEmpty())
        return give_name(target);
    const int error = rename_without_replacing(hidden_, target, calls_->rename);
    if (error == 0)
        hidden_.clear();
    return error;
}

int NewFile::replace(const QByteArray& target, const struct stat& replaced)
{
    // Only a file with a name can take another's place.
    if (hidden_.isEmpty())
        take_hidden_name([this](const QByteArray& name) { return give_name(name); });
    if (error_ != 0)
        return error_;
    const int error = rename_over(hidden_, target, replaced, calls_->rename);
    if (error == 0)
        hidden_.clear();
    return error;
}

int rename_over(const QByteArray& source, const QByteArray& target, const struct stat& replaced,
                const RenameCalls& calls)
{
    const std::optional<struct stat> present = status_of(target);
    if (!present)
        return rename_without_replacing(source, target, calls);
    if (!is_same_state(*present, replaced))
        return EEXIST;
    const int swapped = calls.exchange(source, target);
    if (swapped == EINVAL || swapped == ENOSYS) // such a file system can only replace
        return std::rename(source.constData(), target.constData()) == 0 ? 0 : errno;
    if (swapped != 0)
        return swapped == ENOENT ? rename_without_replacing(source, target, calls) : swapped;
    const int removed = remove_unchanged(source, replaced, calls);
    if (removed != 0)
        calls.exchange(source, target);
    return removed == ESTALE ? EEXIST : removed;
}

int remove_unchanged(const QByteArray& native, const struct stat& state, const RenameCalls& calls)
{
    const auto error_at = [&state](const QByteArray& path) {
        const std::optional<struct stat> present = status_of(path);
        if (!present)
            return errno == ENOENT ? ESTALE : errno;
        return is_same_state(*present, state) ? 0 : ESTALE;
    };
    int error = error_at(native);
    if (error != 0)
        return error;
    // Under a name that nobody else knows, nothing can take its place any more.
    const QByteArray hidden = hidden_name_in(DiskPlace{.native = native, .shown = {}}.folder());
    error = rename_without_replacing(native, hidden, calls);
    if (error != 0)
        return error == ENOENT ? ESTALE : error;
    error = error_at(hidden);
    if (error == 0 && unlink(hidden.constData()) != 0)
        error = errno;
    if (error != 0)
        rename_without_replacing(hidden, native, calls);
    return error;
}
