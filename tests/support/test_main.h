#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

/// A home of the test's own: made before the application object, so that settings, home, music folder and trash all lie
/// in a temporary folder that goes with it.
class TestHome
{
public:
    TestHome();

    /// Path on disk of the home folder.
    QByteArray path() const;

private:
    QTemporaryDir folder_;
};

/// A temporary folder on disk that the program sees as the drive C: (and, by add_drive, further letters on subfolders
/// of it). Each object starts a fresh run: the shared state is cleared.
class TestDisk
{
public:
    TestDisk();
    ~TestDisk();
    TestDisk(const TestDisk&) = delete;
    TestDisk& operator=(const TestDisk&) = delete;

    /// Path on disk of the root of C:.
    QByteArray root() const;
    /// Path on disk of a path of the program, such as C:\Music\a.mp3.
    QByteArray native(const QString& program_path) const;
    /// Makes a folder, with those above it; gives its path as the program writes it, with trailing backslash.
    QString make_folder(const QString& program_path) const;
    /// Writes a file with its folders; replaces one that is there.
    void write(const QString& program_path, const QByteArray& content) const;
    /// The content of a file; null when there is none.
    QByteArray read(const QString& program_path) const;
    bool exists(const QString& program_path) const;

private:
    QTemporaryDir folder_;
};

/// Message boxes noted instead of shown, as long as the object lives.
class NotedMessages
{
public:
    NotedMessages();
    ~NotedMessages();
    NotedMessages(const NotedMessages&) = delete;
    NotedMessages& operator=(const NotedMessages&) = delete;

    /// The texts shown since the last take, oldest first.
    QStringList take();
    /// Title and style of the last box.
    QString last_title;
    int last_style = 0;

private:
    QStringList texts_;
};

/// The main function of a test without windows.
#define QUILMO_LOGIC_TEST(TestClass)                                                                                   \
    int main(int argc, char** argv)                                                                                    \
    {                                                                                                                  \
        const TestHome home;                                                                                           \
        const QCoreApplication application(argc, argv);                                                                \
        TestClass test;                                                                                                \
        return QTest::qExec(&test, argc, argv);                                                                        \
    }

/// The main function of a test with windows.
#define QUILMO_UI_TEST(TestClass)                                                                                      \
    int main(int argc, char** argv)                                                                                    \
    {                                                                                                                  \
        const TestHome home;                                                                                           \
        const QApplication application(argc, argv);                                                                    \
        TestClass test;                                                                                                \
        return QTest::qExec(&test, argc, argv);                                                                        \
    }
