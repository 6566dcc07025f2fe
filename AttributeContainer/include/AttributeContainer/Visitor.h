// The visitors that walk a container tree.
#pragma once

#include <AttributeContainer/Export.h>

#include <cstdint>

namespace QOR::AttributeContainer {

class AttrContainer;
class Attribute;
class Observer;

/// What every visitor has.
class QOR_API VisitorCore {
public:
    /// How a visit steers the walk. Results are combined bit by bit on their way up; a number
    /// that a visitor makes of its own converts by a cast.
    enum VisitResult : std::uint32_t {
        Continue = 0,  ///< go on
        Prune = 1,     ///< no deeper from here; the siblings follow
        Stop = 2,      ///< end the whole walk
        Skip = 4,      ///< this branch is not entered; steers as Prune does
    };

    virtual ~VisitorCore();
};

constexpr VisitorCore::VisitResult operator|(VisitorCore::VisitResult a,
                                             VisitorCore::VisitResult b) {
    return static_cast<VisitorCore::VisitResult>(static_cast<std::uint32_t>(a) |
                                                 static_cast<std::uint32_t>(b));
}

/// A visitor of elements `T`, which acts between two levels of the tree, both included. A level
/// counts from the element on which the walk begins, which is 0; ~0u as the last one means all.
template <class T>
class GeneralVisitor : public VisitorCore {
public:
    unsigned getFirstLevel() const { return firstLevel; }
    unsigned getMaxLevel() const { return maxLevel; }
    unsigned getHierLevel() const { return hierLevel; }
    /// The walk keeps the running level up to date through this.
    void setHierLevel(unsigned level) { hierLevel = level; }

    /// Visits one element; `getHierLevel` is its level.
    virtual VisitResult visit(T element) = 0;
    /// Visits it once more behind what it contains, in the modes that have both.
    virtual VisitResult visitDone(T) { return Continue; }

protected:
    GeneralVisitor(unsigned firstLevel, unsigned maxLevel)
        : firstLevel(firstLevel), maxLevel(maxLevel) {}

private:
    unsigned firstLevel;
    unsigned maxLevel;
    unsigned hierLevel = 0;
};

/// Visits attributes, container by container. Who overrides one `visit` hides the other one, unless
/// `using AttributeVisitor::visit` brings it back.
class QOR_API AttributeVisitor : public GeneralVisitor<Attribute&> {
public:
    AttributeVisitor(unsigned firstLevel, unsigned maxLevel)
        : GeneralVisitor<Attribute&>(firstLevel, maxLevel) {}
    ~AttributeVisitor() override;

    using GeneralVisitor<Attribute&>::visit;
    using GeneralVisitor<Attribute&>::visitDone;
    /// Behind the attributes and fields of a container.
    virtual VisitResult visitDone(AttrContainer& container);
    /// Ahead of them; a result that is not Continue keeps the walk out of the container.
    virtual VisitResult visit(AttrContainer& container);

    /// Whether walks pass over the attributes of a class level that nobody has ever asked for: they
    /// hold their defaults, have no marks and no observers. No at first: a walk visits them all.
    bool passesUntouched() const { return passes; }
    void setPassesUntouched(bool value) { passes = value; }

private:
    bool passes = false;
};

/// Visits observers, each behind what it contains.
class QOR_API ObserverVisitor : public GeneralVisitor<Observer&> {
public:
    ObserverVisitor(unsigned firstLevel, unsigned maxLevel)
        : GeneralVisitor<Observer&>(firstLevel, maxLevel) {}
    ~ObserverVisitor() override;
};

}  // namespace QOR::AttributeContainer
