// How much memory a read takes beside the length of what it reads.
#include <AttributeContainer/Object.h>

#include "support/BlockText.h"
#include "support/Streams.h"

#include <gtest/gtest.h>

#if defined(__GLIBC__)
#include <malloc.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <functional>
#include <memory>
#include <new>
#include <string>

namespace {
std::atomic<std::size_t> inUse{0};
std::atomic<std::size_t> mostInUse{0};
}  // namespace

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    void* const memory = std::malloc(size);
    if (!memory) return nullptr;
    const std::size_t now = inUse += malloc_usable_size(memory);
    for (std::size_t most = mostInUse; now > most && !mostInUse.compare_exchange_weak(most, now);) {
    }
    return memory;
}
void* operator new(std::size_t size) {
    if (void* const memory = operator new(size, std::nothrow)) return memory;
    throw std::bad_alloc();
}
// Where these are inlined, compilers take the free for one that does not fit its allocation.
[[gnu::noinline]] void operator delete(void* memory) noexcept {
    inUse -= malloc_usable_size(memory);
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

// The most bytes that were in use at once while the text was read, beside those before.
std::size_t peakOfReading(const std::string& text) {
    const auto root = Object::create();
    const std::size_t before = inUse;
    mostInUse = before;
    readText(*root, text);
    return mostInUse - before;
}

// So many bytes, or a few more, of blocks of an unknown class that lie inside one another.
std::string nested(std::size_t size, const std::string& begin, const std::string& end) {
    const std::size_t number = size / (begin.size() + end.size()) + 1;
    std::string text;
    for (std::size_t i = 0; i < number; ++i) text += begin;
    for (std::size_t i = 0; i < number; ++i) text += end;
    return text;
}

// A peak is no more than so many times the text, and grows no faster than it does.
void expectInProportion(const std::function<std::string(std::size_t)>& textOf, std::size_t times) {
    const std::string text = textOf(100'000);
    const std::size_t peak = peakOfReading(text);
    const std::size_t peakOfTwice = peakOfReading(textOf(200'000));
    testing::Test::RecordProperty("bytes_a_byte_read", std::to_string(peak / text.size()));
    EXPECT_LE(peak, times * text.size());
    EXPECT_LE(peakOfTwice, 2.3 * static_cast<double>(peak));
}

}  // namespace

TEST(ReadMemory, IsInProportionForChildrenOfUnknownClassesInsideOneAnother) {
    expectInProportion(
        [](std::size_t size) {
            return nested(size, "\nChild { \n\"Foo\" \"a\"" + containerBlock(), "\n}");
        },
        40);
}

TEST(ReadMemory, IsInProportionForFieldsOfUnknownClassesInsideOneAnother) {
    expectInProportion(
        [](std::size_t size) {
            return nested(size, "\nAttrContainer { \nSubContainer { \n\"Foo\" \"a\"", "\n}\n}");
        },
        40);
}

TEST(ReadMemory, IsInProportionForUnknownBlocksInsideOneAnother) {
    expectInProportion(
        [](std::size_t size) {
            return "Child { \"Foo\" \"a\" " + nested(size, "Bar { ", "} ") + "} ";
        },
        40);
}

TEST(ReadMemory, IsInProportionForChildrenOfUnknownClassesBesideOneAnother) {
    expectInProportion(
        [](std::size_t size) {
            std::string text;
            while (text.size() < size) text += childBlock("Foo", "a");
            return text;
        },
        100);
}
#endif
