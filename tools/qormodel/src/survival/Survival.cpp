#include "survival/Survival.h"

#include "model/WrittenCopy.h"
#include "survival/ValueCompare.h"

#include <algorithm>
#include <map>
#include <utility>

namespace qormodel {

namespace {
constexpr std::size_t maxShown = 80;

// The beginning of a slice, on one line.
std::string shown(const SourceFile& source, const Slice& slice) {
    const bool isLong = slice.end - slice.begin > maxShown;
    std::string text = source.slice(slice.begin, isLong ? slice.begin + maxShown : slice.end);
    std::replace(text.begin(), text.end(), '\n', ' ');
    return isLong ? text + "..." : text;
}

std::string shown(std::string text) {
    if (text.size() <= maxShown) return text;
    return text.substr(0, maxShown) + "...";
}

// The text of a written copy.
struct Copy {
    explicit Copy(const Document& document)
        : file(document), source(file.getName()), outline(readOutline(source)) {}

    WrittenCopy file;
    SourceFile source;
    Outline outline;
};

class Comparison {
public:
    Comparison(const Document& document, const Copy& copy)
        : before(*document.source), after(copy.source), outline(document.outline),
          copied(copy.outline) {}

    std::vector<Loss> run() {
        std::vector<std::pair<std::size_t, std::size_t>> waiting{{0, 0}};
        while (!waiting.empty()) {
            const auto [first, second] = waiting.back();
            waiting.pop_back();
            compareElements(first, second);
            pairUp(outline.elements[first].fields, copied.elements[second].fields, waiting);
            pairUp(outline.elements[first].children, copied.elements[second].children, waiting);
        }
        std::stable_sort(losses.begin(), losses.end(),
                         [](const Loss& a, const Loss& b) { return a.line < b.line; });
        return std::move(losses);
    }

private:
    using Pairs = std::vector<std::pair<std::size_t, std::size_t>>;

    // Elements are paired by name, those of one name in their order.
    void pairUp(const std::vector<std::size_t>& first, const std::vector<std::size_t>& second,
                Pairs& waiting) {
        std::multimap<std::string, std::size_t> open;
        for (const std::size_t index : second) open.emplace(nameOf(copied, index), index);
        for (const std::size_t index : first) {
            const auto found = open.lower_bound(nameOf(outline, index));
            if (found == open.end() || found->first != nameOf(outline, index)) {
                add(outline.pathOf(index), outline.elements[index].block, "",
                    "the element is not taken over");
                continue;
            }
            waiting.emplace_back(index, found->second);
            open.erase(found);
        }
    }

    // A stored name attribute goes ahead of the name at the front of the block.
    static std::string nameOf(const Outline& of, std::size_t index) {
        return of.elements[index].name;
    }

    void compareElements(std::size_t first, std::size_t second) {
        const ElementText& a = outline.elements[first];
        const ElementText& b = copied.elements[second];
        const std::string path = outline.pathOf(first);
        if (a.className != b.className)
            losses.push_back({path, a.line, a.className, b.className, "the class changes"});
        std::map<std::string, const AttributeText*> byName;
        for (const auto& attribute : b.attributes) byName.emplace(attribute.name, &attribute);
        std::map<std::string, const AttributeText*> last;
        for (const auto& attribute : a.attributes) last[attribute.name] = &attribute;
        for (const auto& attribute : a.attributes) {
            const auto found = byName.find(attribute.name);
            compareAttributes(path, attribute, found == byName.end() ? nullptr : found->second,
                              last[attribute.name] == &attribute);
        }
        compareRelations(path, a.relations, b.relations);
        compareStrays(path, a, b);
    }

    void compareAttributes(const std::string& holder, const AttributeText& a,
                           const AttributeText* b, bool isLastOfName) {
        const std::string path = (holder == "/" ? holder : holder + '/') + a.name;
        if (!isLastOfName)
            return add(path, a.value, "", "an attribute of that name comes again further down");
        if (!b) {
            if (!isDefaultText(before, a.value))
                add(path, a.value, "", "the attribute is not taken over");
            return compareRelations(path, a.relations, {});
        }
        if (a.type != b->type)
            losses.push_back({path, a.line, a.type, b->type, "the class holds another type"});
        if (const auto difference = compareValues(a.type, before, a.value, after, b->value))
            losses.push_back({path, a.value.isEmpty() ? a.line : a.value.line,
                              shown(difference->before), shown(difference->after),
                              difference->reason});
        if (a.isWrite && !b->isWrite)
            losses.push_back({path, a.line, "Write", "", "the mark is not written again"});
        compareRelations(path, a.relations, b->relations);
    }

    void compareRelations(const std::string& path, const std::vector<RelationText>& a,
                          const std::vector<RelationText>& b) {
        for (const auto& relation : a) {
            const bool isKept = std::any_of(b.begin(), b.end(), [&](const auto& other) {
                return other.isAsked == relation.isAsked && other.path == relation.path &&
                       other.action == relation.action;
            });
            if (!isKept)
                losses.push_back({path, relation.line,
                                  "relation to " + relation.path + " (" + relation.action + ')', "",
                                  "the relation is not taken over"});
        }
    }

    void compareStrays(const std::string& path, const ElementText& a, const ElementText& b) {
        std::multimap<std::string, bool> kept;
        for (const auto& stray : b.strays) kept.emplace(after.slice(stray.begin, stray.end), true);
        for (const auto& stray : a.strays) {
            const auto found = kept.find(before.slice(stray.begin, stray.end));
            if (found == kept.end()) {
                add(path, stray, "", "the content is not understood and is dropped");
            } else {
                kept.erase(found);
            }
        }
    }

    void add(const std::string& path, const Slice& slice, const std::string& now,
             const std::string& reason) {
        losses.push_back({path, slice.line, shown(before, slice), now, reason});
    }

    const SourceFile& before;
    const SourceFile& after;
    const Outline& outline;
    const Outline& copied;
    std::vector<Loss> losses;
};
}  // namespace

std::vector<Loss> findLosses(const Document& document) {
    if (!document.source) return {};
    const Copy copy(document);
    return Comparison(document, copy).run();
}

std::string describe(const Loss& loss) {
    return "\"" + loss.before + "\" would be \"" + loss.after + "\": " + loss.reason;
}

}  // namespace qormodel
