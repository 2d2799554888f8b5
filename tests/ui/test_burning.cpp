#include "core/mod_of_grobal_var.h"
#include "core/user_settings.h"
#include "platform/controls/CommonDialog.h"
#include "platform/drives.h"
#include "platform/own_words.h"
#include "platform/paths.h"
#include "platform/start_program.h"
#include "selection/BurningProgram.h"
#include "test_main.h"

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QListView>
#include <QProcess>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <sys/stat.h>
#include <unistd.h>

#include <functional>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

/// A program that tells its parent and how many arguments it has, once it is let go on.
const QByteArray burner = "#!/bin/sh\n"
                          "here=$(dirname \"$0\")\n"
                          "while [ ! -e \"$here/go\" ]; do sleep 0.01; done\n"
                          "echo \"$PPID $#\" > \"$here/said.part\"\n"
                          "mv \"$here/said.part\" \"$here/said\"\n";

} // namespace

class TestBurning : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void first_burn_lets_choose_and_the_second_starts_at_once();
    void another_program_is_chosen_even_so_data();
    void another_program_is_chosen_even_so();
    void a_cancelled_choice_leaves_the_stored_setting();
    void a_chosen_file_that_is_not_there_is_kept_and_not_started();
    void what_cannot_be_started_is_told_data();
    void what_cannot_be_started_is_told();

    void names_of_programs_are_taken_as_they_are_data();
    void names_of_programs_are_taken_as_they_are();
    void a_program_gets_no_arguments_and_a_parent_of_its_own();
    void a_program_outlives_the_one_that_started_it();

    void the_chooser_offers_programs_and_all_files();
    void the_chooser_gives_the_program_path_or_nothing_data();
    void the_chooser_gives_the_program_path_or_nothing();

private:
    void make_program(const QString& path, const QByteArray& content = burner) const;
    void let_go() const { disk_->write(u"C:\\Bin\\go"_s, "go"); }
    bool has_said() const { return disk_->exists(u"C:\\Bin\\said"_s); }
    QByteArrayList said() const { return disk_->read(u"C:\\Bin\\said"_s).trimmed().split(' '); }
    void in_chooser(const std::function<void(QFileDialog&)>& act) const;

    std::unique_ptr<TestDisk> disk_;
    std::unique_ptr<NotedMessages> messages_;
    QList<CommonDialog> choices_; ///< what the chooser was asked for
    QString chosen_;              ///< what it answers
};

void TestBurning::init()
{
    disk_ = std::make_unique<TestDisk>();
    messages_ = std::make_unique<NotedMessages>();
    choices_.clear();
    chosen_.clear();
    set_file_chooser([this](const CommonDialog& dialog) {
        choices_.append(dialog);
        return chosen_;
    });
}

void TestBurning::cleanup()
{
    set_file_chooser({});
    messages_.reset();
    disk_.reset();
}

void TestBurning::make_program(const QString& path, const QByteArray& content) const
{
    disk_->write(path, content);
    QCOMPARE(chmod(disk_->native(path).constData(), 0755), 0);
}

void TestBurning::first_burn_lets_choose_and_the_second_starts_at_once()
{
    make_program(u"C:\\Bin\\burn.exe"_s);
    let_go();
    chosen_ = u"C:\\Bin\\burn.exe"_s;
    cmdBurn_Click();
    QCOMPARE(choices_.size(), 1);
    QCOMPARE(choices_.first().DialogTitle, u"Select Burning Program"_s);
    QCOMPARE(choices_.first().Filter, u"Select burnning program.(*.exe;*.ico)|*.exe;*.ico"_s);
    QCOMPARE(shared.burn_program_path, chosen_);
    QTRY_VERIFY(has_said());
    QVERIFY(QFile::remove(QFile::decodeName(disk_->native(u"C:\\Bin\\said"_s))));
    cmdBurn_Click();
    QTRY_VERIFY(has_said());
    QCOMPARE(choices_.size(), 1);
    QCOMPARE(messages_->take(), QStringList());
}

void TestBurning::another_program_is_chosen_even_so_data()
{
    QTest::addColumn<bool>("is_chosen");
    QTest::newRow("chosen") << true;
    QTest::newRow("cancelled") << false;
}

