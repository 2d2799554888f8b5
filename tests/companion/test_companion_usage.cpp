#include "companion_run.h"
#include "odd_names.h"

#include "companion/Output.h"

#include <QCoreApplication>
#include <QTest>

#include <algorithm>
#include <cerrno>
#include <filesystem>

using namespace Qt::StringLiterals;

namespace {

/// A stream that breaks off with an error behind some bytes.
class BrokenStream
{
public:
    BrokenStream(QByteArray bytes, int error)
        : bytes_(std::move(bytes)),
          error_(error),
          stream_(fopencookie(this, "r", {.read = read, .write = nullptr, .seek = nullptr, .close = nullptr}))
    {
    }
    ~BrokenStream() { std::fclose(stream_); }
    BrokenStream(const BrokenStream&) = delete;
    BrokenStream& operator=(const BrokenStream&) = delete;

    std::FILE* stream() const { return stream_; }

private:
    static ssize_t read(void* cookie, char* buffer, std::size_t size)
    {
        auto& self = *static_cast<BrokenStream*>(cookie);
        const qsizetype part = std::min(self.bytes_.size(), static_cast<qsizetype>(size));
        if (part == 0) {
            errno = self.error_;
            return -1;
        }
        std::copy_n(self.bytes_.cbegin(), part, buffer);
        self.bytes_.remove(0, part);
        return part;
    }

    QByteArray bytes_;
    int error_;
    std::FILE* stream_;
};

} // namespace

/// What the program takes and says: words, standard input, names of all kinds.
class TestCompanionUsage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void wrong_usage_data();
    void wrong_usage();
    void help_and_version();
    void options_may_stand_anywhere();
    void a_path_may_look_like_an_option();
    void paths_come_from_standard_input();
    void a_standard_input_that_breaks_off_is_told_data();
    void a_standard_input_that_breaks_off_is_told();
    void progress_stands_until_something_else_is_told();
    void names_pass_through_data();
    void names_pass_through();
    void control_characters_are_escaped_data();
    void control_characters_are_escaped();
    void json_tells_bytes_that_are_no_text();
};

