#include "test_main.h"

#include "core/mod_of_grobal_var.h"
#include "sample_files.h"
#include "selection/final_list.h"

#include <QCoreApplication>
#include <QRandomGenerator>
#include <QTest>

#include <algorithm>
#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr i32 largest = 2147483647;
const QString folder_a = u"C:\\A\\"_s;
const QString folder_b = u"C:\\B\\"_s;

i16 add(const QString& name, const QString& folder = folder_a, i32 size = 100)
{
    return add_to_final_list(name, folder, folder + name, size, u"type of "_s + name, u"date of "_s + name);
}

i16 remove(const QString& name, const QString& folder = folder_a, i32 size = 100)
{
    return remove_from_final_list(name, folder, folder + name, size);
}

QString numbered(int number)
{
    return u"%1.mp3"_s.arg(number);
}

void fill_all_slots()
{
    for (int i = 0; i < 1000; ++i)
        QCOMPARE(add(numbered(i)), added);
}

/// All that the table holds, for comparing it before and after.
QString whole_table()
{
    QString text = u"%1 %2\n"_s.arg(shared.final_list_count).arg(shared.final_list_bytes);
    for (const FinalListEntry& slot : shared.final_list)
        text += QStringList({QString::number(slot.in_use), QString::number(slot.kind), QString::number(slot.convert),
                             slot.name, slot.folder, slot.full_path, QString::number(slot.size), slot.type_text,
                             slot.date_text})
                    .join(u'|') +
                u'\n';
    return text;
}

QByteArray tagged_file(const QByteArray& artist, const QByteArray& title)
{
    return sample_tag({.title = title, .artist = artist, .album = {}, .year = {}, .comment = {}});
}

/// The table as it is told: each operation goes through the slots one by one.
class PlainTable
{
public:
    i16 add(const QString& name, const QString& folder, i32 size)
    {
        const auto slot = std::ranges::find(slots_, 0, &FinalListEntry::in_use);
        if (slot == slots_.end())
            return list_full;
        if (has_live(name))
            return already_listed;
        slot->in_use = 1;
        slot->kind = name.startsWith(u'[') ? 1 : 0;
        slot->name = name;
        slot->folder = folder;
        slot->full_path = folder + name;
        slot->size = size;
        return added;
    }

    i16 remove(const QString& name, const QString& folder)
    {
        return free(first([&](const FinalListEntry& slot) { return slot.name == name && slot.folder == folder; }));
    }

    i16 remove_by_path(const QString& path)
    {
        return free(first([&](const FinalListEntry& slot) { return slot.full_path == path; }));
    }

    bool has_live(const QString& name)
    {
        return first([&](const FinalListEntry& slot) { return slot.in_use == 1 && slot.name == name; }) != nullptr;
    }

    bool has_live(const QString& name, const QString& folder) { return live(name, folder) != nullptr; }

    i16 rename(const QString& old_name, const QString& old_folder, const QString& name, const QString& folder)
    {
        FinalListEntry* const slot = has_live(name) ? nullptr : live(old_name, old_folder);
        if (slot == nullptr)
            return 0;
        slot->kind = name.startsWith(u'[') ? 1 : 0;
        slot->name = name;
        slot->folder = folder;
        slot->full_path = folder + name;
        return 1;
    }

    QString folder_of(const QString& name)
    {
        FinalListEntry* const slot =
            first([&](const FinalListEntry& entry) { return entry.in_use == 1 && entry.name == name; });
        return slot != nullptr ? slot->folder : slots_.front().folder;
    }

    void mark(const QString& name, i16 value)
    {
        if (FinalListEntry* const slot = first([&](const FinalListEntry& entry) { return entry.name == name; }))
            slot->convert = value;
    }

    const std::vector<FinalListEntry>& slots() const { return slots_; }

private:
    template<typename Matches> FinalListEntry* first(const Matches& matches)
    {
        const auto slot = std::ranges::find_if(slots_, matches);
        return slot == slots_.end() ? nullptr : &*slot;
    }