void TestBurning::another_program_is_chosen_even_so()
{
    QFETCH(const bool, is_chosen);
    make_program(u"C:\\Bin\\burn.exe"_s);
    let_go();
    shared.burn_program_path = u"C:\\Bin\\older.exe"_s;
    chosen_ = is_chosen ? u"C:\\Bin\\burn.exe"_s : QString();
    menu_Tool_Select_Burning_Program_Click();
    QCOMPARE(choices_.size(), 1);
    QCOMPARE(shared.burn_program_path, chosen_);
    if (is_chosen)
        QTRY_VERIFY(has_said());
    QCOMPARE(messages_->take(), QStringList());
}

void TestBurning::a_cancelled_choice_leaves_the_stored_setting()
{
    shared.burn_program_path = u"C:\\Bin\\burn.exe"_s;
    write_settings();
    menu_Tool_Select_Burning_Program_Click();
    QCOMPARE(shared.burn_program_path, QString());
    write_settings();
    read_settings();
    QCOMPARE(shared.burn_program_path, u"C:\\Bin\\burn.exe"_s);
}

void TestBurning::a_chosen_file_that_is_not_there_is_kept_and_not_started()
{
    chosen_ = u"C:\\Bin\\gone.exe"_s;
    cmdBurn_Click();
    QCOMPARE(shared.burn_program_path, chosen_);
    QCOMPARE(messages_->take(), QStringList());
    cmdBurn_Click();
    QCOMPARE(choices_.size(), 1);
    QCOMPARE(messages_->take().size(), 1);
}

void TestBurning::what_cannot_be_started_is_told_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("reason");
    QTest::newRow("a file that has gone") << u"C:\\Bin\\gone.exe"_s << u"No such file or directory"_s;
    QTest::newRow("a file without the right") << u"C:\\Bin\\picture.ico"_s << u"Permission denied"_s;
    QTest::newRow("a folder") << u"C:\\Bin"_s << u"Permission denied"_s;
    QTest::newRow("no program") << u"C:\\Bin\\text.exe"_s << u"Exec format error"_s;
    QTest::newRow("an unknown drive") << u"Q:\\burn.exe"_s << own_word(Word::reason_no_place);
}

void TestBurning::what_cannot_be_started_is_told()
{
    QFETCH(const QString, path);
    QFETCH(const QString, reason);
    disk_->write(u"C:\\Bin\\picture.ico"_s, "\0\0\1\0");
    make_program(u"C:\\Bin\\text.exe"_s, "touch \"$(dirname \"$0\")/said\"\n");
    shared.burn_program_path = path;
    cmdBurn_Click();
    QCOMPARE(messages_->take(), QStringList{own_word(Word::program_not_started).arg(path, reason)});
    QCOMPARE(shared.burn_program_path, path);
    QVERIFY(!has_said());
}

void TestBurning::names_of_programs_are_taken_as_they_are_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("blanks") << u" my burner .exe"_s;
    QTest::newRow("quotes") << u"\"it's\" burning.exe"_s;
    QTest::newRow("what a shell would run") << u"$(touch said) `touch said`; touch said & burn.exe"_s;
    QTest::newRow("Korean") << u"굽기.exe"_s;
    QTest::newRow("a percent sign and a number") << u"%1 100%.exe"_s;
}

void TestBurning::names_of_programs_are_taken_as_they_are()
{
    QFETCH(const QString, name);
    const QString path = u"C:\\Bin\\"_s + name;
    make_program(path);
    QCOMPARE(start_program(path), QString());
    QVERIFY(!has_said());
    let_go();
    QTRY_VERIFY(has_said());
    QCOMPARE(said().last(), "0");
}

void TestBurning::a_program_gets_no_arguments_and_a_parent_of_its_own()
{
    make_program(u"C:\\Bin\\burn.exe"_s);
    QCOMPARE(start_program(u"C:\\Bin\\burn.exe"_s), QString());
    let_go();
    QTRY_VERIFY(has_said());
    QVERIFY(said().first() != QByteArray::number(getpid()));
    QCOMPARE(said().last(), "0");
}

