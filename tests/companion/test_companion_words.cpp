#include "companion_run.h"

#include "companion/Reason.h"
#include "companion/command_line.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QStandardPaths>
#include <QTest>

#include <variant>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

const QString folder = QStringLiteral(QT_TESTCASE_SOURCEDIR "/../companion/");

QString text_of(const QString& name)
{
    QFile file(folder + name);
    return file.open(QFile::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// The options that stand in a text, such as "--json" and "-0".
QSet<QString> options_in(const QString& text)
{
    static const QRegularExpression option(uR"((?<![\w-])(--[a-z][a-z-]*|-[a-z0-9](?![\w-])))"_s);
    QSet<QString> options;
    for (auto match = option.globalMatch(text); match.hasNext();)
        options.insert(match.next().captured());
    return options;
}

QSet<QString> options_of_fish()
{
    static const QRegularExpression option(uR"((?<!set )-(l|s) ([a-z0-9-]+))"_s);
    QSet<QString> options;
    for (auto match = option.globalMatch(text_of(u"completions/quilmo-fif.fish"_s)); match.hasNext();) {
        const QRegularExpressionMatch found = match.next();
        options.insert((found.captured(1) == u"l" ? u"--"_s : u"-"_s) + found.captured(2));
    }
    return options;
}

/// The manual without what changes the type.
QString plain_manual()
{
    QString text = text_of(u"man/quilmo-fif.1"_s);
    return text.replace(u"\\-"_s, u"-"_s).remove(QRegularExpression(uR"(\\f[A-Z])"_s));
}

QSet<QString> options_of_man_page()
{
    return options_in(plain_manual().section(u".SH EXAMPLES"_s, 0, 0));
}

/// The options that the help tells.
QSet<QString> told_options()
{
    return options_in(QString::fromUtf8(help_text()));
}

/// What the help says of how a command is called.
QString usage_in_help(const QString& command)
{
    const QString usage = QString::fromUtf8(help_text()).section(u"\n\n"_s, 0, 0);
    return usage.section(u"quilmo-fif "_s + command, 1).section(u"quilmo-fif"_s, 0, 0);
}

/// What the manual says of it.
QString usage_in_manual(const QString& command)
{
    const QString usage = plain_manual().section(u".SH SYNOPSIS"_s, 1).section(u".SH"_s, 0, 0);
    return usage.section(u"quilmo-fif "_s + command, 1).section(u".br"_s, 0, 0);
}

/// The entry of a command in a part of the manual.
QString entry_in(const QString& part, const QString& command)
{
    for (const QString& entry : part.section(u"\n.PP"_s, 0, -2).split(u"\n.TP\n"_s)) {
        if (entry.section(u'\n', 0, 0).split(u' ').contains(command))
            return entry;
    }
    return {};
}

/// The words of a part of the manual that stand out as names of fields do.
QSet<QString> fields_in(const QString& part)
{
    static const QRegularExpression field(uR"(\n\.IR? ([a-z0-9_]+))"_s);
    QSet<QString> fields;
    for (auto match = field.globalMatch(u'\n' + part); match.hasNext();)
        fields.insert(match.next().captured(1));
    return fields;
}

/// The fields of an object, and of the tags before and after in it.
QSet<QString> fields_of(const QJsonObject& object)
{
    QStringList fields = object.keys();
    for (const QString& tag : {u"tag_before"_s, u"tag_after"_s})
        fields += object[tag].toObject().keys();
    return {fields.begin(), fields.end()};
}

/// Whether the program knows an option of a command, whatever it says of its value.
bool takes(const QByteArray& command, const QString& option)
{
    QByteArrayList words{"quilmo-fif", command, option.toUtf8(), "1", "x"};
    std::vector<char*> pointers;
    for (QByteArray& word : words)
        pointers.push_back(word.data());
    const auto line = parse_command_line(pointers);
    const UsageError* const error = std::get_if<UsageError>(&line);
    return error == nullptr || !(error->text.contains("no option") || error->text.contains("no such option"));
}

QSet<QString> options_taken_by(const QByteArray& command)
{
    QSet<QString> options;
    for (const QString& option : told_options()) {
        if (takes(command, option))
            options.insert(option);
    }
    return options;
}

/// What bash offers behind some words.
QStringList offers_of_bash(const QStringList& words)
{
    const QString script = u"source \"$0\"; COMP_WORDS=(\"$@\"); COMP_CWORD=$(($# - 1)); _quilmo_fif 2>/dev/null;"
                           " printf '%s\\n' \"${COMPREPLY[@]}\""_s;
    QProcess process;
    process.start(u"/bin/bash"_s, QStringList{u"-c"_s, script, folder + u"completions/quilmo-fif.bash"_s} + words);
    process.waitForFinished();
    return QString::fromUtf8(process.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
}

/// What fish offers behind the beginning of a line.
QStringList offers_of_fish(const QString& line)
{
    QProcess process;
    process.start(u"fish"_s,
                  {u"--no-config"_s, u"-c"_s, u"source $argv[1]; complete -C $argv[2] | string split -f1 \\t"_s,
                   folder + u"completions/quilmo-fif.fish"_s, line});
    process.waitForFinished();
    return QString::fromUtf8(process.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
}

/// What an interactive zsh shows behind the beginning of a line up to the option --version.
QString shown_by_zsh(const QString& line)
{
    const QString script =
        u"zmodload zsh/zpty; zpty shell zsh -f -i; "
        "zpty -w shell \"fpath=(${(q)1} \\$fpath); autoload -U compinit; compinit -u; print rea''dy\"; "
        "zpty -r shell shown '*ready*'; zpty -w -n shell $2$'\\t\\t'; zpty -r shell shown '*--version*'; print -r -- $shown"_s;
    QProcess process;
    process.start(u"zsh"_s, {u"-f"_s, u"-c"_s, script, u"zsh"_s, folder + u"completions"_s, line});
    process.waitForFinished();
    return QString::fromUtf8(process.readAllStandardOutput());
}

bool is_installed(const QString& program)
{
    return !QStandardPaths::findExecutable(program).isEmpty();
}

} // namespace

/// Help, manual and completions tell the same words, and the program takes them.
class TestCompanionWords : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void help_manual_and_completions_tell_the_same_options();
    void every_option_is_taken_by_a_command();
    void a_command_is_offered_what_it_takes_data();
    void a_command_is_offered_what_it_takes();
    void bash_offers_commands_and_values();
    void fish_offers_what_a_command_takes_data() { a_command_is_offered_what_it_takes_data(); }
    void fish_offers_what_a_command_takes();
    void zsh_offers_what_a_command_takes_data();
    void zsh_offers_what_a_command_takes();
    void the_manual_tells_every_reason();
    void the_manual_tells_every_field_data();
    void the_manual_tells_every_field();
};

void TestCompanionWords::help_manual_and_completions_tell_the_same_options()
{
    const QSet<QString> told = told_options();
    QVERIFY(told.contains(u"--from-stdin"_s) && told.contains(u"-0"_s));
    QCOMPARE(options_of_man_page(), told);
    QCOMPARE(options_in(text_of(u"completions/_quilmo-fif"_s).remove(u"local -a"_s)), told);
    QCOMPARE(options_of_fish(), told);
}

void TestCompanionWords::every_option_is_taken_by_a_command()
{
    for (const QString& option : told_options()) {
        const bool is_taken = takes("check", option) || takes("convert", option) || takes("tag", option);
        QVERIFY2(is_taken, qPrintable(option));
    }
}

void TestCompanionWords::a_command_is_offered_what_it_takes_data()
{
    QTest::addColumn<QByteArray>("command");
    for (const char* const command : {"check", "convert", "tag", "info", "undo"})
        QTest::newRow(command) << QByteArray(command);
}

void TestCompanionWords::a_command_is_offered_what_it_takes()
{
    QFETCH(QByteArray, command);

    const QStringList offers = offers_of_bash({u"quilmo-fif"_s, QString::fromUtf8(command), u"-"_s});
    QVERIFY(!offers.isEmpty());
    QSet<QString> taken = options_taken_by(command);
    QCOMPARE(QSet<QString>(offers.begin(), offers.end()), taken);
    // Of two spellings the usage tells one, and what every command takes it leaves to the list of options.
    for (const QString& option : {u"--from-stdin"_s, u"--help"_s, u"-h"_s, u"--version"_s})
        taken.remove(option);
    QCOMPARE(options_in(usage_in_help(QString::fromUtf8(command))), taken);
    QCOMPARE(options_in(usage_in_manual(QString::fromUtf8(command))), taken);
    QVERIFY(text_of(u"completions/_quilmo-fif"_s).contains(QString::fromUtf8('\n' + command + ")\n")));
    QVERIFY(text_of(u"completions/quilmo-fif.fish"_s).contains(QString::fromUtf8("-a " + command + ' ')));
}

void TestCompanionWords::bash_offers_commands_and_values()
{
    const QString program = u"quilmo-fif"_s;
    const QStringList types{u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s, u"6"_s};
    QCOMPARE(offers_of_bash({program, u"ch"_s}), QStringList{u"check"_s});
    QCOMPARE(offers_of_bash({program, u"convert"_s, u"--type"_s, QString()}), types);
    QCOMPARE(offers_of_bash({program, u"convert"_s, u"--type"_s, u"="_s}), types);
    QCOMPARE(offers_of_bash({program, u"convert"_s, u"--type"_s, u"="_s, u"4"_s}), QStringList{u"4"_s});
    QCOMPARE(offers_of_bash({program, u"tag"_s, u"--artist"_s, QString()}), QStringList());
}

void TestCompanionWords::fish_offers_what_a_command_takes()
{
    QFETCH(QByteArray, command);

    if (!is_installed(u"fish"_s))
        QSKIP("no fish here");
    const QStringList offers = offers_of_fish(u"quilmo-fif "_s + QString::fromUtf8(command) + u" -"_s);
    QCOMPARE(QSet<QString>(offers.begin(), offers.end()), options_taken_by(command));
}

void TestCompanionWords::zsh_offers_what_a_command_takes_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QByteArray>("command");
    QTest::newRow("a command") << u"quilmo-fif check -"_s << "check"_ba;
    QTest::newRow("behind an option of all commands") << u"quilmo-fif check --json -"_s << "check"_ba;
    QTest::newRow("behind a path") << u"quilmo-fif info x --json -"_s << "info"_ba;
    QTest::newRow("behind an option before the command") << u"quilmo-fif --json convert --apply -"_s << "convert"_ba;
    QTest::newRow("a journal") << u"quilmo-fif undo --json -"_s << "undo"_ba;
}

void TestCompanionWords::zsh_offers_what_a_command_takes()
{
    QFETCH(QString, line);
    QFETCH(QByteArray, command);

    if (!is_installed(u"zsh"_s))
        QSKIP("no zsh here");
    const QString shown = shown_by_zsh(line);
    for (const QString& option : options_taken_by(command))
        QVERIFY2(shown.contains(option), qPrintable(option + u" is not in "_s + shown));
}

void TestCompanionWords::the_manual_tells_every_reason()
{
    const QString manual = text_of(u"man/quilmo-fif.1"_s);
    for (int code = Reason::no_tag; code <= Reason::not_done; ++code) {
        const QByteArray word = Reason{.code = static_cast<Reason::Code>(code)}.word();
        QVERIFY2(manual.contains(QString::fromUtf8(word)), word.constData());
    }
}

void TestCompanionWords::the_manual_tells_every_field_data()
{
    QTest::addColumn<QByteArrayList>("words");
    QTest::newRow("check") << QByteArrayList{"check"};
    QTest::newRow("convert") << QByteArrayList{"convert", "--type", "2", "--tags", "--apply"};
    QTest::newRow("tag") << QByteArrayList{"tag", "--artist", "New"};
    QTest::newRow("info") << QByteArrayList{"info"};
    QTest::newRow("undo") << QByteArrayList{"undo"};
}

void TestCompanionWords::the_manual_tells_every_field()
{
    QFETCH(QByteArrayList, words);

    const MusicPlace place;
    for (const char* const name : {"a.mp3", "b.mp3", "[Bob][Sky].mp3", "x\xff.mp3"})
        place.write(name, song("Ann", "Sea"));
    place.write("none.mp3", sample_audio());
    if (words.first() == "undo") {
        run_fif(applied({"convert", "--type", "2", "--tags"}, place));
        words.append(place.journal());
    } else {
        words += {place.root(), place.path("missing")};
        if (words.contains("--apply"))
            words += {"--journal", place.journal()};
    }
    QSet<QString> fields;
    for (const QJsonObject& object : run_fif(words + QByteArrayList{"--json"}).objects())
        fields.unite(fields_of(object));
    QVERIFY(fields.contains(u"path"_s));
    const QString output = plain_manual().section(u".SH OUTPUT"_s, 1).section(u".SH"_s, 0, 0);
    const QSet<QString> told =
        fields_in(entry_in(output, QString::fromUtf8(words.first()))) + fields_in(output.section(u"\n.PP"_s, -1));
    QCOMPARE(fields - told, QSet<QString>());
}

QUILMO_LOGIC_TEST(TestCompanionWords)
#include "test_companion_words.moc"
