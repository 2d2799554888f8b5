#include "core/Mod_of_nation.h"
#include "core/mod_of_grobal_var.h"
#include "frame/QuilmoMain.h"
#include "frame/look.h"
#include "platform/MsgBox.h"
#include "platform/controls/CommonDialog.h"
#include "platform/controls/FileProgressWindow.h"
#include "platform/controls/ShellExecute.h"
#include "platform/controls/message_window.h"
#include "platform/controls/toolkit_words.h"
#include "platform/language.h"
#include "platform/settings.h"
#include "rights.h"
#include "test_main.h"
#include "ui_soak_final_list.h"
#include "ui_soak_prompts.h"
#include "ui_soak_report.h"
#include "ui_soak_tree.h"
#include "ui_soak_user.h"

#include <QApplication>
#include <QDialog>
#include <QPixmapCache>
#include <QTest>
#include <QTimer>

#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

constexpr int seconds_without_a_beat = 120;

int number_from_environment(const char* name, int otherwise)
{
    bool is_number = false;
    const int number = qEnvironmentVariableIntValue(name, &is_number);
    return is_number ? number : otherwise;
}

QtMessageHandler next_message_handler = nullptr;

/// Passes over what the offscreen platform tells of each window that opens.
void leave_out_platform_warnings(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (!message.startsWith(u"This plugin does not support"_s))
        next_message_handler(type, context, message);
}

/// What all sequences came to.
struct SoakResults
{
    int actions = 0;
    int sequences = 0;
    std::map<int, int> run_time_errors; ///< how many sequences each ended
    SoakCounts work;
    QStringList wrong;
};

/// One run of the program: a window on a tree of its own, used until it closes, until a run-time error ends it, or
/// until it was used enough.
class Sequence : public QObject
{
public:
    Sequence(unsigned seed, int actions, SoakTree& tree, SoakWatchdog& watchdog, SoakResults& results);
    ~Sequence() override;
    Q_DISABLE_COPY_MOVE(Sequence)

    /// Runs the program to its end.
    void run();
    int actions() const { return done_; }

private:
    void tick();
    void act();
    void check();
    void wind_up();
    void end_by(const RunTimeError& error);
    static bool is_at_work();

    const unsigned seed_;
    int actions_left_;
    SoakTree& tree_;
    SoakWatchdog& watchdog_;
    SoakResults& results_;
    SoakPrompts prompts_;
    std::unique_ptr<QuilmoMain> form_;
    std::optional<SoakUser> user_;
    std::optional<FinalListWatch> final_list_;
    QTimer ticks_;
    int done_ = 0;
    bool is_ending_ = false;
};

Sequence::Sequence(unsigned seed, int actions, SoakTree& tree, SoakWatchdog& watchdog, SoakResults& results)
    : seed_(seed),
      actions_left_(actions),
      tree_(tree),
      watchdog_(watchdog),
      results_(results),
      prompts_(tree, results.work)
{
    set_fatal_error_handler([this](const RunTimeError& error) { end_by(error); });
    ticks_.setSingleShot(true);
    connect(&ticks_, &QTimer::timeout, this, &Sequence::tick);
}

Sequence::~Sequence()
{
    set_fatal_error_handler({});
}

// The program ends with its window, as in earnest.
void Sequence::run()
{
    guarded([this] { form_ = std::make_unique<QuilmoMain>(); })();
    if (form_ == nullptr)
        return;
    form_->show();
    final_list_.emplace(*form_);
    user_.emplace(*form_, seed_);
    ticks_.start(0);
    QApplication::exec();
    ticks_.stop();
    check();
    results_.work[u"picked"_s] += final_list_->added();
    results_.work[u"dropped"_s] += final_list_->removed();
    final_list_.reset();
    user_.reset();
    form_.reset();
}

/// Whether the program is at work and listens to nobody.
bool Sequence::is_at_work()
{
    const QCursor* const cursor = QGuiApplication::overrideCursor();
    return cursor != nullptr && cursor->shape() == Qt::WaitCursor;
}

