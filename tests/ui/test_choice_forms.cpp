#include "convert/LineButton.h"
#include "convert/Select_FIF_Format.h"
#include "convert/Set_genre_type.h"
#include "core/mod_of_grobal_var.h"
#include "core/user_settings.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/TextBox.h"
#include "platform/controls/UsrButton.h"
#include "test_main.h"

#include <QApplication>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QColor disabled_colour(0xE0, 0xE0, 0xE0);

QColor ground_of(const QWidget& box)
{
    return box.palette().color(box.isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::Base);
}

} // namespace

class TestChoiceForms : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void the_present_shape_is_set_data();
    void the_present_shape_is_set();
    void every_option_shows_its_shape();
    void ok_takes_the_shape_data();
    void ok_takes_the_shape();
    void ok_without_an_option_takes_none();
    void cancel_keeps_the_shape();
    void a_genre_stays_in_its_grey_field();
    void the_present_way_is_set_data();
    void the_present_way_is_set();
    void ok_takes_the_way_data();
    void ok_takes_the_way();
    void cancel_keeps_the_way();
    void the_present_option_has_the_focus();
    void keys_choose();
    void arrows_choose_the_way();
    void enter_on_an_option_takes_it();
    void enter_on_cancel_changes_nothing();
    void escape_changes_nothing();
    void the_choice_outlives_the_run();
    void the_pointer_lights_one_button();
    void every_option_has_its_picture();

private:
    template<typename Form> void open()
    {
        form_ = std::make_unique<Form>(*cboGenre_, *txtGenre_, nullptr);
        form_->show();
        QVERIFY(QTest::qWaitForWindowExposed(form_.get()));
    }
    QRadioButton& option(const QString& name) const { return *form_->findChild<QRadioButton*>(name); }
    UsrButton& button(const QString& name) const { return *form_->findChild<UsrButton*>(name); }
    QString chosen_option() const;
    /// Clicks on an option's line, where its text is painted.
    void choose(const QString& name) const
    {
        QRadioButton& line = option(name);
        QTest::mouseClick(&line, Qt::LeftButton, {}, QPoint(line.width() / 2, line.height() / 2));
    }
    void press(const QString& name) const { QTest::mouseClick(&button(name), Qt::LeftButton); }

    std::unique_ptr<TestDisk> disk_;
    std::unique_ptr<QWidget> main_form_;
    ComboBox* cboGenre_ = nullptr;
    TextBox* txtGenre_ = nullptr;
    std::unique_ptr<ChoiceForm> form_;
};

void TestChoiceForms::init()
{
    disk_ = std::make_unique<TestDisk>();
    main_form_ = std::make_unique<QWidget>();
    cboGenre_ = new ComboBox(main_form_.get());
    txtGenre_ = new TextBox(main_form_.get());
    txtGenre_->hide();
    main_form_->show();
}

void TestChoiceForms::cleanup()
{
    form_.reset();
    main_form_.reset();
    disk_.reset();
}

QString TestChoiceForms::chosen_option() const
{
    for (const QRadioButton* each : form_->findChildren<QRadioButton*>()) {
        if (each->isChecked())
            return each->objectName();
    }
    return {};
}

void TestChoiceForms::the_present_shape_is_set_data()
{
    QTest::addColumn<i16>("fif_type");
    QTest::addColumn<QString>("option_name");
    QTest::addColumn<i16>("selected_type");

    for (i16 type = 1; type <= 6; ++type)
        QTest::addRow("shape %d", type) << type << u"Option_%1"_s.arg(type) << type;
    QTest::newRow("no shape below") << i16(0) << QString() << i16(0);
    QTest::newRow("no shape above") << i16(7) << QString() << i16(0);
}

void TestChoiceForms::the_present_shape_is_set()
{
    QFETCH(i16, fif_type);
    QFETCH(QString, option_name);
    QFETCH(i16, selected_type);

    shared.fif_type = fif_type;
    open<Select_FIF_Format>();
    QCOMPARE(chosen_option(), option_name);
    QCOMPARE(static_cast<const Select_FIF_Format&>(*form_).selected_type(), selected_type);
}

