#include "platform/file_operation/Transfer.h"

#include "platform/file_operation/copy_content.h"
#include "platform/file_operation/copy_names.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <memory>

namespace {

/// Copies keep who may do what, but not the rights of an owner that they don't have.
constexpr mode_t copied_mode_bits = S_IRWXU | S_IRWXG | S_IRWXO | S_ISVTX;

std::array<timespec, 2> times_of(const struct stat& status)
{
    return {status.st_atim, status.st_mtim};
}

FileFacts facts_of(const DiskPlace& place, const struct stat& status)
{
    return {.path = place.shown,
            .is_folder = S_ISDIR(status.st_mode),
            .size = status.st_size,
            .modified_seconds = status.st_mtim.tv_sec};
}

bool is_folder(const std::optional<struct stat>& status)
{
    return status && S_ISDIR(status->st_mode);
}

bool is_same(const std::optional<struct stat>& a, const std::optional<struct stat>& b)
{
    return a && b && is_same_file(*a, *b);
}

/// The status of a folder and of all that it lies in.
std::vector<struct stat> chain_of(const QByteArray& folder)
{
    const std::unique_ptr<char, decltype(&std::free)> real(realpath(folder.constData(), nullptr), std::free);
    std::vector<struct stat> chain;
    DiskPlace place{.native = QByteArray(real.get()), .shown = {}};
    while (const std::optional<struct stat> status = status_of(place.native)) {
        chain.push_back(*status);
        if (place.native == "/")
            break;
        place.native = place.folder();
    }
    return chain;
}

} // namespace

void Transfer::run(const QStringList& sources, const QString& target)
{
    if (sources.isEmpty() || !find_target(target))
        return;
    const std::vector<qint64> bytes = bytes_up_to(sources);
    run_.set_bytes_all(bytes.back());
    std::size_t whole = 0;
    for (qsizetype i = 0; i < sources.size() && !run_.is_aborted(); ++i) {
        const OperationRun::Step step(run_, i + 1 < sources.size());
        bring_source(DiskPlace::of(sources[i]));
        if (run_.is_aborted())
            break;
        whole = arrived_.size();
        run_.pass_to(bytes[static_cast<std::size_t>(i)]);
    }
    arrived_.erase(arrived_.begin() + static_cast<std::ptrdiff_t>(whole), arrived_.end());
    if (has_copied_ && sync_folder(target_))
        delete_arrived();
}

bool Transfer::find_target(const QString& path)
{
    target_ = DiskPlace::of(path);
    if (target_.native.isEmpty()) {
        run_.report(target_, Word::reason_no_place);
        return false;
    }
    const std::optional<Status> status = status_through_links(target_.native);
    if (!is_folder(status)) {
        run_.report(target_, status ? ENOTDIR : errno);
        return false;
    }
    target_chain_ = chain_of(target_.native);
    if (target_chain_.empty())
        run_.report(target_, ENOENT);
    return !target_chain_.empty();
}

/// For each source the bytes to copy of it and of those before it.
std::vector<qint64> Transfer::bytes_up_to(const QStringList& sources)
{
    std::vector<qint64> sums;
    qint64 sum = 0;
    for (const QString& source : sources) {
        sum += bytes_below(DiskPlace::of(source));
        sums.push_back(sum);
    }
    return sums;
}

qint64 Transfer::bytes_below(const DiskPlace& place)
{
    if (!run_.begin(place))
        return 0;
    const std::optional<Status> status = status_of(place.native);
    const bool is_renamed = status && kind_ == Kind::move && status->st_dev == target_chain_.front().st_dev;
    if (!status || is_renamed)
        return 0;
    if (S_ISREG(status->st_mode))
        return status->st_size;
    qint64 bytes = 0;
    std::vector<QByteArray> names;
    if (S_ISDIR(status->st_mode))
        read_names(place.native, names);
    for (const QByteArray& name : names)
        bytes += bytes_below(place.child(name));
    return bytes;
}

void Transfer::bring_source(const DiskPlace& source)
{
    if (source.native.isEmpty() || source.is_drive()) {
        run_.report(source, source.is_drive() ? Word::reason_drive : Word::reason_no_place);
        return;
    }
    const std::optional<Status> status = status_of(source.native);
    if (!status) {
        run_.report(source, errno);
        return;
    }
    if (S_ISDIR(status->st_mode) && holds_target(*status)) {
        run_.report(source, Word::reason_into_itself);
        return;
    }
    const bool is_there = is_same(status_through_links(source.folder()), target_chain_.front());
    if (!is_there)
        bring(source, target_.child(source.name()));
    else if (kind_ == Kind::copy)
        bring_beside(source, S_ISDIR(status->st_mode));
}

/// Copies into the source's own folder.
void Transfer::bring_beside(const DiskPlace& source, bool is_folder)
{
    if (const std::optional<DiskPlace> place = free_copy_place(source, is_folder))
        bring(source, *place);
    else
        run_.report(source, errno);
}

bool Transfer::holds_target(const Status& folder) const
{
    return std::ranges::any_of(target_chain_, [&](const Status& other) { return is_same_file(folder, other); });
}

