#include "companion_run.h"

#include "companion/Reason.h"
#include "companion/command_line.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
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

QSet<QString> options_of_man_page()
{
    QString text = text_of(u"man/quilmo-fif.1"_s).section(u".SH EXAMPLES"_s, 0, 0);
    text.replace(u"\\-"_s, u"-"_s).remove(QRegularExpression(uR"(\\f[A-Z])"_s));
    return options_in(text);
}

/// The options that the help tells.
QSet<QString> told_options()
{
    return options_in(QString::fromUtf8(help_text()));
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
    void the_manual_tells_every_reason();
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
    QSet<QString> taken;
    for (const QString& option : told_options()) {
        if (takes(command, option))
            taken.insert(option);
    }
    QCOMPARE(QSet<QString>(offers.begin(), offers.end()), taken);
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

void TestCompanionWords::the_manual_tells_every_reason()
{
    const QString manual = text_of(u"man/quilmo-fif.1"_s);
    for (int code = Reason::no_tag; code <= Reason::not_done; ++code) {
        const QByteArray word = Reason{.code = static_cast<Reason::Code>(code)}.word();
        QVERIFY2(manual.contains(QString::fromUtf8(word)), word.constData());
    }
}

QUILMO_LOGIC_TEST(TestCompanionWords)
#include "test_companion_words.moc"
