#include "platform/controls/UsrButton.h"

#include "test_main.h"

#include <QAccessible>
#include <QApplication>
#include <QEventLoop>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize face_size(60, 24);
constexpr QPoint inside(50, 40);  // in the window: 30, 20 in the button
constexpr QPoint outside(50, 90); // in the window, beside the button

const QString ups = u"up"_s;
const QString downs = u"down"_s;
const QString moves = u"move"_s;

QString name_of(UsrButton::Shown shown)
{
    switch (shown) {
    case UsrButton::Shown::down:
        return downs;
    case UsrButton::Shown::move:
        return moves;
    case UsrButton::Shown::up:
        break;
    }
    return ups;
}

/// A window with a button in it that notes each event with the picture shown while its handlers run.
class Host : public QWidget
{
public:
    Host()
    {
        setFixedSize(200, 120);
        button->move(20, 20);
        button->set_faces(face(Qt::green, ups), face(Qt::red, downs), face(Qt::blue, moves));
        const auto note = [this](const QString& event) { log.append(event + u' ' + name_of(button->shown())); };
        const auto note_mouse = [note](const QString& event, i16 number, i16 shift) {
            note(u"%1(%2,%3)"_s.arg(event).arg(number).arg(shift));
        };
        connect(button, &UsrButton::Click, this, [note] { note(u"Click"_s); });
        connect(button, &UsrButton::DblClick, this, [note] { note(u"DblClick"_s); });
        connect(button, &UsrButton::MouseDown, this,
                [note_mouse](i16 number, i16 shift, float, float) { note_mouse(u"MouseDown"_s, number, shift); });
        connect(button, &UsrButton::MouseUp, this,
                [note_mouse](i16 number, i16 shift, float, float) { note_mouse(u"MouseUp"_s, number, shift); });
        connect(button, &UsrButton::MouseMove, this,
                [note_mouse](i16 number, i16 shift, float, float) { note_mouse(u"MouseMove"_s, number, shift); });
        show();
        QTest::mouseMove(windowHandle(), at);
        log.clear();
    }

    void step(const QString& name)
    {
        if (name == u"press"_s)
            QTest::mousePress(windowHandle(), Qt::LeftButton, {}, at);
        else if (name == u"release"_s)
            QTest::mouseRelease(windowHandle(), Qt::LeftButton, {}, at);
        else if (name == u"shift press"_s)
            QTest::mousePress(windowHandle(), Qt::LeftButton, Qt::ShiftModifier | Qt::AltModifier, at);
        else if (name == u"right press"_s)
            QTest::mousePress(windowHandle(), Qt::RightButton, Qt::ControlModifier, at);
        else if (name == u"right release"_s)
            QTest::mouseRelease(windowHandle(), Qt::RightButton, Qt::ControlModifier, at);
        else if (name == u"middle press"_s)
            QTest::mousePress(windowHandle(), Qt::MiddleButton, {}, at);
        else if (name == u"middle release"_s)
            QTest::mouseRelease(windowHandle(), Qt::MiddleButton, {}, at);
        else if (name == u"double click"_s)
            QTest::mouseDClick(windowHandle(), Qt::LeftButton, {}, at);
        else if (name == u"move inside"_s)
            QTest::mouseMove(windowHandle(), at += QPoint(2, 0));
        else if (name == u"move outside"_s)
            QTest::mouseMove(windowHandle(), outside);
        else if (name == u"release outside"_s)
            QTest::mouseRelease(windowHandle(), Qt::LeftButton, {}, outside);
        else if (name == u"press outside"_s)
            QTest::mousePress(windowHandle(), Qt::LeftButton, {}, outside);
        else if (name == u"space"_s)
            QTest::keyClick(button, Qt::Key_Space);
        else if (name == u"enter"_s)
            QTest::keyClick(button, Qt::Key_Return);
        else if (name == u"keypad enter"_s)
            QTest::keyClick(button, Qt::Key_Enter);
        else if (name == u"SetMoveImg"_s)
            button->SetMoveImg();
        else if (name == u"DelMoveImg"_s)
            button->DelMoveImg();
        else if (name == u"hide and show"_s) {
            button->hide();
            button->show();
        } else if (name == u"disable"_s)
            button->setEnabled(false);
        else
            qFatal("no such step: %s", qPrintable(name));
    }

