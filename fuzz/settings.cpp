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

#include <algorithm>
#include <array>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

constexpr std::array<QStringView, 4> sections = {u"location_burn", u"fif_type", u"genre_type", u"vol_type"};

/// What the program's own settings say, or nothing for those that are not there.
using Texts = std::array<std::optional<QString>, sections.size()>;

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

Texts stored_texts()
{
    const auto stored = [](QStringView section) -> std::optional<QString> {
        const auto text_or = [&](const QString& default_value) {
            return GetSetting(u"Quilmo"_s, section.toString(), u"location"_s, default_value);
        };
        const QString text = text_or(u"none"_s);
        return text != u"none" || text_or(u"other"_s) != u"other" ? std::optional(text) : std::nullopt;
    };
    Texts texts;
    std::ranges::transform(sections, texts.begin(), stored);
    return texts;
}

/// Whether the store can keep a text: it holds UTF-8, and takes a byte order mark at the start for no part of it.
bool can_be_kept(const QString& text)
{
    return !has_lone_surrogate(text) && !text.startsWith(QChar::ByteOrderMark);
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

/// The first byte picks the setting to save, the rest of its line is the text, and what follows is the settings file.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static Store store;
    QByteArrayView input = bytes_of(data, size);
    const QByteArrayView line = take_line(input);
    const std::size_t saved = line.isEmpty() ? 0 : static_cast<std::uint8_t>(line.front()) % sections.size();
    const QString text = any_text(line.sliced(line.isEmpty() ? 0 : 1));
    store.fill(input);
    const Texts before = stored_texts();
    check_read_settings(before);
    require(store.content() == input, "reading writes nothing");

    SaveSetting(u"Quilmo"_s, sections.at(saved).toString(), u"location"_s, text);
    require(store.is_the_users_alone(), "nobody else can read the settings");
    // A file of another time is read anew, so that all comes from the disk.
    store.fill(store.content());
    const Texts after = stored_texts();
    require(!can_be_kept(text) || after.at(saved) == text, "what was saved comes back");
    for (std::size_t i = 0; i < sections.size(); ++i) {
        // A damaged store may show more once it is mended.
        if (i != saved && before.at(i) && can_be_kept(*before.at(i)))
            require(after.at(i) == before.at(i), "the other settings stay");
    }
    return 0;
}
