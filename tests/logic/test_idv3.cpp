#include "test_main.h"

#include "core/mod_of_grobal_var.h"
#include "mp3/cIDV3.h"
#include "sample_files.h"

#include <QTest>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

const QString path = u"C:\\Music\\a.mp3"_s;
const QString other_path = u"C:\\Music\\b.mp3"_s;

/// 128 kbit/s, 44100 Hz, and nothing behind it.
const QByteArray audio = QByteArray::fromHex("fffb9064").leftJustified(1000, '\0');

const QByteArray fourteen_syllables = QByteArray("\xB0\xA1").repeated(14);

/// A tag with text of every kind: ASCII, Korean, Western, and fields padded with NULs.
QByteArray mixed_tag()
{
    return sample_tag({.title = "Title",
                       .artist = "\xB0\xA1\xB3\xAA",
                       .album = "Caf\xE9 \x80",
                       .year = "19",
                       .comment = QByteArray("\0\xFF\0 x", 5),
                       .genre = 17});
}

/// A tag with the same 30 bytes in its Title and nothing else.
QByteArray tag_with_title(const QByteArray& title)
{
    return sample_tag(
        {.title = title, .artist = {}, .album = {}, .year = {}, .comment = {}, .genre = 12, .padding = ' '});
}

/// As long as it lives the process can open no file, though files can still be asked after.
class NoMoreDescriptors
{
public:
    NoMoreDescriptors()
    {
        ::getrlimit(RLIMIT_NOFILE, &before_);
        const rlimit none{.rlim_cur = 0, .rlim_max = before_.rlim_max};
        ::setrlimit(RLIMIT_NOFILE, &none);
    }
    ~NoMoreDescriptors() { ::setrlimit(RLIMIT_NOFILE, &before_); }
    NoMoreDescriptors(const NoMoreDescriptors&) = delete;
    NoMoreDescriptors& operator=(const NoMoreDescriptors&) = delete;

private:
    rlimit before_{};
};

void expect_no_tag_loaded(const cIDV3& reader)
{
    for (const QString& text : {reader.Title(), reader.Artist(), reader.Album(), reader.Year(), reader.Comments()})
        QCOMPARE(text, QString());
    QCOMPARE(int{reader.Genre()}, 12);
}

} // namespace

class TestIdv3 : public QObject
{
    Q_OBJECT

    /// Loads a whole file, then leaves `length` bytes of it on the disk.
    void load_and_cut(cIDV3& reader, int length) const;
    void expect_all_tags_ended() const;

    std::unique_ptr<TestDisk> disk_;

private Q_SLOTS:
    void init()
    {
        disk_ = std::make_unique<TestDisk>();
        disk_->make_folder(u"C:\\Music"_s);
    }

    void a_new_object_is_empty();
    void there_is_one_shared_object();
    void reads_all_fields();
    void reads_titles_data();
    void reads_titles();
    void knows_a_tag_by_its_three_letters_data();
    void knows_a_tag_by_its_three_letters();
    void a_file_of_nothing_but_a_tag_is_read();
    void loading_and_asking_in_one_gives_the_same_data();
    void loading_and_asking_in_one_gives_the_same();
    void loading_resets_all_but_three_fields();
    void loading_forgets_what_was_put_in();
    void HasTag_asks_the_disk_each_time();
    void what_is_no_file_leaves_FileName_empty_data();
    void what_is_no_file_leaves_FileName_empty();
    void a_file_that_does_not_open_keeps_its_name();
    void a_field_takes_its_width_in_characters_data();
    void a_field_takes_its_width_in_characters();
    void a_genre_must_fit_a_byte();
    void every_genre_byte_survives();
    void writing_changes_the_last_128_bytes_only();
    void writing_over_audio_keeps_the_length();
    void a_written_field_is_in_the_code_page();
    void fields_that_nobody_set_come_back_byte_for_byte_data();
    void fields_that_nobody_set_come_back_byte_for_byte();
    void writing_twice_changes_nothing_more();
    void clearing_keeps_the_last_byte();
    void a_read_only_file_is_not_changed();
    void a_file_that_took_the_name_of_the_loaded_one_is_not_changed();
    void a_short_file_ends_all_tags_of_the_run_data();
    void a_short_file_ends_all_tags_of_the_run();
    void HasTag_on_a_file_cut_short_ends_all_tags();
    void writing_to_a_file_cut_short_ends_all_tags();
    void clearing_a_file_cut_short_ends_all_tags();
    void a_failed_opening_ends_nothing();
    void a_huge_file_is_read_and_written_at_its_end_data();
    void a_huge_file_is_read_and_written_at_its_end();
    void the_first_frame_counts_wherever_it_begins_data();
    void the_first_frame_counts_wherever_it_begins();
};

