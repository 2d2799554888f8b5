#include "core/mod_of_grobal_var.h"
#include "frame/Help_Dlg.h"
#include "frame/look.h"
#include "frame/web_address.h"
#include "platform/controls/ShellExecute.h"
#include "platform/controls/palette.h"
#include "platform/language.h"
#include "test_main.h"

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QScopeGuard>
#include <QTest>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

const QColor at_rest(0x38, 0x4A, 0xF2);
const QColor under_mouse(0x00, 0x80, 0xFF);

double linear(int part)
{
    const double share = part / 255.0;
    return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& colour)
{
    return 0.2126 * linear(colour.red()) + 0.7152 * linear(colour.green()) + 0.0722 * linear(colour.blue());
}

double contrast(const QColor& one, const QColor& other)
{
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

/// How many pixels of a picture have this very colour.
int pixels_of(const QImage& image, const QColor& colour)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += image.pixelColor(x, y) == colour ? 1 : 0;
    }
    return count;
}

} // namespace

class TestAbout : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { apply_look(); }
    void init();
    void cleanup();

    void it_opens_with_the_link_at_rest();
    void the_link_is_lit_under_the_mouse_and_put_out_by_the_form();
    void the_texts_are_ground_to_the_mouse();
    void the_ok_button_is_lit_under_the_mouse_and_put_out_by_the_form();
    void the_lit_link_stays_while_the_mouse_is_on_the_button();
    void a_press_of_the_link_opens_the_address_data();
    void a_press_of_the_link_opens_the_address();
    void a_double_click_opens_the_address_once();
    void a_key_held_down_presses_nothing_data();
    void a_key_held_down_presses_nothing();
    void nothing_shows_without_a_browser();
    void ok_closes_data();
    void ok_closes();
    void the_tab_key_goes_to_the_link_and_back();
    void the_focus_shows_on_a_link_at_rest();
    void the_link_has_its_font();
    void the_link_shows_its_colour_and_ground();
    void all_texts_stand_out_data();
    void all_texts_stand_out();
    void it_stays_english_data();
    void it_stays_english();
    void assistive_programs_see_a_link();
    void every_text_has_its_room();

private:
    WebLink& link() const { return *dialog_->findChild<WebLink*>(u"Label_ylm_link"_s); }
    UsrButton& ok() const { return *dialog_->findChild<UsrButton*>(u"cmd_ok"_s); }
    QLabel& label(const QString& name) const { return *dialog_->findChild<QLabel*>(name); }
    QString text(const QString& name) const { return label(name).text(); }
    /// Moves the mouse over the form beside all its controls.
    void move_over_form() const { QTest::mouseMove(dialog_->windowHandle(), QPoint(3, 3)); }
    void move_over(const QWidget& control) const
    {
        QTest::mouseMove(dialog_->windowHandle(), control.mapTo(dialog_.get(), control.rect().center()));
    }

    std::unique_ptr<TestDisk> disk_;
    std::unique_ptr<Help_Dlg> dialog_;
    QStringList opened_; ///< the addresses handed to the browser
    bool has_browser_ = true;
};

void TestAbout::init()
{
    disk_ = std::make_unique<TestDisk>();
    opened_.clear();
    has_browser_ = true;
    set_address_opener([this](const QUrl& address) {
        opened_.append(address.toString());
        return has_browser_;
    });
    dialog_ = std::make_unique<Help_Dlg>(nullptr);
    dialog_->show();
    QVERIFY(QTest::qWaitForWindowActive(dialog_.get()));
    move_over_form();
}

void TestAbout::cleanup()
{
    dialog_.reset();
    set_address_opener({});
    disk_.reset();
}

void TestAbout::it_opens_with_the_link_at_rest()
{
    const Help_Dlg fresh(nullptr);
    QCOMPARE(fresh.findChild<WebLink*>(u"Label_ylm_link"_s)->ForeColor(), at_rest);
    QCOMPARE(text(u"Label3"_s), u"for more information"_s);
    QCOMPARE(text(u"Label4"_s), u"Visit : "_s);
    QVERIFY(!text(u"Label1"_s).isEmpty());
    QVERIFY(!text(u"Label2"_s).isEmpty());
    QVERIFY(ok().hasFocus());
}

void TestAbout::the_link_is_lit_under_the_mouse_and_put_out_by_the_form()
{
    move_over(link());
    QCOMPARE(link().ForeColor(), under_mouse);
    move_over_form();
    QCOMPARE(link().ForeColor(), at_rest);
}