    FinalListEntry* live(const QString& name, const QString& folder)
    {
        return first(
            [&](const FinalListEntry& slot) { return slot.in_use == 1 && slot.name == name && slot.folder == folder; });
    }

    static i16 free(FinalListEntry* slot)
    {
        if (slot == nullptr)
            return 0;
        slot->in_use = 0;
        return 1;
    }

    std::vector<FinalListEntry> slots_ = std::vector<FinalListEntry>(1000);
};

bool is_same(const FinalListEntry& a, const FinalListEntry& b)
{
    return a.in_use == b.in_use && a.kind == b.kind && a.convert == b.convert && a.name == b.name &&
           a.folder == b.folder && a.full_path == b.full_path && a.size == b.size;
}

/// A walk of random operations on the table and on a plain one.
class TableWalk
{
public:
    TableWalk(quint32 seed, int names) : random_(seed), names_(names) {}

    /// Whether both gave the same answers.
    bool step(int adds_in_100)
    {
        const QString name = any_name();
        const QString folder = any_folder();
        const QString other = any_name();
        if (random_.bounded(100) < adds_in_100)
            return add_to_final_list(name, folder, folder + name, 7, {}, {}) == plain_.add(name, folder, 7);
        switch (random_.bounded(7)) {
        case 0:
            return remove_from_final_list(name, folder, {}, 7) == plain_.remove(name, folder);
        case 1:
            return remove_from_final_list_by_path(folder + name) == plain_.remove_by_path(folder + name);
        case 2:
            return is_name_in_final_list(name) == (plain_.has_live(name) ? 1 : 0);
        case 3:
            return is_in_final_list(name, folder) == (plain_.has_live(name, folder) ? 1 : 0);
        case 4:
            return rename_in_final_list(name, folder, other, folder) == plain_.rename(name, folder, other, folder);
        case 5:
            return final_list_folder_of(name) == plain_.folder_of(name);
        default: {
            const auto value = static_cast<i16>(random_.bounded(2));
            set_convert_mark(name, value);
            plain_.mark(name, value);
            return true;
        }
        }
    }

    bool is_table() const { return std::ranges::equal(final_list_slots(), plain_.slots(), is_same); }

private:
    QString any_name()
    {
        const int number = random_.bounded(names_);
        switch (number % 5) {
        case 0:
            return u"[A][%1].mp3"_s.arg(number);
        case 1:
            return u"song %1.MP3"_s.arg(number - 1); // but for the case the one below
        case 2:
            return number == 2 ? QString() : u"song %1.mp3"_s.arg(number - 2);
        case 3:
            return u"노래 %1.mp3"_s.arg(number);
        default:
            return numbered(number);
        }
    }

    QString any_folder() { return random_.bounded(3) == 0 ? folder_b : folder_a; }

    QRandomGenerator random_;
    int names_;
    PlainTable plain_;
};

} // namespace

class TestFinalList : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestDisk> disk_;

private Q_SLOTS:
    void init() { disk_ = std::make_unique<TestDisk>(); }
    void cleanup() { disk_.reset(); }

    void a_fresh_table_is_empty();
    void an_added_file_fills_every_field();
    void kind_is_the_classification_in_the_current_folder();
    void the_conversion_mark_stays_as_the_slot_held_it();
    void a_new_entry_goes_to_the_lowest_free_slot();
    void the_same_name_is_refused_from_any_folder();
    void case_tells_names_apart();
    void a_full_table_refuses_silently();
    void a_full_table_refuses_before_it_looks_at_the_name();
    void the_last_slot_is_never_used();
    void a_removed_slot_keeps_its_other_fields();
    void a_removal_takes_off_the_size_given();
    void a_removal_by_path_takes_off_the_size_stored();
    void a_removal_of_nothing_changes_nothing();
    void a_removal_does_not_look_at_use();
    void a_removal_takes_the_live_entry_before_a_freed_one();
    void questions_count_live_entries_only();
    void names_of_one_folder();
    void a_rename_updates_the_record();
    void a_rename_takes_the_kind_of_the_new_name();
    void a_rename_onto_a_listed_name_is_refused();
    void a_rename_of_what_is_not_listed_changes_nothing();
    void a_rename_passes_over_freed_slots();
    void a_rename_may_be_given_the_records_own_texts();
    void folder_of_a_name();
    void the_mark_goes_to_the_first_slot_of_the_name();
    void bytes_up_to_the_edge_are_taken();
    void an_overflow_of_the_bytes_changes_nothing();
    void an_overflow_of_the_count_changes_nothing();
    void an_overflow_of_a_removal_changes_nothing();
    void total_text_data();
    void total_text();
    void totals_follow_the_table();
    void a_fresh_run_has_a_table_of_its_own();
    void random_walks_agree_with_a_plain_table_data();
    void random_walks_agree_with_a_plain_table();
};

