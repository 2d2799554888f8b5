#include "companion_run.h"
#include "rights.h"

#include <QCoreApplication>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// As long as the object lives, no name in a folder may be changed, not even by an administrator.
class WithFixedNames
{
public:
    explicit WithFixedNames(QByteArray native) : native_(std::move(native)) { chmod(native_.constData(), 0555); }
    ~WithFixedNames() { chmod(native_.constData(), 0755); }
    WithFixedNames(const WithFixedNames&) = delete;
    WithFixedNames& operator=(const WithFixedNames&) = delete;

private:
    QByteArray native_;
    BoundByRights bound_;
};

/// Gives a file to somebody else; false when only an administrator may.
bool give_away(const QByteArray& native)
{
    constexpr uid_t somebody = 12'345;
    return chown(native.constData(), somebody, static_cast<gid_t>(-1)) == 0;
}

} // namespace

/// A preview foresees what rights refuse.
class TestCompanionRights : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void a_folder_whose_names_are_fixed_data();
    void a_folder_whose_names_are_fixed();
    void a_file_of_somebody_else_data();
    void a_file_of_somebody_else();
    void each_folder_has_rights_of_its_own();
    void a_file_of_ones_own_can_be_made_writable();
    void a_folder_that_cannot_be_entered_holds_no_other_file();
};

void TestCompanionRights::a_folder_whose_names_are_fixed_data()
{
    QTest::addColumn<QByteArrayList>("words");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArrayList>("lines");

    const QByteArray kept = "keep     [Bob][Sky].mp3";
    const QByteArray refused = "cannot   a.mp3 -> [Ann][Sea][Rock].mp3: cannot be renamed: Permission denied";
    QTest::newRow("names") << QByteArrayList{"convert"} << 1 << QByteArrayList{kept, refused};
    QTest::newRow("names and tags") << QByteArrayList{"convert", "--tags"} << 1
                                    << QByteArrayList{R"(tag      [Bob][Sky].mp3: artist "Old" -> "Bob")", refused};
    QTest::newRow("tags alone") << QByteArrayList{"tag", "--year", "2001"} << 0
                                << QByteArrayList{R"(tag      [Bob][Sky].mp3: year "1999" -> "2001")",
                                                  R"(tag      a.mp3: year "1999" -> "2001")"};
}

void TestCompanionRights::a_folder_whose_names_are_fixed()
{
    QFETCH(QByteArrayList, words);
    QFETCH(int, status);
    QFETCH(QByteArrayList, lines);

    const MusicPlace place;
    place.write("a.mp3", song("Ann", "Sea"));
    place.write("[Bob][Sky].mp3", song("Old", "Sky"));
    const WithFixedNames fixed(place.root());
    const Told preview = run_fif(words + QByteArrayList{place.root()});
    QCOMPARE(QByteArray(preview.out).replace(place.root() + '/', ""), lines.join('\n') + '\n');
    QCOMPARE(preview.status, status);
    QCOMPARE(run_fif(applied(words, place)).status, status);
}

void TestCompanionRights::a_file_of_somebody_else_data()
{
    QTest::addColumn<QByteArrayList>("words");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArrayList>("lines");

    QTest::newRow("names") << QByteArrayList{"convert", "--type", "6"} << 0
                           << QByteArrayList{"rename   [Bob][Sky].mp3 -> Bob-Sky.mp3", "rename   a.mp3 -> Ann-Sea.mp3"};
    QTest::newRow("names and tags") << QByteArrayList{"convert", "--type", "6", "--tags"} << 1
                                    << QByteArrayList{"rename   [Bob][Sky].mp3 -> Bob-Sky.mp3; tag: the same fields, "
                                                      "filled with blanks",
                                                      "rename   a.mp3 -> Ann-Sea.mp3; no tag: cannot be written: "
                                                      "Permission denied"};
    QTest::newRow("tags") << QByteArrayList{"tag", "--year", "2001"} << 1
                          << QByteArrayList{R"(tag      [Bob][Sky].mp3: year "1999" -> "2001")",
                                            "cannot   a.mp3: cannot be written: Permission denied"};
    QTest::newRow("a tag as it is") << QByteArrayList{"tag", "--year", "1999"} << 0
                                    << QByteArrayList{"keep     [Bob][Sky].mp3", "keep     a.mp3"};
}

void TestCompanionRights::a_file_of_somebody_else()
{
    QFETCH(QByteArrayList, words);
    QFETCH(int, status);
    QFETCH(QByteArrayList, lines);

    const MusicPlace place;
    place.write("a.mp3", song("Ann", "Sea"));
    place.write("[Bob][Sky].mp3", song("Bob", "Sky"));
    if (!give_away(place.path("a.mp3")))
        QSKIP("only an administrator can give files away");
    const BoundByRights bound;
    const Told preview = run_fif(words + QByteArrayList{place.root()});
    QCOMPARE(QByteArray(preview.out).replace(place.root() + '/', ""), lines.join('\n') + '\n');
    QCOMPARE(preview.status, status);
    QCOMPARE(run_fif(applied(words, place)).status, status);
}

void TestCompanionRights::each_folder_has_rights_of_its_own()
{
    const MusicPlace place;
    for (const char* const name : {"a/a.mp3", "a/b.mp3", "fixed/a.mp3", "fixed/b.mp3", "z/a.mp3"})
        place.write(name, song("Ann", name));
    const WithFixedNames fixed(place.path("fixed"));
    QByteArrayList words;
    for (const QByteArray& line : run_fif({"convert", place.root()}).lines())
        words.append(line.first(line.indexOf(' ')));
    QCOMPARE(words, (QByteArrayList{"rename", "rename", "cannot", "cannot", "rename"}));
}

void TestCompanionRights::a_file_of_ones_own_can_be_made_writable()
{
    const MusicPlace place;
    place.write("a.mp3", song("Ann", "Sea"));
    QVERIFY(chmod(place.path("a.mp3").constData(), 0444) == 0);
    const BoundByRights bound;
    QCOMPARE(run_fif({"tag", "--year", "2001", place.root()}).status, 0);
    QCOMPARE(run_fif(applied({"tag", "--year", "2001"}, place)).status, 0);
}

void TestCompanionRights::a_folder_that_cannot_be_entered_holds_no_other_file()
{
    const MusicPlace place;
    place.write("listed/[Ann][Sea].mp3", song("Ann", "Sea"));
    const WithoutRights closed(place.path("listed"));
    QVERIFY(chmod(place.path("listed").constData(), 0444) == 0);
    const Told told = run_fif({"convert", "--type", "6", place.root()});
    QCOMPARE(told.status, 1);
    QVERIFY2(told.out.endsWith(" -> Ann-Sea.mp3: cannot be renamed: Permission denied\n"), told.out.constData());
}

QUILMO_LOGIC_TEST(TestCompanionRights)
#include "test_companion_rights.moc"