void TestIdv3::a_new_object_is_empty()
{
    cIDV3 reader;
    expect_no_tag_loaded(reader);
    QCOMPARE(reader.FileName(), QString());
    QCOMPARE(reader.InfoString(), QString());
    QVERIFY(!reader.HasTag());
    QVERIFY(!reader.WriteTag());
    QVERIFY(!reader.ClearTag());
    QCOMPARE(int{shared.file_number_1_open}, 0);
}

void TestIdv3::there_is_one_shared_object()
{
    QVERIFY(!shared.id3_object);
    cIDV3* const first = &id3();
    first->set_Title(u"kept"_s);
    QCOMPARE(&id3(), first);
    QCOMPARE(id3().Title(), u"kept"_s);
}

void TestIdv3::reads_all_fields()
{
    disk_->write(path, audio + mixed_tag());
    cIDV3 reader;
    reader.set_FileName(path);
    QVERIFY(reader.HasTag());
    QCOMPARE(reader.FileName(), path);
    QCOMPARE(reader.Title(), u"Title"_s + QString(25, QChar(0)));
    QCOMPARE(reader.Artist(), u"가나"_s + QString(26, QChar(0)));
    QCOMPARE(reader.Album(), u"Café €"_s + QString(24, QChar(0)));
    QCOMPARE(reader.Year(), u"19\0\0"_s);
    QCOMPARE(reader.Comments(), u"\0ÿ\0 x"_s + QString(25, QChar(0)));
    QCOMPARE(int{reader.Genre()}, 17);
    QCOMPARE(reader.FileBytes(), 1128);
    QCOMPARE(int{reader.Kbits()}, 128);
    QCOMPARE(reader.Hz(), 44100);
    QCOMPARE(reader.Mode(), u"Joint Stereo"_s);
    QVERIFY(reader.InfoString().startsWith(u"Size: 1128 bytes\r\n"_s));
}

void TestIdv3::reads_titles_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("title");
    QTest::newRow("trailing blanks go") << QByteArray(" a b ").leftJustified(30, ' ') << u" a b"_s;
    QTest::newRow("all blanks") << QByteArray(30, ' ') << QString();
    QTest::newRow("NULs stay") << QByteArray("ab").leftJustified(30, '\0') << u"ab"_s + QString(28, QChar(0));
    QTest::newRow("blanks behind a NUL go") << QByteArray("ab\0", 3).leftJustified(30, ' ') << u"ab\0"_s;
    QTest::newRow("all NUL") << QByteArray(30, '\0') << QString(30, QChar(0));
    QTest::newRow("all 0xFF") << QByteArray(30, '\xFF') << QString(30, u'ÿ');
    QTest::newRow("other white space stays") << QByteArray("ab\t\n").leftJustified(30, ' ') << u"ab\t\n"_s;
    QTest::newRow("fifteen syllables") << QByteArray("\xB0\xA1").repeated(15) << QString(15, u'가');
    QTest::newRow("half of a character at the end") << fourteen_syllables + "a\xB0" << QString(14, u'가') + u'a';
    QTest::newRow("half of a character within") << fourteen_syllables + "\xB0 " << u"°¡"_s.repeated(14) + u'°';
}

void TestIdv3::reads_titles()
{
    QFETCH(const QByteArray, bytes);
    disk_->write(path, tag_with_title(bytes));
    cIDV3 reader;
    reader.set_FileName(path);
    QTEST(reader.Title(), "title");
}