void TestFinalList::a_fresh_table_is_empty()
{
    QCOMPARE(final_list_slots().size(), std::size_t{1000});
    QCOMPARE(shared.final_list.size(), std::size_t{1001});
    for (const FinalListEntry& slot : shared.final_list)
        QCOMPARE(slot.in_use, i16{0});
    QCOMPARE(final_total_text(), u"0 files/0MB"_s);
}

void TestFinalList::an_added_file_fills_every_field()
{
    QCOMPARE(add_to_final_list(u"a.mp3"_s, folder_a, u"C:\\A\\a.mp3"_s, 1234, u"MP3 file"_s, u"a date"_s), i16{2});
    const FinalListEntry& slot = shared.final_list[0];
    QCOMPARE(slot.in_use, i16{1});
    QCOMPARE(slot.kind, i16{0});
    QCOMPARE(slot.name, u"a.mp3"_s);
    QCOMPARE(slot.folder, folder_a);
    QCOMPARE(slot.full_path, u"C:\\A\\a.mp3"_s);
    QCOMPARE(slot.size, 1234);
    QCOMPARE(slot.type_text, u"MP3 file"_s);
    QCOMPARE(slot.date_text, u"a date"_s);
    QCOMPARE(shared.final_list_count, 1);
    QCOMPARE(shared.final_list_bytes, 1234);
}

void TestFinalList::kind_is_the_classification_in_the_current_folder()
{
    disk_->write(u"C:\\A\\tagged.mp3"_s, tagged_file("Artist", "Title"));
    shared.current_folder = folder_a;
    add(u"tagged.mp3"_s);
    add(u"untagged.mp3"_s);
    add(u"[A][T].mp3"_s);
    shared.current_folder = folder_b;
    remove(u"tagged.mp3"_s);
    QCOMPARE(shared.final_list[0].kind, i16{2});
    add(u"tagged.mp3"_s);
    QCOMPARE(shared.final_list[0].kind, i16{0});
    QCOMPARE(shared.final_list[1].kind, i16{0});
    QCOMPARE(shared.final_list[2].kind, i16{1});
}

void TestFinalList::the_conversion_mark_stays_as_the_slot_held_it()
{
    add(u"a.mp3"_s);
    QCOMPARE(shared.final_list[0].convert, i16{0});
    set_convert_mark(u"a.mp3"_s, 1);
    remove(u"a.mp3"_s);
    add(u"b.mp3"_s);
    QCOMPARE(shared.final_list[0].name, u"b.mp3"_s);
    QCOMPARE(shared.final_list[0].convert, i16{1});
}

void TestFinalList::a_new_entry_goes_to_the_lowest_free_slot()
{
    add(u"a.mp3"_s);
    add(u"b.mp3"_s);
    add(u"c.mp3"_s);
    QCOMPARE(remove(u"a.mp3"_s), i16{1});
    QCOMPARE(add(u"d.mp3"_s), added);
    QCOMPARE(shared.final_list[0].name, u"d.mp3"_s);
    QCOMPARE(shared.final_list[1].name, u"b.mp3"_s);
    QCOMPARE(shared.final_list[3].in_use, i16{0});
    QCOMPARE(shared.final_list_count, 3);
}