// It comes again before it acts: what it does may open a loop of events of its own.
void Sequence::tick()
{
    watchdog_.beat();
    if (!form_->isVisible())
        return;
    const bool rests = is_at_work() || is_ending_;
    ticks_.start(rests ? 1 : user_->is_acting() ? 0 : user_->rest());
    if (is_at_work())
        return;
    if (!is_ending_ && user_->is_acting()) {
        user_->go_on();
        return;
    }
    check();
    if (is_ending_)
        wind_up();
    else
        act();
}

void Sequence::act()
{
    const QString action = user_->act();
    note_soak_action(action);
    ++done_;
    is_ending_ = is_ending_ || --actions_left_ == 0;
}

void Sequence::check()
{
    if (is_ending_)
        return;
    QStringList wrong = final_list_->look();
    const auto* progress = qobject_cast<FileProgressWindow*>(QApplication::activeModalWidget());
    if (progress == nullptr)
        wrong += tree_.look(results_.work);
    if (wrong.isEmpty())
        return;
    tell_last_soak_actions();
    for (const QString& one : wrong) {
        qWarning("%s", qPrintable(one));
        results_.wrong.append(u"seed %1: "_s.arg(seed_) + one);
    }
    is_ending_ = true;
}

/// Closes what stands in front of the main window, and that in the end.
void Sequence::wind_up()
{
    if (QWidget* const popup = QApplication::activePopupWidget())
        popup->close();
    else if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
        dialog->reject();
    else
        form_->close();
}

void Sequence::end_by(const RunTimeError& error)
{
    if (!is_ending_)
        ++results_.run_time_errors[error.number()];
    is_ending_ = true;
}

} // namespace

class TestSoak : public QObject
{
    Q_OBJECT

public:
    explicit TestSoak(QByteArray home) : home_(std::move(home)) {}

private Q_SLOTS:
    void initTestCase();
    void random_actions_break_nothing();
    void cleanupTestCase();

private:
    int run_sequence(unsigned seed, int actions_left);
    void report() const;
    void check_work();
    void check_growth();

    const QByteArray home_;
    SoakResults results_;
    SoakWatchdog watchdog_{seconds_without_a_beat};
    std::vector<SoakResources> resources_; ///< at the end of each sequence
};

void TestSoak::initTestCase()
{
    apply_look();
    QPixmapCache::setCacheLimit(0); // the toolkit keeps the name of whatever was in it for good
    install_message_window(application_title());
    set_address_opener([this](const QUrl& /*address*/) { return ++results_.work[u"web page"_s] > 0; });
    set_file_chooser([this](const CommonDialog& /*dialog*/) {
        static const QStringList answers = {{}, u"C:\\no such program.exe"_s, u"C:\\Tools\\burner.ico"_s};
        return answers[++results_.work[u"burning program"_s] % answers.size()];
    });
    tell_soak_actions_on_crash();
    next_message_handler = qInstallMessageHandler(leave_out_platform_warnings);
}

void TestSoak::cleanupTestCase()
{
    qInstallMessageHandler(next_message_handler);
    set_file_chooser({});
    set_address_opener({});
    set_message_box({});
}

int TestSoak::run_sequence(unsigned seed, int actions_left)
{
    begin_soak_notes(seed);
    SoakDice dice(seed);
    const BoundByRights bound;
    SoakTree tree({.has_tiny_files = seed % 6 == 0, .has_many_files = seed % 8 == 3, .has_trash = seed % 5 != 1},
                  home_);
    set_program_language(static_cast<Language>(1 + seed % 3));
    translate_toolkit();
    for (const auto& [section, count] : {std::pair(u"fif_type"_s, 6), std::pair(u"genre_type"_s, 2)})
        SaveSetting(u"Quilmo"_s, section, u"location"_s, QString::number(1 + dice.below(count)));
    SaveSetting(u"Quilmo"_s, u"vol_type"_s, u"location"_s, seed % 40 == 7 ? u"loud"_s : u"35"_s);
    SaveSetting(u"Quilmo"_s, u"location_burn"_s, u"location"_s, {});

    Sequence sequence(seed, std::min(actions_left, 60 + dice.below(240)), tree, watchdog_, results_);
    sequence.run();
    results_.work[u"contents"_s] += tree.contents();
    results_.work[u"given up"_s] += tree.given_up_and_gone();
    return sequence.actions();
}

