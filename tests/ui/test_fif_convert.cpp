#include "convert/FIF_convert.h"
#include "core/mod_of_grobal_var.h"
#include "platform/controls/ListView.h"
#include "player/Transport.h"
#include "sample_files.h"
#include "selection/final_list.h"
#include "test_main.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QFile>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

class SilentPlayer : public Transport
{
public:
    void release() override {}
    void mp3_play(const QString& /*name*/) override {}
    void mp3_stop() override {}
    void PlayBtn_Click() override {}
    void StopBtn_Click() override {}
};

QByteArray tagged(const QByteArray& artist, const QByteArray& title, unsigned char genre = 17)
{
    return sample_audio({.frames = 2}) + sample_tag({.title = title, .artist = artist, .genre = genre});
}

QStringList names_in(const ListView& list)
{
    QStringList names;
    for (int row = 1; row <= list.Count(); ++row)
        names.append(list.Item(row).Text);
    return names;
}

} // namespace

class TestFifConvert : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void each_kind_lands_in_its_list();
    void labels_round_their_megabytes();
    void a_vanished_file_is_dropped();
    void a_tick_taken_off_keeps_the_file();
    void the_button_converts_everything();
    void a_second_press_renames_what_was_unticked();
    void a_too_long_artist_is_told_at_each_rebuild();
    void a_double_click_asks_for_the_edit_data();
    void a_double_click_asks_for_the_edit();
    void enter_on_a_row_asks_for_the_edit();
    void columns_sort_by_their_toggles_data();
    void columns_sort_by_their_toggles();
    void loading_clears_all_toggles_but_one();
    void the_pointer_lights_one_button();
    void buttons_act_by_key();
    void keys_reach_everything();
    void a_thousand_records_fit();

private:
    void list(const QString& name, const QByteArray& content);
    void open();
    ListView& group(const char* name) const { return *dialog_->findChild<ListView*>(QLatin1StringView(name)); }
    QString label(const char* name) const { return dialog_->findChild<QLabel*>(QLatin1StringView(name))->text(); }
    UsrButton& button(const char* name) const { return *dialog_->findChild<UsrButton*>(QLatin1StringView(name)); }

    std::unique_ptr<TestDisk> disk_;
    std::unique_ptr<NotedMessages> messages_;
    SilentPlayer player_;
    std::unique_ptr<FIF_convert> dialog_;
    QString folder_;
    int refreshes_ = 0;
};

void TestFifConvert::init()
{
    disk_ = std::make_unique<TestDisk>();
    messages_ = std::make_unique<NotedMessages>();
    folder_ = disk_->make_folder(u"C:\\Music"_s);
    shared.current_folder = folder_;
    refreshes_ = 0;
}

void TestFifConvert::cleanup()
{
    dialog_.reset();
    messages_.reset();
    disk_.reset();
}

void TestFifConvert::list(const QString& name, const QByteArray& content)
{
    disk_->write(folder_ + name, content);
    QCOMPARE(add_to_final_list(name, folder_, folder_ + name, static_cast<i32>(content.size()), {}, {}), added);
}

void TestFifConvert::open()
{
    dialog_ = std::make_unique<FIF_convert>(
        player_, FIF_convert::Surroundings{.refresh_all = [this] { ++refreshes_; }, .small_icons = {}}, nullptr);
    dialog_->show();
    QVERIFY(QTest::qWaitForWindowExposed(dialog_.get()));
}