void TestFinalList::the_same_name_is_refused_from_any_folder()
{
    QCOMPARE(add(u"a.mp3"_s, folder_a), i16{2});
    const QString before = whole_table();
    QCOMPARE(add(u"a.mp3"_s, folder_a), i16{1});
    QCOMPARE(add(u"a.mp3"_s, folder_b), i16{1});
    QCOMPARE(whole_table(), before);
}

void TestFinalList::case_tells_names_apart()
{
    QCOMPARE(add(u"a.mp3"_s), added);
    QCOMPARE(add(u"A.mp3"_s), added);
    QCOMPARE(is_name_in_final_list(u"a.MP3"_s), i16{0});
    QCOMPARE(is_in_final_list(u"a.mp3"_s, u"c:\\A\\"_s), i16{0});
    QCOMPARE(shared.final_list_count, 2);
}

void TestFinalList::a_full_table_refuses_silently()
{
    NotedMessages messages;
    fill_all_slots();
    const QString before = whole_table();
    QCOMPARE(add(u"one more.mp3"_s), i16{0});
    QCOMPARE(whole_table(), before);
    QCOMPARE(shared.final_list_count, 1000);
    QCOMPARE(messages.take(), QStringList());
}

void TestFinalList::a_full_table_refuses_before_it_looks_at_the_name()
{
    fill_all_slots();
    QCOMPARE(add(numbered(5)), i16{0});
    remove(numbered(7));
    QCOMPARE(add(numbered(5)), i16{1});
    QCOMPARE(add(numbered(7)), i16{2});
    QCOMPARE(shared.final_list[7].name, numbered(7));
}

void TestFinalList::the_last_slot_is_never_used()
{
    fill_all_slots();
    add(u"one more.mp3"_s);
    QCOMPARE(shared.final_list[999].in_use, i16{1});
    QCOMPARE(shared.final_list[1000].in_use, i16{0});
    FinalListEntry& last = shared.final_list[1000];
    last.in_use = 1;
    last.name = u"x.mp3"_s;
    last.folder = folder_a;
    last.full_path = folder_a + last.name;
    QCOMPARE(is_name_in_final_list(u"x.mp3"_s), i16{0});
    QCOMPARE(is_in_final_list(u"x.mp3"_s, folder_a), i16{0});
    QCOMPARE(remove(u"x.mp3"_s), i16{0});
    QCOMPARE(remove_from_final_list_by_path(u"C:\\A\\x.mp3"_s), i16{0});
    QVERIFY(!final_list_names_in(folder_a).contains(u"x.mp3"_s));
    set_convert_mark(u"x.mp3"_s, 1);
    QCOMPARE(shared.final_list[1000].convert, i16{0});
}

void TestFinalList::a_removed_slot_keeps_its_other_fields()
{
    add(u"[A][T].mp3"_s);
    QCOMPARE(remove(u"[A][T].mp3"_s), i16{1});
    const FinalListEntry& slot = shared.final_list[0];
    QCOMPARE(slot.in_use, i16{0});
    QCOMPARE(slot.kind, i16{1});
    QCOMPARE(slot.name, u"[A][T].mp3"_s);
    QCOMPARE(slot.folder, folder_a);
    QCOMPARE(slot.full_path, u"C:\\A\\[A][T].mp3"_s);
    QCOMPARE(slot.size, 100);
    QCOMPARE(shared.final_list_count, 0);
    QCOMPARE(shared.final_list_bytes, 0);
}

void TestFinalList::a_removal_takes_off_the_size_given()
{
    add(u"a.mp3"_s, folder_a, 1000);
    add(u"b.mp3"_s, folder_a, 500);
    QCOMPARE(remove_from_final_list(u"a.mp3"_s, folder_a, u"not looked at"_s, 300), i16{1});
    QCOMPARE(shared.final_list_bytes, 1200);
    QCOMPARE(shared.final_list_count, 1);
}