void TestCompanionUsage::wrong_usage_data()
{
    QTest::addColumn<QByteArrayList>("words");
    QTest::addColumn<QByteArray>("error");

    const auto row = [](const char* name, const QByteArrayList& words, const QByteArray& error) {
        QTest::newRow(name) << words << error;
    };
    row("no command", {}, "no command given");
    row("another command", {"rename", "x"}, "there is no command \"rename\"");
    row("no path", {"check"}, "no path given");
    row("an empty path", {"check", ""}, "an empty path");
    row("an unknown option", {"check", "--all", "x"}, "--all: there is no such option");
    row("an option that is unclear", {"convert", "--fix=x", "x"}, "--fix=x: several options begin so");
    row("an unknown letter", {"check", "-x", "y"}, "there is no option -x");
    row("an unknown letter among others", {"check", "-0x", "-y"}, "there is no option -x");
    row("a letter that moves a terminal", {"check", "-\x1b[2J", "y"}, R"(there is no option -\x1b)");
    row("a letter that is no byte of text", {"check", "-\x9b", "y"}, R"(there is no option -\x9b)");
    row("a command that moves a terminal", {"\x1b]0;x\a"}, R"(there is no command "\x1b]0;x\x07")");
    row("an option that moves a terminal", {"check", "--\x1b[2J"}, R"(--\x1b[2J: there is no such option)");
    row("a value that moves a terminal", {"check", "--type", "\x1b[2J", "x"},
        R"(--type: "\x1b[2J" is no number from 1 to 6)");
    row("a genre that moves a terminal", {"tag", "--genre", "\r\n", "x"}, R"(--genre: there is no genre "\r\n")");
    row("an option of another command", {"check", "--apply", "x"}, "check has no option --apply");
    row("a type for tags", {"tag", "--type", "1", "x"}, "tag has no option --type");
    row("a type that is none", {"convert", "--type", "7", "x"}, "--type: \"7\" is no number from 1 to 6");
    row("a type in words", {"convert", "--type", "one", "x"}, "--type: \"one\" is no number from 1 to 6");
    row("a value that is missing", {"convert", "x", "--type"}, "--type: its value is missing or one too many");
    row("a value too many", {"convert", "--apply=yes", "x"}, "--apply=yes: its value is missing or one too many");
    row("a value for -0", {"check", "--from-stdin=x"}, "--from-stdin=x: its value is missing or one too many");
    row("a value for help", {"--help=x"}, "--help=x: its value is missing or one too many");
    row("an artist of nothing", {"convert", "--fix-artist", " ?", "x"},
        "--fix-artist: nothing of its value can stand in a name");
    row("a genre of delimiters", {"convert", "--type", "5", "--fix-genre", "[-]", "x"},
        "--fix-genre: nothing of its value can stand in a name");
    row("an artist beyond all bounds", {"convert", "--fix-artist", QByteArray(40'000, 'A'), "x"},
        "--fix-artist: its value is too long");
    row("an artist that is no UTF-8", {"convert", "--fix-artist", "\xff", "x"}, "a text that is no UTF-8");
    row("no field", {"tag", "x"},
        "tag: no field to set; give --artist, --title, --album, --year, --comment or --genre");
    row("a genre that is none", {"tag", "--genre", "Nonsense", "x"}, "--genre: there is no genre \"Nonsense\"");
    row("a genre beyond a byte", {"tag", "--genre", "256", "x"}, "--genre: \"256\" is no number from 0 to 255");
    row("two journals", {"undo", "x", "y"}, "undo takes one journal");
    row("no journal", {"undo"}, "undo takes one journal");
    row("an undo with --apply", {"undo", "--apply", "x"}, "undo has no option --apply");
    row("two sources of paths", {"check", "-0", "x"}, "paths come as arguments or from standard input, not both");
    row("a journal and none", {"convert", "--apply", "--journal", "j", "--no-journal", "x"},
        "--journal and --no-journal do not go together");
    row("a journal without a name", {"convert", "--apply", "--journal", "", "x"}, "--journal: an empty path");
    row("a journal without a name and none", {"convert", "--apply", "--journal=", "--no-journal", "x"},
        "--journal: an empty path");
    row("a journal of a preview", {"convert", "--journal", "j", "x"}, "a journal goes with --apply");
    row("no journal of a preview", {"tag", "--year", "1", "--no-journal", "x"}, "a journal goes with --apply");
}

void TestCompanionUsage::wrong_usage()
{
    QFETCH(QByteArrayList, words);
    QFETCH(QByteArray, error);

    const Told told = run_fif(words);
    QCOMPARE(told.status, 2);
    QCOMPARE(told.err, "quilmo-fif: " + error + "\nTry \"quilmo-fif --help\".\n");
    QCOMPARE(told.out, QByteArray());
}

void TestCompanionUsage::help_and_version()
{
    for (const QByteArrayList& words : {QByteArrayList{"--help"}, {"-h"}, {"convert", "--help"}}) {
        const Told told = run_fif(words);
        QCOMPARE(told.status, 0);
        QVERIFY(told.out.startsWith("usage: quilmo-fif check"));
        for (const QByteArray& line : told.lines())
            QVERIFY2(QString::fromUtf8(line).size() <= 100, line.constData());
    }
    QCOMPARE(run_fif({"--version"}).out, "quilmo-fif 1.0\n"_ba);
}

void TestCompanionUsage::options_may_stand_anywhere()
{
    const MusicPlace place;
    place.write("a.mp3", song("Ann", "Sea"));
    const Told told = run_fif({"convert", place.root(), "--type=6"});
    QVERIFY(told.out.endsWith("-> Ann-Sea.mp3\n"));
    QCOMPARE(run_fif({"--type", "6", "convert", place.root()}).out, told.out);
    QCOMPARE(run_fif({"convert", place.root(), "--ty=6"}).out, told.out); // as much of its name as is clear
    qputenv("POSIXLY_CORRECT", "1");
    const Told strict = run_fif({"convert", place.root(), "--type", "6"});
    qunsetenv("POSIXLY_CORRECT");
    QCOMPARE(strict.out, told.out);
}

void TestCompanionUsage::a_path_may_look_like_an_option()
{
    const MusicPlace place;
    place.write("-x.mp3", song("Ann", "Sea"));
    QCOMPARE(run_fif({"check", "--", "-x.mp3"}).status, 1); // there is none here
    const QByteArray before = QByteArray::fromStdString(std::filesystem::current_path().string());
    std::filesystem::current_path(place.root().toStdString());
    const Told told = run_fif({"check", "--", "-x.mp3"});
    std::filesystem::current_path(before.toStdString());
    QCOMPARE(told.status, 0);
    QVERIFY(told.out.endsWith(" -x.mp3 -> [Ann][Sea][Rock].mp3\n"));
}

void TestCompanionUsage::paths_come_from_standard_input()
{
    const MusicPlace place;
    place.write("a\nb.mp3", song("Ann", "Sea"));
    place.write("sub/c.mp3", song("Bob", "Sky"));
    const QByteArray input = place.path("a\nb.mp3") + '\0' + '\0' + place.path("sub") + '\0';
    QCOMPARE(run_fif({"check", "--from-stdin"}, input).lines().size(), 2);
    QCOMPARE(run_fif({"convert", "-0", "--apply", "--no-journal"}, input).status, 0);
    QCOMPARE(place.content().keys(), (QByteArrayList{"[Ann][Sea][Rock].mp3", "sub/[Bob][Sky][Rock].mp3"}));
    const Told nothing = run_fif({"check", "-0"}, {});
    QCOMPARE(nothing.status, 0);
    QCOMPARE(nothing.out, QByteArray());
}

void TestCompanionUsage::a_standard_input_that_breaks_off_is_told_data()
{
    QTest::addColumn<QByteArrayList>("words");
    QTest::newRow("check") << QByteArrayList{"check"};
    QTest::newRow("a preview") << QByteArrayList{"convert", "--type", "6"};
    QTest::newRow("a conversion") << QByteArrayList{"convert", "--type", "6", "--apply", "--no-journal"};
    QTest::newRow("tags") << QByteArrayList{"tag", "--year", "2001"};
    QTest::newRow("facts") << QByteArrayList{"info"};
}

/// What came whole is done. What came last may be the beginning of a path, and so another folder.
void TestCompanionUsage::a_standard_input_that_breaks_off_is_told()
{
    QFETCH(QByteArrayList, words);

    const MusicPlace place;
    place.write("a.mp3", song("Ann", "Sea"));
    place.write("sub/b.mp3", song("Bob", "Sky"));
    place.write("sub 2/c.mp3", song("Cid", "Sun"));
    const Told whole = run_fif(words + QByteArrayList{place.path("a.mp3")});
    QCOMPARE(whole.status, 0);
    if (words.contains("--apply"))
        QCOMPARE(rename(place.path("Ann-Sea.mp3").constData(), place.path("a.mp3").constData()), 0);

    const BrokenStream stream(place.path("a.mp3") + '\0' + place.path("sub"), EIO);
    const Told told = run_fif(words + QByteArrayList{"-0"}, stream.stream());
    QCOMPARE(told.status, 1);
    QCOMPARE(told.out, whole.out);
    QVERIFY2(told.err.startsWith("quilmo-fif: standard input: Input/output error\n"), told.err.constData());
    QVERIFY(place.exists("sub/b.mp3"));

    const BrokenStream again(place.path("none"), EIO);
    const QList<QJsonObject> objects = run_fif(words + QByteArrayList{"-0", "--json"}, again.stream()).objects();
    QCOMPARE(objects.size(), 1);
    QCOMPARE(objects[0]["path"_L1].toString(), u"standard input"_s);
    QCOMPARE(objects[0]["reason"_L1].toString(), u"unreadable"_s);

    const Told cut = run_fif(words + QByteArrayList{"-0"}, place.path("sub"));
    QCOMPARE(cut.status, 1);
    QCOMPARE(cut.err.left(cut.err.indexOf('\n')),
             QByteArray("quilmo-fif: standard input: it ends in the middle of a path"));
    QVERIFY(place.exists("sub/b.mp3"));
}

void TestCompanionUsage::progress_stands_until_something_else_is_told()
{
    const Gathered out;
    const Gathered err;
    Output output({.in = stdin, .out = out.stream(), .err = err.stream(), .shows_progress = true}, false);
    for (int number = 0; number < 50; ++number) {
        output.write("line");
        output.step("checking");
    }
    QCOMPARE(err.bytes(), "\rchecking: 32 files\x1b[K"_ba);
    output.remark("text");
    QCOMPARE(err.bytes(), "\rchecking: 32 files\x1b[K\r\x1b[Kquilmo-fif: text\n"_ba);
    const auto read_on = [&] {
        for (int number = 0; number < 32; ++number)
            output.step("reading");
        return err.bytes().contains("\rreading: ");
    };
    QTRY_VERIFY(read_on()); // it is shown anew after a while
    QVERIFY(!err.bytes().endsWith("\r\x1b[K"));
    QCOMPARE(output.finish(), 0);
    QVERIFY(err.bytes().endsWith("\r\x1b[K"));
    QCOMPARE(out.bytes(), QByteArray("line\n").repeated(50));
}

void TestCompanionUsage::names_pass_through_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const OddName& odd : odd_names)
        QTest::newRow(odd.what) << odd.bytes;
}

