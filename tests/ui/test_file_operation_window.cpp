#include "frame/look.h"
#include "platform/RunTimeError.h"
#include "platform/controls/FileProgressWindow.h"
#include "platform/controls/OverwriteDialog.h"
#include "platform/controls/PromptBoxes.h"
#include "platform/controls/SHFileOperation.h"
#include "platform/controls/file_work.h"
#include "platform/own_words.h"

#include "test_main.h"
#include "ui_file_prompts.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QSemaphore>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <stdexcept>

#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

using Overwrite = FilePrompts::Overwrite;
using OnError = FilePrompts::OnError;
using Answer = ScriptedPrompts::Answer;
using Gesture = std::function<void(QDialog& dialog)>;

constexpr auto look_again = 5ms;

/// Calls `act` with the next modal window of this kind, once it is in front. Nobody waits for it: it may come later.
template<typename Window> void when_shown(QObject* owner, const std::function<void(Window&)>& act)
{
    auto* looks = new QTimer(owner);
    QObject::connect(looks, &QTimer::timeout, owner, [looks, act] {
        auto* window = qobject_cast<Window*>(QApplication::activeModalWidget());
        if (window == nullptr || !window->isActiveWindow())
            return;
        looks->stop();
        looks->deleteLater();
        act(*window);
    });
    looks->start(look_again);
}

QAbstractButton* button_of(const QDialog& dialog, Word caption)
{
    const QList<QAbstractButton*> buttons = dialog.findChildren<QAbstractButton*>();
    const auto found = std::ranges::find(buttons, own_word(caption), &QAbstractButton::text);
    return found == buttons.end() ? nullptr : *found;
}

QStringList button_texts(const QDialog& dialog)
{
    QStringList texts;
    for (const QAbstractButton* button : dialog.findChildren<QAbstractButton*>())
        texts.append(button->text());
    texts.sort();
    return texts;
}

QStringList words(std::initializer_list<Word> captions)
{
    QStringList texts;
    for (const Word caption : captions)
        texts.append(own_word(caption));
    texts.sort();
    return texts;
}

Gesture click(Word caption)
{
    return [caption](QDialog& dialog) { QTest::mouseClick(button_of(dialog, caption), Qt::LeftButton); };
}

Gesture key(Qt::Key pressed)
{
    return [pressed](QDialog& dialog) { QTest::keyClick(dialog.windowHandle(), pressed); };
}

Gesture mnemonic(Word caption)
{
    return [caption](QDialog& dialog) {
        const QKeyCombination keys = QKeySequence::mnemonic(own_word(caption))[0];
        QTest::keyClick(dialog.windowHandle(), keys.key(), keys.keyboardModifiers());
    };
}

Gesture tab_to_the_next()
{
    return [](QDialog& dialog) {
        QTest::keyClick(dialog.windowHandle(), Qt::Key_Tab);
        QTest::keyClick(dialog.windowHandle(), Qt::Key_Space);
    };
}

Gesture close_box()
{
    return [](QDialog& dialog) { dialog.windowHandle()->close(); };
}

void add_gesture(const char* name, const Gesture& gesture, int answer)
{
    QTest::newRow(name) << gesture << answer;
}

template<typename Answer> void add_gesture(const char* name, const Gesture& gesture, Answer answer)
{
    add_gesture(name, gesture, static_cast<int>(answer));
}

FileFacts facts(const QString& path, qint64 size, qint64 seconds)
{
    return {.path = path, .is_folder = false, .size = size, .modified_seconds = seconds};
}

QString label_text(const QDialog& dialog, const QString& name)
{
    const auto* label = dialog.findChild<QLabel*>(name);
    return label == nullptr ? u"(no such label)"_s : label->text();
}

/// All texts of a window, without the places to break long words at.
QString all_texts(const QDialog& dialog)
{
    QStringList texts;
    for (const QLabel* label : dialog.findChildren<QLabel*>())
        texts.append(label->text());
    return texts.join(u'\n').remove(QChar(0x200b));
}

/// Work that goes on until it is let go or cancelled, as a copy of one large file does.
class HeldWork
{
public:
    FileOutcome operator()(FileOperationGuide& guide)
    {
        while (!let_go_.tryAcquire(1, 1)) {
            if (guide.is_cancelled())
                return {.failed = false, .aborted = true};
            guide.progress(progress);
        }
        return {};
    }

    void let_go() { let_go_.release(); }

    FileProgress progress;

private:
    QSemaphore let_go_;
};

/// A window of the program, with work of its own to do.
class MainWindow : public QWidget
{
public:
    MainWindow()
    {
        setMouseTracking(true);
        connect(&clock_, &QTimer::timeout, this, [this] {
            ++ticks;
            update();
        });
        clock_.start(look_again);
    }

    int ticks = 0;
    int paints = 0;
    int inputs = 0;

protected:
    void paintEvent(QPaintEvent* /*event*/) override { ++paints; }
    void mouseMoveEvent(QMouseEvent* /*event*/) override { ++inputs; }
    void keyPressEvent(QKeyEvent* /*event*/) override { ++inputs; }

private:
    QTimer clock_;
};

/// Notes whether a progress window was shown as long as the object lives.
class ProgressWatch : public QObject
{
public:
    ProgressWatch() { qApp->installEventFilter(this); }
    bool was_shown = false;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Show && qobject_cast<FileProgressWindow*>(watched) != nullptr)
            was_shown = true;
        return false;
    }
};

