#include "store/KeyCompletion.h"

#include "io/SourceFile.h"
#include "store/TreeStructure.h"

#include <algorithm>

namespace qormodel {

namespace {
// A line of its own takes each name, and a terminal shows it.
bool isPlain(const std::string& name) {
    return !name.empty() &&
           std::ranges::none_of(name, [](unsigned char each) { return each < 32 || each == 127; });
}
}  // namespace

bool isStoreFile(const std::string& file) {
    return SourceFile(file).slice(0, 15) == "SQLite format 3";
}

std::vector<std::string> completeKeys(const StoreFile& store, const std::string& prefix) {
    const auto last = prefix.rfind('\\');
    const std::string holder = last == std::string::npos ? "" : prefix.substr(0, last + 1);
    const std::string begin = prefix.substr(holder.size());
    std::vector<std::string> paths;
    const auto key = StoreKey::inq(store, keyPath(holder));
    if (!key) return paths;
    for (const auto& subkey : key->listSubkeys()) {
        const std::string name = nameText(joinPairs(subkey));
        if (name.starts_with(begin) && isPlain(name)) paths.push_back(holder + name + '\\');
    }
    return paths;
}

std::vector<std::string> completeValues(const StoreFile& store, const std::string& key,
                                        const std::string& prefix) {
    std::vector<std::string> names;
    const auto found = StoreKey::inq(store, keyPath(key));
    if (!found) return names;
    for (const auto& value : found->listValues()) {
        const std::string name = nameText(joinPairs(value));
        const bool isOffered = isPlain(name) && value != structureName;
        if (isOffered && name.starts_with(prefix)) names.push_back(name);
    }
    return names;
}

}  // namespace qormodel
