#include "platform/start_program.h"

#include "platform/own_words.h"
#include "platform/paths.h"

#include <QFile>
#include <QProcess>

QString start_program(const QString& path)
{
    const QByteArray native = native_path(path);
    if (native.isEmpty())
        return own_word(Word::reason_no_place);
    const QString name = QFile::decodeName(native);
    // The toolkit takes names as text, and would start another file where it can't write these bytes.
    if (QFile::encodeName(name) != native)
        return own_word(Word::reason_no_place);
    QProcess program;
    program.setProgram(name);
    program.setStandardInputFile(QProcess::nullDevice());
    if (program.startDetached())
        return {};
    // The system's call stands before its reason.
    return program.errorString().section(QStringLiteral(": "), -1);
}
