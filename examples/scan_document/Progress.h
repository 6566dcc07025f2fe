// Tells people at a terminal how far a long step is.
#pragma once

#include <cstdint>
#include <string>

namespace example {

/// One line on the error output that is written over as the step goes on and is gone at its end.
/// Where the error output is no terminal, nothing appears.
class Progress {
public:
    /// \param total how much there is to do; 0 where nobody knows, then the amount itself is shown,
    /// as bytes.
    Progress(std::string label, std::uint64_t total);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress();

    /// Shows that `done` of the total is done; costs next to nothing where the line stays the same.
    void show(std::uint64_t done);

private:
    std::string label;
    std::uint64_t total;
    std::uint64_t shown = ~std::uint64_t{0};  // the number on the line; all ones for no line
    bool isTerminal;
};

}  // namespace example
