#include "companion_run.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTest>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <vector>

using namespace Qt::StringLiterals;

namespace fs = std::filesystem;

namespace {

const QByteArray program = QUILMO_FIF;

/// What a run of the program as a process of its own took.
struct Run
{
    int status = -1;
    qint64 peak_kilobytes = 0;
};

/// Runs the program with its output thrown away.
Run run_program(const QByteArrayList& words)
{
    QByteArrayList all = QByteArrayList{program} + words;
    std::vector<char*> pointers;
    for (QByteArray& word : all)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        for (std::FILE* const stream : {stdout, stderr}) {
            if (std::freopen("/dev/null", "w", stream) == nullptr)
                _exit(126);
        }
        execv(pointers.front(), pointers.data());
        _exit(127);
    }
    int status = 0;
    rusage usage = {};
    wait4(child, &status, 0, &usage);
    return {.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1, .peak_kilobytes = usage.ru_maxrss};
}

/// Runs a line of the shell to its end.
void run_in_shell(QProcess& process, const QByteArray& line)
{
    process.start(u"/bin/bash"_s, {u"-c"_s, u"-o"_s, u"pipefail"_s, QString::fromUtf8(line)});
    process.waitForFinished();
}

/// FIF names in folders of a thousand, all of one file.
void make_many(const MusicPlace& place, int files)
{
    place.write("song", song("Ann", "Sea"));
    for (int number = 0; number < files; ++number) {
        const QByteArray folder = place.path("folder " + QByteArray::number(number / 1000));
        if (number % 1000 == 0)
            fs::create_directory(folder.toStdString());
        const QByteArray name = "/[The Paper Lanterns][Lost Tide " + QByteArray::number(number) + "].mp3";
        if (link(place.path("song").constData(), (folder + name).constData()) != 0)
            qFatal("no link");
    }
}

int many_files()
{
    const int wanted = qEnvironmentVariableIntValue("QUILMO_MANY_FILES");
    return wanted > 0 ? wanted : 20'000;
}

} // namespace

/// The program itself, as a process of its own.
class TestCompanionProgram : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void exit_statuses();
    void it_reads_its_standard_input();
    void a_standard_input_that_cannot_be_read_is_told_data();
    void a_standard_input_that_cannot_be_read_is_told();
    void a_stream_that_is_closed_is_no_file_data();
    void a_stream_that_is_closed_is_no_file();
    void a_disk_for_reading_alone_is_told_by_a_preview();
    void a_reader_that_goes_away_stops_no_change();
    void an_output_that_is_full_is_told();
    void it_loads_no_library_of_windows_or_player();
    void thousands_of_files_take_no_more_memory();
};

void TestCompanionProgram::exit_statuses()
{
    const MusicPlace place;
    place.write("a.mp3", song("Ann", "Sea"));
    QCOMPARE(run_program({"check", place.root()}).status, 0);
    QCOMPARE(run_program({"check", place.path("none")}).status, 1);
    QCOMPARE(run_program({"check"}).status, 2);
    QCOMPARE(run_program({"--help"}).status, 0);
}

void TestCompanionProgram::it_reads_its_standard_input()
{
    const MusicPlace place;
    place.write("a.mp3", song("Ann", "Sea"));
    QProcess process;
    process.start(QString::fromUtf8(program), {u"check"_s, u"-0"_s});
    process.write(place.path("a.mp3"));
    process.closeWriteChannel();
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 0);
    QVERIFY(process.readAllStandardOutput().endsWith(" -> [Ann][Sea][Rock].mp3\n"));
    QCOMPARE(process.readAllStandardError(), QByteArray()); // no progress where nobody watches
}

void TestCompanionProgram::a_standard_input_that_cannot_be_read_is_told_data()
{
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<QByteArray>("reason");
    QTest::newRow("a folder") << "</"_ba
                              << "Is a directory"_ba;
    QTest::newRow("closed") << "<&-"_ba
                            << "Bad file descriptor"_ba;
    QTest::newRow("for writing alone") << "0>/dev/null"_ba
                                       << "Bad file descriptor"_ba;
}

void TestCompanionProgram::a_standard_input_that_cannot_be_read_is_told()
{
    QFETCH(QByteArray, input);
    QFETCH(QByteArray, reason);

    QProcess process;
    run_in_shell(process, program + " check -0 " + input);
    QCOMPARE(process.exitCode(), 1);
    QCOMPARE(process.readAllStandardError(), "quilmo-fif: standard input: " + reason + '\n');
    QCOMPARE(process.readAllStandardOutput(), QByteArray());
}

void TestCompanionProgram::a_stream_that_is_closed_is_no_file_data()
{
    QTest::addColumn<QByteArray>("closed");
    QTest::addColumn<int>("status");
    QTest::newRow("the input") << "<&-"_ba << 0;
    QTest::newRow("the output") << ">&-"_ba << 1;
    QTest::newRow("the errors") << "2>&-"_ba << 0;
    QTest::newRow("all") << "<&- >&- 2>&-"_ba << 1;
}

