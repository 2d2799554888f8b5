// Runs a program and prints how many seconds it took from its start to its end:  stopwatch COMMAND...
// or how many bytes of memory it had at most:  stopwatch --memory COMMAND...
// What it prints itself is lost, but for its errors. Ends with its exit status.

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstring>

int main(int argc, char** argv)
{
    const bool weighs = argc > 1 && std::strcmp(argv[1], "--memory") == 0;
    char** const command = argv + (weighs ? 2 : 1);
    if (*command == nullptr)
        return 2;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);

    const auto start = std::chrono::steady_clock::now();
    pid_t child = 0;
    int status = 0;
    rusage usage = {};
    if (posix_spawnp(&child, *command, &actions, nullptr, command, environ) != 0 ||
        wait4(child, &status, 0, &usage) != child) {
        std::perror(*command);
        return 1;
    }
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    if (weighs)
        std::printf("%ld\n", usage.ru_maxrss * 1024);
    else
        std::printf("%.6f\n", taken.count());
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}
