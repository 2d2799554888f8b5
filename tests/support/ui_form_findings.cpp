#include "ui_form_findings.h"

#include "platform/controls/ListView.h"
#include "platform/own_words.h"
#include "ui_contrast.h"
#include "ui_painted_texts.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QAction>
#include <QComboBox>
#include <QCoreApplication>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPixmap>
#include <QRegularExpression>
#include <QSignalBlocker>
#include <QTextDocumentFragment>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr std::array large_sizes = {QSize(1920, 1080), QSize(3840, 2160)};
constexpr QSize small_screen(1024, 700); ///< what a desktop's panel and a title bar leave of 1024x768
constexpr int font_pixels = 12;

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

/// The names of genres are English everywhere.
bool shows_foreign_text(const QWidget& control)
{
    return control.inherits("QComboBox");
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
    // Tips that hold a name are written in markup, so that the name is not taken for it.
    note("has the tip", QTextDocumentFragment::fromHtml(control.toolTip()).toPlainText());
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

} // namespace

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

QStringList left_in_english(const Findings& found, Language language,
                            const std::function<bool(const QString& text)>& is_english)
{
    QStringList lines;
    for (const auto& [text, place] : found.texts) {
        const bool foreign = (language == korean && !has_hangul(text)) || is_english(text);
        const QString line = u"%1 “%2”"_s.arg(place, text);
        if (has_english_letters(text) && foreign && !allowed_english(language).match(line).hasMatch())
            lines.append(line);
    }
    return lines;
}
