#pragma once

#include "companion/FileWalk.h"
#include "companion/Reason.h"
#include "fif/fif_name.h"
#include "platform/numbers.h"

/// What a file is.
struct Look
{
    i16 kind = 0;     ///< 1 its name is FIF, 2 a FIF name can be made from its tag, 0 neither
    FifFields fields; ///< what the name or the tag says; empty for kind 0
    Reason reason;    ///< why the kind is 0
};

/// Looks at a file as a program does that was started for it alone. For kind 2 its tag is loaded then.
Look look_at(const MusicFile& file);

/// Loads a file into id3() as the first of a run.
void load_afresh(const MusicFile& file);

/// Why the file that was loaded last can't be read, as a whole or where a tag stands; none when it can.
Reason obstacle_to_reading(const MusicFile& file);

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

/// The new name of the file that was looked at last; its own for one that stays.
NewName new_name_of(const MusicFile& file, const Look& look, const NamingRule& rule);
