#include "faulty_disk.h"
#include "test_main.h"

#include "platform/settings.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// One run of the program, whose store nobody has read before.
class Store
{
public:
    explicit Store(const QByteArray& content) : application_(u"Quilmo%1"_s.arg(++number_))
    {
        QDir().mkpath(folder());
        QFile file(path());
        if (!file.open(QFile::WriteOnly) || file.write(content) != content.size())
            qFatal("can't write the store");
    }
    ~Store() { QFile::remove(path()); }
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;

    const QString& application() const { return application_; }
    QByteArray content() const
    {
        QFile file(path());
        return file.open(QFile::ReadOnly) ? file.readAll() : "unreadable"_ba;
    }
    static QString folder() { return qEnvironmentVariable("XDG_CONFIG_HOME"); }

private:
    QString path() const { return folder() + u'/' + application_ + u".ini"_s; }

    static inline int number_ = 0;
    QString application_;
};

const QByteArray old_content = "[Settings]\nfirst=one\nsecond=two\n";
const QByteArray new_content = "[Settings]\nfirst=one\nsecond=new\n";

/// Runs `work` with every fault at every call; `check` gives whether all is well after it, when the run went on
/// undisturbed or not.
void with_all_faults(const std::function<void(const Store&)>& work,
                     const std::function<bool(const Store&, bool is_undisturbed)>& check)
{
    for (const DiskFault& fault : disk_faults()) {
        bool has_failed = true;
        for (int nth = 1; has_failed; ++nth) {
            const Store store(old_content);
            const QByteArray failed_call =
                with_fault({QFile::encodeName(Store::folder())}, nth, fault, [&] { work(store); });
            has_failed = !failed_call.isEmpty();
            QVERIFY2(check(store, !has_failed), (QByteArray(fault.name) + ", call " + QByteArray::number(nth) + ": " +
                                                 failed_call + "\n" + store.content())
                                                    .constData());
            QVERIFY(nth < 1000);
        }
    }
}

} // namespace

class TestFaultsSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void saving_leaves_the_old_or_the_new_store();
    void getting_gives_the_stored_text_or_the_default();
    void nothing_is_left_beside_the_store();
};

void TestFaultsSettings::saving_leaves_the_old_or_the_new_store()
{
    with_all_faults([](const Store& store) { SaveSetting(store.application(), u"Settings"_s, u"second"_s, u"new"_s); },
                    [](const Store& store, bool is_undisturbed) {
                        return store.content() == new_content || (!is_undisturbed && store.content() == old_content);
                    });
}

void TestFaultsSettings::getting_gives_the_stored_text_or_the_default()
{
    QString text;
    with_all_faults(
        [&text](const Store& store) {
            text = GetSetting(store.application(), u"Settings"_s, u"second"_s, u"default"_s);
        },
        [&text](const Store& store, bool is_undisturbed) {
            return store.content() == old_content && (text == u"two" || (!is_undisturbed && text == u"default"));
        });
}

void TestFaultsSettings::nothing_is_left_beside_the_store()
{
    constexpr DiskFault input_output_error{.name = "input/output error", .error = EIO};
    QByteArray failed_call = "none yet";
    for (int nth = 1; !failed_call.isEmpty(); ++nth) {
        const Store store(old_content);
        failed_call = with_fault({QFile::encodeName(Store::folder())}, nth, input_output_error,
                                 [&] { SaveSetting(store.application(), u"Settings"_s, u"second"_s, u"new"_s); });
        const QStringList beside = QDir(Store::folder()).entryList({store.application() + u"*"_s}, QDir::Files);
        QVERIFY2(beside.size() == 1 || failed_call.startsWith("unlink"), failed_call.constData());
    }
}

QUILMO_LOGIC_TEST(TestFaultsSettings)
#include "test_faults_settings.moc"
