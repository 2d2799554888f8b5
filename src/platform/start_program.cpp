#include "platform/start_program.h"

#include "platform/file_names.h"
#include "platform/paths.h"

#include <QProcess>

QString start_program(const QString& path)
{
    QProcess program;
    program.setProgram(QString::fromLocal8Bit(native_path(path)));
    program.setStandardInputFile(QProcess::nullDevice());
    if (program.startDetached())
        return {};
    // The system's call stands before its reason.
    return program.errorString().section(QStringLiteral(": "), -1);
}
