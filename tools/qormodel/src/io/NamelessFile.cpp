#include "io/NamelessFile.h"

#include "Failure.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace qormodel {

namespace {
std::string temporaryFolder() {
    const char* const wanted = std::getenv("TMPDIR");
    return wanted && *wanted != '\0' ? wanted : "/tmp";
}
}  // namespace

NamelessFile::NamelessFile() {
    const std::string folder = temporaryFolder();
    std::string name = folder + "/qormodel.XXXXXX";
    descriptor = ::mkostemp(name.data(), O_CLOEXEC);
    if (descriptor < 0)
        throw Failure(Place{folder},
                      std::string("no temporary file can be made: ") + std::strerror(errno));
    ::unlink(name.c_str());
}

NamelessFile::~NamelessFile() {
    if (descriptor >= 0) ::close(descriptor);
}

int NamelessFile::release() {
    return std::exchange(descriptor, -1);
}

}  // namespace qormodel