void TestIdv3::knows_a_tag_by_its_three_letters_data()
{
    QTest::addColumn<QByteArray>("block");
    QTest::addColumn<bool>("tagged");
    QTest::newRow("capitals") << mixed_tag() << true;
    QTest::newRow("small letters") << mixed_tag().replace(0, 3, "tag") << true;
    QTest::newRow("mixed letters") << mixed_tag().replace(0, 3, "tAg") << true;
    QTest::newRow("NULs behind the letters") << QByteArray("TAG").leftJustified(128, '\0') << true;
    QTest::newRow("0xFF behind the letters") << QByteArray("TAG").leftJustified(128, '\xFF') << true;
    QTest::newRow("all NUL") << QByteArray(128, '\0') << false;
    QTest::newRow("all 0xFF") << QByteArray(128, '\xFF') << false;
    QTest::newRow("other letters") << mixed_tag().replace(0, 3, "TAC") << false;
    QTest::newRow("one byte early") << mixed_tag().sliced(1) + 'x' << false;
    QTest::newRow("one byte late") << 'x' + mixed_tag().first(127) << false;
}

void TestIdv3::knows_a_tag_by_its_three_letters()
{
    QFETCH(const QByteArray, block);
    QFETCH(const bool, tagged);
    disk_->write(path, audio + block);
    cIDV3 reader;
    reader.set_FileName(path);
    QCOMPARE(reader.HasTag(), tagged);
    if (!tagged)
        expect_no_tag_loaded(reader);
    QCOMPARE(int{reader.Kbits()}, 128);
}

void TestIdv3::a_file_of_nothing_but_a_tag_is_read()
{
    disk_->write(path, tag_with_title("only"));
    cIDV3 reader;
    reader.set_FileName(path);
    QVERIFY(reader.HasTag());
    QCOMPARE(reader.Title(), u"only"_s);
    QCOMPARE(reader.FileBytes(), 128);
    QCOMPARE(int{reader.MpegVersion()}, 25);
    QCOMPARE(reader.Hz(), 0);

    disk_->write(path, 'x' + tag_with_title("only"));
    reader.set_FileName(path);
    QVERIFY(reader.HasTag());
    QCOMPARE(reader.Title(), u"only"_s);
    QCOMPARE(reader.FileBytes(), 129);
}

void TestIdv3::loading_and_asking_in_one_gives_the_same_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("with a tag") << audio + mixed_tag();
    QTest::newRow("without a tag") << audio;
    QTest::newRow("the tag alone") << mixed_tag();
    QTest::newRow("127 bytes") << mixed_tag().sliced(1);
    QTest::newRow("one byte") << QByteArray("T");
    QTest::newRow("an empty file") << QByteArray("");
    QTest::newRow("no file") << QByteArray();
}

void TestIdv3::loading_and_asking_in_one_gives_the_same()
{
    QFETCH(const QByteArray, content);
    if (!content.isNull())
        disk_->write(path, content);
    cIDV3 in_one;
    const bool has_tag_in_one = in_one.load_and_has_tag(path);
    const i16 number_1_open = std::exchange(shared.file_number_1_open, i16{0});

    cIDV3 in_two;
    in_two.set_FileName(path);
    QCOMPARE(in_two.HasTag(), has_tag_in_one);
    QCOMPARE(shared.file_number_1_open, number_1_open);
    QCOMPARE(in_two.FileName(), in_one.FileName());
    QCOMPARE(in_two.Title(), in_one.Title());
    QCOMPARE(in_two.Genre(), in_one.Genre());
    QCOMPARE(in_two.FileBytes(), in_one.FileBytes());
    QCOMPARE(in_two.InfoString(), in_one.InfoString());
    QCOMPARE(has_tag_in_one, content.size() >= 128 && content != audio);
    QCOMPARE(number_1_open == 1, !content.isNull() && content.size() < 128);
}

void TestIdv3::loading_resets_all_but_three_fields()
{
    disk_->write(path, audio + mixed_tag());
    cIDV3 reader;
    reader.set_FileName(path);
    const QString info = reader.InfoString();
    QVERIFY(!info.isEmpty());
    reader.set_FileName(u"C:\\Music\\missing.mp3"_s);
    QCOMPARE(reader.FileName(), QString());
    QVERIFY(!reader.HasTag());
    expect_no_tag_loaded(reader);
    QCOMPARE(reader.FileBytes(), 0);
    QCOMPARE(int{reader.MpegVersion()}, 0);
    QCOMPARE(int{reader.LayerVersion()}, 0);
    QCOMPARE(int{reader.Kbits()}, 0);
    QCOMPARE(reader.Hz(), 0);
    QCOMPARE(reader.Frames(), 0);
    QCOMPARE(int{reader.Seconds()}, 0);
    QCOMPARE(int{reader.Channels()}, 0);
    for (const QString& text : {reader.Mode(), reader.PrivateBit(), reader.CRCs(), reader.Copyrighted(),
                                reader.Original(), reader.Emphasis()})
        QCOMPARE(text, QString());
    QCOMPARE(reader.FrameLengthInBytes(), 417);
    QCOMPARE(int{reader.Pad()}, 0);
    QCOMPARE(reader.InfoString(), info);
}

