#pragma once

#include "companion/Reason.h"

#include <QByteArray>
#include <QJsonObject>

#include <chrono>
#include <cstdio>

/// An object as a line of output, without the line's end.
QByteArray line_of(const QJsonObject& object);

/// Where a run reads and writes.
struct Streams
{
    std::FILE* in;
    std::FILE* out;
    std::FILE* err;
    bool shows_progress = false; ///< somebody watches `err` and sees nothing of `out`
};

/// What a run tells: on the output a line for each file, as a text or as a JSON object; all else on the error stream.
class Output
{
public:
    Output(const Streams& streams, bool is_json) : streams_(streams), is_json_(is_json) {}

    bool is_json() const { return is_json_; }
    void write(const QByteArray& line);
    void write(const QJsonObject& object) { write(line_of(object)); }
    /// A path that a person named, or that was found below one, can't be walked; the run has failed in part.
    void path_failed(const QByteArray& path, const QByteArray& reason);
    /// A remark for the person, beginning with the program's name.
    void remark(const QByteArray& text);
    /// One more file is through; shown now and then where somebody watches, until something else is told there.
    void step(const char* doing);
    /// Something could not be done: the exit status will say so.
    void fail() { has_failed_ = true; }
    /// Ends the run: 0 when all was done and told, else 1.
    int finish();

private:
    void flush();
    void clear_progress();

    Streams streams_;
    bool is_json_;
    bool has_failed_ = false;
    int write_error_ = 0; ///< the first of the output
    qint64 steps_ = 0;
    const char* doing_ = nullptr;
    bool progress_stands_ = false;
    std::chrono::steady_clock::time_point last_progress_{};
};

/// Puts bytes that should be UTF-8 into an object; when they are not, also as `key`_base64, and with U+FFFD for what is
/// wrong in the text.
void put_bytes(QJsonObject& object, const QString& key, const QByteArray& bytes);

/// Puts a reason into an object, as "reason" its word and as "message" its text; nothing for none.
void put_reason(QJsonObject& object, const Reason& reason);
