#include "companion/companion.h"
#include "companion/read_end.h"
#include "companion/shown_text.h"
#include "companion/tag_text.h"
#include "companion/walk_files.h"
#include "mp3/cIDV3.h"
#include "platform/paths.h"

#include <QStringList>

#include <cerrno>

using namespace Qt::StringLiterals;

namespace {

bool is_tag(const QByteArray& block)
{
    return !block.isEmpty() && TagRecord::is_tag(block);
}

QByteArray text_of(const MusicFile& file, const cIDV3& facts, const QByteArray& block)
{
    QByteArray text = shown(file.shown_path()) + '\n';
    QStringList lines = facts.InfoString().split(u"\r\n"_s, Qt::SkipEmptyParts);
    if (lines.isEmpty())
        lines = {u"Size: %1 bytes"_s.arg(facts.FileBytes()), u"no MPEG-1 Layer III frame near its beginning"_s};
    for (const QString& line : std::as_const(lines))
        text += "  " + line.toUtf8() + '\n';
    return text + "  " + (is_tag(block) ? "Tag: " + tag_fields_text(block) : "No tag"_ba) + '\n';
}

/// What the frame says; nothing where there is none.
QJsonObject frame_object(const cIDV3& facts)
{
    const QString info = facts.InfoString();
    if (info.isEmpty())
        return {};
    return {
        {u"seconds"_s, facts.Seconds()},
        {u"mpeg_version"_s, facts.MpegVersion()},
        {u"layer"_s, facts.LayerVersion()},
        {u"kbits"_s, facts.Kbits()},
        {u"frames"_s, facts.Frames()},
        {u"frame_bytes"_s, facts.FrameLengthInBytes()},
        {u"hz"_s, facts.Hz()},
        {u"mode"_s, facts.Mode()},
        {u"channels"_s, facts.Channels()},
        {u"private"_s, facts.PrivateBit()},
        {u"crcs"_s, facts.CRCs()},
        {u"copyrighted"_s, facts.Copyrighted()},
        {u"original"_s, facts.Original()},
        {u"emphasis"_s, facts.Emphasis()},
        {u"info"_s, info},
    };
}

QJsonObject object_of(const MusicFile& file, const cIDV3& facts, const QByteArray& block)
{
    QJsonObject object = frame_object(facts);
    object.insert(u"file_bytes"_s, facts.FileBytes());
    put_bytes(object, u"path"_s, file.shown_path());
    if (is_tag(block))
        object.insert(u"tag"_s, tag_object(block));
    return object;
}

/// Tells of a file; a reason when that can't be done.
Reason tell(const MusicFile& file, Output& output)
{
    const FileEnd end = read_end(file.native());
    if (end.reason.code == Reason::unreadable)
        return end.reason;
    cIDV3 facts; // keeps nothing of another file
    facts.set_FileName(program_path(file.native()));
    if (!facts.was_opened())
        return {.code = Reason::unreadable, .detail = error_text(EIO)};
    if (output.is_json())
        output.write(object_of(file, facts, end.block));
    else
        output.write(text_of(file, facts, end.block));
    return {};
}

} // namespace

void run_info(PathSource& paths, Output& output)
{
    const auto tell_file = [&](const MusicFile& file) {
        if (const Reason reason = tell(file, output))
            output.path_failed(file.shown_path(), reason.detail);
        output.step("reading");
    };
    FileWalk walk(
        {.file = tell_file,
         .folder_end = [] {},
         .failed = [&](const QByteArray& path, const QByteArray& reason) { output.path_failed(path, reason); }});
    walk.walk(paths);
}
