// Visitors that look for fields.
#pragma once

#include <AttributeContainer/Visitor.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace QOR::AttributeContainer {

/// Finds the first container that a predicate takes. One behind which a walk is not to go can be
/// set to stop at.
class QOR_API FindField : public GeneralVisitor<AttrContainer&> {
public:
    FindField(const std::function<bool(const AttrContainer&)>& predicate, unsigned firstLevel,
              unsigned maxLevel);
    ~FindField() override;

    /// What was found; empty if nothing was.
    const std::shared_ptr<AttrContainer>& getMatch() const { return match; }
    const std::shared_ptr<AttrContainer>& getStopAt() const { return stopAt; }
    void setStopAt(std::shared_ptr<AttrContainer> container);

    /// \throws std::bad_function_call for an empty predicate, std::bad_weak_ptr for a match that no
    /// shared pointer owns.
    VisitResult visit(AttrContainer& container) override;

protected:
    void clearMatch() { match.reset(); }

private:
    std::function<bool(const AttrContainer&)> predicate;
    std::shared_ptr<AttrContainer> match;
    std::shared_ptr<AttrContainer> stopAt;
};

/// Collects all containers that a predicate takes, in the order of the walk.
class QOR_API CollectFields : public FindField {
public:
    CollectFields(const std::function<bool(const AttrContainer&)>& predicate, unsigned firstLevel,
                  unsigned maxLevel);
    ~CollectFields() override;

    auto begin() const { return fields.begin(); }
    auto end() const { return fields.end(); }
    /// The field of that place; an empty pointer past the end.
    std::shared_ptr<AttrContainer> get(std::uint64_t index) const;
    std::uint64_t getNumElements() const { return fields.size(); }
    void clearList() { fields.clear(); }

    VisitResult visit(AttrContainer& container) override;

private:
    std::vector<std::shared_ptr<AttrContainer>> fields;
};

}  // namespace QOR::AttributeContainer
