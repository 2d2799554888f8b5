// Walks all windows in the three languages. It runs at two pixel ratios.

#include "frame/look.h"
#include "platform/controls/ListView.h"
#include "platform/controls/PictureBox.h"
#include "platform/controls/StatusBar.h"
#include "platform/controls/UsrButton.h"
#include "platform/controls/palette.h"
#include "platform/own_words.h"
#include "ui_forms.h"
#include "ui_painted_texts.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QProgressBar>
#include <QRegularExpression>
#include <QTest>
#include <QToolBar>
#include <QToolTip>

#include <array>
#include <cmath>
#include <map>

using namespace Qt::StringLiterals;

namespace {

constexpr std::array languages = {english, korean, german};
constexpr std::array language_names = {"English", "Korean", "German"};
constexpr std::array large_sizes = {QSize(1920, 1080), QSize(3840, 2160)};
constexpr QSize small_screen(1024, 700); ///< what a desktop's panel and a title bar leave of 1024x768
constexpr double least_contrast = 4.5;
constexpr int font_pixels = 12;

/// What is wrong with a form, and its texts, each with the place of one that shows it.
struct Findings
{
    QStringList misfits;
    QStringList collisions;
    QStringList nameless;
    QStringList faint;
    std::multimap<QString, QString> texts;
};

QString name_of(const QWidget& control)
{
    return control.objectName().isEmpty() ? QString::fromLatin1(control.metaObject()->className())
                                          : control.objectName();
}

QString text_of(const QRectF& rect)
{
    return u"%1,%2 %3x%4"_s.arg(rect.x()).arg(rect.y()).arg(rect.width()).arg(rect.height());
}

/// The controls that a person sees, the form first. What a combo box or a list is made of is among them.
QList<QWidget*> shown_controls(QWidget& form)
{
    QList<QWidget*> controls = {&form};
    for (QWidget* control : form.findChildren<QWidget*>()) {
        if (control->isVisible() && control->window() == &form && !control->size().isEmpty())
            controls.append(control);
    }
    return controls;
}

/// The view that paints on this widget; nullptr for none.
const QAbstractItemView* view_painting_on(const QWidget& control)
{
    const auto* view = qobject_cast<const QAbstractItemView*>(control.parentWidget());
    return view != nullptr && view->viewport() == &control ? view : nullptr;
}

bool is_header(const QWidget& control)
{
    return qobject_cast<const QHeaderView*>(view_painting_on(control)) != nullptr;
}

/// Whether the texts on a control come from files, so that any length may be met: they scroll, or end in dots.
bool shows_data(const QWidget& control)
{
    const auto* box = qobject_cast<const QLineEdit*>(&control);
    return (box != nullptr && box->objectName() != u"Label_filesize") ||
           (view_painting_on(control) != nullptr && !is_header(control));
}

// --- Texts in their places

bool is_cut(const QString& text)
{
    return text.contains(u'…') && text != own_word(Word::progress_cancelling);
}

/// Empty for a text that shows whole, at its full size.
QString misfit(const QWidget& control, const PaintedText& text)
{
    constexpr double tolerance = 0.5;
    QRectF room = control.rect();
    if (is_header(control)) // a column that is scrolled away in part ends at its own edges
        room.adjust(-QWIDGETSIZE_MAX, 0, QWIDGETSIZE_MAX, 0);
    if (!text.room.isNull())
        room &= text.room;
    room.adjust(-tolerance, -tolerance, tolerance, tolerance);
    if (text.squeezed || text.pixels < font_pixels)
        return u"painted smaller, %1 pixels%2"_s.arg(text.pixels).arg(text.squeezed ? u" and squeezed"_s : QString());
    if (is_cut(text.text))
        return u"cut short"_s;
    if (!room.contains(text.box))
        return u"needs %1, has %2"_s.arg(text_of(text.box), text_of(room));
    return {};
}

void check_texts(QWidget& control, const QString& where, Findings& findings)
{
    for (const PaintedText& text : painted_texts(control)) {
        const QString wrong = misfit(control, text);
        if (!wrong.isEmpty())
            findings.misfits.append(u"%1: “%2” %3"_s.arg(where + name_of(control), text.text, wrong));
    }
}

/// The widest of a list's entries has to fit too.
void check_entries(QComboBox& box, const QString& where, Findings& findings)
{
    const QSignalBlocker quiet(box);
    const int shown = box.currentIndex();
    int widest = shown;
    int width = 0;
    for (int entry = 0; entry < box.count(); ++entry) {
        const int needed = box.fontMetrics().horizontalAdvance(box.itemText(entry));
        if (needed > width) {
            width = needed;
            widest = entry;
        }
    }
    box.setCurrentIndex(widest);
    check_texts(box, where, findings);
    box.setCurrentIndex(shown);
}

/// A header has to hold the arrow of its order too, whichever column is sorted.
void check_headers(ListView& list, const QString& where, Findings& findings)
{
    const QHeaderView* view = nullptr;
    for (const auto* header : list.findChildren<QHeaderView*>()) {
        if (header->isVisible())
            view = header;
    }
    if (view == nullptr)
        return;
    for (int column = 0; column < static_cast<int>(list.ColumnHeaders().size()); ++column) {
        list.sort(column, ListView::Order::ascending);
        check_texts(*view->viewport(), where + name_of(list) + u" sorted by column %1, "_s.arg(column + 1), findings);
    }
}

void check_all_texts(QWidget& form, const QString& where, Findings& findings)
{
    for (QWidget* control : shown_controls(form)) {
        if (!shows_data(*control))
            check_texts(*control, where, findings);
        if (auto* box = qobject_cast<QComboBox*>(control))
            check_entries(*box, where, findings);
        if (auto* list = qobject_cast<ListView*>(control))
            check_headers(*list, where, findings);
    }
}

// --- Places of controls

struct Pair
{
    const char16_t* upper;
    const char16_t* lower;
};

/// Controls that lie on others on purpose; the others may be any where none is named.
constexpr Pair layers[] = {
    {u"cmd_select_all", u"Picture_top_back"}, {u"cmdRemove", u"Picture_top_back"},
    {u"Change_all", u"Picture_top_back"},     {u"cmdBurn", u"Picture_top_back"},
    {u"Label_fix_artist", u"Check_Artist"},   {u"Label_fix_genre", u"Check_Genre"},
};

bool lie_on_each_other(const QWidget& one, const QWidget& other)
{
    if (name_of(*one.parentWidget()) == u"StatusBar1") // a notice lies over the panels
        return true;
    for (const Pair& pair : layers) {
        const QStringView upper(pair.upper);
        const QStringView lower(pair.lower);
        if ((one.objectName() == upper && other.objectName() == lower) ||
            (one.objectName() == lower && other.objectName() == upper))
            return true;
    }
    return false;
}

/// Whether a control is laid out by the toolkit, or by a control that a person sees as one.
bool is_one_control(const QWidget& control)
{
    return control.inherits("QAbstractScrollArea") || control.inherits("QComboBox") || control.inherits("ListView") ||
           control.inherits("QLineEdit") || control.inherits("QToolBar") || control.inherits("QMenuBar");
}

void check_places(QWidget& form, const QString& where, Findings& findings)
{
    QList<QWidget*> controls;
    for (QWidget* child : form.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        if (child->isVisible() && !child->isWindow() && !child->size().isEmpty())
            controls.append(child);
    }
    for (const QWidget* control : controls) {
        if (!form.rect().contains(control->geometry()))
            findings.collisions.append(u"%1 at %2 leaves %3 of %4"_s.arg(
                where + name_of(*control), text_of(control->geometry()), name_of(form), text_of(form.rect())));
        for (const QWidget* other : controls) {
            if (other == control)
                break;
            if (control->geometry().intersects(other->geometry()) && !lie_on_each_other(*control, *other))
                findings.collisions.append(
                    u"%1 at %2 and %3 at %4 overlap"_s.arg(where + name_of(*control), text_of(control->geometry()),
                                                           name_of(*other), text_of(other->geometry())));
        }
    }
    for (QWidget* control : controls) {
        if (!is_one_control(*control))
            check_places(*control, where, findings);
    }
}

// --- What assistive programs read

const QStringList decorations = {u"Picture_top_back"_s, u"Picture1"_s, u"picSplitter"_s};

bool needs_name(const QWidget& control)
{
    if (control.isWindow() || (control.focusPolicy() & Qt::TabFocus) != 0)
        return true;
    if (decorations.contains(control.objectName()))
        return false;
    if (const auto* label = qobject_cast<const QLabel*>(&control))
        return !label->text().isEmpty();
    return control.inherits("QAbstractButton") || control.inherits("PictureBox") || control.inherits("QProgressBar") ||
           control.inherits("QToolBar");
}

using Roles = QList<QAccessible::Role>;

/// The roles that fit a control; empty for any.
Roles fitting_roles(const QWidget& control)
{
    const QString name = control.objectName();
    if (name == u"Picture_back_volume" || name == u"Picture_back_play_index")
        return {QAccessible::Slider};
    if (name == u"Label_ylm_link")
        return {QAccessible::Link};
    if (name == u"muteBtn")
        return {QAccessible::Button, QAccessible::CheckBox};
    const std::pair<const char*, Roles> fitting[] = {
        {"QRadioButton", {QAccessible::RadioButton}},
        {"QCheckBox", {QAccessible::CheckBox}},
        {"QAbstractButton", {QAccessible::Button}},
        {"QLineEdit", {QAccessible::EditableText}},
        {"QComboBox", {QAccessible::ComboBox}},
        {"QLabel", {QAccessible::StaticText, QAccessible::Graphic}},
        {"PictureBox", {QAccessible::Graphic, QAccessible::Grouping}},
        {"QProgressBar", {QAccessible::ProgressBar}},
        {"QTreeView", {QAccessible::Table, QAccessible::Tree}},
        {"QListView", {QAccessible::Table, QAccessible::List}},
        {"QToolBar", {QAccessible::ToolBar}},
        {"QMenuBar", {QAccessible::MenuBar}},
        {"QDialog", {QAccessible::Dialog, QAccessible::AlertMessage}},
        {"QMainWindow", {QAccessible::Window}},
    };
    for (const auto& [type, roles] : fitting) {
        if (control.inherits(type))
            return roles;
    }
    return {};
}

QString accessible_name(QWidget& control)
{
    const QAccessibleInterface* face = QAccessible::queryAccessibleInterface(&control);
    return face == nullptr ? QString() : face->text(QAccessible::Name);
}

/// Whether a slider tells where it stands between its ends.
bool tells_its_value(QWidget& slider)
{
    QAccessibleInterface* face = QAccessible::queryAccessibleInterface(&slider);
    const QAccessibleValueInterface* value = face == nullptr ? nullptr : face->valueInterface();
    return value != nullptr && value->currentValue().isValid() && value->maximumValue() != value->minimumValue();
}

void check_names(QWidget& form, const QString& where, Findings& findings)
{
    for (QWidget* control : shown_controls(form)) {
        if (!needs_name(*control))
            continue;
        const QAccessibleInterface* face = QAccessible::queryAccessibleInterface(control);
        if (face == nullptr || face->text(QAccessible::Name).trimmed().isEmpty())
            findings.nameless.append(u"%1 has no name"_s.arg(where + name_of(*control)));
        const Roles roles = fitting_roles(*control);
        if (face != nullptr && face->role() == QAccessible::Slider && !tells_its_value(*control))
            findings.nameless.append(u"%1 tells no value"_s.arg(where + name_of(*control)));
        if (face != nullptr && !roles.isEmpty() && !roles.contains(face->role()))
            findings.nameless.append(u"%1 has the role %2"_s.arg(
                where + name_of(*control), QString::fromLatin1(qAccessibleRoleString(face->role()))));
    }
}

// --- Texts of a language

/// Genres have English names everywhere, and dates and amounts are in the form of the system.
bool shows_foreign_text(const QWidget& control)
{
    const QString name = control.objectName();
    return control.inherits("QComboBox") ||
           (name.startsWith(u"Facts_") && (name.endsWith(u"_date") || name.endsWith(u"_size")));
}

void note_texts(QWidget& control, const QString& form, Findings& findings)
{
    const auto note = [&](const char* kind, const QString& text) {
        findings.texts.emplace(text, u"%1 %2 %3"_s.arg(form, name_of(control), QLatin1StringView(kind)));
    };
    if (!shows_data(control) && !shows_foreign_text(control)) {
        for (const PaintedText& text : painted_texts(control))
            note("shows", text.text);
    }
    if (!shows_foreign_text(control))
        note("is called", accessible_name(control));
    note("has the tip", control.toolTip());
    note("has the description", control.accessibleDescription());
    if (control.isWindow())
        note("has the title", control.windowTitle());
    for (const QAction* action : control.actions())
        note("has the entry tip", action->toolTip());
}

void note_all_texts(QWidget& form, Findings& findings)
{
    for (QWidget* control : shown_controls(form))
        note_texts(*control, name_of(form), findings);
    for (QMenu* menu : form.findChildren<QMenu*>()) {
        menu->resize(menu->sizeHint());
        note_texts(*menu, name_of(form), findings);
    }
}

/// The texts that may be the same in English and another language, with the controls that show them: the fixed texts,
/// and words that both languages have.
const QRegularExpression& allowed_english(Language language)
{
    static const QString anywhere = uR"(.*“(Vurlo|Vurlo Utility Ver 1\.0|FIF|Rock|Overflow|[\d.,]+ (byte|kB|MB))"
                                    uR"(|\d* ?files(/\d+MB)?|\d+ File|\[\d+ File/\d+MB\])”)"_s;
    static const QRegularExpression in_korean(
        u"^(%1|%2)$"_s.arg(anywhere, uR"(QuilmoMain menu_Tool .*“(Select All|Clear All|Display Final List|Burn)”)"
                                     uR"(|QuilmoMain menu_(File|Edit) shows “((Ctrl\+|Shift\+)+.|Del)”)"
                                     uR"(|QuilmoMain muteBtn .*“Mute”)"
                                     uR"(|QuilmoMain (cmd_select_all|cmdRemove|Change_all|cmdBurn|cmdSave) shows .*)"
                                     uR"(|Chang_FIF (cmdSave|cmdExit) shows .*)"
                                     uR"(|FIF_convert (Change_FIF|cmd_transfer|Cancel) shows .*)"
                                     uR"(|FIF_convert (Pic_fif|Pic_auto|Pic_manual) .*)"
                                     uR"(|FileProgressWindow Label_amount .*“[\d.,]+ MB / [\d.,]+ MB”)"_s));
    static const QRegularExpression in_german(u"^(%1|.*“(OK|Name|Details)”)$"_s.arg(anywhere));
    return language == korean ? in_korean : in_german;
}

/// Names of files aside.
bool has_english_letters(QString text)
{
    static const QRegularExpression word(u"[A-Za-z]{2}"_s);
    return text.remove(u".mp3"_s).contains(word);
}

bool has_hangul(const QString& text)
{
    return std::any_of(text.begin(), text.end(), [](QChar letter) { return letter.script() == QChar::Script_Hangul; });
}

// --- Colours

double share_of_light(int value)
{
    const double share = value / 255.0;
    return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& colour)
{
    return 0.2126 * share_of_light(colour.red()) + 0.7152 * share_of_light(colour.green()) +
           0.0722 * share_of_light(colour.blue());
}

double contrast(const QColor& one, const QColor& other)
{
    const double lighter = std::max(luminance(one), luminance(other));
    const double darker = std::min(luminance(one), luminance(other));
    return (lighter + 0.05) / (darker + 0.05);
}

/// The colour that a row of a picture has most of, between two of its pixels.
QRgb commonest_colour(const QImage& picture, int y, int left, int right)
{
    std::map<QRgb, int> counts;
    for (int x = left; x <= right; ++x)
        ++counts[picture.pixel(x, y)];
    return std::ranges::max_element(counts, {}, &std::pair<const QRgb, int>::second)->first;
}

/// The least contrast of a text with what the form shows right above and below it. `place` is that of the text on the
/// picture, in logical pixels.
double contrast_on(const QImage& picture, const QRectF& place, const QColor& colour)
{
    const double ratio = picture.devicePixelRatio();
    const QRect pixels(QPoint(qFloor(place.left() * ratio), qFloor((place.top() - 1) * ratio)),
                       QPoint(qFloor(place.right() * ratio), qFloor((place.bottom() + 1) * ratio)));
    const QRect seen = pixels & picture.rect();
    const auto contrast_in_row = [&](int y) {
        return contrast(colour, QColor(commonest_colour(picture, y, seen.left(), seen.right())));
    };
    return std::min(contrast_in_row(seen.top()), contrast_in_row(seen.bottom()));
}

void check_colours(QWidget& form, const QString& where, Findings& findings)
{
    if (QWidget* focused = form.focusWidget())
        focused->clearFocus(); // its text may be marked, and has a blinking mark beside it
    const QImage picture = form.grab().toImage();
    for (QWidget* control : shown_controls(form)) {
        if (!control->isEnabled())
            continue;
        for (const PaintedText& text : painted_texts(*control)) {
            if (text.text.trimmed().isEmpty())
                continue;
            const QRectF place = text.box.translated(control->mapTo(&form, QPoint()));
            const double found = contrast_on(picture, place, text.colour);
            if (QRectF(form.rect()).contains(place) && found < least_contrast)
                findings.faint.append(
                    u"%1: “%2” has a contrast of %3"_s.arg(where + name_of(*control), text.text).arg(found));
        }
    }
}

// --- The walk

void check_at_this_size(QWidget& form, Findings& findings)
{
    QCoreApplication::processEvents();
    const QString where = u"%1x%2 "_s.arg(form.width()).arg(form.height());
    check_all_texts(form, where, findings);
    check_places(form, where, findings);
}

void check_menus(QWidget& form, Findings& findings)
{
    for (QMenu* menu : form.findChildren<QMenu*>()) {
        menu->resize(menu->sizeHint());
        check_texts(*menu, {}, findings);
    }
}

/// On a small screen the main window keeps its size; its larger sizes are to be seen all the same.
void free_size(QWidget& form)
{
    if (form.inherits("QMainWindow"))
        form.setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
}

void check_all_sizes(QWidget& form, Findings& findings)
{
    if (form.width() > small_screen.width() || form.height() > small_screen.height())
        findings.collisions.append(u"%1x%2 does not fit a small screen"_s.arg(form.width()).arg(form.height()));
    check_at_this_size(form, findings);
    free_size(form);
    if (form.minimumSize() == form.maximumSize())
        return;
    form.resize(1, 1);
    check_at_this_size(form, findings);
    for (const QSize size : large_sizes) {
        form.resize(size);
        check_at_this_size(form, findings);
    }
}

Findings findings_of(QWidget& form)
{
    Findings findings;
    check_names(form, {}, findings);
    note_all_texts(form, findings);
    check_colours(form, {}, findings);
    check_menus(form, findings);
    check_all_sizes(form, findings);
    return findings;
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

class TestForms : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void the_pixel_ratio_is_the_one_asked_for();
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
    void colours_stand_out_from_each_other_data();
    void colours_stand_out_from_each_other();
    void colours_of_the_desktop_are_left_aside();

private:
    static void add_forms();
    void verify_none(QStringList Findings::*kind);
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

void TestForms::verify_none(QStringList Findings::*kind)
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
    QStringList wrong;
    for (const auto& [text, place] : found(form, language).texts) {
        const bool foreign = (language == korean && !has_hangul(text)) || is_english(text);
        const QString line = u"%1 “%2”"_s.arg(place, text);
        if (has_english_letters(text) && foreign && !allowed_english(language).match(line).hasMatch())
            wrong.append(line);
    }
    verify_empty(wrong);
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