void Transfer::bring(const DiskPlace& source, const DiskPlace& target)
{
    if (!run_.begin(source))
        return;
    const std::optional<Status> status = status_of(source.native);
    if (!status)
        run_.report(source, errno);
    else if (kind_ == Kind::move)
        move_file(source, *status, target);
    else
        copy(source, *status, target);
}

void Transfer::move_file(const DiskPlace& source, const Status& status, const DiskPlace& target)
{
    const int error = rename_without_replacing(source.native, target.native, calls_.rename);
    const bool merges = error == EEXIST && S_ISDIR(status.st_mode) && is_folder(status_of(target.native));
    if (error == EXDEV || merges) {
        copy(source, status, target);
        return;
    }
    Replaced replaced;
    if (error == EEXIST && clear_way(source, status, target, replaced)) {
        const auto rename = [&](const QByteArray& name, const Replaced& given_up) {
            return given_up ? rename_over(source.native, name, *given_up, calls_.rename)
                            : rename_without_replacing(source.native, name, calls_.rename);
        };
        put(rename, source, status, target, replaced);
    } else if (error != 0 && error != EEXIST) {
        run_.report(source, error);
    }
}

void Transfer::copy(const DiskPlace& source, const Status& status, const DiskPlace& target)
{
    if (S_ISDIR(status.st_mode))
        copy_folder(source, status, target);
    else if (S_ISREG(status.st_mode))
        copy_file(source, status, target);
    else if (S_ISLNK(status.st_mode))
        copy_link(source, status, target);
    else
        run_.report(source, Word::reason_special_file);
}

void Transfer::copy_folder(const DiskPlace& source, const Status& status, const DiskPlace& target)
{
    // Where a folder is mounted at a second place, no look at the paths tells that it holds the target.
    if (is_same_file(status, target_chain_.front())) {
        run_.report(source, Word::reason_into_itself);
        return;
    }
    const bool is_new = mkdir(target.native.constData(), S_IRWXU) == 0;
    const std::optional<Status> made = is_new || errno == EEXIST ? status_of(target.native) : std::nullopt;
    if (!made) {
        run_.report(target, errno);
        return;
    }
    if (!S_ISDIR(made->st_mode) || is_same_file(*made, status)) {
        run_.report(target, S_ISDIR(made->st_mode) ? Word::reason_same_file : Word::reason_file_in_the_way);
        return;
    }
    const std::size_t outside = arrived_.size();
    bring_content(source, target);
    if (is_new) {
        chmod(target.native.constData(), status.st_mode & copied_mode_bits);
        utimensat(AT_FDCWD, target.native.constData(), times_of(status).data(), AT_SYMLINK_NOFOLLOW);
    }
    has_copied_ = true;
    if (!sync_folder(target))
        arrived_.erase(arrived_.begin() + static_cast<std::ptrdiff_t>(outside), arrived_.end());
    else if (kind_ == Kind::move)
        arrived_.push_back(
            {.source = source, .source_status = status, .target = target.native, .target_status = *made});
}

void Transfer::bring_content(const DiskPlace& source, const DiskPlace& target)
{
    std::vector<QByteArray> names;
    const int error = read_names(source.native, names);
    if (error != 0) {
        run_.report(source, error);
        return;
    }
    for (std::size_t i = 0; i < names.size() && !run_.is_aborted(); ++i) {
        const OperationRun::Step step(run_, i + 1 < names.size());
        bring(source.child(names[i]), target.child(names[i]));
    }
}

void Transfer::copy_file(const DiskPlace& source, const Status& status, const DiskPlace& target)
{
    Replaced replaced;
    if (!clear_way(source, status, target, replaced))
        return;
    NewFile file = NewFile::file_in(target.folder(), calls_);
    if (file.error() != 0)
        run_.report(target, file.error());
    else if (fill(file, source, status, target))
        put_new(file, source, status, target, replaced);
}

