#include "companion/Journal.h"
#include "companion/companion.h"
#include "companion/shown_text.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int status_cells = 8;

/// What an undo did, file by file.
class Undo
{
public:
    explicit Undo(Output& output) : output_(output) {}

    void take_back(const Change& change);
    void tell_sum();

private:
    void tell(const Change& change, const TakenBack& result);

    Output& output_;
    qint64 undone_ = 0;
    qint64 kept_ = 0;
    qint64 refused_ = 0;
};

void Undo::take_back(const Change& change)
{
    const TakenBack result = ::take_back(change);
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
    Undo undo(output);
    reader.each_backwards([&](const Change& change) { undo.take_back(change); });
    undo.tell_sum();
}
