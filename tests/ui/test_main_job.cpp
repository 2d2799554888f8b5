#include "Driver.h"
#include "core/mod_of_grobal_var.h"
#include "frame/QuilmoMain.h"
#include "platform/controls/StatusBar.h"
#include "sample_files.h"
#include "test_main.h"

#include <QApplication>
#include <QLineEdit>
#include <QRadioButton>
#include <QTest>

#include <map>

using namespace Qt::StringLiterals;

namespace {

constexpr int files = 300;
constexpr int folders = 6;

/// A file as it stands before and must stand after the main job.
struct Case
{
    QString folder; ///< with trailing backslash
    QString old_name;
    QByteArray old_content;
    QString new_name;
    QByteArray new_content;
    bool picked = true; ///< ticked in the main window
    bool ticked_in_dialog = true;
};

/// The folders' names, one of them not valid UTF-8 on disk.
const QStringList& folder_names()
{
    static const QStringList names = {u"Pop"_s,      u"한국 음악"_s, u"Café"_s,
                                      u"Old disc"_s, u"[Live]"_s,    u"bad"_s + QChar(0xDCFF) + u"name"_s};
    return names;
}

SampleTag blank_padded(const QByteArray& artist, const QByteArray& title, unsigned char genre)
{
    return {.title = title.leftJustified(30, ' '),
            .artist = artist.leftJustified(30, ' '),
            .album = QByteArray(30, ' '),
            .year = QByteArray(4, ' '),
            .comment = QByteArray(30, ' '),
            .genre = genre};
}

/// A tagged file that gets its name from its tag; the content stays.
Case from_tag(const QString& old_name, const SampleTag& tag, const QString& new_name)
{
    const QByteArray content = sample_audio({.frames = 3}) + sample_tag(tag);
    return {.folder = {}, .old_name = old_name, .old_content = content, .new_name = new_name, .new_content = content};
}

/// The file of a number, in one of ten kinds; every artist and title is another.
Case make_case(int number)
{
    const QString text = QString::number(number);
    const QByteArray bytes = QByteArray::number(number);
    const QByteArray audio = sample_audio({.frames = 3});
    switch (number / folders % 10) {
    case 0:
        return from_tag(u"track %1.mp3"_s.arg(number), {.title = "Sea " + bytes, .artist = "Ann", .genre = 17},
                        u"[Ann][Sea %1][Rock].mp3"_s.arg(number));
    case 1:
        return from_tag(u"노래 %1.MP3"_s.arg(number),
                        {.title = korean_bytes(u"바다 "_s + text), .artist = korean_bytes(u"가수"_s), .genre = 7},
                        u"[가수][바다 %1][Hip_Hop].mp3"_s.arg(number));
    case 2:
        return from_tag(u"été %1.mp3"_s.arg(number),
                        {.title = western_bytes(u"Café "_s + text), .artist = western_bytes(u"Müller"_s), .genre = 255},
                        u"[Müller][Café %1].mp3"_s.arg(number));
    case 3: { // a name that is not valid UTF-8, a tag with blanks and characters that no name holds
        const SampleTag tag = {.title = "  What? " + bytes, .artist = "A/B [C]", .genre = 81};
        return from_tag(u"bad"_s + QChar(0xDC80) + text + u".mp3"_s, tag,
                        u"[AB C][What %1][Folk_Rock].mp3"_s.arg(number));
    }
    case 4: { // the title is cut to 17 bytes: 52 less 30 and 4 is the room
        const QByteArray title = (bytes + " long title that goes on and on").left(30);
        return from_tag(u"%1 cut.mp3"_s.arg(number), {.title = title, .artist = QByteArray(30, 'L'), .genre = 17},
                        u"[%1][%2..][Rock].mp3"_s.arg(QString(30, u'L'), QString::fromLatin1(title.left(17))));
    }
    case 5: { // a FIF name: the tag follows the name and keeps its other fields
        const QString name = u"[New][Song %1][Jazz].mp3"_s.arg(number);
        SampleTag tag = {
            .title = "Old", .artist = "Old", .album = "Album\xff", .year = "1999", .comment = "c", .genre = 3};
        const QByteArray before = audio + sample_tag(tag);
        tag.title = ("Song " + bytes).leftJustified(30, ' ');
        tag.artist = QByteArray("New").leftJustified(30, ' ');
        tag.genre = 8;
        return {.folder = {},
                .old_name = name,
                .old_content = before,
                .new_name = name,
                .new_content = audio + sample_tag(tag)};
    }
    case 6: { // a FIF name without a tag: the last 128 bytes become one
        const QString name = u"Duo-Song %1.mp3"_s.arg(number);
        return {.folder = {},
                .old_name = name,
                .old_content = audio,
                .new_name = name,
                .new_content = audio.chopped(128) + sample_tag(blank_padded("Duo", "Song " + bytes, 12))};
    }
    case 7: { // neither name nor tag
        const QString name = u"noise %1.mp3"_s.arg(number);
        return {.folder = {}, .old_name = name, .old_content = audio, .new_name = name, .new_content = audio};
    }
    case 8: { // not picked
        Case left_alone = from_tag(u"stays %1.mp3"_s.arg(number), {.title = "Sky " + bytes, .artist = "Bob"}, {});
        left_alone.new_name = left_alone.old_name;
        left_alone.picked = false;
        return left_alone;
    }
    default: { // picked, but its tick is taken off in the dialog
        Case unticked = from_tag(u"waits %1.mp3"_s.arg(number), {.title = "Sun " + bytes, .artist = "Cid"}, {});
        unticked.new_name = unticked.old_name;
        unticked.ticked_in_dialog = false;
        return unticked;
    }
    }
}

} // namespace

