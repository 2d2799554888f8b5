#include "selection/final_list.h"

#include "core/Mod_of_nation.h"
#include "fif/mod_of_FIF.h"
#include "platform/text.h"

#include <QHash>

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

/// Knows which slots bear a name, in use or not, and where free slots begin, so that nobody has to go through the table
/// for each file. It holds as long as nobody else names or frees a slot.
class SlotIndex
{
public:
    /// The index of the table. A fresh run has a table of its own, which is read then.
    static SlotIndex& of_table();

    /// The first slot of this name that `matches`; nullptr when there is none.
    template<typename Matches> FinalListEntry* first_of(const QString& name, const Matches& matches) const
    {
        if (name.isEmpty())
            return find_slot([&](const FinalListEntry& slot) { return slot.name.isEmpty() && matches(slot); });
        const auto slots = slots_.constFind(name);
        if (slots == slots_.cend())
            return nullptr;
        const auto slot = std::ranges::find_if(*slots, [&](const FinalListEntry* entry) { return matches(*entry); });
        return slot == slots->end() ? nullptr : *slot;
    }

    /// The lowest free slot; nullptr when all are in use.
    FinalListEntry* lowest_free();
    void set_name(FinalListEntry& slot, const QString& name);
    void set_free(FinalListEntry& slot);

private:
    QHash<QString, std::vector<FinalListEntry*>> slots_; ///< those of each name but the empty one, in their order
    std::size_t lowest_free_ = 0;                        ///< no slot below it is free
    const FinalListEntry* last_named_ = final_list_slots().data();
    QString last_name_; ///< of that slot; the very text that the table holds
};

SlotIndex& SlotIndex::of_table()
{
    static SlotIndex index;
    if (index.last_named_->name.constData() != index.last_name_.constData()) {
        index = {};
        for (FinalListEntry& slot : final_list_slots()) {
            if (!slot.name.isEmpty())
                index.slots_[slot.name].push_back(&slot);
        }
        index.last_name_ = index.last_named_->name;
    }
    return index;
}

FinalListEntry* SlotIndex::lowest_free()
{
    const auto slots = final_list_slots();
    while (lowest_free_ < slots.size() && slots[lowest_free_].in_use != 0)
        ++lowest_free_;
    return lowest_free_ < slots.size() ? &slots[lowest_free_] : nullptr;
}

void SlotIndex::set_name(FinalListEntry& slot, const QString& name)
{
    if (const auto old = slots_.find(slot.name); old != slots_.end()) {
        std::erase(*old, &slot);
        if (old->empty())
            slots_.erase(old);
    }
    if (!name.isEmpty()) {
        std::vector<FinalListEntry*>& slots = slots_[name];
        slots.insert(std::ranges::upper_bound(slots, &slot), &slot);
    }
    // An empty name has a text too, unlike that of a slot of a fresh table.
    slot.name = name.isEmpty() ? u""_s : name;
    last_named_ = &slot;
    last_name_ = slot.name;
}

void SlotIndex::set_free(FinalListEntry& slot)
{
    slot.in_use = 0;
    lowest_free_ = std::min(lowest_free_, static_cast<std::size_t>(&slot - final_list_slots().data()));
}

FinalListEntry* live_slot_of(const QString& name)
{
    return SlotIndex::of_table().first_of(name, [](const FinalListEntry& slot) { return slot.in_use == 1; });
}

FinalListEntry* live_slot_of(const QString& name, const QString& folder)
{
    return SlotIndex::of_table().first_of(
        name, [&](const FinalListEntry& slot) { return slot.in_use == 1 && slot.folder == folder; });
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
    SlotIndex::of_table().set_free(slot);
}

} // namespace

std::span<FinalListEntry> final_list_slots()
{
    return std::span(shared.final_list).first(1000);
}

i16 add_to_final_list(const QString& name, const QString& folder, const QString& full_path, i32 size,
                      const QString& type_text, const QString& date_text)
{
    FinalListEntry* const slot = SlotIndex::of_table().lowest_free();
    if (slot == nullptr)
        return list_full;
    if (is_name_in_final_list(name) == 1)
        return already_listed;
    add_to_totals(1, size);
    // The conversion mark keeps what the slot held, on purpose: the conversion dialog sets it before it reads it.
    slot->in_use = 1;
    slot->kind = Check_file_for_fif(name);
    SlotIndex::of_table().set_name(*slot, name);
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
        SlotIndex::of_table().first_of(name, [&](const FinalListEntry& entry) { return entry.folder == folder; });
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
    SlotIndex::of_table().set_name(*slot, new_name);
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
    if (FinalListEntry* const slot = SlotIndex::of_table().first_of(name, [](const FinalListEntry&) { return true; }))
        slot->convert = mark;
}

QString final_total_text()
{
    return QString::number(shared.final_list_count) + u" files/"_s +
           QString::number(megabytes(shared.final_list_bytes)) + u"MB"_s;
}
