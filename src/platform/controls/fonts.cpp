#include "platform/controls/fonts.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

constexpr int font_pixels = 12; ///< the forms are laid out in logical pixels, so their font is measured in them too

QFont font_of(const QStringList& families)
{
    QFont font;
    font.setFamilies(families);
    font.setPixelSize(font_pixels);
    return font;
}

} // namespace

QFont form_font()
{
    return font_of(
        {u"Tahoma"_s, u"DejaVu Sans"_s, u"Noto Sans"_s, u"Verdana"_s, u"NanumGothic"_s, u"Noto Sans CJK KR"_s});
}

QFont korean_font()
{
    return font_of({u"굴림"_s, u"NanumGothic"_s, u"Noto Sans CJK KR"_s});
}
