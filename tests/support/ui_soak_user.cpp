#include "ui_soak_user.h"

#include "platform/controls/ListView.h"
#include "platform/controls/TreeView.h"
#include "platform/controls/drag.h"

#include <QAbstractButton>
#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>

#include <numeric>

using namespace Qt::StringLiterals;

namespace {

QString word(const QString& act, const QWidget& widget)
{
    const QString name = widget.objectName();
    return act + u' ' + (name.isEmpty() ? QString::fromLatin1(widget.metaObject()->className()) : name);
}

QString word(const QString& act, const QWidget& widget, QPoint point)
{
    return word(act, widget) + u" at %1,%2"_s.arg(point.x()).arg(point.y());
}

} // namespace

SoakUser::SoakUser(QWidget& form, unsigned seed) : form_(form), dice_(seed)
{
    set_drag_runner([this](QDrag& drag) { carry_out(drag); });
}

SoakUser::~SoakUser()
{
    set_drag_runner({});
}

QString SoakUser::act()
{
    static constexpr Choice on_form[] = {
        {8, &SoakUser::click_node},       {6, &SoakUser::open_node},        {8, &SoakUser::click_row},
        {14, &SoakUser::click_check_box}, {1, &SoakUser::double_click_row}, {8, &SoakUser::open_row_menu},
        {5, &SoakUser::open_node_menu},   {6, &SoakUser::open_menu},        {12, &SoakUser::press_button},
        {4, &SoakUser::click_anything},   {5, &SoakUser::press_key},        {7, &SoakUser::press_shortcut},
        {6, &SoakUser::rename_row},       {3, &SoakUser::rename_node},      {2, &SoakUser::delete_row},
        {2, &SoakUser::fill_box},         {7, &SoakUser::save_fields},      {4, &SoakUser::drag_row},
        {2, &SoakUser::drag_node},        {3, &SoakUser::drag_anything},    {1, &SoakUser::click_header},
        {1, &SoakUser::resize_window},    {1, &SoakUser::turn_wheel},       {2, &SoakUser::move_mouse},
        {1, &SoakUser::type_text},        {1, &SoakUser::fill_clipboard},
    };
    static constexpr Choice in_box[] = {
        {12, &SoakUser::press_button}, {2, &SoakUser::press_escape}, {1, &SoakUser::close_window},
        {2, &SoakUser::press_key},     {1, &SoakUser::move_mouse},   {1, &SoakUser::click_anything},
    };
    static constexpr Choice in_dialog[] = {
        {12, &SoakUser::press_button},    {4, &SoakUser::click_row},      {4, &SoakUser::click_check_box},
        {4, &SoakUser::double_click_row}, {2, &SoakUser::click_header},   {6, &SoakUser::click_node},
        {4, &SoakUser::open_node},        {6, &SoakUser::fill_box},       {2, &SoakUser::type_text},
        {5, &SoakUser::press_key},        {2, &SoakUser::press_shortcut}, {3, &SoakUser::click_anything},
        {2, &SoakUser::press_escape},     {1, &SoakUser::close_window},   {1, &SoakUser::resize_window},
        {1, &SoakUser::turn_wheel},       {1, &SoakUser::move_mouse},     {1, &SoakUser::drag_anything},
    };
    if (QWidget* const popup = QApplication::activePopupWidget())
        return qobject_cast<QMenu*>(popup) != nullptr ? act_in_menu(*popup) : act_in_list_popup(*popup);
    QWidget* const dialog = QApplication::activeModalWidget();
    QWidget& front = dialog != nullptr ? *dialog : form_;
    if (!front.isActiveWindow())
        front.activateWindow(); // as a desktop does for the window in front
    if (dialog != nullptr) {
        if (dice_.once_in(40))
            return u"behind a dialog "_s + click_anything(form_);
        return qobject_cast<QMessageBox*>(dialog) != nullptr ? act_by(in_box, *dialog) : act_by(in_dialog, *dialog);
    }
    if (dice_.once_in(400))
        return close_window(form_);
    return act_by(on_form, form_);
}

