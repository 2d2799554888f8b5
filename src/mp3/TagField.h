#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <array>
#include <optional>

/// One text field of a tag: the characters as the program sees them, and the bytes that go to the file. A field that
/// nobody set keeps the very bytes it was read with.
class TagField
{
public:
    /// The widest field of a tag.
    static constexpr int max_width = 30;

    /// A field of `width` bytes, at most `max_width`, filled with blanks.
    explicit TagField(int width);

    int width() const { return width_; }
    /// The field filled with blanks.
    void reset();
    /// Takes the field's bytes as they stand in a file; `bytes` holds exactly the field's width.
    void read(QByteArrayView bytes);
    /// Puts `text` in left-aligned, cut at the width in characters and blank padded.
    void set(const QString& text);
    /// The characters without trailing blanks; NUL characters stay.
    QString text() const;
    /// What a text box keeps of them, the characters before the first NUL, without trailing blanks.
    QString shown_text() const;
    /// Exactly the field's width of bytes.
    QByteArray bytes() const;

private:
    int width_;
    std::array<char, max_width> bytes_{};
    std::optional<QString> text_; ///< what was put in since the bytes were read, without the padding
};