class TestMainJob : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void three_hundred_files_in_six_folders();

private:
    void write_files();
    void pick(const Driver& driver);
    void pick_in_folder(const Driver& driver, const QString& folder, bool one_by_one);
    void convert(QDialog& dialog);
    void choose_shape_and_genre_entry(const Driver& driver);
    void save_one(const Driver& driver);
    void auto_convert(const Driver& driver);
    void edit_one(const Driver& driver);
    Case& first_case(const QString& old_name_start);
    void compare_disk();
    int count(bool Case::*flag) const { return static_cast<int>(std::ranges::count_if(cases_, flag)); }

    TestDisk disk_;
    NotedMessages messages_;
    std::vector<Case> cases_;
};

void TestMainJob::write_files()
{
    for (int number = 0; number < files; ++number) {
        Case each = make_case(number);
        each.folder = disk_.make_folder(u"C:\\Music\\"_s + folder_names()[number % folders]);
        disk_.write(each.folder + each.old_name, each.old_content);
        cases_.push_back(each);
    }
}

void TestMainJob::pick_in_folder(const Driver& driver, const QString& folder, bool one_by_one)
{
    auto& list = driver.control<ListView>(u"lvListView"_s);
    driver.click_node(folder.chopped(1));
    QCOMPARE(list.Count(), files / folders);
    if (!one_by_one)
        driver.click(u"cmd_select_all"_s);
    for (const Case& each : cases_) {
        if (each.folder == folder && each.picked == one_by_one)
            driver.click_check_box(list, Driver::row_of(list, each.old_name));
    }
}

void TestMainJob::pick(const Driver& driver)
{
    driver.open_node(u"C:"_s);
    driver.open_node(u"C:\\Music"_s);
    for (int folder = 0; folder < folders; ++folder)
        pick_in_folder(driver, u"C:\\Music\\"_s + folder_names()[folder] + u'\\', folder % 2 == 0);
    QCOMPARE(shared.final_list_count, count(&Case::picked));
}

void TestMainJob::convert(QDialog& dialog)
{
    const Driver driver(dialog);
    auto& changeable = driver.control<ListView>(u"Possible_ListView"_s);
    for (const Case& each : cases_) {
        if (!each.ticked_in_dialog)
            driver.click_check_box(changeable, Driver::row_of(changeable, each.old_name));
    }
    driver.click(u"Change_FIF"_s);
    QCOMPARE(changeable.Count(), files - count(&Case::ticked_in_dialog));
    QTest::keyClick(&dialog, Qt::Key_Escape);
}

/// The first file of the folder shown whose old name begins so.
Case& TestMainJob::first_case(const QString& old_name_start)
{
    return *std::ranges::find_if(cases_, [&](const Case& each) {
        return each.folder == shared.current_folder && each.old_name.startsWith(old_name_start);
    });
}

void TestMainJob::choose_shape_and_genre_entry(const Driver& driver)
{
    const auto take_option = [](const QString& option) {
        Driver::in_next_dialog([option](QDialog& dialog) {
            const Driver in_dialog(dialog);
            QTest::mouseClick(&in_dialog.control<QRadioButton>(option), Qt::LeftButton);
            in_dialog.click(u"cmd_ok"_s);
        });
    };
    take_option(u"Option_5"_s);
    driver.choose(u"menu_Tool"_s, u"menu_Tool_Select_FIF_Format"_s);
    take_option(u"Option_edit"_s);
    driver.choose(u"menu_Tool"_s, u"menu_Tool_Set_Genre_Type"_s);
    QCOMPARE(shared.fif_type, i16(5));
    QCOMPARE(shared.genre_type, i16(2));
}

