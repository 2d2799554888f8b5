#include "ui_faults.h"

#include "platform/RunTimeError.h"
#include "platform/controls/message_window.h"
#include "platform/drives.h"
#include "platform/file_names.h"
#include "platform/paths.h"
#include "selection/final_list.h"
#include "test_main.h"
#include "ui_file_prompts.h"

#include <QTest>

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

using namespace Qt::StringLiterals;

namespace {

namespace fs = std::filesystem;

constexpr int tag_bytes = 128;
constexpr qsizetype told_findings = 12; ///< a report of more helps nobody
constexpr DiskFault no_fault{.name = "none"};

/// One person for all questions: what could destroy something is refused unless the operation says otherwise.
class NotedAnswers : public ScriptedPrompts
{
public:
    explicit NotedAnswers(const FaultedOperation& operation) : operation_(operation) {}

    Overwrite ask_overwrite(const FileFacts& source, const FileFacts& target) override
    {
        always = Answer::no;
        return ScriptedPrompts::ask_overwrite(source, target);
    }
    OnError ask_error(const QString& path, const QString& reason, bool more_follow) override
    {
        always = operation_.on_error == OnError::skip ? Answer::skip : Answer::cancel;
        return ScriptedPrompts::ask_error(path, reason, more_follow);
    }
    bool ask_trash(const QStringList& paths) override
    {
        always = Answer::yes;
        return ScriptedPrompts::ask_trash(paths);
    }
    bool ask_delete(const QStringList& paths) override
    {
        deleted_for_good = operation_.may_delete;
        always = operation_.may_delete ? Answer::yes : Answer::no;
        return ScriptedPrompts::ask_delete(paths);
    }

    bool deleted_for_good = false;

private:
    const FaultedOperation& operation_;
};

QByteArray root()
{
    return native_path(u"C:\\"_s);
}

QByteArray trash()
{
    return qgetenv("XDG_DATA_HOME") + "/Trash";
}

QByteArray without_slash(QByteArray path)
{
    while (path.endsWith('/'))
        path.chop(1);
    return path;
}

void read_below(const QByteArray& folder, DiskContent& content)
{
    if (!fs::exists(folder.toStdString()))
        return;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder.toStdString())) {
        if (!entry.is_regular_file())
            continue;
        std::ifstream file(entry.path(), std::ios::binary);
        std::ostringstream bytes;
        bytes << file.rdbuf();
        content[QByteArray::fromStdString(entry.path().string())] = QByteArray::fromStdString(bytes.str());
    }
}

/// The files of C: and those in the trash, but not the trash's own notes.
DiskContent disk_content()
{
    DiskContent content;
    read_below(without_slash(root()), content);
    read_below(trash() + "/files", content);
    return content;
}

QString shown(const QByteArray& native)
{
    const QByteArray in_trash = trash() + "/files/";
    if (native.startsWith(in_trash))
        return u"trash: "_s + name_from_bytes(native.sliced(in_trash.size()));
    const QString path = name_from_bytes(native.sliced(without_slash(root()).size() + 1));
    return u"C:\\"_s + QString(path).replace(u'/', u'\\');
}

QStringList shown_paths(const DiskContent& content)
{
    QStringList paths;
    for (auto file = content.begin(); file != content.end(); ++file)
        paths.append(shown(file.key()));
    paths.sort();
    return paths;
}

/// What nobody but this file has. A file that is shorter than a tag is all audio.
QByteArray audio_of(const QByteArray& content)
{
    return content.size() < tag_bytes ? content : content.chopped(tag_bytes);
}

/// A listed file: where its record leads, and whose audio stands there.
struct Listed
{
    std::size_t slot = 0;
    QString path;
    QByteArray audio;
};

QList<Listed> listed_files(const DiskContent& content)
{
    QList<Listed> files;
    const auto slots = final_list_slots();
    for (std::size_t slot = 0; slot < slots.size(); ++slot) {
        if (slots[slot].in_use == 1)
            files.append({.slot = slot,
                          .path = slots[slot].full_path,
                          .audio = audio_of(content.value(native_path(slots[slot].full_path)))});
    }
    return files;
}

/// The proof of one operation.
class Proof
{
public:
    explicit Proof(const FaultedOperation& operation) : operation_(operation) {}

