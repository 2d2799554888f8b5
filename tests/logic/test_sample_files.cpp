#include "platform/drives.h"
#include "sample_collection.h"
#include "sample_files.h"
#include "test_main.h"

#include <QCoreApplication>
#include <QTest>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>

using namespace Qt::StringLiterals;

namespace {

/// All files below a folder: their content by their path in it.
std::map<std::string, std::string> files_below(const QByteArray& folder)
{
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.toStdString())) {
        if (!entry.is_regular_file())
            continue;
        std::ifstream file(entry.path(), std::ios::binary);
        files[entry.path().lexically_relative(folder.toStdString()).string()] =
            std::string(std::istreambuf_iterator<char>(file), {});
    }
    return files;
}

int bits(const QByteArray& bytes, qsizetype place, unsigned shift, unsigned mask)
{
    return static_cast<int>(static_cast<unsigned char>(bytes[place]) >> shift & mask);
}

} // namespace

class TestSampleFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void frames_follow_one_another_data();
    void frames_follow_one_another();
    void header_without_a_rate_gives_nothing();
    void tag_has_its_fields_in_place_data();
    void tag_has_its_fields_in_place();
    void text_in_code_pages_data();
    void text_in_code_pages();
    void collection_is_the_same_each_time();
    void collection_has_names_and_tags_of_all_kinds();
    void songs_last_as_long_as_asked();
    void collection_without_broken_names();
    void collection_grows_without_two_names_alike();
    void files_that_are_there_stay();
    void folder_that_cannot_be_made();
};

void TestSampleFiles::frames_follow_one_another_data()
{
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<int>("kilobits");
    QTest::addColumn<int>("hertz");

    QTest::newRow("128 kbit/s at 44100 Hz") << QByteArray::fromHex("fffb9064") << 128 << 44100;
    QTest::newRow("the padding bit of the header does not count") << QByteArray::fromHex("fffb9264") << 128 << 44100;
    QTest::newRow("320 kbit/s at 44100 Hz") << QByteArray::fromHex("fffbe000") << 320 << 44100;
    QTest::newRow("64 kbit/s at 48000 Hz") << QByteArray::fromHex("fffb5464") << 64 << 48000;
    QTest::newRow("32 kbit/s at 32000 Hz, mono") << QByteArray::fromHex("fffb18c0") << 32 << 32000;
}

void TestSampleFiles::frames_follow_one_another()
{
    QFETCH(QByteArray, header);
    QFETCH(int, kilobits);
    QFETCH(int, hertz);
    constexpr int frames = 441;
    const QByteArray audio = sample_audio({.frames = frames, .header = header});

    qsizetype place = 0;
    for (int frame = 0; frame < frames; ++frame) {
        QVERIFY(place + 4 <= audio.size());
        QCOMPARE(audio.mid(place, 2), header.first(2));
        QCOMPARE(bits(audio, place + 2, 2, 0x3F), bits(header, 2, 2, 0x3F));
        QCOMPARE(audio[place + 3], header[3]);
        const int length = 144000 * kilobits / hertz + bits(audio, place + 2, 1, 1);
        QCOMPARE(audio.mid(place + 4, length - 4).count('\0'), length - 4);
        place += length;
    }
    QCOMPARE(place, audio.size());
    QCOMPARE(audio.size(), qsizetype(144000) * kilobits * frames / hertz);
}

void TestSampleFiles::header_without_a_rate_gives_nothing()
{
    QVERIFY(sample_audio({.frames = 3, .header = QByteArray::fromHex("fffb0064")}).isEmpty());
    QVERIFY(sample_audio({.frames = 3, .header = QByteArray::fromHex("fffb9c64")}).isEmpty());
    QVERIFY(sample_audio({.frames = 0}).isEmpty());
}

void TestSampleFiles::tag_has_its_fields_in_place_data()
{
    QTest::addColumn<char>("padding");

    QTest::newRow("filled with NULs") << '\0';
    QTest::newRow("filled with blanks") << ' ';
}

