#include "core/mod_of_grobal_var.h"
#include "ui_explorer.h"

#include <QApplication>
#include <QDir>
#include <QTest>

#include <dirent.h>
#include <dlfcn.h>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

bool tells_twice = false;

} // namespace

/// The system's call, which tells of each entry of a folder a second time when the test wants that, as file systems may
/// where files are renamed to and fro while a folder is read.
extern "C" dirent* readdir(DIR* directory)
{
    static auto* const real = reinterpret_cast<dirent* (*)(DIR*)>(dlsym(RTLD_NEXT, "readdir"));
    static dirent* last = nullptr;
    if (tells_twice && last != nullptr)
        return std::exchange(last, nullptr);
    last = real(directory);
    return last;
}

class TestToldTwice : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void a_file_told_twice_is_listed_once();
    void a_folder_told_twice_ends_no_fill();
};

void TestToldTwice::a_file_told_twice_is_listed_once()
{
    ExplorerPanes panes;
    for (const QString& name : {u"one.mp3"_s, u"two.mp3"_s})
        panes.disk.write(u"C:\\Music\\"_s + name, "content");
    panes.tree.init_main_tree();
    tells_twice = true;
    panes.click_folder(u"C:\\Music"_s);
    tells_twice = false;
    QCOMPARE(panes.names(), (QStringList{u"one.mp3"_s, u"two.mp3"_s}));
    QCOMPARE(shared.folder_mp3_count, i16(2));
    QCOMPARE(panes.messages.take(), QStringList());
}

void TestToldTwice::a_folder_told_twice_ends_no_fill()
{
    ExplorerPanes panes;
    panes.disk.make_folder(u"C:\\Music\\Old"_s);
    panes.tree.init_main_tree();
    panes.click_folder(u"C:\\Music"_s);
    for (const QString& name : {u"One"_s, u"Two"_s, u"Three"_s})
        panes.disk.make_folder(u"C:\\Music\\"_s + name);
    QVERIFY(QDir(QFile::decodeName(panes.disk.native(u"C:\\Music\\Old"_s))).removeRecursively());
    tells_twice = true;
    panes.tree.refresh_all();
    tells_twice = false;
    QStringList names;
    for (const auto& child : panes.tree_view.SelectedItem()->children())
        names.append(child->Text());
    names.sort();
    QCOMPARE(names, (QStringList{u"One"_s, u"Three"_s, u"Two"_s}));
}

QUILMO_UI_TEST(TestToldTwice)

#include "test_told_twice.moc"