int SoakUser::rest()
{
    return dice_.once_in(300) ? dice_.below(700) : 0;
}

QString SoakUser::act_by(std::span<const Choice> choices, QWidget& window)
{
    const int all = std::accumulate(choices.begin(), choices.end(), 0,
                                    [](int sum, const Choice& choice) { return sum + choice.weight; });
    for (int attempt = 0; attempt < 20; ++attempt) {
        int place = dice_.below(all);
        const auto* choice = choices.data();
        for (; place >= choice->weight; ++choice)
            place -= choice->weight;
        if (const QString done = (this->*choice->act)(window); !done.isEmpty())
            return done;
    }
    return u"nothing"_s;
}

QString SoakUser::click_anything(QWidget& window)
{
    const QList<QWidget*> widgets = shown<QWidget>(window);
    if (widgets.isEmpty())
        return {};
    QWidget& widget = *dice_.of(widgets);
    const QPoint point = dice_.in(widget.rect());
    const int kind = dice_.below(10);
    if (kind == 0)
        input_.double_click(widget, point);
    else
        input_.click(widget, point, kind == 1 ? Qt::RightButton : kind == 2 ? Qt::MiddleButton : Qt::LeftButton);
    return word(kind == 0 ? u"double click"_s : u"click %1"_s.arg(kind), widget, point);
}

QString SoakUser::press_button(QWidget& window)
{
    const auto buttons = shown<QAbstractButton>(window);
    if (buttons.isEmpty())
        return {};
    QAbstractButton& button = *dice_.of(buttons);
    input_.click(button, button.rect().center());
    return word(u"press"_s, button) + u' ' + button.text();
}

QString SoakUser::press_key(QWidget& window)
{
    static const QList<int> keys = {Qt::Key_Up,     Qt::Key_Down,     Qt::Key_Left,     Qt::Key_Right,  Qt::Key_Home,
                                    Qt::Key_End,    Qt::Key_PageUp,   Qt::Key_PageDown, Qt::Key_Return, Qt::Key_Enter,
                                    Qt::Key_Escape, Qt::Key_Tab,      Qt::Key_Backtab,  Qt::Key_Space,  Qt::Key_Delete,
                                    Qt::Key_F1,     Qt::Key_F2,       Qt::Key_F5,       Qt::Key_F10,    Qt::Key_Menu,
                                    Qt::Key_Plus,   Qt::Key_Asterisk, Qt::Key_A,        Qt::Key_T,      Qt::Key_Y};
    static const QList<Qt::KeyboardModifiers> modifiers = {Qt::NoModifier, Qt::NoModifier, Qt::NoModifier,
                                                           Qt::ShiftModifier, Qt::ControlModifier};
    const int key = dice_.of(keys);
    const Qt::KeyboardModifiers held = dice_.of(modifiers);
    const QString text = key == Qt::Key_Space ? u" "_s : key < Qt::Key_Escape ? QString(QChar(key)).toLower() : u""_s;
    input_.key(window, key, held, text);
    return u"key "_s + QKeySequence(QKeyCombination(held, Qt::Key(key))).toString();
}

QString SoakUser::press_shortcut(QWidget& window)
{
    static const QList<QKeyCombination> shortcuts = {
        Qt::CTRL | Qt::Key_C, Qt::CTRL | Qt::Key_C, Qt::CTRL | Qt::Key_V,
        Qt::CTRL | Qt::Key_V, Qt::CTRL | Qt::Key_A, Qt::CTRL | Qt::SHIFT | Qt::Key_N,
        Qt::ALT | Qt::Key_F,  Qt::ALT | Qt::Key_E,  Qt::ALT | Qt::Key_V,
        Qt::ALT | Qt::Key_T,  Qt::ALT | Qt::Key_Y,  Qt::ALT | Qt::Key_A,
        Qt::CTRL | Qt::Key_X, Qt::CTRL | Qt::Key_Z, Qt::SHIFT | Qt::Key_F10};
    const QKeyCombination keys = dice_.of(shortcuts);
    input_.key(window, keys.key(), keys.keyboardModifiers());
    return u"keys "_s + QKeySequence(keys).toString();
}

