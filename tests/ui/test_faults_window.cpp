#include "core/mod_of_grobal_var.h"
#include "frame/QuilmoMain.h"
#include "platform/controls/message_window.h"
#include "sample_files.h"
#include "tagged_files.h"
#include "test_main.h"
#include "ui_faults.h"

#include <QApplication>
#include <QRandomGenerator>
#include <QTest>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

const QStringList folders = {u"C:\\Pop"_s, u"C:\\Rock"_s};
constexpr int files_in_folder = 3;

/// A file of a folder, known by its audio under whatever name.
QByteArray audio_of(const QString& folder, int number)
{
    const QByteArray mark = folder.toUtf8() + QByteArray::number(number);
    return sample_audio({.frames = 2}) + mark.leftJustified(64, ' ');
}

} // namespace

/// The main window at work on a disk that fails again and again.
class TestFaultsWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void the_window_goes_on_whatever_fails();

private:
    template<typename Control> Control& control(const char* name) const
    {
        return *window_->findChild<Control*>(QLatin1StringView(name));
    }
    void press(const char* button) const { Q_EMIT control<UsrButton>(button).Click(); }
    int below(int end) { return random_.bounded(end); }
    /// A row, 0 when there is none.
    int some_row()
    {
        return control<ListView>("lvListView").Count() == 0 ? 0 : 1 + below(control<ListView>("lvListView").Count());
    }

    void act();
    void click_folder();
    void click_row();
    void tick_row();
    void save();
    static QStringList names_on_disk();
    QStringList findings() const;

    std::unique_ptr<TestDisk> disk_;
    std::unique_ptr<NotedMessages> messages_;
    std::unique_ptr<QuilmoMain> window_;
    QRandomGenerator random_{1};
    int saves_ = 0;
};

void TestFaultsWindow::init()
{
    disk_ = std::make_unique<TestDisk>();
    messages_ = std::make_unique<NotedMessages>();
    for (const QString& folder : folders) {
        for (int number = 1; number <= files_in_folder; ++number)
            disk_->write(folder + u'\\' + QString::number(number) + u".mp3"_s,
                         audio_of(folder, number) + sample_tag(tag_of("Ann", "Sea " + QByteArray::number(number))));
    }
    window_ = std::make_unique<QuilmoMain>();
    window_->show();
    QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
}

void TestFaultsWindow::cleanup()
{
    window_.reset();
    messages_.reset();
    disk_.reset();
}

void TestFaultsWindow::click_folder()
{
    auto& tree = control<TreeView>("tvTreeView");
    const QStringList keys = folders + QStringList{u"C:"_s, u"MYCOMPUTER"_s};
    TreeNode* const node = tree.Item(keys[below(static_cast<int>(keys.size()))]);
    if (node == nullptr) // a folder that could not be read has no node till the one above it is read again
        return;
    tree.set_Selected(node);
    Q_EMIT tree.NodeClick(node);
}

void TestFaultsWindow::click_row()
{
    auto& list = control<ListView>("lvListView");
    const int row = some_row();
    if (row == 0)
        return;
    list.clear_selection();
    list.set_Selected(row, true);
    Q_EMIT list.ItemClick(row);
}

void TestFaultsWindow::tick_row()
{
    auto& list = control<ListView>("lvListView");
    const int row = some_row();
    if (row == 0)
        return;
    list.set_Checked(row, !list.Item(row).Checked);
    Q_EMIT list.ItemCheck(row);
}

void TestFaultsWindow::save()
{
    control<TextBox>("txtArtist").set_Text(u"Bob"_s);
    control<TextBox>("txtTitle").set_Text(u"Sky %1"_s.arg(++saves_ % 5));
    press("cmdSave");
}

void TestFaultsWindow::act()
{
    switch (below(8)) {
    case 0:
    case 1:
        return click_folder();
    case 2:
        return click_row();
    case 3:
    case 4:
        return tick_row();
    case 5:
        return save();
    case 6:
        return press(below(2) == 0 ? "PlayBtn" : "StopBtn");
    default:
        QTest::keyClick(window_.get(), Qt::Key_F5);
    }
}

QStringList TestFaultsWindow::names_on_disk()
{
    QStringList names;
    for (const QString& folder : folders) {
        for (const File& file : shared.fso.GetFolder(folder).Files())
            names.append(file.Name);
    }
    names.sort();
    return names;
}

/// Whether every file is still there.
QStringList TestFaultsWindow::findings() const
{
    QStringList found;
    for (const QString& folder : folders) {
        QByteArrayList audios;
        for (const File& file : shared.fso.GetFolder(folder).Files())
            audios.append(disk_->read(folder + u'\\' + file.Name).chopped(128));
        for (int number = 1; number <= files_in_folder; ++number) {
            if (audios.count(audio_of(folder, number)) != 1)
                found.append(u"lost %1 of %2"_s.arg(number).arg(folder));
        }
    }
    return found;
}

void TestFaultsWindow::the_window_goes_on_whatever_fails()
{
    bool is_number = false;
    const int wanted = qEnvironmentVariableIntValue("QUILMO_FAULT_ACTIONS", &is_number);
    const int actions = is_number ? wanted : 1500;
    int strikes = 0;
    int renames = 0;
    QStringList names = names_on_disk();
    QList<int> errors;
    set_fatal_error_handler([&](const RunTimeError& error) { errors.append(error.number()); });
    for (int action = 1; action <= actions; ++action) {
        const DiskFault fault = disk_faults()[static_cast<std::size_t>(below(static_cast<int>(disk_faults().size())))];
        const QByteArray failed = with_fault({disk_->root()}, 1 + below(20), fault, [this] { act(); });
        strikes += failed.isEmpty() ? 0 : 1;
        const QStringList old_names = std::exchange(names, names_on_disk());
        renames += names != old_names ? 1 : 0;
        const QStringList found = findings();
        const QByteArray report = "action " + QByteArray::number(action) + ", " + fault.name + ", " + failed + ": " +
                                  found.join(u", "_s).toUtf8();
        QVERIFY2(found.isEmpty() && errors.isEmpty(), report.constData());
        if (below(20) == 0)
            shared.file_number_1_open = 0; // what stays open is open for the run; many runs are meant here
    }
    set_fatal_error_handler({});
    // Both have been at work, the faults and the person.
    QVERIFY(strikes > actions / 10);
    QVERIFY(renames > 0);
}

QUILMO_FAULTS_TEST(TestFaultsWindow)
#include "test_faults_window.moc"
