// A progress bar for what takes longer than a moment.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace qormodel {

/// Shows on a terminal how far a piece of work is, once it takes over a second; elsewhere nothing.
class Progress {
public:
    /// \param total the amount of work in some unit; 0 where nobody knows.
    Progress(std::string label, std::uint64_t total);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    /// Wipes the bar.
    ~Progress();

    void show(std::uint64_t done);

private:
    using Clock = std::chrono::steady_clock;

    std::string label;
    std::uint64_t total;
    Clock::time_point next;
    bool isOnTerminal;
    bool isShown = false;
};

}  // namespace qormodel