    void run()
    {
        run_once(no_fault, 0);
        for (const DiskFault& fault : disk_faults()) {
            constexpr int too_many = 5000;
            int nth = 1;
            while (nth < too_many && findings_.size() < told_findings && run_once(fault, nth))
                ++nth;
            if (nth == too_many)
                findings_.append(u"never runs through with "_s + QLatin1StringView(fault.name));
        }
        if (strikes_ == 0)
            findings_.append(u"no call on the disk was seen"_s);
        if (!findings_.isEmpty())
            QTest::qFail(qPrintable(QLatin1StringView(operation_.name) + u":\n"_s + findings_.join(u'\n')), __FILE__,
                         __LINE__);
    }

private:
    /// Gives whether the fault came.
    bool run_once(const DiskFault& fault, int nth);
    void act(FaultedRun& run);

    QStringList findings_in(const FaultedRun& run);
    void take_new_tags(const FaultedRun& run);
    bool may_be(const QByteArray& content) const;
    void look_for_lost_content(const FaultedRun& run);
    void look_for_strange_content(const FaultedRun& run);
    void look_at_bystanders(const FaultedRun& run);
    void look_at_records(const FaultedRun& run);
    void look_at_record(const FaultedRun& run, const Listed& old);
    void look_at_totals();
    void look_at_words(const FaultedRun& run);

    const FaultedOperation& operation_;
    QList<Listed> listed_;
    QMap<QByteArray, std::set<QByteArray>> contents_; ///< what a file may hold, by its audio
    std::set<QByteArray> new_tags_; ///< what a file may get that kept its tag where nothing went wrong
    bool deleted_for_good_ = false;
    int strikes_ = 0;
    QStringList found_;    ///< in this run
    QStringList findings_; ///< in all, each with its run
};

bool Proof::run_once(const DiskFault& fault, int nth)
{
    fs::remove_all(trash().toStdString());
    operation_.prepare();
    FaultedRun run;
    run.fault = fault;
    run.nth = nth;
    run.before = disk_content();
    listed_ = listed_files(run.before);
    act(run);
    run.after = disk_content();
    for (const QByteArray& content : run.before)
        contents_[audio_of(content)].insert(content);
    if (nth == 0)
        take_new_tags(run);
    const QByteArray where = run.failed_call.isEmpty() ? QByteArray("nothing") : run.failed_call;
    for (const QString& finding : findings_in(run))
        findings_.append(u"  %1, call %2, %3 fails: %4"_s.arg(QLatin1StringView(fault.name))
                             .arg(nth)
                             .arg(QString::fromUtf8(where), finding));
    strikes_ += run.failed_call.isEmpty() ? 0 : 1;
    return !run.failed_call.isEmpty();
}

void Proof::act(FaultedRun& run)
{
    NotedMessages messages;
    NotedAnswers answers(operation_);
    set_fatal_error_handler([&run](const RunTimeError& error) { run.run_time_errors.append(error.number()); });
    run.failed_call = with_fault({without_slash(root()), trash() + "/info"}, run.nth, run.fault, [&] {
        try {
            operation_.act();
        } catch (const RunTimeError& error) {
            run.run_time_errors.append(error.number());
        }
    });
    set_fatal_error_handler({});
    run.messages = messages.take();
    run.questions = answers.take();
    deleted_for_good_ = answers.deleted_for_good;
}

QStringList Proof::findings_in(const FaultedRun& run)
{
    found_.clear();
    look_for_lost_content(run);
    look_for_strange_content(run);
    look_at_bystanders(run);
    look_at_records(run);
    look_at_totals();
    look_at_words(run);
    if (run.failed_call.isEmpty() && shown_paths(run.after) != operation_.result)
        found_.append(u"came to "_s + shown_paths(run.after).join(u", "_s));
    if (run.failed_call.isEmpty() && run.messages != operation_.messages)
        found_.append(u"told: "_s + run.messages.join(u", "_s));
    if (operation_.more_findings)
        found_.append(operation_.more_findings(run));
    return found_;
}

void Proof::take_new_tags(const FaultedRun& run)
{
    for (const QByteArray& content : run.after) {
        if (contents_[audio_of(content)].insert(content).second)
            new_tags_.insert(content.right(tag_bytes));
    }
}

