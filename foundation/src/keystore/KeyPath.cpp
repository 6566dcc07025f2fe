#include "keystore/OpenKeys.h"
#include "keystore/WholeChange.h"

#include <array>
#include <span>
#include <string_view>
#include <vector>

namespace QOR::keystore {

namespace {

constexpr wchar_t separator = L'\\';

// The names of a path. Trailing and doubled separators name nothing.
class PathNames {
public:
    explicit PathNames(const wchar_t* path) {
        std::wstring_view rest = path ? path : L"";
        if (rest.starts_with(separator)) status = BadPathname;
        while (!rest.empty() && status == Success) {
            const std::size_t end = rest.find(separator);
            append(rest.substr(0, end));
            rest.remove_prefix(end == rest.npos ? rest.size() : end + 1);
        }
    }

    std::span<const std::wstring_view> names() const {
        return manyNames.empty() ? std::span(fewNames.data(), count) : std::span(manyNames);
    }

    /// What the name behind these is refused with.
    Status status = Success;

private:
    void append(std::wstring_view name) {
        if (name.empty()) return;
        if (lengthOf(name) > maxKeyName) {
            status = InvalidParameter;
            return;
        }
        if (count == fewNames.size() && manyNames.empty())
            manyNames.assign(fewNames.begin(), fewNames.end());
        if (manyNames.empty()) {
            fewNames[count++] = name;
        } else {
            manyNames.push_back(name);
        }
    }

    std::array<std::wstring_view, 8> fewNames;  // paths have few names: they need no memory
    std::size_t count = 0;
    std::vector<std::wstring_view> manyNames;
};

}  // namespace

Status inqPath(KeyTreeStore& store, KeyTreeStore::Node from, const wchar_t* path,
               KeyTreeStore::Node& found) {
    const PathNames parts(path);
    if (parts.status == BadPathname) return BadPathname;
    found = from;
    const Status status =
        parts.names().empty() ? store.checkKey(from) : store.inqPath(from, parts.names(), found);
    return status == Success ? parts.status : status;
}

namespace {

// Makes what is missing on the way down, all of it or nothing where the store knows how.
Status makeLevels(KeyTreeStore& store, KeyTreeStore::Node from,
                  std::span<const std::wstring_view> names, KeyTreeStore::Node& made, bool& isNew) {
    WholeChange change(store);
    Status status = change.status();
    made = from;
    isNew = false;
    for (std::size_t i = 0; i < names.size() && status == Success; ++i) {
        if (!isNew) status = store.inqSubkey(made, names[i], made);
        isNew = isNew || status == FileNotFound;
        if (isNew) status = store.makeSubkey(made, names[i], made);
    }
    return change.finish(status);
}

}  // namespace

Status makePath(KeyTreeStore& store, KeyTreeStore::Node from, const wchar_t* path,
                KeyTreeStore::Node& made, bool& isNew) {
    const PathNames parts(path);
    if (parts.status == BadPathname) return BadPathname;
    made = from;
    // A path without a name counts as new, as it does on the home platform.
    isNew = true;
    const auto names = parts.names();
    if (names.empty()) {
        const Status status = store.checkKey(from);
        return status == Success ? parts.status : status;
    }
    Status status = store.inqPath(from, names, made);
    isNew = status == FileNotFound;
    if (!isNew) return status == Success ? parts.status : status;

    // Mostly the last level alone is missing, and made in one step.
    made = from;
    status = names.size() == 1 ? Success : store.inqPath(from, names.first(names.size() - 1), made);
    if (status == Success) status = store.makeSubkey(made, names.back(), made);
    // Several are missing, or another program has removed one in between.
    if (status == FileNotFound || status == KeyDeleted)
        status = makeLevels(store, from, names, made, isNew);
    return status == Success ? parts.status : status;
}

}  // namespace QOR::keystore
