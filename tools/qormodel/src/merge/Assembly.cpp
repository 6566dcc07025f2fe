#include "merge/Assembly.h"

#include "Failure.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

namespace qormodel {

namespace {
using Objects = std::vector<std::shared_ptr<ac::Object>>;

Objects childrenOf(const ac::Object& object) {
    return {object.getChildren().begin(), object.getChildren().end()};
}

bool isPrefix(const Objects& front, const Objects& whole) {
    return front.size() <= whole.size() && std::equal(front.begin(), front.end(), whole.begin());
}

// Detaches children from behind until what is left is the front of what is wanted.
void detachOthers(ac::Object& object, const Objects& wanted) {
    if (isPrefix(childrenOf(object), wanted)) return;
    while (object.getNumChildren() > 0) object.rmChild(std::uint64_t{0}, 0);
}

class Assembler {
public:
    using Tell = std::function<void(const Part&, const std::string&)>;

    Assembler(const std::vector<Part>& parts, const Tell& tell)
        : parts(parts), tell(tell), children(parts.size()), fields(parts.size()) {
        for (std::size_t i = 0; i < parts.size(); ++i)
            if (parts[i].parent != Part::none)
                (parts[i].isField ? fields : children)[parts[i].parent].push_back(i);
    }

    void checkForCircles() const {
        std::vector<std::size_t> waiting{0};
        std::size_t numHeld = 0;
        while (!waiting.empty()) {
            const std::size_t index = waiting.back();
            waiting.pop_back();
            ++numHeld;
            for (const auto* const list : {&children[index], &fields[index]})
                waiting.insert(waiting.end(), list->begin(), list->end());
        }
        if (numHeld != parts.size())
            throw Failure("the objects would hang below each other in a circle");
    }

    // Names can also clash without a move: where one of two siblings got the name of the other.
    void makeNamesUnique() const {
        for (std::size_t i = 0; i < parts.size(); ++i) {
            std::map<std::string, std::size_t> taken;
            for (const std::size_t child : children[i]) {
                ac::AttrContainer& each = *parts[child].container;
                const std::string name = each.getName();
                const auto [other, isFree] = taken.emplace(foldedName(name), child);
                if (isFree || isInherited(parts[other->second], parts[child])) continue;
                each.name(parts[i].container->generateUniqueName(name));
                taken.emplace(foldedName(each.getName()), child);
                tell(parts[child], name);
            }
        }
    }

    // Whether one version has the two below one parent with one name.
    static bool isInherited(const Part& a, const Part& b) {
        for (std::size_t i = 0; i < a.homes.size(); ++i)
            if (!a.homes[i].empty() && a.homes[i] == b.homes[i]) return true;
        return false;
    }

    void placeChildren() {
        for (std::size_t i = 0; i < parts.size(); ++i)
            if (const auto object = objectOf(i)) detachOthers(*object, wantedOf(i));
        for (std::size_t i = 0; i < parts.size(); ++i)
            if (const auto object = objectOf(i)) attachMissing(*object, i);
    }

    void placeFields() {
        for (std::size_t i = 0; i < parts.size(); ++i) {
            ac::AttrContainer& holder = *parts[i].container;
            rmOtherFields(holder, i);
            for (const std::size_t field : fields[i]) placeField(holder, parts[field]);
        }
    }

private:
    std::shared_ptr<ac::Object> objectOf(std::size_t index) const {
        return std::dynamic_pointer_cast<ac::Object>(parts[index].container);
    }

    Objects wantedOf(std::size_t index) const {
        Objects wanted;
        for (const std::size_t child : children[index]) wanted.push_back(objectOf(child));
        return wanted;
    }

    void attachMissing(ac::Object& parent, std::size_t index) {
        const std::uint64_t numThere = parent.getNumChildren();
        for (std::size_t i = numThere; i < children[index].size(); ++i) {
            const Part& part = parts[children[index][i]];
            const auto child = std::dynamic_pointer_cast<ac::Object>(part.container);
            if (const auto former = child->getParent()) former->rmChild(*child, 0);
            if (!parent.addChild(child, ac::AddFlags::SkipNameTest))
                throw Failure(child->getName() + " cannot be added to " + parent.getName());
        }
    }

    void rmOtherFields(ac::AttrContainer& holder, std::size_t index) const {
        std::set<const ac::AttrContainer*> wanted;
        for (const std::size_t field : fields[index]) wanted.insert(parts[field].container.get());
        std::vector<std::shared_ptr<ac::AttrContainer>> others;
        for (std::uint64_t token = 0; token < holder.getNumFields(); ++token)
            if (auto field = holder.getField(token).lock(); field && !wanted.contains(field.get()))
                others.push_back(std::move(field));
        for (const auto& field : others) holder.rmField(field);
    }

    static void placeField(ac::AttrContainer& holder, const Part& part) {
        if (holder.getFieldToken(*part.container) != ac::AttrContainer::noToken) return;
        const std::uint64_t token = holder.getFieldToken(part.slot);
        const bool isPlaced =
            token != ac::AttrContainer::noToken
                ? holder.setField(token, part.container)
                : holder.addField(part.container, part.slot, ac::AddFlags::MakeNameUnique);
        if (!isPlaced) throw Failure(part.slot + " cannot be added to " + holder.getName());
    }

    const std::vector<Part>& parts;
    const Tell& tell;
    std::vector<std::vector<std::size_t>> children;
    std::vector<std::vector<std::size_t>> fields;
};
}  // namespace

std::string homeOf(const Node& node) {
    return std::to_string(node.parent) + '/' + foldedName(node.slot);
}

void assemble(const std::vector<Part>& parts, bool withFields,
              const std::function<void(const Part&, const std::string&)>& tellRenamed) {
    Assembler assembler(parts, tellRenamed);
    assembler.checkForCircles();
    assembler.placeChildren();
    if (withFields) assembler.placeFields();
    assembler.makeNamesUnique();
}

}  // namespace qormodel
