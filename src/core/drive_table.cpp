#include "core/drive_table.h"

#include "core/mod_of_grobal_var.h"

#include <algorithm>
#include <span>

namespace {

std::span<DriveEntry> scanned_slots()
{
    return std::span(shared.drive_table).first(20);
}

} // namespace

void add_drive_entry(i16 kind, const QString& letter, i16 ready)
{
    const auto slots = scanned_slots();
    const auto free = std::ranges::find(slots, 0, &DriveEntry::in_use);
    if (free != slots.end())
        *free = {.kind = kind, .in_use = 1, .letter = letter, .ready = ready};
}

i16 get_drive_state(const QString& letter)
{
    const auto slots = scanned_slots();
    const auto drive = std::ranges::find(slots, letter, &DriveEntry::letter);
    if (drive == slots.end() || drive->ready != 1)
        return 0;
    return drive->kind == 2 ? 2 : 1;
}