void TestFinalList::a_removal_by_path_takes_off_the_size_stored()
{
    add(u"a.mp3"_s, folder_a, 1000);
    add(u"b.mp3"_s, folder_a, 500);
    QCOMPARE(remove_from_final_list_by_path(u"C:\\A\\a.mp3"_s), i16{1});
    QCOMPARE(shared.final_list_bytes, 500);
    QCOMPARE(shared.final_list_count, 1);
    QCOMPARE(shared.final_list[0].in_use, i16{0});
    QCOMPARE(remove_from_final_list_by_path(u"C:\\A\\c.mp3"_s), i16{0});
    QCOMPARE(shared.final_list_count, 1);
}

void TestFinalList::a_removal_of_nothing_changes_nothing()
{
    add(u"a.mp3"_s);
    const QString before = whole_table();
    QCOMPARE(remove(u"b.mp3"_s), i16{0});
    QCOMPARE(remove(u"a.mp3"_s, folder_b), i16{0});
    QCOMPARE(whole_table(), before);
}

void TestFinalList::a_removal_does_not_look_at_use()
{
    add(u"a.mp3"_s, folder_a, 1000);
    QCOMPARE(remove(u"a.mp3"_s, folder_a, 1000), i16{1});
    QCOMPARE(remove(u"a.mp3"_s, folder_a, 1000), i16{1});
    QCOMPARE(shared.final_list_count, -1);
    QCOMPARE(shared.final_list_bytes, -1000);
    QCOMPARE(remove_from_final_list_by_path(u"C:\\A\\a.mp3"_s), i16{1});
    QCOMPARE(shared.final_list_count, -2);
    QCOMPARE(shared.final_list_bytes, -2000);
}

void TestFinalList::a_removal_takes_the_live_entry_before_a_freed_one()
{
    add(u"a.mp3"_s);
    add(u"b.mp3"_s);
    remove(u"a.mp3"_s);
    remove(u"b.mp3"_s);
    add(u"b.mp3"_s);
    QCOMPARE(shared.final_list[0].name, u"b.mp3"_s);
    QCOMPARE(shared.final_list[1].name, u"b.mp3"_s);
    QCOMPARE(remove(u"b.mp3"_s), i16{1});
    QCOMPARE(shared.final_list[0].in_use, i16{0});
    QCOMPARE(is_name_in_final_list(u"b.mp3"_s), i16{0});
}

void TestFinalList::questions_count_live_entries_only()
{
    add(u"a.mp3"_s);
    QCOMPARE(is_name_in_final_list(u"a.mp3"_s), i16{1});
    QCOMPARE(is_in_final_list(u"a.mp3"_s, folder_a), i16{1});
    QCOMPARE(is_in_final_list(u"a.mp3"_s, folder_b), i16{0});
    remove(u"a.mp3"_s);
    QCOMPARE(is_name_in_final_list(u"a.mp3"_s), i16{0});
    QCOMPARE(is_in_final_list(u"a.mp3"_s, folder_a), i16{0});
    QCOMPARE(is_name_in_final_list(QString()), i16{0});
}

void TestFinalList::names_of_one_folder()
{
    add(u"a.mp3"_s, folder_a);
    add(u"b.mp3"_s, folder_b);
    add(u"c.mp3"_s, folder_a);
    add(u"d.mp3"_s, folder_a);
    remove(u"c.mp3"_s, folder_a);
    QCOMPARE(final_list_names_in(folder_a), QSet<QString>({u"a.mp3"_s, u"d.mp3"_s}));
    QCOMPARE(final_list_names_in(folder_b), QSet<QString>({u"b.mp3"_s}));
    QCOMPARE(final_list_names_in(u"C:\\"_s), QSet<QString>());
}

