#include "companion/rights.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace {

/// 0, or an error number when these rights are not there.
int error_of(const QByteArray& native, int rights)
{
    return faccessat(AT_FDCWD, native.constData(), rights, AT_EACCESS) == 0 ? 0 : errno;
}

Reason refusal(const QByteArray& what, int error)
{
    return {.code = Reason::not_done, .detail = what + ": " + error_text(error)};
}

} // namespace

Reason FolderRights::obstacle(const Change& change)
{
    if (change.folder != folder_) {
        folder_ = change.folder;
        error_ = error_of(folder_, W_OK | X_OK);
    }
    if (error_ != 0 && change.renames())
        return refusal("cannot be renamed", error_);
    return error_ == EROFS ? refusal("cannot be written", error_) : Reason();
}

Reason no_right_to_write(const QByteArray& native, const struct stat& status)
{
    static const uid_t user = geteuid();
    const int error = status.st_uid == user ? 0 : error_of(native, W_OK);
    return error == 0 ? Reason() : refusal("cannot be written", error);
}
