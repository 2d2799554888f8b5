#include "companion/companion.h"

#include <unistd.h>

#include <clocale>
#include <csignal>

int main(int argc, char** argv)
{
    std::setlocale(LC_CTYPE, "");
    return run_companion(std::span(argv, static_cast<std::size_t>(argc)),
                         {.in = stdin,
                          .out = stdout,
                          .err = stderr,
                          .shows_progress = isatty(STDERR_FILENO) != 0 && isatty(STDOUT_FILENO) == 0});
}
