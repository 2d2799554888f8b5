#include "platform/controls/file_work.h"

#include "platform/controls/FileProgressWindow.h"
#include "platform/controls/FilePrompts.h"
#include "platform/controls/LongWork.h"
#include "platform/controls/front_window.h"

#include <QEventLoop>
#include <QMutex>
#include <QPointer>
#include <QThread>
#include <QTimer>

#include <atomic>
#include <exception>
#include <future>
#include <memory>
#include <optional>

using namespace std::chrono_literals;

namespace {

constexpr auto quiet_time = 500ms;
constexpr auto between_looks = 100ms;

/// Stands between the work on its thread and the person at the windows: its public functions and all slots run on the
/// thread of the windows, the guide's functions on that of the work.
class Desk : public QObject, private FileOperationGuide
{
public:
    explicit Desk(FileAction action);
    FileOutcome run(const FileWork& work);

private:
    Overwrite ask_overwrite(const FileFacts& source, const FileFacts& target) override;
    OnError ask_error(const QString& path, const QString& reason, bool more_follow) override;
    bool ask_trash(const QStringList& paths) override;
    bool ask_delete(const QStringList& paths) override;
    void progress(const FileProgress& progress) override;
    bool is_cancelled() const override { return is_cancelled_; }

    template<typename Answer, typename Question> Answer ask(Answer safe_answer, Question question);
    template<typename Answer, typename Question> Answer serve(Answer safe_answer, Question question);

    void show_window();
    void look();

    const FileAction action_;
    QTimer quiet_;
    QTimer looks_;
    std::optional<LongWork> wait_cursor_{std::in_place};
    QPointer<FileProgressWindow> window_;
    bool is_over_ = false;

    std::atomic_bool is_cancelled_ = false;
    QMutex progress_lock_;
    FileProgress progress_;
};

Desk::Desk(FileAction action) : action_(action)
{
    quiet_.setSingleShot(true);
    quiet_.setInterval(quiet_time);
    quiet_.setTimerType(Qt::PreciseTimer);
    looks_.setInterval(between_looks);
    connect(&quiet_, &QTimer::timeout, this, &Desk::show_window);
    connect(&looks_, &QTimer::timeout, this, &Desk::look);
}

FileOutcome Desk::run(const FileWork& work)
{
    FileOutcome outcome;
    std::exception_ptr failure;
    const std::unique_ptr<QThread> thread(QThread::create([&] {
        try {
            outcome = work(*this);
        } catch (...) {
            failure = std::current_exception();
        }
    }));
    connect(thread.get(), &QThread::finished, this, [this] { is_over_ = true; });
    quiet_.start();
    thread->start();
    // A loop of its own making: one that Qt runs ends when the program is told to quit, and the work would be left
    // alone.
    QEventLoop loop;
    while (!is_over_)
        loop.processEvents(QEventLoop::WaitForMoreEvents |
                           (window_ ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents));
    thread->wait();
    delete window_;
    if (failure)
        std::rethrow_exception(failure);
    return outcome;
}

void Desk::show_window()
{
    wait_cursor_.reset();
    window_ = new FileProgressWindow(action_, front_window());
    const auto cancel = [this] { is_cancelled_ = true; };
    connect(window_, &FileProgressWindow::Cancel, this, cancel);
    connect(window_, &QObject::destroyed, this, cancel);
    look();
    looks_.start();
    window_->show();
}

void Desk::look()
{
    const QMutexLocker lock(&progress_lock_);
    if (window_)
        window_->show_progress(progress_);
}

/// Called on the thread of the windows. Nobody is asked any more once the person has cancelled.
template<typename Answer, typename Question> Answer Desk::serve(Answer safe_answer, Question question)
{
    if (is_cancelled_)
        return safe_answer;
    quiet_.stop();
    const Answer answer = question(file_prompts());
    if (!window_)
        quiet_.start();
    return answer;
}

/// Called on the thread of the work, which waits for the answer; what the question throws comes out here.
template<typename Answer, typename Question> Answer Desk::ask(Answer safe_answer, Question question)
{
    std::packaged_task<Answer()> task([&] { return serve(safe_answer, question); });
    QMetaObject::invokeMethod(
        this, [&task] { task(); }, Qt::BlockingQueuedConnection);
    return task.get_future().get();
}

FileOperationGuide::Overwrite Desk::ask_overwrite(const FileFacts& source, const FileFacts& target)
{
    return ask(Overwrite::cancel, [&](FilePrompts& prompts) { return prompts.ask_overwrite(source, target); });
}

FileOperationGuide::OnError Desk::ask_error(const QString& path, const QString& reason, bool more_follow)
{
    return ask(OnError::cancel, [&](FilePrompts& prompts) { return prompts.ask_error(path, reason, more_follow); });
}

bool Desk::ask_trash(const QStringList& paths)
{
    return ask(false, [&](FilePrompts& prompts) { return prompts.ask_trash(paths); });
}

bool Desk::ask_delete(const QStringList& paths)
{
    return ask(false, [&](FilePrompts& prompts) { return prompts.ask_delete(paths); });
}

void Desk::progress(const FileProgress& progress)
{
    const QMutexLocker lock(&progress_lock_);
    progress_ = progress;
}

} // namespace

FileOutcome run_file_work(FileAction action, const FileWork& work)
{
    return Desk(action).run(work);
}