    Picture face(const QColor& colour, const QString& name)
    {
        return {face_size, [this, colour, name](QPainter& painter, const QRectF& rect) {
                    painted.append(name);
                    painter.fillRect(rect, colour);
                }};
    }

    UsrButton* const button = new UsrButton(this);
    QStringList log;
    QPoint at = inside;  ///< where the mouse is while it is in the button
    QStringList painted; ///< the pictures that were painted
    int enters = 0;

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
            ++enters;
    }
};

} // namespace

class TestUsrButton : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void events_data()
    {
        QTest::addColumn<QStringList>("steps");
        QTest::addColumn<QStringList>("raised");
        QTest::addColumn<QString>("left");

        QTest::newRow("a button at rest shows the up picture") << QStringList() << QStringList() << ups;
        QTest::newRow("a press shows the pressed picture, then raises MouseDown")
            << QStringList{u"press"_s} << QStringList{u"MouseDown(1,0) down"_s} << downs;
        QTest::newRow("a release shows the up picture, raises MouseUp, and Click with the pressed picture")
            << QStringList{u"press"_s, u"release"_s}
            << QStringList{u"MouseDown(1,0) down"_s, u"MouseUp(1,0) up"_s, u"Click down"_s} << ups;
        QTest::newRow("a move raises MouseMove and changes nothing at rest")
            << QStringList{u"move inside"_s} << QStringList{u"MouseMove(0,0) up"_s} << ups;
        QTest::newRow("a move changes nothing of a lit button")
            << QStringList{u"SetMoveImg"_s, u"move inside"_s} << QStringList{u"MouseMove(0,0) move"_s} << moves;
        QTest::newRow("a move changes nothing of a pressed button")
            << QStringList{u"press"_s, u"move inside"_s}
            << QStringList{u"MouseDown(1,0) down"_s, u"MouseMove(1,0) down"_s} << downs;
        QTest::newRow("the second press of a double click raises DblClick and no Click")
            << QStringList{u"double click"_s}
            << QStringList{u"MouseDown(1,0) down"_s, u"MouseUp(1,0) up"_s, u"Click down"_s, u"DblClick down"_s,
                           u"MouseUp(1,0) up"_s}
            << ups;
        QTest::newRow("a press puts out a lit button")
            << QStringList{u"SetMoveImg"_s, u"press"_s} << QStringList{u"MouseDown(1,0) down"_s} << downs;
        QTest::newRow("after a click on a lit button the picture is up, though the mouse is there")
            << QStringList{u"move inside"_s, u"SetMoveImg"_s, u"press"_s, u"release"_s}
            << QStringList{u"MouseMove(0,0) up"_s, u"MouseDown(1,0) down"_s, u"MouseUp(1,0) up"_s, u"Click down"_s}
            << ups;
        QTest::newRow("a press that slides off leaves the pressed picture, and raises nothing more")
            << QStringList{u"press"_s, u"move outside"_s, u"release outside"_s} << QStringList{u"MouseDown(1,0) down"_s}
            << downs;
        QTest::newRow("the next move over it leaves the picture of a press that slid off")
            << QStringList{u"press"_s, u"release outside"_s, u"move inside"_s}
            << QStringList{u"MouseDown(1,0) down"_s, u"MouseMove(0,0) down"_s} << downs;
        QTest::newRow("DelMoveImg ends the picture of a press that slid off")
            << QStringList{u"press"_s, u"release outside"_s, u"DelMoveImg"_s} << QStringList{u"MouseDown(1,0) down"_s}
            << ups;
        QTest::newRow("the next click ends the picture of a press that slid off")
            << QStringList{u"press"_s, u"release outside"_s, u"press"_s, u"release"_s}
            << QStringList{u"MouseDown(1,0) down"_s, u"MouseMove(0,0) down"_s, u"MouseDown(1,0) down"_s,
                           u"MouseUp(1,0) up"_s, u"Click down"_s}
            << ups;
        QTest::newRow("a press that slides off and comes back is a click")
            << QStringList{u"press"_s, u"move outside"_s, u"release"_s}
            << QStringList{u"MouseDown(1,0) down"_s, u"MouseMove(1,0) down"_s, u"MouseUp(1,0) up"_s, u"Click down"_s}
            << ups;
        QTest::newRow("a press from beside the button is none of its affair")
            << QStringList{u"press outside"_s, u"move inside"_s, u"release"_s} << QStringList() << ups;
        QTest::newRow("a right press and release raise no Click")
            << QStringList{u"right press"_s, u"right release"_s}
            << QStringList{u"MouseDown(2,2) down"_s, u"MouseUp(2,2) up"_s} << ups;
        QTest::newRow("a middle press and release raise no Click")
            << QStringList{u"middle press"_s, u"middle release"_s}
            << QStringList{u"MouseDown(4,0) down"_s, u"MouseUp(4,0) up"_s} << ups;
        QTest::newRow("Shift and Alt are told together")
            << QStringList{u"shift press"_s} << QStringList{u"MouseDown(1,5) down"_s} << downs;
        QTest::newRow("two buttons held are told together")
            << QStringList{u"press"_s, u"right press"_s, u"move inside"_s}
            << QStringList{u"MouseDown(1,0) down"_s, u"MouseDown(2,2) down"_s, u"MouseMove(3,0) down"_s} << downs;
        QTest::newRow("SetMoveImg lights the button, raising nothing")
            << QStringList{u"SetMoveImg"_s} << QStringList() << moves;
        QTest::newRow("DelMoveImg puts it out, raising nothing")
            << QStringList{u"SetMoveImg"_s, u"DelMoveImg"_s} << QStringList() << ups;
        QTest::newRow("the mouse leaving puts nothing out")
            << QStringList{u"move inside"_s, u"SetMoveImg"_s, u"move outside"_s} << QStringList{u"MouseMove(0,0) up"_s}
            << moves;
        QTest::newRow("showing the button anew brings the up picture back")
            << QStringList{u"SetMoveImg"_s, u"hide and show"_s} << QStringList() << ups;
        QTest::newRow("the space bar clicks") << QStringList{u"space"_s} << QStringList{u"Click down"_s} << ups;
        QTest::newRow("Enter is left to the form") << QStringList{u"enter"_s} << QStringList() << ups;
        QTest::newRow("the keypad's Enter is left to the form")
            << QStringList{u"keypad enter"_s} << QStringList() << ups;
        QTest::newRow("a disabled button raises nothing")
            << QStringList{u"disable"_s, u"move inside"_s, u"press"_s, u"release"_s, u"space"_s} << QStringList()
            << ups;
    }

    void events()
    {
        QFETCH(const QStringList, steps);
        QFETCH(const QStringList, raised);
        QFETCH(const QString, left);
        Host host;
        for (const QString& step : steps)
            host.step(step);
        QCOMPARE(host.log, raised);
        QCOMPARE(name_of(host.button->shown()), left);
        QTest::mouseRelease(host.windowHandle(), Qt::LeftButton, {}, outside);
        QTest::mouseRelease(host.windowHandle(), Qt::RightButton, {}, outside);
    }

    void a_press_lasts_until_its_release_data()
    {
        QTest::addColumn<QStringList>("steps");
        QTest::addColumn<bool>("held");
        const auto row = [](const char* name, const QStringList& steps, bool held) {
            QTest::newRow(name) << steps << held;
        };
        row("at rest", {}, false);
        row("the mouse over it", {u"move inside"_s}, false);
        row("pressed", {u"press"_s}, true);
        row("pressed and moved", {u"press"_s, u"move inside"_s}, true);
        row("released", {u"press"_s, u"release"_s}, false);
        row("slid off", {u"press"_s, u"move outside"_s}, true);
        row("slid off and come back", {u"press"_s, u"move outside"_s, u"move inside"_s}, true);
        row("slid off and released there", {u"press"_s, u"move outside"_s, u"release outside"_s}, false);
        row("pressed by the right button", {u"right press"_s}, true);
        row("released by the right button", {u"right press"_s, u"right release"_s}, false);
        row("pressed by two, released by one", {u"press"_s, u"right press"_s, u"release"_s}, true);
        row("pressed by two, released by the other", {u"press"_s, u"right press"_s, u"right release"_s}, true);
        row("pressed by two, released by both", {u"press"_s, u"middle press"_s, u"middle release"_s, u"release"_s},
            false);
        row("pressed beside it", {u"press outside"_s, u"move inside"_s}, false);
        row("double clicked", {u"double click"_s}, false);
        row("pressed by the space bar", {u"space"_s}, false);
        row("hidden meanwhile", {u"press"_s, u"hide and show"_s}, false);
        row("disabled meanwhile", {u"press"_s, u"disable"_s}, false);
    }

    void a_press_lasts_until_its_release()
    {
        QFETCH(const QStringList, steps);
        Host host;
        for (const QString& step : steps)
            host.step(step);
        QTEST(host.button->is_held(), "held");
        for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton})
            QTest::mouseRelease(host.windowHandle(), button, {}, outside);
        QVERIFY(!host.button->is_held());
    }

    void the_second_press_of_a_double_click_lasts_as_well()
    {
        Host host;
        bool held = false;
        connect(host.button, &UsrButton::DblClick, this, [&] { held = host.button->is_held(); });
        host.step(u"double click"_s);
        QVERIFY(held);
    }

    void a_dialog_ends_the_press()
    {
        Host host;
        host.step(u"press"_s);
        QWidget dialog;
        dialog.setWindowModality(Qt::ApplicationModal);
        dialog.show();
        QVERIFY(!host.button->is_held());
        dialog.close();
        QTest::mouseRelease(host.windowHandle(), Qt::LeftButton, {}, outside);
    }

    void places_are_told_in_twips()
    {
        Host host;
        QList<float> places;
        connect(host.button, &UsrButton::MouseDown, this, [&places](i16, i16, float x, float y) { places << x << y; });
        connect(host.button, &UsrButton::MouseMove, this, [&places](i16, i16, float x, float y) { places << x << y; });
        connect(host.button, &UsrButton::MouseUp, this, [&places](i16, i16, float x, float y) { places << x << y; });
        host.step(u"press"_s);
        host.step(u"move inside"_s);
        host.step(u"release"_s);
        QCOMPARE(places, (QList<float>{450, 300, 480, 300, 480, 300}));
    }

    void enter_reaches_the_form()
    {
        Host host;
        host.step(u"enter"_s);
        host.step(u"keypad enter"_s);
        QCOMPARE(host.enters, 2);
    }

    void a_held_space_bar_clicks_once()
    {
        Host host;
        QKeyEvent first(QEvent::KeyPress, Qt::Key_Space, {}, u" "_s, false);
        QKeyEvent repeat(QEvent::KeyPress, Qt::Key_Space, {}, u" "_s, true);
        QApplication::sendEvent(host.button, &first);
        QApplication::sendEvent(host.button, &repeat);
        QCOMPARE(host.log, QStringList{u"Click down"_s});
    }

    void pressed_picture_is_on_the_screen_while_click_handlers_run_data()
    {
        QTest::addColumn<QString>("step");
        QTest::newRow("by mouse") << u"release"_s;
        QTest::newRow("by space bar") << u"space"_s;
    }

    void pressed_picture_is_on_the_screen_while_click_handlers_run()
    {
        QFETCH(const QString, step);
        Host host;
        QVERIFY(QTest::qWaitForWindowExposed(&host));
        host.step(u"press"_s);
        QCoreApplication::processEvents();
        host.painted.clear();
        QStringList painted_before_click;
        connect(host.button, &UsrButton::Click, this, [&] { painted_before_click = host.painted; });
        host.step(step);
        QVERIFY(!painted_before_click.isEmpty());
        QCOMPARE(painted_before_click.last(), downs);
    }

    void a_long_handler_holds_the_button_down()
    {
        Host host;
        QString shown;
        QColor colour;
        connect(host.button, &UsrButton::Click, this, [&] {
            QWidget dialog;
            dialog.setWindowModality(Qt::ApplicationModal);
            dialog.show();
            QEventLoop loop;
            const auto look = [&] {
                shown = name_of(host.button->shown());
                colour = host.button->grab().toImage().pixelColor(5, 5);
                loop.quit();
            };
            QMetaObject::invokeMethod(&loop, look, Qt::QueuedConnection);
            loop.exec();
        });
        host.step(u"press"_s);
        host.step(u"release"_s);
        QCOMPARE(shown, downs);
        QCOMPARE(colour, QColor(Qt::red));
        QCOMPARE(host.button->shown(), UsrButton::Shown::up);
    }

    void a_handler_may_end_the_button_data()
    {
        QTest::addColumn<QString>("event");
        QTest::newRow("in MouseUp") << u"MouseUp"_s;
        QTest::newRow("in Click") << u"Click"_s;
    }

    void a_handler_may_end_the_button()
    {
        QFETCH(const QString, event);
        auto* button = new UsrButton;
        const QPointer<UsrButton> alive(button);
        button->set_PictureUp({face_size, [](QPainter&, const QRectF&) {}});
        if (event == u"Click"_s)
            connect(button, &UsrButton::Click, this, [button] { delete button; });
        else
            connect(button, &UsrButton::MouseUp, this, [button] { delete button; });
        button->show();
        QTest::mousePress(button->windowHandle(), Qt::LeftButton, {}, QPoint(5, 5));
        QTest::mouseRelease(button->windowHandle(), Qt::LeftButton, {}, QPoint(5, 5));
        QVERIFY(alive.isNull());
    }

    void pictures_are_shown()
    {
        const Host host;
        const auto colour = [&host] { return host.button->grab().toImage().pixelColor(5, 5); };
        QCOMPARE(colour(), QColor(Qt::green));
        host.button->SetMoveImg();
        QCOMPARE(colour(), QColor(Qt::blue));
        host.button->DelMoveImg();
        QCOMPARE(colour(), QColor(Qt::green));
        QTest::mousePress(host.windowHandle(), Qt::LeftButton, {}, inside);
        QCOMPARE(colour(), QColor(Qt::red));
        QTest::mouseRelease(host.windowHandle(), Qt::LeftButton, {}, inside);
        QCOMPARE(colour(), QColor(Qt::green));
    }

    void an_empty_mouse_over_picture_shows_nothing()
    {
        Host host;
        QPalette ground;
        ground.setColor(QPalette::Window, Qt::yellow);
        host.setPalette(ground);
        host.button->set_PictureMove({});
        host.button->setFocus();
        host.button->SetMoveImg();
        const QImage shown = host.grab(QRect(host.button->pos(), face_size)).toImage();
        for (int x = 0; x < shown.width(); ++x)
            for (int y = 0; y < shown.height(); ++y)
                QCOMPARE(shown.pixelColor(x, y), QColor(Qt::yellow));
    }

    void the_size_is_that_of_the_up_picture()
    {
        const Host host;
        QCOMPARE(host.button->size(), face_size);
        host.button->resize(300, 300);
        QCOMPARE(host.button->size(), face_size);
        host.button->setGeometry(3, 4, 5, 6);
        QCOMPARE(host.button->geometry(), QRect(QPoint(3, 4), face_size));
        host.button->set_PictureDn({QSize(90, 90), [](QPainter&, const QRectF&) {}});
        host.button->set_PictureMove({QSize(90, 90), [](QPainter&, const QRectF&) {}});
        QCOMPARE(host.button->size(), face_size);
        host.button->set_PictureUp({QSize(70, 30), [](QPainter&, const QRectF&) {}});
        QCOMPARE(host.button->size(), QSize(70, 30));
        QCOMPARE(host.button->sizeHint(), QSize(70, 30));
    }

    void focus_is_told_and_seen()
    {
        Host host;
        QWidget other(&host);
        other.setFocusPolicy(Qt::StrongFocus);
        other.show();
        other.setFocus();
        host.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&host));
        QStringList told;
        connect(host.button, &UsrButton::GotFocus, this, [&told] { told.append(u"GotFocus"_s); });
        connect(host.button, &UsrButton::LostFocus, this, [&told] { told.append(u"LostFocus"_s); });
        const QImage without = host.button->grab().toImage();
        QTest::keyClick(&host, Qt::Key_Tab);
        QVERIFY(host.button->hasFocus());
        QVERIFY(host.button->grab().toImage() != without);
        other.setFocus();
        QCOMPARE(host.button->grab().toImage(), without);
        QCOMPARE(told, (QStringList{u"GotFocus"_s, u"LostFocus"_s}));
        QCOMPARE(host.log, QStringList());
    }

    void a_window_that_borrows_the_focus_is_not_told_data()
    {
        QTest::addColumn<int>("reason");
        QTest::newRow("another window") << int(Qt::ActiveWindowFocusReason);
        QTest::newRow("a pop-up menu") << int(Qt::PopupFocusReason);
        QTest::newRow("the menu bar") << int(Qt::MenuBarFocusReason);
    }

    void a_window_that_borrows_the_focus_is_not_told()
    {
        QFETCH(const int, reason);
        Host host;
        QSignalSpy got(host.button, &UsrButton::GotFocus);
        QSignalSpy lost(host.button, &UsrButton::LostFocus);
        connect(host.button, &UsrButton::LostFocus, host.button, &UsrButton::DelMoveImg);
        host.button->SetMoveImg();
        QFocusEvent out(QEvent::FocusOut, static_cast<Qt::FocusReason>(reason));
        QApplication::sendEvent(host.button, &out);
        QCOMPARE(host.button->shown(), UsrButton::Shown::move);
        QFocusEvent in(QEvent::FocusIn, static_cast<Qt::FocusReason>(reason));
        QApplication::sendEvent(host.button, &in);
        QCOMPARE(got.count() + lost.count(), 0);
    }

    void assistive_programs_know_and_press_it()
    {
        Host host;
        QAccessibleInterface* face = QAccessible::queryAccessibleInterface(host.button);
        QVERIFY(face != nullptr);
        QCOMPARE(face->role(), QAccessible::Button);
        host.button->setToolTip(u"Run the burning program"_s);
        QCOMPARE(face->text(QAccessible::Name), u"Run the burning program"_s);
        host.button->setToolTip(u"Brenner Programm starten"_s);
        QCOMPARE(face->text(QAccessible::Name), u"Brenner Programm starten"_s);
        host.button->setAccessibleName(u"Burn"_s);
        host.button->setToolTip(u"Run the burning program"_s);
        QCOMPARE(face->text(QAccessible::Name), u"Burn"_s);
        face->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QTRY_COMPARE(host.log, QStringList{u"Click down"_s});
        QCOMPARE(host.button->shown(), UsrButton::Shown::up);
    }
};

QUILMO_UI_TEST(TestUsrButton)

#include "test_usr_button.moc"
