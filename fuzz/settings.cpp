// The settings file: whatever it holds, reading leaves it alone, what is saved comes back, and the other settings stay.

#include "platform/settings.h"
#include "core/mod_of_grobal_var.h"
#include "core/user_settings.h"
#include "support.h"
#include "test_main.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

constexpr std::array<QStringView, 4> sections = {u"location_burn", u"fif_type", u"genre_type", u"vol_type"};

/// What the program's own settings and one other say, or nothing for those that are not there.
using Texts = std::array<std::optional<QString>, 5>;

class Store
{
public:
    Store() { mkdir(qgetenv("XDG_CONFIG_HOME").constData(), S_IRWXU); }

    /// Makes `content` the settings file. Each gets a time of its own: by it the store tells that it has changed.
    void fill(QByteArrayView content)
    {
        const int file = open(path_.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, S_IRUSR | S_IWUSR);
        const auto size = static_cast<std::size_t>(content.size());
        const timespec time = {.tv_sec = ++time_, .tv_nsec = 0};
        const timespec times[] = {time, time};
        require(file >= 0 && write(file, content.data(), size) == content.size() && futimens(file, times) == 0,
                "the settings file can be made");
        close(file);
    }
    QByteArray content() const
    {
        QFile file(QFile::decodeName(path_));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    bool is_the_users_alone() const
    {
        struct stat status = {};
        return stat(path_.constData(), &status) == 0 && (status.st_mode & (S_IRWXG | S_IRWXO)) == 0;
    }

private:
    TestHome home_;
    QByteArray path_ = qgetenv("XDG_CONFIG_HOME") + "/Quilmo.ini";
    time_t time_ = 1;
};

Texts stored_texts(const QString& own_section, const QString& own_key)
{
    const auto stored = [](const QString& section, const QString& key) -> std::optional<QString> {
        const QString none = u"none"_s;
        const QString other = u"other"_s;
        const QString text = GetSetting(u"Quilmo"_s, section, key, none);
        const bool is_there = text != none || GetSetting(u"Quilmo"_s, section, key, other) != other;
        return is_there ? std::optional(text) : std::nullopt;
    };
    Texts texts;
    for (std::size_t i = 0; i < sections.size(); ++i)
        texts.at(i) = stored(sections.at(i).toString(), u"location"_s);
    texts.back() = stored(own_section, own_key);
    return texts;
}

/// Whether the store can keep a text: it holds UTF-8, and takes a byte order mark at the start for no part of it.
bool can_be_kept(const std::optional<QString>& text)
{
    return !text || (!has_lone_surrogate(*text) && !text->startsWith(QChar::ByteOrderMark));
}

/// The numbers are numbers, or the run-time error of a stored text that is none is raised.
void check_read_settings(const Texts& texts)
{
    shared.fif_type = shared.genre_type = shared.vol_type = 0;
    try {
        read_settings();
    } catch (const RunTimeError& error) {
        require(error.number() == RunTimeError::type_mismatch || error.number() == RunTimeError::overflow,
                "a stored text that is no number is told as such");
        return;
    }
    require(shared.burn_program_path == texts[0].value_or(QString()), "the path is the stored text");
    require((texts[1] || shared.fif_type == 1) && (texts[2] || shared.genre_type == 1) &&
                (texts[3] || shared.vol_type == 35),
            "what is not stored has its default");
}

} // namespace

/// The first three lines are section, key and text of a setting to save; the rest is the settings file.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static Store store;
    QByteArrayView input = bytes_of(data, size);
    const QString section = any_text(take_line(input));
    const QString key = any_text(take_line(input));
    const QString text = any_text(take_line(input));
    store.fill(input);
    const Texts before = stored_texts(section, key);
    check_read_settings(before);
    require(store.content() == input, "reading writes nothing");

    SaveSetting(u"Quilmo"_s, section, key, text);
    require(store.is_the_users_alone(), "nobody else can read the settings");
    // A file of another time is read anew, so that all comes from the disk.
    store.fill(store.content());
    const Texts after = stored_texts(section, key);
    const bool has_name = !has_lone_surrogate(section + u'/' + key);
    if (has_name && can_be_kept(text))
        require(after.back() == text, "what was saved comes back");
    for (std::size_t i = 0; i < sections.size(); ++i) {
        // A damaged store may show more once it is mended.
        if (section != sections.at(i) && before.at(i) && can_be_kept(before.at(i)))
            require(after.at(i) == before.at(i), "the other settings stay");
    }
    return 0;
}
