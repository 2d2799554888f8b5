// Walks all windows in the three languages. It runs at two pixel ratios.

#include "frame/look.h"
#include "platform/controls/ListView.h"
#include "platform/controls/PictureBox.h"
#include "platform/controls/StatusBar.h"
#include "platform/controls/UsrButton.h"
#include "platform/controls/faces.h"
#include "platform/controls/palette.h"
#include "ui_contrast.h"
#include "ui_form_findings.h"
#include "ui_forms.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QToolTip>

#include <array>
#include <map>

using namespace Qt::StringLiterals;

namespace {

using Change = std::function<void(QWidget& form)>;
using Kind = QStringList Findings::*;

constexpr std::array languages = {english, korean, german};
constexpr std::array language_names = {"English", "Korean", "German"};

template<typename Control> Control& add(QWidget& form, QRect place)
{
    auto* control = new Control(&form);
    control->setAccessibleName(u"name"_s);
    control->setGeometry(place);
    return *control;
}

QLabel& add_label(QWidget& form, QRect place)
{
    auto& label = add<QLabel>(form, place);
    label.setText(u"Enough for a label"_s);
    return label;
}

UsrButton& add_button(QWidget& form, const QString& caption, QSize size)
{
    auto& button = add<UsrButton>(form, QRect(QPoint(150, 100), size));
    button.set_PictureUp(button_face(caption, FaceState::up, size));
    return button;
}

StatusBar& add_status_bar(QWidget& form, const QString& text)
{
    auto& bar = *new StatusBar({1500, 1500}, &form);
    bar.setGeometry(0, 170, 300, 22);
    bar.set_panel_text(1, text);
    return bar;
}

void verify_empty(const QStringList& wrong)
{
    for (const QString& line : wrong)
        qWarning("%s", qPrintable(line));
    QVERIFY(wrong.isEmpty());
}

/// A desktop whose own colours are light on dark, for all controls and for those that themes colour apart.
void darken_desktop()
{
    const QPalette dark(Qt::white, QColor(40, 40, 40), QColor(80, 80, 80), QColor(20, 20, 20), QColor(60, 60, 60),
                        Qt::white, Qt::red, QColor(30, 30, 30), QColor(40, 40, 40));
    QApplication::setPalette(dark);
    for (const char* type : {"QMenu", "QMenuBar", "QLabel", "QLineEdit", "QHeaderView", "QAbstractItemView",
                             "QAbstractButton", "QToolButton", "QCheckBox", "QRadioButton", "QComboBox"})
        QApplication::setPalette(dark, type);
    QToolTip::setPalette(dark);
}

} // namespace

Q_DECLARE_METATYPE(Language)
Q_DECLARE_METATYPE(Change)
Q_DECLARE_METATYPE(Kind)

class TestForms : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void the_pixel_ratio_is_the_one_asked_for();
    void each_kind_of_fault_is_found_data();
    void each_kind_of_fault_is_found();
    void no_text_is_wider_than_its_place_data() { add_forms(); }
    void no_text_is_wider_than_its_place() { verify_none(&Findings::misfits); }
    void no_controls_overlap_data() { add_forms(); }
    void no_controls_overlap() { verify_none(&Findings::collisions); }
    void controls_have_names_and_roles_data() { add_forms(); }
    void controls_have_names_and_roles() { verify_none(&Findings::nameless); }
    void texts_stand_out_from_their_ground_data() { add_forms(); }
    void texts_stand_out_from_their_ground() { verify_none(&Findings::faint); }
    void no_text_is_left_in_english_data();
    void no_text_is_left_in_english();
    void english_texts_are_told_apart_data();
    void english_texts_are_told_apart();
    void colours_stand_out_from_each_other_data();
    void colours_stand_out_from_each_other();
    void colours_of_the_desktop_are_left_aside();

private:
    static void add_forms();
    void verify_none(Kind kind);
    const Findings& found(const QString& form, Language language);
    /// Whether any form shows this text in English.
    bool is_english(const QString& text);

    std::map<std::pair<QString, Language>, Findings> found_;
};

void TestForms::add_forms()
{
    QTest::addColumn<QString>("form");
    QTest::addColumn<Language>("language");
    for (const QString& form : AllForms::names()) {
        for (std::size_t i = 0; i < languages.size(); ++i)
            QTest::addRow("%s, %s", qPrintable(form), language_names.at(i)) << form << languages.at(i);
    }
}

void TestForms::verify_none(Kind kind)
{
    QFETCH(QString, form);
    QFETCH(Language, language);
    const QStringList wrong = found(form, language).*kind;
    verify_empty(wrong);
}