/// No journal and no music file takes its place, so that what is told would be written into it.
void TestCompanionProgram::a_stream_that_is_closed_is_no_file()
{
    QFETCH(QByteArray, closed);
    QFETCH(int, status);

    const MusicPlace place;
    for (int number = 0; number < 200; ++number)
        place.write("[Ann][Sea " + QByteArray::number(number) + "].mp3", song("Old", "Older"));
    const auto before = place.content();
    const QByteArray change = program + " convert --type 6 --tags --apply ";
    QProcess process;
    run_in_shell(process, change + "--journal " + place.journal() + ' ' + place.root() + ' ' + closed);
    QCOMPARE(process.exitCode(), status);
    const auto after = place.content();
    QCOMPARE(after.size(), before.size());
    for (auto entry = after.begin(); entry != after.end(); ++entry) {
        QVERIFY(entry.key().startsWith("Ann-Sea"));
        QCOMPARE(entry.value().size(), song("Old", "Older").size());
    }
    run_in_shell(process, program + " undo " + place.journal() + ' ' + closed);
    QCOMPARE(process.exitCode(), status);
    QCOMPARE(place.content(), before);
    run_in_shell(process, change + "--no-journal " + place.root() + ' ' + closed);
    QCOMPARE(place.content(), after);
}

void TestCompanionProgram::a_disk_for_reading_alone_is_told_by_a_preview()
{
    const MusicPlace place;
    place.write("a.mp3", song("Ann", "Sea"));
    const QByteArray on_disk = "unshare --map-root-user --mount bash -c 'mount --bind \"$0\" \"$0\" && "
                               "mount -o remount,bind,ro \"$0\" && \"$@\"' " +
                               place.root() + ' ';
    QProcess process;
    run_in_shell(process, on_disk + "true");
    if (process.exitCode() != 0)
        QSKIP("no disk can be made one for reading alone here");
    for (const QByteArray words : {" tag --year 2001 ", " convert --type 6 "}) {
        run_in_shell(process, on_disk + program + words + place.root());
        QCOMPARE(process.exitCode(), 1);
        QVERIFY(process.readAllStandardOutput().endsWith(": Read-only file system\n"));
    }
    run_in_shell(process, on_disk + program + " tag --year 1999 " + place.root());
    QCOMPARE(process.exitCode(), 0);
}

void TestCompanionProgram::a_reader_that_goes_away_stops_no_change()
{
    const MusicPlace place;
    for (int number = 0; number < 2000; ++number)
        place.write("[Ann][Sea " + QByteArray::number(number) + "].mp3", "x");
    QProcess process;
    process.setStandardOutputFile(u"/dev/null"_s);
    run_in_shell(process, program + " convert --type 6 --apply --no-journal " + place.root() + " 2>/dev/null | true");
    QCOMPARE(process.exitCode(), 1); // it could not tell all
    const QByteArrayList names = place.content().keys();
    QCOMPARE(names.size(), 2000);
    QVERIFY(std::ranges::all_of(names, [](const QByteArray& name) { return name.startsWith("Ann-Sea"); }));
}

void TestCompanionProgram::an_output_that_is_full_is_told()
{
    const MusicPlace place;
    place.write("a.mp3", song("Ann", "Sea"));
    QProcess process;
    process.setStandardOutputFile(u"/dev/full"_s);
    process.start(QString::fromUtf8(program), {u"check"_s, QString::fromUtf8(place.root())});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 1);
    QCOMPARE(process.readAllStandardError(), "quilmo-fif: the output cannot be written\n"_ba);
}

void TestCompanionProgram::it_loads_no_library_of_windows_or_player()
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"LD_TRACE_LOADED_OBJECTS"_s, u"1"_s);
    process.setProcessEnvironment(environment);
    process.start(QString::fromUtf8(program), {u"--version"_s});
    QVERIFY(process.waitForFinished());
    const QByteArray libraries = process.readAllStandardOutput();
    QVERIFY(libraries.contains("libQt6Core"));
    for (const char* const other : {"libQt6Gui", "libQt6Widgets", "libSDL2", "libmpg123", "libX11"})
        QVERIFY2(!libraries.contains(other), other);
}

void TestCompanionProgram::thousands_of_files_take_no_more_memory()
{
#ifdef __SANITIZE_ADDRESS__
    QSKIP("AddressSanitizer keeps memory that the program has given back");
#endif
    constexpr qint64 told_growth = 3'000; // kilobytes; names of one folder and a mark for each folder
    const MusicPlace few;
    make_many(few, 1000);
    const MusicPlace many;
    const int files = many_files();
    make_many(many, files);
    for (const QByteArrayList& words : {QByteArrayList{"check"},
                                        {"convert", "--type", "6", "--json"},
                                        {"convert", "--type", "6", "--apply", "--journal"}}) {
        const auto with_place = [&](const MusicPlace& place) {
            return words + (words.last() == "--journal" ? QByteArrayList{place.journal(), place.root()}
                                                        : QByteArrayList{place.root()});
        };
        const Run run_of_few = run_program(with_place(few));
        const Run run_of_many = run_program(with_place(many));
        QCOMPARE(run_of_few.status, 0);
        QCOMPARE(run_of_many.status, 0);
        const qint64 growth = run_of_many.peak_kilobytes - run_of_few.peak_kilobytes;
        QVERIFY2(growth < told_growth, QByteArray::number(growth).constData());
    }
    QCOMPARE(run_program({"undo", many.journal()}).status, 0);
    qsizetype old_names = 0;
    for (const auto& entry : fs::recursive_directory_iterator(many.root().toStdString()))
        old_names += entry.path().filename().string().starts_with("[The Paper Lanterns][") ? 1 : 0;
    QCOMPARE(old_names, qsizetype(files));
}

QUILMO_LOGIC_TEST(TestCompanionProgram)
#include "test_companion_program.moc"