void TestIdv3::loading_forgets_what_was_put_in()
{
    disk_->write(path, audio);
    disk_->write(other_path, audio + mixed_tag());
    cIDV3 reader;
    const auto put_in = [&reader] {
        reader.set_Title(u"x"_s);
        reader.set_Artist(u"x"_s);
        reader.set_Album(u"x"_s);
        reader.set_Year(u"x"_s);
        reader.set_Comments(u"x"_s);
        reader.set_Genre(1);
    };
    put_in();
    reader.set_FileName(path);
    expect_no_tag_loaded(reader);
    QVERIFY(reader.WriteTag());
    QCOMPARE(disk_->read(path).last(128), "TAG" + QByteArray(124, ' ') + '\x0C');
    put_in();
    reader.set_FileName(other_path);
    QVERIFY(reader.WriteTag());
    QCOMPARE(disk_->read(other_path), audio + mixed_tag());

    TagField field(4);
    field.set(u"x"_s);
    field.read("abcd");
    QCOMPARE(field.text(), u"abcd"_s);
    QCOMPARE(field.bytes(), QByteArray("abcd"));
}

void TestIdv3::HasTag_asks_the_disk_each_time()
{
    disk_->write(path, audio + mixed_tag());
    cIDV3 reader;
    reader.set_FileName(path);
    QVERIFY(reader.HasTag());
    disk_->write(path, audio);
    QVERIFY(!reader.HasTag());
    disk_->write(path, mixed_tag());
    QVERIFY(reader.HasTag());
    QVERIFY(::unlink(disk_->native(path).constData()) == 0);
    QVERIFY(!reader.HasTag());
    QVERIFY(!reader.WriteTag());
    QVERIFY(!disk_->exists(path));
    QCOMPARE(reader.Year(), u"19\0\0"_s);
}

void TestIdv3::what_is_no_file_leaves_FileName_empty_data()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::newRow("no file") << QByteArray("nothing");
    QTest::newRow("a folder") << QByteArray("folder");
    QTest::newRow("a pipe") << QByteArray("pipe");
    QTest::newRow("a dangling link") << QByteArray("dangling");
}

void TestIdv3::what_is_no_file_leaves_FileName_empty()
{
    QFETCH(const QByteArray, kind);
    const QByteArray native = disk_->native(path);
    if (kind == "folder")
        QCOMPARE(::mkdir(native.constData(), 0700), 0);
    if (kind == "pipe")
        QCOMPARE(::mkfifo(native.constData(), 0600), 0);
    if (kind == "dangling")
        QCOMPARE(::symlink("nowhere", native.constData()), 0);
    cIDV3 reader;
    QVERIFY(!reader.load_and_has_tag(path));
    QCOMPARE(reader.FileName(), QString());
    QVERIFY(!reader.WriteTag());
    QVERIFY(!reader.ClearTag());
    // The analysis did not run: that of an empty file gives 25.
    QCOMPARE(int{reader.MpegVersion()}, 0);
    QCOMPARE(int{shared.file_number_1_open}, 0);
}

void TestIdv3::a_file_that_does_not_open_keeps_its_name()
{
    disk_->write(path, audio + mixed_tag());
    cIDV3 reader;
    {
        const NoMoreDescriptors full;
        QVERIFY(!reader.load_and_has_tag(path));
        QVERIFY(!reader.HasTag());
        QVERIFY(!reader.WriteTag());
    }
    QCOMPARE(reader.FileName(), path);
    expect_no_tag_loaded(reader);
    // What the analysis makes of an empty file.
    QCOMPARE(reader.FileBytes(), 0);
    QCOMPARE(int{reader.MpegVersion()}, 25);
    QCOMPARE(reader.Mode(), u"Stereo"_s);
    QCOMPARE(int{shared.file_number_1_open}, 0);
    QVERIFY(reader.HasTag());
}

