// Runs a program and prints how many seconds it took from its start to its end:  stopwatch COMMAND...
// What it prints itself is lost, but for its errors. Ends with its exit status.

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>

int main(int argc, char** argv)
{
    if (argc < 2)
        return 2;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);

    const auto start = std::chrono::steady_clock::now();
    pid_t child = 0;
    int status = 0;
    if (posix_spawnp(&child, argv[1], &actions, nullptr, argv + 1, environ) != 0 ||
        waitpid(child, &status, 0) != child) {
        std::perror(argv[1]);
        return 1;
    }
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    std::printf("%.6f\n", taken.count());
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}
