#include "core/mod_of_grobal_var.h"
#include "frame/QuilmoMain.h"
#include "test_main.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QStringList& list_row()
{
    static const QStringList names = {u"cmd_select_all"_s, u"cmdRemove"_s, u"Change_all"_s, u"cmdBurn"_s, u"cmdSave"_s};
    return names;
}

const QStringList& player_row()
{
    static const QStringList names = {u"ReBtn"_s,   u"backBtn"_s,  u"PlayBtn"_s,
                                      u"StopBtn"_s, u"frontBtn"_s, u"FastBtn"_s};
    return names;
}

} // namespace

class TestHover : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void a_button_lights_alone_in_its_row();
    void a_button_lights_alone_in_its_row_data();
    void the_other_row_keeps_its_light();
    void what_puts_out_all_buttons();
    void what_puts_out_all_buttons_data();
    void what_leaves_the_light();
    void what_leaves_the_light_data();
    void only_the_save_button_makes_enter_save();
    void save_button_is_lit_by_the_focus();
    void enter_saves_while_the_save_button_has_the_focus();
    void a_click_leaves_the_button_unlit_until_the_mouse_moves();

private:
    UsrButton& button(const QString& name) const { return *window_->findChild<UsrButton*>(name); }
    QStringList lit() const;
    void light(const QString& name) const { QTest::mouseMove(&button(name), QPoint(6, 6)); }
    void move_over(const QString& control, QPoint place) const;

    std::unique_ptr<TestDisk> disk_;
    std::unique_ptr<QuilmoMain> window_;
};

void TestHover::init()
{
    disk_ = std::make_unique<TestDisk>();
    window_ = std::make_unique<QuilmoMain>();
    window_->show();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    QTest::mouseMove(window_.get(), QPoint(400, 5)); // a move to where the pointer is already would be none
}

void TestHover::cleanup()
{
    window_.reset();
    disk_.reset();
}

QStringList TestHover::lit() const
{
    QStringList names;
    for (const QString& name : list_row() + player_row()) {
        if (button(name).shown() == UsrButton::Shown::move)
            names.append(name);
    }
    return names;
}

/// Moves the pointer over the control, or over the part of it that takes the mouse; without a name over what holds the
/// form.
void TestHover::move_over(const QString& control, QPoint place) const
{
    auto* widget = control.isEmpty() ? window_->centralWidget() : window_->findChild<QWidget*>(control);
    if (auto* list = qobject_cast<ListView*>(widget))
        widget = list->view()->viewport();
    else if (auto* view = qobject_cast<QAbstractItemView*>(widget))
        widget = view->viewport();
    QTest::mouseMove(widget, place);
}

void TestHover::a_button_lights_alone_in_its_row_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    for (const QStringList& row : {list_row(), player_row()}) {
        for (int i = 0; i < row.size(); ++i) {
            const QString& next = row[(i + 1) % row.size()];
            QTest::newRow(qPrintable(row[i] + u" and then "_s + next)) << row[i] << next;
        }
    }
}

void TestHover::a_button_lights_alone_in_its_row()
{
    QFETCH(const QString, first);
    QFETCH(const QString, second);
    light(first);
    QCOMPARE(lit(), QStringList{first});
    light(second);
    QCOMPARE(lit(), QStringList{second});
}

void TestHover::the_other_row_keeps_its_light()
{
    light(u"PlayBtn"_s);
    light(u"cmdBurn"_s);
    QCOMPARE(lit(), (QStringList{u"cmdBurn"_s, u"PlayBtn"_s}));
    move_over(u"form"_s, {2, 60});
    QCOMPARE(lit(), QStringList());
}

