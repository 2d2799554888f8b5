#include "companion/companion.h"
#include "companion/standard_streams.h"

#include <unistd.h>

#include <clocale>
#include <csignal>

int main(int argc, char** argv)
{
    fill_standard_streams();
    std::setlocale(LC_CTYPE, "");
    return run_companion(std::span(argv, static_cast<std::size_t>(argc)),
                         {.in = stdin,
                          .out = stdout,
                          .err = stderr,
                          .shows_progress = isatty(STDERR_FILENO) != 0 && isatty(STDOUT_FILENO) == 0});
}
