#include "mp3/TagField.h"

#include "platform/code_page.h"
#include "platform/text.h"

#include <algorithm>

namespace {

QString without_trailing_blanks(QString text)
{
    qsizetype length = text.size();
    while (length > 0 && QStringView(text)[length - 1] == u' ')
        --length;
    text.truncate(length);
    return text;
}

} // namespace

TagField::TagField(int width) : width_(width)
{
    reset();
}

void TagField::reset()
{
    bytes_.fill(' ');
    text_.reset();
}

void TagField::read(QByteArrayView bytes)
{
    std::copy_n(bytes.data(), width_, bytes_.data());
    text_.reset();
}

void TagField::set(const QString& text)
{
    text_ = text.left(width_);
}

QString TagField::text() const
{
    return without_trailing_blanks(text_ ? *text_ : text_from_code_page(QByteArrayView(bytes_.data(), width_)));
}

QString TagField::shown_text() const
{
    return without_trailing_blanks(text_ ? text_box_text(*text_)
                                         : text_before_nul(QByteArrayView(bytes_.data(), width_)));
}

QByteArray TagField::bytes() const
{
    return text_ ? text_to_field(*text_, width_) : QByteArray(bytes_.data(), width_);
}