void TestMainJob::save_one(const Driver& driver)
{
    Case& each = first_case(u"stays"_s);
    auto& list = driver.control<ListView>(u"lvListView"_s);
    driver.click_row(list, Driver::row_of(list, each.old_name));
    driver.type(u"txtArtist"_s, u"Solo"_s);
    driver.type(u"txtTitle"_s, u"One: [more]"_s);
    driver.type(u"txtGenre"_s, u"Rock"_s);
    driver.click(u"cmdSave"_s);
    each.new_name = u"Solo-One more-Rock.mp3"_s;
    each.new_content =
        each.old_content.chopped(128) + sample_tag({.title = QByteArray("One more").leftJustified(30, ' '),
                                                    .artist = QByteArray("Solo").leftJustified(30, ' '),
                                                    .genre = 17});
    QCOMPARE(driver.control<QLineEdit>(u"txtFilename"_s).text(), each.new_name);
}

void TestMainJob::auto_convert(const Driver& driver)
{
    auto& list = driver.control<ListView>(u"lvListView"_s);
    Qt::KeyboardModifiers keys;
    for (Case& each : cases_) {
        if (each.folder != shared.current_folder || !each.new_name.startsWith(u"[New]"_s))
            continue;
        driver.click_row(list, Driver::row_of(list, each.new_name), keys);
        keys = Qt::ControlModifier;
        each.new_name.replace(u"]["_s, u"-"_s).remove(u'[').remove(u']');
    }
    Driver::in_next_dialog([](QDialog& dialog) {
        const Driver in_dialog(dialog);
        QCOMPARE(in_dialog.control<ListView>(u"Selected_ListView"_s).Count(), files / folders / 10);
        in_dialog.click(u"freeview"_s);
        in_dialog.click(u"autoconvert"_s);
        in_dialog.click(u"Cancel"_s);
    });
    driver.right_click_row(list, list.SelectedItem());
    driver.choose_from_popup(u"mnu_ListView"_s, u"mnu_ListView_auto"_s);
}

void TestMainJob::edit_one(const Driver& driver)
{
    Case& each = first_case(u"noise"_s);
    Driver::in_next_dialog([&](QDialog& dialog) {
        const Driver in_dialog(dialog);
        auto& list = in_dialog.control<ListView>(u"Impossible_ListView"_s);
        Driver::in_next_dialog([](QDialog& edit) {
            const Driver in_edit(edit);
            in_edit.type(u"txtArtist"_s, u"Hand"_s);
            in_edit.type(u"txtTitle"_s, u"Made"_s);
            in_edit.click(u"cmdSave"_s);
        });
        in_dialog.double_click_row(list, Driver::row_of(list, each.old_name));
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    driver.click(u"Change_all"_s);
    each.new_name = u"Hand-Made.mp3"_s;
    each.new_content = each.old_content.chopped(128) + sample_tag(blank_padded("Hand", "Made", 12));
}

void TestMainJob::compare_disk()
{
    std::map<QString, std::map<QString, QByteArray>> expected;
    for (const Case& each : cases_)
        expected[each.folder][each.new_name] = each.new_content;
    for (const auto& [folder, contents] : expected) {
        std::map<QString, QByteArray> found;
        for (const File& file : shared.fso.GetFolder(folder).Files())
            found[file.Name] = disk_.read(folder + file.Name);
        for (const auto& [name, content] : contents) {
            QVERIFY2(found.contains(name), qPrintable(u"missing: "_s + folder + name));
            QVERIFY2(found[name] == content, qPrintable(u"other bytes: "_s + folder + name));
        }
        QCOMPARE(found.size(), contents.size());
    }
}

void TestMainJob::three_hundred_files_in_six_folders()
{
    write_files();
    QuilmoMain form;
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    const Driver driver(form);
    pick(driver);
    if (QTest::currentTestFailed())
        return;

    bool visited = false;
    Driver::in_next_dialog([&](QDialog& dialog) {
        visited = true;
        convert(dialog);
    });
    driver.click(u"Change_all"_s);
    QVERIFY(visited);
    QCOMPARE(messages_.take(), QStringList());
    compare_disk();

    for (const auto step : {&TestMainJob::choose_shape_and_genre_entry, &TestMainJob::save_one,
                            &TestMainJob::auto_convert, &TestMainJob::edit_one}) {
        (this->*step)(driver);
        if (QTest::currentTestFailed())
            return;
    }
    QCOMPARE(messages_.take(), QStringList());
    compare_disk();

    // The main window shows the last folder with its new names, and its ticks are those of the final list.
    auto& list = driver.control<ListView>(u"lvListView"_s);
    QCOMPARE(list.Count(), files / folders);
    for (const Case& each : cases_) {
        if (each.folder == shared.current_folder)
            QCOMPARE(list.Item(Driver::row_of(list, each.new_name)).Checked, each.picked);
    }
    QCOMPARE(driver.control<StatusBar>(u"StatusBar1"_s).panel_text(3), u"%1 files/0MB"_s.arg(count(&Case::picked)));
    form.close();
}

QUILMO_UI_TEST(TestMainJob)
#include "test_main_job.moc"
