// The reading of lists, sets and maps of values.
#pragma once

#include "persistence/ValueReader.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace QOR::AttributeContainer {

template <class Element> void addTo(std::vector<Element>& list, Element&& element) {
    list.push_back(std::move(element));
}
template <class Element> void addTo(std::set<Element>& list, Element&& element) {
    list.insert(std::move(element));
}

/// Elements up to a "}". The character in front of them is taken for the "{", whatever it is. What
/// was read stays where the stream ends early, or where an element takes no character.
template <class List> struct BracedListReader {
    static bool get(TextSource& source, List& list) {
        using Element = typename List::value_type;
        const bool any = source.skipWhiteSpace() != TextSource::endOfInput;
        source.take();
        list.clear();
        while (source.good()) {
            const int first = source.skipWhiteSpace();
            if (first == '}') {
                source.drop();
                break;
            }
            Element element{};
            if (first == TextSource::endOfInput || !ValueReader<Element>::get(source, element)) {
                source.fail();
                break;
            }
            addTo(list, std::move(element));
        }
        return any;
    }
};

template <class Element>
struct ValueReader<std::vector<Element>> : BracedListReader<std::vector<Element>> {};
template <class Element>
struct ValueReader<std::set<Element>> : BracedListReader<std::set<Element>> {};

/// A number of strings, or words between braces, a form that only old streams hold.
template <> struct ValueReader<std::vector<std::string>> {
    static bool get(TextSource& source, std::vector<std::string>& list);
};
template <> struct ValueReader<std::set<std::string>> {
    static bool get(TextSource& source, std::set<std::string>& list);
};
template <> struct ValueReader<std::map<std::string, std::string>> {
    static bool get(TextSource& source, std::map<std::string, std::string>& map);
};

}  // namespace QOR::AttributeContainer
