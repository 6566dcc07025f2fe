#include <QOR/Uuid.h>

#include "HexDigits.h"

#include <atomic>
#include <bit>
#include <cstring>
#include <random>

#if defined(__unix__) || defined(__APPLE__)
#include <pthread.h>
#endif

namespace QOR::uuids {

namespace {

// How many times this process was split off from another one. A child starts with a copy of its
// parent's generators and must not go on from there, or both would make the same identifiers.
std::atomic<unsigned> forks{0};

bool watchForks() {
#if defined(__unix__) || defined(__APPLE__)
    return pthread_atfork(nullptr, nullptr, [] { ++forks; }) == 0;
#else
    return true;
#endif
}

// xoshiro256**, seeded with 256 bits from the system: enough state that no two threads ever meet,
// and small enough to have one in every thread.
class Generator {
public:
    std::uint64_t next() {
        if (seededAfter != forks) seed();
        const auto result = std::rotl(state[1] * 5, 7) * 9;
        const auto shifted = state[1] << 17;
        state[2] ^= state[0];
        state[3] ^= state[1];
        state[1] ^= state[2];
        state[0] ^= state[3];
        state[2] ^= shifted;
        state[3] = std::rotl(state[3], 45);
        return result;
    }

private:
    void seed() {
        static const bool watching = watchForks();
        static_cast<void>(watching);
        seededAfter = forks;
        std::random_device device;
        for (auto& word : state) {
            word = device();
            word = word << 32 | device();
        }
        state[0] |= 1;  // the all-zero state would never leave itself
    }

    unsigned seededAfter = ~0u;
    std::array<std::uint64_t, 4> state{};
};

}  // namespace

uuid uuid::generate() {
    thread_local Generator generator;
    const std::array words{generator.next(), generator.next()};
    uuid result;
    std::memcpy(result.content.data(), words.data(), result.content.size());
    result.content[6] = static_cast<std::uint8_t>((result.content[6] & 0x0f) | 0x40);  // version 4
    result.content[8] = static_cast<std::uint8_t>((result.content[8] & 0x3f) | 0x80);  // variant 1
    return result;
}

std::optional<uuid> uuid::parse(const std::string& text) {
    std::size_t begin = 0;
    std::size_t end = text.size();
    if (text.starts_with('{')) {
        if (text.size() < 2 || !text.ends_with('}')) return std::nullopt;
        ++begin;
        --end;
    }

    constexpr std::size_t allDigits = 32;
    uuid result;
    std::size_t numDigits = 0;
    for (std::size_t i = begin; i < end; ++i) {
        if (text[i] == '-') continue;
        const int value = hexValue(text[i]);
        if (value < 0 || numDigits == allDigits) return std::nullopt;
        auto& byte = result.content[numDigits / 2];
        byte = static_cast<std::uint8_t>(byte << 4 | value);
        ++numDigits;
    }
    if (numDigits != allDigits) return std::nullopt;
    return result;
}

std::string uuid::toString() const {
    std::string text;
    text.reserve(36);
    for (std::size_t i = 0; i < content.size(); ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10) text += '-';
        text += hexDigits[content[i] >> 4];
        text += hexDigits[content[i] & 0x0f];
    }
    return text;
}

}  // namespace QOR::uuids
