#pragma once

#include "platform/file_operation/FileCalls.h"

#include <QByteArray>
#include <QHash>

#include <optional>
#include <vector>

/// The user's trash, as all desktops agree on it: one in the user's data folder for the volume
/// that this lies on, and one at the root of each other volume. Nothing is ever copied from one volume to another.
class Trash
{
public:
    explicit Trash(const FileCalls& calls) : calls_(calls) {}

    enum class Outcome
    {
        taken,
        no_trash, ///< none can take it
        failed
    };
    struct Answer
    {
        Outcome outcome = Outcome::taken;
        int error = 0; ///< the error number of a failure
    };

    /// Puts a file or folder, a link itself, into the trash.
    Answer take(const QByteArray& native);

private:
    /// One trash and the folder that the places noted in it are relative to; empty where they are absolute.
    struct Store
    {
        QByteArray folder;
        QByteArray base;
    };

    const std::vector<Store>& stores_of(const QByteArray& volume);
    std::optional<QByteArray> home_folder();
    Answer put(const Store& store, const QByteArray& native, const QByteArray& real);

    const FileCalls& calls_;
    QHash<QByteArray, std::vector<Store>> stores_; ///< by the root of the volume
    QHash<QByteArray, int> numbers_;               ///< the number that a name of a store has come to
};
