#include "io/StandardFiles.h"

#include <fcntl.h>
#include <unistd.h>

namespace qormodel {

// A new file gets the lowest descriptor that is free.
void openStandardFiles() {
    if (::fcntl(STDIN_FILENO, F_GETFD) < 0) ::open("/dev/null", O_WRONLY);
    if (::fcntl(STDOUT_FILENO, F_GETFD) < 0) ::open("/dev/null", O_RDONLY);
    if (::fcntl(STDERR_FILENO, F_GETFD) < 0) ::open("/dev/null", O_WRONLY);
}

}  // namespace qormodel