const Findings& TestForms::found(const QString& form, Language language)
{
    const auto key = std::make_pair(form, language);
    if (!found_.contains(key)) {
        const AllForms forms(language);
        forms.show(form, [&](QWidget& window) { found_[key] = findings_of(window); });
    }
    return found_.at(key);
}

bool TestForms::is_english(const QString& text)
{
    const QStringList forms = AllForms::names();
    return std::any_of(forms.begin(), forms.end(),
                       [&](const QString& form) { return found(form, english).texts.contains(text); });
}

void TestForms::the_pixel_ratio_is_the_one_asked_for()
{
    const QByteArray asked = qgetenv("QT_SCALE_FACTOR");
    QCOMPARE(qApp->devicePixelRatio(), asked.isEmpty() ? 1.0 : asked.toDouble());
}

void TestForms::each_kind_of_fault_is_found_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<Kind>("kind");
    const auto fault = [](const char* name, Kind kind, const Change& change) { QTest::newRow(name) << change << kind; };
    fault("a label too narrow", &Findings::misfits, [](QWidget& form) { add_label(form, {150, 20, 60, 20}); });
    fault("a label too low", &Findings::misfits, [](QWidget& form) { add_label(form, {150, 20, 140, 8}); });
    fault("a button too narrow", &Findings::misfits, [](QWidget& form) {
        add<QPushButton>(form, {150, 20, 40, 30}).setText(u"Enough for it"_s);
    });
    fault("a list with a long entry", &Findings::misfits, [](QWidget& form) {
        add<QComboBox>(form, {150, 20, 80, 30}).addItems({u"short"_s, u"a long, long entry"_s});
    });
    fault("a column with a long header", &Findings::misfits, [](QWidget& form) {
        auto& list = add<ListView>(form, {150, 20, 140, 60});
        list.set_ColumnHeaders({{u"A long header"_s, 600}, {u"B"_s, 600}});
        list.set_View(ListView::ViewMode::report);
    });
    fault("a caption in a smaller font", &Findings::misfits, [](QWidget& form) {
        add_button(form, u"Some caption"_s, {80, 26});
    });
    fault("a caption squeezed", &Findings::misfits, [](QWidget& form) {
        add_button(form, u"Some caption"_s, {30, 26});
    });
    fault("a panel with dots", &Findings::misfits,
          [](QWidget& form) { add_status_bar(form, u"Enough for a panel"_s).set_panel_width(1, 900); });
    fault("a control on another", &Findings::collisions, [](QWidget& form) { add_label(form, {100, 12, 150, 20}); });
    fault("a control over the edge", &Findings::collisions, [](QWidget& form) {
        add_label(form, {150, 190, 140, 20});
    });
    fault("a button without a name", &Findings::nameless, [](QWidget& form) {
        add_button(form, u"Go"_s, {60, 26}).setAccessibleName({});
    });
    fault("a slider that is a picture", &Findings::nameless, [](QWidget& form) {
        auto* box = new PictureBox(label_face(u"Go"_s, {60, 20}), &form);
        box->setObjectName(u"Picture_back_volume"_s);
        box->setAccessibleName(u"Volume"_s);
        box->move(150, 20);
    });
    fault("a faint label", &Findings::faint, [](QWidget& form) {
        QPalette colours;
        colours.setColor(QPalette::WindowText, palette::line);
        add_label(form, {150, 20, 140, 20}).setPalette(colours);
    });
    fault("a dark caption on a button", &Findings::faint, [](QWidget& form) {
        Picture face = button_face({}, FaceState::up, {100, 30});
        face.draw = [ground = face.draw](QPainter& painter, const QRectF& rect) {
            ground(painter, rect);
            painter.setPen(palette::ink);
            painter.drawText(rect, Qt::AlignCenter, u"Go"_s);
        };
        add_button(form, {}, {100, 30}).set_PictureUp(face);
    });
}

void TestForms::each_kind_of_fault_is_found()
{
    QFETCH(Change, change);
    QFETCH(Kind, kind);
    const auto faults_after = [kind](const Change& prepare) {
        QWidget form;
        form.setWindowTitle(u"title"_s);
        form.setFixedSize(300, 200);
        add_label(form, {10, 10, 130, 20});
        prepare(form);
        form.show();
        return findings_of(form).*kind;
    };
    QCOMPARE(faults_after([](QWidget& form) {
                 add_button(form, u"Go"_s, {60, 26});
                 add_status_bar(form, u"Panel"_s);
             }),
             QStringList());
    QVERIFY(!faults_after(change).isEmpty());
}

void TestForms::no_text_is_left_in_english_data()
{
    QTest::addColumn<QString>("form");
    QTest::addColumn<Language>("language");
    for (const QString& form : AllForms::names()) {
        if (form == u"splash" || form == u"about box")
            continue; // they stay as designed in all languages
        QTest::addRow("%s, Korean", qPrintable(form)) << form << korean;
        QTest::addRow("%s, German", qPrintable(form)) << form << german;
    }
}