void TestFifConvert::each_kind_lands_in_its_list()
{
    list(u"[A][B].mp3"_s, tagged("A", "B"));
    list(u"tagged.mp3"_s, tagged("Ann", "Sea"));
    list(u"bare.mp3"_s, sample_audio({.frames = 5}));
    open();
    QCOMPARE(names_in(group("FIF_ListView")), QStringList{u"[A][B].mp3"_s});
    QCOMPARE(names_in(group("Possible_ListView")), QStringList{u"tagged.mp3"_s});
    QCOMPARE(names_in(group("Impossible_ListView")), QStringList{u"bare.mp3"_s});
    for (const char* name : {"Label_FIF", "Label_Changeable", "Label_UnChangeable"})
        QCOMPARE(label(name), u"[1 File/0MB]"_s);

    const ListRow& fif = group("FIF_ListView").Item(1);
    QCOMPARE(fif.SmallIcon, 1);
    QCOMPARE(fif.column(1), folder_);
    QCOMPARE(fif.column(2), u"1KB"_s);
    const ListRow& changeable = group("Possible_ListView").Item(1);
    QVERIFY(changeable.Checked);
    QCOMPARE(changeable.SmallIcon, 2);
    QCOMPARE(changeable.column(1), u"[Ann][Sea][Rock].mp3"_s);
    QCOMPARE(changeable.column(2), folder_);
    QCOMPARE(changeable.column(3), u"1KB"_s);
    const ListRow& unchangeable = group("Impossible_ListView").Item(1);
    QCOMPARE(unchangeable.SmallIcon, 2);
    QCOMPARE(unchangeable.column(1), folder_);
    QCOMPARE(unchangeable.column(2), u"2KB"_s);
    QCOMPARE(dialog_->findChild<StatusBar*>(u"StatusBar1"_s)->panel_text(2), u"3 files/0MB"_s);
    QVERIFY(messages_->take().isEmpty());
}

void TestFifConvert::labels_round_their_megabytes()
{
    disk_->write(folder_ + u"[A][B].mp3"_s, "x");
    disk_->write(folder_ + u"[A][C].mp3"_s, "x");
    QCOMPARE(add_to_final_list(u"[A][B].mp3"_s, folder_, folder_ + u"[A][B].mp3"_s, 1572864, {}, {}), added);
    QCOMPARE(add_to_final_list(u"[A][C].mp3"_s, folder_, folder_ + u"[A][C].mp3"_s, 1048576, {}, {}), added);
    open();
    QCOMPARE(label("Label_FIF"), u"[2 File/2MB]"_s); // 2.5 goes to the even neighbour
    QCOMPARE(label("Label_Changeable"), u"[0 File/0MB]"_s);
}

void TestFifConvert::a_vanished_file_is_dropped()
{
    list(u"[A][B].mp3"_s, tagged("A", "B"));
    list(u"[A][C].mp3"_s, tagged("A", "C"));
    open();
    QVERIFY(QFile::remove(QFile::decodeName(disk_->native(folder_ + u"[A][B].mp3"_s))));
    dialog_->Fill_list();
    QCOMPARE(names_in(group("FIF_ListView")), QStringList{u"[A][C].mp3"_s});
    QCOMPARE(shared.final_list_count, 1);
    QCOMPARE(shared.final_list_bytes, static_cast<i32>(tagged("A", "C").size()));
    QCOMPARE(dialog_->findChild<StatusBar*>(u"StatusBar1"_s)->panel_text(2), u"1 files/0MB"_s);
}

void TestFifConvert::a_tick_taken_off_keeps_the_file()
{
    list(u"a.mp3"_s, tagged("Ann", "Sea"));
    list(u"b.mp3"_s, tagged("Bob", "Sky"));
    open();
    ListView& changeable = group("Possible_ListView");
    QTest::mouseClick(changeable.view()->viewport(), Qt::LeftButton, {},
                      changeable.view()->viewport()->mapFrom(&changeable, changeable.check_rect(1).center()));
    QVERIFY(!changeable.Item(1).Checked);
    QCOMPARE(shared.final_list[0].convert, i16(0));
    QTest::mouseClick(&button("Change_FIF"), Qt::LeftButton);
    QVERIFY(disk_->exists(folder_ + u"a.mp3"_s));
    QVERIFY(disk_->exists(folder_ + u"[Bob][Sky][Rock].mp3"_s));
}