void TestAbout::the_texts_are_ground_to_the_mouse()
{
    for (const QString& name : {u"Label1"_s, u"Label2"_s, u"Label3"_s, u"Label4"_s}) {
        move_over(link());
        QCOMPARE(link().ForeColor(), under_mouse);
        move_over(label(name));
        QCOMPARE(link().ForeColor(), at_rest);
    }
}

void TestAbout::the_ok_button_is_lit_under_the_mouse_and_put_out_by_the_form()
{
    QCOMPARE(ok().shown(), UsrButton::Shown::up);
    move_over(ok());
    QCOMPARE(ok().shown(), UsrButton::Shown::move);
    move_over_form();
    QCOMPARE(ok().shown(), UsrButton::Shown::up);
}

void TestAbout::the_lit_link_stays_while_the_mouse_is_on_the_button()
{
    move_over(link());
    move_over(ok());
    QCOMPARE(link().ForeColor(), under_mouse);
    move_over(link());
    QCOMPARE(ok().shown(), UsrButton::Shown::move);
}

void TestAbout::a_press_of_the_link_opens_the_address_data()
{
    QTest::addColumn<int>("key");

    QTest::newRow("by the mouse") << 0;
    QTest::newRow("by Space") << int(Qt::Key_Space);
    QTest::newRow("by Return") << int(Qt::Key_Return);
    QTest::newRow("by Enter") << int(Qt::Key_Enter);
}

void TestAbout::a_press_of_the_link_opens_the_address()
{
    QFETCH(int, key);

    if (key == 0) {
        QTest::mouseClick(&link(), Qt::LeftButton);
        QVERIFY(ok().hasFocus());
    } else {
        QTest::keyClick(dialog_.get(), Qt::Key_Tab);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key(key));
    }
    QCOMPARE(opened_, QStringList{web_address()});
    QVERIFY(dialog_->isVisible());
}

void TestAbout::a_double_click_opens_the_address_once()
{
    QTest::mouseDClick(dialog_->windowHandle(), Qt::LeftButton, {},
                       link().mapTo(dialog_.get(), link().rect().center()));
    QCOMPARE(opened_, QStringList{web_address()});
}

void TestAbout::a_key_held_down_presses_nothing_data()
{
    QTest::addColumn<bool>("on_link");
    QTest::addColumn<int>("key");

    QTest::newRow("Return on the link") << true << int(Qt::Key_Return);
    QTest::newRow("Enter on the link") << true << int(Qt::Key_Enter);
    QTest::newRow("Return on the button") << false << int(Qt::Key_Return);
    QTest::newRow("Space on the button") << false << int(Qt::Key_Space);
}

void TestAbout::a_key_held_down_presses_nothing()
{
    QFETCH(bool, on_link);
    QFETCH(int, key);

    if (on_link)
        QTest::keyClick(dialog_.get(), Qt::Key_Tab);
    QKeyEvent repeat(QEvent::KeyPress, key, {}, {}, true);
    QApplication::sendEvent(QApplication::focusWidget(), &repeat);
    QCOMPARE(opened_, QStringList());
    QVERIFY(dialog_->isVisible());
}

void TestAbout::nothing_shows_without_a_browser()
{
    const NotedMessages messages;
    has_browser_ = false;
    QTest::mouseClick(&link(), Qt::LeftButton);
    QCOMPARE(opened_, QStringList{web_address()});
    QCOMPARE(QApplication::activeModalWidget(), nullptr);
    QCOMPARE(QApplication::activeWindow(), dialog_.get());
}

void TestAbout::ok_closes_data()
{
    QTest::addColumn<int>("key");

    QTest::newRow("by the mouse") << 0;
    QTest::newRow("by Space") << int(Qt::Key_Space);
    QTest::newRow("by Return") << int(Qt::Key_Return);
    QTest::newRow("by Enter") << int(Qt::Key_Enter);
    QTest::newRow("by Escape") << int(Qt::Key_Escape);
}

void TestAbout::ok_closes()
{
    QFETCH(int, key);

    if (key == 0)
        QTest::mouseClick(&ok(), Qt::LeftButton);
    else
        QTest::keyClick(QApplication::focusWidget(), Qt::Key(key));
    QVERIFY(!dialog_->isVisible());
    QCOMPARE(opened_, QStringList());
}

void TestAbout::the_tab_key_goes_to_the_link_and_back()
{
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QVERIFY(link().hasFocus());
    QCOMPARE(link().ForeColor(), under_mouse);
    QCOMPARE(ok().shown(), UsrButton::Shown::up);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QVERIFY(ok().hasFocus());
    QCOMPARE(link().ForeColor(), at_rest);
    QCOMPARE(ok().shown(), UsrButton::Shown::move);
}

