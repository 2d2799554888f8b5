#pragma once

#include "companion/FileWalk.h"
#include "companion/Reason.h"
#include "companion/read_end.h"
#include "fif/fif_name.h"
#include "platform/numbers.h"

#include <QString>

#include <optional>

// All of it may be called by several threads at a time.

/// What a file is.
struct Look
{
    i16 kind = 0;               ///< 1 its name is FIF, 2 a FIF name can be made from its tag, 0 neither
    QString name;               ///< as the program writes it
    FifFields fields;           ///< what the name or the tag says; empty for kind 0
    Reason reason;              ///< why the kind is 0
    std::optional<FileEnd> end; ///< of the file, where it was opened
};

/// Looks at a file. It is opened only when its name is not FIF.
Look look_at(const MusicFile& file);

/// How files get their names.
struct NamingRule
{
    /// Also names that are FIF are made anew, in the present shape and with the fixed values, as the auto conversion
    /// does; otherwise they stay, and the other files are named from their tags, as the batch conversion does.
    bool also_fif_names = false;
    FixedFields fixed;
};

/// The name that a file gets, and the fields that it is made of; or a reason.
struct NewName
{
    QString name;
    FifFields fields;
    Reason reason;
};

/// The new name of a file; its own for one that stays.
NewName new_name_of(const Look& look, const NamingRule& rule);