FileProgressWindow* progress_window()
{
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* found = qobject_cast<FileProgressWindow*>(window); found != nullptr && found->isVisible())
            return found;
    }
    return nullptr;
}

int run(int wFunc, const QString& pFrom, const QString& pTo, bool* aborted = nullptr)
{
    SHFILEOPSTRUCT operation{.wFunc = wFunc, .pFrom = pFrom, .pTo = pTo};
    operation.fAnyOperationsAborted = true;
    const int result = SHFileOperation(operation);
    if (aborted != nullptr)
        *aborted = operation.fAnyOperationsAborted;
    return result;
}

const QString nul(QChar::Null);

} // namespace

Q_DECLARE_METATYPE(Gesture)

class TestFileOperationWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { apply_look(); }

    void init()
    {
        acts_ = std::make_unique<QObject>();
        main_ = new MainWindow;
        main_->resize(400, 300);
        main_->show();
        QVERIFY(QTest::qWaitForWindowActive(main_));
    }

    void cleanup()
    {
        acts_.reset();
        delete main_;
        QCOMPARE(QApplication::overrideCursor(), nullptr);
        QCOMPARE(progress_window(), nullptr);
    }

    // Prompts

    void the_overwrite_prompt_takes_each_answer_data()
    {
        gesture_columns();
        add_gesture("Yes", click(Word::button_yes), Overwrite::yes);
        add_gesture("Yes to All", click(Word::button_yes_to_all), Overwrite::yes_to_all);
        add_gesture("No", click(Word::button_no), Overwrite::no);
        add_gesture("No to All", click(Word::button_no_to_all), Overwrite::no_to_all);
        add_gesture("Cancel", click(Word::button_cancel), Overwrite::cancel);
        add_gesture("Yes by its letter", mnemonic(Word::button_yes), Overwrite::yes);
        add_gesture("Yes to All by its letter", mnemonic(Word::button_yes_to_all), Overwrite::yes_to_all);
        add_gesture("No by its letter", mnemonic(Word::button_no), Overwrite::no);
        add_gesture("No to All by its letter", mnemonic(Word::button_no_to_all), Overwrite::no_to_all);
        add_gesture("Enter says no", key(Qt::Key_Return), Overwrite::no);
        add_gesture("Tab goes to the button after No", tab_to_the_next(), Overwrite::no_to_all);
        add_gesture("Esc cancels", key(Qt::Key_Escape), Overwrite::cancel);
        add_gesture("the close box cancels", close_box(), Overwrite::cancel);
    }

    void the_overwrite_prompt_takes_each_answer()
    {
        QFETCH(const Gesture, gesture);
        when_shown<OverwriteDialog>(acts_.get(), gesture);
        const Overwrite answer =
            PromptBoxes().ask_overwrite(facts(u"D:\\new\\a.mp3"_s, 1, 1), facts(u"C:\\old\\a.mp3"_s, 2, 2));
        QTEST(static_cast<int>(answer), "answer");
    }

    void the_error_prompt_takes_each_answer_data()
    {
        gesture_columns();
        add_gesture("Skip", click(Word::button_skip), OnError::skip);
        add_gesture("Cancel", click(Word::button_cancel), OnError::cancel);
        add_gesture("Skip by its letter", mnemonic(Word::button_skip), OnError::skip);
        add_gesture("Enter skips", key(Qt::Key_Return), OnError::skip);
        add_gesture("Esc cancels", key(Qt::Key_Escape), OnError::cancel);
        add_gesture("the close box cancels", close_box(), OnError::cancel);
    }

    void the_error_prompt_takes_each_answer()
    {
        QFETCH(const Gesture, gesture);
        QStringList buttons;
        QString text;
        when_shown<QMessageBox>(acts_.get(), [&](QMessageBox& box) {
            buttons = button_texts(box);
            text = all_texts(box);
            gesture(box);
        });
        const OnError answer = PromptBoxes().ask_error(u"C:\\Music\\a.mp3"_s, u"No space left on device"_s, true);
        QTEST(static_cast<int>(answer), "answer");
        QCOMPARE(buttons, words({Word::button_skip, Word::button_cancel}));
        QVERIFY(text.contains(u"C:\\Music\\a.mp3"_s));
        QVERIFY(text.contains(u"No space left on device"_s));
    }

    void the_last_error_is_only_told_data()
    {
        QTest::addColumn<Gesture>("gesture");
        QTest::newRow("OK") << click(Word::button_ok);
        QTest::newRow("Enter") << key(Qt::Key_Return);
        QTest::newRow("Esc") << key(Qt::Key_Escape);
        QTest::newRow("the close box") << close_box();
    }

    void the_last_error_is_only_told()
    {
        QFETCH(const Gesture, gesture);
        QStringList buttons;
        when_shown<QMessageBox>(acts_.get(), [&](QMessageBox& box) {
            buttons = button_texts(box);
            gesture(box);
        });
        QCOMPARE(PromptBoxes().ask_error(u"C:\\a.mp3"_s, u"Permission denied"_s, false), OnError::skip);
        QCOMPARE(buttons, words({Word::button_ok}));
    }

    void the_trash_prompt_takes_each_answer_data()
    {
        gesture_columns();
        add_gesture("Yes", click(Word::button_yes), true);
        add_gesture("No", click(Word::button_no), false);
        add_gesture("Yes by its letter", mnemonic(Word::button_yes), true);
        add_gesture("No by its letter", mnemonic(Word::button_no), false);
        add_gesture("Enter says yes", key(Qt::Key_Return), true);
        add_gesture("Esc says no", key(Qt::Key_Escape), false);
        add_gesture("the close box says no", close_box(), false);
    }

    void the_trash_prompt_takes_each_answer()
    {
        QFETCH(const Gesture, gesture);
        when_shown<QMessageBox>(acts_.get(), gesture);
        QTEST(static_cast<int>(PromptBoxes().ask_trash({u"C:\\a.mp3"_s})), "answer");
    }

    void the_prompt_of_a_deletion_for_good_takes_each_answer_data()
    {
        gesture_columns();
        add_gesture("Yes", click(Word::button_yes), true);
        add_gesture("No", click(Word::button_no), false);
        add_gesture("Yes by its letter", mnemonic(Word::button_yes), true);
        add_gesture("No by its letter", mnemonic(Word::button_no), false);
        add_gesture("Enter says no", key(Qt::Key_Return), false);
        add_gesture("Esc says no", key(Qt::Key_Escape), false);
        add_gesture("the close box says no", close_box(), false);
    }

    void the_prompt_of_a_deletion_for_good_takes_each_answer()
    {
        QFETCH(const Gesture, gesture);
        when_shown<QMessageBox>(acts_.get(), gesture);
        QTEST(static_cast<int>(PromptBoxes().ask_delete({u"C:\\a.mp3"_s})), "answer");
    }

    void deletions_name_one_item_and_count_several()
    {
        const QStringList one = {u"C:\\Music\\<b>x</b> & y.mp3"_s};
        const QStringList three = {u"C:\\a"_s, u"C:\\b"_s, u"C:\\c"_s};
        PromptBoxes boxes;
        QCOMPARE(text_of([&] { boxes.ask_trash(one); }), own_word(Word::ask_trash_one).arg(u"<b>x</b> & y.mp3"_s));
        QCOMPARE(text_of([&] { boxes.ask_trash(three); }), own_word(Word::ask_trash_several).arg(3));
        QCOMPARE(text_of([&] { boxes.ask_delete(one); }), own_word(Word::ask_delete_one).arg(u"<b>x</b> & y.mp3"_s));
        QCOMPARE(text_of([&] { boxes.ask_delete(three); }), own_word(Word::ask_delete_several).arg(3));
    }

    void texts_are_plain()
    {
        PromptBoxes boxes;
        const QString name = u"<b>x</b>\n&amp; %1.mp3"_s;
        const QString shown = u"<b>x</b> &amp; %1.mp3"_s;
        const FileFacts file = facts(u"C:\\<i>\\"_s + name, 1, 1);
        for (const std::function<void()>& ask : {std::function<void()>([&] { boxes.ask_overwrite(file, file); }),
                                                 std::function<void()>([&] { boxes.ask_error(name, name, true); }),
                                                 std::function<void()>([&] { boxes.ask_trash({name}); }),
                                                 std::function<void()>([&] { boxes.ask_delete({name}); })}) {
            bool is_plain = false;
            QString text;
            when_shown<QDialog>(acts_.get(), [&](QDialog& dialog) {
                const QList<QLabel*> labels = dialog.findChildren<QLabel*>();
                is_plain = std::ranges::all_of(labels, [](const QLabel* label) {
                    return label->text().isEmpty() || label->textFormat() == Qt::PlainText;
                });
                text = all_texts(dialog);
                dialog.reject();
            });
            ask();
            QVERIFY(is_plain);
            QVERIFY2(text.contains(shown), qPrintable(text));
        }
    }

    void the_overwrite_prompt_shows_both_files_data()
    {
        QTest::addColumn<qint64>("source_seconds");
        QTest::addColumn<QString>("newer");
        QTest::newRow("the source is newer") << qint64(1'700'000'001) << u"Facts_source_newer"_s;
        QTest::newRow("the target is newer") << qint64(1'699'999'999) << u"Facts_target_newer"_s;
        QTest::newRow("both are of one time") << qint64(1'700'000'000) << QString();
    }

    void the_overwrite_prompt_shows_both_files()
    {
        QFETCH(const qint64, source_seconds);
        QFETCH(const QString, newer);
        bool looked = false;
        when_shown<OverwriteDialog>(acts_.get(), [&](OverwriteDialog& dialog) {
            looked = true;
            const QLocale locale = QLocale::system();
            const auto date = [&](qint64 seconds) {
                return locale.toString(QDateTime::fromSecsSinceEpoch(seconds), QLocale::ShortFormat);
            };
            QCOMPARE(label_text(dialog, u"Label_question"_s), own_word(Word::ask_replace).arg(u"a.mp3"_s));
            QCOMPARE(label_text(dialog, u"Facts_source_folder"_s), u"D:\\new"_s);
            QCOMPARE(label_text(dialog, u"Facts_source_size"_s), locale.formattedDataSize(0));
            QCOMPARE(label_text(dialog, u"Facts_source_date"_s), date(source_seconds));
            QCOMPARE(label_text(dialog, u"Facts_target_folder"_s), u"C:\\old"_s);
            QCOMPARE(label_text(dialog, u"Facts_target_size"_s),
                     locale.formattedDataSize(5 << 20, 2, QLocale::DataSizeTraditionalFormat));
            QCOMPARE(label_text(dialog, u"Facts_target_date"_s), date(1'700'000'000));
            for (const QString& mark : {u"Facts_source_newer"_s, u"Facts_target_newer"_s})
                QCOMPARE(label_text(dialog, mark), mark == newer ? own_word(Word::replace_newer) : QString());
        });
        // Whatever the look finds, the prompt has its answer.
        QTimer::singleShot(1s, acts_.get(), [] {
            if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
                dialog->reject();
        });
        when_shown<OverwriteDialog>(acts_.get(), [](OverwriteDialog& dialog) { dialog.reject(); });
        PromptBoxes().ask_overwrite(facts(u"D:\\new\\a.mp3"_s, 0, source_seconds),
                                    facts(u"C:\\old\\a.mp3"_s, 5 << 20, 1'700'000'000));
        QVERIFY(looked);
    }

    void long_names_leave_the_prompts_on_the_screen()
    {
        const QString path = u"C:\\"_s + QString(u'W').repeated(200) + u'\\' + QString(u'W').repeated(255);
        PromptBoxes boxes;
        constexpr int widest = 700;
        QVERIFY(width_of([&] { boxes.ask_overwrite(facts(path, 1, 1), facts(path, 1, 1)); }) <= widest);
        QVERIFY(width_of([&] { boxes.ask_error(path, u"reason"_s, true); }) <= widest);
        QVERIFY(width_of([&] { boxes.ask_trash({path}); }) <= widest);
        QVERIFY(width_of([&] { boxes.ask_delete({path}); }) <= widest);
    }

    void a_prompt_whose_window_goes_gives_the_safe_answer()
    {
        const auto drop_main = [this](QDialog& dialog) {
            QCOMPARE(dialog.parentWidget(), main_);
            delete main_;
        };
        when_shown<QDialog>(acts_.get(), drop_main);
        QCOMPARE(PromptBoxes().ask_overwrite(facts(u"D:\\a"_s, 1, 1), facts(u"C:\\a"_s, 1, 1)), Overwrite::cancel);
        init();
        when_shown<QDialog>(acts_.get(), drop_main);
        QCOMPARE(PromptBoxes().ask_error(u"C:\\a"_s, u"reason"_s, true), OnError::cancel);
        init();
        when_shown<QDialog>(acts_.get(), drop_main);
        QVERIFY(!PromptBoxes().ask_trash({u"C:\\a"_s}));
    }

    // Waiting

    void short_work_shows_no_window()
    {
        const ProgressWatch watch;
        const FileOutcome outcome = run_file_work(FileAction::copy, [](FileOperationGuide& guide) {
            guide.progress({.name = u"a.mp3"_s, .bytes_done = 1, .bytes_all = 2});
            return FileOutcome{.failed = true, .aborted = false};
        });
        QVERIFY(outcome.failed);
        QVERIFY(!outcome.aborted);
        QVERIFY(!watch.was_shown);
    }

    void longer_work_shows_how_far_it_has_come()
    {
        HeldWork work;
        work.progress = {.name = u"<b>x</b> & y.mp3"_s, .bytes_done = 3 << 20, .bytes_all = 12 << 20};
        QElapsedTimer clock;
        qint64 shown_after = 0;
        QString title;
        QString texts;
        int part = 0;
        Qt::CursorShape first_cursor{};
        bool has_cursor = true;
        QTimer::singleShot(0, acts_.get(), [&] { first_cursor = QApplication::overrideCursor()->shape(); });
        when_shown<FileProgressWindow>(acts_.get(), [&](FileProgressWindow& window) {
            shown_after = clock.elapsed();
            has_cursor = QApplication::overrideCursor() != nullptr;
            title = window.windowTitle();
            texts = all_texts(window);
            const auto* bar = window.findChild<QProgressBar*>();
            part = 100 * (bar->value() - bar->minimum()) / (bar->maximum() - bar->minimum());
            work.let_go();
        });
        clock.start();
        const FileOutcome outcome = run_file_work(FileAction::move, std::ref(work));
        QVERIFY(!outcome.aborted);
        QVERIFY2(shown_after >= 500, qPrintable(QString::number(shown_after)));
        QCOMPARE(first_cursor, Qt::WaitCursor);
        QVERIFY(!has_cursor);
        QCOMPARE(title, own_word(Word::title_moving));
        QVERIFY2(texts.contains(u"<b>x</b> & y.mp3"_s), qPrintable(texts));
        QVERIFY2(texts.contains(own_word(Word::progress_amount).arg(megabytes_text(3), megabytes_text(12))),
                 qPrintable(texts));
        QCOMPARE(part, 25);
        QCOMPARE(progress_window(), nullptr);
    }

    void the_progress_follows_the_work()
    {
        FileProgressWindow window(FileAction::copy, nullptr);
        const auto* bar = window.findChild<QProgressBar*>();
        window.show_progress({});
        QCOMPARE(bar->maximum(), 0); // busy
        window.show_progress({.name = u"a"_s, .bytes_done = 0, .bytes_all = 10});
        QVERIFY(bar->maximum() > 0);
        QCOMPARE(bar->value(), 0);
        window.show_progress({.name = u"a"_s, .bytes_done = 20, .bytes_all = 10});
        QCOMPARE(bar->value(), bar->maximum());
        window.show_progress({.name = u"a"_s, .bytes_done = 5, .bytes_all = 0});
        QCOMPARE(bar->maximum(), 0);
        const QSize size = window.sizeHint();
        window.show_progress({.name = QString(u'W').repeated(255), .bytes_done = 1, .bytes_all = 1LL << 50});
        QCOMPARE(window.sizeHint(), size);
        const QString name = label_text(window, u"Label_name"_s);
        QVERIFY(name.startsWith(u'W') && name.endsWith(u'W') && name.contains(u'…'));
        for (const QLabel* label : window.findChildren<QLabel*>())
            QCOMPARE(label->textFormat(), Qt::PlainText);
    }

    void cancelling_ends_the_work_at_once_data()
    {
        QTest::addColumn<Gesture>("gesture");
        QTest::newRow("Cancel") << click(Word::button_cancel);
        QTest::newRow("Cancel by the space bar") << key(Qt::Key_Space);
        QTest::newRow("Esc") << key(Qt::Key_Escape);
        QTest::newRow("the close box") << close_box();
    }

    void cancelling_ends_the_work_at_once()
    {
        QFETCH(const Gesture, gesture);
        // The machine may be busy with something else once; not each time.
        qint64 quickest = 1000;
        for (int attempt = 0; attempt < 3 && quickest >= 100; ++attempt) {
            HeldWork work;
            QElapsedTimer clock;
            when_shown<FileProgressWindow>(acts_.get(), [&](FileProgressWindow& window) {
                clock.start();
                gesture(window);
            });
            const FileOutcome outcome = run_file_work(FileAction::copy, std::ref(work));
            QVERIFY(outcome.aborted);
            quickest = std::min(quickest, clock.elapsed());
        }
        QVERIFY2(quickest < 100, qPrintable(QString::number(quickest)));
    }

    void enter_does_not_cancel()
    {
        HeldWork work;
        bool is_still_shown = false;
        when_shown<FileProgressWindow>(acts_.get(), [&](FileProgressWindow& window) {
            QTest::keyClick(window.windowHandle(), Qt::Key_Return);
            QTest::keyClick(window.windowHandle(), Qt::Key_Enter);
            is_still_shown = window.isVisible();
            work.let_go();
        });
        QVERIFY(!run_file_work(FileAction::copy, std::ref(work)).aborted);
        QVERIFY(is_still_shown);
    }

    void a_cancelled_window_stays_until_the_work_has_ended()
    {
        QSemaphore let_go;
        bool was_cancelled = false;
        QString text;
        bool is_shown = false;
        bool has_button = true;
        when_shown<FileProgressWindow>(acts_.get(), [&](FileProgressWindow& window) {
            QTest::keyClick(window.windowHandle(), Qt::Key_Escape);
            QTest::keyClick(window.windowHandle(), Qt::Key_Escape);
            window.show_progress({.name = u"a"_s, .bytes_done = 1, .bytes_all = 2});
            text = label_text(window, u"Label_amount"_s);
            is_shown = window.isVisible();
            has_button = button_of(window, Word::button_cancel)->isEnabled();
            let_go.release();
        });
        run_file_work(FileAction::copy, [&](FileOperationGuide& guide) {
            let_go.acquire();
            was_cancelled = guide.is_cancelled();
            return FileOutcome{};
        });
        QVERIFY(was_cancelled);
        QVERIFY(is_shown);
        QVERIFY(!has_button);
        QCOMPARE(text, own_word(Word::progress_cancelling));
    }

    void the_windows_below_live_on()
    {
        HeldWork work;
        int ticks = 0;
        int paints = 0;
        when_shown<FileProgressWindow>(acts_.get(), [&](FileProgressWindow&) {
            ticks = main_->ticks;
            paints = main_->paints;
            when(
                acts_.get(), [&, this] { return main_->ticks > ticks + 3 && main_->paints > paints + 1; },
                [&] { work.let_go(); });
        });
        QVERIFY(!run_file_work(FileAction::copy, std::ref(work)).aborted);
        QVERIFY(main_->ticks > ticks);
        QVERIFY(main_->paints > paints);
    }

    void input_waits_until_the_work_is_over()
    {
        const ProgressWatch watch;
        HeldWork work;
        int inputs_meanwhile = -1;
        QCursor::setPos(main_->mapToGlobal(QPoint(10, 10)));
        QCoreApplication::processEvents();
        main_->inputs = 0;
        QTimer::singleShot(0, acts_.get(), [&, this] {
            QCursor::setPos(main_->mapToGlobal(QPoint(50, 50)));
            const int ticks = main_->ticks;
            when(
                acts_.get(), [ticks, this] { return main_->ticks > ticks + 3; },
                [&, this] {
                    inputs_meanwhile = main_->inputs;
                    work.let_go();
                });
        });
        run_file_work(FileAction::copy, std::ref(work));
        QVERIFY(!watch.was_shown);
        QCOMPARE(inputs_meanwhile, 0);
        QTRY_COMPARE(main_->inputs, 1);
    }

    void no_input_reaches_the_windows_below_the_progress()
    {
        HeldWork work;
        main_->inputs = 0;
        when_shown<FileProgressWindow>(acts_.get(), [&, this](FileProgressWindow&) {
            QTest::keyClick(main_->windowHandle(), Qt::Key_A);
            QTest::mouseMove(main_->windowHandle(), QPoint(100, 100));
            work.let_go();
        });
        run_file_work(FileAction::copy, std::ref(work));
        QCOMPARE(main_->inputs, 0);
        QTest::keyClick(main_->windowHandle(), Qt::Key_A);
        QCOMPARE(main_->inputs, 1);
    }

    void the_main_window_may_go_meanwhile()
    {
        HeldWork work;
        when_shown<FileProgressWindow>(acts_.get(), [this](FileProgressWindow& window) {
            QCOMPARE(window.parentWidget(), main_);
            delete main_;
        });
        QVERIFY(run_file_work(FileAction::copy, std::ref(work)).aborted);
        QCOMPARE(progress_window(), nullptr);
    }

    void the_main_window_may_go_before_the_progress_is_shown()
    {
        HeldWork work;
        QTimer::singleShot(0, acts_.get(), [this] { delete main_; });
        when_shown<FileProgressWindow>(acts_.get(), [&](FileProgressWindow&) { work.let_go(); });
        QVERIFY(!run_file_work(FileAction::copy, std::ref(work)).aborted);
    }

    void the_end_of_the_program_waits_for_the_work()
    {
        HeldWork work;
        ScriptedPrompts prompts;
        prompts.always = Answer::yes;
        bool is_done = false;
        QTimer::singleShot(0, acts_.get(), [&] {
            QTimer::singleShot(0, acts_.get(), [&] { QCoreApplication::exit(); });
            when_shown<FileProgressWindow>(acts_.get(), [&](FileProgressWindow&) { work.let_go(); });
            run_file_work(FileAction::copy, [&](FileOperationGuide& guide) {
                const FileOutcome outcome = work(guide);
                is_done = guide.ask_trash({u"C:\\a"_s}) && !outcome.aborted;
                return outcome;
            });
        });
        QApplication::exec();
        QVERIFY(is_done);
    }

    // Questions on the way

    void a_prompt_stands_in_front_of_the_progress()
    {
        HeldWork work;
        QPointer<QWidget> behind;
        Qt::CursorShape cursor{};
        when_shown<FileProgressWindow>(acts_.get(), [&, this](FileProgressWindow&) {
            when_shown<QMessageBox>(acts_.get(), [&](QMessageBox& box) {
                behind = box.parentWidget();
                cursor = QApplication::overrideCursor()->shape();
                QTest::keyClick(box.windowHandle(), Qt::Key_Return);
            });
            work.let_go();
        });
        bool was_progress = false;
        OnError answer = OnError::cancel;
        run_file_work(FileAction::copy, [&](FileOperationGuide& guide) {
            const FileOutcome outcome = work(guide);
            answer = guide.ask_error(u"C:\\a"_s, u"reason"_s, true);
            was_progress = qobject_cast<FileProgressWindow*>(behind.data()) != nullptr;
            return outcome;
        });
        QCOMPARE(answer, OnError::skip);
        QVERIFY(was_progress);
        QCOMPARE(cursor, Qt::ArrowCursor);
    }

    void thinking_over_a_prompt_brings_up_no_progress()
    {
        const ProgressWatch watch;
        bool answer = false;
        when_shown<QMessageBox>(acts_.get(), [this](QMessageBox& box) {
            QTimer::singleShot(700ms, acts_.get(), [&box] { QTest::keyClick(box.windowHandle(), Qt::Key_Return); });
        });
        run_file_work(FileAction::remove, [&](FileOperationGuide& guide) {
            answer = guide.ask_trash({u"C:\\a"_s});
            return FileOutcome{};
        });
        QVERIFY(answer);
        QVERIFY(!watch.was_shown);
    }

    void nobody_is_asked_after_a_cancel()
    {
        HeldWork work;
        ScriptedPrompts prompts; // fails the test at any question
        when_shown<FileProgressWindow>(acts_.get(), [](FileProgressWindow& window) { window.reject(); });
        Overwrite overwrite = Overwrite::yes;
        OnError on_error = OnError::skip;
        bool trash = true;
        bool good = true;
        run_file_work(FileAction::copy, [&](FileOperationGuide& guide) {
            const FileOutcome outcome = work(guide);
            overwrite = guide.ask_overwrite({}, {});
            on_error = guide.ask_error({}, {}, true);
            trash = guide.ask_trash({});
            good = guide.ask_delete({});
            return outcome;
        });
        QCOMPARE(overwrite, Overwrite::cancel);
        QCOMPARE(on_error, OnError::cancel);
        QVERIFY(!trash);
        QVERIFY(!good);
        QCOMPARE(prompts.take(), QStringList());
    }

    void an_error_of_the_work_reaches_the_caller()
    {
        const FileWork overflow = [](FileOperationGuide&) -> FileOutcome {
            throw RunTimeError(RunTimeError::overflow);
        };
        const FileWork too_long = [](FileOperationGuide&) -> FileOutcome { throw std::length_error("too long"); };
        QVERIFY_THROWS_EXCEPTION(RunTimeError, run_file_work(FileAction::copy, overflow));
        QVERIFY_THROWS_EXCEPTION(std::length_error, run_file_work(FileAction::copy, too_long));
    }

    void an_error_of_a_prompt_reaches_the_caller()
    {
        struct Failing : ScriptedPrompts
        {
            bool ask_trash(const QStringList& /*paths*/) override { throw RunTimeError(RunTimeError::overflow); }
        };
        const Failing prompts;
        const FileWork asking = [](FileOperationGuide& guide) {
            guide.ask_trash({});
            return FileOutcome{};
        };
        QVERIFY_THROWS_EXCEPTION(RunTimeError, run_file_work(FileAction::remove, asking));
    }

    // SHFileOperation

    void the_list_of_sources_ends_in_any_way_data()
    {
        QTest::addColumn<QString>("pFrom");
        const QString a = u"C:\\from\\a.mp3"_s;
        const QString b = u"C:\\from\\b.mp3"_s;
        QTest::newRow("without NUL") << a + nul + b;
        QTest::newRow("with one NUL") << a + nul + b + nul;
        QTest::newRow("with two NULs") << a + nul + b + nul + nul;
        QTest::newRow("with empty entries between") << nul + a + nul + nul + b;
    }

    void the_list_of_sources_ends_in_any_way()
    {
        QFETCH(const QString, pFrom);
        const TestDisk disk;
        disk.write(u"C:\\from\\a.mp3"_s, "a");
        disk.write(u"C:\\from\\b.mp3"_s, "b");
        disk.make_folder(u"C:\\to"_s);
        const ScriptedPrompts prompts;
        bool aborted = true;
        QCOMPARE(run(FO_COPY, pFrom, u"C:\\to"_s, &aborted), 0);
        QVERIFY(!aborted);
        QCOMPARE(disk.read(u"C:\\to\\a.mp3"_s), "a");
        QCOMPARE(disk.read(u"C:\\to\\b.mp3"_s), "b");
    }

    void an_empty_list_is_no_work_data()
    {
        QTest::addColumn<QString>("pFrom");
        QTest::newRow("nothing") << QString();
        QTest::newRow("one NUL") << nul;
        QTest::newRow("two NULs") << nul + nul;
    }

    void an_empty_list_is_no_work()
    {
        QFETCH(const QString, pFrom);
        const TestDisk disk;
        const ScriptedPrompts prompts;
        for (const int what : {FO_MOVE, FO_COPY, FO_DELETE, FO_RENAME}) {
            bool aborted = true;
            QCOMPARE(run(what, pFrom, u"C:\\no folder"_s, &aborted), 0);
            QVERIFY(!aborted);
        }
    }

    void the_four_operations()
    {
        const TestDisk disk;
        disk.write(u"C:\\a.mp3"_s, "a");
        disk.make_folder(u"C:\\to"_s);
        ScriptedPrompts prompts;
        QCOMPARE(run(FO_COPY, u"C:\\a.mp3"_s, u"C:\\to"_s), 0);
        QCOMPARE(disk.read(u"C:\\to\\a.mp3"_s), "a");
        QCOMPARE(run(FO_RENAME, u"C:\\to\\a.mp3"_s, u"C:\\to\\b.mp3"_s), 0);
        QCOMPARE(disk.read(u"C:\\to\\b.mp3"_s), "a");
        QCOMPARE(run(FO_MOVE, u"C:\\to\\b.mp3"_s, u"C:\\"_s), 0);
        QCOMPARE(disk.read(u"C:\\b.mp3"_s), "a");
        QVERIFY(!disk.exists(u"C:\\to\\b.mp3"_s));
        QCOMPARE(prompts.take(), QStringList());
        prompts.always = Answer::yes;
        QCOMPARE(run(FO_DELETE, u"C:\\b.mp3"_s + nul + nul, {}), 0);
        QCOMPARE(prompts.take().first(), u"trash C:\\b.mp3"_s);
        QVERIFY(!disk.exists(u"C:\\b.mp3"_s));
        QVERIFY(disk.exists(u"C:\\a.mp3"_s));
    }

    void results_tell_how_it_ended_data()
    {
        QTest::addColumn<int>("what");
        QTest::addColumn<QString>("pFrom");
        QTest::addColumn<QList<Answer>>("answers");
        QTest::addColumn<int>("result");
        QTest::addColumn<bool>("aborted");
        const QString a = u"C:\\a.mp3"_s;
        const QString none = u"C:\\none.mp3"_s;
        QTest::newRow("overwritten") << FO_COPY << a << QList{Answer::yes} << 0 << false;
        QTest::newRow("passed over") << FO_COPY << a << QList{Answer::no} << 0 << false;
        QTest::newRow("cancelled") << FO_COPY << a << QList{Answer::cancel} << ERROR_CANCELLED << true;
        QTest::newRow("an error") << FO_COPY << none << QList{Answer::skip} << ERROR_GEN_FAILURE << false;
        QTest::newRow("an error, and cancelled")
            << FO_COPY << none + nul + a << QList{Answer::cancel} << ERROR_CANCELLED << true;
        QTest::newRow("an error, then a file")
            << FO_COPY << none + nul + a << QList{Answer::skip, Answer::yes} << ERROR_GEN_FAILURE << false;
        QTest::newRow("a deletion declined") << FO_DELETE << a << QList{Answer::no} << ERROR_CANCELLED << true;
    }

    void results_tell_how_it_ended()
    {
        QFETCH(const int, what);
        QFETCH(const QString, pFrom);
        QFETCH(const QList<Answer>, answers);
        const TestDisk disk;
        disk.write(u"C:\\a.mp3"_s, "new");
        disk.write(u"C:\\to\\a.mp3"_s, "old");
        ScriptedPrompts prompts;
        prompts.answers = answers;
        bool aborted = false;
        QTEST(run(what, pFrom, u"C:\\to"_s, &aborted), "result");
        QTEST(aborted, "aborted");
        QCOMPARE(prompts.take().size(), answers.size());
        QCOMPARE(disk.read(u"C:\\to\\a.mp3"_s), answers.contains(Answer::yes) ? "new" : "old");
        QCOMPARE(disk.read(u"C:\\a.mp3"_s), "new");
    }

    void several_prompts_in_one_operation()
    {
        const TestDisk disk;
        for (const QString& name : {u"a.mp3"_s, u"b.mp3"_s, u"c.mp3"_s}) {
            disk.write(u"C:\\from\\"_s + name, "new");
            disk.write(u"C:\\to\\"_s + name, "old");
        }
        int prompts = 0;
        const auto press = [&](Word caption) {
            when_shown<OverwriteDialog>(acts_.get(), [&, caption](OverwriteDialog& dialog) {
                ++prompts;
                click(caption)(dialog);
            });
        };
        press(Word::button_no);
        when(
            acts_.get(), [&] { return prompts == 1; }, [&] { press(Word::button_yes_to_all); });
        QCOMPARE(
            run(FO_COPY, u"C:\\from\\a.mp3"_s + nul + u"C:\\from\\b.mp3"_s + nul + u"C:\\from\\c.mp3"_s, u"C:\\to"_s),
            0);
        QCOMPARE(prompts, 2);
        QCOMPARE(disk.read(u"C:\\to\\a.mp3"_s), "old");
        QCOMPARE(disk.read(u"C:\\to\\b.mp3"_s), "new");
        QCOMPARE(disk.read(u"C:\\to\\c.mp3"_s), "new");
    }

    void a_large_file_on_a_slow_disk_can_be_cancelled()
    {
        const TestDisk disk;
        disk.write(u"C:\\a.mp3"_s, QByteArray(8 << 20, 'x'));
        disk.make_folder(u"C:\\to"_s);
        FileCalls slow = FileCalls::of_this_machine();
        slow.copy_range = [](int source, int target, off_t offset, size_t length) {
            constexpr size_t piece = 4096;
            usleep(2000);
            off_t to = offset;
            return copy_file_range(source, &offset, target, &to, std::min(length, piece), 0);
        };
        QString texts;
        when_shown<FileProgressWindow>(acts_.get(), [&](FileProgressWindow& window) {
            texts = all_texts(window);
            window.reject();
        });
        const FileOutcome outcome = run_file_work(FileAction::copy, [&](FileOperationGuide& guide) {
            return run_file_operation(FileAction::copy, {u"C:\\a.mp3"_s}, u"C:\\to"_s, guide, slow);
        });
        QVERIFY(outcome.aborted);
        QVERIFY2(texts.contains(u"a.mp3"_s) && texts.contains(megabytes_text(8)), qPrintable(texts));
        QVERIFY(!disk.exists(u"C:\\to\\a.mp3"_s));
        QCOMPARE(disk.read(u"C:\\a.mp3"_s).size(), 8 << 20);
    }

    void thousands_of_small_files()
    {
        constexpr int count = 5000;
        const TestDisk disk;
        for (int i = 0; i < count; ++i)
            disk.write(u"C:\\from\\%1.mp3"_s.arg(i), "x");
        const ScriptedPrompts prompts;
        disk.make_folder(u"C:\\to"_s);
        FileCalls calls = FileCalls::of_this_machine();
        calls.sync = [](int) { return 0; }; // what takes the time on a real disk
        const FileOutcome outcome = run_file_work(FileAction::copy, [&](FileOperationGuide& guide) {
            return run_file_operation(FileAction::copy, {u"C:\\from"_s}, u"C:\\to"_s, guide, calls);
        });
        QVERIFY(!outcome.failed && !outcome.aborted);
        for (int i = 0; i < count; ++i)
            QVERIFY(disk.exists(u"C:\\to\\from\\%1.mp3"_s.arg(i)));
    }

private:
    static void gesture_columns()
    {
        QTest::addColumn<Gesture>("gesture");
        QTest::addColumn<int>("answer");
    }

    /// Calls `act` as soon as `condition` holds.
    static void when(QObject* owner, const std::function<bool()>& condition, const std::function<void()>& act)
    {
        auto* looks = new QTimer(owner);
        connect(looks, &QTimer::timeout, owner, [looks, condition, act] {
            if (!condition())
                return;
            looks->stop();
            looks->deleteLater();
            act();
        });
        looks->start(look_again);
    }

    /// The text of the message box that `ask` shows.
    QString text_of(const std::function<void()>& ask)
    {
        QString text;
        when_shown<QMessageBox>(acts_.get(), [&](QMessageBox& box) {
            text = box.text().remove(QChar(0x200b));
            box.reject();
        });
        ask();
        return text;
    }

    /// The width of the dialog that `ask` shows, in logical pixels.
    int width_of(const std::function<void()>& ask)
    {
        int width = 0;
        when_shown<QDialog>(acts_.get(), [&](QDialog& dialog) {
            width = dialog.width();
            dialog.reject();
        });
        ask();
        return width;
    }

    static QString megabytes_text(int megabytes)
    {
        return QLocale::system().formattedDataSize(qint64(megabytes) << 20, 1, QLocale::DataSizeTraditionalFormat);
    }

    std::unique_ptr<QObject> acts_; ///< what still waits to be done goes with it
    QPointer<MainWindow> main_;
};

QUILMO_UI_TEST(TestFileOperationWindow)
#include "test_file_operation_window.moc"