QString SoakUser::name()
{
    static const QList<QString> names = {u"a"_s,
                                         u"Ann"_s,
                                         u"Sea.mp3"_s,
                                         u"[Ann][Sea].mp3"_s,
                                         u"new name.mp3"_s,
                                         u"Pop"_s,
                                         u"Rock"_s,
                                         u"노래"_s,
                                         u"été"_s,
                                         u"a/b:c*?.mp3"_s,
                                         u"\"<|>\".mp3"_s,
                                         u"..\\..\\up.mp3"_s,
                                         u"..\\Rock\\in.mp3"_s,
                                         u".."_s,
                                         u"."_s,
                                         u" "_s,
                                         u"no ending"_s,
                                         u"track 1.mp3"_s,
                                         u"TRACK 1.MP3"_s,
                                         u"%s%n &x <i>"_s,
                                         u"\u202E3pm"_s,
                                         u"MYCOMPUTER"_s,
                                         QString(70, u'w'),
                                         QString(300, u'x') + u".mp3"_s};
    return dice_.once_in(3) ? u"%1 %2.mp3"_s.arg(dice_.of(names).left(20)).arg(dice_.below(100)) : dice_.of(names);
}

QString SoakUser::type_text(QWidget& window)
{
    const QString text = name().left(40);
    input_.type(window, text);
    return u"type "_s + text;
}

QString SoakUser::fill_box(QWidget& window)
{
    const auto boxes = shown<QLineEdit>(window);
    if (boxes.isEmpty())
        return {};
    QLineEdit& box = *dice_.of(boxes);
    const QString text = name().left(60);
    input_.click(box, box.rect().center());
    input_.key(window, Qt::Key_A, Qt::ControlModifier);
    input_.type(window, text);
    return word(u"fill"_s, box) + u" with "_s + text;
}

ListView* SoakUser::some_list(QWidget& window)
{
    auto lists = shown<ListView>(window);
    lists.removeIf([](const ListView* list) { return list->Count() == 0; });
    return lists.isEmpty() ? nullptr : dice_.of(lists);
}

int SoakUser::some_row(ListView& list)
{
    const int row = 1 + dice_.below(list.Count());
    list.ensure_visible(row);
    return row;
}

QString SoakUser::click_row(QWidget& window)
{
    static const QList<Qt::KeyboardModifiers> modifiers = {Qt::NoModifier, Qt::NoModifier, Qt::ControlModifier,
                                                           Qt::ControlModifier, Qt::ShiftModifier};
    ListView* const list = some_list(window);
    if (list == nullptr)
        return {};
    const int row = some_row(*list);
    const Qt::KeyboardModifiers held = dice_.of(modifiers);
    input_.click(*list, list->row_rect(row).center(), Qt::LeftButton, held);
    return word(u"click row %1 (%2)"_s.arg(row).arg(held.toInt(), 0, 16), *list);
}

QString SoakUser::click_check_box(QWidget& window)
{
    ListView* const list = some_list(window);
    if (list == nullptr)
        return {};
    const int row = some_row(*list);
    const QRect box = list->check_rect(row);
    if (box.isEmpty())
        return {};
    input_.click(*list, box.center());
    return word(u"tick row %1"_s.arg(row), *list);
}

QString SoakUser::double_click_row(QWidget& window)
{
    ListView* const list = some_list(window);
    if (list == nullptr)
        return {};
    const int row = some_row(*list);
    input_.double_click(*list, list->row_rect(row).center());
    return word(u"double click row %1"_s.arg(row), *list);
}

