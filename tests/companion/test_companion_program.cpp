#include "companion_run.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTest>

#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

using namespace Qt::StringLiterals;

namespace fs = std::filesystem;

namespace {

const QByteArray program = QUILMO_FIF;

/// What a run of the program as a process of its own took.
struct Run
{
    int status = -1;
    qint64 peak_kilobytes = 0; ///< of its memory; 0 where the machine lets no process be watched
};

/// The most memory that a process, which is there yet, has had.
qint64 peak_kilobytes_of(pid_t process)
{
    std::ifstream stream("/proc/" + std::to_string(process) + "/status");
    std::string word;
    qint64 kilobytes = 0;
    while (stream >> word) {
        if (word == "VmHWM:")
            stream >> kilobytes;
    }
    return kilobytes;
}

/// Runs the program on a file as its standard input, with its output thrown away, and watches its memory.
Run watched_run(const QByteArrayList& words, const QByteArray& input = "/dev/null")
{
    QByteArrayList all = QByteArrayList{program} + words;
    std::vector<char*> pointers;
    for (QByteArray& word : all)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        bool is_ready = std::freopen(input.constData(), "r", stdin) != nullptr;
        for (std::FILE* const stream : {stdout, stderr})
            is_ready = is_ready && std::freopen("/dev/null", "w", stream) != nullptr;
        ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
        if (is_ready)
            execv(pointers.front(), pointers.data());
        _exit(127);
    }
    // It stops when it begins, at each signal, and when it is about to end, with all its memory.
    Run run;
    int status = 0;
    waitpid(child, &status, 0);
    ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACEEXIT | PTRACE_O_EXITKILL);
    while (WIFSTOPPED(status)) {
        if (status >> 8 == (SIGTRAP | PTRACE_EVENT_EXIT << 8))
            run.peak_kilobytes = peak_kilobytes_of(child);
        const long signal = WSTOPSIG(status) == SIGTRAP ? 0 : WSTOPSIG(status);
        ptrace(PTRACE_CONT, child, nullptr, signal);
        waitpid(child, &status, 0);
    }
    run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return run;
}

/// Runs a line of the shell to its end.
void run_in_shell(QProcess& process, const QByteArray& line)
{
    process.start(u"/bin/bash"_s, {u"-c"_s, u"-o"_s, u"pipefail"_s, QString::fromUtf8(line)});
    process.waitForFinished();
}

/// FIF names in folders of a thousand, all of one file, and their paths in the file "paths".
void make_many(const MusicPlace& place, int files)
{
    place.write("song", song("Ann", "Sea"));
    QByteArray paths;
    for (int number = 0; number < files; ++number) {
        const QByteArray folder = place.path("folder " + QByteArray::number(number / 1000));
        if (number % 1000 == 0)
            fs::create_directory(folder.toStdString());
        const QByteArray name = "/[The Paper Lanterns][Lost Tide " + QByteArray::number(number) + "].mp3";
        if (link(place.path("song").constData(), (folder + name).constData()) != 0)
            qFatal("no link");
        paths += folder + name + '\0';
    }
    place.write("paths", paths);
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
    void thousands_of_files_take_little_more_memory_data();
    void thousands_of_files_take_little_more_memory();
};

void TestCompanionProgram::exit_statuses()
{
    const MusicPlace place;
    place.write("a.mp3", song("Ann", "Sea"));
    const auto status_of = [](const QByteArray& words) {
        QProcess process;
        run_in_shell(process, program + ' ' + words);
        return process.exitCode();
    };
    QCOMPARE(status_of("check " + place.root()), 0);
    QCOMPARE(status_of("check " + place.path("none")), 1);
    QCOMPARE(status_of("check"), 2);
    QCOMPARE(status_of("--help"), 0);
}

void TestCompanionProgram::it_reads_its_standard_input()
{
    const MusicPlace place;
    place.write("a.mp3", song("Ann", "Sea"));
    QProcess process;
    process.start(QString::fromUtf8(program), {u"check"_s, u"-0"_s});
    process.write(place.path("a.mp3") + '\0');
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
    for (const char* const command : {" check ", " convert "}) {
        QProcess process;
        run_in_shell(process, program + command + place.root() + " >/dev/full");
        QCOMPARE(process.exitCode(), 1);
        QVERIFY(process.readAllStandardError().endsWith("quilmo-fif: standard output: No space left on device\n"));
    }
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

void TestCompanionProgram::thousands_of_files_take_little_more_memory_data()
{
    QTest::addColumn<QByteArrayList>("words");
    QTest::addColumn<bool>("named"); // each file by its path, on standard input
    QTest::addColumn<int>("bytes");  // for each file, at most

    const QByteArrayList change{"convert", "--type", "6", "--apply"};
    QTest::newRow("check") << QByteArrayList{"check"} << false << 0;
    QTest::newRow("a preview") << QByteArrayList{"convert", "--type", "6", "--json"} << false << 0;
    QTest::newRow("a conversion") << change << false << 0;
    QTest::newRow("check of named files") << QByteArrayList{"check"} << true << 25;
    QTest::newRow("a conversion of named files") << change << true << 60;
}

void TestCompanionProgram::thousands_of_files_take_little_more_memory()
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    QSKIP("sanitizers keep memory that the program has given back");
#endif
    QFETCH(QByteArrayList, words);
    QFETCH(bool, named);
    QFETCH(int, bytes);

    constexpr qint64 spread = 500; // kilobytes that runs differ by all the same
    const auto run_on = [&](const MusicPlace& place) {
        const bool changes = words.contains("--apply");
        const Run run = watched_run(words + (named ? QByteArrayList{"-0"} : QByteArrayList{place.root()}) +
                                        (changes ? QByteArrayList{"--journal", place.journal()} : QByteArrayList()),
                                    place.path("paths"));
        const bool is_back = !changes || watched_run({"undo", place.journal()}).status == 0;
        unlink(place.journal().constData());
        return is_back ? run : Run();
    };
    static const MusicPlace few;
    static const MusicPlace many;
    const int files = many_files();
    if (!many.exists("paths")) {
        make_many(few, 4000);
        make_many(many, files);
    }
    const Run run_of_few = run_on(few);
    const Run run_of_many = run_on(many);
    QCOMPARE(run_of_few.status, 0);
    QCOMPARE(run_of_many.status, 0);
    if (run_of_many.peak_kilobytes == 0)
        QSKIP("no process can be watched here");
    const qint64 growth = run_of_many.peak_kilobytes - run_of_few.peak_kilobytes;
    QVERIFY2(growth < spread + qint64(bytes) * files / 1000, QByteArray::number(growth).constData());
    qsizetype old_names = 0;
    for (const auto& entry : fs::recursive_directory_iterator(many.root().toStdString()))
        old_names += entry.path().filename().string().starts_with("[The Paper Lanterns][") ? 1 : 0;
    QCOMPARE(old_names, qsizetype(files));
}

QUILMO_LOGIC_TEST(TestCompanionProgram)
#include "test_companion_program.moc"
