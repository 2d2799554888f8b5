#include "companion/Journal.h"
#include "companion/companion.h"
#include "companion/shown_text.h"

#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int status_cells = 8;

/// What an undo did, file by file.
class Undo
{
public:
    Undo(const JournalReader& journal, Output& output) : journal_(journal), output_(output), doubt_(journal.doubt()) {}

    void take_all_back();
    void tell_sum();

private:
    void try_again();
    void take_back(const Change& change, qint64 number, bool is_last_try);
    void tell(const Change& change, const TakenBack& result);

    const JournalReader& journal_;
    Output& output_;
    JournalDoubt doubt_;
    std::vector<qint64> put_off_; ///< numbers of changes, from the end, that may yet be taken back
    qint64 undone_ = 0;
    qint64 kept_ = 0;
    qint64 refused_ = 0;
};

/// From the end to the beginning. What stands in the way of a change may be that of another name of its file, which
/// comes before it.
void Undo::take_all_back()
{
    qint64 number = journal_.changes();
    journal_.each_backwards([&](const Change& change) { take_back(change, number--, false); });
    if (!put_off_.empty())
        try_again();
    doubt_.note(0);
}

void Undo::try_again()
{
    qint64 number = journal_.changes();
    auto next = put_off_.begin();
    journal_.each_backwards([&](const Change& change) {
        if (next != put_off_.end() && number == *next) {
            take_back(change, number, true);
            ++next;
        }
        --number;
    });
}

void Undo::take_back(const Change& change, qint64 number, bool is_last_try)
{
    const TakenBack result = ::take_back(change, journal_.is_in_doubt(number), [&] { doubt_.note(number); });
    if (result.is_in_doubt)
        doubt_.keep();
    if (result.may_yet && !is_last_try)
        return put_off_.push_back(number);
    if (result.reason) {
        ++refused_;
        output_.fail();
    } else {
        ++(result.had_to ? undone_ : kept_);
    }
    tell(change, result);
    output_.step("undoing");
}

void Undo::tell(const Change& change, const TakenBack& result)
{
    const QByteArray status = result.reason ? "cannot" : result.had_to ? "undone" : "keep";
    if (!output_.is_json()) {
        QByteArray line = status.leftJustified(status_cells);
        if (status == "keep")
            return output_.write(line + shown(change.old_path()));
        line += shown(change.new_path());
        if (change.renames())
            line += " -> " + shown(change.old_name);
        return output_.write(line + (result.reason ? ": " + result.reason.text() : QByteArray()));
    }
    QJsonObject object{{u"status"_s, QString::fromLatin1(status)}};
    put_bytes(object, u"path"_s, status == "keep" ? change.old_path() : change.new_path());
    if (change.renames() && status != "keep")
        put_bytes(object, u"old_name"_s, change.old_name);
    put_reason(object, result.reason);
    output_.write(object);
}

void Undo::tell_sum()
{
    if (!output_.is_json())
        output_.remark(QByteArray::number(undone_) + " undone, " + QByteArray::number(kept_) +
                       " as they were before, " + QByteArray::number(refused_) + " not possible");
}

} // namespace

void run_undo(const QByteArray& journal, Output& output)
{
    const JournalReader reader(journal);
    Undo undo(reader, output);
    undo.take_all_back();
    undo.tell_sum();
}