void TestAbout::the_focus_shows_on_a_link_at_rest()
{
    const QImage without = link().grab().toImage();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    move_over(link());
    move_over_form();
    QCOMPARE(link().ForeColor(), at_rest);
    QVERIFY(link().hasFocus());
    QCOMPARE(pixels_of(without, palette::accent), 0);
    QVERIFY(pixels_of(link().grab().toImage(), palette::accent) > link().width());
}

void TestAbout::the_link_has_its_font()
{
    QCOMPARE(link().font().families().first(), u"Trebuchet MS"_s);
    QVERIFY(link().font().families().size() > 1);
}

void TestAbout::the_link_shows_its_colour_and_ground()
{
    const QPoint ground(link().width() / 2, 3);
    const QImage resting = link().grab().toImage();
    QVERIFY(pixels_of(resting, at_rest) > 0);
    QCOMPARE(resting.pixelColor(ground), link().BackColor());
    QCOMPARE(link().BackColor(), palette::paper);
    link().light();
    const QImage lit = link().grab().toImage();
    QVERIFY(pixels_of(lit, under_mouse) > 0);
    QCOMPARE(lit.pixelColor(ground), link().BackColor());
}

void TestAbout::all_texts_stand_out_data()
{
    QTest::addColumn<bool>("lit");

    QTest::newRow("with the link at rest") << false;
    QTest::newRow("with the link lit") << true;
}

void TestAbout::all_texts_stand_out()
{
    QFETCH(bool, lit);

    if (lit)
        link().light();
    QVERIFY(contrast(link().ForeColor(), link().BackColor()) >= 4.5);
    const QImage form = dialog_->grab().toImage();
    for (const QString& name : {u"Label1"_s, u"Label2"_s, u"Label3"_s, u"Label4"_s}) {
        const QLabel& line = label(name);
        const QColor ground = form.pixelColor(line.mapTo(dialog_.get(), QPoint(0, 0)));
        QCOMPARE(ground, palette::paper);
        QVERIFY(contrast(line.palette().color(QPalette::Active, QPalette::WindowText), ground) >= 4.5);
    }
}

void TestAbout::it_stays_english_data()
{
    QTest::addColumn<Language>("language");

    QTest::newRow("in Korean") << korean;
    QTest::newRow("in German") << german;
}

void TestAbout::it_stays_english()
{
    QFETCH(Language, language);

    const auto back = qScopeGuard([] { set_program_language(english); });
    set_program_language(language);
    shared.language_id = language;
    Help_Dlg dialog(nullptr);
    QCOMPARE(dialog.windowTitle(), dialog_->windowTitle());
    QCOMPARE(dialog.findChild<UsrButton*>(u"cmd_ok"_s)->toolTip(), u"OK"_s);
    ok().clearFocus();
    dialog.findChild<UsrButton*>(u"cmd_ok"_s)->clearFocus();
    QCOMPARE(dialog.grab().toImage(), dialog_->grab().toImage());
}

void TestAbout::assistive_programs_see_a_link()
{
    QAccessibleInterface* seen = QAccessible::queryAccessibleInterface(&link());
    QVERIFY(seen != nullptr);
    QCOMPARE(seen->role(), QAccessible::Link);
    QCOMPARE(seen->text(QAccessible::Name), link().text());
    QVERIFY(!link().text().isEmpty() && web_address().contains(link().text()));
    QVERIFY(!link().text().endsWith(u'/'));
    QVERIFY(seen->actionInterface()->actionNames().contains(QAccessibleActionInterface::pressAction()));
    seen->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(opened_, QStringList{web_address()});
    QCOMPARE(QAccessible::queryAccessibleInterface(&ok())->text(QAccessible::Name), u"OK"_s);
}

void TestAbout::every_text_has_its_room()
{
    for (const QString& name : {u"Label1"_s, u"Label2"_s, u"Label3"_s, u"Label4"_s}) {
        const QLabel& line = label(name);
        QVERIFY(QFontMetrics(line.font()).horizontalAdvance(line.text()) <= line.width());
        QVERIFY(dialog_->rect().contains(line.geometry()));
    }
    QVERIFY(QFontMetrics(link().font()).horizontalAdvance(link().text()) <= link().width());
    QVERIFY(dialog_->rect().contains(link().geometry()));
    QVERIFY(dialog_->rect().contains(ok().geometry()));
    QVERIFY(!link().geometry().intersects(label(u"Label4"_s).geometry()));
}

QUILMO_UI_TEST(TestAbout)

#include "test_about.moc"