void TestFinalList::a_rename_updates_the_record()
{
    add(u"a.mp3"_s, folder_a);
    add(u"b.mp3"_s, folder_b);
    set_convert_mark(u"b.mp3"_s, 1);
    QCOMPARE(rename_in_final_list(u"b.mp3"_s, folder_b, u"[A][T].mp3"_s, folder_a), i16{1});
    const FinalListEntry& slot = shared.final_list[1];
    QCOMPARE(slot.name, u"[A][T].mp3"_s);
    QCOMPARE(slot.folder, folder_a);
    QCOMPARE(slot.full_path, u"C:\\A\\[A][T].mp3"_s);
    QCOMPARE(slot.kind, i16{1});
    QCOMPARE(slot.in_use, i16{1});
    QCOMPARE(slot.convert, i16{1});
    QCOMPARE(slot.size, 100);
    QCOMPARE(slot.type_text, u"type of b.mp3"_s);
    QCOMPARE(slot.date_text, u"date of b.mp3"_s);
    QCOMPARE(shared.final_list[0].name, u"a.mp3"_s);
    QCOMPARE(shared.final_list_count, 2);
    QCOMPARE(shared.final_list_bytes, 200);
}

void TestFinalList::a_rename_takes_the_kind_of_the_new_name()
{
    disk_->write(u"C:\\A\\new.mp3"_s, tagged_file("Artist", "Title"));
    shared.current_folder = folder_a;
    add(u"[A][T].mp3"_s);
    QCOMPARE(shared.final_list[0].kind, i16{1});
    QCOMPARE(rename_in_final_list(u"[A][T].mp3"_s, folder_a, u"new.mp3"_s, folder_a), i16{1});
    QCOMPARE(shared.final_list[0].kind, i16{2});
    QCOMPARE(rename_in_final_list(u"new.mp3"_s, folder_a, u"newer.mp3"_s, folder_a), i16{1});
    QCOMPARE(shared.final_list[0].kind, i16{0});
    QCOMPARE(rename_in_final_list(u"newer.mp3"_s, folder_a, u"mp3"_s, folder_a), i16{1});
    QCOMPARE(shared.final_list[0].kind, i16{0});
}

void TestFinalList::a_rename_onto_a_listed_name_is_refused()
{
    NotedMessages messages;
    add(u"a.mp3"_s, folder_a);
    add(u"b.mp3"_s, folder_b);
    const QString before = whole_table();
    QCOMPARE(rename_in_final_list(u"a.mp3"_s, folder_a, u"b.mp3"_s, folder_a), i16{0});
    QCOMPARE(messages.take(), QStringList(u"b.mp3 already exists in MP3 File List"_s));
    QCOMPARE(rename_in_final_list(u"a.mp3"_s, folder_a, u"a.mp3"_s, folder_a), i16{0});
    QCOMPARE(messages.take(), QStringList(u"a.mp3 already exists in MP3 File List"_s));
    QCOMPARE(rename_in_final_list(u"not listed.mp3"_s, folder_a, u"a.mp3"_s, folder_a), i16{0});
    QCOMPARE(messages.take(), QStringList(u"a.mp3 already exists in MP3 File List"_s));
    QCOMPARE(whole_table(), before);
    QCOMPARE(rename_in_final_list(u"a.mp3"_s, folder_a, u"A.mp3"_s, folder_a), i16{1});
    QCOMPARE(messages.take(), QStringList());
}

void TestFinalList::a_rename_of_what_is_not_listed_changes_nothing()
{
    NotedMessages messages;
    add(u"a.mp3"_s);
    const QString before = whole_table();
    QCOMPARE(rename_in_final_list(u"b.mp3"_s, folder_a, u"c.mp3"_s, folder_a), i16{0});
    QCOMPARE(rename_in_final_list(u"a.mp3"_s, folder_b, u"c.mp3"_s, folder_b), i16{0});
    QCOMPARE(whole_table(), before);
    QCOMPARE(messages.take(), QStringList());
}

void TestFinalList::a_rename_passes_over_freed_slots()
{
    NotedMessages messages;
    add(u"a.mp3"_s);
    add(u"b.mp3"_s);
    remove(u"a.mp3"_s);
    QCOMPARE(rename_in_final_list(u"a.mp3"_s, folder_a, u"c.mp3"_s, folder_a), i16{0});
    QCOMPARE(rename_in_final_list(u"b.mp3"_s, folder_a, u"a.mp3"_s, folder_a), i16{1});
    QCOMPARE(shared.final_list[1].name, u"a.mp3"_s);
    QCOMPARE(messages.take(), QStringList());
}