void TestIdv3::a_field_takes_its_width_in_characters_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("artist");
    QTest::addColumn<QString>("year");
    QTest::newRow("no text") << QString() << QString() << QString();
    QTest::newRow("short text") << u"ab"_s << u"ab"_s << u"ab"_s;
    QTest::newRow("31 characters") << QString(31, u'x') << QString(30, u'x') << u"xxxx"_s;
    QTest::newRow("trailing blanks") << u" a  "_s << u" a"_s << u" a"_s;
    QTest::newRow("20 syllables") << QString(20, u'가') << QString(20, u'가') << QString(4, u'가');
    QTest::newRow("a blank at the cut") << u"abc d"_s << u"abc d"_s << u"abc"_s;
    QTest::newRow("a NUL") << u"a\0 "_s << u"a\0"_s << u"a\0"_s;
}

void TestIdv3::a_field_takes_its_width_in_characters()
{
    QFETCH(const QString, text);
    QFETCH(const QString, artist);
    QFETCH(const QString, year);
    cIDV3 reader;
    reader.set_Title(text);
    reader.set_Artist(text);
    reader.set_Album(text);
    reader.set_Comments(text);
    reader.set_Year(text);
    QCOMPARE(reader.Title(), artist);
    QCOMPARE(reader.Artist(), artist);
    QCOMPARE(reader.Album(), artist);
    QCOMPARE(reader.Comments(), artist);
    QCOMPARE(reader.Year(), year);
}

void TestIdv3::a_genre_must_fit_a_byte()
{
    cIDV3 reader;
    reader.set_Genre(255);
    QCOMPARE(int{reader.Genre()}, 255);
    QVERIFY_THROWS_EXCEPTION(RunTimeError, reader.set_Genre(256));
    QVERIFY_THROWS_EXCEPTION(RunTimeError, reader.set_Genre(-1));
    QCOMPARE(int{reader.Genre()}, 255);
    reader.set_Genre(0);
    QCOMPARE(int{reader.Genre()}, 0);
}

void TestIdv3::every_genre_byte_survives()
{
    cIDV3 reader;
    for (int genre = 0; genre < 256; ++genre) {
        QByteArray tag = mixed_tag();
        tag[127] = static_cast<char>(genre);
        disk_->write(path, tag);
        reader.set_FileName(path);
        QCOMPARE(int{reader.Genre()}, genre);
        QVERIFY(reader.WriteTag());
        QCOMPARE(disk_->read(path), tag);
        reader.set_Genre(255 - genre);
        QVERIFY(reader.WriteTag());
        QCOMPARE(disk_->read(path), tag.first(127) + static_cast<char>(255 - genre));
    }
}

void TestIdv3::writing_changes_the_last_128_bytes_only()
{
    QByteArray content;
    for (int i = 0; i < 9000; ++i)
        content += static_cast<char>(i * 7);
    disk_->write(path, content + mixed_tag());
    cIDV3 reader;
    reader.set_FileName(path);
    reader.set_Title(u"New"_s);
    reader.set_Artist(u"다"_s);
    reader.set_Genre(3);
    QVERIFY(reader.WriteTag());
    const QByteArray expected = "TAG" + QByteArray("New").leftJustified(30, ' ') +
                                QByteArray("\xB4\xD9").leftJustified(30, ' ') + mixed_tag().sliced(63, 64) + '\3';
    QCOMPARE(expected.size(), 128);
    QCOMPARE(disk_->read(path), content + expected);
}

void TestIdv3::writing_over_audio_keeps_the_length()
{
    disk_->write(path, audio);
    cIDV3 reader;
    reader.set_FileName(path);
    QVERIFY(!reader.HasTag());
    reader.set_Title(u"T"_s);
    QVERIFY(reader.WriteTag());
    QCOMPARE(disk_->read(path), audio.first(872) + "TAGT" + QByteArray(123, ' ') + '\x0C');
    QVERIFY(reader.HasTag());
}