/// Gives a new file the content and the properties of the source, all on the disk. Reports what fails.
bool Transfer::fill(const NewFile& file, const DiskPlace& source, const Status& status, const DiskPlace& target)
{
    const Descriptor input(open(source.native.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!input.is_open()) {
        run_.report(source, errno);
        return false;
    }
    const auto is_unchanged = [&] {
        const std::optional<Status> present = status_of(input);
        return present && is_same_state(*present, status);
    };
    const bool is_as_seen = is_unchanged();
    CopyFault fault;
    if (is_as_seen)
        fault = copy_content(input, file.file(), status.st_size, calls_,
                             [this](qint64 bytes) { return run_.advance(bytes); });
    if (fault.error == ECANCELED)
        return false;
    if (fault.error == ENODATA || (fault.error == 0 && !(is_as_seen && is_unchanged()))) {
        run_.report(source, Word::reason_changed);
        return false;
    }
    if (fault.error == 0) {
        // Some file systems keep no rights or finer times; the content counts.
        fchmod(file.file().number(), status.st_mode & copied_mode_bits);
        futimens(file.file().number(), times_of(status).data());
        fault = {.error = calls_.sync(file.file().number()), .in_target = true};
    }
    if (fault.error != 0)
        run_.report(fault.in_target ? target : source, fault.error);
    return fault.error == 0;
}

void Transfer::copy_link(const DiskPlace& source, const Status& status, const DiskPlace& target)
{
    std::array<char, PATH_MAX + 1> leads_to{};
    if (readlink(source.native.constData(), leads_to.data(), PATH_MAX) < 0) {
        run_.report(source, errno);
        return;
    }
    Replaced replaced;
    if (!clear_way(source, status, target, replaced))
        return;
    NewFile link = NewFile::link_in(target.folder(), leads_to.data(), calls_);
    if (link.error() != 0) {
        run_.report(target, link.error());
        return;
    }
    utimensat(AT_FDCWD, link.hidden_name().constData(), times_of(status).data(), AT_SYMLINK_NOFOLLOW);
    put_new(link, source, status, target, replaced);
}

void Transfer::put_new(NewFile& file, const DiskPlace& source, const Status& status, const DiskPlace& target,
                       const Replaced& replaced)
{
    const std::optional<Status> made = file.status();
    if (!made) {
        run_.report(target, errno);
        return;
    }
    const auto give_name = [&file](const QByteArray& name, const Replaced& given_up) {
        return given_up ? file.replace(name, *given_up) : file.publish(name);
    };
    if (!put(give_name, source, status, target, replaced))
        return;
    has_copied_ = true;
    if (kind_ == Kind::move)
        arrived_.push_back(
            {.source = source, .source_status = status, .target = target.native, .target_status = *made});
}

/// Whether a file or link may go to `target`: nothing stands there, or the person gives up what does, whose state
/// `replaced` then tells.
bool Transfer::clear_way(const DiskPlace& source, const Status& status, const DiskPlace& target, Replaced& replaced)
{
    replaced = status_of(target.native);
    if (!replaced && errno == ENOENT)
        return true;
    if (!replaced) {
        run_.report(target, errno);
        return false;
    }
    const std::optional<Status> meant = status_through_links(target.native);
    const bool is_itself = is_same_file(*replaced, status) || is_same(meant, status) ||
                           is_same(replaced, status_through_links(source.native));
    if (is_itself)
        run_.report(source, Word::reason_same_file);
    else if (S_ISDIR(status.st_mode))
        run_.report(target, Word::reason_file_in_the_way);
    else if (is_folder(replaced) || is_folder(meant))
        run_.report(target, Word::reason_folder_in_the_way);
    else if (!S_ISREG(replaced->st_mode) && !S_ISLNK(replaced->st_mode))
        run_.report(target, Word::reason_special_file);
    else
        return run_.may_replace(facts_of(source, status), facts_of(target, *replaced));
    return false;
}

/// Puts something in place, and asks anew for whatever has come there since the last question. Gives whether it stands.
bool Transfer::put(const Putter& putter, const DiskPlace& source, const Status& status, const DiskPlace& target,
                   Replaced replaced)
{
    int error = putter(target.native, replaced);
    while (error == EEXIST) {
        if (!run_.advance(0) || !clear_way(source, status, target, replaced))
            return false;
        error = putter(target.native, replaced);
    }
    if (error != 0)
        run_.report(target, error);
    return error == 0;
}

/// Brings the names in a folder to the disk. Reports what fails.
bool Transfer::sync_folder(const DiskPlace& folder)
{
    const Descriptor opened(open(folder.native.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    // A folder that takes files need not be one that can be read.
    const int error = opened.is_open() ? calls_.sync(opened.number()) : errno == EACCES ? 0 : errno;
    if (error == 0 || error == EINVAL)
        return true;
    run_.report(folder, error);
    return false;
}

void Transfer::delete_arrived()
{
    for (std::size_t i = 0; i < arrived_.size(); ++i) {
        const OperationRun::Step step(run_, i + 1 < arrived_.size());
        run_.tell(arrived_[i].source);
        if (!delete_source(arrived_[i]) && run_.is_aborted())
            return;
    }
}

/// Deletes the source of what has arrived. Reports what fails.
bool Transfer::delete_source(const Arrival& arrival)
{
    const QByteArray& native = arrival.source.native;
    if (S_ISDIR(arrival.source_status.st_mode)) {
        // What stayed or came in the meantime keeps its folder.
        if (rmdir(native.constData()) == 0 || errno == ENOTEMPTY || errno == EEXIST)
            return true;
        run_.report(arrival.source, errno);
        return false;
    }
    const std::optional<Status> target = status_of(arrival.target);
    int error = target || errno == ENOENT ? ESTALE : errno;
    if (target && is_same_file(*target, arrival.target_status) && target->st_size == arrival.target_status.st_size)
        error = remove_unchanged(native, arrival.source_status, calls_.rename);
    if (error == ESTALE)
        run_.report(arrival.source, Word::reason_changed_later);
    else if (error != 0)
        run_.report(arrival.source, error);
    return error == 0;
}
