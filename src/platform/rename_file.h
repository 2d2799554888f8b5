#pragma once

#include <QByteArray>

#include <functional>

/// The system's calls that a rename may use. Each gives 0 or an error number.
struct RenameCalls
{
    using Call = std::function<int(const QByteArray& old_native, const QByteArray& new_native)>;
    Call rename_no_replace; ///< renames and fails with EEXIST where the new name is taken
    Call link;              ///< gives a file a second name, fails likewise
    Call exchange;          ///< swaps what stands at the two paths at one blow

    /// The calls of this machine.
    static RenameCalls of_this_machine();
};

/// Gives a file or folder a new path on the same file system and never replaces what is there. Gives 0 or an error
/// number; after an error nothing has changed.
int rename_without_replacing(const QByteArray& old_native, const QByteArray& new_native,
                             const RenameCalls& calls = RenameCalls::of_this_machine());