void TestBurning::a_program_outlives_the_one_that_started_it()
{
    make_program(u"C:\\Bin\\burn.exe"_s);
    QProcess starter;
    starter.start(
        QCoreApplication::applicationFilePath(),
        {u"--start"_s, program_path(disk_->native(u"C:\\Bin\\burn.exe"_s)), QFile::decodeName(disk_->native(u"C:"_s))});
    QVERIFY(starter.waitForFinished());
    QCOMPARE(starter.exitCode(), 0);
    QVERIFY(!has_said());
    let_go();
    QTRY_VERIFY(has_said());
}

/// Acts on the real dialog while it is open; it must close it.
void TestBurning::in_chooser(const std::function<void(QFileDialog&)>& act) const
{
    set_file_chooser({});
    QTimer poll;
    connect(&poll, &QTimer::timeout, this, [&] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr)
            return;
        poll.stop();
        act(*dialog);
    });
    poll.start(5);
    cmdBurn_Click();
    QVERIFY(!poll.isActive());
}

void TestBurning::the_chooser_offers_programs_and_all_files()
{
    for (const QString& name : {u"burn.exe"_s, u"burn.ico"_s, u"burn.txt"_s, u"burn"_s})
        disk_->write(u"C:\\Bin\\"_s + name, "x");
    QStringList filters;
    QStringList first;
    QStringList second;
    QString title;
    in_chooser([&](QFileDialog& dialog) {
        title = dialog.windowTitle();
        auto* const kinds = dialog.findChild<QComboBox*>(u"fileTypeCombo"_s);
        for (int index = 0; index < kinds->count(); ++index)
            filters.append(kinds->itemText(index));
        auto* const list = dialog.findChild<QListView*>(u"listView"_s);
        const auto names = [list] {
            QStringList shown;
            for (int row = 0; row < list->model()->rowCount(list->rootIndex()); ++row)
                shown.append(list->model()->index(row, 0, list->rootIndex()).data().toString());
            shown.sort();
            return shown;
        };
        dialog.setDirectory(QFile::decodeName(disk_->native(u"C:\\Bin"_s)));
        (void)QTest::qWaitFor([&] { return names().size() == 2; });
        first = names();
        kinds->setCurrentIndex(1);
        Q_EMIT kinds->textActivated(kinds->currentText());
        Q_EMIT kinds->activated(1);
        (void)QTest::qWaitFor([&] { return names().size() == 4; });
        second = names();
        dialog.reject();
    });
    QCOMPARE(title, u"Select Burning Program"_s);
    QCOMPARE(filters, (QStringList{u"Select burnning program.(*.exe;*.ico)"_s, own_word(Word::all_files)}));
    QCOMPARE(first, (QStringList{u"burn.exe"_s, u"burn.ico"_s}));
    QCOMPARE(second, (QStringList{u"burn"_s, u"burn.exe"_s, u"burn.ico"_s, u"burn.txt"_s}));
    QCOMPARE(shared.burn_program_path, QString());
}

void TestBurning::the_chooser_gives_the_program_path_or_nothing_data()
{
    QTest::addColumn<bool>("is_accepted");
    QTest::newRow("Open") << true;
    QTest::newRow("Cancel") << false;
}

void TestBurning::the_chooser_gives_the_program_path_or_nothing()
{
    QFETCH(const bool, is_accepted);
    make_program(u"C:\\Bin\\burn"_s);
    let_go();
    in_chooser([&](QFileDialog& dialog) {
        dialog.findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(QFile::decodeName(disk_->native(u"C:\\Bin\\burn"_s)));
        const auto button = is_accepted ? QDialogButtonBox::Open : QDialogButtonBox::Cancel;
        dialog.findChild<QDialogButtonBox*>()->button(button)->click();
    });
    QCOMPARE(shared.burn_program_path, is_accepted ? u"C:\\Bin\\burn"_s : QString());
    if (is_accepted)
        QTRY_VERIFY(has_said());
    QCOMPARE(messages_->take(), QStringList());
}

int main(int argc, char** argv)
{
    const TestHome home;
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.value(1) == u"--start") {
        set_drives({{.DriveLetter = u"C"_s,
                     .Type = DriveType::fixed,
                     .VolumeName = {},
                     .IsReady = true,
                     .mount_point = QFile::encodeName(arguments.value(3)),
                     .device = {}}});
        return start_program(arguments.value(2)).isEmpty() ? 0 : 1;
    }
    TestBurning test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_burning.moc"