void TestChoiceForms::every_option_shows_its_shape()
{
    open<Select_FIF_Format>();
    const QStringList shapes = {u"[Artist][Title][Genre].mp3"_s, u"[Artist][Title].mp3"_s,
                                u"(Artist)(Title)(Genre).mp3"_s, u"(Artist)(Title).mp3"_s,
                                u"Artist-Title-Genre.mp3"_s,     u"Artist-Title.mp3"_s};
    for (int type = 1; type <= 6; ++type) {
        const QRadioButton& line = option(u"Option_%1"_s.arg(type));
        QCOMPARE(line.accessibleName(), shapes[type - 1]);
        QCOMPARE(line.text(), QString()); // the form's picture bears the text
    }
}

void TestChoiceForms::ok_takes_the_shape_data()
{
    QTest::addColumn<i16>("fif_type");
    QTest::addColumn<bool>("takes_genre");

    for (i16 type = 1; type <= 6; ++type)
        QTest::addRow("shape %d", type) << type << (type == 1 || type == 3 || type == 5);
}

void TestChoiceForms::ok_takes_the_shape()
{
    QFETCH(i16, fif_type);
    QFETCH(bool, takes_genre);

    shared.fif_type = fif_type == 6 ? 1 : 6;
    cboGenre_->setEnabled(!takes_genre);
    txtGenre_->setEnabled(!takes_genre);
    const bool list_shown = cboGenre_->isVisible();
    open<Select_FIF_Format>();
    choose(u"Option_%1"_s.arg(fif_type));
    press(u"cmd_ok"_s);
    QCOMPARE(shared.fif_type, fif_type);
    QCOMPARE(cboGenre_->isEnabled(), takes_genre);
    QCOMPARE(txtGenre_->isEnabled(), takes_genre);
    QCOMPARE(ground_of(*txtGenre_), takes_genre ? QApplication::palette().color(QPalette::Base) : disabled_colour);
    QCOMPARE(cboGenre_->isVisible(), list_shown);
    QVERIFY(!form_->isVisible());
}

void TestChoiceForms::ok_without_an_option_takes_none()
{
    shared.fif_type = 9;
    cboGenre_->setEnabled(false);
    open<Select_FIF_Format>();
    press(u"cmd_ok"_s);
    QCOMPARE(shared.fif_type, i16(0));
    QVERIFY(!cboGenre_->isEnabled());
    QVERIFY(txtGenre_->isEnabled());
}

void TestChoiceForms::cancel_keeps_the_shape()
{
    shared.fif_type = 3;
    open<Select_FIF_Format>();
    choose(u"Option_4"_s);
    QCOMPARE(chosen_option(), u"Option_4"_s);
    press(u"cmd_cancel"_s);
    QVERIFY(!form_->isVisible());
    QCOMPARE(shared.fif_type, i16(3));
    QVERIFY(txtGenre_->isEnabled());
    open<Select_FIF_Format>();
    QCOMPARE(chosen_option(), u"Option_3"_s);
}

void TestChoiceForms::a_genre_stays_in_its_grey_field()
{
    shared.genre_type = 2;
    txtGenre_->show();
    cboGenre_->hide();
    txtGenre_->set_Text(u"Rock"_s);
    open<Select_FIF_Format>();
    choose(u"Option_2"_s);
    press(u"cmd_ok"_s);
    QVERIFY(!txtGenre_->isEnabled());
    QCOMPARE(ground_of(*txtGenre_), disabled_colour);
    QCOMPARE(txtGenre_->Text(), u"Rock"_s);
    QVERIFY(txtGenre_->isVisible());
}

void TestChoiceForms::the_present_way_is_set_data()
{
    QTest::addColumn<i16>("genre_type");
    QTest::addColumn<QString>("option_name");

    QTest::newRow("from the list") << i16(1) << u"Option_combo"_s;
    QTest::newRow("as text") << i16(2) << u"Option_edit"_s;
    QTest::newRow("neither") << i16(3) << QString();
}