void TestIdv3::a_written_field_is_in_the_code_page()
{
    disk_->write(path, audio + mixed_tag());
    cIDV3 reader;
    reader.set_FileName(path);
    reader.set_Artist(QString(20, u'가'));
    reader.set_Title(u'a' + QString(15, u'가'));
    reader.set_Album(u"Björk €"_s);
    reader.set_Comments(u"가é"_s);
    QVERIFY(reader.WriteTag());
    const QByteArray block = disk_->read(path).last(128);
    QCOMPARE(block.sliced(3, 30), 'a' + fourteen_syllables + ' ');
    QCOMPARE(block.sliced(33, 30), QByteArray("\xB0\xA1").repeated(15));
    QCOMPARE(block.sliced(63, 30), QByteArray("Bj\xF6rk \x80").leftJustified(30, ' '));
    QCOMPARE(block.sliced(97, 30), QByteArray("\xB0\xA1?").leftJustified(30, ' '));
    // The object still holds what was put in; a new load gives what the file could take.
    QCOMPARE(reader.Artist(), QString(20, u'가'));
    reader.set_FileName(path);
    QCOMPARE(reader.Artist(), QString(15, u'가'));
    QCOMPARE(reader.Album(), u"Björk €"_s);
}

void TestIdv3::fields_that_nobody_set_come_back_byte_for_byte_data()
{
    QTest::addColumn<QByteArray>("field");
    QTest::newRow("NUL padding") << QByteArray("ab").leftJustified(30, '\0');
    QTest::newRow("blank padding") << QByteArray("ab").leftJustified(30, ' ');
    QTest::newRow("all NUL") << QByteArray(30, '\0');
    QTest::newRow("all 0xFF") << QByteArray(30, '\xFF');
    QTest::newRow("Western") << QByteArray("Caf\xE9").leftJustified(30, ' ');
    QTest::newRow("Western that 949 has too") << QByteArray("\xAE \xE9").leftJustified(30, '\0');
    QTest::newRow("half of a character at the end") << fourteen_syllables + "a\xB0";
    QTest::newRow("invalid bytes behind a NUL") << QByteArray("\xB0\xA1\0\x81 \xFF", 6).leftJustified(30, ' ');
    QTest::newRow("undefined bytes of 1252") << QByteArray("\x81 \x8D \x8F \x90 \x9D ").leftJustified(30, ' ');
}

void TestIdv3::fields_that_nobody_set_come_back_byte_for_byte()
{
    QFETCH(const QByteArray, field);
    const QByteArray tag = sample_tag(
        {.title = field, .artist = field, .album = field, .year = field.last(4), .comment = field, .genre = 255});
    disk_->write(path, audio + tag);
    cIDV3 reader;
    reader.set_FileName(path);
    const QStringList read{reader.Title(), reader.Year()};
    QVERIFY(reader.WriteTag());
    QCOMPARE(disk_->read(path), audio + tag);
    reader.set_FileName(path);
    QCOMPARE((QStringList{reader.Title(), reader.Year()}), read);
}

void TestIdv3::writing_twice_changes_nothing_more()
{
    disk_->write(path, audio + mixed_tag());
    cIDV3 reader;
    reader.set_FileName(path);
    reader.set_Title(u"가é"_s);
    QVERIFY(reader.WriteTag());
    const QByteArray once = disk_->read(path);
    QVERIFY(reader.WriteTag());
    QCOMPARE(disk_->read(path), once);
    reader.set_FileName(path);
    QVERIFY(reader.WriteTag());
    QCOMPARE(disk_->read(path), once);
}

void TestIdv3::clearing_keeps_the_last_byte()
{
    for (const QByteArray& block : {mixed_tag(), QByteArray(128, 'x')}) {
        disk_->write(path, audio + block);
        cIDV3 reader;
        reader.set_FileName(path);
        QVERIFY(reader.ClearTag());
        QVERIFY(!reader.HasTag());
        QCOMPARE(disk_->read(path), audio + QByteArray(127, '\0') + block.back());
    }
}

void TestIdv3::a_read_only_file_is_not_changed()
{
    const QByteArray content = audio + mixed_tag();
    disk_->write(path, content);
    QCOMPARE(::chmod(disk_->native(path).constData(), 0444), 0);
    cIDV3 reader;
    QVERIFY(reader.load_and_has_tag(path));
    reader.set_Title(u"New"_s);
    QVERIFY(!reader.WriteTag());
    QVERIFY(!reader.ClearTag());
    QCOMPARE(disk_->read(path), content);
    QVERIFY(reader.HasTag());
    QCOMPARE(int{shared.file_number_1_open}, 0);
}