void TestFinalList::a_rename_may_be_given_the_records_own_texts()
{
    add(u"a.mp3"_s);
    const FinalListEntry& slot = shared.final_list[0];
    QCOMPARE(rename_in_final_list(slot.name, slot.folder, u"b.mp3"_s, slot.folder), i16{1});
    QCOMPARE(slot.name, u"b.mp3"_s);
    QCOMPARE(slot.full_path, u"C:\\A\\b.mp3"_s);
}

void TestFinalList::folder_of_a_name()
{
    QCOMPARE(final_list_folder_of(u"a.mp3"_s), QString());
    add(u"a.mp3"_s, folder_a);
    add(u"b.mp3"_s, folder_b);
    QCOMPARE(final_list_folder_of(u"b.mp3"_s), folder_b);
    QCOMPARE(final_list_folder_of(u"c.mp3"_s), folder_a);
    remove(u"a.mp3"_s, folder_a);
    remove(u"b.mp3"_s, folder_b);
    QCOMPARE(final_list_folder_of(u"b.mp3"_s), folder_a);
}

void TestFinalList::the_mark_goes_to_the_first_slot_of_the_name()
{
    add(u"a.mp3"_s);
    add(u"b.mp3"_s);
    remove(u"a.mp3"_s);
    remove(u"b.mp3"_s);
    add(u"b.mp3"_s);
    set_convert_mark(u"b.mp3"_s, 1);
    QCOMPARE(shared.final_list[0].convert, i16{1});
    QCOMPARE(shared.final_list[1].convert, i16{0});
    remove(u"b.mp3"_s);
    set_convert_mark(u"b.mp3"_s, 0);
    QCOMPARE(shared.final_list[0].convert, i16{0});
    const QString before = whole_table();
    set_convert_mark(u"not listed.mp3"_s, 1);
    QCOMPARE(whole_table(), before);
}

void TestFinalList::bytes_up_to_the_edge_are_taken()
{
    QCOMPARE(add(u"a.mp3"_s, folder_a, largest), added);
    QCOMPARE(add(u"empty.mp3"_s, folder_a, 0), added);
    QCOMPARE(shared.final_list_bytes, largest);
    QCOMPARE(final_total_text(), u"2 files/2048MB"_s);
    QCOMPARE(remove(u"a.mp3"_s, folder_a, largest), i16{1});
    QCOMPARE(add(u"b.mp3"_s, folder_a, largest - 1), added);
    QCOMPARE(add(u"c.mp3"_s, folder_a, 1), added);
    QCOMPARE(shared.final_list_bytes, largest);
}

void TestFinalList::an_overflow_of_the_bytes_changes_nothing()
{
    add(u"a.mp3"_s, folder_a, largest);
    const QString before = whole_table();
    try {
        add(u"b.mp3"_s, folder_a, 1);
        QFAIL("no error");
    } catch (const RunTimeError& error) {
        QCOMPARE(error.number(), 6);
        QCOMPARE(error.text(), u"Overflow"_s);
    }
    QCOMPARE(whole_table(), before);
    QCOMPARE(add(u"c.mp3"_s, folder_a, 0), added);
}

void TestFinalList::an_overflow_of_the_count_changes_nothing()
{
    shared.final_list_count = largest;
    const QString before = whole_table();
    QVERIFY_THROWS_EXCEPTION(RunTimeError, add(u"a.mp3"_s));
    QCOMPARE(whole_table(), before);
}

void TestFinalList::an_overflow_of_a_removal_changes_nothing()
{
    add(u"a.mp3"_s, folder_a, 100);
    shared.final_list_bytes = -largest;
    QString before = whole_table();
    QVERIFY_THROWS_EXCEPTION(RunTimeError, remove(u"a.mp3"_s, folder_a, 2));
    QVERIFY_THROWS_EXCEPTION(RunTimeError, remove_from_final_list_by_path(u"C:\\A\\a.mp3"_s));
    QCOMPARE(whole_table(), before);
    QCOMPARE(remove(u"a.mp3"_s, folder_a, 1), i16{1});
    shared.final_list_count = -largest - 1;
    before = whole_table();
    QVERIFY_THROWS_EXCEPTION(RunTimeError, remove(u"a.mp3"_s, folder_a, 0));
    QCOMPARE(whole_table(), before);
}

