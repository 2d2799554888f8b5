#pragma once

#include "core/mod_of_grobal_var.h"

#include <QSet>
#include <QString>

#include <span>

// The files picked for one disc: a table of 1000 slots in the shared state.

/// The slots that are scanned and filled, 0 to 999. Their names and which of them are free are for the functions below
/// to change.
std::span<FinalListEntry> final_list_slots();

/// Result of add_to_final_list.
enum AddResult : i16
{
    list_full = 0,
    already_listed = 1,
    added = 2
};

/// Puts a file of the current folder into the lowest free slot. Raises "Overflow", with nothing changed, when the
/// bytes of all files pass 32 bits.
i16 add_to_final_list(const QString& name, const QString& folder, const QString& full_path, i32 size,
                      const QString& type_text, const QString& date_text);

/// Frees the first slot of this name and folder, in use or not; 1 when there was one, else 0. `size` is what goes off
/// the sum of bytes.
i16 remove_from_final_list(const QString& name, const QString& folder, const QString& full_path, i32 size);

/// Frees the first slot of this path, in use or not; 1 when there was one, else 0.
i16 remove_from_final_list_by_path(const QString& full_path);

/// 1 when a file of exactly this name is listed, from whatever folder.
i16 is_name_in_final_list(const QString& name);

/// 1 when exactly this file is listed.
i16 is_in_final_list(const QString& name, const QString& folder);

/// The names listed from one folder: what is_in_final_list answers for all files of a folder at once.
QSet<QString> final_list_names_in(const QString& folder);

/// Gives a listed file its new name; 1 when done. 0 when no such file is listed, or when the new name is listed
/// already, which is shown as message 106.
i16 rename_in_final_list(const QString& old_name, const QString& old_folder, const QString& new_name,
                         const QString& new_folder);

/// The folder of the first listed file of this name; without one the folder of slot 0.
QString final_list_folder_of(const QString& name);

/// Sets the conversion mark of the first slot of this name, in use or not.
void set_convert_mark(const QString& name, i16 mark);

/// The list's totals as the status bars show them, such as "12 files/42MB".
QString final_total_text();