void TestIdv3::a_file_that_took_the_name_of_the_loaded_one_is_not_changed()
{
    disk_->write(path, audio);
    disk_->write(other_path, audio + mixed_tag());
    cIDV3 reader;
    reader.set_FileName(path);
    reader.set_Title(u"New"_s);
    QCOMPARE(std::rename(disk_->native(other_path).constData(), disk_->native(path).constData()), 0);
    QVERIFY(!reader.WriteTag());
    QVERIFY(!reader.ClearTag());
    QCOMPARE(disk_->read(path), audio + mixed_tag());
    QCOMPARE(int{shared.file_number_1_open}, 0);
}

void TestIdv3::a_short_file_ends_all_tags_of_the_run_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<bool>("ends");
    QTest::newRow("no byte") << 0 << true;
    QTest::newRow("one byte") << 1 << true;
    QTest::newRow("127 bytes") << 127 << true;
    QTest::newRow("128 bytes") << 128 << false;
    QTest::newRow("129 bytes") << 129 << false;
}

void TestIdv3::a_short_file_ends_all_tags_of_the_run()
{
    QFETCH(const int, length);
    QFETCH(const bool, ends);
    const QByteArray content = mixed_tag().append(audio).first(length);
    disk_->write(path, content);
    cIDV3 reader;
    reader.set_FileName(path);
    QCOMPARE(reader.FileName(), path);
    QCOMPARE(reader.FileBytes(), length);
    QCOMPARE(shared.file_number_1_open == 1, ends);
    QCOMPARE(reader.WriteTag(), !ends);
    if (ends) {
        QCOMPARE(disk_->read(path), content);
        expect_all_tags_ended();
    }
    QCOMPARE(disk_->read(path).size(), length);
    shared = {};
    disk_->write(other_path, audio + mixed_tag());
    QVERIFY(reader.load_and_has_tag(other_path));
}

void TestIdv3::load_and_cut(cIDV3& reader, int length) const
{
    disk_->write(path, audio + mixed_tag());
    reader.set_FileName(path);
    QVERIFY(reader.HasTag());
    QCOMPARE(::truncate(disk_->native(path).constData(), length), 0);
    QCOMPARE(int{shared.file_number_1_open}, 0);
}

void TestIdv3::expect_all_tags_ended() const
{
    QCOMPARE(int{shared.file_number_1_open}, 1);
    const QByteArray content = audio + mixed_tag();
    disk_->write(other_path, content);
    cIDV3 reader;
    QVERIFY(!reader.load_and_has_tag(other_path));
    QCOMPARE(reader.FileName(), other_path);
    expect_no_tag_loaded(reader);
    // The analysis has a file number of its own.
    QCOMPARE(int{reader.Kbits()}, 128);
    QCOMPARE(reader.FileBytes(), 1128);
    QVERIFY(!reader.HasTag());
    QVERIFY(!reader.WriteTag());
    QVERIFY(!reader.ClearTag());
    QCOMPARE(disk_->read(other_path), content);
}

void TestIdv3::HasTag_on_a_file_cut_short_ends_all_tags()
{
    cIDV3 reader;
    load_and_cut(reader, 127);
    QVERIFY(!reader.HasTag());
    expect_all_tags_ended();
}

void TestIdv3::writing_to_a_file_cut_short_ends_all_tags()
{
    cIDV3 reader;
    load_and_cut(reader, 127);
    QVERIFY(!reader.WriteTag());
    QCOMPARE(disk_->read(path), audio.first(127));
    expect_all_tags_ended();
}

void TestIdv3::clearing_a_file_cut_short_ends_all_tags()
{
    cIDV3 reader;
    load_and_cut(reader, 0);
    QVERIFY(!reader.ClearTag());
    QCOMPARE(disk_->read(path).size(), 0);
    expect_all_tags_ended();
}