void TestFinalList::total_text_data()
{
    QTest::addColumn<i32>("count");
    QTest::addColumn<i32>("bytes");
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << 0 << 0 << u"0 files/0MB"_s;
    QTest::newRow("12 files of 42 megabytes") << 12 << 44040192 << u"12 files/42MB"_s;
    QTest::newRow("half a megabyte rounds to 0") << 1 << 524288 << u"1 files/0MB"_s;
    QTest::newRow("a byte more than half a megabyte") << 1 << 524289 << u"1 files/1MB"_s;
    QTest::newRow("one and a half rounds to 2") << 1 << 1572864 << u"1 files/2MB"_s;
    QTest::newRow("two and a half rounds to 2") << 1 << 2621440 << u"1 files/2MB"_s;
    QTest::newRow("three and a half rounds to 4") << 1 << 3670016 << u"1 files/4MB"_s;
    QTest::newRow("no grouping of digits") << 1000 << largest << u"1000 files/2048MB"_s;
    QTest::newRow("below zero") << -1 << -1048576 << u"-1 files/-1MB"_s;
}

void TestFinalList::total_text()
{
    QFETCH(const i32, count);
    QFETCH(const i32, bytes);
    shared.final_list_count = count;
    shared.final_list_bytes = bytes;
    QTEST(final_total_text(), "text");
}

void TestFinalList::totals_follow_the_table()
{
    fill_all_slots();
    QCOMPARE(shared.final_list_count, 1000);
    QCOMPARE(shared.final_list_bytes, 100000);
    for (int i = 999; i >= 0; --i)
        QCOMPARE(remove(numbered(i)), i16{1});
    QCOMPARE(shared.final_list_count, 0);
    QCOMPARE(shared.final_list_bytes, 0);
    fill_all_slots();
    QCOMPARE(shared.final_list_count, 1000);
}

void TestFinalList::a_fresh_run_has_a_table_of_its_own()
{
    for (const QString& last : {u"b.mp3"_s, u""_s, QString()}) {
        add(u"a.mp3"_s);
        add(last);
        shared = {};
        QCOMPARE(is_name_in_final_list(u"a.mp3"_s), i16{0});
        QCOMPARE(is_name_in_final_list(last), i16{0});
        QCOMPARE(add(u"c.mp3"_s), added);
        QCOMPARE(shared.final_list[0].name, u"c.mp3"_s);
        shared = {};
    }
}

void TestFinalList::random_walks_agree_with_a_plain_table_data()
{
    QTest::addColumn<int>("names");
    QTest::addColumn<int>("adds_in_100");
    QTest::addColumn<int>("steps");
    QTest::newRow("a few names again and again") << 6 << 40 << 2000;
    QTest::newRow("many names in a table with gaps") << 400 << 30 << 4000;
    QTest::newRow("more names than the table holds") << 3000 << 85 << 3000;
    QTest::newRow("removals and renames of little") << 40 << 10 << 2000;
}

void TestFinalList::random_walks_agree_with_a_plain_table()
{
    QFETCH(int, names);
    QFETCH(int, adds_in_100);
    QFETCH(int, steps);
    NotedMessages messages;
    for (quint32 seed = 1; seed <= 2; ++seed) {
        shared = {}; // with what the walk before left behind
        TableWalk walk(seed, names);
        for (int step = 1; step <= steps; ++step) {
            QVERIFY2(walk.step(adds_in_100), qPrintable(u"seed %1, step %2"_s.arg(seed).arg(step)));
            if (step % 100 == 0)
                QVERIFY2(walk.is_table(), qPrintable(u"seed %1, step %2"_s.arg(seed).arg(step)));
        }
        QVERIFY(walk.is_table());
    }
    messages.take();
}

QUILMO_LOGIC_TEST(TestFinalList)
#include "test_final_list.moc"
