// A stream buffer that shows how much went through it.
#pragma once

#include "terminal/Progress.h"

#include <cstdint>
#include <streambuf>

namespace qormodel {

/// Passes on what it is given and tells a progress bar of it, now and then.
class ProgressBuffer : public std::streambuf {
public:
    /// Both outlive this buffer.
    ProgressBuffer(std::streambuf& target, Progress& progress)
        : target(target), progress(progress) {}

protected:
    int_type overflow(int_type character) override {
        if (traits_type::eq_int_type(character, traits_type::eof())) return 0;
        count(1);
        return target.sputc(traits_type::to_char_type(character));
    }
    std::streamsize xsputn(const char* data, std::streamsize size) override {
        count(static_cast<std::uint64_t>(size));
        return target.sputn(data, size);
    }
    int sync() override { return target.pubsync(); }

private:
    static constexpr std::uint64_t step = std::uint64_t{1} << 18;  // reading the clock costs too

    void count(std::uint64_t size) {
        done += size;
        if (done - shown < step) return;
        shown = done;
        progress.show(done);
    }

    std::streambuf& target;
    Progress& progress;
    std::uint64_t done = 0;
    std::uint64_t shown = 0;
};

}  // namespace qormodel