void TestFifConvert::the_button_converts_everything()
{
    list(u"a.mp3"_s, tagged("Ann", "Sea"));
    list(u"[New][Song].mp3"_s, tagged("Old", "Old"));
    open();
    QTest::mouseClick(&button("Change_FIF"), Qt::LeftButton);
    QVERIFY(disk_->exists(folder_ + u"[Ann][Sea][Rock].mp3"_s));
    QVERIFY(!disk_->exists(folder_ + u"a.mp3"_s));
    QCOMPARE(disk_->read(folder_ + u"[New][Song].mp3"_s).right(128).mid(33, 30), "New"_ba.leftJustified(30, ' '));
    QCOMPARE(names_in(group("FIF_ListView")), (QStringList{u"[Ann][Sea][Rock].mp3"_s, u"[New][Song].mp3"_s}));
    QCOMPARE(group("Possible_ListView").Count(), 0);
    QCOMPARE(refreshes_, 1);
    QVERIFY(dialog_->isVisible());
}

void TestFifConvert::a_second_press_renames_what_was_unticked()
{
    list(u"a.mp3"_s, tagged("Ann", "Sea"));
    open();
    set_convert_mark(u"a.mp3"_s, 0);
    QTest::mouseClick(&button("Change_FIF"), Qt::LeftButton);
    QVERIFY(disk_->exists(folder_ + u"a.mp3"_s));
    QVERIFY(group("Possible_ListView").Item(1).Checked);
    QTest::mouseClick(&button("Change_FIF"), Qt::LeftButton);
    QVERIFY(disk_->exists(folder_ + u"[Ann][Sea][Rock].mp3"_s));
}

void TestFifConvert::a_too_long_artist_is_told_at_each_rebuild()
{
    const QString message = u"Unable to Convert! Artist's name is too long"_s;
    list(u"a.mp3"_s, tagged(QByteArray(30, 'A'), "T23456789", 140));
    open();
    QCOMPARE(messages_->take(), QStringList{message});
    QCOMPARE(group("Possible_ListView").Item(1).column(1), QString());
    dialog_->Fill_list();
    QCOMPARE(messages_->take(), QStringList{message});
    QTest::mouseClick(&button("Change_FIF"), Qt::LeftButton);
    QCOMPARE(messages_->take(), (QStringList{message, message})); // at the rename and at the rebuild
    QVERIFY(disk_->exists(folder_ + u"a.mp3"_s));
    QCOMPARE(shared.final_list[0].name, u"a.mp3"_s);
}

void TestFifConvert::a_double_click_asks_for_the_edit_data()
{
    QTest::addColumn<QByteArray>("list_name");
    QTest::addColumn<bool>("on_row");

    for (const char* name : {"FIF_ListView", "Possible_ListView", "Impossible_ListView"}) {
        QTest::addRow("a row of %s", name) << QByteArray(name) << true;
        QTest::addRow("the empty part of %s", name) << QByteArray(name) << false;
    }
}

void TestFifConvert::a_double_click_asks_for_the_edit()
{
    QFETCH(QByteArray, list_name);
    QFETCH(bool, on_row);

    list(u"[A][B].mp3"_s, tagged("A", "B"));
    list(u"tagged.mp3"_s, tagged("Ann", "Sea"));
    list(u"bare.mp3"_s, sample_audio());
    open();
    QSignalSpy edits(dialog_.get(), &FIF_convert::edit_wanted);
    ListView& rows = group(list_name);
    QWidget* viewport = rows.view()->viewport();
    const QPoint row = viewport->mapFrom(&rows, rows.row_rect(1).center());
    const QPoint nothing(row.x(), viewport->height() - 5);
    QTest::mouseClick(viewport, Qt::LeftButton, {}, on_row ? row : nothing);
    QTest::mouseDClick(viewport, Qt::LeftButton, {}, on_row ? row : nothing);
    QTest::mouseRelease(viewport, Qt::LeftButton, {}, on_row ? row : nothing);
    QCOMPARE(edits.count(), on_row ? 1 : 0);
    QCOMPARE(shared.edit_file_name, on_row ? rows.Item(1).Text : QString());
    QCOMPARE(shared.list_drag_active, i16(on_row ? 1 : 0));
}

