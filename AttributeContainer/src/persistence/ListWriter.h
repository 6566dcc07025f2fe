// The text of lists, sets and maps of values.
#pragma once

#include "persistence/ValueWriter.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace QOR::AttributeContainer {

/// Braces around the elements, with a blank before each, and a blank at the end.
template <class List> struct BracedListWriter {
    static void put(auto& text, const List& list) {
        using Element = typename List::value_type;
        text.character('{');
        for (const auto& element : list) {
            if (!text.good()) break;
            text.character(' ');
            ValueWriter<Element>::put(text, element);
        }
        text.text(" } ");
    }
};

/// The number of strings, then each behind a blank. There are no braces: a string could be taken
/// for one.
template <class List> struct CountedListWriter {
    static void put(auto& text, const List& list) {
        text.integer(list.size());
        for (const std::string& element : list) {
            if (!text.good()) break;
            text.character(' ');
            text.string(element);
        }
    }
};

template <class Element>
struct ValueWriter<std::vector<Element>> : BracedListWriter<std::vector<Element>> {};
template <class Element>
struct ValueWriter<std::set<Element>> : BracedListWriter<std::set<Element>> {};

template <>
struct ValueWriter<std::vector<std::string>> : CountedListWriter<std::vector<std::string>> {};
template <> struct ValueWriter<std::set<std::string>> : CountedListWriter<std::set<std::string>> {};

template <> struct ValueWriter<std::map<std::string, std::string>> {
    static void put(auto& text, const std::map<std::string, std::string>& map) {
        text.integer(map.size());
        for (const auto& [key, value] : map) {
            if (!text.good()) break;
            text.character(' ');
            text.string(key);
            text.text("=>");
            text.string(value);
        }
    }
};

}  // namespace QOR::AttributeContainer