void TestIdv3::a_failed_opening_ends_nothing()
{
    // A read-only file shorter than a tag fails before the position could.
    cIDV3 reader;
    load_and_cut(reader, 100);
    QCOMPARE(::chmod(disk_->native(path).constData(), 0444), 0);
    QVERIFY(!reader.WriteTag());
    QVERIFY(!reader.ClearTag());
    QCOMPARE(int{shared.file_number_1_open}, 0);
    QCOMPARE(::unlink(disk_->native(path).constData()), 0);
    QVERIFY(!reader.HasTag());
    QVERIFY(!reader.WriteTag());
    QVERIFY(!reader.ClearTag());
    QCOMPARE(int{shared.file_number_1_open}, 0);
}

void TestIdv3::a_huge_file_is_read_and_written_at_its_end_data()
{
    QTest::addColumn<qint64>("length");
    QTest::addColumn<i32>("file_bytes");
    QTest::newRow("300 MB") << qint64{300'000'000} << 300'000'000;
    QTest::newRow("5 GB") << qint64{5'000'000'000} << 0;
}

void TestIdv3::a_huge_file_is_read_and_written_at_its_end()
{
    QFETCH(const qint64, length);
    QFETCH(const i32, file_bytes);
    disk_->write(path, audio);
    QFile file(QFile::decodeName(disk_->native(path)));
    QVERIFY(file.open(QIODevice::ReadWrite) && file.resize(length));
    QVERIFY(file.seek(length - 128) && file.write(mixed_tag()) == 128 && file.flush());
    cIDV3 reader;
    QVERIFY(reader.load_and_has_tag(path));
    QCOMPARE(reader.FileBytes(), file_bytes);
    QCOMPARE(int{reader.Seconds()}, 0);
    QCOMPARE(int{reader.Kbits()}, 128);
    QCOMPARE(int{reader.Genre()}, 17);
    reader.set_Title(u"New"_s);
    QVERIFY(reader.WriteTag());
    QCOMPARE(file.size(), length);
    QVERIFY(file.seek(0) && file.read(audio.size()) == audio);
    QVERIFY(file.seek(length - 256));
    QCOMPARE(file.read(256),
             QByteArray(128, '\0') + "TAG" + QByteArray("New").leftJustified(30, ' ') + mixed_tag().sliced(33));
    // Where a position of 32 bits would have led.
    QVERIFY(file.seek(length % (qint64{1} << 32) - 128));
    QCOMPARE(file.read(128).startsWith("TAG"), length < (qint64{1} << 32));
}

void TestIdv3::the_first_frame_counts_wherever_it_begins_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("length");
    for (const int position : {1, 2, 464, 465, 466, 467, 468, 500, 509, 510, 511, 512, 513, 1000, 4999, 5000, 5001}) {
        const auto row = [position](const char* name, int length) {
            QTest::addRow("%s at %d", name, position) << position << length;
        };
        row("a frame", 6000);
        row("the number behind a frame", std::max(position + 47, 128));
        row("half the number behind a frame", std::max(position + 45, 128));
        row("a frame and the file's end", std::max(position + 1, 128));
    }
}

// The sampling rate of the header has no meaning, so that the number behind it stays what Frames gives.
void TestIdv3::the_first_frame_counts_wherever_it_begins()
{
    QFETCH(const int, position);
    QFETCH(const int, length);
    QByteArray content(length + 100, '\xFF'); // no frame: the second byte of each pair is wrong
    content.replace(position - 1, 4, QByteArray::fromHex("fffb9c64"));
    content.replace(position + 43, 4, QByteArray::fromHex("00012345"));
    content.truncate(length);
    disk_->write(path, content);
    HeaderAnalysis expected;
    const QByteArray start = content.left(analysed_bytes);
    analyse_header(std::span(start.constData(), static_cast<std::size_t>(start.size())), length, expected);
    cIDV3 reader;
    reader.set_FileName(path);
    QCOMPARE(reader.Frames(), expected.facts.Frames);
    QCOMPARE(reader.Frames() == 0x12345, position <= 5000 && length >= position + 47);
    QCOMPARE(int{reader.Kbits()}, int{expected.facts.Kbits});
    QCOMPARE(int{reader.MpegVersion()}, int{expected.facts.MpegVersion});
    QCOMPARE(reader.Mode(), expected.facts.Mode);
    QCOMPARE(reader.FileBytes(), length);
    QCOMPARE(reader.InfoString(), expected.InfoString());
}

QUILMO_LOGIC_TEST(TestIdv3)

#include "test_idv3.moc"