void TestChoiceForms::the_present_way_is_set()
{
    QFETCH(i16, genre_type);
    QFETCH(QString, option_name);

    shared.genre_type = genre_type;
    open<Set_genre_type>();
    QCOMPARE(chosen_option(), option_name);
    QCOMPARE(static_cast<const Set_genre_type&>(*form_).selected_genre_type(),
             i16(option_name.isEmpty() ? 0 : genre_type));
}

void TestChoiceForms::ok_takes_the_way_data()
{
    QTest::addColumn<i16>("fif_type");
    QTest::addColumn<QString>("option_name");

    for (i16 type = 1; type <= 6; ++type) {
        QTest::addRow("from the list, shape %d", type) << type << u"Option_combo"_s;
        QTest::addRow("as text, shape %d", type) << type << u"Option_edit"_s;
    }
}

void TestChoiceForms::ok_takes_the_way()
{
    QFETCH(i16, fif_type);
    QFETCH(QString, option_name);

    const bool as_text = option_name == u"Option_edit"_s;
    const bool takes_genre = fif_type % 2 == 1;
    shared.fif_type = fif_type;
    shared.genre_type = as_text ? 1 : 2;
    cboGenre_->setEnabled(!takes_genre);
    txtGenre_->setEnabled(!takes_genre);
    open<Set_genre_type>();
    choose(option_name);
    press(u"cmd_ok"_s);
    QCOMPARE(shared.genre_type, i16(as_text ? 2 : 1));
    QCOMPARE(cboGenre_->isVisible(), !as_text);
    QCOMPARE(txtGenre_->isVisible(), as_text);
    QCOMPARE((cboGenre_->focusPolicy() & Qt::TabFocus) != 0, !as_text);
    QCOMPARE((txtGenre_->focusPolicy() & Qt::TabFocus) != 0, as_text);
    QCOMPARE(cboGenre_->isEnabled(), takes_genre);
    QCOMPARE(txtGenre_->isEnabled(), takes_genre);
    QCOMPARE(ground_of(*txtGenre_), takes_genre ? QApplication::palette().color(QPalette::Base) : disabled_colour);
    QVERIFY(!form_->isVisible());
}

void TestChoiceForms::cancel_keeps_the_way()
{
    open<Set_genre_type>();
    choose(u"Option_edit"_s);
    press(u"cmd_cancel"_s);
    QCOMPARE(shared.genre_type, i16(1));
    QVERIFY(cboGenre_->isVisible());
    QVERIFY(!txtGenre_->isVisible());
    open<Set_genre_type>();
    QCOMPARE(chosen_option(), u"Option_combo"_s);
}

void TestChoiceForms::the_present_option_has_the_focus()
{
    shared.fif_type = 4;
    open<Select_FIF_Format>();
    QVERIFY(form_->focusWidget() != nullptr);
    QCOMPARE(form_->focusWidget()->objectName(), u"Option_4"_s);
}

void TestChoiceForms::keys_choose()
{
    open<Select_FIF_Format>();
    option(u"Option_1"_s).setFocus();
    QTest::keyClick(form_->focusWidget(), Qt::Key_Down);
    QCOMPARE(chosen_option(), u"Option_2"_s);
    QTest::keyClick(form_->focusWidget(), Qt::Key_Down);
    QCOMPARE(chosen_option(), u"Option_3"_s);
    QTest::keyClick(form_->focusWidget(), Qt::Key_Tab);
    QCOMPARE(form_->focusWidget()->objectName(), u"cmd_ok"_s);
    QTest::keyClick(form_->focusWidget(), Qt::Key_Return);
    QCOMPARE(shared.fif_type, i16(3));
    QVERIFY(!form_->isVisible());
}

void TestChoiceForms::arrows_choose_the_way()
{
    open<Set_genre_type>();
    QCOMPARE(form_->focusWidget()->objectName(), u"Option_combo"_s);
    QTest::keyClick(form_->focusWidget(), Qt::Key_Right);
    QCOMPARE(chosen_option(), u"Option_edit"_s);
    QTest::keyClick(form_->focusWidget(), Qt::Key_Left);
    QCOMPARE(chosen_option(), u"Option_combo"_s);
    QTest::keyClick(form_->focusWidget(), Qt::Key_Right);
    QTest::keyClick(form_->focusWidget(), Qt::Key_Return);
    QCOMPARE(shared.genre_type, i16(2));
}

