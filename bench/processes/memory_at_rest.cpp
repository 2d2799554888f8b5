// Linked to a program, prints what memory it takes, in bytes, and ends it: "rest", once its window has stood for a
// while, and then, if it has a folder tree and the environment variable QUILMO_BENCH_FOLDER tells the text of a node,
// "rows", once that node was clicked.

#include <QAbstractItemView>
#include <QApplication>
#include <QFile>
#include <QKeyEvent>
#include <QTimer>

#include <chrono>
#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

constexpr auto rest = std::chrono::milliseconds(2500); // a splash is gone by then

/// The process's share of memory: pages that others map too are divided among all.
void print_memory(const char* when)
{
    QFile map(u"/proc/self/smaps_rollup"_s);
    if (!map.open(QIODevice::ReadOnly))
        qFatal("the system tells nothing about memory");
    for (const QByteArray& line : map.readAll().split('\n')) {
        if (line.startsWith("Pss:"))
            std::printf("%s\t%lld\n", when, 1024 * line.mid(4).trimmed().chopped(3).toLongLong());
    }
    std::fflush(stdout);
}

QAbstractItemView* folder_tree()
{
    for (QWidget* widget : QApplication::allWidgets()) {
        if (widget->objectName() == u"tvTreeView"_s)
            return qobject_cast<QAbstractItemView*>(widget);
    }
    return nullptr;
}

/// Comes to the node with the key that leads down to it.
void click_node(QAbstractItemView& tree, const QString& text)
{
    const QModelIndexList found =
        tree.model()->match(tree.model()->index(0, 0), Qt::DisplayRole, text, 1, Qt::MatchExactly | Qt::MatchRecursive);
    if (found.isEmpty())
        qFatal("there is no node %s", qPrintable(text));
    while (tree.currentIndex() != found.front()) {
        QKeyEvent down(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
        QCoreApplication::sendEvent(&tree, &down);
    }
}

void measure()
{
    print_memory("rest");
    QAbstractItemView* tree = folder_tree();
    const QString folder = qEnvironmentVariable("QUILMO_BENCH_FOLDER");
    if (tree == nullptr || folder.isEmpty())
        std::_Exit(0);
    click_node(*tree, folder);
    QTimer::singleShot(rest, qApp, [] {
        print_memory("rows");
        std::_Exit(0);
    });
}

void begin()
{
    QTimer::singleShot(rest, qApp, measure);
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(begin)
