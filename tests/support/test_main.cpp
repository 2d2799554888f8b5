#include "test_main.h"

#include "core/mod_of_grobal_var.h"
#include "platform/MsgBox.h"
#include "platform/drives.h"
#include "platform/paths.h"

#include <QFile>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>

using namespace Qt::StringLiterals;

TestHome::TestHome()
{
    const QByteArray home = path();
    qputenv("HOME", home);
    qputenv("XDG_CONFIG_HOME", home + "/.config");
    qputenv("XDG_DATA_HOME", home + "/.local/share");
    qputenv("XDG_CACHE_HOME", home + "/.cache");
    qputenv("XDG_MUSIC_DIR", home + "/Music");
}

QByteArray TestHome::path() const
{
    return QFile::encodeName(folder_.path());
}

TestDisk::TestDisk()
{
    shared = {};
    shared.language_id = 1;
    shared.fif_type = 1;
    shared.genre_type = 1;
    set_drives({{.DriveLetter = u"C"_s,
                 .Type = DriveType::fixed,
                 .VolumeName = u"Test"_s,
                 .IsReady = true,
                 .mount_point = root(),
                 .device = {}}});
}

TestDisk::~TestDisk()
{
    shared = {};
    std::error_code error; // QTemporaryDir itself leaves names behind that are not valid UTF-8
    std::filesystem::remove_all(root().toStdString(), error);
}

QByteArray TestDisk::root() const
{
    return QFile::encodeName(folder_.path());
}

QByteArray TestDisk::native(const QString& program_path) const
{
    return native_path(program_path);
}

QString TestDisk::make_folder(const QString& program_path) const
{
    std::filesystem::create_directories(native(program_path).toStdString());
    return program_path.endsWith(u'\\') ? program_path : program_path + u'\\';
}

void TestDisk::write(const QString& program_path, const QByteArray& content) const
{
    make_folder(program_path.left(program_path.lastIndexOf(u'\\')));
    std::ofstream file(native(program_path).toStdString(), std::ios::binary | std::ios::trunc);
    if (!file.write(content.constData(), content.size()))
        qFatal("can't write %s", qPrintable(program_path));
}

QByteArray TestDisk::read(const QString& program_path) const
{
    std::ifstream file(native(program_path).toStdString(), std::ios::binary);
    if (!file)
        return {};
    std::ostringstream content;
    content << file.rdbuf();
    return QByteArray::fromStdString(content.str());
}

bool TestDisk::exists(const QString& program_path) const
{
    return std::filesystem::exists(native(program_path).toStdString());
}

NotedMessages::NotedMessages()
{
    set_message_box([this](const QString& text, int style, const QString& title) {
        texts_.append(text);
        last_style = style;
        last_title = title;
    });
}

NotedMessages::~NotedMessages()
{
    set_message_box({});
}

QStringList NotedMessages::take()
{
    return std::exchange(texts_, {});
}