void TestSampleFiles::tag_has_its_fields_in_place()
{
    QFETCH(char, padding);
    const QByteArray tag = sample_tag({.title = QByteArray(40, 't'),
                                       .artist = "Artist",
                                       .album = "Album",
                                       .year = "2001",
                                       .comment = {},
                                       .genre = 147,
                                       .padding = padding});

    QCOMPARE(tag.size(), 128);
    QCOMPARE(tag.mid(0, 3), QByteArray("TAG"));
    QCOMPARE(tag.mid(3, 30), QByteArray(30, 't'));
    QCOMPARE(tag.mid(33, 30), "Artist" + QByteArray(24, padding));
    QCOMPARE(tag.mid(63, 30), "Album" + QByteArray(25, padding));
    QCOMPARE(tag.mid(93, 4), QByteArray("2001"));
    QCOMPARE(tag.mid(97, 30), QByteArray(30, padding));
    QCOMPARE(tag[127], static_cast<char>(147));
}

void TestSampleFiles::text_in_code_pages_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("korean");
    QTest::addColumn<QByteArray>("western");

    QTest::newRow("ASCII") << u"abc"_s << QByteArray("abc") << QByteArray("abc");
    QTest::newRow("Korean") << u"가b"_s
                            << QByteArray("\xB0\xA1"
                                          "b")
                            << QByteArray("?b");
    QTest::newRow("a syllable of the extended page") << u"뷁"_s << QByteArray("\x94\xEE") << QByteArray("?");
    QTest::newRow("Western letters") << u"éöß"_s << QByteArray("??\xA9\xAC") << QByteArray("\xE9\xF6\xDF");
    QTest::newRow("a character of neither page") << u"\U0001F600!"_s << QByteArray("?!") << QByteArray("?!");
}

void TestSampleFiles::text_in_code_pages()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, korean);
    QFETCH(QByteArray, western);

    QCOMPARE(korean_bytes(text), korean);
    QCOMPARE(western_bytes(text), western);
}

void TestSampleFiles::collection_is_the_same_each_time()
{
    const TestDisk disk;
    QVERIFY(write_sample_collection(disk.root() + "/a", {}));
    QVERIFY(write_sample_collection(disk.root() + "/b", {}));

    const auto files = files_below(disk.root() + "/a");
    QCOMPARE(files.size(), std::size_t(60));
    QVERIFY(files == files_below(disk.root() + "/b"));
}

void TestSampleFiles::collection_has_names_and_tags_of_all_kinds()
{
    const TestDisk disk;
    QVERIFY(write_sample_collection(disk.root(), {}));

    std::map<QString, int> kinds;
    for (const auto& [path, content] : files_below(disk.root())) {
        const QByteArray name = QByteArray::fromStdString(path.substr(path.find('/') + 1));
        const QByteArray tag = QByteArray::fromStdString(content).last(128);
        ++kinds[QString::fromStdString(path.substr(0, path.find('/')))];
        ++kinds[name.isValidUtf8() ? u"valid"_s : u"broken"_s];
        ++kinds[name.startsWith('[') ? u"square %1"_s.arg(name.count('[')) : u"not square"_s];
        ++kinds[name.startsWith('(') ? u"round %1"_s.arg(name.count('(')) : u"not round"_s];
        ++kinds[u"dashes %1"_s.arg(name.count('-'))];
        ++kinds[name.endsWith(".MP3") ? u"capitals"_s : u"small letters"_s];
        ++kinds[tag.startsWith("TAG") ? u"tag"_s : u"no tag"_s];
        ++kinds[tag.startsWith("TAG") && tag[33] == tag[62] ? u"no artist"_s : u"artist"_s];
        ++kinds[tag[126] == ' ' ? u"blanks"_s : u"NULs"_s];
        ++kinds[tag.mid(3, 60).trimmed().size() > 56 ? u"too long"_s : u"short"_s];
        QVERIFY(content.starts_with("\xFF\xFB"));
    }
    for (const QString& kind :
         {u"Korean"_s,   u"Western"_s,       u"Mixed"_s,    u"valid"_s,    u"broken"_s,    u"square 2"_s,
          u"square 3"_s, u"round 2"_s,       u"round 3"_s,  u"dashes 0"_s, u"dashes 1"_s,  u"dashes 2"_s,
          u"capitals"_s, u"small letters"_s, u"tag"_s,      u"no tag"_s,   u"no artist"_s, u"artist"_s,
          u"blanks"_s,   u"NULs"_s,          u"too long"_s, u"short"_s})
        QVERIFY2(kinds[kind] > 0, qPrintable(kind));
}