/// Whether a file may hold this: its old tag, or the one that it is to get. A file that had to stay as it was because
/// another took its name may get the name, and the tag, when the other doesn't.
bool Proof::may_be(const QByteArray& content) const
{
    const auto known = contents_.constFind(audio_of(content));
    if (known == contents_.constEnd())
        return false;
    return known->contains(content) || (known->size() == 1 && new_tags_.contains(content.right(tag_bytes)));
}

void Proof::look_for_lost_content(const FaultedRun& run)
{
    for (auto file = run.before.begin(); file != run.before.end(); ++file) {
        const bool is_there = std::ranges::any_of(
            run.after, [&](const QByteArray& content) { return audio_of(content) == audio_of(file.value()); });
        if (!is_there && !deleted_for_good_)
            found_.append(u"lost "_s + shown(file.key()));
    }
}

void Proof::look_for_strange_content(const FaultedRun& run)
{
    QMap<QByteArray, int> count;
    for (auto file = run.after.begin(); file != run.after.end(); ++file) {
        const QByteArray audio = audio_of(file.value());
        if (!may_be(file.value()))
            found_.append(u"strange content in "_s + shown(file.key()));
        if (++count[audio] > 1 && !operation_.may_copy)
            found_.append(u"a second "_s + shown(file.key()));
    }
}

void Proof::look_at_bystanders(const FaultedRun& run)
{
    for (const QString& path : operation_.bystanders) {
        const QByteArray native = native_path(path);
        if (!run.before.contains(native) || run.before.value(native) != run.after.value(native))
            found_.append(u"not left alone: "_s + path);
    }
}

void Proof::look_at_records(const FaultedRun& run)
{
    for (const Listed& old : listed_)
        look_at_record(run, old);
    for (const Listed& now : listed_files(run.after)) {
        if (std::ranges::none_of(listed_, [&](const Listed& old) { return old.slot == now.slot; }))
            found_.append(u"a new record of "_s + now.path);
    }
}

void Proof::look_at_record(const FaultedRun& run, const Listed& old)
{
    const FinalListEntry& record = final_list_slots()[old.slot];
    if (record.in_use != 1) {
        const bool is_there = audio_of(run.after.value(native_path(old.path))) == old.audio;
        if (is_there && !operation_.record_may_go)
            found_.append(u"no record any more of "_s + old.path);
        return;
    }
    if (record.full_path != record.folder + record.name)
        found_.append(u"a record in two minds: "_s + record.full_path);
    if (audio_of(run.after.value(native_path(record.full_path))) == old.audio)
        return;
    const bool leads = audio_of(run.after.value(native_path(old.path))) == old.audio;
    const bool lags = !leads && record.full_path == old.path;
    if (!(leads && operation_.record_may_lead) && !(lags && operation_.record_may_lag))
        found_.append(u"the record of %1 leads to %2"_s.arg(old.path, record.full_path));
}

void Proof::look_at_totals()
{
    i32 count = 0;
    i32 bytes = 0;
    for (const FinalListEntry& record : final_list_slots()) {
        count += record.in_use == 1 ? 1 : 0;
        bytes += record.in_use == 1 ? record.size : 0;
    }
    if (count != shared.final_list_count || bytes != shared.final_list_bytes)
        found_.append(u"wrong totals"_s);
}

void Proof::look_at_words(const FaultedRun& run)
{
    for (const QString& message : run.messages) {
        if (!operation_.messages.contains(message) && !operation_.told_messages.contains(message))
            found_.append(u"message: "_s + message);
    }
    for (const QString& question : run.questions) {
        if (std::ranges::none_of(operation_.told_questions,
                                 [&](const QString& beginning) { return question.startsWith(beginning); }))
            found_.append(u"question: "_s + question);
    }
    for (const int number : run.run_time_errors)
        found_.append(u"run-time error %1"_s.arg(number));
}

} // namespace

QByteArray marked_file(const QByteArray& mark, const QByteArray& tag)
{
    constexpr int audio_bytes = 400;
    return ("audio of " + mark + ' ').leftJustified(audio_bytes, '.') + tag;
}

void keep_disks_in_memory()
{
    if (::access("/dev/shm", R_OK | W_OK | X_OK) == 0)
        qputenv("TMPDIR", "/dev/shm");
}

void prove_against_faults(const FaultedOperation& operation)
{
    Proof(operation).run();
}
