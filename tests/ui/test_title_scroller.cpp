#include "core/mod_of_grobal_var.h"
#include "player/TitleScroller.h"

#include "platform/twips.h"
#include "test_main.h"

#include <QTest>
#include <QTimerEvent>

using namespace Qt::StringLiterals;

namespace {

const QString lead(38, u' ');
const QString title = u"Artist - Title"_s;

/// A form with the title's box on it, wide enough for `title` and no more.
struct Scene
{
    Scene()
    {
        shared = {};
        scroller.prepare();
    }
    ~Scene() { shared = {}; }
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    int text_width(const QString& text) const { return to_twips(form.fontMetrics().horizontalAdvance(text)); }

    void lay_out(const QString& text)
    {
        shared.scroll_title = text;
        scroller.lay_out();
    }

    void tick()
    {
        if (!timer.isActive())
            qFatal("the timer is off");
        QTimerEvent event(timer.timerId());
        QCoreApplication::sendEvent(&timer, &event);
    }

    QWidget form;
    TextBox* const text_box = new TextBox(&form);
    Placed<TextBox> box{*text_box, Place(*text_box, 0, 0, text_width(title) + 300, 240)};
    QTimer timer;
    TitleScroller scroller{box, timer, form};
};

} // namespace

class TestTitleScroller : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void prepare_sets_the_timer_and_the_height()
    {
        Scene scene;
        scene.timer.start(10);
        scene.box.set_Height(1);
        scene.scroller.prepare();
        QCOMPARE(scene.timer.interval(), 350);
        QVERIFY(!scene.timer.isActive());
        QCOMPARE(scene.box.Height(), to_twips(QFontMetrics(scene.form.font()).height()));
    }

    void a_title_stands_still_if_it_fits_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("more"); ///< twips of the box beyond the width of `title` and 300
        QTest::addColumn<bool>("turns");
        QTest::newRow("with 300 twips to spare") << title << 0 << false;
        QTest::newRow("with one twip less") << title << -1 << true;
        QTest::newRow("with much to spare") << title << 3000 << false;
        QTest::newRow("a title a letter longer") << title + u'e' << 0 << true;
        QTest::newRow("an empty title") << QString() << 0 << false;
        QTest::newRow("a very long title") << QString(250, u'W') << 0 << true;
    }

    void a_title_stands_still_if_it_fits()
    {
        QFETCH(const QString, text);
        QFETCH(const int, more);
        QFETCH(const bool, turns);
        Scene scene;
        scene.box.set_Width(scene.box.Width() + more);
        scene.lay_out(text);
        QCOMPARE(scene.timer.isActive(), turns);
        QCOMPARE(scene.text_box->Text(), turns ? QString() : text);
        QCOMPARE(shared.scroll_title, turns ? lead + text : text);
        QCOMPARE(scene.text_box->alignment().testFlag(Qt::AlignHCenter), !turns);
    }

    void a_long_title_turns_by_one_character()
    {
        Scene scene;
        const QString text = title + u" and more"_s;
        scene.lay_out(text);
        const QString whole = lead + text;
        for (int i = 1; i <= whole.size(); ++i) {
            scene.tick();
            QCOMPARE(shared.scroll_title, whole.mid(i) + whole.left(i));
            QCOMPARE(scene.text_box->Text(), shared.scroll_title);
        }
        QCOMPARE(shared.scroll_title, whole);
    }

    void it_turns_by_itself()
    {
        Scene scene;
        scene.timer.setInterval(1);
        scene.lay_out(title + u" and more"_s);
        QTRY_VERIFY_WITH_TIMEOUT(scene.text_box->Text().startsWith(u'A'), 30000);
        QVERIFY(scene.timer.isActive());
    }

    void no_character_is_ever_split_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("after_one");
        QTest::newRow("Korean, two bytes in the code page") << u"서태지"_s << u"태지서"_s;
        QTest::newRow("beyond the basic plane") << u"\U0001D11Eab"_s << u"ab\U0001D11E"_s;
        QTest::newRow("two such in a row") << u"\U0001D11E\U0001F600a"_s << u"\U0001F600a\U0001D11E"_s;
        QTest::newRow("a stray byte of a name") << u"\xdcf6rk"_s << u"rk\xdcf6"_s;
        QTest::newRow("half a pair before a letter") << u"\xd834rk"_s << u"rk\xd834"_s;
    }

    void no_character_is_ever_split()
    {
        QFETCH(const QString, text);
        QFETCH(const QString, after_one);
        Scene scene;
        scene.box.set_Width(0);
        scene.lay_out(text);
        for (int i = 0; i < lead.size(); ++i)
            scene.tick();
        QCOMPARE(shared.scroll_title, text + lead);
        scene.tick();
        QCOMPARE(shared.scroll_title.remove(lead), after_one);
    }

    void one_character_alone_turns()
    {
        Scene scene;
        scene.box.set_Width(0);
        scene.lay_out({});
        shared.scroll_title = u"a"_s;
        scene.tick();
        QCOMPARE(shared.scroll_title, u"a"_s);
        shared.scroll_title.clear();
        scene.tick();
        QCOMPARE(shared.scroll_title, QString());
    }

    void a_long_title_after_a_short_one_stays_centred()
    {
        Scene scene;
        scene.lay_out(title + title);
        QVERIFY(!scene.text_box->alignment().testFlag(Qt::AlignHCenter));
        scene.lay_out(title);
        QVERIFY(scene.text_box->alignment().testFlag(Qt::AlignHCenter));
        scene.lay_out(title + title);
        scene.tick();
        QVERIFY(scene.text_box->alignment().testFlag(Qt::AlignHCenter));
    }

    void a_short_title_ends_the_turning()
    {
        Scene scene;
        scene.lay_out(title + title);
        scene.lay_out(title);
        QVERIFY(!scene.timer.isActive());
        QCOMPARE(scene.text_box->Text(), title);
    }

    void another_long_title_begins_with_its_own_lead()
    {
        Scene scene;
        scene.lay_out(title + title);
        scene.tick();
        scene.lay_out(title + u" and more"_s);
        QCOMPARE(scene.text_box->Text(), QString());
        QCOMPARE(shared.scroll_title, lead + title + u" and more"_s);
        QVERIFY(scene.timer.isActive());
    }

    void the_end_of_the_music_does_not_end_the_turning()
    {
        Scene scene;
        shared.is_playing = 1;
        scene.lay_out(title + title);
        shared.is_playing = 0;
        const QString before = shared.scroll_title;
        scene.tick();
        QVERIFY(shared.scroll_title != before);
        QVERIFY(scene.timer.isActive());
    }

    void a_box_of_another_size_waits_for_the_next_title()
    {
        Scene scene;
        scene.lay_out(title + title);
        scene.box.set_Width(30000);
        scene.tick();
        QVERIFY(scene.timer.isActive());
        scene.lay_out(title + title);
        QVERIFY(!scene.timer.isActive());
        scene.box.set_Width(1);
        QVERIFY(!scene.timer.isActive());
        QCOMPARE(scene.text_box->Text(), title + title);
    }
};

QUILMO_UI_TEST(TestTitleScroller)

#include "test_title_scroller.moc"