QString SoakUser::open_row_menu(QWidget& window)
{
    ListView* const list = some_list(window);
    if (list == nullptr)
        return {};
    const int row = some_row(*list);
    input_.click(*list, list->row_rect(row).center(), Qt::RightButton);
    return word(u"menu of row %1"_s.arg(row), *list);
}

QString SoakUser::click_header(QWidget& window)
{
    const auto headers = shown<QHeaderView>(window);
    if (headers.isEmpty())
        return {};
    QHeaderView& header = *dice_.of(headers);
    const QPoint point = dice_.in(header.viewport()->rect());
    if (dice_.once_in(3))
        pull(*header.viewport(), {header.sectionViewportPosition(1) - 1, point.y()}, point);
    else
        input_.click(*header.viewport(), point);
    return word(u"header of"_s, *header.parentWidget(), point);
}

QPoint SoakUser::place_of_node(TreeView& tree)
{
    constexpr int beside_the_arrow = 24;
    QPoint best;
    qsizetype most = -1;
    for (int attempt = 0; attempt < 4 && tree.Count() > 0; ++attempt) {
        const TreeNode* const node = tree.Item(1 + dice_.below(tree.Count()));
        const QRect place = tree.node_rect(node);
        const qsizetype depth = node->Key().count(u'\\');
        if (place.isEmpty() || !tree.viewport()->rect().contains(place.center()) || depth <= most)
            continue;
        most = depth;
        best = {place.left() + beside_the_arrow, place.center().y()};
    }
    return best;
}

QString SoakUser::click_node(QWidget& window)
{
    const auto trees = shown<TreeView>(window);
    if (trees.isEmpty())
        return {};
    TreeView& tree = *dice_.of(trees);
    const QPoint place = place_of_node(tree);
    if (place.isNull())
        return {};
    input_.click(*tree.viewport(), place);
    return word(u"node of"_s, tree, place);
}

QString SoakUser::open_node(QWidget& window)
{
    const QString clicked = click_node(window);
    if (clicked.isEmpty())
        return {};
    input_.key(window, dice_.once_in(5) ? Qt::Key_Left : Qt::Key_Right);
    return u"open "_s + clicked;
}

QString SoakUser::open_node_menu(QWidget& window)
{
    const auto trees = shown<TreeView>(window);
    if (trees.isEmpty())
        return {};
    TreeView& tree = *dice_.of(trees);
    const QPoint place = place_of_node(tree);
    if (place.isNull())
        return {};
    if (dice_.once_in(2))
        input_.click(*tree.viewport(), place);
    input_.click(*tree.viewport(), place, Qt::RightButton);
    return word(u"menu of node of"_s, tree, place);
}

QString SoakUser::turn_wheel(QWidget& window)
{
    const QList<QWidget*> widgets = shown<QWidget>(window);
    if (widgets.isEmpty())
        return {};
    QWidget& widget = *dice_.of(widgets);
    const int steps = dice_.below(7) - 3;
    input_.wheel(widget, dice_.in(widget.rect()), steps);
    return word(u"wheel by %1 over"_s.arg(steps), widget);
}

QString SoakUser::move_mouse(QWidget& window)
{
    const QList<QWidget*> widgets = shown<QWidget>(window);
    if (widgets.isEmpty())
        return {};
    QWidget& widget = *dice_.of(widgets);
    const QPoint point = dice_.in(widget.rect());
    input_.move(widget, point);
    return word(u"mouse over"_s, widget, point);
}

QString SoakUser::resize_window(QWidget& window)
{
    const QSize size(200 + dice_.below(1400), 200 + dice_.below(900));
    window.resize(size);
    return word(u"resize to %1x%2"_s.arg(size.width()).arg(size.height()), window);
}

QString SoakUser::close_window(QWidget& window)
{
    QMetaObject::invokeMethod(&window, &QWidget::close, Qt::QueuedConnection);
    return word(u"close"_s, window);
}

QString SoakUser::press_escape(QWidget& window)
{
    input_.key(window, Qt::Key_Escape);
    return u"key Esc"_s;
}
