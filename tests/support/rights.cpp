#include "rights.h"

#include <linux/capability.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <utility>

namespace {

/// Whether this process passes over the rights of files, where it is one that may.
void set_power_over_rights(bool on)
{
    __user_cap_header_struct header = {.version = _LINUX_CAPABILITY_VERSION_3, .pid = 0};
    std::array<__user_cap_data_struct, _LINUX_CAPABILITY_U32S_3> powers{};
    if (syscall(SYS_capget, &header, powers.data()) != 0)
        return;
    constexpr unsigned over_rights = 1U << CAP_DAC_OVERRIDE | 1U << CAP_DAC_READ_SEARCH;
    const unsigned possible = powers[0].permitted & over_rights;
    powers[0].effective = on ? powers[0].effective | possible : powers[0].effective & ~over_rights;
    syscall(SYS_capset, &header, powers.data());
}

} // namespace

BoundByRights::BoundByRights()
{
    set_power_over_rights(false);
}

BoundByRights::~BoundByRights()
{
    set_power_over_rights(true);
}

WithoutRights::WithoutRights(QByteArray native) : native_(std::move(native))
{
    chmod(native_.constData(), 0);
}

WithoutRights::~WithoutRights()
{
    chmod(native_.constData(), 0755);
}