void TestFifConvert::enter_on_a_row_asks_for_the_edit()
{
    list(u"a.mp3"_s, tagged("Ann", "Sea"));
    list(u"b.mp3"_s, tagged("Bob", "Sky"));
    open();
    QSignalSpy edits(dialog_.get(), &FIF_convert::edit_wanted);
    QAbstractItemView* rows = group("Possible_ListView").view();
    rows->setFocus();
    QTest::keyClick(rows, Qt::Key_Down);
    QTest::keyClick(rows, Qt::Key_Return);
    QCOMPARE(edits.count(), 1);
    QCOMPARE(shared.edit_file_name, u"b.mp3"_s);
    QVERIFY(dialog_->isVisible());

    QAbstractItemView* nothing = group("FIF_ListView").view();
    nothing->setFocus();
    QTest::keyClick(nothing, Qt::Key_Return);
    QCOMPARE(edits.count(), 1);
    QVERIFY(dialog_->isVisible());
}

void TestFifConvert::columns_sort_by_their_toggles_data()
{
    QTest::addColumn<QByteArray>("list_name");
    QTest::addColumn<int>("column");
    QTest::addColumn<bool>("sorts");

    QTest::newRow("FIF list by name") << "FIF_ListView"_ba << 0 << true;
    QTest::newRow("FIF list not by folder") << "FIF_ListView"_ba << 1 << false;
    QTest::newRow("FIF list by size") << "FIF_ListView"_ba << 2 << true;
    QTest::newRow("changeable list by name") << "Possible_ListView"_ba << 0 << true;
    QTest::newRow("changeable list by new name") << "Possible_ListView"_ba << 1 << true;
    QTest::newRow("changeable list by folder") << "Possible_ListView"_ba << 2 << true;
    QTest::newRow("changeable list not by size") << "Possible_ListView"_ba << 3 << false;
    QTest::newRow("unchangeable list by name") << "Impossible_ListView"_ba << 0 << true;
    QTest::newRow("unchangeable list not by folder") << "Impossible_ListView"_ba << 1 << false;
    QTest::newRow("unchangeable list by size") << "Impossible_ListView"_ba << 2 << true;
}

void TestFifConvert::columns_sort_by_their_toggles()
{
    QFETCH(QByteArray, list_name);
    QFETCH(int, column);
    QFETCH(bool, sorts);

    // Three files of each kind whose order by name, new name, folder and size is the same, listed in the order 2, 3, 1.
    for (const int place : {2, 3, 1}) {
        const QString number = QString::number(place);
        folder_ = disk_->make_folder(u"C:\\"_s + number);
        shared.current_folder = folder_;
        const QByteArray audio = sample_audio({.frames = 5 * place});
        list(u"[A][B"_s + number + u"].mp3"_s, audio + sample_tag({.title = "x", .artist = "y"}));
        list(u"t"_s + number + u".mp3"_s, audio + sample_tag({.title = number.toLatin1(), .artist = "y"}));
        list(u"n"_s + number + u".mp3"_s, audio);
    }
    open();
    ListView& rows = group(list_name);
    const QStringList unsorted = names_in(rows);
    QStringList ascending = unsorted;
    ascending.sort();
    QStringList descending(ascending.rbegin(), ascending.rend());

    Q_EMIT rows.ColumnClick(column);
    QCOMPARE(names_in(rows), sorts ? descending : unsorted);
    Q_EMIT rows.ColumnClick(column);
    QCOMPARE(names_in(rows), sorts ? ascending : unsorted);
}

