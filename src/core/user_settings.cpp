#include "core/user_settings.h"

#include "core/mod_of_grobal_var.h"
#include "platform/numbers.h"
#include "platform/settings.h"
#include "platform/text.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QString stored_text(const QString& section, const QString& default_value)
{
    return GetSetting(u"Quilmo"_s, section, u"location"_s, default_value);
}

void store_text(const QString& section, const QString& text)
{
    SaveSetting(u"Quilmo"_s, section, u"location"_s, text);
}

/// Takes the digits 0 to 9 that a text begins with off it; gives how many they were.
qsizetype take_digits(QStringView& text)
{
    const auto* const end = std::ranges::find_if_not(text, [](QChar c) { return c >= u'0' && c <= u'9'; });
    const qsizetype count = end - text.begin();
    text = text.sliced(count);
    return count;
}

void take_sign(QStringView& text)
{
    if (text.startsWith(u'+') || text.startsWith(u'-'))
        text = text.sliced(1);
}

/// Whether a text is a decimal number: digits, perhaps with a sign, a full stop and an exponent. By hand, as the
/// library of regular expressions takes more memory than the settings.
bool is_decimal(QStringView text)
{
    take_sign(text);
    qsizetype digits = take_digits(text);
    if (text.startsWith(u'.')) {
        text = text.sliced(1);
        digits += take_digits(text);
    }
    if (digits == 0)
        return false;
    if (!text.startsWith(u'e') && !text.startsWith(u'E'))
        return text.empty();
    text = text.sliced(1);
    take_sign(text);
    return take_digits(text) > 0 && text.empty();
}

/// The whole number nearest to a decimal number's text. Raises "Type mismatch" for any other text, "Overflow" beyond
/// 16 bits.
i16 number_of(const QString& text)
{
    const QString number = trim_blanks(text);
    if (!is_decimal(number))
        throw RunTimeError(RunTimeError::type_mismatch);
    return rounded<i16>(number.toDouble());
}

i16 stored_number(const QString& section, i16 default_value)
{
    return number_of(stored_text(section, QString::number(default_value)));
}

} // namespace

void read_settings()
{
    shared.burn_program_path = stored_text(u"location_burn"_s, {});
    shared.fif_type = stored_number(u"fif_type"_s, 1);
    shared.genre_type = stored_number(u"genre_type"_s, 1);
    shared.vol_type = stored_number(u"vol_type"_s, 35);
}

void write_settings()
{
    if (!shared.burn_program_path.isEmpty())
        store_text(u"location_burn"_s, shared.burn_program_path);
    store_text(u"fif_type"_s, QString::number(shared.fif_type));
    store_text(u"genre_type"_s, QString::number(shared.genre_type));
    store_text(u"vol_type"_s, QString::number(shared.vol_type));
}
