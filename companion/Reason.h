#pragma once

#include <QByteArray>

/// Why a file can't be done.
struct Reason
{
    enum Code
    {
        none,
        no_tag,
        too_short,
        no_fields,
        no_title,
        too_long,
        unknown_type,
        exists,
        wanted_twice,
        unreadable,
        changed,
        gone,
        taken,
        not_done,
    };

    Code code = none;
    QByteArray detail{}; ///< what the system says, for the codes that it says something about

    explicit operator bool() const { return code != none; }
    /// One word for scripts, such as "no_tag".
    QByteArray word() const;
    /// A plain text such as "no tag".
    QByteArray text() const;
};

/// What the system says about an error number.
QByteArray error_text(int error);
