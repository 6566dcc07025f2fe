#include "Progress.h"

#include <algorithm>
#include <iostream>
#include <utility>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace example {

namespace {
bool isErrorOutputTerminal() {
#ifdef _WIN32
    return _isatty(2) != 0;
#else
    return isatty(STDERR_FILENO) != 0;
#endif
}
}  // namespace

Progress::Progress(std::string label, std::uint64_t total)
    : label(std::move(label)), total(total), isTerminal(isErrorOutputTerminal()) {}

Progress::~Progress() {
    if (shown == ~std::uint64_t{0}) return;
    std::cerr << '\r' << std::string(label.size() + 16, ' ') << '\r' << std::flush;
}

void Progress::show(std::uint64_t done) {
    if (!isTerminal) return;
    constexpr std::uint64_t megabyte = 1'000'000;
    // By way of a floating-point number, since a hundred times a count may not fit.
    const auto now = total > 0 ? static_cast<std::uint64_t>(100.0 * static_cast<double>(done) /
                                                            static_cast<double>(total))
                               : done / megabyte;
    if (now == shown) return;
    shown = now;
    std::cerr << '\r' << label << ' ';
    if (total > 0) {
        std::cerr << std::min<std::uint64_t>(now, 100) << " %";
    } else {
        std::cerr << now << " MB";
    }
    std::cerr << std::flush;
}

}  // namespace example
