#include "companion/Reason.h"

#include <cstring>

QByteArray Reason::word() const
{
    switch (code) {
    case none:
        return "none";
    case no_tag:
        return "no_tag";
    case too_short:
        return "too_short";
    case no_fields:
        return "no_fields";
    case no_title:
        return "no_title";
    case too_long:
        return "too_long";
    case unknown_type:
        return "unknown_type";
    case exists:
        return "exists";
    case wanted_twice:
        return "wanted_twice";
    case unreadable:
        return "unreadable";
    case changed:
        return "changed";
    case gone:
        return "gone";
    case taken:
        return "taken";
    case not_done:
        return "not_done";
    }
    return {};
}

QByteArray Reason::text() const
{
    switch (code) {
    case none:
        return {};
    case no_tag:
        return "no tag";
    case too_short:
        return "too short for a tag: a tag takes 128 bytes";
    case no_fields:
        return "no artist or no title in its tag";
    case no_title:
        return "no artist or no title";
    case too_long:
        return "too long: the artist leaves no room for the title";
    case unknown_type:
        return "the type in the settings is none of 1 to 6";
    case exists:
        return "exists: another file has this name";
    case wanted_twice:
        return "two files want this name, and another one gets it";
    case unreadable:
        return "cannot be read: " + detail;
    case changed:
        return "has changed since";
    case gone:
        return "is gone";
    case taken:
        return "another file has its old name by now";
    case not_done:
        return detail;
    }
    return {};
}

QByteArray error_text(int error)
{
    return std::strerror(error);
}