void TestChoiceForms::enter_on_an_option_takes_it()
{
    open<Select_FIF_Format>();
    option(u"Option_1"_s).setFocus();
    QTest::keyClick(form_->focusWidget(), Qt::Key_Down);
    QTest::keyClick(form_->focusWidget(), Qt::Key_Enter);
    QCOMPARE(shared.fif_type, i16(2));
    QVERIFY(!form_->isVisible());
}

void TestChoiceForms::enter_on_cancel_changes_nothing()
{
    open<Select_FIF_Format>();
    choose(u"Option_5"_s);
    button(u"cmd_cancel"_s).setFocus();
    QTest::keyClick(form_->focusWidget(), Qt::Key_Return);
    QCOMPARE(shared.fif_type, i16(1));
    QVERIFY(!form_->isVisible());
}

void TestChoiceForms::escape_changes_nothing()
{
    open<Select_FIF_Format>();
    choose(u"Option_5"_s);
    QTest::keyClick(form_.get(), Qt::Key_Escape);
    QCOMPARE(shared.fif_type, i16(1));
    QVERIFY(!form_->isVisible());
}

void TestChoiceForms::the_choice_outlives_the_run()
{
    open<Select_FIF_Format>();
    choose(u"Option_6"_s);
    press(u"cmd_ok"_s);
    open<Set_genre_type>();
    choose(u"Option_edit"_s);
    press(u"cmd_ok"_s);
    write_settings();
    shared.fif_type = shared.genre_type = 1;
    read_settings();
    QCOMPARE(shared.fif_type, i16(6));
    QCOMPARE(shared.genre_type, i16(2));
    open<Select_FIF_Format>();
    QCOMPARE(chosen_option(), u"Option_6"_s);
    open<Set_genre_type>();
    QCOMPARE(chosen_option(), u"Option_edit"_s);
}

void TestChoiceForms::the_pointer_lights_one_button()
{
    open<Set_genre_type>();
    option(u"Option_combo"_s).setFocus();
    const auto lit = [this] {
        QStringList names;
        for (const UsrButton* each : form_->findChildren<UsrButton*>()) {
            if (each->shown() == UsrButton::Shown::move)
                names.append(each->objectName());
        }
        return names;
    };
    for (const QString& name : {u"cmd_ok"_s, u"cmd_cancel"_s}) {
        QTest::mouseMove(&button(name));
        QTRY_COMPARE(lit(), QStringList{name});
    }
    QTest::mouseMove(&option(u"Option_edit"_s)); // the options are part of the form's picture
    QTRY_COMPARE(lit(), QStringList());
    QTest::mouseMove(&button(u"cmd_ok"_s));
    QTRY_COMPARE(lit(), QStringList{u"cmd_ok"_s});
    QTest::mouseMove(form_.get(), QPoint(2, form_->height() - 2));
    QTRY_COMPARE(lit(), QStringList());
}

void TestChoiceForms::every_option_has_its_picture()
{
    const auto check = [this] {
        const QImage image = form_->grab().toImage();
        for (const QRadioButton* each : form_->findChildren<QRadioButton*>()) {
            const QRect picture = each->geometry().adjusted(LineButton<QRadioButton>::caption_left, 0, 0, 0);
            int dark = 0;
            for (int x = picture.left(); x <= picture.right(); ++x) {
                for (int y = picture.top(); y <= picture.bottom(); ++y)
                    dark += qGray(image.pixel(x, y)) < 100 ? 1 : 0;
            }
            QVERIFY2(dark > 100, qPrintable(u"%1: %2 dark pixels"_s.arg(each->objectName()).arg(dark)));
        }
    };
    shared.fif_type = shared.genre_type = 0; // so that no focus ring counts
    open<Select_FIF_Format>();
    check();
    open<Set_genre_type>();
    check();
}

QUILMO_UI_TEST(TestChoiceForms)

#include "test_choice_forms.moc"
