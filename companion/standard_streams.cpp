#include "companion/standard_streams.h"

#include <fcntl.h>
#include <unistd.h>

void fill_standard_streams()
{
    for (int number = STDIN_FILENO; number <= STDERR_FILENO; ++number) {
        // The lowest free number is given; a descriptor of a path alone can be neither read nor written.
        if (fcntl(number, F_GETFD) < 0 && open("/", O_PATH) != number)
            _exit(1);
    }
}