void TestSoak::random_actions_break_nothing()
{
    const int actions = number_from_environment("QUILMO_SOAK_ACTIONS", 1000);
    auto seed = static_cast<unsigned>(number_from_environment("QUILMO_SOAK_SEED", 1));
    while (results_.actions < actions && results_.wrong.isEmpty()) {
        results_.actions += run_sequence(seed++, actions - results_.actions);
        ++results_.sequences;
        resources_.push_back(SoakResources::now());
    }
    report();
    check_work();
    check_growth();
    QVERIFY2(results_.wrong.isEmpty(), qPrintable(results_.wrong.join(u'\n')));
}

/// A soak that does nothing proves nothing. What is rare must be there in a long one.
void TestSoak::check_work()
{
    const std::map<QString, int> most_actions_for_one = {{u"picked"_s, 200},  {u"renamed"_s, 200},
                                                         {u"moved"_s, 200},   {u"tagged"_s, 400},
                                                         {u"copied"_s, 2000}, {u"thrown away"_s, 2000}};
    for (const auto& [work, actions] : most_actions_for_one) {
        if (results_.work[work] < results_.actions / actions)
            results_.wrong.append(u"too little was %1: %2"_s.arg(work).arg(results_.work[work]));
    }
}

/// Once all has been used, the process holds about the same from then on. Heaps rise and fall with what a sequence did,
/// so that of them the least of many counts.
void TestSoak::check_growth()
{
    constexpr std::size_t fewest_sequences = 30;
    constexpr long long more_bytes = 1'000'000;
    if (resources_.size() < fewest_sequences)
        return;
    const std::size_t third = resources_.size() / 3;
    const auto before = std::span(resources_).subspan(third, third);
    const auto after = std::span(resources_).last(third);
    const auto least_bytes = [](auto of) { return std::ranges::min(of, {}, &SoakResources::bytes).bytes; };
    if (least_bytes(after) > least_bytes(before) + more_bytes)
        results_.wrong.append(u"the memory in use grows"_s);
    for (const auto what : {&SoakResources::descriptors, &SoakResources::threads}) {
        if (std::ranges::max(after, {}, what).*what > std::ranges::max(before, {}, what).*what)
            results_.wrong.append(u"the open files or threads become more"_s);
    }
}

void TestSoak::report() const
{
    QString text = u"%1 actions in %2 sequences;"_s.arg(results_.actions).arg(results_.sequences);
    for (const auto& [number, count] : results_.run_time_errors)
        text += u" %1 ended by run-time error %2;"_s.arg(count).arg(number);
    for (const auto& [work, count] : results_.work)
        text += u" %1 %2,"_s.arg(work).arg(count);
    qInfo("%s", qPrintable(text));
    const SoakResources& first = resources_.front();
    const SoakResources& last = resources_.back();
    qInfo("bytes %lld to %lld, descriptors %d to %d, threads %d to %d", first.bytes, last.bytes, first.descriptors,
          last.descriptors, first.threads, last.threads);
}

int main(int argc, char** argv)
{
    qputenv("QTEST_FUNCTION_TIMEOUT", "2147483647"); // a long soak; what hangs is found by its own watchdog
    const TestHome home;
    const QApplication application(argc, argv);
    TestSoak test(home.path());
    return QTest::qExec(&test, argc, argv);
}

#include "test_soak.moc"
