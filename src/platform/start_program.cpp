#include "platform/start_program.h"

#include "platform/own_words.h"
#include "platform/paths.h"

#include <QProcess>

QString start_program(const QString& path)
{
    const QByteArray native = native_path(path);
    if (native.isEmpty())
        return own_word(Word::reason_no_place);
    QProcess program;
    program.setProgram(QString::fromLocal8Bit(native));
    program.setStandardInputFile(QProcess::nullDevice());
    if (program.startDetached())
        return {};
    // The system's call stands before its reason.
    return program.errorString().section(QStringLiteral(": "), -1);
}
