#include "Driver.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

constexpr int dialog_poll_ms = 20;
constexpr int dialog_polls = 500;

void visit_dialog(const std::function<void(QDialog&)>& visit, const QWidget* present, int polls_left)
{
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog != nullptr && dialog != present && QTest::qWaitForWindowExposed(dialog)) {
        visit(*dialog);
        return;
    }
    if (polls_left == 0)
        qFatal("no dialog came");
    QTimer::singleShot(dialog_poll_ms, qApp, [=] { visit_dialog(visit, present, polls_left - 1); });
}

QPoint in_viewport(const ListView& list, QPoint point)
{
    return list.view()->viewport()->mapFrom(&list, point);
}

QPoint middle_of_row(ListView& list, int row)
{
    list.ensure_visible(row);
    return in_viewport(list, list.row_rect(row).center());
}

} // namespace

void Driver::click_node(const QString& key, const QString& tree) const
{
    auto& view = control<TreeView>(tree);
    TreeNode* node = view.Item(key);
    if (node == nullptr)
        qFatal("no node %s", qPrintable(key));
    const QRect place = view.node_rect(node);
    QTest::mouseMove(view.viewport(), place.center());
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, QPoint(place.left() + 24, place.center().y()));
}

void Driver::open_node(const QString& key, const QString& tree) const
{
    click_node(key, tree);
    QTest::keyClick(&control<TreeView>(tree), Qt::Key_Right);
}

void Driver::click_check_box(ListView& list, int row) const
{
    list.ensure_visible(row);
    QTest::mouseClick(list.view()->viewport(), Qt::LeftButton, {}, in_viewport(list, list.check_rect(row).center()));
}

void Driver::click_row(ListView& list, int row, Qt::KeyboardModifiers keys) const
{
    QTest::mouseClick(list.view()->viewport(), Qt::LeftButton, keys, middle_of_row(list, row));
}

void Driver::right_click_row(ListView& list, int row) const
{
    const QPoint place = middle_of_row(list, row);
    QTest::mouseMove(list.view()->viewport(), place); // where a menu opens
    QTest::mouseClick(list.view()->viewport(), Qt::RightButton, {}, place);
}

void Driver::double_click_row(ListView& list, int row) const
{
    const QPoint place = middle_of_row(list, row);
    QTest::mouseClick(list.view()->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(list.view()->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseRelease(list.view()->viewport(), Qt::LeftButton, {}, place);
}

void Driver::type(const QString& box, const QString& text) const
{
    auto& target = control<QLineEdit>(box);
    QTest::mouseClick(&target, Qt::LeftButton);
    target.selectAll();
    QTest::keyClick(&target, Qt::Key_Delete);
    QTest::keyClicks(&target, text);
}

QMenu& Driver::open_menu(const QString& menu) const
{
    auto& bar = control<QMenuBar>({});
    auto& popup = control<QMenu>(menu);
    QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.actionGeometry(popup.menuAction()).center());
    return popup;
}

void Driver::choose(const QString& menu, const QString& entry) const
{
    open_menu(menu);
    choose_from_popup(menu, entry);
}

void Driver::choose_from_popup(const QString& menu, const QString& entry) const
{
    auto& popup = control<QMenu>(menu);
    if (!QTest::qWaitForWindowExposed(&popup))
        qFatal("the menu %s did not open", qPrintable(menu));
    QTest::mouseClick(&popup, Qt::LeftButton, {}, popup.actionGeometry(&control<QAction>(entry)).center());
}

int Driver::row_of(const ListView& list, const QString& text)
{
    for (int row = 1; row <= list.Count(); ++row) {
        if (list.Item(row).Text == text)
            return row;
    }
    return 0;
}

void Driver::hover(const QString& button) const
{
    QTest::mouseMove(&control<UsrButton>(button));
    QCoreApplication::processEvents();
}

void Driver::click(const QString& button) const
{
    auto& target = control<UsrButton>(button);
    QTest::mouseMove(&target);
    QTest::mouseClick(&target, Qt::LeftButton);
}

void Driver::in_next_dialog(std::function<void(QDialog&)> visit)
{
    QTimer::singleShot(0, qApp, [visit = std::move(visit), present = QApplication::activeModalWidget()] {
        visit_dialog(visit, present, dialog_polls);
    });
}
