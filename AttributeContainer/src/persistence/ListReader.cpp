#include "persistence/ListReader.h"

#include <iterator>

namespace QOR::AttributeContainer {

namespace {

using Strings = std::vector<std::string>;

bool readBracedWords(TextSource& source, Strings& list) {
    source.drop();
    while (source.good()) {
        if (source.skipWhiteSpace() == '}') {
            source.drop();
            break;
        }
        auto word = source.readWord();
        if (!word) break;
        list.push_back(std::move(*word));
    }
    return true;
}

// Calls `readOne` as often as the number in front says, but only while there is something to read.
bool readCounted(TextSource& source, auto readOne) {
    std::int64_t count = 0;
    const bool any = ValueReader<std::int64_t>::get(source, count);
    for (; count > 0; --count) {
        if (source.good() && readOne()) continue;
        source.fail();
        break;
    }
    return any;
}

}  // namespace

bool ValueReader<Strings>::get(TextSource& source, Strings& list) {
    list.clear();
    if (source.peek() == '{') return readBracedWords(source, list);
    return readCounted(source, [&] {
        std::string element;
        if (!ValueReader<std::string>::get(source, element)) return false;
        list.push_back(std::move(element));
        return true;
    });
}

bool ValueReader<std::set<std::string>>::get(TextSource& source, std::set<std::string>& list) {
    Strings strings;
    const bool any = ValueReader<Strings>::get(source, strings);
    list = {std::make_move_iterator(strings.begin()), std::make_move_iterator(strings.end())};
    return any;
}

bool ValueReader<std::map<std::string, std::string>>::get(TextSource& source,
                                                          std::map<std::string, std::string>& map) {
    map.clear();
    return readCounted(source, [&] {
        std::string key;
        if (!ValueReader<std::string>::get(source, key)) return false;
        std::string& value = map[key];
        const int first = source.take();
        const int second = source.take();
        if (first != '=' || second != '>') return false;
        return ValueReader<std::string>::get(source, value);
    });
}

}  // namespace QOR::AttributeContainer
