#include "frame/Splash_Dlg.h"
#include "frame/look.h"
#include "platform/MsgBox.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/LongWork.h"
#include "platform/controls/PictureBox.h"
#include "platform/controls/StatusBar.h"
#include "platform/controls/TextBox.h"
#include "platform/controls/Toolbar.h"
#include "platform/controls/fonts.h"
#include "platform/controls/message_window.h"
#include "platform/controls/palette.h"
#include "platform/own_words.h"

#include "test_main.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QToolTip>
#include <QWindow>

#include <array>

#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

QStringList entries(const ComboBox& box)
{
    QStringList texts;
    for (int i = 0; i < box.count(); ++i)
        texts.append(box.itemText(i));
    return texts;
}

/// Presses OK on the next message box, after `look` has seen it.
template<typename Look> void answer_next_box(Look look)
{
    const auto answer = [look] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box == nullptr)
            return;
        look(*box);
        QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
    };
    QMetaObject::invokeMethod(qApp, answer, Qt::QueuedConnection);
}

} // namespace

class TestSmallControls : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        set_message_box({});
        set_fatal_error_handler({});
    }

    // Text box

    void text_box_gives_back_what_was_set_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("kept");
        const auto same = [](const char* name, const QString& text) { QTest::newRow(name) << text << text; };
        same("empty", {});
        same("plain", u"Artist - Title.mp3"_s);
        same("blanks at both ends", u"  a  "_s);
        same("line breaks", u"a\nb\r\nc"_s);
        same("tabs and other controls", u"a\tb\x01\x1f\x7f"_s);
        same("paragraph and line separators", u"a\u2028b\u2029c"_s);
        same("a stray byte of a name", u"Bj\xdcf6rk"_s);
        same("a backslash inside a name", u"a\uf05cb"_s);
        same("Korean", u"서태지"_s);
        same("beyond the basic plane", u"\U0001D11E"_s);
        same("markup", u"<b>a</b> & b"_s);
        same("255 characters", QString(u'x').repeated(255));
        QTest::newRow("cut at a NUL") << u"a\0b"_s << u"a"_s;
        QTest::newRow("a NUL first") << u"\0b"_s << QString();
        QTest::newRow("no longer than a 16-bit count of bytes") << QString(20000, u'가') << QString(16383, u'가');
    }

    void text_box_gives_back_what_was_set()
    {
        QFETCH(const QString, text);
        QFETCH(const QString, kept);
        TextBox box;
        box.set_Text(u"before"_s);
        box.set_Text(text);
        QCOMPARE(box.Text(), kept);
        QCOMPARE(box.cursorPosition(), 0);
    }

    void text_box_tells_changes_from_code_and_by_typing()
    {
        TextBox box;
        const QSignalSpy changes(&box, &TextBox::Change);
        box.set_Text(u"a"_s);
        QCOMPARE(changes.size(), 1);
        box.set_Text(u"a"_s);
        QCOMPARE(changes.size(), 1);
        box.set_Text({});
        QCOMPARE(changes.size(), 2);
        QTest::keyClicks(&box, u"xy"_s);
        QCOMPARE(changes.size(), 4);
        QCOMPARE(box.Text(), u"xy"_s);
    }

    void text_box_cuts_pasted_text_at_a_nul()
    {
        TextBox box;
        const QSignalSpy changes(&box, &TextBox::Change);
        box.insert(u"ab\0cd"_s);
        QCOMPARE(box.Text(), u"ab"_s);
        QCOMPARE(changes.size(), 1);
    }

    void text_box_change_handler_may_set_the_text_back()
    {
        TextBox box;
        connect(&box, &TextBox::Change, this, [&box] { box.set_Text(u"name.mp3"_s); });
        QTest::keyClicks(&box, u"x"_s);
        QCOMPARE(box.Text(), u"name.mp3"_s);
    }

    void text_box_tells_focus_and_mouse()
    {
        QWidget window;
        TextBox first(&window);
        TextBox second(&window);
        second.move(0, 40);
        window.resize(200, 80);
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        first.setFocus();
        const QSignalSpy focus(&second, &TextBox::GotFocus);
        const QSignalSpy moves(&second, &TextBox::MouseMove);
        QTest::keyClick(&first, Qt::Key_Tab);
        QCOMPARE(focus.size(), 1);
        QTest::mouseMove(window.windowHandle(), second.geometry().center());
        QCOMPARE(moves.size(), 1);
    }

    // Combo box

    void combo_box_keeps_alphabetical_order()
    {
        ComboBox box;
        for (const QString& text :
             {u"Pop"_s, u"blues"_s, u"Zouk"_s, QString(), u"A Cappella"_s, u"Blues Rock"_s, u"a"_s})
            box.AddItem(text);
        QCOMPARE(entries(box),
                 (QStringList{QString(), u"a"_s, u"A Cappella"_s, u"blues"_s, u"Blues Rock"_s, u"Pop"_s, u"Zouk"_s}));
    }

    void combo_box_selects_nothing_by_itself()
    {
        ComboBox box;
        box.AddItem(u"b"_s);
        QCOMPARE(box.ListIndex(), -1);
        QCOMPARE(box.Text(), QString());
        box.AddItem(QString());
        QCOMPARE(box.ListIndex(), -1);
    }

    void combo_box_keeps_the_selected_entry_when_others_come()
    {
        ComboBox box;
        box.AddItem(u"b"_s);
        box.set_ListIndex(0);
        box.AddItem(u"a"_s);
        box.AddItem(u"c"_s);
        QCOMPARE(box.ListIndex(), 1);
        QCOMPARE(box.Text(), u"b"_s);
    }

    void combo_box_ignores_positions_that_do_not_exist_data()
    {
        QTest::addColumn<int>("position");
        QTest::addColumn<int>("left");
        QTest::newRow("first") << 0 << 0;
        QTest::newRow("last") << 2 << 2;
        QTest::newRow("none") << -1 << -1;
        QTest::newRow("behind the last") << 3 << 1;
        QTest::newRow("far behind") << 100000 << 1;
        QTest::newRow("before none") << -2 << 1;
    }

    void combo_box_ignores_positions_that_do_not_exist()
    {
        QFETCH(const int, position);
        QFETCH(const int, left);
        ComboBox box;
        for (const QString& text : {u"a"_s, u"b"_s, u"c"_s})
            box.AddItem(text);
        box.set_ListIndex(1);
        box.set_ListIndex(position);
        QCOMPARE(box.ListIndex(), left);
        QCOMPARE(box.Text(), QStringList({u"a"_s, u"b"_s, u"c"_s}).value(left));
    }

    void combo_box_clears()
    {
        ComboBox box;
        box.AddItem(u"a"_s);
        box.set_ListIndex(0);
        box.Clear();
        QCOMPARE(box.count(), 0);
        QCOMPARE(box.ListIndex(), -1);
        box.AddItem(u"b"_s);
        QCOMPARE(box.ListIndex(), -1);
    }

    void combo_box_tells_focus()
    {
        QWidget window;
        const TextBox first(&window); // takes the focus that comes with the window
        ComboBox box(&window);
        const QSignalSpy focus(&box, &ComboBox::GotFocus);
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        box.setFocus();
        QTRY_COMPARE(focus.size(), 1);
    }

    void boxes_do_not_tell_a_focus_that_only_comes_back_data()
    {
        QTest::addColumn<Qt::FocusReason>("reason");
        QTest::addColumn<int>("told");
        QTest::newRow("by the tab key") << Qt::TabFocusReason << 1;
        QTest::newRow("by the mouse") << Qt::MouseFocusReason << 1;
        QTest::newRow("from another window") << Qt::ActiveWindowFocusReason << 0;
        QTest::newRow("from a pop-up") << Qt::PopupFocusReason << 0;
        QTest::newRow("from the menu bar") << Qt::MenuBarFocusReason << 0;
    }

    void boxes_do_not_tell_a_focus_that_only_comes_back()
    {
        QFETCH(const Qt::FocusReason, reason);
        TextBox text;
        ComboBox list;
        const QSignalSpy text_told(&text, &TextBox::GotFocus);
        const QSignalSpy list_told(&list, &ComboBox::GotFocus);
        QFocusEvent focus(QEvent::FocusIn, reason);
        QCoreApplication::sendEvent(&text, &focus);
        QCoreApplication::sendEvent(&list, &focus);
        QTEST(static_cast<int>(text_told.size()), "told");
        QTEST(static_cast<int>(list_told.size()), "told");
    }

    // Status bar

    void status_bar_places_its_panels()
    {
        StatusBar bar({1500, 3000, 100});
        bar.resize(600, 22);
        bar.show();
        const auto labels = bar.findChildren<QLabel*>();
        QCOMPARE(labels.size(), 4);
        QCOMPARE(labels[0]->x(), 0);
        QCOMPARE(labels[1]->x(), 100);
        QCOMPARE(labels[2]->x(), 300);
        QCOMPARE(labels[2]->geometry().right(), 599);
        bar.set_panel_width(2, 4500);
        QCOMPARE(bar.panel_width(2), 4500);
        QCOMPARE(labels[2]->x(), 400);
        QCOMPARE(labels[2]->geometry().right(), 599);
        bar.resize(300, 22);
        QCOMPARE(labels[2]->width(), 0);
    }

    void status_bar_keeps_texts_whole()
    {
        StatusBar bar({300, 600});
        const QString text = u"123456 files with a <b>text</b> much too long/789MB"_s;
        bar.set_panel_text(1, text);
        bar.set_panel_text(2, u"0 MB"_s);
        QCOMPARE(bar.panel_text(1), text);
        QCOMPARE(bar.panel_text(2), u"0 MB"_s);
        const auto labels = bar.findChildren<QLabel*>();
        QCOMPARE(labels[0]->textFormat(), Qt::PlainText);
        QCOMPARE(QAccessible::queryAccessibleInterface(labels[0])->text(QAccessible::Name), text);
    }

    void status_bar_tells_the_mouse_over_its_panels()
    {
        StatusBar bar({1500, 3000});
        bar.resize(600, 22);
        bar.show();
        const QSignalSpy moves(&bar, &StatusBar::MouseMove);
        QTest::mouseMove(bar.windowHandle(), QPoint(50, 10));
        QTest::mouseMove(bar.windowHandle(), QPoint(250, 10));
        QCOMPARE(moves.size(), 2);
    }

    void status_bar_shows_a_notice_over_its_panels()
    {
        StatusBar bar({1500, 3000});
        bar.resize(600, 22);
        bar.show();
        bar.set_panel_text(1, u"12 files"_s);
        const QImage before = bar.grab().toImage();
        QCOMPARE(bar.notice(), QString());
        bar.show_notice(u"No sound device"_s);
        QCOMPARE(bar.notice(), u"No sound device"_s);
        const QImage with_notice = bar.grab().toImage();
        QVERIFY(with_notice != before);
        bar.set_panel_text(1, u"13 files"_s);
        QCOMPARE(bar.grab().toImage(), with_notice);
        QCOMPARE(bar.panel_text(1), u"13 files"_s);

        auto* time = bar.findChild<QTimer*>();
        QCOMPARE(time->interval(), 8000);
        QVERIFY(time->isActive());
        time->start(0);
        QTRY_COMPARE(bar.notice(), QString());
        QVERIFY(!time->isActive());
        QVERIFY(bar.grab().toImage() != with_notice);
        QCOMPARE(bar.panel_text(1), u"13 files"_s);
        bar.set_panel_text(1, u"12 files"_s);
        QCOMPARE(bar.grab().toImage(), before);
    }

    void status_bar_shows_the_last_notice_after_others()
    {
        StatusBar bar({1500, 3000});
        bar.show();
        auto* time = bar.findChild<QTimer*>();
        bar.show_notice(u"first"_s);
        bar.show_notice(u"second"_s);
        QCOMPARE(bar.notice(), u"second"_s);
        time->start(0);
        QTRY_COMPARE(bar.notice(), QString());
        bar.show_notice(u"third"_s);
        QCOMPARE(bar.notice(), u"third"_s);
        QVERIFY(time->isActive());
    }

    void status_bar_notice_is_elided_and_read_whole()
    {
        StatusBar bar({1500, 3000});
        bar.resize(200, 22);
        bar.show();
        const QString text = u"<b>A</b> notice "_s + QString(300, u'x');
        bar.show_notice(text);
        QCOMPARE(bar.notice(), text);
        const auto labels = bar.findChildren<QLabel*>();
        QCOMPARE(labels.last()->geometry(), QRect(0, 1, 200, 21));
        QCOMPARE(QAccessible::queryAccessibleInterface(labels.last())->text(QAccessible::Name), text);
        bar.resize(500, 22);
        QCOMPARE(labels.last()->geometry(), QRect(0, 1, 500, 21));
        const QSignalSpy moves(&bar, &StatusBar::MouseMove);
        QTest::mouseMove(bar.windowHandle(), QPoint(50, 10));
        QCOMPARE(moves.size(), 1);
    }

    // Picture box

    void picture_box_tells_the_mouse_data()
    {
        QTest::addColumn<QStringList>("steps");
        QTest::addColumn<QStringList>("told");
        QTest::newRow("a click") << QStringList{u"press left in"_s, u"release left in"_s}
                                 << QStringList{u"down 1 0 150 75"_s, u"up 1 0 150 75"_s, u"click"_s};
        QTest::newRow("a move") << QStringList{u"move in"_s} << QStringList{u"move 0 0 150 75"_s};
        QTest::newRow("a drag inside") << QStringList{u"press left in"_s, u"move there"_s, u"release left there"_s}
                                       << QStringList{u"down 1 0 150 75"_s, u"move 1 0 300 150"_s, u"up 1 0 300 150"_s,
                                                      u"click"_s};
        QTest::newRow("a drag that ends outside")
            << QStringList{u"press left in"_s, u"move out"_s, u"release left out"_s}
            << QStringList{u"down 1 0 150 75"_s, u"move 1 0 -150 -75"_s, u"up 1 0 -150 -75"_s};
        QTest::newRow("a drag out and in again")
            << QStringList{u"press left in"_s, u"move out"_s, u"move in"_s, u"release left in"_s}
            << QStringList{u"down 1 0 150 75"_s, u"move 1 0 -150 -75"_s, u"move 1 0 150 75"_s, u"up 1 0 150 75"_s,
                           u"click"_s};
        QTest::newRow("a right press is no click") << QStringList{u"press right in"_s, u"release right in"_s}
                                                   << QStringList{u"down 2 0 150 75"_s, u"up 2 0 150 75"_s};
        QTest::newRow("two buttons") << QStringList{u"press left in"_s, u"press right in"_s, u"move there"_s,
                                                    u"release right there"_s, u"release left there"_s}
                                     << QStringList{u"down 1 0 150 75"_s, u"down 2 0 150 75"_s, u"move 3 0 300 150"_s,
                                                    u"up 2 0 300 150"_s,  u"up 1 0 300 150"_s,  u"click"_s};
        QTest::newRow("a press beside it")
            << QStringList{u"press left out"_s, u"move in"_s, u"release left in"_s} << QStringList();
        QTest::newRow("a double click is two")
            << QStringList{u"double in"_s} << QStringList{u"down 1 0 150 75"_s, u"up 1 0 150 75"_s, u"click"_s,
                                                          u"down 1 0 150 75"_s, u"up 1 0 150 75"_s, u"click"_s};
    }

    void picture_box_tells_the_mouse()
    {
        QFETCH(const QStringList, steps);
        QWidget window;
        PictureBox box({}, &window);
        box.setGeometry(40, 30, 60, 40);
        window.setFixedSize(200, 100);
        window.show();
        const QHash<QString, QPoint> places{{u"in"_s, {50, 35}}, {u"there"_s, {60, 40}}, {u"out"_s, {30, 25}}};
        QTest::mouseMove(window.windowHandle(), steps.first().endsWith(u"in"_s) ? places[u"in"_s] : places[u"out"_s]);
        if (steps.first() == u"move in"_s)
            QTest::mouseMove(window.windowHandle(), places[u"out"_s]);
        QStringList told;
        const auto note = [&told](const QString& event) {
            return [&told, event](i16 button, i16 shift, float x, float y) {
                told.append(u"%1 %2 %3 %4 %5"_s.arg(event).arg(button).arg(shift).arg(x).arg(y));
            };
        };
        connect(&box, &PictureBox::MouseDown, this, note(u"down"_s));
        connect(&box, &PictureBox::MouseMove, this, note(u"move"_s));
        connect(&box, &PictureBox::MouseUp, this, note(u"up"_s));
        connect(&box, &PictureBox::Click, this, [&told] { told.append(u"click"_s); });
        for (const QString& step : steps) {
            const QStringList words = step.split(u' ');
            const QPoint place = places[words.last()];
            const Qt::MouseButton button = words[1] == u"right"_s ? Qt::RightButton : Qt::LeftButton;
            if (words[0] == u"press"_s)
                QTest::mousePress(window.windowHandle(), button, {}, place);
            else if (words[0] == u"release"_s)
                QTest::mouseRelease(window.windowHandle(), button, {}, place);
            else if (words[0] == u"double"_s)
                QTest::mouseDClick(window.windowHandle(), button, {}, place);
            else
                QTest::mouseMove(window.windowHandle(), place);
        }
        QTEST(told, "told");
    }

    void picture_box_keeps_presses_from_what_lies_below()
    {
        PictureBox below({});
        PictureBox above({}, &below);
        below.resize(200, 100);
        above.setGeometry(20, 20, 40, 40);
        below.show();
        const QSignalSpy presses(&below, &PictureBox::MouseDown);
        const QSignalSpy releases(&below, &PictureBox::MouseUp);
        const QSignalSpy clicks(&below, &PictureBox::Click);
        QTest::mouseClick(below.windowHandle(), Qt::LeftButton, {}, QPoint(30, 30));
        QCOMPARE(presses.size() + releases.size() + clicks.size(), 0);
    }

    void picture_box_leaves_moves_that_nobody_listens_to_to_what_lies_below()
    {
        PictureBox below({});
        PictureBox above({}, &below);
        below.resize(200, 100);
        above.setGeometry(20, 20, 40, 40);
        below.show();
        QList<float> places;
        connect(&below, &PictureBox::MouseMove, this, [&places](i16, i16, float x, float y) { places << x << y; });
        QTest::mouseMove(below.windowHandle(), QPoint(30, 32));
        QCOMPARE(places, (QList<float>{450, 480}));
        int heard = 0;
        connect(&above, &PictureBox::MouseMove, this, [&heard] { ++heard; });
        QTest::mouseMove(below.windowHandle(), QPoint(31, 33));
        QCOMPARE(heard, 1);
        QCOMPARE(places.size(), 2);
    }

    void picture_box_is_pressed_by_the_space_bar()
    {
        PictureBox box({QSize(24, 24), [](QPainter&, const QRectF&) {}});
        box.setFocusPolicy(Qt::StrongFocus);
        box.show();
        box.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&box));
        box.clearFocus();
        const QImage without = box.grab().toImage();
        box.setFocus();
        QVERIFY(box.grab().toImage() != without);
        const QSignalSpy clicks(&box, &PictureBox::Click);
        QTest::keyClick(&box, Qt::Key_Space);
        QCOMPARE(clicks.size(), 1);
        QKeyEvent repeat(QEvent::KeyPress, Qt::Key_Space, {}, u" "_s, true);
        QApplication::sendEvent(&box, &repeat);
        QCOMPARE(clicks.size(), 1);
        QTest::keyClick(&box, Qt::Key_Return);
        QTest::keyClick(&box, Qt::Key_A);
        QCOMPARE(clicks.size(), 1);
    }

    void picture_box_may_end_in_its_own_handler()
    {
        auto* box = new PictureBox({});
        const QPointer<PictureBox> alive(box);
        box->resize(40, 40);
        connect(box, &PictureBox::MouseUp, this, [box] { delete box; });
        box->show();
        QTest::mouseClick(box->windowHandle(), Qt::LeftButton, {}, QPoint(5, 5));
        QVERIFY(alive.isNull());
    }

    void an_icon_is_a_picture_again()
    {
        const auto red = [](QPainter& painter, const QRectF& rect) { painter.fillRect(rect, Qt::red); };
        const Picture picture = picture_of(icon_of({QSize(24, 24), red}), QSize(24, 24));
        QCOMPARE(picture.size, QSize(24, 24));
        const PictureBox box(picture);
        QImage shown(48, 48, QImage::Format_ARGB32);
        shown.setDevicePixelRatio(2);
        shown.fill(Qt::white);
        QPainter painter(&shown);
        picture.draw(painter, QRectF(0, 0, 24, 24));
        painter.end();
        QCOMPARE(shown.pixelColor(1, 1), QColor(Qt::red));
        QCOMPARE(shown.pixelColor(46, 46), QColor(Qt::red));
    }

    // Toolbar

    void toolbar_counts_separators()
    {
        Toolbar bar;
        bar.Add(u"new"_s, {}, u"New Folder"_s);
        bar.Add(u"copy"_s, {}, u"Copy"_s);
        bar.AddSeparator();
        bar.Add(u"paste"_s, {}, u"Paste"_s);
        QCOMPARE(bar.button(1), bar.button(u"new"_s));
        QCOMPARE(bar.button(2)->toolTip(), u"Copy"_s);
        QVERIFY(bar.button(3)->isSeparator());
        QCOMPARE(bar.button(4), bar.button(u"paste"_s));
        QVERIFY(bar.button(0) == nullptr);
        QVERIFY(bar.button(5) == nullptr);
        QVERIFY(bar.button(u"none"_s) == nullptr);
    }

    void toolbar_refuses_a_key_twice()
    {
        Toolbar bar;
        bar.Add(u"copy"_s, {}, u"Copy"_s);
        QVERIFY_THROWS_EXCEPTION(RunTimeError, bar.Add(u"copy"_s, {}, u"Other"_s));
        QCOMPARE(bar.actions().size(), 1);
    }

    void toolbar_tells_which_button_was_pressed_data()
    {
        QTest::addColumn<bool>("by_key");
        QTest::newRow("by mouse") << false;
        QTest::newRow("by keyboard") << true;
    }

    void toolbar_tells_which_button_was_pressed()
    {
        QFETCH(const bool, by_key);
        QWidget window;
        Toolbar bar(&window);
        bar.Add(u"copy"_s, {}, u"Copy"_s);
        bar.Add(u"paste"_s, {}, u"Paste"_s);
        bar.resize(120, 34);
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        const QSignalSpy clicks(&bar, &Toolbar::ButtonClick);
        QWidget* paste = bar.widgetForAction(bar.button(u"paste"_s));
        if (by_key) {
            bar.widgetForAction(bar.button(u"copy"_s))->setFocus(Qt::TabFocusReason);
            QTest::keyClick(&window, Qt::Key_Tab);
            QVERIFY(paste->hasFocus());
            QTest::keyClick(paste, Qt::Key_Space);
        } else {
            QTest::mouseClick(paste, Qt::LeftButton);
        }
        QCOMPARE(clicks.size(), 1);
        QCOMPARE(clicks.first().first().toString(), u"paste"_s);
    }

    void toolbar_names_follow_the_tips()
    {
        Toolbar bar;
        bar.Add(u"refresh"_s, {}, u"Refresh"_s);
        const auto name = [&bar] {
            return QAccessible::queryAccessibleInterface(bar.widgetForAction(bar.button(1)))->text(QAccessible::Name);
        };
        QCOMPARE(name(), u"Refresh"_s);
        bar.button(1)->setToolTip(u"Erneuern"_s);
        QCOMPARE(name(), u"Erneuern"_s);
        QCOMPARE(bar.button(1)->toolTip(), u"Erneuern"_s);
    }

    void toolbar_tells_the_mouse_over_its_buttons()
    {
        Toolbar bar;
        bar.Add(u"copy"_s, {}, u"Copy"_s);
        bar.AddSeparator();
        bar.Add(u"paste"_s, {}, u"Paste"_s);
        bar.resize(300, 34);
        bar.show();
        const QSignalSpy moves(&bar, &Toolbar::MouseMove);
        QTest::mouseMove(bar.windowHandle(), bar.actionGeometry(bar.button(1)).center());
        QTest::mouseMove(bar.windowHandle(), bar.actionGeometry(bar.button(2)).center());
        QTest::mouseMove(bar.windowHandle(), QPoint(290, 10));
        QCOMPARE(moves.size(), 3);
    }

    // Message boxes

    void message_box_is_modal_plain_and_titled()
    {
        install_message_window(u"Vurlo Utility"_s);
        QWidget window;
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        const QString text = u"<b>name</b>\nis already selected"_s;
        bool seen = false;
        answer_next_box([&](const QMessageBox& box) {
            seen = true;
            QCOMPARE(box.text(), text);
            QCOMPARE(box.textFormat(), Qt::PlainText);
            QCOMPARE(box.windowTitle(), u"A title"_s);
            QCOMPARE(box.icon(), QMessageBox::Information);
            QCOMPARE(box.buttons().size(), 1);
            QCOMPARE(box.parentWidget(), &window);
            QVERIFY(box.isModal());
        });
        MsgBox(text, message_box_information, u"A title"_s);
        QVERIFY(seen);
    }

    void message_box_has_the_arrow_in_the_middle_of_long_work()
    {
        install_message_window(u"Vurlo Utility"_s);
        const LongWork work;
        Qt::CursorShape in_box = Qt::WaitCursor;
        answer_next_box([&](const QMessageBox& /*box*/) { in_box = QApplication::overrideCursor()->shape(); });
        MsgBox(u"a.mp3 already exists"_s, message_box_information, u"A title"_s);
        QCOMPARE(in_box, Qt::ArrowCursor);
        QCOMPARE(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    }

    void message_box_breaks_a_long_name()
    {
        install_message_window(u"Vurlo Utility"_s);
        const QString name = u"😀"_s + QString(u'W').repeated(250);
        bool fits = false;
        QString shown;
        answer_next_box([&](const QMessageBox& box) {
            const auto* label = box.findChild<QLabel*>(u"qt_msgbox_label"_s);
            fits =
                label->width() <= box.width() && box.width() < QFontMetrics(label->font()).horizontalAdvance(name) / 2;
            shown = box.text();
        });
        MsgBox(name + u" is playing"_s, message_box_information, u"A title"_s);
        QVERIFY(fits);
        QCOMPARE(shown.remove(QChar(0x200b)), name + u" is playing"_s);
    }

    void run_time_error_shows_number_and_text()
    {
        install_message_window(u"Vurlo Utility"_s);
        NotedMessages messages;
        show_run_time_error(RunTimeError(RunTimeError::type_mismatch));
        QCOMPARE(messages.take(), QStringList{own_word(Word::run_time_error).arg(13) + u"\n\nType mismatch"_s});
        QCOMPARE(messages.last_title, u"Vurlo Utility"_s);
        QCOMPARE(messages.last_style, message_box_information);
    }

    void guarded_handlers_hand_errors_over()
    {
        QList<int> numbers;
        set_fatal_error_handler([&numbers](const RunTimeError& error) { numbers.append(error.number()); });
        QStringList handled;
        auto handler = guarded([&handled](const QString& text) {
            if (text.isEmpty())
                throw RunTimeError(RunTimeError::overflow);
            handled.append(text);
        });
        handler(u"a"_s);
        handler(QString());
        handler(u"b"_s);
        QCOMPARE(handled, (QStringList{u"a"_s, u"b"_s}));
        QCOMPARE(numbers, QList<int>{6});
    }

    void an_error_that_nobody_handles_is_shown_and_ends_the_program_with_status_1()
    {
        std::array<int, 2> ends{};
        QCOMPARE(pipe(ends.data()), 0);
        const pid_t child = fork();
        if (child == 0) {
            set_message_box([&ends](const QString& text, int, const QString&) {
                const QByteArray bytes = text.toUtf8();
                (void)!write(ends[1], bytes.constData(), static_cast<std::size_t>(bytes.size()));
            });
            fatal_run_time_error(RunTimeError(RunTimeError::overflow));
            _exit(0);
        }
        close(ends[1]);
        QByteArray shown(1000, '\0');
        shown.truncate(read(ends[0], shown.data(), static_cast<std::size_t>(shown.size())));
        close(ends[0]);
        int status = 0;
        QCOMPARE(waitpid(child, &status, 0), child);
        QVERIFY(WIFEXITED(status));
        QCOMPARE(WEXITSTATUS(status), 1);
        QCOMPARE(QString::fromUtf8(shown), own_word(Word::run_time_error).arg(6) + u"\n\nOverflow"_s);
    }

    // Splash

    void splash_stays_until_the_main_form_stands()
    {
        int calls = 0;
        bool visible = false;
        bool running = true;
        QPointer<Splash_Dlg> splash;
        splash = new Splash_Dlg([&] {
            ++calls;
            visible = splash->isVisible();
            running = splash->findChild<QTimer*>(u"Timer_splash"_s)->isActive();
        });
        auto* timer = splash->findChild<QTimer*>(u"Timer_splash"_s);
        QVERIFY(timer != nullptr);
        QCOMPARE(timer->interval(), 1000);
        QVERIFY(timer->isActive());
        splash->show();
        QVERIFY(splash->windowFlags().testFlag(Qt::FramelessWindowHint));
        QVERIFY(QTest::qWaitForWindowExposed(splash.data()));
        QCOMPARE(calls, 0);
        timer->setInterval(0);
        QTRY_VERIFY(splash.isNull());
        QCOMPARE(calls, 1);
        QVERIFY(visible);
        QVERIFY(!running);
    }

    void splash_ends_the_program_when_the_main_form_fails()
    {
        QList<int> numbers;
        set_fatal_error_handler([&numbers](const RunTimeError& error) { numbers.append(error.number()); });
        auto* splash = new Splash_Dlg([] { throw RunTimeError(RunTimeError::type_mismatch); });
        splash->findChild<QTimer*>(u"Timer_splash"_s)->setInterval(0);
        QTRY_COMPARE(numbers, QList<int>{13});
    }

    void splash_picture_has_its_words()
    {
        const Picture picture = splash_picture();
        QImage image(picture.size, QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&image);
        picture.draw(painter, image.rect());
        painter.end();
        int white = 0;
        for (int y = 222; y < 242; ++y)
            for (int x = 40; x < 260; ++x)
                white += image.pixelColor(x, y) == palette::on_accent ? 1 : 0;
        QVERIFY(white > 50);
    }

    // Look

    void look_is_the_same_on_every_desktop()
    {
        QPalette dark;
        dark.setColor(QPalette::Window, Qt::black);
        dark.setColor(QPalette::WindowText, Qt::white);
        QApplication::setPalette(dark);
        apply_look();
        const QPalette colours = QApplication::palette();
        QCOMPARE(colours.color(QPalette::Active, QPalette::Highlight), palette::accent);
        QCOMPARE(colours.color(QPalette::Active, QPalette::HighlightedText), palette::on_accent);
        QCOMPARE(colours.color(QPalette::Inactive, QPalette::Highlight), palette::line);
        QCOMPARE(colours.color(QPalette::Inactive, QPalette::HighlightedText), palette::ink);
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
            QCOMPARE(colours.color(group, QPalette::Window), palette::panel);
            QCOMPARE(colours.color(group, QPalette::WindowText), palette::ink);
            QCOMPARE(colours.color(group, QPalette::Base), palette::paper);
            QCOMPARE(colours.color(group, QPalette::Text), palette::ink);
            QCOMPARE(colours.color(group, QPalette::Button), palette::panel);
            QCOMPARE(colours.color(group, QPalette::ButtonText), palette::ink);
        }
        QCOMPARE(QToolTip::palette().color(QPalette::ToolTipText), palette::paper);
        QCOMPARE(QApplication::font().families().value(0), u"Tahoma"_s);
        QCOMPARE(korean_font().families().value(0), u"굴림"_s);
    }

    void windows_have_the_icon()
    {
        QVERIFY(QApplication::windowIcon().isNull());
        apply_icon();
        QVERIFY(!QApplication::windowIcon().isNull());
    }
};

QUILMO_UI_TEST(TestSmallControls)

#include "test_small_controls.moc"