void TestFifConvert::loading_clears_all_toggles_but_one()
{
    shared.fif_sort_toggles = {1, 1};
    shared.impossible_sort_toggles = {1, 1};
    shared.possible_sort_toggles = {1, 1, 1};
    open();
    QCOMPARE(shared.fif_sort_toggles, (std::array<i16, 2>{0, 0}));
    QCOMPARE(shared.impossible_sort_toggles, (std::array<i16, 2>{0, 0}));
    QCOMPARE(shared.possible_sort_toggles, (std::array<i16, 3>{0, 0, 1}));
}

void TestFifConvert::the_pointer_lights_one_button()
{
    open();
    const auto lit = [this] {
        QStringList names;
        for (const UsrButton* each : dialog_->findChildren<UsrButton*>()) {
            if (each->shown() == UsrButton::Shown::move)
                names.append(each->objectName());
        }
        return names;
    };
    // A pointer that an earlier test left on the first button would not move.
    QTest::mouseMove(dialog_.get(), QPoint(3, 3));
    for (const char* name : {"Change_FIF", "cmd_transfer", "Cancel"}) {
        QTest::mouseMove(&button(name));
        QTRY_COMPARE(lit(), QStringList{QLatin1StringView(name)});
    }
    QTest::mouseMove(dialog_.get(), QPoint(3, dialog_->height() / 2));
    QTRY_COMPARE(lit(), QStringList());
    QTest::mouseMove(&button("Change_FIF"));
    QTRY_COMPARE(lit(), QStringList{u"Change_FIF"_s});
    QWidget* viewport = group("Possible_ListView").view()->viewport();
    QTest::mouseMove(viewport, viewport->rect().center());
    QTRY_COMPARE(lit(), QStringList());
}

void TestFifConvert::buttons_act_by_key()
{
    list(u"a.mp3"_s, tagged("Ann", "Sea"));
    open();
    QSignalSpy copies(dialog_.get(), &FIF_convert::copy_wanted);
    button("cmd_transfer").setFocus();
    QTest::keyClick(&button("cmd_transfer"), Qt::Key_Return);
    QCOMPARE(copies.count(), 1);
    button("Change_FIF").setFocus();
    QTest::keyClick(&button("Change_FIF"), Qt::Key_Space);
    QVERIFY(disk_->exists(folder_ + u"[Ann][Sea][Rock].mp3"_s));
    button("Cancel").setFocus();
    QTest::keyClick(&button("Cancel"), Qt::Key_Enter);
    QVERIFY(!dialog_->isVisible());
}

void TestFifConvert::keys_reach_everything()
{
    list(u"tagged.mp3"_s, tagged("Ann", "Sea"));
    open();
    const auto focused = [this] {
        QWidget* control = dialog_->focusWidget();
        while (control->parentWidget() != dialog_.get()) // the list that the focus is in
            control = control->parentWidget();
        return control->objectName();
    };
    QStringList order;
    for (int step = 0; step < 6; ++step) {
        order.append(focused());
        QTest::keyClick(dialog_->focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(order, (QStringList{u"Possible_ListView"_s, u"FIF_ListView"_s, u"Impossible_ListView"_s, u"Change_FIF"_s,
                                 u"cmd_transfer"_s, u"Cancel"_s}));
    QCOMPARE(focused(), u"Possible_ListView"_s);
}

void TestFifConvert::a_thousand_records_fit()
{
    for (int number = 0; number < 1000; ++number)
        list(u"t%1.mp3"_s.arg(number), tagged("Ann", "Title " + QByteArray::number(number)));
    open();
    QCOMPARE(label("Label_Changeable"), u"[1000 File/1MB]"_s);
    QTest::mouseClick(&button("Change_FIF"), Qt::LeftButton);
    QCOMPARE(group("FIF_ListView").Count(), 1000);
    QCOMPARE(group("FIF_ListView").Item(1000).Text, u"[Ann][Title 999][Rock].mp3"_s);
    QVERIFY(messages_->take().isEmpty());
}

QUILMO_UI_TEST(TestFifConvert)
#include "test_fif_convert.moc"
