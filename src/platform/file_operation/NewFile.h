#pragma once

#include "platform/file_operation/FileCalls.h"
#include "platform/file_operation/disk_entry.h"

/// A file or link that comes into being beside its final place and gets its real name when it is whole. Until then it
/// has no name at all, or a hidden one where the file system can't do without; what never got its real name goes with
/// the object.
class NewFile
{
public:
    /// A new, empty file, or a link to `link_target`, that is to stand in `folder` in the end.
    static NewFile file_in(const QByteArray& folder, const FileCalls& calls);
    static NewFile link_in(const QByteArray& folder, const QByteArray& link_target, const FileCalls& calls);
    ~NewFile();
    NewFile(NewFile&& other) noexcept;
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;
    NewFile& operator=(NewFile&&) = delete;

    /// Why it could not be made; 0 when it was.
    int error() const { return error_; }
    /// The open file; a link has none.
    const Descriptor& file() const { return file_; }
    /// The path on disk of the hidden name; empty for none.
    const QByteArray& hidden_name() const { return hidden_; }
    std::optional<struct stat> status() const;

    /// Gives it the name `target`, which must be free. Gives 0 or an error number, EEXIST where something stands.
    int publish(const QByteArray& target);
    /// Puts it in the place of what stands at `target` and was in the state `replaced`. Gives 0 or an error number,
    /// EEXIST where something else stands now.
    int replace(const QByteArray& target, const struct stat& replaced);

private:
    NewFile(QByteArray folder, const FileCalls& calls) : folder_(std::move(folder)), calls_(&calls) {}
    template<typename Make> void take_hidden_name(const Make& make);
    int give_name(const QByteArray& name) const;

    QByteArray folder_;
    const FileCalls* calls_;
    Descriptor file_;
    QByteArray hidden_;
    std::optional<struct stat> made_; ///< of what was made under the hidden name
    int error_ = 0;
};

/// Renames over what stands at `target` if that is still in the state `replaced`; if nothing stands there any more,
/// without replacing. Gives 0 or an error number, EEXIST where something else stands. On a file system that can swap
/// two files, what comes to stand there at the last moment is kept, too.
int rename_over(const QByteArray& source, const QByteArray& target, const struct stat& replaced,
                const RenameCalls& calls);

/// Deletes the file or link at `native` if it is still in the state `state`; what comes to stand there at the last
/// moment is kept. Gives 0 or an error number, ESTALE where that state is no more.
int remove_unchanged(const QByteArray& native, const struct stat& state, const RenameCalls& calls);
