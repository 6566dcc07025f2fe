// A comparer that writes down what its walk does.
#pragma once

#include <AttributeContainer/AttrContComparer.h>

#include <string>
#include <vector>

namespace QOR::AttributeContainer::Testing {

/// Writes down every call, as "Gain|Gain" for a pair, "Gain|" and "|Gain" for one side alone,
/// "+Lens" and "-Lens" around a field and "+" and "-" around a slot that holds none.
class RecordingComparer : public AttrContComparer {
public:
    explicit RecordingComparer(int categories = allCategories, int compareMode = 0)
        : AttrContComparer(categories, compareMode) {}

    using AttrContComparer::addAttributes;
    using AttrContComparer::OptionalContainer;
    using AttrContComparer::runComparison;

    void reset() const override {
        AttrContComparer::reset();
        calls.clear();
    }
    void enterField(OptionalContainer field) const override {
        AttrContComparer::enterField(field);
        calls.push_back("+" + nameOf(field));
    }
    void exitField(OptionalContainer field) const override {
        AttrContComparer::exitField(field);
        calls.push_back("-" + nameOf(field));
    }
    std::uint64_t handleAttributes(const Attribute* first, const Attribute* second) const override {
        calls.push_back((first ? first->getName() : "") + "|" + (second ? second->getName() : ""));
        return AttrContComparer::handleAttributes(first, second);
    }

    mutable std::vector<std::string> calls;

private:
    static std::string nameOf(OptionalContainer field) {
        return field ? field->get().getName() : std::string{};
    }
};

}  // namespace QOR::AttributeContainer::Testing
