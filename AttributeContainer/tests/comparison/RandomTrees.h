// Random pairs of container trees, with values that a stream keeps exactly.
#pragma once

#include "support/Containers.h"

#include <algorithm>
#include <array>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace QOR::AttributeContainer::Testing {

/// Makes trees that have much in common: the same names at the same places, few values, a few types
/// that are not those of the same name elsewhere.
class RandomTrees {
public:
    explicit RandomTrees(unsigned seed) : engine(seed) {}

    std::shared_ptr<AttrContainer> make() {
        auto root = AttrContainer::create();
        fill(*root, "root", 3);
        return root;
    }

private:
    using Points = std::vector<Vec3d<double>>;

    int upTo(int last) { return std::uniform_int_distribution(0, last)(engine); }
    bool oneIn(int number) { return upTo(number - 1) == 0; }
    // Quarters are kept by every type of number; 0 is left out, and with it what floats lack below.
    double quarter() { return 0.25 * (upTo(3) + 1); }
    std::string word() { return std::array{"low", "high", "a \"b\"\n"}[upTo(2)]; }
    template <class Names> Names shuffled(Names names) {
        std::shuffle(names.begin(), names.end(), engine);
        return names;
    }

    void fill(AttrContainer& container, const std::string& name, int depth) {
        container.name(name);
        if (auto* const mark = dynamic_cast<Mark*>(&container)) mark->Height(quarter());
        for (const char letter : shuffled(std::string("abcdefghij")))
            if (!oneIn(3)) addAttribute(container, letter);
        if (depth == 0) return;
        for (const char letter : shuffled(std::string("pqrst")))
            if (!oneIn(3)) addField(container, letter, depth);
    }

    // The name settles the type; but numbers are now and then of another.
    void addAttribute(AttrContainer& container, char letter) {
        const std::string name(1, letter);
        switch (letter) {
            case 'a': numberOrAnother<int>(container, name, upTo(3)); break;
            case 'b': numberOrAnother<double>(container, name, quarter()); break;
            case 'c': addCustom<std::string>(container, name, word()); break;
            case 'd': addCustom(container, name, oneIn(2)); break;
            case 'e': addCustom(container, name, Vec3d<double>{quarter(), 1, -quarter()}); break;
            case 'f':
                addCustom(container, name, Vec3d<float>{0.25f, 0.5f, float(quarter())});
                break;
            case 'g': addCustom(container, name, std::vector<double>(upTo(2), quarter())); break;
            case 'h': addCustom(container, name, Points(upTo(2), {quarter(), 2, 3})); break;
            case 'i': addCustom(container, name, std::vector<std::string>(upTo(2), word())); break;
            default: addCustom(container, name, Mat4d<double>::identity()); break;
        }
    }
    template <class T>
    void numberOrAnother(AttrContainer& container, const std::string& name, T value) {
        if (!oneIn(8)) {
            addCustom(container, name, value);
        } else if (oneIn(2)) {
            addCustom(container, name, upTo(3));
        } else {
            addCustom(container, name, quarter());
        }
    }

    void addField(AttrContainer& container, char letter, int depth) {
        const std::string name(1, letter);
        if (letter == 'p') {  // declared slots, which every tree has filled
            const auto pole = addNamedField<Pole>(container, name);
            pole->Length(upTo(2) + 1);
            pole->Top().lock()->Height(quarter());
            pole->name(name);
        } else if (letter == 'q' && oneIn(2)) {  // attributes declared here and added there
            fill(*addNamedField<Mark>(container, name), name, depth - 1);
        } else {
            fill(*addNamedField(container, name), name, depth - 1);
        }
    }

    std::mt19937 engine;
};

}  // namespace QOR::AttributeContainer::Testing