/// Through a conversion with its journal, and back.
void TestCompanionUsage::names_pass_through()
{
    QFETCH(QByteArray, name);

    const MusicPlace place;
    place.write("sub " + name.left(200) + "/" + name + ".mp3", song("Ann", "Sea"));
    const auto before = place.content();
    const Told told = run_fif(applied({"convert", "--type", "2", "--tags"}, place));
    QCOMPARE(told.lines().size(), 1);
    const bool is_fif = told.out.startsWith("keep");
    QVERIFY(is_fif || place.content() != before);
    if (!is_fif)
        QCOMPARE(undo(place).status, 0);
    QCOMPARE(place.content(), before);
    QCOMPARE(run_fif({"check", "--json", place.root()}).objects().size(), 1);
}

void TestCompanionUsage::control_characters_are_escaped_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("shown");

    QTest::newRow("a line break") << "a\nb"_ba
                                  << R"(a\nb)"_ba;
    QTest::newRow("what moves a terminal") << "a\x1b[2J\x7f\rb\t"_ba
                                           << R"(a\x1b[2J\x7f\rb\t)"_ba;
    QTest::newRow("a backslash") << R"(a\nb)"_ba
                                 << R"(a\\nb)"_ba;
    QTest::newRow("a control character of eight bits") << "a\xc2\x9b"_ba
                                                       << R"(a\x9b)"_ba;
    QTest::newRow("its byte alone") << "a\x9b"_ba
                                    << R"(a\x9b)"_ba;
    QTest::newRow("bytes that are no text") << "a\xe9\xff"_ba
                                            << "a\xe9\xff"_ba;
    QTest::newRow("a mark that turns the direction") << QString(QChar(0x202e)).toUtf8() << R"(\u202e)"_ba;
    QTest::newRow("letters of all kinds") << "가é😀"_ba
                                          << "가é😀"_ba;
}

void TestCompanionUsage::control_characters_are_escaped()
{
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, shown);

    const MusicPlace place;
    place.write(name + ".mp3", sample_audio());
    const Told told = run_fif({"check", place.root()});
    QVERIFY2(told.out.endsWith(place.path(shown + ".mp3: no tag\n")), told.out.constData());
}

void TestCompanionUsage::json_tells_bytes_that_are_no_text()
{
    const MusicPlace place;
    place.write("a\xe9.mp3", song("Ann", "Sea"));
    place.write("b\n\"\\.mp3", song("Bob", "Sky"));
    const QList<QJsonObject> objects = run_fif({"check", "--json", place.root()}).objects();
    QCOMPARE(objects[0]["path"_L1].toString(), QString::fromUtf8(place.path("a\xef\xbf\xbd.mp3")));
    QCOMPARE(QByteArray::fromBase64(objects[0]["path_base64"_L1].toString().toLatin1()), place.path("a\xe9.mp3"));
    QCOMPARE(objects[1]["path"_L1].toString(), QString::fromUtf8(place.path("b\n\"\\.mp3")));
    QVERIFY(!objects[1].contains("path_base64"_L1));
}

QUILMO_LOGIC_TEST(TestCompanionUsage)
#include "test_companion_usage.moc"
