#include "selection/final_list.h"

#include "core/Mod_of_nation.h"
#include "fif/mod_of_FIF.h"
#include "platform/text.h"

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

/// The first slot that `matches`; nullptr when there is none.
template<typename Matches> FinalListEntry* find_slot(const Matches& matches)
{
    const auto slots = final_list_slots();
    const auto slot = std::ranges::find_if(slots, matches);
    return slot == slots.end() ? nullptr : &*slot;
}

/// The first slot of this name that `matches`; nullptr when there is none.
template<typename Matches> FinalListEntry* find_slot_of(const QString& name, const Matches& matches)
{
    if (name.isEmpty())
        return find_slot([&](const FinalListEntry& slot) { return slot.name.isEmpty() && matches(slot); });
    const auto& slots_of_name = shared.final_list_index.slots_of_name;
    const auto numbers = slots_of_name.constFind(name);
    if (numbers == slots_of_name.cend())
        return nullptr;
    const auto slots = final_list_slots();
    const auto number = std::ranges::find_if(*numbers, [&](std::size_t slot) { return matches(slots[slot]); });
    return number == numbers->end() ? nullptr : &slots[*number];
}

std::size_t number_of(const FinalListEntry& slot)
{
    return static_cast<std::size_t>(&slot - final_list_slots().data());
}

/// The lowest free slot; nullptr when all are in use.
FinalListEntry* lowest_free_slot()
{
    const auto slots = final_list_slots();
    std::size_t& lowest = shared.final_list_index.lowest_free;
    while (lowest < slots.size() && slots[lowest].in_use != 0)
        ++lowest;
    return lowest < slots.size() ? &slots[lowest] : nullptr;
}

void set_name(FinalListEntry& slot, const QString& name)
{
    auto& slots_of_name = shared.final_list_index.slots_of_name;
    if (const auto old = slots_of_name.find(slot.name); old != slots_of_name.end()) {
        std::erase(*old, number_of(slot));
        if (old->empty())
            slots_of_name.erase(old);
    }
    if (!name.isEmpty()) {
        auto& numbers = slots_of_name[name];
        numbers.insert(std::ranges::upper_bound(numbers, number_of(slot)), number_of(slot));
    }
    slot.name = name;
}

FinalListEntry* live_slot_of(const QString& name)
{
    return find_slot_of(name, [](const FinalListEntry& slot) { return slot.in_use == 1; });
}

FinalListEntry* live_slot_of(const QString& name, const QString& folder)
{
    return find_slot_of(name, [&](const FinalListEntry& slot) { return slot.in_use == 1 && slot.folder == folder; });
}

/// Both totals move or, when one would overflow, neither.
void add_to_totals(i32 files, std::int64_t bytes)
{
    const i32 count = checked<i32>(std::int64_t{shared.final_list_count} + files);
    shared.final_list_bytes = checked<i32>(shared.final_list_bytes + bytes);
    shared.final_list_count = count;
}

/// Frees a slot, which keeps all its other fields; `size` goes off the sum of bytes.
void free_slot(FinalListEntry& slot, i32 size)
{
    add_to_totals(-1, -std::int64_t{size});
    slot.in_use = 0;
    std::size_t& lowest = shared.final_list_index.lowest_free;
    lowest = std::min(lowest, number_of(slot));
}

} // namespace

std::span<FinalListEntry> final_list_slots()
{
    return std::span(shared.final_list).first(1000);
}

i16 add_to_final_list(const QString& name, const QString& folder, const QString& full_path, i32 size,
                      const QString& type_text, const QString& date_text)
{
    FinalListEntry* const slot = lowest_free_slot();
    if (slot == nullptr)
        return list_full;
    if (is_name_in_final_list(name) == 1)
        return already_listed;
    add_to_totals(1, size);
    // The conversion mark keeps what the slot held, on purpose: the conversion dialog sets it before it reads it.
    slot->in_use = 1;
    slot->kind = Check_file_for_fif(name);
    set_name(*slot, name);
    slot->folder = folder;
    slot->full_path = full_path;
    slot->size = size;
    slot->type_text = type_text;
    slot->date_text = date_text;
    return added;
}

// Removals and the conversion mark take the first slot that matches, in use or not. A new entry goes to the lowest free
// slot, so a live one stands before any freed one of the same name.

i16 remove_from_final_list(const QString& name, const QString& folder, const QString& /*full_path*/, i32 size)
{
    FinalListEntry* const slot =
        find_slot_of(name, [&](const FinalListEntry& entry) { return entry.folder == folder; });
    if (slot == nullptr)
        return 0;
    free_slot(*slot, size);
    return 1;
}

i16 remove_from_final_list_by_path(const QString& full_path)
{
    FinalListEntry* const slot = find_slot([&](const FinalListEntry& entry) { return entry.full_path == full_path; });
    if (slot == nullptr)
        return 0;
    free_slot(*slot, slot->size);
    return 1;
}

i16 is_name_in_final_list(const QString& name)
{
    return live_slot_of(name) != nullptr ? 1 : 0;
}

i16 is_in_final_list(const QString& name, const QString& folder)
{
    return live_slot_of(name, folder) != nullptr ? 1 : 0;
}

QSet<QString> final_list_names_in(const QString& folder)
{
    QSet<QString> names;
    for (const FinalListEntry& slot : final_list_slots()) {
        if (slot.in_use == 1 && slot.folder == folder)
            names.insert(slot.name);
    }
    return names;
}

i16 rename_in_final_list(const QString& old_name, const QString& old_folder, const QString& new_name,
                         const QString& new_folder)
{
    if (is_name_in_final_list(new_name) == 1) {
        show_name_message(msg_exists_in_list, new_name);
        return 0;
    }
    FinalListEntry* const slot = live_slot_of(old_name, old_folder);
    if (slot == nullptr)
        return 0;
    set_name(*slot, new_name);
    slot->folder = new_folder;
    slot->full_path = new_folder + new_name;
    slot->kind = Check_file_for_fif(new_name);
    return 1;
}

QString final_list_folder_of(const QString& name)
{
    const FinalListEntry* const slot = live_slot_of(name);
    return slot != nullptr ? slot->folder : final_list_slots().front().folder;
}

void set_convert_mark(const QString& name, i16 mark)
{
    if (FinalListEntry* const slot = find_slot_of(name, [](const FinalListEntry&) { return true; }))
        slot->convert = mark;
}

QString final_total_text()
{
    return QString::number(shared.final_list_count) + u" files/"_s +
           QString::number(megabytes(shared.final_list_bytes)) + u"MB"_s;
}
