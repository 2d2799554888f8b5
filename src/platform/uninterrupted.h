#pragma once

#include <cerrno>

/// Repeats a call of the system, which gives a negative number and errno when it fails, until no signal interrupts it;
/// gives its result.
template<typename Call> auto uninterrupted(const Call& call)
{
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}
