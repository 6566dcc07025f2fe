// Looks at the flags of a read or write context, for tests.
#pragma once

#include <gtest/gtest.h>

#include <vector>

namespace QOR::AttributeContainer::Testing {

/// One flag of a context, with its getter and setter and what it is at first.
template <class Context> struct ContextFlag {
    const char* name;
    bool (Context::*get)() const;
    void (Context::*set)(bool);
    bool defaultValue;
};

template <class Context>
void expectDefaults(const Context& context, const std::vector<ContextFlag<Context>>& flags) {
    for (const auto& flag : flags) EXPECT_EQ((context.*flag.get)(), flag.defaultValue) << flag.name;
}

/// That each setter changes the flag of its own getter, there and back, and no other one.
template <class Context>
void expectThatEachChangesAlone(const std::vector<ContextFlag<Context>>& flags) {
    for (const auto& changed : flags) {
        Context context;
        (context.*changed.set)(!changed.defaultValue);
        for (const auto& flag : flags) {
            const bool isChanged = flag.get == changed.get;
            EXPECT_EQ((context.*flag.get)(), flag.defaultValue != isChanged)
                << flag.name << " after setting " << changed.name;
        }
        (context.*changed.set)(changed.defaultValue);
        expectDefaults(context, flags);
    }
}

}  // namespace QOR::AttributeContainer::Testing
