#pragma once

#include "mp3/GenreBox.h"
#include "mp3/mpeg_header.h"
#include "platform/numbers.h"

#include <QByteArray>
#include <QString>

#include <array>

/// One text field of a tag: the characters as the program sees them, and the bytes that go to the file. A field that
/// nobody set keeps the very bytes it was read with.
class TagField
{
public:
    explicit TagField(int width);

    /// The field filled with blanks.
    void reset();
    /// Takes the field's bytes as they stand in a file; `bytes` holds exactly the field's width.
    void read(QByteArrayView bytes);
    /// Puts `text` in left-aligned, cut at the width in characters and blank padded.
    void set(const QString& text);
    /// The characters without trailing blanks; NUL characters stay.
    QString text() const;
    /// Exactly the field's width of bytes.
    const QByteArray& bytes() const { return bytes_; }

private:
    int width_;
    QString text_;
    QByteArray bytes_;
};

/// The program's one reader and writer of MP3 file contents: the ID3v1 tag in a file's last 128 bytes and the facts of
/// its first MPEG audio frame. It holds one file at a time. Nothing is reported but by results.
class cIDV3
{
public:
    cIDV3();

    // Facts of the file, valid after set_FileName; see MpegFacts.
    QString InfoString() const;
    i32 FileBytes() const;
    i16 Seconds() const;
    i16 MpegVersion() const;
    i16 LayerVersion() const;
    i16 Kbits() const;
    i32 FrameLengthInBytes() const;
    i32 Frames() const;
    i32 Hz() const;
    i16 Pad() const;
    QString Mode() const;
    QString PrivateBit() const;
    QString CRCs() const;
    QString Copyrighted() const;
    QString Original() const;
    QString Emphasis() const;
    i16 Channels() const;

    /// Resets the object and loads the file's tag and header facts. A file that does not exist leaves FileName empty.
    void set_FileName(const QString& path);
    const QString& FileName() const { return file_name_; }
    /// set_FileName followed at once by HasTag, with a single opening of the file.
    bool load_and_has_tag(const QString& path);

    QString Comments() const { return comments_.text(); }
    void set_Comments(const QString& text) { comments_.set(text); }
    QString Year() const { return year_.text(); }
    void set_Year(const QString& text) { year_.set(text); }
    QString Album() const { return album_.text(); }
    void set_Album(const QString& text) { album_.set(text); }
    QString Artist() const { return artist_.text(); }
    void set_Artist(const QString& text) { artist_.set(text); }
    QString Title() const { return title_.text(); }
    void set_Title(const QString& text) { title_.set(text); }
    /// The genre byte, 0 to 255.
    i16 Genre() const { return genre_; }
    /// Raises "Overflow" for a value that does not fit a byte.
    void set_Genre(i32 value);

    /// Blanks the last 128 bytes of the file but the very last one, whether or not they are a tag. Gives whether it
    /// was done.
    bool ClearTag();
    /// Whether the file ends in a tag: its last 128 bytes begin with "TAG", case ignored.
    bool HasTag();
    /// Writes the tag over the last 128 bytes of the file, whether or not they are a tag; the file keeps its length.
    /// Gives whether it was done.
    bool WriteTag();

    /// The list spelling of a genre index, empty outside 0 to 147.
    QString GenreText(i16 index) const;
    /// The index of a genre in list spelling, compared exactly; -1 for none.
    i16 Genre_index(const QString& text) const;

    /// Fills a combo box with the 148 genres in display spelling and an empty entry, none selected.
    void init_FillComboGenre(GenreBox& combo) const;
    /// Selects the entry of a genre index, the empty one when it has no name.
    void FillComboGenre(GenreBox& combo, i16 index) const;
    /// Selects the entry of a genre text and gives its text; without such an entry selects the empty one and gives "".
    QString FillComboGenre_FIF(GenreBox& combo, const QString& text) const;

private:
    void reset_fields();
    bool load_file();

    QString file_name_;
    TagField title_;
    TagField artist_;
    TagField album_;
    TagField year_;
    TagField comments_;
    std::uint8_t genre_ = 0;
    MpegFacts facts_;
};

/// The one shared object, made at its first use and kept to the end of the run.
cIDV3& id3();