void TestHover::what_puts_out_all_buttons_data()
{
    QTest::addColumn<QString>("control");
    QTest::addColumn<QPoint>("place");
    QTest::newRow("the form") << u"form"_s << QPoint(2, 52);
    QTest::newRow("the margin around the form") << QString() << QPoint(3, 200);
    QTest::newRow("the toolbar") << u"main_toolbar"_s << QPoint(600, 10);
    QTest::newRow("the player's ground") << u"Picture_mp3_back"_s << QPoint(20, 4);
    QTest::newRow("the list") << u"lvListView"_s << QPoint(50, 50);
    QTest::newRow("the tree") << u"tvTreeView"_s << QPoint(50, 150);
    QTest::newRow("the status bar") << u"StatusBar1"_s << QPoint(50, 10);
}

void TestHover::what_puts_out_all_buttons()
{
    QFETCH(const QString, control);
    QFETCH(const QPoint, place);
    light(u"FastBtn"_s);
    light(u"cmdSave"_s);
    QCOMPARE(shared.enter_saves, i16(1));
    move_over(control, place);
    QCOMPARE(lit(), QStringList());
    QCOMPARE(shared.enter_saves, i16(0));
}

void TestHover::what_leaves_the_light_data()
{
    QTest::addColumn<QString>("control");
    QTest::addColumn<i16>("enter_saves");
    QTest::newRow("the length box only stops Enter") << u"Label_filesize"_s << i16(0);
    QTest::newRow("a text box leaves both") << u"txtArtist"_s << i16(1);
}

void TestHover::what_leaves_the_light()
{
    QFETCH(const QString, control);
    light(u"cmdSave"_s);
    move_over(control, {5, 5});
    QCOMPARE(lit(), QStringList{u"cmdSave"_s});
    QTEST(shared.enter_saves, "enter_saves");
}

void TestHover::only_the_save_button_makes_enter_save()
{
    light(u"cmdBurn"_s);
    QCOMPARE(shared.enter_saves, i16(0));
    light(u"cmdSave"_s);
    QCOMPARE(shared.enter_saves, i16(1));
    light(u"PlayBtn"_s);
    QCOMPARE(shared.enter_saves, i16(1));
}

void TestHover::save_button_is_lit_by_the_focus()
{
    button(u"cmdSave"_s).setFocus(Qt::TabFocusReason);
    QCOMPARE(lit(), QStringList{u"cmdSave"_s});
    QCOMPARE(shared.enter_saves, i16(1));
    button(u"ReBtn"_s).setFocus(Qt::TabFocusReason);
    QCOMPARE(lit(), QStringList());
    QCOMPARE(shared.enter_saves, i16(0));
}

void TestHover::enter_saves_while_the_save_button_has_the_focus()
{
    UsrButton& save = button(u"cmdSave"_s);
    const QSignalSpy clicks(&save, &UsrButton::Click);
    QTest::keyClick(window_.get(), Qt::Key_Return);
    QCOMPARE(clicks.size(), 0);
    save.setFocus(Qt::TabFocusReason);
    QCOMPARE(lit(), QStringList{u"cmdSave"_s});
    QTest::keyClick(&save, Qt::Key_Return);
    QCOMPARE(clicks.size(), 1);
    QCOMPARE(lit(), QStringList());
    button(u"ReBtn"_s).setFocus(Qt::TabFocusReason);
    QTest::keyClick(window_.get(), Qt::Key_Return);
    QCOMPARE(clicks.size(), 1);
}

void TestHover::a_click_leaves_the_button_unlit_until_the_mouse_moves()
{
    light(u"StopBtn"_s);
    QCOMPARE(lit(), QStringList{u"StopBtn"_s});
    QTest::mouseClick(&button(u"StopBtn"_s), Qt::LeftButton, {}, QPoint(6, 6));
    QCOMPARE(lit(), QStringList());
    QTest::mouseMove(&button(u"StopBtn"_s), QPoint(8, 8));
    QCOMPARE(lit(), QStringList{u"StopBtn"_s});
}

QUILMO_UI_TEST(TestHover)
#include "test_hover.moc"