void TestSampleFiles::songs_last_as_long_as_asked()
{
    const TestDisk disk;
    constexpr int seconds = 4;
    QVERIFY(write_sample_collection(disk.root(), {.files = 21, .folders = 1, .seconds = seconds}));

    std::map<int, int> lengths;
    for (const auto& [path, content] : files_below(disk.root())) {
        const QByteArray song = QByteArray::fromStdString(content);
        const int tag = song.last(128).startsWith("TAG") ? 128 : 0;
        const std::map<int, int> bytes_per_second = {{0x90, 16000}, {0x54, 8000}, {0xB0, 24000}};
        const auto rate = bytes_per_second.find(bits(song, 2, 0, 0xFD));
        QVERIFY(rate != bytes_per_second.end());
        ++lengths[static_cast<int>(10 * (song.size() - tag) / rate->second)];
    }
    QVERIFY(lengths.begin()->first >= 10 * seconds / 2 - 1);
    QVERIFY(lengths.rbegin()->first <= 10 * seconds);
    QVERIFY(lengths.rbegin()->first >= 10 * seconds - 2);
    QVERIFY(lengths.size() > 10);
}

void TestSampleFiles::collection_without_broken_names()
{
    const TestDisk disk;
    QVERIFY(write_sample_collection(disk.root(), {.files = 100, .folders = 3, .broken_names = false}));

    const auto files = files_below(disk.root());
    QCOMPARE(files.size(), std::size_t(100));
    for (const auto& file : files)
        QVERIFY(QByteArray::fromStdString(file.first).isValidUtf8());
}

void TestSampleFiles::collection_grows_without_two_names_alike()
{
    const TestDisk disk;
    QVERIFY(write_sample_collection(disk.root(), {.files = 1000, .folders = 7}));

    std::map<std::string, int> names;
    for (const auto& [path, content] : files_below(disk.root())) {
        ++names[path.substr(path.find('/') + 1)];
        QVERIFY(content.size() < 4096);
    }
    QCOMPARE(names.size(), std::size_t(1000));
}

void TestSampleFiles::files_that_are_there_stay()
{
    const TestDisk disk;
    QVERIFY(write_sample_collection(disk.root(), {.files = 6}));
    const auto before = files_below(disk.root());
    const std::string first = before.begin()->first;
    std::ofstream(disk.root().toStdString() + '/' + first, std::ios::binary) << "mine";

    QVERIFY(write_sample_collection(disk.root(), {.files = 6}));
    auto after = files_below(disk.root());
    QCOMPARE(after[first], std::string("mine"));
    after[first] = before.begin()->second;
    QVERIFY(after == before);
}

void TestSampleFiles::folder_that_cannot_be_made()
{
    const TestDisk disk;
    disk.write(u"C:\\taken"_s, "a");

    QVERIFY(!write_sample_collection(disk.root() + "/taken", {}));
    QVERIFY(!write_sample_collection(disk.root() + "/taken/below", {}));
    QCOMPARE(disk.read(u"C:\\taken"_s), QByteArray("a"));
}

QUILMO_LOGIC_TEST(TestSampleFiles)
#include "test_sample_files.moc"
