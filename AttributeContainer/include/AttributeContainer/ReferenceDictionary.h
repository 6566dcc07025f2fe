// Finds the containers that a stream refers to by instance key while it is read.
#pragma once

#include <AttributeContainer/Export.h>
#include <QOR/ErrorCode.h>

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace QOR::AttributeContainer {

class AttrContainer;
class ObservingObject;
class ReadContextBase;
class WriteContextBase;

/// The reading half of sharing: which container stands behind which instance key of the stream.
///
/// The keys are declared first, from the `SharedInstanceCollection` of the stream, then each is
/// registered when its container has been made. Holds the containers that it knows. A look-up
/// costs the logarithm of the number of keys. One thread at a time.
///
/// Fields that share fields that share fields double a tree with every level, and whatever walks it
/// afterwards, a write without sharing for one, meets each of them as often as it stands there.
/// The references of one stream therefore bring in at most `maxReferredContainers`, each counted
/// with all that is below it; the ones after that are skipped.
class QOR_API ReferenceDictionary {
public:
    static constexpr std::uint64_t maxReferredContainers = 10'000'000;

    static const std::string& getStaticClassName();
    virtual const std::string& getClassName() const;

    ReferenceDictionary();
    virtual ~ReferenceDictionary();

    /// \return the container of the key; empty if the key is unknown or not registered yet
    virtual std::shared_ptr<AttrContainer> resolveReference(std::uint64_t key);

    /// Enters the container of a declared key.
    /// \return false if the container is empty, the key was not declared, or another container
    /// stands there; then nothing changes.
    virtual bool registerReference(std::uint64_t key, std::shared_ptr<AttrContainer> container);

    /// Empties the entry of the key, which stays declared. \return false for an unknown key
    virtual bool unregisterReference(std::uint64_t key);

    /// Forgets everything and declares these keys. Leaves `keys` sorted.
    virtual void initializeFromVector(std::vector<std::uint64_t>& keys);

    /// Writes nothing, since the dictionary is no part of a stream. \return no error
    [[nodiscard]] virtual ErrorPtr writeTo(std::ostream& stream,
                                           std::shared_ptr<const WriteContextBase> context);

    /// \return ReadNotSupported in any case; the stream is not touched
    [[nodiscard]] virtual ErrorPtr readFrom(std::istream& stream,
                                            std::shared_ptr<const ReadContextBase> context);

private:
    friend class OpenContainer;  // refuses references to what a tree cannot take in

    // What references lead to, as found when they were read.
    struct TargetPart {
        std::weak_ptr<const ObservingObject> container;  // tells it from a later one in its place
        unsigned height = 0;                             // the levels of containers below it
        std::uint64_t extent = 1;  // it and what is below, shared ones as often as they stand there
    };

    /// Notes a target of a reference with all that is below it.
    /// \return false if nothing of it was new. Costs as many steps as are new.
    bool noteTarget(const AttrContainer& target);
    /// Null for a container that is no part of a target.
    const TargetPart* inqTargetPart(const AttrContainer& container) const;
    /// Counts one more reference to the target. \return false if that would be too much for a tree
    bool takeIn(const TargetPart& target);

    struct Entry {
        std::uint64_t key;
        std::shared_ptr<AttrContainer> container;
    };

    Entry* find(std::uint64_t key);  // null for an unknown key

    std::vector<Entry> entries;  // sorted by key
    std::unordered_map<const AttrContainer*, TargetPart> targetParts;
    std::uint64_t referredContainers = 0;
};

}  // namespace QOR::AttributeContainer
