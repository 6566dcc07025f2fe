#include "terminal/Progress.h"

#include "terminal/Output.h"

#include <algorithm>
#include <utility>

#include <unistd.h>

namespace qormodel {

Progress::Progress(std::string label, std::uint64_t total)
    : label(std::move(label)), total(total), next(Clock::now() + std::chrono::seconds(1)),
      isOnTerminal(::isatty(STDERR_FILENO) == 1) {}

Progress::~Progress() {
    if (isShown) printOnErrors("\r\033[K");
}

void Progress::show(std::uint64_t done) {
    if (!isOnTerminal || Clock::now() < next) return;
    next = Clock::now() + std::chrono::milliseconds(100);
    isShown = true;
    if (total == 0) {
        return printOnErrors(fmt::format("\r\033[K{} {} MB", label, done / 1'000'000));
    }
    constexpr int width = 30;
    const auto filled = static_cast<int>(std::min<std::uint64_t>(done, total) * width / total);
    printOnErrors(fmt::format("\r\033[K{} [{:=<{}}{:{}}] {:3} %", label, "", filled, "",
                              width - filled, std::min<std::uint64_t>(done, total) * 100 / total));
}

}  // namespace qormodel
