#include "companion/Output.h"

#include "companion/shown_text.h"

#include <QJsonDocument>
#include <QStringDecoder>

#include <cerrno>

using namespace Qt::StringLiterals;

QByteArray line_of(const QJsonObject& object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

void Output::write(const QByteArray& line)
{
    const auto size = static_cast<std::size_t>(line.size());
    const bool is_written =
        std::fwrite(line.constData(), 1, size, streams_.out) == size && std::fputc('\n', streams_.out) != EOF;
    if (!is_written && write_error_ == 0)
        write_error_ = errno;
}

void Output::path_failed(const QByteArray& path, const QByteArray& reason)
{
    fail();
    if (!is_json_) {
        remark(shown(path) + ": " + reason);
        return;
    }
    QJsonObject object;
    put_bytes(object, u"path"_s, path);
    object.insert(u"status"_s, u"cannot"_s);
    put_reason(object, {.code = Reason::unreadable, .detail = reason});
    write(object);
}

void Output::remark(const QByteArray& text)
{
    clear_progress();
    flush();
    std::fprintf(streams_.err, "quilmo-fif: %s\n", text.constData());
}

void Output::step(const char* doing)
{
    constexpr int steps_between_looks = 32;
    constexpr std::chrono::milliseconds pause(100);
    if (doing_ != doing)
        steps_ = 0;
    doing_ = doing;
    if (!streams_.shows_progress || ++steps_ % steps_between_looks != 0)
        return;
    const auto now = std::chrono::steady_clock::now();
    if (now - last_progress_ < pause)
        return;
    last_progress_ = now;
    progress_stands_ = true;
    std::fprintf(streams_.err, "\r%s: %lld files\x1b[K", doing, steps_);
    std::fflush(streams_.err);
}

void Output::flush()
{
    if (std::fflush(streams_.out) != 0 && write_error_ == 0)
        write_error_ = errno;
}

void Output::clear_progress()
{
    if (progress_stands_)
        std::fputs("\r\x1b[K", streams_.err);
    progress_stands_ = false;
}

int Output::finish()
{
    clear_progress();
    flush();
    if (write_error_ != 0) {
        remark("standard output: " + error_text(write_error_));
        fail();
    }
    return has_failed_ ? 1 : 0;
}

void put_bytes(QJsonObject& object, const QString& key, const QByteArray& bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8);
    object.insert(key, QString(decoder.decode(bytes)));
    if (decoder.hasError())
        object.insert(key + u"_base64"_s, QString::fromLatin1(bytes.toBase64()));
}

void put_reason(QJsonObject& object, const Reason& reason)
{
    if (!reason)
        return;
    object.insert(u"reason"_s, QString::fromLatin1(reason.word()));
    object.insert(u"message"_s, QString::fromUtf8(reason.text()));
}