void TestForms::no_text_is_left_in_english()
{
    QFETCH(QString, form);
    QFETCH(Language, language);
    const QStringList wrong =
        left_in_english(found(form, language), language, [this](const QString& text) { return is_english(text); });
    verify_empty(wrong);
}

void TestForms::english_texts_are_told_apart_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<Language>("language");
    QTest::addColumn<bool>("left");
    QTest::newRow("an English text in German") << u"Save as"_s << german << true;
    QTest::newRow("an English text in Korean") << u"Save as"_s << korean << true;
    QTest::newRow("a German text in German") << u"Liste der Dateien"_s << german << false;
    QTest::newRow("a German text in Korean") << u"Liste der Dateien"_s << korean << true;
    QTest::newRow("a Korean text in Korean") << u"MP3 파일"_s << korean << false;
    QTest::newRow("a name that is the same in German") << u"Name"_s << german << false;
    QTest::newRow("the name of a file") << u"4.mp3"_s << korean << false;
}

void TestForms::english_texts_are_told_apart()
{
    QFETCH(QString, text);
    QFETCH(Language, language);
    QLabel label(text);
    label.show();
    const QStringList left = left_in_english(
        findings_of(label), language, [](const QString& known) { return known == u"Save as" || known == u"Name"; });
    QTEST(!left.isEmpty(), "left");
}

void TestForms::colours_stand_out_from_each_other_data()
{
    QTest::addColumn<QColor>("text");
    QTest::addColumn<QColor>("ground");
    QTest::newRow("text on a form") << palette::ink << palette::panel;
    QTest::newRow("text on a list") << palette::ink << palette::paper;
    QTest::newRow("text on a bar") << palette::ink << palette::panel_dark;
    QTest::newRow("lighter text on a form") << palette::soft_ink << palette::panel;
    QTest::newRow("lighter text on a list") << palette::soft_ink << palette::paper;
    QTest::newRow("lighter text on a bar") << palette::soft_ink << palette::panel_dark;
    QTest::newRow("a button") << palette::on_accent << palette::accent;
    QTest::newRow("a button under the mouse") << palette::on_accent << palette::accent_light;
    QTest::newRow("a button pressed") << palette::on_accent << palette::accent_dark;
    QTest::newRow("a note in the program's colour") << palette::accent << palette::paper;
    using Role = QPalette::ColorRole;
    const std::tuple<const char*, Role, Role> roles[] = {
        {"a form's text", QPalette::WindowText, QPalette::Window},
        {"a list's text", QPalette::Text, QPalette::Base},
        {"a list's text in every other row", QPalette::Text, QPalette::AlternateBase},
        {"a push button's text", QPalette::ButtonText, QPalette::Button},
        {"a selected text", QPalette::HighlightedText, QPalette::Highlight},
        {"a tip", QPalette::ToolTipText, QPalette::ToolTipBase},
        {"a text that stands in for one", QPalette::PlaceholderText, QPalette::Base},
        {"a link on a form", QPalette::Link, QPalette::Window},
        {"a link followed", QPalette::LinkVisited, QPalette::Window},
    };
    const QPalette colours = QApplication::palette();
    for (const auto& [name, text, ground] : roles) {
        QTest::addRow("%s, active", name)
            << colours.color(QPalette::Active, text) << colours.color(QPalette::Active, ground);
        QTest::addRow("%s, inactive", name)
            << colours.color(QPalette::Inactive, text) << colours.color(QPalette::Inactive, ground);
    }
}

void TestForms::colours_stand_out_from_each_other()
{
    QFETCH(QColor, text);
    QFETCH(QColor, ground);
    QVERIFY2(contrast(text, ground) >= least_contrast, qPrintable(QString::number(contrast(text, ground))));
}

void TestForms::colours_of_the_desktop_are_left_aside()
{
    const QPalette colours = QApplication::palette();
    QCOMPARE(colours.color(QPalette::Window), palette::panel);
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        for (int role = 0; role < QPalette::NColorRoles; ++role) {
            if (role != QPalette::NoRole)
                QVERIFY2(colours.isBrushSet(group, QPalette::ColorRole(role)),
                         qPrintable(u"group %1, role %2"_s.arg(group).arg(role)));
        }
    }
    QCOMPARE(QToolTip::palette().color(QPalette::ToolTipBase), colours.color(QPalette::ToolTipBase));
    QCOMPARE(QApplication::palette("QMenu").color(QPalette::Base), colours.color(QPalette::Base));
}

int main(int argc, char** argv)
{
    const TestHome home;
    const QApplication application(argc, argv);
    darken_desktop();
    apply_look();
    TestForms test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_forms.moc"
